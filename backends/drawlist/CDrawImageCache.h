// Images of the draw-list device: PNG files decoded once per path, turned into straight-alpha
// texels and packed into image atlas pages, each with a one-texel border that repeats its edge
// so that linear filtering at the image's edges does not pull in its neighbours.
#pragma once

#include "CDrawAtlasAllocator.h"
#include "platform/render/IRenderDevice.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace QzPlatform
{

// Where an image lies: its top-left texel on the page and its size in texels.
struct DrawImage
{
    const DrawAtlas* page = nullptr;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

class CDrawImageCache
{
public:
    // Larger images are refused: GPUs do not take textures much larger than this.
    static constexpr int kMaxImageSide = 16384 - 16;
    static constexpr int kPageStartSide = 512;
    static constexpr int kPageMaxSide = 2048;

    explicit CDrawImageCache(CDrawAtlasPages& pages);

    // The id of the image in the PNG file, decoding it on first use. A file that cannot be read
    // gives 0, is logged once and is not tried again until Clear.
    TextureId Load(const std::string& path);
    // The image of the id; null for an unknown id.
    const DrawImage* Find(TextureId texture) const
    {
        const TextureId index = texture - m_nFirstId;
        return texture >= m_nFirstId && index < m_vecImages.size() ? &m_vecImages[index] : nullptr;
    }
    SizeI GetSize(TextureId texture) const;
    // True when the texel's alpha is 0, when (x, y) lies outside the image or the id is unknown.
    bool IsTransparent(TextureId texture, int x, int y) const;

    // Forgets every image and failed path and gives the pages back. Ids are never reused.
    void Clear();

private:
    TextureId Decode(const std::string& path);

    CDrawAtlasAllocator m_allocator;
    std::unordered_map<std::string, TextureId> m_mapIds; // failed paths map to 0
    std::vector<DrawImage> m_vecImages;                  // the image of id m_nFirstId + index
    TextureId m_nFirstId = 1;
};

} // namespace QzPlatform
