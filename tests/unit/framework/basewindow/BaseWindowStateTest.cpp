// Showing, hiding, enabling, the mouse capture, hit tests, the mouse-leave check, software
// timers and the host's values.
#include "BaseWindowScene.h"

#include "framework/QzGuiHelper.h"
#include "platform/system/kernel/QzKernelHost.h"

namespace BaseWindowTest
{

using BaseWindowState = BaseWindowScene;

TEST_F(BaseWindowState, ShowAndHideSendShowWindowOnlyOnAChange)
{
    // Every command other than SW_SHOW hides, SW_SHOWNORMAL included.
    TestWindow window;
    std::vector<WPARAM> shown;
    for (int nCmdShow : {SW_SHOW, SW_SHOW, SW_SHOWNORMAL, SW_HIDE})
        window.ShowWindow(nCmdShow);
    for (const Seen& s : window.seen)
        shown.push_back(s.message == WM_SHOWWINDOW ? s.wParam : 99);
    EXPECT_EQ((std::vector<WPARAM>{1, 0}), shown);
    EXPECT_EQ((std::vector<int>{SW_SHOW, SW_SHOW}), window.showing);
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
    other.ShowWindow(SW_HIDE);
    other.EnableWindow(FALSE);
    other.ReleaseCapture();
    EXPECT_TRUE(window.IsCapture());

    window.ShowWindow(SW_HIDE);
    EXPECT_FALSE(window.IsCapture());

    window.SetCapture();
    EXPECT_FALSE(window.EnableWindow(FALSE));
    EXPECT_FALSE(window.IsCapture());
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
    const std::vector<BOOL> hits = {window.PtInWindow(10, 20), window.PtInWindow(39, 59),
                                    window.PtInWindow(40, 30), window.PtInWindow(20, 60),
                                    window.PtInWindow(9, 30)};
    EXPECT_EQ((std::vector<BOOL>{TRUE, TRUE, FALSE, FALSE, FALSE}), hits);

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
    EXPECT_EQ("outline 10,10,60,60 #FFFF0000\n", Trace(QzTest::DrawKind::Outline));
    EXPECT_EQ(&window, CQzGuiHelper::Instance()->GetTargetWnd());

    CQzGuiHelper::Instance()->DebugOff();
    m_harness.MouseMove(200, 200);
    EXPECT_TRUE(window.CheckMouseLeave());
    EXPECT_FALSE(window.CheckMouseLeave());
    EXPECT_EQ(1, window.leaves);
}

TEST_F(BaseWindowState, TimersFireOncePerDueFrameAndRestartWhenSetAgain)
{
    TestWindow window;
    std::vector<DWORD> fired;
    window.onTimer = [&](DWORD nId) { fired.push_back(nId); };
    window.SetTimer(1, 100);
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

TEST_F(BaseWindowState, WithoutAManagerCreateFailsAndTheManagerIsReported)
{
    TestWindow window;
    EXPECT_FALSE(window.Create(nullptr));
    EXPECT_TRUE(m_harness.Log().Asserts().empty()); // reported on use, not at Create
    EXPECT_EQ(nullptr, window.GetGuiMgr());
    EXPECT_EQ(1u, m_harness.Log().Asserts().size());

    window.createResult = 0;
    EXPECT_FALSE(window.Create(m_pMgr));
    EXPECT_EQ(m_pMgr, window.GetGuiMgr());
}

} // namespace BaseWindowTest
