// Placing windows: the WM_SIZE/WM_MOVE a move sends, children placed from their parent,
// the rectangle forms, centring, and conversions between the host window and a window.
#include "BaseWindowScene.h"

#include <climits>

namespace BaseWindowTest
{

using BaseWindowGeometry = BaseWindowScene;

TEST_F(BaseWindowGeometry, MoveSendsSizeThenMoveAndOnlyWhatChanged)
{
    TestWindow window;
    window.MoveWindow(nullptr, 10, 20, 30, 40, TRUE);
    window.MoveWindow(nullptr, 10, 20, 30, 40, TRUE);
    window.MoveWindow(nullptr, 11, 20, 30, 40, TRUE);
    window.MoveWindow(nullptr, 11, 20, 30, 41, TRUE);
    std::vector<std::vector<LPARAM>> sent;
    for (const Seen& s : window.seen)
        sent.push_back({static_cast<LPARAM>(s.message), static_cast<LPARAM>(s.wParam), s.lParam});
    const std::vector<std::vector<LPARAM>> expected = {
        {WM_SIZE, 30, 40}, {WM_MOVE, 10, 20}, {WM_MOVE, 11, 20}, {WM_SIZE, 30, 41}};
    EXPECT_EQ(expected, sent);
}

TEST_F(BaseWindowGeometry, ChildIsPlacedFromItsParentsTopLeftAtTheTimeOfItsMove)
{
    TestWindow parent(QZ_WND_DIALOG, 300);
    TestWindow child(QZ_WND_BUTTON, 7);
    child.SetParent(&parent);
    parent.MoveWindow(nullptr, 100, 50, 400, 300, TRUE);

    RECT rcOut = {};
    child.MoveWindow(&rcOut, 10, 20, 30, 40, TRUE);
    EXPECT_EQ((RECT{110, 70, 140, 110}), child.GetWindowRect());
    EXPECT_EQ((RECT{10, 20, 40, 60}), child.GetLocalRect());
    EXPECT_EQ((RECT{10, 20, 40, 60}), rcOut);

    parent.MoveWindow(nullptr, 0, 0, 400, 300, TRUE);
    EXPECT_EQ((RECT{110, 70, 140, 110}), child.GetWindowRect());
    child.SetPos(10, 20);
    EXPECT_EQ((RECT{10, 20, 40, 60}), child.GetWindowRect());
    EXPECT_EQ(300u | (7u << 16), child.GetFullId());
}

// A dialog flown with a hostile step ends at the edge of the int range; its children and far
// edges stop there too (found by fuzzing layouts on live windows: FlyInStep -2147436847).
TEST_F(BaseWindowGeometry, EdgesBeyondTheIntRangeStopAtIt)
{
    TestWindow parent(QZ_WND_DIALOG, 300);
    TestWindow child(QZ_WND_BUTTON, 7);
    child.SetParent(&parent);
    parent.SetPos(INT_MIN, INT_MAX);
    EXPECT_EQ((RECT{INT_MIN, INT_MAX, INT_MIN, INT_MAX}), parent.GetWindowRect());
    parent.MoveWindow(nullptr, INT_MIN, INT_MAX - 5, 400, 300, TRUE);
    EXPECT_EQ((RECT{INT_MIN, INT_MAX - 5, INT_MIN + 400, INT_MAX}), parent.GetWindowRect());
    child.MoveWindow(nullptr, -360, 20, 30, INT_MAX, TRUE);
    EXPECT_EQ((RECT{INT_MIN, INT_MAX, INT_MIN + 30, INT_MAX}), child.GetWindowRect());
    EXPECT_EQ((RECT{-360, 20, -330, INT_MAX}), child.GetLocalRect());
    parent.MoveWindow(RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, TRUE);
    EXPECT_EQ((RECT{INT_MIN, INT_MIN, -1, -1}), parent.GetWindowRect());
}

TEST_F(BaseWindowGeometry, InvertedRectanglesAreReportedAndStillMoved)
{
    TestWindow window;
    window.MoveWindow(RECT{50, 0, 40, 10}, TRUE);
    ASSERT_EQ(1u, m_harness.Log().Asserts().size());
    EXPECT_EQ((QzTest::AssertReport{"rect.left <= rect.right", "QzBaseWindow", 1229}),
              m_harness.Log().Asserts()[0]);
    EXPECT_EQ(-10, window.GetWidth());

    const RECT rcInverted = {30, 0, 20, 10};
    const RECT& rcMoved = window.MoveWindow(&rcInverted, TRUE);
    ASSERT_EQ(2u, m_harness.Log().Asserts().size());
    EXPECT_EQ((QzTest::AssertReport{"lpRect->left <= lpRect->right", "QzBaseWindow", 1239}),
              m_harness.Log().Asserts()[1]);
    EXPECT_EQ((RECT{30, 0, 20, 10}), rcMoved);

    window.seen.clear();
    const RECT& rcUnmoved = window.MoveWindow(nullptr, TRUE);
    EXPECT_EQ(&window.GetWindowRect(), &rcUnmoved);
    EXPECT_TRUE(window.seen.empty());
}

TEST_F(BaseWindowGeometry, CentresInTheParentOrOnTheScreen)
{
    TestWindow parent(QZ_WND_DIALOG, 300);
    TestWindow child(QZ_WND_BUTTON, 7);
    Create(parent);
    Create(child, &parent);
    parent.MoveWindow(nullptr, 50, 60, 200, 100, TRUE);
    child.MoveWindow(nullptr, 0, 0, 40, 20, TRUE);
    child.CenterWindow(2, false);
    EXPECT_EQ((RECT{130, 100, 170, 120}), child.GetWindowRect());

    // On the 1024 x 768 screen, by its own size or by the first frame of its section (20 x 20).
    TestWindow top(QZ_WND_DIALOG, 301);
    Create(top);
    top.MoveWindow(nullptr, 5, 7, 100, 40, TRUE);
    top.CenterWindow(0, true);
    top.CenterWindow(1, false);
    EXPECT_EQ((POINT{462, 364}), (POINT{top.GetX(), top.GetY()}));
    top.SetAniName("Centre20");
    top.CenterWindow(2, true);
    EXPECT_EQ((RECT{502, 374, 602, 414}), top.GetWindowRect());

    TestWindow orphan;
    orphan.MoveWindow(nullptr, 5, 7, 100, 40, TRUE);
    orphan.CenterWindow(2, false);
    EXPECT_EQ(5, orphan.GetX());
}

TEST_F(BaseWindowGeometry, ConvertsThroughTheClientOriginAndTheScreenAdapter)
{
    m_harness.MoveMainWindow(100, 50);
    TestWindow window;
    Create(window);
    window.MoveWindow(nullptr, 10, 20, 30, 40, TRUE);

    POINT pt = {150, 100};
    window.ScreenToClient(&pt);
    EXPECT_EQ((POINT{40, 30}), pt);
    window.ClientToScreen(&pt);
    EXPECT_EQ((POINT{150, 100}), pt);

    // The host shows the 1024 x 768 logical screen twice as large.
    QzPlatform::GetScreenAdapter().SetWindowSize(2048, 1536);
    pt = {300, 150};
    window.ScreenToClient(&pt);
    EXPECT_EQ((POINT{90, 30}), pt);
    RECT rc = {0, 0, 30, 40};
    window.ClientToScreen(&rc);
    EXPECT_EQ((RECT{120, 90, 180, 170}), rc);
    window.ScreenToClient(&rc);
    EXPECT_EQ((RECT{0, 0, 30, 40}), rc);

    TestWindow orphan; // no manager: reported, nothing converted
    pt = {1, 2};
    orphan.ScreenToClient(&pt);
    EXPECT_EQ((POINT{1, 2}), pt);
    EXPECT_EQ((std::vector<QzTest::AssertReport>{{"NULL != m_pQzGuiMgr", "QzBaseWindow", 248}}),
              m_harness.Log().Asserts());
}

} // namespace BaseWindowTest
