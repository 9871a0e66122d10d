#include "support/QzHarness.h"

#include "platform/services/QzClock.h"
#include "platform/system/host/QzHost.h"
#include "platform/system/kernel/QzKernelHost.h"

namespace QzTest
{

namespace
{

const wchar_t* const kMainClass = L"QzTestHostWindow";

} // namespace

Harness::Harness(int width, int height)
{
    QzPlatform::Host::ResetForTesting();
    QzPlatform::ResetKernelForTesting();
    QzPlatform::Host::SetTime(kStartTime);
    m_device.SetScreenSize(width, height);

    WNDCLASSW wc = {};
    wc.lpfnWndProc = &Harness::WindowProc;
    wc.lpszClassName = kMainClass;
    RegisterClassW(&wc);
    // A popup window, as a full-screen game's: its client area is the whole window on Windows as
    // in the hosted system, which has no frames.
    m_hWnd = CreateWindowExW(0, kMainClass, L"host", WS_POPUP | WS_VISIBLE, 0, 0, width, height,
                             nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Harness::~Harness()
{
    m_handler = nullptr;
    if (IsWindow(m_hWnd))
        DestroyWindow(m_hWnd);
    QzPlatform::Host::ResetForTesting();
    QzPlatform::ResetKernelForTesting();
    QzPlatform::Host::UseRealClock();
}

LRESULT CALLBACK Harness::WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* harness = reinterpret_cast<Harness*>(GetWindowLongPtrW(hWnd, GWLP_USERDATA));
    if (harness && harness->m_handler)
    {
        LRESULT result = harness->m_handler(message, wParam, lParam);
        if (result)
            return result;
    }
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

void Harness::MoveMainWindow(int x, int y)
{
    RECT rc = {};
    GetWindowRect(m_hWnd, &rc);
    ::MoveWindow(m_hWnd, x, y, rc.right - rc.left, rc.bottom - rc.top, TRUE);
}

void Harness::SetTime(DWORD ms)
{
    QzPlatform::Host::SetTime(ms);
}

void Harness::Advance(DWORD ms)
{
    QzPlatform::Host::AdvanceTime(ms);
}

DWORD Harness::Now() const
{
    return QzPlatform::NowMs();
}

void Harness::PostMouse(UINT message, int x, int y, WPARAM keys)
{
    POINT pt = {x, y};
    ClientToScreen(m_hWnd, &pt);
    QzPlatform::Host::SetCursorPos(pt.x, pt.y);
    // Windows reports the move of the cursor with a WM_MOUSEMOVE of its own; the test's message
    // is the one that counts.
    MSG moved;
    while (PeekMessageW(&moved, nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE, PM_REMOVE))
    {
    }
    PostMessageW(m_hWnd, message, keys, MAKELPARAM(x, y));
    Pump();
}

void Harness::MouseMove(int x, int y, WPARAM keys)
{
    PostMouse(WM_MOUSEMOVE, x, y, keys);
}

void Harness::LButtonDown(int x, int y)
{
    QzPlatform::Host::SetKeyState(VK_LBUTTON, true);
    PostMouse(WM_LBUTTONDOWN, x, y, MK_LBUTTON);
}

void Harness::LButtonUp(int x, int y)
{
    QzPlatform::Host::SetKeyState(VK_LBUTTON, false);
    PostMouse(WM_LBUTTONUP, x, y, 0);
}

void Harness::LButtonDblClk(int x, int y)
{
    PostMouse(WM_LBUTTONDBLCLK, x, y, MK_LBUTTON);
}

void Harness::Click(int x, int y)
{
    LButtonDown(x, y);
    LButtonUp(x, y);
}

void Harness::RButtonDown(int x, int y)
{
    QzPlatform::Host::SetKeyState(VK_RBUTTON, true);
    PostMouse(WM_RBUTTONDOWN, x, y, MK_RBUTTON);
}

void Harness::RButtonUp(int x, int y)
{
    QzPlatform::Host::SetKeyState(VK_RBUTTON, false);
    PostMouse(WM_RBUTTONUP, x, y, 0);
}

void Harness::MButtonDown(int x, int y)
{
    QzPlatform::Host::SetKeyState(VK_MBUTTON, true);
    PostMouse(WM_MBUTTONDOWN, x, y, MK_MBUTTON);
}

void Harness::MButtonUp(int x, int y)
{
    QzPlatform::Host::SetKeyState(VK_MBUTTON, false);
    PostMouse(WM_MBUTTONUP, x, y, 0);
}

void Harness::Wheel(int screenX, int screenY, int delta)
{
    PostMessageW(m_hWnd, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), MAKELPARAM(screenX, screenY));
    Pump();
}

HWND Harness::KeyTarget() const
{
    HWND focus = GetFocus();
    return focus ? focus : m_hWnd;
}

void Harness::KeyDown(int vk)
{
    QzPlatform::Host::SetKeyState(vk, true);
    PostMessageW(KeyTarget(), WM_KEYDOWN, static_cast<WPARAM>(vk), 1);
    Pump();
}

void Harness::KeyUp(int vk)
{
    QzPlatform::Host::SetKeyState(vk, false);
    PostMessageW(KeyTarget(), WM_KEYUP, static_cast<WPARAM>(vk), static_cast<LPARAM>(0xC0000001));
    Pump();
}

void Harness::Key(int vk)
{
    KeyDown(vk);
    KeyUp(vk);
}

void Harness::Char(wchar_t ch)
{
    PostMessageW(KeyTarget(), WM_CHAR, static_cast<WPARAM>(ch), 1);
    Pump();
}

void Harness::Type(const std::wstring& text)
{
    for (wchar_t ch : text)
        Char(ch);
}

void Harness::Pump()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&msg);
}

void Harness::Frame(const std::function<void()>& draw)
{
    Pump();
    m_device.BeginFrame();
    if (draw)
        draw();
    m_device.EndFrame();
    Advance(kFrameMs);
}

} // namespace QzTest
