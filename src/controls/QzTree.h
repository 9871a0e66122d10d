// A tree of text items with expand markers, optional check marks, a selection bar and per-item
// tips. Items are named by ids the tree hands out (from 2; 1 is the hidden root above the
// top-level items, 0 names nothing). The tree does not own its scroll bar: the host gives it two
// scroll buttons and a slider before creation, and the tree binds them to itself and keeps them
// in step. Markers and check marks are frames of one animation section ("News_TreeControl").
//
// Cost: a frame, a hit test and an item tip walk only the rows in view from the top item; the
// scroll state comes from row totals the items keep, updated when items are inserted, deleted,
// expanded or collapsed.
#pragma once

#include "controls/QzCtrl.h"
#include "controls/QzTreeItem.h"

#include <string>
#include <vector>

class IDataAni;

namespace QzGui
{

class CQzScrollButton;
class CQzSlider;

// Styles (PreSetParam). Other values draw neither check marks nor the bar on parent items.
constexpr int QZ_TREE_STYLE_CHECK = 2;  // leaves carry check marks that a click toggles
constexpr int QZ_TREE_STYLE_PLAIN = 3;  // only opens its section for GetStyleAni
constexpr int QZ_TREE_STYLE_SELBAR = 5; // the selection bar section on parent items too

// Expand operations.
constexpr int QZ_TREE_COLLAPSE = 1;
constexpr int QZ_TREE_EXPAND = 2;
constexpr int QZ_TREE_TOGGLE = 3;

// Notification code (WM_NOTIFY to the parent) of a change of the selected item.
constexpr WORD QZ_TREE_SELCHANGED = 0x1001;

class CQzTree : public CQzCtrl
{
public:
    CQzTree();
    // The tree owns its items; a copy would have to clone them and rebind the scroll bar.
    CQzTree(const CQzTree&) = delete;
    CQzTree& operator=(const CQzTree&) = delete;

    ~CQzTree() override;
    BOOL LoadWndInfo() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    void OnLButtonDblClk(UINT, POINT) override {}
    void OnRButtonDown(UINT, POINT) override {}
    int GetWndType() override { return QZ_WND_TREE; }
    BOOL Show() override;
    BOOL OnCreate() override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // The tree has no look states: hover and presses leave m_wState alone.
    WORD UpdateState() override { return m_wState; }

    // New virtual operations, in slot order.
    // The marker section for the styles that use it (2, 3 and 5); null otherwise.
    virtual IDataAni* GetStyleAni();
    // The tip of the item under the mouse, on a half-transparent black block by its row.
    virtual void DrawItemTip();
    // Whole rows that fit in the window.
    virtual int GetVisibleRows();

    // Set-up, before Create. The buttons and the slider are not owned and must outlive the tree.
    void PreSetParam(int nStyle, CQzScrollButton* pUpButton, CQzScrollButton* pDownButton,
                     BYTE byUpKind, BYTE byDownKind, CQzSlider* pSlider);

    // Items. Insertions return the new id, or 0 when nothing was inserted.
    // A top-level item; with bExpand it starts expanded.
    DWORD InsertRootItem(const char* pszText, BOOL bExpand);
    // A child of the parent (1: a top-level item), expanded.
    DWORD InsertItem(DWORD nParentId, const char* pszText);
    // As InsertItem, with its check mark set to byCheck.
    DWORD InsertCheckItem(DWORD nParentId, const char* pszText, BYTE byCheck);
    // Removes the item with its subtree. A selected item in it leaves nothing selected (the
    // parent is told); a top item in it puts the view back at the first item.
    void DeleteItem(DWORD nId);
    // Removes every item and starts the ids at 2 again.
    void DeleteAllItems();
    // QZ_TREE_COLLAPSE, QZ_TREE_EXPAND or QZ_TREE_TOGGLE. Collapsing an item above the top
    // item of the view makes it the top item.
    void Expand(DWORD nId, int nOp);
    // Tells the parent (QZ_TREE_SELCHANGED) when the selection changes.
    void SelectItem(DWORD nId);

    // The control's own check state stays reachable beside the items'.
    using CQzCtrl::GetCheck;
    using CQzCtrl::SetCheck;
    void SetCheck(DWORD nId, BYTE byCheck);
    void ToggleCheck(DWORD nId);
    BOOL GetCheck(DWORD nId);

    BOOL GetExpanded(DWORD nId);
    BOOL IsSelected(DWORD nId);
    BOOL ItemHasChildren(DWORD nId);
    DWORD GetItemLevel(DWORD nId);
    // Null text is ignored.
    void SetItemText(DWORD nId, const char* pszText);
    // Copies the whole text with its terminator; the buffer must hold it. 0 for an unknown
    // item or a null buffer.
    BOOL GetItemText(DWORD nId, char* pszBuffer);
    // Backslash-b and backslash-n split the tip into lines. Null text is ignored.
    void SetItemTip(DWORD nId, const char* pszTip);
    void SetItemData(DWORD nId, DWORD dwData);
    DWORD GetItemData(DWORD nId);
    void SetItemDataEx(DWORD nId, DWORD dwDataEx);
    DWORD GetItemDataEx(DWORD nId);

    // Navigation; 0 where there is no such item.
    DWORD GetChildItem(DWORD nId, int nChild);
    DWORD GetParentItem(DWORD nId);
    DWORD GetSelectedItem();
    // The item set as the top of the view; 0 while the view starts at the first item.
    DWORD GetTopItem();
    // The first child of an expanded item with children, else the next sibling of the item or
    // of its nearest ancestor that has one.
    DWORD GetNextVisibleItem(DWORD nId);
    // Items in all, and items in the visible order (under expanded items only).
    int GetCount() const { return m_nCount; }
    int GetVisibleCount() const { return m_Root.nChildRows; }
    // Visible position of the top item of the view.
    int GetTopIndex();
    // Puts the item at visible position n at the top; ignored outside the visible items.
    void SetTopIndex(int n);

    // Look.
    void SetItemHeight(WORD wHeight) { m_wItemHeight = wHeight; }
    WORD GetItemHeight() const { return m_wItemHeight; }
    void SetItemMargin(int x, int y) { m_ptItemMargin = {x, y}; }
    void SetColors(DWORD dwTextColor, DWORD dwHostColor);
    void SetSelColor(DWORD dwColor) { m_dwSelColor = dwColor; }
    // Null is ignored.
    void SetTreeAni(const char* pszName);
    void SetDrawBacking(BOOL bDraw) { m_bDrawBacking = bDraw; }
    void SetTipBelow(BOOL bBelow) { m_bTipBelow = bBelow; }
    void SetHostPtr(void* pHostPtr) { m_pHostPtr = pHostPtr; }

    // Slider position and visibility from the top item and the visible count.
    void SyncSlider();
    // Buttons enabled except at their end, the slider shown only when the items do not fit.
    // Needs both buttons and the slider.
    void UpdateScrollButtons();

private:
    QzTreeItem* Find(DWORD nId);
    QzTreeItem* FirstItem();
    // The item at the top of the view: the one set, else the first item.
    QzTreeItem* TopItem();
    static QzTreeItem* NextVisible(QzTreeItem* pItem);
    static bool IsInSubtree(const QzTreeItem* pTop, const QzTreeItem* pItem);

    QzTreeItem* AddItem(QzTreeItem* pParent, const char* pszText);
    void AfterInsert();
    void SetExpanded(QzTreeItem* pItem, BOOL bExpanded);
    // The item's rows changed by nDelta: its ancestors' totals follow, up to the first
    // collapsed one.
    static void AddRowsAbove(QzTreeItem* pItem, int nDelta);
    void Unlink(QzTreeItem* pItem);
    // Frees the item and its subtree; returns how many items that were.
    int FreeSubtree(QzTreeItem* pItem);
    void FreeAll();

    int PositionOf(QzTreeItem* pItem);
    QzTreeItem* ItemAtPosition(int nPos);
    void NotifySelChange();

    // The press on an item, after its selection: expansion or check mark.
    void ClickItem(QzTreeItem* pItem);
    // One item up (nStep -1) or down (+1) within the bounds of the view.
    void ScrollLine(int nStep);
    void OnScrollButton(WORD nCode);
    void OnWheel(short nDelta);
    void OnSliderMove();
    // Up disabled at the first item, down disabled once the last item is in view.
    void SetButtonsAtEnds(int nTop);
    void EnableButtons(BOOL bUp, BOOL bDown);

    // The item under the manager's mouse among the rows in view, with its row; null for none.
    QzTreeItem* ItemUnderMouse(int* pRow);
    void DrawItems(IDataAni* pMarkers);
    void DrawItem(QzTreeItem& item, int y, IDataAni* pMarkers, int nStep);
    void DrawSelBar(int x, int y, bool bHasChildren);

    int m_nTreeStyle = 0;
    int m_nWidth = 0;
    int m_nHeight = 0;
    BOOL m_bLButtonDown = 0;
    BOOL m_bTipBelow = 1;
    void* m_pHostPtr = nullptr; // kept for the host
    POINT m_ptItemMargin = {0, 0};
    char m_szSelBackAni[64] = {};
    POINT m_ptSelBackOffset = {0, 0};
    int m_nDefItemHeight = 0;
    int m_nViewWidth = 0;
    // The item text colour is the control's m_dwTextColor, which the tree starts at 0.
    DWORD m_dwHostColor = 0x00FF0000; // kept for the host
    DWORD m_dwSelColor = 0x800000FF;
    bool m_bShortIndent = true;
    std::string m_strTreeAni = "News_TreeControl";
    BYTE m_byUpKind = 0;
    BYTE m_byDownKind = 0;
    CQzScrollButton* m_pUpButton = nullptr; // not owned
    CQzScrollButton* m_pDownButton = nullptr;
    CQzSlider* m_pSlider = nullptr; // not owned
    BOOL m_bDrawBacking = 0;
    BOOL m_bPreSetParam = 0;
    WORD m_wItemHeight = 18;
    int m_nScrollDir = -1;
    QzTreeItem m_Root;
    DWORD m_nNextId = 2;
    QzTreeItem* m_pSelected = nullptr;
    QzTreeItem* m_pTop = nullptr;

    // Items by id (deleted ones null), the item count, and the top item's visible position
    // while it is known.
    std::vector<QzTreeItem*> m_vecItems;
    int m_nCount = 0;
    int m_nTopIndex = 0;
    bool m_bTopIndexKnown = true;
};

} // namespace QzGui
