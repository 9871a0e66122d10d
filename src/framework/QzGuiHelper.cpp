#include "framework/QzGuiHelper.h"

#include "framework/QzBaseWindow.h"
#include "framework/QzGuiMgr.h"
#include "layout/IQzGuiWndInfo.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzGameData.h"
#include "platform/services/QzTextDraw.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <vector>

namespace QzGui
{

namespace
{

const char* const kSource = "QzGuiHelper";
const char* const kPanelFace = "Tahoma";
constexpr int kTitleSize = 11;
constexpr int kDetailSize = 12;
constexpr int kLineGap = 5;
constexpr DWORD kPanelColour = 0x50000000;
constexpr DWORD kFlashColour = 0x50ff0000;
constexpr DWORD kFrameColour = 0xf0000000;
constexpr DWORD kTextColour = 0xff000000;
constexpr int kReloadAllFlash = 10;
constexpr int kReloadDialogFlash = 5;
constexpr DWORD kHotKeyDialogId = 1024;
// String-table texts of the six detail lines.
constexpr uint32_t kFactTextFirst = 990060;

bool IsCtrlDown()
{
    return GetKeyState(VK_CONTROL) < 0;
}

// Fills a pattern from the string table: each conversion (%d, %i, %u, %s, ...) takes the next
// value as text, "%%" is a percent sign. A pattern never reaches printf, so a text with the
// wrong conversions cannot read what was not passed.
std::string FillPattern(const char* pattern, const std::vector<std::string>& values)
{
    std::string out;
    size_t next = 0;
    for (const char* p = pattern; *p; ++p)
    {
        if (*p != '%')
        {
            out += *p;
            continue;
        }
        if (p[1] == '%')
        {
            out += '%';
            ++p;
            continue;
        }
        // Skip flags, width and length modifiers up to the conversion letter.
        const char* q = p + 1;
        while (*q && !std::isalpha(static_cast<unsigned char>(*q)))
            ++q;
        while (*q == 'l' || *q == 'h')
            ++q;
        if (!*q)
            break;
        if (next < values.size())
            out += values[next++];
        p = q;
    }
    return out;
}

std::string PanelTitle(const char* layoutFile)
{
    std::string title = layoutFile ? layoutFile : "";
    size_t slash = title.find('/');
    if (slash != std::string::npos)
        title.erase(0, slash + 1);
    std::transform(title.begin(), title.end(), title.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return title;
}

int LineHeight()
{
    C3_SIZE cell = {};
    CMyBitmap::GetFontSize(cell);
    return cell.iHeight;
}

std::string Num(long value)
{
    return std::to_string(value);
}

// The detail lines of the panel: record position and size, window position and size, record
// offsets and animation section; the last only when the window has a section.
std::vector<std::string> DetailLines(CQzBaseWindow* pWnd, IQzGuiWndInfo* pInfo)
{
    const QzPlatform::CQzGameData& data = QzPlatform::GetGameData();
    auto text = [&](int index) { return data.GetString(kFactTextFirst + index, kSource, 0); };
    POINT pos = pWnd->GetWndType() == QZ_WND_DIALOG ? pWnd->GetPos() : pWnd->GetLocalPos();
    std::vector<std::string> lines;
    lines.push_back(FillPattern(
        text(0), {Num(static_cast<short>(pInfo->GetX())), Num(static_cast<short>(pInfo->GetY()))}));
    lines.push_back(FillPattern(text(1), {Num(pInfo->GetWidth()), Num(pInfo->GetHeight())}));
    lines.push_back(FillPattern(text(2), {Num(pos.x), Num(pos.y)}));
    lines.push_back(FillPattern(text(3), {Num(pWnd->GetWidth()), Num(pWnd->GetHeight())}));
    lines.push_back(FillPattern(text(4), {Num(pInfo->GetOffsetX()), Num(pInfo->GetOffsetY())}));
    const char* section = pInfo->GetAniSection();
    if (section && *section)
        lines.push_back(FillPattern(text(5), {section}));
    return lines;
}

void DrawPanelText(int x, int y, const std::string& text, int size)
{
    QzPlatform::DrawGameText(x, y, kTextColour, text.c_str(), kPanelFace, size, 0, 0, 0, nullptr);
}

} // namespace

CQzGuiHelper* CQzGuiHelper::s_pInstance = nullptr;

IQzGuiHelper* GetGuiHelper()
{
    return CQzGuiHelper::GetOrCreate();
}

CQzGuiHelper* CQzGuiHelper::GetOrCreate()
{
    if (!s_pInstance)
        s_pInstance = new CQzGuiHelper;
    return s_pInstance;
}

CQzGuiHelper::~CQzGuiHelper()
{
    if (s_pInstance == this)
        s_pInstance = nullptr;
}

void CQzGuiHelper::DebugOn()
{
    for (IQzGuiMgr* pMgr : m_lstMgr)
        pMgr->SetDebugMode(1);
    m_bDebug = true;
}

void CQzGuiHelper::DebugOff()
{
    for (IQzGuiMgr* pMgr : m_lstMgr)
        pMgr->SetDebugMode(0);
    m_bDebug = false;
    m_bPanelDragging = false;
}

void CQzGuiHelper::ReloadAll()
{
    if (m_pTargetMgr)
    {
        m_pTargetMgr->ReloadLayout();
    }
    else
    {
        const std::list<IQzGuiMgr*> managers = m_lstMgr;
        for (IQzGuiMgr* pMgr : managers)
            pMgr->ReloadLayout();
    }
    m_nFlashFrames = kReloadAllFlash;
    QzPlatform::GetAniStore()->Reload();
}

bool CQzGuiHelper::RegisterMgr(IQzGuiMgr* pQzGuiMgr)
{
    if (!pQzGuiMgr)
        return false;
    m_lstMgr.push_back(pQzGuiMgr);
    return true;
}

void CQzGuiHelper::UnregisterMgr(IQzGuiMgr* pQzGuiMgr)
{
    if (!pQzGuiMgr)
    {
        QzPlatform::ReportAssert("pQzGuiMgr != NULL", kSource, 102);
        return;
    }
    auto it = std::find(m_lstMgr.begin(), m_lstMgr.end(), pQzGuiMgr);
    if (it == m_lstMgr.end())
        return;
    m_lstMgr.erase(it);
    if (m_pTargetMgr == pQzGuiMgr)
    {
        m_pTargetMgr = nullptr;
        m_pTargetWnd = nullptr;
    }
    if (m_lstMgr.empty())
        delete this;
}

bool CQzGuiHelper::IsRegistered(const IQzGuiMgr* pQzGuiMgr) const
{
    return std::find(m_lstMgr.begin(), m_lstMgr.end(), pQzGuiMgr) != m_lstMgr.end();
}

void CQzGuiHelper::SetDebugTarget(IQzGuiMgr* pQzGuiMgr, CQzBaseWindow* pWnd)
{
    if (!pQzGuiMgr)
    {
        QzPlatform::ReportAssert("pQzGuiMgr != NULL", kSource, 115);
        return;
    }
    if (!m_bDebug)
        return;
    m_pTargetMgr = pQzGuiMgr;
    m_pTargetWnd = pWnd;
}

void CQzGuiHelper::ForgetWindow(const CQzBaseWindow* pWnd)
{
    if (pWnd && m_pTargetWnd == pWnd)
        m_pTargetWnd = nullptr;
}

void CQzGuiHelper::ReloadTargetDialog(DWORD nDialogId)
{
    if (!m_pTargetMgr)
        return;
    m_pTargetMgr->ReloadDialog(nDialogId);
    m_nFlashFrames = kReloadDialogFlash;
}

BOOL CQzGuiHelper::OnMouseMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    (void)wParam;
    if (!m_bDebug)
        return 0;
    if (message == WM_MBUTTONDOWN)
    {
        if (IsCtrlDown())
        {
            ReloadAll();
            return 1;
        }
        if (m_pTargetMgr && m_pTargetWnd)
        {
            ReloadTargetDialog(m_pTargetWnd->GetRootWindow()->GetId());
            return 1;
        }
    }
    POINT pt = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (!m_bPanelDragging && !PtInRect(&m_rcPanel, pt))
        return 0;
    return OnPanelMouse(message, pt);
}

BOOL CQzGuiHelper::OnPanelMouse(UINT message, POINT pt)
{
    switch (message)
    {
    case WM_MOUSEMOVE:
    {
        if (!m_bPanelDragging)
            return 0;
        LONG width = m_rcPanel.right - m_rcPanel.left;
        LONG height = m_rcPanel.bottom - m_rcPanel.top;
        m_rcPanel.left = pt.x - m_ptDragOffset.x;
        m_rcPanel.top = pt.y - m_ptDragOffset.y;
        m_rcPanel.right = m_rcPanel.left + width;
        m_rcPanel.bottom = m_rcPanel.top + height;
        return 1;
    }
    case WM_LBUTTONDOWN:
        m_bPanelDragging = true;
        m_ptDragOffset = {pt.x - m_rcPanel.left, pt.y - m_rcPanel.top};
        return 1;
    case WM_LBUTTONUP:
        m_bPanelDragging = false;
        return 0;
    case WM_LBUTTONDBLCLK:
        m_bPanelExpanded = !m_bPanelExpanded;
        return 0;
    case WM_RBUTTONDOWN:
        DebugOff();
        return 0;
    default:
        return 0;
    }
}

BOOL CQzGuiHelper::OnKeyMessage(UINT nKey)
{
    if (!m_bDebug || !IsCtrlDown())
        return 0;
    switch (nKey)
    {
    case VK_F1:
        if (m_pTargetMgr && m_pTargetWnd && m_pTargetWnd->GetRootWindow())
            ReloadTargetDialog(kHotKeyDialogId);
        return 1;
    case VK_F2:
        ReloadAll();
        return 1;
    case VK_F3:
        m_bPanelExpanded = !m_bPanelExpanded;
        return 1;
    case VK_F4:
        DebugOff();
        return 1;
    default:
        return 0;
    }
}

const char* CQzGuiHelper::GetTypeLabel(int nType)
{
    switch (nType)
    {
    case QZ_WND_BUTTON:
        return "BUTTON";
    case QZ_WND_EDIT:
        return "EDIT";
    case QZ_WND_IMAGE:
        return "IMAGE";
    case QZ_WND_STATIC:
    case QZ_WND_RECORD_STATIC:
        return "STATIC";
    case QZ_WND_CHECK:
        return "CHECK";
    case QZ_WND_LIST:
        return "LIST";
    case QZ_WND_PROGRESS:
        return "PROGRESS";
    case QZ_WND_GRID:
        return "GRID";
    case QZ_WND_TREE:
        return "TREE";
    case QZ_WND_GRID_SHORTCUT:
        return "GRID_SHORTCUT";
    case QZ_WND_GRID_EX:
        return "GRID_EX";
    default:
        return "";
    }
}

std::string CQzGuiHelper::FormatWindowLabel(CQzBaseWindow* pWnd)
{
    if (!pWnd)
        return std::string();
    char buffer[1024];
    int type = pWnd->GetWndType();
    CQzBaseWindow* pParent = pWnd->GetParent();
    int variant = pWnd->GetWndInfo() ? pWnd->GetWndInfo()->GetVariant() : 0;
    int id = static_cast<int>(pWnd->GetId());
    if (type == QZ_WND_DIALOG && pParent)
    {
        int parentId = static_cast<int>(pParent->GetId());
        if (variant)
            std::snprintf(buffer, sizeof(buffer), "[ %d - %d - %d ] P = %d", 0, id, parentId,
                          variant);
        else
            std::snprintf(buffer, sizeof(buffer), "[ %d - %d ] P = %d", 0, id, parentId);
        return buffer;
    }
    int first = (type != QZ_WND_DIALOG && pParent) ? static_cast<int>(pParent->GetId()) : 0;
    if (variant)
        std::snprintf(buffer, sizeof(buffer), "[ %d - %d - %d ] %s", first, id, variant,
                      GetTypeLabel(type));
    else
        std::snprintf(buffer, sizeof(buffer), "[ %d - %d ] %s", first, id, GetTypeLabel(type));
    return buffer;
}

void CQzGuiHelper::DrawDebugPanel(IQzGuiMgr* pQzGuiMgr)
{
    if (!m_bDebug || !m_pTargetMgr || !m_pTargetWnd || !pQzGuiMgr)
        return;
    auto* pMgr = dynamic_cast<CQzGuiMgr*>(pQzGuiMgr);
    auto* pTargetMgr = dynamic_cast<CQzGuiMgr*>(m_pTargetMgr);
    if (!pMgr || !pTargetMgr || pMgr->GetScreenWidth() != CMyBitmap::GetScreenWidth())
        return;
    IQzGuiWndInfo* pInfo = m_pTargetWnd->GetWndInfo();
    CQzGuiInfoMgr* pInfoMgr = pTargetMgr->FindInfoMgr();
    if (!pInfo || !pInfoMgr)
        return;

    std::vector<std::string> lines = {PanelTitle(pInfoMgr->GetLayoutFileName()),
                                      FormatWindowLabel(m_pTargetWnd)};
    if (m_bPanelExpanded)
    {
        std::vector<std::string> details = DetailLines(m_pTargetWnd, pInfo);
        lines.insert(lines.end(), details.begin(), details.end());
    }
    const int h = LineHeight();
    const int n = static_cast<int>(lines.size());
    m_rcPanel.bottom = m_rcPanel.top + (n + 1) * kLineGap + n * h + 1;

    DWORD colour = kPanelColour;
    if (m_nFlashFrames > 0)
    {
        colour = kFlashColour;
        --m_nFlashFrames;
    }
    const RECT& rc = m_rcPanel;
    CMyBitmap::ShowBlock(rc.left, rc.top, rc.right, rc.bottom, colour);
    CMyBitmap::ShowRect(rc.left, rc.top, rc.right, rc.bottom, kFrameColour);

    const int x = rc.left + kLineGap;
    int y = rc.top + kLineGap;
    DrawPanelText(x, y, lines[0], kTitleSize);
    y += h + kLineGap;
    CMyBitmap::ShowLine(rc.left, y, rc.right, y, kFrameColour);
    y += 3;
    DrawPanelText(x, y, lines[1], kTitleSize);
    for (size_t i = 2; i < lines.size(); ++i)
    {
        y += h + kLineGap;
        DrawPanelText(x, y, lines[i], kDetailSize);
    }
}

} // namespace QzGui
