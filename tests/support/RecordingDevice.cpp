#include "support/RecordingDevice.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>

namespace QzTest
{

namespace
{

std::string Hex(uint32_t value)
{
    char buffer[16];
    std::snprintf(buffer, sizeof(buffer), "#%08X", static_cast<unsigned>(value));
    return buffer;
}

std::string Corners(const DrawCall& call)
{
    return std::to_string(call.x1) + "," + std::to_string(call.y1) + "," + std::to_string(call.x2) +
           "," + std::to_string(call.y2);
}

std::string TextureLine(const DrawCall& call)
{
    char scale[32];
    std::snprintf(scale, sizeof(scale), "%g", static_cast<double>(call.scale));
    const std::string name =
        call.texturePath.empty() ? "#" + std::to_string(call.texture) : call.texturePath;
    return "texture " + name + " src(" + std::to_string(call.source.left) + "," +
           std::to_string(call.source.top) + "," + std::to_string(call.source.right) + "," +
           std::to_string(call.source.bottom) + ") at " + std::to_string(call.x1) + "," +
           std::to_string(call.y1) + " size " + std::to_string(call.width) + "x" +
           std::to_string(call.height) + " alpha " + std::to_string(call.alpha) + " scale " + scale;
}

std::string TextLine(const DrawCall& call)
{
    return "text " + std::to_string(call.x1) + "," + std::to_string(call.y1) + " \"" + call.text +
           "\" font " + (call.font.face.empty() ? "default" : call.font.face) + "/" +
           std::to_string(call.font.size) + " " + Hex(call.colour) + " shadow " + Hex(call.shadow);
}

} // namespace

RecordingDevice::RecordingDevice()
{
    QzPlatform::SetRenderDevice(this);
}

RecordingDevice::~RecordingDevice()
{
    if (&QzPlatform::GetRenderDevice() == this)
        QzPlatform::SetRenderDevice(nullptr);
}

std::string RecordingDevice::PathKey(const std::string& path)
{
    std::string key = path;
    for (char& c : key)
        c = c == '\\' ? '/' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    while (key.compare(0, 2, "./") == 0)
        key.erase(0, 2);
    return key;
}

QzPlatform::TextureId RecordingDevice::DefineTexture(const std::string& path, int width, int height)
{
    return DefineTexture(path, width, height, TransparencyFunction());
}

QzPlatform::TextureId RecordingDevice::DefineTexture(const std::string& path, int width, int height,
                                                     TransparencyFunction transparent)
{
    Texture texture;
    texture.path = path;
    texture.width = width;
    texture.height = height;
    texture.transparent = std::move(transparent);
    const std::string key = PathKey(path);
    const auto found = m_mapIds.find(key);
    if (found != m_mapIds.end())
    {
        m_vecTextures[found->second - 1] = std::move(texture);
        return found->second;
    }
    m_vecTextures.push_back(std::move(texture));
    const auto id = static_cast<QzPlatform::TextureId>(m_vecTextures.size());
    m_mapIds[key] = id;
    return id;
}

QzPlatform::TextureId RecordingDevice::DefineTexture(const std::string& path,
                                                     const std::vector<std::string>& rows)
{
    size_t width = 0;
    for (const std::string& row : rows)
        width = std::max(width, row.size());
    auto transparent = [rows](int x, int y)
    {
        const std::string& row = rows[static_cast<size_t>(y)];
        const size_t column = static_cast<size_t>(x);
        return column >= row.size() || row[column] == ' ' || row[column] == '.';
    };
    return DefineTexture(path, static_cast<int>(width), static_cast<int>(rows.size()), transparent);
}

int RecordingDevice::GetLoadCount(const std::string& path) const
{
    const auto found = m_mapLoads.find(PathKey(path));
    return found == m_mapLoads.end() ? 0 : found->second;
}

std::vector<DrawCall> RecordingDevice::Calls(DrawKind kind) const
{
    std::vector<DrawCall> calls;
    std::copy_if(m_vecCalls.begin(), m_vecCalls.end(), std::back_inserter(calls),
                 [kind](const DrawCall& call) { return call.kind == kind; });
    return calls;
}

std::string RecordingDevice::Trace(const std::vector<DrawCall>& calls)
{
    std::string trace;
    for (const DrawCall& call : calls)
        trace += TraceLine(call) + "\n";
    return trace;
}

std::string RecordingDevice::TraceLine(const DrawCall& call)
{
    switch (call.kind)
    {
    case DrawKind::Fill:
        return "fill " + Corners(call) + " " + Hex(call.colour);
    case DrawKind::Outline:
        return "outline " + Corners(call) + " " + Hex(call.colour);
    case DrawKind::Line:
        return "line " + Corners(call) + " " + Hex(call.colour);
    case DrawKind::Texture:
        return TextureLine(call);
    case DrawKind::Text:
        return TextLine(call);
    }
    return std::string();
}

const RecordingDevice::Texture* RecordingDevice::Find(QzPlatform::TextureId texture) const
{
    if (texture == 0 || texture > m_vecTextures.size())
        return nullptr;
    return &m_vecTextures[texture - 1];
}

void RecordingDevice::AddShape(DrawKind kind, int x1, int y1, int x2, int y2, uint32_t argb)
{
    DrawCall call;
    call.kind = kind;
    call.x1 = x1;
    call.y1 = y1;
    call.x2 = x2;
    call.y2 = y2;
    call.colour = argb;
    m_vecCalls.push_back(std::move(call));
}

void RecordingDevice::FillRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    AddShape(DrawKind::Fill, x1, y1, x2, y2, argb);
}

void RecordingDevice::StrokeRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    AddShape(DrawKind::Outline, x1, y1, x2, y2, argb);
}

void RecordingDevice::DrawLine(int x1, int y1, int x2, int y2, uint32_t argb)
{
    AddShape(DrawKind::Line, x1, y1, x2, y2, argb);
}

QzPlatform::TextureId RecordingDevice::LoadTexture(const std::string& path)
{
    const std::string key = PathKey(path);
    ++m_mapLoads[key];
    const auto found = m_mapIds.find(key);
    return found == m_mapIds.end() ? 0 : found->second;
}

QzPlatform::SizeI RecordingDevice::GetTextureSize(QzPlatform::TextureId texture) const
{
    QzPlatform::SizeI size;
    if (const Texture* pTexture = Find(texture))
    {
        size.cx = pTexture->width;
        size.cy = pTexture->height;
    }
    return size;
}

bool RecordingDevice::IsTransparent(QzPlatform::TextureId texture, int x, int y) const
{
    const Texture* pTexture = Find(texture);
    if (!pTexture || x < 0 || y < 0 || x >= pTexture->width || y >= pTexture->height)
        return true;
    return pTexture->transparent ? pTexture->transparent(x, y) : false;
}

void RecordingDevice::DrawTexture(QzPlatform::TextureId texture, const QzPlatform::RectI& source,
                                  int x, int y, int width, int height, uint8_t alpha, float scale)
{
    DrawCall call;
    call.kind = DrawKind::Texture;
    call.x1 = x;
    call.y1 = y;
    const Texture* pTexture = Find(texture);
    call.texturePath = pTexture ? pTexture->path : std::string();
    call.texture = texture;
    call.source = source;
    call.width = width;
    call.height = height;
    call.alpha = alpha;
    call.scale = scale;
    m_vecCalls.push_back(std::move(call));
}

void RecordingDevice::DrawText(int x, int y, const std::string& utf8,
                               const QzPlatform::FontSpec& font, uint32_t argb, uint32_t shadowArgb)
{
    DrawCall call;
    call.kind = DrawKind::Text;
    call.x1 = x;
    call.y1 = y;
    call.text = utf8;
    call.font = font;
    call.colour = argb;
    call.shadow = shadowArgb;
    m_vecCalls.push_back(std::move(call));
}

} // namespace QzTest
