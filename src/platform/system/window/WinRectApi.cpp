// The rectangle helpers. A rectangle holds the points with left <= x < right and
// top <= y < bottom; it is empty when it has no width or no height.
#include "platform/system/QzWinUser.h"

#include <algorithm>

BOOL SetRect(LPRECT lprc, int xLeft, int yTop, int xRight, int yBottom)
{
    if (!lprc)
        return FALSE;
    *lprc = {xLeft, yTop, xRight, yBottom};
    return TRUE;
}

BOOL SetRectEmpty(LPRECT lprc)
{
    return SetRect(lprc, 0, 0, 0, 0);
}

BOOL CopyRect(LPRECT lprcDst, const RECT* lprcSrc)
{
    if (!lprcDst || !lprcSrc)
        return FALSE;
    *lprcDst = *lprcSrc;
    return TRUE;
}

BOOL IsRectEmpty(const RECT* lprc)
{
    return !lprc || lprc->right <= lprc->left || lprc->bottom <= lprc->top;
}

BOOL EqualRect(const RECT* lprc1, const RECT* lprc2)
{
    if (!lprc1 || !lprc2)
        return FALSE;
    return lprc1->left == lprc2->left && lprc1->top == lprc2->top && lprc1->right == lprc2->right &&
           lprc1->bottom == lprc2->bottom;
}

BOOL PtInRect(const RECT* lprc, POINT pt)
{
    if (!lprc)
        return FALSE;
    return pt.x >= lprc->left && pt.x < lprc->right && pt.y >= lprc->top && pt.y < lprc->bottom;
}

BOOL OffsetRect(LPRECT lprc, int dx, int dy)
{
    if (!lprc)
        return FALSE;
    lprc->left += dx;
    lprc->right += dx;
    lprc->top += dy;
    lprc->bottom += dy;
    return TRUE;
}

BOOL InflateRect(LPRECT lprc, int dx, int dy)
{
    if (!lprc)
        return FALSE;
    lprc->left -= dx;
    lprc->right += dx;
    lprc->top -= dy;
    lprc->bottom += dy;
    return TRUE;
}

// An empty intersection gives an empty rectangle (all zero) and FALSE.
BOOL IntersectRect(LPRECT lprcDst, const RECT* lprcSrc1, const RECT* lprcSrc2)
{
    if (!lprcDst || !lprcSrc1 || !lprcSrc2)
        return FALSE;
    const RECT both = {
        std::max(lprcSrc1->left, lprcSrc2->left), std::max(lprcSrc1->top, lprcSrc2->top),
        std::min(lprcSrc1->right, lprcSrc2->right), std::min(lprcSrc1->bottom, lprcSrc2->bottom)};
    if (IsRectEmpty(lprcSrc1) || IsRectEmpty(lprcSrc2) || IsRectEmpty(&both))
    {
        SetRectEmpty(lprcDst);
        return FALSE;
    }
    *lprcDst = both;
    return TRUE;
}

// Empty rectangles take no part; the union of two empty ones is empty and gives FALSE.
BOOL UnionRect(LPRECT lprcDst, const RECT* lprcSrc1, const RECT* lprcSrc2)
{
    if (!lprcDst || !lprcSrc1 || !lprcSrc2)
        return FALSE;
    const bool empty1 = IsRectEmpty(lprcSrc1);
    const bool empty2 = IsRectEmpty(lprcSrc2);
    if (empty1 && empty2)
    {
        SetRectEmpty(lprcDst);
        return FALSE;
    }
    if (empty1 || empty2)
        return CopyRect(lprcDst, empty1 ? lprcSrc2 : lprcSrc1);
    *lprcDst = {std::min(lprcSrc1->left, lprcSrc2->left), std::min(lprcSrc1->top, lprcSrc2->top),
                std::max(lprcSrc1->right, lprcSrc2->right),
                std::max(lprcSrc1->bottom, lprcSrc2->bottom)};
    return TRUE;
}
