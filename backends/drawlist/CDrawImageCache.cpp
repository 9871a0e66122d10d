#include "CDrawImageCache.h"

#include "platform/services/QzLog.h"

#include <algorithm>
#include <cairo.h>
#include <cstdint>
#include <cstring>
#include <limits>

namespace QzPlatform
{

namespace
{

// The PNG file as an ARGB32 surface (premultiplied), whatever its pixel format; null when it
// cannot be read.
cairo_surface_t* ReadPng(const std::string& path)
{
    cairo_surface_t* file = cairo_image_surface_create_from_png(path.c_str());
    if (cairo_surface_status(file) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(file);
        return nullptr;
    }
    if (cairo_image_surface_get_format(file) == CAIRO_FORMAT_ARGB32)
        return file;
    const int width = cairo_image_surface_get_width(file);
    const int height = cairo_image_surface_get_height(file);
    cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(copy) == CAIRO_STATUS_SUCCESS)
    {
        cairo_t* cr = cairo_create(copy);
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_surface(cr, file, 0, 0);
        cairo_paint(cr);
        cairo_destroy(cr);
        cairo_surface_flush(copy);
    }
    cairo_surface_destroy(file);
    if (cairo_surface_status(copy) == CAIRO_STATUS_SUCCESS)
        return copy;
    cairo_surface_destroy(copy);
    return nullptr;
}

uint32_t Unpremultiply(uint32_t pixel)
{
    const uint32_t alpha = pixel >> 24;
    if (alpha == 255 || alpha == 0)
        return alpha == 0 ? 0u : pixel;
    uint32_t result = alpha << 24;
    for (int shift = 0; shift < 24; shift += 8)
    {
        const uint32_t channel = (pixel >> shift) & 0xFF;
        result |= std::min<uint32_t>(255, (channel * 255 + alpha / 2) / alpha) << shift;
    }
    return result;
}

// Copies the image to the page with (x, y) its top-left texel, and repeats its edge texels one
// texel further out on every side.
void CopyPadded(cairo_surface_t* image, DrawAtlas& page, int x, int y)
{
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    const int stride = cairo_image_surface_get_stride(image);
    const unsigned char* data = cairo_image_surface_get_data(image);
    for (int row = -1; row <= height; ++row)
    {
        const int sourceRow = std::min(std::max(row, 0), height - 1);
        const unsigned char* source = data + static_cast<size_t>(sourceRow) * stride;
        uint32_t* target = page.texels.data() + static_cast<size_t>(y + row) * page.width + (x - 1);
        for (int column = -1; column <= width; ++column)
        {
            const int sourceColumn = std::min(std::max(column, 0), width - 1);
            uint32_t pixel = 0;
            std::memcpy(&pixel, source + static_cast<size_t>(sourceColumn) * 4, sizeof pixel);
            *target++ = Unpremultiply(pixel);
        }
    }
    ++page.version;
}

} // namespace

CDrawImageCache::CDrawImageCache(CDrawAtlasPages& pages, CDrawAtlasAllocator* shared)
    : m_allocator(pages, kPageStartSide, kPageMaxSide, std::numeric_limits<size_t>::max()),
      m_pShared(shared)
{
}

TextureId CDrawImageCache::Load(const std::string& path)
{
    const auto found = m_mapIds.find(path);
    if (found != m_mapIds.end())
        return found->second;
    const TextureId id = Decode(path);
    m_mapIds.emplace(path, id);
    if (id == 0)
        LogEvent("open file failed", "CDrawImageCache", __LINE__,
                 {LogText("file_name", path.c_str())});
    return id;
}

TextureId CDrawImageCache::Decode(const std::string& path)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return 0;
    DrawImage placed;
    if (!Lay(path, placed))
        return 0;
    m_vecImages.push_back(placed);
    m_vecPaths.push_back(path);
    return m_nFirstId + static_cast<TextureId>(m_vecImages.size() - 1);
}

bool CDrawImageCache::Lay(const std::string& path, DrawImage& placed)
{
    cairo_surface_t* image = ReadPng(path);
    if (image == nullptr)
        return false;
    cairo_surface_flush(image);
    placed.width = cairo_image_surface_get_width(image);
    placed.height = cairo_image_surface_get_height(image);
    const int width = placed.width + 2;
    const int height = placed.height + 2;
    const int64_t area = int64_t(width) * height;
    AtlasPlace place;
    const bool fits = placed.width <= kMaxImageSide && placed.height <= kMaxImageSide;
    placed.shared = fits && m_pShared && m_nSharedArea + area <= kSharedArea &&
                    m_pShared->Place(width, height, place, 1);
    const bool laid = placed.shared || (fits && m_allocator.Place(width, height, place));
    if (laid)
        CopyPadded(image, *place.page, place.x + 1, place.y + 1);
    cairo_surface_destroy(image);
    if (!laid)
        return false;
    m_nSharedArea += placed.shared ? area : 0;
    placed.page = place.page;
    placed.x = place.x + 1;
    placed.y = place.y + 1;
    return true;
}

// A file that can no longer be read loses its image until Clear: it is not read every frame.
bool CDrawImageCache::Restore(DrawImage& image, const std::string& path)
{
    if (image.lost)
        return false;
    const int width = image.width;
    const int height = image.height;
    image.lost = !Lay(path, image) || image.width != width || image.height != height;
    if (image.lost)
    {
        image = DrawImage{nullptr, 0, 0, width, height, false, true};
        LogEvent("open file failed", "CDrawImageCache", __LINE__,
                 {LogText("file_name", path.c_str())});
    }
    return !image.lost;
}

void CDrawImageCache::ReleaseShared()
{
    for (DrawImage& image : m_vecImages)
    {
        if (!image.shared)
            continue;
        image.page = nullptr;
        image.shared = false;
    }
    m_nSharedArea = 0;
}

SizeI CDrawImageCache::GetSize(TextureId texture) const
{
    const size_t index = IndexOf(texture);
    if (index == kUnknown || m_vecImages[index].lost)
        return SizeI{};
    return SizeI{m_vecImages[index].width, m_vecImages[index].height};
}

bool CDrawImageCache::IsTransparent(TextureId texture, int x, int y)
{
    const DrawImage* image = Find(texture);
    if (image == nullptr || x < 0 || y < 0 || x >= image->width || y >= image->height)
        return true;
    const DrawAtlas& page = *image->page;
    const size_t index = static_cast<size_t>(image->y + y) * page.width + (image->x + x);
    return (page.texels[index] >> 24) == 0;
}

void CDrawImageCache::Clear()
{
    m_nFirstId += static_cast<TextureId>(m_vecImages.size());
    m_vecImages.clear();
    m_vecPaths.clear();
    m_nSharedArea = 0;
    m_mapIds.clear();
    m_allocator.Clear();
}

} // namespace QzPlatform
