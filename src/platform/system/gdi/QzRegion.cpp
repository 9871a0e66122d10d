#include "platform/system/gdi/QzRegion.h"

#include <algorithm>

namespace QzPlatform
{

namespace
{

bool IsEmpty(const RECT& rect)
{
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

RECT Intersection(const RECT& a, const RECT& b)
{
    RECT result;
    result.left = std::max(a.left, b.left);
    result.top = std::max(a.top, b.top);
    result.right = std::min(a.right, b.right);
    result.bottom = std::min(a.bottom, b.bottom);
    return result;
}

RECT MakeRect(LONG left, LONG top, LONG right, LONG bottom)
{
    RECT rect;
    rect.left = left;
    rect.top = top;
    rect.right = right;
    rect.bottom = bottom;
    return rect;
}

// The parts of `piece` outside `cut`: up to four rectangles (above, below, left, right).
void AppendDifference(const RECT& piece, const RECT& cut, std::vector<RECT>* out)
{
    const RECT overlap = Intersection(piece, cut);
    if (IsEmpty(overlap))
    {
        out->push_back(piece);
        return;
    }
    const RECT parts[4] = {
        MakeRect(piece.left, piece.top, piece.right, overlap.top),
        MakeRect(piece.left, overlap.bottom, piece.right, piece.bottom),
        MakeRect(piece.left, overlap.top, overlap.left, overlap.bottom),
        MakeRect(overlap.right, overlap.top, piece.right, overlap.bottom),
    };
    for (const RECT& part : parts)
    {
        if (!IsEmpty(part))
            out->push_back(part);
    }
}

} // namespace

CQzRegion::CQzRegion(const std::vector<RECT>& rects)
{
    for (const RECT& rect : rects)
    {
        if (!IsEmpty(rect))
            m_vecRects.push_back(rect);
    }
}

bool CQzRegion::Contains(int x, int y) const
{
    for (const RECT& rect : m_vecRects)
    {
        if (x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom)
            return true;
    }
    return false;
}

int CQzRegion::Kind() const
{
    if (m_vecRects.empty())
        return NULLREGION;
    return m_vecRects.size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

int CQzRegion::Box(RECT* box) const
{
    *box = MakeRect(0, 0, 0, 0);
    if (m_vecRects.empty())
        return NULLREGION;
    *box = m_vecRects.front();
    for (const RECT& rect : m_vecRects)
    {
        box->left = std::min(box->left, rect.left);
        box->top = std::min(box->top, rect.top);
        box->right = std::max(box->right, rect.right);
        box->bottom = std::max(box->bottom, rect.bottom);
    }
    return Kind();
}

CQzRegion CQzRegion::Subtract(const CQzRegion& from, const CQzRegion& cut)
{
    std::vector<RECT> pieces = from.m_vecRects;
    for (const RECT& cutter : cut.m_vecRects)
    {
        std::vector<RECT> next;
        for (const RECT& piece : pieces)
            AppendDifference(piece, cutter, &next);
        pieces.swap(next);
    }
    return CQzRegion(pieces);
}

CQzRegion CQzRegion::Combine(const CQzRegion& first, const CQzRegion& other, int mode)
{
    std::vector<RECT> rects;
    switch (mode)
    {
    case RGN_COPY:
        return first;
    case RGN_OR:
        rects = first.m_vecRects;
        rects.insert(rects.end(), other.m_vecRects.begin(), other.m_vecRects.end());
        return CQzRegion(rects);
    case RGN_AND:
        for (const RECT& a : first.m_vecRects)
        {
            for (const RECT& b : other.m_vecRects)
                rects.push_back(Intersection(a, b));
        }
        return CQzRegion(rects);
    case RGN_DIFF:
        return Subtract(first, other);
    case RGN_XOR:
        rects = Subtract(first, other).m_vecRects;
        for (const RECT& rect : Subtract(other, first).m_vecRects)
            rects.push_back(rect);
        return CQzRegion(rects);
    default:
        return CQzRegion();
    }
}

} // namespace QzPlatform
