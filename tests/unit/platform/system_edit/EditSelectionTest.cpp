// The selection by EM_SETSEL and EM_GETSEL, by keys (GetKeyState for Shift and Ctrl) and by
// the mouse.
#include "EditTestSupport.h"

using namespace QzTest;

TEST_F(EditTest, SetSelIsOrderedZeroMinusOneSelectsAllMinusOneNoneAndGetSelAnswersBothWays)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, std::wstring(70000, L'a').c_str());
    const struct
    {
        int start, end;
        Range expected;
    } cases[] = {
        {1, 3, {1, 3}},      {4, 2, {2, 4}}, {0, -1, {0, 70000}}, {2, 80000, {2, 70000}},
        {-2, 1, {1, 70000}}, {1, 4, {1, 4}}, {-1, 0, {4, 4}},     {5, 2, {2, 5}},
        {-1, 0, {2, 2}}, // the caret is at the end given, here the start
    };
    for (const auto& c : cases)
    {
        SetSel(hwnd, c.start, c.end);
        EXPECT_EQ(Sel(hwnd), c.expected) << c.start << "," << c.end;
    }
    SetSel(hwnd, 2, 5);
    DWORD end = 0; // either pointer may be left out; the result packs both ends
    EXPECT_EQ(Send(hwnd, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end)), MAKELONG(2, 5));
    EXPECT_EQ(end, 5u);
    SetSel(hwnd, 10, 66000);
    EXPECT_EQ(Send(hwnd, EM_GETSEL), -1); // past 65535 only the pointers tell
    EXPECT_EQ(Sel(hwnd), Range(10, 66000));
}

TEST_F(EditTest, ArrowHomeAndEndKeysMoveTheCaretAndShiftExtends)
{
    // Lines start at 0, 8 and 12; Up and Down keep the column where the line is long enough.
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 200, 48, L"abcdef\r\nab\r\nabcd");
    SetSel(hwnd, 3, 3);
    const struct
    {
        int vk;
        bool shift, ctrl;
        Range expected;
    } steps[] = {
        {VK_LEFT, false, false, {2, 2}},  {VK_RIGHT, true, false, {2, 3}},
        {VK_RIGHT, true, false, {2, 4}},  {VK_LEFT, false, false, {3, 3}},
        {VK_HOME, true, false, {0, 3}},   {VK_END, false, false, {6, 6}},
        {VK_RIGHT, false, false, {8, 8}}, // over the line break at once
        {VK_LEFT, false, false, {6, 6}},  {VK_DOWN, false, false, {10, 10}},
        {VK_DOWN, true, false, {10, 14}}, {VK_UP, false, false, {10, 10}},
        {VK_END, false, true, {16, 16}},  {VK_HOME, false, false, {12, 12}},
        {VK_HOME, false, true, {0, 0}},   {VK_LEFT, false, false, {0, 0}},
    };
    for (const auto& step : steps)
    {
        Press(hwnd, step.vk, step.shift, step.ctrl);
        EXPECT_EQ(Sel(hwnd), step.expected) << "key " << step.vk;
    }
}

TEST_F(EditTest, CtrlArrowsMoveByWordsAndStopAtLineBreaks)
{
    const HWND hwnd =
        CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 300, 60, L"one two  three\r\n\r\ncd ef");
    SetSel(hwnd, 0, 0);
    Press(hwnd, VK_RIGHT, true, true);
    EXPECT_EQ(Sel(hwnd), Range(0, 4));
    SetSel(hwnd, 0, 0);
    for (DWORD caret : {4u, 9u, 14u, 16u, 18u, 21u, 23u, 23u})
    {
        Press(hwnd, VK_RIGHT, false, true);
        EXPECT_EQ(Sel(hwnd), Range(caret, caret));
    }
    for (DWORD caret : {21u, 18u, 16u, 14u, 9u, 4u, 0u})
    {
        Press(hwnd, VK_LEFT, false, true);
        EXPECT_EQ(Sel(hwnd), Range(caret, caret));
    }
}

TEST_F(EditTest, MouseDragSelectsAndDoubleClickSelectsAWordWithTheSpacesAfterIt)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"one two  three");
    // Cells are 6 pixels wide: x 13 is nearest the boundary after two characters.
    Send(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(13, 5));
    EXPECT_EQ(GetFocus(), hwnd);
    EXPECT_EQ(Sel(hwnd), Range(2, 2));
    Send(hwnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(31, 5));
    EXPECT_EQ(Sel(hwnd), Range(2, 5));
    Send(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(31, 5));
    Send(hwnd, WM_MOUSEMOVE, 0, MAKELPARAM(44, 5));
    EXPECT_EQ(Sel(hwnd), Range(2, 5));
    Send(hwnd, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(0, 5));
    EXPECT_EQ(Sel(hwnd), Range(0, 2)); // Shift extends from the anchor
    Send(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(0, 5));
    const struct
    {
        int x;
        Range expected;
    } clicks[] = {{27, {4, 9}}, {3, {0, 4}}, {45, {7, 9}}, {80, {9, 14}}, {199, {9, 14}}};
    for (const auto& c : clicks)
    {
        Send(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(c.x, 5));
        EXPECT_EQ(Sel(hwnd), c.expected) << "x " << c.x;
    }
}
