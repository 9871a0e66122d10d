// The window procedures of the built-in "EDIT" class, one of each kind, and its registration.
// The Unicode procedure answers every message; the ANSI one converts what carries text or
// characters (through the ANSI code page, never splitting a double-byte character) and passes
// everything else as it is. Character positions are characters of the wide text for callers of
// either kind.
//
// Messages answered: WM_NCCREATE, WM_CREATE, WM_NCDESTROY, WM_SETTEXT, WM_GETTEXT,
// WM_GETTEXTLENGTH, WM_SETFONT, WM_GETFONT, WM_SIZE, WM_SETFOCUS, WM_KILLFOCUS, WM_KEYDOWN,
// WM_CHAR, WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_MOUSEMOVE, WM_LBUTTONUP, WM_MOUSEWHEEL,
// WM_HSCROLL, WM_VSCROLL, WM_COPY, WM_CUT, WM_PASTE, WM_CLEAR, WM_UNDO, WM_GETDLGCODE,
// WM_IME_COMPOSITION (with EIMES_GETCOMPSTRATONCE) and every EM_ message of QzWinEdit.h.
// Anything else goes to DefWindowProc, which turns an input method's result into WM_IME_CHAR
// and then WM_CHAR messages, as Windows does for an edit control.
#pragma once

#include "platform/system/QzWinTypes.h"

namespace QzPlatform
{

class CWindowClassTable;

class CEditWindowProc
{
public:
    static void Register(CWindowClassTable& classes);

    static LRESULT CALLBACK WideProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK AnsiProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
};

} // namespace QzPlatform
