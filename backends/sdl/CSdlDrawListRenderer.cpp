#include "CSdlDrawListRenderer.h"

#include <SDL.h>

#include <algorithm>
#include <climits>

namespace QzPlatform
{

namespace
{

// An atlas the device describes consistently: a size SDL can take and texels for all of it.
bool IsUploadable(const DrawAtlas& atlas)
{
    if (atlas.width <= 0 || atlas.height <= 0 || atlas.width > INT_MAX / 4)
        return false;
    return atlas.texels.size() / static_cast<size_t>(atlas.width) >=
           static_cast<size_t>(atlas.height);
}

// The command's clip on the device's screen; empty when nothing of it is on the screen.
SDL_Rect ClipOnScreen(const RectI& clip, int screenWidth, int screenHeight)
{
    const int left = std::clamp(clip.left, 0, screenWidth);
    const int top = std::clamp(clip.top, 0, screenHeight);
    const int right = std::clamp(clip.right, left, screenWidth);
    const int bottom = std::clamp(clip.bottom, top, screenHeight);
    return SDL_Rect{left, top, right - left, bottom - top};
}

} // namespace

CSdlDrawListRenderer::CSdlDrawListRenderer(SDL_Renderer* renderer) : m_pRenderer(renderer) {}

CSdlDrawListRenderer::~CSdlDrawListRenderer()
{
    for (AtlasTexture& entry : m_vecTextures)
        DestroyTexture(entry);
}

bool CSdlDrawListRenderer::Render(const CDrawListDevice& device)
{
    if (!m_pRenderer)
        return false;
    SyncTextures(device);
    const uint32_t clear = device.GetClearColor();
    SDL_RenderSetClipRect(m_pRenderer, nullptr);
    SDL_SetRenderDrawColor(m_pRenderer, uint8_t(clear >> 16), uint8_t(clear >> 8), uint8_t(clear),
                           uint8_t(clear >> 24));
    bool ok = SDL_RenderClear(m_pRenderer) == 0;
    const DrawList& list = device.GetDrawList();
    if (list.vertices.size() > size_t(INT_MAX) || list.indices.size() > size_t(INT_MAX))
        return false;
    ConvertColors(list.vertices);
    for (const DrawCommand& command : list.commands)
        ok = Submit(list, command, device.GetScreenWidth(), device.GetScreenHeight()) && ok;
    SDL_RenderSetClipRect(m_pRenderer, nullptr);
    return ok;
}

size_t CSdlDrawListRenderer::GetTextureCount() const
{
    return size_t(std::count_if(m_vecTextures.begin(), m_vecTextures.end(),
                                [](const AtlasTexture& entry)
                                { return entry.texture != nullptr; }));
}

// Every atlas of the device has a texture of its current version; textures of atlases the
// device no longer has are destroyed.
void CSdlDrawListRenderer::SyncTextures(const CDrawListDevice& device)
{
    for (AtlasTexture& entry : m_vecTextures)
        entry.used = false;
    const size_t count = device.GetAtlasCount();
    for (size_t i = 0; i < count; ++i)
    {
        const DrawAtlas& atlas = device.GetAtlas(i);
        auto found = std::find_if(m_vecTextures.begin(), m_vecTextures.end(),
                                  [&](const AtlasTexture& entry) { return entry.id == atlas.id; });
        if (found == m_vecTextures.end())
        {
            AtlasTexture entry;
            entry.id = atlas.id;
            m_vecTextures.push_back(entry);
            Upload(m_vecTextures.back(), atlas);
            continue;
        }
        if (found->used)
            continue; // a second atlas of the same id: the first one wins
        // A texture SDL refused is tried again with the next version, not every frame.
        if (found->version != atlas.version)
            Upload(*found, atlas);
        found->used = true;
    }
    DropUnused();
}

void CSdlDrawListRenderer::Upload(AtlasTexture& entry, const DrawAtlas& atlas)
{
    entry.used = true;
    entry.version = atlas.version;
    if (!IsUploadable(atlas) || entry.width != atlas.width || entry.height != atlas.height)
        DestroyTexture(entry);
    if (!IsUploadable(atlas))
        return;
    if (!entry.texture)
    {
        entry.texture = SDL_CreateTexture(m_pRenderer, SDL_PIXELFORMAT_ARGB8888,
                                          SDL_TEXTUREACCESS_STATIC, atlas.width, atlas.height);
        if (!entry.texture)
            return;
        entry.width = atlas.width;
        entry.height = atlas.height;
        // Straight alpha, as the atlas keeps it; scaled images are filtered.
        SDL_SetTextureBlendMode(entry.texture, SDL_BLENDMODE_BLEND);
        SDL_SetTextureScaleMode(entry.texture, SDL_ScaleModeLinear);
    }
    SDL_UpdateTexture(entry.texture, nullptr, atlas.texels.data(), atlas.width * 4);
    ++m_nUploads;
}

void CSdlDrawListRenderer::DestroyTexture(AtlasTexture& entry)
{
    if (entry.texture)
        SDL_DestroyTexture(entry.texture);
    entry.texture = nullptr;
    entry.width = 0;
    entry.height = 0;
}

void CSdlDrawListRenderer::DropUnused()
{
    for (AtlasTexture& entry : m_vecTextures)
    {
        if (!entry.used)
            DestroyTexture(entry);
    }
    m_vecTextures.erase(std::remove_if(m_vecTextures.begin(), m_vecTextures.end(),
                                       [](const AtlasTexture& entry) { return !entry.used; }),
                        m_vecTextures.end());
}

SDL_Texture* CSdlDrawListRenderer::FindTexture(uint32_t atlas)
{
    for (const AtlasTexture& entry : m_vecTextures)
    {
        if (entry.id == atlas)
            return entry.texture;
    }
    return nullptr;
}

void CSdlDrawListRenderer::ConvertColors(const std::vector<DrawVertex>& vertices)
{
    m_vecColors.resize(vertices.size());
    for (size_t i = 0; i < vertices.size(); ++i)
    {
        const uint32_t argb = vertices[i].argb;
        m_vecColors[i] =
            SDL_Color{uint8_t(argb >> 16), uint8_t(argb >> 8), uint8_t(argb), uint8_t(argb >> 24)};
    }
}

bool CSdlDrawListRenderer::Submit(const DrawList& list, const DrawCommand& command, int screenWidth,
                                  int screenHeight)
{
    if (command.indexCount == 0 || list.vertices.empty() ||
        uint64_t(command.indexOffset) + command.indexCount > list.indices.size())
        return true;
    SDL_Texture* texture = FindTexture(command.atlas);
    const SDL_Rect clip = ClipOnScreen(command.clip, screenWidth, screenHeight);
    if (!texture || clip.w == 0 || clip.h == 0)
        return true;
    SDL_RenderSetClipRect(m_pRenderer, &clip);
    const DrawVertex* vertices = list.vertices.data();
    constexpr int kStride = sizeof(DrawVertex);
    return SDL_RenderGeometryRaw(m_pRenderer, texture, &vertices->x, kStride, m_vecColors.data(),
                                 sizeof(SDL_Color), &vertices->u, kStride,
                                 int(list.vertices.size()),
                                 list.indices.data() + command.indexOffset, int(command.indexCount),
                                 sizeof(uint32_t)) == 0;
}

} // namespace QzPlatform
