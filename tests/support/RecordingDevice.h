// A render device for tests: keeps every drawing call, measures text like the null device (a
// fixed cell: size / 2 per character, size for East Asian wide ones) and knows the textures a
// test defines in memory. It installs itself while it lives.
#pragma once

#include "platform/render/NullRenderDevice.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace QzTest
{

enum class DrawKind
{
    Fill,    // FillRect
    Outline, // StrokeRect
    Line,    // DrawLine
    Texture, // DrawTexture
    Text,    // DrawText
};

struct DrawCall
{
    DrawKind kind = DrawKind::Fill;
    // Fill, Outline, Line: the corners; Texture and Text: (x1, y1) is the position.
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    uint32_t colour = 0;
    // Texture
    std::string texturePath; // as defined by the test; empty for an unknown id
    QzPlatform::TextureId texture = 0;
    QzPlatform::RectI source;
    int width = 0;
    int height = 0;
    uint8_t alpha = 0;
    float scale = 0.0f;
    // Text
    std::string text; // UTF-8
    QzPlatform::FontSpec font;
    uint32_t shadow = 0;
};

class RecordingDevice : public QzPlatform::CNullRenderDevice
{
public:
    // True at a transparent pixel (x, y) of the image.
    using TransparencyFunction = std::function<bool(int x, int y)>;

    RecordingDevice();
    ~RecordingDevice() override;
    RecordingDevice(const RecordingDevice&) = delete;
    RecordingDevice& operator=(const RecordingDevice&) = delete;

    // Defines an opaque image of the given size under the path (backslashes and letter case do
    // not matter; a leading "./" neither). Defining a path again replaces it, keeping its id.
    QzPlatform::TextureId DefineTexture(const std::string& path, int width, int height);
    QzPlatform::TextureId DefineTexture(const std::string& path, int width, int height,
                                        TransparencyFunction transparent);
    // An image drawn as rows of characters: ' ' and '.' are transparent pixels, any other
    // character opaque; the width is the longest row.
    QzPlatform::TextureId DefineTexture(const std::string& path,
                                        const std::vector<std::string>& rows);
    // How many times LoadTexture was asked for the path (defined or not).
    int GetLoadCount(const std::string& path) const;

    const std::vector<DrawCall>& Calls() const { return m_vecCalls; }
    std::vector<DrawCall> Calls(DrawKind kind) const;
    void Clear() { m_vecCalls.clear(); }
    // One readable line per call, each ending in '\n'.
    std::string Trace() const { return Trace(m_vecCalls); }
    static std::string Trace(const std::vector<DrawCall>& calls);
    static std::string TraceLine(const DrawCall& call);

    void FillRect(int x1, int y1, int x2, int y2, uint32_t argb) override;
    void StrokeRect(int x1, int y1, int x2, int y2, uint32_t argb) override;
    void DrawLine(int x1, int y1, int x2, int y2, uint32_t argb) override;
    QzPlatform::TextureId LoadTexture(const std::string& path) override;
    QzPlatform::SizeI GetTextureSize(QzPlatform::TextureId texture) const override;
    bool IsTransparent(QzPlatform::TextureId texture, int x, int y) const override;
    void DrawTexture(QzPlatform::TextureId texture, const QzPlatform::RectI& source, int x, int y,
                     int width, int height, uint8_t alpha, float scale) override;
    void DrawText(int x, int y, const std::string& utf8, const QzPlatform::FontSpec& font,
                  uint32_t argb, uint32_t shadowArgb) override;

private:
    struct Texture
    {
        std::string path;
        int width = 0;
        int height = 0;
        TransparencyFunction transparent;
    };

    static std::string PathKey(const std::string& path);
    const Texture* Find(QzPlatform::TextureId texture) const;
    void AddShape(DrawKind kind, int x1, int y1, int x2, int y2, uint32_t argb);

    std::vector<DrawCall> m_vecCalls;
    std::vector<Texture> m_vecTextures;                    // id - 1 -> texture
    std::map<std::string, QzPlatform::TextureId> m_mapIds; // path key -> id
    std::map<std::string, int> m_mapLoads;                 // path key -> LoadTexture count
};

} // namespace QzTest
