// Lines and positions: EM_GETLINECOUNT, EM_LINEINDEX, EM_LINELENGTH, EM_LINEFROMCHAR, EM_GETLINE,
// word wrap, EM_POSFROMCHAR and EM_CHARFROMPOS on the font cell, and scrolling.
#include "EditTestSupport.h"

#include "platform/system/edit/EditLayout.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using namespace QzTest;

namespace
{

// "a" U+4E2D U+6587 CR LF "de" CR LF "" CR LF "fghi": lines start at 0, 5, 9 and 11.
const wchar_t kThreeBreaks[] = L"a\u4E2D\u6587\r\nde\r\n\r\nfghi";

} // namespace

TEST_F(EditTest, LineMessagesAnswerByLineByCharacterAndMinusOneForTheCaret)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, kThreeBreaks);
    EXPECT_EQ(Send(hwnd, EM_GETLINECOUNT), 4);
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
    } chars[] = {{0, 0, 3}, {3, 0, 3},  {4, 0, 3},  {5, 1, 2},
                 {9, 2, 0}, {12, 3, 4}, {15, 3, 4}, {99, 3, 0}};
    for (const auto& c : chars)
    {
        EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, c.index), c.line) << "char " << c.index;
        EXPECT_EQ(Send(hwnd, EM_LINELENGTH, c.index), c.length) << "char " << c.index;
    }
    SetSel(hwnd, 6, 6);
    EXPECT_EQ(Send(hwnd, EM_LINEINDEX, WPARAM(-1)), 5);
    EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, WPARAM(-1)), 1);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, WPARAM(-1)), 2);
    // A selection from line 0 into line 1: the unselected "a" and nothing after "e".
    SetSel(hwnd, 1, 7);
    EXPECT_EQ(Send(hwnd, EM_LINELENGTH, WPARAM(-1)), 1);
    EXPECT_EQ(Send(hwnd, EM_LINEFROMCHAR, WPARAM(-1)), 0);

    const HWND single = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"ab\r\ncd");
    EXPECT_EQ(Send(single, EM_GETLINECOUNT), 1);
    EXPECT_EQ(Send(single, EM_LINEINDEX, 1), 0); // any line of a single-line window
    EXPECT_EQ(Send(single, EM_LINELENGTH, 5), 6);
    EXPECT_EQ(Send(CreateEdit(ES_MULTILINE), EM_GETLINECOUNT), 1);
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
    EXPECT_EQ(std::wstring(buffer, 3), L"a\u4E2Dh");
    buffer[0] = 8;
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 4, reinterpret_cast<LPARAM>(buffer)), 0);
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 0), 0);
    // An ANSI caller's size counts bytes and never takes half a double-byte character.
    char bytes[8] = {};
    const WORD size = 4;
    std::memcpy(bytes, &size, sizeof(size));
    EXPECT_EQ(SendMessageA(hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(bytes)), 3);
    EXPECT_EQ(std::string(bytes, 4), std::string("a\xD6\xD0\0", 4));
}

TEST_F(EditTest, MultiLineWrapsWordsUnlessAutoHScroll)
{
    // 60 pixels hold 10 cells of 6; "three " keeps its hanging space.
    const HWND wrapping = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 60, 60, L"one two three fours");
    EXPECT_EQ(Send(wrapping, EM_GETLINECOUNT), 3);
    EXPECT_EQ(Send(wrapping, EM_LINEINDEX, 2), 14);
    EXPECT_EQ(Send(wrapping, EM_LINELENGTH, 8), 6);
    const HWND wide = CreateEdit(ES_MULTILINE, 60, 60, L"\u4E00\u4E01\u4E02\u4E03\u4E04\u4E05a");
    EXPECT_EQ(Send(wide, EM_LINEINDEX, 1), 5); // two cells each, broken anywhere
    const HWND noWrap =
        CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL, 60, 60, L"one two three fours");
    EXPECT_EQ(Send(noWrap, EM_GETLINECOUNT), 1);
}

TEST_F(EditTest, PosFromCharAndCharFromPosWorkOnTheFontCell)
{
    // Cells of 6 by 12 for the system font; the wide character takes two.
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, L"ab\u4E2Dc\r\nxy");
    const struct
    {
        WPARAM index;
        int x, y;
    } positions[] = {{0, 0, 0}, {1, 6, 0}, {2, 12, 0}, {3, 24, 0}, {4, 30, 0}, {7, 6, 12}};
    for (const auto& c : positions)
        EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, c.index), MAKELONG(c.x, c.y)) << "char " << c.index;
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 8), -1); // past the last character
    const struct
    {
        int x, y;
        WORD index, line;
    } points[] = {{8, 3, 1, 0},   {10, 3, 2, 0},   {17, 3, 2, 0}, {19, 3, 3, 0},
                  {150, 3, 4, 0}, {150, 13, 8, 1}, {4, 13, 7, 1}, {1, 50, 6, 1}};
    for (const auto& c : points)
        EXPECT_EQ(Send(hwnd, EM_CHARFROMPOS, 0, MAKELPARAM(c.x, c.y)), MAKELONG(c.index, c.line))
            << c.x << "," << c.y;
    EXPECT_EQ(Send(hwnd, EM_CHARFROMPOS, 0, MAKELPARAM(250, 5)), -1);
    const HFONT font = CreateFontA(14, 0, 0, 0, 0, 0, 0, 0, GB2312_CHARSET, 0, 0, 0, 0, "x");
    Send(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EXPECT_EQ(Send(hwnd, WM_GETFONT), reinterpret_cast<LRESULT>(font));
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 7), MAKELONG(7, 14));
}

TEST(EditLayoutCells, TwoCellsExactlyInsideTheEastAsianBlocks)
{
    // Each block's edges and the characters just outside them.
    const struct
    {
        wchar_t ch;
        bool wide;
    } cases[] = {
        {L'A', false},    {0x10FF, false}, {0x1100, true},   {0x115F, true},  {0x1160, false},
        {0x2328, false},  {0x2329, true},  {0x232A, true},   {0x232B, false}, {0x2E7F, false},
        {0x303E, true},   {0x303F, false}, {0x3040, true},   {0xA4CF, true},  {0xA4D0, false},
        {0xABFF, false},  {0xAC00, true},  {0xD7A3, true},   {0xD7A4, false}, {0xF900, true},
        {0xFAFF, true},   {0xFE0F, false}, {0xFE19, true},   {0xFE1A, false}, {0xFE30, true},
        {0xFE6F, true},   {0xFE70, false}, {0xFF60, true},   {0xFF61, false}, {0xFFE0, true},
        {0xFFE6, true},   {0xFFE7, false}, {0x1FFFF, false}, {0x20000, true}, {0x2FFFD, true},
        {0x2FFFE, false}, {0x3FFFD, true}, {0x3FFFE, false}};
    for (const auto& c : cases)
        EXPECT_EQ(QzPlatform::CEditLayout::IsWide(c.ch), c.wide) << std::hex << unsigned(c.ch);
}

namespace
{

// Positions read off the layout agree with walking each of its lines cell by cell (6 pixels a
// cell, tab stops every 48).
void ExpectAWalkAlongEachLine(const QzPlatform::CEditLayout& layout, const std::wstring& text)
{
    for (size_t line = 0; line < layout.LineCount(); ++line)
    {
        const QzPlatform::EditLine& info = layout.Line(line);
        std::vector<int> lefts; // where each character of the line starts, then its end
        int x = 0;
        for (size_t i = info.start; i < info.start + info.length; ++i)
        {
            lefts.push_back(x);
            x = text[i] == L'\t' ? (x / 48 + 1) * 48
                                 : x + (QzPlatform::CEditLayout::IsWide(text[i]) ? 12 : 6);
        }
        lefts.push_back(x);
        ASSERT_EQ(layout.LineWidth(line), x);
        for (size_t k = 0; k < info.length; ++k)
            ASSERT_EQ(layout.XOfChar(info.start + k), lefts[k]) << "char " << info.start + k;
        for (int probe = -3; probe <= x + 9; probe += std::max(2, x / 100))
        {
            const size_t first = static_cast<size_t>(
                std::lower_bound(lefts.begin(), lefts.end() - 1, probe) - lefts.begin());
            size_t nearest = 0;
            while (nearest < info.length && probe >= (lefts[nearest] + lefts[nearest + 1] + 1) / 2)
                ++nearest;
            ASSERT_EQ(layout.FirstCharFrom(line, probe), info.start + first) << "x " << probe;
            ASSERT_EQ(layout.CharAtX(line, probe), info.start + nearest) << "x " << probe;
        }
    }
}

} // namespace

// Texts of narrow, wide, tab and space characters and line breaks, wrapped at many widths or not
// at all, laid out at once and again after each of many edits (insertions, deletions,
// replacements anywhere, line breaks made and split): the edited layout has the lines of one
// laid out at once, and its positions agree with a walk along each line.
TEST(EditLayoutCells, LaidOutAtOnceOrAfterEditsPositionsAgreeWithAWalk)
{
    const wchar_t kAlphabet[] = {L'a', L'b', L'a', L' ', L'\t', 0x4E2D, 0xFF21, L'\r', L'\n'};
    const QzPlatform::EditCell cell = {6, 12};
    std::mt19937 random(11);
    auto snippet = [&](size_t most)
    {
        std::wstring text;
        for (size_t n = random() % (most + 1); n > 0; --n)
            text += kAlphabet[random() % std::size(kAlphabet)];
        return text;
    };
    for (int round = 0; round < 200; ++round)
    {
        const bool multiLine = round % 3 != 0;
        const int wrap = static_cast<int>(random() % 4) * 25;
        std::wstring text = snippet(round % 50 == 0 ? 3000 : 120); // long texts now and then
        QzPlatform::CEditLayout edited;
        edited.Build(text, cell, multiLine, wrap);
        SCOPED_TRACE(::testing::Message() << "round " << round << " wrap " << wrap);
        ExpectAWalkAlongEachLine(edited, text);
        for (int edit = 0; edit < 20; ++edit)
        {
            const size_t at = random() % (text.size() + 1);
            const size_t cut = std::min<size_t>(random() % 4 == 0 ? random() % 30 : random() % 3,
                                                text.size() - at);
            text.replace(at, cut, snippet(random() % 3 == 0 ? 12 : 2));
            edited.Build(text, cell, multiLine, wrap);
            QzPlatform::CEditLayout fresh;
            fresh.Build(text, cell, multiLine, wrap);
            SCOPED_TRACE(::testing::Message() << "edit " << edit);
            ASSERT_EQ(edited.LineCount(), fresh.LineCount());
            for (size_t line = 0; line < fresh.LineCount(); ++line)
            {
                ASSERT_EQ(edited.Line(line).start, fresh.Line(line).start);
                ASSERT_EQ(edited.Line(line).length, fresh.Line(line).length);
                ASSERT_EQ(edited.Line(line).breakLength, fresh.Line(line).breakLength);
            }
            ExpectAWalkAlongEachLine(edited, text);
        }
    }
}

TEST_F(EditTest, ScrollingStopsAtTheLastLineAndNotifiesBetweenUpdateAndChange)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL, 100, 24,
                                 L"1\r\n2\r\n3\r\n4\r\n5");
    SetSel(hwnd, 4, 4);
    TakeCodes();
    Type(hwnd, L"\r"); // line 3 of 6 is past the bottom
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_VSCROLL, EN_CHANGE}));
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE), 1);
    SetSel(hwnd, 0, 0); // EM_SETSEL does not scroll; EM_SCROLLCARET does
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE), 1);
    EXPECT_TRUE(Send(hwnd, EM_SCROLLCARET));
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 0), MAKELONG(0, 0));
    Send(hwnd, WM_VSCROLL, SB_LINEDOWN);
    Send(hwnd, WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE), 3);
    Send(hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA));
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE), 0);
    Send(hwnd, WM_HSCROLL, SB_LINERIGHT);
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 0), MAKELONG(-6, 0));
    EXPECT_EQ(Send(hwnd, EM_SCROLL, SB_PAGEDOWN), MAKELONG(2, TRUE));
    EXPECT_EQ(Send(hwnd, EM_SCROLL, 99), FALSE);
    EXPECT_TRUE(Send(hwnd, EM_LINESCROLL, 0, 100));
    EXPECT_EQ(Send(hwnd, EM_GETFIRSTVISIBLELINE), 5); // the last line at the top, no further
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_VSCROLL, EN_VSCROLL, EN_VSCROLL, EN_VSCROLL,
                                              EN_HSCROLL, EN_VSCROLL, EN_VSCROLL}));
    EXPECT_FALSE(Send(CreateEdit(ES_AUTOHSCROLL), EM_LINESCROLL, 1, 1));
}
