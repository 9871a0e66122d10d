#include "EditTestSupport.h"

#include "platform/system/kernel/QzKernelHost.h"

#include <cstring>
#include <cwchar>

namespace QzTest
{

namespace
{

const wchar_t kParentClass[] = L"EditTestParent";
std::vector<Notification> g_notifications;

LRESULT CALLBACK ParentProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_COMMAND)
        g_notifications.push_back({LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam)});
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

template <class C> HGLOBAL BlockOf(const std::basic_string<C>& text)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(C));
    std::memcpy(GlobalLock(block), text.c_str(), (text.size() + 1) * sizeof(C));
    GlobalUnlock(block);
    return block;
}

void PutClipboard(UINT format, HGLOBAL block)
{
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(format, block);
    CloseClipboard();
}

} // namespace

void EditTest::SetUp()
{
    QzPlatform::Host::ResetForTesting();
    QzPlatform::ResetKernelForTesting();
    WNDCLASSW wc = {};
    wc.lpfnWndProc = ParentProc;
    wc.lpszClassName = kParentClass;
    ASSERT_NE(RegisterClassW(&wc), 0);
    m_hParent = CreateWindowExW(0, kParentClass, L"", 0, 0, 0, 640, 480, nullptr, nullptr, nullptr,
                                nullptr);
    ASSERT_TRUE(m_hParent);
    g_notifications.clear();
}

void EditTest::TearDown()
{
    QzPlatform::Host::ResetForTesting();
    QzPlatform::ResetKernelForTesting();
    g_notifications.clear();
}

HWND EditTest::CreateEdit(DWORD style, int width, int height, const wchar_t* text)
{
    return CreateWindowExW(0, L"EDIT", text, WS_CHILD | style, 0, 0, width, height, m_hParent,
                           reinterpret_cast<HMENU>(7), nullptr, nullptr);
}

HWND EditTest::CreateEditA(DWORD style, int width, int height, const char* text)
{
    return CreateWindowExA(0, "edit", text, WS_CHILD | style, 0, 0, width, height, m_hParent,
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
    const int length = GetWindowTextLengthW(hwnd);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(hwnd, &text[0], length + 1)));
    return text;
}

std::string EditTest::TextA(HWND hwnd)
{
    const int length = GetWindowTextLengthA(hwnd);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    text.resize(static_cast<size_t>(GetWindowTextA(hwnd, &text[0], length + 1)));
    return text;
}

void EditTest::Type(HWND hwnd, const std::wstring& text)
{
    for (wchar_t ch : text)
        SendMessageW(hwnd, WM_CHAR, static_cast<WPARAM>(ch), 1);
}

void EditTest::Press(HWND hwnd, int vk, bool shift, bool ctrl)
{
    QzPlatform::Host::SetKeyState(VK_SHIFT, shift);
    QzPlatform::Host::SetKeyState(VK_CONTROL, ctrl);
    SendMessageW(hwnd, WM_KEYDOWN, static_cast<WPARAM>(vk), 1);
    QzPlatform::Host::SetKeyState(VK_SHIFT, false);
    QzPlatform::Host::SetKeyState(VK_CONTROL, false);
}

std::pair<DWORD, DWORD> EditTest::Sel(HWND hwnd)
{
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(hwnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {start, end};
}

void EditTest::SetSel(HWND hwnd, int start, int end)
{
    SendMessageW(hwnd, EM_SETSEL, static_cast<WPARAM>(start), end);
}

std::wstring EditTest::ClipboardText()
{
    if (!OpenClipboard(nullptr))
        return L"<not open>";
    std::wstring text = L"<none>";
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
    PutClipboard(CF_UNICODETEXT, BlockOf(text));
}

void EditTest::SetClipboardA(const std::string& text)
{
    PutClipboard(CF_TEXT, BlockOf(text));
}

} // namespace QzTest
