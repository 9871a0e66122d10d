// GetWindowLong and SetWindowLong in their pointer-sized and 32-bit forms.
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"

#include <cstdint>
#include <utility>

using QzPlatform::CHostedSystem;
using QzPlatform::HostedWindow;
using QzPlatform::WindowProcRef;

namespace
{

enum class Width
{
    Pointer,
    Long,
};

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

LONG_PTR FailIndex()
{
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

// Indexes that hold pointers, which the 32-bit forms refuse as on 64-bit Windows.
bool IsPointerOnly(int index)
{
    return index == GWLP_WNDPROC || index == GWLP_HINSTANCE;
}

LONG_PTR ReadExtra(const HostedWindow& window, int index, Width width)
{
    if (width == Width::Pointer)
    {
        LONG_PTR value = 0;
        return window.ReadExtra(index, &value, sizeof(value)) ? value : FailIndex();
    }
    LONG value = 0;
    return window.ReadExtra(index, &value, sizeof(value)) ? value : FailIndex();
}

LONG_PTR WriteExtra(HostedWindow& window, int index, LONG_PTR value, Width width)
{
    const LONG_PTR previous = ReadExtra(window, index, width);
    if (width == Width::Pointer)
        return window.WriteExtra(index, &value, sizeof(value)) ? previous : 0;
    const auto narrow = static_cast<LONG>(value);
    return window.WriteExtra(index, &narrow, sizeof(narrow)) ? previous : 0;
}

LONG_PTR GetLongCommon(HWND hwnd, int index, bool unicode, Width width)
{
    const HostedWindow* window = System().FindWindowOrFail(hwnd);
    if (!window)
        return 0;
    if (IsPointerOnly(index) && width == Width::Long)
        return FailIndex();
    switch (index)
    {
    case GWLP_WNDPROC:
        return reinterpret_cast<LONG_PTR>(System().Thunks().ValueFor(window->proc, unicode));
    case GWLP_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(window->instance);
    case GWLP_ID:
        return window->id;
    case GWLP_USERDATA:
        return window->userData;
    case GWL_STYLE:
        return static_cast<LONG>(window->style);
    case GWL_EXSTYLE:
        return static_cast<LONG>(window->exStyle);
    default:
        return index >= 0 ? ReadExtra(*window, index, width) : FailIndex();
    }
}

// WM_STYLECHANGING may change the new style; WM_STYLECHANGED reports what was set.
LONG_PTR SetStyle(HWND hwnd, int index, DWORD newStyle)
{
    const auto field = [index](HostedWindow& w) -> DWORD&
    { return index == GWL_STYLE ? w.style : w.exStyle; };
    const DWORD previous = field(*System().Windows().Find(hwnd));
    STYLESTRUCT change = {previous, newStyle};
    const auto wParam = static_cast<WPARAM>(static_cast<LONG_PTR>(index));
    SendMessageW(hwnd, WM_STYLECHANGING, wParam, reinterpret_cast<LPARAM>(&change));
    HostedWindow* window = System().Windows().Find(hwnd);
    if (!window)
        return static_cast<LONG>(previous);
    field(*window) = change.styleNew;
    SendMessageW(hwnd, WM_STYLECHANGED, wParam, reinterpret_cast<LPARAM>(&change));
    return static_cast<LONG>(previous);
}

LONG_PTR SetProc(HostedWindow& window, LONG_PTR value, bool unicode)
{
    const WindowProcRef proc = System().Thunks().Resolve(reinterpret_cast<WNDPROC>(value), unicode);
    if (proc.IsEmpty())
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const WNDPROC previous = System().Thunks().ValueFor(window.proc, unicode);
    window.proc = proc;
    return reinterpret_cast<LONG_PTR>(previous);
}

LONG_PTR SetLongCommon(HWND hwnd, int index, LONG_PTR value, bool unicode, Width width)
{
    HostedWindow* window = System().FindWindowOrFail(hwnd);
    if (!window)
        return 0;
    if (IsPointerOnly(index) && width == Width::Long)
        return FailIndex();
    switch (index)
    {
    case GWLP_WNDPROC:
        return SetProc(*window, value, unicode);
    case GWLP_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(
            std::exchange(window->instance, reinterpret_cast<HINSTANCE>(value)));
    case GWLP_ID:
        return std::exchange(window->id, value);
    case GWLP_USERDATA:
        return std::exchange(window->userData, value);
    case GWL_STYLE:
    case GWL_EXSTYLE:
        return SetStyle(hwnd, index, static_cast<DWORD>(value));
    default:
        return index >= 0 ? WriteExtra(*window, index, value, width) : FailIndex();
    }
}

} // namespace

LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex)
{
    return GetLongCommon(hWnd, nIndex, false, Width::Pointer);
}

LONG_PTR GetWindowLongPtrW(HWND hWnd, int nIndex)
{
    return GetLongCommon(hWnd, nIndex, true, Width::Pointer);
}

LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR dwNewLong)
{
    return SetLongCommon(hWnd, nIndex, dwNewLong, false, Width::Pointer);
}

LONG_PTR SetWindowLongPtrW(HWND hWnd, int nIndex, LONG_PTR dwNewLong)
{
    return SetLongCommon(hWnd, nIndex, dwNewLong, true, Width::Pointer);
}

LONG GetWindowLongA(HWND hWnd, int nIndex)
{
    return static_cast<LONG>(GetLongCommon(hWnd, nIndex, false, Width::Long));
}

LONG GetWindowLongW(HWND hWnd, int nIndex)
{
    return static_cast<LONG>(GetLongCommon(hWnd, nIndex, true, Width::Long));
}

LONG SetWindowLongA(HWND hWnd, int nIndex, LONG dwNewLong)
{
    return static_cast<LONG>(SetLongCommon(hWnd, nIndex, dwNewLong, false, Width::Long));
}

LONG SetWindowLongW(HWND hWnd, int nIndex, LONG dwNewLong)
{
    return static_cast<LONG>(SetLongCommon(hWnd, nIndex, dwNewLong, true, Width::Long));
}
