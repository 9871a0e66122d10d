#include "platform/system/HostedSystem.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/edit/EditWindowProc.h"

namespace QzPlatform
{

CHostedSystem::CHostedSystem()
{
    CEditWindowProc::Register(m_classes);
}

CHostedSystem& CHostedSystem::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CHostedSystem& s_system = *new CHostedSystem;
    return s_system;
}

HostedWindow* CHostedSystem::FindWindowOrFail(HWND hwnd)
{
    HostedWindow* window = m_windows.Find(hwnd);
    if (!window)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return window;
}

} // namespace QzPlatform
