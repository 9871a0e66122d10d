// Input contexts and the host's input method: composition and result strings, and the way the
// default window procedure turns a result into characters.
#include "WindowsTestSupport.h"

#include <cstring>

using namespace QzTest;
using QzPlatform::Host::InjectImeComposition;
using QzPlatform::Host::InjectImeResult;

namespace
{

std::vector<std::pair<UINT, WPARAM>> MessagesOf(HWND hwnd)
{
    std::vector<std::pair<UINT, WPARAM>> messages;
    for (const RecordedMessage& m : Recorded())
    {
        if (m.hwnd == hwnd)
            messages.emplace_back(m.msg, m.wParam);
    }
    return messages;
}

} // namespace

TEST_F(SystemWindowsTest, ImeResultBecomesImeCharsAndThenPostedChars)
{
    const HWND hwnd = CreateWide();
    SetFocus(hwnd);
    Recorded().clear();

    ASSERT_TRUE(InjectImeResult(kWideTwoChars));
    std::vector<std::pair<UINT, WPARAM>> expected = {{WM_IME_STARTCOMPOSITION, 0},
                                                     {WM_IME_COMPOSITION, 0x6587},
                                                     {WM_IME_CHAR, 0x4E2D},
                                                     {WM_IME_CHAR, 0x6587},
                                                     {WM_IME_ENDCOMPOSITION, 0}};
    EXPECT_EQ(MessagesOf(hwnd), expected);
    EXPECT_EQ(RecordedOf(WM_IME_COMPOSITION).at(0).lParam, GCS_RESULTSTR);
    EXPECT_EQ(RecordedOf(WM_IME_CHAR).at(0).lParam, 1);

    Recorded().clear();
    EXPECT_EQ(PumpW(), 2);
    expected = {{WM_CHAR, 0x4E2D}, {WM_CHAR, 0x6587}};
    EXPECT_EQ(MessagesOf(hwnd), expected);
}

TEST_F(SystemWindowsTest, AnsiWindowGetsPackedImeCharsAndByteChars)
{
    const HWND hwnd = CreateAnsi();
    SetFocus(hwnd);
    Recorded().clear();

    ASSERT_TRUE(InjectImeResult(L"\u4E2Da"));
    const std::vector<RecordedMessage> imeChars = RecordedOf(WM_IME_CHAR);
    ASSERT_EQ(imeChars.size(), 2u);
    EXPECT_EQ(imeChars[0].wParam, 0xD6D0u);
    EXPECT_EQ(imeChars[1].wParam, static_cast<WPARAM>('a'));

    Recorded().clear();
    EXPECT_EQ(PumpA(), 3);
    const std::vector<std::pair<UINT, WPARAM>> expected = {
        {WM_CHAR, 0xD6}, {WM_CHAR, 0xD0}, {WM_CHAR, 'a'}};
    EXPECT_EQ(MessagesOf(hwnd), expected);
}

TEST_F(SystemWindowsTest, DisassociatedOrClosedContextGetsNoImeResult)
{
    const HWND hwnd = CreateWide();
    SetFocus(hwnd);
    const HIMC own = ImmGetContext(hwnd);
    ASSERT_TRUE(own);
    EXPECT_EQ(ImmAssociateContext(hwnd, nullptr), own);
    EXPECT_EQ(ImmGetContext(hwnd), nullptr);
    Recorded().clear();

    EXPECT_FALSE(InjectImeResult(L"x"));
    EXPECT_TRUE(Recorded().empty());
    EXPECT_EQ(PumpW(), 0);

    EXPECT_EQ(ImmAssociateContext(hwnd, own), nullptr);
    ASSERT_TRUE(ImmSetOpenStatus(own, FALSE));
    EXPECT_FALSE(InjectImeResult(L"x"));
    ASSERT_TRUE(ImmSetOpenStatus(own, TRUE));
    EXPECT_TRUE(InjectImeResult(L"x"));
}

TEST_F(SystemWindowsTest, ImeNeedsAFocusWindow)
{
    CreateWide();
    EXPECT_FALSE(InjectImeResult(L"x"));
    EXPECT_FALSE(InjectImeComposition(L"x"));
}

TEST_F(SystemWindowsTest, CompositionStringSizesAreInBytes)
{
    const HWND hwnd = CreateWide();
    SetFocus(hwnd);
    ASSERT_TRUE(InjectImeResult(kWideTwoChars));
    const HIMC himc = ImmGetContext(hwnd);

    EXPECT_EQ(ImmGetCompositionStringW(himc, GCS_RESULTSTR, nullptr, 0),
              static_cast<LONG>(2 * sizeof(WCHAR)));
    EXPECT_EQ(ImmGetCompositionStringA(himc, GCS_RESULTSTR, nullptr, 0), 4);

    WCHAR wide[4] = {};
    EXPECT_EQ(ImmGetCompositionStringW(himc, GCS_RESULTSTR, wide, sizeof(wide)),
              static_cast<LONG>(2 * sizeof(WCHAR)));
    EXPECT_EQ(std::wstring(wide, 2), kWideTwoChars);
    char ansi[3] = {};
    EXPECT_EQ(ImmGetCompositionStringA(himc, GCS_RESULTSTR, ansi, 3), 2); // whole characters
    EXPECT_EQ(std::string(ansi, 2), "\xD6\xD0");

    EXPECT_EQ(ImmGetCompositionStringW(himc, GCS_COMPSTR, nullptr, 0), 0);
    EXPECT_EQ(ImmGetCompositionStringW(himc, 0x4000, nullptr, 0), IMM_ERROR_GENERAL);
    EXPECT_EQ(ImmGetCompositionStringW(nullptr, GCS_RESULTSTR, nullptr, 0), IMM_ERROR_GENERAL);
}

TEST_F(SystemWindowsTest, CompositionInProgressThenResult)
{
    const HWND hwnd = CreateWide();
    SetFocus(hwnd);
    Recorded().clear();
    ASSERT_TRUE(InjectImeComposition(L"zh"));
    ASSERT_TRUE(InjectImeComposition(L"zhong"));
    const HIMC himc = ImmGetContext(hwnd);
    EXPECT_EQ(ImmGetCompositionStringW(himc, GCS_COMPSTR, nullptr, 0),
              static_cast<LONG>(5 * sizeof(WCHAR)));
    ASSERT_TRUE(InjectImeResult(L"\u4E2D"));
    EXPECT_EQ(ImmGetCompositionStringW(himc, GCS_COMPSTR, nullptr, 0), 0);

    EXPECT_EQ(RecordedOf(WM_IME_STARTCOMPOSITION).size(), 1u);
    EXPECT_EQ(RecordedOf(WM_IME_ENDCOMPOSITION).size(), 1u);
    const std::vector<RecordedMessage> compositions = RecordedOf(WM_IME_COMPOSITION);
    ASSERT_EQ(compositions.size(), 3u);
    EXPECT_EQ(compositions[0].lParam, GCS_COMPSTR);
    EXPECT_EQ(compositions[2].lParam, GCS_RESULTSTR);
    EXPECT_EQ(RecordedOf(WM_IME_CHAR).size(), 1u);
}

TEST_F(SystemWindowsTest, ContextsArePerWindowAndDefaultOnesCannotBeDestroyed)
{
    const HWND a = CreateWide();
    const HWND b = CreateAnsi();
    const HIMC ca = ImmGetContext(a);
    const HIMC cb = ImmGetContext(b);
    ASSERT_TRUE(ca);
    EXPECT_NE(ca, cb);
    EXPECT_TRUE(ImmGetOpenStatus(ca));
    EXPECT_TRUE(ImmReleaseContext(a, ca));
    EXPECT_FALSE(ImmDestroyContext(ca));

    COMPOSITIONFORM form = {CFS_RECT, {4, 5}, {1, 2, 3, 4}};
    ASSERT_TRUE(ImmSetCompositionWindow(ca, &form));
    COMPOSITIONFORM read = {};
    ASSERT_TRUE(ImmGetCompositionWindow(ca, &read));
    EXPECT_EQ(read.dwStyle, static_cast<DWORD>(CFS_RECT));
    EXPECT_EQ(read.ptCurrentPos.y, 5);
    EXPECT_EQ(read.rcArea.right, 3);

    const HIMC made = ImmCreateContext();
    EXPECT_EQ(ImmAssociateContext(b, made), cb);
    EXPECT_EQ(ImmGetContext(b), made);
    EXPECT_TRUE(ImmDestroyContext(made));
    EXPECT_EQ(ImmGetContext(b), nullptr);
    EXPECT_EQ(ImmAssociateContext(b, made), nullptr); // a destroyed context is refused

    DestroyWindow(a);
    EXPECT_FALSE(ImmGetOpenStatus(ca));
}
