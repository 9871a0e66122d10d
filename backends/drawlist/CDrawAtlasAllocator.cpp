#include "CDrawAtlasAllocator.h"

#include <algorithm>

namespace QzPlatform
{

namespace
{

// The white block and a gap of one texel after it.
const int kWhiteArea = CDrawAtlasPages::kWhiteSide + 1;
// The height of the shelf the white block opens (see CDrawShelfPacker).
const int kWhiteShelf = (kWhiteArea + 7) / 8 * 8;

} // namespace

CDrawAtlasAllocator::CDrawAtlasAllocator(CDrawAtlasPages& pages, int startSide, int maxSide,
                                         size_t maxPages)
    : m_pages(pages), m_nStartSide(startSide), m_nMaxSide(maxSide), m_nMaxPages(maxPages)
{
}

CDrawAtlasAllocator::~CDrawAtlasAllocator()
{
    Clear();
}

void CDrawAtlasAllocator::Clear()
{
    for (const Page& page : m_vecPages)
        m_pages.Remove(page.atlas);
    m_vecPages.clear();
}

bool CDrawAtlasAllocator::Place(int width, int height, AtlasPlace& place, size_t pageLimit)
{
    if (width <= 0 || height <= 0)
        return false;
    pageLimit = std::min(pageLimit, m_nMaxPages);
    if (width > m_nMaxSide || height > m_nMaxSide - kWhiteShelf)
        return PlaceOnOwnPage(width, height, place, pageLimit);
    for (size_t index = 0; index < m_vecPages.size() && index < pageLimit; ++index)
    {
        Page& page = m_vecPages[index];
        if (page.packer.Place(width, height, place.x, place.y))
        {
            place.page = page.atlas;
            return true;
        }
    }
    return PlaceByGrowing(width, height, place, pageLimit) ||
           PlaceOnNewPage(width, height, place, pageLimit);
}

bool CDrawAtlasAllocator::Holds(const DrawAtlas* page) const
{
    return std::any_of(m_vecPages.begin(), m_vecPages.end(),
                       [page](const Page& own) { return own.atlas == page; });
}

CDrawAtlasAllocator::Page& CDrawAtlasAllocator::AddPage(int width, int height, bool growable)
{
    m_vecPages.push_back(
        Page{m_pages.Create(width, height), CDrawShelfPacker(width, height), growable});
    Page& page = m_vecPages.back();
    int x = 0;
    int y = 0;
    page.packer.Place(kWhiteArea, kWhiteArea, x, y);
    return page;
}

bool CDrawAtlasAllocator::PlaceOnOwnPage(int width, int height, AtlasPlace& place, size_t pageLimit)
{
    if (m_vecPages.size() >= pageLimit)
        return false;
    Page& page = AddPage(std::max(width, kWhiteArea), height + kWhiteShelf, false);
    place.page = page.atlas;
    return page.packer.Place(width, height, place.x, place.y);
}

bool CDrawAtlasAllocator::PlaceByGrowing(int width, int height, AtlasPlace& place, size_t pageLimit)
{
    for (size_t index = 0; index < m_vecPages.size() && index < pageLimit; ++index)
    {
        Page& page = m_vecPages[index];
        while (page.growable && page.packer.GetWidth() < m_nMaxSide)
        {
            const int side = std::min(page.packer.GetWidth() * 2, m_nMaxSide);
            page.packer.Grow(side, side);
            m_pages.Grow(*page.atlas, side, side);
            if (page.packer.Place(width, height, place.x, place.y))
            {
                place.page = page.atlas;
                return true;
            }
        }
    }
    return false;
}

bool CDrawAtlasAllocator::PlaceOnNewPage(int width, int height, AtlasPlace& place, size_t pageLimit)
{
    if (m_vecPages.size() >= pageLimit)
        return false;
    int side = m_nStartSide;
    while (side < m_nMaxSide && (side < width || side - kWhiteShelf < height))
        side = std::min(side * 2, m_nMaxSide);
    Page& page = AddPage(side, side, true);
    place.page = page.atlas;
    return page.packer.Place(width, height, place.x, place.y);
}

} // namespace QzPlatform
