#include "support/ScopedClock.h"

#include "platform/system/host/QzHost.h"

namespace QzTest
{

ScopedClock::ScopedClock(DWORD ms)
{
    Set(ms);
}

ScopedClock::~ScopedClock()
{
    QzPlatform::Host::UseRealClock();
}

void ScopedClock::Set(DWORD ms)
{
    QzPlatform::Host::SetTime(ms);
}

} // namespace QzTest
