#include "platform/system/edit/EditWindowProc.h"

#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinEdit.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/edit/EditControl.h"
#include "platform/system/edit/EditKeys.h"
#include "platform/system/window/WindowProcCaller.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <string>
#include <vector>

namespace QzPlatform
{

namespace
{

constexpr int kWheelLines = 3;
constexpr WORD kMaxPackedPosition = 0xFFFF;

// Dialog codes of WM_GETDLGCODE.
constexpr LRESULT kDlgWantArrows = 0x0001;
constexpr LRESULT kDlgWantAllKeys = 0x0004;
constexpr LRESULT kDlgHasSetSel = 0x0008;
constexpr LRESULT kDlgWantChars = 0x0080;

// The window's control lives in its extra bytes, as Windows keeps an edit control's data.
CEditControl* ControlOf(HWND hwnd)
{
    const HostedWindow* window = CHostedSystem::Instance().Windows().Find(hwnd);
    CEditControl* edit = nullptr;
    if (!window || !window->ReadExtra(0, &edit, sizeof(edit)))
        return nullptr;
    return edit;
}

bool Attach(HWND hwnd, CEditControl* edit)
{
    HostedWindow* window = CHostedSystem::Instance().Windows().Find(hwnd);
    return window && window->WriteExtra(0, &edit, sizeof(edit));
}

// Holds the control alive for one message; deletes it after the message that saw its window
// destroyed.
class BusyScope
{
public:
    explicit BusyScope(CEditControl& edit) : m_edit(edit) { m_edit.Enter(); }
    ~BusyScope()
    {
        if (m_edit.Leave())
            delete &m_edit;
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

private:
    CEditControl& m_edit;
};

LRESULT OnNcCreate(HWND hwnd, WPARAM wParam, LPARAM lParam)
{
    const auto* cs = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    if (!cs)
        return FALSE;
    auto* edit = new CEditControl(hwnd, static_cast<DWORD>(cs->style));
    if (!Attach(hwnd, edit))
    {
        delete edit;
        return FALSE;
    }
    return DefWindowProcW(hwnd, WM_NCCREATE, wParam, lParam);
}

// The title of CREATESTRUCT is the first text, without notifications.
LRESULT OnCreate(CEditControl& edit, LPARAM lParam)
{
    const auto* cs = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    if (cs && cs->lpszName && cs->lpszName[0] != 0xFFFF)
        edit.SetWindowText(cs->lpszName, false);
    return 0;
}

LRESULT OnNcDestroy(CEditControl& edit, HWND hwnd)
{
    Attach(hwnd, nullptr);
    edit.MarkDead();
    return 0;
}

LRESULT CopyText(const std::wstring& text, WPARAM capacity, LPARAM buffer)
{
    if (capacity == 0 || !buffer)
        return 0;
    const size_t length = std::min<size_t>(text.size(), capacity - 1);
    auto* out = reinterpret_cast<wchar_t*>(buffer);
    std::wmemcpy(out, text.data(), length);
    out[length] = L'\0';
    return static_cast<LRESULT>(length);
}

// EM_GETSEL: the ends through the two pointers when given; packed unless one passes 65535.
LRESULT GetSel(const CEditText& text, WPARAM startOut, LPARAM endOut)
{
    const auto start = static_cast<DWORD>(text.SelStart());
    const auto end = static_cast<DWORD>(text.SelEnd());
    if (startOut)
        *reinterpret_cast<DWORD*>(startOut) = start;
    if (endOut)
        *reinterpret_cast<DWORD*>(endOut) = end;
    if (start > kMaxPackedPosition || end > kMaxPackedPosition)
        return -1;
    return MAKELONG(start, end);
}

// EM_GETLINE: the size in characters is in the first 16-bit word of the buffer; a null follows
// the line only when there is room for it, and is not counted.
LRESULT GetLine(CEditControl& edit, WPARAM line, LPARAM buffer)
{
    const CEditLayout& layout = edit.Layout();
    const size_t index = edit.IsMultiLine() ? static_cast<size_t>(line) : 0;
    if (!buffer || index >= layout.LineCount())
        return 0;
    WORD size = 0;
    std::memcpy(&size, reinterpret_cast<const void*>(buffer), sizeof(size));
    const EditLine& info = layout.Line(index);
    const size_t length = std::min<size_t>(info.length, size);
    auto* out = reinterpret_cast<wchar_t*>(buffer);
    std::wmemcpy(out, edit.Text().Text().data() + info.start, length);
    if (length < size)
        out[length] = L'\0';
    return static_cast<LRESULT>(length);
}

// A single-line window answers 0 for any line.
LRESULT LineIndex(CEditControl& edit, WPARAM wParam)
{
    const CEditLayout& layout = edit.Layout();
    const int requested = static_cast<int>(wParam);
    if (!edit.IsMultiLine())
        return 0;
    const size_t line =
        requested == -1 ? layout.LineOfChar(edit.Text().Caret()) : static_cast<size_t>(requested);
    if (requested < -1 || line >= layout.LineCount())
        return -1;
    return static_cast<LRESULT>(layout.Line(line).start);
}

// By character index; -1: the characters on the selection's lines that are not selected. A
// single-line window answers the length of its text; an index past the end gives 0.
LRESULT LineLength(CEditControl& edit, WPARAM wParam)
{
    const CEditLayout& layout = edit.Layout();
    const CEditText& text = edit.Text();
    const int index = static_cast<int>(wParam);
    const bool pastEnd = index < -1 || (index >= 0 && static_cast<size_t>(index) > text.Length());
    if (pastEnd)
        return 0;
    if (!edit.IsMultiLine())
        return static_cast<LRESULT>(text.Length());
    if (index == -1)
    {
        const EditLine& first = layout.Line(layout.LineOfChar(text.SelStart()));
        const EditLine& last = layout.Line(layout.LineOfChar(text.SelEnd()));
        return static_cast<LRESULT>(
            (text.SelStart() - first.start) +
            (last.start + last.length - std::min(text.SelEnd(), last.start + last.length)));
    }
    return static_cast<LRESULT>(layout.Line(layout.LineOfChar(static_cast<size_t>(index))).length);
}

LRESULT LineFromChar(CEditControl& edit, WPARAM wParam)
{
    const int index = static_cast<int>(wParam);
    const size_t at = index < 0 ? edit.Text().SelStart() : static_cast<size_t>(index);
    return static_cast<LRESULT>(edit.Layout().LineOfChar(at));
}

LRESULT PosFromChar(CEditControl& edit, WPARAM wParam)
{
    if (wParam >= edit.Text().Length())
        return -1;
    const POINT pt = edit.PosFromChar(static_cast<size_t>(wParam));
    return MAKELONG(pt.x, pt.y);
}

// A point outside the window gives 65535 for both halves.
LRESULT CharFromPos(CEditControl& edit, LPARAM lParam)
{
    const POINT pt = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    RECT client = {0, 0, 0, 0};
    GetClientRect(edit.Window(), &client);
    if (!PtInRect(&client, pt))
        return MAKELONG(kMaxPackedPosition, kMaxPackedPosition);
    size_t line = 0;
    const size_t index = edit.CharFromPos(pt.x, pt.y, &line);
    return MAKELONG(index, line);
}

LRESULT GetRect(CEditControl& edit, LPARAM lParam)
{
    if (lParam)
        *reinterpret_cast<RECT*>(lParam) = edit.FormatRect();
    return 0;
}

LRESULT ReplaceSel(CEditControl& edit, WPARAM canUndo, LPARAM lParam)
{
    const std::wstring text = lParam ? reinterpret_cast<LPCWSTR>(lParam) : L"";
    edit.InsertText(text, {canUndo != 0, true});
    return 0;
}

LRESULT SetReadOnly(CEditControl& edit, WPARAM wParam)
{
    edit.SetReadOnly(wParam != 0);
    if (HostedWindow* window = CHostedSystem::Instance().Windows().Find(edit.Window()))
        window->style = wParam ? (window->style | ES_READONLY) : (window->style & ~ES_READONLY);
    return TRUE;
}

LRESULT SetPasswordChar(CEditControl& edit, WPARAM wParam)
{
    if (edit.IsMultiLine())
        return 0;
    edit.SetPasswordChar(static_cast<wchar_t>(wParam));
    if (HostedWindow* window = CHostedSystem::Instance().Windows().Find(edit.Window()))
        window->style = wParam ? (window->style | ES_PASSWORD) : (window->style & ~ES_PASSWORD);
    return 0;
}

LRESULT SetImeStatus(CEditControl& edit, WPARAM kind, LPARAM status)
{
    if (kind != EMSIS_COMPOSITIONSTRING)
        return 0;
    const DWORD previous = edit.ImeStatus();
    edit.SetImeStatus(static_cast<DWORD>(status));
    return previous;
}

// With EIMES_GETCOMPSTRATONCE the result string goes in at once; otherwise the default window
// procedure makes it WM_IME_CHAR and then WM_CHAR messages.
LRESULT OnImeComposition(CEditControl& edit, HWND hwnd, WPARAM wParam, LPARAM lParam)
{
    if (!(lParam & GCS_RESULTSTR) || !(edit.ImeStatus() & EIMES_GETCOMPSTRATONCE))
        return DefWindowProcW(hwnd, WM_IME_COMPOSITION, wParam, lParam);
    const HIMC himc = ImmGetContext(hwnd);
    const LONG bytes = ImmGetCompositionStringW(himc, GCS_RESULTSTR, nullptr, 0);
    std::wstring result(bytes > 0 ? static_cast<size_t>(bytes) / sizeof(wchar_t) : 0, L'\0');
    if (!result.empty())
        ImmGetCompositionStringW(himc, GCS_RESULTSTR, &result[0],
                                 static_cast<DWORD>(result.size() * sizeof(wchar_t)));
    ImmReleaseContext(hwnd, himc);
    if (!edit.IsReadOnly() && !result.empty())
        edit.InsertText(result, EditInsert());
    return 0;
}

// Three lines a notch; the view's move tells the parent (EN_VSCROLL).
LRESULT OnMouseWheel(CEditControl& edit, WPARAM wParam)
{
    const int lines = -GET_WHEEL_DELTA_WPARAM(wParam) * kWheelLines / WHEEL_DELTA;
    if (edit.IsMultiLine())
        edit.ScrollLines(lines, 0);
    return 0;
}

// EM_SCROLL: TRUE in the high word and the lines moved in the low word.
LRESULT Scroll(CEditControl& edit, WPARAM wParam)
{
    if (!edit.IsMultiLine() || wParam > SB_PAGEDOWN)
        return FALSE;
    const LONG_PTR moved = edit.ScrollVertical(static_cast<int>(wParam), 0);
    return MAKELONG(moved, TRUE);
}

LRESULT DialogCode(const CEditControl& edit)
{
    const LRESULT code = kDlgWantChars | kDlgHasSetSel | kDlgWantArrows;
    return edit.IsMultiLine() ? code | kDlgWantAllKeys : code;
}

// TRUE, with something to undo or not.
LRESULT OnUndo(CEditControl& edit)
{
    edit.Undo();
    return TRUE;
}

LRESULT HandleEditMessage(CEditControl& edit, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg)
    {
    case EM_GETSEL:
        return GetSel(edit.Text(), wParam, lParam);
    case EM_SETSEL:
        edit.SetSelFromMessage(static_cast<LONG_PTR>(wParam), lParam);
        return 0;
    case EM_GETRECT:
        return GetRect(edit, lParam);
    case EM_SETRECT:
    case EM_SETRECTNP:
        edit.SetFormatRect(reinterpret_cast<const RECT*>(lParam));
        return 0;
    case EM_SCROLL:
        return Scroll(edit, wParam);
    case EM_LINESCROLL:
        if (!edit.IsMultiLine())
            return FALSE;
        edit.ScrollLines(static_cast<int>(lParam), static_cast<int>(wParam));
        return TRUE;
    case EM_SCROLLCARET:
        edit.ScrollCaret();
        return TRUE;
    case EM_GETMODIFY:
        return edit.IsModified();
    case EM_SETMODIFY:
        edit.SetModified(wParam != 0);
        return 0;
    case EM_GETLINECOUNT:
        return static_cast<LRESULT>(edit.Layout().LineCount());
    case EM_LINEINDEX:
        return LineIndex(edit, wParam);
    case EM_LINELENGTH:
        return LineLength(edit, wParam);
    case EM_REPLACESEL:
        return ReplaceSel(edit, wParam, lParam);
    case EM_GETLINE:
        return GetLine(edit, wParam, lParam);
    case EM_LIMITTEXT:
        edit.SetLimit(static_cast<UINT>(wParam));
        return 0;
    case EM_GETLIMITTEXT:
        return static_cast<LRESULT>(edit.Limit());
    case EM_CANUNDO:
        return edit.CanUndo();
    case EM_UNDO:
        return OnUndo(edit);
    case EM_LINEFROMCHAR:
        return LineFromChar(edit, wParam);
    case EM_EMPTYUNDOBUFFER:
        edit.EmptyUndo();
        return 0;
    case EM_GETFIRSTVISIBLELINE:
        return static_cast<LRESULT>(edit.IsMultiLine() ? edit.TopLine() : edit.FirstVisibleChar());
    case EM_SETREADONLY:
        return SetReadOnly(edit, wParam);
    case EM_SETPASSWORDCHAR:
        return SetPasswordChar(edit, wParam);
    case EM_GETPASSWORDCHAR:
        return static_cast<LRESULT>(edit.PasswordChar());
    case EM_SETMARGINS:
        edit.SetMargins(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        return 0;
    case EM_GETMARGINS:
        return MAKELONG(edit.LeftMargin(), edit.RightMargin());
    case EM_POSFROMCHAR:
        return PosFromChar(edit, wParam);
    case EM_CHARFROMPOS:
        return CharFromPos(edit, lParam);
    case EM_SETIMESTATUS:
        return SetImeStatus(edit, wParam, lParam);
    case EM_GETIMESTATUS:
        return wParam == EMSIS_COMPOSITIONSTRING ? edit.ImeStatus() : 0;
    default:
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    }
}

LRESULT Handle(CEditControl& edit, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg)
    {
    case WM_CREATE:
        return OnCreate(edit, lParam);
    case WM_NCDESTROY:
        return OnNcDestroy(edit, hwnd);
    case WM_SETTEXT:
        edit.SetWindowText(lParam ? reinterpret_cast<LPCWSTR>(lParam) : L"");
        return TRUE;
    case WM_GETTEXT:
        return CopyText(edit.Text().Text(), wParam, lParam);
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(edit.Text().Length());
    case WM_SETFONT:
        edit.SetFont(reinterpret_cast<HFONT>(wParam));
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(edit.Font());
    case WM_SIZE:
        edit.OnSize();
        return 0;
    case WM_SETFOCUS:
        edit.OnSetFocus();
        return 0;
    case WM_KILLFOCUS:
        edit.OnKillFocus();
        return 0;
    case WM_KEYDOWN:
        CEditKeys::OnKeyDown(edit, wParam);
        return 0;
    case WM_CHAR:
        CEditKeys::OnChar(edit, static_cast<wchar_t>(wParam));
        return 0;
    case WM_LBUTTONDOWN:
        edit.OnButtonDown(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam), (wParam & MK_SHIFT) != 0);
        return 0;
    case WM_LBUTTONDBLCLK:
        edit.OnDoubleClick(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    case WM_MOUSEMOVE:
        if (wParam & MK_LBUTTON)
            edit.OnMouseMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
        return 0;
    case WM_LBUTTONUP:
        edit.OnButtonUp();
        return 0;
    case WM_MOUSEWHEEL:
        return OnMouseWheel(edit, wParam);
    case WM_VSCROLL:
        if (edit.IsMultiLine())
            edit.ScrollVertical(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_HSCROLL:
        if (edit.IsMultiLine())
            edit.ScrollHorizontal(LOWORD(wParam));
        return 0;
    case WM_COPY:
        edit.Copy();
        return 0;
    case WM_CUT:
        edit.Cut();
        return 0;
    case WM_PASTE:
        edit.Paste();
        return 0;
    case WM_CLEAR:
        edit.Clear();
        return 0;
    case WM_UNDO:
        return OnUndo(edit);
    case WM_GETDLGCODE:
        return DialogCode(edit);
    case WM_IME_COMPOSITION:
        return OnImeComposition(edit, hwnd, wParam, lParam);
    default:
        return HandleEditMessage(edit, hwnd, msg, wParam, lParam);
    }
}

} // namespace

void CEditWindowProc::Register(CWindowClassTable& classes)
{
    classes.RegisterSystemClass(L"EDIT", AnsiProc, WideProc, sizeof(CEditControl*));
}

LRESULT CALLBACK CEditWindowProc::WideProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_NCCREATE)
        return OnNcCreate(hwnd, wParam, lParam);
    CEditControl* edit = ControlOf(hwnd);
    if (!edit)
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    BusyScope busy(*edit);
    return Handle(*edit, hwnd, msg, wParam, lParam);
}

// Text, characters and the edit messages that carry them are converted on the way.
LRESULT CALLBACK CEditWindowProc::AnsiProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return CWindowProcCaller::Call(WindowProcRef::Single(WideProc, true), false, hwnd, msg, wParam,
                                   lParam);
}

} // namespace QzPlatform
