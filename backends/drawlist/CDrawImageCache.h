// Images of the draw-list device: PNG files decoded once per path, turned into straight-alpha
// texels and packed into image atlas pages, each with a one-texel border that repeats its edge
// so that linear filtering at the image's edges does not pull in its neighbours. Given the text's
// pages, images share the first of them while they take no more than kSharedArea texels there:
// a control's skin and its caption then come from one page and are drawn by one command. When
// the text's pages start again, those images are laid out again from their files on next use.
#pragma once

#include "CDrawAtlasAllocator.h"
#include "platform/render/IRenderDevice.h"

#include <cstddef>
#include <cstdint>
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
    bool shared = false; // on the text's first page
    bool lost = false;   // its file could not be read again after the text's pages started again
};

class CDrawImageCache
{
public:
    // Larger images are refused: GPUs do not take textures much larger than this.
    static constexpr int kMaxImageSide = 16384 - 16;
    static constexpr int kPageStartSide = 512;
    static constexpr int kPageMaxSide = 2048;
    static constexpr int64_t kSharedArea = 1024 * 1024;

    // shared: the text's pages, or null for image pages only.
    CDrawImageCache(CDrawAtlasPages& pages, CDrawAtlasAllocator* shared);

    // The id of the image in the PNG file, decoding it on first use. A file that cannot be read
    // gives 0, is logged once and is not tried again until Clear.
    TextureId Load(const std::string& path);
    // The image of the id, laid out again when it has to be; null for an unknown id and for an
    // image whose file could not be read again.
    const DrawImage* Find(TextureId texture)
    {
        const size_t index = IndexOf(texture);
        if (index == kUnknown)
            return nullptr;
        DrawImage& image = m_vecImages[index];
        return image.page != nullptr || Restore(image, m_vecPaths[index]) ? &image : nullptr;
    }
    SizeI GetSize(TextureId texture) const;
    // True when the texel's alpha is 0, when (x, y) lies outside the image or the id is unknown.
    bool IsTransparent(TextureId texture, int x, int y);
    // The text's pages are about to start again: the images on them are to be laid out again.
    void ReleaseShared();

    // Forgets every image and failed path and gives the pages back. Ids are never reused.
    void Clear();

private:
    TextureId Decode(const std::string& path);
    static constexpr size_t kUnknown = SIZE_MAX;
    // The place of the id's image in m_vecImages; kUnknown for an unknown id.
    size_t IndexOf(TextureId texture) const
    {
        const TextureId index = texture - m_nFirstId;
        return texture >= m_nFirstId && index < m_vecImages.size() ? index : kUnknown;
    }
    // Reads the file and puts the image on a page: the text's first page when it has room.
    bool Lay(const std::string& path, DrawImage& image);
    bool Restore(DrawImage& image, const std::string& path);

    CDrawAtlasAllocator m_allocator;
    CDrawAtlasAllocator* m_pShared;
    int64_t m_nSharedArea = 0;           // texels of the images on the text's first page
    std::vector<std::string> m_vecPaths; // the file of each image
    std::unordered_map<std::string, TextureId> m_mapIds; // failed paths map to 0
    std::vector<DrawImage> m_vecImages;                  // the image of id m_nFirstId + index
    TextureId m_nFirstId = 1;
};

} // namespace QzPlatform
