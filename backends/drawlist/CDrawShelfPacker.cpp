#include "CDrawShelfPacker.h"

#include <algorithm>

namespace QzPlatform
{

namespace
{

// New shelves are a little taller than the rectangle that opens them, so that glyphs of one
// size with different heights share them.
int ShelfHeightFor(int height)
{
    return (height + 7) / 8 * 8;
}

} // namespace

bool CDrawShelfPacker::Place(int width, int height, int& x, int& y)
{
    if (width <= 0 || height <= 0 || width > m_nWidth || height > m_nHeight)
        return false;
    Shelf* best = nullptr;
    for (Shelf& shelf : m_vecShelves)
    {
        const bool fits = shelf.height >= height && m_nWidth - shelf.used >= width;
        // Tall shelves waste space on short rectangles: take the lowest one that fits.
        if (fits && shelf.height <= height * 2 && (best == nullptr || shelf.height < best->height))
            best = &shelf;
    }
    if (best == nullptr)
    {
        const int shelfHeight = std::min(ShelfHeightFor(height), m_nHeight - m_nBottom);
        if (shelfHeight < height)
            return false;
        m_vecShelves.push_back(Shelf{m_nBottom, shelfHeight, 0});
        m_nBottom += shelfHeight;
        best = &m_vecShelves.back();
    }
    x = best->used;
    y = best->y;
    best->used += width;
    return true;
}

void CDrawShelfPacker::Grow(int width, int height)
{
    m_nWidth = std::max(m_nWidth, width);
    m_nHeight = std::max(m_nHeight, height);
}

} // namespace QzPlatform
