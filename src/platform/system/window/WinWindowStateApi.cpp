// Focus, enabled state, visibility, position and the coordinates of windows.
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"

#include <algorithm>

using QzPlatform::CHostedSystem;
using QzPlatform::HostedWindow;

namespace
{

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

// A window can take the focus unless it or an ancestor is disabled or it is being destroyed.
bool CanTakeFocus(HWND hwnd)
{
    const HostedWindow* window = System().Windows().Find(hwnd);
    if (window && window->destroying)
        return false;
    for (int depth = 0; window && depth < 65536; ++depth)
    {
        if (window->style & WS_DISABLED)
            return false;
        window = System().Windows().Find(window->parent);
    }
    return true;
}

bool HoldsFocus(HWND hwnd)
{
    const HWND focus = GetFocus();
    return focus && (focus == hwnd || System().Windows().IsDescendant(hwnd, focus));
}

LONG Width(const RECT& rect)
{
    return rect.right - rect.left;
}

LONG Height(const RECT& rect)
{
    return rect.bottom - rect.top;
}

} // namespace

HWND SetFocus(HWND hWnd)
{
    if (hWnd && (!System().FindWindowOrFail(hWnd) || !CanTakeFocus(hWnd)))
        return nullptr;
    const HWND previous = GetFocus();
    if (previous == hWnd)
        return previous;
    System().Windows().SetFocusHandle(hWnd);
    if (previous)
        SendMessageW(previous, WM_KILLFOCUS, reinterpret_cast<WPARAM>(hWnd), 0);
    if (hWnd && GetFocus() == hWnd)
        SendMessageW(hWnd, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
    return previous;
}

HWND GetFocus()
{
    return System().Windows().Focus();
}

BOOL EnableWindow(HWND hWnd, BOOL bEnable)
{
    HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return FALSE;
    const bool wasDisabled = (window->style & WS_DISABLED) != 0;
    if (bEnable && wasDisabled)
    {
        window->style &= ~static_cast<DWORD>(WS_DISABLED);
        SendMessageW(hWnd, WM_ENABLE, TRUE, 0);
    }
    else if (!bEnable && !wasDisabled)
    {
        window->style |= WS_DISABLED;
        if (HoldsFocus(hWnd))
            SetFocus(nullptr);
        SendMessageW(hWnd, WM_ENABLE, FALSE, 0);
    }
    return wasDisabled ? TRUE : FALSE;
}

BOOL IsWindowEnabled(HWND hWnd)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    return window && !(window->style & WS_DISABLED);
}

BOOL ShowWindow(HWND hWnd, int nCmdShow)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return FALSE;
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    const bool show = nCmdShow != SW_HIDE;
    if (show == wasVisible)
        return wasVisible;
    SendMessageW(hWnd, WM_SHOWWINDOW, show, 0);
    HostedWindow* shown = System().Windows().Find(hWnd);
    if (!shown)
        return wasVisible;
    if (show)
        shown->style |= WS_VISIBLE;
    else
        shown->style &= ~static_cast<DWORD>(WS_VISIBLE);
    if (!show && GetFocus() == hWnd)
        SetFocus(shown->parent);
    return wasVisible;
}

BOOL IsWindowVisible(HWND hWnd)
{
    const HostedWindow* window = System().Windows().Find(hWnd);
    if (!window)
        return FALSE;
    for (int depth = 0; window && depth < 65536; ++depth)
    {
        if (!(window->style & WS_VISIBLE))
            return FALSE;
        window = System().Windows().Find(window->parent);
    }
    return TRUE;
}

BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL)
{
    return SetWindowPos(hWnd, nullptr, X, Y, nWidth, nHeight, SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL SetWindowPos(HWND hWnd, HWND, int X, int Y, int cx, int cy, UINT uFlags)
{
    HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return FALSE;
    const RECT old = window->rect;
    RECT rect = old;
    if (!(uFlags & SWP_NOMOVE))
        rect = {X, Y, X + Width(old), Y + Height(old)};
    if (!(uFlags & SWP_NOSIZE))
        rect = {rect.left, rect.top, rect.left + std::max(cx, 0), rect.top + std::max(cy, 0)};
    window->rect = rect;
    if (uFlags & SWP_SHOWWINDOW)
        window->style |= WS_VISIBLE;
    if (uFlags & SWP_HIDEWINDOW)
        window->style &= ~static_cast<DWORD>(WS_VISIBLE);
    if (rect.left != old.left || rect.top != old.top)
        SendMessageW(hWnd, WM_MOVE, 0, MAKELPARAM(rect.left, rect.top));
    if ((Width(rect) != Width(old) || Height(rect) != Height(old)) && IsWindow(hWnd))
        SendMessageW(hWnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(Width(rect), Height(rect)));
    return TRUE;
}

BOOL GetWindowRect(HWND hWnd, LPRECT lpRect)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window || !lpRect)
        return FALSE;
    const POINT origin = System().Windows().ScreenOrigin(hWnd);
    *lpRect = {origin.x, origin.y, origin.x + Width(window->rect), origin.y + Height(window->rect)};
    return TRUE;
}

BOOL GetClientRect(HWND hWnd, LPRECT lpRect)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window || !lpRect)
        return FALSE;
    *lpRect = {0, 0, Width(window->rect), Height(window->rect)};
    return TRUE;
}

BOOL ScreenToClient(HWND hWnd, LPPOINT lpPoint)
{
    if (!System().FindWindowOrFail(hWnd) || !lpPoint)
        return FALSE;
    const POINT origin = System().Windows().ScreenOrigin(hWnd);
    lpPoint->x -= origin.x;
    lpPoint->y -= origin.y;
    return TRUE;
}

BOOL ClientToScreen(HWND hWnd, LPPOINT lpPoint)
{
    if (!System().FindWindowOrFail(hWnd) || !lpPoint)
        return FALSE;
    const POINT origin = System().Windows().ScreenOrigin(hWnd);
    lpPoint->x += origin.x;
    lpPoint->y += origin.y;
    return TRUE;
}
