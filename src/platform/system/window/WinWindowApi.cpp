// Window classes, creation and destruction, and the window tree.
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/text/QzCodePage.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>

using QzPlatform::CHostedSystem;
using QzPlatform::HostedWindow;
using QzPlatform::HostedWindowClass;

namespace
{

constexpr int kMaxWindowExtraBytes = 4096;

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

// The class of a name or atom; null with ERROR_CANNOT_FIND_WND_CLASS.
const HostedWindowClass* FindClassOrFail(const std::wstring& name, ATOM atom)
{
    const HostedWindowClass* found =
        atom ? System().Classes().FindAtom(atom) : System().Classes().Find(name);
    if (!found)
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
    return found;
}

ATOM AtomOf(const void* name)
{
    return IS_INTRESOURCE(name) ? static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name)) : 0;
}

std::wstring ClassNameOf(LPCSTR name)
{
    return IS_INTRESOURCE(name) ? std::wstring() : QzPlatform::AnsiToWide(name);
}

std::wstring ClassNameOf(LPCWSTR name)
{
    return IS_INTRESOURCE(name) ? std::wstring() : std::wstring(name);
}

template <class WNDCLASS_T>
ATOM RegisterClassCommon(const WNDCLASS_T* wc, const std::wstring& name, bool unicode)
{
    if (!wc || !wc->lpfnWndProc || name.empty() || wc->cbWndExtra < 0 ||
        wc->cbWndExtra > kMaxWindowExtraBytes)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    HostedWindowClass windowClass;
    windowClass.name = name;
    windowClass.proc = QzPlatform::WindowProcRef::Single(wc->lpfnWndProc, unicode);
    windowClass.style = wc->style;
    windowClass.windowExtraBytes = wc->cbWndExtra;
    windowClass.instance = wc->hInstance;
    windowClass.cursor = wc->hCursor;
    const ATOM atom = System().Classes().Register(std::move(windowClass));
    if (!atom)
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
    return atom;
}

BOOL UnregisterClassCommon(const std::wstring& name, ATOM atom)
{
    const HostedWindowClass* found = FindClassOrFail(name, atom);
    if (!found)
        return FALSE;
    const std::wstring className = found->name;
    for (HWND hwnd : System().Windows().All())
    {
        if (System().Windows().Find(hwnd)->className == className)
        {
            SetLastError(ERROR_CLASS_HAS_WINDOWS);
            return FALSE;
        }
    }
    if (!System().Classes().Unregister(className))
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    return TRUE;
}

// Position and size as given, CW_USEDEFAULT as 0 and negative sizes as 0.
RECT CreationRect(int x, int y, int width, int height)
{
    const auto orZero = [](int value) { return value == CW_USEDEFAULT ? 0 : value; };
    const int left = orZero(x);
    const int top = orZero(y);
    return {left, top, left + std::max(orZero(width), 0), top + std::max(orZero(height), 0)};
}

struct CreateRequest
{
    const HostedWindowClass* windowClass;
    DWORD exStyle;
    DWORD style;
    RECT rect;
    HWND parent;
    HMENU menu;
    HINSTANCE instance;
    bool unicode;
    LPARAM createStruct; // CREATESTRUCTA or CREATESTRUCTW, as the caller's kind
};

std::unique_ptr<HostedWindow> NewWindow(const CreateRequest& request)
{
    auto window = std::make_unique<HostedWindow>();
    window->className = request.windowClass->name;
    window->proc = request.windowClass->proc;
    window->createdUnicode = request.unicode;
    window->style = request.style & ~static_cast<DWORD>(WS_VISIBLE);
    window->exStyle = request.exStyle;
    window->id = reinterpret_cast<LONG_PTR>(request.menu);
    window->instance = request.instance;
    window->extraBytes.assign(static_cast<size_t>(request.windowClass->windowExtraBytes), 0);
    (request.style & WS_CHILD ? window->parent : window->owner) = request.parent;
    window->rect = request.rect;
    return window;
}

void FreeWindow(HWND hwnd)
{
    std::unique_ptr<HostedWindow> window = System().Windows().Remove(hwnd);
    System().Queue().RemoveWindow(hwnd);
    if (window)
        System().Contexts().Destroy(window->defaultContext);
}

std::vector<HWND> Dependents(HWND hwnd)
{
    std::vector<HWND> dependents = System().Windows().Children(hwnd);
    const std::vector<HWND> owned = System().Windows().Owned(hwnd);
    dependents.insert(dependents.end(), owned.begin(), owned.end());
    return dependents;
}

void MarkDestroying(HWND hwnd)
{
    HostedWindow* window = System().Windows().Find(hwnd);
    if (!window || window->destroying)
        return;
    window->destroying = true;
    for (HWND dependent : Dependents(hwnd))
        MarkDestroying(dependent);
}

// WM_DESTROY to the window first, then to those below it.
void SendDestroy(HWND hwnd)
{
    if (!IsWindow(hwnd))
        return;
    SendMessageW(hwnd, WM_DESTROY, 0, 0);
    for (HWND dependent : Dependents(hwnd))
        SendDestroy(dependent);
}

// WM_NCDESTROY to those below the window first, then to the window, which then goes.
void SendNcDestroyAndFree(HWND hwnd)
{
    if (!IsWindow(hwnd))
        return;
    for (HWND dependent : Dependents(hwnd))
    {
        MarkDestroying(dependent);
        SendNcDestroyAndFree(dependent);
    }
    SendMessageW(hwnd, WM_NCDESTROY, 0, 0);
    for (HWND late : Dependents(hwnd))
        SendNcDestroyAndFree(late);
    FreeWindow(hwnd);
}

bool SendCreateMessages(HWND hwnd, const CreateRequest& request)
{
    const auto send = request.unicode ? SendMessageW : SendMessageA;
    if (!send(hwnd, WM_NCCREATE, 0, request.createStruct))
    {
        if (IsWindow(hwnd))
        {
            SendMessageW(hwnd, WM_NCDESTROY, 0, 0);
            FreeWindow(hwnd);
        }
        return false;
    }
    if (!IsWindow(hwnd))
        return false;
    if (send(hwnd, WM_CREATE, 0, request.createStruct) == -1)
    {
        DestroyWindow(hwnd);
        return false;
    }
    if (!IsWindow(hwnd))
        return false;
    const RECT& rc = request.rect;
    SendMessageW(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(rc.right - rc.left, rc.bottom - rc.top));
    SendMessageW(hwnd, WM_MOVE, 0, MAKELPARAM(rc.left, rc.top));
    if (request.style & WS_VISIBLE)
        ShowWindow(hwnd, SW_SHOW);
    return IsWindow(hwnd) != FALSE;
}

HWND CreateWindowCommon(const CreateRequest& request)
{
    if (request.parent && !System().FindWindowOrFail(request.parent))
        return nullptr;
    if ((request.style & WS_CHILD) && !request.parent)
    {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    const HWND hwnd = System().Windows().Add(NewWindow(request));
    if (!hwnd)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    HostedWindow* window = System().Windows().Find(hwnd);
    window->defaultContext = System().Contexts().Create(hwnd);
    window->context = window->defaultContext;
    return SendCreateMessages(hwnd, request) ? hwnd : nullptr;
}

// The arguments of CreateWindowEx as they came, in the caller's CREATESTRUCT; the position and
// size are settled here and the structure passed on with WM_NCCREATE and WM_CREATE.
template <class CS> HWND CreateWindowOfKind(CS& cs, bool unicode)
{
    if (!cs.lpszClass)
    {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const HostedWindowClass* windowClass =
        FindClassOrFail(ClassNameOf(cs.lpszClass), AtomOf(cs.lpszClass));
    if (!windowClass)
        return nullptr;
    const RECT rect = CreationRect(cs.x, cs.y, cs.cx, cs.cy);
    cs.x = rect.left;
    cs.y = rect.top;
    cs.cx = rect.right - rect.left;
    cs.cy = rect.bottom - rect.top;
    const auto style = static_cast<DWORD>(cs.style);
    return CreateWindowCommon({windowClass, cs.dwExStyle, style, rect, cs.hwndParent, cs.hMenu,
                               cs.hInstance, unicode, reinterpret_cast<LPARAM>(&cs)});
}

template <class C> int CopyClassName(const std::basic_string<C>& name, C* buffer, int capacity)
{
    if (!buffer || capacity <= 0)
        return 0;
    const size_t length = std::min(name.size(), static_cast<size_t>(capacity - 1));
    std::copy(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(length), buffer);
    buffer[length] = C(0);
    return static_cast<int>(length);
}

} // namespace

ATOM RegisterClassA(const WNDCLASSA* lpWndClass)
{
    const std::wstring name = lpWndClass && lpWndClass->lpszClassName
                                  ? ClassNameOf(lpWndClass->lpszClassName)
                                  : std::wstring();
    return RegisterClassCommon(lpWndClass, name, false);
}

ATOM RegisterClassW(const WNDCLASSW* lpWndClass)
{
    const std::wstring name = lpWndClass && lpWndClass->lpszClassName
                                  ? ClassNameOf(lpWndClass->lpszClassName)
                                  : std::wstring();
    return RegisterClassCommon(lpWndClass, name, true);
}

BOOL UnregisterClassA(LPCSTR lpClassName, HINSTANCE)
{
    if (!lpClassName)
        return FALSE;
    return UnregisterClassCommon(ClassNameOf(lpClassName), AtomOf(lpClassName));
}

BOOL UnregisterClassW(LPCWSTR lpClassName, HINSTANCE)
{
    if (!lpClassName)
        return FALSE;
    return UnregisterClassCommon(ClassNameOf(lpClassName), AtomOf(lpClassName));
}

int GetClassNameA(HWND hWnd, LPSTR lpClassName, int nMaxCount)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return 0;
    return CopyClassName(QzPlatform::WideToAnsi(window->className), lpClassName, nMaxCount);
}

int GetClassNameW(HWND hWnd, LPWSTR lpClassName, int nMaxCount)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return 0;
    return CopyClassName(window->className, lpClassName, nMaxCount);
}

HWND CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int X,
                     int Y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam)
{
    CREATESTRUCTA cs = {lpParam,
                        hInstance,
                        hMenu,
                        hWndParent,
                        nHeight,
                        nWidth,
                        Y,
                        X,
                        static_cast<LONG>(dwStyle),
                        lpWindowName,
                        lpClassName,
                        dwExStyle};
    return CreateWindowOfKind(cs, false);
}

HWND CreateWindowExW(DWORD dwExStyle, LPCWSTR lpClassName, LPCWSTR lpWindowName, DWORD dwStyle,
                     int X, int Y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam)
{
    CREATESTRUCTW cs = {lpParam,
                        hInstance,
                        hMenu,
                        hWndParent,
                        nHeight,
                        nWidth,
                        Y,
                        X,
                        static_cast<LONG>(dwStyle),
                        lpWindowName,
                        lpClassName,
                        dwExStyle};
    return CreateWindowOfKind(cs, true);
}

// A window already being destroyed is left to that destruction.
BOOL DestroyWindow(HWND hWnd)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return FALSE;
    if (window->destroying)
        return TRUE;
    MarkDestroying(hWnd);
    const HWND focus = GetFocus();
    if (focus == hWnd || System().Windows().IsDescendant(hWnd, focus))
        SetFocus(nullptr);
    SendDestroy(hWnd);
    SendNcDestroyAndFree(hWnd);
    return TRUE;
}

BOOL IsWindow(HWND hWnd)
{
    return System().Windows().Find(hWnd) != nullptr;
}

BOOL IsChild(HWND hWndParent, HWND hWnd)
{
    return hWndParent && System().Windows().IsDescendant(hWndParent, hWnd);
}

BOOL IsWindowUnicode(HWND hWnd)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return FALSE;
    if (window->proc.pfnAnsi && window->proc.pfnWide)
        return window->createdUnicode;
    return window->proc.pfnWide != nullptr;
}

HWND GetParent(HWND hWnd)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window)
        return nullptr;
    return (window->style & WS_CHILD) ? window->parent : window->owner;
}

// The previous parent; null also when the window had none (there is no desktop window here).
// A window given a parent has no owner any more.
HWND SetParent(HWND hWndChild, HWND hWndNewParent)
{
    HostedWindow* window = System().FindWindowOrFail(hWndChild);
    if (!window || (hWndNewParent && !System().FindWindowOrFail(hWndNewParent)))
        return nullptr;
    if (hWndNewParent == hWndChild || System().Windows().DependsOn(hWndChild, hWndNewParent))
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HWND previous = window->parent;
    window->parent = hWndNewParent;
    window->owner = nullptr; // a window hangs below one window only
    return previous;
}

int GetDlgCtrlID(HWND hWnd)
{
    const HostedWindow* window = System().FindWindowOrFail(hWnd);
    return window ? static_cast<int>(window->id) : 0;
}
