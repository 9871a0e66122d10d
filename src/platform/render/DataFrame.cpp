#include "platform/render/DataFrame.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace QzPlatform
{

namespace
{

// Where the cut part [cutFirst, cutLast) of [first, last) lands on a destination of `extent`
// pixels that the whole span is stretched to. Doubles keep hostile extents from overflowing.
void MapSpan(int64_t first, int64_t last, int64_t cutFirst, int64_t cutLast, int extent,
             int& destFirst, int& destLast)
{
    if (cutFirst == first && cutLast == last)
    {
        // Nothing cut (the common case): the formula below gives exactly 0 and extent.
        destFirst = 0;
        destLast = extent;
        return;
    }
    const double span = static_cast<double>(last - first);
    destFirst =
        static_cast<int>(std::floor((cutFirst - first) * static_cast<double>(extent) / span));
    destLast = static_cast<int>(std::floor((cutLast - first) * static_cast<double>(extent) / span));
}

// origin + delta * scale, kept inside the int range whatever the scale.
int ScaledOffset(int origin, int delta, float scale)
{
    if (delta == 0)
        return origin;
    const double value = std::round(origin + static_cast<double>(delta) * scale);
    if (!(value > INT_MIN))
        return INT_MIN;
    return value < INT_MAX ? static_cast<int>(value) : INT_MAX;
}

} // namespace

CDataFrame::CDataFrame(std::string resolvedPath, const AniFrameSpec& desc)
    : m_texture(std::move(resolvedPath)), m_bHasRect(desc.hasRect), m_rcAtlas(desc.rect),
      m_nKind(desc.kind)
{
}

SizeI CDataFrame::GetSize() const
{
    const SizeI imageSize = m_texture.GetSize();
    if (imageSize.cx <= 0 || imageSize.cy <= 0)
        return SizeI();
    if (!m_bHasRect)
        return imageSize;
    SizeI size;
    size.cx = m_rcAtlas.Width();
    size.cy = m_rcAtlas.Height();
    return size;
}

bool CDataFrame::IsTransparentAt(int x, int y)
{
    const SizeI size = GetSize();
    if (x < 0 || y < 0 || x >= size.cx || y >= size.cy)
        return true;
    const int imageX = m_bHasRect ? m_rcAtlas.left + x : x;
    const int imageY = m_bHasRect ? m_rcAtlas.top + y : y;
    return GetRenderDevice().IsTransparent(m_texture.GetId(), imageX, imageY);
}

bool CDataFrame::Draw(const RECT* source, int x, int y, int width, int height, uint8_t alpha,
                      float scale) const
{
    const SizeI size = GetSize();
    if (size.cx <= 0 || size.cy <= 0 || width <= 0 || height <= 0)
        return false;
    const int64_t left = source ? source->left : 0;
    const int64_t top = source ? source->top : 0;
    const int64_t right = source ? source->right : size.cx;
    const int64_t bottom = source ? source->bottom : size.cy;
    if (right <= left || bottom <= top)
        return false;
    const int64_t cutLeft = std::max<int64_t>(left, 0);
    const int64_t cutTop = std::max<int64_t>(top, 0);
    const int64_t cutRight = std::min<int64_t>(right, size.cx);
    const int64_t cutBottom = std::min<int64_t>(bottom, size.cy);
    if (cutRight <= cutLeft || cutBottom <= cutTop)
        return false;

    int destLeft = 0;
    int destRight = 0;
    int destTop = 0;
    int destBottom = 0;
    MapSpan(left, right, cutLeft, cutRight, width, destLeft, destRight);
    MapSpan(top, bottom, cutTop, cutBottom, height, destTop, destBottom);
    if (destRight <= destLeft || destBottom <= destTop)
        return false;

    RectI imageSource;
    imageSource.left = static_cast<int>(cutLeft) + (m_bHasRect ? m_rcAtlas.left : 0);
    imageSource.top = static_cast<int>(cutTop) + (m_bHasRect ? m_rcAtlas.top : 0);
    imageSource.right = imageSource.left + static_cast<int>(cutRight - cutLeft);
    imageSource.bottom = imageSource.top + static_cast<int>(cutBottom - cutTop);
    // The device scales about the point it is given, so a cut corner moves by the scaled cut.
    const int destX = ScaledOffset(x, destLeft, scale);
    const int destY = ScaledOffset(y, destTop, scale);
    GetRenderDevice().DrawTexture(m_texture.GetId(), imageSource, destX, destY,
                                  destRight - destLeft, destBottom - destTop, alpha, scale);
    return true;
}

} // namespace QzPlatform
