// The edit shell: the process-wide pair of hidden system edit windows behind every edit box,
// reached through g_pQzEditSingle. The system windows do the editing (caret, selection,
// deletion, clipboard, undo, IME composition); the shell replaces their window procedures so
// that keys and characters first reach the bound edit box and its dialog, filters spaces, the
// length limit and pastes, and then lets the system procedure edit. At most one edit box is
// bound at a time: the one with the keyboard focus. Every frame that box reads the text and the
// selection back from the window in use and draws them itself.
//
// Every GUI manager holds one reference on the shell; the last one deletes it.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>

namespace QzGui
{

class CQzEdit;
class CQzGuiMgr;

class CQzEditSingle
{
public:
    CQzEditSingle(const CQzEditSingle&) = delete;
    CQzEditSingle& operator=(const CQzEditSingle&) = delete;

    // Creates the shell on the first call, adds one reference and returns it.
    static CQzEditSingle* AcquireInstance();
    // Drops one reference; the last one deletes the shell (and its font) and clears
    // g_pQzEditSingle. The system windows stay with their parent, given back their own window
    // procedures.
    static void ReleaseInstance();

    // Creates the two hidden system edit windows under the host window and subclasses them.
    // False when an argument is null or a window cannot be made; the shell then stays uncreated.
    bool Create(HINSTANCE hInstance, HWND hParentWnd, CQzGuiMgr* pGuiMgr);
    bool IsCreated() const { return m_bCreated; }

    // Binding. SetActiveEdit binds the box (EN_KILLFOCUS to the old box's dialog, then
    // EN_SETFOCUS to the new one's), gives its system window the keyboard focus and returns the
    // box bound before. ClearActiveEdit unbinds without a message.
    CQzEdit* SetActiveEdit(CQzEdit* pEdit);
    void ClearActiveEdit();
    // Unbinds a box that is going away and gives the keyboard back to the host window, so that
    // no key reaches the box afterwards. Nothing happens for a box that is not bound.
    void ForgetEdit(CQzEdit* pEdit);
    // Unbinds the bound box (EN_KILLFOCUS to its dialog) and gives the keyboard focus back to
    // the host window, whose keys then reach the GUI manager (an extended edit box taking the
    // manager's key focus).
    void GiveKeyboardToHost();
    CQzEdit* GetActiveEdit() const { return m_pActiveEdit; }
    bool IsActiveEdit(const CQzEdit* pEdit) const { return pEdit && pEdit == m_pActiveEdit; }
    // The system window of the bound box's kind; null while none is bound.
    HWND GetActiveEditWnd() const;
    // Sizes the window in use to the bound box, so that it lays out text over the box's width.
    void FitToActiveEdit();

    // IME. SuspendIme closes an open input method on both windows and remembers it;
    // ResumeIme opens again what SuspendIme closed. EnableIme(false) detaches the input contexts
    // (no composition possible), EnableIme(true) attaches them again.
    void SuspendIme();
    void ResumeIme();
    void EnableIme(bool bEnable);
    // Puts the composition window of the input method at the bound box's caret.
    void UpdateCompositionWindow();

    // The font of the system windows: the face of the first line of ini/font.ini ("Monaco"
    // when the client's language is "English"), always 14 pixels high. Made once per shell.
    HFONT GetEditFont();
    // Forgets the face read from ini/font.ini, so that the next font made reads it again (a host
    // that changes its data root or language).
    static void ForgetFontFace();

    HWND GetSingleLineWnd() const { return m_hSingleLineWnd; }
    HWND GetMultiLineWnd() const { return m_hMultiLineWnd; }
    HWND GetParentWnd() const { return m_hParentWnd; }
    HINSTANCE GetInstance() const { return m_hInstance; }
    CQzGuiMgr* GetGuiMgr() const { return m_pGuiMgr; }
    unsigned GetRefCount() const { return m_nRefCount; }

    // Wrappers over the window in use. Each but GetWindowTextLength and PostMessage reports
    // "::IsWindow(m_hEditWnd)" when that is no window, then makes the call anyway.
    int GetWindowText(char* pszBuffer, int nMax);
    // At most 1023 characters; returns the length taken.
    int GetWindowTextW(wchar_t* pszBuffer, int nMax);
    void SetWindowText(const char* pszText);
    int GetWindowTextLength();
    int GetLine(int nLine, LPSTR pBuffer);
    // Copies line nLine into the buffer of nMax bytes; returns the bytes copied.
    int GetLine(int nLine, char* pszBuffer, int nMax);
    BOOL CanUndo();
    int GetLineCount();
    BOOL GetModify();
    void SetModify(bool bModified);
    void GetRect(RECT* pRect);
    DWORD GetSel();
    void GetSel(int* pStart, int* pEnd);
    void SetFont(HFONT hFont, bool bRedraw);
    uint64_t GetActiveEditData() const;
    void SetMargins(int nLeft, int nRight);
    DWORD GetMargins();
    void SetLimitText(unsigned nMax);
    void LimitText(int nChars);
    unsigned GetLimitText();
    // Client position of the character: x in the low 16 bits, y in the high 16 bits; 65535 in
    // x for an index past the text.
    POINT PosFromChar(unsigned nIndex);
    int CharFromPos(POINT pt);
    int LineFromChar(int nIndex);
    int LineIndex(int nLine);
    int LineLength(int nIndex);
    void LineScroll(int nLines, int nChars);
    void ReplaceSel(const char* pszText, bool bCanUndo);
    void SetPasswordChar(char ch);
    char GetPasswordChar();
    void SetSel(DWORD dwSelection, bool bNoScroll);
    void SetSel(int nStart, int nEnd, bool bNoScroll);
    void SetReadOnly(bool bReadOnly);
    int GetFirstVisibleLine();
    BOOL PostMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // The replaced window procedures of the single-line and the multi-line window.
    static LRESULT CALLBACK SingleLineEditProc(HWND hWnd, UINT message, WPARAM wParam,
                                               LPARAM lParam);
    static LRESULT CALLBACK MultiLineEditProc(HWND hWnd, UINT message, WPARAM wParam,
                                              LPARAM lParam);

private:
    CQzEditSingle() = default;
    ~CQzEditSingle();

    // What the two windows do alike, told apart by bMultiLine.
    LRESULT EditProc(bool bMultiLine, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnKillFocus(bool bMultiLine, HWND hWnd, WPARAM wParam, LPARAM lParam);
    LRESULT OnKeyDown(bool bMultiLine, HWND hWnd, WPARAM wParam, LPARAM lParam);
    LRESULT OnChar(bool bMultiLine, HWND hWnd, WPARAM wParam, LPARAM lParam);
    LRESULT OnMouse(bool bMultiLine, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    // The text in the window in use is already at the limit (in UTF-8 bytes).
    bool IsAtLimit();
    // Up, Down (and Enter in the multi-line window) go to the dialog of a box of that kind too.
    void Forward(bool bMultiLine, UINT message, WPARAM wParam, LPARAM lParam);
    // The bound box's dialog gets WM_COMMAND with the code.
    void NotifyDialog(CQzEdit* pEdit, WORD nCode);
    // Lets the bound box take what the user typed, then unbinds it with EN_KILLFOCUS.
    void ReleaseActiveEdit();
    void ApplyBoxStyle(CQzEdit* pEdit);
    static LRESULT PassOn(bool bMultiLine, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    static void CloseImeOn(HWND hWnd, bool& bClosed);
    static void OpenImeOn(HWND hWnd, bool& bClosed);
    static void DetachImeOn(HWND hWnd, HIMC& hSaved);
    static void AttachImeOn(HWND hWnd, HIMC& hSaved);
    void CheckEditWnd(int nLine) const;
    LRESULT SendW(UINT message, WPARAM wParam, LPARAM lParam, int nLine);
    LRESULT SendA(UINT message, WPARAM wParam, LPARAM lParam, int nLine);
    void RestoreWindowProcs();

    HFONT m_hFont = nullptr;
    unsigned m_nRefCount = 0;
    bool m_bCreated = false;
    HWND m_hSingleLineWnd = nullptr;
    HWND m_hMultiLineWnd = nullptr;
    HWND m_hEditWnd = nullptr;
    HWND m_hParentWnd = nullptr;
    CQzEdit* m_pActiveEdit = nullptr;
    HINSTANCE m_hInstance = nullptr;
    CQzGuiMgr* m_pGuiMgr = nullptr;
    bool m_bImeClosedSingle = false;
    bool m_bImeClosedMulti = false;
    HIMC m_hSavedImcSingle = nullptr;
    HIMC m_hSavedImcMulti = nullptr;
};

// The shell while at least one manager holds it, else null.
extern CQzEditSingle* g_pQzEditSingle;

} // namespace QzGui
