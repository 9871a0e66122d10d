#include "textinput/QzEditEx.h"

#include "platform/services/QzClock.h"

#include "framework/QzGuiMgr.h"
#include "layout/IQzGuiWndInfo.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzEmotionText.h"
#include "platform/services/QzGameData.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"
#include "textinput/QzEditExText.h"
#include "textinput/QzEmotionCode.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

namespace QzGui
{

namespace
{

constexpr const char* kSource = "QzEditEx";

// Control characters with a meaning while Ctrl is held.
constexpr WPARAM kCtrlA = 1;  // select all
constexpr WPARAM kCtrlC = 3;  // copy
constexpr WPARAM kCtrlV = 22; // paste
constexpr WPARAM kCtrlX = 24; // cut

// GMEM_DDESHARE: the flags the copied text is allocated with.
constexpr UINT kClipboardAllocFlags = 0x2000;
// The input method's result string is read up to this many bytes.
constexpr int kImeResultBytes = 255;
// The caret shows for this many milliseconds, then hides as long.
constexpr DWORD kCaretBlinkMs = 300;
constexpr DWORD kCaretColor = 0xFFFFFFFF;
constexpr int kCaretWidth = 2;
// The text sits this far below a line's top.
constexpr int kTextDrop = 2;
// A click left of this size's character width lands before the line's first byte.
constexpr int kClickFontSize = 12;
// Where the composition window sits from the caret.
constexpr int kCompositionOffset = 5;

// Emotion text: the string-table entry naming the face, flag, icon cell and shadow.
constexpr uint32_t kFaceTextId = 10049;
constexpr int kEmotionFlag = 1;
constexpr int kEmotionIconCell = 21;
constexpr DWORD kShadowColor = 0xFF000000;

bool IsKeyDown(int vk)
{
    return (::GetKeyState(vk) & 0x8000) != 0;
}

bool IsDigitChar(char ch)
{
    return ch >= '0' && ch <= '9';
}

bool IsBreakChar(char ch)
{
    return ch == '\r' || ch == '\n';
}

int ClampToInt(int64_t n)
{
    return static_cast<int>(std::clamp<int64_t>(n, INT_MIN, INT_MAX));
}

// A first byte whose second byte is not in the run is not drawn.
void TrimLoneLead(std::string& strRun)
{
    if (CQzEditExText(strRun, 0, false).EndsInLoneLead())
        strRun.pop_back();
}

// A single-line run cut inside a short emotion code loses the cut part: "#" and a digit lose
// the digit, then a lone "#" goes.
void CutIncompleteCode(std::string& strRun)
{
    const size_t n = strRun.size();
    if (n >= 2 && strRun[n - 2] == '#' && IsDigitChar(strRun[n - 1]))
        strRun.pop_back();
    if (!strRun.empty() && strRun.back() == '#')
        strRun.pop_back();
}

} // namespace

CQzEditEx::CQzEditEx() = default;

CQzEditEx::~CQzEditEx() = default;

// ---------------------------------------------------------------------------------------------
// Set-up

void CQzEditEx::PreSetParam(bool bMultiLine, DWORD dwValue, DWORD dwTextColor)
{
    m_bMultiLineEdit = bMultiLine;
    m_bVScroll = bMultiLine;
    m_bHScroll = !bMultiLine;
    m_dwParamValue = dwValue;
    SetTextColor(dwTextColor);
    if (CQzGuiMgr* pMgr = GetMgr())
        m_hMyShellWnd = pMgr->GetHwnd();
    m_bPreSetParam = true;
}

// A box set up before it had a manager takes the manager's main window now, so that its
// clipboard and input method work. The colour given before stays unless the record names one.
BOOL CQzEditEx::OnCreate()
{
    if (!m_bPreSetParam)
        LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", __LINE__, kSource);
    else if (CQzGuiMgr* pMgr = GetMgr(); pMgr && pMgr->GetHwnd())
        m_hMyShellWnd = pMgr->GetHwnd();
    if (!m_pWndInfo || !m_pWndInfo->TestFlag(WNDINFO_FLAG_FONTCOLOR))
        m_dwTextColor = m_dwGivenColor;
    return CQzCtrl::OnCreate();
}

void CQzEditEx::SetTextColor(DWORD dwColor)
{
    m_dwTextColor = dwColor;
    m_dwGivenColor = dwColor;
}

// Margins are kept within the 16-bit coordinates that windows use.
void CQzEditEx::SetMargin(int x, int y)
{
    m_ptMargin = {std::clamp(x, SHRT_MIN, SHRT_MAX), std::clamp(y, SHRT_MIN, SHRT_MAX)};
}

void CQzEditEx::SetMaxText(int nMax)
{
    m_nMaxText = std::max(0, nMax);
}

void CQzEditEx::SetWindowText(const char* pszText)
{
    m_strText.clear();
    m_nCaret = -1;
    m_nSelAnchor = -1;
    if (pszText)
        InsertText(pszText, std::strlen(pszText), true);
    SetCaret(-1);
}

int CQzEditEx::GetText(char* pBuffer, int n)
{
    if (!pBuffer || n <= 0)
        return 0;
    const int nCopy = std::min(n, GetTextLength());
    std::memcpy(pBuffer, m_strText.data(), static_cast<size_t>(nCopy));
    if (nCopy < n)
        pBuffer[nCopy] = '\0';
    return nCopy;
}

void CQzEditEx::SetFocus()
{
    if (CQzGuiMgr* pMgr = RequireMgr())
        pMgr->SetKeyFocus(this);
}

bool CQzEditEx::IsFocused() const
{
    const CQzGuiMgr* pMgr = GetMgr();
    return pMgr && pMgr->GetKeyFocus() == this;
}

bool CQzEditEx::IsEmotionCode(const char* pszText, int nPos, int nLen)
{
    return IsEmotionCodeAt(pszText, nPos, nLen);
}

// ---------------------------------------------------------------------------------------------
// Layout

C3_SIZE CQzEditEx::Cell()
{
    C3_SIZE cell = {0, 0};
    CMyBitmap::GetFontSize(cell);
    return {std::max(1, cell.iWidth), std::max(0, cell.iHeight)};
}

int CQzEditEx::GetColumns() const
{
    const int64_t nAvail =
        static_cast<int64_t>(GetWidth()) - 2 * static_cast<int64_t>(m_ptMargin.x);
    return ClampToInt(nAvail / Cell().iWidth);
}

int CQzEditEx::GetVisibleLines() const
{
    const int64_t nAvail =
        static_cast<int64_t>(GetHeight()) - 2 * static_cast<int64_t>(m_ptMargin.y);
    return ClampToInt(nAvail / LineHeight());
}

CQzEditExText CQzEditEx::Text() const
{
    return CQzEditExText(m_strText, GetColumns(), m_bMultiLineEdit);
}

int CQzEditEx::GetStepLength(int nDirection, int p)
{
    return CQzEditExText(m_strText, 0, false).GetStepLength(nDirection, p);
}

int CQzEditEx::GetLineCount()
{
    return GetLineOfChar(GetTextLength() - 1);
}

int CQzEditEx::GetLineOfChar(int nIndex)
{
    return Text().GetLineOfChar(nIndex);
}

int CQzEditEx::GetLineStart(int nLine)
{
    return Text().GetLineStart(nLine);
}

int CQzEditEx::GetLineLength(int nLine)
{
    return Text().GetLineLength(nLine);
}

int CQzEditEx::GetLineText(int nLine, char* pBuffer, int n)
{
    if (!pBuffer || n <= 0)
        return 0;
    const CQzEditExText text = Text();
    const int nCopy = std::min(n, text.GetLineLength(nLine));
    std::memcpy(pBuffer, m_strText.data() + text.GetLineStart(nLine), static_cast<size_t>(nCopy));
    if (nCopy < n)
        pBuffer[nCopy] = '\0';
    return nCopy;
}

// A single-line box has its caret where it draws it: columns from the first visible byte.
POINT CQzEditEx::GetCaretPos(int i)
{
    const C3_SIZE cell = Cell();
    if (!m_bMultiLineEdit)
    {
        const int nColumn = std::clamp(i, 0, GetTextLength()) - m_nFirstVisibleChar;
        return {m_ptMargin.x + cell.iWidth * nColumn, m_ptMargin.y + kTextDrop};
    }
    const QzEditPlace place = Text().PlaceAfter(i);
    return {m_ptMargin.x + cell.iWidth * place.nColumn,
            m_ptMargin.y + (place.nLine - m_nFirstVisibleLine) * LineHeight()};
}

int CQzEditEx::CharFromPoint(POINT pt)
{
    const int nLength = GetTextLength();
    if (nLength == 0)
        return -1;
    const CQzEditExText text = Text();
    const int nColumn = ClampToInt(
        std::max<int64_t>(0, (static_cast<int64_t>(pt.x) - m_ptMargin.x) / Cell().iWidth));
    int nIndex = 0;
    if (m_bMultiLineEdit)
    {
        const int nLine = LineAtY(text, pt.y);
        nIndex = text.GetLineStart(nLine) + std::min(nColumn, text.GetLineLength(nLine) - 1);
    }
    else
    {
        nIndex = ClampToInt(static_cast<int64_t>(m_nFirstVisibleChar) + nColumn);
    }
    return text.SnapToUnit(std::clamp(nIndex, -1, nLength - 1));
}

// The visible line at y inside the box, within the text's lines.
int CQzEditEx::LineAtY(const CQzEditExText& text, int y) const
{
    const int64_t nLine =
        (static_cast<int64_t>(y) - m_ptMargin.y) / LineHeight() + m_nFirstVisibleLine;
    return static_cast<int>(std::clamp<int64_t>(nLine, 1, text.GetLineCount()));
}

// ---------------------------------------------------------------------------------------------
// Caret, selection and scrolling

void CQzEditEx::ClampSel()
{
    const int nLast = GetTextLength() - 1;
    m_nCaret = std::clamp(m_nCaret, -1, nLast);
    m_nSelAnchor = std::clamp(m_nSelAnchor, -1, nLast);
}

void CQzEditEx::SetSel(int nAnchor, int nCaret)
{
    const int nLast = GetTextLength() - 1;
    if (nAnchor < -1 || nAnchor > nLast || nCaret < -1 || nCaret > nLast)
        return;
    m_nSelAnchor = nAnchor;
    m_nCaret = nCaret;
    UpdateFirstVisibleChar();
    UpdateFirstVisibleLine();
}

void CQzEditEx::GetSel(int* pAnchor, int* pCaret) const
{
    if (pAnchor)
        *pAnchor = m_nSelAnchor;
    if (pCaret)
        *pCaret = m_nCaret;
}

// Keeps the caret within the visible columns; a caret left of them comes back at the right
// edge, stepping by whole units from the start.
void CQzEditEx::UpdateFirstVisibleChar()
{
    if (!m_bHScroll)
        return;
    const int64_t nColumns = GetColumns();
    if (m_nFirstVisibleChar <= m_nCaret && m_nCaret <= m_nFirstVisibleChar + nColumns - 1)
        return;
    if (m_nCaret == -1)
    {
        m_nFirstVisibleChar = 0;
        return;
    }
    const CQzEditExText text(m_strText, 0, false);
    int i = 0;
    int u = std::max(1, text.GetStepLength(1, i - 1));
    while (i + u + nColumns - 1 < m_nCaret)
    {
        i += u;
        u = std::max(1, text.GetStepLength(1, i - 1));
    }
    m_nFirstVisibleChar = i + u;
}

void CQzEditEx::UpdateFirstVisibleLine()
{
    if (!m_bVScroll)
        return;
    if (m_nCaret == -1)
    {
        m_nFirstVisibleLine = 1;
        return;
    }
    const int nLine = GetLineOfChar(m_nCaret);
    const int nVisible = std::max(1, GetVisibleLines());
    if (nLine < m_nFirstVisibleLine)
        m_nFirstVisibleLine = nLine;
    else if (nLine > m_nFirstVisibleLine + nVisible - 1)
        m_nFirstVisibleLine = nLine - nVisible + 1;
}

// ---------------------------------------------------------------------------------------------
// The text model

void CQzEditEx::InsertBytes(const char* pBytes, int n)
{
    m_strText.insert(static_cast<size_t>(m_nCaret + 1), pBytes, static_cast<size_t>(n));
    m_nCaret += n;
    m_nSelAnchor = m_nCaret;
}

void CQzEditEx::EraseBytes(int nFirst, int nCount)
{
    m_strText.erase(static_cast<size_t>(nFirst), static_cast<size_t>(nCount));
}

void CQzEditEx::DeleteSel()
{
    if (!HasSel())
        return;
    const int nLow = SelLow();
    EraseBytes(nLow + 1, SelHigh() - nLow);
    m_nCaret = nLow;
    m_nSelAnchor = nLow;
}

bool CQzEditEx::IsDigitMode() const
{
    return m_nInputMode == QZ_EDITEX_DIGITS || m_nInputMode == QZ_EDITEX_DIGITS_EX;
}

// Room counts the selection as gone, since what is typed replaces it. A box that neither wraps
// nor scrolls also ends where its cells do.
bool CQzEditEx::HasRoomFor(int nBytes) const
{
    const int64_t nKept = static_cast<int64_t>(m_strText.size()) - (SelHigh() - SelLow());
    if (nKept + nBytes > m_nMaxText)
        return false;
    if (m_bVScroll || m_bHScroll)
        return true;
    const int64_t nAvail =
        static_cast<int64_t>(GetWidth()) - 2 * static_cast<int64_t>(m_ptMargin.x);
    return Cell().iWidth * (nKept + nBytes) <= nAvail;
}

// The first byte of a character whose second byte was refused does not stay alone.
void CQzEditEx::RemoveLoneLeadBeforeCaret()
{
    if (HasSel() || !CQzEditExText(m_strText, 0, false).IsLeadByteOnBoundary(m_nCaret))
        return;
    EraseBytes(m_nCaret, 1);
    SetCaret(m_nCaret - 1);
}

// Typing: single-line boxes drop line breaks, digit modes take digits only, Enter stores CR LF
// (a space first when it would open a second empty line), and a lone LF types Enter.
bool CQzEditEx::InsertChar(BYTE ch)
{
    ClampSel();
    if (ch == 0)
        return false;
    if (IsBreakChar(static_cast<char>(ch)) && !m_bMultiLineEdit)
        return true;
    if (IsDigitMode() && !IsDigitChar(static_cast<char>(ch)))
        return false;
    // The caret index once the selection is gone, and the byte there.
    const int nAt = SelLow();
    const char chAt = nAt >= 0 ? m_strText[nAt] : '\0';
    if (ch == '\n' && nAt > 0 && chAt != '\r')
        return InsertChar('\r');
    std::string strBytes;
    if (ch == '\r' && nAt > 0 && chAt == '\n')
        strBytes = " ";
    strBytes += static_cast<char>(ch);
    if (ch == '\r')
        strBytes += '\n';
    if (!HasRoomFor(static_cast<int>(strBytes.size())))
    {
        RemoveLoneLeadBeforeCaret();
        return false;
    }
    DeleteSel();
    InsertBytes(strBytes.data(), static_cast<int>(strBytes.size()));
    SetCaret(m_nCaret);
    return true;
}

// One unit of outside text. Typed text follows the typing rules, except that any line break
// (CR LF, CR, LF) is stored as exactly one CR LF.
CQzEditEx::InsertResult CQzEditEx::InsertUnit(const char* pUnit, int n, bool bAsTyped)
{
    if (bAsTyped && IsBreakChar(pUnit[0]))
    {
        if (!m_bMultiLineEdit)
            return InsertResult::kDone;
        pUnit = "\r\n";
        n = 2;
    }
    if (bAsTyped && IsDigitMode() && !(n == 1 && IsDigitChar(pUnit[0])))
        return InsertResult::kRefused;
    if (!HasRoomFor(n))
        return InsertResult::kFull;
    DeleteSel();
    InsertBytes(pUnit, n);
    return InsertResult::kDone;
}

bool CQzEditEx::InsertText(const char* pszText, size_t nLength, bool bAsTyped)
{
    const int n = static_cast<int>(std::min<size_t>(nLength, INT_MAX));
    InsertResult result = InsertResult::kDone;
    for (int i = 0; i < n;)
    {
        const int nUnit = CQzEditExText::UnitLengthAt(pszText, i, n);
        if (nUnit == 0)
        {
            result = InsertResult::kRefused;
            break;
        }
        result = InsertUnit(pszText + i, nUnit, bAsTyped);
        if (result == InsertResult::kFull)
            break;
        i += nUnit;
    }
    SetCaret(m_nCaret);
    return result == InsertResult::kDone;
}

void CQzEditEx::ReplaceSel(const char* pszText)
{
    ClampSel();
    const int nLow = SelLow();
    DeleteSel();
    if (pszText)
        InsertText(pszText, std::strlen(pszText), false);
    SetCaret(nLow);
}

bool CQzEditEx::InsertEmotion(short n)
{
    if (n < 0 || n > 9999 || IsDigitMode())
        return false;
    char szCode[8] = {};
    if (n < 10)
        QzPlatform::FormatText(szCode, sizeof(szCode), "#0%d", n);
    else if (n < 100)
        QzPlatform::FormatText(szCode, sizeof(szCode), "#%d", n);
    else
        QzPlatform::FormatText(szCode, sizeof(szCode), "#%02d|%02d", n / 100, n % 100);
    const int nCode = static_cast<int>(std::strlen(szCode));
    if (GetTextLength() + nCode > m_nMaxText || !HasRoomFor(nCode))
        return false;
    TypeBytes(szCode, nCode);
    return true;
}

// ---------------------------------------------------------------------------------------------
// Messages

LRESULT CQzEditEx::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    ClampSel();
    switch (message)
    {
    case WM_LBUTTONDOWN:
        OnMouseDown(lParam);
        break;
    case WM_MOUSEMOVE:
        SetIBeamCursor();
        if (m_bSelecting)
            SetSel(m_nSelAnchor, IndexForMouse(lParam));
        break;
    case WM_LBUTTONUP:
        SetIBeamCursor();
        if (m_bSelecting)
        {
            m_bSelecting = false;
            SetSel(m_nSelAnchor, IndexForMouse(lParam));
        }
        break;
    case WM_LBUTTONDBLCLK:
        SetSel(-1, GetTextLength() - 1);
        break;
    case WM_MOUSEWHEEL:
        if (!IsFocused())
            break;
        if (GET_WHEEL_DELTA_WPARAM(wParam) >= 1)
            OnKeyDown(VK_UP, 1, 0);
        else if (GET_WHEEL_DELTA_WPARAM(wParam) < 0)
            OnKeyDown(VK_DOWN, 1, 0);
        return 1;
    case WM_INPUTLANGCHANGEREQUEST:
        if (m_nInputMode != QZ_EDITEX_NORMAL)
            return 1;
        break;
    case WM_CHAR:
        return OnChar(wParam);
    case WM_IME_COMPOSITION:
        // The result string is taken here; the host's default procedure must not type it again.
        if (!(lParam & GCS_RESULTSTR) || !m_hMyShellWnd)
            break;
        OnImeResult();
        return 1;
    case WM_HSCROLL:
        OnHScrollEdit(LOWORD(wParam), HIWORD(wParam));
        break;
    case WM_VSCROLL:
        OnVScrollEdit(LOWORD(wParam), HIWORD(wParam));
        break;
    default:
        break;
    }
    return CQzCtrl::WindowProc(message, wParam, lParam);
}

// A character is consumed (1) whether it went in or not. Enter in a single-line box only tells
// the dialog: its handler may delete the box, which is not touched afterwards.
LRESULT CQzEditEx::OnChar(WPARAM wParam)
{
    if (wParam > 0xFF)
    {
        if (!InsertWideChar(wParam))
            ::MessageBeep(0);
        return 1;
    }
    const bool bCtrl = IsKeyDown(VK_CONTROL);
    switch (wParam)
    {
    case VK_BACK:
        OnBackspace();
        return 1;
    case kCtrlA:
        if (!bCtrl)
            break;
        SetSel(-1, GetTextLength() - 1);
        return 1;
    case kCtrlC:
        if (bCtrl && CopySel())
            return 1;
        break;
    case kCtrlX:
        if (!bCtrl || !CopySel())
            break;
        DeleteSel();
        SetCaret(m_nCaret);
        return 1;
    case kCtrlV:
        if (bCtrl && Paste())
            return 1;
        break;
    default:
        break;
    }
    if (wParam == '\r' && !m_bMultiLineEdit)
    {
        NotifyEnter();
        return 1;
    }
    if (!InsertChar(static_cast<BYTE>(wParam)))
        ::MessageBeep(0);
    return 1;
}

// A character from a Unicode host window: its bytes in the code page, inserted whole.
bool CQzEditEx::InsertWideChar(WPARAM wParam)
{
    const wchar_t wch = static_cast<wchar_t>(wParam);
    char szBytes[8] = {};
    BOOL bDefault = FALSE;
    const int n =
        ::WideCharToMultiByte(CP_ACP, 0, &wch, 1, szBytes, sizeof(szBytes), nullptr, &bDefault);
    if (n <= 0 || bDefault)
        return false;
    return InsertText(szBytes, static_cast<size_t>(n), true);
}

void CQzEditEx::NotifyEnter()
{
    if (m_pParent)
        m_pParent->SendMessage(WM_NOTIFY, MakeNotifyWParam(QZ_EDITEX_ENTER, m_nId), GetFullId());
}

void CQzEditEx::OnBackspace()
{
    if (HasSel())
    {
        DeleteSel();
        SetCaret(m_nCaret);
        return;
    }
    const int n = GetStepLength(0, m_nCaret + 1);
    EraseBytes(m_nCaret - n + 1, n);
    SetCaret(m_nCaret - n);
}

// With a selection, Delete removes it, as Backspace does.
void CQzEditEx::OnDelete()
{
    if (HasSel())
    {
        DeleteSel();
        SetCaret(m_nCaret);
        return;
    }
    EraseBytes(m_nCaret + 1, GetStepLength(1, m_nCaret));
    SetCaret(m_nCaret);
}

void CQzEditEx::OnKeyDown(UINT nChar, UINT, UINT)
{
    ClampSel();
    if (!m_hMyShellWnd)
        LogMsg("ASSERT(NULL != m_hMyShellWnd) in %d line of %s", __LINE__, kSource);
    PlaceCompositionWindow();
    const bool bShift = IsKeyDown(VK_SHIFT);
    int nTarget = m_nCaret;
    switch (nChar)
    {
    case VK_END:
        MoveCaret(GetTextLength() - 1, bShift);
        break;
    case VK_HOME:
        MoveCaret(-1, bShift);
        break;
    case VK_LEFT:
        MoveCaret(m_nCaret - GetStepLength(0, m_nCaret + 1), bShift);
        break;
    case VK_RIGHT:
        MoveCaret(m_nCaret + GetStepLength(1, m_nCaret), bShift);
        break;
    case VK_UP:
    case VK_DOWN:
        if (LineMoveTarget(nChar == VK_UP ? -1 : 1, &nTarget))
            MoveCaret(nTarget, bShift);
        break;
    case VK_DELETE:
        OnDelete();
        break;
    default:
        break;
    }
}

// With Shift only the caret moves and the anchor stays.
void CQzEditEx::MoveCaret(int nIndex, bool bExtend)
{
    SetSel(bExtend ? m_nSelAnchor : nIndex, nIndex);
}

// The same column on the line above or below, no further than that line's last byte, set on a
// unit boundary; false on the first or last line.
bool CQzEditEx::LineMoveTarget(int nLineDelta, int* pIndex)
{
    const CQzEditExText text = Text();
    const int nLine = text.GetLineOfChar(m_nCaret) + nLineDelta;
    if (nLine < 1 || nLine > text.GetLineCount())
        return false;
    const int nColumn = text.PlaceAfter(m_nCaret + 1).nColumn;
    const int nStart = text.GetLineStart(nLine);
    const int nIndex = std::min(nStart - 1 + nColumn, nStart + text.GetLineLength(nLine) - 1);
    *pIndex = text.SnapToUnit(nIndex);
    return true;
}

void CQzEditEx::PlaceCompositionWindow()
{
    HIMC hImc = ::ImmGetContext(m_hMyShellWnd);
    if (!hImc)
        return;
    const POINT pt = GetCaretPos(m_nCaret + 1);
    COMPOSITIONFORM form = {
        CFS_FORCE_POSITION,
        {QzPlatform::ClampToInt(int64_t(m_rcWindow.left) + pt.x + kCompositionOffset),
         QzPlatform::ClampToInt(int64_t(m_rcWindow.top) + pt.y + kCompositionOffset)},
        {0, 0, 0, 0}};
    ::ImmSetCompositionWindow(hImc, &form);
    ::ImmReleaseContext(m_hMyShellWnd, hImc);
}

// The result string goes through the box's own character handling, byte by byte.
void CQzEditEx::OnImeResult()
{
    HIMC hImc = ::ImmGetContext(m_hMyShellWnd);
    if (!hImc)
        return;
    char szResult[kImeResultBytes + 1] = {};
    const LONG n = ::ImmGetCompositionStringA(hImc, GCS_RESULTSTR, szResult, kImeResultBytes);
    ::ImmReleaseContext(m_hMyShellWnd, hImc);
    if (n > 0)
        TypeBytes(szResult, std::min<int>(static_cast<int>(n), kImeResultBytes));
}

void CQzEditEx::TypeBytes(const char* pBytes, int n)
{
    for (int i = 0; i < n; ++i)
        SendMessage(WM_CHAR, static_cast<BYTE>(pBytes[i]), 1);
}

// ---------------------------------------------------------------------------------------------
// The mouse

void CQzEditEx::SetIBeamCursor()
{
    ::SetCursor(::LoadCursorA(nullptr, IDC_IBEAM));
}

void CQzEditEx::OnMouseDown(LPARAM lParam)
{
    SetIBeamCursor();
    SetFocus();
    SetCapture();
    SetCaret(IndexForMouse(lParam));
    m_bSelecting = true;
}

// The caret index for a mouse point: before the text above the box, before the line's first
// byte left of one character's width, else CharFromPoint. Press, drag and release use the same
// rule, so that a click without a drag selects nothing.
int CQzEditEx::IndexForMouse(LPARAM lParam)
{
    const POINT pt = {QzPlatform::SubClamped(GET_X_LPARAM(lParam), m_rcWindow.left),
                      QzPlatform::SubClamped(GET_Y_LPARAM(lParam), m_rcWindow.top)};
    if (pt.y < 1 || GetTextLength() == 0)
        return -1;
    if (pt.x > CMyBitmap::GetFontWidth(nullptr, kClickFontSize, nullptr))
        return CharFromPoint(pt);
    if (!m_bMultiLineEdit)
        return -1;
    const CQzEditExText text = Text();
    return text.GetLineStart(LineAtY(text, pt.y)) - 1;
}

// ---------------------------------------------------------------------------------------------
// The clipboard

// False when the clipboard does not open. The pasted text goes in unit by unit up to the limit;
// a beep tells that not all of it went in.
bool CQzEditEx::Paste()
{
    if (!::OpenClipboard(m_hMyShellWnd))
        return false;
    HANDLE hData = ::GetClipboardData(CF_TEXT);
    const char* pszText = hData ? static_cast<const char*>(::GlobalLock(hData)) : nullptr;
    if (pszText)
    {
        const size_t nSize = ::GlobalSize(hData);
        const void* pEnd = std::memchr(pszText, 0, nSize);
        const size_t nLength = pEnd ? static_cast<const char*>(pEnd) - pszText : nSize;
        const bool bAll = InsertText(pszText, nLength, true);
        ::GlobalUnlock(hData);
        if (!bAll)
            ::MessageBeep(0);
    }
    ::CloseClipboard();
    return true;
}

// False without a selection or when the clipboard does not open.
bool CQzEditEx::CopySel()
{
    if (!HasSel() || !::OpenClipboard(m_hMyShellWnd))
        return false;
    ::EmptyClipboard();
    const int nLow = SelLow();
    const size_t nCount = static_cast<size_t>(SelHigh() - nLow);
    HGLOBAL hData = ::GlobalAlloc(kClipboardAllocFlags, nCount + 1);
    char* pData = hData ? static_cast<char*>(::GlobalLock(hData)) : nullptr;
    if (pData)
    {
        std::memcpy(pData, m_strText.data() + nLow + 1, nCount);
        pData[nCount] = '\0';
        ::GlobalUnlock(hData);
        if (!::SetClipboardData(CF_TEXT, hData))
            ::GlobalFree(hData);
    }
    else if (hData)
    {
        ::GlobalFree(hData);
    }
    ::CloseClipboard();
    return true;
}

// ---------------------------------------------------------------------------------------------
// Drawing

// Caret, selection, then the text: asterisks for a password, the visible lines of a
// multi-line box, the visible run of a single-line box.
void CQzEditEx::ShowText()
{
    ClampSel();
    if (IsFocused() && (QzPlatform::NowMs() / kCaretBlinkMs) % 2 == 0)
        DrawCaret();
    if (m_strText.empty())
        return;
    DrawSelection();
    const int x = QzPlatform::AddClamped(m_rcWindow.left, m_ptMargin.x);
    const int y = QzPlatform::ClampToInt(int64_t(m_rcWindow.top) + m_ptMargin.y + kTextDrop);
    if (m_nInputMode == QZ_EDITEX_PASSWORD)
        DrawRun(x, y, std::string(m_strText.size(), '*'));
    else if (m_bMultiLineEdit)
        DrawLines(x, y);
    else
        DrawSingleLine(x, y);
}

void CQzEditEx::DrawCaret()
{
    const POINT pt = GetCaretPos(m_nCaret + 1);
    const int x = QzPlatform::AddClamped(m_rcWindow.left, pt.x);
    const int y = QzPlatform::AddClamped(m_rcWindow.top, pt.y);
    CMyBitmap::ShowBlock(x, y, QzPlatform::AddClamped(x, kCaretWidth),
                         QzPlatform::AddClamped(y, LineHeight()), kCaretColor);
}

// One block per line over the selected columns of the visible part.
void CQzEditEx::DrawSelection()
{
    if (!HasSel())
        return;
    const int nFrom = SelLow() + 1;
    const int nTo = SelHigh() + 1;
    if (!m_bMultiLineEdit)
    {
        const int nFirst = m_nFirstVisibleChar;
        const int nEnd = ClampToInt(static_cast<int64_t>(nFirst) + GetColumns());
        DrawSelBlock(kTextDrop, std::max(nFrom, nFirst) - nFirst, std::min(nTo, nEnd) - nFirst);
        return;
    }
    const CQzEditExText text = Text();
    const int nLast = std::min(text.GetLineCount(), m_nFirstVisibleLine + GetVisibleLines() - 1);
    for (int nLine = m_nFirstVisibleLine; nLine <= nLast; ++nLine)
    {
        const int nStart = text.GetLineStart(nLine);
        const int nEnd = nStart + text.GetLineLength(nLine);
        DrawSelBlock((nLine - m_nFirstVisibleLine) * LineHeight(), std::max(nFrom, nStart) - nStart,
                     std::min(nTo, nEnd) - nStart);
    }
}

void CQzEditEx::DrawSelBlock(int nTop, int nFromCol, int nToCol)
{
    if (nToCol <= nFromCol)
        return;
    const int w = Cell().iWidth;
    const int64_t x = int64_t(m_rcWindow.left) + m_ptMargin.x;
    const int y = QzPlatform::ClampToInt(int64_t(m_rcWindow.top) + m_ptMargin.y + nTop);
    CMyBitmap::ShowBlock(QzPlatform::ClampToInt(x + int64_t(w) * nFromCol), y,
                         QzPlatform::ClampToInt(x + int64_t(w) * nToCol),
                         QzPlatform::AddClamped(y, LineHeight()), m_dwSelColor);
}

void CQzEditEx::DrawRun(int x, int y, const std::string& strRun)
{
    std::string strShown = strRun;
    TrimLoneLead(strShown);
    if (strShown.empty())
        return;
    const char* pszFace = QzPlatform::GetGameData().GetString(kFaceTextId, kSource, __LINE__);
    IDataSet* pDataSet = TableDataSetQuery();
    IDataIcon* pIcons = pDataSet ? pDataSet->GetIconSet(0) : nullptr;
    C3_SIZE drawn = {0, 0};
    QzPlatform::DrawEmotionText(x, y, m_dwTextColor, strShown.c_str(), pIcons,
                                *pszFace ? pszFace : nullptr, 0, kEmotionFlag, kEmotionIconCell, 0,
                                0, 0, kShadowColor, &drawn);
}

void CQzEditEx::DrawLines(int x, int y)
{
    const CQzEditExText text = Text();
    const int nLast = std::min(text.GetLineCount(), m_nFirstVisibleLine + GetVisibleLines() - 1);
    for (int nLine = m_nFirstVisibleLine; nLine <= nLast; ++nLine)
    {
        const std::string strLine =
            m_strText.substr(static_cast<size_t>(text.GetLineStart(nLine)),
                             static_cast<size_t>(text.GetLineLength(nLine)));
        DrawRun(x, y + LineHeight() * (nLine - m_nFirstVisibleLine), strLine);
    }
}

void CQzEditEx::DrawSingleLine(int x, int y)
{
    if (m_nFirstVisibleChar < 0)
    {
        LogMsg("ASSERT(m_nFirstVisibleChar >= 0) in %d line of %s", __LINE__, kSource);
        return;
    }
    const int nCount = std::min(GetTextLength() - m_nFirstVisibleChar, GetColumns());
    if (nCount <= 0)
        return;
    std::string strRun =
        m_strText.substr(static_cast<size_t>(m_nFirstVisibleChar), static_cast<size_t>(nCount));
    TrimLoneLead(strRun);
    CutIncompleteCode(strRun);
    DrawRun(x, y, strRun);
}

} // namespace QzGui
