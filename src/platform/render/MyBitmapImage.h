// The bitmap image that MyBitmapCreate gives: one image file drawn whole.
#pragma once

#include "platform/render/DeviceTexture.h"
#include "platform/render/MyBitmap.h"

namespace QzPlatform
{

class CMyBitmapImage final : public IMyBitmap
{
public:
    // resolvedPath: the image's real file name.
    explicit CMyBitmapImage(std::string resolvedPath) : m_texture(std::move(resolvedPath)) {}

    void Release() override { delete this; }
    C3_SIZE GetSize() const override;
    BOOL ShowImage(int x, int y, int reserved, int width, int height, uint8_t alpha, int reserved2,
                   int reserved3, float scale) override;

    bool IsLoaded() const { return m_texture.GetId() != 0; }

private:
    CDeviceTexture m_texture;
};

} // namespace QzPlatform
