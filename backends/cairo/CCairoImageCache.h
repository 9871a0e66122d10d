// Decoded PNG images of the cairo device, one per file path. Every image is kept as a cairo
// ARGB32 surface (premultiplied alpha), whatever the file's own pixel format, so that pixel
// queries read one layout.
#pragma once

#include "platform/render/IRenderDevice.h"

#include <cstddef>
#include <string>
#include <unordered_map>

typedef struct _cairo_surface cairo_surface_t;

namespace QzPlatform
{

class CCairoImageCache
{
public:
    CCairoImageCache() = default;
    ~CCairoImageCache();
    CCairoImageCache(const CCairoImageCache&) = delete;
    CCairoImageCache& operator=(const CCairoImageCache&) = delete;

    // The id of the image in the PNG file, decoding it on first use. A file that cannot be read
    // gives 0, is logged once and is not tried again until Clear.
    TextureId Load(const std::string& path);
    // The decoded image, or null for an unknown id. Owned by the cache.
    cairo_surface_t* GetSurface(TextureId texture) const;
    // Size of the image; 0 x 0 for an unknown id.
    SizeI GetSize(TextureId texture) const;
    // True when the pixel's alpha is 0, when (x, y) lies outside the image or the id is unknown.
    bool IsTransparent(TextureId texture, int x, int y) const;

    // Forgets every image and every failed path. Ids handed out before are never reused.
    void Clear();
    size_t GetImageCount() const { return m_mapSurfaces.size(); }

private:
    TextureId Decode(const std::string& path);
    TextureId NextId();

    std::unordered_map<std::string, TextureId> m_mapIds; // failed paths map to 0
    std::unordered_map<TextureId, cairo_surface_t*> m_mapSurfaces;
    TextureId m_nLastId = 0;
};

} // namespace QzPlatform
