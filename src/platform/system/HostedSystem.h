// The state of the hosted window system, one for the process: windows, classes, the posted
// messages, input contexts, cursors, the input state the host feeds and the clock. The Win32
// functions of QzWinUser.h work on it; other platform units reach it here. It registers the
// built-in window classes ("EDIT") when it is made.
#pragma once

#include "platform/system/host/HostClock.h"
#include "platform/system/host/HostInputState.h"
#include "platform/system/imm/ImmContextTable.h"
#include "platform/system/window/CursorTable.h"
#include "platform/system/window/HostedWindowTable.h"
#include "platform/system/window/PostedMessageQueue.h"
#include "platform/system/window/ProcThunkTable.h"
#include "platform/system/window/WindowClassTable.h"

namespace QzPlatform
{

class CHostedSystem
{
public:
    static CHostedSystem& Instance();

    CHostedWindowTable& Windows() { return m_windows; }
    CWindowClassTable& Classes() { return m_classes; }
    CPostedMessageQueue& Queue() { return m_queue; }
    CProcThunkTable& Thunks() { return m_thunks; }
    CImmContextTable& Contexts() { return m_contexts; }
    CCursorTable& Cursors() { return m_cursors; }
    CHostInputState& Input() { return m_input; }
    CHostClock& Clock() { return m_clock; }

    // The window, or null with ERROR_INVALID_WINDOW_HANDLE as the last error.
    HostedWindow* FindWindowOrFail(HWND hwnd);

private:
    CHostedSystem();

    CHostedWindowTable m_windows;
    CWindowClassTable m_classes;
    CPostedMessageQueue m_queue;
    CProcThunkTable m_thunks;
    CImmContextTable m_contexts;
    CCursorTable m_cursors;
    CHostInputState m_input;
    CHostClock m_clock;
};

} // namespace QzPlatform
