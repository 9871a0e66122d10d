// The real software render device: everything is drawn into one cairo ARGB32 image of a fixed
// size, text through pango with fontconfig's font fallback (CJK included), images from PNG
// files. The host reads the pixels (premultiplied ARGB32 in native byte order, as cairo keeps
// them) to show them in a window or save them.
#pragma once

#include "CCairoImageCache.h"
#include "CCairoTextCache.h"
#include "platform/render/IRenderDevice.h"

#include <cstdint>
#include <string>
#include <vector>

typedef struct _cairo cairo_t;

namespace QzPlatform
{

class CCairoDevice : public IRenderDevice
{
public:
    static constexpr uint32_t kDefaultClearColor = 0xFF202020;

    // A surface of width x height pixels (each clamped to 1..32767), cleared to the clear colour.
    CCairoDevice(int width, int height);
    ~CCairoDevice() override;
    CCairoDevice(const CCairoDevice&) = delete;
    CCairoDevice& operator=(const CCairoDevice&) = delete;

    int GetScreenWidth() const override { return m_nWidth; }
    int GetScreenHeight() const override { return m_nHeight; }

    // BeginFrame clears the surface to the clear colour; EndFrame makes the pixels readable.
    void BeginFrame() override;
    void EndFrame() override;

    void FillRect(int x1, int y1, int x2, int y2, uint32_t argb) override;
    void StrokeRect(int x1, int y1, int x2, int y2, uint32_t argb) override;
    void DrawLine(int x1, int y1, int x2, int y2, uint32_t argb) override;

    TextureId LoadTexture(const std::string& path) override;
    SizeI GetTextureSize(TextureId texture) const override;
    bool IsTransparent(TextureId texture, int x, int y) const override;
    void DrawTexture(TextureId texture, const RectI& source, int x, int y, int width, int height,
                     uint8_t alpha, float scale) override;

    void DrawText(int x, int y, const std::string& utf8, const FontSpec& font, uint32_t argb,
                  uint32_t shadowArgb) override;
    SizeI MeasureText(const std::string& utf8, const FontSpec& font) override;

    // Clips nest until BeginFrame, which starts every frame unclipped.
    void PushClip(const RectI& clip) override;
    void PopClip() override;

    // Host controls.
    void SetClearColor(uint32_t argb) { m_dwClearColor = argb; }
    uint32_t GetClearColor() const { return m_dwClearColor; }
    // Fills the whole surface with the clear colour (what BeginFrame does), whatever the clip.
    void Clear();
    // Blocks and unscaled images are blended straight into the surface's pixels, with the same
    // results as cairo's; turned off, every draw goes through cairo (for comparisons).
    void SetDirectDrawing(bool enabled) { m_bDirectDrawing = enabled; }
    // Writes the surface as a PNG file; false when it cannot be written.
    bool SavePng(const std::string& path);
    // Rows of the surface: GetStride() bytes apart, one per screen line, 4 bytes a pixel.
    int GetStride() const;
    const uint8_t* GetData();
    // One pixel as stored (premultiplied ARGB); 0 outside the surface.
    uint32_t GetPixel(int x, int y);
    // Forgets every decoded image (and failed path) and every text layout.
    void ClearCaches();
    const CCairoTextCache& GetTextCache() const { return m_textCache; }
    const CCairoImageCache& GetImageCache() const { return m_imageCache; }

private:
    void SetColor(uint32_t argb);
    bool DrawsDirectly() const;
    // The rectangle draws are restricted to: the surface, or the innermost clip.
    RectI GetClip() const;
    void ApplyClip();
    void BlendBlock(const RectI& block, uint32_t argb);
    bool BlendTexture(cairo_surface_t* image, const RectI& source, const RectI& part, int x, int y,
                      int width, int height, uint8_t alpha);
    void PaintTexture(cairo_surface_t* image, const RectI& source, const RectI& part, int x, int y,
                      double scaleX, double scaleY, bool exact, uint8_t alpha);
    void ShowLayout(int x, int y, PangoLayout* layout, uint32_t argb);

    int m_nWidth;
    int m_nHeight;
    cairo_surface_t* m_pSurface = nullptr;
    cairo_t* m_pCairo = nullptr;
    uint32_t m_dwClearColor = kDefaultClearColor;
    bool m_bDirectDrawing = true;
    std::vector<RectI> m_vecClips; // each already inside the one before
    CCairoImageCache m_imageCache;
    CCairoTextCache m_textCache;
};

} // namespace QzPlatform
