// Global memory handles and the clipboard: ownership, the open rule and text synthesis.
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/host/QzHost.h"
#include "platform/system/kernel/QzKernelHost.h"
#include "platform/system/text/QzCodePageHost.h"

#include "SlotReuse.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace
{

class ClipboardTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QzPlatform::ResetKernelForTesting();
        QzPlatform::Host::ResetForTesting();
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.lpszClassName = L"QzClipboardTestWindow";
        ASSERT_NE(0, RegisterClassW(&windowClass));
        m_first = MakeWindow();
        m_second = MakeWindow();
        ASSERT_NE(nullptr, m_first);
        ASSERT_NE(nullptr, m_second);
    }

    void TearDown() override
    {
        QzPlatform::ResetKernelForTesting();
        QzPlatform::Host::ResetForTesting();
    }

    static HWND MakeWindow()
    {
        return CreateWindowExW(0, L"QzClipboardTestWindow", L"", WS_OVERLAPPED, 0, 0, 10, 10,
                               nullptr, nullptr, nullptr, nullptr);
    }

    HWND m_first = nullptr;
    HWND m_second = nullptr;
};

template <class C> HGLOBAL TextBlock(const std::basic_string<C>& text)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(C));
    std::memcpy(GlobalLock(block), text.c_str(), (text.size() + 1) * sizeof(C));
    GlobalUnlock(block);
    return block;
}

template <class C> std::basic_string<C> ReadBlock(HANDLE block)
{
    const auto* text = static_cast<const C*>(GlobalLock(block));
    std::basic_string<C> result = text ? text : std::basic_string<C>();
    GlobalUnlock(block);
    return result;
}

TEST(GlobalMemoryTest, HandlesAreCheckedAndLockCountsKept)
{
    QzPlatform::ResetKernelForTesting();
    HGLOBAL moveable = GlobalAlloc(GHND, 16);
    ASSERT_NE(nullptr, moveable);
    EXPECT_EQ(16u, GlobalSize(moveable));
    auto* bytes = static_cast<unsigned char*>(GlobalLock(moveable));
    ASSERT_NE(nullptr, bytes);
    EXPECT_EQ(0, bytes[15]);
    EXPECT_EQ(bytes, GlobalLock(moveable));
    EXPECT_TRUE(GlobalUnlock(moveable));
    SetLastError(99);
    EXPECT_FALSE(GlobalUnlock(moveable));
    EXPECT_EQ(static_cast<DWORD>(ERROR_SUCCESS), GetLastError());
    EXPECT_FALSE(GlobalUnlock(moveable));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_LOCKED), GetLastError());

    // A fixed block's handle is its address, as Windows code expects.
    HGLOBAL fixed = GlobalAlloc(GPTR, 4);
    EXPECT_EQ(fixed, GlobalLock(fixed));
    EXPECT_TRUE(GlobalUnlock(fixed));
    EXPECT_EQ(nullptr, GlobalFree(fixed));

    EXPECT_EQ(nullptr, GlobalFree(moveable));
    EXPECT_EQ(moveable, GlobalFree(moveable));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());
    EXPECT_EQ(nullptr, GlobalLock(moveable));
    EXPECT_EQ(0u, GlobalSize(moveable));
    int local = 0;
    EXPECT_EQ(nullptr, GlobalLock(&local));
    EXPECT_EQ(nullptr, GlobalFree(nullptr));
    EXPECT_EQ(nullptr, GlobalAlloc(GMEM_MOVEABLE, SIZE_T(1) << 40));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_ENOUGH_MEMORY), GetLastError());
    // An empty moveable block exists but has no memory to lock.
    HGLOBAL empty = GlobalAlloc(GMEM_MOVEABLE, 0);
    EXPECT_EQ(0u, GlobalSize(empty));
    EXPECT_EQ(nullptr, GlobalLock(empty));
    EXPECT_EQ(nullptr, GlobalFree(empty));
}

TEST(GlobalMemoryTest, FreedMoveableHandleStaysInvalidWhenANewBlockTakesItsSlot)
{
    const auto make = [] { return GlobalAlloc(GMEM_MOVEABLE, 8); };
    const HGLOBAL block = make();
    ASSERT_EQ(nullptr, GlobalFree(block));
    const HGLOBAL newBlock = NewInSlotOf(block, make, GlobalFree);
    ASSERT_NE(nullptr, newBlock);
    EXPECT_EQ(nullptr, GlobalLock(block));
    EXPECT_EQ(0u, GlobalSize(block));
    EXPECT_EQ(block, GlobalFree(block));
    EXPECT_EQ(8u, GlobalSize(newBlock));
    EXPECT_EQ(nullptr, GlobalFree(newBlock));
}

TEST_F(ClipboardTest, CallsNeedAnOpenClipboard)
{
    SetLastError(0);
    EXPECT_FALSE(EmptyClipboard());
    EXPECT_EQ(static_cast<DWORD>(ERROR_CLIPBOARD_NOT_OPEN), GetLastError());
    HGLOBAL block = TextBlock(std::string("x"));
    EXPECT_EQ(nullptr, SetClipboardData(CF_TEXT, block));
    EXPECT_EQ(nullptr, GetClipboardData(CF_TEXT));
    EXPECT_FALSE(CloseClipboard());
    EXPECT_EQ(static_cast<DWORD>(ERROR_CLIPBOARD_NOT_OPEN), GetLastError());
    EXPECT_EQ(nullptr, GlobalFree(block));
}

TEST_F(ClipboardTest, OneOpenerAtATimeAndEmptyingMakesTheOwner)
{
    ASSERT_TRUE(OpenClipboard(m_first));
    EXPECT_TRUE(OpenClipboard(m_first));
    SetLastError(0);
    EXPECT_FALSE(OpenClipboard(m_second));
    EXPECT_EQ(static_cast<DWORD>(ERROR_ACCESS_DENIED), GetLastError());
    EXPECT_EQ(m_first, GetOpenClipboardWindow());
    EXPECT_EQ(nullptr, GetClipboardOwner());
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_EQ(m_first, GetClipboardOwner());
    EXPECT_TRUE(CloseClipboard());

    ASSERT_TRUE(OpenClipboard(m_second));
    EXPECT_EQ(m_first, GetClipboardOwner());
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_EQ(m_second, GetClipboardOwner());
    EXPECT_TRUE(CloseClipboard());
    EXPECT_TRUE(DestroyWindow(m_second));
    EXPECT_EQ(nullptr, GetClipboardOwner());

    EXPECT_FALSE(OpenClipboard(m_second));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE), GetLastError());
    EXPECT_TRUE(OpenClipboard(nullptr));
    EXPECT_TRUE(CloseClipboard());
}

TEST_F(ClipboardTest, DataBelongsToTheClipboardUntilReplacedOrEmptied)
{
    ASSERT_TRUE(OpenClipboard(m_first));
    ASSERT_TRUE(EmptyClipboard());
    HGLOBAL first = TextBlock(std::string("one"));
    HGLOBAL second = TextBlock(std::string("two"));
    EXPECT_EQ(first, SetClipboardData(CF_TEXT, first));
    EXPECT_EQ(first, SetClipboardData(CF_TEXT, first));
    EXPECT_EQ(first, GetClipboardData(CF_TEXT));
    EXPECT_EQ(second, SetClipboardData(CF_TEXT, second));
    EXPECT_EQ(0u, GlobalSize(first)); // the replaced block was freed
    EXPECT_EQ("two", ReadBlock<char>(GetClipboardData(CF_TEXT)));
    EXPECT_EQ(nullptr, SetClipboardData(CF_TEXT, nullptr));
    int local = 0;
    EXPECT_EQ(nullptr, SetClipboardData(CF_TEXT, &local));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_EQ(0u, GlobalSize(second));
    EXPECT_EQ(0, CountClipboardFormats());
    EXPECT_EQ(nullptr, GetClipboardData(CF_TEXT));
    EXPECT_TRUE(CloseClipboard());
}

TEST_F(ClipboardTest, TextIsSynthesizedBothWaysThroughTheAnsiCodePage)
{
    ASSERT_TRUE(OpenClipboard(m_first));
    ASSERT_TRUE(EmptyClipboard());
    SetClipboardData(CF_UNICODETEXT, TextBlock(std::wstring(L"a\x4E2D\x6587")));
    EXPECT_TRUE(CloseClipboard());
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_FALSE(IsClipboardFormatAvailable(2));
    EXPECT_EQ(2, CountClipboardFormats());

    ASSERT_TRUE(OpenClipboard(m_second));
    EXPECT_EQ("a\xD6\xD0\xCE\xC4", ReadBlock<char>(GetClipboardData(CF_TEXT)));
    EXPECT_EQ(2, CountClipboardFormats());
    // New text replaces the converted copy as well.
    ASSERT_TRUE(EmptyClipboard());
    SetClipboardData(CF_TEXT, TextBlock(std::string("\xD6\xD0x")));
    EXPECT_EQ(L"\x4E2Dx", ReadBlock<wchar_t>(GetClipboardData(CF_UNICODETEXT)));
    SetClipboardData(CF_TEXT, TextBlock(std::string("new")));
    EXPECT_EQ(L"new", ReadBlock<wchar_t>(GetClipboardData(CF_UNICODETEXT)));
    EXPECT_TRUE(CloseClipboard());

    ASSERT_TRUE(QzPlatform::SetAnsiCodePage(CP_UTF8));
    ASSERT_TRUE(OpenClipboard(m_first));
    ASSERT_TRUE(EmptyClipboard());
    SetClipboardData(CF_UNICODETEXT, TextBlock(std::wstring(L"\x4E2D")));
    EXPECT_EQ("\xE4\xB8\xAD", ReadBlock<char>(GetClipboardData(CF_TEXT)));
    EXPECT_TRUE(CloseClipboard());
}

TEST_F(ClipboardTest, TextWithoutTerminatorStopsAtTheBlockEnd)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 3);
    std::memcpy(GlobalLock(block), "abc", 3);
    GlobalUnlock(block);
    ASSERT_TRUE(OpenClipboard(m_first));
    ASSERT_TRUE(EmptyClipboard());
    SetClipboardData(CF_TEXT, block);
    EXPECT_EQ(L"abc", ReadBlock<wchar_t>(GetClipboardData(CF_UNICODETEXT)));
    EXPECT_TRUE(CloseClipboard());
}

} // namespace
