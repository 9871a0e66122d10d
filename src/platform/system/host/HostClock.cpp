#include "platform/system/host/HostClock.h"

#include <cstdint>
#include <time.h>

namespace QzPlatform
{

void CHostClock::Set(DWORD ms)
{
    m_bManual = true;
    m_dwManual = ms;
}

void CHostClock::Advance(DWORD ms)
{
    Set(Now() + ms);
}

// The coarse monotonic clock: the same clock as the precise one, read without asking the
// hardware (a few nanoseconds instead of tens) at the resolution of the kernel tick, a few
// milliseconds, which the real timeGetTime does not better by default. Drawing asks the time
// for every window of every frame.
DWORD CHostClock::RealNow()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    const uint64_t ms =
        static_cast<uint64_t>(now.tv_sec) * 1000u + static_cast<uint64_t>(now.tv_nsec) / 1000000u;
    return static_cast<DWORD>(ms);
}

} // namespace QzPlatform
