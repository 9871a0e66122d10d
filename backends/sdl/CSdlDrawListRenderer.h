// Draws the lists of the draw-list device with an SDL renderer (any of SDL's back ends, the
// software one included): one SDL texture per atlas of the device, uploaded again when the
// atlas's version changes, and one SDL_RenderGeometryRaw call per command, clipped by it.
// After the first frames (once every atlas has its texture and the scratch colours have room
// for the longest list) a frame allocates nothing here.
#pragma once

#include "CDrawListDevice.h"

#include <cstdint>
#include <vector>

struct SDL_Renderer;
struct SDL_Texture;
struct SDL_Color;

namespace QzPlatform
{

class CSdlDrawListRenderer
{
public:
    // The renderer stays the caller's and must outlive this object.
    explicit CSdlDrawListRenderer(SDL_Renderer* renderer);
    ~CSdlDrawListRenderer();
    CSdlDrawListRenderer(const CSdlDrawListRenderer&) = delete;
    CSdlDrawListRenderer& operator=(const CSdlDrawListRenderer&) = delete;

    // Clears the render target to the device's clear colour and draws its last list; the
    // caller presents. Commands whose atlas has no texture or whose indices lie outside the
    // list are skipped. False when SDL refused a call (SDL_GetError says why).
    bool Render(const CDrawListDevice& device);

    // SDL textures held: one per atlas of the last frame that SDL accepted.
    size_t GetTextureCount() const;
    // Atlas uploads so far (new atlases and new versions).
    uint64_t GetUploadCount() const { return m_nUploads; }

private:
    struct AtlasTexture
    {
        uint32_t id = 0;
        uint32_t version = 0;
        int width = 0;
        int height = 0;
        SDL_Texture* texture = nullptr;
        bool used = false;
    };

    void SyncTextures(const CDrawListDevice& device);
    void Upload(AtlasTexture& entry, const DrawAtlas& atlas);
    static void DestroyTexture(AtlasTexture& entry);
    void DropUnused();
    SDL_Texture* FindTexture(uint32_t atlas);
    void ConvertColors(const std::vector<DrawVertex>& vertices);
    bool Submit(const DrawList& list, const DrawCommand& command, int screenWidth,
                int screenHeight);

    SDL_Renderer* m_pRenderer;
    std::vector<AtlasTexture> m_vecTextures;
    // The vertex colours as SDL wants them, kept between frames.
    std::vector<SDL_Color> m_vecColors;
    uint64_t m_nUploads = 0;
};

} // namespace QzPlatform
