// Sent and posted messages: order, filters, conversion of posted characters.
#include "WindowsTestSupport.h"

using namespace QzTest;

TEST_F(SystemWindowsTest, SentMessageArrivesBeforeEverythingPostedEarlier)
{
    const HWND a = CreateWide();
    const HWND b = CreateAnsi();
    Recorded().clear();

    ASSERT_TRUE(PostMessageW(a, WM_USER + 1, 0, 0));
    ASSERT_TRUE(PostMessageA(b, WM_USER + 2, 0, 0));
    SendMessageW(b, WM_USER + 3, 0, 0);
    ASSERT_TRUE(PostMessageW(a, WM_USER + 4, 0, 0));
    EXPECT_EQ(PumpW(), 3);

    std::vector<UINT> order;
    for (const RecordedMessage& m : Recorded())
        order.push_back(m.msg);
    const std::vector<UINT> expected = {WM_USER + 3, WM_USER + 1, WM_USER + 2, WM_USER + 4};
    EXPECT_EQ(order, expected);
}

TEST_F(SystemWindowsTest, PeekFiltersByWindowTreeAndRangeAndCanLeaveTheMessage)
{
    const HWND parent = CreateWide();
    const HWND child = CreateWide(parent);
    const HWND other = CreateWide();
    PostMessageW(other, WM_USER, 1, 0);
    PostMessageW(child, WM_USER + 5, 2, 0);
    PostMessageW(parent, WM_USER + 9, 3, 0);
    PostMessageW(nullptr, WM_USER, 4, 0);

    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, parent, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(msg.hwnd, child); // the parent's filter takes its children
    ASSERT_TRUE(PeekMessageW(&msg, parent, WM_USER + 6, WM_USER + 10, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 3u);
    ASSERT_TRUE(PeekMessageW(&msg, reinterpret_cast<HWND>(-1), 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 4u);
    EXPECT_FALSE(PeekMessageW(&msg, child, WM_USER + 6, WM_USER + 10, PM_REMOVE));

    ASSERT_TRUE(PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 1u);
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 2u);
    EXPECT_FALSE(PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(SystemWindowsTest, PostRefusesBadWindowsAndPointerMessages)
{
    const HWND hwnd = CreateWide();
    DestroyWindow(hwnd);
    SetLastError(0);
    EXPECT_FALSE(PostMessageW(hwnd, WM_USER, 0, 0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));

    const HWND live = CreateWide();
    EXPECT_FALSE(PostMessageA(live, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("x")));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MESSAGE_SYNC_ONLY));
    MSG msg;
    EXPECT_FALSE(PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(SystemWindowsTest, DispatchOfAStaleMessageDoesNothing)
{
    const HWND hwnd = CreateWide();
    const MSG msg = {hwnd, WM_USER, 0, 0, 0, {0, 0}};
    DestroyWindow(hwnd);
    Recorded().clear();
    EXPECT_EQ(DispatchMessageW(&msg), 0);
    EXPECT_TRUE(Recorded().empty());
}

TEST_F(SystemWindowsTest, PostingToTheFocusWindowDeliversKeyInput)
{
    const HWND hwnd = CreateAnsi();
    SetFocus(hwnd);
    QzPlatform::Host::SetTime(500);
    QzPlatform::Host::SetCursorPos(7, 8);
    Recorded().clear();

    ASSERT_TRUE(PostMessageW(GetFocus(), WM_KEYDOWN, 'A', 1));
    ASSERT_TRUE(PostMessageW(GetFocus(), WM_CHAR, 'a', 1));
    MSG msg;
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.time, 500u);
    EXPECT_EQ(msg.pt.x, 7);
    EXPECT_TRUE(TranslateMessage(&msg));
    DispatchMessageW(&msg);
    EXPECT_EQ(PumpW(), 1); // TranslateMessage made no character of its own

    EXPECT_EQ(RecordedDeliveries(),
              (std::vector<Delivery>{{hwnd, WM_KEYDOWN, 'A'}, {hwnd, WM_CHAR, 'a'}}));
}

TEST_F(SystemWindowsTest, WideCharacterPostedIsReadAsLeadThenTrailByAnAnsiLoop)
{
    const HWND hwnd = CreateAnsi();
    PostMessageW(hwnd, WM_CHAR, 0x4E2D, 1);
    PostMessageW(hwnd, WM_CHAR, 'x', 1);

    MSG msg;
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(msg.wParam, 0xD6u);
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 0xD6u);
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, 0xD0u);
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.wParam, static_cast<WPARAM>('x'));
}

TEST_F(SystemWindowsTest, AnsiBytesPostedOneByOneAreReadAsOneWideCharacter)
{
    const HWND hwnd = CreateWide();
    PostMessageA(hwnd, WM_CHAR, 0xD6, 1);
    PostMessageA(hwnd, WM_CHAR, 0xD0, 1);
    PostMessageA(hwnd, WM_CHAR, 'y', 1);
    Recorded().clear();

    EXPECT_EQ(PumpW(), 2);
    EXPECT_EQ(RecordedWParams(WM_CHAR), (std::vector<WPARAM>{0x4E2D, 'y'}));
}
