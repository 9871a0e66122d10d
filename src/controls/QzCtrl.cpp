#include "controls/QzCtrl.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzLookHash.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"

#include "framework/IQzGuiMgr.h"
#include "layout/IQzGuiWndInfo.h"
#include "layout/QzExtraValue.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzClock.h"
#include "platform/services/QzGameData.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzString.h"
#include "platform/services/QzText.h"
#include "platform/services/QzTextDraw.h"
#include "platform/services/QzWidgetKit.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <typeinfo>
#include <vector>

namespace QzGui
{

namespace
{

// The tip appears once the mouse has rested this long on the control.
constexpr DWORD kTipDelayMs = 300;
// Tips split at backslash-b: the text read for splitting, and the longest piece.
constexpr size_t kTipReadBytes = 1024;
constexpr size_t kTipPieceBytes = 1023;
// Pixels between the default placement of a tip and the control's top.
constexpr int kTipGap = 10;

// Caption drawing: shadow on, style 0, black shadow.
constexpr BOOL kTextShadow = 1;
constexpr int kTextStyle = 0;
constexpr DWORD kShadowColor = 0xFF000000;

// Wrapped captions: the measure size, the string-table entry naming the measure face, and the
// source position the look-ups name (first line, the others).
constexpr int kMeasureSize = 14;
constexpr uint32_t kMeasureFaceId = 10049;
constexpr const char* kSource = "QzCtrl";
constexpr int kLineFirstFace = 623;
constexpr int kLineOtherFace = 659;
// The wrapped lines a caption may have, and the longest line (characters).
constexpr size_t kMaxLines = 199;
constexpr int kMaxLineChars = 254;

enum TextFormat : WORD
{
    kAlignLeft = 0,
    kAlignCentre = 1,
    kAlignRight = 2,
};

// The first `nMax` bytes of the text, one byte fewer when the cut would split a two-byte
// character.
std::string CutBytes(const std::string& text, size_t nMax)
{
    if (text.size() <= nMax)
        return text;
    size_t nKeep = nMax;
    if (nKeep > 0 && QzPlatform::IsLeadByteAt(text.c_str(), static_cast<int>(nKeep - 1)))
        --nKeep;
    return text.substr(0, nKeep);
}

// The pieces of a tip text between backslash-b pairs; the last piece is always there.
std::vector<std::string> SplitTip(const std::string& text)
{
    if (text.find("\\b") == std::string::npos)
        return {text};
    const std::string head = CutBytes(text, kTipReadBytes);
    std::vector<std::string> pieces;
    size_t nStart = 0;
    for (size_t nAt = head.find("\\b"); nAt != std::string::npos; nAt = head.find("\\b", nStart))
    {
        pieces.push_back(CutBytes(head.substr(nStart, nAt - nStart), kTipPieceBytes));
        nStart = nAt + 2;
    }
    pieces.push_back(CutBytes(head.substr(nStart), kTipPieceBytes));
    return pieces;
}

bool IsBreakAt(const std::wstring& text, size_t i)
{
    return text[i] == L'\\' && i + 1 < text.size() && text[i + 1] == L'n';
}

void AddLine(std::vector<std::wstring>& lines, std::wstring line)
{
    if (line.size() >= 2 && line.compare(line.size() - 2, 2, L"\r\n") == 0)
        line.resize(line.size() - 2);
    lines.push_back(std::move(line));
}

// Lines of at most nLimit characters: backslash-n breaks (and is dropped); a full line breaks
// after its last space (which stays at the line's end), else after its last character. At
// most kMaxLines lines; the rest of a longer caption is not shown.
std::vector<std::wstring> WrapText(const std::wstring& text, int nLimit)
{
    std::vector<std::wstring> lines;
    const size_t nFull = static_cast<size_t>(nLimit);
    size_t nStart = 0;
    size_t i = 0;
    while (i < text.size() && lines.size() < kMaxLines)
    {
        if (IsBreakAt(text, i))
        {
            AddLine(lines, text.substr(nStart, i - nStart));
            i += 2;
            nStart = i;
            continue;
        }
        ++i;
        if (i - nStart < nFull)
            continue;
        size_t nEnd = i;
        for (size_t j = i; j > nStart; --j)
        {
            if (text[j - 1] == L' ')
            {
                nEnd = j;
                break;
            }
        }
        AddLine(lines, text.substr(nStart, nEnd - nStart));
        nStart = nEnd;
    }
    if (nStart < text.size() && lines.size() < kMaxLines)
        AddLine(lines, text.substr(nStart));
    return lines;
}

// x of a caption line of the given width in a client area of width nWidth.
int AlignedX(WORD wFormat, int nWidth, int nTextWidth)
{
    if (wFormat == kAlignCentre)
        return nWidth / 2 - nTextWidth / 2;
    if (wFormat == kAlignRight)
        return nWidth - nTextWidth;
    return 0;
}

int DefaultCellHeight()
{
    C3_SIZE cell = {0, 0};
    CMyBitmap::GetFontSize(cell);
    return cell.iHeight;
}

} // namespace

CQzCtrl::CQzCtrl() = default;

CQzCtrl::~CQzCtrl() = default;

// ---------------------------------------------------------------------------------------------
// The record

BOOL CQzCtrl::LoadWndInfo()
{
    if (!CQzBaseWindow::LoadWndInfo())
        return 0;
    const IQzGuiWndInfo* pInfo = m_pWndInfo;
    if (!pInfo)
        return 1;
    ForgetLook();
    m_strFont = pInfo->GetFont() ? pInfo->GetFont() : "";
    m_dwTextColor = pInfo->TestFlag(WNDINFO_FLAG_FONTCOLOR) ? pInfo->GetFontColor() : 0xFFFFFFFF;
    if (pInfo->TestFlag(WNDINFO_FLAG_FONTSIZE))
        m_sizeFont = {pInfo->GetFontSize() / 2, pInfo->GetFontSize()};
    else
        CMyBitmap::GetFontSize(m_sizeFont);
    LoadTip();

    int nValue = 0;
    m_nTipAlign = ReadExtraInt(pInfo, "TipAlign", &nValue) ? nValue : 0;
    m_wTextFormat = ReadExtraInt(pInfo, "TextFormat", &nValue) ? static_cast<WORD>(nValue) : 0;
    const QzGuiMgrExtra* pExtra = m_pQzGuiMgr ? m_pQzGuiMgr->GetExtra() : nullptr;
    m_wLineSpace = pExtra ? static_cast<WORD>(pExtra->nValue) : 2;
    m_bMultiLine = 0;
    if (ReadExtraInt(pInfo, "MutiLine", &nValue))
    {
        SetMultiLine(nValue);
        if (ReadExtraInt(pInfo, "TextLineHeight", &nValue))
            m_wLineSpace = static_cast<WORD>(nValue);
    }
    m_nCtrlType = static_cast<int16_t>(pInfo->GetCtrlType());
    return 1;
}

// ---------------------------------------------------------------------------------------------
// Tips

void CQzCtrl::LoadTip()
{
    const IQzGuiWndInfo* pInfo = m_pWndInfo;
    if (!pInfo)
        return;
    if (pInfo->GetTipId() != 0)
    {
        SetTip(TableDataSetQuery()->GetString(static_cast<DWORD>(pInfo->GetTipId())), 0xFFFFFFFF,
               pInfo->GetTipAniSection());
        return;
    }
    SetTip(pInfo->GetTipText(), 0xFFFFFFFF, pInfo->GetTipAniSection());
}

void CQzCtrl::SetTip(const char* pszText, DWORD dwColor, const char* pszSection)
{
    if (!pszText || !*pszText)
    {
        m_lstTip.clear();
        return;
    }
    if (!m_pWndInfo)
        return;
    m_lstTip.clear();
    m_nTipWidth = 0;
    for (std::string& piece : SplitTip(pszText))
    {
        m_nTipWidth = std::max(m_nTipWidth, CMyBitmap::CalcuTextExtent(piece.c_str()).iWidth);
        m_lstTip.push_back({std::move(piece), dwColor});
    }

    const POINT* pOffset = m_pWndInfo->GetTipOffset();
    const LONG nNotGiven = static_cast<LONG>(WNDINFO_NOT_GIVEN);
    if (pOffset->x == nNotGiven && pOffset->y == nNotGiven)
    {
        const int nLines = static_cast<int>(m_lstTip.size());
        m_ptTipOffset = {(GetWidth() - m_nTipWidth) / 2, -(DefaultCellHeight() * nLines + kTipGap)};
    }
    else
    {
        m_ptTipOffset = {pOffset->x == nNotGiven ? 0 : pOffset->x,
                         pOffset->y == nNotGiven ? 0 : pOffset->y};
    }
    m_strTipAni = pszSection ? pszSection : "";
}

// Called every frame for the control under the mouse. The rest starts with the first call
// that finds the mouse in; leaving does not end it, since the dialog calls this only for the
// control under the mouse, so a later hover shows the tip at once.
void CQzCtrl::ShowTip()
{
    if (m_lstTip.empty())
        return;
    if (!m_bMouseIn)
    {
        m_dwHoverTime = 0;
        return;
    }
    const DWORD dwNow = QzPlatform::NowMs();
    if (m_dwHoverTime == 0)
        m_dwHoverTime = dwNow;
    if (dwNow - m_dwHoverTime < kTipDelayMs || !m_pQzGuiMgr)
        return;
    std::vector<std::string> lines;
    for (const QzTipLine& line : m_lstTip)
        lines.push_back(line.strText);
    m_pQzGuiMgr->AddTip(QzPlatform::AddClamped(m_rcWindow.left, m_ptTipOffset.x),
                        QzPlatform::AddClamped(m_rcWindow.top, m_ptTipOffset.y), m_nTipWidth,
                        m_strTipAni.c_str(), lines, m_nTipAlign);
}

// ---------------------------------------------------------------------------------------------
// State

CQzCtrl* CQzCtrl::SetCtrlState(WORD wState)
{
    SetState(wState);
    return this;
}

// Hover gives state 2, unless the control is disabled, checked or pressed; leaving takes it
// back to 0.
WORD CQzCtrl::UpdateState()
{
    if (m_bMouseIn)
    {
        if (m_wState != QZ_STATE_DISABLED && !m_bCheck && m_wState != QZ_STATE_PRESSED)
            SetState(QZ_STATE_HOVER);
    }
    else if (m_wState == QZ_STATE_HOVER && !m_bCheck)
    {
        SetState(QZ_STATE_NORMAL);
    }
    return m_wState;
}

void CQzCtrl::SetCheck(BOOL bCheck)
{
    m_bCheck = bCheck;
    SetState(bCheck ? QZ_STATE_PRESSED : QZ_STATE_NORMAL);
}

BOOL CQzCtrl::EnableWindow(BOOL bEnable)
{
    SetState(!bEnable ? QZ_STATE_DISABLED : m_bCheck ? QZ_STATE_PRESSED : QZ_STATE_NORMAL);
    return CQzBaseWindow::EnableWindow(bEnable);
}

// ---------------------------------------------------------------------------------------------
// Caption

void CQzCtrl::SetFontSize(WORD wWidth, WORD wHeight)
{
    m_sizeFont = {wWidth, wHeight};
    ForgetLook();
}

void CQzCtrl::SetTextOffset(const POINT* pOffset)
{
    if (!pOffset)
        return;
    m_ptTextOffset = *pOffset;
    ForgetLook();
}

void CQzCtrl::SetWindowText(const char* pszText)
{
    if (!pszText)
        return;
    m_strText = pszText;
    ForgetLook();
    if (m_nMaxTextLen > 0)
        m_strText = CutBytes(m_strText, static_cast<size_t>(m_nMaxTextLen));
    if (m_pWndInfo)
        SetTextOffset(m_pWndInfo->GetTextOffset());
}

void CQzCtrl::SetTextRaw(const char* pszText)
{
    const QzPlatform::CQzString text(pszText);
    m_strText = text.c_str();
    ForgetLook();
}

void CQzCtrl::InflateWindow(int n)
{
    if (!m_pWndInfo)
        return;
    const int x = static_cast<int16_t>(m_pWndInfo->GetX());
    const int y = static_cast<int16_t>(m_pWndInfo->GetY());
    MoveWindow(nullptr, x - n, y - n, static_cast<int>(m_pWndInfo->GetWidth()) + 2 * n,
               static_cast<int>(m_pWndInfo->GetHeight()) + 2 * n, TRUE);
}

void CQzCtrl::ShowText()
{
    if (m_strText.empty())
        return;
    if (m_bMultiLine)
        ShowMultiLineText();
    else
        ShowSingleLineText();
}

int CQzCtrl::GetTextLeft()
{
    const int nTextWidth = GetTextLength() * m_sizeFont.iWidth;
    return CaptionAt(int64_t(GetWidth() / 2) - nTextWidth / 2, 0).x;
}

POINT CQzCtrl::CaptionAt(int64_t x, int64_t y) const
{
    return {QzPlatform::ClampToInt(x + m_rcWindow.left + m_ptTextOffset.x),
            QzPlatform::ClampToInt(y + m_rcWindow.top + m_ptTextOffset.y)};
}

// The width is the byte count times the cell width: captions are laid out on the cell, not
// measured.
void CQzCtrl::ShowSingleLineText()
{
    const int nWidth = GetWidth();
    const int nTextWidth = GetTextLength() * m_sizeFont.iWidth;
    const int y = m_wTextFormat == kAlignCentre ? GetHeight() / 2 - m_sizeFont.iHeight / 2 : 0;
    const POINT at = CaptionAt(AlignedX(m_wTextFormat, nWidth, nTextWidth), y);
    DrawCaption(at.x, at.y, m_strText.c_str(), nullptr);
}

// Wraps at an even number of cells that fit the width; lines are measured in the face the
// string table names, and centred lines each by their own width.
void CQzCtrl::ShowMultiLineText()
{
    if (m_sizeFont.iWidth == 0)
        return;
    const int nWidth = GetWidth();
    const int nLimit = std::min(2 * ((nWidth / m_sizeFont.iWidth) / 2), kMaxLineChars);
    if (nLimit <= 0)
        return;
    const std::vector<std::wstring> lines =
        WrapText(QzPlatform::Utf8TextToWide(m_strText.c_str()), nLimit);
    if (lines.empty())
        return;

    QzPlatform::CQzGameData& data = QzPlatform::GetGameData();
    const QzPlatform::CQzWidgetKit& kit = QzPlatform::GetWidgetKit();
    std::vector<int> widths;
    for (const std::wstring& line : lines)
    {
        const int nLine = widths.empty() ? kLineFirstFace : kLineOtherFace;
        const char* pszFace = data.GetString(kMeasureFaceId, kSource, nLine);
        widths.push_back(kit.MeasureWideText(line.c_str(), pszFace, kMeasureSize, 0, 0));
    }

    const int nLines = static_cast<int>(lines.size());
    int y = 0;
    if (m_wTextFormat == kAlignCentre)
        y = GetHeight() / 2 - (m_sizeFont.iHeight + m_wLineSpace) * nLines / 2;
    const POINT at = CaptionAt(AlignedX(m_wTextFormat, nWidth, widths.front()), y);
    m_wTextLines = static_cast<WORD>(nLines);

    const int nStep = m_wLineSpace + DefaultCellHeight();
    for (int i = 0; i < nLines; ++i)
    {
        const int nLineX = m_wTextFormat == kAlignCentre
                               ? CaptionAt(int64_t(nWidth / 2) - widths[i] / 2, 0).x
                               : at.x;
        DrawCaption(nLineX, QzPlatform::ClampToInt(at.y + int64_t(i) * nStep), lines[i].c_str(),
                    nullptr);
    }
}

void CQzCtrl::DrawCaption(int x, int y, const char* pszText, C3_SIZE* pDrawn)
{
    QzPlatform::DrawGameText(x, y, m_dwTextColor, pszText, m_strFont.c_str(), m_sizeFont.iHeight,
                             kTextShadow, kTextStyle, kShadowColor, pDrawn);
}

void CQzCtrl::DrawCaption(int x, int y, const wchar_t* pszText, C3_SIZE* pDrawn)
{
    QzPlatform::DrawGameText(x, y, m_dwTextColor, pszText, m_strFont.c_str(), m_sizeFont.iHeight,
                             kTextShadow, kTextStyle, kShadowColor, pDrawn);
}

// ---------------------------------------------------------------------------------------------
// Drawing

namespace
{

// By identity: each class's type information is one object of this library, and anything else
// (a host's subclass) has no stock look.
bool IsCaptionLook(const std::type_info& type)
{
    return &type == &typeid(CQzButton) || &type == &typeid(CQzStatic) || &type == &typeid(CQzCheck);
}

// Kept for a control whose look has no digest, so that it is not worked out every frame either.
constexpr uint64_t kNoLook = ~uint64_t(0);

bool ChecksKeptLooks()
{
    static const bool bCheck = []
    {
        const char* pszCheck = std::getenv("QZGUI_CHECK_LOOKS");
        return pszCheck && *pszCheck && std::strcmp(pszCheck, "0") != 0;
    }();
    return bCheck;
}

} // namespace

uint64_t CQzCtrl::LookOf(CQzBaseWindow& window, uint32_t nEpoch)
{
    const std::type_info& type = typeid(window);
    if (!IsCaptionLook(type) && &type != &typeid(CQzSlider))
        return 0;
    const uint64_t look = static_cast<CQzCtrl&>(window).KeptLook();
    if (look == kNoLook)
        return 0;
    CQzLookHash hash;
    hash.Add(look);
    hash.Add(nEpoch);
    return hash.Get();
}

uint64_t CQzCtrl::KeptLook()
{
    if (m_nKeptLook == 0)
    {
        const uint64_t look = LookDigestOf(*this);
        m_nKeptLook = look != 0 ? look : kNoLook;
    }
    else if (ChecksKeptLooks())
    {
        CheckKeptLook();
    }
    return m_nKeptLook;
}

void CQzCtrl::CheckKeptLook() const
{
    const uint64_t look = LookDigestOf(*this);
    if ((look != 0 ? look : kNoLook) == m_nKeptLook)
        return;
    std::fprintf(stderr,
                 "QzGui: the look of a %s (control %u) changed and its kept digest did not\n",
                 typeid(*this).name(), static_cast<unsigned>(GetId()));
    std::abort();
}

uint64_t CQzCtrl::LookDigestOf(const CQzBaseWindow& window)
{
    const std::type_info& type = typeid(window);
    if (IsCaptionLook(type))
        return static_cast<const CQzCtrl&>(window).CaptionLook(type);
    if (&type == &typeid(CQzSlider))
        return static_cast<const CQzSlider&>(window).ThumbLook();
    return 0;
}

// Show does nothing but draw without the mouse in, timers and a front effect; the back adds
// its part (AddBackLook), the state its check and enabled flags.
bool CQzCtrl::StartLook(CQzLookHash& hash) const
{
    if (m_bMouseIn || !m_lstTimer.empty() || m_pFrontEffect)
        return false;
    hash.Add(reinterpret_cast<uintptr_t>(&typeid(*this)));
    if (!AddBackLook(hash))
        return false;
    hash.Add(uint64_t(m_bCheck != 0) | uint64_t(IsWindowEnabled() != 0) << 1);
    return true;
}

// UpdateState (the state, the check, the enabled flag, a check box's hover look), the back
// (DrawBack, DrawTextured) and the single-line caption. Multi-line captions read the string
// table: those are drawn every frame.
uint64_t CQzCtrl::CaptionLook(const std::type_info& type) const
{
    CQzLookHash hash;
    if (m_bMultiLine || !StartLook(hash))
        return 0;
    if (&type == &typeid(CQzCheck))
        hash.Add(static_cast<const CQzCheck&>(*this).HasHoverLook());
    hash.Add(m_strText);
    hash.Add(m_strFont);
    hash.Add(uint64_t(m_dwTextColor) << 32 | m_wTextFormat);
    hash.Add(uint64_t(uint32_t(m_sizeFont.iWidth)) << 32 | uint32_t(m_sizeFont.iHeight));
    hash.Add(m_ptTextOffset);
    return hash.Get();
}

BOOL CQzCtrl::Show()
{
    if (!IsWindowVisible())
        return 0;
    CheckMouseLeave();
    UpdateEffects();
    ProcessTimers();
    UpdateState();
    DrawBack();
    OnShowExtra();
    ShowText();
    DrawFrontEffect();
    return 1;
}

// ---------------------------------------------------------------------------------------------
// Messages

LRESULT CQzCtrl::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    QzMsg msg{GetFullId(), message, wParam, lParam};
    if (PreTranslateMessage(&msg))
        return 1;
    return WindowProc(message, wParam, lParam);
}

LRESULT CQzCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const UINT nFlags = static_cast<UINT>(wParam);
    switch (message)
    {
    case WM_KEYDOWN:
        OnKeyDown(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        return 1;
    case WM_TIMER:
        OnTimer(static_cast<DWORD>(wParam));
        return CQzBaseWindow::WindowProc(message, wParam, lParam);
    case WM_MOUSEMOVE:
        if (!m_bMouseIn)
        {
            OnMouseEnter();
            m_bMouseIn = true;
            ForgetLook();
        }
        OnMouseMove(nFlags, point);
        return CQzBaseWindow::WindowProc(message, wParam, lParam);
    case WM_LBUTTONDOWN:
        OnLButtonDown(nFlags, point);
        return 1;
    case WM_LBUTTONUP:
        OnLButtonUp(nFlags, point);
        ReleaseCapture();
        return 1;
    case WM_LBUTTONDBLCLK:
        OnLButtonDblClk(nFlags, point);
        return 1;
    case WM_RBUTTONDOWN:
        OnRButtonDown(nFlags, point);
        return 1;
    case WM_MOUSEWHEEL:
        OnMouseWheel(LOWORD(wParam), GET_WHEEL_DELTA_WPARAM(wParam), point.x, point.y);
        return 1;
    default:
        return CQzBaseWindow::WindowProc(message, wParam, lParam);
    }
}

void CQzCtrl::OnLButtonDown(UINT, POINT)
{
    PlayClickSound();
    if (m_wState != QZ_STATE_DISABLED)
        SetState(QZ_STATE_PRESSED);
}

void CQzCtrl::OnLButtonUp(UINT, POINT)
{
    if (m_wState == QZ_STATE_PRESSED && !m_bCheck)
        SetState(QZ_STATE_NORMAL);
}

void CQzCtrl::PlayClickSound()
{
    if (!m_pWndInfo || !m_pQzGuiMgr)
        return;
    const char* pszSound = m_pWndInfo->GetClickSound();
    if (pszSound && *pszSound)
        m_pQzGuiMgr->PlaySound(pszSound, 0, 100, 1);
}

void CQzCtrl::NotifyParent(WORD nCode)
{
    if (m_pParent)
        m_pParent->SendMessage(WM_COMMAND, MakeNotifyWParam(nCode, m_nId), GetFullId());
}

} // namespace QzGui
