#include "platform/render/DeviceTexture.h"

namespace QzPlatform
{

TextureId CDeviceTexture::Load() const
{
    const uint32_t generation = GetRenderDeviceGeneration();
    m_nId = m_strPath.empty() ? 0 : GetRenderDevice().LoadTexture(m_strPath);
    m_nGeneration = generation;
    m_bLoaded = true;
    return m_nId;
}

} // namespace QzPlatform
