// Lines and positions: EM_GETLINECOUNT, EM_LINEINDEX, EM_LINELENGTH, EM_LINEFROMCHAR, EM_GETLINE,
// word wrap, EM_POSFROMCHAR and EM_CHARFROMPOS on the font cell, margins, the formatting
// rectangle and scrolling.
#include "EditTestSupport.h"

#include <cstring>

using namespace QzTest;

namespace
{

// "abc" CR LF "de" CR LF "" CR LF "fghi": lines start at 0, 5, 9 and 11.
const wchar_t kThreeBreaks[] = L"abc\r\nde\r\n\r\nfghi";

LRESULT Send(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam = 0)
{
    return SendMessageW(hwnd, msg, wParam, lParam);
}

} // namespace

TEST_F(EditTest, LineMessagesOfAMultiLineWindow)
{
    const HWND hwnd =
        CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL, 200, 60, kThreeBreaks);
    EXPECT_EQ(Send(hwnd, EM_GETLINECOUNT, 0), 4);
    const struct
    {
        WPARAM line;
        LRESULT index;
    } starts[] = {{0, 0}, {1, 5}, {2, 9}, {3, 11}, {4, -1}, {100, -1}};
    for (const auto& s : starts)
        EXPECT_EQ(Send(hwnd, EM_LINEINDEX, s.line), s.index) << "line " << s.line;
    const struct
    {
        WPARAM index;
        LRESULT line, length;
    } chars[] = {{0, 0, 3}, {3, 0, 3}, {4, 0, 3}, {5, 1, 2}, {9, 2, 0}, {12, 3, 4}, {15, 3, 4}};
    for (const auto& c : chars)
    {
        EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, c.index), c.line) << "char " << c.index;
        EXPECT_EQ(Send(hwnd, EM_LINELENGTH, c.index), c.length) << "char " << c.index;
    }
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, 16), 0);
    EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, 99), 3);
}

TEST_F(EditTest, MinusOneMeansTheCaretsLine)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, kThreeBreaks);
    SetSel(hwnd, 6, 6);
    EXPECT_EQ(Send(hwnd, EM_LINEINDEX, WPARAM(-1)), 5);
    EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, WPARAM(-1)), 1);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, WPARAM(-1)), 2);
    // With a selection from "b" (line 0) to "e" (line 1): unselected "a" and nothing after "e".
    SetSel(hwnd, 1, 7);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, WPARAM(-1)), 1);
    EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, WPARAM(-1)), 0);
}

TEST_F(EditTest, SingleLineHasOneLineHoldingEverything)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"ab\r\ncd");
    EXPECT_EQ(Send(hwnd, EM_GETLINECOUNT, 0), 1);
    EXPECT_EQ(Send(hwnd, EM_LINEINDEX, 0), 0);
    EXPECT_EQ(Send(hwnd, EM_LINEINDEX, 1), 0); // any line of a single-line window
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, 5), 6);
    SetSel(hwnd, 1, 3);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, WPARAM(-1)), 6);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, 7), 0);
    EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, 5), 0);
    const HWND empty = CreateEdit(ES_MULTILINE);
    EXPECT_EQ(Send(empty, EM_GETLINECOUNT, 0), 1);
}

TEST_F(EditTest, GetLineTakesItsSizeFromTheFirstWordAndAddsANullOnlyWithRoom)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, kThreeBreaks);
    wchar_t buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), L'#');
    buffer[0] = 8;
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 3, reinterpret_cast<LPARAM>(buffer)), 4);
    EXPECT_EQ(std::wstring(buffer, 6), std::wstring(L"fghi\0#", 6));
    buffer[0] = 2;
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(buffer)), 2);
    EXPECT_EQ(std::wstring(buffer, 3), L"abh");
    buffer[0] = 8;
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 4, reinterpret_cast<LPARAM>(buffer)), 0);
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 0, 0), 0);
}

TEST_F(EditTest, AnsiGetLineCountsBytesAndNeverSplitsACharacter)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, L"a\u4E2D\u6587");
    char buffer[8] = {};
    const WORD size = 4; // "a" and one double-byte character; the next would need 5
    std::memcpy(buffer, &size, sizeof(size));
    EXPECT_EQ(SendMessageA(hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(buffer)), 3);
    EXPECT_EQ(std::string(buffer, 3), "a\xD6\xD0");
}

TEST_F(EditTest, MultiLineWithoutAutoHScrollWrapsWords)
{
    // 60 pixels hold 10 cells of 6.
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 60, 60, L"one two three fours");
    EXPECT_EQ(Send(hwnd, EM_GETLINECOUNT, 0), 3);
    EXPECT_EQ(Send(hwnd, EM_LINEINDEX, 1), 8);
    EXPECT_EQ(Send(hwnd, EM_LINEINDEX, 2), 14);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, 8), 6); // "three " keeps its hanging space
    const HWND longWord = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 60, 60, L"abcdefghijklmn");
    EXPECT_EQ(Send(longWord, EM_GETLINECOUNT, 0), 2);
    EXPECT_EQ(Send(longWord, EM_LINEINDEX, 1), 10);
    const HWND wide =
        CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 60, 60, L"\u4E00\u4E01\u4E02\u4E03\u4E04\u4E05");
    EXPECT_EQ(Send(wide, EM_LINEINDEX, 1), 5); // two cells each
    const HWND noWrap =
        CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL, 60, 60, L"one two three fours");
    EXPECT_EQ(Send(noWrap, EM_GETLINECOUNT, 0), 1);
}

TEST_F(EditTest, PosFromCharUsesTheFontCell)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, L"ab\u4E2Dc\r\nxy");
    const struct
    {
        WPARAM index;
        int x, y;
    } cases[] = {{0, 0, 0}, {1, 6, 0}, {2, 12, 0}, {3, 24, 0}, {4, 30, 0}, {6, 0, 12}, {7, 6, 12}};
    for (const auto& c : cases)
        EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, c.index), MAKELONG(c.x, c.y)) << "char " << c.index;
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 8), -1); // past the last character
    const HFONT font = CreateFontA(14, 0, 0, 0, 0, 0, 0, 0, GB2312_CHARSET, 0, 0, 0, 0, "x");
    Send(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EXPECT_EQ(Send(hwnd, WM_GETFONT, 0), reinterpret_cast<LRESULT>(font));
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 7), MAKELONG(7, 14));
}

TEST_F(EditTest, CharFromPosFindsTheNearestCharacterAndLine)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, L"abc\r\nde");
    const struct
    {
        int x, y;
        WORD index, line;
    } cases[] = {{0, 0, 0, 0},  {8, 3, 1, 0},    {10, 3, 2, 0}, {150, 3, 3, 0},
                 {4, 13, 6, 1}, {150, 13, 7, 1}, {1, 50, 5, 1}};
    for (const auto& c : cases)
        EXPECT_EQ(Send(hwnd, EM_CHARFROMPOS, 0, MAKELPARAM(c.x, c.y)), MAKELONG(c.index, c.line))
            << c.x << "," << c.y;
    EXPECT_EQ(Send(hwnd, EM_CHARFROMPOS, 0, MAKELPARAM(250, 5)), -1);
}

TEST_F(EditTest, MarginsMoveTextAndNarrowTheFormattingRectangle)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abc");
    RECT rc = {};
    Send(hwnd, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rc));
    EXPECT_EQ(rc.left, 0);
    EXPECT_EQ(rc.right, 100);
    Send(hwnd, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(4, 9));
    EXPECT_EQ(Send(hwnd, EM_GETMARGINS, 0), MAKELONG(4, 9));
    Send(hwnd, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rc));
    EXPECT_EQ(rc.left, 4);
    EXPECT_EQ(rc.right, 91);
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 1), MAKELONG(10, 0));
    Send(hwnd, EM_SETMARGINS, EC_RIGHTMARGIN, MAKELPARAM(50, 2));
    EXPECT_EQ(Send(hwnd, EM_GETMARGINS, 0), MAKELONG(4, 2));
    Send(hwnd, EM_SETMARGINS, EC_USEFONTINFO, 0);
    EXPECT_EQ(Send(hwnd, EM_GETMARGINS, 0), MAKELONG(3, 3));
}

TEST_F(EditTest, FormattingRectangleIsAWholeNumberOfLines)
{
    const HWND multi = CreateEdit(ES_MULTILINE, 100, 30);
    RECT rc = {};
    Send(multi, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rc));
    EXPECT_EQ(rc.bottom, 24);
    const HWND single = CreateEdit(0, 100, 30);
    Send(single, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rc));
    EXPECT_EQ(rc.bottom, 12);
    const RECT custom = {5, 2, 50, 38};
    Send(multi, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&custom));
    Send(multi, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rc));
    EXPECT_TRUE(EqualRect(&rc, &custom));
    Send(multi, EM_SETRECT, 0, 0);
    Send(multi, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rc));
    EXPECT_EQ(rc.right, 100);
}

TEST_F(EditTest, LineScrollMovesTheFirstVisibleLineButNotPastTheLast)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL, 100, 24,
                                 L"1\r\n2\r\n3\r\n4\r\n5");
    SetSel(hwnd, 0, 0);
    Send(hwnd, EM_SCROLLCARET, 0);
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 0);
    EXPECT_TRUE(Send(hwnd, EM_LINESCROLL, 0, 2));
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 2);
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 0), MAKELONG(0, -24));
    Send(hwnd, EM_LINESCROLL, 0, 100);
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 4);
    Send(hwnd, EM_LINESCROLL, 3, -100);
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 0);
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 0), MAKELONG(-18, 0));
    const HWND single = CreateEdit(ES_AUTOHSCROLL);
    EXPECT_FALSE(Send(single, EM_LINESCROLL, 1, 1));
}

TEST_F(EditTest, CaretKeepsItsLineInViewAndScrollCaretBringsItBack)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 24);
    Type(hwnd, L"1\r2\r3\r4");
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 2);
    SetSel(hwnd, 0, 0); // EM_SETSEL does not scroll
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 2);
    EXPECT_TRUE(Send(hwnd, EM_SCROLLCARET, 0));
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 0);
}

TEST_F(EditTest, SingleLineScrollsHorizontallyAsTheCaretLeavesTheView)
{
    // 60 pixels show 10 characters; the view moves at least 10 characters at a time.
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 60, 24);
    Type(hwnd, L"0123456789");
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 0);
    Type(hwnd, L"a");
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 10);
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 10), MAKELONG(0, 0));
    Press(hwnd, VK_HOME);
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE, 0), 0);
}
