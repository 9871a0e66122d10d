// What the host feeds: the clock, key state, cursor position and cursors, beeps.
#include "WindowsTestSupport.h"

#include "support/GeometryPrint.h"
#include "support/TempDataDir.h"

#include <cstdio>
#include <filesystem>
#include <string>

using namespace QzTest;
namespace Host = QzPlatform::Host;

TEST_F(SystemWindowsTest, ClockWrapsAt32BitsAndElapsedTimeStaysRight)
{
    Host::SetTime(0xFFFFFF00u);
    const DWORD start = timeGetTime();
    EXPECT_EQ(start, 0xFFFFFF00u);
    Host::AdvanceTime(0x180);
    EXPECT_EQ(timeGetTime(), 0x80u);
    EXPECT_EQ(timeGetTime() - start, 0x180u);
    EXPECT_EQ(timeGetTime(), 0x80u); // a held clock does not move by itself
}

TEST_F(SystemWindowsTest, ClockFollowsTheSystemClockUntilTakenOverAndAfterRelease)
{
    const DWORD first = timeGetTime();
    const DWORD second = timeGetTime();
    EXPECT_LT(second - first, 0x80000000u); // never runs backwards

    Host::AdvanceTime(10); // takes over from the current time
    const DWORD held = timeGetTime();
    EXPECT_LT(held - second - 10, 0x80000000u);
    Host::UseRealClock();
    Host::SetTime(5);
    EXPECT_EQ(timeGetTime(), 5u);
}

TEST_F(SystemWindowsTest, KeyStateFromTheHost)
{
    EXPECT_EQ(GetKeyState(VK_SHIFT), 0);
    Host::SetKeyState(VK_SHIFT, true);
    EXPECT_TRUE(GetKeyState(VK_SHIFT) & 0x8000);
    EXPECT_LT(GetKeyState(VK_SHIFT), 0); // the down bit is the sign of the SHORT
    EXPECT_LT(GetAsyncKeyState(VK_SHIFT), 0);
    Host::SetKeyState(VK_SHIFT, false);
    EXPECT_EQ(GetKeyState(VK_SHIFT) & 0x8000, 0);
    EXPECT_EQ(GetKeyState(VK_SHIFT) & 1, 1); // one press toggled it

    Host::SetKeyState(VK_CAPITAL, false, true);
    EXPECT_EQ(GetKeyState(VK_CAPITAL), 1);
    EXPECT_EQ(GetAsyncKeyState(VK_CAPITAL), 0);
    Host::SetKeyState(VK_CAPITAL, true);
    EXPECT_EQ(GetKeyState(VK_CAPITAL) & 1, 0);

    Host::SetKeyState(-1, true);
    Host::SetKeyState(300, true);
    EXPECT_EQ(GetKeyState(300), 0);
    EXPECT_EQ(GetKeyState(-1), 0);
}

TEST_F(SystemWindowsTest, BeepsAreRecordedAndTakenOnce)
{
    EXPECT_TRUE(MessageBeep(MB_OK));
    EXPECT_TRUE(MessageBeep(MB_ICONEXCLAMATION));
    const std::vector<UINT> expected = {MB_OK, MB_ICONEXCLAMATION};
    EXPECT_EQ(Host::TakeBeeps(), expected);
    EXPECT_TRUE(Host::TakeBeeps().empty());
}

TEST_F(SystemWindowsTest, CursorPositionFromTheHostAndSetCursorPos)
{
    Host::SetCursorPos(12, -3);
    POINT pt = {};
    ASSERT_TRUE(GetCursorPos(&pt));
    EXPECT_EQ(pt, (POINT{12, -3}));
    SetCursorPos(1, 2);
    GetCursorPos(&pt);
    EXPECT_EQ(pt, (POINT{1, 2}));
    EXPECT_FALSE(GetCursorPos(nullptr));
}

TEST_F(SystemWindowsTest, StandardCursorsAreSharedAndSurviveDestroy)
{
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    ASSERT_TRUE(arrow);
    EXPECT_EQ(LoadCursorA(nullptr, IDC_ARROW), arrow);
    EXPECT_NE(LoadCursorA(nullptr, IDC_IBEAM), arrow);
    EXPECT_EQ(LoadCursorA(nullptr, MAKEINTRESOURCEA(1)), nullptr);
    EXPECT_EQ(LoadCursorA(nullptr, "named"), nullptr);
    EXPECT_TRUE(DestroyCursor(arrow));
    EXPECT_EQ(Host::DescribeCursor(arrow).standardId, 32512);
}

TEST_F(SystemWindowsTest, CursorFromFileExistsOnlyForAnExistingFile)
{
    const QzTest::TempDataDir data;
    const std::filesystem::path& folder = data.Path();
    data.Write("Ani/Hand.cur", "cursor");
    const std::string windowsName = (folder / "ani\\HAND.CUR").string();

    const HCURSOR cursor = LoadCursorFromFileA(windowsName.c_str());
    ASSERT_TRUE(cursor);
    const Host::CursorInfo info = Host::DescribeCursor(cursor);
    EXPECT_TRUE(info.valid);
    EXPECT_EQ(std::filesystem::path(info.file), folder / "Ani" / "Hand.cur");

    SetLastError(0);
    EXPECT_EQ(LoadCursorFromFileA((folder / "missing.cur").string().c_str()), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(LoadCursorFromFileA(folder.string().c_str()), nullptr); // a folder is no file
    EXPECT_EQ(LoadCursorFromFileA(nullptr), nullptr);

    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    EXPECT_EQ(SetCursor(cursor), nullptr);
    EXPECT_EQ(SetCursor(arrow), cursor);
    EXPECT_EQ(SetCursor(cursor), arrow);
    EXPECT_TRUE(DestroyCursor(cursor));
    EXPECT_EQ(GetCursor(), nullptr); // the destroyed current cursor is gone
    EXPECT_FALSE(DestroyCursor(cursor));
    EXPECT_FALSE(Host::DescribeCursor(cursor).valid);
    EXPECT_EQ(SetCursor(cursor), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_CURSOR_HANDLE));
}
