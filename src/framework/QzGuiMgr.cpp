#include "framework/QzGuiMgr.h"

#include "effects/GuiEffectInfo.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiHelper.h"
#include "layout/QzCursorMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzFile.h"
#include "platform/services/QzGameData.h"
#include "platform/services/QzScreenAdapter.h"
#include "platform/services/QzTextDraw.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditSingle.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace QzGui
{

namespace
{

const char* const kDefaultTipSection = "DialogNorMsg";
const char* const kEffectPlacementFile = "ini\\Gui3DEffect.ini";
constexpr DWORD kTipTextColour = 0xff000000;
constexpr DWORD kFontSizeKey = 10461;
constexpr int kMinFontSize = 12;
constexpr int kMaxFontSize = 18;
constexpr int kFallbackFontSize = 14;
constexpr size_t kMaxTextBytes = 1024;

// The longest prefix of text that holds at most maxBytes bytes and ends on a character
// boundary of the ANSI code page.
std::string CutToBytes(const std::string& text, size_t maxBytes)
{
    if (text.size() <= maxBytes)
        return text;
    size_t end = 0;
    while (end < maxBytes)
    {
        size_t step = CMyBitmap::IsDBCSLeadByte(text.c_str(), static_cast<int>(end)) ? 2 : 1;
        if (end + step > maxBytes)
            break;
        end += step;
    }
    return text.substr(0, end);
}

int TextWidth(const std::string& text)
{
    return CMyBitmap::CalcuTextExtent(text.c_str()).iWidth;
}

// Keeps a box of the given extent on a screen of the given extent: a box reaching past the far
// edge is pulled back to it, a box starting before the near edge starts at 10.
int ClampToScreen(int pos, int extent, int screenExtent)
{
    if (pos + extent > screenExtent)
        return screenExtent - extent;
    if (pos < 0)
        return 10;
    return pos;
}

// Whether the window and every window above it are shown.
bool IsShownInTree(const CQzBaseWindow* pWindow)
{
    for (const CQzBaseWindow* p = pWindow; p; p = p->GetParent())
    {
        if (!p->IsWindowVisible())
            return false;
    }
    return true;
}

// Whether the window lies in the tree under pRoot (pRoot included).
bool IsInTree(CQzBaseWindow* pWindow, const CQzBaseWindow* pRoot)
{
    for (CQzBaseWindow* p = pWindow; p; p = p->GetParent())
    {
        if (p == pRoot)
            return true;
    }
    return false;
}

// Compares a dialog entry with a window by address. A window that is being destroyed is no
// longer a dialog, so the comparison must not convert between the two classes.
bool IsSameObject(const CQzDialog* pDialog, const CQzBaseWindow* pWindow)
{
    return static_cast<const void*>(pDialog) == static_cast<const void*>(pWindow);
}

bool IsSameWindow(const CQzEdit* pEdit, const CQzBaseWindow* pWindow)
{
    return pEdit && static_cast<const void*>(static_cast<const CQzBaseWindow*>(pEdit)) ==
                        static_cast<const void*>(pWindow);
}

} // namespace

IQzGuiMgr* CreateGuiMgr()
{
    auto* pMgr = new (std::nothrow) CQzGuiMgr;
    if (!pMgr)
        return nullptr;
    CQzGuiHelper::GetOrCreate()->RegisterMgr(pMgr);
    return pMgr;
}

CQzGuiMgr::CQzGuiMgr()
{
    CQzEditSingle::AcquireInstance();
}

CQzGuiMgr::~CQzGuiMgr()
{
    // The auto-created windows go first, while everything they may reach still exists.
    m_AutoGuiMgr.DestroyWindows();
    delete m_pCursorMgr;
    m_pCursorMgr = nullptr;
    delete m_pInfoMgr;
    m_pInfoMgr = nullptr;
    CQzEditSingle::ReleaseInstance();
    if (m_hFont)
        DeleteObject(m_hFont);
    // A manager deleted without Release must not stay in the helper's list.
    CQzGuiHelper* pHelper = CQzGuiHelper::Instance();
    if (pHelper && pHelper->IsRegistered(this))
        pHelper->UnregisterMgr(this);
}

BOOL CQzGuiMgr::Init(HINSTANCE hInstance, HWND hWnd, int nDefaultDlgId, const char* pszLayoutFile)
{
    if (!hInstance || !hWnd || nDefaultDlgId == 0 || !g_pQzEditSingle)
        return 0;
    m_hWnd = hWnd;
    m_nDefaultDlgId = nDefaultDlgId;
    m_hInstance = hInstance;
    if (!g_pQzEditSingle->IsCreated())
        g_pQzEditSingle->Create(hInstance, hWnd, this);
    if (!m_pCursorMgr)
    {
        m_pCursorMgr = new CQzCursorMgr;
        m_pCursorMgr->SetGuiMgr(this);
    }
    CQzGuiHelper* pHelper = CQzGuiHelper::Instance();
    if (pHelper && pHelper->IsDebugOn())
        SetDebugMode(1);
    if (pszLayoutFile)
        GetInfoMgr()->ReloadLayout(pszLayoutFile);
    ReloadEffectPlacement();
    m_AutoGuiMgr.Init(this);
    return 1;
}

void CQzGuiMgr::ReloadEffectPlacement()
{
    // The placement file is optional, like Cursor.ini and Rgn.dat: a bundle without 3D effects
    // has none, and that is no error.
    if (!QzPlatform::IsFile(kEffectPlacementFile))
    {
        CGuiEffectInfo::Instance().Clear();
        return;
    }
    CGuiEffectInfo::Instance().Load(kEffectPlacementFile);
}

void CQzGuiMgr::ReloadAllDialogs(int nMode)
{
    const unsigned version = m_nListVersion;
    const std::vector<CQzDialog*> dialogs(m_lstDialog.begin(), m_lstDialog.end());
    for (CQzDialog* pDialog : dialogs)
    {
        if (IsLive(pDialog, version))
            pDialog->ReloadInfo(nMode);
        // The record may have given or taken the topmost attribute (a reload message may have
        // removed the dialog meanwhile).
        if (IsLive(pDialog, version))
            SetTopmost(pDialog, pDialog->IsTopmost());
    }
    RaiseTopmost();
}

void CQzGuiMgr::LoadLayout(const char* pszFile)
{
    if (!pszFile)
        return;
    GetInfoMgr()->LoadLayout(pszFile);
    ReloadEffectPlacement();
    ReloadAllDialogs(1);
    // A reloaded record may have resized the bound edit box.
    if (g_pQzEditSingle)
        g_pQzEditSingle->FitToActiveEdit();
}

void CQzGuiMgr::UnhideDialogs()
{
    m_bHideDialogs = false;
}

void CQzGuiMgr::ReloadLayout()
{
    GetInfoMgr()->ReloadCurrentLayout();
    ReloadEffectPlacement();
    ReloadAllDialogs(0);
}

void CQzGuiMgr::ReloadDialog(DWORD nDialogId)
{
    CQzDialog* pDialog = FindDialog(nDialogId);
    if (!pDialog)
        return;
    GetInfoMgr()->ReloadCurrentLayout();
    ReloadEffectPlacement();
    const unsigned version = m_nListVersion;
    pDialog->ReloadInfo(0);
    if (IsLive(pDialog, version))
        SetTopmost(pDialog, pDialog->IsTopmost());
    RaiseTopmost();
}

int CQzGuiMgr::Release()
{
    if (m_hFont)
    {
        DeleteObject(m_hFont);
        m_hFont = nullptr;
    }
    if (CQzGuiHelper* pHelper = CQzGuiHelper::Instance())
        pHelper->UnregisterMgr(this);
    delete this;
    return 0;
}

void CQzGuiMgr::SetTransformCallback(QzTransformProc pfn)
{
    m_pfnTransform = pfn;
}

void CQzGuiMgr::SetSoundCallback(QzSoundProc pfn)
{
    m_pfnSound = pfn;
}

void CQzGuiMgr::PlaySound(const char* pszName, int, int, int, int, int)
{
    if (m_pfnSound)
        m_pfnSound(pszName, 0, 0, 0, 0, 100);
}

void CQzGuiMgr::SetScreenSize(int nWidth, int nHeight)
{
    m_nScreenWidth = nWidth;
    m_nScreenHeight = nHeight;
}

void CQzGuiMgr::AddTip(int x, int y, int nWidth, const char* pszBackSection,
                       const std::vector<std::string>& lines, int nAlign)
{
    QzTipEntry tip;
    tip.x = x;
    tip.y = y;
    tip.nWidth = nWidth;
    tip.nAlign = nAlign;
    tip.strBackSection = pszBackSection ? pszBackSection : "";
    tip.lines = lines;
    m_vecTip.push_back(std::move(tip));
}

void CQzGuiMgr::ShowTipNow(int x, int y, const char* pszText, DWORD dwLineValue, int nMinWidth,
                           int nHeight, const std::string& strBackSection)
{
    // The line value travels with each line for the host's sake; drawing does not use it.
    (void)dwLineValue;
    if (!pszText)
        return;
    QzTipEntry tip;
    tip.x = x;
    tip.y = y;
    tip.nHeight = nHeight;
    tip.strBackSection = strBackSection;
    const std::string text = pszText;
    size_t start = 0;
    for (;;)
    {
        size_t cut = text.find("\\b", start);
        std::string line = text.substr(start, cut == std::string::npos ? cut : cut - start);
        tip.lines.push_back(CutToBytes(line, kMaxTextBytes));
        if (cut == std::string::npos)
            break;
        start = cut + 2;
    }
    int width = nMinWidth;
    for (const std::string& line : tip.lines)
        width = std::max(width, TextWidth(line));
    tip.nWidth = width;
    DrawTip(tip);
}

void CQzGuiMgr::AddDialog(CQzDialog* pDialog, CQzBaseWindow* pParent, bool bCreateCtrls)
{
    if (!pDialog || IsRegistered(pDialog))
        return;
    m_lstDialog.push_back(pDialog);
    ++m_nListVersion;
    pDialog->SetParent(pParent);
    pDialog->SetValid(true);
    pDialog->SetCreateCtrlsOnCreate(bCreateCtrls);
    pDialog->Create(this);
    if (!IsRegistered(pDialog))
        return;
    if (pDialog->IsTopmost())
        SetTopmost(pDialog, true);
    // A new dialog goes on top, but below the topmost ones, even one that a showing leaves where
    // it is (ClickToTop=0).
    RaiseTopmost();
}

void CQzGuiMgr::RemoveDialog(CQzDialog* pDialog)
{
    if (!pDialog || !IsRegistered(pDialog))
        return;
    pDialog->SetValid(false);
    m_lstDialog.remove(pDialog);
    m_lstTopmost.remove(pDialog);
    ++m_nListVersion;
    if (m_pActiveDialog == pDialog)
        m_pActiveDialog = nullptr;
    // Nothing of a removed dialog keeps the keys, the mouse or the edit shell.
    DropKeyFocusIn(pDialog);
    if (m_pCapture && IsInTree(m_pCapture, pDialog))
        m_pCapture = nullptr;
    CQzEdit* pBound = g_pQzEditSingle ? g_pQzEditSingle->GetActiveEdit() : nullptr;
    if (pBound && IsInTree(pBound, pDialog))
        g_pQzEditSingle->ForgetEdit(pBound);
}

CQzDialog* CQzGuiMgr::FindDialog(DWORD nId)
{
    for (CQzDialog* pDialog : m_lstDialog)
    {
        if (pDialog->GetId() == nId)
            return pDialog;
    }
    return nullptr;
}

CQzDialog* CQzGuiMgr::GetActiveDialog()
{
    if (m_pActiveDialog && m_pActiveDialog->IsVisible())
        return m_pActiveDialog;
    for (auto it = m_lstDialog.rbegin(); it != m_lstDialog.rend(); ++it)
    {
        if ((*it)->IsVisible())
            return *it;
    }
    return nullptr;
}

void CQzGuiMgr::Show()
{
    m_vecTip.clear();

    const unsigned version = m_nListVersion;
    const std::vector<CQzDialog*> dialogs(m_lstDialog.begin(), m_lstDialog.end());
    for (CQzDialog* pDialog : dialogs)
    {
        if (!IsLive(pDialog, version) || !pDialog->IsVisible() || pDialog->IsExtraShow())
            continue;
        pDialog->Draw();
        if (m_pDrawHook && m_nDrawHookId == pDialog->GetId())
            m_pDrawHook->OnApplyShow();
    }

    if (m_hWnd)
    {
        POINT pt = {m_ptMouse.x, m_ptMouse.y};
        CQzDialog* pHover = DialogFromPoint(pt);
        if (pHover && pHover->IsVisible())
        {
            pHover->OnHoverDraw();
            pHover->DrawHover();
        }
    }

    if (!m_bTipsByHost)
    {
        for (const QzTipEntry& tip : m_vecTip)
            DrawTip(tip);
    }

    if (CQzGuiHelper* pHelper = CQzGuiHelper::Instance())
        pHelper->DrawDebugPanel(this);
}

void CQzGuiMgr::ShowExtra()
{
    const unsigned version = m_nListVersion;
    const std::vector<CQzDialog*> dialogs(m_lstDialog.begin(), m_lstDialog.end());
    for (CQzDialog* pDialog : dialogs)
    {
        if (IsLive(pDialog, version) && pDialog->IsVisible() && pDialog->IsExtraShow())
            pDialog->Draw();
    }
}

void CQzGuiMgr::DrawTips()
{
    m_bTipsByHost = true;
    for (const QzTipEntry& tip : m_vecTip)
        DrawTip(tip);
}

void CQzGuiMgr::AutoShowDialog(DWORD nId)
{
    m_AutoGuiMgr.ShowDialog(nId);
}

void CQzGuiMgr::AutoHideDialog(DWORD nId)
{
    m_AutoGuiMgr.HideDialog(nId);
}

void CQzGuiMgr::CloseDialogs(DWORD nEvent)
{
    const unsigned version = m_nListVersion;
    const std::vector<CQzDialog*> dialogs(m_lstDialog.begin(), m_lstDialog.end());
    for (CQzDialog* pDialog : dialogs)
    {
        if (!IsLive(pDialog, version) || !pDialog->IsAutoClose(nEvent))
            continue;
        // A flying dialog hides at once instead of flying out first.
        if (pDialog->GetFlyDir() != 0)
            pDialog->SetNoFlyOut(true);
        pDialog->ShowWindow(SW_HIDE);
    }
}

void CQzGuiMgr::SetDialogsShown(bool bShown)
{
    m_bHideDialogs = !bShown;
}

void CQzGuiMgr::BringToTop(DWORD nDialogId)
{
    if (CQzDialog* pDialog = FindDialog(nDialogId))
        BringToTop(pDialog);
}

void CQzGuiMgr::BringToTop(CQzDialog* pDialog)
{
    auto found = std::find(m_lstDialog.rbegin(), m_lstDialog.rend(), pDialog);
    if (found == m_lstDialog.rend())
        return;
    m_pActiveDialog = pDialog;
    m_lstDialog.splice(m_lstDialog.end(), m_lstDialog, std::prev(found.base()));
    RaiseTopmost();
}

// Topmost dialogs stay above every other, in their registration order.
void CQzGuiMgr::RaiseTopmost()
{
    for (CQzDialog* pTopmost : m_lstTopmost)
    {
        auto it = std::find(m_lstDialog.begin(), m_lstDialog.end(), pTopmost);
        if (it != m_lstDialog.end())
            m_lstDialog.splice(m_lstDialog.end(), m_lstDialog, it);
    }
}

CQzDialog* CQzGuiMgr::DialogFromPoint(POINT pt)
{
    for (auto it = m_lstDialog.rbegin(); it != m_lstDialog.rend(); ++it)
    {
        CQzDialog* pDialog = *it;
        if (pDialog->IsVisible() && PtInRect(&pDialog->GetWindowRect(), pt))
            return pDialog;
    }
    return nullptr;
}

CQzCursorMgr* CQzGuiMgr::GetCursorMgr()
{
    return m_pCursorMgr;
}

void CQzGuiMgr::GetMousePos(POINT* pPoint)
{
    if (pPoint)
        *pPoint = m_ptMouse;
}

const char* CQzGuiMgr::GetHostString(int nIndex)
{
    if (nIndex == 0)
        return m_strHost1.c_str();
    if (nIndex == 1)
        return m_strHost2.c_str();
    return nullptr;
}

void CQzGuiMgr::SetHostStrings(const char* psz1, const char* psz2)
{
    m_strHost1 = psz1 ? psz1 : "";
    m_strHost2 = psz2 ? psz2 : "";
}

const QzCursorEntry* CQzGuiMgr::FindCursor(const char* pszName)
{
    return GetInfoMgr()->GetCursorEntry(pszName);
}

void CQzGuiMgr::SetFrameMode(DWORD nDialogId, BOOL bFrameMode)
{
    if (nDialogId != 0)
    {
        if (CQzDialog* pDialog = FindDialog(nDialogId))
            pDialog->SetFrameMode(bFrameMode);
        return;
    }
    for (CQzDialog* pDialog : m_lstDialog)
        pDialog->SetFrameMode(bFrameMode);
}

void CQzGuiMgr::SplitText(const char* pszText, std::vector<std::string>& lines, int& nMaxLength)
{
    if (!pszText || !*pszText)
        return;
    const std::string text(pszText, strnlen(pszText, kMaxTextBytes));
    lines.clear();
    size_t start = 0;
    for (;;)
    {
        // A backslash-b anywhere in the rest wins over an earlier backslash-n.
        size_t cut = text.find("\\b", start);
        if (cut == std::string::npos)
            cut = text.find("\\n", start);
        if (cut == std::string::npos)
        {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, cut - start));
        start = cut + 2;
    }
    size_t longest = 0;
    for (const std::string& line : lines)
        longest = std::max(longest, line.size());
    nMaxLength = static_cast<int>(longest);
}

void CQzGuiMgr::TransformPoint(int x, int y, int* pOutX, int* pOutY)
{
    if (m_pfnTransform)
    {
        m_pfnTransform(x, y, pOutX, pOutY);
        return;
    }
    if (pOutX)
        *pOutX = x;
    if (pOutY)
        *pOutY = y;
}

bool CQzGuiMgr::IsKeyFocusMessage(UINT message)
{
    switch (message)
    {
    case WM_INPUTLANGCHANGEREQUEST:
    case WM_INPUTLANGCHANGE:
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
        return true;
    default:
        return (message >= WM_IME_STARTCOMPOSITION && message <= WM_IME_COMPOSITION) ||
               (message >= WM_IME_SETCONTEXT && message <= WM_IME_KEYUP);
    }
}

void CQzGuiMgr::DropKeyFocusIn(const CQzBaseWindow* pRoot)
{
    if (m_pKeyFocus && pRoot && IsInTree(m_pKeyFocus, pRoot))
        m_pKeyFocus = nullptr;
}

CQzBaseWindow* CQzGuiMgr::KeyFocusTarget()
{
    if (m_pKeyFocus && (!IsShownInTree(m_pKeyFocus) || !m_pKeyFocus->IsWindowEnabled()))
        m_pKeyFocus = nullptr;
    return m_pKeyFocus;
}

BOOL CQzGuiMgr::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    BOOL helperResult = 0;
    if (CQzGuiHelper* pHelper = CQzGuiHelper::Instance())
    {
        helperResult = pHelper->OnMouseMessage(message, wParam, lParam);
        if (helperResult && message == WM_MOUSEMOVE)
            return 1;
    }
    if (IsKeyFocusMessage(message))
    {
        if (CQzBaseWindow* pFocus = KeyFocusTarget())
            return static_cast<BOOL>(pFocus->SendMessage(message, wParam, lParam));
    }
    if (message < WM_MOUSEFIRST || message > WM_MOUSEWHEEL)
        return helperResult;
    if (RouteMouse(message, wParam, lParam))
        return 1;
    return helperResult;
}

BOOL CQzGuiMgr::RouteMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_MOUSEMOVE)
        m_ptMouse = {LOWORD(lParam), HIWORD(lParam)};
    if (message == WM_MOUSEWHEEL)
    {
        // The wheel comes in screen coordinates; dialogs work in client coordinates.
        POINT origin = GetClientOrigin();
        lParam = MAKELPARAM(GET_X_LPARAM(lParam) - origin.x, GET_Y_LPARAM(lParam) - origin.y);
    }
    if (m_pCapture)
    {
        m_pCapture->SendMessage(message, wParam, lParam);
        return 1;
    }

    const int x = GET_X_LPARAM(lParam);
    const int y = GET_Y_LPARAM(lParam);
    const unsigned version = m_nListVersion;
    const std::vector<CQzDialog*> dialogs(m_lstDialog.rbegin(), m_lstDialog.rend());
    for (CQzDialog* pDialog : dialogs)
    {
        if (!IsLive(pDialog, version) || pDialog->GetParent())
            continue;
        if (!pDialog->PtInWindow(x, y) || !pDialog->IsVisible())
            continue;
        if (message == WM_LBUTTONDOWN && pDialog->IsClickToTop() && !pDialog->IsTrans())
            BringToTop(pDialog);
        if (pDialog->SendMessage(message, wParam, lParam))
            return 1;
    }
    return 0;
}

void CQzGuiMgr::SetDebugMode(int nMode)
{
    m_nDebugMode = nMode;
    if (nMode == 0)
        m_ptDebug = {0, 0};
}

int CQzGuiMgr::GetDebugMode()
{
    return m_nDebugMode;
}

DWORD CQzGuiMgr::GetFocusId()
{
    CQzEdit* pEdit = g_pQzEditSingle ? g_pQzEditSingle->GetActiveEdit() : nullptr;
    return pEdit ? pEdit->GetFullId() : 0;
}

BOOL CQzGuiMgr::GetDebugPos(int* pX, int* pY)
{
    if (!pX || !pY)
        return 0;
    if (m_ptDebug.x == *pX && m_ptDebug.y == *pY)
        return 0;
    *pX = m_ptDebug.x;
    *pY = m_ptDebug.y;
    return 1;
}

IQzGuiWndInfo* CQzGuiMgr::GetWndInfo(DWORD nParentId, DWORD nId)
{
    return GetInfoMgr()->GetWndInfo(nParentId, nId, 0, 0);
}

void CQzGuiMgr::SetDrawHook(IQzGuiApplyShow* pHook, DWORD nDialogId)
{
    if (!pHook)
        return;
    m_pDrawHook = pHook;
    m_nDrawHookId = nDialogId;
    m_pDrawHookWnd = dynamic_cast<CQzBaseWindow*>(pHook);
}

QzGuiMgrExtra* CQzGuiMgr::GetExtra()
{
    return &m_Extra;
}

void CQzGuiMgr::BroadcastEvent(DWORD nCode)
{
    const unsigned version = m_nListVersion;
    std::vector<CQzDialog*> dialogs(m_lstDialog.begin(), m_lstDialog.end());
    // Topmost dialogs are on both lists and are asked twice.
    dialogs.insert(dialogs.end(), m_lstTopmost.begin(), m_lstTopmost.end());
    for (CQzDialog* pDialog : dialogs)
    {
        if (!IsLive(pDialog, version) || !pDialog->IsVisible())
            continue;
        if (pDialog->CanHandleEvent(nCode))
            pDialog->HandleEvent(nCode);
    }
}

bool CQzGuiMgr::IsUnderMouse(CQzBaseWindow* pWindow)
{
    if (!pWindow)
        return false;
    POINT pt = {m_ptMouse.x, m_ptMouse.y};
    CQzDialog* pDialog = DialogFromPoint(pt);
    return pDialog && pDialog->GetFullId() == pWindow->GetFullId();
}

void CQzGuiMgr::SetInfoString(uint64_t nRecordKey, const char* pszText)
{
    GetInfoMgr()->SetInfoString(nRecordKey, pszText);
}

void CQzGuiMgr::NotifyAllDialogs()
{
    const unsigned version = m_nListVersion;
    const std::vector<CQzDialog*> dialogs(m_lstDialog.begin(), m_lstDialog.end());
    for (CQzDialog* pDialog : dialogs)
    {
        if (IsLive(pDialog, version))
            pDialog->OnManagerNotify();
    }
}

void CQzGuiMgr::LoadGuiLogic()
{
    const char* pszFile = nullptr;
    switch (QzPlatform::GetScreenAdapter().GetResolutionIndex())
    {
    case 0:
        pszFile = "guilogic.ini";
        break;
    case 1:
        pszFile = "guilogic_800.ini";
        break;
    case 2:
        pszFile = "guilogic_640.ini";
        break;
    default:
        return;
    }
    GetInfoMgr()->LoadLogicLayout(pszFile);
}

void CQzGuiMgr::PinDialog(CQzDialog* pDialog)
{
    if (pDialog)
        pDialog->SetPushable(false);
}

void CQzGuiMgr::ForgetWindow(CQzBaseWindow* pWindow)
{
    if (!pWindow)
        return;
    if (m_pCapture == pWindow)
        m_pCapture = nullptr;
    DropKeyFocusIn(pWindow);
    // Compared by address: a box being destroyed has let the shell go already.
    if (g_pQzEditSingle && IsSameWindow(g_pQzEditSingle->GetActiveEdit(), pWindow))
        g_pQzEditSingle->ForgetEdit(g_pQzEditSingle->GetActiveEdit());
    if (IsSameObject(m_pActiveDialog, pWindow))
        m_pActiveDialog = nullptr;
    if (m_pDrawHookWnd == pWindow)
    {
        m_pDrawHook = nullptr;
        m_pDrawHookWnd = nullptr;
    }
    auto isWindow = [pWindow](const CQzDialog* pDialog) { return IsSameObject(pDialog, pWindow); };
    size_t before = m_lstDialog.size() + m_lstTopmost.size();
    m_lstDialog.remove_if(isWindow);
    m_lstTopmost.remove_if(isWindow);
    if (m_lstDialog.size() + m_lstTopmost.size() != before)
        ++m_nListVersion;
    if (CQzGuiHelper* pHelper = CQzGuiHelper::Instance())
        pHelper->ForgetWindow(pWindow);
}

void CQzGuiMgr::SetKeyFocus(CQzBaseWindow* pWindow)
{
    m_pKeyFocus = pWindow;
    // The edit shell lets its box go (EN_KILLFOCUS) and the keyboard returns to the host window.
    if (pWindow && g_pQzEditSingle)
        g_pQzEditSingle->GiveKeyboardToHost();
}

CQzGuiInfoMgr* CQzGuiMgr::GetInfoMgr()
{
    if (!m_pInfoMgr)
    {
        m_pInfoMgr = new CQzGuiInfoMgr;
        m_pInfoMgr->Init(this);
    }
    return m_pInfoMgr;
}

POINT CQzGuiMgr::GetClientOrigin() const
{
    RECT rc = {0, 0, 0, 0};
    if (!m_hWnd || !::GetWindowRect(m_hWnd, &rc))
        return {0, 0};
    return {rc.left, rc.top};
}

int CQzGuiMgr::GetScreenWidth() const
{
    return m_nScreenWidth ? m_nScreenWidth : CMyBitmap::GetScreenWidth();
}

int CQzGuiMgr::GetScreenHeight() const
{
    return m_nScreenHeight ? m_nScreenHeight : CMyBitmap::GetScreenHeight();
}

HFONT CQzGuiMgr::GetFont()
{
    if (m_hFont)
        return m_hFont;
    const QzPlatform::CQzScreenAdapter& adapter = QzPlatform::GetScreenAdapter();
    int size = adapter.GetFontSize();
    if (size < 1)
        size = QzPlatform::GetGameData().QueryInt(kFontSizeKey);
    if (size < kMinFontSize || size > kMaxFontSize)
        size = kFallbackFontSize;
    m_strFontFace = adapter.GetFontName();
    if (m_strFontFace.empty())
        m_strFontFace = CMyBitmap::GetDefaultFontName();
    m_hFont = CreateFontA(size, 0, 0, 0, FW_DONTCARE, FALSE, FALSE, FALSE, GB2312_CHARSET, 0, 0,
                          ANTIALIASED_QUALITY, VARIABLE_PITCH, m_strFontFace.c_str());
    return m_hFont;
}

const char* CQzGuiMgr::GetFontFace()
{
    GetFont();
    return m_strFontFace.c_str();
}

bool CQzGuiMgr::IsRegistered(const CQzDialog* pDialog) const
{
    return pDialog &&
           std::find(m_lstDialog.begin(), m_lstDialog.end(), pDialog) != m_lstDialog.end();
}

bool CQzGuiMgr::IsLive(const CQzDialog* pDialog, unsigned nListVersion) const
{
    return nListVersion == m_nListVersion || IsRegistered(pDialog);
}

void CQzGuiMgr::SetTopmost(CQzDialog* pDialog, bool bTopmost)
{
    if (!pDialog)
        return;
    bool bListed =
        std::find(m_lstTopmost.begin(), m_lstTopmost.end(), pDialog) != m_lstTopmost.end();
    if (bTopmost && !bListed && IsRegistered(pDialog))
        m_lstTopmost.push_back(pDialog);
    else if (!bTopmost && bListed)
        m_lstTopmost.remove(pDialog);
    else
        return;
    ++m_nListVersion;
}

void CQzGuiMgr::DrawTipBack(const QzTipEntry& tip, int x, int y, int nBoxWidth, int nBoxHeight)
{
    IDataSet* pDataSet = TableDataSetQuery();
    if (!tip.strBackSection.empty())
    {
        if (IDataAni* pAni =
                pDataSet->GetAni(QzPlatform::kControlAniFile, tip.strBackSection.c_str()))
            pAni->ShowAni(0, x - 5, y - 5);
        return;
    }
    if (IDataAni* pAni = pDataSet->GetAni(QzPlatform::kControlAniFile, kDefaultTipSection))
        pAni->ShowAniEx(0, x, y, nullptr, nBoxWidth, nBoxHeight, 0, 0, 1.0f);
}

void CQzGuiMgr::DrawTip(const QzTipEntry& tip)
{
    C3_SIZE cell = {};
    CMyBitmap::GetFontSize(cell);
    const int h = cell.iHeight;
    const int nLines = static_cast<int>(tip.lines.size());
    const int boxWidth = tip.nWidth + 24;
    const int boxHeight = tip.nHeight ? tip.nHeight : (h + 4) * nLines + 20;
    const int x = ClampToScreen(tip.x, boxWidth, GetScreenWidth());
    const int y = ClampToScreen(tip.y, boxHeight, GetScreenHeight());
    DrawTipBack(tip, x, y, boxWidth, boxHeight);

    int lineY = y + 10;
    for (const std::string& line : tip.lines)
    {
        int lineX = x + 12;
        if (tip.nAlign == 1)
            lineX = x - 12 + (tip.nWidth - TextWidth(line)) / 2;
        else if (tip.nAlign == 2)
            lineX = x - 12 + tip.nWidth - TextWidth(line);
        QzPlatform::DrawGameText(lineX, lineY, kTipTextColour, line.c_str(), nullptr, h, 0, 0, 0,
                                 nullptr);
        lineY += h + 4;
    }
}

} // namespace QzGui
