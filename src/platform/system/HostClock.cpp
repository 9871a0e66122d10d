#include "platform/system/HostClock.h"

#include <chrono>

namespace QzPlatform
{

DWORD CHostClock::Now() const
{
    return m_bManual ? m_dwManual : RealNow();
}

void CHostClock::Set(DWORD ms)
{
    m_bManual = true;
    m_dwManual = ms;
}

void CHostClock::Advance(DWORD ms)
{
    Set(Now() + ms);
}

DWORD CHostClock::RealNow()
{
    const auto elapsed = std::chrono::steady_clock::now().time_since_epoch();
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
    return static_cast<DWORD>(static_cast<uint64_t>(ms));
}

} // namespace QzPlatform
