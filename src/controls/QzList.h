// A single-selection list of text rows: optional columns, a colour, a host value, a blinking
// state and a time stamp per row, a mouse-over bar, a marked row with two decorations and a tip
// per row drawn in a nine-part frame. The list does not own its scroll bar: the host creates two
// scroll buttons and a slider as ordinary controls and hands them to PreSetParam; the list binds
// them to itself and keeps the slider in step with the view. Clicks go to the parent as list-box
// notifications and, by the list's style, to an owner window the host sets.
//
// Every per-frame path costs in proportion to the rows in view, not to the rows held: the
// selection is kept as an index that every row change maintains.
#pragma once

#include "controls/QzCtrl.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace QzGui
{

class CQzScrollButton;
class CQzSlider;

// One row of a list.
struct QzListItem
{
    bool bSelected = false;
    bool bBlink = false;
    DWORD dwColor = 0; // ARGB; 0: the list's item colour
    DWORD dwTime = 0;  // time stamp (ms) of the blink
    DWORD dwData = 0;  // the host's value
    std::string strText;
};

// Click semantics of a list: what it sends its owner.
enum : int
{
    QZ_LIST_STYLE_NOTIFY = 1, // 331/336 on presses, 336 (1, row) on double clicks
    QZ_LIST_STYLE_TOGGLE = 2, // 389, a second press on the same row toggles; blinking rows
    QZ_LIST_STYLE_ROWS = 4,   // 389 on presses on a row, WM_COMMAND (2, row) on double clicks
};

// The list-box messages a list sends itself on every row change; each recounts the rows.
enum : UINT
{
    QZ_LB_ADDSTRING = 384,    // lParam: the text
    QZ_LB_INSERTSTRING = 385, // wParam: the index, lParam: the text
    QZ_LB_DELETESTRING = 386, // wParam: the index
    QZ_LB_RESETCONTENT = 388,
};

// Messages a list sends its owner (wParam and lParam by style).
enum : UINT
{
    QZ_WM_LISTICONCLICK = 331,
    QZ_WM_LISTCLICK = 336,
    QZ_WM_LISTSELECT = 389,
    QZ_WM_LISTRCLICK = 1124,
};

// wParam of the owner's right-press report.
constexpr WPARAM QZ_LIST_RCLICK_CODE = 20;

class CQzList : public CQzCtrl
{
public:
    // Longest text a row keeps, in bytes.
    static constexpr size_t kMaxItemText = 1023;

    CQzList();
    CQzList(const CQzList&) = default;
    CQzList& operator=(const CQzList&) = default;

    // CQzCtrl overrides, in slot order.
    ~CQzList() override;
    BOOL LoadWndInfo() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    void OnLButtonDblClk(UINT nFlags, POINT point) override;
    void OnRButtonDown(UINT nFlags, POINT point) override;
    int GetWndType() override { return QZ_WND_LIST; }
    BOOL Show() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // New virtual operations, in slot order.
    virtual void DrawItems();
    virtual void DrawItemTip();

    // Rows. Indexes outside the rows give -1 (0xFFFFFFFF) from the getters and 0 from the
    // setters.
    int AddString(const char* pszText);
    // Inserts before the index (the count appends); -1 for a null text or an index outside.
    int InsertString(int nIndex, const char* pszText);
    // The index removed, or -1 when there is no such row.
    int DeleteString(int nIndex);
    void ResetContent();
    int GetCount() const { return static_cast<int>(m_vecItem.size()); }
    // Copies the whole text with its terminator: the buffer must hold GetTextLen + 1 bytes.
    int GetText(int nIndex, char* pszBuffer) const;
    int GetTextLen(int nIndex) const;
    // The first row at or after nStart whose text equals the text exactly, or -1.
    int FindString(int nStart, const char* pszText) const;
    DWORD GetItemData(int nIndex) const;
    BOOL SetItemData(int nIndex, DWORD dwData);
    // The row's own colour, or the list's item colour for a row without one.
    DWORD GetItemColor(int nIndex) const;
    BOOL SetItemColor(int nIndex, DWORD dwColor);
    int GetItemBlink(int nIndex) const;
    BOOL SetItemBlink(int nIndex, BOOL bBlink);
    DWORD GetItemTime(int nIndex) const;
    BOOL SetItemTime(int nIndex, DWORD dwTime);
    // Tips belong to row indexes, not to rows: inserting or deleting a row does not move them.
    // A null text or an index outside 0..kMaxItemTipIndex is ignored (result 0).
    static constexpr int kMaxItemTipIndex = (1 << 20) - 1;
    BOOL SetItemTip(int nIndex, const char* pszText);

    // Selection and view.
    int GetCurSel() const { return m_nSelIndex; }
    int GetSel(int nIndex) const;
    // Selects row nRow of the view (top index + nRow) and clears every other row; a row below
    // the last clears the selection. -1 unless 0 <= nRow < count.
    int SelectRow(int nRow);
    int GetTopIndex() const { return static_cast<int>(m_nTopIndex); }
    // Ignored (result 0) unless 0 <= nIndex < count. The slider is not moved: SyncSlider.
    BOOL SetTopIndex(int nIndex);
    // The row's rectangle on the screen as the view places it; 0 for an index outside.
    BOOL GetItemRect(int nIndex, RECT* pRect) const;
    // The row of the view under the point, or -1; *pbMiss (may be null) tells which.
    int HitTest(POINT point, BOOL* pbMiss) const;
    int GetPageCount() const;
    int GetCurPage() const;
    // Takes the row count and decides whether the view scrolls (shows or hides the slider).
    void UpdateCounts();
    // Puts the slider's thumb where the top index stands in the rows that can scroll.
    void SyncSlider();
    // Cuts the text in place at the longest prefix of at most nMaxBytes bytes whose width in
    // the list's face stays below nMaxPixels, never inside a two-byte character; the length.
    int FitText(char* pszText, int nMaxBytes, int nMaxPixels) const;
    // Draws one row's text at (x, y) by the columns: the whole text for one column, else the
    // first 2..4 space-separated fields (up to 15 bytes each), 10 font sizes apart, and nothing
    // unless the text has that many. A null text is reported.
    void DrawColumns(int x, int y, DWORD dwColor, const char* pszText);

    // Set-up, before creation: the style and the scroll bar's controls (each may be null). The
    // buttons are bound to the list with their kinds, the slider gets a range of 100.
    void PreSetParam(int nStyle, CQzScrollButton* pUpButton, CQzScrollButton* pDownButton,
                     BYTE byUpKind, BYTE byDownKind, CQzSlider* pSlider);
    // The window that gets the style's codes; not owned, it must outlive the list.
    void SetOwner(CQzBaseWindow* pOwner) { m_pOwner = pOwner; }
    // 1 to 4; anything else is 1.
    void SetColumns(int nColumns);
    void SetItemHeight(int nHeight) { m_nItemHeight = nHeight; }
    int GetItemHeight() const { return m_nItemHeight; }
    void SetItemMargin(int x, int y) { m_ptItemMargin = {x, y}; }
    void SetItemTextOffset(int x, int y) { m_ptItemTextOffset = {x, y}; }
    void SetItemColors(DWORD dwItemColor, DWORD dwSelTextColor);
    void SetSelBackColor(DWORD dwColor) { m_dwSelBackColor = dwColor; }
    DWORD GetSelBackColor() const { return m_dwSelBackColor; }
    void SetDrawBacking(BOOL bDraw) { m_bDrawBacking = bDraw != 0; }
    // The section of the mouse-over bar (cut to 63 bytes; null: none) and whether rows carry a
    // 32 x 32 icon square.
    void SetHoverAni(const char* pszSection, BOOL bHasIcon);
    void SetIconOffset(int x, int y) { m_ptIconOffset = {x, y}; }
    // The icon square of the row under the mouse at the last frame.
    void GetIconRect(RECT* pRect) const;
    void SetTipBelow(BOOL bBelow) { m_bTipBelow = bBelow != 0; }
    void SetMarkIndex(int nIndex) { m_nMarkIndex = nIndex; }
    void SetMarkBackAni(const char* pszSection);
    void SetMarkFrontAni(const char* pszSection, int dx, int dy);
    // Clears the style-2 toggle that all lists share, for a host starting a new session.
    static void ResetClickToggle();

    // The view counters are held in 32 bits; these give their low byte.
    BYTE GetCountedRows() const { return static_cast<BYTE>(m_nCount); }
    BYTE GetVisibleRows() const { return static_cast<BYTE>(m_nVisibleRows); }
    BYTE GetRowsDrawn() const { return static_cast<BYTE>(m_nRowsDrawn); }
    bool IsNeedScroll() const { return m_bNeedScroll; }
    int GetListStyle() const { return m_nListStyle; }
    int GetColumns() const { return m_nColumns; }
    int GetMarkIndex() const { return m_nMarkIndex; }

private:
    bool IsRow(int64_t nIndex) const { return nIndex >= 0 && nIndex < GetCount(); }
    // The last row the view may start at: count less the rows drawn.
    int64_t GetLastTop() const;
    // Rows from the top index that exist and are drawn: up to the rows drawn and the count.
    int64_t GetDrawEnd() const;
    // Row of the view under y (window coordinates), by the row height; needs a nonzero height.
    int RowAt(int y) const;
    // The colour of a row: its own, else the list's item colour.
    DWORD ItemColorOf(const QzListItem& item) const;
    // Moves the view one row up (-1) or down (+1) when it can.
    void ScrollOneRow(int nDirection);
    void OnVScroll(WPARAM wParam);
    // Puts the top index at the slider's share of the rows that can scroll.
    void FollowSlider();
    void OnWheel(short nDelta);
    void SendOwner(UINT message, WPARAM wParam, LPARAM lParam);
    // The style's owner codes of a press, a double click and a right press.
    void NotifyPress(POINT point, int nClicked);
    void NotifyToggle(int nSel);
    // True when the double click's code ends the double click (style 4).
    bool NotifyDblClk(int nClicked);
    // Adjusts the kept selection for a row inserted or deleted at the index.
    void OnRowInserted(int nIndex);
    void OnRowDeleted(int nIndex);
    // The colour a row of the view is drawn in: blink red/white for style 2.
    DWORD RowDrawColor(const QzListItem& item, DWORD dwNow) const;
    void DrawMarks(int y);
    void DrawRowText(int x, int y, DWORD dwColor, const char* pszText);
    void DrawHoverBar();
    // One of the nine parts of the tip frame, stretched from its 20 x 20 source.
    void DrawTipFrame(IDataAni* pAni, int nFrame, int x, int y, int64_t nWidth, int64_t nHeight);

    bool m_bDrawBacking = false;
    bool m_bPreSetParam = false;
    int m_nScrollDir = -1;
    DWORD m_dwSelBackColor = 0;
    int m_nCount = 0;
    int m_nVisibleRows = 0;
    int m_nRowsDrawn = 0;
    bool m_bNeedScroll = false;
    bool m_bLButtonDown = false;
    bool m_bTipBelow = false;
    bool m_bMouseOver = false;
    int m_nListStyle = QZ_LIST_STYLE_NOTIFY;
    int m_nWidth = 0;
    int m_nHeight = 0;
    int m_nFirstDrawn = 0;
    int m_nCurSel = 0;
    int m_nLastClicked = -1;
    int m_nColumns = 1;
    int m_nItemHeight = 0;
    char m_szHoverAni[64] = {};
    RECT m_rcSel = {0, 0, 0, 0};
    RECT m_rcItem = {0, 0, 0, 0};
    RECT m_rcIcon = {0, 0, 0, 0};
    bool m_bHasIcon = false;
    POINT m_ptIconOffset = {0, 0};
    POINT m_ptItemMargin = {0, 0};
    POINT m_ptItemTextOffset = {0, 0};
    CQzBaseWindow* m_pOwner = nullptr; // not owned
    BYTE m_byDefItemHeight = 0;
    DWORD m_dwItemColor = 0;
    DWORD m_dwSelTextColor = 0x00FF0000;
    BYTE m_byUpKind = 0;
    BYTE m_byDownKind = 0;
    CQzScrollButton* m_pUpButton = nullptr; // not owned
    CQzScrollButton* m_pDownButton = nullptr;
    CQzSlider* m_pSlider = nullptr;
    std::string m_strMarkBackAni;
    std::string m_strMarkFrontAni;
    POINT m_ptMarkFrontOffset = {0, 0};
    int m_nMarkIndex = -1;
    std::map<int, std::string> m_mapItemTip; // by row, set ahead of the rows as often as not
    std::vector<QzListItem> m_vecItem;
    DWORD m_nTopIndex = 0;
    // The selected row, kept by every row change: the only row whose flag is set, or -1.
    int m_nSelIndex = -1;
};

} // namespace QzGui
