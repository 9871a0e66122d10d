// The common base of every control: a caption with font, colour, alignment and optional line
// wrapping, a look state that the background drawing turns into an animation frame, a click
// sound, the dispatch that turns raw messages into handler calls, a multi-line tip shown after
// the mouse rests on the control, and three free values for the host. Each concrete control
// returns its own type code.
#pragma once

#include "framework/QzBaseWindow.h"
#include "platform/render/C3Types.h"

#include <list>
#include <string>
#include <typeinfo>

namespace QzGui
{

class CQzLookHash;

// One line of a control's tip.
struct QzTipLine
{
    std::string strText;
    DWORD dwColor = 0xFFFFFFFF;
};

// Look states of a control (m_wState); the background frame is the state modulo the frame
// count of the control's animation section.
constexpr WORD QZ_STATE_NORMAL = 0;
constexpr WORD QZ_STATE_PRESSED = 1; // also: checked
constexpr WORD QZ_STATE_HOVER = 2;
constexpr WORD QZ_STATE_DISABLED = 3;
constexpr WORD QZ_STATE_HOVER_CHECKED = 4; // check box with the hover look only

class CQzCtrl : public CQzBaseWindow
{
public:
    CQzCtrl();
    CQzCtrl(const CQzCtrl&) = default;
    CQzCtrl& operator=(const CQzCtrl&) = default;

    // CQzBaseWindow overrides.
    ~CQzCtrl() override;
    BOOL LoadWndInfo() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    BOOL EnableWindow(BOOL bEnable) override;
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL Show() override;
    BOOL OnCreate() override { return 1; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // New virtual operations, in slot order.
    virtual void SetTip(const char* pszText, DWORD dwColor, const char* pszSection);
    virtual void ShowTip();
    virtual CQzCtrl* SetCtrlState(WORD wState);
    virtual WORD GetCtrlState() { return m_wState; }
    virtual WORD UpdateState();
    virtual void SetCheck(BOOL bCheck);
    virtual BOOL GetCheck() { return m_bCheck; }
    virtual void SetTagEx(int nTagEx) { m_nTagEx = nTagEx; }
    virtual int GetTagEx() { return m_nTagEx; }
    virtual void SetTag(int nTag) { m_nTag = nTag; }
    virtual int GetTag() { return m_nTag; }
    virtual void SetTagParam(int nTagParam) { m_nTagParam = nTagParam; }
    virtual int GetTagParam() { return m_nTagParam; }
    virtual void SetOwnerId(DWORD nOwnerId) { m_nParentId = nOwnerId; }
    virtual DWORD GetOwnerId() { return m_nParentId; }
    virtual void SetFontSize(WORD wWidth, WORD wHeight);
    virtual C3_SIZE* GetFontSize() { return &m_sizeFont; }
    virtual void SetTextColor(DWORD dwColor)
    {
        m_dwTextColor = dwColor;
        ForgetLook();
    }
    virtual DWORD GetTextColor() { return m_dwTextColor; }
    virtual void SetTextFormat(WORD wFormat)
    {
        m_wTextFormat = wFormat;
        ForgetLook();
    }
    virtual void SetLineSpace(WORD wLineSpace) { m_wLineSpace = wLineSpace; }
    virtual void SetTextOffset(const POINT* pOffset);
    virtual void SetWindowText(const char* pszText);
    virtual int GetTextLength() { return static_cast<int>(m_strText.size()); }
    virtual void ShowText();
    virtual const char* GetWindowText() { return m_strText.c_str(); }
    virtual void InflateWindow(int n);
    virtual void SetMultiLine(BOOL bMultiLine)
    {
        m_bMultiLine = bMultiLine;
        ForgetLook();
    }
    virtual void SetCtrlType(int nCtrlType) { m_nCtrlType = nCtrlType; }
    virtual void SetOption(int nOption) { m_nOption = nOption; }
    virtual void SetTextRaw(const char* pszText);
    virtual void OnShowExtra() {}
    virtual int GetTextLeft();
    virtual void ShowSingleLineText();
    virtual void ShowMultiLineText();

    // Builds the tip from the record: the string table's text of its tip id, else its text.
    void LoadTip();
    // A digest of everything Show reads of the control, for a stock button, check box, caption
    // or slider (the window is one of those classes, not a subclass) whose Show only draws:
    // while it and the data set's epoch stay the same, Show would draw what it drew before
    // (outside debug mode). 0 when Show has more to do (the mouse is in, timers, effects) or
    // reads more than the digest covers (any other class, multi-line text, bitmap and group
    // backs).
    static uint64_t LookDigestOf(const CQzBaseWindow& window);
    // The look digest of a stock control (LookDigestOf) under the data set's epoch, for the
    // drawing walk; 0 when it has none. The control keeps its digest until something the digest
    // covers changes (ForgetLook), so that a control that stays the same is not read again.
    // With QZGUI_CHECK_LOOKS set in the environment (not to 0), a kept digest is checked against
    // the control's fields every time, and one that no longer matches them stops the program.
    static uint64_t LookOf(CQzBaseWindow& window, uint32_t nEpoch);
    // Asks for the memory that LookOf and Show read (a stock control's first nine cache lines;
    // on screens of tens of thousands of controls, asking only for the lines of a kept digest
    // was slower), without waiting for it.
    static void PrefetchLook(const CQzBaseWindow* pWindow)
    {
        const char* pBytes = reinterpret_cast<const char*>(pWindow);
        for (int nLine = 0; nLine < 9; ++nLine)
            __builtin_prefetch(pBytes + nLine * 64);
    }
    // Caption limit in bytes for SetWindowText; 0 or less: none.
    void SetTextLimit(int nMaxTextLen) { m_nMaxTextLen = nMaxTextLen; }

protected:
    // Starts a look digest with what every stock look reads; false when Show has more to do
    // than draw.
    bool StartLook(CQzLookHash& hash) const;
    uint64_t KeptLook();
    void CheckKeptLook() const;
    // A point of the caption's box, relative to the window before the text offset, on the
    // screen (stopping at the int range).
    POINT CaptionAt(int64_t x, int64_t y) const;
    // The record's click sound through the manager, when the record names one.
    void PlayClickSound();
    // WM_COMMAND with the code to the parent window; nothing without a parent.
    void NotifyParent(WORD nCode);
    // Caption text at (x, y) in the control's colour, face and cell height, with its shadow.
    void DrawCaption(int x, int y, const char* pszText, C3_SIZE* pDrawn);
    void DrawCaption(int x, int y, const wchar_t* pszText, C3_SIZE* pDrawn);

    WORD m_wLineSpace = 2;
    WORD m_wTextFormat = 0;
    DWORD m_dwTextColor = 0xFFFFFFFF;
    std::string m_strFont;
    std::string m_strText;
    C3_SIZE m_sizeFont = {0, 0};
    POINT m_ptTipOffset = {0, 0};
    POINT m_ptTextOffset = {0, 0};
    DWORD m_dwHoverTime = 0;
    int m_nTipWidth = 0;
    int m_nMaxTextLen = -1;
    WORD m_wTextLines = 1;
    int m_nTag = 0;
    int m_nTagParam = 0;
    int m_nTagEx = 0;
    BOOL m_bCheck = 0;
    BOOL m_bMultiLine = 0;
    int m_nOption = 1;
    int m_nCtrlType = 0;
    int m_nTipAlign = 0;
    std::list<QzTipLine> m_lstTip;
    std::string m_strTipAni;

private:
    // The look digest of a stock button, check box or caption (`type` is the window's).
    uint64_t CaptionLook(const std::type_info& type) const;
};

} // namespace QzGui
