#include "WindowsTestSupport.h"

#include "platform/system/text/QzCodePage.h"

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

std::vector<Delivery> RecordedDeliveries()
{
    std::vector<Delivery> deliveries;
    for (const RecordedMessage& message : Recorded())
        deliveries.emplace_back(message.hwnd, message.msg, message.wParam);
    return deliveries;
}

std::vector<WPARAM> RecordedWParams(UINT msg)
{
    std::vector<WPARAM> values;
    for (const RecordedMessage& message : RecordedOf(msg))
        values.push_back(message.wParam);
    return values;
}

void ExpectTwoCharText(HWND hwnd)
{
    wchar_t wide[8];
    EXPECT_EQ(GetWindowTextW(hwnd, wide, 8), 2);
    EXPECT_STREQ(wide, kWideTwoChars);
    char ansi[8];
    EXPECT_EQ(GetWindowTextA(hwnd, ansi, 8), 4);
    EXPECT_STREQ(ansi, kGbkTwoChars);
    EXPECT_EQ(GetWindowTextLengthW(hwnd), 2);
    EXPECT_EQ(GetWindowTextLengthA(hwnd), 4);
}

namespace
{

// Dispatches every posted message through the message loop functions of one kind.
template <class Peek, class Dispatch> int Pump(Peek peek, Dispatch dispatch)
{
    int count = 0;
    MSG msg;
    while (peek(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        dispatch(&msg);
        ++count;
    }
    return count;
}

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
    return Pump(PeekMessageA, DispatchMessageA);
}

int SystemWindowsTest::PumpW()
{
    return Pump(PeekMessageW, DispatchMessageW);
}

} // namespace QzTest
