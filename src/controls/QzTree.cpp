#include "controls/QzTree.h"

#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "framework/IQzGuiMgr.h"
#include "framework/QzBackDrawer.h"
#include "layout/IQzGuiWndInfo.h"
#include "layout/QzExtraValue.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzTextDraw.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace QzGui
{

namespace
{

// Where a tree created without PreSetParam says so.
constexpr int kNoPresetLine = 82;
constexpr const char* kSource = "QzTree";

constexpr DWORD kRootId = 1;
constexpr DWORD kFirstId = 2;

// Frames of the marker section; markers are drawn only from a section with all four.
enum : int
{
    kFrameCollapsed = 0,
    kFrameExpanded = 1,
    kFrameChecked = 2,
    kFrameUnchecked = 3,
    kMarkerFrames = 4,
};
// Markers sit this much above their row.
constexpr int kMarkerRaise = 4;
// Indent of a level and width of a marker or check column: the step plus a gap.
constexpr int kShortStep = 16;
constexpr int kLongStep = 32;
constexpr int kStepGap = 8;
// Rows are the default cell high plus this when the record gives no "ItemHeight".
constexpr int kItemHeightPad = 8;
constexpr DWORD kBackingColour = 0xFF000000;
constexpr DWORD kShadowColour = 0xFF000000;

// Range of the slider the tree drives.
constexpr WORD kSliderRange = 100;

// Item tips: the block's colour, its insets, and the white lines on it.
constexpr DWORD kTipBackColour = 0x80000000;
constexpr DWORD kTipTextColour = 0xFFFFFFFF;
constexpr int kTipGapBelow = 2;
constexpr int kTipBlockLeft = 8;
constexpr int kTipBlockPad = 16;
constexpr int kTipTextLeft = 12;
constexpr int kTipTextTop = 2;

C3_SIZE DefaultCell()
{
    C3_SIZE cell = {0, 0};
    CMyBitmap::GetFontSize(cell);
    return cell;
}

IDataAni* OpenSection(const char* pszSection)
{
    return TableDataSetQuery()->GetAni(QzPlatform::kControlAniFile, pszSection, 0);
}

// A coordinate moved by a distance, kept inside the int range whatever the host or the record set.
int Moved(int64_t nBase, int64_t nDelta)
{
    return QzPlatform::ClampToInt(nBase + nDelta);
}

int ReadExtra(const IQzGuiWndInfo* pInfo, const char* pszKey)
{
    int nValue = 0;
    return ReadExtraInt(pInfo, pszKey, &nValue) ? nValue : 0;
}

} // namespace

CQzTree::CQzTree() : m_vecItems(kFirstId, nullptr)
{
    m_sizeFont = {0, 0};
    m_nBackType = QZ_BACK_STRETCHED;
    m_bShowBack = false;
    m_dwTextColor = 0;
    m_Root.nId = kRootId;
    // The hidden root always lists its children.
    m_Root.bExpanded = 1;
}

CQzTree::~CQzTree()
{
    FreeAll();
}

// ---------------------------------------------------------------------------------------------
// Set-up and creation

void CQzTree::PreSetParam(int nStyle, CQzScrollButton* pUpButton, CQzScrollButton* pDownButton,
                          BYTE byUpKind, BYTE byDownKind, CQzSlider* pSlider)
{
    m_nTreeStyle = nStyle;
    m_pUpButton = pUpButton;
    m_pDownButton = pDownButton;
    m_byUpKind = byUpKind;
    m_byDownKind = byDownKind;
    m_pSlider = pSlider;
    m_bPreSetParam = 1;
}

// The control base sets its caption colour from the record, white by default; the tree's item
// colour stays as the host set it unless the record gives "FontColor".
BOOL CQzTree::LoadWndInfo()
{
    const DWORD dwTextColor = m_dwTextColor;
    CQzCtrl::LoadWndInfo();
    m_dwTextColor = dwTextColor;
    if (!m_pWndInfo)
        return 1;
    QzPlatform::CopyText(m_szSelBackAni, sizeof(m_szSelBackAni),
                         m_pWndInfo->GetExtraValue("SelBackAni"));
    m_ptSelBackOffset = {ReadExtra(m_pWndInfo, "SelBackOffsetX"),
                         ReadExtra(m_pWndInfo, "SelBackOffsetY")};
    if (m_pWndInfo->TestFlag(WNDINFO_FLAG_FONTCOLOR))
        m_dwTextColor = m_pWndInfo->GetFontColor();
    return 1;
}

BOOL CQzTree::OnCreate()
{
    if (!m_bPreSetParam)
        LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", kNoPresetLine, kSource);
    if (!m_pWndInfo)
        return 0;
    m_nHeight = GetHeight();
    m_nWidth = GetWidth();
    m_nDefItemHeight = m_sizeFont.iHeight + 2;
    m_nViewWidth = m_nWidth;
    if (m_pUpButton)
        m_pUpButton->Attach(this, m_byUpKind);
    if (m_pDownButton)
        m_pDownButton->Attach(this, m_byDownKind);
    const int nItemHeight = ReadExtra(m_pWndInfo, "ItemHeight");
    m_wItemHeight = static_cast<WORD>(nItemHeight > 0 ? std::min(nItemHeight, 0xFFFF)
                                                      : DefaultCell().iHeight + kItemHeightPad);
    if (m_pSlider)
    {
        m_pSlider->PreSetParam(kSliderRange, QZ_SLIDER_VERT);
        m_pSlider->SetValue(0, TRUE);
        m_pSlider->SetTarget(this);
    }
    return 1;
}

void CQzTree::SetColors(DWORD dwTextColor, DWORD dwHostColor)
{
    m_dwTextColor = dwTextColor;
    m_dwHostColor = dwHostColor;
}

void CQzTree::SetTreeAni(const char* pszName)
{
    if (pszName)
        m_strTreeAni = pszName;
}

IDataAni* CQzTree::GetStyleAni()
{
    if (m_nTreeStyle != QZ_TREE_STYLE_CHECK && m_nTreeStyle != QZ_TREE_STYLE_PLAIN &&
        m_nTreeStyle != QZ_TREE_STYLE_SELBAR)
        return nullptr;
    return OpenSection(m_strTreeAni.c_str());
}

int CQzTree::GetVisibleRows()
{
    if (m_wItemHeight == 0)
        return 0;
    return std::max(0, GetHeight() / m_wItemHeight);
}

// ---------------------------------------------------------------------------------------------
// Finding items

QzTreeItem* CQzTree::Find(DWORD nId)
{
    if (nId == kRootId)
        return &m_Root;
    return nId < m_vecItems.size() ? m_vecItems[nId] : nullptr;
}

QzTreeItem* CQzTree::FirstItem()
{
    return m_Root.HasChildren() ? m_Root.vecChildren.front() : nullptr;
}

QzTreeItem* CQzTree::TopItem()
{
    return m_pTop ? m_pTop : FirstItem();
}

QzTreeItem* CQzTree::NextVisible(QzTreeItem* pItem)
{
    if (pItem->bExpanded && pItem->HasChildren())
        return pItem->vecChildren.front();
    for (; pItem->pParent; pItem = pItem->pParent)
    {
        const std::vector<QzTreeItem*>& siblings = pItem->pParent->vecChildren;
        if (pItem->nIndex + 1 < siblings.size())
            return siblings[pItem->nIndex + 1];
    }
    return nullptr;
}

// True when pItem is pTop or lies below it.
bool CQzTree::IsInSubtree(const QzTreeItem* pTop, const QzTreeItem* pItem)
{
    while (pItem && pItem->nLevel > pTop->nLevel)
        pItem = pItem->pParent;
    return pItem == pTop;
}

// Rows before the item: those of its earlier siblings, and of its ancestors' earlier siblings
// and the ancestors themselves. The item must be visible.
int CQzTree::PositionOf(QzTreeItem* pItem)
{
    int nPos = 0;
    for (; pItem->pParent; pItem = pItem->pParent)
    {
        QzTreeItem* pParent = pItem->pParent;
        nPos += pParent->RowsBefore(pItem->nIndex) + (pParent->pParent ? 1 : 0);
    }
    return nPos;
}

// Down from the root: the child whose rows hold the position, until the position is that of
// the child itself.
QzTreeItem* CQzTree::ItemAtPosition(int nPos)
{
    QzTreeItem* pParent = &m_Root;
    for (;;)
    {
        const size_t nChild = pParent->ChildAtRow(nPos);
        nPos -= pParent->RowsBefore(nChild);
        QzTreeItem* pItem = pParent->vecChildren[nChild];
        if (nPos == 0)
            return pItem;
        --nPos;
        pParent = pItem;
    }
}

// ---------------------------------------------------------------------------------------------
// Inserting and deleting

QzTreeItem* CQzTree::AddItem(QzTreeItem* pParent, const char* pszText)
{
    auto* pItem = new QzTreeItem;
    pItem->nId = m_nNextId++;
    pItem->pParent = pParent;
    pItem->nLevel = pParent->nLevel + 1;
    pItem->strText = pszText;
    pItem->nIndex = pParent->vecChildren.size();
    pParent->vecChildren.push_back(pItem);
    if (m_vecItems.size() <= pItem->nId)
        m_vecItems.resize(pItem->nId + 1, nullptr);
    m_vecItems[pItem->nId] = pItem;
    ++m_nCount;
    AddRowsAbove(pItem, pItem->GetRows());
    m_bTopIndexKnown = false;
    return pItem;
}

void CQzTree::AfterInsert()
{
    SyncSlider();
    UpdateScrollButtons();
}

DWORD CQzTree::InsertRootItem(const char* pszText, BOOL bExpand)
{
    if (!pszText || !*pszText)
        return 0;
    QzTreeItem* pItem = AddItem(&m_Root, pszText);
    if (bExpand)
        SetExpanded(pItem, !pItem->bExpanded);
    AfterInsert();
    return pItem->nId;
}

DWORD CQzTree::InsertItem(DWORD nParentId, const char* pszText)
{
    QzTreeItem* pParent = Find(nParentId);
    if (!pParent || !pszText)
        return 0;
    QzTreeItem* pItem = AddItem(pParent, pszText);
    SetExpanded(pItem, !pItem->bExpanded);
    AfterInsert();
    return pItem->nId;
}

DWORD CQzTree::InsertCheckItem(DWORD nParentId, const char* pszText, BYTE byCheck)
{
    if (!pszText || !*pszText)
        return 0;
    const DWORD nId = InsertItem(nParentId, pszText);
    SetCheck(nId, byCheck);
    return nId;
}

void CQzTree::AddRowsAbove(QzTreeItem* pItem, int nDelta)
{
    for (QzTreeItem* pChild = pItem; pChild->pParent && nDelta != 0; pChild = pChild->pParent)
    {
        QzTreeItem* pParent = pChild->pParent;
        pParent->nChildRows += nDelta;
        pParent->ForgetRowsFrom(pChild->nIndex + 1);
        if (!pParent->bExpanded)
            return;
    }
}

// Takes the item out of its parent's children, with its rows.
void CQzTree::Unlink(QzTreeItem* pItem)
{
    AddRowsAbove(pItem, -pItem->GetRows());
    QzTreeItem* pParent = pItem->pParent;
    std::vector<QzTreeItem*>& siblings = pParent->vecChildren;
    siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(pItem->nIndex));
    for (size_t i = pItem->nIndex; i < siblings.size(); ++i)
        siblings[i]->nIndex = i;
    pParent->ForgetRowsFrom(pItem->nIndex + 1);
}

// Without recursion, so that a chain of any depth is freed.
int CQzTree::FreeSubtree(QzTreeItem* pItem)
{
    int nFreed = 0;
    std::vector<QzTreeItem*> pending{pItem};
    while (!pending.empty())
    {
        QzTreeItem* pNext = pending.back();
        pending.pop_back();
        pending.insert(pending.end(), pNext->vecChildren.begin(), pNext->vecChildren.end());
        m_vecItems[pNext->nId] = nullptr;
        delete pNext;
        ++nFreed;
    }
    return nFreed;
}

void CQzTree::FreeAll()
{
    for (QzTreeItem* pItem : m_Root.vecChildren)
        FreeSubtree(pItem);
    m_Root.vecChildren.clear();
    m_Root.nChildRows = 0;
    m_Root.ForgetRowsFrom(0);
    m_nCount = 0;
}

void CQzTree::DeleteItem(DWORD nId)
{
    QzTreeItem* pItem = Find(nId);
    if (!pItem || pItem == &m_Root)
        return;
    const bool bSelectionGone = m_pSelected && IsInSubtree(pItem, m_pSelected);
    if (m_pTop && IsInSubtree(pItem, m_pTop))
        m_pTop = nullptr;
    Unlink(pItem);
    m_nCount -= FreeSubtree(pItem);
    m_bTopIndexKnown = false;
    if (bSelectionGone)
    {
        m_pSelected = nullptr;
        NotifySelChange();
    }
    SyncSlider();
    UpdateScrollButtons();
}

void CQzTree::DeleteAllItems()
{
    FreeAll();
    m_vecItems.assign(kFirstId, nullptr);
    m_nNextId = kFirstId;
    m_pTop = nullptr;
    m_pSelected = nullptr;
    m_nTopIndex = 0;
    m_bTopIndexKnown = true;
    EnableButtons(FALSE, FALSE);
    if (m_pSlider)
        m_pSlider->ShowWindow(SW_HIDE);
}

// ---------------------------------------------------------------------------------------------
// Expanding, selecting, checking

void CQzTree::SetExpanded(QzTreeItem* pItem, BOOL bExpanded)
{
    bExpanded = bExpanded ? 1 : 0;
    if (pItem == &m_Root || pItem->bExpanded == bExpanded)
        return;
    pItem->bExpanded = bExpanded;
    AddRowsAbove(pItem, bExpanded ? pItem->nChildRows : -pItem->nChildRows);
    // The top item must stay visible: one that was folded away gives way to the item folded.
    if (!bExpanded && m_pTop && m_pTop != pItem && IsInSubtree(pItem, m_pTop))
        m_pTop = pItem;
    m_bTopIndexKnown = false;
}

void CQzTree::Expand(DWORD nId, int nOp)
{
    QzTreeItem* pItem = Find(nId);
    if (!pItem)
        return;
    if (nOp == QZ_TREE_COLLAPSE)
        SetExpanded(pItem, FALSE);
    else if (nOp == QZ_TREE_EXPAND)
        SetExpanded(pItem, TRUE);
    else if (nOp == QZ_TREE_TOGGLE)
        SetExpanded(pItem, !pItem->bExpanded);
    UpdateScrollButtons();
}

void CQzTree::SelectItem(DWORD nId)
{
    QzTreeItem* pItem = Find(nId);
    if (!pItem || pItem == m_pSelected)
        return;
    m_pSelected = pItem;
    NotifySelChange();
}

void CQzTree::NotifySelChange()
{
    if (m_pParent)
        m_pParent->SendMessage(WM_NOTIFY, MakeNotifyWParam(QZ_TREE_SELCHANGED, m_nId), GetFullId());
}

void CQzTree::SetCheck(DWORD nId, BYTE byCheck)
{
    if (QzTreeItem* pItem = Find(nId))
        pItem->bChecked = byCheck ? 1 : 0;
}

void CQzTree::ToggleCheck(DWORD nId)
{
    if (QzTreeItem* pItem = Find(nId))
        pItem->bChecked = !pItem->bChecked;
}

BOOL CQzTree::GetCheck(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem ? pItem->bChecked : 0;
}

// ---------------------------------------------------------------------------------------------
// Item values

BOOL CQzTree::GetExpanded(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem ? pItem->bExpanded : 0;
}

BOOL CQzTree::IsSelected(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem && pItem == m_pSelected ? 1 : 0;
}

BOOL CQzTree::ItemHasChildren(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem && pItem->HasChildren() ? 1 : 0;
}

DWORD CQzTree::GetItemLevel(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem ? pItem->nLevel : 0;
}

void CQzTree::SetItemText(DWORD nId, const char* pszText)
{
    QzTreeItem* pItem = Find(nId);
    if (pItem && pszText)
        pItem->strText = pszText;
}

BOOL CQzTree::GetItemText(DWORD nId, char* pszBuffer)
{
    const QzTreeItem* pItem = Find(nId);
    if (!pItem || !pszBuffer)
        return 0;
    std::memcpy(pszBuffer, pItem->strText.c_str(), pItem->strText.size() + 1);
    return 1;
}

void CQzTree::SetItemTip(DWORD nId, const char* pszTip)
{
    QzTreeItem* pItem = Find(nId);
    if (pItem && pszTip)
        pItem->strTip = pszTip;
}

void CQzTree::SetItemData(DWORD nId, DWORD dwData)
{
    if (QzTreeItem* pItem = Find(nId))
        pItem->dwData = dwData;
}

DWORD CQzTree::GetItemData(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem ? pItem->dwData : 0;
}

void CQzTree::SetItemDataEx(DWORD nId, DWORD dwDataEx)
{
    if (QzTreeItem* pItem = Find(nId))
        pItem->dwDataEx = dwDataEx;
}

DWORD CQzTree::GetItemDataEx(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem ? pItem->dwDataEx : 0;
}

// ---------------------------------------------------------------------------------------------
// Navigation and the view

DWORD CQzTree::GetChildItem(DWORD nId, int nChild)
{
    const QzTreeItem* pItem = Find(nId);
    if (!pItem || nChild < 0 || static_cast<size_t>(nChild) >= pItem->vecChildren.size())
        return 0;
    return pItem->vecChildren[static_cast<size_t>(nChild)]->nId;
}

DWORD CQzTree::GetParentItem(DWORD nId)
{
    const QzTreeItem* pItem = Find(nId);
    return pItem && pItem->pParent ? pItem->pParent->nId : 0;
}

DWORD CQzTree::GetSelectedItem()
{
    return m_pSelected ? m_pSelected->nId : 0;
}

DWORD CQzTree::GetTopItem()
{
    return m_pTop ? m_pTop->nId : 0;
}

DWORD CQzTree::GetNextVisibleItem(DWORD nId)
{
    QzTreeItem* pItem = Find(nId);
    QzTreeItem* pNext = pItem ? NextVisible(pItem) : nullptr;
    return pNext ? pNext->nId : 0;
}

int CQzTree::GetTopIndex()
{
    if (!m_bTopIndexKnown)
    {
        m_nTopIndex = m_pTop ? PositionOf(m_pTop) : 0;
        m_bTopIndexKnown = true;
    }
    return m_nTopIndex;
}

void CQzTree::SetTopIndex(int n)
{
    if (n < 0 || n >= GetVisibleCount())
        return;
    m_pTop = ItemAtPosition(n);
    m_nTopIndex = n;
    m_bTopIndexKnown = true;
}

// ---------------------------------------------------------------------------------------------
// Scroll bar

void CQzTree::EnableButtons(BOOL bUp, BOOL bDown)
{
    if (m_pUpButton)
        m_pUpButton->EnableWindow(bUp);
    if (m_pDownButton)
        m_pDownButton->EnableWindow(bDown);
}

void CQzTree::SetButtonsAtEnds(int nTop)
{
    EnableButtons(nTop >= 1, nTop + GetVisibleRows() < GetVisibleCount());
}

void CQzTree::UpdateScrollButtons()
{
    if (!m_pUpButton || !m_pDownButton || !m_pSlider)
        return;
    m_pSlider->ShowWindow(GetVisibleRows() >= GetVisibleCount() ? SW_HIDE : SW_SHOW);
    SetButtonsAtEnds(GetTopIndex());
}

void CQzTree::SyncSlider()
{
    if (!m_pSlider)
        return;
    const int nRows = GetVisibleRows();
    const int nCount = GetVisibleCount();
    if (nRows >= nCount)
    {
        m_pSlider->ShowWindow(SW_HIDE);
        return;
    }
    m_pSlider->ShowWindow(SW_SHOW);
    const double fRatio = static_cast<double>(GetTopIndex()) / (nCount - nRows);
    m_pSlider->SetValue(static_cast<int>(fRatio * m_pSlider->GetRange()), FALSE);
}

void CQzTree::ScrollLine(int nStep)
{
    const int nTop = GetTopIndex();
    if (nStep < 0 && nTop > 0)
        SetTopIndex(nTop - 1);
    else if (nStep > 0 && nTop + GetVisibleRows() < GetVisibleCount())
        SetTopIndex(nTop + 1);
}

// A line button moves the view at once; its release puts the buttons in step with the view.
void CQzTree::OnScrollButton(WORD nCode)
{
    switch (nCode)
    {
    case SB_LINEUP:
        ScrollLine(-1);
        m_nScrollDir = 0;
        break;
    case SB_LINEDOWN:
        ScrollLine(1);
        m_nScrollDir = 1;
        break;
    case SB_ENDSCROLL:
        SetButtonsAtEnds(GetTopIndex());
        SetTopIndex(GetTopIndex());
        m_nScrollDir = -1;
        break;
    default:
        return;
    }
    SyncSlider();
}

// One item per notch; the buttons follow as after a button's release, so that a button left
// disabled at an end comes back once the wheel has moved away from it.
void CQzTree::OnWheel(short nDelta)
{
    ScrollLine(nDelta < 0 ? 1 : -1);
    SetButtonsAtEnds(GetTopIndex());
    SyncSlider();
}

// The view follows the slider's value over the range of top items; with everything in view the
// scroll bar is put away instead.
void CQzTree::OnSliderMove()
{
    const int nRows = GetVisibleRows();
    const int nCount = GetVisibleCount();
    const bool bFits = nRows >= nCount;
    if (m_pSlider)
        m_pSlider->ShowWindow(bFits ? SW_HIDE : SW_SHOW);
    if (bFits || !m_pSlider)
    {
        EnableButtons(!bFits, !bFits);
        return;
    }
    const WORD wRange = m_pSlider->GetRange();
    const double fValue = m_pSlider->GetValue();
    const int nTop = wRange == 0 ? 0 : static_cast<int>(fValue / wRange * (nCount - nRows));
    SetTopIndex(nTop);
    EnableButtons(nTop > 0, nTop <= 0 || nTop + nRows < nCount);
}

LRESULT CQzTree::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_VSCROLL:
        if (wParam == QZ_SLIDER_DRAG || wParam == QZ_SLIDER_JUMP || wParam == QZ_SLIDER_SET)
            OnSliderMove();
        else
            OnScrollButton(LOWORD(wParam));
        break;
    case WM_MOUSEWHEEL:
        if (const short nDelta = GET_WHEEL_DELTA_WPARAM(wParam); nDelta != 0)
            OnWheel(nDelta);
        break;
    case WM_MOUSEMOVE:
        if (m_bLButtonDown)
            SyncSlider();
        break;
    default:
        break;
    }
    return CQzCtrl::WindowProc(message, wParam, lParam);
}

// ---------------------------------------------------------------------------------------------
// Mouse

// No click sound and no look: the press selects, then opens or closes the item, or toggles
// the check mark of a leaf in the check style.
void CQzTree::OnLButtonDown(UINT, POINT)
{
    m_bLButtonDown = 1;
    if (QzTreeItem* pItem = ItemUnderMouse(nullptr))
    {
        const DWORD nId = pItem->nId;
        SelectItem(nId);
        // The parent's handler of the selection may have removed the item.
        ClickItem(Find(nId));
    }
    SyncSlider();
    UpdateScrollButtons();
}

void CQzTree::ClickItem(QzTreeItem* pItem)
{
    if (!pItem)
        return;
    if (pItem->HasChildren())
        SetExpanded(pItem, !pItem->bExpanded);
    else if (m_nTreeStyle == QZ_TREE_STYLE_CHECK)
        pItem->bChecked = !pItem->bChecked;
}

void CQzTree::OnLButtonUp(UINT, POINT)
{
    m_bLButtonDown = 0;
    ReleaseCapture();
}

QzTreeItem* CQzTree::ItemUnderMouse(int* pRow)
{
    if (!IsWindowVisible() || !m_pQzGuiMgr || m_wItemHeight == 0)
        return nullptr;
    POINT pt = {0, 0};
    m_pQzGuiMgr->GetMousePos(&pt);
    const int64_t nRight = static_cast<int64_t>(m_rcWindow.left) + GetWidth();
    if (pt.x < m_rcWindow.left || pt.x >= nRight || pt.y < m_rcWindow.top)
        return nullptr;
    const int64_t nRow = (static_cast<int64_t>(pt.y) - m_rcWindow.top) / m_wItemHeight;
    if (nRow >= GetVisibleRows())
        return nullptr;
    QzTreeItem* pItem = TopItem();
    for (int64_t i = 0; i < nRow && pItem; ++i)
        pItem = NextVisible(pItem);
    if (pRow)
        *pRow = static_cast<int>(nRow);
    return pItem;
}

// ---------------------------------------------------------------------------------------------
// Drawing

BOOL CQzTree::Show()
{
    if (!IsWindowVisible())
        return 0;
    CQzCtrl::Show();
    if (m_bDrawBacking)
        CMyBitmap::ShowBlock(
            Moved(m_rcWindow.left, m_ptItemMargin.x), Moved(m_rcWindow.top, m_ptItemMargin.y),
            Moved(m_rcWindow.left, m_nWidth), Moved(m_rcWindow.top, m_nHeight), kBackingColour);
    IDataAni* pMarkers = OpenSection(m_strTreeAni.c_str());
    if (pMarkers && pMarkers->GetFrameCount() < kMarkerFrames)
        pMarkers = nullptr;
    DrawItems(pMarkers);
    if (m_bMouseIn)
        DrawItemTip();
    return 1;
}

// Only the rows in view, from the top item down.
void CQzTree::DrawItems(IDataAni* pMarkers)
{
    const int nStep = (m_bShortIndent ? kShortStep : kLongStep) + kStepGap;
    const int nRows = GetVisibleRows();
    QzTreeItem* pItem = TopItem();
    for (int nRow = 0; nRow < nRows && pItem; ++nRow, pItem = NextVisible(pItem))
        DrawItem(*pItem, Moved(m_rcWindow.top, int64_t{nRow} * m_wItemHeight), pMarkers, nStep);
}

// Indent, the marker of a top-level or parent item, the check mark of a leaf in the check
// style, then the bar of the selected item and the text. The columns are kept whether or not
// the marker section could be drawn, so that texts stay in place.
void CQzTree::DrawItem(QzTreeItem& item, int y, IDataAni* pMarkers, int nStep)
{
    const bool bHasChildren = item.HasChildren();
    int64_t x = Moved(m_rcWindow.left, int64_t{nStep} * (int64_t{item.nLevel} - 1));
    if (item.nLevel == 1 || bHasChildren)
    {
        const int nFrame = item.bExpanded || !bHasChildren ? kFrameExpanded : kFrameCollapsed;
        if (pMarkers)
            pMarkers->ShowAni(nFrame, QzPlatform::ClampToInt(x), Moved(y, -kMarkerRaise));
        x += nStep;
    }
    if (m_nTreeStyle == QZ_TREE_STYLE_CHECK && !bHasChildren)
    {
        if (pMarkers)
            pMarkers->ShowAni(item.bChecked ? kFrameChecked : kFrameUnchecked,
                              QzPlatform::ClampToInt(x), y);
        x += nStep;
    }
    if (item.strText.empty())
        return;
    const int nX = QzPlatform::ClampToInt(x);
    if (&item == m_pSelected)
        DrawSelBar(nX, y, bHasChildren);
    C3_SIZE drawn = {0, 0};
    DrawCaption(nX, y, item.strText.c_str(), &drawn);
}

// From the text to the right edge of the tree, one default cell (+2) high: the bar section
// (on leaves, or on every item in the bar style) or a block of the selection colour.
void CQzTree::DrawSelBar(int x, int y, bool bHasChildren)
{
    const int nRight = Moved(m_rcWindow.left, GetWidth());
    if (x >= nRight)
        return;
    const int nHeight = DefaultCell().iHeight + 2;
    if (!m_szSelBackAni[0])
    {
        CMyBitmap::ShowBlock(x, y, nRight, Moved(y, nHeight), m_dwSelColor);
        return;
    }
    if (bHasChildren && m_nTreeStyle != QZ_TREE_STYLE_SELBAR)
        return;
    if (IDataAni* pBar = OpenSection(m_szSelBackAni))
        pBar->ShowAniEx(0, Moved(x, m_ptSelBackOffset.x), Moved(y, m_ptSelBackOffset.y), nullptr,
                        Moved(nRight, -int64_t{x}), nHeight);
}

void CQzTree::DrawItemTip()
{
    int nRow = 0;
    const QzTreeItem* pItem = ItemUnderMouse(&nRow);
    if (!pItem || pItem->strTip.empty())
        return;
    std::vector<std::string> lines;
    int nLongest = 0;
    m_pQzGuiMgr->SplitText(pItem->strTip.c_str(), lines, nLongest);
    if (lines.empty())
        return;
    const C3_SIZE cell = DefaultCell();
    const int64_t nLines = static_cast<int64_t>(lines.size());
    const int x = m_rcWindow.left;
    int64_t nRowTop = int64_t{nRow} * m_wItemHeight;
    if (m_bTipBelow)
        nRowTop += m_wItemHeight + kTipGapBelow;
    const int y = Moved(m_rcWindow.top, nRowTop);
    CMyBitmap::ShowBlock(Moved(x, kTipBlockLeft), y,
                         Moved(x, int64_t{cell.iWidth} * nLongest + kTipBlockPad),
                         Moved(y, cell.iHeight * nLines + 2 * nLines + 4), kTipBackColour);
    for (int64_t k = 0; k < nLines; ++k)
    {
        const int nLineY = Moved(y, kTipTextTop + k * cell.iHeight + (k > 0 ? 2 * k - 2 : 0));
        QzPlatform::DrawGameText(Moved(x, kTipTextLeft), nLineY, kTipTextColour,
                                 lines[static_cast<size_t>(k)].c_str(), m_strFont.c_str(),
                                 cell.iHeight, 1, 0, kShadowColour, nullptr);
    }
}

} // namespace QzGui
