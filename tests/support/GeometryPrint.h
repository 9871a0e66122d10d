// RECT, RectI, POINT and the sizes C3_SIZE and SizeI in expectations: equal when every member
// is, and printed as "(l,t)-(r,b)", "(x,y)" and "w x h" when an expectation fails.
#pragma once

#include "platform/render/C3Types.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/QzSystem.h"

#include <ostream>

inline bool operator==(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline bool operator!=(const RECT& a, const RECT& b)
{
    return !(a == b);
}

inline bool operator==(const POINT& a, const POINT& b)
{
    return a.x == b.x && a.y == b.y;
}

inline bool operator!=(const POINT& a, const POINT& b)
{
    return !(a == b);
}

inline void PrintTo(const RECT& rc, std::ostream* os)
{
    *os << "(" << rc.left << "," << rc.top << ")-(" << rc.right << "," << rc.bottom << ")";
}

inline void PrintTo(const POINT& pt, std::ostream* os)
{
    *os << "(" << pt.x << "," << pt.y << ")";
}

inline bool operator==(const C3_SIZE& a, const C3_SIZE& b)
{
    return a.iWidth == b.iWidth && a.iHeight == b.iHeight;
}

inline void PrintTo(const C3_SIZE& size, std::ostream* os)
{
    *os << size.iWidth << " x " << size.iHeight;
}

namespace QzPlatform
{

inline bool operator==(const RectI& a, const RectI& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline void PrintTo(const RectI& rc, std::ostream* os)
{
    *os << "(" << rc.left << "," << rc.top << ")-(" << rc.right << "," << rc.bottom << ")";
}

inline bool operator==(const SizeI& a, const SizeI& b)
{
    return a.cx == b.cx && a.cy == b.cy;
}

inline void PrintTo(const SizeI& size, std::ostream* os)
{
    *os << size.cx << " x " << size.cy;
}

} // namespace QzPlatform
