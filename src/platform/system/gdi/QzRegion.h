// A GDI region as a list of rectangles. A point is in the region when some rectangle holds it:
// left and top edges inclusive, right and bottom exclusive. The rectangles may overlap; the
// list is what the region was made of, or what a combination produced.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <vector>

namespace QzPlatform
{

class CQzRegion
{
public:
    CQzRegion() = default;
    // Empty rectangles are dropped; inverted ones hold no point and are dropped as well.
    explicit CQzRegion(const std::vector<RECT>& rects);

    bool Contains(int x, int y) const;
    // The bounding box; returns NULLREGION, SIMPLEREGION or COMPLEXREGION.
    int Box(RECT* box) const;
    int Kind() const;
    const std::vector<RECT>& Rects() const { return m_vecRects; }

    // RGN_AND, RGN_OR, RGN_XOR, RGN_DIFF or RGN_COPY (which ignores `other`).
    static CQzRegion Combine(const CQzRegion& first, const CQzRegion& other, int mode);

private:
    static CQzRegion Subtract(const CQzRegion& from, const CQzRegion& cut);

    std::vector<RECT> m_vecRects;
};

} // namespace QzPlatform
