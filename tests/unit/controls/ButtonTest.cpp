// The push button: press, click and double click as its dialog sees them, and
// its capture.
#include "ControlScene.h"

#include "controls/QzButton.h"

namespace ControlTest
{

namespace
{

class ButtonScene : public ControlScene
{
protected:
    // Button 1 at (110, 110)-(210, 150), button 2 at (310, 110)-(410, 150), the
    // mouse on 1.
    ButtonScene()
    {
        AddCtrl<CQzButton>(1, {10, 10, 110, 50});
        m_pSecond = AddCtrl<CQzButton>(2, {210, 10, 310, 50});
        m_dialog.AddMsgHandler(WM_COMMAND, MakeNotifyWParam(QZ_BN_CLICKED, 1),
                               &NoticeDialog::OnClicked);
        Open();
        m_harness.MouseMove(150, 130);
    }

    CQzButton* m_pSecond = nullptr;
    const Notice kPress1 = MakeNotice(QZ_BN_PRESSED, 1);
};

TEST_F(ButtonScene, AClickSendsPressThenClickWithTheLookOfEachStep)
{
    EXPECT_EQ("img/f2.png", Frame().front());
    m_harness.LButtonDown(150, 130);
    EXPECT_EQ("img/f1.png", Frame().front());
    m_harness.LButtonUp(150, 130);
    EXPECT_EQ((std::vector<Notice>{kPress1, MakeNotice(QZ_BN_CLICKED, 1)}), m_dialog.notices);
    EXPECT_EQ(1, m_dialog.clicks);
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    EXPECT_EQ("img/f2.png", Frame().front());
}

TEST_F(ButtonScene, DraggingOffAndReleasingSendsOnlyThePressUnlessTheMouseCameBack)
{
    m_harness.LButtonDown(150, 130);
    m_harness.MouseMove(450, 300); // captured: the button still gets the move
    EXPECT_EQ("img/f1.png",
              Frame().front()); // the frame notices that the mouse left
    m_harness.LButtonUp(450, 300);
    EXPECT_EQ(std::vector<Notice>{kPress1}, m_dialog.notices);
    EXPECT_EQ("img/f0.png", Frame().front());

    m_harness.MouseMove(150, 130);
    m_harness.LButtonDown(150, 130);
    m_harness.MouseMove(450, 300);
    Frame();
    m_harness.MouseMove(160, 130);
    m_harness.LButtonUp(160, 130);
    EXPECT_EQ(1, m_dialog.clicks);
}

TEST_F(ButtonScene, PressOnOneButtonAndReleaseOnAnotherClicksNeither)
{
    m_harness.LButtonDown(150, 130);
    m_harness.MouseMove(350, 130);
    Frame();
    m_harness.LButtonUp(350, 130);
    EXPECT_EQ(std::vector<Notice>{kPress1}, m_dialog.notices);
    EXPECT_EQ(QZ_STATE_NORMAL, m_pSecond->GetCtrlState());
}

TEST_F(ButtonScene, RepeatedPressesUnpressedReleasesAndDoubleClicks)
{
    m_pRecord->SetClickSound("btn.wav"); // button 2's record
    m_harness.LButtonUp(150, 130);
    m_harness.LButtonDown(150, 130);
    m_dialog.FindCtrlEntry(1)->pCtrl->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 130));
    m_harness.LButtonUp(150, 130);
    m_harness.LButtonDblClk(150, 130);
    m_harness.MouseMove(350, 130);
    m_harness.Click(350, 130);

    const std::vector<Notice> expected = {kPress1, MakeNotice(QZ_BN_CLICKED, 1),
                                          MakeNotice(QZ_BN_DBLCLK, 1), MakeNotice(QZ_BN_PRESSED, 2),
                                          MakeNotice(QZ_BN_CLICKED, 2)};
    EXPECT_EQ(expected, m_dialog.notices);
    EXPECT_EQ(std::vector<std::string>{"btn.wav"}, PlayedSounds());
}

TEST_F(ButtonScene, Button1289NeverTakesTheCapture)
{
    AddCtrl<CQzButton>(1289, {10, 100, 110, 140});
    m_harness.MouseMove(150, 220);
    m_harness.LButtonDown(150, 220);
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    m_harness.LButtonUp(150, 220);
    EXPECT_EQ(MakeNotice(QZ_BN_CLICKED, 1289), m_dialog.notices.back());
}

} // namespace

} // namespace ControlTest
