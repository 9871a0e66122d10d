#include "CDrawAtlasPages.h"

#include <algorithm>

namespace QzPlatform
{

DrawAtlas* CDrawAtlasPages::Create(int width, int height)
{
    auto page = std::make_unique<DrawAtlas>();
    page->id = ++m_nLastId;
    page->width = width;
    page->height = height;
    page->version = 1;
    page->texels.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 0u);
    const int side = std::min({kWhiteSide, width, height});
    for (int y = 0; y < side; ++y)
        std::fill_n(page->texels.begin() + static_cast<ptrdiff_t>(y) * width, side, 0xFFFFFFFFu);
    m_vecPages.push_back(std::move(page));
    return m_vecPages.back().get();
}

void CDrawAtlasPages::Grow(DrawAtlas& page, int width, int height)
{
    const int oldWidth = page.width;
    const int oldHeight = page.height;
    std::vector<uint32_t> texels(static_cast<size_t>(width) * static_cast<size_t>(height), 0u);
    for (int y = 0; y < oldHeight; ++y)
        std::copy_n(page.texels.begin() + static_cast<ptrdiff_t>(y) * oldWidth, oldWidth,
                    texels.begin() + static_cast<ptrdiff_t>(y) * width);
    page.texels.swap(texels);
    page.width = width;
    page.height = height;
    ++page.version;
    if (m_fnGrown)
        m_fnGrown(page, oldWidth, oldHeight);
}

void CDrawAtlasPages::Remove(const DrawAtlas* page)
{
    m_vecPages.erase(std::remove_if(m_vecPages.begin(), m_vecPages.end(),
                                    [page](const std::unique_ptr<DrawAtlas>& candidate)
                                    { return candidate.get() == page; }),
                     m_vecPages.end());
}

const DrawAtlas* CDrawAtlasPages::Find(uint32_t id) const
{
    for (const auto& page : m_vecPages)
        if (page->id == id)
            return page.get();
    return nullptr;
}

} // namespace QzPlatform
