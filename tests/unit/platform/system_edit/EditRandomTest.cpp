// Random message sequences against edit windows of every kind: no crash, and the answers stay
// consistent with each other (the selection inside the text, the lengths agreeing).
#include "EditTestSupport.h"

#include <random>

using namespace QzTest;

namespace
{

const UINT kMessages[] = {
    WM_CHAR,          WM_KEYDOWN,         WM_LBUTTONDOWN, WM_MOUSEMOVE,    WM_LBUTTONUP,
    WM_LBUTTONDBLCLK, WM_MOUSEWHEEL,      WM_VSCROLL,     WM_HSCROLL,      WM_CUT,
    WM_COPY,          WM_PASTE,           WM_CLEAR,       WM_UNDO,         EM_SETSEL,
    EM_LINESCROLL,    EM_SCROLLCARET,     EM_LIMITTEXT,   EM_SETMARGINS,   EM_SETREADONLY,
    EM_SCROLL,        EM_LINEINDEX,       EM_LINELENGTH,  EM_LINEFROMCHAR, EM_POSFROMCHAR,
    EM_CHARFROMPOS,   EM_SETPASSWORDCHAR, WM_SIZE};

} // namespace

TEST_F(EditTest, RandomMessagesKeepTheWindowConsistent)
{
    std::mt19937 random(1234);
    const DWORD styles[] = {ES_AUTOHSCROLL, 0, ES_MULTILINE, ES_MULTILINE | ES_AUTOVSCROLL,
                            ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NUMBER};
    const wchar_t chars[] = {L'a', L' ', L'\r', L'\b', L'\t', 0x4E2D, 0x03, 0x16, 0x18, 0x1A, L'7'};
    SetClipboardW(L"pa\r\nste");
    for (DWORD style : styles)
    {
        const HWND hwnd = CreateEdit(style, 60, 36);
        for (int step = 0; step < 3000; ++step)
        {
            const UINT msg = kMessages[random() % std::size(kMessages)];
            WPARAM wParam = random() % 40;
            const LPARAM lParam = static_cast<LPARAM>(random() % 200) - 20;
            if (msg == WM_CHAR)
                wParam = chars[random() % std::size(chars)];
            if (msg == WM_KEYDOWN)
                wParam = VK_PRIOR + random() % 16;
            if (msg == EM_SETREADONLY)
                wParam = random() % 8 == 0;
            SendMessageW(hwnd, msg, wParam, lParam);
            const auto sel = Sel(hwnd);
            const auto length = static_cast<DWORD>(SendMessageW(hwnd, WM_GETTEXTLENGTH, 0, 0));
            ASSERT_LE(sel.first, sel.second);
            ASSERT_LE(sel.second, length);
            ASSERT_EQ(TextW(hwnd).size(), length);
            ASSERT_GE(SendMessageW(hwnd, EM_GETLINECOUNT, 0, 0), 1);
        }
        EXPECT_TRUE(DestroyWindow(hwnd));
    }
}
