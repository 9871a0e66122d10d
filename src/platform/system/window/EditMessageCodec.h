// The edit messages that carry text or a character, converted between a caller and a window
// procedure of different kinds as Windows converts them: EM_REPLACESEL (the text),
// EM_GETLINE (the buffer, its size in its first 16-bit word: bytes for ANSI, characters for
// wide), EM_SETPASSWORDCHAR and EM_GETPASSWORDCHAR (the character). CWindowProcCaller uses it.
#pragma once

#include "platform/system/QzWinTypes.h"

namespace QzPlatform
{

class CEditMessageCodec
{
public:
    static bool Converts(UINT msg);
    // An ANSI caller's message to a Unicode procedure, and the reverse.
    static LRESULT CallWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                    LPARAM lParam);
    static LRESULT CallAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                    LPARAM lParam);

private:
    static LRESULT GetLineWideFromAnsi(WNDPROC proc, HWND hwnd, WPARAM line, LPARAM buffer);
    static LRESULT GetLineAnsiFromWide(WNDPROC proc, HWND hwnd, WPARAM line, LPARAM buffer);
};

} // namespace QzPlatform
