// Key state, beeps and the millisecond clock, all fed or read by the host.
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinUser.h"

using QzPlatform::CHostedSystem;

namespace
{

constexpr unsigned short kDownBit = 0x8000;
constexpr unsigned short kToggledBit = 0x0001;

} // namespace

SHORT GetKeyState(int nVirtKey)
{
    const QzPlatform::CHostInputState& input = CHostedSystem::Instance().Input();
    unsigned short state = input.IsKeyDown(nVirtKey) ? kDownBit : 0;
    if (input.IsKeyToggled(nVirtKey))
        state |= kToggledBit;
    return static_cast<SHORT>(state);
}

SHORT GetAsyncKeyState(int vKey)
{
    return static_cast<SHORT>(CHostedSystem::Instance().Input().IsKeyDown(vKey) ? kDownBit : 0);
}

BOOL MessageBeep(UINT uType)
{
    CHostedSystem::Instance().Input().AddBeep(uType);
    return TRUE;
}

DWORD timeGetTime()
{
    return CHostedSystem::Instance().Clock().Now();
}
