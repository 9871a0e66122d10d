// The GPU-ready render device: every draw call becomes vertices, indices and commands of one
// draw list per frame (see QzDrawList.h), drawn from texture atlases the device owns. Images are
// decoded from PNG files and packed into image atlases; text is shaped and rasterised with
// pango, cairo and fontconfig's font fallback (so Chinese text draws), each glyph once into the
// glyph atlas, and measures exactly as the cairo device does. A host calls BeginFrame, lets the
// manager draw, calls EndFrame and submits GetDrawList() with the atlases to its renderer. The
// list is retained: the quads of an item (a control, a dialog's back) stay where they are while
// the item draws the same, so an unchanged screen costs the comparison of its draw calls.
#pragma once

#include "QzDrawList.h"
#include "platform/render/IRenderDevice.h"

#include <cstdint>
#include <memory>
#include <string>

namespace QzPlatform
{

class CDrawListDevice : public IRenderDevice
{
public:
    static constexpr uint32_t kDefaultClearColor = 0xFF202020;

    // A screen of width x height pixels (each clamped to 1..32767).
    CDrawListDevice(int width, int height);
    ~CDrawListDevice() override;
    CDrawListDevice(const CDrawListDevice&) = delete;
    CDrawListDevice& operator=(const CDrawListDevice&) = delete;

    int GetScreenWidth() const override;
    int GetScreenHeight() const override;

    // BeginFrame starts the frame's list; EndFrame completes it. What items drew in the frame
    // before stays in the list's storage and is written again only where an item's draw calls
    // changed (see QzDrawList.h).
    void BeginFrame() override;
    void EndFrame() override;
    void BeginItem(const void* key, uint64_t look = 0) override;
    void EndItem() override;
    bool RepeatItem(const void* key, uint64_t look) override;

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

    void PushClip(const RectI& clip) override;
    void PopClip() override;

    // Host controls.
    // The screen size changes (a resized window); the next frame uses it.
    void SetScreenSize(int width, int height);
    void SetClearColor(uint32_t argb);
    uint32_t GetClearColor() const;
    // The list of the last frame (complete after EndFrame).
    const DrawList& GetDrawList() const;
    // The texture pages the list refers to: a command's `atlas` is the id of one of them.
    size_t GetAtlasCount() const;
    const DrawAtlas& GetAtlas(size_t index) const;
    const DrawAtlas* FindAtlas(uint32_t id) const;
    // Forgets every image, glyph and text layout; the atlases start again empty.
    void ClearCaches();

private:
    class Impl;
    std::unique_ptr<Impl> m_pImpl;
};

} // namespace QzPlatform
