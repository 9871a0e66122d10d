#include "CCairoDevice.h"

#include "CairoPixels.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace QzPlatform
{

namespace
{

const int kMaxSurfaceSide = 32767;
// Rectangles are clamped to the surface plus this margin: what lies further out is invisible,
// and cairo's fixed-point coordinates must not overflow on hostile values.
const int kClampMargin = 4;

double Channel(uint32_t argb, int shift)
{
    return static_cast<double>((argb >> shift) & 0xFF) / 255.0;
}

int ClampInt(int value, int low, int high)
{
    return std::min(std::max(value, low), high);
}

// The part of the source rectangle inside an image of the given size, as 64-bit values so that
// hostile rectangles cannot overflow; empty when there is none.
struct SourceClip
{
    int64_t left, top, right, bottom;
    bool IsEmpty() const { return right <= left || bottom <= top; }
};

SourceClip ClipSource(const RectI& source, const SizeI& size)
{
    return SourceClip{std::max<int64_t>(source.left, 0), std::max<int64_t>(source.top, 0),
                      std::min<int64_t>(source.right, size.cx),
                      std::min<int64_t>(source.bottom, size.cy)};
}

// A cairo context whose matrix cannot be inverted stays broken for good, so a draw whose
// mapping would be degenerate is skipped rather than tried.
bool IsUsableScale(double factor)
{
    return factor > 1e-6 && factor < 1e6;
}

// The rectangle [left, right) x [top, bottom) cut to the clip; empty (left == right) when they
// do not meet. 64-bit bounds so that hostile positions plus sizes cannot overflow.
RectI Intersect(const RectI& clip, int64_t left, int64_t top, int64_t right, int64_t bottom)
{
    RectI result;
    result.left = static_cast<int>(std::max<int64_t>(left, clip.left));
    result.top = static_cast<int>(std::max<int64_t>(top, clip.top));
    result.right = static_cast<int>(std::min<int64_t>(right, clip.right));
    result.bottom = static_cast<int>(std::min<int64_t>(bottom, clip.bottom));
    if (result.right <= result.left || result.bottom <= result.top)
        return RectI{clip.left, clip.top, clip.left, clip.top};
    return result;
}

// Pixel rows of an ARGB32 cairo image surface.
struct PixelRows
{
    explicit PixelRows(cairo_surface_t* surface)
        : data(cairo_image_surface_get_data(surface)),
          stride(cairo_image_surface_get_stride(surface))
    {
    }
    uint32_t* Row(int y) const
    {
        return reinterpret_cast<uint32_t*>(data + static_cast<ptrdiff_t>(y) * stride);
    }
    unsigned char* data;
    int stride;
};

// True when every row of the part holds one colour, so that stretching it sideways leaves the
// colours as they are.
bool HasPlainRows(const PixelRows& image, const RectI& part)
{
    for (int y = part.top; y < part.bottom; ++y)
    {
        const uint32_t* row = image.Row(y);
        if (std::any_of(row + part.left + 1, row + part.right,
                        [&](uint32_t pixel) { return pixel != row[part.left]; }))
            return false;
    }
    return true;
}

// True when every row of the part equals its first, so that stretching it up or down leaves the
// colours as they are.
bool HasEqualRows(const PixelRows& image, const RectI& part)
{
    const size_t bytes = static_cast<size_t>(part.Width()) * 4;
    const uint32_t* first = image.Row(part.top) + part.left;
    for (int y = part.top + 1; y < part.bottom; ++y)
        if (std::memcmp(image.Row(y) + part.left, first, bytes) != 0)
            return false;
    return true;
}

} // namespace

CCairoDevice::CCairoDevice(int width, int height)
    : m_nWidth(ClampInt(width, 1, kMaxSurfaceSide)), m_nHeight(ClampInt(height, 1, kMaxSurfaceSide))
{
    m_pSurface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, m_nWidth, m_nHeight);
    m_pCairo = cairo_create(m_pSurface);
    cairo_set_line_width(m_pCairo, 1.0);
    Clear();
}

CCairoDevice::~CCairoDevice()
{
    cairo_destroy(m_pCairo);
    cairo_surface_destroy(m_pSurface);
}

void CCairoDevice::BeginFrame()
{
    m_vecClips.clear();
    ApplyClip();
    Clear();
}

void CCairoDevice::EndFrame()
{
    cairo_surface_flush(m_pSurface);
}

void CCairoDevice::Clear()
{
    cairo_save(m_pCairo);
    cairo_reset_clip(m_pCairo);
    cairo_set_operator(m_pCairo, CAIRO_OPERATOR_SOURCE);
    SetColor(m_dwClearColor);
    cairo_paint(m_pCairo);
    cairo_restore(m_pCairo);
}

// A surface cairo could not allocate has no pixels; drawing on it through cairo does nothing.
bool CCairoDevice::DrawsDirectly() const
{
    return m_bDirectDrawing && cairo_surface_status(m_pSurface) == CAIRO_STATUS_SUCCESS;
}

void CCairoDevice::SetColor(uint32_t argb)
{
    cairo_set_source_rgba(m_pCairo, Channel(argb, 16), Channel(argb, 8), Channel(argb, 0),
                          Channel(argb, 24));
}

void CCairoDevice::FillRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    x1 = ClampInt(x1, -kClampMargin, m_nWidth + kClampMargin);
    x2 = ClampInt(x2, -kClampMargin, m_nWidth + kClampMargin);
    y1 = ClampInt(y1, -kClampMargin, m_nHeight + kClampMargin);
    y2 = ClampInt(y2, -kClampMargin, m_nHeight + kClampMargin);
    if (x2 <= x1 || y2 <= y1)
        return;
    if (DrawsDirectly())
    {
        BlendBlock(Intersect(GetClip(), x1, y1, x2, y2), argb);
        return;
    }
    SetColor(argb);
    cairo_rectangle(m_pCairo, x1, y1, x2 - x1, y2 - y1);
    cairo_fill(m_pCairo);
}

// What cairo does for a pixel-aligned block of a solid colour: the colour premultiplied as
// cairo converts it, painted over each pixel.
void CCairoDevice::BlendBlock(const RectI& block, uint32_t argb)
{
    const uint32_t pixel = PremultiplyColor(argb);
    if (pixel == 0 || block.Width() <= 0)
        return;
    cairo_surface_flush(m_pSurface);
    const PixelRows surface(m_pSurface);
    for (int y = block.top; y < block.bottom; ++y)
        BlendPixelOver(surface.Row(y) + block.left, pixel, block.Width());
    cairo_surface_mark_dirty_rectangle(m_pSurface, block.left, block.top, block.Width(),
                                       block.Height());
}

// The outline is a 1-pixel line through the centres of the border pixels, so it covers exactly
// the columns x1 and x2 - 1 and the rows y1 and y2 - 1 of the rectangle; each pixel is painted
// once, so a translucent outline has an even tone, corners included.
void CCairoDevice::StrokeRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    x1 = ClampInt(x1, -kClampMargin, m_nWidth + kClampMargin);
    x2 = ClampInt(x2, -kClampMargin, m_nWidth + kClampMargin);
    y1 = ClampInt(y1, -kClampMargin, m_nHeight + kClampMargin);
    y2 = ClampInt(y2, -kClampMargin, m_nHeight + kClampMargin);
    if (x2 <= x1 || y2 <= y1)
        return;
    if (x2 - x1 <= 2 || y2 - y1 <= 2)
    {
        FillRect(x1, y1, x2, y2, argb); // every pixel is a border pixel
        return;
    }
    SetColor(argb);
    cairo_set_line_join(m_pCairo, CAIRO_LINE_JOIN_MITER);
    cairo_rectangle(m_pCairo, x1 + 0.5, y1 + 0.5, x2 - x1 - 1, y2 - y1 - 1);
    cairo_stroke(m_pCairo);
}

// Both end pixels belong to the line (square caps on pixel centres).
void CCairoDevice::DrawLine(int x1, int y1, int x2, int y2, uint32_t argb)
{
    SetColor(argb);
    cairo_set_line_cap(m_pCairo, CAIRO_LINE_CAP_SQUARE);
    cairo_move_to(m_pCairo, x1 + 0.5, y1 + 0.5);
    cairo_line_to(m_pCairo, x2 + 0.5, y2 + 0.5);
    cairo_stroke(m_pCairo);
}

TextureId CCairoDevice::LoadTexture(const std::string& path)
{
    return m_imageCache.Load(path);
}

SizeI CCairoDevice::GetTextureSize(TextureId texture) const
{
    return m_imageCache.GetSize(texture);
}

bool CCairoDevice::IsTransparent(TextureId texture, int x, int y) const
{
    return m_imageCache.IsTransparent(texture, x, y);
}

void CCairoDevice::DrawTexture(TextureId texture, const RectI& source, int x, int y, int width,
                               int height, uint8_t alpha, float scale)
{
    cairo_surface_t* image = m_imageCache.GetSurface(texture);
    if (image == nullptr || width <= 0 || height <= 0 || alpha == 0 || !std::isfinite(scale) ||
        scale <= 0.0f)
        return;
    const int64_t sourceWidth = int64_t(source.right) - source.left;
    const int64_t sourceHeight = int64_t(source.bottom) - source.top;
    const SourceClip clip = ClipSource(source, m_imageCache.GetSize(texture));
    if (sourceWidth <= 0 || sourceHeight <= 0 || clip.IsEmpty())
        return;
    const double scaleX = double(width) / double(sourceWidth);
    const double scaleY = double(height) / double(sourceHeight);
    if (!IsUsableScale(scaleX * scale) || !IsUsableScale(scaleY * scale))
        return;
    // Inside the image, so within int.
    const RectI part{int(clip.left), int(clip.top), int(clip.right), int(clip.bottom)};
    if (DrawsDirectly() && scale == 1.0f &&
        BlendTexture(image, source, part, x, y, width, height, alpha))
        return;
    const bool exact = scaleX == 1.0 && scaleY == 1.0 && scale == 1.0f;
    PaintTexture(image, source, part, x, y, scaleX * scale, scaleY * scale, exact, alpha);
}

// Unscaled images, and images stretched only along rows or columns that hold one colour (a
// frame's edges and fill), come out of cairo as copies of source pixels painted over the
// surface, so they are blended here row by row. False when the draw is not of that kind.
bool CCairoDevice::BlendTexture(cairo_surface_t* image, const RectI& source, const RectI& part,
                                int x, int y, int width, int height, uint8_t alpha)
{
    const bool sameWidth = width == int64_t(source.right) - source.left;
    const bool sameHeight = height == int64_t(source.bottom) - source.top;
    const bool wholeSource = part.left == source.left && part.top == source.top &&
                             part.right == source.right && part.bottom == source.bottom;
    if (!(sameWidth && sameHeight) && !wholeSource)
        return false; // a stretched rectangle reaching out of the image
    const PixelRows pixels(image);
    if ((!sameWidth && !HasPlainRows(pixels, part)) || (!sameHeight && !HasEqualRows(pixels, part)))
        return false;

    const int64_t left = int64_t(x) + (part.left - source.left);
    const int64_t top = int64_t(y) + (part.top - source.top);
    const RectI area =
        Intersect(GetClip(), left, top, sameWidth ? left + part.Width() : left + width,
                  sameHeight ? top + part.Height() : top + height);
    if (area.Width() <= 0)
        return true;
    cairo_surface_flush(m_pSurface);
    const PixelRows surface(m_pSurface);
    for (int row = area.top; row < area.bottom; ++row)
    {
        const uint32_t* sourceRow = pixels.Row(sameHeight ? int(part.top + (row - top)) : part.top);
        uint32_t* target = surface.Row(row) + area.left;
        if (sameWidth)
            BlendRowOver(target, sourceRow + part.left + (area.left - left), area.Width(), alpha);
        else
            BlendPixelOver(target, ScalePixel(sourceRow[part.left], alpha), area.Width());
    }
    cairo_surface_mark_dirty_rectangle(m_pSurface, area.left, area.top, area.Width(),
                                       area.Height());
    return true;
}

// The source rectangle is mapped onto the destination size, then scaled about (x, y). The
// pattern is the part of the image inside the source rectangle (a sub-surface unless that is
// the whole image) padded at its edges, so that neither filtering nor stretching pulls in pixels
// of neighbouring atlas frames.
void CCairoDevice::PaintTexture(cairo_surface_t* image, const RectI& source, const RectI& part,
                                int x, int y, double scaleX, double scaleY, bool exact,
                                uint8_t alpha)
{
    const bool wholeImage = part.left == 0 && part.top == 0 &&
                            part.right == cairo_image_surface_get_width(image) &&
                            part.bottom == cairo_image_surface_get_height(image);
    cairo_surface_t* picture =
        wholeImage ? cairo_surface_reference(image)
                   : cairo_surface_create_for_rectangle(image, part.left, part.top, part.Width(),
                                                        part.Height());
    cairo_save(m_pCairo);
    cairo_translate(m_pCairo, x, y);
    cairo_scale(m_pCairo, scaleX, scaleY);
    cairo_translate(m_pCairo, -double(source.left), -double(source.top));
    cairo_set_source_surface(m_pCairo, picture, part.left, part.top);
    cairo_pattern_t* pattern = cairo_get_source(m_pCairo);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern, exact ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    cairo_rectangle(m_pCairo, part.left, part.top, part.Width(), part.Height());
    cairo_clip(m_pCairo);
    cairo_paint_with_alpha(m_pCairo, alpha / 255.0);
    cairo_restore(m_pCairo);
    cairo_surface_destroy(picture);
}

void CCairoDevice::DrawText(int x, int y, const std::string& utf8, const FontSpec& font,
                            uint32_t argb, uint32_t shadowArgb)
{
    if (utf8.empty())
        return;
    PangoLayout* layout = m_textCache.Get(utf8, font);
    if ((shadowArgb >> 24) != 0)
        ShowLayout(x + 1, y + 1, layout, shadowArgb);
    ShowLayout(x, y, layout, argb);
}

void CCairoDevice::ShowLayout(int x, int y, PangoLayout* layout, uint32_t argb)
{
    SetColor(argb);
    cairo_move_to(m_pCairo, x, y);
    pango_cairo_show_layout(m_pCairo, layout);
    cairo_new_path(m_pCairo);
}

SizeI CCairoDevice::MeasureText(const std::string& utf8, const FontSpec& font)
{
    SizeI size;
    pango_layout_get_pixel_size(m_textCache.Get(utf8, font), &size.cx, &size.cy);
    return size;
}

void CCairoDevice::PushClip(const RectI& clip)
{
    m_vecClips.push_back(Intersect(GetClip(), clip.left, clip.top, clip.right, clip.bottom));
    ApplyClip();
}

void CCairoDevice::PopClip()
{
    if (m_vecClips.empty())
        return;
    m_vecClips.pop_back();
    ApplyClip();
}

RectI CCairoDevice::GetClip() const
{
    return m_vecClips.empty() ? RectI{0, 0, m_nWidth, m_nHeight} : m_vecClips.back();
}

void CCairoDevice::ApplyClip()
{
    cairo_reset_clip(m_pCairo);
    if (m_vecClips.empty())
        return;
    const RectI& clip = m_vecClips.back();
    cairo_rectangle(m_pCairo, clip.left, clip.top, clip.Width(), clip.Height());
    cairo_clip(m_pCairo);
}

bool CCairoDevice::SavePng(const std::string& path)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return false;
    cairo_surface_flush(m_pSurface);
    return cairo_surface_write_to_png(m_pSurface, path.c_str()) == CAIRO_STATUS_SUCCESS;
}

int CCairoDevice::GetStride() const
{
    return cairo_image_surface_get_stride(m_pSurface);
}

const uint8_t* CCairoDevice::GetData()
{
    cairo_surface_flush(m_pSurface);
    return cairo_image_surface_get_data(m_pSurface);
}

uint32_t CCairoDevice::GetPixel(int x, int y)
{
    const uint8_t* data = GetData();
    if (data == nullptr || x < 0 || y < 0 || x >= m_nWidth || y >= m_nHeight)
        return 0;
    const uint8_t* row = data + static_cast<size_t>(y) * GetStride();
    uint32_t pixel = 0;
    std::memcpy(&pixel, row + static_cast<size_t>(x) * 4, sizeof pixel);
    return pixel;
}

void CCairoDevice::ClearCaches()
{
    m_imageCache.Clear();
    m_textCache.Clear();
}

} // namespace QzPlatform
