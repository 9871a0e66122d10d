#include "textinput/QzEdit.h"

#include "platform/services/QzClock.h"

#include "framework/QzGuiMgr.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzGameData.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"
#include "platform/services/QzWidgetKit.h"
#include "textinput/QzEditSingle.h"
#include "textinput/QzEmotionCode.h"
#include "textinput/QzFontIni.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

namespace QzGui
{

namespace
{

constexpr const char* kSource = "QzEdit";

enum : UINT
{
    kCharBackspace = 8,
    kCharEnter = 13,
    kCharPaste = 22,
};

// Reads of the system window: the frame's text, and the text a line break goes into.
constexpr int kReadUnits = 1024;
constexpr int kNewLineReadBytes = 256;
constexpr size_t kNewLineMaxBytes = 255;
constexpr int kLineReadBytes = 256;
// The visible run of a single-line box, and an inactive multi-line box's line, at most.
constexpr int kMaxRunChars = 127;
constexpr size_t kMaxInactiveLineBytes = 199;

constexpr int kCaretWidth = 2;
constexpr DWORD kCaretColour = 0xFFFFFFFF;
constexpr DWORD kCaretPeriodMs = 500;
// PosFromChar's x for an index past the text.
constexpr LONG kNoPosition = 65535;
// Single-line text sits this far below the box's top (plus the margin).
constexpr int kTextTopOffset = 4;
constexpr int kTextLeftOffset = 2;
// The composition window reaches this far right of the caret's column and below the box.
constexpr int kCompositionRight = 300;
constexpr int kCompositionBelow = 100;

constexpr size_t kFaceBytes = 260;
// The face GetFontName gives, read from ini/font.ini once per process.
char g_szEditDrawFace[kFaceBytes] = "";

enum TextFormat : WORD
{
    kFormatLeft = 0,
    kFormatCentre = 1,
    kFormatRight = 2,
    kFormatCentreInside = 3,
};

bool IsDigit(wchar_t ch)
{
    return ch >= L'0' && ch <= L'9';
}

// Bytes of the character at i, a character boundary of ANSI text: 2 for a lead byte with its
// second byte, else 1 (also for a lead byte that lost its second byte).
size_t CharBytesAt(const std::string& text, size_t i)
{
    const bool bLead = IsDBCSLeadByte(static_cast<BYTE>(text[i])) != 0;
    return bLead && i + 1 < text.size() && text[i + 1] ? 2 : 1;
}

// The text without a lead byte that lost its second byte at the end (a read cut short).
void DropLoneLeadByte(std::string& text)
{
    size_t i = 0;
    while (i < text.size())
    {
        const size_t nBytes = CharBytesAt(text, i);
        if (nBytes == 1 && i + 1 == text.size() && IsDBCSLeadByte(static_cast<BYTE>(text[i])))
        {
            text.resize(i);
            return;
        }
        i += nBytes;
    }
}

// At most nMax bytes of the text, never half a two-byte character.
std::string CutToBytes(const std::string& text, size_t nMax)
{
    size_t i = 0;
    while (i < text.size() && i + CharBytesAt(text, i) <= nMax)
        i += CharBytesAt(text, i);
    return text.substr(0, i);
}

std::string ReadShellText(int nBytes)
{
    std::string text(static_cast<size_t>(nBytes), '\0');
    const int n = g_pQzEditSingle->GetWindowText(text.data(), nBytes);
    text.resize(static_cast<size_t>(std::clamp(n, 0, nBytes - 1)));
    text.resize(std::strlen(text.c_str()));
    DropLoneLeadByte(text);
    return text;
}

std::wstring ReadShellWide()
{
    wchar_t szText[kReadUnits] = {};
    const int n = g_pQzEditSingle->GetWindowTextW(szText, kReadUnits);
    return std::wstring(szText, static_cast<size_t>(std::clamp(n, 0, kReadUnits - 1)));
}

bool RemoveLineBreaks(std::string& text)
{
    const size_t nBefore = text.size();
    text.erase(
        std::remove_if(text.begin(), text.end(), [](char ch) { return ch == '\r' || ch == '\n'; }),
        text.end());
    return text.size() != nBefore;
}

IDataIcon* EmotionIcons()
{
    IDataSet* pData = TableDataSetQuery();
    return pData ? pData->GetIconSet(0) : nullptr;
}

} // namespace

CQzEdit::CQzEdit() = default;

CQzEdit::~CQzEdit()
{
    if (g_pQzEditSingle)
        g_pQzEditSingle->ForgetEdit(this);
}

// ---------------------------------------------------------------------------------------------
// Set-up and creation

void CQzEdit::PreSetParam(bool bMultiLine, DWORD, DWORD dwTextColor, bool bAllowEnter)
{
    m_bMultiLineEdit = bMultiLine;
    m_dwEditTextColor = dwTextColor;
    m_bAllowEnter = bAllowEnter;
    m_bPreSetParam = true;
    if (CQzGuiMgr* pMgr = GetMgr())
        m_hOwnerWnd = pMgr->GetHwnd();
}

BOOL CQzEdit::OnCreate()
{
    if (!m_bPreSetParam)
        LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", __LINE__, kSource);
    if (CQzGuiMgr* pMgr = GetMgr())
    {
        pMgr->GetFont();
        // Set up before it had a manager: the clipboard owner comes with the manager.
        if (!m_hOwnerWnd)
            m_hOwnerWnd = pMgr->GetHwnd();
    }
    return 1;
}

BOOL CQzEdit::LoadWndInfo()
{
    if (!CQzCtrl::LoadWndInfo())
        return 0;
    if (m_pWndInfo)
        UpdateMetrics();
    return 1;
}

void CQzEdit::UpdateMetrics()
{
    m_nWidth = GetWidth();
    m_nHeight = GetHeight();
    m_nCharWidth = static_cast<uint8_t>(m_nFontSize / 2);
    m_nCharsPerLine = m_nCharWidth ? m_nWidth / m_nCharWidth : 0;
}

HWND CQzEdit::GetHostWnd() const
{
    CQzGuiMgr* pMgr = GetMgr();
    return pMgr ? pMgr->GetHwnd() : nullptr;
}

void CQzEdit::SetTextMargin(int nTop, int nLeft)
{
    m_nTextTop = nTop;
    m_nTextLeft = nLeft;
}

void CQzEdit::SetLimitText(int nLimit)
{
    m_nLimitText = nLimit;
    if (IsFocused())
        g_pQzEditSingle->LimitText(nLimit > 0 ? nLimit : 0);
}

void CQzEdit::SetReadOnly(int nReadOnly)
{
    if (!g_pQzEditSingle)
        LogMsg("ASSERT(g_pQzEditSingle) in %d line of %s", __LINE__, kSource);
    m_nReadOnly = nReadOnly;
}

void CQzEdit::SetPasswordChar(char ch)
{
    if (g_pQzEditSingle)
        g_pQzEditSingle->SetPasswordChar(ch);
}

// ---------------------------------------------------------------------------------------------
// Text

void CQzEdit::SetWindowText(const char* pszText)
{
    if (!g_pQzEditSingle)
        return;
    const bool bBound = IsFocused();
    if (!pszText)
    {
        m_strText.clear();
        m_strTextW.clear();
        if (bBound)
            g_pQzEditSingle->SetWindowText("");
        return;
    }
    const bool bChanged = m_strText != pszText;
    if (bBound)
        g_pQzEditSingle->SetWindowText(pszText);
    m_strText = pszText;
    m_strTextW = QzPlatform::Utf8TextToWide(pszText);
    if (m_pParent && bChanged)
        NotifyParent(QZ_EN_UPDATE);
}

int CQzEdit::GetText(char* pszBuffer, int n)
{
    if (!g_pQzEditSingle || !pszBuffer || n <= 0)
        return 0;
    const std::string text = CutToBytes(m_strText, static_cast<size_t>(n - 1));
    std::memcpy(pszBuffer, text.c_str(), text.size() + 1);
    return n;
}

int CQzEdit::GetTextW(wchar_t* pszBuffer, int n)
{
    if (!g_pQzEditSingle || !pszBuffer || n <= 0)
        return 0;
    const size_t nCopy = std::min(m_strTextW.size(), static_cast<size_t>(n - 1));
    std::wmemcpy(pszBuffer, m_strTextW.c_str(), nCopy);
    pszBuffer[nCopy] = L'\0';
    return n;
}

int CQzEdit::GetEditTextLength()
{
    return g_pQzEditSingle ? g_pQzEditSingle->GetWindowTextLength() : -1;
}

// ---------------------------------------------------------------------------------------------
// Selection and focus

DWORD CQzEdit::GetSel()
{
    return g_pQzEditSingle ? g_pQzEditSingle->GetSel() : static_cast<DWORD>(-1);
}

void CQzEdit::GetSel(int* pStart, int* pEnd)
{
    if (g_pQzEditSingle)
        g_pQzEditSingle->GetSel(pStart, pEnd);
}

void CQzEdit::SetSel(DWORD dwSelection, bool bNoScroll)
{
    if (g_pQzEditSingle)
        g_pQzEditSingle->SetSel(dwSelection, bNoScroll);
}

void CQzEdit::SetSel(int nStart, int nEnd, bool bNoScroll)
{
    if (g_pQzEditSingle)
        g_pQzEditSingle->SetSel(nStart, nEnd, bNoScroll);
}

// A new binding gives the system window this box's text with the caret after it; a box already
// bound keeps what is being typed (and its undo). A single-line window shows a password box's
// text only as asterisks, so it does not copy it to the clipboard either.
void CQzEdit::SetFocus()
{
    // A disabled box takes no focus, as a disabled system window takes none.
    if (!g_pQzEditSingle || !IsWindowEnabled())
        return;
    const bool bWasBound = IsFocused();
    g_pQzEditSingle->EnableIme(m_bImeEnable);
    g_pQzEditSingle->SetActiveEdit(this);
    g_pQzEditSingle->SetActiveEdit(this);
    if (CQzGuiMgr* pMgr = GetMgr())
        pMgr->SetKeyFocus(nullptr);
    if (bWasBound || !IsFocused())
        return;
    g_pQzEditSingle->SetWindowText(m_strText.c_str());
    const int nLength = g_pQzEditSingle->GetWindowTextLength();
    g_pQzEditSingle->SetSel(nLength, nLength, false);
    if (!m_bMultiLineEdit)
        g_pQzEditSingle->SetPasswordChar(m_bPassword ? '*' : '\0');
}

bool CQzEdit::IsFocused() const
{
    return g_pQzEditSingle && g_pQzEditSingle->IsActiveEdit(this);
}

// ---------------------------------------------------------------------------------------------
// Messages

LRESULT CQzEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_SIZE:
        if (IsFocused())
            g_pQzEditSingle->FitToActiveEdit();
        UpdateMetrics();
        break;
    case WM_CHAR:
        if (!ScreenPaste(wParam))
            OnChar(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case WM_LBUTTONDOWN:
        SetFocus();
        break;
    default:
        break;
    }
    // Clicks place the caret and drags select in the system window.
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSEWHEEL && IsFocused())
        g_pQzEditSingle->PostMessage(message, wParam, lParam);
    return CQzCtrl::WindowProc(message, wParam, lParam);
}

bool CQzEdit::ScreenPaste(WPARAM wParam)
{
    if (wParam != kCharPaste || GetKeyState(VK_CONTROL) >= 0 || m_bImeEnable)
        return false;
    if (!OpenClipboard(m_hOwnerWnd))
        return false;
    HANDLE hData = GetClipboardData(CF_TEXT);
    const char* pData = hData ? static_cast<const char*>(GlobalLock(hData)) : nullptr;
    if (pData)
    {
        const size_t nBytes = strnlen(pData, GlobalSize(hData));
        const bool bDoubleByte = std::any_of(
            pData, pData + nBytes, [](char ch) { return IsDBCSLeadByte(static_cast<BYTE>(ch)); });
        GlobalUnlock(hData);
        if (bDoubleByte)
            EmptyClipboard();
    }
    CloseClipboard();
    return true;
}

// The rules run in this order: number-only, Enter, characters without keyboard data, Backspace
// over an emotion code, posting a made-up character, and the line cap of a multi-line box.
// Only the bound box touches the system window.
void CQzEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (!g_pQzEditSingle)
        return;
    const bool bBound = IsFocused();
    if (m_bNumberOnly && nChar != kCharBackspace)
    {
        const bool bEmpty =
            bBound ? g_pQzEditSingle->GetWindowTextLength() == 0 : m_strText.empty();
        if ((bEmpty && nChar == '0') || !IsDigit(static_cast<wchar_t>(nChar)))
            return;
    }
    if (m_bMultiLineEdit && nChar == kCharEnter)
    {
        // The one line break Enter makes; the keystroke goes no further.
        if (m_bAllowEnter)
            InsertNewLine();
        return;
    }
    if (nFlags == 0 && !m_bImeEnable)
        return;
    if (!bBound)
        return;
    if (nChar == kCharBackspace)
        DeleteEmotionCode();
    if (nFlags == 0 && nRepCnt == 0)
        g_pQzEditSingle->PostMessage(WM_CHAR, nChar, 0);
    if (m_bMultiLineEdit)
        TrimExtraLines();
}

// The Backspace itself removes one character; this posts the others of the code. A code of six
// ("#NN|MM") is looked for right before the caret from index 6 on, a short one ("#NN") only
// with the caret at 3, 4 or 5.
void CQzEdit::DeleteEmotionCode()
{
    int nStart = 0;
    int nEnd = 0;
    g_pQzEditSingle->GetSel(&nStart, &nEnd);
    if (nStart != nEnd)
        return;
    const std::wstring text = ReadShellWide();
    const int nCaret = nEnd;
    if (nCaret > static_cast<int>(text.size()))
        return;
    int nMore = 0;
    if (nCaret >= QZ_EMOTION_CODE_LENGTH)
    {
        // The six characters as bytes; anything beyond ASCII cannot be part of a code.
        std::string code;
        for (int i = nCaret - QZ_EMOTION_CODE_LENGTH; i < nCaret; ++i)
            code += text[static_cast<size_t>(i)] < 0x80 ? static_cast<char>(text[i]) : '\x7F';
        if (IsEmotionCode(code.c_str(), 0, QZ_EMOTION_CODE_LENGTH))
            nMore = QZ_EMOTION_CODE_LENGTH - 1;
    }
    else if (nCaret >= 3 && IsDigit(text[nCaret - 1]) && IsDigit(text[nCaret - 2]) &&
             text[nCaret - 3] == L'#')
    {
        nMore = 2;
    }
    for (int i = 0; i < nMore; ++i)
        g_pQzEditSingle->PostMessage(WM_CHAR, kCharBackspace, 0);
}

// Lines past what the box shows (at least one) are cut off with the line break before them.
// The cut and the line break are edits of the window, which keeps its undo.
void CQzEdit::TrimExtraLines()
{
    const int nMaxLines = std::max(1, m_nHeight / m_nFontSize - 1);
    if (g_pQzEditSingle->GetLineCount() <= nMaxLines)
        return;
    const int nLastKept = g_pQzEditSingle->LineIndex(nMaxLines - 1);
    const int nCut = nLastKept + g_pQzEditSingle->LineLength(nLastKept);
    int nStart = 0;
    int nEnd = 0;
    g_pQzEditSingle->GetSel(&nStart, &nEnd);
    g_pQzEditSingle->SetSel(nCut, -1, true);
    g_pQzEditSingle->ReplaceSel("", true);
    g_pQzEditSingle->SetSel(std::min(nStart, nCut), std::min(nEnd, nCut), false);
}

// The line break goes in at the selection's start; the selection stays in the text.
void CQzEdit::InsertNewLine()
{
    if (!IsFocused())
        return;
    if (m_nHeight / m_nFontSize - 2 < g_pQzEditSingle->GetLineCount())
        return;
    if (ReadShellText(kNewLineReadBytes).size() >= kNewLineMaxBytes)
        return;
    int nStart = 0;
    int nEnd = 0;
    g_pQzEditSingle->GetSel(&nStart, &nEnd);
    g_pQzEditSingle->SetSel(nStart, nStart, true);
    g_pQzEditSingle->ReplaceSel("\r\n", true);
    g_pQzEditSingle->SetSel(nStart + 2, nStart + 2, false);
}

// Up and Down also scroll the dialog by a line.
void CQzEdit::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (IsFocused())
        PlaceComposition();
    if ((nChar == VK_UP || nChar == VK_DOWN) && m_pParent)
    {
        m_pParent->SendMessage(WM_VSCROLL, nChar == VK_UP ? SB_LINEUP : SB_LINEDOWN, 0);
        return;
    }
    CQzCtrl::OnKeyDown(nChar, nRepCnt, nFlags);
}

// The composition window of the input method goes to the caret, on this box's own cell.
void CQzEdit::PlaceComposition()
{
    const RECT rcBox = GetScreenRect();
    int nStart = 0;
    int nEnd = 0;
    g_pQzEditSingle->GetSel(&nStart, &nEnd);
    const int nLine = g_pQzEditSingle->LineFromChar(nEnd);
    const int nFirstLength = g_pQzEditSingle->LineLength(0);
    COMPOSITIONFORM form = {};
    form.dwStyle = CFS_RECT;
    form.ptCurrentPos = {rcBox.left + (nEnd - nLine * nFirstLength) * m_nCharWidth,
                         rcBox.top + nLine * m_nFontSize};
    form.rcArea = {form.ptCurrentPos.x, 0, rcBox.left + nEnd * m_nFontSize + kCompositionRight,
                   rcBox.bottom + kCompositionBelow};
    const HWND hWnd = g_pQzEditSingle->GetActiveEditWnd();
    if (HIMC hImc = ImmGetContext(hWnd))
    {
        ImmSetCompositionWindow(hImc, &form);
        ImmReleaseContext(hWnd, hImc);
    }
}

void CQzEdit::OnRButtonDown(UINT nFlags, POINT point)
{
    if (!m_bNumberOnly)
        CQzCtrl::OnRButtonDown(nFlags, point);
}

BOOL CQzEdit::EnableWindow(BOOL bEnable)
{
    const BOOL bResult = CQzCtrl::EnableWindow(bEnable);
    if (IsFocused())
        ::EnableWindow(g_pQzEditSingle->GetActiveEditWnd(), bEnable);
    return bResult;
}

int CQzEdit::GetLineLength()
{
    return g_pQzEditSingle ? g_pQzEditSingle->LineLength(-1) : 0;
}

int CQzEdit::GetMaxChars()
{
    return m_nCharWidth ? GetWidth() / m_nCharWidth : 0;
}

// ---------------------------------------------------------------------------------------------
// Reading back and drawing

void CQzEdit::ShowText()
{
    if (!IsFocused())
    {
        ShowInactiveText();
        return;
    }
    const bool bChanged = ReadBack();
    if (m_bMultiLineEdit)
        ShowMultiLineText();
    else
        ShowSingleLineText();
    if (bChanged)
    {
        OnTextChange();
        NotifyParent(QZ_EN_CHANGE);
    }
}

void CQzEdit::SyncFromShell()
{
    if (IsFocused() && ReadBack())
    {
        OnTextChange();
        NotifyParent(QZ_EN_CHANGE);
    }
}

bool CQzEdit::ReadBack()
{
    m_strTextW = ReadShellWide();
    std::string text = ReadShellText(kReadUnits);
    if (text == m_strText)
        return false;
    m_strText = std::move(text);
    if (!m_bMultiLineEdit && RemoveLineBreaks(m_strText))
    {
        g_pQzEditSingle->SetWindowText(m_strText.c_str());
        m_strTextW = ReadShellWide();
        const int nLength = static_cast<int>(m_strTextW.size());
        g_pQzEditSingle->SetSel(nLength, nLength, false);
    }
    OnTextUpdate();
    NotifyParent(QZ_EN_UPDATE);
    return true;
}

bool CQzEdit::IsCaretOn() const
{
    if (!m_bAlwaysShowCaret && !IsFocused())
        return false;
    return (QzPlatform::NowMs() / kCaretPeriodMs) % 2 == 0;
}

void CQzEdit::DrawCaret(int x, int y, int nHeight)
{
    if (IsCaretOn())
        CMyBitmap::ShowBlock(x, y, x + kCaretWidth, y + nHeight, kCaretColour);
}

void CQzEdit::DrawRun(int x, int y, const char* pszText)
{
    std::string run = pszText;
    QzPlatform::CQzGameData& data = QzPlatform::GetGameData();
    if (data.IsLanguageSwitchOn())
        QzPlatform::ApplyDisplayTransform(run);
    CMyBitmap::ShowEmotionStringEx(x, y, m_dwEditTextColor, run.c_str(), EmotionIcons(),
                                   data.GetFont(GetFontName()));
}

void CQzEdit::DrawRun(int x, int y, std::wstring run)
{
    QzPlatform::CQzGameData& data = QzPlatform::GetGameData();
    if (data.IsLanguageSwitchOn())
        QzPlatform::ApplyDisplayTransform(run);
    CMyBitmap::ShowEmotionStringW(x, y, m_dwEditTextColor, run.c_str(), EmotionIcons(),
                                  data.GetFont(GetFontName()));
}

POINT CQzEdit::TextOrigin() const
{
    const int nTextWidth = static_cast<int>(m_strText.size()) * m_sizeFont.iWidth;
    int x = m_nTextLeft + kTextLeftOffset;
    switch (m_wTextFormat)
    {
    case kFormatLeft:
        x = 0;
        break;
    case kFormatCentre:
        x = m_nWidth / 2 - nTextWidth / 2;
        break;
    case kFormatRight:
        x = m_nWidth - nTextWidth;
        break;
    case kFormatCentreInside:
        x = std::max(0, m_nWidth / 2 - nTextWidth / 2);
        break;
    default:
        break;
    }
    return {QzPlatform::AddClamped(x, m_rcWindow.left),
            QzPlatform::ClampToInt(int64_t(m_nTextTop) + kTextTopOffset + m_rcWindow.top)};
}

// The system window scrolls by itself; its pixel positions become character counts at
// m_nCharWidth pixels a character, which give the first visible character.
void CQzEdit::ShowSingleLineText()
{
    int nStart = 0;
    int nEnd = 0;
    g_pQzEditSingle->GetSel(&nStart, &nEnd);
    m_nSelLength = nEnd - nStart;
    const POINT ptOrigin = TextOrigin();
    const int nCaretHeight = m_nFontSize + 2;
    const int nLength = static_cast<int>(m_strTextW.size());
    if (nLength == 0 && m_nSelLength == 0)
    {
        DrawCaret(ptOrigin.x, ptOrigin.y, nCaretHeight);
        return;
    }
    const VisibleRun visible = FindVisibleRun(nStart, nEnd, nLength);
    std::wstring run;
    if (visible.nCount > 0)
    {
        run =
            m_bPassword ? std::wstring(m_strText.size(), L'*') : m_strTextW.substr(visible.nFirst);
        run.resize(
            std::min(run.size(), static_cast<size_t>(std::min(visible.nCount, kMaxRunChars))));
    }
    if (m_nSelLength > 0)
        DrawSelection(run, ptOrigin, nStart - visible.nFirst, m_nSelLength);
    DrawRun(ptOrigin.x, ptOrigin.y, run);
    const int nCaretChars =
        std::clamp(visible.nCaret - visible.nFirst, 0, static_cast<int>(run.size()));
    const int nCaretX =
        ptOrigin.x + CalcTextWidth(run.c_str(), 0, nCaretChars, GetFontName(), m_nFontSize, true);
    DrawCaret(nCaretX, ptOrigin.y, nCaretHeight);
}

// The caret follows the end of a selection growing to the right of where the caret stood, else
// its start. The first visible character comes from the caret's pixel position; without one
// (the caret at the end of the text) the run ends at the caret, or is the whole text when it
// fits.
CQzEdit::VisibleRun CQzEdit::FindVisibleRun(int nStart, int nEnd, int nLength)
{
    const int nCharWidth = std::max<int>(1, m_nCharWidth);
    if (nStart == nEnd)
        m_nCaretAnchor = nEnd;
    VisibleRun visible = {nStart, 0, 0};
    POINT pt = g_pQzEditSingle->PosFromChar(static_cast<unsigned>(nStart));
    if (pt.x > 0 && nEnd > m_nCaretAnchor)
    {
        visible.nCaret = nEnd;
        pt = g_pQzEditSingle->PosFromChar(static_cast<unsigned>(nEnd));
    }
    if (nEnd <= m_nCaretAnchor)
        m_nCaretAnchor = nEnd;

    if (pt.x != kNoPosition)
    {
        visible.nFirst = visible.nCaret - pt.x / nCharWidth;
        visible.nCount = std::min(nLength - visible.nFirst, m_nCharsPerLine);
    }
    else if (nLength >= m_nCharsPerLine)
    {
        visible.nFirst = visible.nCaret - m_nCharsPerLine;
        visible.nCount = m_nCharsPerLine;
    }
    else
    {
        const POINT ptLast = g_pQzEditSingle->PosFromChar(static_cast<unsigned>(nLength - 1));
        const bool bPlaced = ptLast.x > 0 && ptLast.x != kNoPosition;
        visible.nFirst =
            bPlaced ? std::max(0, nLength - 1 - static_cast<int>(ptLast.x) / nCharWidth) : 0;
        visible.nCount = nLength - visible.nFirst;
    }
    visible.nFirst = std::clamp(visible.nFirst, 0, nLength);
    visible.nCount = std::min(visible.nCount, nLength - visible.nFirst);
    return visible;
}

// A selection starting left of the visible run is drawn from the run's start; one reaching
// past the box's width ends at the box's right edge.
void CQzEdit::DrawSelection(const std::wstring& run, POINT ptOrigin, int nSelStart, int nSelLength)
{
    if (nSelStart < 0)
    {
        nSelLength += nSelStart;
        nSelStart = 0;
    }
    if (nSelLength <= 0)
        return;
    const int nRun = static_cast<int>(run.size());
    const int nFrom = std::min(nSelStart, nRun);
    const int nLeft =
        ptOrigin.x + CalcTextWidth(run.c_str(), 0, nFrom, GetFontName(), m_nFontSize, true);
    int nRight = ptOrigin.x + m_nWidth;
    if (m_nWidth > (nSelStart + nSelLength) * m_nCharWidth)
    {
        const int nTo = std::min(nSelStart + nSelLength, nRun);
        nRight = nLeft + CalcTextWidth(run.c_str(), nFrom, nTo, GetFontName(), m_nFontSize, true);
    }
    CMyBitmap::ShowBlock(nLeft, ptOrigin.y, nRight, ptOrigin.y + m_nFontSize + 2, m_dwSelColor);
}

void CQzEdit::ShowMultiLineText()
{
    int nStart = 0;
    int nEnd = 0;
    g_pQzEditSingle->GetSel(&nStart, &nEnd);
    const int nLines = g_pQzEditSingle->GetLineCount();
    const int x = m_rcWindow.left;
    const int y = m_rcWindow.top;
    for (int i = 0; i < nLines; ++i)
    {
        const int nLineStart = g_pQzEditSingle->LineIndex(i);
        char szLine[kLineReadBytes] = {};
        const int nCopied = g_pQzEditSingle->GetLine(i, szLine, kLineReadBytes - 1);
        szLine[std::clamp(nCopied, 0, kLineReadBytes - 1)] = '\0';
        if (nStart != nEnd)
        {
            const int nFrom = std::max(0, nStart - nLineStart);
            const int nTo = std::min(g_pQzEditSingle->LineLength(nLineStart), nEnd - nLineStart);
            const int nTop = y + m_nMultiTextTop + i * m_nFontSize;
            const int nLeft = x + m_nMultiTextLeft + m_nCharWidth * nFrom;
            if (nFrom < nTo)
                CMyBitmap::ShowBlock(nLeft, nTop, nLeft + m_nCharWidth * (nTo - nFrom),
                                     nTop + m_nFontSize + 2, m_dwSelColor);
        }
        DrawRun(x, y + i * m_nFontSize, szLine);
    }
    const int nCaretLine = g_pQzEditSingle->LineFromChar(nEnd);
    const int nColumn = std::max(0, nEnd - g_pQzEditSingle->LineIndex(nCaretLine));
    DrawCaret(x + m_nMultiTextLeft + nColumn * m_nCharWidth,
              y + m_nMultiTextTop + nCaretLine * m_nFontSize, m_nFontSize);
}

void CQzEdit::ShowInactiveText()
{
    if (m_strText.empty())
        return;
    if (m_bMultiLineEdit)
        ShowInactiveLines();
    else
        ShowInactiveSingleLine();
}

// Lines end at a line feed, at the width, or at 199 bytes; a two-byte character takes two
// columns and is never split. Only drawn lines take room; carriage returns are not drawn.
void CQzEdit::ShowInactiveLines()
{
    if (m_nWidth < 2 || m_nCharWidth == 0)
        return;
    const int nColumns = m_nWidth / m_nCharWidth;
    const std::string& text = m_strText;
    int nTop = m_rcWindow.top;
    std::string line;
    int nUsed = 0;
    auto flush = [&]()
    {
        if (!line.empty())
        {
            DrawRun(m_rcWindow.left, nTop, line.c_str());
            nTop += m_nFontSize;
        }
        line.clear();
        nUsed = 0;
    };
    size_t i = 0;
    while (i < text.size())
    {
        if (text[i] == '\n')
        {
            flush();
            ++i;
            continue;
        }
        if (text[i] == '\r')
        {
            ++i;
            continue;
        }
        const size_t nBytes = CharBytesAt(text, i);
        const int nWide = static_cast<int>(nBytes);
        const bool bFull = nUsed + nWide > nColumns || line.size() + nBytes > kMaxInactiveLineBytes;
        if (bFull && !line.empty())
            flush();
        line.append(text, i, nBytes);
        nUsed += nWide;
        i += nBytes;
    }
    flush();
}

void CQzEdit::ShowInactiveSingleLine()
{
    std::string shown = m_strText;
    const int nCharWidth = std::max<int>(1, m_nCharWidth);
    if (static_cast<int>(shown.size()) * nCharWidth > m_nWidth)
        shown = CutToBytes(shown, static_cast<size_t>(std::max(0, m_nWidth / nCharWidth)));
    if (m_bPassword)
        shown.assign(shown.size(), '*');
    const POINT ptOrigin = TextOrigin();
    DrawRun(ptOrigin.x, ptOrigin.y, shown.c_str());
}

// ---------------------------------------------------------------------------------------------
// Helpers

int CQzEdit::CalcTextWidth(const wchar_t* pszText, int nFrom, int nTo, const char* pszFace,
                           int nSize, bool bWhole)
{
    if (!pszText)
        return 0;
    const int nLength = static_cast<int>(std::wcslen(pszText));
    if (nTo == -1)
        nTo = nLength;
    if (nFrom < 0 || nFrom > nLength || nTo > nLength || nTo <= nFrom)
        return 0;
    const QzPlatform::CQzWidgetKit& kit = QzPlatform::GetWidgetKit();
    if (bWhole)
    {
        const std::wstring run(pszText + nFrom, static_cast<size_t>(nTo - nFrom));
        return kit.MeasureWideText(run.c_str(), pszFace, nSize, 0, 0);
    }
    int nWidth = 0;
    for (int i = nFrom; i < nTo; ++i)
    {
        const wchar_t szChar[2] = {pszText[i], L'\0'};
        nWidth += kit.MeasureWideText(szChar, pszFace, nSize, 0, 0);
    }
    return nWidth;
}

// Unlike the edit shell's font, the English face applies only when the file named a face.
const char* CQzEdit::GetFontName()
{
    if (g_szEditDrawFace[0])
        return g_szEditDrawFace;
    const bool bRead = ReadFontIniFace(g_szEditDrawFace, kFaceBytes, kSource, __LINE__);
    if (!bRead || !g_szEditDrawFace[0])
        QzPlatform::CopyText(g_szEditDrawFace, kFaceBytes, "NULL");
    else if (std::strcmp(QzPlatform::GetGameData().GetLanguageName(), "English") == 0)
        QzPlatform::CopyText(g_szEditDrawFace, kFaceBytes, "Monaco");
    return g_szEditDrawFace;
}

void CQzEdit::ForgetFontName()
{
    g_szEditDrawFace[0] = '\0';
}

bool CQzEdit::IsEmotionCode(const char* pszText, int nPos, int nLen)
{
    return IsEmotionCodeAt(pszText, nPos, nLen);
}

bool CQzEdit::IsDBCSTrail(const char* pszText, int nPos)
{
    if (!pszText || nPos <= 0)
        return false;
    int i = 0;
    while (i < nPos && pszText[i])
    {
        if (static_cast<unsigned char>(pszText[i]) < 0x80)
        {
            ++i;
            continue;
        }
        if (!pszText[i + 1])
            return false;
        if (i + 1 == nPos)
            return true;
        i += 2;
    }
    return false;
}

bool CQzEdit::IsDBCSTrailW(const wchar_t*, int)
{
    return false;
}

} // namespace QzGui
