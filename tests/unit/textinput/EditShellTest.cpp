// The edit shell: binding and focus notices, the filters of its window procedures, mouse and
// key forwarding, the edit font and the wrappers' window check.
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
using Notice = std::pair<WORD, WORD>;

TEST_F(ShellTest, FocusMovingBetweenBoxesTellsTheOldBoxsDialogBeforeTheNewOnes)
{
    CQzEdit* pName = AddEdit(1, {10, 10, 150, 30});
    AddEdit(2, {10, 50, 150, 110}, true);
    CQzEdit* pOther = AddEdit(3, {10, 10, 150, 30}, false, &m_other);
    m_pMgr->SetKeyFocus(&m_other); // as an extended edit box would have it

    m_harness.Click(120, 115);
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
    EXPECT_EQ(pName, Shell()->GetActiveEdit());
    EXPECT_EQ(kDialogId | (1u << 16), m_pMgr->GetFocusId());

    // Text typed just before the focus moves (no frame in between) is kept.
    Type(L"ab");
    m_harness.Click(120, 160); // single-line to multi-line
    EXPECT_EQ("ab", std::string(pName->GetWindowText()));
    EXPECT_EQ(Multi(), GetFocus());
    m_harness.Click(120, 115); // and back
    EXPECT_EQ(Single(), GetFocus());
    pOther->SetFocus(); // to another dialog
    EXPECT_TRUE(pOther->IsFocused());
    SetFocus(m_harness.MainWindow()); // the focus leaving the shell's windows unbinds
    EXPECT_EQ((std::vector<Notice>{{1, QZ_EN_SETFOCUS},
                                   {1, QZ_EN_KILLFOCUS},
                                   {2, QZ_EN_SETFOCUS},
                                   {2, QZ_EN_KILLFOCUS},
                                   {1, QZ_EN_SETFOCUS},
                                   {1, QZ_EN_KILLFOCUS},
                                   {3, QZ_EN_SETFOCUS},
                                   {3, QZ_EN_KILLFOCUS}}),
              Notices());
    EXPECT_EQ(static_cast<LPARAM>(kOtherDialogId | (3u << 16)), m_other.got.back().lParam);
    EXPECT_EQ(nullptr, Shell()->GetActiveEdit());
    EXPECT_EQ(0u, m_pMgr->GetFocusId());

    // A window taking the manager's key focus takes the keyboard from the bound box too.
    pName->SetFocus();
    m_pMgr->SetKeyFocus(&m_other);
    EXPECT_FALSE(pName->IsFocused());
    EXPECT_EQ(m_harness.MainWindow(), GetFocus());
    EXPECT_EQ(QZ_EN_KILLFOCUS, m_dialog.Codes(1).back());
}

TEST_F(ShellTest, BindingGivesTheWindowTheBoxsSwitchesAndSizeAndALayoutReloadRefitsIt)
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
    RECT rc = {};
    GetWindowRect(Single(), &rc);
    EXPECT_EQ(80, rc.right - rc.left);
    EXPECT_EQ(20, rc.bottom - rc.top);

    // A box without a limit does not inherit the last box's.
    pName->SetFocus();
    EXPECT_EQ(WS_CHILD | ES_AUTOHSCROLL, GetWindowLongPtrA(Single(), GWL_STYLE));
    EXPECT_NE(6u, Shell()->GetLimitText());

    m_root.Write("ini/Other.ini", "[0-300]\nx=100\ny=100\nw=400\nh=300\n"
                                  "[300-2]\nx=10\ny=40\nw=120\nh=20\n");
    m_pMgr->LoadLayout("Other.ini");
    GetWindowRect(Single(), &rc);
    EXPECT_EQ(120, rc.right - rc.left);
    // The reload ends by fitting the window to the bound box even when the box kept its size.
    MoveWindow(Single(), 0, 0, 5, 5, FALSE);
    m_pMgr->LoadLayout("Other.ini");
    GetWindowRect(Single(), &rc);
    EXPECT_EQ(120, rc.right - rc.left);
    EXPECT_EQ(kDialogId | (2u << 16), m_pMgr->GetFocusId());
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

TEST_F(ShellTest, TheUtf8LimitHoldsForTextsLongerThanTheFirstRead)
{
    SpyEdit* pEdit = AddEdit<SpyEdit>(1, {10, 10, 250, 30});
    pEdit->SetLimitText(100);
    pEdit->SetFocus();
    SetWindowTextW(Single(), (std::wstring(48, L'a') + std::wstring(16, L'\x4E2D')).c_str());
    SendMessageW(Single(), EM_SETSEL, 0xFFFF, 0xFFFF);
    Type(L"bcd"); // 96 bytes in 64 characters: four more fit
    EXPECT_EQ(std::wstring(48, L'a') + std::wstring(16, L'\x4E2D') + L"bcd", WindowText(Single()));
    Type(L"efg");
    EXPECT_EQ(std::wstring(48, L'a') + std::wstring(16, L'\x4E2D') + L"bcde", WindowText(Single()));
}

TEST_F(ShellTest, NumberOnlyRefusesPasteAndOnlyCharactersPostedWithLParam0PassUnbound)
{
    SpyEdit* pPin = AddEdit<SpyEdit>(1, {10, 10, 150, 30});
    pPin->SetNumberOnly(true);
    pPin->SetFocus();
    // Made-up characters (lParam 0): the box posts what it accepts.
    for (const auto& [ch, text] : {std::pair{'0', L""}, {'x', L""}, {'1', L"1"}, {'0', L"10"}})
    {
        pPin->SendMessage(WM_CHAR, ch, 0);
        m_harness.Pump();
        EXPECT_EQ(std::wstring(text), WindowText(Single())) << ch;
    }
    Type(L"a7");
    EXPECT_EQ(L"107", WindowText(Single()));
    SetClipboard(L"99");
    Chord(VK_CONTROL, 'V', 22);
    SendMessageW(Single(), WM_PASTE, 0, 0);
    EXPECT_EQ(L"107", WindowText(Single()));

    // Without a bound box typed characters are dropped; the library's own go through.
    SetFocus(m_harness.MainWindow());
    SetWindowTextW(Single(), L"");
    SetFocus(Single());
    Type(L"12");
    PostMessageA(Single(), WM_CHAR, '5', 0);
    m_harness.Pump();
    EXPECT_EQ(L"5", WindowText(Single()));
}

TEST_F(ShellTest, AButtonUpIsToldToTheDialogAsMessage10029RelativeToTheBox)
{
    AddEdit(1, {10, 10, 150, 30});
    m_harness.Click(180, 115); // box at (110, 110)
    ASSERT_EQ(Single(), GetFocus());
    const auto it = std::find_if(m_dialog.got.begin(), m_dialog.got.end(),
                                 [](const Got& g) { return g.message == 10029; });
    ASSERT_NE(m_dialog.got.end(), it);
    EXPECT_EQ(MAKELPARAM(70, 5), it->lParam);
    SetWindowTextW(Single(), L"0123456789012345678901234");
    m_harness.Click(110 + 7 * 4 + 1, 115);
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(4, 4)), Shell()->GetSel());
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

TEST_F(ShellTest, CtrlFunctionKeysInTheSingleLineWindowReachTheGuiHelper)
{
    CQzGuiHelper* pHelper = CQzGuiHelper::Instance();
    pHelper->DebugOn();
    const bool bExpanded = pHelper->IsPanelExpanded();
    AddEdit(1, {10, 10, 150, 30})->SetFocus();
    Chord(VK_CONTROL, VK_F3);
    EXPECT_NE(bExpanded, pHelper->IsPanelExpanded());
    Chord(VK_CONTROL, VK_F2);
    EXPECT_EQ(10, pHelper->GetFlashFrames());
    Chord(VK_CONTROL, VK_F4);
    EXPECT_FALSE(pHelper->IsDebugOn());
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
    QzPlatform::GetGameData().SetLanguageName(c.language);
    QzPlatform::FontDescription font;
    ASSERT_TRUE(QzPlatform::GetFontDescription(Shell()->GetEditFont(), &font));
    QzPlatform::GetGameData().Reset();
    EXPECT_EQ(c.face, font.faceName);
    EXPECT_EQ(14, font.height);
}

INSTANTIATE_TEST_SUITE_P(Faces, EditFontTest,
                         ::testing::Values(FontCase{"SimSun 16\n", "Chinese", "SimSun"},
                                           FontCase{nullptr, "Chinese", "NULL"},
                                           FontCase{"SimSun 16\n", "English", "Monaco"}));

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
        lines.insert(report.line);
    }
    EXPECT_EQ(32u, m_harness.Log().Asserts().size());
    EXPECT_EQ(32u, lines.size()); // each check names its own line
    EXPECT_EQ(0, nStart);
}

} // namespace
} // namespace EditTest
