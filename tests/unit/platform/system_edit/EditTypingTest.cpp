// Typing through WM_CHAR: insertion at the caret over the selection, Backspace, Enter, control
// characters, ES_NUMBER, ES_READONLY, case styles, the text limit and the room of the window.
#include "EditTestSupport.h"

using namespace QzTest;
using QzPlatform::Host::TakeBeeps;

TEST_F(EditTest, TypedCharactersGoInAtTheCaretReplacingTheSelection)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    Type(hwnd, L"hello");
    EXPECT_EQ(TextW(hwnd), L"hello");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(5), DWORD(5)));
    SetSel(hwnd, 1, 4);
    Type(hwnd, L"EY");
    EXPECT_EQ(TextW(hwnd), L"hEYo");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(3), DWORD(3)));
}

TEST_F(EditTest, BackspaceDeletesTheSelectionOrTheCharacterBefore)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdef");
    SetSel(hwnd, 6, 6);
    Type(hwnd, L"\b");
    EXPECT_EQ(TextW(hwnd), L"abcde");
    SetSel(hwnd, 1, 3);
    Type(hwnd, L"\b");
    EXPECT_EQ(TextW(hwnd), L"ade");
    SetSel(hwnd, 0, 0);
    TakeCodes();
    Type(hwnd, L"\b");
    EXPECT_EQ(TextW(hwnd), L"ade");
    EXPECT_TRUE(TakeCodes().empty()); // nothing changed, nothing told
}

TEST_F(EditTest, EnterIsCrLfInMultiLineAndNothingInSingleLine)
{
    const HWND multi = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 48);
    Type(multi, L"ab\rc");
    EXPECT_EQ(TextW(multi), L"ab\r\nc");
    Type(multi, L"\b\b");
    EXPECT_EQ(TextW(multi), L"ab"); // the line break goes as one
    const HWND single = CreateEdit(ES_AUTOHSCROLL);
    Type(single, L"ab\r\nc");
    EXPECT_EQ(TextW(single), L"abc");
}

TEST_F(EditTest, ControlCharactersAreNotTyped)
{
    const HWND single = CreateEdit(ES_AUTOHSCROLL);
    Type(single, std::wstring(L"a\x01\x02\x1B\x7F\tb"));
    EXPECT_EQ(TextW(single), L"ab");
    const HWND multi = CreateEdit(ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL, 100, 48);
    Type(multi, L"a\tb");
    EXPECT_EQ(TextW(multi), L"a\tb");
}

TEST_F(EditTest, NumberStyleRefusesNonDigitsWithABeep)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_NUMBER);
    TakeBeeps();
    Type(hwnd, L"1a2-3 ");
    EXPECT_EQ(TextW(hwnd), L"123");
    EXPECT_EQ(TakeBeeps().size(), 3u);
    Type(hwnd, L"\b");
    EXPECT_EQ(TextW(hwnd), L"12");
}

TEST_F(EditTest, NumberStyleSetLaterBySetWindowLongTakesEffect)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    Type(hwnd, L"a");
    SetWindowLongW(hwnd, GWL_STYLE, GetWindowLongW(hwnd, GWL_STYLE) | ES_NUMBER);
    Type(hwnd, L"b7");
    EXPECT_EQ(TextW(hwnd), L"a7");
}

TEST_F(EditTest, ReadOnlyRefusesTypingUntilClearedByMessage)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_READONLY, 100, 24, L"x");
    SetSel(hwnd, 1, 1);
    Type(hwnd, L"ab\b");
    EXPECT_EQ(TextW(hwnd), L"x");
    EXPECT_TRUE(SendMessageW(hwnd, EM_SETREADONLY, FALSE, 0));
    EXPECT_FALSE(GetWindowLongW(hwnd, GWL_STYLE) & ES_READONLY);
    Type(hwnd, L"ab\b");
    EXPECT_EQ(TextW(hwnd), L"xa");
    SendMessageW(hwnd, EM_SETREADONLY, TRUE, 0);
    EXPECT_TRUE(GetWindowLongW(hwnd, GWL_STYLE) & ES_READONLY);
}

TEST_F(EditTest, CaseStylesConvertTypedCharacters)
{
    const HWND upper = CreateEdit(ES_AUTOHSCROLL | ES_UPPERCASE);
    Type(upper, L"aB1");
    EXPECT_EQ(TextW(upper), L"AB1");
    const HWND lower = CreateEdit(ES_AUTOHSCROLL | ES_LOWERCASE);
    Type(lower, L"aB1");
    EXPECT_EQ(TextW(lower), L"ab1");
}

TEST_F(EditTest, LimitCutsTypingAndSendsMaxText)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SendMessageW(hwnd, EM_LIMITTEXT, 3, 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETLIMITTEXT, 0, 0), 3);
    Type(hwnd, L"abc");
    TakeCodes();
    Type(hwnd, L"d");
    EXPECT_EQ(TextW(hwnd), L"abc");
    EXPECT_EQ(TakeCodes(), std::vector<WORD>{EN_MAXTEXT});
    SetSel(hwnd, 0, 1); // a selection makes room for what replaces it
    Type(hwnd, L"z");
    EXPECT_EQ(TextW(hwnd), L"zbc");
}

TEST_F(EditTest, LimitDefaultsTo30000AndZeroMeansTheLargest)
{
    const struct
    {
        DWORD style;
        LRESULT largest;
    } cases[] = {{ES_AUTOHSCROLL, 0x7FFFFFFE}, {ES_MULTILINE, LRESULT(0xFFFFFFFF)}};
    for (const auto& c : cases)
    {
        const HWND hwnd = CreateEdit(c.style);
        EXPECT_EQ(SendMessageW(hwnd, EM_GETLIMITTEXT, 0, 0), 30000);
        SendMessageW(hwnd, EM_SETLIMITTEXT, 0, 0);
        EXPECT_EQ(SendMessageW(hwnd, EM_GETLIMITTEXT, 0, 0), c.largest);
    }
}

TEST_F(EditTest, DoubleByteCharacterIsOneCharacterForTheLimit)
{
    const HWND hwnd = CreateEditA(ES_AUTOHSCROLL);
    SendMessageA(hwnd, EM_LIMITTEXT, 2, 0);
    // An ANSI caller types GBK bytes, lead then trail, as Windows delivers them.
    for (int byte : {0xD6, 0xD0, 0xCE, 0xC4, int('x')})
        SendMessageA(hwnd, WM_CHAR, byte, 1);
    EXPECT_EQ(TextW(hwnd), L"\u4E2D\u6587");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(2), DWORD(2)));
}

TEST_F(EditTest, SingleLineWithoutAutoHScrollRefusesTextPastItsWidth)
{
    // The system font's cell is 6 pixels: 30 pixels hold 5 characters.
    const HWND hwnd = CreateEdit(0, 30, 24);
    Type(hwnd, L"abcdefg");
    EXPECT_EQ(TextW(hwnd), L"abcde");
    const std::vector<WORD> codes = TakeCodes();
    EXPECT_EQ(codes.back(), EN_MAXTEXT);
    SendMessageW(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"xyz"));
    EXPECT_EQ(TextW(hwnd), L"abcde");
    SetSel(hwnd, 0, 2);
    SendMessageW(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"xyz"));
    EXPECT_EQ(TextW(hwnd), L"xycde"); // cut to what fits
}

TEST_F(EditTest, SingleLineWithAutoHScrollTakesTextPastItsWidth)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 30, 24);
    Type(hwnd, L"abcdefghij");
    EXPECT_EQ(TextW(hwnd), L"abcdefghij");
    EXPECT_GT(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 0);
}

TEST_F(EditTest, MultiLineWithoutAutoVScrollRefusesLinesPastItsHeightWithABeep)
{
    // 24 pixels hold two lines of 12.
    const HWND hwnd = CreateEdit(ES_MULTILINE, 100, 24);
    TakeBeeps();
    Type(hwnd, L"a\rb\rc");
    EXPECT_EQ(TextW(hwnd), L"a\r\nbc");
    EXPECT_EQ(TakeBeeps().size(), 1u);
    const HWND scrolling = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 24);
    Type(scrolling, L"a\rb\rc");
    EXPECT_EQ(TextW(scrolling), L"a\r\nb\r\nc");
}
