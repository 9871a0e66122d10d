// Showing, hiding, enabling, the mouse capture, hit tests, the mouse-leave check, software
// timers and the host's values.
#include "BaseWindowScene.h"

#include "framework/QzGuiHelper.h"
#include "platform/system/QzKernelHost.h"

#include <stdexcept>

namespace BaseWindowTest
{

using BaseWindowState = BaseWindowScene;

TEST_F(BaseWindowState, ShowAndHideSendShowWindowOnlyOnAChange)
{
    TestWindow window;
    window.ShowWindow(SW_SHOW);
    EXPECT_TRUE(window.IsWindowVisible());
    ASSERT_EQ(1u, window.seen.size());
    EXPECT_EQ(static_cast<UINT>(WM_SHOWWINDOW), window.seen[0].message);
    EXPECT_EQ(1u, window.seen[0].wParam);

    window.ShowWindow(SW_SHOW);
    EXPECT_EQ(1u, window.seen.size());
    EXPECT_EQ((std::vector<int>{SW_SHOW, SW_SHOW}), window.showing);

    // Every command other than SW_SHOW hides, SW_SHOWNORMAL included.
    window.ShowWindow(SW_SHOWNORMAL);
    EXPECT_FALSE(window.IsWindowVisible());
    ASSERT_EQ(2u, window.seen.size());
    EXPECT_EQ(0u, window.seen[1].wParam);
    window.ShowWindow(SW_HIDE);
    EXPECT_EQ(2u, window.seen.size());
    EXPECT_EQ((std::vector<int>{SW_SHOWNORMAL, SW_HIDE}), window.hiding);
}

TEST_F(BaseWindowState, ShowingAndHidingHooksCanVeto)
{
    TestWindow window;
    window.allowShow = 0;
    window.ShowWindow(SW_SHOW);
    EXPECT_FALSE(window.IsWindowVisible());
    EXPECT_TRUE(window.seen.empty());

    window.allowShow = 1;
    window.ShowWindow(SW_SHOW);
    window.allowHide = 0;
    window.ShowWindow(SW_HIDE);
    EXPECT_TRUE(window.IsWindowVisible());
    EXPECT_EQ(1u, window.seen.size());
}

TEST_F(BaseWindowState, HidingOrDisablingTheCaptureWindowReleasesTheCapture)
{
    TestWindow window;
    TestWindow other;
    Create(window);
    Create(other);
    window.ShowWindow(SW_SHOW);
    other.ShowWindow(SW_SHOW);

    window.SetCapture();
    EXPECT_TRUE(window.IsCapture());
    other.ShowWindow(SW_HIDE);
    other.EnableWindow(FALSE);
    other.ReleaseCapture();
    EXPECT_TRUE(window.IsCapture());

    window.ShowWindow(SW_HIDE);
    EXPECT_FALSE(window.IsCapture());

    window.SetCapture();
    EXPECT_FALSE(window.EnableWindow(FALSE));
    EXPECT_FALSE(window.IsCapture());
    EXPECT_FALSE(window.IsWindowEnabled());
    EXPECT_TRUE(window.EnableWindow(TRUE));
}

TEST_F(BaseWindowState, DestroyingTheCaptureWindowClearsTheManagersCapture)
{
    auto* pWindow = new TestWindow;
    Create(*pWindow);
    pWindow->SetCapture();
    ASSERT_EQ(pWindow, m_pMgr->GetCapture());
    delete pWindow;
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
}

TEST_F(BaseWindowState, HitTestUsesTheRegionOverTheRectangle)
{
    TestWindow window;
    window.MoveWindow(nullptr, 10, 20, 30, 40, TRUE);
    EXPECT_TRUE(window.PtInWindow(10, 20));
    EXPECT_TRUE(window.PtInWindow(39, 59));
    EXPECT_FALSE(window.PtInWindow(40, 30));
    EXPECT_FALSE(window.PtInWindow(20, 60));
    EXPECT_FALSE(window.PtInWindow(9, 30));

    window.SetRegion(CreateRectRgn(100, 100, 110, 110));
    EXPECT_TRUE(window.PtInWindow(105, 105));
    EXPECT_FALSE(window.PtInWindow(15, 25));
}

TEST_F(BaseWindowState, MouseLeaveIsNoticedOnceAndMarkedInDebugMode)
{
    TestWindow window;
    Create(window);
    window.MoveWindow(nullptr, 10, 10, 50, 50, TRUE);
    EXPECT_FALSE(window.CheckMouseLeave());

    m_harness.MouseMove(20, 20);
    window.SetMouseIn(true);
    EXPECT_TRUE(window.IsMouseOver());
    EXPECT_TRUE(window.CheckMouseLeave());
    EXPECT_EQ(0, window.leaves);

    CQzGuiHelper::Instance()->DebugOn();
    EXPECT_TRUE(window.CheckMouseLeave());
    const std::vector<QzTest::DrawCall> outlines =
        m_harness.Device().Calls(QzTest::DrawKind::Outline);
    ASSERT_EQ(1u, outlines.size());
    EXPECT_EQ(0xffff0000u, outlines[0].colour);
    EXPECT_EQ(60, outlines[0].x2);
    EXPECT_EQ(&window, CQzGuiHelper::Instance()->GetTargetWnd());

    CQzGuiHelper::Instance()->DebugOff();
    m_harness.MouseMove(200, 200);
    EXPECT_TRUE(window.CheckMouseLeave());
    EXPECT_EQ(1, window.leaves);
    EXPECT_FALSE(window.IsMouseIn());
    EXPECT_FALSE(window.CheckMouseLeave());
    EXPECT_EQ(1, window.leaves);
}

TEST_F(BaseWindowState, TimersFireOncePerDueFrameAndRestartWhenSetAgain)
{
    TestWindow window;
    std::vector<DWORD> fired;
    window.onTimer = [&](DWORD nId) { fired.push_back(nId); };
    EXPECT_EQ(1u, window.SetTimer(1, 100));
    window.SetTimer(2, 0);

    window.ProcessTimers();
    EXPECT_EQ(std::vector<DWORD>{2}, fired);
    m_harness.Advance(99);
    window.ProcessTimers();
    EXPECT_EQ((std::vector<DWORD>{2, 2}), fired);
    m_harness.Advance(1);
    window.ProcessTimers();
    EXPECT_EQ((std::vector<DWORD>{2, 2, 1, 2}), fired);

    // Setting id 1 again restarts it with the new elapse; it moves behind id 2.
    m_harness.Advance(40);
    window.SetTimer(1, 50);
    fired.clear();
    m_harness.Advance(49);
    window.ProcessTimers();
    EXPECT_EQ(std::vector<DWORD>{2}, fired);
    m_harness.Advance(1);
    window.ProcessTimers();
    EXPECT_EQ((std::vector<DWORD>{2, 2, 1}), fired);

    EXPECT_TRUE(window.KillTimer(2));
    EXPECT_FALSE(window.KillTimer(2));
    EXPECT_FALSE(window.HasTimer(2));
    EXPECT_TRUE(window.HasTimer(1));
}

TEST_F(BaseWindowState, TimersSurviveTheClockWrapAndHandlersThatKillTimers)
{
    m_harness.SetTime(0xFFFFFFF0u);
    TestWindow window;
    std::vector<DWORD> fired;
    window.onTimer = [&](DWORD nId)
    {
        fired.push_back(nId);
        window.KillTimer(nId);
        window.KillTimer(3);
    };
    window.SetTimer(1, 100);
    window.SetTimer(3, 100);

    m_harness.SetTime(0x53);
    window.ProcessTimers();
    EXPECT_TRUE(fired.empty());
    m_harness.SetTime(0x54);
    window.ProcessTimers();
    EXPECT_EQ(std::vector<DWORD>{1}, fired);
    EXPECT_FALSE(window.HasTimer(3));
}

TEST_F(BaseWindowState, UserFlagHasOnePosition)
{
    TestWindow window;
    EXPECT_FALSE(window.TestUserFlag(0));
    window.SetUserFlag(0);
    EXPECT_TRUE(window.TestUserFlag(0));
    window.ResetUserFlag(0);
    EXPECT_FALSE(window.TestUserFlag(0));
    try
    {
        window.SetUserFlag(1);
        FAIL() << "position 1 was accepted";
    }
    catch (const std::out_of_range& error)
    {
        EXPECT_STREQ("invalid bitset position", error.what());
    }
    EXPECT_THROW(window.TestUserFlag(2), std::out_of_range);
}

TEST_F(BaseWindowState, WithoutAManagerCreateFailsAndTheManagerIsReported)
{
    TestWindow window;
    EXPECT_FALSE(window.Create(nullptr));
    EXPECT_TRUE(m_harness.Log().Asserts().empty());
    EXPECT_EQ(nullptr, window.GetGuiMgr());
    EXPECT_EQ((std::vector<QzTest::AssertReport>{{"NULL != m_pQzGuiMgr", "QzBaseWindow", 248}}),
              m_harness.Log().Asserts());

    window.createResult = 0;
    EXPECT_FALSE(window.Create(m_pMgr));
    EXPECT_EQ(m_pMgr, window.GetGuiMgr());
}

} // namespace BaseWindowTest
