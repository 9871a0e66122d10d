#include "controls/QzList.h"

#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "framework/IQzGuiMgr.h"
#include "framework/QzBackDrawer.h"
#include "layout/IQzGuiWndInfo.h"
#include "layout/QzExtraValue.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzClock.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"
#include "platform/services/QzTextDraw.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

namespace QzGui
{

namespace
{

constexpr const char* kSource = "QzList";

// The strip on the right of the list that its scroll bar takes.
constexpr int kScrollStrip = 17;
// The slider's range as the list sets it up.
constexpr WORD kSliderRange = 100;
// Colour of the item area with the backing on.
constexpr DWORD kBackingColor = 0xFF000000;

// Row text: shadow on, style 0, black shadow.
constexpr BOOL kTextShadow = 1;
constexpr int kTextStyle = 0;
constexpr DWORD kShadowColor = 0xFF000000;

// Columns: the most there are, the longest field (bytes), and the gap between fields in font
// sizes.
constexpr int kMaxColumns = 4;
constexpr size_t kMaxFieldBytes = 15;
constexpr int kColumnFontSizes = 10;

// Blinking rows (style 2) are red for this long after their time stamp, white otherwise.
constexpr DWORD kBlinkMs = 501;
constexpr DWORD kBlinkColor = 0x00FF0000;
constexpr DWORD kSteadyColor = 0x00FFFFFF;

// The icon square of the hovered row.
constexpr int kIconSize = 32;

// Row tips: the frame section, its parts' source, the corner margin, placement and text.
constexpr const char* kTipSection = "Pack_OrdinaryItemTipsBG";
constexpr RECT kTipSource = {0, 0, 20, 20};
constexpr int kTipCornerMargin = 12;
constexpr int kTipBelowOffset = 20;
constexpr int kTipLeft = 8;
constexpr int kTipPadWidth = 8;
constexpr int kTipPadHeight = 16;
constexpr int kTipLineGap = 4;
constexpr int kTipTextLeft = 10;
constexpr int kTipTextTop = 13;
constexpr DWORD kTipTextColor = 0xFFFFFFFF;

// Style 2: whether a second press on the same row selects (set) or deselects (clear). One flag
// for every list of the process.
bool g_bClickToggle = false;

// The text as a row keeps it: at most kMaxItemText bytes, never ending inside a two-byte
// character.
std::string ItemTextOf(const char* pszText)
{
    const size_t nLength = strnlen(pszText, CQzList::kMaxItemText + 1);
    if (nLength <= CQzList::kMaxItemText)
        return std::string(pszText, nLength);
    size_t nKeep = CQzList::kMaxItemText;
    if (QzPlatform::IsLeadByteAt(pszText, static_cast<int>(nKeep - 1)))
        --nKeep;
    return std::string(pszText, nKeep);
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// Reads up to nWanted blank-separated fields as a bounded scan does: a field longer than its
// buffer ends the scan. The number of fields read.
int ScanFields(const char* pszText, int nWanted, char (&fields)[kMaxColumns][kMaxFieldBytes + 1])
{
    int nRead = 0;
    const char* p = pszText;
    while (nRead < nWanted)
    {
        while (*p != '\0' && IsBlank(*p))
            ++p;
        const char* pStart = p;
        while (*p != '\0' && !IsBlank(*p))
            ++p;
        const size_t nLength = static_cast<size_t>(p - pStart);
        if (nLength == 0 || nLength > kMaxFieldBytes)
            break;
        std::memcpy(fields[nRead], pStart, nLength);
        fields[nRead][nLength] = '\0';
        ++nRead;
    }
    return nRead;
}

bool InRectInclusive(const RECT& rc, POINT pt)
{
    return pt.x >= rc.left && pt.x <= rc.right && pt.y >= rc.top && pt.y <= rc.bottom;
}

// Frame 0 of a section of the control animation file at its size.
void DrawSection(const std::string& strSection, int x, int y)
{
    QzPlatform::CAniHandle handle;
    if (QzPlatform::GetAniStore()->LoadAni(handle, QzPlatform::kControlAniFile, strSection.c_str()))
        handle.Draw(0, x, y);
}

} // namespace

CQzList::CQzList()
{
    m_nBackType = QZ_BACK_STRETCHED;
}

CQzList::~CQzList() = default;

// ---------------------------------------------------------------------------------------------
// Set-up and creation

void CQzList::PreSetParam(int nStyle, CQzScrollButton* pUpButton, CQzScrollButton* pDownButton,
                          BYTE byUpKind, BYTE byDownKind, CQzSlider* pSlider)
{
    m_nListStyle = nStyle;
    m_pUpButton = pUpButton;
    m_pDownButton = pDownButton;
    m_byUpKind = byUpKind;
    m_byDownKind = byDownKind;
    m_pSlider = pSlider;
    m_bPreSetParam = true;
}

// Needs PreSetParam and a record. The list gives the strip on its right to the scroll bar,
// binds the scroll controls to itself, and starts empty. Rows fit by the default row height
// (cell height + 2) whatever height the rows are drawn with.
BOOL CQzList::LoadWndInfo()
{
    if (!CQzCtrl::LoadWndInfo())
        return 0;
    if (!m_bPreSetParam)
    {
        LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", __LINE__, kSource);
        return 0;
    }
    if (!m_pWndInfo)
        return 0;
    m_nWidth = m_rcLocal.right - m_rcLocal.left;
    m_nHeight = m_rcLocal.bottom - m_rcLocal.top;
    m_byDefItemHeight = static_cast<BYTE>(m_sizeFont.iHeight + 2);
    const bool bHeightPreset = m_nItemHeight != 0;
    if (!bHeightPreset)
        m_nItemHeight = m_byDefItemHeight;
    m_nVisibleRows = m_byDefItemHeight == 0 ? 0 : std::max(0, m_nHeight / m_byDefItemHeight);
    MoveWindow(nullptr, m_rcLocal.left, m_rcLocal.top, std::max(0, m_nWidth - kScrollStrip),
               m_nHeight, TRUE);

    if (m_pUpButton)
        m_pUpButton->Attach(this, m_byUpKind);
    if (m_pDownButton)
        m_pDownButton->Attach(this, m_byDownKind);
    int nValue = 0;
    if (!bHeightPreset)
        SetItemHeight(ReadExtraInt(m_pWndInfo, "ItemHeight", &nValue) ? nValue : m_byDefItemHeight);
    if (const char* pszColor = m_pWndInfo->GetExtraValue("SelBackColor"))
        SetSelBackColor(static_cast<DWORD>(QzPlatform::TextToUnsigned(pszColor, 16)));
    if (m_pSlider)
    {
        m_pSlider->PreSetParam(kSliderRange, QZ_SLIDER_VERT);
        m_pSlider->SetValue(0, TRUE);
        m_pSlider->SetTarget(this);
    }
    ResetContent();
    return 1;
}

void CQzList::SetColumns(int nColumns)
{
    m_nColumns = nColumns >= 1 && nColumns <= kMaxColumns ? nColumns : 1;
}

void CQzList::SetItemColors(DWORD dwItemColor, DWORD dwSelTextColor)
{
    m_dwItemColor = dwItemColor;
    m_dwSelTextColor = dwSelTextColor;
}

void CQzList::SetHoverAni(const char* pszSection, BOOL bHasIcon)
{
    QzPlatform::CopyText(m_szHoverAni, sizeof(m_szHoverAni), pszSection ? pszSection : "");
    m_bHasIcon = bHasIcon != 0;
}

void CQzList::GetIconRect(RECT* pRect) const
{
    if (pRect)
        *pRect = m_rcIcon;
}

void CQzList::SetMarkBackAni(const char* pszSection)
{
    m_strMarkBackAni = pszSection ? pszSection : "";
}

void CQzList::SetMarkFrontAni(const char* pszSection, int dx, int dy)
{
    m_strMarkFrontAni = pszSection ? pszSection : "";
    m_ptMarkFrontOffset = {dx, dy};
}

void CQzList::ResetClickToggle()
{
    g_bClickToggle = false;
}

// ---------------------------------------------------------------------------------------------
// Rows
//
// Every change sends the list its list-box message, which recounts the rows. The selection is
// kept as an index, moved with the rows an insert or a delete shifts.

int CQzList::AddString(const char* pszText)
{
    if (!pszText)
        return -1;
    QzListItem item;
    item.strText = ItemTextOf(pszText);
    m_vecItem.push_back(std::move(item));
    const int nIndex = GetCount() - 1;
    SendMessage(QZ_LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(pszText));
    return nIndex;
}

int CQzList::InsertString(int nIndex, const char* pszText)
{
    if (!pszText || nIndex < 0 || nIndex > GetCount())
        return -1;
    QzListItem item;
    item.strText = ItemTextOf(pszText);
    m_vecItem.insert(m_vecItem.begin() + nIndex, std::move(item));
    OnRowInserted(nIndex);
    SendMessage(QZ_LB_INSERTSTRING, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(pszText));
    return nIndex;
}

int CQzList::DeleteString(int nIndex)
{
    if (!IsRow(nIndex))
        return -1;
    m_vecItem.erase(m_vecItem.begin() + nIndex);
    OnRowDeleted(nIndex);
    SendMessage(QZ_LB_DELETESTRING, static_cast<WPARAM>(nIndex), 0);
    return nIndex;
}

// Rows, tips, the view and the marked row with its decorations start over.
void CQzList::ResetContent()
{
    m_mapItemTip.clear();
    m_vecItem.clear();
    m_nSelIndex = -1;
    m_nTopIndex = 0;
    m_nMarkIndex = -1;
    m_strMarkBackAni.clear();
    m_strMarkFrontAni.clear();
    m_ptMarkFrontOffset = {0, 0};
    SendMessage(QZ_LB_RESETCONTENT, 0, 0);
}

void CQzList::OnRowInserted(int nIndex)
{
    if (m_nSelIndex >= nIndex)
        ++m_nSelIndex;
}

void CQzList::OnRowDeleted(int nIndex)
{
    if (m_nSelIndex == nIndex)
        m_nSelIndex = -1;
    else if (m_nSelIndex > nIndex)
        --m_nSelIndex;
}

int CQzList::GetText(int nIndex, char* pszBuffer) const
{
    if (!pszBuffer || !IsRow(nIndex))
        return -1;
    const std::string& strText = m_vecItem[nIndex].strText;
    std::memcpy(pszBuffer, strText.c_str(), strText.size() + 1);
    return nIndex;
}

int CQzList::GetTextLen(int nIndex) const
{
    return IsRow(nIndex) ? static_cast<int>(m_vecItem[nIndex].strText.size()) : -1;
}

int CQzList::FindString(int nStart, const char* pszText) const
{
    if (!pszText)
        return -1;
    for (int i = std::max(0, nStart); i < GetCount(); ++i)
    {
        if (m_vecItem[i].strText == pszText)
            return i;
    }
    return -1;
}

DWORD CQzList::GetItemData(int nIndex) const
{
    return IsRow(nIndex) ? m_vecItem[nIndex].dwData : 0xFFFFFFFF;
}

BOOL CQzList::SetItemData(int nIndex, DWORD dwData)
{
    if (!IsRow(nIndex))
        return 0;
    m_vecItem[nIndex].dwData = dwData;
    return 1;
}

DWORD CQzList::GetItemColor(int nIndex) const
{
    return IsRow(nIndex) ? ItemColorOf(m_vecItem[nIndex]) : 0xFFFFFFFF;
}

BOOL CQzList::SetItemColor(int nIndex, DWORD dwColor)
{
    if (!IsRow(nIndex))
        return 0;
    m_vecItem[nIndex].dwColor = dwColor;
    return 1;
}

int CQzList::GetItemBlink(int nIndex) const
{
    return IsRow(nIndex) ? static_cast<int>(m_vecItem[nIndex].bBlink) : -1;
}

BOOL CQzList::SetItemBlink(int nIndex, BOOL bBlink)
{
    if (!IsRow(nIndex))
        return 0;
    m_vecItem[nIndex].bBlink = bBlink != 0;
    return 1;
}

DWORD CQzList::GetItemTime(int nIndex) const
{
    return IsRow(nIndex) ? m_vecItem[nIndex].dwTime : 0xFFFFFFFF;
}

BOOL CQzList::SetItemTime(int nIndex, DWORD dwTime)
{
    if (!IsRow(nIndex))
        return 0;
    m_vecItem[nIndex].dwTime = dwTime;
    return 1;
}

BOOL CQzList::SetItemTip(int nIndex, const char* pszText)
{
    if (!pszText || nIndex < 0 || nIndex > kMaxItemTipIndex)
        return 0;
    m_mapItemTip[nIndex] = pszText;
    return 1;
}

DWORD CQzList::ItemColorOf(const QzListItem& item) const
{
    return item.dwColor != 0 ? item.dwColor : m_dwItemColor;
}

// ---------------------------------------------------------------------------------------------
// Selection and view

int CQzList::GetSel(int nIndex) const
{
    return IsRow(nIndex) ? static_cast<int>(m_vecItem[nIndex].bSelected) : -1;
}

// Only the row that held the selection needs clearing: no other row's flag is ever set.
int CQzList::SelectRow(int nRow)
{
    if (nRow < 0 || nRow >= GetCount())
        return -1;
    const int64_t nIndex = static_cast<int64_t>(m_nTopIndex) + nRow;
    const bool bNew = IsRow(nIndex) && !m_vecItem[nIndex].bSelected;
    if (m_nSelIndex >= 0)
        m_vecItem[m_nSelIndex].bSelected = false;
    m_nSelIndex = -1;
    if (IsRow(nIndex))
    {
        m_vecItem[nIndex].bSelected = true;
        m_nSelIndex = static_cast<int>(nIndex);
    }
    if (bNew)
        NotifyParent(QZ_LBN_SELCHANGE);
    return QzPlatform::ClampToInt(nIndex);
}

BOOL CQzList::SetTopIndex(int nIndex)
{
    if (!IsRow(nIndex))
        return 0;
    m_nTopIndex = static_cast<DWORD>(nIndex);
    return 1;
}

int64_t CQzList::GetLastTop() const
{
    return std::max<int64_t>(0, static_cast<int64_t>(GetCount()) - m_nRowsDrawn);
}

int64_t CQzList::GetDrawEnd() const
{
    return std::min<int64_t>(static_cast<int64_t>(m_nTopIndex) + m_nRowsDrawn, GetCount());
}

int CQzList::RowAt(int y) const
{
    return QzPlatform::ClampToInt((static_cast<int64_t>(y) - m_rcWindow.top) / m_nItemHeight);
}

BOOL CQzList::GetItemRect(int nIndex, RECT* pRect) const
{
    if (!pRect || !IsRow(nIndex))
        return 0;
    const int64_t nTop = static_cast<int64_t>(m_rcWindow.top) + 2LL * m_ptItemMargin.y +
                         (static_cast<int64_t>(nIndex) - m_nTopIndex) * m_nItemHeight;
    pRect->left = QzPlatform::AddClamped(m_rcWindow.left, 2LL * m_ptItemMargin.x);
    pRect->right = m_rcWindow.right;
    pRect->top = QzPlatform::ClampToInt(nTop);
    pRect->bottom = QzPlatform::ClampToInt(nTop + m_nItemHeight);
    return 1;
}

int CQzList::HitTest(POINT point, BOOL* pbMiss) const
{
    const int64_t nEnd = GetDrawEnd();
    for (int64_t i = m_nTopIndex; i < nEnd; ++i)
    {
        RECT rc;
        GetItemRect(static_cast<int>(i), &rc);
        if (::PtInRect(&rc, point))
        {
            if (pbMiss)
                *pbMiss = 0;
            return static_cast<int>(i);
        }
    }
    if (pbMiss)
        *pbMiss = 1;
    return -1;
}

int CQzList::GetPageCount() const
{
    if (m_nVisibleRows <= 0)
        return 1;
    const int64_t nPages = (static_cast<int64_t>(m_nCount) + m_nVisibleRows - 1) / m_nVisibleRows;
    return static_cast<int>(std::max<int64_t>(1, nPages));
}

int CQzList::GetCurPage() const
{
    if (m_nVisibleRows <= 0)
        return 1;
    int nPage = m_nFirstDrawn / m_nVisibleRows + 1;
    if (m_nFirstDrawn % m_nVisibleRows != 0)
        ++nPage;
    return std::min(nPage, GetPageCount());
}

// A new count forgets the style-2 row last clicked, so that the next press is a fresh one.
void CQzList::UpdateCounts()
{
    m_nLastClicked = -1;
    m_nCount = GetCount();
    m_bNeedScroll = m_nVisibleRows < m_nCount;
    m_nRowsDrawn = m_bNeedScroll ? m_nVisibleRows : m_nCount;
    if (!m_pSlider)
        return;
    if (m_bNeedScroll && !m_pSlider->IsWindowVisible())
        m_pSlider->ShowWindow(SW_SHOW);
    else if (!m_bNeedScroll && m_pSlider->IsWindowVisible())
        m_pSlider->ShowWindow(SW_HIDE);
}

void CQzList::SyncSlider()
{
    if (!m_pSlider || !m_bNeedScroll)
        return;
    const int64_t nSpan = GetLastTop();
    const double fRatio = nSpan > 0 ? static_cast<double>(m_nTopIndex) / nSpan : 0.0;
    const double fPos = std::trunc(fRatio * m_pSlider->GetRange());
    const int nPos = static_cast<int>(std::min(fPos, static_cast<double>(INT_MAX)));
    if (m_pSlider->GetValue() != nPos)
        m_pSlider->SetValue(nPos, FALSE);
}

// ---------------------------------------------------------------------------------------------
// Scrolling
//
//   message              | action
//   ---------------------+-------------------------------------------------------------------
//   slider 100, 102, 103 | top = the slider's share of the rows that can scroll
//   scroll button 0 / 1  | remember the direction (the press and every repeat)
//   scroll button 8      | one row in the remembered direction, then forget it
//   wheel up / down      | one row
//
// So a scroll button moves the view one row per click, on release, however long it is held.

LRESULT CQzList::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case QZ_LB_ADDSTRING:
    case QZ_LB_INSERTSTRING:
    case QZ_LB_DELETESTRING:
    case QZ_LB_RESETCONTENT:
        UpdateCounts();
        break;
    case WM_VSCROLL:
        OnVScroll(wParam);
        break;
    case WM_MOUSEWHEEL:
        OnWheel(GET_WHEEL_DELTA_WPARAM(wParam));
        break;
    case WM_MOUSEMOVE:
        if (m_bLButtonDown)
            SyncSlider();
        break;
    case WM_DESTROY:
        ResetContent();
        break;
    default:
        break;
    }
    return CQzCtrl::WindowProc(message, wParam, lParam);
}

void CQzList::OnVScroll(WPARAM wParam)
{
    if (wParam == QZ_SLIDER_DRAG || wParam == QZ_SLIDER_JUMP || wParam == QZ_SLIDER_SET)
    {
        FollowSlider();
        return;
    }
    switch (LOWORD(wParam))
    {
    case SB_LINEUP:
        m_nScrollDir = 0;
        break;
    case SB_LINEDOWN:
        m_nScrollDir = 1;
        break;
    case SB_ENDSCROLL:
        if (m_nScrollDir == 0)
            ScrollOneRow(-1);
        else if (m_nScrollDir == 1)
            ScrollOneRow(1);
        m_nScrollDir = -1;
        break;
    default:
        break;
    }
    SyncSlider();
}

// Without a range there is no share to take.
void CQzList::FollowSlider()
{
    if (!m_pSlider || m_pSlider->GetRange() == 0)
        return;
    const double fShare = static_cast<double>(m_pSlider->GetValue()) / m_pSlider->GetRange();
    const double fTop = std::trunc(fShare * static_cast<double>(GetLastTop()));
    SetTopIndex(static_cast<int>(std::min(fTop, static_cast<double>(INT_MAX))));
}

void CQzList::OnWheel(short nDelta)
{
    if (nDelta > 0)
        ScrollOneRow(-1);
    else if (nDelta < 0)
        ScrollOneRow(1);
    SyncSlider();
}

void CQzList::ScrollOneRow(int nDirection)
{
    if (nDirection < 0 && m_nTopIndex > 0)
        --m_nTopIndex;
    else if (nDirection > 0 && m_nTopIndex < GetLastTop())
        ++m_nTopIndex;
}

// ---------------------------------------------------------------------------------------------
// Mouse
//
// A press or a double click selects the row under the point, then tells the owner by style:
//
//   style | press                                  | double click       | right press
//   ------+----------------------------------------+--------------------+----------------
//   1     | 331 (id, row) on the icon, else 336    | 336 (1, row)       | 1124 (20, row)
//   2     | 389 (0, row); the same row again:      | 389 (0, row)       | 1124 (20, row)
//         | 389 (-1, -1) and (0, row) in turn      |                    |
//   4     | 389 (0, row) on a row                  | WM_COMMAND (2, row)|
//
// Each needs an owner and a selection. The parent gets code 1 when a press changed the
// selection and code 2 on a double click (not after style 4's code).

void CQzList::OnLButtonDown(UINT nFlags, POINT point)
{
    int nClicked = -1;
    if (m_nItemHeight != 0)
        nClicked = SelectRow(RowAt(point.y));
    NotifyPress(point, nClicked);
    m_bLButtonDown = true;
    if (m_pParent && m_pParent->GetWndType() == QZ_WND_DIALOG)
        SetCapture();
    CQzCtrl::OnLButtonDown(nFlags, point);
}

void CQzList::OnLButtonUp(UINT nFlags, POINT point)
{
    m_bLButtonDown = false;
    ReleaseCapture();
    CQzCtrl::OnLButtonUp(nFlags, point);
}

void CQzList::OnLButtonDblClk(UINT nFlags, POINT point)
{
    int nClicked = -1;
    if (m_nItemHeight != 0)
        nClicked = SelectRow(RowAt(point.y));
    if (NotifyDblClk(nClicked))
        return;
    NotifyParent(QZ_LBN_DBLCLK);
    CQzCtrl::OnLButtonDblClk(nFlags, point);
}

void CQzList::OnRButtonDown(UINT nFlags, POINT point)
{
    const int nSel = GetCurSel();
    const bool bStyle =
        m_nListStyle == QZ_LIST_STYLE_NOTIFY || m_nListStyle == QZ_LIST_STYLE_TOGGLE;
    if (bStyle && m_pOwner && nSel >= 0)
        SendOwner(QZ_WM_LISTRCLICK, QZ_LIST_RCLICK_CODE, nSel);
    CQzCtrl::OnRButtonDown(nFlags, point);
}

void CQzList::NotifyPress(POINT point, int nClicked)
{
    const int nSel = GetCurSel();
    if (!m_pOwner || nSel < 0)
        return;
    switch (m_nListStyle)
    {
    case QZ_LIST_STYLE_NOTIFY:
        if (m_bHasIcon && InRectInclusive(m_rcIcon, point))
            SendOwner(QZ_WM_LISTICONCLICK, m_nId, nSel);
        else
            SendOwner(QZ_WM_LISTCLICK, m_nId, nSel);
        break;
    case QZ_LIST_STYLE_TOGGLE:
        NotifyToggle(nSel);
        break;
    case QZ_LIST_STYLE_ROWS:
        if (IsRow(nClicked))
            SendOwner(QZ_WM_LISTSELECT, 0, nSel);
        break;
    default:
        break;
    }
}

// A press on another row selects it; presses on the same row deselect and select in turn, by
// the toggle all lists share.
void CQzList::NotifyToggle(int nSel)
{
    if (nSel != m_nLastClicked)
    {
        SendOwner(QZ_WM_LISTSELECT, 0, nSel);
    }
    else
    {
        if (g_bClickToggle)
            SendOwner(QZ_WM_LISTSELECT, 0, nSel);
        else
            SendOwner(QZ_WM_LISTSELECT, static_cast<WPARAM>(-1), -1);
        g_bClickToggle = !g_bClickToggle;
    }
    m_nLastClicked = nSel;
}

bool CQzList::NotifyDblClk(int nClicked)
{
    const int nSel = GetCurSel();
    if (!m_pOwner || nSel < 0)
        return false;
    switch (m_nListStyle)
    {
    case QZ_LIST_STYLE_NOTIFY:
        SendOwner(QZ_WM_LISTCLICK, 1, nSel);
        return false;
    case QZ_LIST_STYLE_TOGGLE:
        SendOwner(QZ_WM_LISTSELECT, 0, nSel);
        return false;
    case QZ_LIST_STYLE_ROWS:
        if (!IsRow(nClicked))
            return false;
        SendOwner(WM_COMMAND, QZ_LBN_DBLCLK, nSel);
        return true;
    default:
        return false;
    }
}

void CQzList::SendOwner(UINT message, WPARAM wParam, LPARAM lParam)
{
    m_pOwner->SendMessage(message, wParam, lParam);
}

// ---------------------------------------------------------------------------------------------
// Drawing
//
// Background, the black backing, the rows in view with the marked row's decorations, the
// selection bar with its text, the mouse-over bar, then the tip of the row under the mouse. Only
// the rows in view are visited.

BOOL CQzList::Show()
{
    CheckMouseLeave();
    DrawBack();
    if (m_bDrawBacking)
    {
        CMyBitmap::ShowBlock(QzPlatform::AddClamped(m_rcWindow.left, m_ptItemMargin.x),
                             QzPlatform::AddClamped(m_rcWindow.top, m_ptItemMargin.y),
                             QzPlatform::AddClamped(m_rcWindow.left, m_nWidth),
                             QzPlatform::AddClamped(m_rcWindow.top, m_nHeight), kBackingColor);
    }
    if (m_nCount != 0)
    {
        m_nFirstDrawn = static_cast<int>(m_nTopIndex);
        m_nCurSel = GetCurSel();
        if (m_nCurSel >= m_nFirstDrawn && m_nCurSel < GetDrawEnd())
            GetItemRect(m_nCurSel, &m_rcSel);
        DrawItems();
    }
    DrawItemTip();
    return 1;
}

void CQzList::DrawItems()
{
    const int x = QzPlatform::AddClamped(m_rcWindow.left, m_ptItemTextOffset.x);
    const DWORD dwNow = QzPlatform::NowMs();
    const int64_t nEnd =
        std::min<int64_t>(static_cast<int64_t>(m_nFirstDrawn) + m_nRowsDrawn, GetCount());
    int64_t i = std::max(0, m_nFirstDrawn);
    for (; i < nEnd; ++i)
    {
        const QzListItem& item = m_vecItem[i];
        GetItemRect(static_cast<int>(i), &m_rcItem);
        const int nTextY = QzPlatform::AddClamped(m_rcItem.top, m_ptItemTextOffset.y);
        if (i == m_nMarkIndex)
            DrawMarks(nTextY);
        if (m_nListStyle == QZ_LIST_STYLE_TOGGLE)
            DrawColumns(x, m_rcItem.top, RowDrawColor(item, dwNow), item.strText.c_str());
        else
            DrawColumns(x, nTextY, ItemColorOf(item), item.strText.c_str());
    }
    if (m_nCurSel >= m_nFirstDrawn && m_nCurSel < i)
    {
        CMyBitmap::ShowBlock(m_rcSel.left, m_rcSel.top, m_rcSel.right, m_rcSel.bottom,
                             m_dwSelBackColor);
        DrawColumns(x, m_rcSel.top, m_dwSelTextColor, m_vecItem[m_nCurSel].strText.c_str());
    }
    DrawHoverBar();
}

// Style 2 only: a blinking row is red for a moment after its time stamp, white otherwise.
DWORD CQzList::RowDrawColor(const QzListItem& item, DWORD dwNow) const
{
    if (!item.bBlink)
        return ItemColorOf(item);
    const DWORD dwAge = dwNow - item.dwTime;
    return item.dwTime != 0 && dwAge > 0 && dwAge < kBlinkMs ? kBlinkColor : kSteadyColor;
}

void CQzList::DrawMarks(int y)
{
    const int x = m_rcWindow.left;
    if (!m_strMarkBackAni.empty())
        DrawSection(m_strMarkBackAni, x, y);
    if (!m_strMarkFrontAni.empty())
        DrawSection(m_strMarkFrontAni, QzPlatform::AddClamped(x, m_ptMarkFrontOffset.x),
                    QzPlatform::AddClamped(y, m_ptMarkFrontOffset.y));
}

void CQzList::DrawColumns(int x, int y, DWORD dwColor, const char* pszText)
{
    if (!pszText)
    {
        QzPlatform::ReportAssert("sscanf_s source NULL !!!", kSource, __LINE__);
        return;
    }
    if (*pszText == '\0')
        return;
    if (m_nColumns <= 1)
    {
        DrawRowText(x, y, dwColor, pszText);
        return;
    }
    char fields[kMaxColumns][kMaxFieldBytes + 1];
    if (ScanFields(pszText, m_nColumns, fields) != m_nColumns)
        return;
    const int64_t nStep = static_cast<int64_t>(kColumnFontSizes) * CMyBitmap::GetFontSize();
    for (int c = 0; c < m_nColumns; ++c)
        DrawRowText(QzPlatform::AddClamped(x, c * nStep), y, dwColor, fields[c]);
}

void CQzList::DrawRowText(int x, int y, DWORD dwColor, const char* pszText)
{
    QzPlatform::DrawGameText(x, y, dwColor, pszText, m_strFont.c_str(), m_sizeFont.iHeight,
                             kTextShadow, kTextStyle, kShadowColor, nullptr);
}

// The bar under the mouse: the hover section's frame 0 on the row (as wide as the marked row's
// back decoration when there is one), and the row's text again over it. With icons, the row's
// icon square is kept for the next press.
void CQzList::DrawHoverBar()
{
    m_bMouseOver = IsMouseOver() != 0;
    if (m_szHoverAni[0] == '\0' || m_nItemHeight == 0 || !m_bMouseOver)
        return;
    POINT pt = {0, 0};
    GetCursorPos(&pt);
    const int nRow = RowAt(pt.y);
    const int64_t nIndex = static_cast<int64_t>(m_nTopIndex) + nRow;
    if (nRow < 0 || nIndex >= GetDrawEnd())
        return;
    RECT rc;
    GetItemRect(static_cast<int>(nIndex), &rc);
    if (m_bHasIcon)
    {
        const int x = QzPlatform::AddClamped(rc.left, m_ptIconOffset.x);
        const int y = QzPlatform::AddClamped(rc.top, m_ptIconOffset.y);
        m_rcIcon = {x, y, QzPlatform::AddClamped(x, kIconSize),
                    QzPlatform::AddClamped(y, kIconSize)};
    }
    QzPlatform::CAniHandle bar;
    if (!QzPlatform::GetAniStore()->LoadAni(bar, QzPlatform::kControlAniFile, m_szHoverAni))
        return;
    int nMarkWidth = 0;
    int nMarkHeight = 0;
    QzPlatform::CAniHandle mark;
    if (!m_strMarkBackAni.empty() &&
        QzPlatform::GetAniStore()->LoadAni(mark, QzPlatform::kControlAniFile,
                                           m_strMarkBackAni.c_str()) &&
        mark.GetFrameSize(0, nMarkWidth, nMarkHeight))
    {
        int nBarWidth = 0;
        int nBarHeight = 0;
        bar.GetFrameSize(0, nBarWidth, nBarHeight);
        bar.GetAni()->ShowAniEx(0, rc.left, rc.top, nullptr, nMarkWidth, nBarHeight);
    }
    else
    {
        bar.Draw(0, rc.left, rc.top);
    }
    const QzListItem& item = m_vecItem[nIndex];
    DrawColumns(QzPlatform::AddClamped(m_rcWindow.left, m_ptItemTextOffset.x),
                QzPlatform::AddClamped(rc.top, m_ptItemTextOffset.y), ItemColorOf(item),
                item.strText.c_str());
}

// The tip of the row under the mouse in the nine-part frame "Pack_OrdinaryItemTipsBG", sized on
// the default cell: as wide as the longest line and as high as the lines, but at least as high
// as two corner widths and 2.
void CQzList::DrawItemTip()
{
    POINT pt = {0, 0};
    if (!m_pQzGuiMgr || !GetCursorPos(&pt))
        return;
    BOOL bMiss = 1;
    const int nIndex = HitTest(pt, &bMiss);
    const auto tip = m_mapItemTip.find(nIndex);
    if (bMiss || tip == m_mapItemTip.end() || tip->second.empty())
        return;
    std::vector<std::string> lines;
    int nLongest = 0;
    m_pQzGuiMgr->SplitText(tip->second.c_str(), lines, nLongest);
    if (lines.empty())
        return;
    IDataAni* pAni = TableDataSetQuery()->GetAni(QzPlatform::kControlAniFile, kTipSection, 0,
                                                 QzPlatform::CQzAniStore::kKeepAliveMs, 0);
    if (!pAni)
        return;

    RECT rc;
    GetItemRect(nIndex, &rc);
    const int x0 = QzPlatform::AddClamped(m_rcWindow.left, kTipLeft);
    const int y0 = m_bTipBelow ? QzPlatform::AddClamped(rc.top, kTipBelowOffset) : rc.top;
    C3_SIZE corner = {0, 0};
    pAni->GetAniSize(corner, 0);
    const int64_t cw = std::max(0, corner.iWidth - kTipCornerMargin);
    const int64_t ch = std::max(0, corner.iHeight - kTipCornerMargin);
    C3_SIZE cell = {0, 0};
    CMyBitmap::GetFontSize(cell);
    const int nLines = static_cast<int>(lines.size());
    const int64_t w = static_cast<int64_t>(cell.iWidth) * nLongest + kTipPadWidth;
    const int64_t h = std::max(
        static_cast<int64_t>(nLines) * (cell.iHeight + kTipLineGap) + kTipPadHeight, 2 * cw + 2);

    const int xMid = QzPlatform::AddClamped(x0, cw);
    const int xRight = QzPlatform::AddClamped(x0, w - cw);
    const int yMid = QzPlatform::AddClamped(y0, ch);
    const int yBottom = QzPlatform::AddClamped(y0, h - ch);
    const int64_t wMid = w - 2 * cw;
    const int64_t hMid = h - 2 * ch;
    DrawTipFrame(pAni, 0, x0, y0, cw, ch);
    DrawTipFrame(pAni, 1, xMid, y0, wMid, ch);
    DrawTipFrame(pAni, 2, xRight, y0, cw, ch);
    DrawTipFrame(pAni, 3, x0, yMid, cw, hMid);
    DrawTipFrame(pAni, 4, xMid, yMid, wMid, hMid);
    DrawTipFrame(pAni, 5, xRight, yMid, cw, hMid);
    DrawTipFrame(pAni, 6, x0, yBottom, cw, ch);
    DrawTipFrame(pAni, 7, xMid, yBottom, wMid, ch);
    DrawTipFrame(pAni, 8, xRight, yBottom, cw, ch);

    for (int k = 0; k < nLines; ++k)
    {
        const int64_t nDy = kTipTextTop + static_cast<int64_t>(k) * cell.iHeight +
                            (k > 0 ? kTipLineGap * (k - 1) : 0);
        QzPlatform::DrawGameText(QzPlatform::AddClamped(x0, kTipTextLeft),
                                 QzPlatform::AddClamped(y0, nDy), kTipTextColor, lines[k].c_str(),
                                 m_strFont.c_str(), cell.iHeight, kTextShadow, kTextStyle,
                                 kShadowColor, nullptr);
    }
}

void CQzList::DrawTipFrame(IDataAni* pAni, int nFrame, int x, int y, int64_t nWidth,
                           int64_t nHeight)
{
    if (nWidth > 0 && nHeight > 0)
        pAni->ShowAniEx(nFrame, x, y, &kTipSource, QzPlatform::ClampToInt(nWidth),
                        QzPlatform::ClampToInt(nHeight));
}

// ---------------------------------------------------------------------------------------------
// Text

// Widths grow with the prefix, so the longest prefix that fits is found by halving over the
// character ends within the byte limit.
int CQzList::FitText(char* pszText, int nMaxBytes, int nMaxPixels) const
{
    if (!pszText)
        return 0;
    const size_t nLimit = nMaxBytes > 0 ? static_cast<size_t>(nMaxBytes) : 0;
    std::vector<size_t> ends = {0};
    for (size_t i = 0; pszText[i] != '\0';)
    {
        const size_t nNext = i + (CMyBitmap::IsDBCSLeadByte(pszText + i, 0) ? 2 : 1);
        if (nNext > nLimit)
            break;
        ends.push_back(nNext);
        i = nNext;
    }
    const char* pszFace = m_strFont.empty() ? nullptr : m_strFont.c_str();
    const auto fits = [&](size_t nLength)
    {
        const std::string prefix(pszText, nLength);
        return CMyBitmap::CalcuTextExtent(prefix.c_str(), pszFace).iWidth < nMaxPixels;
    };
    size_t nLow = 0;
    size_t nHigh = fits(0) ? ends.size() - 1 : 0;
    while (nLow < nHigh)
    {
        const size_t nMid = (nLow + nHigh + 1) / 2;
        if (fits(ends[nMid]))
            nLow = nMid;
        else
            nHigh = nMid - 1;
    }
    pszText[ends[nLow]] = '\0';
    return static_cast<int>(ends[nLow]);
}

} // namespace QzGui
