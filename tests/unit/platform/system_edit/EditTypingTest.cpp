// Typing through WM_CHAR: insertion over the selection, Backspace, Delete, Enter, control
// characters, ES_NUMBER, ES_READONLY, the text limit and the room of the window.
#include "EditTestSupport.h"

using namespace QzTest;
using QzPlatform::Host::TakeBeeps;

TEST_F(EditTest, TypingReplacesTheSelectionAndBackspaceAndDeleteTakeCrLfAsOne)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 48);
    Type(hwnd, L"hello");
    SetSel(hwnd, 1, 4);
    Type(hwnd, L"EY");
    EXPECT_EQ(Sel(hwnd), Range(3, 3));
    Type(hwnd, L"\b\r\rx\b\b");
    EXPECT_EQ(TextW(hwnd), L"hE\r\no");
    SetSel(hwnd, 2, 2);
    Press(hwnd, VK_DELETE);
    EXPECT_EQ(TextW(hwnd), L"hEo");
    SetSel(hwnd, 1, 3);
    Type(hwnd, L"\b");
    EXPECT_EQ(TextW(hwnd), L"h");
    SetSel(hwnd, 0, 0);
    TakeCodes();
    Type(hwnd, L"\b"); // at the start: nothing changes, nothing is told
    EXPECT_TRUE(TakeCodes().empty());
}

TEST_F(EditTest, EnterIsCrLfInMultiLineOnlyAndControlCharactersAreNotTyped)
{
    const DWORD multi = ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
    const struct
    {
        DWORD style;
        const wchar_t* typed;
        const wchar_t* text;
    } cases[] = {
        {multi, L"ab\rc", L"ab\r\nc"},
        {ES_AUTOHSCROLL, L"ab\r\nc", L"abc"},
        {ES_AUTOHSCROLL, L"a\x01\x02\x1B\x7F\tb", L"ab"},
        {multi, L"a\tb", L"a\tb"}, // a multi-line window takes Tab
    };
    for (const auto& c : cases)
    {
        const HWND hwnd = CreateEdit(c.style, 100, 48);
        Type(hwnd, c.typed);
        EXPECT_EQ(TextW(hwnd), c.text) << c.style;
    }
}

// ES_NUMBER set at creation or later by SetWindowLong; Windows lets a paste of anything in.
TEST_F(EditTest, NumberStyleRefusesTypedNonDigitsWithABeepButNotPastes)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    Type(hwnd, L"a");
    SetWindowLongW(hwnd, GWL_STYLE, GetWindowLongW(hwnd, GWL_STYLE) | ES_NUMBER);
    TakeBeeps();
    Type(hwnd, L"1b2-3 ");
    EXPECT_EQ(TextW(hwnd), L"a123");
    EXPECT_EQ(TakeBeeps().size(), 3u);
    SetClipboardW(L"x9");
    Send(hwnd, WM_PASTE);
    EXPECT_EQ(TextW(hwnd), L"a123x9");
    EXPECT_TRUE(TakeBeeps().empty());
}

TEST_F(EditTest, ReadOnlyRefusesEditsButCopiesTakesReplaceSelAndClearsByMessage)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_READONLY, 100, 24, L"abc");
    SetSel(hwnd, 0, 3);
    Send(hwnd, WM_COPY);
    EXPECT_EQ(ClipboardText(), L"abc");
    SetClipboardW(L"x");
    for (UINT msg : {WM_CUT, WM_PASTE, WM_CLEAR})
        Send(hwnd, msg);
    Type(hwnd, L"z\b\x18\x16");
    Press(hwnd, VK_DELETE);
    EXPECT_EQ(TextW(hwnd), L"abc");
    EXPECT_EQ(ClipboardText(), L"x");
    Send(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"log"));
    EXPECT_TRUE(Send(hwnd, EM_SETREADONLY, FALSE));
    Type(hwnd, L"s");
    EXPECT_EQ(TextW(hwnd), L"logs");
}

TEST_F(EditTest, LimitOfZeroIsTheLargestAndTypingPastTheLimitSendsMaxText)
{
    for (const auto& c : {std::make_pair(DWORD(ES_AUTOHSCROLL), LRESULT(0x7FFFFFFE)),
                          std::make_pair(DWORD(ES_MULTILINE), LRESULT(0xFFFFFFFF))})
    {
        const HWND hwnd = CreateEdit(c.first);
        EXPECT_EQ(Send(hwnd, EM_GETLIMITTEXT), 30000);
        Send(hwnd, EM_SETLIMITTEXT, 0);
        EXPECT_EQ(Send(hwnd, EM_GETLIMITTEXT), c.second);
    }
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    Send(hwnd, EM_LIMITTEXT, 3);
    Type(hwnd, L"abc");
    TakeCodes();
    Type(hwnd, L"d");
    EXPECT_EQ(TextW(hwnd), L"abc");
    EXPECT_EQ(TakeCodes(), std::vector<WORD>{EN_MAXTEXT});
    SetSel(hwnd, 0, 1); // a selection makes room for what replaces it
    Type(hwnd, L"z");
    EXPECT_EQ(TextW(hwnd), L"zbc");
}

TEST_F(EditTest, PastesAreCutByTheLimitNeverInsideACharacterOrALineBreak)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 48);
    Send(hwnd, EM_LIMITTEXT, 4);
    Type(hwnd, L"ab");
    SetClipboardW(L"1\r\n2");
    TakeCodes();
    Send(hwnd, WM_PASTE);
    EXPECT_EQ(TextW(hwnd), L"ab1"); // CR LF would pass the limit: neither half goes in
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_MAXTEXT, EN_UPDATE, EN_CHANGE}));
    // The limit counts characters: an ANSI caller's GBK bytes arrive as whole characters.
    const HWND ansi = CreateEditA(ES_AUTOHSCROLL);
    SendMessageA(ansi, EM_LIMITTEXT, 2, 0);
    for (int byte : {0xD6, 0xD0, 0xCE, 0xC4, int('x')})
        SendMessageA(ansi, WM_CHAR, byte, 1);
    EXPECT_EQ(TextW(ansi), L"\u4E2D\u6587");
    SetSel(ansi, 1, 2);
    SendMessageA(ansi, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("\xCE\xC4\xD6\xD0"));
    EXPECT_EQ(TextW(ansi), L"\u4E2D\u6587");
}

// Without ES_AUTOHSCROLL a single-line window takes only what its width shows (cells of 6
// pixels: 30 pixels hold 5); with it the view scrolls, 10 characters at a time for 60 pixels,
// and the parent hears only of the change.
TEST_F(EditTest, SingleLineTakesTextPastItsWidthOnlyWithAutoHScroll)
{
    const HWND fixed = CreateEdit(0, 30, 24);
    Type(fixed, L"abcdefg");
    EXPECT_EQ(TextW(fixed), L"abcde");
    EXPECT_EQ(TakeCodes().back(), EN_MAXTEXT);
    SetSel(fixed, 0, 2);
    Send(fixed, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"xyz"));
    EXPECT_EQ(TextW(fixed), L"xycde"); // cut to what fits

    const HWND scrolling = CreateEdit(ES_AUTOHSCROLL, 60, 24);
    Type(scrolling, L"0123456789");
    EXPECT_EQ(Send(scrolling, EM_GETFIRSTVISIBLELINE), 0);
    TakeCodes();
    Type(scrolling, L"a");
    EXPECT_EQ(Send(scrolling, EM_GETFIRSTVISIBLELINE), 10);
    EXPECT_EQ(Send(scrolling, EM_POSFROMCHAR, 10), MAKELONG(0, 0));
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE})); // no EN_HSCROLL
    Press(scrolling, VK_HOME);
    EXPECT_EQ(Send(scrolling, EM_GETFIRSTVISIBLELINE), 0);
}

TEST_F(EditTest, MultiLineWithoutAutoVScrollRefusesLinesPastItsHeightWithABeep)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE, 100, 24); // two lines of 12 pixels
    TakeBeeps();
    Type(hwnd, L"a\rb\rc");
    EXPECT_EQ(TextW(hwnd), L"a\r\nbc");
    EXPECT_EQ(TakeBeeps().size(), 1u);
}
