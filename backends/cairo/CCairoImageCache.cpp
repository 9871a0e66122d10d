#include "CCairoImageCache.h"

#include "platform/services/QzLog.h"

#include <cairo.h>
#include <cstring>

namespace QzPlatform
{

namespace
{

// Copies any image surface into a new ARGB32 surface; null when cairo cannot allocate it.
cairo_surface_t* ToArgb32(cairo_surface_t* image)
{
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(copy) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(copy);
        return nullptr;
    }
    cairo_t* cr = cairo_create(copy);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(cr, image, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(copy);
    return copy;
}

} // namespace

CCairoImageCache::~CCairoImageCache()
{
    Clear();
}

TextureId CCairoImageCache::Load(const std::string& path)
{
    const auto found = m_mapIds.find(path);
    if (found != m_mapIds.end())
        return found->second;
    const TextureId id = Decode(path);
    m_mapIds.emplace(path, id);
    if (id == 0)
        LogEvent("open file failed", "CCairoImageCache", __LINE__,
                 {LogText("file_name", path.c_str())});
    return id;
}

TextureId CCairoImageCache::Decode(const std::string& path)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return 0;
    cairo_surface_t* file = cairo_image_surface_create_from_png(path.c_str());
    if (cairo_surface_status(file) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(file);
        return 0;
    }
    cairo_surface_t* image = cairo_image_surface_get_format(file) == CAIRO_FORMAT_ARGB32
                                 ? cairo_surface_reference(file)
                                 : ToArgb32(file);
    cairo_surface_destroy(file);
    if (image == nullptr)
        return 0;
    const TextureId id = NextId();
    m_mapSurfaces.emplace(id, image);
    return id;
}

TextureId CCairoImageCache::NextId()
{
    ++m_nLastId;
    if (m_nLastId == 0)
        ++m_nLastId;
    return m_nLastId;
}

cairo_surface_t* CCairoImageCache::GetSurface(TextureId texture) const
{
    const auto found = m_mapSurfaces.find(texture);
    return found == m_mapSurfaces.end() ? nullptr : found->second;
}

SizeI CCairoImageCache::GetSize(TextureId texture) const
{
    cairo_surface_t* image = GetSurface(texture);
    if (image == nullptr)
        return SizeI{};
    return SizeI{cairo_image_surface_get_width(image), cairo_image_surface_get_height(image)};
}

bool CCairoImageCache::IsTransparent(TextureId texture, int x, int y) const
{
    cairo_surface_t* image = GetSurface(texture);
    if (image == nullptr)
        return true;
    if (x < 0 || y < 0 || x >= cairo_image_surface_get_width(image) ||
        y >= cairo_image_surface_get_height(image))
        return true;
    const unsigned char* row = cairo_image_surface_get_data(image) +
                               static_cast<size_t>(y) * cairo_image_surface_get_stride(image);
    uint32_t pixel = 0;
    std::memcpy(&pixel, row + static_cast<size_t>(x) * 4, sizeof pixel);
    return (pixel >> 24) == 0;
}

void CCairoImageCache::Clear()
{
    for (auto& entry : m_mapSurfaces)
        cairo_surface_destroy(entry.second);
    m_mapSurfaces.clear();
    m_mapIds.clear();
}

} // namespace QzPlatform
