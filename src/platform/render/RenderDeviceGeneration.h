// Texture ids belong to the device that gave them. Holders of ids (animation frames, bitmaps)
// compare this number with the one they loaded under and load again when a device was
// installed since.
#pragma once

#include <cstdint>

namespace QzPlatform
{

// Grows by one on every SetRenderDevice.
uint32_t GetRenderDeviceGeneration();

} // namespace QzPlatform
