// Calls a window procedure for a caller of either kind. When the procedure has the caller's kind
// the message goes as it is; otherwise text and character codes are converted through the ANSI
// code page (see QzWinUser.h for the messages). An ANSI WM_CHAR byte that starts a double-byte
// character waits in the window until its trail byte arrives; the procedure then gets the one
// wide character.
#pragma once

#include "platform/system/window/WindowProcRef.h"

namespace QzPlatform
{

class CWindowProcCaller
{
public:
    static LRESULT Call(const WindowProcRef& proc, bool callerUnicode, HWND hwnd, UINT msg,
                        WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CallWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                    LPARAM lParam);
    static LRESULT CallAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                    LPARAM lParam);

    static LRESULT GetTextWideFromAnsi(WNDPROC proc, HWND hwnd, WPARAM capacity, LPARAM buffer);
    static LRESULT GetTextAnsiFromWide(WNDPROC proc, HWND hwnd, WPARAM capacity, LPARAM buffer);
    static LRESULT GetTextLengthWideFromAnsi(WNDPROC proc, HWND hwnd);
    static LRESULT GetTextLengthAnsiFromWide(WNDPROC proc, HWND hwnd);
    static LRESULT CharWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                    LPARAM lParam);
    static LRESULT CharAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                    LPARAM lParam);
    static LRESULT CreateWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                      LPARAM lParam);
    static LRESULT CreateAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                      LPARAM lParam);
};

} // namespace QzPlatform
