#include "platform/services/QzClock.h"

namespace QzPlatform
{

// On Windows NowMs is the host's clock of platform/system/win32, which tests can hold; here
// timeGetTime is that clock already.
#ifndef _WIN32
DWORD NowMs()
{
    return timeGetTime();
}
#endif

} // namespace QzPlatform
