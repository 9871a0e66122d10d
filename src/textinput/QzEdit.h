// The edit box: single-line or multi-line text entry with number-only, password, no-space and
// IME switches, a text limit, a selection colour and inline emotion codes. It keeps no editing
// state of its own beyond a copy of its text: while it has the keyboard focus it is bound to the
// edit shell (QzEditSingle.h), whose hidden system edit window does the editing, and every frame
// it reads the text, the selection and the character positions back from that window and draws
// them. Unfocused, it draws its stored copy.
//
// A host sets a box up before creating it:
//     pEdit->PreSetParam(false, 0, 0xFFFFFFFF, true);   // single-line, white text
//     pEdit->SetNumberOnly(true); pEdit->SetLimitText(6);
//     pDialog->AddCtrl(ID_PIN, pEdit);
// and reads what was typed with GetText (or GetWindowText) after an EN_CHANGE.
#pragma once

#include "controls/QzCtrl.h"

#include <cstdint>
#include <string>

namespace QzGui
{

class CQzEdit : public CQzCtrl
{
public:
    CQzEdit();
    CQzEdit(const CQzEdit&) = default;
    CQzEdit& operator=(const CQzEdit&) = default;

    // Overrides, in slot order.
    ~CQzEdit() override;
    BOOL LoadWndInfo() override;
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) override;
    void OnRButtonDown(UINT nFlags, POINT point) override;
    int GetWndType() override { return QZ_WND_EDIT; }
    BOOL EnableWindow(BOOL bEnable) override;
    BOOL OnCreate() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetTextColor(DWORD dwColor) override { m_dwEditTextColor = dwColor; }
    void SetWindowText(const char* pszText) override;
    void ShowText() override;
    void ShowSingleLineText() override;
    void ShowMultiLineText() override;

    // New virtual operations, in slot order.
    // A character for the box: from the keyboard through the shell before the system window
    // inserts it, or made up by the host (nRepCnt and nFlags 0), which the box then posts.
    virtual void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    virtual int GetLineLength();
    virtual int GetMaxChars();
    virtual void OnTextChange() {}
    virtual void OnTextUpdate() {}
    // Width in pixels of pszText[nFrom..nTo) (nTo -1: to the end), measured character by
    // character or, with bWhole, as one run; 0 for a range outside the text.
    virtual int CalcTextWidth(const wchar_t* pszText, int nFrom, int nTo, const char* pszFace,
                              int nSize, bool bWhole);
    // The face to draw with: ini/font.ini's face ("Monaco" for English), else "NULL".
    virtual const char* GetFontName();
    virtual void ShowInactiveText();
    // Whether "#NN|MM" starts at nPos of a text of nLen bytes.
    virtual bool IsEmotionCode(const char* pszText, int nPos, int nLen);

    // Set-up before Create: multi-line, a value kept for the caller, the text colour, Enter
    // allowed (multi-line only).
    void PreSetParam(bool bMultiLine, DWORD nValue, DWORD dwTextColor, bool bAllowEnter);

    // Switches; they take effect at the next binding unless said.
    void SetNumberOnly(bool bNumberOnly) { SetNumberOnlyFlag(bNumberOnly); }
    void SetNumberOnlyFlag(bool bNumberOnly) { m_bNumberOnly = bNumberOnly; }
    void SetAllowEnter(bool bAllow) { m_bAllowEnter = bAllow; }
    void SetNoSpace(bool bNoSpace) { m_bNoSpace = bNoSpace; }
    void SetPassword(bool bPassword) { m_bPassword = bPassword; }
    void SetImeEnable(bool bEnable) { m_bImeEnable = bEnable; }
    void SetAlwaysShowCaret(bool bShow) { m_bAlwaysShowCaret = bShow; }
    bool GetAlwaysShowCaret() const { return m_bAlwaysShowCaret; }
    void SetSelColor(DWORD dwColor) { m_dwSelColor = dwColor; }
    void SetMultiTextOffset(int nLeft) { m_nMultiTextLeft = nLeft; }
    void SetTextMargin(int nTop, int nLeft);
    void SetEditData(uint64_t nData) { m_nEditData = nData; }
    uint64_t GetEditData() const { return m_nEditData; }
    // Limit in bytes of UTF-8 for typing; also the system window's limit while bound.
    void SetLimitText(int nLimit);
    int GetLimitText() const { return m_nLimitText; }
    void SetReadOnly(int nReadOnly);
    int GetReadOnly() const { return m_nReadOnly; }
    // The system window's password character, whichever box is bound.
    void SetPasswordChar(char ch);

    bool IsMultiLineEdit() const { return m_bMultiLineEdit; }
    bool IsNumberOnly() const { return m_bNumberOnly; }
    bool IsNoSpace() const { return m_bNoSpace; }
    bool IsPassword() const { return m_bPassword; }
    bool IsImeEnabled() const { return m_bImeEnable; }
    // The main window of the box's GUI manager; null without one.
    HWND GetHostWnd() const;

    // Text. GetText and GetTextW copy the stored text (at most n - 1 units and a terminator,
    // never half a two-byte character) and return n; 0 without the shell or a buffer.
    int GetText(char* pszBuffer, int n);
    int GetTextW(wchar_t* pszBuffer, int n);
    const std::wstring& GetWideText() const { return m_strTextW; }
    // The system window's text length; -1 without the shell.
    int GetEditTextLength();

    // Selection of the system window; -1 or nothing without the shell.
    DWORD GetSel();
    void GetSel(int* pStart, int* pEnd);
    void SetSel(DWORD dwSelection, bool bNoScroll);
    void SetSel(int nStart, int nEnd, bool bNoScroll);

    // Focus: binds the box to the shell and gives its system window the keyboard.
    void SetFocus();
    bool IsFocused() const;

    // Multi-line: a line break at the caret while the box has room for another line.
    void InsertNewLine();

    // Takes the text of the system window while bound, with EN_UPDATE and EN_CHANGE when it
    // changed; the shell calls it before it unbinds the box.
    void SyncFromShell();

    // Whether pos falls on the second byte of a two-byte character (every byte from 0x80 on
    // opens one). Wide text has none.
    static bool IsDBCSTrail(const char* pszText, int nPos);
    static bool IsDBCSTrailW(const wchar_t* pszText, int nPos);
    // Forgets the face read for drawing, so that the next GetFontName reads ini/font.ini again.
    static void ForgetFontName();

private:
    // The caret index, and the first visible character and how many fit, of a single-line box.
    struct VisibleRun
    {
        int nCaret;
        int nFirst;
        int nCount;
    };

    void UpdateMetrics();
    VisibleRun FindVisibleRun(int nStart, int nEnd, int nLength);
    // The origin of single-line text (alignment, margins, box position).
    POINT TextOrigin() const;
    // Steps 2 and 3 of a frame: the window's text into the copies; true when it changed.
    bool ReadBack();
    // Ctrl+V into a box without IME: the clipboard is emptied when it holds two-byte text.
    // True when the clipboard was looked at.
    bool ScreenPaste(WPARAM wParam);
    // Backspace right after an emotion code takes the whole code.
    void DeleteEmotionCode();
    void TrimExtraLines();
    void PlaceComposition();
    void DrawCaret(int x, int y, int nHeight);
    bool IsCaretOn() const;
    void DrawRun(int x, int y, const char* pszText);
    void DrawRun(int x, int y, std::wstring run);
    void DrawSelection(const std::wstring& run, POINT ptOrigin, int nSelStart, int nSelLength);
    void ShowInactiveLines();
    void ShowInactiveSingleLine();

    bool m_bMultiLineEdit = false;
    bool m_bAllowEnter = true;
    bool m_bImeEnable = true;
    bool m_bNumberOnly = false;
    bool m_bNoSpace = false;
    int m_nWidth = 0;
    int m_nHeight = 0;
    int m_nSelLength = 0;
    int m_nCaretAnchor = 0;
    int m_nReadOnly = 0;
    int m_nLimitText = 256;
    uint64_t m_nEditData = 0;
    uint16_t m_nFontSize = 14;
    uint8_t m_nCharWidth = 7;
    bool m_bPassword = false;
    int m_nCharsPerLine = 0;
    DWORD m_dwEditTextColor = 0;
    DWORD m_dwSelColor = 0xFF2222FF;
    int m_nMultiTextLeft = 0;
    int m_nMultiTextTop = 0;
    bool m_bPreSetParam = false;
    bool m_bAlwaysShowCaret = false;
    int m_nTextTop = 0;
    int m_nTextLeft = 0;
    HWND m_hOwnerWnd = nullptr;
    std::wstring m_strTextW;
};

} // namespace QzGui
