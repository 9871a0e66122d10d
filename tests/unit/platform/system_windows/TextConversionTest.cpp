// Window text and characters between ANSI (code page 936) and wide callers and procedures.
#include "WindowsTestSupport.h"

#include <cstring>

using namespace QzTest;

TEST_F(SystemWindowsTest, DoubleByteTextRoundTripsThroughAWideWindow)
{
    const HWND hwnd = CreateWide();
    ASSERT_TRUE(SetWindowTextA(hwnd, kGbkTwoChars));
    EXPECT_EQ(RecordedOf(WM_SETTEXT).at(0).text, kWideTwoChars);

    wchar_t wide[8];
    EXPECT_EQ(GetWindowTextW(hwnd, wide, 8), 2);
    EXPECT_STREQ(wide, kWideTwoChars);
    char ansi[8];
    EXPECT_EQ(GetWindowTextA(hwnd, ansi, 8), 4);
    EXPECT_STREQ(ansi, kGbkTwoChars);
    EXPECT_EQ(GetWindowTextLengthW(hwnd), 2);
    EXPECT_EQ(GetWindowTextLengthA(hwnd), 4);
}

TEST_F(SystemWindowsTest, WideTextRoundTripsThroughAnAnsiWindow)
{
    const HWND hwnd = CreateAnsi();
    ASSERT_TRUE(SetWindowTextW(hwnd, kWideTwoChars));
    EXPECT_EQ(RecordedOf(WM_SETTEXT).at(0).kind, 'A');

    wchar_t wide[8];
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXT, 8, reinterpret_cast<LPARAM>(wide)), 2);
    EXPECT_STREQ(wide, kWideTwoChars);
    EXPECT_EQ(GetWindowTextLengthW(hwnd), 2);
    char ansi[8];
    EXPECT_EQ(GetWindowTextA(hwnd, ansi, 8), 4);
    EXPECT_STREQ(ansi, kGbkTwoChars);
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

    const std::vector<RecordedMessage> chars = RecordedOf(WM_CHAR);
    ASSERT_EQ(chars.size(), 3u);
    EXPECT_EQ(chars[0].wParam, 0xCEu);
    EXPECT_EQ(chars[1].wParam, 0xC4u);
    EXPECT_EQ(chars[2].wParam, static_cast<WPARAM>('k'));
    EXPECT_EQ(chars[0].lParam, 1);
}

TEST_F(SystemWindowsTest, LeadByteWaitsForItsTrailBeforeAWideProcedureSeesIt)
{
    const HWND hwnd = CreateWide();
    Recorded().clear();
    SendMessageA(hwnd, WM_CHAR, 0xD6, 1);
    EXPECT_TRUE(RecordedOf(WM_CHAR).empty());
    SendMessageA(hwnd, WM_CHAR, 0xD0, 1);
    SendMessageA(hwnd, WM_CHAR, 'q', 1);

    const std::vector<RecordedMessage> chars = RecordedOf(WM_CHAR);
    ASSERT_EQ(chars.size(), 2u);
    EXPECT_EQ(chars[0].wParam, 0x4E2Du);
    EXPECT_EQ(chars[1].wParam, static_cast<WPARAM>('q'));
}

TEST_F(SystemWindowsTest, ImeCharCarriesTheWholeDoubleByteCharacterForAnAnsiProcedure)
{
    const HWND ansiWindow = CreateAnsi();
    const HWND wideWindow = CreateWide();
    Recorded().clear();
    SendMessageW(ansiWindow, WM_IME_CHAR, 0x4E2D, 1);
    SendMessageA(wideWindow, WM_IME_CHAR, 0xCEC4, 1);

    const std::vector<RecordedMessage> chars = RecordedOf(WM_IME_CHAR);
    ASSERT_EQ(chars.size(), 2u);
    EXPECT_EQ(chars[0].wParam, 0xD6D0u);
    EXPECT_EQ(chars[1].wParam, 0x6587u);
}
