#include "platform/system/edit/EditKeys.h"

#include "platform/system/QzWinEdit.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/edit/EditControl.h"

#include <algorithm>
#include <cwctype>

namespace QzPlatform
{

namespace
{

bool IsDown(int vk)
{
    return (GetKeyState(vk) & 0x8000) != 0;
}

constexpr wchar_t kCtrlC = 0x03;
constexpr wchar_t kCtrlV = 0x16;
constexpr wchar_t kCtrlX = 0x18;
constexpr wchar_t kCtrlZ = 0x1A;
constexpr wchar_t kDel = 0x7F;

} // namespace

void CEditKeys::OnKeyDown(CEditControl& edit, WPARAM vk)
{
    const bool shift = IsDown(VK_SHIFT);
    const bool ctrl = IsDown(VK_CONTROL);
    const auto page = static_cast<long>(edit.VisibleLines());
    switch (vk)
    {
    case VK_LEFT:
    case VK_RIGHT:
        MoveHorizontally(edit, vk == VK_RIGHT, shift, ctrl);
        break;
    case VK_UP:
    case VK_DOWN:
        if (!edit.IsMultiLine())
            MoveHorizontally(edit, vk == VK_DOWN, shift, false);
        else
            MoveVertically(edit, vk == VK_DOWN ? 1 : -1, shift);
        break;
    case VK_PRIOR:
    case VK_NEXT:
        if (edit.IsMultiLine())
            MoveVertically(edit, vk == VK_NEXT ? page : -page, shift);
        break;
    case VK_HOME:
    case VK_END:
        MoveToLineEnd(edit, vk == VK_END, shift, ctrl);
        break;
    case VK_DELETE:
        Delete(edit, shift, ctrl);
        break;
    case VK_INSERT:
        if (shift && !ctrl)
            SendMessageW(edit.Window(), WM_PASTE, 0, 0);
        else if (ctrl && !shift)
            SendMessageW(edit.Window(), WM_COPY, 0, 0);
        break;
    default:
        break;
    }
}

// A password window moves by words to the ends of the text, giving no word away.
void CEditKeys::MoveHorizontally(CEditControl& edit, bool forward, bool shift, bool ctrl)
{
    const CEditText& text = edit.Text();
    const size_t caret = text.Caret();
    size_t target = 0;
    if (ctrl && edit.IsPassword())
        target = forward ? text.Length() : 0;
    else if (ctrl)
        target = forward ? text.NextWordStart(caret) : text.PreviousWordStart(caret);
    else
        target = forward ? text.NextPosition(caret) : text.PreviousPosition(caret);
    edit.MoveCaret(target, shift);
}

// To the same x on another line (or the nearest character to it).
void CEditKeys::MoveVertically(CEditControl& edit, long lines, bool shift)
{
    const CEditLayout& layout = edit.Layout();
    const size_t caret = edit.Text().Caret();
    const auto line = static_cast<long>(layout.LineOfChar(caret));
    const long last = static_cast<long>(layout.LineCount()) - 1;
    const long target = std::clamp(line + lines, 0L, last);
    edit.MoveCaret(layout.CharAtX(static_cast<size_t>(target), layout.XOfChar(caret)), shift);
}

void CEditKeys::MoveToLineEnd(CEditControl& edit, bool end, bool shift, bool ctrl)
{
    const CEditLayout& layout = edit.Layout();
    if (ctrl || !edit.IsMultiLine())
    {
        edit.MoveCaret(end ? edit.Text().Length() : 0, shift);
        return;
    }
    const EditLine& line = layout.Line(layout.LineOfChar(edit.Text().Caret()));
    edit.MoveCaret(end ? line.start + line.length : line.start, shift);
}

// Delete: the selection (Shift: cut it), else the next character (Shift: the one before,
// Ctrl: the rest of the line).
void CEditKeys::Delete(CEditControl& edit, bool shift, bool ctrl)
{
    const CEditText& text = edit.Text();
    if (edit.IsReadOnly() || (shift && ctrl))
        return;
    if (text.HasSelection())
    {
        SendMessageW(edit.Window(), shift ? WM_CUT : WM_CLEAR, 0, 0);
        return;
    }
    const size_t caret = text.Caret();
    if (shift)
    {
        edit.DeleteRange(text.PreviousPosition(caret), caret);
        return;
    }
    const CEditLayout& layout = edit.Layout();
    const EditLine& line = layout.Line(layout.LineOfChar(caret));
    const size_t end = ctrl ? std::max(line.start + line.length, caret) : text.NextPosition(caret);
    edit.DeleteRange(caret, end);
}

void CEditKeys::OnChar(CEditControl& edit, wchar_t ch)
{
    const HWND hwnd = edit.Window();
    switch (ch)
    {
    case VK_BACK:
        Backspace(edit);
        return;
    case L'\r':
    case L'\n':
        Enter(edit);
        return;
    case L'\t':
        if (edit.IsMultiLine())
            Type(edit, ch);
        return;
    case kCtrlC:
        SendMessageW(hwnd, WM_COPY, 0, 0);
        return;
    case kCtrlV:
        if (!edit.IsReadOnly())
            SendMessageW(hwnd, WM_PASTE, 0, 0);
        return;
    case kCtrlX:
        if (!edit.IsReadOnly())
            SendMessageW(hwnd, WM_CUT, 0, 0);
        return;
    case kCtrlZ:
        if (!edit.IsReadOnly())
            SendMessageW(hwnd, WM_UNDO, 0, 0);
        return;
    default:
        if (ch >= L' ' && ch != kDel)
            Type(edit, ch);
        return;
    }
}

void CEditKeys::Backspace(CEditControl& edit)
{
    const CEditText& text = edit.Text();
    if (edit.IsReadOnly())
        return;
    if (text.HasSelection())
    {
        edit.DeleteRange(text.SelStart(), text.SelEnd());
        return;
    }
    edit.DeleteRange(text.PreviousPosition(text.Caret()), text.Caret());
}

// A new line in a multi-line window; one that has no room for it beeps. A read-only window
// moves to the start of the next line instead.
void CEditKeys::Enter(CEditControl& edit)
{
    if (!edit.IsMultiLine())
        return;
    if (edit.IsReadOnly())
    {
        MoveToLineEnd(edit, false, false, false);
        MoveVertically(edit, 1, false);
        return;
    }
    if (!edit.InsertText(L"\r\n", EditInsert()))
        edit.Beep();
}

// ES_NUMBER refuses anything but a digit with a beep; ES_UPPERCASE and ES_LOWERCASE convert.
void CEditKeys::Type(CEditControl& edit, wchar_t ch)
{
    if (edit.IsReadOnly())
        return;
    const DWORD style = edit.LiveStyle();
    if ((style & ES_NUMBER) && !(ch >= L'0' && ch <= L'9'))
    {
        edit.Beep();
        return;
    }
    if (style & ES_UPPERCASE)
        ch = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ch)));
    else if (style & ES_LOWERCASE)
        ch = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(ch)));
    edit.InsertText(std::wstring(1, ch), EditInsert());
}

} // namespace QzPlatform
