// Sent and posted messages, the message loop functions, CallWindowProc and the window text.
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/window/WindowProcCaller.h"

#include <algorithm>
#include <iterator>

using QzPlatform::CHostedSystem;
using QzPlatform::CWindowProcCaller;
using QzPlatform::HostedWindow;
using QzPlatform::WindowProcRef;

namespace
{

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

// Messages whose parameters point to the sender's data, which would be gone by the time a
// posted message is read (WM_NOTIFY and the edit messages with pointers among them).
bool CarriesPointers(UINT msg)
{
    static const UINT kPointerMessages[] = {
        WM_CREATE,        WM_SETTEXT,      WM_GETTEXT,  WM_NOTIFY,
        WM_STYLECHANGING, WM_STYLECHANGED, WM_NCCREATE,
        0x00B0, // EM_GETSEL
        0x00B2, // EM_GETRECT
        0x00B3, // EM_SETRECT
        0x00B4, // EM_SETRECTNP
        0x00C2, // EM_REPLACESEL
        0x00C4, // EM_GETLINE
        0x00CB, // EM_SETTABSTOPS
    };
    return std::find(std::begin(kPointerMessages), std::end(kPointerMessages), msg) !=
           std::end(kPointerMessages);
}

LRESULT SendCommon(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, bool unicode)
{
    const HostedWindow* window = System().FindWindowOrFail(hwnd);
    if (!window)
        return 0;
    const WindowProcRef proc = window->proc; // the window may go away during the call
    return CWindowProcCaller::Call(proc, unicode, hwnd, msg, wParam, lParam);
}

BOOL PostCommon(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, bool unicode)
{
    if (hwnd && !System().FindWindowOrFail(hwnd))
        return FALSE;
    if (CarriesPointers(msg))
    {
        SetLastError(ERROR_MESSAGE_SYNC_ONLY);
        return FALSE;
    }
    const MSG posted = {hwnd, msg, wParam, lParam, timeGetTime(), System().Input().CursorPos()};
    System().Queue().Post(posted, unicode);
    return TRUE;
}

bool PassesRange(UINT msg, UINT first, UINT last)
{
    if ((first == 0 && last == 0) || first > last)
        return true;
    return msg >= first && msg <= last;
}

BOOL PeekCommon(LPMSG lpMsg, HWND hWnd, UINT first, UINT last, UINT remove, bool unicode)
{
    if (!lpMsg)
        return FALSE;
    const HWND threadOnly = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
    const auto filter = [hWnd, first, last, threadOnly](const MSG& msg)
    {
        if (!PassesRange(msg.message, first, last))
            return false;
        if (hWnd == threadOnly)
            return msg.hwnd == nullptr;
        return !hWnd || msg.hwnd == hWnd || System().Windows().IsDescendant(hWnd, msg.hwnd);
    };
    return System().Queue().Retrieve(filter, (remove & PM_REMOVE) != 0, unicode, lpMsg);
}

LRESULT DispatchCommon(const MSG* lpMsg, bool unicode)
{
    if (!lpMsg || !lpMsg->hwnd)
        return 0;
    return SendCommon(lpMsg->hwnd, lpMsg->message, lpMsg->wParam, lpMsg->lParam, unicode);
}

LRESULT CallWindowProcCommon(WNDPROC prev, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam,
                             bool unicode)
{
    if (!prev)
        return 0;
    const WindowProcRef proc = System().Thunks().Resolve(prev, unicode);
    return CWindowProcCaller::Call(proc, unicode, hwnd, msg, wParam, lParam);
}

template <class C>
int GetTextCommon(HWND hwnd, C* buffer, int capacity, decltype(SendMessageA)* send)
{
    if (!buffer || capacity <= 0)
        return 0;
    buffer[0] = C(0);
    if (!System().FindWindowOrFail(hwnd))
        return 0;
    const LRESULT length =
        send(hwnd, WM_GETTEXT, static_cast<WPARAM>(capacity), reinterpret_cast<LPARAM>(buffer));
    return static_cast<int>(std::clamp<LRESULT>(length, 0, capacity - 1));
}

} // namespace

LRESULT SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return SendCommon(hWnd, Msg, wParam, lParam, false);
}

LRESULT SendMessageW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return SendCommon(hWnd, Msg, wParam, lParam, true);
}

BOOL PostMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return PostCommon(hWnd, Msg, wParam, lParam, false);
}

BOOL PostMessageW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return PostCommon(hWnd, Msg, wParam, lParam, true);
}

BOOL PeekMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg)
{
    return PeekCommon(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, wRemoveMsg, false);
}

BOOL PeekMessageW(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg)
{
    return PeekCommon(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, wRemoveMsg, true);
}

// No characters are made from keys here (see QzWinUser.h).
BOOL TranslateMessage(const MSG* lpMsg)
{
    if (!lpMsg)
        return FALSE;
    const UINT msg = lpMsg->message;
    return msg == WM_KEYDOWN || msg == WM_KEYUP || msg == WM_SYSKEYDOWN || msg == WM_SYSKEYUP;
}

LRESULT DispatchMessageA(const MSG* lpMsg)
{
    return DispatchCommon(lpMsg, false);
}

LRESULT DispatchMessageW(const MSG* lpMsg)
{
    return DispatchCommon(lpMsg, true);
}

LRESULT CallWindowProcA(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return CallWindowProcCommon(lpPrevWndFunc, hWnd, Msg, wParam, lParam, false);
}

LRESULT CallWindowProcW(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return CallWindowProcCommon(lpPrevWndFunc, hWnd, Msg, wParam, lParam, true);
}

BOOL SetWindowTextA(HWND hWnd, LPCSTR lpString)
{
    return SendMessageA(hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(lpString)) ? TRUE : FALSE;
}

BOOL SetWindowTextW(HWND hWnd, LPCWSTR lpString)
{
    return SendMessageW(hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(lpString)) ? TRUE : FALSE;
}

int GetWindowTextA(HWND hWnd, LPSTR lpString, int nMaxCount)
{
    return GetTextCommon(hWnd, lpString, nMaxCount, SendMessageA);
}

int GetWindowTextW(HWND hWnd, LPWSTR lpString, int nMaxCount)
{
    return GetTextCommon(hWnd, lpString, nMaxCount, SendMessageW);
}

int GetWindowTextLengthA(HWND hWnd)
{
    return static_cast<int>(SendMessageA(hWnd, WM_GETTEXTLENGTH, 0, 0));
}

int GetWindowTextLengthW(HWND hWnd)
{
    return static_cast<int>(SendMessageW(hWnd, WM_GETTEXTLENGTH, 0, 0));
}
