#include "platform/render/DeviceTexture.h"

#include "platform/render/RenderDeviceGeneration.h"

namespace QzPlatform
{

TextureId CDeviceTexture::GetId() const
{
    const uint32_t generation = GetRenderDeviceGeneration();
    if (m_bLoaded && m_nGeneration == generation)
        return m_nId;
    m_nId = m_strPath.empty() ? 0 : GetRenderDevice().LoadTexture(m_strPath);
    m_nGeneration = generation;
    m_bLoaded = true;
    return m_nId;
}

SizeI CDeviceTexture::GetSize() const
{
    const TextureId id = GetId();
    if (id == 0)
        return SizeI();
    return GetRenderDevice().GetTextureSize(id);
}

} // namespace QzPlatform
