#include "platform/services/QzClock.h"

namespace QzPlatform
{

DWORD NowMs()
{
    return timeGetTime();
}

} // namespace QzPlatform
