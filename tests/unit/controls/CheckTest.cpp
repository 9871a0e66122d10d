// The check box: a click inside toggles it, a disabled box keeps its value, the
// hover look, and its picture after a left-aligned caption.
#include "ControlScene.h"

#include "controls/QzCheck.h"

#include <functional>
#include <utility>

namespace ControlTest
{

namespace
{

class CheckScene : public ControlScene
{
protected:
    // Check box 4 at (110, 110)-(210, 130), the mouse over it.
    CheckScene() { m_pCheck = AddCtrl<CQzCheck>(4, {10, 10, 110, 30}); }
    void OpenWithMouseIn()
    {
        Open();
        m_harness.MouseMove(150, 120);
    }

    CQzCheck* m_pCheck = nullptr;
    const std::vector<Notice> kOneClick = {MakeNotice(QZ_BN_PRESSED, 4),
                                           MakeNotice(QZ_BN_CLICKED, 4)};
};

TEST_F(CheckScene, ThePictureFollowsALeftAlignedCaptionOnly)
{
    m_pRecord->SetOffsetX(7);
    m_pCheck->SetWindowText("Sound");
    OpenWithMouseIn();
    EXPECT_EQ(0,
              m_pCheck->GetPicOffset().x); // format 2 by default; OffsetX is replaced

    m_pRecord->AddExtra("TextFormat", "0");
    m_pCheck->LoadWndInfo();
    Frame();
    EXPECT_EQ(110 + 5 * 6 + 5, Calls(QzTest::DrawKind::Texture).front().x1);
}

TEST_F(CheckScene, EachClickInsideTogglesTheCheckAndTheFrameButDraggingOffDoesNot)
{
    m_pRecord->SetClickSound("tick.wav");
    m_dialog.AddMsgHandler(WM_COMMAND, MakeNotifyWParam(QZ_BN_CLICKED, 4),
                           &NoticeDialog::OnClicked);
    OpenWithMouseIn();
    EXPECT_EQ("img/f0.png", Look());
    m_harness.Click(150, 120);
    EXPECT_EQ("img/f1.png", Look());
    EXPECT_EQ(kOneClick, m_dialog.notices);
    EXPECT_EQ(1, m_dialog.clicks);
    EXPECT_EQ((std::vector<std::string>{"tick.wav", "tick.wav"}), PlayedSounds());

    m_harness.LButtonDblClk(150, 120); // starts a press like a button down
    m_harness.LButtonUp(150, 120);
    EXPECT_FALSE(m_pCheck->GetCheck());
    EXPECT_EQ(4u, m_dialog.notices.size());

    m_harness.LButtonDown(150, 120);
    m_harness.MouseMove(450, 350);
    Frame();
    m_harness.LButtonUp(450, 350);
    EXPECT_FALSE(m_pCheck->GetCheck());
    EXPECT_EQ(MakeNotice(QZ_BN_PRESSED, 4), m_dialog.notices.back());
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
}

// Disabled by the window's enabled state or greyed by the host's look state 3: a release
// inside is reported, the value stays.
TEST_F(CheckScene, ADisabledOrGreyedBoxReportsAReleaseInsideButKeepsItsValue)
{
    OpenWithMouseIn();
    m_pCheck->SetCheck(TRUE);
    const std::vector<std::pair<const char*, std::function<void(bool)>>> ways = {
        {"EnableWindow", [&](bool bOff) { m_pCheck->EnableWindow(!bOff); }},
        {"SetCtrlState", [&](bool bOff) { m_pCheck->SetCtrlState(bOff ? 3 : 1); }},
    };
    for (const auto& way : ways)
    {
        m_dialog.notices.clear();
        way.second(true);
        m_pCheck->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 120));
        m_pCheck->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(150, 120));
        EXPECT_TRUE(m_pCheck->GetCheck()) << way.first;
        EXPECT_EQ(kOneClick, m_dialog.notices) << way.first;
        EXPECT_EQ("img/f3.png", Look()) << way.first;
        way.second(false);
        EXPECT_EQ("img/f1.png", Look()) << way.first;
    }
}

// Look state 3 is also the hover look of an unchecked box, which must not block
// the toggle.
TEST_F(CheckScene, TheHoverLookShowsFramesThreeAndFourAndTheBoxStillToggles)
{
    m_pCheck->SetHoverLook(true);
    OpenWithMouseIn();
    EXPECT_EQ("img/f3.png", Look());
    m_harness.Click(150, 120);
    EXPECT_EQ("img/f4.png", Look());
    m_harness.MouseMove(450, 350);
    EXPECT_EQ("img/f1.png", Look());

    m_pCheck->EnableWindow(FALSE);
    m_harness.MouseMove(150, 120);
    EXPECT_EQ("img/f3.png", Look());
}

} // namespace

} // namespace ControlTest
