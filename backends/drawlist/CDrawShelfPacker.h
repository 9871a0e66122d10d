// Places rectangles on one atlas page in shelves: rows whose height is set by the first
// rectangle put there, filled left to right. Rectangles of about one height (glyphs of a size,
// icons) share a shelf; the page may grow, and every shelf then reaches the new right edge.
#pragma once

#include <vector>

namespace QzPlatform
{

class CDrawShelfPacker
{
public:
    CDrawShelfPacker(int width, int height) : m_nWidth(width), m_nHeight(height) {}

    // The top-left of a free width x height area, marked as used; false when none is left.
    bool Place(int width, int height, int& x, int& y);
    void Grow(int width, int height);

    int GetWidth() const { return m_nWidth; }
    int GetHeight() const { return m_nHeight; }

private:
    struct Shelf
    {
        int y;
        int height;
        int used; // width taken from the left
    };

    int m_nWidth;
    int m_nHeight;
    int m_nBottom = 0; // top of the next shelf
    std::vector<Shelf> m_vecShelves;
};

} // namespace QzPlatform
