// The password character and one level of undo.
#include "EditTestSupport.h"

using namespace QzTest;

TEST_F(EditTest, PasswordStyleStartsWithAStarAndKeepsTheRealText)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_PASSWORD);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETPASSWORDCHAR, 0, 0), L'*');
    Type(hwnd, L"s3cr\u4E2D");
    EXPECT_EQ(TextW(hwnd), L"s3cr\u4E2D");
    // Every character shows as the password character: one cell each, wide or not.
    EXPECT_EQ(SendMessageW(hwnd, EM_POSFROMCHAR, 4, 0), MAKELONG(24, 0));
}

TEST_F(EditTest, SetPasswordCharChangesTheStyleAndZeroShowsTheText)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"\u4E2Dx");
    EXPECT_EQ(SendMessageW(hwnd, EM_GETPASSWORDCHAR, 0, 0), 0);
    SendMessageW(hwnd, EM_SETPASSWORDCHAR, L'#', 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETPASSWORDCHAR, 0, 0), L'#');
    EXPECT_TRUE(GetWindowLongW(hwnd, GWL_STYLE) & ES_PASSWORD);
    EXPECT_EQ(SendMessageW(hwnd, EM_POSFROMCHAR, 1, 0), MAKELONG(6, 0));
    SendMessageW(hwnd, EM_SETPASSWORDCHAR, 0, 0);
    EXPECT_FALSE(GetWindowLongW(hwnd, GWL_STYLE) & ES_PASSWORD);
    EXPECT_EQ(SendMessageW(hwnd, EM_POSFROMCHAR, 1, 0), MAKELONG(12, 0));
}

TEST_F(EditTest, PasswordCharOfAnAnsiCallerIsConverted)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SendMessageA(hwnd, EM_SETPASSWORDCHAR, 0xD6D0, 0); // GBK of U+4E2D, lead byte high
    EXPECT_EQ(SendMessageW(hwnd, EM_GETPASSWORDCHAR, 0, 0), 0x4E2D);
    EXPECT_EQ(SendMessageA(hwnd, EM_GETPASSWORDCHAR, 0, 0), 0xD6D0);
}

TEST_F(EditTest, MultiLineWindowHasNoPasswordCharacter)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_PASSWORD);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETPASSWORDCHAR, 0, 0), 0);
    SendMessageW(hwnd, EM_SETPASSWORDCHAR, L'*', 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETPASSWORDCHAR, 0, 0), 0);
}

TEST_F(EditTest, PasswordWindowRefusesCopyAndCut)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_PASSWORD, 100, 24, L"secret");
    SetClipboardW(L"before");
    SetSel(hwnd, 0, -1);
    SendMessageW(hwnd, WM_COPY, 0, 0);
    SendMessageW(hwnd, WM_CUT, 0, 0);
    EXPECT_EQ(ClipboardText(), L"before");
    EXPECT_EQ(TextW(hwnd), L"secret");
}

TEST_F(EditTest, PasswordWindowGivesNoWordAway)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_PASSWORD, 200, 24, L"one two");
    SetSel(hwnd, 0, 0);
    Press(hwnd, VK_RIGHT, false, true);
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(7), DWORD(7)));
    SendMessageW(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(0), DWORD(7)));
}

TEST_F(EditTest, UndoTakesBackTypingAsOneStepAndASecondUndoRedoes)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"x");
    SetSel(hwnd, 1, 1);
    EXPECT_FALSE(SendMessageW(hwnd, EM_CANUNDO, 0, 0));
    Type(hwnd, L"abc");
    EXPECT_TRUE(SendMessageW(hwnd, EM_CANUNDO, 0, 0));
    TakeCodes();
    EXPECT_TRUE(SendMessageW(hwnd, EM_UNDO, 0, 0));
    EXPECT_EQ(TextW(hwnd), L"x");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE}));
    EXPECT_TRUE(SendMessageW(hwnd, WM_UNDO, 0, 0));
    EXPECT_EQ(TextW(hwnd), L"xabc");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(1), DWORD(4))); // what came back is selected
}

TEST_F(EditTest, UndoTakesBackTheLastStepOfEdits)
{
    const struct
    {
        const wchar_t* typed;
        int selStart, selEnd;
        const wchar_t* afterUndo;
    } cases[] = {
        {L"XY", 1, 4, L"abcdef"},      // typing over a selection is one step
        {L"\b\b\b", 4, 4, L"abcdef"},  // Backspaces join into one step
        {L"\b\bXY", 4, 4, L"abcdef"},  // so does typing where they stopped
        {L"ab\b", 6, 6, L"abcdefab"},  // Backspace after typing is a step of its own
        {L"ab\bc", 6, 6, L"abcdefab"}, // and typing joins it
    };
    for (const auto& c : cases)
    {
        const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"abcdef");
        SetSel(hwnd, c.selStart, c.selEnd);
        Type(hwnd, c.typed);
        SendMessageW(hwnd, EM_UNDO, 0, 0);
        EXPECT_EQ(TextW(hwnd), c.afterUndo) << "typed " << c.typed[0];
    }
}

TEST_F(EditTest, UndoStepEndsWhereTypingMovesElsewhere)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"abc");
    SetSel(hwnd, 0, 0);
    Type(hwnd, L"x");
    SetSel(hwnd, 4, 4);
    Type(hwnd, L"y");
    SendMessageW(hwnd, EM_UNDO, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"xabc");

    const HWND other = CreateEdit(ES_AUTOHSCROLL, 200, 24);
    Type(other, L"ab");
    SetClipboardW(L"cd");
    SendMessageW(other, WM_PASTE, 0, 0); // a paste where typing goes on joins its step
    Type(other, L"e");
    SendMessageW(other, EM_UNDO, 0, 0);
    EXPECT_EQ(TextW(other), L"");
}

TEST_F(EditTest, DeleteKeysJoinIntoOneUndoStep)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"abcdef");
    SetSel(hwnd, 1, 1);
    Press(hwnd, VK_DELETE);
    Press(hwnd, VK_DELETE);
    EXPECT_EQ(TextW(hwnd), L"adef");
    SendMessageW(hwnd, EM_UNDO, 0, 0);
    EXPECT_EQ(TextW(hwnd), L"abcdef");
}

TEST_F(EditTest, EmptyUndoBufferAndUndoResultsOfEachKind)
{
    for (DWORD style : {DWORD(ES_MULTILINE), DWORD(ES_AUTOHSCROLL)})
        EXPECT_TRUE(SendMessageW(CreateEdit(style), EM_UNDO, 0, 0)); // even with nothing to undo
    const HWND single = CreateEdit(ES_AUTOHSCROLL);
    Type(single, L"a");
    SendMessageW(single, EM_EMPTYUNDOBUFFER, 0, 0);
    EXPECT_FALSE(SendMessageW(single, EM_CANUNDO, 0, 0));
    SendMessageW(single, EM_UNDO, 0, 0);
    EXPECT_EQ(TextW(single), L"a");
}

TEST_F(EditTest, ModifyFlagFollowsEditsAndEmSetModify)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    EXPECT_FALSE(SendMessageW(hwnd, EM_GETMODIFY, 0, 0));
    Type(hwnd, L"a");
    EXPECT_TRUE(SendMessageW(hwnd, EM_GETMODIFY, 0, 0));
    SendMessageW(hwnd, EM_SETMODIFY, FALSE, 0);
    EXPECT_FALSE(SendMessageW(hwnd, EM_GETMODIFY, 0, 0));
    SendMessageW(hwnd, EM_SETMODIFY, TRUE, 0);
    EXPECT_TRUE(SendMessageW(hwnd, EM_GETMODIFY, 0, 0));
}
