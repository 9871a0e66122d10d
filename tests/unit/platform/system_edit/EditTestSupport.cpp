#include "EditTestSupport.h"

#include "platform/system/kernel/QzKernelHost.h"

#include <cstring>

namespace QzTest
{

namespace
{

std::vector<Notification> g_notifications;

LRESULT CALLBACK ParentProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_COMMAND)
        g_notifications.push_back({LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam)});
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

template <class C> void PutClipboard(UINT format, const std::basic_string<C>& text)
{
    const size_t bytes = (text.size() + 1) * sizeof(C);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
    std::memcpy(GlobalLock(block), text.c_str(), bytes);
    GlobalUnlock(block);
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(format, block);
    CloseClipboard();
}

void ResetSystem()
{
    QzPlatform::Host::ResetForTesting();
    QzPlatform::ResetKernelForTesting();
    g_notifications.clear();
}

} // namespace

void EditTest::SetUp()
{
    ResetSystem();
    WNDCLASSW wc = {};
    wc.lpfnWndProc = ParentProc;
    wc.lpszClassName = L"EditTestParent";
    ASSERT_NE(RegisterClassW(&wc), 0);
    m_hParent = CreateWindowExW(0, wc.lpszClassName, L"", 0, 0, 0, 640, 480, nullptr, nullptr,
                                nullptr, nullptr);
    ASSERT_TRUE(m_hParent);
}

void EditTest::TearDown()
{
    ResetSystem();
}

HWND EditTest::CreateEdit(DWORD style, int width, int height, const wchar_t* text)
{
    return CreateWindowExW(0, L"EDIT", text, WS_CHILD | style, 0, 0, width, height, m_hParent,
                           reinterpret_cast<HMENU>(7), nullptr, nullptr);
}

HWND EditTest::CreateEditA(DWORD style, const char* text)
{
    return CreateWindowExA(0, "edit", text, WS_CHILD | style, 0, 0, 100, 24, m_hParent,
                           reinterpret_cast<HMENU>(7), nullptr, nullptr);
}

std::vector<WORD> EditTest::TakeCodes()
{
    std::vector<WORD> codes;
    for (const Notification& n : g_notifications)
        codes.push_back(n.code);
    g_notifications.clear();
    return codes;
}

const std::vector<Notification>& EditTest::Notifications() const
{
    return g_notifications;
}

std::wstring EditTest::TextW(HWND hwnd)
{
    std::wstring text(size_t(GetWindowTextLengthW(hwnd)) + 1, L'\0');
    text.resize(size_t(GetWindowTextW(hwnd, &text[0], int(text.size()))));
    return text;
}

void EditTest::Press(HWND hwnd, int vk, bool shift, bool ctrl)
{
    QzPlatform::Host::SetKeyState(VK_SHIFT, shift);
    QzPlatform::Host::SetKeyState(VK_CONTROL, ctrl);
    SendMessageW(hwnd, WM_KEYDOWN, static_cast<WPARAM>(vk), 1);
    QzPlatform::Host::SetKeyState(VK_SHIFT, false);
    QzPlatform::Host::SetKeyState(VK_CONTROL, false);
}

int EditTest::Pump(bool ansi)
{
    int count = 0;
    MSG msg;
    while (ansi ? PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)
                : PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        ansi ? DispatchMessageA(&msg) : DispatchMessageW(&msg);
        ++count;
    }
    return count;
}

Range EditTest::Sel(HWND hwnd)
{
    Range sel;
    Send(hwnd, EM_GETSEL, reinterpret_cast<WPARAM>(&sel.first),
         reinterpret_cast<LPARAM>(&sel.second));
    return sel;
}

std::wstring EditTest::ClipboardText()
{
    std::wstring text = L"<none>";
    if (!OpenClipboard(nullptr))
        return text;
    if (HANDLE block = GetClipboardData(CF_UNICODETEXT))
    {
        text = static_cast<const wchar_t*>(GlobalLock(block));
        GlobalUnlock(block);
    }
    CloseClipboard();
    return text;
}

void EditTest::SetClipboardW(const std::wstring& text)
{
    PutClipboard(CF_UNICODETEXT, text);
}

void EditTest::SetClipboardA(const std::string& text)
{
    PutClipboard(CF_TEXT, text);
}

} // namespace QzTest
