// Focus, enabled state, visibility, parents, positions and the rectangle helpers.
#include "WindowsTestSupport.h"

#include "support/GeometryPrint.h"

using namespace QzTest;

namespace
{

HWND g_hFocusSeenInKillFocus = nullptr;

LRESULT CALLBACK FocusProbeProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_KILLFOCUS)
        g_hFocusSeenInKillFocus = GetFocus();
    return RecordingProcW(hwnd, msg, wParam, lParam);
}

} // namespace

TEST_F(SystemWindowsTest, FocusMovesWithKillFocusThenSetFocus)
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = FocusProbeProc;
    wc.lpszClassName = L"FocusProbe";
    RegisterClassW(&wc);
    const HWND a =
        CreateWindowExW(0, L"FocusProbe", L"", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const HWND b = CreateAnsi();
    EXPECT_EQ(SetFocus(a), nullptr);
    Recorded().clear();

    EXPECT_EQ(SetFocus(b), a);
    EXPECT_EQ(RecordedDeliveries(),
              (std::vector<Delivery>{{a, WM_KILLFOCUS, reinterpret_cast<WPARAM>(b)},
                                     {b, WM_SETFOCUS, reinterpret_cast<WPARAM>(a)}}));
    EXPECT_EQ(g_hFocusSeenInKillFocus, b);
    EXPECT_EQ(GetFocus(), b);

    Recorded().clear();
    EXPECT_EQ(SetFocus(b), b);
    EXPECT_TRUE(Recorded().empty());
}

TEST_F(SystemWindowsTest, DisabledWindowsCannotTakeTheFocusAndLoseIt)
{
    const HWND parent = CreateWide();
    const HWND child = CreateWide(parent);
    SetFocus(child);
    Recorded().clear();

    EXPECT_FALSE(EnableWindow(parent, FALSE)); // was enabled
    const std::vector<RecordedMessage> enables = RecordedOf(WM_ENABLE);
    ASSERT_EQ(enables.size(), 1u);
    EXPECT_EQ(enables[0].wParam, static_cast<WPARAM>(FALSE));
    EXPECT_EQ(RecordedOf(WM_KILLFOCUS).size(), 1u);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_FALSE(IsWindowEnabled(parent));
    EXPECT_TRUE(IsWindowEnabled(child));

    EXPECT_EQ(SetFocus(child), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);

    Recorded().clear();
    EXPECT_TRUE(EnableWindow(parent, FALSE)); // already disabled: no message
    EXPECT_TRUE(Recorded().empty());
    EXPECT_TRUE(EnableWindow(parent, TRUE));
    EXPECT_EQ(RecordedOf(WM_ENABLE).at(0).wParam, static_cast<WPARAM>(TRUE));
    SetFocus(child);
    EXPECT_EQ(GetFocus(), child);
}

TEST_F(SystemWindowsTest, ShowWindowReportsThePreviousStateAndHidingMovesTheFocusUp)
{
    const HWND parent = CreateWide();
    const HWND child = CreateWide(parent, WS_VISIBLE);
    EXPECT_FALSE(IsWindowVisible(child)); // its parent is hidden
    Recorded().clear();

    EXPECT_FALSE(ShowWindow(parent, SW_SHOW));
    EXPECT_TRUE(ShowWindow(parent, SW_SHOWNORMAL));
    EXPECT_EQ(RecordedOf(WM_SHOWWINDOW).size(), 1u);
    EXPECT_TRUE(IsWindowVisible(child));

    SetFocus(child);
    EXPECT_TRUE(ShowWindow(child, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(child));
    EXPECT_EQ(GetFocus(), parent);
}

TEST_F(SystemWindowsTest, ParentsChangeButNeverIntoACycle)
{
    const HWND a = CreateWide();
    const HWND b = CreateWide(a);
    const HWND c = CreateWide();
    EXPECT_EQ(GetParent(b), a);
    EXPECT_EQ(GetParent(a), nullptr);
    EXPECT_TRUE(IsChild(a, b));

    EXPECT_EQ(SetParent(b, c), a);
    EXPECT_EQ(GetParent(b), c);
    EXPECT_FALSE(IsChild(a, b));

    SetLastError(0);
    EXPECT_EQ(SetParent(c, b), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(SetParent(c, c), nullptr);
    EXPECT_EQ(GetParent(c), nullptr);

    const HWND owned =
        CreateWindowExW(0, kWideClass, L"", 0, 0, 0, 1, 1, a, nullptr, nullptr, nullptr);
    EXPECT_EQ(GetParent(owned), a); // the owner of a top-level window
    EXPECT_FALSE(IsChild(a, owned));
    EXPECT_EQ(SetParent(a, owned), nullptr); // a would hang below what it owns
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    DestroyWindow(a);
    EXPECT_FALSE(IsWindow(owned));
}

TEST_F(SystemWindowsTest, RectanglesAndCoordinatesOfNestedWindows)
{
    const HWND main = CreateWindowExW(0, kWideClass, L"", 0, 100, 50, 800, 600, nullptr, nullptr,
                                      nullptr, nullptr);
    const HWND child = CreateWindowExW(0, kWideClass, L"", WS_CHILD, 10, 20, 30, 40, main, nullptr,
                                       nullptr, nullptr);
    RECT rect;
    ASSERT_TRUE(GetWindowRect(main, &rect));
    EXPECT_EQ(rect, (RECT{100, 50, 900, 650}));
    ASSERT_TRUE(GetWindowRect(child, &rect));
    EXPECT_EQ(rect, (RECT{110, 70, 140, 110}));
    ASSERT_TRUE(GetClientRect(child, &rect));
    EXPECT_EQ(rect, (RECT{0, 0, 30, 40}));

    POINT pt = {115, 75};
    ASSERT_TRUE(ScreenToClient(child, &pt));
    EXPECT_EQ(pt, (POINT{5, 5}));
    ASSERT_TRUE(ClientToScreen(main, &pt));
    EXPECT_EQ(pt, (POINT{105, 55}));
    EXPECT_FALSE(GetWindowRect(nullptr, &rect));
}

TEST_F(SystemWindowsTest, MoveSendsMoveAndSizeOnlyForWhatChanged)
{
    const HWND hwnd = CreateWide();
    Recorded().clear();
    ASSERT_TRUE(MoveWindow(hwnd, 5, 6, 10, 10, TRUE));
    std::vector<UINT> expected = {WM_MOVE};
    EXPECT_EQ(RecordedNumbers(hwnd), expected);

    Recorded().clear();
    ASSERT_TRUE(MoveWindow(hwnd, 5, 6, 20, -3, FALSE));
    expected = {WM_SIZE};
    EXPECT_EQ(RecordedNumbers(hwnd), expected);
    EXPECT_EQ(Recorded()[0].lParam, MAKELPARAM(20, 0));

    Recorded().clear();
    ASSERT_TRUE(SetWindowPos(hwnd, nullptr, 0, 0, 99, 99, SWP_NOSIZE | SWP_NOZORDER));
    RECT rect;
    GetWindowRect(hwnd, &rect);
    EXPECT_EQ(rect.left, 0);
    EXPECT_EQ(rect.right, 20);
}

TEST(RectHelpersTest, PointsAndEmptiness)
{
    RECT rect;
    SetRect(&rect, 0, 0, 10, 5);
    EXPECT_TRUE(PtInRect(&rect, {0, 0}));
    EXPECT_TRUE(PtInRect(&rect, {9, 4}));
    EXPECT_FALSE(PtInRect(&rect, {10, 4})); // right and bottom edges are outside
    EXPECT_FALSE(PtInRect(&rect, {9, 5}));
    EXPECT_FALSE(PtInRect(nullptr, {1, 1}));
    EXPECT_FALSE(IsRectEmpty(&rect));
    RECT flat = {3, 3, 3, 9};
    EXPECT_TRUE(IsRectEmpty(&flat));
    RECT inverted = {5, 5, 1, 9};
    EXPECT_TRUE(IsRectEmpty(&inverted));
    EXPECT_TRUE(IsRectEmpty(nullptr));
}

TEST(RectHelpersTest, OffsetInflateIntersectUnion)
{
    RECT rect = {0, 0, 10, 10};
    OffsetRect(&rect, 5, -5);
    InflateRect(&rect, 2, 1);
    RECT expected = {3, -6, 17, 6};
    EXPECT_TRUE(EqualRect(&rect, &expected));

    RECT a = {0, 0, 10, 10};
    RECT b = {5, 5, 20, 20};
    RECT out;
    ASSERT_TRUE(IntersectRect(&out, &a, &b));
    expected = {5, 5, 10, 10};
    EXPECT_TRUE(EqualRect(&out, &expected));
    RECT far = {30, 30, 40, 40};
    EXPECT_FALSE(IntersectRect(&out, &a, &far));
    EXPECT_TRUE(IsRectEmpty(&out));

    RECT empty = {0, 0, 0, 0};
    ASSERT_TRUE(UnionRect(&out, &empty, &b));
    EXPECT_TRUE(EqualRect(&out, &b));
    ASSERT_TRUE(UnionRect(&out, &a, &far));
    expected = {0, 0, 40, 40};
    EXPECT_TRUE(EqualRect(&out, &expected));
}
