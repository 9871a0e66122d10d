// The self-contained edit box: it keeps its text as bytes of the code page (two-byte
// characters as two bytes), its own caret and selection, lays lines out on the default
// character cell, and handles keys, the mouse, the clipboard and the input method's result
// string itself, without a system edit window. Emotion codes ("#05", "#42", "#12|34") draw as
// icons, and the caret steps over them, over two-byte characters and over CR LF pairs as units
// that are deleted whole. While it is the GUI manager's key focus, the manager sends it the
// host window's keyboard, character and IME messages.
//
// A host builds one as any control: construct, PreSetParam, add it to a dialog, then register
// the dialog. Enter in a single-line box sends WM_NOTIFY with code QZ_EDITEX_ENTER to the
// dialog; the text is read with GetWindowText or GetText.
#pragma once

#include "controls/QzCtrl.h"
#include "framework/QzMsg.h"

#include <algorithm>
#include <string>

namespace QzGui
{

class CQzEditExText;

// WM_NOTIFY code sent to the dialog when Enter is typed into a single-line box.
constexpr WORD QZ_EDITEX_ENTER = 3;

// Input modes (m_nInputMode).
enum : int
{
    QZ_EDITEX_NORMAL = 0,
    QZ_EDITEX_PASSWORD = 1,
    QZ_EDITEX_DIGITS = 2,
    QZ_EDITEX_DIGITS_EX = 3,
};

class CQzEditEx : public CQzCtrl
{
public:
    CQzEditEx();
    CQzEditEx(const CQzEditEx&) = default;
    CQzEditEx& operator=(const CQzEditEx&) = default;

    // Overrides.
    ~CQzEditEx() override;
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) override;
    void OnMouseEnter() override {}
    void OnMouseLeave() override {}
    int GetWndType() override { return QZ_WND_EDIT; }
    BOOL OnCreate() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetTextColor(DWORD dwColor) override;
    // Empties the box, then inserts the text as typed (mode and line rules apply; any line
    // break becomes one CR LF; from the first unit that does not fit on, the text is left
    // out); the caret goes to the start. Null empties.
    void SetWindowText(const char* pszText) override;
    void ShowText() override;

    // New virtual operations, in slot order. The first three are reserved places that keep the
    // operations after them where derived hosts expect them; the box never calls them.
    virtual void OnReserved1() {}
    virtual void OnReserved2() {}
    virtual void OnReserved3() {}
    virtual int GetStepLength(int nDirection, int p);
    // The low and high words of wParam of WM_VSCROLL and WM_HSCROLL.
    virtual void OnVScrollEdit(WORD /*wLow*/, WORD /*wHigh*/) {}
    virtual void OnHScrollEdit(WORD /*wLow*/, WORD /*wHigh*/) {}

    // Before Create: a multi-line box keeps its caret's line visible, a single-line box
    // scrolls sideways to its caret. The value is kept for the host (GetParamValue).
    void PreSetParam(bool bMultiLine, DWORD dwValue, DWORD dwTextColor);
    void SetParamValue(DWORD dwValue) { m_dwParamValue = dwValue; }
    DWORD GetParamValue() const { return m_dwParamValue; }
    bool IsMultiLineEdit() const { return m_bMultiLineEdit; }

    // Input modes: password shows asterisks; both digit modes take only "0" to "9" and keep
    // the input language.
    void SetPasswordMode() { m_nInputMode = QZ_EDITEX_PASSWORD; }
    void SetDigitMode() { m_nInputMode = QZ_EDITEX_DIGITS; }
    void SetDigitModeEx() { m_nInputMode = QZ_EDITEX_DIGITS_EX; }
    int GetInputMode() const { return m_nInputMode; }

    // Text limit in bytes (negative counts as 0); text already longer stays.
    void SetMaxText(int nMax);
    int GetMaxText() const { return m_nMaxText; }
    void SetMargin(int x, int y);
    void SetSelColor(DWORD dwColor) { m_dwSelColor = dwColor; }

    // Copies at most n bytes (and a terminating zero when there is room); returns min(n,
    // length), 0 for a null buffer.
    int GetText(char* pBuffer, int n);

    // Makes this the GUI manager's key focus; IsFocused tells whether it still is.
    void SetFocus();
    bool IsFocused() const;

    // Lines, counted from 1 (a single-line box has one).
    int GetLineCount();
    int GetLineOfChar(int nIndex);
    int GetLineStart(int nLine);
    int GetLineLength(int nLine);
    int GetLineText(int nLine, char* pBuffer, int n);
    int GetFirstVisibleLine() const { return m_nFirstVisibleLine; }
    int GetFirstVisibleChar() const { return m_nFirstVisibleChar; }

    // Caret indexes: the index of the byte before the caret, -1 at the start. The selection is
    // the bytes after the lower and up to the higher index. SetSel ignores indexes outside
    // -1..length - 1.
    void SetSel(int nAnchor, int nCaret);
    void SetCaret(int nIndex) { SetSel(nIndex, nIndex); }
    void GetSel(int* pAnchor, int* pCaret) const;
    int GetCaret() const { return m_nCaret; }
    // Replaces the selection with the text (null: nothing), cut at a whole unit where the
    // limit is reached; the caret goes to the lower end of the old selection.
    void ReplaceSel(const char* pszText);

    // Top-left of the caret that stands before byte i, inside the box.
    POINT GetCaretPos(int i);
    // The caret index for a point inside the box.
    int CharFromPoint(POINT pt);

    // One typed byte, as a user types it; false when it is refused (limit, mode, full box).
    bool InsertChar(BYTE ch);
    // Types the emotion code of n (0..9999) as characters; false when it is refused.
    bool InsertEmotion(short n);
    static bool IsEmotionCode(const char* pszText, int nPos, int nLen);

protected:
    void UpdateFirstVisibleChar();
    void UpdateFirstVisibleLine();
    void DrawSelection();

private:
    enum class InsertResult
    {
        kDone,
        kRefused, // by the mode: further input may still go in
        kFull,    // by the limit or the box width
    };

    CQzEditExText Text() const;
    int GetColumns() const;
    int GetVisibleLines() const;
    static C3_SIZE Cell();
    int LineHeight() const { return Cell().iHeight + 4; }
    int LineAtY(const CQzEditExText& text, int y) const;
    void ClampSel();
    int SelLow() const { return std::min(m_nSelAnchor, m_nCaret); }
    int SelHigh() const { return std::max(m_nSelAnchor, m_nCaret); }
    bool HasSel() const { return m_nSelAnchor != m_nCaret; }
    bool HasRoomFor(int nBytes) const;
    bool IsDigitMode() const;

    // The text model: every change of the bytes goes through these.
    void InsertBytes(const char* pBytes, int n);
    void EraseBytes(int nFirst, int nCount);
    void DeleteSel();
    InsertResult InsertUnit(const char* pUnit, int n, bool bAsTyped);
    // Units of outside text; stops at the first that does not fit. False when the last unit
    // was not taken.
    bool InsertText(const char* pszText, size_t nLength, bool bAsTyped);
    void RemoveLoneLeadBeforeCaret();

    // Keys and characters.
    LRESULT OnChar(WPARAM wParam);
    void OnBackspace();
    void OnDelete();
    void MoveCaret(int nIndex, bool bExtend);
    bool LineMoveTarget(int nLineDelta, int* pIndex);
    void PlaceCompositionWindow();
    void OnImeResult();
    void TypeBytes(const char* pBytes, int n);
    bool InsertWideChar(WPARAM wParam);
    void NotifyEnter();

    // Mouse.
    void SetIBeamCursor();
    int IndexForMouse(LPARAM lParam);
    void OnMouseDown(LPARAM lParam);

    // Clipboard.
    bool Paste();
    bool CopySel();

    // Drawing.
    void DrawCaret();
    void DrawRun(int x, int y, const std::string& strRun);
    void DrawLines(int x, int y);
    void DrawSingleLine(int x, int y);
    void DrawSelBlock(int nTop, int nFromCol, int nToCol);

    bool m_bPreSetParam = false;
    bool m_bMultiLineEdit = false;
    bool m_bSelecting = false;
    bool m_bVScroll = false;
    bool m_bHScroll = false;
    int m_nMaxText = 512;
    int m_nSelAnchor = -1;
    int m_nCaret = -1;
    int m_nFirstVisibleLine = 1;
    int m_nFirstVisibleChar = 0;
    int m_nInputMode = QZ_EDITEX_NORMAL;
    DWORD m_dwSelColor = 0xFF2222FF;
    HWND m_hMyShellWnd = nullptr;
    POINT m_ptMargin = {0, 0};
    // The value PreSetParam and SetParamValue keep for the host.
    DWORD m_dwParamValue = 0;
    // The colour PreSetParam or SetTextColor gave, kept over creation unless the record
    // names a colour.
    DWORD m_dwGivenColor = 0xFFFFFFFF;
};

} // namespace QzGui
