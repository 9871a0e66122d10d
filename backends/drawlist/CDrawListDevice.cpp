#include "CDrawListDevice.h"

#include "CDrawAtlasPages.h"
#include "CDrawGlyphCache.h"
#include "CDrawImageCache.h"
#include "CDrawItemStore.h"
#include "CDrawListBuilder.h"
#include "CDrawTextCache.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <initializer_list>

namespace QzPlatform
{

namespace
{

const int kMaxScreenSide = 32767;
// Rectangles are clamped to the screen plus this margin first, as the cairo device does, so
// that outlines far off screen stay off screen and hostile values cannot overflow.
const int kClampMargin = 4;

int ClampInt(int64_t value, int low, int high)
{
    return static_cast<int>(std::min<int64_t>(std::max<int64_t>(value, low), high));
}

const uint32_t kBlackShadow = 0xFF000000;

bool IsInvisible(uint32_t argb)
{
    return (argb >> 24) == 0;
}

// A draw whose mapping would be degenerate is skipped, as on the cairo device.
bool IsUsableScale(double factor)
{
    return factor > 1e-6 && factor < 1e6;
}

// Cuts the segment (x0, y0)-(x1, y1) to the rectangle [left, right] x [top, bottom] (Liang and
// Barsky); false when no part of it lies inside.
bool CutSegment(double& x0, double& y0, double& x1, double& y1, double left, double top,
                double right, double bottom)
{
    const double dx = x1 - x0;
    const double dy = y1 - y0;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x0 - left, right - x0, y0 - top, bottom - y0};
    double enter = 0.0;
    double leave = 1.0;
    for (int side = 0; side < 4; ++side)
    {
        if (p[side] == 0.0)
        {
            if (q[side] < 0.0)
                return false;
            continue;
        }
        const double t = q[side] / p[side];
        if (p[side] < 0.0)
            enter = std::max(enter, t);
        else
            leave = std::min(leave, t);
    }
    if (enter > leave)
        return false;
    x1 = x0 + dx * leave;
    y1 = y0 + dy * leave;
    x0 += dx * enter;
    y0 += dy * enter;
    return true;
}

} // namespace

class CDrawListDevice::Impl
{
public:
    Impl(int width, int height)
        : nWidth(ClampInt(width, 1, kMaxScreenSide)), nHeight(ClampInt(height, 1, kMaxScreenSide)),
          pFillPage(pages.Create(CDrawAtlasPages::kWhiteSide, CDrawAtlasPages::kWhiteSide)),
          glyphs(pages), images(pages, &glyphs.Allocator()), text(glyphs),
          items(builder, *pFillPage)
    {
        pages.SetGrowHandler([this](const DrawAtlas& page, int oldWidth, int oldHeight)
                             { items.OnPageGrown(page, oldWidth, oldHeight); });
        builder.Begin(nWidth, nHeight);
    }

    // True when the open item drew this very call the frame before: nothing is to be drawn.
    bool Replay(DrawCall::Kind kind, std::initializer_list<int32_t> args, uint32_t colour = 0,
                uint32_t colour2 = 0, float scale = 0.0f, const std::string* utf8 = nullptr,
                const std::string* face = nullptr)
    {
        DrawCall call;
        call.kind = kind;
        std::copy(args.begin(), args.end(), call.args);
        call.colour[0] = colour;
        call.colour[1] = colour2;
        call.scale = scale;
        return items.Replay(call, utf8, face);
    }

    // Clamps the rectangle to the screen and its margin; false when nothing is left.
    bool Clamp(int& x1, int& y1, int& x2, int& y2) const
    {
        x1 = ClampInt(x1, -kClampMargin, nWidth + kClampMargin);
        x2 = ClampInt(x2, -kClampMargin, nWidth + kClampMargin);
        y1 = ClampInt(y1, -kClampMargin, nHeight + kClampMargin);
        y2 = ClampInt(y2, -kClampMargin, nHeight + kClampMargin);
        return x1 < x2 && y1 < y2;
    }

    void AddDiagonal(int x1, int y1, int x2, int y2, uint32_t argb);
    void AddText(int64_t x, int64_t y, const DrawQuadRun& quads, uint32_t argb);

    int nWidth;
    int nHeight;
    uint32_t dwClearColor = kDefaultClearColor;
    CDrawAtlasPages pages;
    const DrawAtlas* pFillPage;
    CDrawGlyphCache glyphs;
    CDrawImageCache images;
    CDrawTextCache text;
    CDrawListBuilder builder;
    CDrawItemStore items;
};

// The stroke is the cairo device's: a rectangle one pixel wide around the segment between the
// two pixel centres, reaching half a pixel past each end (square caps). The segment is first cut
// to the clip rectangle and a margin, so that the corners stay near the screen.
void CDrawListDevice::Impl::AddDiagonal(int x1, int y1, int x2, int y2, uint32_t argb)
{
    double ax = x1 + 0.5;
    double ay = y1 + 0.5;
    double bx = x2 + 0.5;
    double by = y2 + 0.5;
    const double length = std::hypot(bx - ax, by - ay);
    const double dx = (bx - ax) / length * 0.5;
    const double dy = (by - ay) / length * 0.5;
    const RectI& clip = builder.GetClip();
    if (!CutSegment(ax, ay, bx, by, clip.left - 2.0, clip.top - 2.0, clip.right + 2.0,
                    clip.bottom + 2.0))
        return;
    const float corners[8] = {float(ax - dx - dy), float(ay - dy + dx), float(bx + dx - dy),
                              float(by + dy + dx), float(bx + dx + dy), float(by + dy - dx),
                              float(ax - dx + dy), float(ay - dy - dx)};
    builder.AddPolygon(corners, argb);
}

void CDrawListDevice::Impl::AddText(int64_t x, int64_t y, const DrawQuadRun& quads, uint32_t argb)
{
    builder.AddQuads(quads, static_cast<float>(x), static_cast<float>(y), argb, argb | 0x00FFFFFFu);
}

CDrawListDevice::CDrawListDevice(int width, int height)
    : m_pImpl(std::make_unique<Impl>(width, height))
{
}

CDrawListDevice::~CDrawListDevice() = default;

int CDrawListDevice::GetScreenWidth() const
{
    return m_pImpl->nWidth;
}

int CDrawListDevice::GetScreenHeight() const
{
    return m_pImpl->nHeight;
}

// The text's pages start again here, between frames, when text has filled more of them than
// the budget: no command of the list refers to them any more, and the images that shared the
// first one are laid out again on their next use.
void CDrawListDevice::BeginFrame()
{
    Impl& impl = *m_pImpl;
    if (impl.glyphs.IsOverBudget())
    {
        impl.text.ForgetQuads();
        impl.items.Clear();
        impl.images.ReleaseShared();
        impl.glyphs.Clear();
    }
    impl.builder.Begin(impl.nWidth, impl.nHeight);
    impl.items.BeginFrame();
}

void CDrawListDevice::EndFrame()
{
    m_pImpl->items.EndFrame();
}

void CDrawListDevice::BeginItem(const void* key, uint64_t look)
{
    m_pImpl->items.BeginItem(key, m_pImpl->builder.GetClip(), look);
}

bool CDrawListDevice::RepeatItem(const void* key, uint64_t look)
{
    return m_pImpl->items.Repeat(key, m_pImpl->builder.GetClip(), look);
}

void CDrawListDevice::EndItem()
{
    m_pImpl->items.EndItem();
}

void CDrawListDevice::FillRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    if (m_pImpl->Replay(DrawCall::kFill, {x1, y1, x2, y2}, argb))
        return;
    if (IsInvisible(argb) || !m_pImpl->Clamp(x1, y1, x2, y2))
        return;
    m_pImpl->builder.AddRect(x1, y1, x2, y2, argb);
}

// The border pixels: the columns x1 and x2 - 1 and the rows y1 and y2 - 1, each painted once.
void CDrawListDevice::StrokeRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    if (m_pImpl->Replay(DrawCall::kStroke, {x1, y1, x2, y2}, argb))
        return;
    if (IsInvisible(argb) || !m_pImpl->Clamp(x1, y1, x2, y2))
        return;
    CDrawListBuilder& builder = m_pImpl->builder;
    if (x2 - x1 <= 2 || y2 - y1 <= 2)
    {
        builder.AddRect(x1, y1, x2, y2, argb);
        return;
    }
    builder.AddRect(x1, y1, x2, y1 + 1, argb);
    builder.AddRect(x1, y1 + 1, x1 + 1, y2 - 1, argb);
    builder.AddRect(x2 - 1, y1 + 1, x2, y2 - 1, argb);
    builder.AddRect(x1, y2 - 1, x2, y2, argb);
}

// Both end pixels belong to the line; a horizontal or vertical line is a block of pixels. A line
// of no length shows nothing, as on the cairo device.
void CDrawListDevice::DrawLine(int x1, int y1, int x2, int y2, uint32_t argb)
{
    if (m_pImpl->Replay(DrawCall::kLine, {x1, y1, x2, y2}, argb))
        return;
    if (IsInvisible(argb) || (x1 == x2 && y1 == y2))
        return;
    if (x1 != x2 && y1 != y2)
    {
        m_pImpl->AddDiagonal(x1, y1, x2, y2, argb);
        return;
    }
    int left = std::min(x1, x2);
    int top = std::min(y1, y2);
    int right = ClampInt(int64_t(std::max(x1, x2)) + 1, INT_MIN, INT_MAX);
    int bottom = ClampInt(int64_t(std::max(y1, y2)) + 1, INT_MIN, INT_MAX);
    if (m_pImpl->Clamp(left, top, right, bottom))
        m_pImpl->builder.AddRect(left, top, right, bottom, argb);
}

TextureId CDrawListDevice::LoadTexture(const std::string& path)
{
    return m_pImpl->images.Load(path);
}

SizeI CDrawListDevice::GetTextureSize(TextureId texture) const
{
    return m_pImpl->images.GetSize(texture);
}

bool CDrawListDevice::IsTransparent(TextureId texture, int x, int y) const
{
    return m_pImpl->images.IsTransparent(texture, x, y);
}

// The source rectangle is mapped onto the destination size, then scaled about (x, y); only the
// part of it inside the image is drawn, where the cairo device would draw it.
void CDrawListDevice::DrawTexture(TextureId texture, const RectI& source, int x, int y, int width,
                                  int height, uint8_t alpha, float scale)
{
    if (m_pImpl->Replay(DrawCall::kTexture,
                        {int32_t(texture), source.left, source.top, source.right, source.bottom, x,
                         y, width, height},
                        alpha, 0, scale))
        return;
    const DrawImage* image = m_pImpl->images.Find(texture);
    if (image == nullptr || width <= 0 || height <= 0 || alpha == 0 || !std::isfinite(scale) ||
        scale <= 0.0f)
        return;
    const int64_t sourceWidth = int64_t(source.right) - source.left;
    const int64_t sourceHeight = int64_t(source.bottom) - source.top;
    const int64_t left = std::max<int64_t>(source.left, 0);
    const int64_t top = std::max<int64_t>(source.top, 0);
    const int64_t right = std::min<int64_t>(source.right, image->width);
    const int64_t bottom = std::min<int64_t>(source.bottom, image->height);
    if (sourceWidth <= 0 || sourceHeight <= 0 || right <= left || bottom <= top)
        return;
    // Most sprites are drawn at their size: no division then.
    const bool exact = width == sourceWidth && height == sourceHeight && scale == 1.0f;
    const double scaleX = exact ? 1.0 : double(width) / double(sourceWidth) * scale;
    const double scaleY = exact ? 1.0 : double(height) / double(sourceHeight) * scale;
    if (!IsUsableScale(scaleX) || !IsUsableScale(scaleY))
        return;
    m_pImpl->builder.AddImage(*image->page, float(x + double(left - source.left) * scaleX),
                              float(y + double(top - source.top) * scaleY),
                              float(x + double(right - source.left) * scaleX),
                              float(y + double(bottom - source.top) * scaleY),
                              float(image->x + left), float(image->y + top),
                              float(image->x + right), float(image->y + bottom),
                              (uint32_t(alpha) << 24) | 0x00FFFFFFu);
}

// The shadow goes first, one pixel down and right; both draw the same cached quads. An opaque
// text over a black shadow, the captions' look, is one quad a glyph: the glyph's bitmap over its
// shadow.
void CDrawListDevice::DrawText(int x, int y, const std::string& utf8, const FontSpec& font,
                               uint32_t argb, uint32_t shadowArgb)
{
    if (m_pImpl->Replay(DrawCall::kText, {x, y, font.size}, argb, shadowArgb, 0.0f, &utf8,
                        &font.face))
        return;
    const bool shadow = !IsInvisible(shadowArgb);
    if (utf8.empty() || (IsInvisible(argb) && !shadow))
        return;
    const DrawQuadRun* shadowed = shadowArgb == kBlackShadow && (argb >> 24) == 0xFF
                                      ? m_pImpl->text.GetShadowedQuads(utf8, font)
                                      : nullptr;
    if (shadowed != nullptr)
    {
        m_pImpl->AddText(x, y, *shadowed, argb);
        return;
    }
    const DrawQuadRun& quads = m_pImpl->text.GetQuads(utf8, font);
    if (shadow)
        m_pImpl->AddText(int64_t(x) + 1, int64_t(y) + 1, quads, shadowArgb);
    if (!IsInvisible(argb))
        m_pImpl->AddText(x, y, quads, argb);
}

SizeI CDrawListDevice::MeasureText(const std::string& utf8, const FontSpec& font)
{
    return m_pImpl->text.Measure(utf8, font);
}

// The clip changes whether the item's calls are replayed or not: the calls after it depend on it.
void CDrawListDevice::PushClip(const RectI& clip)
{
    m_pImpl->Replay(DrawCall::kPushClip, {clip.left, clip.top, clip.right, clip.bottom});
    m_pImpl->builder.PushClip(clip);
}

void CDrawListDevice::PopClip()
{
    m_pImpl->Replay(DrawCall::kPopClip, {});
    m_pImpl->builder.PopClip();
}

void CDrawListDevice::SetScreenSize(int width, int height)
{
    m_pImpl->nWidth = ClampInt(width, 1, kMaxScreenSide);
    m_pImpl->nHeight = ClampInt(height, 1, kMaxScreenSide);
}

void CDrawListDevice::SetClearColor(uint32_t argb)
{
    m_pImpl->dwClearColor = argb;
}

uint32_t CDrawListDevice::GetClearColor() const
{
    return m_pImpl->dwClearColor;
}

const DrawList& CDrawListDevice::GetDrawList() const
{
    return m_pImpl->items.GetList();
}

size_t CDrawListDevice::GetAtlasCount() const
{
    return m_pImpl->pages.GetCount();
}

const DrawAtlas& CDrawListDevice::GetAtlas(size_t index) const
{
    return m_pImpl->pages.Get(index);
}

const DrawAtlas* CDrawListDevice::FindAtlas(uint32_t id) const
{
    return m_pImpl->pages.Find(id);
}

// The list of the frame under way is emptied too: its commands refer to pages now gone.
void CDrawListDevice::ClearCaches()
{
    Impl& impl = *m_pImpl;
    impl.text.Clear();
    impl.glyphs.Clear();
    impl.images.Clear();
    impl.items.Clear();
    impl.builder.Begin(impl.nWidth, impl.nHeight);
}

} // namespace QzPlatform
