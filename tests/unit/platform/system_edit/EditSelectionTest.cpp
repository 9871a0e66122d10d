// The selection by EM_SETSEL and EM_GETSEL, by keys (GetKeyState for Shift and Ctrl) and by
// the mouse.
#include "EditTestSupport.h"

using namespace QzTest;

namespace
{

using Range = std::pair<DWORD, DWORD>;

} // namespace

TEST_F(EditTest, SetSelIsOrderedAndClampedAsWindowsDocumentsIt)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdef");
    const struct
    {
        int start, end;
        Range expected;
    } cases[] = {
        {1, 3, {1, 3}},  {4, 2, {2, 4}}, {0, -1, {0, 6}}, {2, 100, {2, 6}},
        {-2, 1, {1, 6}}, {6, 6, {6, 6}}, {3, 3, {3, 3}},
    };
    for (const auto& c : cases)
    {
        SetSel(hwnd, c.start, c.end);
        EXPECT_EQ(Sel(hwnd), c.expected) << c.start << "," << c.end;
    }
}

TEST_F(EditTest, SetSelMinusOneRemovesTheSelectionAtTheCaret)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdef");
    SetSel(hwnd, 1, 4);
    SetSel(hwnd, -1, 0);
    EXPECT_EQ(Sel(hwnd), Range(4, 4));
    SetSel(hwnd, 5, 2); // the caret is at the end given, here the start
    SetSel(hwnd, -1, 0);
    EXPECT_EQ(Sel(hwnd), Range(2, 2));
}

TEST_F(EditTest, GetSelPacksBothEndsAndFillsOnlyThePointersGiven)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdef");
    SetSel(hwnd, 2, 5);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETSEL, 0, 0), MAKELONG(2, 5));
    DWORD end = 0;
    EXPECT_EQ(SendMessageW(hwnd, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end)), MAKELONG(2, 5));
    EXPECT_EQ(end, 5u);
}

TEST_F(EditTest, GetSelIsMinusOnePast65535)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SetWindowTextW(hwnd, std::wstring(70000, L'a').c_str());
    SetSel(hwnd, 10, 66000);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETSEL, 0, 0), -1);
    EXPECT_EQ(Sel(hwnd), Range(10, 66000));
}

TEST_F(EditTest, ArrowKeysMoveAndShiftExtends)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdef");
    SetSel(hwnd, 3, 3);
    const struct
    {
        int vk;
        bool shift;
        Range expected;
    } steps[] = {
        {VK_LEFT, false, {2, 2}}, {VK_RIGHT, true, {2, 3}}, {VK_RIGHT, true, {2, 4}},
        {VK_LEFT, false, {3, 3}}, {VK_HOME, true, {0, 3}},  {VK_END, false, {6, 6}},
        {VK_UP, false, {5, 5}},   {VK_DOWN, true, {5, 6}},  {VK_HOME, false, {0, 0}},
        {VK_LEFT, false, {0, 0}},
    };
    for (const auto& step : steps)
    {
        Press(hwnd, step.vk, step.shift);
        EXPECT_EQ(Sel(hwnd), step.expected) << "key " << step.vk;
    }
}

TEST_F(EditTest, CtrlArrowsMoveByWords)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 300, 24, L"one two  three");
    SetSel(hwnd, 0, 0);
    const struct
    {
        int vk;
        DWORD caret;
    } steps[] = {{VK_RIGHT, 4}, {VK_RIGHT, 9}, {VK_RIGHT, 14}, {VK_RIGHT, 14},
                 {VK_LEFT, 9},  {VK_LEFT, 4},  {VK_LEFT, 0}};
    for (const auto& step : steps)
    {
        Press(hwnd, step.vk, false, true);
        EXPECT_EQ(Sel(hwnd), Range(step.caret, step.caret));
    }
    Press(hwnd, VK_RIGHT, true, true);
    EXPECT_EQ(Sel(hwnd), Range(0, 4));
}

TEST_F(EditTest, CtrlArrowsStopAtLineBreaks)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 60, L"ab\r\n\r\ncd ef");
    SetSel(hwnd, 0, 0);
    for (DWORD caret : {2u, 4u, 6u, 9u, 11u})
    {
        Press(hwnd, VK_RIGHT, false, true);
        EXPECT_EQ(Sel(hwnd), Range(caret, caret));
    }
    for (DWORD caret : {9u, 6u, 4u, 2u, 0u})
    {
        Press(hwnd, VK_LEFT, false, true);
        EXPECT_EQ(Sel(hwnd), Range(caret, caret));
    }
}

TEST_F(EditTest, DeleteKeyRemovesTheNextCharacterOrTheSelection)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 48, L"ab\r\ncd");
    SetSel(hwnd, 2, 2);
    Press(hwnd, VK_DELETE);
    EXPECT_EQ(TextW(hwnd), L"abcd"); // CR LF goes as one
    SetSel(hwnd, 0, 2);
    Press(hwnd, VK_DELETE);
    EXPECT_EQ(TextW(hwnd), L"cd");
    SetSel(hwnd, 2, 2);
    Press(hwnd, VK_DELETE);
    EXPECT_EQ(TextW(hwnd), L"cd");
}

TEST_F(EditTest, UpAndDownKeepTheColumnInMultiLine)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 48, L"abcdef\r\nab\r\nabcd");
    SetSel(hwnd, 4, 4);
    Press(hwnd, VK_DOWN);
    EXPECT_EQ(Sel(hwnd), Range(10, 10)); // the end of the short line
    Press(hwnd, VK_DOWN, true);
    EXPECT_EQ(Sel(hwnd), Range(10, 14));
    Press(hwnd, VK_UP);
    EXPECT_EQ(Sel(hwnd), Range(10, 10));
    Press(hwnd, VK_END, false, true);
    EXPECT_EQ(Sel(hwnd), Range(16, 16));
    Press(hwnd, VK_HOME);
    EXPECT_EQ(Sel(hwnd), Range(12, 12));
    Press(hwnd, VK_HOME, false, true);
    EXPECT_EQ(Sel(hwnd), Range(0, 0));
}

TEST_F(EditTest, MouseClickPlacesTheCaretAndDragSelects)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcdefgh");
    // Cells are 6 pixels wide: x 13 is nearest the boundary after two characters.
    SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(13, 5));
    EXPECT_EQ(GetFocus(), hwnd);
    EXPECT_EQ(Sel(hwnd), Range(2, 2));
    SendMessageW(hwnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(31, 5));
    EXPECT_EQ(Sel(hwnd), Range(2, 5));
    SendMessageW(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(31, 5));
    SendMessageW(hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(44, 5));
    EXPECT_EQ(Sel(hwnd), Range(2, 5));
    SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(0, 5));
    EXPECT_EQ(Sel(hwnd), Range(0, 2)); // Shift extends from the anchor
}

TEST_F(EditTest, DoubleClickSelectsAWordWithTheSpacesAfterIt)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"one two  three");
    const struct
    {
        int x;
        Range expected;
    } cases[] = {{27, {4, 9}}, {3, {0, 4}}, {45, {7, 9}}, {80, {9, 14}}, {199, {9, 14}}};
    for (const auto& c : cases)
    {
        SendMessageW(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(c.x, 5));
        EXPECT_EQ(Sel(hwnd), c.expected) << "x " << c.x;
    }
}
