// Input routing: which dialog a click reaches, the z-order it leaves, the capture, the key
// focus window and the wheel's coordinates.
#include "ManagerFixture.h"

#include "framework/QzDialogTrans.h"

namespace QzGuiManagerTest
{

namespace
{

using RoutingTest = ManagerFixture;
using Ids = std::vector<DWORD>;

TEST_F(RoutingTest, AClickTheUpperDialogRefusesFallsToTheDialogBelow)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2);

    pUpper->refuseMouse = true;
    m_harness.LButtonDown(150, 150);
    EXPECT_EQ(1, CountOf(pUpper->mouse, WM_LBUTTONDOWN));
    ASSERT_EQ(1, CountOf(pLower->mouse, WM_LBUTTONDOWN));
    EXPECT_EQ(MAKELPARAM(150, 150), pLower->mouse.back().lParam);
}

TEST_F(RoutingTest, ClickToTopRaisesBelowTheTopmostDialogsWhichKeepTheirOrder)
{
    AddDialog(3); // topmost
    AddDialog(1);
    AddDialog(4); // topmost
    AddDialog(2);
    AddDialog(5); // ClickToTop=0
    // Adding and showing a dialog raises it, under the topmost ones, even one that clicks and
    // showings leave in place.
    EXPECT_EQ((Ids{1, 2, 5, 3, 4}), ZOrder());

    m_harness.Click(50, 50); // only dialog 1 there
    EXPECT_EQ((Ids{2, 5, 1, 3, 4}), ZOrder());
    m_harness.Click(50, 450); // dialog 5 stays where it is
    EXPECT_EQ((Ids{2, 5, 1, 3, 4}), ZOrder());

    m_pMgr->BringToTop(DWORD{2});
    m_pMgr->BringToTop(DWORD{99});
    EXPECT_EQ((Ids{5, 1, 2, 3, 4}), ZOrder());
}

TEST_F(RoutingTest, ATransparentDialogPassesClicksOnItsSurfaceAndKeepsItsPlace)
{
    ProbeDialog* pBelow = AddDialog(1);
    QzGui::CQzDialogTrans trans(6, nullptr);
    m_pMgr->AddDialog(&trans, nullptr, false);
    ProbeCtrl* pButton = AddCtrl(&trans, 10);
    trans.ShowWindow(SW_SHOW);
    AddDialog(2, false); // registered above, hidden
    EXPECT_EQ((Ids{1, 6, 2}), ZOrder());

    m_harness.LButtonDown(30, 30); // its button
    EXPECT_EQ(1, CountOf(pButton->seen, WM_LBUTTONDOWN));
    EXPECT_TRUE(pBelow->mouse.empty());
    EXPECT_EQ((Ids{1, 6, 2}), ZOrder());
    m_harness.LButtonUp(30, 30);

    m_harness.LButtonDown(150, 150); // an empty part of it
    EXPECT_EQ(1, CountOf(pBelow->mouse, WM_LBUTTONDOWN));
    EXPECT_EQ((Ids{6, 2, 1}), ZOrder());
    m_pMgr->RemoveDialog(&trans);
}

TEST_F(RoutingTest, TheCaptureWindowGetsEveryMouseMessageWherever)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2);
    m_pMgr->SetCapture(pLower);

    EXPECT_EQ(1, m_pMgr->OnMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(350, 350)));
    EXPECT_EQ(1, m_pMgr->OnMessage(WM_RBUTTONUP, 0, MAKELPARAM(900, 700)));
    EXPECT_EQ(2u, pLower->mouse.size());
    EXPECT_TRUE(pUpper->mouse.empty());

    m_pMgr->ReleaseCapture();
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_RBUTTONUP, 0, MAKELPARAM(900, 700)));
}

TEST_F(RoutingTest, ADialogHoldsTheCaptureFromButtonDownToButtonUp)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2);

    m_harness.LButtonDown(50, 50);
    EXPECT_TRUE(m_pMgr->IsCapture(pLower));
    m_harness.MouseMove(350, 350); // over dialog 2 only
    m_harness.LButtonUp(350, 350);
    EXPECT_EQ(1, CountOf(pLower->mouse, WM_MOUSEMOVE));
    EXPECT_EQ(1, CountOf(pLower->mouse, WM_LBUTTONUP));
    EXPECT_TRUE(pUpper->mouse.empty());
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
}

TEST_F(RoutingTest, KeysGoToTheKeyFocusWindowWhileItCanTakeThem)
{
    ProbeDialog* pDialog = AddDialog(1);
    ProbeCtrl* pBox = AddCtrl(pDialog, 20);
    pBox->answer = 7;
    m_pMgr->SetKeyFocus(pBox);

    const UINT keyMessages[] = {WM_KEYDOWN,
                                WM_KEYUP,
                                WM_CHAR,
                                WM_INPUTLANGCHANGEREQUEST,
                                WM_INPUTLANGCHANGE,
                                WM_IME_STARTCOMPOSITION,
                                WM_IME_COMPOSITION,
                                WM_IME_SETCONTEXT,
                                WM_IME_KEYUP};
    pBox->seen.clear();
    for (UINT message : keyMessages)
        EXPECT_EQ(7, m_pMgr->OnMessage(message, 'a', 1)) << message;
    EXPECT_EQ(std::size(keyMessages), pBox->seen.size());
    // Just outside the ranges 269..271 and 641..657.
    const UINT otherMessages[] = {WM_SYSKEYDOWN, 268, 272, 640, 658};
    for (UINT message : otherMessages)
        EXPECT_EQ(0, m_pMgr->OnMessage(message, 'a', 1)) << message;
    pBox->seen.clear();

    // Through the host window, as a user types.
    m_harness.Char(L'x');
    ASSERT_EQ(1u, pBox->seen.size());
    EXPECT_EQ(static_cast<WPARAM>('x'), pBox->seen[0].wParam);

    // Mouse messages are routed as without a key focus.
    m_harness.LButtonDown(200, 200);
    EXPECT_EQ(1, CountOf(pDialog->mouse, WM_LBUTTONDOWN));
}

TEST_F(RoutingTest, AHiddenOrDisabledOrDestroyedKeyFocusWindowLosesTheKeys)
{
    ProbeDialog* pDialog = AddDialog(1);
    ProbeCtrl* pBox = AddCtrl(pDialog, 20);

    m_pMgr->SetKeyFocus(pBox);
    pBox->EnableWindow(FALSE);
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_CHAR, 'a', 1));
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());

    pBox->EnableWindow(TRUE);
    m_pMgr->SetKeyFocus(pBox);
    pDialog->ShowWindow(SW_HIDE);
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_KEYDOWN, 'A', 1));
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());

    pDialog->ShowWindow(SW_SHOW);
    m_pMgr->SetKeyFocus(pBox);
    m_ctrls.clear();
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_CHAR, 'a', 1));
}

TEST_F(RoutingTest, RemovingADialogDropsItsFocusCaptureAndActiveState)
{
    ProbeDialog* pDialog = AddDialog(1);
    ProbeCtrl* pBox = AddCtrl(pDialog, 20);
    m_pMgr->BringToTop(pDialog);
    m_pMgr->SetKeyFocus(pBox);
    m_pMgr->SetCapture(pBox);

    m_pMgr->RemoveDialog(pDialog);
    EXPECT_FALSE(pDialog->IsWindowVisible());
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    EXPECT_EQ(nullptr, m_pMgr->GetActiveDialog());
}

TEST_F(RoutingTest, DestroyingARegisteredDialogUnregistersIt)
{
    AddDialog(3); // topmost
    AddDialog(1);
    m_pMgr->BringToTop(m_dialogs[0].get());
    m_pMgr->SetCapture(m_dialogs[0].get());

    m_dialogs.erase(m_dialogs.begin());
    EXPECT_EQ((Ids{1}), ZOrder());
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    m_pMgr->BringToTop(DWORD{1}); // walks the topmost list, which must not hold dialog 3
    EXPECT_EQ(1u, m_pMgr->GetActiveDialog()->GetId());
}

TEST_F(RoutingTest, TheWheelReachesDialogsInClientCoordinates)
{
    ProbeDialog* pDialog = AddDialog(9); // (300, 300)..(500, 400)
    m_harness.MoveMainWindow(100, 50);

    m_harness.Wheel(500, 400, -120);
    ASSERT_EQ(1, CountOf(pDialog->mouse, WM_MOUSEWHEEL));
    EXPECT_EQ(MAKELPARAM(400, 350), pDialog->mouse.back().lParam);
    EXPECT_EQ(-120, GET_WHEEL_DELTA_WPARAM(pDialog->mouse.back().wParam));
}

TEST_F(RoutingTest, MouseMovesAreRememberedAndOtherMessagesAreNotRouted)
{
    ProbeDialog* pLower = AddDialog(1);
    m_harness.MouseMove(40, 60);
    EXPECT_TRUE(m_pMgr->IsUnderMouse(pLower));

    pLower->mouse.clear();
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_TIMER, 0, MAKELPARAM(40, 60)));
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_MOUSEFIRST - 1, 0, MAKELPARAM(40, 60)));
    EXPECT_TRUE(pLower->mouse.empty());
}

TEST_F(RoutingTest, HiddenDialogsAndDialogsWithAParentAreSkipped)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2, false);
    m_harness.LButtonDown(150, 150);
    EXPECT_TRUE(pUpper->mouse.empty());
    EXPECT_EQ(1, CountOf(pLower->mouse, WM_LBUTTONDOWN));
    m_harness.LButtonUp(150, 150);

    ProbeDialog child(2, nullptr);
    m_pMgr->AddDialog(&child, pLower, false);
    child.ShowWindow(SW_SHOW);
    m_harness.LButtonDown(350, 350);
    EXPECT_TRUE(child.mouse.empty());
    m_pMgr->RemoveDialog(&child);
}

TEST_F(RoutingTest, DialogFromPointFollowsRectangleRules)
{
    AddDialog(1);
    AddDialog(2);
    const auto idAt = [this](POINT pt)
    {
        CQzDialog* pDialog = m_pMgr->DialogFromPoint(pt);
        return pDialog ? pDialog->GetId() : 0u;
    };
    EXPECT_EQ((Ids{2, 1, 2, 0}),
              (Ids{idAt({100, 100}), idAt({99, 99}), idAt({399, 399}), idAt({400, 400})}));
    m_pMgr->SetDialogsShown(false);
    EXPECT_EQ(nullptr, m_pMgr->DialogFromPoint({50, 50}));
    m_pMgr->PinDialog(m_dialogs[0].get());
    EXPECT_EQ(1u, m_pMgr->DialogFromPoint({150, 150})->GetId());
    m_pMgr->UnhideDialogs();
    EXPECT_EQ(2u, m_pMgr->DialogFromPoint({150, 150})->GetId());
}

} // namespace

} // namespace QzGuiManagerTest
