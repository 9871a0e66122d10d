// The clipboard by message and by key, the password character, the modify flag and one level
// of undo.
#include "EditTestSupport.h"

using namespace QzTest;

TEST_F(EditTest, CopyCutClearAndPasteUseCfUnicodeTextAndCfText)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"ab\u4E2Dcd");
    SetClipboardW(L"before");
    Send(hwnd, WM_COPY); // nothing selected: the clipboard stays
    EXPECT_EQ(ClipboardText(), L"before");
    SetSel(hwnd, 1, 3);
    Send(hwnd, WM_COPY);
    EXPECT_EQ(ClipboardText(), L"b\u4E2D");
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(GetClipboardData(CF_TEXT))), "b\xD6\xD0");
    CloseClipboard();
    TakeCodes();
    Send(hwnd, WM_CUT);
    EXPECT_EQ(TextW(hwnd), L"acd");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE}));
    SetSel(hwnd, 0, 1);
    Send(hwnd, WM_CLEAR);
    EXPECT_EQ(TextW(hwnd), L"cd");
    EXPECT_EQ(ClipboardText(), L"b\u4E2D");
    SetSel(hwnd, 1, 1);
    SetClipboardA("a\xD6\xD0\r\nnext"); // CF_TEXT only; a single-line window stops at the break
    Send(hwnd, WM_PASTE);
    EXPECT_EQ(TextW(hwnd), L"ca\u4E2Dd");
    EXPECT_EQ(Sel(hwnd), Range(3, 3));
}

TEST_F(EditTest, ClipboardKeysCopyCutPasteAndUndo)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"abc");
    const struct
    {
        int start, end;
        const wchar_t* typed; // a control character, or empty for the key
        int vk;
        bool shift, ctrl;
        const wchar_t* text;
        const wchar_t* clipboard;
    } steps[] = {
        {0, 2, L"\x03", 0, false, false, L"abc", L"ab"},     // Ctrl+C
        {3, 3, L"\x16", 0, false, false, L"abcab", L"ab"},   // Ctrl+V
        {0, 1, L"\x18", 0, false, false, L"bcab", L"a"},     // Ctrl+X
        {0, 0, L"\x1A", 0, false, false, L"abcab", L"a"},    // Ctrl+Z
        {1, 2, L"", VK_INSERT, false, true, L"abcab", L"b"}, // Ctrl+Insert copies
        {2, 3, L"", VK_DELETE, true, false, L"abab", L"c"},  // Shift+Delete cuts
        {4, 4, L"", VK_INSERT, true, false, L"ababc", L"c"}, // Shift+Insert pastes
    };
    for (const auto& step : steps)
    {
        SetSel(hwnd, step.start, step.end);
        if (step.vk)
            Press(hwnd, step.vk, step.shift, step.ctrl);
        Type(hwnd, step.typed);
        EXPECT_EQ(TextW(hwnd), step.text);
        EXPECT_EQ(ClipboardText(), step.clipboard);
    }
}

TEST_F(EditTest, PasswordCharacterShowsInOneCellEachAndGivesNoTextOrWordAway)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL | ES_PASSWORD, 200, 24, L"one \u4E2Dx");
    EXPECT_EQ(Send(hwnd, EM_GETPASSWORDCHAR), L'*');
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 5), MAKELONG(30, 0)); // the wide one too
    SetClipboardW(L"before");
    SetSel(hwnd, 0, -1);
    Send(hwnd, WM_COPY);
    Send(hwnd, WM_CUT);
    EXPECT_EQ(ClipboardText(), L"before");
    EXPECT_EQ(TextW(hwnd), L"one \u4E2Dx");
    SetSel(hwnd, 0, 0);
    Press(hwnd, VK_RIGHT, false, true);
    EXPECT_EQ(Sel(hwnd), Range(6, 6));
    Send(hwnd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(Sel(hwnd), Range(0, 6));
    Send(hwnd, EM_SETPASSWORDCHAR, 0); // zero shows the text
    EXPECT_FALSE(GetWindowLongW(hwnd, GWL_STYLE) & ES_PASSWORD);
    EXPECT_EQ(Send(hwnd, EM_POSFROMCHAR, 5), MAKELONG(36, 0));
    const HWND multi = CreateEdit(ES_MULTILINE | ES_PASSWORD);
    Send(multi, EM_SETPASSWORDCHAR, L'*');
    EXPECT_EQ(Send(multi, EM_GETPASSWORDCHAR), 0); // a multi-line window has none
}

TEST_F(EditTest, ModifyFlagIsSetByEditsAndByEmSetModify)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    EXPECT_FALSE(Send(hwnd, EM_GETMODIFY));
    Type(hwnd, L"a");
    EXPECT_TRUE(Send(hwnd, EM_GETMODIFY));
    Send(hwnd, EM_SETMODIFY, FALSE);
    EXPECT_FALSE(Send(hwnd, EM_GETMODIFY));
    Send(hwnd, EM_UNDO);
    EXPECT_TRUE(Send(hwnd, EM_GETMODIFY));
    SetWindowTextW(hwnd, L"new");
    EXPECT_FALSE(Send(hwnd, EM_GETMODIFY));
}

TEST_F(EditTest, UndoIsOneLevelAndASecondUndoRedoes)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 100, 24, L"x");
    EXPECT_TRUE(Send(hwnd, EM_UNDO)); // even with nothing to undo
    SetSel(hwnd, 1, 1);
    EXPECT_FALSE(Send(hwnd, EM_CANUNDO));
    Type(hwnd, L"abc");
    EXPECT_TRUE(Send(hwnd, EM_CANUNDO));
    TakeCodes();
    EXPECT_TRUE(Send(hwnd, EM_UNDO));
    EXPECT_EQ(TextW(hwnd), L"x");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE}));
    EXPECT_TRUE(Send(hwnd, WM_UNDO));
    EXPECT_EQ(TextW(hwnd), L"xabc");
    EXPECT_EQ(Sel(hwnd), Range(1, 4)); // what came back is selected
    Send(hwnd, EM_UNDO);
    EXPECT_EQ(TextW(hwnd), L"x");
    Send(hwnd, EM_EMPTYUNDOBUFFER);
    EXPECT_FALSE(Send(hwnd, EM_CANUNDO));
    Send(hwnd, EM_UNDO);
    EXPECT_EQ(TextW(hwnd), L"x");
    Type(hwnd, L"y");
    Send(hwnd, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"z")); // empties the buffer
    EXPECT_FALSE(Send(hwnd, EM_CANUNDO));
}

TEST_F(EditTest, UndoTakesBackTheLastStepOfTypingOrPasting)
{
    const struct
    {
        const wchar_t* typed; // Ctrl+V (0x16) pastes "cd"
        int selStart, selEnd;
        const wchar_t* afterUndo;
    } cases[] = {
        {L"XY", 1, 4, L"abcdef"},      // typing over a selection is one step
        {L"\b\b\b", 4, 4, L"abcdef"},  // Backspaces join into one step
        {L"\b\bXY", 4, 4, L"abcdef"},  // so does typing where they stopped
        {L"ab\b", 6, 6, L"abcdefab"},  // Backspace after typing is a step of its own
        {L"ab\bc", 6, 6, L"abcdefab"}, // and typing joins it
        {L"\x16", 1, 3, L"abcdef"},    // a paste over a selection
        {L"ab\x16z", 6, 6, L"abcdef"}, // a paste where typing goes on joins its step
    };
    SetClipboardW(L"cd");
    for (const auto& c : cases)
    {
        const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"abcdef");
        SetSel(hwnd, c.selStart, c.selEnd);
        Type(hwnd, c.typed);
        ASSERT_NE(TextW(hwnd), c.afterUndo);
        Send(hwnd, EM_UNDO);
        EXPECT_EQ(TextW(hwnd), c.afterUndo) << "typed " << c.typed;
    }
    const HWND moved = CreateEdit(ES_AUTOHSCROLL, 200, 24, L"abc");
    Type(moved, L"x");
    SetSel(moved, 4, 4); // typing elsewhere starts a new step
    Type(moved, L"y");
    Send(moved, EM_UNDO);
    EXPECT_EQ(TextW(moved), L"xabc");
}
