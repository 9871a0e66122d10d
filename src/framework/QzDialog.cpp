#include "framework/QzDialog.h"

#include "controls/QzCtrl.h"
#include "controls/QzLookHash.h"
#include "framework/QzGuiMgr.h"
#include "layout/IQzGuiWndInfo.h"
#include "layout/QzExtraValue.h"
#include "platform/render/IRenderDevice.h"
#include "platform/render/TableDataSet.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"

#include <algorithm>
#include <climits>
#include <typeinfo>

namespace QzGui
{

namespace
{

constexpr const char* kSourceName = "QzDialog";
constexpr int kLineWindowProc = 217;
constexpr int kLineCreateCtrl = 1044;

// AddChildDialogs takes at most this many dialogs; a longer list adds none.
constexpr size_t kMaxChildDialogs = 20;

// Close events with a configuration exemption (CloseByEvent).
constexpr DWORD kEventEscape = 5;
constexpr DWORD kEventMapChange = 6;

// Bit 0 of the record's "Style": the dialog can be dragged.
constexpr int kStyleMovable = 0x1;

enum FlyDirection
{
    kFlyNone = 0,
    kFlyLeft = 1,
    kFlyRight = 2,
    kFlyBottom = 3,
    kFlyTop = 4,
};

bool IsMouseMessage(UINT message)
{
    return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
}

// The clicks a static control never takes: they fall through to the controls beneath it.
bool IsClickMessage(UINT message)
{
    return message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_RBUTTONDOWN ||
           message == WM_RBUTTONUP;
}

// 1 when the attribute is given with a nonzero value.
BOOL ExtraFlag(const IQzGuiWndInfo* pInfo, const char* pszKey)
{
    int nValue = 0;
    return ReadExtraInt(pInfo, pszKey, &nValue) && nValue != 0;
}

// x in the low 16 bits, y in the high 16 bits, as mouse messages carry a point.
DWORD PackPoint(int x, int y)
{
    return (static_cast<DWORD>(x) & 0xFFFF) | (static_cast<DWORD>(y) << 16);
}

// One axis of a fly step: towards the target by at most `step`, never past it.
int StepTowards(int nFrom, int nTarget, int nStep)
{
    const long long from = nFrom;
    long long next = from;
    if (nTarget > nFrom)
        next = std::min(from + nStep, static_cast<long long>(nTarget));
    else if (nTarget < nFrom)
        next = std::max(from - nStep, static_cast<long long>(nTarget));
    return static_cast<int>(
        std::clamp(next, static_cast<long long>(INT_MIN), static_cast<long long>(INT_MAX)));
}

// What ReloadInfo tells the dialogs after a reload of this mode; 0 for none.
UINT ReloadNotice(int nMode)
{
    if (nMode == 1)
        return QZ_WM_RELOADED;
    if (nMode == 2)
        return QZ_WM_RELOADED2;
    return 0;
}

bool SamePoint(POINT a, POINT b)
{
    return a.x == b.x && a.y == b.y;
}

} // namespace

CQzDialog::CQzDialog(DWORD nId, CQzBaseWindow* pParent)
{
    SetId(nId);
    SetParent(pParent);
}

CQzDialog::~CQzDialog()
{
    m_lstCtrl.clear();
    m_lstMsgMap.clear();
    m_lstChildDlg.clear();
}

// ---------------------------------------------------------------------------------------------
// Record

BOOL CQzDialog::LoadWndInfo()
{
    const BOOL bResult = CQzBaseWindow::LoadWndInfo();
    const IQzGuiWndInfo* pInfo = GetWndInfo();
    if (!pInfo)
        return bResult;
    SetMovable(false);
    if (pInfo->GetStyle() & kStyleMovable)
        SetMovable(true);
    ApplyDialogAttributes(pInfo);
    return bResult;
}

void CQzDialog::ApplyDialogAttributes(const IQzGuiWndInfo* pInfo)
{
    int nValue = 0;
    m_bPushable = !ExtraFlag(pInfo, "NoPush");
    m_bClickToTop = !(ReadExtraInt(pInfo, "ClickToTop", &nValue) && nValue == 0);
    m_bTopmost = ReadExtraInt(pInfo, "Topmost", &nValue) && nValue == 1;
    m_bExtraShow = ReadExtraInt(pInfo, "ExtraShow", &nValue) && nValue == 1;
    m_nFlyDir = pInfo->GetFlyDir();

    const char* pszFlyIn = pInfo->GetFlyInEffect();
    if (pszFlyIn && *pszFlyIn)
        m_strFlyInEffect = pszFlyIn;
    const char* pszFlyOut = pInfo->GetFlyOutEffect();
    if (pszFlyOut && *pszFlyOut)
        m_strFlyOutEffect = pszFlyOut;
    if (ReadExtraInt(pInfo, "FlyInStep", &nValue))
        m_nFlyInStep = nValue;
    if (ReadExtraInt(pInfo, "FlyOutStep", &nValue))
        m_nFlyOutStep = nValue;

    m_bIgnoreScrChgClose = ExtraFlag(pInfo, "IgnoreScrChgClose");
    m_bIgnoreEnterBattleClose = ExtraFlag(pInfo, "IgnoreEnterBattleClose");
    m_bIgnoreSwitchSrvClose = ExtraFlag(pInfo, "IgnoreSwitchSrvClose");
    m_bIgnoreChgMapClose = ExtraFlag(pInfo, "IgnoreChgMapClose");
    m_bRClose = ExtraFlag(pInfo, "RClose");
    m_bIgnoreEscClose = ExtraFlag(pInfo, "IgnoreEscClose");
}

void CQzDialog::ReloadInfo(int nMode)
{
    LoadWndInfo();
    for (QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.bCreated)
            entry.pCtrl->LoadWndInfo();
    }
    const UINT nNotice = ReloadNotice(nMode);
    for (const auto& child : m_lstChildDlg)
    {
        child.second->ReloadInfo(0);
        if (nNotice)
            child.second->SendMessage(nNotice, 0, 0);
    }
    if (nNotice)
        SendMessage(nNotice, 0, 0);
}

void CQzDialog::SetFrameMode(BOOL bFrameMode)
{
    CQzBaseWindow::SetFrameMode(bFrameMode);
    for (QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.bCreated)
            entry.pCtrl->SetFrameMode(bFrameMode);
    }
    for (const auto& child : m_lstChildDlg)
        child.second->SetFrameMode(bFrameMode);
}

void CQzDialog::SetInfoVariant(DWORD nVariant)
{
    CQzBaseWindow::SetInfoVariant(nVariant);
    for (QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.bCreated)
            entry.pCtrl->SetInfoVariant(nVariant);
    }
    for (const auto& child : m_lstChildDlg)
        child.second->SetInfoVariant(nVariant);
}

// ---------------------------------------------------------------------------------------------
// Creation and controls

BOOL CQzDialog::OnCreate()
{
    OnInitDialog(0);
    OnCreated();
    if (m_bCreateCtrlsOnCreate)
    {
        OnCreateCtrls();
        CreateCtrls();
    }
    return 1;
}

void CQzDialog::CreateCtrls()
{
    for (QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.bCreated)
            return;
        entry.bCreated = true;
        ++m_nCtrlListVersion;
        entry.pCtrl->Create(m_pQzGuiMgr);
        entry.pCtrl->ShowWindow(SW_SHOW);
    }
}

void CQzDialog::CreateCtrl(CQzBaseWindow* pCtrl, BOOL bShow)
{
    if (!m_bValid)
        QzPlatform::ReportAssert("m_bValid", kSourceName, kLineCreateCtrl);
    auto it = std::find_if(m_lstCtrl.begin(), m_lstCtrl.end(),
                           [pCtrl](const QzCtrlEntry& entry) { return entry.pCtrl == pCtrl; });
    if (!pCtrl || it == m_lstCtrl.end() || it->bCreated)
        return;
    // Created entries go last, so that the leading uncreated ones stay together.
    m_lstCtrl.splice(m_lstCtrl.end(), m_lstCtrl, it);
    it->bCreated = true;
    ++m_nCtrlListVersion;
    pCtrl->Create(m_pQzGuiMgr);
    pCtrl->ShowWindow(bShow ? SW_SHOW : SW_HIDE);
}

void CQzDialog::AddCtrl(DWORD nId, CQzBaseWindow* pCtrl)
{
    if (!pCtrl || pCtrl == this || FindCtrlEntry(nId))
        return;
    const bool bHeld =
        std::any_of(m_lstCtrl.begin(), m_lstCtrl.end(),
                    [pCtrl](const QzCtrlEntry& entry) { return entry.pCtrl == pCtrl; });
    if (bHeld)
        return;
    pCtrl->SetParent(this);
    pCtrl->SetId(nId);
    // A new entry is not created yet: it joins the uncreated ones, ahead of every created one.
    auto firstCreated = std::find_if(m_lstCtrl.begin(), m_lstCtrl.end(),
                                     [](const QzCtrlEntry& entry) { return entry.bCreated; });
    m_lstCtrl.insert(firstCreated, QzCtrlEntry{false, nId, pCtrl->GetWndType(), pCtrl});
    ++m_nCtrlListVersion;
}

const QzCtrlEntry* CQzDialog::FindCtrlEntry(DWORD nId) const
{
    for (const QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.nId == nId)
            return &entry;
    }
    return nullptr;
}

CQzBaseWindow* CQzDialog::FindCtrl(DWORD nFullId)
{
    for (QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.pCtrl->GetFullId() == nFullId)
            return entry.pCtrl;
    }
    return nullptr;
}

void CQzDialog::MoveCtrlToEnd(DWORD nId)
{
    auto it = std::find_if(m_lstCtrl.begin(), m_lstCtrl.end(),
                           [nId](const QzCtrlEntry& entry) { return entry.nId == nId; });
    if (it == m_lstCtrl.end())
        return;
    m_lstCtrl.splice(m_lstCtrl.end(), m_lstCtrl, it);
    ++m_nCtrlListVersion;
}

void CQzDialog::RemoveCtrl(CQzBaseWindow* pCtrl)
{
    auto it = std::find_if(m_lstCtrl.begin(), m_lstCtrl.end(),
                           [pCtrl](const QzCtrlEntry& entry) { return entry.pCtrl == pCtrl; });
    if (!pCtrl || it == m_lstCtrl.end())
        return;
    m_lstCtrl.erase(it);
    ++m_nCtrlListVersion;
    if (m_pHoverCtrl == pCtrl)
        m_pHoverCtrl = nullptr;
    if (m_pDefaultCtrl == pCtrl)
        m_pDefaultCtrl = nullptr;
    if (CQzGuiMgr* pMgr = GetMgr())
        pMgr->ForgetWindow(pCtrl);
}

void CQzDialog::SetDefaultCtrl(CQzBaseWindow* pCtrl)
{
    if (!pCtrl)
        return;
    const int nType = pCtrl->GetWndType();
    if (nType == 0 || nType == QZ_WND_DIALOG)
        return;
    m_pDefaultCtrl = pCtrl;
}

// ---------------------------------------------------------------------------------------------
// Child dialogs

void CQzDialog::AddChildDialog(CQzDialog* pDialog, bool bCreateCtrls)
{
    if (!pDialog || pDialog->GetWndType() != QZ_WND_DIALOG || HoldsAsAncestor(pDialog))
        return;
    if (FindChildDialog(pDialog->GetId()) == pDialog)
        return;
    pDialog->SetParent(this);
    pDialog->SetValid(true);
    pDialog->SetCreateCtrlsOnCreate(bCreateCtrls);
    pDialog->Create(m_pQzGuiMgr);
    m_lstChildDlg.emplace_back(pDialog->GetId(), pDialog);
}

void CQzDialog::AddChildDialogs(std::initializer_list<CQzDialog*> dialogs, bool bCreateCtrls)
{
    if (dialogs.size() > kMaxChildDialogs)
        return;
    for (CQzDialog* pDialog : dialogs)
    {
        if (!pDialog)
            return;
        AddChildDialog(pDialog, bCreateCtrls);
    }
}

CQzDialog* CQzDialog::FindChildDialog(DWORD nId)
{
    for (const auto& child : m_lstChildDlg)
    {
        if (child.first == nId)
            return child.second;
    }
    return nullptr;
}

CQzDialog* CQzDialog::GetParentDialog()
{
    return dynamic_cast<CQzDialog*>(m_pParent);
}

// True for this dialog and every dialog above it: none of them can become its child.
bool CQzDialog::HoldsAsAncestor(const CQzDialog* pDialog) const
{
    for (const CQzBaseWindow* pWnd = this; pWnd; pWnd = pWnd->GetParent())
    {
        if (pWnd == pDialog)
            return true;
    }
    return false;
}

// ---------------------------------------------------------------------------------------------
// Message map

void CQzDialog::AddMsgHandler(UINT nKind, DWORD nPacked, Handler handler)
{
    if (!handler)
        return;
    const WORD nCode = HIWORD(nPacked);
    const WORD nId = LOWORD(nPacked);
    const bool bKnown =
        std::any_of(m_lstMsgMap.begin(), m_lstMsgMap.end(),
                    [&](const MsgMapEntry& entry)
                    { return entry.nKind == nKind && entry.nCode == nCode && entry.nId == nId; });
    if (bKnown)
        return;
    m_lstMsgMap.push_back({nKind, nCode, nId, std::move(handler)});
}

BOOL CQzDialog::OnCommand(WORD nCode, WORD nId)
{
    return RunHandler(nCode, nId);
}

BOOL CQzDialog::OnNotify(WORD nCode, WORD nId)
{
    return RunHandler(nCode, nId);
}

// The first entry with this code and id runs; the kind is not compared, so one entry answers
// both WM_COMMAND and WM_NOTIFY.
BOOL CQzDialog::RunHandler(WORD nCode, WORD nId)
{
    for (const MsgMapEntry& entry : m_lstMsgMap)
    {
        if (entry.nCode != nCode || entry.nId != nId)
            continue;
        // A copy: the handler may change the map, or close and delete the dialog.
        const Handler handler = entry.handler;
        handler(this);
        return 1;
    }
    return 0;
}

// ---------------------------------------------------------------------------------------------
// Messages

LRESULT CQzDialog::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    QzMsg msg{GetFullId(), message, wParam, lParam};
    if (PreTranslateMessage(&msg))
        return 1;
    if (RouteToChildren(message, wParam, lParam))
        return 1;
    return WindowProc(message, wParam, lParam);
}

BOOL CQzDialog::PreTranslateMessage(QzMsg* pMsg)
{
    if (!pMsg || pMsg->message != WM_SHOWWINDOW || pMsg->nFullId != GetFullId())
        return 0;
    if (pMsg->wParam != 1)
    {
        m_bDragging = false;
        return 0;
    }
    if (!m_bCreateCtrlsOnCreate)
    {
        OnCreateCtrls();
        CreateCtrls();
    }
    BringToTopIfClickToTop();
    return 0;
}

LRESULT CQzDialog::RouteToChildren(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!IsMouseMessage(message) || !IsVisible() || IsCapture())
        return 0;
    if (CQzDialog* pDialog = ChildDialogAt(LOWORD(lParam), HIWORD(lParam)))
        return pDialog->SendMessage(message, wParam, lParam);
    QzCtrlEntry* pEntry = CtrlEntryAt(message, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    if (!pEntry)
        return 0;
    CQzBaseWindow* pCtrl = pEntry->pCtrl;
    QzMsg msg{pCtrl->GetFullId(), message, wParam, lParam};
    if (PreTranslateMessage(&msg))
        return 1;
    return pCtrl->SendMessage(message, wParam, lParam);
}

// The last added child dialog that is visible, enabled and under the point.
CQzDialog* CQzDialog::ChildDialogAt(int x, int y)
{
    for (auto it = m_lstChildDlg.rbegin(); it != m_lstChildDlg.rend(); ++it)
    {
        CQzDialog* pDialog = it->second;
        if (pDialog->IsVisible() && pDialog->IsWindowEnabled() && pDialog->PtInWindow(x, y))
            return pDialog;
    }
    return nullptr;
}

// The uppermost created, visible control under the point that takes the message: a disabled
// control takes only mouse moves, a static control no clicks.
QzCtrlEntry* CQzDialog::CtrlEntryAt(UINT message, int x, int y)
{
    for (auto it = m_lstCtrl.rbegin(); it != m_lstCtrl.rend(); ++it)
    {
        QzCtrlEntry* pEntry = &*it;
        CQzBaseWindow* pCtrl = pEntry->pCtrl;
        if (!pEntry->bCreated || !pCtrl->IsWindowVisible() || !pCtrl->PtInWindow(x, y))
            continue;
        if (!pCtrl->IsWindowEnabled() && message != WM_MOUSEMOVE)
            continue;
        if (pEntry->nType == QZ_WND_STATIC && IsClickMessage(message))
            continue;
        return pEntry;
    }
    return nullptr;
}

LRESULT CQzDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_bValid)
        QzPlatform::ReportAssert("m_bValid", kSourceName, kLineWindowProc);
    const POINT point{LOWORD(lParam), HIWORD(lParam)};
    const UINT nFlags = static_cast<UINT>(wParam);
    switch (message)
    {
    case WM_MOUSEMOVE:
        OnDialogMouseMove(nFlags, point);
        return 1;
    case WM_LBUTTONDOWN:
        m_ptDragAnchor = point;
        SetCapture();
        m_bDragging = true;
        OnLButtonDown(nFlags, point);
        return 1;
    case WM_LBUTTONUP:
        ReleaseCapture();
        m_bDragging = false;
        OnLButtonUp(nFlags, point);
        break;
    case WM_LBUTTONDBLCLK:
        OnLButtonDblClk(nFlags, point);
        return 1;
    case WM_RBUTTONDOWN:
        OnRButtonDown(nFlags, point);
        return 1;
    case WM_RBUTTONDBLCLK:
        OnRButtonDblClk(nFlags, point);
        return 1;
    case WM_RBUTTONUP:
        OnRButtonUp(nFlags, point);
        break;
    case WM_KEYDOWN:
        OnKeyDown(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case WM_KEYUP:
        OnKeyUp(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case WM_MOVE:
        OnMove(wParam, lParam);
        break;
    case WM_SIZE:
        OnSize(wParam, lParam);
        break;
    case WM_SHOWWINDOW:
        OnShowWindowEffects(wParam == 1);
        break;
    case WM_COMMAND:
        if (OnCommand(HIWORD(wParam), LOWORD(wParam)))
            return 1;
        break;
    case WM_NOTIFY:
        if (OnNotify(HIWORD(wParam), LOWORD(wParam)))
            return 1;
        break;
    case WM_TIMER:
        OnTimer(static_cast<DWORD>(wParam));
        return 1;
    case QZ_WM_DRAGMOVE:
        m_ptDragAnchor = {GET_X_LPARAM(wParam), HIWORD(wParam)};
        OnDrag(0, LOWORD(lParam), HIWORD(lParam));
        return 1;
    case QZ_WM_FLYFINISHED:
        HideIfOffScreen();
        break;
    default:
        break;
    }
    CQzBaseWindow::WindowProc(message, wParam, lParam);
    return 0;
}

void CQzDialog::OnDialogMouseMove(UINT nFlags, POINT point)
{
    if (m_bDragging && m_bMovable)
        OnDrag(nFlags, point.x, point.y);
    else
        OnMouseMove(nFlags, point);
    if (m_bMouseIn)
        return;
    OnMouseEnter();
    m_bMouseIn = true;
}

// ---------------------------------------------------------------------------------------------
// Drag and move

void CQzDialog::OnDrag(UINT nFlags, int x, int y)
{
    if (!GetGuiMgr())
        return;
    // A child dialog drags its parent: the parent moves, and the child with it.
    if (CQzDialog* pParent = GetParentDialog())
    {
        pParent->SendMessage(QZ_WM_DRAGMOVE, PackPoint(m_ptDragAnchor.x, m_ptDragAnchor.y),
                             PackPoint(x, y));
        m_ptDragAnchor = {x, y};
        return;
    }
    if (x <= 0 || y <= 0 || x >= ScreenWidth() || y >= ScreenHeight())
        return;
    const int dx = x - m_ptDragAnchor.x;
    const int dy = y - m_ptDragAnchor.y;
    // The rectangle relative to the parent moves by the same amount as the absolute one.
    m_rcLocal = {
        QzPlatform::AddClamped(m_rcLocal.left, dx), QzPlatform::AddClamped(m_rcLocal.top, dy),
        QzPlatform::AddClamped(m_rcLocal.right, dx), QzPlatform::AddClamped(m_rcLocal.bottom, dy)};
    PlaceAbsolute(QzPlatform::AddClamped(m_rcWindow.left, dx),
                  QzPlatform::AddClamped(m_rcWindow.top, dy), GetWidth(), GetHeight());
    m_ptDragAnchor = {x, y};
}

void CQzDialog::OnMove(WPARAM x, LPARAM y)
{
    const int nX = static_cast<int>(x);
    const int nY = static_cast<int>(y);
    for (const auto& child : m_lstChildDlg)
    {
        CQzDialog* pDialog = child.second;
        const RECT& rc = pDialog->GetLocalRect();
        pDialog->PlaceAbsolute(QzPlatform::AddClamped(rc.left, nX),
                               QzPlatform::AddClamped(rc.top, nY), pDialog->GetWidth(),
                               pDialog->GetHeight());
    }
    for (QzCtrlEntry& entry : m_lstCtrl)
    {
        CQzBaseWindow* pCtrl = entry.pCtrl;
        const RECT& rc = pCtrl->GetLocalRect();
        pCtrl->PlaceAbsolute(QzPlatform::AddClamped(rc.left, nX),
                             QzPlatform::AddClamped(rc.top, nY), pCtrl->GetWidth(),
                             pCtrl->GetHeight());
    }
}

// ---------------------------------------------------------------------------------------------
// Showing, hiding and flying

void CQzDialog::OnShowWindowEffects(bool bShown)
{
    if (!bShown)
    {
        m_pHoverCtrl = nullptr;
        m_pHoverDlg = nullptr;
        PlayRecordSound(false);
        return;
    }
    PlayRecordSound(true);
    m_bNoFlyOut = false;
    if (m_nFlyDir == kFlyNone)
        return;
    const POINT origin = GetOriginPos();
    if (m_nFlyDir >= kFlyLeft && m_nFlyDir <= kFlyTop)
    {
        const POINT start = OffScreenPoint(origin);
        SetPos(start.x, start.y);
    }
    if (StartFly(origin, m_nFlyInStep) && !m_strFlyInEffect.empty())
        LoadFrontEffect(m_strFlyInEffect.c_str(), false, true);
}

void CQzDialog::PlayRecordSound(bool bOpen)
{
    const IQzGuiWndInfo* pInfo = GetWndInfo();
    if (!pInfo || !m_pQzGuiMgr)
        return;
    m_pQzGuiMgr->PlaySound(bOpen ? pInfo->GetOpenSound() : pInfo->GetCloseSound());
}

BOOL CQzDialog::OnHiding(int nCmdShow)
{
    if (m_bNoFlyOut || m_nFlyDir == kFlyNone || !IsWindowVisible())
        return CQzBaseWindow::OnHiding(nCmdShow);
    if (!StartFly(OffScreenPoint(GetPos()), m_nFlyOutStep))
        return 1;
    if (!m_strFlyOutEffect.empty())
        LoadFrontEffect(m_strFlyOutEffect.c_str(), false, true);
    // Stays visible while it flies; the fly-finished message hides it on arrival.
    return 0;
}

POINT CQzDialog::OffScreenPoint(POINT from) const
{
    switch (m_nFlyDir)
    {
    case kFlyLeft:
        return {QzPlatform::ClampToInt(-int64_t(GetWidth())), from.y};
    case kFlyRight:
        return {QzPlatform::AddClamped(ScreenWidth(), GetWidth()), from.y};
    case kFlyBottom:
        return {from.x, QzPlatform::AddClamped(ScreenHeight(), GetHeight())};
    case kFlyTop:
        return {from.x, QzPlatform::ClampToInt(-int64_t(GetHeight()))};
    default:
        return from;
    }
}

BOOL CQzDialog::StartFly(POINT ptTarget, int nStep)
{
    if (SamePoint(ptTarget, GetPos()))
        return 0;
    m_bFlying = 1;
    m_ptFlyTarget = ptTarget;
    m_nFlyStep = nStep;
    return 1;
}

void CQzDialog::StepFly()
{
    const POINT pos = GetPos();
    const POINT next{StepTowards(pos.x, m_ptFlyTarget.x, m_nFlyStep),
                     StepTowards(pos.y, m_ptFlyTarget.y, m_nFlyStep)};
    SetPos(next.x, next.y);
    if (!SamePoint(next, m_ptFlyTarget))
        return;
    m_bFlying = 0;
    m_ptFlyTarget = {0, 0};
    SendMessage(QZ_WM_FLYFINISHED, 0, 0);
}

void CQzDialog::HideIfOffScreen()
{
    if (!GetMgr())
        return;
    const RECT& rc = GetWindowRect();
    if (rc.right < 1 || rc.left >= ScreenWidth() || rc.bottom < 1 || rc.top >= ScreenHeight())
        ShowWindow(SW_HIDE);
}

BOOL CQzDialog::CloseByEvent(DWORD nEvent)
{
    if (nEvent == kEventEscape && m_bIgnoreEscClose)
        return 0;
    if (nEvent == kEventMapChange && m_bIgnoreChgMapClose)
        return 0;
    ShowWindow(SW_HIDE);
    return 1;
}

// ---------------------------------------------------------------------------------------------
// State

void CQzDialog::SetValid(bool bValid)
{
    if (bValid)
    {
        m_bValid = true;
        return;
    }
    // An unregistered dialog is drawn by nobody, so it hides at once instead of flying out.
    m_bNoFlyOut = true;
    ShowWindow(SW_HIDE);
    for (QzCtrlEntry& entry : m_lstCtrl)
        entry.bCreated = false;
    ++m_nCtrlListVersion;
    m_bValid = false;
}

void CQzDialog::BringToTopIfClickToTop()
{
    if (m_pParent || !m_bClickToTop)
        return;
    if (CQzGuiMgr* pMgr = GetMgr())
        pMgr->BringToTop(this);
}

bool CQzDialog::IsVisible()
{
    const CQzGuiMgr* pMgr = GetMgr();
    if (pMgr && pMgr->IsDialogsHidden() && m_bPushable)
        return false;
    return IsWindowVisible() != 0;
}

bool CQzDialog::IsParentVisible()
{
    if (!m_pParent)
        return true;
    if (CQzDialog* pParent = GetParentDialog())
        return pParent->IsVisible();
    return m_pParent->IsWindowVisible() != 0;
}

int CQzDialog::ScreenWidth() const
{
    const CQzGuiMgr* pMgr = GetMgr();
    return pMgr ? pMgr->GetScreenWidth() : 0;
}

int CQzDialog::ScreenHeight() const
{
    const CQzGuiMgr* pMgr = GetMgr();
    return pMgr ? pMgr->GetScreenHeight() : 0;
}

// ---------------------------------------------------------------------------------------------
// Drawing

void CQzDialog::Draw()
{
    if (!IsVisible() || IsDisable() || !IsParentVisible())
        return;
    if (m_bFlying)
        StepFly();
    CheckMouseLeave();
    ProcessTimers();
    QzPlatform::IRenderDevice& device = QzPlatform::GetRenderDevice();
    const uint64_t look = BackLook();
    if (!device.RepeatItem(this, look))
    {
        device.BeginItem(this, look);
        DrawBack();
        DrawBackEffect();
        device.EndItem();
    }
    Show();
    DrawFrontEffect();
    UpdateEffects();
    OnAfterDraw();
}

bool CQzDialog::HasStockBack() const
{
    return typeid(*this) == typeid(CQzDialog);
}

uint64_t CQzDialog::BackLook() const
{
    if (!HasStockBack() || IsDebugDraw())
        return 0;
    CQzLookHash hash;
    hash.Add(QzPlatform::CTableDataSet::Instance().GetEpoch());
    return AddBackLook(hash) ? hash.Get() : 0;
}

BOOL CQzDialog::Show()
{
    DrawCtrls();
    DrawChildDialogs();
    return 1;
}

// Each control is an item of the device: a device that keeps what it drew reuses a control's
// output while the control draws the same, and repeats it without Show while the control's look
// is the one it was drawn under. The walk reads the controls a few places ahead, so that on
// screens of thousands of controls their memory is on its way while the one before draws.
void CQzDialog::DrawCtrls()
{
    constexpr size_t kAhead = 4;
    m_pHoverCtrl = nullptr;
    const std::vector<CQzBaseWindow*>& order = DrawOrder();
    const unsigned nVersion = m_nCtrlListVersion;
    for (size_t i = 0; i < order.size(); ++i)
    {
        if (i + kAhead < order.size())
            CQzCtrl::PrefetchLook(order[i + kAhead]);
        DrawCtrl(order[i]);
        if (m_nCtrlListVersion == nVersion)
            continue;
        const size_t next = std::min(i + 1, order.size());
        DrawRest(std::vector<CQzBaseWindow*>(order.begin() + next, order.end()));
        return;
    }
}

// A control's Show added, removed or moved controls: of those it had still to draw, the walk
// draws the ones still created in the dialog, each once.
void CQzDialog::DrawRest(const std::vector<CQzBaseWindow*>& rest)
{
    for (CQzBaseWindow* pCtrl : rest)
    {
        const std::vector<CQzBaseWindow*>& order = DrawOrder();
        if (std::find(order.begin(), order.end(), pCtrl) != order.end())
            DrawCtrl(pCtrl);
    }
}

void CQzDialog::DrawCtrl(CQzBaseWindow* pCtrl)
{
    if (!pCtrl->IsWindowVisible())
        return;
    QzPlatform::IRenderDevice& device = QzPlatform::GetRenderDevice();
    // Debug mode outlines the control under the mouse: nothing is repeated then.
    const uint64_t look =
        IsDebugDraw() ? 0
                      : CQzCtrl::LookOf(*pCtrl, QzPlatform::CTableDataSet::Instance().GetEpoch());
    if (!device.RepeatItem(pCtrl, look))
    {
        device.BeginItem(pCtrl, look);
        pCtrl->Show();
        device.EndItem();
    }
    if (pCtrl->IsMouseIn())
        m_pHoverCtrl = pCtrl;
}

const std::vector<CQzBaseWindow*>& CQzDialog::DrawOrder()
{
    if (m_nDrawOrderVersion == m_nCtrlListVersion)
        return m_vecDrawOrder;
    m_vecDrawOrder.clear();
    for (const QzCtrlEntry& entry : m_lstCtrl)
    {
        if (entry.bCreated)
            m_vecDrawOrder.push_back(entry.pCtrl);
    }
    m_vecDrawOrder.shrink_to_fit(); // screens hold tens of thousands of controls
    m_nDrawOrderVersion = m_nCtrlListVersion;
    return m_vecDrawOrder;
}

void CQzDialog::DrawChildDialogs()
{
    m_pHoverDlg = nullptr;
    for (const auto& child : m_lstChildDlg)
    {
        CQzDialog* pDialog = child.second;
        if (!pDialog->IsVisible())
            continue;
        pDialog->Draw();
        if (pDialog->IsMouseOver())
            m_pHoverDlg = pDialog;
    }
}

void CQzDialog::DrawHover()
{
    if (m_pHoverDlg)
    {
        m_pHoverDlg->OnHoverDraw();
        m_pHoverDlg->DrawHover();
    }
    // The control under the mouse queues its tip; tips are drawn after every dialog, so they
    // lie above all of them.
    if (auto* pCtrl = dynamic_cast<CQzCtrl*>(m_pHoverCtrl))
        pCtrl->ShowTip();
}

} // namespace QzGui
