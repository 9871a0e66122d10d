#include "WindowsTestSupport.h"

#include "platform/system/QzCodePage.h"

namespace QzTest
{

const char kAnsiClass[] = "RecordingA";
const wchar_t kWideClass[] = L"RecordingW";
const char kGbkTwoChars[] = "\xD6\xD0\xCE\xC4";
const wchar_t kWideTwoChars[] = L"\u4E2D\u6587";

std::vector<RecordedMessage>& Recorded()
{
    static std::vector<RecordedMessage> s_recorded;
    return s_recorded;
}

std::vector<RecordedMessage> RecordedOf(UINT msg)
{
    std::vector<RecordedMessage> found;
    for (const RecordedMessage& message : Recorded())
    {
        if (message.msg == msg)
            found.push_back(message);
    }
    return found;
}

std::vector<UINT> RecordedNumbers(HWND hwnd)
{
    std::vector<UINT> numbers;
    for (const RecordedMessage& message : Recorded())
    {
        if (message.hwnd == hwnd)
            numbers.push_back(message.msg);
    }
    return numbers;
}

namespace
{

std::wstring TextSeen(UINT msg, LPARAM lParam, bool unicode)
{
    if (!lParam)
        return std::wstring();
    if (msg == WM_SETTEXT)
        return unicode ? std::wstring(reinterpret_cast<LPCWSTR>(lParam))
                       : QzPlatform::AnsiToWide(reinterpret_cast<LPCSTR>(lParam));
    if (msg != WM_NCCREATE && msg != WM_CREATE)
        return std::wstring();
    if (unicode)
    {
        LPCWSTR name = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpszName;
        return name ? name : L"";
    }
    LPCSTR name = reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpszName;
    return name ? QzPlatform::AnsiToWide(name) : L"";
}

} // namespace

LRESULT CALLBACK RecordingProcA(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'A', TextSeen(msg, lParam, false)});
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK RecordingProcW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'W', TextSeen(msg, lParam, true)});
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

void SystemWindowsTest::SetUp()
{
    QzPlatform::Host::ResetForTesting();
    WNDCLASSA ansi = {};
    ansi.lpfnWndProc = RecordingProcA;
    ansi.lpszClassName = kAnsiClass;
    ASSERT_NE(RegisterClassA(&ansi), 0);
    WNDCLASSW wide = {};
    wide.lpfnWndProc = RecordingProcW;
    wide.lpszClassName = kWideClass;
    ASSERT_NE(RegisterClassW(&wide), 0);
    Recorded().clear();
}

void SystemWindowsTest::TearDown()
{
    QzPlatform::Host::ResetForTesting();
    Recorded().clear();
}

HWND SystemWindowsTest::CreateAnsi(HWND parent, DWORD style)
{
    return CreateWindowExA(0, kAnsiClass, "", style | (parent ? WS_CHILD : 0), 0, 0, 10, 10, parent,
                           nullptr, nullptr, nullptr);
}

HWND SystemWindowsTest::CreateWide(HWND parent, DWORD style)
{
    return CreateWindowExW(0, kWideClass, L"", style | (parent ? WS_CHILD : 0), 0, 0, 10, 10,
                           parent, nullptr, nullptr, nullptr);
}

int SystemWindowsTest::PumpA()
{
    int count = 0;
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        DispatchMessageA(&msg);
        ++count;
    }
    return count;
}

int SystemWindowsTest::PumpW()
{
    int count = 0;
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        DispatchMessageW(&msg);
        ++count;
    }
    return count;
}

} // namespace QzTest
