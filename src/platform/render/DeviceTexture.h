// An image file as the current render device knows it. The texture id is asked for on first use
// and again whenever another device has been installed since, so that holders never draw with
// an id of a device that is gone.
#pragma once

#include "platform/render/IRenderDevice.h"
#include "platform/render/RenderDeviceGeneration.h"

#include <string>
#include <utility>

namespace QzPlatform
{

class CDeviceTexture
{
public:
    // path: a real file name (already resolved); empty means "no image".
    explicit CDeviceTexture(std::string path) : m_strPath(std::move(path)) {}

    const std::string& GetPath() const { return m_strPath; }
    // 0 when the device cannot load the image. Frames ask for it on every draw, so the check of
    // the loaded id is inline.
    TextureId GetId() const
    {
        if (m_bLoaded && m_nGeneration == GetRenderDeviceGeneration())
            return m_nId;
        return Load();
    }
    // 0 x 0 when the device cannot load the image.
    SizeI GetSize() const
    {
        const TextureId id = GetId();
        return id == 0 ? SizeI() : GetRenderDevice().GetTextureSize(id);
    }

private:
    // Asks the current device for the id.
    TextureId Load() const;

    std::string m_strPath;
    mutable TextureId m_nId = 0;
    mutable uint32_t m_nGeneration = 0;
    mutable bool m_bLoaded = false;
};

} // namespace QzPlatform
