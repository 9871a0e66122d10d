// The layout debugging tools: reloading with the middle button and the hot keys, the panel that
// can be dragged, folded and closed, and what it shows about the window under the mouse.
#include "ManagerFixture.h"

namespace QzGuiManagerTest
{

namespace
{

using QzGui::CQzGuiHelper;
using QzTest::DrawCall;
using QzTest::DrawKind;

const char* const kFacts = "990060=Record x=%d y=%d\n"
                           "990061=Record w=%d h=%d\n"
                           "990062=Pos %d,%d\n"
                           "990063=Size %d,%d\n"
                           "990064=Offset %d,%d\n"
                           "990065=Ani %s\n";

class GuiHelperTest : public ManagerFixture
{
protected:
    GuiHelperTest()
    {
        m_root.Write("ini/StringTable.ini", kFacts);
        Helper()->DebugOn();
        m_pDialog = AddDialog(1);
    }

    static CQzGuiHelper* Helper() { return CQzGuiHelper::Instance(); }
    // Rewrites the layout file with new x values for dialogs 1 and 2.
    void MoveDialogsInFile(int x1, int x2 = 100)
    {
        std::string layout = kLayout;
        layout.replace(layout.find("[0-1]\nx=0"), 9, "[0-1]\nx=" + std::to_string(x1));
        layout.replace(layout.find("[0-2]\nx=100"), 11, "[0-2]\nx=" + std::to_string(x2));
        m_root.Write("ini/Test.ini", layout);
    }
    std::vector<DrawCall> Panel()
    {
        m_harness.Device().Clear();
        m_pMgr->Show();
        return m_harness.Device().Calls();
    }

    ProbeDialog* m_pDialog = nullptr;
};

TEST_F(GuiHelperTest, CtrlMiddleClickReloadsEveryManagerAndFlashesTenFrames)
{
    MoveDialogsInFile(55);
    m_harness.KeyDown(VK_CONTROL);
    m_harness.MButtonDown(900, 700);
    EXPECT_EQ(55, m_pDialog->GetX());
    EXPECT_EQ(10, Helper()->GetFlashFrames());

    Helper()->SetDebugTarget(m_pMgr, m_pDialog);
    std::vector<DrawCall> calls = Panel();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(DrawKind::Fill, calls.front().kind);
    EXPECT_EQ(0x50ff0000u, calls.front().colour);
    EXPECT_EQ(9, Helper()->GetFlashFrames());
}

TEST_F(GuiHelperTest, MiddleClickReloadsTheDialogOfTheWindowUnderTheMouse)
{
    ProbeDialog* pOther = AddDialog(2);
    ProbeCtrl* pCtrl = AddCtrl(m_pDialog, 20);
    MoveDialogsInFile(33, 111);

    m_harness.MButtonDown(900, 700); // no target yet: nothing
    EXPECT_EQ(0, m_pDialog->GetX());
    Helper()->SetDebugTarget(m_pMgr, pCtrl);
    m_harness.MButtonDown(900, 700);
    EXPECT_EQ(33, m_pDialog->GetX());
    EXPECT_EQ(100, pOther->GetX());
    EXPECT_EQ(5, Helper()->GetFlashFrames());
}

TEST_F(GuiHelperTest, DraggingThePanelKeepsTheGrabPointUnderTheMouse)
{
    m_harness.LButtonDown(20, 80);
    m_harness.MouseMove(520, 380);
    EXPECT_EQ((POINT{510, 370}),
              (POINT{Helper()->GetPanelRect().left, Helper()->GetPanelRect().top}));
    POINT mouse = {};
    m_pMgr->GetMousePos(&mouse);
    EXPECT_EQ(0, mouse.x); // the panel took the moves
    m_harness.LButtonUp(520, 380);

    m_harness.MouseMove(700, 600);
    EXPECT_EQ(510, Helper()->GetPanelRect().left);
    m_pMgr->GetMousePos(&mouse);
    EXPECT_EQ(700, mouse.x);
}

TEST_F(GuiHelperTest, ThePanelFoldsOnDoubleClickAndRightClickEndsDebugging)
{
    m_harness.LButtonDblClk(20, 80);
    EXPECT_FALSE(Helper()->IsPanelExpanded());

    m_harness.RButtonDown(500, 500); // outside the panel
    EXPECT_TRUE(Helper()->IsDebugOn());
    m_harness.RButtonDown(20, 80);
    EXPECT_FALSE(Helper()->IsDebugOn());
    EXPECT_EQ(0, Helper()->OnMouseMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(20, 80)));
}

TEST_F(GuiHelperTest, CtrlFunctionKeysReloadFoldAndEndDebugging)
{
    EXPECT_EQ(0, Helper()->OnKeyMessage(VK_F3)); // without Ctrl
    m_harness.KeyDown(VK_CONTROL);
    EXPECT_EQ(1, Helper()->OnKeyMessage(VK_F3));
    EXPECT_FALSE(Helper()->IsPanelExpanded());
    EXPECT_EQ(0, Helper()->OnKeyMessage(VK_F5));

    EXPECT_EQ(1, Helper()->OnKeyMessage(VK_F1)); // no target: nothing reloads
    EXPECT_EQ(0, Helper()->GetFlashFrames());
    Helper()->SetDebugTarget(m_pMgr, m_pDialog);
    EXPECT_EQ(1, Helper()->OnKeyMessage(VK_F1));
    EXPECT_EQ(5, Helper()->GetFlashFrames());
    MoveDialogsInFile(44);
    EXPECT_EQ(1, Helper()->OnKeyMessage(VK_F2));
    EXPECT_EQ(44, m_pDialog->GetX());
    EXPECT_EQ(10, Helper()->GetFlashFrames());

    EXPECT_EQ(1, Helper()->OnKeyMessage(VK_F4));
    EXPECT_FALSE(Helper()->IsDebugOn());
    EXPECT_EQ(0, Helper()->OnKeyMessage(VK_F3));
}

TEST_F(GuiHelperTest, ThePanelShowsTheLayoutFileTheLabelAndTheFacts)
{
    EXPECT_TRUE(Panel().empty()); // no target yet
    Helper()->SetDebugTarget(m_pMgr, m_pDialog);

    std::vector<DrawCall> calls = Panel();
    // Seven lines (title, label, five facts; no animation section): 70 + 8 * 5 + 7 * 12 + 1.
    ASSERT_GE(calls.size(), 3u);
    EXPECT_EQ("fill 10,70,160,195 #50000000 | outline 10,70,160,195 #F0000000",
              QzTest::RecordingDevice::TraceLine(calls[0]) + " | " +
                  QzTest::RecordingDevice::TraceLine(calls[1]));

    std::vector<DrawCall> texts = m_harness.Device().Calls(DrawKind::Text);
    std::vector<std::string> lines;
    for (const DrawCall& text : texts)
        lines.push_back(text.text);
    EXPECT_EQ(
        (std::vector<std::string>{"TEST.INI", "[ 0 - 1 ] ", "Record x=0 y=0", "Record w=300 h=300",
                                  "Pos 0,0", "Size 300,300", "Offset 0,0"}),
        lines);
    ASSERT_EQ(7u, texts.size());
    EXPECT_EQ((std::vector<int>{15, 75, 75 + 12 + 5 + 3, 75 + 12 + 5 + 3 + 17}),
              (std::vector<int>{texts[0].x1, texts[0].y1, texts[1].y1, texts[2].y1}));
    EXPECT_EQ("Tahoma/11 Tahoma/11 Tahoma/12",
              texts[0].font.face + "/" + std::to_string(texts[0].font.size) + " " +
                  texts[1].font.face + "/" + std::to_string(texts[1].font.size) + " " +
                  texts[2].font.face + "/" + std::to_string(texts[2].font.size));

    m_harness.LButtonDblClk(20, 80);
    calls = Panel();
    EXPECT_EQ(70 + 3 * 5 + 2 * 12 + 1, calls[0].y2);

    m_pMgr->SetScreenSize(800, 600); // not the render library's screen
    EXPECT_TRUE(Panel().empty());
}

TEST_F(GuiHelperTest, PatternsWithStrayConversionsAreFilledSafely)
{
    m_root.Write("ini/StringTable.ini", "990060=%s %n %d %d %%\n");
    Helper()->SetDebugTarget(m_pMgr, m_pDialog);
    Panel();
    std::vector<DrawCall> texts = m_harness.Device().Calls(DrawKind::Text);
    ASSERT_GE(texts.size(), 3u);
    EXPECT_EQ("0 0   %", texts[2].text);
}

TEST_F(GuiHelperTest, LabelsNameParentIdVariantAndType)
{
    ProbeCtrl* pCtrl = AddCtrl(m_pDialog, 20);
    EXPECT_EQ("[ 1 - 20 ] BUTTON", CQzGuiHelper::FormatWindowLabel(pCtrl));
    ProbeDialog child(2, nullptr);
    m_pDialog->AddChildDialog(&child, false);
    EXPECT_EQ("[ 0 - 2 ] P = 1", CQzGuiHelper::FormatWindowLabel(&child));
    EXPECT_STREQ("", CQzGuiHelper::GetTypeLabel(15)); // a gap in the type numbers
}

} // namespace

} // namespace QzGuiManagerTest
