// An edit window as hosts and programs drive it: the window text in both kinds in code page 936,
// notifications, the message loop and the input method, a subclass put in front with
// SetWindowLongPtr, a parent that destroys the window, and random messages.
#include "EditTestSupport.h"

#include <random>

using namespace QzTest;
using QzPlatform::Host::InjectImeResult;

namespace
{

WNDPROC g_previous = nullptr;
int g_charsSeen = 0;

// An ANSI procedure in front of the class's, as a program subclasses an edit window.
LRESULT CALLBACK SubclassProcA(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    g_charsSeen += msg == WM_CHAR;
    if (msg == WM_CHAR && wParam == 'x')
        return 0; // this program refuses x
    return CallWindowProcA(g_previous, hwnd, msg, wParam, lParam);
}

HWND g_victim = nullptr;

// A parent that destroys the edit window when it hears of a change.
LRESULT CALLBACK DestroyingParentProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_COMMAND && HIWORD(wParam) == EN_UPDATE)
        DestroyWindow(g_victim);
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

} // namespace

TEST_F(EditTest, TextRoundTripsThroughAnsiAndWideCallersInCodePage936)
{
    const HWND ansi = CreateEditA(0, "\xD6\xD0\xCE\xC4");
    EXPECT_FALSE(IsWindowUnicode(ansi));
    EXPECT_EQ(TextW(ansi), L"\u4E2D\u6587");
    EXPECT_TRUE(TakeCodes().empty()); // the creation title is not a change
    const HWND wide = CreateEdit(0);
    EXPECT_TRUE(IsWindowUnicode(wide));
    EXPECT_TRUE(SetWindowTextA(wide, "a\xD6\xD0\xCE\xC4"));
    EXPECT_EQ(TextW(wide), L"a\u4E2D\u6587");
    EXPECT_EQ(GetWindowTextLengthA(wide), 5);
    char bytes[8] = "xxxxxxx";
    // Room for 3 bytes and the null: "a" and the first character, never half of the second.
    EXPECT_EQ(GetWindowTextA(wide, bytes, 5), 3);
    EXPECT_STREQ(bytes, "a\xD6\xD0");
    wchar_t chars[3] = {L'x', L'x', L'x'};
    EXPECT_EQ(Send(wide, WM_GETTEXT, 3, reinterpret_cast<LPARAM>(chars)), 2);
    EXPECT_STREQ(chars, L"a\u4E2D");
}

TEST_F(EditTest, SetTextNotifiesSingleLineOnlyAndResetsSelectionAndUndo)
{
    const HWND single = CreateEdit(0);
    Type(single, L"ab");
    TakeCodes();
    EXPECT_TRUE(SetWindowTextW(single, L"xyz"));
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_CHANGE}));
    EXPECT_EQ(Sel(single), Range(0, 0));
    EXPECT_FALSE(Send(single, EM_CANUNDO));
    EXPECT_TRUE(Send(single, WM_SETTEXT, 0, 0)); // null empties
    EXPECT_EQ(TextW(single), L"");
    const HWND multi = CreateEdit(ES_MULTILINE);
    TakeCodes();
    EXPECT_TRUE(SetWindowTextW(multi, L"xyz"));
    EXPECT_TRUE(TakeCodes().empty());
}

TEST_F(EditTest, NotificationsCarryTheIdAndTheWindowInOrder)
{
    const HWND first = CreateEdit(ES_AUTOHSCROLL);
    const HWND second = CreateEdit(ES_AUTOHSCROLL);
    SetFocus(first);
    Type(first, L"a");
    SetFocus(second);
    const std::vector<WORD> codes = {EN_SETFOCUS, EN_UPDATE, EN_CHANGE, EN_KILLFOCUS, EN_SETFOCUS};
    ASSERT_EQ(Notifications().size(), codes.size());
    for (size_t i = 0; i < codes.size(); ++i)
    {
        EXPECT_EQ(Notifications()[i].code, codes[i]) << i;
        EXPECT_EQ(Notifications()[i].from, i < 4 ? first : second) << i;
        EXPECT_EQ(Notifications()[i].id, 7) << i;
    }
}

TEST_F(EditTest, MessageLoopAndImeResultDeliverWholeCharacters)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SetFocus(hwnd);
    for (int byte : {0xD6, 0xD0, int('a')}) // an ANSI loop joins lead and trail bytes
        PostMessageA(GetFocus(), WM_CHAR, static_cast<WPARAM>(byte), 1);
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_LEFT, 1);
    EXPECT_EQ(Pump(true), 4);
    EXPECT_EQ(TextW(hwnd), L"\u4E2Da");
    ASSERT_TRUE(InjectImeResult(L"\u6587x"));
    EXPECT_EQ(TextW(hwnd), L"\u4E2Da"); // WM_IME_CHAR posts WM_CHAR: nothing until the loop runs
    EXPECT_EQ(Pump(), 2);
    EXPECT_EQ(TextW(hwnd), L"\u4E2D\u6587xa");
}

TEST_F(EditTest, AnsiSubclassGetsConvertedMessagesAndPassesTheRestOn)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    g_previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassProcA)));
    ASSERT_TRUE(g_previous);
    Type(hwnd, L"axb");
    EXPECT_EQ(TextW(hwnd), L"ab");
    // Wide callers reach the ANSI subclass converted, and back again.
    Send(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\u4E2D"));
    EXPECT_EQ(TextW(hwnd), L"ab\u4E2D");
    wchar_t line[8] = {8};
    EXPECT_EQ(Send(hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(line)), 3);
    EXPECT_EQ(std::wstring(line, 3), L"ab\u4E2D");
    // The input method's character reaches the subclass as two bytes and goes in whole.
    SetFocus(hwnd);
    g_charsSeen = 0;
    ASSERT_TRUE(InjectImeResult(L"\u6587x"));
    Pump(true);
    EXPECT_EQ(TextW(hwnd), L"ab\u4E2D\u6587");
    EXPECT_EQ(g_charsSeen, 3);
}

TEST_F(EditTest, ParentMayDestroyTheWindowInsideANotification)
{
    g_victim = CreateEdit(0);
    SetWindowLongPtrW(m_hParent, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DestroyingParentProc));
    Type(g_victim, L"a");
    EXPECT_FALSE(IsWindow(g_victim));
    EXPECT_EQ(Send(g_victim, WM_GETTEXTLENGTH), 0);
}

// Seeded random messages against windows of every kind: no crash, and the answers stay
// consistent with each other (the selection inside the text, the lengths agreeing).
TEST_F(EditTest, RandomMessagesKeepTheWindowConsistent)
{
    const UINT messages[] = {
        WM_CHAR,          WM_KEYDOWN,         WM_LBUTTONDOWN, WM_MOUSEMOVE,    WM_LBUTTONUP,
        WM_LBUTTONDBLCLK, WM_MOUSEWHEEL,      WM_VSCROLL,     WM_HSCROLL,      WM_CUT,
        WM_COPY,          WM_PASTE,           WM_CLEAR,       WM_UNDO,         EM_SETSEL,
        EM_LINESCROLL,    EM_SCROLLCARET,     EM_LIMITTEXT,   EM_SETMARGINS,   EM_SETREADONLY,
        EM_SCROLL,        EM_LINEINDEX,       EM_LINELENGTH,  EM_LINEFROMCHAR, EM_POSFROMCHAR,
        EM_CHARFROMPOS,   EM_SETPASSWORDCHAR, WM_SIZE};
    const DWORD styles[] = {ES_AUTOHSCROLL, 0, ES_MULTILINE, ES_MULTILINE | ES_AUTOVSCROLL,
                            ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NUMBER};
    const wchar_t chars[] = {L'a', L' ', L'\r', L'\b', L'\t', 0x4E2D, 0x03, 0x16, 0x18, 0x1A, L'7'};
    std::mt19937 random(1234);
    SetClipboardW(L"pa\r\nste");
    for (DWORD style : styles)
    {
        const HWND hwnd = CreateEdit(style, 60, 36);
        for (int step = 0; step < 3000; ++step)
        {
            const UINT msg = messages[random() % std::size(messages)];
            WPARAM wParam = random() % 40;
            const LPARAM lParam = static_cast<LPARAM>(random() % 200) - 20;
            if (msg == WM_CHAR)
                wParam = chars[random() % std::size(chars)];
            if (msg == WM_KEYDOWN)
                wParam = VK_PRIOR + random() % 16;
            if (msg == EM_SETREADONLY)
                wParam = random() % 8 == 0;
            Send(hwnd, msg, wParam, lParam);
            const Range sel = Sel(hwnd);
            const auto length = static_cast<DWORD>(Send(hwnd, WM_GETTEXTLENGTH));
            ASSERT_LE(sel.first, sel.second);
            ASSERT_LE(sel.second, length);
            ASSERT_EQ(TextW(hwnd).size(), length);
            ASSERT_GE(Send(hwnd, EM_GETLINECOUNT), 1);
        }
        EXPECT_TRUE(DestroyWindow(hwnd));
    }
}
