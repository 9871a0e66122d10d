// An edit window driven as a host and a subclassing program drive it: keyboard messages posted
// to the focus window and pumped, the input method's result, a window procedure put in front
// with SetWindowLongPtr, scroll bars and the wheel.
#include "EditTestSupport.h"

using namespace QzTest;
using QzPlatform::Host::InjectImeResult;

namespace
{

int PumpW()
{
    int count = 0;
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        DispatchMessageW(&msg);
        ++count;
    }
    return count;
}

int PumpA()
{
    int count = 0;
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        DispatchMessageA(&msg);
        ++count;
    }
    return count;
}

WNDPROC g_previous = nullptr;
std::vector<UINT> g_seen;

// An ANSI procedure in front of the class's, as a program subclasses an edit window.
LRESULT CALLBACK SubclassProcA(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    g_seen.push_back(msg);
    if (msg == WM_CHAR && wParam == 'x')
        return 0; // this program refuses x
    return CallWindowProcA(g_previous, hwnd, msg, wParam, lParam);
}

} // namespace

TEST_F(EditTest, PostedKeysReachTheFocusWindowThroughTheMessageLoop)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SetFocus(hwnd);
    for (wchar_t ch : std::wstring(L"abc"))
        PostMessageW(GetFocus(), WM_CHAR, ch, 1);
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_LEFT, 1);
    PostMessageW(GetFocus(), WM_CHAR, L'\b', 1);
    EXPECT_EQ(PumpW(), 5);
    EXPECT_EQ(TextW(hwnd), L"ac");
}

TEST_F(EditTest, AnsiMessageLoopDeliversDoubleByteCharactersWhole)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    for (int byte : {0xD6, 0xD0, int('a')})
        PostMessageA(hwnd, WM_CHAR, static_cast<WPARAM>(byte), 1);
    EXPECT_EQ(PumpA(), 3);
    EXPECT_EQ(TextW(hwnd), L"\u4E2Da");
}

TEST_F(EditTest, ImeResultArrivesAsCharactersThroughTheMessageLoop)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    SetFocus(hwnd);
    ASSERT_TRUE(InjectImeResult(L"\u4E2D\u6587"));
    EXPECT_EQ(TextW(hwnd), L""); // WM_IME_CHAR posts WM_CHAR: nothing until the loop runs
    EXPECT_EQ(PumpW(), 2);
    EXPECT_EQ(TextW(hwnd), L"\u4E2D\u6587");
}

TEST_F(EditTest, ImeResultThroughAnAnsiSubclassIsTypedWhole)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    g_seen.clear();
    g_previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassProcA)));
    SetFocus(hwnd);
    ASSERT_TRUE(InjectImeResult(L"\u4E2Dx"));
    PumpA();
    EXPECT_EQ(TextW(hwnd), L"\u4E2D");
    // The subclass saw the character as two bytes, as an ANSI procedure does.
    EXPECT_EQ(std::count(g_seen.begin(), g_seen.end(), WM_CHAR), 3);
}

TEST_F(EditTest, ImeResultGoesInAtOnceWithGetCompStrAtOnce)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETIMESTATUS, EMSIS_COMPOSITIONSTRING, 0), 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_SETIMESTATUS, EMSIS_COMPOSITIONSTRING, EIMES_GETCOMPSTRATONCE),
              0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETIMESTATUS, EMSIS_COMPOSITIONSTRING, 0),
              EIMES_GETCOMPSTRATONCE);
    SetFocus(hwnd);
    ASSERT_TRUE(InjectImeResult(L"\u4E2D\u6587"));
    EXPECT_EQ(TextW(hwnd), L"\u4E2D\u6587");
    EXPECT_EQ(PumpW(), 0);
}

TEST_F(EditTest, SubclassSeesMessagesAndPassesTheRestOn)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL);
    g_seen.clear();
    g_previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassProcA)));
    ASSERT_TRUE(g_previous);
    Type(hwnd, L"axb");
    EXPECT_EQ(TextW(hwnd), L"ab");
    // Wide callers reach the ANSI subclass converted, and back again.
    SendMessageW(hwnd, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\u4E2D"));
    EXPECT_EQ(TextW(hwnd), L"ab\u4E2D");
    wchar_t line[8] = {8};
    EXPECT_EQ(SendMessageW(hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(line)), 3);
    EXPECT_EQ(std::wstring(line, 3), L"ab\u4E2D");
    EXPECT_EQ(SendMessageW(hwnd, EM_GETSEL, 0, 0), MAKELONG(3, 3));
}

TEST_F(EditTest, ScrollBarsAndTheWheelNotifyBeforeScrolling)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL, 100, 24,
                                 L"1\r\n2\r\n3\r\n4\r\n5\r\n6");
    SetSel(hwnd, 0, 0);
    SendMessageW(hwnd, EM_SCROLLCARET, 0, 0);
    TakeCodes();
    SendMessageW(hwnd, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 1);
    SendMessageW(hwnd, WM_VSCROLL, SB_PAGEDOWN, 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 3);
    SendMessageW(hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 0);
    SendMessageW(hwnd, WM_HSCROLL, SB_LINERIGHT, 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_POSFROMCHAR, 0, 0) & 0xFFFF, 0xFFFA); // x -6
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_VSCROLL, EN_VSCROLL, EN_VSCROLL, EN_HSCROLL}));
}

TEST_F(EditTest, EmScrollAnswersTheLinesMovedAndNotifiesEachMove)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 24, L"1\r\n2\r\n3\r\n4");
    SetSel(hwnd, 0, 0);
    SendMessageW(hwnd, EM_SCROLLCARET, 0, 0);
    TakeCodes();
    EXPECT_EQ(SendMessageW(hwnd, EM_SCROLL, SB_PAGEDOWN, 0), MAKELONG(2, TRUE));
    EXPECT_EQ(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 2);
    EXPECT_EQ(SendMessageW(hwnd, EM_SCROLL, SB_LINEUP, 0), MAKELONG(0xFFFF, TRUE));
    EXPECT_EQ(SendMessageW(hwnd, EM_SCROLL, 99, 0), FALSE);
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_VSCROLL, EN_VSCROLL}));
    EXPECT_EQ(SendMessageW(CreateEdit(ES_AUTOHSCROLL), EM_SCROLL, SB_LINEDOWN, 0), FALSE);
}

TEST_F(EditTest, ReadOnlyMultiLineEnterMovesToTheNextLine)
{
    const HWND hwnd =
        CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY, 100, 48, L"abc\r\ndef");
    SetSel(hwnd, 2, 2);
    Type(hwnd, L"\r");
    EXPECT_EQ(TextW(hwnd), L"abc\r\ndef");
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(5), DWORD(5)));
}

TEST_F(EditTest, HostileParametersGetClearResults)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 48, L"abc");
    EXPECT_EQ(SendMessageW(hwnd, EM_GETRECT, 0, 0), 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_GETSEL, 0, 0), MAKELONG(0, 0));
    EXPECT_EQ(SendMessageW(hwnd, EM_LINEINDEX, WPARAM(-5), 0), -1);
    EXPECT_EQ(SendMessageW(hwnd, EM_LINELENGTH, WPARAM(-7), 0), 0);
    EXPECT_EQ(SendMessageW(hwnd, EM_POSFROMCHAR, WPARAM(-1), 0), -1);
    wchar_t zeroSized[2] = {0, L'#'};
    EXPECT_EQ(SendMessageW(hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(zeroSized)), 0);
    SendMessageW(hwnd, EM_SETSEL, WPARAM(0x7FFFFFFF), LPARAM(-123456));
    EXPECT_EQ(Sel(hwnd), std::make_pair(DWORD(3), DWORD(3)));
    SendMessageW(hwnd, WM_CHAR, 0xFFFFFFFF, 1);
    SendMessageW(hwnd, WM_KEYDOWN, 0xFFFF, 1);
    SendMessageW(hwnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(-30000, 30000));
    EXPECT_TRUE(IsWindow(hwnd));
}

TEST_F(EditTest, TypingPastTheBottomScrollsBetweenUpdateAndChange)
{
    const HWND hwnd = CreateEdit(ES_MULTILINE | ES_AUTOVSCROLL, 100, 24, L"1\r\n2");
    SetSel(hwnd, 4, 4);
    TakeCodes();
    Type(hwnd, L"\r");
    EXPECT_EQ(TakeCodes(), (std::vector<WORD>{EN_UPDATE, EN_VSCROLL, EN_CHANGE}));
    EXPECT_EQ(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 1);
    SendMessageW(hwnd, EM_LINESCROLL, 0, -1);
    EXPECT_EQ(TakeCodes(), std::vector<WORD>{EN_VSCROLL});
    SendMessageW(hwnd, EM_LINESCROLL, 0, -1); // already at the top: no move, no word
    EXPECT_TRUE(TakeCodes().empty());
}

TEST_F(EditTest, SingleLineScrollsWithoutNotifying)
{
    const HWND hwnd = CreateEdit(ES_AUTOHSCROLL, 30, 24);
    Type(hwnd, L"abcdefghij");
    ASSERT_GT(SendMessageW(hwnd, EM_GETFIRSTVISIBLELINE, 0, 0), 0);
    for (WORD code : TakeCodes())
        EXPECT_TRUE(code == EN_UPDATE || code == EN_CHANGE) << code;
}
