// Handles, creation and destruction of hosted windows.
#include "WindowsTestSupport.h"

#include "platform/system/kernel/HandleTable.h"
#include "platform/system/window/HostedWindow.h"

#include <memory>

using namespace QzTest;

namespace
{

LRESULT CALLBACK FailCreateProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'F', L""});
    if (msg == WM_CREATE)
        return -1;
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK FailNcCreateProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    Recorded().push_back({hwnd, msg, wParam, lParam, 'N', L""});
    return msg == WM_NCCREATE ? FALSE : 0;
}

LRESULT CALLBACK SelfDestroyingProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_USER)
    {
        DestroyWindow(hwnd);
        return 7;
    }
    return RecordingProcW(hwnd, msg, wParam, lParam);
}

HWND CreateOfClass(const wchar_t* className, WNDPROC proc)
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = proc;
    wc.lpszClassName = className;
    RegisterClassW(&wc);
    return CreateWindowExW(0, className, L"", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
}

} // namespace

TEST(HandleTableTest, ReusedSlotGetsNewHandleAndOldOneStaysInvalid)
{
    QzPlatform::CHandleTable<int> table(0x7F, 4);
    const uint64_t first = table.Add(std::make_unique<int>(1));
    ASSERT_NE(table.Remove(first), nullptr);
    const uint64_t second = table.Add(std::make_unique<int>(2));

    EXPECT_EQ(table.SlotIndex(first), table.SlotIndex(second));
    EXPECT_NE(first, second);
    EXPECT_EQ(table.Find(first), nullptr);
    ASSERT_NE(table.Find(second), nullptr);
    EXPECT_EQ(*table.Find(second), 2);
}

TEST(HandleTableTest, FullTableAndClearAndForeignTags)
{
    QzPlatform::CHandleTable<int> table(0x7F, 2);
    const uint64_t a = table.Add(std::make_unique<int>(1));
    table.Add(std::make_unique<int>(2));
    EXPECT_EQ(table.Add(std::make_unique<int>(3)), 0u);

    QzPlatform::CHandleTable<int> other(0x7E, 2);
    EXPECT_EQ(other.Find(a), nullptr); // same slot and generation, other table
    table.Clear();
    EXPECT_EQ(table.Find(a), nullptr);
    EXPECT_TRUE(table.Handles().empty());
    const uint64_t again = table.Add(std::make_unique<int>(4));
    EXPECT_NE(again, a);
}

TEST_F(SystemWindowsTest, DestroyedWindowHandleIsInvalidEvenAfterItsSlotIsReused)
{
    using Table = QzPlatform::CHandleTable<QzPlatform::HostedWindow>;
    const HWND first = CreateWide();
    ASSERT_TRUE(IsWindow(first));
    ASSERT_TRUE(DestroyWindow(first));
    EXPECT_FALSE(IsWindow(first));

    // Freed slots are reused oldest first: cycle until a window lands in the first one's slot.
    HWND second = CreateWide();
    for (int i = 0; i < 1000 && Table::SlotIndex(QzPlatform::FromHandle(second)) !=
                                    Table::SlotIndex(QzPlatform::FromHandle(first));
         ++i)
    {
        DestroyWindow(second);
        second = CreateWide();
    }
    ASSERT_EQ(Table::SlotIndex(QzPlatform::FromHandle(second)),
              Table::SlotIndex(QzPlatform::FromHandle(first)));
    EXPECT_NE(first, second);
    EXPECT_TRUE(IsWindow(second));
    EXPECT_FALSE(IsWindow(first));

    SetLastError(0);
    EXPECT_EQ(SendMessageW(first, WM_USER, 0, 0), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    EXPECT_FALSE(DestroyWindow(first));
    EXPECT_TRUE(IsWindow(second));
}

TEST_F(SystemWindowsTest, ResetInvalidatesEveryHandle)
{
    const HWND hwnd = CreateWide();
    QzPlatform::Host::ResetForTesting();
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_FALSE(IsWindow(nullptr));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(0x1234)));
}

TEST_F(SystemWindowsTest, CreationSendsMessagesInWindowsOrder)
{
    const HWND hwnd = CreateWindowExW(0, kWideClass, L"Title", WS_VISIBLE, 3, 4, 30, 40, nullptr,
                                      nullptr, nullptr, nullptr);
    ASSERT_TRUE(hwnd);
    const std::vector<UINT> expected = {WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW};
    EXPECT_EQ(RecordedNumbers(hwnd), expected);
    EXPECT_EQ(RecordedOf(WM_SIZE)[0].lParam, MAKELPARAM(30, 40));
    EXPECT_EQ(RecordedOf(WM_MOVE)[0].lParam, MAKELPARAM(3, 4));
    EXPECT_TRUE(IsWindowVisible(hwnd));

    wchar_t title[16];
    EXPECT_EQ(GetWindowTextW(hwnd, title, 16), 5);
    EXPECT_STREQ(title, L"Title");
}

TEST_F(SystemWindowsTest, CreateStructReachesAnAnsiProcedureAsAnsiText)
{
    const HWND hwnd = CreateWindowExW(0, L"recordinga", kWideTwoChars, 0, 0, 0, 5, 5, nullptr,
                                      nullptr, nullptr, nullptr);
    ASSERT_TRUE(hwnd);
    const RecordedMessage create = RecordedOf(WM_CREATE).at(0);
    EXPECT_EQ(create.kind, 'A');
    EXPECT_EQ(create.text, kWideTwoChars);
    char title[8];
    EXPECT_EQ(GetWindowTextA(hwnd, title, 8), 4);
    EXPECT_STREQ(title, kGbkTwoChars);
}

TEST_F(SystemWindowsTest, CreateFailsForMinusOneFromCreateAndFalseFromNcCreate)
{
    EXPECT_EQ(CreateOfClass(L"FailCreate", FailCreateProc), nullptr);
    const HWND failed = Recorded().at(0).hwnd;
    EXPECT_EQ(RecordedNumbers(failed),
              (std::vector<UINT>{WM_NCCREATE, WM_CREATE, WM_DESTROY, WM_NCDESTROY}));
    EXPECT_FALSE(IsWindow(failed));

    Recorded().clear();
    EXPECT_EQ(CreateOfClass(L"FailNcCreate", FailNcCreateProc), nullptr);
    ASSERT_EQ(Recorded().size(), 2u);
    EXPECT_EQ(Recorded()[1].msg, static_cast<UINT>(WM_NCDESTROY));
}

TEST_F(SystemWindowsTest, CreateRefusesUnknownClassAndOrphanChild)
{
    SetLastError(0);
    EXPECT_EQ(
        CreateWindowExA(0, "NoSuchClass", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr),
        nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CANNOT_FIND_WND_CLASS));
    EXPECT_EQ(CreateWindowExA(0, kAnsiClass, "", WS_CHILD, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                              nullptr),
              nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_TLW_WITH_WSCHILD));
    EXPECT_TRUE(Recorded().empty());
}

TEST_F(SystemWindowsTest, ClassesRegisterOnceAndStayWhileTheyHaveWindows)
{
    WNDCLASSA again = {};
    again.lpfnWndProc = RecordingProcA;
    again.lpszClassName = "RECORDINGA";
    EXPECT_EQ(RegisterClassA(&again), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_ALREADY_EXISTS));

    WNDCLASSA noProc = {};
    noProc.lpszClassName = "NoProc";
    EXPECT_EQ(RegisterClassA(&noProc), 0);

    const HWND hwnd = CreateAnsi();
    EXPECT_FALSE(UnregisterClassA(kAnsiClass, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_HAS_WINDOWS));
    DestroyWindow(hwnd);
    EXPECT_TRUE(UnregisterClassA(kAnsiClass, nullptr));
    EXPECT_EQ(CreateAnsi(), nullptr);
}

TEST_F(SystemWindowsTest, DestroySendsDestroyTopDownAndNcDestroyBottomUp)
{
    const HWND parent = CreateWide();
    const HWND child = CreateWide(parent);
    const HWND grandchild = CreateAnsi(child);
    Recorded().clear();

    ASSERT_TRUE(DestroyWindow(parent));

    const std::vector<Delivery> expected = {
        {parent, WM_DESTROY, 0},       {child, WM_DESTROY, 0},   {grandchild, WM_DESTROY, 0},
        {grandchild, WM_NCDESTROY, 0}, {child, WM_NCDESTROY, 0}, {parent, WM_NCDESTROY, 0}};
    EXPECT_EQ(RecordedDeliveries(), expected);
    EXPECT_FALSE(IsWindow(child));
    EXPECT_FALSE(IsWindow(grandchild));
}

TEST_F(SystemWindowsTest, DestroyingTheFocusWindowsParentClearsTheFocusFirst)
{
    const HWND parent = CreateWide();
    const HWND child = CreateWide(parent);
    SetFocus(child);
    Recorded().clear();

    DestroyWindow(parent);
    ASSERT_GE(Recorded().size(), 2u);
    EXPECT_EQ(RecordedDeliveries()[0], (Delivery{child, WM_KILLFOCUS, 0}));
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(SystemWindowsTest, WindowThatDestroysItselfInsideSendMessage)
{
    const HWND hwnd = CreateOfClass(L"SelfDestroying", SelfDestroyingProc);
    ASSERT_TRUE(hwnd);
    PostMessageW(hwnd, WM_USER + 1, 0, 0);
    EXPECT_EQ(SendMessageW(hwnd, WM_USER, 0, 0), 7);
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(PumpW(), 0); // its posted message went with it
}

TEST_F(SystemWindowsTest, HandlesOfOtherKindsAreNoWindows)
{
    const HCURSOR cursor = LoadCursorA(nullptr, IDC_ARROW);
    const HWND hwnd = CreateWide();
    const HIMC context = ImmGetContext(hwnd);
    ASSERT_TRUE(cursor);
    ASSERT_TRUE(context);
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(cursor)));
    EXPECT_FALSE(IsWindow(reinterpret_cast<HWND>(context)));
}
