// The one drawing surface of the library. A host installs a device (the cairo device, its own
// renderer, or a recording device in tests); until then the null device is in place, which
// draws nothing and measures text on a fixed cell so that layout is deterministic.
#pragma once

#include <cstdint>
#include <string>

#ifdef _WIN32
// <windows.h> makes DrawText a macro (DrawTextA, or DrawTextW for a host built with UNICODE):
// every file that sees this class must see the same name, so on Windows it always comes after
// <windows.h>.
#include "platform/system/QzSystem.h"
#endif

namespace QzPlatform
{

// Device-side handle of a loaded image; 0 means "no image".
typedef uint32_t TextureId;

struct RectI
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
};

struct SizeI
{
    int cx = 0;
    int cy = 0;
};

// Text face and pixel size. An empty face means the device's default face.
struct FontSpec
{
    std::string face;
    int size = 12;
};

class IRenderDevice
{
public:
    virtual ~IRenderDevice() = default;

    // Logical screen size in pixels.
    virtual int GetScreenWidth() const = 0;
    virtual int GetScreenHeight() const = 0;

    // Called by the host around each frame; a device may clear, flush or age its caches.
    virtual void BeginFrame() {}
    virtual void EndFrame() {}

    // Filled rectangle, outline and line between corners (x1, y1) and (x2, y2); colours ARGB.
    // Rectangles cover x1 <= x < x2 and y1 <= y < y2.
    virtual void FillRect(int x1, int y1, int x2, int y2, uint32_t argb) = 0;
    virtual void StrokeRect(int x1, int y1, int x2, int y2, uint32_t argb) = 0;
    virtual void DrawLine(int x1, int y1, int x2, int y2, uint32_t argb) = 0;

    // Images, by data path (already resolved to a real file name). LoadTexture returns 0 when
    // the image cannot be had; loading the same path again returns the same id.
    virtual TextureId LoadTexture(const std::string& path) = 0;
    virtual SizeI GetTextureSize(TextureId texture) const = 0;
    // True when the pixel (x, y) of the image is fully transparent or outside it.
    virtual bool IsTransparent(TextureId texture, int x, int y) const = 0;
    // Draws the source rectangle of the image into the destination (x, y, width, height),
    // scaled by `scale` about (x, y), with the given opacity.
    virtual void DrawTexture(TextureId texture, const RectI& source, int x, int y, int width,
                             int height, uint8_t alpha, float scale) = 0;

    // Text in UTF-8. The top-left of the first line is (x, y). A shadow colour with a zero
    // alpha byte means no shadow; otherwise the shadow is drawn one pixel down and right.
    virtual void DrawText(int x, int y, const std::string& utf8, const FontSpec& font,
                          uint32_t argb, uint32_t shadowArgb) = 0;
    virtual SizeI MeasureText(const std::string& utf8, const FontSpec& font) = 0;

    // Restricts the draw calls that follow to the rectangle, intersected with the clip already
    // in force, until the matching PopClip. A device that cannot clip may ignore both.
    virtual void PushClip(const RectI& clip) { (void)clip; }
    virtual void PopClip() {}

    // The draw calls up to EndItem are one item's (a control, a dialog's back), named by `key`
    // from frame to frame. A device that keeps what it drew may reuse an item's output while
    // the item makes the same calls. Items do not nest: BeginItem ends an item still open.
    // `look` (0: none) is a digest of everything the item's drawing reads, for RepeatItem.
    virtual void BeginItem(const void* key, uint64_t look = 0)
    {
        (void)key;
        (void)look;
    }
    virtual void EndItem() {}
    // Draws the item again as it was drawn the frame before, when the device kept that and the
    // item was drawn under the same nonzero look; false (nothing drawn) otherwise, and the caller
    // draws the item.
    virtual bool RepeatItem(const void* key, uint64_t look)
    {
        (void)key;
        (void)look;
        return false;
    }
};

// The device in use (never null: the null device when none is installed).
IRenderDevice& GetRenderDevice();
// Installs a device; null puts the null device back. The caller keeps ownership.
void SetRenderDevice(IRenderDevice* device);

} // namespace QzPlatform
