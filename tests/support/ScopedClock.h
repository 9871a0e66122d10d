// Holds timeGetTime at the value a test sets while the object lives, through the host's clock
// controls; the destructor gives the clock back to the system clock.
#pragma once

#include "platform/system/QzSystem.h"

namespace QzTest
{

class ScopedClock
{
public:
    explicit ScopedClock(DWORD ms);
    ~ScopedClock();
    ScopedClock(const ScopedClock&) = delete;
    ScopedClock& operator=(const ScopedClock&) = delete;

    void Set(DWORD ms);
};

} // namespace QzTest
