// Notifications to the parent (WM_COMMAND with the id, the code and the window), focus,
// EM_REPLACESEL and pasting text.
#include "EditTestSupport.h"

using namespace QzTest;

TEST_F(EditTest, ChangesSendUpdateThenChangeWithIdAndWindow)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    Type(hwnd, L"a");
    ASSERT_EQ(Notifications().size(), 2u);
    EXPECT_EQ(Notifications()[0].code, EN_UPDATE);
    EXPECT_EQ(Notifications()[1].code, EN_CHANGE);
    EXPECT_EQ(Notifications()[1].id, 7);
    EXPECT_EQ(Notifications()[1].from, hwnd);
}

TEST_F(EditTest, FocusSendsSetFocusAndKillFocus)
{
    const HWND first = CreateEdit(ES_AUTOHSCROLL);
    const HWND second = CreateEdit(ES_AUTOHSCROLL);
    SetFocus(first);
    EXPECT_EQ(TakeCodes(), std::vector<WORD>{EN_SETFOCUS});
    SetFocus(second);
    ASSERT_EQ(Notifications().size(), 2u);
    EXPECT_EQ(Notifications()[0].code, EN_KILLFOCUS);
    EXPECT_EQ(Notifications()[0].from, first);
    EXPECT_EQ(Notifications()[1].code, EN_SETFOCUS);
    EXPECT_EQ(Notifications()[1].from, second);
}

TEST_F(EditTest, ReplaceSelInsertsAtTheCaretAndHonoursTheLimit)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abcd");
    SetSel(hwnd, 1, 3);
    SendMessageW(hwnd, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"XYZ"));
    EXPECT_EQ(TextW(hwnd), L"aXYZd");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(4), DWORD(4)));
    EXPECT_TRUE(SendMessageW(hwnd, EM_GETMODIFY, 0, 0));
    EXPECT_FALSE(SendMessageW(hwnd, EM_CANUNDO, 0, 0)); // wParam FALSE: cannot be undone
    SendMessageA(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("\xD6\xD0"));
    EXPECT_EQ(TextW(hwnd), L"aXYZ\u4E2Dd");
    EXPECT_TRUE(SendMessageW(hwnd, EM_CANUNDO, 0, 0));
    SendMessageW(hwnd, EM_LIMITTEXT, 8, 0);
    TakeCodes();
    SendMessageW(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"12345"));
    EXPECT_EQ(TextW(hwnd), L"aXYZ\u4E2D12d");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_MAXTEXT, EN_UPDATE, EN_CHANGE}));
    SendMessageW(hwnd, EM_REPLACESEL, TRUE, 0); // no text: nothing happens
    EXPECT_EQ(TextW(hwnd), L"aXYZ\u4E2D12d");
}

TEST_F(EditTest, ReplaceSelWorksOnAReadOnlyWindow)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_READONLY);
    SendMessageW(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"log"));
    EXPECT_EQ(TextW(hwnd), L"log");
}

TEST_F(EditTest, PasteTakesAnsiClipboardTextAsWide)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"[]");
    SetSel(hwnd, 1, 1);
    SetClipboardA("a\xD6\xD0");
    SendMessageW(hwnd, WM_PASTE, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"[a\u4E2D]");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(3), DWORD(3)));
}
