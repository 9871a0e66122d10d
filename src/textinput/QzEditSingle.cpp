#include "textinput/QzEditSingle.h"

#include "framework/QzGuiHelper.h"
#include "framework/QzGuiMgr.h"
#include "framework/QzMsg.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAssert.h"
#include "platform/services/QzGameData.h"
#include "platform/services/QzText.h"
#include "textinput/QzEdit.h"
#include "textinput/QzFontIni.h"

#include <cstring>

namespace QzGui
{

CQzEditSingle* g_pQzEditSingle = nullptr;

namespace
{

constexpr const char* kSource = "QzEditSingle";

constexpr DWORD kSingleLineStyle = WS_CHILD | ES_AUTOHSCROLL;
constexpr DWORD kMultiLineStyle = WS_CHILD | ES_MULTILINE;

// The font of the system windows is always this high, whatever ini/font.ini says.
constexpr int kEditFontHeight = 14;
constexpr size_t kFaceBytes = 260;
// Wide text taken from the window for the limit test.
constexpr int kLimitTextChars = 1024;
// The composition window reaches this far right of the caret's column and below the box.
constexpr int kCompositionRight = 300;
constexpr int kCompositionBelow = 100;
constexpr int kCompositionCharSize = 12;

enum : WPARAM
{
    kCharBackspace = 8,
    kCharEnter = 13,
    kCharSpace = 32,
    kKeyUp = VK_UP,
    kKeyDown = VK_DOWN,
};

// WM_COMMAND that the multi-line window posts to the host window for a character typed while no
// box is bound (the id of an OK button).
constexpr WPARAM kCommandOk = 1;

// The procedures the system windows had before the shell replaced them.
WNDPROC g_pfnSingleLineProc = nullptr;
WNDPROC g_pfnMultiLineProc = nullptr;

// The face of the edit font, read from ini/font.ini once per process.
char g_szEditFontFace[kFaceBytes] = "";

void LoadEditFontFace()
{
    if (!ReadFontIniFace(g_szEditFontFace, kFaceBytes, kSource, __LINE__) || !g_szEditFontFace[0])
        QzPlatform::CopyText(g_szEditFontFace, kFaceBytes, "NULL");
    if (std::strcmp(QzPlatform::GetGameData().GetLanguageName(), "English") == 0)
        QzPlatform::CopyText(g_szEditFontFace, kFaceBytes, "Monaco");
}

bool IsMouseMessage(UINT message)
{
    return message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN || message == WM_LBUTTONUP;
}

bool IsImeMessage(UINT message)
{
    return message == WM_IME_COMPOSITION || message == WM_IME_SETCONTEXT ||
           message == WM_IME_NOTIFY;
}

} // namespace

// ---------------------------------------------------------------------------------------------
// Lifetime

CQzEditSingle* CQzEditSingle::AcquireInstance()
{
    if (!g_pQzEditSingle)
        g_pQzEditSingle = new CQzEditSingle;
    ++g_pQzEditSingle->m_nRefCount;
    return g_pQzEditSingle;
}

void CQzEditSingle::ReleaseInstance()
{
    if (!g_pQzEditSingle)
        return;
    if (--g_pQzEditSingle->m_nRefCount > 0)
        return;
    delete g_pQzEditSingle;
    g_pQzEditSingle = nullptr;
}

CQzEditSingle::~CQzEditSingle()
{
    if (m_hFont)
        DeleteObject(m_hFont);
    RestoreWindowProcs();
}

// The windows outlive the shell (they go with their parent): they become plain edit windows
// again, so that their own procedure sees everything up to their destruction.
void CQzEditSingle::RestoreWindowProcs()
{
    if (IsWindow(m_hSingleLineWnd) && g_pfnSingleLineProc)
        SetWindowLongPtrA(m_hSingleLineWnd, GWLP_WNDPROC,
                          reinterpret_cast<LONG_PTR>(g_pfnSingleLineProc));
    if (IsWindow(m_hMultiLineWnd) && g_pfnMultiLineProc)
        SetWindowLongPtrA(m_hMultiLineWnd, GWLP_WNDPROC,
                          reinterpret_cast<LONG_PTR>(g_pfnMultiLineProc));
}

bool CQzEditSingle::Create(HINSTANCE hInstance, HWND hParentWnd, CQzGuiMgr* pGuiMgr)
{
    if (!hInstance || !hParentWnd || !pGuiMgr)
        return false;
    m_hInstance = hInstance;
    m_hParentWnd = hParentWnd;
    m_pGuiMgr = pGuiMgr;
    m_hSingleLineWnd = CreateWindowExW(0, L"EDIT", L"", kSingleLineStyle, 0, 0, 0, 0, hParentWnd,
                                       nullptr, hInstance, nullptr);
    m_hMultiLineWnd = CreateWindowExW(0, L"EDIT", L"", kMultiLineStyle, 0, 0, 0, 0, hParentWnd,
                                      nullptr, hInstance, nullptr);
    if (!m_hSingleLineWnd || !m_hMultiLineWnd)
        return false;
    // The host window keeps the keyboard until an edit box is focused: its keys belong to the
    // game and to extended edit boxes.
    m_hEditWnd = m_hSingleLineWnd;
    g_pfnSingleLineProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
        m_hSingleLineWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SingleLineEditProc)));
    g_pfnMultiLineProc = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
        m_hMultiLineWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&MultiLineEditProc)));
    m_bCreated = true;
    return true;
}

// ---------------------------------------------------------------------------------------------
// Binding

CQzEdit* CQzEditSingle::SetActiveEdit(CQzEdit* pEdit)
{
    if (!m_pGuiMgr || !pEdit)
        return nullptr;
    CQzEdit* pBefore = m_pActiveEdit;
    if (pEdit != pBefore)
    {
        if (pBefore)
            ReleaseActiveEdit();
        m_pActiveEdit = pEdit;
        ResumeIme();
        ApplyBoxStyle(pEdit);
        if (HWND hHostWnd = pEdit->GetHostWnd())
            SetParent(m_hEditWnd, hHostWnd);
        LimitText(pEdit->GetLimitText() > 0 ? pEdit->GetLimitText() : 0);
        SetFont(GetEditFont(), true);
        SetReadOnly(pEdit->GetReadOnly() != 0);
        ::EnableWindow(m_hEditWnd, pEdit->IsWindowEnabled());
        FitToActiveEdit();
        // Disabling the window may have taken the focus and with it the binding.
        if (m_pActiveEdit == pEdit)
            NotifyDialog(pEdit, QZ_EN_SETFOCUS);
    }
    ::SetFocus(m_hEditWnd);
    return pBefore;
}

// The number-only switch goes into the style of the window of the box's kind; its other style
// bits (single-line or multi-line) are its own and stay.
void CQzEditSingle::ApplyBoxStyle(CQzEdit* pEdit)
{
    m_hEditWnd = pEdit->IsMultiLineEdit() ? m_hMultiLineWnd : m_hSingleLineWnd;
    LONG_PTR nStyle = GetWindowLongPtrA(m_hEditWnd, GWL_STYLE);
    if (pEdit->IsNumberOnly())
        nStyle |= ES_NUMBER;
    else
        nStyle &= ~static_cast<LONG_PTR>(ES_NUMBER);
    SetWindowLongPtrA(m_hEditWnd, GWL_STYLE, nStyle);
}

void CQzEditSingle::ReleaseActiveEdit()
{
    CQzEdit* pEdit = m_pActiveEdit;
    if (!pEdit)
        return;
    // What was typed since the box last drew must not be lost when the window takes another
    // box's text.
    pEdit->SyncFromShell();
    if (m_pActiveEdit != pEdit)
        return;
    NotifyDialog(pEdit, QZ_EN_KILLFOCUS);
    if (m_pActiveEdit == pEdit)
        ClearActiveEdit();
}

void CQzEditSingle::ClearActiveEdit()
{
    m_pActiveEdit = nullptr;
    SuspendIme();
}

void CQzEditSingle::ForgetEdit(CQzEdit* pEdit)
{
    if (!IsActiveEdit(pEdit))
        return;
    ClearActiveEdit();
    const HWND hFocus = GetFocus();
    if (hFocus && (hFocus == m_hSingleLineWnd || hFocus == m_hMultiLineWnd))
        ::SetFocus(GetParent(hFocus));
}

void CQzEditSingle::GiveKeyboardToHost()
{
    const HWND hFocus = GetFocus();
    if (hFocus && (hFocus == m_hSingleLineWnd || hFocus == m_hMultiLineWnd))
        ::SetFocus(GetParent(hFocus));
    else
        ReleaseActiveEdit();
}

HWND CQzEditSingle::GetActiveEditWnd() const
{
    if (!m_pActiveEdit)
        return nullptr;
    return m_pActiveEdit->IsMultiLineEdit() ? m_hMultiLineWnd : m_hSingleLineWnd;
}

void CQzEditSingle::FitToActiveEdit()
{
    if (!m_pActiveEdit || !IsWindow(m_hEditWnd))
        return;
    ::MoveWindow(m_hEditWnd, 0, 0, m_pActiveEdit->GetWidth(), m_pActiveEdit->GetHeight(), FALSE);
}

void CQzEditSingle::NotifyDialog(CQzEdit* pEdit, WORD nCode)
{
    CQzBaseWindow* pDialog = pEdit ? pEdit->GetParent() : nullptr;
    if (pDialog)
        pDialog->SendMessage(WM_COMMAND, MakeNotifyWParam(nCode, pEdit->GetId()),
                             pEdit->GetFullId());
}

// ---------------------------------------------------------------------------------------------
// The window procedures

LRESULT CALLBACK CQzEditSingle::SingleLineEditProc(HWND hWnd, UINT message, WPARAM wParam,
                                                   LPARAM lParam)
{
    if (!g_pQzEditSingle)
        return 1;
    return g_pQzEditSingle->EditProc(false, hWnd, message, wParam, lParam);
}

LRESULT CALLBACK CQzEditSingle::MultiLineEditProc(HWND hWnd, UINT message, WPARAM wParam,
                                                  LPARAM lParam)
{
    if (!g_pQzEditSingle)
        return 1;
    return g_pQzEditSingle->EditProc(true, hWnd, message, wParam, lParam);
}

LRESULT CQzEditSingle::PassOn(bool bMultiLine, HWND hWnd, UINT message, WPARAM wParam,
                              LPARAM lParam)
{
    WNDPROC pfnOld = bMultiLine ? g_pfnMultiLineProc : g_pfnSingleLineProc;
    return CallWindowProcA(pfnOld, hWnd, message, wParam, lParam);
}

LRESULT CQzEditSingle::EditProc(bool bMultiLine, HWND hWnd, UINT message, WPARAM wParam,
                                LPARAM lParam)
{
    switch (message)
    {
    case WM_KILLFOCUS:
        return OnKillFocus(bMultiLine, hWnd, wParam, lParam);
    case WM_KEYDOWN:
        return OnKeyDown(bMultiLine, hWnd, wParam, lParam);
    case WM_KEYUP:
        Forward(bMultiLine, message, wParam, lParam);
        return PassOn(bMultiLine, hWnd, message, wParam, lParam);
    case WM_CHAR:
        return OnChar(bMultiLine, hWnd, wParam, lParam);
    case WM_PASTE:
        if (m_pActiveEdit && m_pActiveEdit->IsNumberOnly())
            return 1;
        return PassOn(bMultiLine, hWnd, message, wParam, lParam);
    default:
        break;
    }
    if (IsImeMessage(message) && !m_pActiveEdit)
        SuspendIme();
    if (IsMouseMessage(message))
        return OnMouse(bMultiLine, hWnd, message, wParam, lParam);
    return PassOn(bMultiLine, hWnd, message, wParam, lParam);
}

// The focus moving between the two windows is the binding moving (SetActiveEdit has told the
// dialogs); the focus leaving both unbinds the box.
LRESULT CQzEditSingle::OnKillFocus(bool bMultiLine, HWND hWnd, WPARAM wParam, LPARAM lParam)
{
    const HWND hNewFocus = GetFocus();
    const bool bStaysInShell = hNewFocus == m_hSingleLineWnd || hNewFocus == m_hMultiLineWnd;
    if (m_pActiveEdit && !bStaysInShell)
        ReleaseActiveEdit();
    return PassOn(bMultiLine, hWnd, WM_KILLFOCUS, wParam, lParam);
}

// The single-line window offers keys to the GUI helper's debug hot keys first. The bound box
// sees every key (its dialog scrolls on Up and Down) before the system window moves the caret.
LRESULT CQzEditSingle::OnKeyDown(bool bMultiLine, HWND hWnd, WPARAM wParam, LPARAM lParam)
{
    UpdateCompositionWindow();
    CQzGuiHelper* pHelper = CQzGuiHelper::Instance();
    if (!bMultiLine && pHelper && pHelper->OnKeyMessage(static_cast<UINT>(wParam)))
        return 1;
    if (m_pActiveEdit)
        m_pActiveEdit->SendMessage(WM_KEYDOWN, wParam, lParam);
    return PassOn(bMultiLine, hWnd, WM_KEYDOWN, wParam, lParam);
}

// A character typed reaches the bound box first (its own rules), then the filters of the
// window, then the system procedure. Characters the library posts itself carry lParam 0 and go
// straight through.
LRESULT CQzEditSingle::OnChar(bool bMultiLine, HWND hWnd, WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0)
        return PassOn(bMultiLine, hWnd, WM_CHAR, wParam, lParam);
    if (!m_pActiveEdit)
    {
        if (bMultiLine)
            ::PostMessageA(m_hParentWnd, WM_COMMAND, kCommandOk, lParam);
        return 1;
    }
    CQzEdit* pEdit = m_pActiveEdit;
    pEdit->SendMessage(WM_CHAR, wParam, lParam);
    if (m_pActiveEdit != pEdit)
        return 0;
    if (!bMultiLine)
    {
        if (wParam == kCharSpace && pEdit->IsNoSpace())
            return 0;
        if (wParam != kCharBackspace && IsAtLimit())
            return 0;
    }
    Forward(bMultiLine, WM_CHAR, wParam, lParam);
    // Enter in a multi-line box makes exactly the one line break the box inserted itself.
    if (bMultiLine && wParam == kCharEnter)
        return 0;
    return PassOn(bMultiLine, hWnd, WM_CHAR, wParam, lParam);
}

bool CQzEditSingle::IsAtLimit()
{
    const unsigned nLimit = GetLimitText();
    if (nLimit == 0)
        return false;
    // A character takes a byte or more, so a text of nLimit characters is at the limit: no more
    // than that is read.
    wchar_t szText[kLimitTextChars];
    szText[0] = 0;
    GetWindowTextW(szText,
                   nLimit < kLimitTextChars ? static_cast<int>(nLimit) + 1 : kLimitTextChars);
    return QzPlatform::WideTextToUtf8(szText).size() >= nLimit;
}

void CQzEditSingle::Forward(bool bMultiLine, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_pActiveEdit || m_pActiveEdit->IsMultiLineEdit() != bMultiLine)
        return;
    const bool bForwarded =
        wParam == kKeyUp || wParam == kKeyDown || (bMultiLine && wParam == kCharEnter);
    if (bForwarded && m_pActiveEdit->GetParent())
        m_pActiveEdit->GetParent()->SendMessage(message, wParam, lParam);
}

// Mouse positions come in the host window's coordinates and go on relative to the bound box;
// a button-up in the single-line window is also told to the box's dialog.
LRESULT CQzEditSingle::OnMouse(bool bMultiLine, HWND hWnd, UINT message, WPARAM wParam,
                               LPARAM lParam)
{
    if (!m_pActiveEdit)
        return PassOn(bMultiLine, hWnd, message, wParam, lParam);
    const int x = (LOWORD(lParam) - m_pActiveEdit->GetX()) & 0xFFFF;
    const int y = (HIWORD(lParam) - m_pActiveEdit->GetY()) & 0xFFFF;
    lParam = MAKELPARAM(x, y);
    if (!bMultiLine && message == WM_LBUTTONUP && m_pActiveEdit->GetParent())
        m_pActiveEdit->GetParent()->SendMessage(QZ_WM_EDITBUTTONUP, wParam, lParam);
    return PassOn(bMultiLine, hWnd, message, wParam, lParam);
}

// ---------------------------------------------------------------------------------------------
// IME

void CQzEditSingle::CloseImeOn(HWND hWnd, bool& bClosed)
{
    HIMC hImc = ImmGetContext(hWnd);
    if (!hImc)
        return;
    if (ImmGetOpenStatus(hImc))
    {
        ImmSetOpenStatus(hImc, FALSE);
        bClosed = true;
    }
    ImmReleaseContext(hWnd, hImc);
}

void CQzEditSingle::OpenImeOn(HWND hWnd, bool& bClosed)
{
    if (!bClosed)
        return;
    HIMC hImc = ImmGetContext(hWnd);
    if (!hImc)
        return;
    if (!ImmGetOpenStatus(hImc))
    {
        ImmSetOpenStatus(hImc, TRUE);
        bClosed = false;
    }
    ImmReleaseContext(hWnd, hImc);
}

void CQzEditSingle::SuspendIme()
{
    CloseImeOn(m_hSingleLineWnd, m_bImeClosedSingle);
    CloseImeOn(m_hMultiLineWnd, m_bImeClosedMulti);
}

void CQzEditSingle::ResumeIme()
{
    OpenImeOn(m_hSingleLineWnd, m_bImeClosedSingle);
    OpenImeOn(m_hMultiLineWnd, m_bImeClosedMulti);
}

void CQzEditSingle::DetachImeOn(HWND hWnd, HIMC& hSaved)
{
    if (!hSaved && IsWindow(hWnd))
        hSaved = ImmAssociateContext(hWnd, nullptr);
}

void CQzEditSingle::AttachImeOn(HWND hWnd, HIMC& hSaved)
{
    if (!hSaved)
        return;
    ImmAssociateContext(hWnd, hSaved);
    hSaved = nullptr;
}

void CQzEditSingle::EnableIme(bool bEnable)
{
    if (bEnable)
    {
        AttachImeOn(m_hSingleLineWnd, m_hSavedImcSingle);
        AttachImeOn(m_hMultiLineWnd, m_hSavedImcMulti);
        return;
    }
    DetachImeOn(m_hSingleLineWnd, m_hSavedImcSingle);
    DetachImeOn(m_hMultiLineWnd, m_hSavedImcMulti);
}

// The caret's column and line on the default character cell, from the box's screen rectangle.
void CQzEditSingle::UpdateCompositionWindow()
{
    if (!m_pActiveEdit)
        return;
    const RECT rcBox = m_pActiveEdit->GetScreenRect();
    int nStart = 0;
    int nEnd = 0;
    GetSel(&nStart, &nEnd);
    C3_SIZE cell = {0, 0};
    CMyBitmap::GetFontSize(cell);
    const int nLine = LineFromChar(nEnd);
    const int nFirstLength = LineLength(0);
    const int x = rcBox.left + (nEnd - nLine * nFirstLength) * cell.iWidth;
    const int y = rcBox.top + nLine * cell.iHeight;
    const int nCharWidth = CMyBitmap::GetFontWidth(nullptr, kCompositionCharSize, nullptr);

    COMPOSITIONFORM form = {};
    form.dwStyle = CFS_RECT;
    form.ptCurrentPos = {x, y};
    form.rcArea = {x, 0, rcBox.left + nEnd * nCharWidth + kCompositionRight,
                   rcBox.bottom + kCompositionBelow};
    const HWND hWnd = GetActiveEditWnd();
    HIMC hImc = ImmGetContext(hWnd);
    if (!hImc)
        return;
    ImmSetCompositionWindow(hImc, &form);
    ImmReleaseContext(hWnd, hImc);
}

// ---------------------------------------------------------------------------------------------
// Font

HFONT CQzEditSingle::GetEditFont()
{
    if (m_hFont)
        return m_hFont;
    if (!g_szEditFontFace[0])
        LoadEditFontFace();
    m_hFont = CreateFontA(kEditFontHeight, 0, 0, 0, 0, FALSE, FALSE, FALSE, GB2312_CHARSET, 0, 0,
                          ANTIALIASED_QUALITY, VARIABLE_PITCH, g_szEditFontFace);
    return m_hFont;
}

void CQzEditSingle::ForgetFontFace()
{
    g_szEditFontFace[0] = '\0';
}

// ---------------------------------------------------------------------------------------------
// Wrappers over the window in use

void CQzEditSingle::CheckEditWnd(int nLine) const
{
    if (!IsWindow(m_hEditWnd))
        QzPlatform::ReportAssert("::IsWindow(m_hEditWnd)", kSource, nLine);
}

LRESULT CQzEditSingle::SendW(UINT message, WPARAM wParam, LPARAM lParam, int nLine)
{
    CheckEditWnd(nLine);
    return SendMessageW(m_hEditWnd, message, wParam, lParam);
}

LRESULT CQzEditSingle::SendA(UINT message, WPARAM wParam, LPARAM lParam, int nLine)
{
    CheckEditWnd(nLine);
    return SendMessageA(m_hEditWnd, message, wParam, lParam);
}

int CQzEditSingle::GetWindowText(char* pszBuffer, int nMax)
{
    CheckEditWnd(__LINE__);
    return ::GetWindowTextA(m_hEditWnd, pszBuffer, nMax);
}

int CQzEditSingle::GetWindowTextW(wchar_t* pszBuffer, int nMax)
{
    CheckEditWnd(__LINE__);
    return ::GetWindowTextW(m_hEditWnd, pszBuffer, nMax < kLimitTextChars ? nMax : kLimitTextChars);
}

void CQzEditSingle::SetWindowText(const char* pszText)
{
    CheckEditWnd(__LINE__);
    ::SetWindowTextA(m_hEditWnd, pszText);
}

int CQzEditSingle::GetWindowTextLength()
{
    return ::GetWindowTextLengthW(m_hEditWnd);
}

int CQzEditSingle::GetLine(int nLine, LPSTR pBuffer)
{
    return static_cast<int>(
        SendA(EM_GETLINE, static_cast<WPARAM>(nLine), reinterpret_cast<LPARAM>(pBuffer), __LINE__));
}

// The narrow line goes through the ANSI form of EM_GETLINE: the buffer holds bytes.
int CQzEditSingle::GetLine(int nLine, char* pszBuffer, int nMax)
{
    if (!pszBuffer || nMax < static_cast<int>(sizeof(WORD)))
        return 0;
    const WORD wMax = static_cast<WORD>(nMax);
    std::memcpy(pszBuffer, &wMax, sizeof(wMax));
    return static_cast<int>(SendA(EM_GETLINE, static_cast<WPARAM>(nLine),
                                  reinterpret_cast<LPARAM>(pszBuffer), __LINE__));
}

BOOL CQzEditSingle::CanUndo()
{
    return static_cast<BOOL>(SendW(EM_CANUNDO, 0, 0, __LINE__));
}

int CQzEditSingle::GetLineCount()
{
    return static_cast<int>(SendW(EM_GETLINECOUNT, 0, 0, __LINE__));
}

BOOL CQzEditSingle::GetModify()
{
    return static_cast<BOOL>(SendW(EM_GETMODIFY, 0, 0, __LINE__));
}

void CQzEditSingle::SetModify(bool bModified)
{
    SendW(EM_SETMODIFY, bModified ? 1 : 0, 0, __LINE__);
}

void CQzEditSingle::GetRect(RECT* pRect)
{
    SendW(EM_GETRECT, 0, reinterpret_cast<LPARAM>(pRect), __LINE__);
}

DWORD CQzEditSingle::GetSel()
{
    return static_cast<DWORD>(SendW(EM_GETSEL, 0, 0, __LINE__));
}

void CQzEditSingle::GetSel(int* pStart, int* pEnd)
{
    DWORD dwStart = 0;
    DWORD dwEnd = 0;
    SendW(EM_GETSEL, reinterpret_cast<WPARAM>(&dwStart), reinterpret_cast<LPARAM>(&dwEnd),
          __LINE__);
    if (pStart)
        *pStart = static_cast<int>(dwStart);
    if (pEnd)
        *pEnd = static_cast<int>(dwEnd);
}

void CQzEditSingle::SetFont(HFONT hFont, bool bRedraw)
{
    SendW(WM_SETFONT, reinterpret_cast<WPARAM>(hFont), bRedraw ? 1 : 0, __LINE__);
}

uint64_t CQzEditSingle::GetActiveEditData() const
{
    return m_pActiveEdit ? m_pActiveEdit->GetEditData() : 0;
}

void CQzEditSingle::SetMargins(int nLeft, int nRight)
{
    SendW(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(nLeft, nRight), __LINE__);
}

DWORD CQzEditSingle::GetMargins()
{
    return static_cast<DWORD>(SendW(EM_GETMARGINS, 0, 0, __LINE__));
}

void CQzEditSingle::SetLimitText(unsigned nMax)
{
    SendW(EM_LIMITTEXT, nMax, 0, __LINE__);
}

void CQzEditSingle::LimitText(int nChars)
{
    SendW(EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0, __LINE__);
}

unsigned CQzEditSingle::GetLimitText()
{
    return static_cast<unsigned>(SendW(EM_GETLIMITTEXT, 0, 0, __LINE__));
}

POINT CQzEditSingle::PosFromChar(unsigned nIndex)
{
    const DWORD dwPos = static_cast<DWORD>(SendW(EM_POSFROMCHAR, nIndex, 0, __LINE__));
    return {static_cast<LONG>(LOWORD(dwPos)), static_cast<LONG>(HIWORD(dwPos))};
}

int CQzEditSingle::CharFromPos(POINT pt)
{
    return static_cast<int>(SendW(EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y), __LINE__));
}

int CQzEditSingle::LineFromChar(int nIndex)
{
    return static_cast<int>(SendW(EM_LINEFROMCHAR, static_cast<WPARAM>(nIndex), 0, __LINE__));
}

int CQzEditSingle::LineIndex(int nLine)
{
    return static_cast<int>(SendW(EM_LINEINDEX, static_cast<WPARAM>(nLine), 0, __LINE__));
}

int CQzEditSingle::LineLength(int nIndex)
{
    return static_cast<int>(SendW(EM_LINELENGTH, static_cast<WPARAM>(nIndex), 0, __LINE__));
}

void CQzEditSingle::LineScroll(int nLines, int nChars)
{
    SendW(EM_LINESCROLL, static_cast<WPARAM>(nChars), nLines, __LINE__);
}

// Narrow text: the ANSI form of the message.
void CQzEditSingle::ReplaceSel(const char* pszText, bool bCanUndo)
{
    SendA(EM_REPLACESEL, bCanUndo ? 1 : 0, reinterpret_cast<LPARAM>(pszText ? pszText : ""),
          __LINE__);
}

void CQzEditSingle::SetPasswordChar(char ch)
{
    SendA(EM_SETPASSWORDCHAR, static_cast<BYTE>(ch), 0, __LINE__);
}

char CQzEditSingle::GetPasswordChar()
{
    return static_cast<char>(SendA(EM_GETPASSWORDCHAR, 0, 0, __LINE__));
}

void CQzEditSingle::SetSel(DWORD dwSelection, bool bNoScroll)
{
    SendA(EM_SETSEL, LOWORD(dwSelection), HIWORD(dwSelection), __LINE__);
    if (!bNoScroll)
        SendW(EM_SCROLLCARET, 0, 0, __LINE__);
}

void CQzEditSingle::SetSel(int nStart, int nEnd, bool bNoScroll)
{
    SendW(EM_SETSEL, static_cast<WPARAM>(nStart), nEnd, __LINE__);
    if (!bNoScroll)
        SendW(EM_SCROLLCARET, 0, 0, __LINE__);
}

void CQzEditSingle::SetReadOnly(bool bReadOnly)
{
    SendW(EM_SETREADONLY, bReadOnly ? 1 : 0, 0, __LINE__);
}

int CQzEditSingle::GetFirstVisibleLine()
{
    return static_cast<int>(SendW(EM_GETFIRSTVISIBLELINE, 0, 0, __LINE__));
}

BOOL CQzEditSingle::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostMessageA(m_hEditWnd, message, wParam, lParam);
}

} // namespace QzGui
