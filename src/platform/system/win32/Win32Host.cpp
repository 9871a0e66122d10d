// The host controls a Windows build keeps: the clock, which the library reads through NowMs so
// that a host or test can hold it; the key state, which is the thread's keyboard state that
// GetKeyState reads; the cursor position; and a reset between tests.
#include "platform/system/host/QzHost.h"

#include "platform/services/QzClock.h"

namespace QzPlatform
{

namespace
{

struct ManualClock
{
    bool bOn = false;
    DWORD dwNow = 0;
};

ManualClock& Clock()
{
    static ManualClock clock;
    return clock;
}

BOOL CALLBACK DestroyThreadWindow(HWND hWnd, LPARAM)
{
    DestroyWindow(hWnd);
    return TRUE;
}

} // namespace

DWORD NowMs()
{
    const ManualClock& clock = Clock();
    return clock.bOn ? clock.dwNow : timeGetTime();
}

namespace Host
{

void SetTime(DWORD ms)
{
    Clock() = {true, ms};
}

void AdvanceTime(DWORD ms)
{
    SetTime(NowMs() + ms);
}

void UseRealClock()
{
    Clock().bOn = false;
}

void SetKeyState(int vk, bool down)
{
    BYTE state[256] = {};
    if (vk < 0 || vk > 255 || !GetKeyboardState(state))
        return;
    const bool wasDown = (state[vk] & 0x80) != 0;
    SetKeyState(vk, down, (state[vk] & 0x01) != (down && !wasDown));
}

void SetKeyState(int vk, bool down, bool toggled)
{
    BYTE state[256] = {};
    if (vk < 0 || vk > 255 || !GetKeyboardState(state))
        return;
    state[vk] = static_cast<BYTE>((down ? 0x80 : 0) | (toggled ? 0x01 : 0));
    SetKeyboardState(state);
}

void SetCursorPos(int x, int y)
{
    ::SetCursorPos(x, y);
}

void ResetForTesting()
{
    EnumThreadWindows(GetCurrentThreadId(), &DestroyThreadWindow, 0);
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
    {
    }
    BYTE state[256] = {};
    SetKeyboardState(state);
    UseRealClock();
}

} // namespace Host

} // namespace QzPlatform
