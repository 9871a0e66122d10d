// The clipboard: WM_COPY, WM_CUT, WM_PASTE and WM_CLEAR, their keys (Ctrl+C, Ctrl+X, Ctrl+V as
// WM_CHAR control characters; Ctrl+Insert, Shift+Insert, Shift+Delete), and what read-only,
// password and number windows allow.
#include "EditTestSupport.h"

using namespace QzTest;

TEST_F(EditTest, CopyPutsTheSelectionOnTheClipboardInBothFormats)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"ab\u4E2Dcd");
    SetSel(hwnd, 1, 3);
    SendMessageW(hwnd, WM_COPY, 0, 0);
    EXPECT_EQ(ClipboardText(), L"b\u4E2D");
    ASSERT_TRUE(OpenClipboard(nullptr));
    const char* ansi = static_cast<const char*>(GlobalLock(GetClipboardData(CF_TEXT)));
    EXPECT_STREQ(ansi, "b\xD6\xD0");
    CloseClipboard();
    EXPECT_EQ(TextW(hwnd), L"ab\u4E2Dcd");
}

TEST_F(EditTest, CopyWithoutSelectionLeavesTheClipboardAlone)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abc");
    SetClipboardW(L"before");
    SetSel(hwnd, 1, 1);
    SendMessageW(hwnd, WM_COPY, 0, 0);
    EXPECT_EQ(ClipboardText(), L"before");
}

TEST_F(EditTest, CutAndClearRemoveTheSelectionAndNotify)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdef");
    SetSel(hwnd, 1, 3);
    TakeCodes();
    SendMessageW(hwnd, WM_CUT, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"adef");
    EXPECT_EQ(ClipboardText(), L"bc");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE}));
    SetSel(hwnd, 0, 2);
    SendMessageW(hwnd, WM_CLEAR, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"ef");
    EXPECT_EQ(ClipboardText(), L"bc");
}

TEST_F(EditTest, ControlCharactersCopyCutPasteAndUndo)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abc");
    SetSel(hwnd, 0, 2);
    Type(hwnd, L"\x03"); // Ctrl+C
    EXPECT_EQ(ClipboardText(), L"ab");
    SetSel(hwnd, 3, 3);
    Type(hwnd, L"\x16"); // Ctrl+V
    EXPECT_EQ(TextW(hwnd), L"abcab");
    SetSel(hwnd, 0, 1);
    Type(hwnd, L"\x18"); // Ctrl+X
    EXPECT_EQ(TextW(hwnd), L"bcab");
    EXPECT_EQ(ClipboardText(), L"a");
    Type(hwnd, L"\x1A"); // Ctrl+Z
    EXPECT_EQ(TextW(hwnd), L"abcab");
}

TEST_F(EditTest, InsertAndDeleteKeysReachTheClipboard)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abc");
    SetSel(hwnd, 1, 2);
    Press(hwnd, VK_INSERT, false, true); // Ctrl+Insert copies
    EXPECT_EQ(ClipboardText(), L"b");
    Press(hwnd, VK_DELETE, true); // Shift+Delete cuts
    EXPECT_EQ(TextW(hwnd), L"ac");
    SetSel(hwnd, 2, 2);
    Press(hwnd, VK_INSERT, true); // Shift+Insert pastes
    EXPECT_EQ(TextW(hwnd), L"acb");
}

TEST_F(EditTest, PasteIsCutByTheLimitWithMaxText)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SendMessageW(hwnd, EM_LIMITTEXT, 4, 0);
    Type(hwnd, L"ab");
    SetClipboardW(L"12345");
    TakeCodes();
    SendMessageW(hwnd, WM_PASTE, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"ab12");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_MAXTEXT, EN_UPDATE, EN_CHANGE}));
}

TEST_F(EditTest, SingleLinePasteStopsAtTheFirstLineBreak)
{
    const struct
    {
        DWORD style;
        const wchar_t* expected;
    } cases[] = {{ES_AUTOHSCROLL, L"one"}, {ES_MULTILINE | ES_AUTOVSCROLL, L"one\r\ntwo"}};
    for (const auto& c : cases)
    {
        const HWND hwnd = CreateEdit(c.style, 100, 48);
        SetClipboardW(L"one\r\ntwo");
        SendMessageW(hwnd, WM_PASTE, 0, 0);
        EXPECT_EQ(TextW(hwnd), c.expected);
    }
}

// Windows documents that ES_NUMBER does not stop a paste of other characters.
TEST_F(EditTest, NumberWindowTakesPastedNonDigits)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_NUMBER);
    SetClipboardW(L"12ab");
    SendMessageW(hwnd, WM_PASTE, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"12ab");
}

TEST_F(EditTest, ReadOnlyWindowCopiesButDoesNotCutPasteOrClear)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_READONLY, 100, 24, L"abc");
    SetSel(hwnd, 0, 3);
    SendMessageW(hwnd, WM_COPY, 0, 0);
    EXPECT_EQ(ClipboardText(), L"abc");
    SetClipboardW(L"x");
    for (UINT msg : {WM_CUT, WM_PASTE, WM_CLEAR})
        SendMessageW(hwnd, msg, 0, 0);
    Type(hwnd, L"\x18\x16");
    EXPECT_EQ(TextW(hwnd), L"abc");
    EXPECT_EQ(ClipboardText(), L"x");
}

TEST_F(EditTest, EmptyClipboardPastesNothing)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abc");
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    CloseClipboard();
    TakeCodes();
    SendMessageW(hwnd, WM_PASTE, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"abc");
    EXPECT_TRUE(TakeCodes().empty());
}
