// Window text and characters between ANSI (code page 936) and wide callers and procedures.
#include "WindowsTestSupport.h"

#include <cstring>

using namespace QzTest;

TEST_F(SystemWindowsTest, DoubleByteTextRoundTripsThroughAWideWindow)
{
    const HWND hwnd = CreateWide();
    ASSERT_TRUE(SetWindowTextA(hwnd, kGbkTwoChars));
    EXPECT_EQ(RecordedOf(WM_SETTEXT).at(0).text, kWideTwoChars);
    ExpectTwoCharText(hwnd);
}

TEST_F(SystemWindowsTest, WideTextRoundTripsThroughAnAnsiWindow)
{
    const HWND hwnd = CreateAnsi();
    ASSERT_TRUE(SetWindowTextW(hwnd, kWideTwoChars));
    EXPECT_EQ(RecordedOf(WM_SETTEXT).at(0).kind, 'A');

    wchar_t wide[8];
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXT, 8, reinterpret_cast<LPARAM>(wide)), 2);
    EXPECT_STREQ(wide, kWideTwoChars);
    ExpectTwoCharText(hwnd);
}

TEST_F(SystemWindowsTest, ShortBuffersNeverSplitADoubleByteCharacter)
{
    const HWND wideWindow = CreateWide();
    const HWND ansiWindow = CreateAnsi();
    SetWindowTextW(wideWindow, kWideTwoChars);
    SetWindowTextW(ansiWindow, kWideTwoChars);

    for (HWND hwnd : {wideWindow, ansiWindow})
    {
        char ansi[4];
        std::memset(ansi, 'z', sizeof(ansi));
        EXPECT_EQ(GetWindowTextA(hwnd, ansi, 4), 2); // room for 3 bytes: one character
        EXPECT_STREQ(ansi, "\xD6\xD0");
        wchar_t wide[2];
        EXPECT_EQ(GetWindowTextW(hwnd, wide, 2), 1);
        EXPECT_EQ(wide[0], kWideTwoChars[0]);
        EXPECT_EQ(wide[1], L'\0');
    }
}

TEST_F(SystemWindowsTest, EmptyAndNullTextAndZeroBuffers)
{
    const HWND hwnd = CreateWide();
    SetWindowTextA(hwnd, "abc");
    ASSERT_TRUE(SetWindowTextA(hwnd, nullptr));
    EXPECT_EQ(GetWindowTextLengthA(hwnd), 0);
    char buffer[2] = {'q', 'q'};
    EXPECT_EQ(GetWindowTextA(hwnd, buffer, 0), 0);
    EXPECT_EQ(buffer[0], 'q');
    EXPECT_EQ(GetWindowTextA(hwnd, buffer, 2), 0);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(GetWindowTextA(nullptr, buffer, 2), 0);
}

TEST_F(SystemWindowsTest, CjkCharacterReachesAnAnsiProcedureAsLeadThenTrail)
{
    const HWND hwnd = CreateAnsi();
    Recorded().clear();
    SendMessageW(hwnd, WM_CHAR, 0x6587, 1);
    SendMessageW(hwnd, WM_CHAR, 'k', 1);

    EXPECT_EQ(RecordedWParams(WM_CHAR), (std::vector<WPARAM>{0xCE, 0xC4, 'k'}));
    EXPECT_EQ(RecordedOf(WM_CHAR)[0].lParam, 1);
}

TEST_F(SystemWindowsTest, LeadByteWaitsForItsTrailBeforeAWideProcedureSeesIt)
{
    const HWND hwnd = CreateWide();
    Recorded().clear();
    SendMessageA(hwnd, WM_CHAR, 0xD6, 1);
    EXPECT_TRUE(RecordedOf(WM_CHAR).empty());
    SendMessageA(hwnd, WM_CHAR, 0xD0, 1);
    SendMessageA(hwnd, WM_CHAR, 'q', 1);

    EXPECT_EQ(RecordedWParams(WM_CHAR), (std::vector<WPARAM>{0x4E2D, 'q'}));
}

TEST_F(SystemWindowsTest, ImeCharCarriesTheWholeDoubleByteCharacterForAnAnsiProcedure)
{
    const HWND ansiWindow = CreateAnsi();
    const HWND wideWindow = CreateWide();
    Recorded().clear();
    SendMessageW(ansiWindow, WM_IME_CHAR, 0x4E2D, 1);
    SendMessageA(wideWindow, WM_IME_CHAR, 0xCEC4, 1);

    EXPECT_EQ(RecordedWParams(WM_IME_CHAR), (std::vector<WPARAM>{0xD6D0, 0x6587}));
}
