#include "CDrawGlyphCache.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cstring>

namespace QzPlatform
{

namespace
{

// Larger bitmaps are not kept (no font size the device accepts makes them).
const int kMaxGlyphSide = 1536;

// A cairo ARGB32 surface with the glyph drawn in white, its origin at (originX, originY).
cairo_surface_t* DrawGlyphImage(PangoFont* font, PangoGlyph glyph, int width, int height,
                                int originX, int originY)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(surface);
        return nullptr;
    }
    PangoGlyphString* glyphs = pango_glyph_string_new();
    pango_glyph_string_set_size(glyphs, 1);
    std::memset(&glyphs->glyphs[0], 0, sizeof glyphs->glyphs[0]);
    glyphs->glyphs[0].glyph = glyph;
    glyphs->glyphs[0].attr.is_cluster_start = 1;
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgba(cr, 1.0, 1.0, 1.0, 1.0);
    cairo_move_to(cr, originX, originY);
    pango_cairo_show_glyph_string(cr, font, glyphs);
    cairo_destroy(cr);
    pango_glyph_string_free(glyphs);
    cairo_surface_flush(surface);
    return surface;
}

// Straight-alpha texels of the premultiplied surface; `colour` tells whether any pixel is other
// than white, and `empty` whether every pixel is transparent.
void ReadTexels(cairo_surface_t* surface, std::vector<uint32_t>& texels, bool& colour, bool& empty)
{
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    texels.resize(static_cast<size_t>(width) * height);
    colour = false;
    empty = true;
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            uint32_t pixel = 0;
            std::memcpy(&pixel, data + static_cast<size_t>(y) * stride + x * 4, sizeof pixel);
            const uint32_t alpha = pixel >> 24;
            const uint32_t grey = alpha * 0x010101u;
            colour = colour || (pixel & 0xFFFFFFu) != grey;
            empty = empty && alpha == 0;
            uint32_t texel = 0;
            if (alpha != 0)
            {
                texel = alpha << 24;
                for (int shift = 0; shift < 24; shift += 8)
                    texel |= std::min<uint32_t>(255, (((pixel >> shift) & 0xFF) * 255 + alpha / 2) /
                                                         alpha)
                             << shift;
            }
            texels[static_cast<size_t>(y) * width + x] = texel;
        }
    }
}

// The glyph's texels over their shadow (see GetShadowed): with g the glyph's coverage and s the
// shadow's, the alpha is g + s (1 - g) and the grey g over that alpha, so that a colour c drawn
// with it adds c g and keeps (1 - g)(1 - s) of what lay below, as the two draws would.
std::vector<uint32_t> ShadowedTexels(const DrawAtlas& page, int x, int y, int width, int height)
{
    const auto coverage = [&](int column, int row) -> uint32_t
    {
        if (column < 0 || row < 0 || column >= width || row >= height)
            return 0;
        return page.texels[static_cast<size_t>(y + row) * page.width + x + column] >> 24;
    };
    std::vector<uint32_t> texels(static_cast<size_t>(width + 1) * (height + 1));
    for (int row = 0; row <= height; ++row)
        for (int column = 0; column <= width; ++column)
        {
            const uint32_t glyph = coverage(column, row);
            const uint32_t shadow = coverage(column - 1, row - 1);
            const uint32_t alpha = glyph + (shadow * (255 - glyph) + 127) / 255;
            if (alpha == 0)
                continue;
            const uint32_t grey = std::min<uint32_t>(255, (glyph * 255 + alpha / 2) / alpha);
            texels[static_cast<size_t>(row) * (width + 1) + column] =
                alpha << 24 | grey * 0x010101u;
        }
    return texels;
}

} // namespace

CDrawGlyphCache::CDrawGlyphCache(CDrawAtlasPages& pages)
    : m_allocator(pages, kPageStartSide, kPageMaxSide, kMaxPages)
{
}

CDrawGlyphCache::~CDrawGlyphCache()
{
    Clear();
}

void CDrawGlyphCache::Clear()
{
    for (const auto& font : m_mapFonts)
        g_object_unref(font.first);
    m_mapFonts.clear();
    m_mapGlyphs.clear();
    m_mapShadowed.clear();
    m_allocator.Clear();
}

uint64_t CDrawGlyphCache::KeyOf(PangoFont* font, PangoGlyph glyph)
{
    auto found = m_mapFonts.find(font);
    if (found == m_mapFonts.end())
    {
        g_object_ref(font);
        found = m_mapFonts.emplace(font, static_cast<uint32_t>(m_mapFonts.size())).first;
    }
    return (uint64_t(found->second) << 32) | glyph;
}

const DrawGlyph* CDrawGlyphCache::Get(PangoFont* font, PangoGlyph glyph)
{
    const uint64_t key = KeyOf(font, glyph);
    const auto found = m_mapGlyphs.find(key);
    if (found != m_mapGlyphs.end())
        return &found->second;
    DrawGlyph result;
    if (!Rasterise(font, glyph, result))
        return nullptr;
    return &m_mapGlyphs.emplace(key, result).first->second;
}

const DrawGlyph* CDrawGlyphCache::GetShadowed(const DrawAtlas& page, int x, int y, int width,
                                              int height)
{
    const uint64_t key = uint64_t(page.id) << 40 | uint64_t(uint32_t(x)) << 20 | uint32_t(y);
    const auto found = m_mapShadowed.find(key);
    if (found != m_mapShadowed.end())
        return &found->second;
    const std::vector<uint32_t> texels = ShadowedTexels(page, x, y, width, height);
    DrawGlyph result;
    result.width = width + 1;
    result.height = height + 1;
    if (!Store(texels, result))
        return nullptr;
    return &m_mapShadowed.emplace(key, result).first->second;
}

// The bitmap covers the glyph's ink rectangle rounded out to whole pixels, plus a pixel on each
// side for antialiasing.
bool CDrawGlyphCache::Rasterise(PangoFont* font, PangoGlyph glyph, DrawGlyph& result)
{
    PangoRectangle ink = {};
    pango_font_get_glyph_extents(font, glyph, &ink, nullptr);
    if (ink.width <= 0 || ink.height <= 0)
        return true;
    result.left = PANGO_PIXELS_FLOOR(ink.x) - 1;
    result.top = PANGO_PIXELS_FLOOR(ink.y) - 1;
    result.width = PANGO_PIXELS_CEIL(ink.x + ink.width) + 1 - result.left;
    result.height = PANGO_PIXELS_CEIL(ink.y + ink.height) + 1 - result.top;
    if (result.width > kMaxGlyphSide || result.height > kMaxGlyphSide)
        return true;
    cairo_surface_t* image =
        DrawGlyphImage(font, glyph, result.width, result.height, -result.left, -result.top);
    if (image == nullptr)
        return true;
    std::vector<uint32_t> texels;
    bool empty = true;
    ReadTexels(image, texels, result.colour, empty);
    cairo_surface_destroy(image);
    return empty || Store(texels, result);
}

// Puts the bitmap of result.width x result.height texels on a page; false when none has room.
bool CDrawGlyphCache::Store(const std::vector<uint32_t>& texels, DrawGlyph& result)
{
    // A gap of one texel to the next glyph keeps linear filtering from mixing them.
    AtlasPlace place;
    if (!m_allocator.Place(result.width + 1, result.height + 1, place))
        return false;
    for (int row = 0; row < result.height; ++row)
        std::memcpy(place.page->texels.data() +
                        static_cast<size_t>(place.y + row) * place.page->width + place.x,
                    texels.data() + static_cast<size_t>(row) * result.width,
                    static_cast<size_t>(result.width) * sizeof(uint32_t));
    ++place.page->version;
    result.page = place.page;
    result.x = place.x;
    result.y = place.y;
    return true;
}

} // namespace QzPlatform
