#include "platform/services/QzScreenAdapter.h"

#include "platform/render/IRenderDevice.h"

#include <cstdint>
#include <limits>

namespace QzPlatform
{

namespace
{

// numerator / denominator (denominator > 0) rounded to the nearest integer, halves away from
// zero, so that the rounding is the same on both sides of the origin.
int64_t RoundedDivide(int64_t numerator, int64_t denominator)
{
    if (numerator >= 0)
        return (2 * numerator + denominator) / (2 * denominator);
    return -((-2 * numerator + denominator) / (2 * denominator));
}

LONG ClampToLong(int64_t value)
{
    const int64_t lowest = std::numeric_limits<LONG>::min();
    const int64_t highest = std::numeric_limits<LONG>::max();
    return static_cast<LONG>(value < lowest ? lowest : (value > highest ? highest : value));
}

} // namespace

int CQzScreenAdapter::GetResolutionIndex() const
{
    if (m_nResolutionIndex >= 0)
        return m_nResolutionIndex;
    const int width = GetRenderDevice().GetScreenWidth();
    if (width < 800)
        return 2;
    if (width < 1024)
        return 1;
    return 0;
}

void CQzScreenAdapter::SetWindowSize(int width, int height)
{
    m_nWindowWidth = width;
    m_nWindowHeight = height;
}

void CQzScreenAdapter::ConvertPoint(POINT& point, int direction) const
{
    const IRenderDevice& device = GetRenderDevice();
    point.x = Convert(point.x, direction, m_nWindowWidth, device.GetScreenWidth());
    point.y = Convert(point.y, direction, m_nWindowHeight, device.GetScreenHeight());
}

void CQzScreenAdapter::ConvertRect(RECT& rect, int direction) const
{
    POINT topLeft = {rect.left, rect.top};
    POINT bottomRight = {rect.right, rect.bottom};
    ConvertPoint(topLeft, direction);
    ConvertPoint(bottomRight, direction);
    rect = {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

void CQzScreenAdapter::Reset()
{
    *this = CQzScreenAdapter();
}

LONG CQzScreenAdapter::Convert(LONG value, int direction, int windowExtent, int logicalExtent) const
{
    if (windowExtent <= 0 || logicalExtent <= 0 || windowExtent == logicalExtent)
        return value;
    if (direction == kToLogical)
        return ClampToLong(RoundedDivide(int64_t{value} * logicalExtent, windowExtent));
    if (direction == kToScreen)
        return ClampToLong(RoundedDivide(int64_t{value} * windowExtent, logicalExtent));
    return value;
}

CQzScreenAdapter& GetScreenAdapter()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzScreenAdapter& adapter = *new CQzScreenAdapter;
    return adapter;
}

} // namespace QzPlatform
