// The millisecond clock of timeGetTime. It follows a monotonic system clock until the host sets
// it; from then on it moves only when the host advances it, and wraps at 32 bits like the real
// one.
#pragma once

#include "platform/system/QzWinTypes.h"

namespace QzPlatform
{

class CHostClock
{
public:
    DWORD Now() const { return m_bManual ? m_dwManual : RealNow(); }
    void Set(DWORD ms);
    // Takes the clock over at its current value when it still follows the system clock.
    void Advance(DWORD ms);
    void UseRealClock() { m_bManual = false; }
    bool IsManual() const { return m_bManual; }

private:
    static DWORD RealNow();

    bool m_bManual = false;
    DWORD m_dwManual = 0;
};

} // namespace QzPlatform
