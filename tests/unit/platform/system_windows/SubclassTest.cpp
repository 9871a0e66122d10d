// Window procedures of both kinds, subclass chains and the window data of GetWindowLong.
#include "WindowsTestSupport.h"

#include "platform/system/HostedSystem.h"

#include <string>

using namespace QzTest;

namespace
{

WNDPROC g_pfnBelowAnsi = nullptr;
WNDPROC g_pfnBelowWide = nullptr;
std::string g_strAnsiSeen; // WM_SETTEXT bytes the ANSI subclass saw

LRESULT CALLBACK SubclassA(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'a', L""});
    if (msg == WM_SETTEXT && lParam)
        g_strAnsiSeen = reinterpret_cast<LPCSTR>(lParam);
    return CallWindowProcA(g_pfnBelowAnsi, hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK SubclassW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    const std::wstring text = msg == WM_SETTEXT && lParam ? reinterpret_cast<LPCWSTR>(lParam) : L"";
    Recorded().push_back({hwnd, msg, wParam, lParam, 'w', text});
    return CallWindowProcW(g_pfnBelowWide, hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK PairProcA(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'A', L""});
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK PairProcW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'W', L""});
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

std::string KindsOf(UINT msg)
{
    std::string kinds;
    for (const RecordedMessage& m : RecordedOf(msg))
        kinds += m.kind;
    return kinds;
}

// A Unicode window subclassed by an ANSI procedure and then by a Unicode one.
class SubclassChainTest : public SystemWindowsTest
{
protected:
    void SetUp() override
    {
        SystemWindowsTest::SetUp();
        m_hwnd = CreateWide();
        g_pfnBelowAnsi = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassA)));
        g_pfnBelowWide = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassW)));
        g_strAnsiSeen.clear();
        Recorded().clear();
    }

    HWND m_hwnd = nullptr;
};

} // namespace

TEST_F(SubclassChainTest, ProcedureOfTheOtherKindReadsAsAHandleNotThePointer)
{
    EXPECT_NE(g_pfnBelowAnsi, nullptr);
    EXPECT_NE(g_pfnBelowAnsi, RecordingProcW);
    EXPECT_NE(g_pfnBelowWide, SubclassA);
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_hwnd, GWLP_WNDPROC)), SubclassW);
    EXPECT_TRUE(IsWindowUnicode(m_hwnd));
}

TEST_F(SubclassChainTest, TextIsConvertedAtEachChangeOfKind)
{
    ASSERT_TRUE(SetWindowTextA(m_hwnd, kGbkTwoChars));

    EXPECT_EQ(KindsOf(WM_SETTEXT), "waW");
    EXPECT_EQ(RecordedOf(WM_SETTEXT)[0].text, kWideTwoChars);
    EXPECT_EQ(g_strAnsiSeen, kGbkTwoChars);
    EXPECT_EQ(RecordedOf(WM_SETTEXT)[2].text, kWideTwoChars);
    ExpectTwoCharText(m_hwnd);
}

TEST_F(SubclassChainTest, WideCharacterSplitsForTheAnsiLevelAndJoinsForTheWideBase)
{
    SendMessageW(m_hwnd, WM_CHAR, 0x4E2D, 1);

    EXPECT_EQ(KindsOf(WM_CHAR), "waaW");
    EXPECT_EQ(RecordedWParams(WM_CHAR), (std::vector<WPARAM>{0x4E2D, 0xD6, 0xD0, 0x4E2D}));
}

TEST_F(SubclassChainTest, RemovingTheSubclassesRestoresTheOriginalProcedure)
{
    EXPECT_EQ(SetWindowLongPtrW(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_pfnBelowWide)),
              reinterpret_cast<LONG_PTR>(SubclassW));
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrA(m_hwnd, GWLP_WNDPROC)), SubclassA);
    SetWindowLongPtrA(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_pfnBelowAnsi));
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_hwnd, GWLP_WNDPROC)), RecordingProcW);

    SendMessageA(m_hwnd, WM_USER, 0, 0);
    EXPECT_EQ(KindsOf(WM_USER), "W");
}

TEST_F(SystemWindowsTest, CallWindowProcOfAPlainPointerCallsItAsTheCallersKind)
{
    const HWND hwnd = CreateWide();
    Recorded().clear();
    CallWindowProcA(RecordingProcA, hwnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(kGbkTwoChars));
    ASSERT_EQ(RecordedOf(WM_SETTEXT).size(), 1u);
    EXPECT_EQ(RecordedOf(WM_SETTEXT)[0].kind, 'A');
    EXPECT_EQ(CallWindowProcA(nullptr, hwnd, WM_USER, 0, 0), 0);
}

TEST_F(SystemWindowsTest, BuiltInClassReachesEachCallerWithoutConversion)
{
    QzPlatform::CHostedSystem::Instance().Classes().RegisterSystemClass(L"QzTestPair", PairProcA,
                                                                        PairProcW, 16);
    const HWND hwnd =
        CreateWindowExW(0, L"QzTestPair", L"", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(hwnd);
    EXPECT_TRUE(IsWindowUnicode(hwnd));
    Recorded().clear();

    SendMessageA(hwnd, WM_CHAR, 0xD6, 0);
    SendMessageW(hwnd, WM_CHAR, 0x4E2D, 0);
    EXPECT_EQ(KindsOf(WM_CHAR), "AW");
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrA(hwnd, GWLP_WNDPROC)), PairProcA);
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(hwnd, GWLP_WNDPROC)), PairProcW);

    g_pfnBelowAnsi = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassA)));
    EXPECT_EQ(g_pfnBelowAnsi, PairProcA);
    EXPECT_FALSE(IsWindowUnicode(hwnd));

    QzPlatform::Host::ResetForTesting();
    EXPECT_TRUE(
        CreateWindowExA(0, "qztestpair", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(SystemWindowsTest, WindowDataByIndex)
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = RecordingProcW;
    wc.lpszClassName = L"WithExtra";
    wc.cbWndExtra = 16;
    ASSERT_TRUE(RegisterClassW(&wc));
    const HWND parent = CreateWide();
    const HWND hwnd = CreateWindowExW(WS_EX_TOPMOST, L"WithExtra", L"", WS_CHILD | WS_TABSTOP, 0, 0,
                                      1, 1, parent, reinterpret_cast<HMENU>(42), nullptr, nullptr);
    ASSERT_TRUE(hwnd);

    EXPECT_EQ(GetDlgCtrlID(hwnd), 42);
    EXPECT_EQ(GetWindowLongW(hwnd, GWL_ID), 42);
    EXPECT_EQ(GetWindowLongA(hwnd, GWL_STYLE), static_cast<LONG>(WS_CHILD | WS_TABSTOP));
    EXPECT_EQ(GetWindowLongA(hwnd, GWL_EXSTYLE), static_cast<LONG>(WS_EX_TOPMOST));
    EXPECT_EQ(SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0x123456789LL), 0);
    EXPECT_EQ(GetWindowLongPtrW(hwnd, GWLP_USERDATA), 0x123456789LL);
    EXPECT_EQ(SetWindowLongPtrW(hwnd, 8, -5), 0);
    EXPECT_EQ(GetWindowLongPtrA(hwnd, 8), -5);
    EXPECT_EQ(GetWindowLongA(hwnd, 12), -1); // the high half of -5

    SetLastError(0);
    EXPECT_EQ(GetWindowLongPtrA(hwnd, 9), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_INDEX));
    SetLastError(0);
    EXPECT_EQ(GetWindowLongA(hwnd, GWLP_WNDPROC), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_INDEX));
    EXPECT_EQ(SetWindowLongPtrA(hwnd, GWLP_WNDPROC, 0), 0);
    EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongPtrW(hwnd, GWLP_WNDPROC)), RecordingProcW);
}

TEST_F(SystemWindowsTest, StyleChangeIsAnnouncedBeforeAndAfter)
{
    const HWND hwnd = CreateWide();
    Recorded().clear();
    EXPECT_EQ(SetWindowLongW(hwnd, GWL_STYLE, 0x2000), 0);
    const std::vector<UINT> expected = {WM_STYLECHANGING, WM_STYLECHANGED};
    EXPECT_EQ(RecordedNumbers(hwnd), expected);
    EXPECT_EQ(static_cast<int>(Recorded()[0].wParam), GWL_STYLE);
    EXPECT_EQ(SetWindowLongA(hwnd, GWL_STYLE, 0), 0x2000);
}
