// What the keys do to an edit window. WM_KEYDOWN moves the caret (Shift extends the selection,
// Ctrl moves by words or to the ends of the text) and deletes; GetKeyState tells Shift and Ctrl
// as on Windows. WM_CHAR types: printable characters replace the selection, Backspace deletes,
// Enter starts a line in a multi-line window (CR LF) and does nothing in a single-line one, Tab
// is typed in a multi-line window only, and the control characters Ctrl+C, Ctrl+V, Ctrl+X and
// Ctrl+Z copy, paste, cut and undo through WM_COPY, WM_PASTE, WM_CUT and WM_UNDO. Other control
// characters are not typed.
#pragma once

#include "platform/system/QzWinTypes.h"

namespace QzPlatform
{

class CEditControl;

class CEditKeys
{
public:
    static void OnKeyDown(CEditControl& edit, WPARAM vk);
    static void OnChar(CEditControl& edit, wchar_t ch);

private:
    static void MoveHorizontally(CEditControl& edit, bool forward, bool shift, bool ctrl);
    static void MoveVertically(CEditControl& edit, long lines, bool shift);
    static void MoveToLineEnd(CEditControl& edit, bool end, bool shift, bool ctrl);
    static void Delete(CEditControl& edit, bool shift, bool ctrl);
    static void Backspace(CEditControl& edit);
    static void Enter(CEditControl& edit);
    static void Type(CEditControl& edit, wchar_t ch);
};

} // namespace QzPlatform
