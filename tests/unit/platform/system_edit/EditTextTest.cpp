// The window text of an edit window: creation, WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH in
// both kinds, the ANSI code page, and what WM_SETTEXT resets.
#include "EditTestSupport.h"

#include <cstring>

using namespace QzTest;

namespace
{

// GBK bytes of U+4E2D U+6587 ("zhong wen").
const char kGbk[] = "\xD6\xD0\xCE\xC4";
const wchar_t kWide[] = L"\u4E2D\u6587";

} // namespace

TEST_F(EditTest, ClassIsBuiltInAndNamedWithoutRegardToCase)
{
    for (const wchar_t* name : {L"EDIT", L"Edit", L"edit"})
    {
        const HWND hwnd = CreateWindowExW(0, name, L"", WS_CHILD, 0, 0, 10, 10, m_hParent, nullptr,
                                          nullptr, nullptr);
        ASSERT_TRUE(hwnd) << "class name " << name[1];
        wchar_t className[16] = {};
        GetClassNameW(hwnd, className, 16);
        EXPECT_STREQ(className, L"EDIT");
        EXPECT_TRUE(DestroyWindow(hwnd));
        EXPECT_FALSE(IsWindow(hwnd));
    }
    EXPECT_FALSE(UnregisterClassW(L"EDIT", nullptr));
}

TEST_F(EditTest, CreationTitleIsTheTextWithoutNotifications)
{
    const HWND hwnd = CreateEdit(0, 100, 24, L"hello");
    EXPECT_EQ(TextW(hwnd), L"hello");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(0), DWORD(0)));
    EXPECT_TRUE(TakeCodes().empty());
}

TEST_F(EditTest, KindOfWindowFollowsCreation)
{
    EXPECT_TRUE(IsWindowUnicode(CreateEdit(0)));
    EXPECT_FALSE(IsWindowUnicode(CreateEditA(0)));
}

TEST_F(EditTest, TextRoundTripsThroughBothKindsInTheAnsiCodePage)
{
    const HWND wide = CreateEdit(0);
    const HWND ansi = CreateEditA(0, 100, 24, kGbk);
    EXPECT_EQ(TextW(ansi), kWide);
    EXPECT_TRUE(SetWindowTextW(wide, kWide));
    EXPECT_EQ(TextA(wide), kGbk);
    EXPECT_EQ(GetWindowTextLengthA(wide), 4);
    EXPECT_EQ(GetWindowTextLengthW(wide), 2);
    EXPECT_TRUE(SetWindowTextA(wide, "a\xD6\xD0"));
    EXPECT_EQ(TextW(wide), L"a\u4E2D");
}

TEST_F(EditTest, AnsiGetTextNeverSplitsADoubleByteCharacter)
{
    const HWND hwnd = CreateEdit(0, 100, 24, L"a\u4E2D\u6587");
    char buffer[8];
    std::memset(buffer, 'x', sizeof(buffer));
    // Room for 3 bytes and the null: "a" and the first character, never half of the second.
    EXPECT_EQ(GetWindowTextA(hwnd, buffer, 4), 3);
    EXPECT_STREQ(buffer, "a\xD6\xD0");
    EXPECT_EQ(GetWindowTextA(hwnd, buffer, 3), 1);
    EXPECT_STREQ(buffer, "a");
}

TEST_F(EditTest, GetTextCutsToTheBufferAndAnswersTheLength)
{
    const HWND hwnd = CreateEdit(0, 100, 24, L"abcdef");
    wchar_t buffer[4] = {L'x', L'x', L'x', L'x'};
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXT, 4, reinterpret_cast<LPARAM>(buffer)), 3);
    EXPECT_STREQ(buffer, L"abc");
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXT, 0, reinterpret_cast<LPARAM>(buffer)), 0);
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXT, 4, 0), 0);
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXTLENGTH, 0, 0), 6);
}

TEST_F(EditTest, SetTextNotifiesSingleLineOnlyAndResetsSelectionModifyAndUndo)
{
    const HWND single = CreateEdit(0);
    Type(single, L"ab");
    ASSERT_TRUE(SendMessageW(single, EM_GETMODIFY, 0, 0));
    TakeCodes();
    EXPECT_TRUE(SetWindowTextW(single, L"xyz"));
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE}));
    EXPECT_EQ(Sel(single), std::make_pair(DWORD(0), DWORD(0)));
    EXPECT_FALSE(SendMessageW(single, EM_GETMODIFY, 0, 0));
    EXPECT_FALSE(SendMessageW(single, EM_CANUNDO, 0, 0));

    const HWND multi = CreateEdit(ES_MULTILINE);
    TakeCodes();
    EXPECT_TRUE(SetWindowTextW(multi, L"xyz"));
    EXPECT_TRUE(TakeCodes().empty());
    EXPECT_EQ(TextW(multi), L"xyz");
}

TEST_F(EditTest, SetTextIsNotCutByTheLimitAndNullEmptiesIt)
{
    const HWND hwnd = CreateEdit(0);
    SendMessageW(hwnd, EM_LIMITTEXT, 3, 0);
    SetWindowTextW(hwnd, L"abcdef");
    EXPECT_EQ(TextW(hwnd), L"abcdef");
    EXPECT_TRUE(SendMessageW(hwnd, WM_SETTEXT, 0, 0));
    EXPECT_EQ(TextW(hwnd), L"");
}

TEST_F(EditTest, DestroyedFromItsOwnNotificationLeavesNoTrace)
{
    const HWND hwnd = CreateEdit(0);
    // A parent that destroys the window when it hears of a change.
    static HWND s_victim;
    s_victim = hwnd;
    SetWindowLongPtrW(m_hParent, GWLP_WNDPROC,
                      reinterpret_cast<LONG_PTR>(+[](HWND h, UINT m, WPARAM w, LPARAM l) -> LRESULT
                                                 {
                                                     if (m == WM_COMMAND && HIWORD(w) == EN_UPDATE)
                                                         DestroyWindow(s_victim);
                                                     return DefWindowProcW(h, m, w, l);
                                                 }));
    Type(hwnd, L"a");
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(SendMessageW(hwnd, WM_GETTEXTLENGTH, 0, 0), 0);
}
