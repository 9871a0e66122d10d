// The edit box's input rules and input sequences: notifications in the frame that sees a change,
// number-only, Enter, emotion codes, paste, undo, selections, the limit, focus by click, copies
// and hostile text and lifetimes.
#include "EditScene.h"

#include "platform/system/kernel/QzKernelHost.h"

#include <random>

namespace EditTest
{
namespace
{

using EditBoxTest = EditScene;

TEST_F(EditBoxTest, AKeyDownAndItsCharacterInsertOnceAndAreReportedInTheNextFrame)
{
    SpyEdit* pEdit = AddEdit<SpyEdit>(1, {10, 10, 250, 30});
    m_harness.Click(120, 115);
    m_dialog.got.clear();
    m_harness.KeyDown('A');
    m_harness.Char(L'a');
    m_harness.KeyUp('A');
    EXPECT_EQ(L"a", WindowText(Single()));
    EXPECT_TRUE(m_dialog.Codes(1).empty());

    EXPECT_EQ("a", TextAfterFrame(pEdit));
    EXPECT_EQ((std::vector<WORD>{QZ_EN_UPDATE, QZ_EN_CHANGE}), m_dialog.Codes(1));
    EXPECT_EQ((std::vector<std::string>{"update", "change"}), pEdit->hooks);
    EXPECT_EQ(L"a", pEdit->GetWideText());
    char szText[8] = {};
    EXPECT_EQ(8, pEdit->GetText(szText, 8));
    EXPECT_STREQ("a", szText);
    Frame();
    EXPECT_EQ(2u, m_dialog.Codes(1).size());
}

TEST_F(EditBoxTest, NumberOnlyPostsOnlyDigitsItMadeUpAndRefusesPasteAndTheRightButton)
{
    SpyEdit* pPin = AddEdit<SpyEdit>(1, {10, 10, 150, 30});
    pPin->SetNumberOnly(true);
    pPin->SetFocus();
    struct Case
    {
        UINT ch;
        const wchar_t* text;
    };
    // Made-up characters (lParam 0): the box posts what it accepts.
    for (const Case& c : {Case{'0', L""}, Case{'x', L""}, Case{'1', L"1"}, Case{'0', L"10"}})
    {
        pPin->SendMessage(WM_CHAR, c.ch, 0);
        m_harness.Pump();
        EXPECT_EQ(std::wstring(c.text), WindowText(Single())) << static_cast<char>(c.ch);
    }
    Type(L"a7");
    EXPECT_EQ(L"107", WindowText(Single()));
    SetClipboard(L"99");
    Chord(VK_CONTROL, 'V', 22);
    SendMessageW(Single(), WM_PASTE, 0, 0);
    EXPECT_EQ(L"107", WindowText(Single()));
}

TEST_F(EditBoxTest, EnterMakesOneLineBreakWhileTheBoxHasRoomAndExtraLinesAreCut)
{
    // 60 pixels at 14 a line: Enter while at most 2 lines, at most 3 lines kept.
    CQzEdit* pNotes = AddEdit(1, {10, 10, 150, 70}, true);
    pNotes->SetFocus();
    Type(L"a\rb\rc\rd");
    EXPECT_EQ(L"a\r\nb\r\ncd", WindowText(Multi()));
    // The line breaks are edits like typing: undo takes them back with the text.
    Chord(VK_CONTROL, 'Z', 26);
    EXPECT_EQ(L"", WindowText(Multi()));
    Type(L"a\rb\rc\rd");

    CQzEdit* pQuiet = AddEdit(2, {10, 100, 150, 160}, true);
    pQuiet->SetAllowEnter(false);
    pQuiet->SetFocus();
    Type(L"x\ry");
    EXPECT_EQ(L"xy", WindowText(Multi()));

    // Lines pasted past the box's height go at the next character.
    pNotes->SetFocus();
    SetWindowTextW(Multi(), L"1\r\n2\r\n3\r\n4\r\n5");
    SendMessageW(Multi(), EM_SETSEL, 0, 0);
    Type(L"0");
    EXPECT_EQ(L"01\r\n2\r\n3", WindowText(Multi()));
}

struct BackspaceCase
{
    const wchar_t* text; // caret at the end
    const wchar_t* left;
};

class BackspaceTest : public EditScene, public ::testing::WithParamInterface<BackspaceCase>
{
};

TEST_P(BackspaceTest, BackspaceTakesAWholeEmotionCodeAndOneCharacterOfAnythingElse)
{
    AddEdit(1, {10, 10, 250, 30})->SetFocus();
    SetWindowTextW(Single(), GetParam().text);
    SendMessageW(Single(), EM_SETSEL, 0xFFFF, 0xFFFF);
    m_harness.Char(L'\b');
    EXPECT_EQ(std::wstring(GetParam().left), WindowText(Single()));
}

INSTANTIATE_TEST_SUITE_P(
    Codes, BackspaceTest,
    ::testing::Values(BackspaceCase{L"ab#01|02", L"ab"}, BackspaceCase{L"#01|02", L""},
                      BackspaceCase{L"#12", L""}, BackspaceCase{L"xy#12", L"xy"},
                      BackspaceCase{L"abcdef#12", L"abcdef#1"}, BackspaceCase{L"#1|", L"#1"},
                      BackspaceCase{L"#", L""}, BackspaceCase{L"#99|9", L"#99|"},
                      BackspaceCase{L"a#9x|12", L"a#9x|1"},
                      BackspaceCase{L"\x4E2D#12", L"\x4E2D"}));

TEST_F(EditBoxTest, BackspaceWithASelectionDeletesOnlyTheSelection)
{
    AddEdit(1, {10, 10, 250, 30})->SetFocus();
    SetWindowTextW(Single(), L"ab#01|02");
    SendMessageW(Single(), EM_SETSEL, 8, 7);
    m_harness.Char(L'\b');
    EXPECT_EQ(L"ab#01|0", WindowText(Single()));
}

TEST_F(EditBoxTest, PastingDoubleByteTextIntoABoxWithoutImeEmptiesTheClipboard)
{
    CQzEdit* pAscii = AddEdit(1, {10, 10, 250, 30});
    pAscii->SetImeEnable(false);
    pAscii->SetFocus();
    SetClipboard(L"ab\x4E2D");
    Chord(VK_CONTROL, 'V', 22);
    EXPECT_EQ(L"", WindowText(Single()));
    EXPECT_FALSE(ClipboardHasText());

    SetClipboard(L"abc");
    Chord(VK_CONTROL, 'V', 22);
    EXPECT_EQ(L"abc", WindowText(Single()));
}

TEST_F(EditBoxTest, UndoAfterAPasteTakesThePasteBackAndASecondUndoRedoesIt)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 250, 30});
    pEdit->SetFocus();
    Type(L"hi");
    Key(VK_HOME);
    SetClipboard(L"oh ");
    Chord(VK_CONTROL, 'V', 22);
    EXPECT_EQ("oh hi", TextAfterFrame(pEdit));
    // A click into the bound box keeps its undo.
    m_harness.Click(240, 115);
    Chord(VK_CONTROL, 'Z', 26);
    EXPECT_EQ("hi", TextAfterFrame(pEdit));
    Chord(VK_CONTROL, 'Z', 26);
    EXPECT_EQ("oh hi", TextAfterFrame(pEdit));
}

TEST_F(EditBoxTest, ASelectionMadeByShiftArrowsIsReplacedByTyping)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 250, 30});
    pEdit->SetFocus();
    Type(L"abcdef");
    for (int i = 0; i < 3; ++i)
        Chord(VK_SHIFT, VK_LEFT);
    int nStart = 0;
    int nEnd = 0;
    pEdit->GetSel(&nStart, &nEnd);
    EXPECT_EQ(3, nStart);
    EXPECT_EQ(6, nEnd);
    Type(L"x");
    EXPECT_EQ("abcx", TextAfterFrame(pEdit));
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(4, 4)), pEdit->GetSel());
}

TEST_F(EditBoxTest, AHugePasteIsCutAtTheLimitOnACharacterBoundary)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 250, 30});
    pEdit->SetFocus();
    SetClipboard(std::wstring(1 << 20, L'x'));
    Chord(VK_CONTROL, 'V', 22);
    EXPECT_EQ(std::string(256, 'x'), TextAfterFrame(pEdit));

    pEdit->SetWindowText("");
    SetClipboard(L"a" + std::wstring(300000, L'\x4E2D'));
    Chord(VK_CONTROL, 'V', 22);
    const std::string text = TextAfterFrame(pEdit);
    ASSERT_EQ(1u + 255 * 2, text.size());
    EXPECT_EQ(std::wstring(L"a") + std::wstring(255, L'\x4E2D'), pEdit->GetWideText());
}

TEST_F(EditBoxTest, TextTypedJustBeforeTheFocusMovesIsKept)
{
    CQzEdit* pName = AddEdit(1, {10, 10, 250, 30});
    CQzEdit* pPass = AddEdit(2, {10, 40, 250, 60});
    pName->SetWindowText("bob");
    m_harness.Click(250 - 1, 115);
    Type(L"by");
    m_harness.Click(120, 145); // no frame in between
    EXPECT_EQ("bobby", std::string(pName->GetWindowText()));
    EXPECT_EQ((std::vector<WORD>{QZ_EN_UPDATE, QZ_EN_SETFOCUS, QZ_EN_UPDATE, QZ_EN_CHANGE,
                                 QZ_EN_KILLFOCUS}),
              m_dialog.Codes(1));
    EXPECT_TRUE(pPass->IsFocused());
}

TEST_F(EditBoxTest, TextSetWhileAnotherBoxIsBoundLeavesTheSystemWindowAlone)
{
    CQzEdit* pName = AddEdit(1, {10, 10, 250, 30});
    CQzEdit* pPass = AddEdit(2, {10, 40, 250, 60});
    pName->SetFocus();
    Type(L"bob");
    pPass->SetWindowText("secret");
    pPass->SendMessage(WM_CHAR, 'z', 0);
    m_harness.Pump();
    EXPECT_EQ(L"bob", WindowText(Single()));
    EXPECT_EQ("bob", TextAfterFrame(pName));
    pPass->SetFocus();
    EXPECT_EQ(L"secret", WindowText(Single()));
    pName->SetWindowText(nullptr);
    EXPECT_EQ("", std::string(pName->GetWindowText()));
}

TEST_F(EditBoxTest, ABoxDestroyedWhileBoundGetsNoMoreKeys)
{
    AddEdit(1, {10, 10, 250, 30});
    auto pEdit = std::make_unique<SpyEdit>();
    pEdit->PreSetParam(false, 0, 0, true);
    m_other.AddCtrl(5, pEdit.get());
    m_other.CreateCtrl(pEdit.get(), TRUE);
    pEdit->SetFocus();
    Type(L"ab");
    m_pMgr->RemoveDialog(&m_other);
    pEdit.reset();
    EXPECT_EQ(nullptr, Shell()->GetActiveEdit());
    EXPECT_EQ(0u, m_pMgr->GetFocusId());
    EXPECT_EQ(m_harness.MainWindow(), GetFocus());
    Type(L"cd");
    SendMessageW(Single(), WM_CHAR, 'e', 1);
    EXPECT_EQ(L"ab", WindowText(Single()));
}

TEST_F(EditBoxTest, ADisabledBoxLosesAndRefusesTheFocus)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 250, 30});
    pEdit->SetFocus();
    Type(L"ab");
    pEdit->EnableWindow(FALSE);
    EXPECT_FALSE(pEdit->IsFocused());
    EXPECT_EQ("ab", std::string(pEdit->GetWindowText()));
    EXPECT_EQ((std::vector<WORD>{QZ_EN_SETFOCUS, QZ_EN_UPDATE, QZ_EN_CHANGE, QZ_EN_KILLFOCUS}),
              m_dialog.Codes(1));
    m_harness.Click(120, 115);
    pEdit->SetFocus();
    EXPECT_FALSE(pEdit->IsFocused());
    EXPECT_EQ(4u, m_dialog.Codes(1).size());
    pEdit->EnableWindow(TRUE);
    m_harness.Click(120, 115);
    EXPECT_TRUE(pEdit->IsFocused());
    EXPECT_TRUE(IsWindowEnabled(Single()));
}

TEST_F(EditBoxTest, ALoneLeadByteNeverBreaksTheText)
{
    CQzEdit* pLine = AddEdit(1, {10, 10, 250, 30});
    CQzEdit* pLines = AddEdit(2, {10, 40, 250, 100}, true);
    for (CQzEdit* pEdit : {pLine, pLines})
    {
        pEdit->SetWindowText("ab\xD6");
        Frame();
        pEdit->SetFocus();
        SendMessageW(GetFocus(), EM_SETSEL, 0xFFFF, 0xFFFF);
        Type(L"x");
        const std::string text = TextAfterFrame(pEdit);
        ASSERT_FALSE(text.empty());
        EXPECT_EQ('x', text.back());
        EXPECT_EQ("ab", text.substr(0, 2));
    }
    // A text whose every byte opens a two-byte character: what is read back ends on a
    // character, and a small buffer gets whole characters.
    pLine->SetFocus();
    pLine->SetWindowText(std::string(301, '\xB0').c_str());
    const std::string text = TextAfterFrame(pLine);
    ASSERT_GE(text.size(), 300u);
    EXPECT_FALSE(CQzEdit::IsDBCSTrail((text + "a").c_str(), static_cast<int>(text.size())));
    EXPECT_EQ(std::string(300, '\xB0'), text.substr(0, 300));
    char szSmall[4] = {};
    pLine->GetText(szSmall, 4);
    EXPECT_EQ(2u, std::strlen(szSmall));
}

// What a bound box read back never ends in half a character of the code page.
void ExpectWholeText(CQzEdit* pBound)
{
    if (!pBound)
        return;
    const std::string text = pBound->GetWindowText();
    size_t i = 0;
    while (i < text.size())
        i += IsDBCSLeadByte(static_cast<BYTE>(text[i])) ? 2 : 1;
    EXPECT_EQ(text.size(), i) << text;
}

// Keys, characters (two-byte ones and emotion codes too), clicks, pastes, hostile texts,
// focus moves and frames in random order: no crash, and every box's text stays whole.
TEST_F(EditBoxTest, ARandomInputSequenceKeepsEveryTextWhole)
{
    std::vector<CQzEdit*> boxes = {AddEdit(1, {10, 10, 150, 30}),
                                   AddEdit(2, {10, 40, 150, 100}, true),
                                   AddEdit(3, {10, 110, 80, 130})};
    boxes[2]->SetNumberOnly(true);
    boxes[2]->SetLimitText(6);
    std::mt19937 random(12345);
    int nFrames = 0;
    const wchar_t chars[] = {L'a', L'#', L'0', L'1', L'|', L' ', L'\b', L'\r', 22, 26, 0x4E2D};
    const int keys[] = {VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_DELETE, VK_UP, VK_DOWN};
    for (int step = 0; step < 3000; ++step)
    {
        CQzEdit* pBox = boxes[random() % boxes.size()];
        switch (random() % 7)
        {
        case 0:
            m_harness.Click(110 + static_cast<int>(random() % 140),
                            115 + static_cast<int>(random() % 20) * 3);
            break;
        case 1:
            Key(keys[random() % std::size(keys)]);
            break;
        case 2:
            pBox->SetWindowText(
                std::string(random() % 9, static_cast<char>(0x80 + random() % 128)).c_str());
            break;
        case 3:
            SetClipboard(std::wstring(random() % 40, chars[random() % std::size(chars)]));
            Chord(VK_CONTROL, 'V', 22);
            break;
        case 4:
            pBox->SendMessage(WM_CHAR, chars[random() % std::size(chars)], 0);
            break;
        case 5:
            Frame();
            ++nFrames;
            ExpectWholeText(Shell()->GetActiveEdit());
            break;
        default:
            m_harness.Char(chars[random() % std::size(chars)]);
            break;
        }
        const CQzEdit* pBound = Shell()->GetActiveEdit();
        ASSERT_TRUE(!pBound || std::find(boxes.begin(), boxes.end(), pBound) != boxes.end());
    }
    EXPECT_GT(nFrames, 300);
}

struct TrailCase
{
    const char* text;
    int pos;
    bool trail;
};

TEST(EditHelpers, TrailBytesAndEmotionCodes)
{
    const TrailCase trails[] = {{"ab", 1, false},
                                {"\xD6\xD0", 1, true},
                                {"\xD6\xD0"
                                 "a",
                                 2, false},
                                {"a\xD6", 2, false},
                                {"\xD6", 1, false},
                                {nullptr, 0, false},
                                {"\xD6\xD0\xD6\xD0", 3, true}};
    for (const TrailCase& c : trails)
        EXPECT_EQ(c.trail, CQzEdit::IsDBCSTrail(c.text, c.pos)) << c.pos;
    EXPECT_FALSE(CQzEdit::IsDBCSTrailW(L"\x4E2D", 1));

    CQzEdit edit;
    EXPECT_TRUE(edit.IsEmotionCode("x#01|02", 1, 7));
    EXPECT_FALSE(edit.IsEmotionCode("x#01|02", 1, 6));
    EXPECT_FALSE(edit.IsEmotionCode("#1|", 0, 3));
    EXPECT_FALSE(edit.IsEmotionCode(nullptr, 0, 6));
}

TEST_F(EditBoxTest, SetUpIsCheckedAndTheShellIsNeededForItsValues)
{
    CQzEdit edit;
    edit.SetParent(&m_dialog);
    edit.SetId(9);
    m_harness.Log().Clear();
    edit.Create(m_pMgr);
    ASSERT_EQ(1u, m_harness.Log().LogMsgs().size());
    EXPECT_EQ(0u, m_harness.Log().LogMsgs()[0].find("ASSERT(m_bPreSetParam) in "));
    EXPECT_NE(std::string::npos, m_harness.Log().LogMsgs()[0].find(" of QzEdit"));

    // A copy takes every value; it is not bound, and going away leaves the original bound.
    edit.PreSetParam(true, 0, 0xFF00FF00, false);
    edit.SetNumberOnly(true);
    edit.SetLimitText(12);
    edit.SetEditData(0x123456789ULL);
    edit.SetFocus();
    {
        CQzEdit copy(edit);
        EXPECT_TRUE(copy.IsMultiLineEdit());
        EXPECT_TRUE(copy.IsNumberOnly());
        EXPECT_EQ(12, copy.GetLimitText());
        EXPECT_EQ(0x123456789ULL, copy.GetEditData());
        EXPECT_FALSE(copy.IsFocused());
    }
    EXPECT_TRUE(edit.IsFocused());
    EXPECT_EQ(0x123456789ULL, Shell()->GetActiveEditData());
}

} // namespace
} // namespace EditTest
