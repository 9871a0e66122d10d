// The base library's millisecond clock: the system's timeGetTime, which a host or test may set
// (QzHost.h). The library reads the time through it only.
#pragma once

#include "platform/system/QzSystem.h"

namespace QzPlatform
{

DWORD NowMs();

} // namespace QzPlatform
