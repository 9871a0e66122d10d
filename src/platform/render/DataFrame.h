// One frame of a section: an image, or a rectangle of an atlas image, and its kind.
#pragma once

#include "platform/render/AniFile.h"
#include "platform/render/DataSet.h"
#include "platform/render/DeviceTexture.h"

namespace QzPlatform
{

class CDataFrame final : public IDataFrame
{
public:
    // resolvedPath: the image's real file name (empty: no image).
    CDataFrame(std::string resolvedPath, const AniFrameSpec& desc);

    int GetFrameWidth() override { return GetSize().cx; }
    int GetFrameHeight() override { return GetSize().cy; }
    int GetKind() override { return m_nKind; }
    bool IsTransparentAt(int x, int y) override;

    // Draws the part `source` (frame coordinates; null = the whole frame) stretched to
    // width x height at (x, y). The part is cut to the frame and the destination shrinks in
    // proportion; false when nothing is left to draw or the image is not loaded.
    bool Draw(const RECT* source, int x, int y, int width, int height, uint8_t alpha,
              float scale) const;

    // The atlas rectangle's size, or the image's; 0 x 0 without an image. One question to the
    // device for both sides.
    SizeI GetSize() const;

private:
    CDeviceTexture m_texture;
    bool m_bHasRect;
    RectI m_rcAtlas;
    int m_nKind;
};

} // namespace QzPlatform
