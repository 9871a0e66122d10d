// One window of the "EDIT" class: its text and selection, undo, limit, font cell, margins,
// scrolling and the notifications it sends its parent. The message dispatch (EditWindowProc)
// and the key handling (EditKeys) drive it; it knows its window only to read its size and
// style, to take the focus and the clipboard, and to notify.
//
// Styles read once at creation, as Windows does: ES_MULTILINE, ES_AUTOHSCROLL, ES_AUTOVSCROLL,
// ES_PASSWORD, ES_READONLY (changed by EM_SETREADONLY), WS_HSCROLL. Styles read when used, so
// that SetWindowLong changes them: ES_NUMBER, ES_UPPERCASE, ES_LOWERCASE.
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/edit/EditLayout.h"
#include "platform/system/edit/EditText.h"
#include "platform/system/edit/EditUndo.h"

#include <string>

namespace QzPlatform
{

// How an insertion is made: whether it can be undone and whether the text limit and the
// window's room cut it.
struct EditInsert
{
    bool canUndo = true;
    bool honorLimit = true;
};

class CEditControl
{
public:
    CEditControl(HWND hwnd, DWORD style);

    // Kept alive while one of its messages is being handled: a parent that destroys the window
    // from a notification leaves the object to the outermost message to delete.
    void Enter() { ++m_nDepth; }
    // True when the object is to be deleted now.
    bool Leave() { return --m_nDepth == 0 && m_bDead; }
    void MarkDead() { m_bDead = true; }
    bool IsDead() const { return m_bDead; }
    bool IsBusy() const { return m_nDepth > 0; }

    HWND Window() const { return m_hWnd; }
    bool IsMultiLine() const { return m_bMultiLine; }
    bool IsReadOnly() const { return m_bReadOnly; }
    bool IsPassword() const { return m_chPassword != 0; }
    DWORD LiveStyle() const;
    const CEditText& Text() const { return m_text; }
    const CEditLayout& Layout();

    // WM_SETTEXT: no limit, no undo, the modify flag cleared, the selection at the start;
    // EN_UPDATE and EN_CHANGE for a single-line window when notify is set.
    void SetWindowText(const std::wstring& text, bool notify = true);
    // The one way text is typed, pasted or replaced: cut to the limit and to the window's room
    // (EN_MAXTEXT when cut), replace the selection, record undo, notify. False when cut.
    bool InsertText(std::wstring text, const EditInsert& how);
    // Removes [start, end) as a user edit (Backspace, Delete, WM_CLEAR).
    void DeleteRange(size_t start, size_t end);
    bool Undo();
    bool CanUndo() const { return m_undo.CanUndo(); }
    void EmptyUndo() { m_undo.Empty(); }
    bool IsModified() const { return m_bModified; }
    void SetModified(bool modified) { m_bModified = modified; }

    // EM_SETSEL: anchor and caret, -1 start for no selection, values past the end at the end.
    void SetSelFromMessage(LONG_PTR start, LONG_PTR end);
    void MoveCaret(size_t index, bool extend);
    void Select(size_t anchor, size_t caret);

    void Copy();
    void Cut();
    void Paste();
    void Clear();

    UINT Limit() const { return m_nLimit; }
    void SetLimit(UINT limit);
    void SetReadOnly(bool readOnly);
    wchar_t PasswordChar() const { return m_chPassword; }
    void SetPasswordChar(wchar_t ch);

    HFONT Font() const { return m_hFont; }
    void SetFont(HFONT font);
    const EditCell& Cell() const { return m_cell; }
    void SetMargins(UINT flags, int left, int right);
    int LeftMargin() const { return m_nLeftMargin; }
    int RightMargin() const { return m_nRightMargin; }
    RECT FormatRect() const;
    // EM_SETRECT; null gives the default rectangle back.
    void SetFormatRect(const RECT* rect);
    size_t VisibleLines() const;

    // Client coordinates of a character, and the character nearest a client point.
    POINT PosFromChar(size_t index);
    size_t CharFromPos(int x, int y, size_t* line);

    size_t TopLine() const { return m_nTopLine; }
    size_t FirstVisibleChar();
    void ScrollCaret();
    // EM_LINESCROLL (multi-line only).
    void ScrollLines(LONG_PTR lines, LONG_PTR chars);
    // A scroll bar's command (WM_VSCROLL, EM_SCROLL, WM_HSCROLL of a multi-line window); the
    // lines it moved.
    LONG_PTR ScrollVertical(int code, int position);
    void ScrollHorizontal(int code);

    void OnSize();
    void OnSetFocus();
    void OnKillFocus();
    bool HasFocus() const { return m_bFocused; }
    void OnButtonDown(int x, int y, bool extend);
    void OnMouseMove(int x, int y);
    void OnButtonUp() { m_bTracking = false; }
    void OnDoubleClick(int x, int y);

    DWORD ImeStatus() const { return m_dwImeStatus; }
    void SetImeStatus(DWORD status) { m_dwImeStatus = status; }

    // WM_COMMAND to the parent with this window's id and the code. False once the window is
    // gone (the parent may destroy it from the notification).
    bool Notify(WORD code);
    void Beep();

private:
    bool CutToLimit(std::wstring& text) const;
    bool CutToRoom(std::wstring& text);
    bool Fits(const std::wstring& text);
    bool ChecksRoom() const;
    void Changed(const EditChange& change, bool canUndo);
    void Invalidate() { m_bLayoutValid = false; }
    void PullBackView();
    void NotifyChange();
    bool MoveView(size_t top, int scrollX);
    // The text as the window shows it: the text itself, or as many password characters (kept
    // in m_strMasked). Texts reach 64 KB: no copy is made of a plain one.
    const std::wstring& DisplayText(const std::wstring& text);
    int WrapWidth() const;
    int ClientWidth() const;
    int ClientHeight() const;
    void ScrollSingleLine(int caretX, int width);
    void ScrollMultiLine(size_t caretLine, int caretX, int width);

    HWND m_hWnd;
    bool m_bMultiLine;
    bool m_bAutoHScroll;
    bool m_bAutoVScroll;
    bool m_bWraps;
    bool m_bReadOnly;
    wchar_t m_chPassword;
    CEditText m_text;
    CEditUndo m_undo;
    CEditLayout m_layout;
    std::wstring m_strMasked;
    bool m_bLayoutValid = false;
    bool m_bModified = false;
    UINT m_nLimit;
    HFONT m_hFont = nullptr;
    EditCell m_cell;
    int m_nLeftMargin = 0;
    int m_nRightMargin = 0;
    bool m_bCustomRect = false;
    RECT m_rcCustom = {0, 0, 0, 0};
    size_t m_nTopLine = 0;
    int m_nScrollX = 0;
    bool m_bFocused = false;
    bool m_bTracking = false;
    DWORD m_dwImeStatus = 0;
    int m_nDepth = 0;
    bool m_bDead = false;
};

} // namespace QzPlatform
