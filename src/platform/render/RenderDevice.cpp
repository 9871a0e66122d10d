#include "platform/render/IRenderDevice.h"
#include "platform/render/NullRenderDevice.h"
#include "platform/render/RenderDeviceGeneration.h"

namespace QzPlatform
{

namespace
{

IRenderDevice* g_pDevice = nullptr;
uint32_t g_nGeneration = 0;

} // namespace

IRenderDevice& GetRenderDevice()
{
    if (g_pDevice)
        return *g_pDevice;
    return GetNullRenderDevice();
}

void SetRenderDevice(IRenderDevice* device)
{
    g_pDevice = device;
    ++g_nGeneration;
}

uint32_t GetRenderDeviceGeneration()
{
    return g_nGeneration;
}

} // namespace QzPlatform
