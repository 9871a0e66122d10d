// The edit shell: its hidden windows, binding and focus notices, the filters of its window
// procedures, mouse and key forwarding, IME, the edit font and the wrappers' window check.
#include "EditScene.h"

#include "framework/QzGuiHelper.h"
#include "platform/services/QzGameData.h"
#include "platform/system/kernel/QzKernelHost.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace EditTest
{
namespace
{

using ShellTest = EditScene;

TEST_F(ShellTest, InitMakesTwoHiddenSubclassedEditWindowsAndLeavesTheHostItsKeys)
{
    ASSERT_TRUE(Shell()->IsCreated());
    const HWND hWnds[] = {Single(), Multi()};
    const LONG_PTR nKinds[] = {ES_AUTOHSCROLL, ES_MULTILINE};
    const WNDPROC pfnProcs[] = {&CQzEditSingle::SingleLineEditProc,
                                &CQzEditSingle::MultiLineEditProc};
    for (int i = 0; i < 2; ++i)
    {
        wchar_t szClass[16] = {};
        GetClassNameW(hWnds[i], szClass, 16);
        EXPECT_STREQ(L"EDIT", szClass);
        EXPECT_EQ(WS_CHILD | nKinds[i], GetWindowLongPtrA(hWnds[i], GWL_STYLE));
        EXPECT_FALSE(IsWindowVisible(hWnds[i]));
        EXPECT_EQ(m_harness.MainWindow(), GetParent(hWnds[i]));
        EXPECT_EQ(reinterpret_cast<LONG_PTR>(pfnProcs[i]),
                  GetWindowLongPtrA(hWnds[i], GWLP_WNDPROC));
    }
    EXPECT_NE(Single(), GetFocus());
    EXPECT_NE(Multi(), GetFocus());
    // A second manager shares the shell and its windows.
    IQzGuiMgr* pOther = CreateGuiMgr();
    pOther->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), 100, "Test.ini");
    EXPECT_EQ(2u, Shell()->GetRefCount());
    EXPECT_EQ(Single(), Shell()->GetSingleLineWnd());
    pOther->Release();
    EXPECT_FALSE(Shell()->Create(nullptr, m_harness.MainWindow(), m_pMgr));
}

TEST(ShellLifetime, TheLastManagerGivesTheWindowsTheirOwnProcedureBack)
{
    QzTest::Harness harness;
    IQzGuiMgr* pMgr = CreateGuiMgr();
    pMgr->Init(GetModuleHandleA(nullptr), harness.MainWindow(), 100, nullptr);
    const HWND hSingle = g_pQzEditSingle->GetSingleLineWnd();
    pMgr->Release();
    EXPECT_EQ(nullptr, g_pQzEditSingle);
    ASSERT_TRUE(IsWindow(hSingle));
    // A plain edit window again: the character is inserted, not dropped for want of a box.
    SendMessageW(hSingle, WM_CHAR, 'x', 1);
    wchar_t szText[8] = {};
    GetWindowTextW(hSingle, szText, 8);
    EXPECT_STREQ(L"x", szText);
}

TEST_F(ShellTest, FocusMovingBetweenBoxesTellsTheOldDialogFirst)
{
    CQzEdit* pName = AddEdit(1, {10, 10, 150, 30});
    CQzEdit* pNotes = AddEdit(2, {10, 50, 150, 110}, true);
    CQzEdit* pOther = AddEdit(3, {10, 10, 150, 30}, false, &m_other);
    m_pMgr->SetKeyFocus(&m_other); // as an extended edit box would have it

    m_harness.Click(120, 115);
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
    EXPECT_EQ(pName, Shell()->GetActiveEdit());
    EXPECT_EQ(Single(), GetFocus());
    EXPECT_EQ(kDialogId | (1u << 16), m_pMgr->GetFocusId());

    // Single-line to multi-line: one EN_KILLFOCUS, nothing about the new box from the window
    // that lost the focus.
    m_harness.Click(120, 160);
    EXPECT_EQ(Multi(), GetFocus());
    EXPECT_EQ((std::vector<WORD>{QZ_EN_SETFOCUS, QZ_EN_KILLFOCUS}), m_dialog.Codes(1));
    EXPECT_EQ((std::vector<WORD>{QZ_EN_SETFOCUS}), m_dialog.Codes(2));

    m_dialog.got.clear();
    pOther->SetFocus();
    ASSERT_EQ(1u, m_dialog.got.size());
    EXPECT_EQ(MakeNotifyWParam(QZ_EN_KILLFOCUS, 2), m_dialog.got[0].wParam);
    EXPECT_EQ(static_cast<LPARAM>(kDialogId | (2u << 16)), m_dialog.got[0].lParam);
    EXPECT_EQ((std::vector<WORD>{QZ_EN_SETFOCUS}), m_other.Codes(3));
    EXPECT_TRUE(pOther->IsFocused());
    EXPECT_FALSE(pNotes->IsFocused());

    // The focus leaving the shell's windows unbinds the box.
    SetFocus(m_harness.MainWindow());
    EXPECT_EQ((std::vector<WORD>{QZ_EN_SETFOCUS, QZ_EN_KILLFOCUS}), m_other.Codes(3));
    EXPECT_EQ(nullptr, Shell()->GetActiveEdit());
    EXPECT_EQ(0u, m_pMgr->GetFocusId());
    EXPECT_EQ(nullptr, Shell()->GetActiveEditWnd());
}

TEST_F(ShellTest, GivingTheKeyboardToTheHostUnbindsTheBoxAndTheHostGetsTheKeys)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30});
    pEdit->SetFocus();
    Type(L"ab");
    Shell()->GiveKeyboardToHost();
    EXPECT_EQ(m_harness.MainWindow(), GetFocus());
    EXPECT_FALSE(pEdit->IsFocused());
    EXPECT_EQ("ab", std::string(pEdit->GetWindowText()));
    EXPECT_EQ((std::vector<WORD>{QZ_EN_SETFOCUS, QZ_EN_UPDATE, QZ_EN_CHANGE, QZ_EN_KILLFOCUS}),
              m_dialog.Codes(1));
    std::vector<QzTest::Seen> seen;
    m_harness.SetMessageHandler(
        [&seen](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT
        {
            seen.push_back({message, wParam, lParam});
            return 0;
        });
    Type(L"c");
    EXPECT_EQ(1, QzTest::CountOf(seen, WM_CHAR));
    Shell()->GiveKeyboardToHost(); // nothing bound: nothing happens
    EXPECT_EQ(4u, m_dialog.Codes(1).size());

    // A window taking the manager's key focus (an extended edit box) does the same.
    pEdit->SetFocus();
    EXPECT_EQ(Single(), GetFocus());
    m_pMgr->SetKeyFocus(&m_other);
    EXPECT_FALSE(pEdit->IsFocused());
    EXPECT_EQ(m_harness.MainWindow(), GetFocus());
    EXPECT_EQ(QZ_EN_KILLFOCUS, m_dialog.Codes(1).back());
}

TEST_F(ShellTest, BindingGivesTheWindowTheBoxsSwitchesAndSize)
{
    CQzEdit* pPin = AddEdit(1, {10, 10, 90, 30});
    pPin->SetNumberOnly(true);
    pPin->SetLimitText(6);
    pPin->SetReadOnly(1);
    CQzEdit* pName = AddEdit(2, {10, 40, 250, 60});
    pName->SetLimitText(0);

    pPin->SetFocus();
    EXPECT_EQ(WS_CHILD | ES_AUTOHSCROLL | ES_NUMBER | ES_READONLY,
              GetWindowLongPtrA(Single(), GWL_STYLE));
    EXPECT_EQ(6u, Shell()->GetLimitText());
    pPin->SetLimitText(4);
    EXPECT_EQ(4u, Shell()->GetLimitText());
    RECT rc = {};
    GetWindowRect(Single(), &rc);
    EXPECT_EQ(80, rc.right - rc.left);
    EXPECT_EQ(20, rc.bottom - rc.top);

    // A box without a limit does not inherit the last box's.
    pName->SetFocus();
    EXPECT_EQ(WS_CHILD | ES_AUTOHSCROLL, GetWindowLongPtrA(Single(), GWL_STYLE));
    EXPECT_NE(6u, Shell()->GetLimitText());
    GetWindowRect(Single(), &rc);
    EXPECT_EQ(240, rc.right - rc.left);

    // A reloaded layout that resizes the bound box resizes the window.
    m_root.Write("ini/Other.ini", "[0-300]\nx=100\ny=100\nw=400\nh=300\n"
                                  "[300-2]\nx=10\ny=40\nw=120\nh=20\n");
    m_pMgr->LoadLayout("Other.ini");
    GetWindowRect(Single(), &rc);
    EXPECT_EQ(120, rc.right - rc.left);
}

TEST_F(ShellTest, SpacesAndTheUtf8LimitAreFilteredAfterTheBoxSawTheCharacter)
{
    SpyEdit* pEdit = AddEdit<SpyEdit>(1, {10, 10, 250, 30});
    pEdit->SetNoSpace(true);
    pEdit->SetLimitText(10);
    pEdit->SetFocus();

    struct Case
    {
        const wchar_t* start;
        const wchar_t* typed;
        const wchar_t* result;
    };
    const Case cases[] = {
        {L"", L"a b", L"ab"},                 // the space is dropped
        {L"abcdefghij", L"k", L"abcdefghij"}, // 10 bytes: full
        {L"abcdefghij", L"\b", L"abcdefghi"}, // Backspace always passes
        {L"\x0416\x0416\x0416", L"ab",
         L"\x0416\x0416\x0416"
         L"ab"}, // 6 + 2 bytes
        {L"\x4E2D\x4E2D\x4E2D", L"ab",
         L"\x4E2D\x4E2D\x4E2D"
         L"a"}, // 9 + 1 bytes
    };
    for (const Case& c : cases)
    {
        SetWindowTextW(Single(), c.start);
        SendMessageW(Single(), EM_SETSEL, 0xFFFF, 0xFFFF);
        Type(c.typed);
        EXPECT_EQ(std::wstring(c.result), WindowText(Single())) << "typed " << c.typed;
    }
    // The box got the space before the shell dropped it, and every refused character.
    EXPECT_EQ((std::vector<UINT>{'a', ' ', 'b', 'k', '\b', 'a', 'b', 'a', 'b'}), pEdit->chars);
}

TEST_F(ShellTest, CharactersWithoutABoxAreDroppedUnlessTheLibraryPostedThem)
{
    SetFocus(Single());
    Type(L"ab");
    EXPECT_EQ(L"", WindowText(Single()));
    PostMessageA(Single(), WM_CHAR, 'z', 0);
    m_harness.Pump();
    EXPECT_EQ(L"z", WindowText(Single()));

    // The multi-line window turns a typed character into an OK command to the host window.
    SetFocus(Multi());
    std::vector<QzTest::Seen> seen;
    m_harness.SetMessageHandler(
        [&seen](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT
        {
            seen.push_back({message, wParam, lParam});
            return 0;
        });
    Type(L"q");
    EXPECT_EQ(L"", WindowText(Multi()));
    ASSERT_EQ(1, QzTest::CountOf(seen, WM_COMMAND));
    EXPECT_EQ(1u, seen.back().wParam);
}

TEST_F(ShellTest, MouseMessagesGoOnRelativeToTheBoxAndButtonUpIsToldToTheDialog)
{
    AddEdit(1, {10, 10, 150, 30});
    SetFocus(nullptr);
    m_harness.Click(180, 115); // box at (110, 110)
    EXPECT_EQ(Single(), GetFocus());
    const auto it = std::find_if(m_dialog.got.begin(), m_dialog.got.end(),
                                 [](const Got& g) { return g.message == QZ_WM_EDITBUTTONUP; });
    ASSERT_NE(m_dialog.got.end(), it);
    EXPECT_EQ(MAKELPARAM(70, 5), it->lParam);

    SetWindowTextW(Single(), L"0123456789012345678901234");
    m_harness.Click(110 + 7 * 4 + 1, 115);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(4, 4)), Shell()->GetSel());
    // A drag selects.
    m_harness.LButtonDown(110 + 7 * 1, 115);
    m_harness.MouseMove(110 + 7 * 6, 115, MK_LBUTTON);
    m_harness.LButtonUp(110 + 7 * 6, 115);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(1, 6)), Shell()->GetSel());
}

TEST_F(ShellTest, UpAndDownScrollTheDialogAndAreForwardedWithMultiLineEnter)
{
    AddEdit(1, {10, 10, 150, 30})->SetFocus();
    Key(VK_UP);
    Type(L"(");
    AddEdit(2, {10, 50, 150, 110}, true)->SetFocus();
    Key(VK_DOWN);
    Type(L"\r");
    std::vector<std::pair<UINT, WPARAM>> got;
    for (const Got& g : m_dialog.got)
    {
        if (g.message != WM_COMMAND && g.message != QZ_WM_EDITBUTTONUP)
            got.emplace_back(g.message, g.wParam);
    }
    const std::vector<std::pair<UINT, WPARAM>> expected = {
        {WM_VSCROLL, SB_LINEUP},   {WM_KEYUP, VK_UP},   {WM_CHAR, '('},
        {WM_VSCROLL, SB_LINEDOWN}, {WM_KEYUP, VK_DOWN}, {WM_CHAR, '\r'}};
    EXPECT_EQ(expected, got);
}

TEST_F(ShellTest, CtrlFunctionKeysInTheSingleLineWindowAreTheHelpersDebugKeys)
{
    CQzGuiHelper* pHelper = CQzGuiHelper::Instance();
    pHelper->DebugOn();
    const bool bExpanded = pHelper->IsPanelExpanded();
    AddEdit(1, {10, 10, 150, 30})->SetFocus();
    Chord(VK_CONTROL, VK_F3);
    EXPECT_NE(bExpanded, pHelper->IsPanelExpanded());
    SetFocus(Multi());
    Chord(VK_CONTROL, VK_F3);
    EXPECT_NE(bExpanded, pHelper->IsPanelExpanded());
    SetFocus(Single());
    Chord(VK_CONTROL, VK_F2);
    EXPECT_EQ(10, pHelper->GetFlashFrames());
    Chord(VK_CONTROL, VK_F4);
    EXPECT_FALSE(pHelper->IsDebugOn());
}

TEST_F(ShellTest, ImeIsClosedWhileNothingIsBoundAndDetachedForBoxesWithoutIme)
{
    CQzEdit* pChat = AddEdit(1, {10, 10, 150, 30});
    CQzEdit* pAscii = AddEdit(2, {10, 40, 150, 60});
    pAscii->SetImeEnable(false);
    auto isOpen = [](HWND hWnd)
    {
        HIMC hImc = ImmGetContext(hWnd);
        const BOOL bOpen = hImc && ImmGetOpenStatus(hImc);
        ImmReleaseContext(hWnd, hImc);
        return bOpen != 0;
    };
    ASSERT_TRUE(isOpen(Single()));
    pChat->SetFocus();
    SetFocus(m_harness.MainWindow());
    EXPECT_FALSE(isOpen(Single()));
    EXPECT_FALSE(isOpen(Multi()));
    pChat->SetFocus();
    EXPECT_TRUE(isOpen(Single()));

    pAscii->SetFocus();
    EXPECT_EQ(nullptr, ImmGetContext(Single()));
    EXPECT_FALSE(QzPlatform::Host::InjectImeResult(L"\x4E2D"));
    pChat->SetFocus();
    ASSERT_NE(nullptr, ImmGetContext(Single()));
    EXPECT_TRUE(QzPlatform::Host::InjectImeResult(L"\x4E2D"));
    m_harness.Pump();
    EXPECT_EQ(L"\x4E2D", WindowText(Single()));
}

TEST_F(ShellTest, TheCompositionWindowFollowsTheCaret)
{
    AddEdit(1, {10, 10, 250, 30})->SetFocus();
    Type(L"abcd");
    Shell()->UpdateCompositionWindow();
    HIMC hImc = ImmGetContext(Single());
    COMPOSITIONFORM form = {};
    ImmGetCompositionWindow(hImc, &form);
    ImmReleaseContext(Single(), hImc);
    // Box at screen (110, 110)-(350, 130); default cell 6 x 12; width at size 12 is 6.
    EXPECT_EQ(static_cast<DWORD>(CFS_RECT), form.dwStyle);
    EXPECT_EQ(110 + 4 * 6, form.ptCurrentPos.x);
    EXPECT_EQ(110, form.ptCurrentPos.y);
    EXPECT_EQ(110 + 4 * 6, form.rcArea.left);
    EXPECT_EQ(110 + 4 * 6 + 300, form.rcArea.right);
    EXPECT_EQ(130 + 100, form.rcArea.bottom);
}

struct FontCase
{
    const char* fontIni; // null: no file
    const char* language;
    const char* face;
};

class EditFontTest : public EditScene, public ::testing::WithParamInterface<FontCase>
{
};

TEST_P(EditFontTest, TheFaceComesFromFontIniAndEnglishIsAlwaysMonaco)
{
    const FontCase& c = GetParam();
    if (c.fontIni)
        m_root.Write("ini/font.ini", c.fontIni);
    else
        std::filesystem::remove(m_root.Path() / "ini/font.ini");
    m_harness.Log().Clear();
    QzPlatform::GetGameData().SetLanguageName(c.language);
    QzPlatform::FontDescription font;
    ASSERT_TRUE(QzPlatform::GetFontDescription(Shell()->GetEditFont(), &font));
    QzPlatform::GetGameData().Reset();
    EXPECT_EQ(c.face, font.faceName);
    EXPECT_EQ(14, font.height);
    EXPECT_EQ(static_cast<DWORD>(GB2312_CHARSET), font.charSet);
    EXPECT_EQ(c.fontIni ? 0 : 1, m_harness.Log().Count("open file failed"));
}

INSTANTIATE_TEST_SUITE_P(Faces, EditFontTest,
                         ::testing::Values(FontCase{"SimSun 16\n", "Chinese", "SimSun"},
                                           FontCase{"\n", "Chinese", "NULL"},
                                           FontCase{nullptr, "Chinese", "NULL"},
                                           FontCase{"SimSun 16\n", "English", "Monaco"},
                                           FontCase{nullptr, "English", "Monaco"}));

TEST_F(ShellTest, EveryWrapperReportsAMissingWindowAndGoesOn)
{
    AddEdit(1, {10, 10, 150, 30})->SetFocus();
    DestroyWindow(Single());
    m_harness.Log().Clear();
    CQzEditSingle& shell = *Shell();
    char szBuffer[8] = {};
    wchar_t szWide[8] = {};
    RECT rc = {};
    int nStart = 5;
    // 30 wrappers check once, SetSel with scrolling twice; three do not check.
    shell.GetWindowText(szBuffer, 8), shell.GetWindowTextW(szWide, 8), shell.SetWindowText("x");
    shell.GetLine(0, szBuffer), shell.GetLine(0, szBuffer, 8), shell.CanUndo();
    shell.GetLineCount(), shell.GetModify(), shell.SetModify(true), shell.GetRect(&rc);
    shell.GetSel(), shell.GetSel(&nStart, nullptr), shell.SetFont(nullptr, true);
    shell.SetMargins(1, 2), shell.GetMargins(), shell.SetLimitText(5), shell.LimitText(5);
    shell.GetLimitText(), shell.PosFromChar(0), shell.CharFromPos({0, 0}), shell.LineFromChar(0);
    shell.LineIndex(0), shell.LineLength(0), shell.LineScroll(1, 0), shell.ReplaceSel("x", true);
    shell.SetPasswordChar('*'), shell.GetPasswordChar(), shell.SetSel(MAKELONG(0, 1), true);
    shell.SetReadOnly(true), shell.GetFirstVisibleLine(), shell.SetSel(0, 1, false);
    shell.GetWindowTextLength(), shell.PostMessage(WM_CHAR, 'x', 0), shell.GetActiveEditData();
    std::set<int> lines;
    for (const QzTest::AssertReport& report : m_harness.Log().Asserts())
    {
        EXPECT_EQ("::IsWindow(m_hEditWnd)", report.expression);
        EXPECT_EQ("QzEditSingle", report.source);
        lines.insert(report.line);
    }
    EXPECT_EQ(32u, m_harness.Log().Asserts().size());
    EXPECT_EQ(32u, lines.size()); // each check names its own line
    EXPECT_EQ(0, nStart);
}

} // namespace
} // namespace EditTest
