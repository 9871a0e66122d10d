// Integer helpers for pixel arithmetic on values a host or a data file may push to extremes:
// sums and products are taken in 64 bits and brought back into the int range.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>

namespace QzPlatform
{

inline int ClampToInt(int64_t nValue)
{
    return static_cast<int>(std::clamp<int64_t>(nValue, INT_MIN, INT_MAX));
}

// a + b (or a - b) brought back into the int range.
inline int AddClamped(int64_t a, int64_t b)
{
    return ClampToInt(a + b);
}
inline int SubClamped(int64_t a, int64_t b)
{
    return ClampToInt(a - b);
}

} // namespace QzPlatform
