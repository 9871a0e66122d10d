#include "support/QzHarness.h"

#include "platform/services/QzLog.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

struct Seen
{
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

} // namespace

TEST(Harness, MouseInputReachesTheMainWindowInClientCoordinatesInOrder)
{
    QzTest::Harness harness;
    std::vector<Seen> seen;
    harness.SetMessageHandler(
        [&](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT
        {
            if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
                seen.push_back({message, wParam, lParam});
            return 0;
        });
    harness.MoveMainWindow(100, 50);

    harness.MouseMove(10, 20);
    harness.Click(30, 40);
    harness.Wheel(500, 400, -120);

    ASSERT_EQ(4u, seen.size());
    EXPECT_EQ(static_cast<UINT>(WM_MOUSEMOVE), seen[0].message);
    EXPECT_EQ(MAKELPARAM(10, 20), seen[0].lParam);
    EXPECT_EQ(static_cast<UINT>(WM_LBUTTONDOWN), seen[1].message);
    EXPECT_EQ(static_cast<WPARAM>(MK_LBUTTON), seen[1].wParam);
    EXPECT_EQ(static_cast<UINT>(WM_LBUTTONUP), seen[2].message);
    EXPECT_EQ(MAKELPARAM(30, 40), seen[2].lParam);
    EXPECT_EQ(static_cast<UINT>(WM_MOUSEWHEEL), seen[3].message);
    EXPECT_EQ(-120, GET_WHEEL_DELTA_WPARAM(seen[3].wParam));
    EXPECT_EQ(MAKELPARAM(500, 400), seen[3].lParam);
    POINT cursor = {};
    GetCursorPos(&cursor);
    EXPECT_EQ(130, cursor.x);
    EXPECT_EQ(90, cursor.y);
}

TEST(Harness, KeysGoToTheFocusedWindowAndSetTheKeyState)
{
    QzTest::Harness harness;
    std::vector<Seen> seen;
    harness.SetMessageHandler(
        [&](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT
        {
            if (message == WM_KEYDOWN || message == WM_KEYUP || message == WM_CHAR)
                seen.push_back({message, wParam, lParam});
            return 0;
        });

    harness.KeyDown(VK_CONTROL);
    EXPECT_TRUE(GetKeyState(VK_CONTROL) & 0x8000);
    harness.KeyUp(VK_CONTROL);
    EXPECT_FALSE(GetKeyState(VK_CONTROL) & 0x8000);
    harness.Type(L"a\x4E2D");

    ASSERT_EQ(4u, seen.size());
    EXPECT_EQ(static_cast<UINT>(WM_KEYDOWN), seen[0].message);
    EXPECT_EQ(static_cast<UINT>(WM_KEYUP), seen[1].message);
    EXPECT_EQ(static_cast<WPARAM>('a'), seen[2].wParam);
    EXPECT_EQ(static_cast<WPARAM>(0x4E2D), seen[3].wParam);
}

TEST(Harness, FramesMoveTheManualClockAndRecordDrawing)
{
    QzTest::Harness harness;
    EXPECT_EQ(QzTest::Harness::kStartTime, harness.Now());

    harness.Frame([] { QzPlatform::GetRenderDevice().FillRect(0, 0, 4, 4, 0xFF00FF00); });
    harness.Frame();

    EXPECT_EQ(QzTest::Harness::kStartTime + 2 * QzTest::Harness::kFrameMs, harness.Now());
    ASSERT_EQ(1u, harness.Device().Calls().size());
    EXPECT_EQ(0xFF00FF00u, harness.Device().Calls()[0].colour);
}

TEST(Harness, CapturesLogRecordsWhileItLives)
{
    QzTest::Harness harness;
    QzPlatform::LogEvent("data error", "HarnessTest", 7, {QzPlatform::LogText("file_name", "x")});
    ASSERT_NE(nullptr, harness.Log().Find("data error"));
    EXPECT_EQ("x", harness.Log().Find("data error")->Get("file_name"));
}
