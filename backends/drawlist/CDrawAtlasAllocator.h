// Space for images or glyphs on a family of atlas pages. A page starts small and doubles up to
// the largest side; then a new page opens. A rectangle too large for any page gets a page of its
// own, sized to it. Every page keeps its white block in the top-left corner.
#pragma once

#include "CDrawAtlasPages.h"
#include "CDrawShelfPacker.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace QzPlatform
{

struct AtlasPlace
{
    DrawAtlas* page = nullptr;
    int x = 0;
    int y = 0;
};

class CDrawAtlasAllocator
{
public:
    CDrawAtlasAllocator(CDrawAtlasPages& pages, int startSide, int maxSide, size_t maxPages);
    ~CDrawAtlasAllocator();
    CDrawAtlasAllocator(const CDrawAtlasAllocator&) = delete;
    CDrawAtlasAllocator& operator=(const CDrawAtlasAllocator&) = delete;

    // A free width x height area; false when the page limit is reached or the size is not
    // positive. pageLimit lowers the limit for this call: the area goes only on the first
    // pageLimit pages (grown when they can be).
    bool Place(int width, int height, AtlasPlace& place, size_t pageLimit = SIZE_MAX);
    bool Holds(const DrawAtlas* page) const;
    // Gives every page back to the page set.
    void Clear();
    size_t GetPageCount() const { return m_vecPages.size(); }

private:
    struct Page
    {
        DrawAtlas* atlas;
        CDrawShelfPacker packer;
        bool growable;
    };

    Page& AddPage(int width, int height, bool growable);
    bool PlaceOnOwnPage(int width, int height, AtlasPlace& place, size_t pageLimit);
    bool PlaceByGrowing(int width, int height, AtlasPlace& place, size_t pageLimit);
    bool PlaceOnNewPage(int width, int height, AtlasPlace& place, size_t pageLimit);

    CDrawAtlasPages& m_pages;
    int m_nStartSide;
    int m_nMaxSide;
    size_t m_nMaxPages;
    std::vector<Page> m_vecPages;
};

} // namespace QzPlatform
