// Dragging a movable dialog with the left button, and a child dialog that drags its parent.
#include "DialogScene.h"

namespace DialogTest
{

class DialogDrag : public DialogScene
{
protected:
    DialogDrag()
    {
        AddRecord(0, 600, {100, 100, 300, 200})->SetStyle(1);
        AddRecord(600, 1, {10, 10, 30, 30});
        m_dialog.AddCtrl(1, &m_ctrl);
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
        m_dialog.ShowWindow(SW_SHOW);
    }

    SpyDialog m_dialog{600, nullptr};
    SpyCtrl m_ctrl{QZ_WND_IMAGE};
};

TEST_F(DialogDrag, AMovableDialogFollowsTheMouseWithinTheScreenWithItsControls)
{
    m_harness.LButtonDown(150, 150);
    m_harness.MouseMove(170, 180, MK_LBUTTON);
    EXPECT_EQ((RECT{130, 140, 150, 160}), m_ctrl.GetWindowRect());
    m_harness.MouseMove(0, 200, MK_LBUTTON); // would leave the screen
    EXPECT_EQ(120, m_dialog.GetX());

    m_harness.LButtonUp(180, 180);
    m_harness.MouseMove(250, 250);
    EXPECT_EQ(120, m_dialog.GetX());
    EXPECT_FALSE(m_pMgr->GetCapture());
}

TEST_F(DialogDrag, AChildDialogDragsItsParent)
{
    SpyDialog child(601, nullptr);
    AddRecord(0, 601, {50, 50, 150, 90})->SetStyle(1);
    m_dialog.AddChildDialog(&child, false);
    child.ShowWindow(SW_SHOW);
    ASSERT_EQ(150, child.GetX());

    m_harness.LButtonDown(160, 160);
    m_harness.MouseMove(180, 170, MK_LBUTTON);

    EXPECT_EQ(1, m_dialog.Count(QZ_WM_DRAGMOVE));
    EXPECT_EQ((POINT{120, 110}), (POINT{m_dialog.GetX(), m_dialog.GetY()}));
    EXPECT_EQ((POINT{170, 160}), (POINT{child.GetX(), child.GetY()}));
    m_harness.LButtonUp(180, 170);
}

} // namespace DialogTest
