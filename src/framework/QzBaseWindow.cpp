#include "framework/QzBaseWindow.h"

#include "platform/services/QzClock.h"

#include "controls/QzLookHash.h"

#include "effects/Gui3DEffect.h"
#include "framework/QzBackDrawer.h"
#include "framework/QzGuiHelper.h"
#include "framework/QzGuiMgr.h"
#include "layout/IQzGuiWndInfo.h"
#include "layout/QzCursorMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "layout/QzGuiWndInfo.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/render/TableDataSet.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzScreenAdapter.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>
#include <vector>

namespace QzGui
{

namespace
{

// Where the reports of this unit say they come from.
constexpr const char* kSource = "QzBaseWindow";
constexpr int kLineNoRecord = 136;
constexpr int kLineNoManager = 248;
constexpr int kLineRectRef = 1229;
constexpr int kLineRectPtr = 1239;

constexpr int kMaskKind = 2;
constexpr DWORD kDebugOutline = 0xffff0000;
// The effect holder's flag for the parts a window adds and asks about.
constexpr int kEffectPartFlag = 1;

// "%d %d %d %d": exactly four integers, as left, top, right, bottom.
bool ParseAniOffset(const char* pszText, RECT& rc)
{
    if (!pszText)
        return false;
    long values[4] = {};
    const char* pszNext = pszText;
    for (long& value : values)
    {
        char* pszEnd = nullptr;
        value = std::strtol(pszNext, &pszEnd, 10);
        if (pszEnd == pszNext)
            return false;
        pszNext = pszEnd;
    }
    rc = {QzPlatform::ClampToInt(values[0]), QzPlatform::ClampToInt(values[1]),
          QzPlatform::ClampToInt(values[2]), QzPlatform::ClampToInt(values[3])};
    return true;
}

BOOL IntegerValue(const char* pszText)
{
    return pszText ? QzPlatform::ClampToInt(std::strtol(pszText, nullptr, 10)) : 0;
}

bool InRect(const RECT& rc, int x, int y)
{
    return x >= rc.left && x < rc.right && y >= rc.top && y < rc.bottom;
}

// Moves stop at the int range: windows may lie at its ends.
void OffsetPoint(POINT& pt, int64_t dx, int64_t dy)
{
    pt.x = QzPlatform::AddClamped(pt.x, dx);
    pt.y = QzPlatform::AddClamped(pt.y, dy);
}

void OffsetRect(RECT& rc, int64_t dx, int64_t dy)
{
    rc.left = QzPlatform::AddClamped(rc.left, dx);
    rc.top = QzPlatform::AddClamped(rc.top, dy);
    rc.right = QzPlatform::AddClamped(rc.right, dx);
    rc.bottom = QzPlatform::AddClamped(rc.bottom, dy);
}

void CheckFlagPosition(size_t nPos)
{
    if (nPos != 0)
        throw std::out_of_range("invalid bitset position");
}

} // namespace

// ---------------------------------------------------------------------------------------------
// Life

CQzBaseWindow::CQzBaseWindow() = default;

CQzBaseWindow::CQzBaseWindow(const CQzBaseWindow& other)
{
    CopyValues(other);
    CopyResources(other);
}

CQzBaseWindow& CQzBaseWindow::operator=(const CQzBaseWindow& other)
{
    if (this == &other)
        return *this;
    ReleaseResources();
    CopyValues(other);
    CopyResources(other);
    return *this;
}

// Every member except what the window owns (effects, bitmap, region): CopyResources makes
// those.
void CQzBaseWindow::CopyValues(const CQzBaseWindow& other)
{
    ForgetLook();
    m_pQzGuiMgr = other.m_pQzGuiMgr;
    m_bMouseIn = other.m_bMouseIn;
    m_bShowBack = other.m_bShowBack;
    m_wState = other.m_wState;
    m_nParentId = other.m_nParentId;
    TakeWndInfo(other.m_pWndInfo);
    m_byAlpha = other.m_byAlpha;
    m_nInfoVariant = other.m_nInfoVariant;
    m_bUseInfo = other.m_bUseInfo;
    m_nInfoId = other.m_nInfoId;
    m_nUserData1 = other.m_nUserData1;
    m_nUserData2 = other.m_nUserData2;
    m_ptPicOffset = other.m_ptPicOffset;
    m_ptPicOffset2 = other.m_ptPicOffset2;
    m_nOffsetFrame = other.m_nOffsetFrame;
    m_bVisible = other.m_bVisible;
    m_nBackType = other.m_nBackType;
    m_bFrameMode = other.m_bFrameMode;
    m_rcAniOffset = other.m_rcAniOffset;
    m_bEnable = other.m_bEnable;
    m_bDisable = other.m_bDisable;
    m_nId = other.m_nId;
    m_rcWindow = other.m_rcWindow;
    m_rcLocal = other.m_rcLocal;
    m_rcOrigin = other.m_rcOrigin;
    m_pParent = other.m_pParent;
    m_strCursor = other.m_strCursor;
    SetOwnAniName(other.m_strAniName.c_str());
    m_lstTimer = other.m_lstTimer;
    m_bUserFlag = other.m_bUserFlag;
    m_strBackFile = other.m_strBackFile;
}

// Own effect layers sharing the source's effect objects, an own bitmap of the same file and an
// own copy of a region the source owns (a region the host set stays shared, as the host's).
void CQzBaseWindow::CopyResources(const CQzBaseWindow& other)
{
    ForgetLook();
    if (other.m_pBackEffect)
        m_pBackEffect = new CGui3DEffect(*other.m_pBackEffect);
    if (other.m_pFrontEffect)
        m_pFrontEffect = new CGui3DEffect(*other.m_pFrontEffect);
    if (other.m_pBackBitmap && !m_strBackFile.empty())
        m_pBackBitmap = MyBitmapCreate(m_strBackFile.c_str());
    m_hRgn = other.m_hRgn;
    m_bOwnRgn = false;
    if (!other.m_bOwnRgn || !other.m_hRgn)
        return;
    HRGN hCopy = ::CreateRectRgn(0, 0, 0, 0);
    if (hCopy && ::CombineRgn(hCopy, other.m_hRgn, nullptr, RGN_COPY) == ERROR)
    {
        ::DeleteObject(hCopy);
        hCopy = nullptr;
    }
    m_hRgn = hCopy;
    m_bOwnRgn = hCopy != nullptr;
}

void CQzBaseWindow::ReleaseResources()
{
    ForgetLook();
    delete std::exchange(m_pBackEffect, nullptr);
    delete std::exchange(m_pFrontEffect, nullptr);
    if (m_pBackBitmap)
        std::exchange(m_pBackBitmap, nullptr)->Release();
    ReleaseOwnedRegion();
}

CQzBaseWindow::~CQzBaseWindow()
{
    // A host may delete its windows after it released the manager: only a manager that is
    // still registered with the GUI helper is alive to be told.
    CQzGuiHelper* pHelper = CQzGuiHelper::Instance();
    if (m_pQzGuiMgr && pHelper && pHelper->IsRegistered(m_pQzGuiMgr))
        GetMgr()->ForgetWindow(this);
    ReleaseResources();
    TakeWndInfo(nullptr);
}

// Holds the record the window shows, so that a reload frees the old one only once every
// window has let it go.
void CQzBaseWindow::TakeWndInfo(IQzGuiWndInfo* pInfo)
{
    if (pInfo)
        static_cast<const CQzGuiWndInfo*>(pInfo)->Hold();
    if (m_pWndInfo)
        static_cast<const CQzGuiWndInfo*>(m_pWndInfo)->Drop();
    m_pWndInfo = pInfo;
}

BOOL CQzBaseWindow::Create(IQzGuiMgr* pGuiMgr)
{
    if (!pGuiMgr)
        return 0;
    m_pQzGuiMgr = pGuiMgr;
    if (!LoadWndInfo())
        return 0;
    KillAllTimers();
    return OnCreate() ? 1 : 0;
}

IQzGuiMgr* CQzBaseWindow::GetGuiMgr()
{
    if (!m_pQzGuiMgr)
        QzPlatform::ReportAssert("NULL != m_pQzGuiMgr", kSource, kLineNoManager);
    return m_pQzGuiMgr;
}

CQzGuiMgr* CQzBaseWindow::GetMgr() const
{
    // Every manager is made by CreateGuiMgr: the interface is always a CQzGuiMgr.
    return static_cast<CQzGuiMgr*>(m_pQzGuiMgr);
}

CQzGuiMgr* CQzBaseWindow::RequireMgr()
{
    return dynamic_cast<CQzGuiMgr*>(GetGuiMgr());
}

CQzBaseWindow* CQzBaseWindow::GetRootWindow()
{
    CQzBaseWindow* pRoot = this;
    while (pRoot->m_pParent)
        pRoot = pRoot->m_pParent;
    return pRoot;
}

DWORD CQzBaseWindow::GetFullId() const
{
    const DWORD nParentId = m_pParent ? m_pParent->m_nId : 0;
    return (nParentId & 0xFFFF) | ((m_nId & 0xFFFF) << 16);
}

// ---------------------------------------------------------------------------------------------
// The configuration record

bool CQzBaseWindow::IsInfoWanted()
{
    if (!m_bUseInfo)
        return false;
    return !m_pParent || GetRootWindow()->m_bUseInfo;
}

BOOL CQzBaseWindow::LoadWndInfo()
{
    m_nParentId = m_pParent ? m_pParent->m_nId : 0;
    if (!IsInfoWanted())
        return 1;
    CQzGuiMgr* pMgr = RequireMgr();
    CQzGuiInfoMgr* pInfoMgr = pMgr ? pMgr->GetInfoMgr() : nullptr;
    if (!pInfoMgr)
        return 1;
    // A child dialog is configured as a top-level window.
    const DWORD nLookUpParent = m_pParent && GetWndType() == QZ_WND_DIALOG ? 0 : m_nParentId;
    const DWORD nRecordId = m_nInfoId ? m_nInfoId : m_nId;
    TakeWndInfo(pInfoMgr->GetWndInfo(nLookUpParent, nRecordId, GetWndType(), m_nInfoVariant));
    if (!m_pWndInfo)
    {
        QzPlatform::LogEvent(
            "Dialog or Control error!!!", kSource, kLineNoRecord,
            {QzPlatform::LogInt("wnd_id", m_nId), QzPlatform::LogInt("parent_id", nLookUpParent)});
        m_bFrameMode = 1;
        ForgetLook();
        return 1;
    }
    ApplyRecord(m_pWndInfo);
    return 1;
}

void CQzBaseWindow::ApplyRecord(IQzGuiWndInfo* pInfo)
{
    ForgetLook();
    m_bFrameMode = 0;
    const int x = static_cast<int16_t>(pInfo->GetX());
    const int y = static_cast<int16_t>(pInfo->GetY());
    const int nWidth = static_cast<int>(pInfo->GetWidth());
    const int nHeight = static_cast<int>(pInfo->GetHeight());
    m_rcOrigin = {x, y, x + nWidth, y + nHeight};
    MoveWindow(nullptr, x, y, nWidth, nHeight, TRUE);

    LoadBackEffect(pInfo->GetBgEffect(), true, true);
    LoadFrontEffect(pInfo->GetFgEffect(), true, true);
    if (pInfo->TestFlag(WNDINFO_FLAG_ANISECTION))
        SetOwnAniName(pInfo->GetAniSection());
    m_nBackType = static_cast<DWORD>(pInfo->GetBackShowMode());
    if (m_nBackType == QZ_BACK_FILE)
        LoadBackFile(pInfo->GetExtraValue("BackFile"));
    if (pInfo->TestFlag(WNDINFO_FLAG_REGION))
        LoadRegion(pInfo);
    if (pInfo->TestFlag(WNDINFO_FLAG_CURSOR) && pInfo->GetCursor())
        m_strCursor = pInfo->GetCursor();
    SetPicOffset(static_cast<int>(pInfo->GetOffsetX()), static_cast<int>(pInfo->GetOffsetY()));
    ApplyExtras(pInfo);
}

void CQzBaseWindow::ApplyExtras(IQzGuiWndInfo* pInfo)
{
    m_rcAniOffset = {0, 0, 0, 0};
    ParseAniOffset(pInfo->GetExtraValue("AniOffset"), m_rcAniOffset);
    m_bDisable = IntegerValue(pInfo->GetExtraValue("IsDisable"));
    ForgetLook();
}

void CQzBaseWindow::LoadBackFile(const char* pszFile)
{
    if (!pszFile)
        return;
    if (m_pBackBitmap)
        m_pBackBitmap->Release();
    m_pBackBitmap = MyBitmapCreate(pszFile);
    m_strBackFile = pszFile;
    ForgetLook();
}

// The region table's region for the record's identifiers; the window owns what it gets.
void CQzBaseWindow::LoadRegion(IQzGuiWndInfo* pInfo)
{
    CQzGuiMgr* pMgr = GetMgr();
    CQzGuiInfoMgr* pInfoMgr = pMgr ? pMgr->GetInfoMgr() : nullptr;
    if (!pInfoMgr)
        return;
    const HRGN hRgn = pInfoMgr->CreateWndRegion(static_cast<DWORD>(pInfo->GetParentId()),
                                                static_cast<DWORD>(pInfo->GetCtrlId()));
    SetRegion(hRgn);
    m_bOwnRgn = hRgn != nullptr;
}

void CQzBaseWindow::SetInfoVariant(DWORD nVariant)
{
    m_nInfoVariant = nVariant;
    LoadWndInfo();
}

BOOL CQzBaseWindow::GetOriginRect(RECT* pRect) const
{
    if (!pRect)
        return FALSE;
    if (!m_pWndInfo)
    {
        *pRect = {0, 0, 0, 0};
        return FALSE;
    }
    *pRect = m_rcOrigin;
    return TRUE;
}

void CQzBaseWindow::SetAniName(const char* pszName)
{
    SetOwnAniName(pszName);
}

void CQzBaseWindow::SetOwnAniName(const char* pszName)
{
    m_strAniName = pszName ? pszName : "";
    m_aniRef = {};
    ForgetLook();
}

// A section of the control file, kept alive as every look-up does. The window's own section is
// found by name only after a reload or a purge of the data set: windows ask for it every frame.
IDataAni* CQzBaseWindow::AniOf(const char* pszName)
{
    if (!pszName)
        return nullptr;
    QzPlatform::CTableDataSet& dataSet = QzPlatform::CTableDataSet::Instance();
    if (pszName != m_strAniName.c_str())
        return dataSet.GetAni(QzPlatform::kControlAniFile, pszName, 0,
                              QzPlatform::CQzAniStore::kKeepAliveMs, 0);
    return dataSet.GetAni(m_aniRef, QzPlatform::kControlAniFile, pszName,
                          QzPlatform::CQzAniStore::kKeepAliveMs);
}

const char* CQzBaseWindow::GetAniName()
{
    return m_strAniName.c_str();
}

void CQzBaseWindow::SetFrameMode(BOOL bFrameMode)
{
    m_bFrameMode = bFrameMode;
    ForgetLook();
}

void CQzBaseWindow::SetCursorName(const char* pszName)
{
    m_strCursor = pszName ? pszName : "";
}

void CQzBaseWindow::SetFramePicOffset(int x, int y, int nFrame)
{
    m_ptPicOffset = {x, y};
    m_nOffsetFrame = nFrame;
    ForgetLook();
}

void CQzBaseWindow::SetBackBitmap(const char* pszFile)
{
    if (!pszFile)
        return;
    m_nBackType = QZ_BACK_BITMAP;
    ForgetLook();
    LoadBackFile(pszFile);
}

// ---------------------------------------------------------------------------------------------
// Geometry

// Edges beyond the int range (a parent flown to its end, hostile sizes) stop at it.
void CQzBaseWindow::MoveWindow(RECT* pOutLocal, int x, int y, int nWidth, int nHeight, BOOL)
{
    m_rcLocal = {x, y, QzPlatform::ClampToInt(int64_t(x) + nWidth),
                 QzPlatform::ClampToInt(int64_t(y) + nHeight)};
    if (m_pParent)
    {
        x = QzPlatform::ClampToInt(int64_t(x) + m_pParent->m_rcWindow.left);
        y = QzPlatform::ClampToInt(int64_t(y) + m_pParent->m_rcWindow.top);
    }
    PlaceAbsolute(x, y, nWidth, nHeight);
    if (pOutLocal)
        *pOutLocal = m_rcLocal;
}

// Stores the absolute rectangle, then tells the window what changed: size first, then place.
void CQzBaseWindow::PlaceAbsolute(int x, int y, int nWidth, int nHeight)
{
    const bool bSized = nWidth != GetWidth() || nHeight != GetHeight();
    const bool bMoved = x != m_rcWindow.left || y != m_rcWindow.top;
    m_rcWindow = {x, y, QzPlatform::ClampToInt(int64_t(x) + nWidth),
                  QzPlatform::ClampToInt(int64_t(y) + nHeight)};
    ForgetLook();
    if (bSized)
        SendMessage(WM_SIZE, static_cast<WPARAM>(nWidth), static_cast<LPARAM>(nHeight));
    if (bMoved)
        SendMessage(WM_MOVE, static_cast<WPARAM>(x), static_cast<LPARAM>(y));
}

void CQzBaseWindow::MoveWindow(const RECT& rect, BOOL bRepaint)
{
    if (rect.left > rect.right)
        QzPlatform::ReportAssert("rect.left <= rect.right", kSource, kLineRectRef);
    MoveWindow(nullptr, rect.left, rect.top, QzPlatform::SubClamped(rect.right, rect.left),
               QzPlatform::SubClamped(rect.bottom, rect.top), bRepaint);
}

const RECT& CQzBaseWindow::MoveWindow(const RECT* pRect, BOOL bRepaint)
{
    if (!pRect)
        return m_rcWindow;
    if (pRect->left > pRect->right)
        QzPlatform::ReportAssert("lpRect->left <= lpRect->right", kSource, kLineRectPtr);
    MoveWindow(nullptr, pRect->left, pRect->top, QzPlatform::SubClamped(pRect->right, pRect->left),
               QzPlatform::SubClamped(pRect->bottom, pRect->top), bRepaint);
    return m_rcWindow;
}

void CQzBaseWindow::MoveWindow(const RECT* pRect)
{
    MoveWindow(pRect, TRUE);
}

void CQzBaseWindow::SetPos(int x, int y)
{
    MoveWindow(nullptr, x, y, GetWidth(), GetHeight(), TRUE);
}

void CQzBaseWindow::ResetPosition()
{
    MoveWindow(nullptr, m_rcOrigin.left, m_rcOrigin.top, m_rcOrigin.right - m_rcOrigin.left,
               m_rcOrigin.bottom - m_rcOrigin.top, TRUE);
}

// Centres horizontally (mode 0), vertically (1) or both (2) in the parent, or on the screen
// for a window without parent; the size is the window's or that of its section's first frame.
void CQzBaseWindow::CenterWindow(int nMode, bool bUseAniSize)
{
    CQzGuiMgr* pMgr = GetMgr();
    if (!pMgr)
        return;
    int nWidth = GetWidth();
    int nHeight = GetHeight();
    if (bUseAniSize && !m_strAniName.empty())
    {
        QzPlatform::CAniHandle handle;
        QzPlatform::GetAniStore()->LoadAni(handle, QzPlatform::kControlAniFile,
                                           m_strAniName.c_str());
        handle.GetFrameSize(0, nWidth, nHeight);
    }
    RECT rcArea = {0, 0, pMgr->GetScreenWidth(), pMgr->GetScreenHeight()};
    if (m_pParent)
        rcArea = m_pParent->m_rcWindow;
    const int nAreaWidth = QzPlatform::SubClamped(rcArea.right, rcArea.left);
    const int nAreaHeight = QzPlatform::SubClamped(rcArea.bottom, rcArea.top);
    if (nMode == 0 || nMode == 2)
        SetPos(nAreaWidth / 2 - nWidth / 2, QzPlatform::SubClamped(m_rcWindow.top, rcArea.top));
    if (nMode == 1 || nMode == 2)
        SetPos(QzPlatform::SubClamped(m_rcWindow.left, rcArea.left), nAreaHeight / 2 - nHeight / 2);
}

// ---------------------------------------------------------------------------------------------
// Coordinates: host window pixels <-> logical screen <-> this window

void CQzBaseWindow::ScreenToClient(POINT* pPoint)
{
    CQzGuiMgr* pMgr = RequireMgr();
    if (!pMgr || !pPoint)
        return;
    const POINT ptOrigin = pMgr->GetClientOrigin();
    OffsetPoint(*pPoint, -int64_t(ptOrigin.x), -int64_t(ptOrigin.y));
    QzPlatform::GetScreenAdapter().ConvertPoint(*pPoint, QzPlatform::CQzScreenAdapter::kToLogical);
    OffsetPoint(*pPoint, -int64_t(m_rcWindow.left), -int64_t(m_rcWindow.top));
}

void CQzBaseWindow::ScreenToClient(RECT* pRect)
{
    CQzGuiMgr* pMgr = RequireMgr();
    if (!pMgr || !pRect)
        return;
    const POINT ptOrigin = pMgr->GetClientOrigin();
    OffsetRect(*pRect, -int64_t(ptOrigin.x), -int64_t(ptOrigin.y));
    QzPlatform::GetScreenAdapter().ConvertRect(*pRect, QzPlatform::CQzScreenAdapter::kToLogical);
    OffsetRect(*pRect, -int64_t(m_rcWindow.left), -int64_t(m_rcWindow.top));
}

void CQzBaseWindow::ClientToScreen(POINT* pPoint)
{
    CQzGuiMgr* pMgr = RequireMgr();
    if (!pMgr || !pPoint)
        return;
    OffsetPoint(*pPoint, m_rcWindow.left, m_rcWindow.top);
    QzPlatform::GetScreenAdapter().ConvertPoint(*pPoint, QzPlatform::CQzScreenAdapter::kToScreen);
    const POINT ptOrigin = pMgr->GetClientOrigin();
    OffsetPoint(*pPoint, ptOrigin.x, ptOrigin.y);
}

void CQzBaseWindow::ClientToScreen(RECT* pRect)
{
    CQzGuiMgr* pMgr = RequireMgr();
    if (!pMgr || !pRect)
        return;
    OffsetRect(*pRect, m_rcWindow.left, m_rcWindow.top);
    QzPlatform::GetScreenAdapter().ConvertRect(*pRect, QzPlatform::CQzScreenAdapter::kToScreen);
    const POINT ptOrigin = pMgr->GetClientOrigin();
    OffsetRect(*pRect, ptOrigin.x, ptOrigin.y);
}

RECT CQzBaseWindow::GetScreenRect()
{
    CQzGuiMgr* pMgr = GetMgr();
    if (!pMgr)
        return {0, 0, 0, 0};
    RECT rc = m_rcWindow;
    QzPlatform::GetScreenAdapter().ConvertRect(rc, QzPlatform::CQzScreenAdapter::kToScreen);
    const POINT ptOrigin = pMgr->GetClientOrigin();
    OffsetRect(rc, ptOrigin.x, ptOrigin.y);
    return rc;
}

void CQzBaseWindow::GetScreenRect(RECT* pRect)
{
    if (pRect)
        *pRect = GetScreenRect();
}

// ---------------------------------------------------------------------------------------------
// Visibility, enablement and the mouse capture

void CQzBaseWindow::ShowWindow(int nCmdShow)
{
    if (nCmdShow == SW_SHOW)
    {
        if (!OnShowing(nCmdShow) || m_bVisible)
            return;
        m_bVisible = true;
        SendMessage(WM_SHOWWINDOW, 1, 0);
        return;
    }
    if (!OnHiding(nCmdShow) || !m_bVisible)
        return;
    SendMessage(WM_SHOWWINDOW, 0, 0);
    m_bVisible = false;
    ReleaseCaptureIfHeld();
    ReleaseKeyFocusIfHeld();
}

BOOL CQzBaseWindow::EnableWindow(BOOL bEnable)
{
    const BOOL bNew = bEnable ? 1 : 0;
    if (m_bEnable == bNew)
        return m_bEnable;
    m_bEnable = bNew;
    ForgetLook();
    if (!bNew)
    {
        ReleaseCaptureIfHeld();
        ReleaseKeyFocusIfHeld();
    }
    return m_bEnable;
}

void CQzBaseWindow::SetCapture()
{
    if (CQzGuiMgr* pMgr = RequireMgr())
        pMgr->SetCapture(this);
}

void CQzBaseWindow::ReleaseCapture()
{
    if (CQzGuiMgr* pMgr = RequireMgr(); pMgr && pMgr->IsCapture(this))
        pMgr->ReleaseCapture();
}

bool CQzBaseWindow::IsCapture()
{
    CQzGuiMgr* pMgr = RequireMgr();
    return pMgr && pMgr->IsCapture(this);
}

// For the paths that run without a manager as well: nothing to release then.
void CQzBaseWindow::ReleaseCaptureIfHeld()
{
    CQzGuiMgr* pMgr = GetMgr();
    if (pMgr && pMgr->IsCapture(this))
        pMgr->ReleaseCapture();
}

void CQzBaseWindow::ReleaseKeyFocusIfHeld()
{
    if (CQzGuiMgr* pMgr = GetMgr())
        pMgr->DropKeyFocusIn(this);
}

// ---------------------------------------------------------------------------------------------
// Hit testing and the mouse

BOOL CQzBaseWindow::PtInWindow(int x, int y)
{
    if (m_hRgn)
        return ::PtInRegion(m_hRgn, x, y) ? TRUE : FALSE;
    if (m_pWndInfo && m_pWndInfo->IsTestRgn())
        return HitMask(x, y);
    return InRect(m_rcWindow, x, y) ? TRUE : FALSE;
}

// The section "<name>_MSK" holds one mask frame per look state; opaque pixels hit.
BOOL CQzBaseWindow::HitMask(int x, int y)
{
    if (!InRect(m_rcWindow, x, y))
        return FALSE;
    const int64_t nLocalX = int64_t(x) - m_rcWindow.left - m_ptPicOffset.x;
    const int64_t nLocalY = int64_t(y) - m_rcWindow.top - m_ptPicOffset.y;
    if (nLocalX < 0 || nLocalY < 0)
        return FALSE;
    char szName[1024];
    std::snprintf(szName, sizeof(szName), "%s_MSK", m_strAniName.c_str());
    IDataAni* pAni = TableDataSetQuery()->GetAni(QzPlatform::kControlAniFile, szName, 1,
                                                 QzPlatform::CQzAniStore::kKeepAliveMs, 0);
    const int nCount = pAni ? pAni->GetFrameCount() : 0;
    if (nCount <= 0)
        return FALSE;
    IDataFrame* pFrame = pAni->GetFrame(m_wState % nCount);
    if (!pFrame || pFrame->GetKind() != kMaskKind)
        return FALSE;
    return pFrame->IsTransparentAt(nLocalX, nLocalY) ? FALSE : TRUE;
}

BOOL CQzBaseWindow::IsMouseOver()
{
    POINT pt = {0, 0};
    if (!GetCursorPos(&pt))
        return FALSE;
    return PtInWindow(pt.x, pt.y);
}

// The manager's last mouse position, in the host window's client coordinates.
BOOL CQzBaseWindow::GetCursorPos(POINT* pPoint)
{
    IQzGuiMgr* pMgr = GetGuiMgr();
    if (!pMgr || !pPoint)
        return FALSE;
    pMgr->GetMousePos(pPoint);
    return TRUE;
}

// Once a frame while the mouse is in: notices that it left, and in debug mode marks the
// window as the one under inspection.
BOOL CQzBaseWindow::CheckMouseLeave()
{
    if (!m_bMouseIn)
        return 0;
    if (!IsMouseOver())
    {
        OnMouseLeave();
        m_bMouseIn = false;
        ForgetLook();
    }
    if (IsDebugDraw())
    {
        CMyBitmap::ShowRect(m_rcWindow.left, m_rcWindow.top, m_rcWindow.right, m_rcWindow.bottom,
                            kDebugOutline);
        if (CQzGuiHelper* pHelper = CQzGuiHelper::Instance())
            pHelper->SetDebugTarget(m_pQzGuiMgr, this);
    }
    return 1;
}

void CQzBaseWindow::SetRegion(HRGN hRgn)
{
    ReleaseOwnedRegion();
    m_hRgn = hRgn;
}

void CQzBaseWindow::ReleaseOwnedRegion()
{
    if (m_bOwnRgn && m_hRgn)
        ::DeleteObject(m_hRgn);
    m_bOwnRgn = false;
    m_hRgn = nullptr;
}

bool CQzBaseWindow::IsDebugDraw() const
{
    return m_pQzGuiMgr && m_pQzGuiMgr->GetDebugMode() != 0;
}

bool CQzBaseWindow::AddBackLook(CQzLookHash& hash) const
{
    if (m_pBackBitmap || m_nBackType == QZ_BACK_GROUP || m_pBackEffect)
        return false;
    hash.Add(m_rcWindow);
    hash.Add(m_strAniName);
    hash.Add(m_ptPicOffset);
    hash.Add(m_ptPicOffset2);
    hash.Add(m_rcAniOffset);
    hash.Add(uint64_t(uint32_t(m_nOffsetFrame)));
    hash.Add(uint64_t(m_wState) | uint64_t(m_byAlpha) << 16 | uint64_t(m_bShowBack) << 24 |
             uint64_t(m_bFrameMode != 0) << 25 | uint64_t(m_nBackType) << 32);
    return true;
}

// ---------------------------------------------------------------------------------------------
// Cursor

CQzCursorMgr* CQzBaseWindow::GetCursorMgr() const
{
    return m_pQzGuiMgr ? m_pQzGuiMgr->GetCursorMgr() : nullptr;
}

void CQzBaseWindow::OnMouseEnter()
{
    CQzCursorMgr* pCursorMgr = GetCursorMgr();
    if (!pCursorMgr || !m_pQzGuiMgr->FindCursor("Normal"))
        return;
    pCursorMgr->SetCursorByName(nullptr);
}

LRESULT CQzBaseWindow::WindowProc(UINT message, WPARAM, LPARAM)
{
    if (message != WM_SETCURSOR || m_strCursor.empty())
        return 0;
    CQzCursorMgr* pCursorMgr = GetCursorMgr();
    if (!pCursorMgr)
        return 0;
    pCursorMgr->SetCursorByName(m_strCursor.c_str());
    return 0;
}

// ---------------------------------------------------------------------------------------------
// Messages and the base behaviour of the virtual operations

LRESULT CQzBaseWindow::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    WindowProc(message, wParam, lParam);
    return 0;
}

// ---------------------------------------------------------------------------------------------
// Software timers, polled once a frame against the millisecond clock

DWORD CQzBaseWindow::SetTimer(DWORD nId, DWORD nElapse, const void* pData)
{
    KillTimer(nId);
    QzTimerEntry entry = {nId, nElapse, QzPlatform::NowMs(), {}};
    if (pData)
        std::memcpy(entry.data, pData, sizeof(entry.data));
    m_lstTimer.push_back(entry);
    ForgetLook();
    return nId;
}

BOOL CQzBaseWindow::KillTimer(DWORD nId)
{
    const auto it = std::find_if(m_lstTimer.begin(), m_lstTimer.end(),
                                 [nId](const QzTimerEntry& entry) { return entry.nId == nId; });
    if (it == m_lstTimer.end())
        return FALSE;
    m_lstTimer.erase(it);
    ForgetLook();
    return TRUE;
}

BOOL CQzBaseWindow::HasTimer(DWORD nId) const
{
    return std::any_of(m_lstTimer.begin(), m_lstTimer.end(),
                       [nId](const QzTimerEntry& entry) { return entry.nId == nId; });
}

// Each due timer fires once. A handler may set or kill timers, so the entries are visited by
// id and looked up again before each delivery. The difference is unsigned, so the clock's wrap
// after 49 days delays nothing.
void CQzBaseWindow::ProcessTimers()
{
    if (m_lstTimer.empty())
        return;
    const DWORD dwNow = QzPlatform::NowMs();
    std::vector<DWORD> vecIds;
    for (const QzTimerEntry& entry : m_lstTimer)
        vecIds.push_back(entry.nId);
    for (DWORD nId : vecIds)
    {
        const auto it = std::find_if(m_lstTimer.begin(), m_lstTimer.end(),
                                     [nId](const QzTimerEntry& entry) { return entry.nId == nId; });
        if (it == m_lstTimer.end() || dwNow - it->dwLast < it->nElapse)
            continue;
        it->dwLast = dwNow;
        SendMessage(WM_TIMER, nId, 0);
        if (m_lstTimer.empty())
            return;
    }
}

// ---------------------------------------------------------------------------------------------
// The host's flag: one bit at position 0

void CQzBaseWindow::SetUserFlag(size_t nPos)
{
    CheckFlagPosition(nPos);
    m_bUserFlag = true;
}

void CQzBaseWindow::ResetUserFlag(size_t nPos)
{
    CheckFlagPosition(nPos);
    m_bUserFlag = false;
}

bool CQzBaseWindow::TestUserFlag(size_t nPos) const
{
    CheckFlagPosition(nPos);
    return m_bUserFlag;
}

// ---------------------------------------------------------------------------------------------
// 3D effect layers

void CQzBaseWindow::LoadFrontEffect(const char* pszName, bool bPlay, bool bFit)
{
    if (!pszName || !*pszName)
        return;
    if (!m_pFrontEffect)
        m_pFrontEffect = new CGui3DEffect;
    ForgetLook();
    LoadEffect(m_pFrontEffect, pszName, bPlay, bFit);
}

void CQzBaseWindow::LoadBackEffect(const char* pszName, bool bPlay, bool bFit)
{
    if (!pszName || !*pszName)
        return;
    if (!m_pBackEffect)
        m_pBackEffect = new CGui3DEffect;
    ForgetLook();
    LoadEffect(m_pBackEffect, pszName, bPlay, bFit);
}

void CQzBaseWindow::PlayBackEffect(const char* pszName)
{
    if (m_pBackEffect)
        PlayEffect(m_pBackEffect, pszName);
}

void CQzBaseWindow::PlayFrontEffect(const char* pszName)
{
    if (m_pFrontEffect)
        PlayEffect(m_pFrontEffect, pszName);
}

BOOL CQzBaseWindow::HasFrontEffect(const char* pszName)
{
    return m_pFrontEffect && m_pFrontEffect->HasPart(pszName, kEffectPartFlag, 0) ? TRUE : FALSE;
}

BOOL CQzBaseWindow::HasBackEffect(const char* pszName)
{
    return m_pBackEffect && m_pBackEffect->HasPart(pszName, kEffectPartFlag, 0) ? TRUE : FALSE;
}

void CQzBaseWindow::DrawFrontEffect()
{
    if (m_pWndInfo && m_pFrontEffect)
        DrawEffect(m_pFrontEffect, m_rcWindow.left, m_rcWindow.top);
}

void CQzBaseWindow::DrawFrontEffectAt(int x, int y, int)
{
    DrawEffect(m_pFrontEffect, x, y);
}

void CQzBaseWindow::DrawBackEffect()
{
    if (m_pWndInfo && m_pBackEffect)
        DrawEffect(m_pBackEffect, m_rcWindow.left, m_rcWindow.top);
}

void CQzBaseWindow::DrawBackEffectAt(int x, int y, int)
{
    DrawEffect(m_pBackEffect, x, y);
}

void CQzBaseWindow::UpdateEffects()
{
    if (m_pBackEffect)
        m_pBackEffect->Update();
    if (m_pFrontEffect)
        m_pFrontEffect->Update();
}

void CQzBaseWindow::DrawEffect(CGui3DEffect* pEffect, int x, int y)
{
    if (!pEffect)
        return;
    IQzGuiMgr* pMgr = GetGuiMgr();
    if (!pMgr)
        return;
    int nX = x;
    int nY = y;
    pMgr->TransformPoint(x, y, &nX, &nY);
    pEffect->Draw(nX, nY, -1);
}

// Fits the effect to the window's screen rectangle first when asked, adds the part unless
// the holder has it, and starts every part when asked.
void CQzBaseWindow::LoadEffect(CGui3DEffect* pEffect, const char* pszName, bool bPlay, bool bFit)
{
    if (!pEffect || !pszName)
        return;
    if (bFit)
        pEffect->SetRect(GetScreenRect());
    if (!pEffect->HasPart(pszName, kEffectPartFlag, 0))
        pEffect->AddEffect(pszName, kEffectPartFlag, bFit);
    if (bPlay)
        pEffect->PlayPart(-1);
}

// A held effect restarts; any other name, and no name (every part), is started through the
// effect object, which adds a section it does not hold yet.
void CQzBaseWindow::PlayEffect(CGui3DEffect* pEffect, const char* pszName)
{
    if (!pEffect)
        return;
    if (pszName && pEffect->HasPart(pszName, kEffectPartFlag, 0))
        pEffect->Play(pszName);
    else
        pEffect->StartEffect(pszName, kEffectPartFlag, 0);
}

// ---------------------------------------------------------------------------------------------
// Background

void CQzBaseWindow::DrawBack()
{
    if (!m_bShowBack)
        return;
    if (m_bFrameMode || m_nBackType == QZ_BACK_NONE)
    {
        // The red outline of CheckMouseLeave replaces the type colour under the debug mouse.
        CQzBackDrawer::DrawOutline(m_rcWindow, GetWndType(), !(m_bMouseIn && IsDebugDraw()));
        return;
    }
    DrawTextured();
}

void CQzBaseWindow::DrawTextured()
{
    // Touched every frame, as the data set wants it; the frame count is taken before drawing,
    // which may look up other sections.
    IDataAni* pAni = AniOf(m_strAniName.c_str());
    const int nFrameCount = pAni ? pAni->GetFrameCount() : 0;
    const CQzBackDrawer drawer({m_rcWindow, m_ptPicOffset, m_ptPicOffset2, m_nOffsetFrame,
                                m_rcAniOffset, m_wState, m_byAlpha});
    POINT ptDrawn = {0, 0};
    if (DrawBackImage(drawer, pAni, ptDrawn))
        drawer.Report(ptDrawn, m_strAniName.c_str(), nFrameCount);
}

// The group, the bitmap (type 7, or type 5 given a "BackFile") or the section's frame; false
// when there was nothing to draw.
bool CQzBaseWindow::DrawBackImage(const CQzBackDrawer& drawer, IDataAni* pAni, POINT& ptDrawn)
{
    if (m_nBackType == QZ_BACK_GROUP)
    {
        ptDrawn = {QzPlatform::AddClamped(m_rcWindow.left, m_ptPicOffset.x),
                   QzPlatform::AddClamped(m_rcWindow.top, m_ptPicOffset.y)};
        DrawAniGroup(m_strAniName.c_str(), ptDrawn.x, ptDrawn.y);
        return true;
    }
    const bool bBitmapType = m_nBackType == QZ_BACK_BITMAP || m_nBackType == QZ_BACK_FILE;
    if (bBitmapType && m_pBackBitmap)
    {
        ptDrawn = drawer.DrawBitmap(m_pBackBitmap);
        return true;
    }
    if (m_nBackType == QZ_BACK_BITMAP || !pAni || pAni->GetFrameCount() <= 0)
        return false;
    ptDrawn = drawer.DrawSection(pAni, m_nBackType);
    return true;
}

void CQzBaseWindow::DrawAniGroup(const char* pszGroup, int x, int y)
{
    if (!pszGroup)
        return;
    CQzGuiMgr* pMgr = GetMgr();
    CQzGuiInfoMgr* pInfoMgr = pMgr ? pMgr->GetInfoMgr() : nullptr;
    const QzAniGroup* pGroup = pInfoMgr ? pInfoMgr->GetAniGroup(pszGroup) : nullptr;
    if (!pGroup)
        return;
    for (const QzAniGroupPiece& piece : pGroup->pieces)
        CQzBackDrawer::DrawFirstFrame(piece.section.c_str(), QzPlatform::AddClamped(x, piece.left),
                                      QzPlatform::AddClamped(y, piece.top), m_byAlpha);
}

} // namespace QzGui
