#include "CCairoDevice.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
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
    Clear();
}

void CCairoDevice::EndFrame()
{
    cairo_surface_flush(m_pSurface);
}

void CCairoDevice::Clear()
{
    cairo_save(m_pCairo);
    cairo_set_operator(m_pCairo, CAIRO_OPERATOR_SOURCE);
    SetColor(m_dwClearColor);
    cairo_paint(m_pCairo);
    cairo_restore(m_pCairo);
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
    SetColor(argb);
    cairo_rectangle(m_pCairo, x1, y1, x2 - x1, y2 - y1);
    cairo_fill(m_pCairo);
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

// The source rectangle is mapped onto the destination size, then scaled about (x, y). The
// pattern is a sub-surface of the source rectangle padded at its edges, so that neither
// filtering nor stretching pulls in pixels of neighbouring atlas frames.
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
    const bool exact = scaleX == 1.0 && scaleY == 1.0 && scale == 1.0f;

    cairo_surface_t* part = cairo_surface_create_for_rectangle(
        image, double(clip.left), double(clip.top), double(clip.right - clip.left),
        double(clip.bottom - clip.top));
    cairo_save(m_pCairo);
    cairo_translate(m_pCairo, x, y);
    cairo_scale(m_pCairo, scaleX * scale, scaleY * scale);
    cairo_translate(m_pCairo, -double(source.left), -double(source.top));
    cairo_set_source_surface(m_pCairo, part, double(clip.left), double(clip.top));
    cairo_pattern_t* pattern = cairo_get_source(m_pCairo);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern, exact ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    cairo_rectangle(m_pCairo, double(clip.left), double(clip.top), double(clip.right - clip.left),
                    double(clip.bottom - clip.top));
    cairo_clip(m_pCairo);
    cairo_paint_with_alpha(m_pCairo, alpha / 255.0);
    cairo_restore(m_pCairo);
    cairo_surface_destroy(part);
}

void CCairoDevice::DrawText(int x, int y, const std::string& utf8, const FontSpec& font,
                            uint32_t argb, uint32_t shadowArgb)
{
    if (utf8.empty())
        return;
    if ((shadowArgb >> 24) != 0)
        ShowLayout(x + 1, y + 1, utf8, font, shadowArgb);
    ShowLayout(x, y, utf8, font, argb);
}

void CCairoDevice::ShowLayout(int x, int y, const std::string& utf8, const FontSpec& font,
                              uint32_t argb)
{
    PangoLayout* layout = m_textCache.Get(utf8, font);
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
    if (x < 0 || y < 0 || x >= m_nWidth || y >= m_nHeight)
        return 0;
    const uint8_t* row = GetData() + static_cast<size_t>(y) * GetStride();
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
