#include "platform/system/edit/EditControl.h"

#include "platform/system/QzWinEdit.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/edit/EditClipboard.h"
#include "platform/system/gdi/QzGdiTable.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace QzPlatform
{

namespace
{

// The text limit a window starts with, and what a limit of 0 means for each kind.
constexpr UINT kDefaultLimit = 30000;
constexpr UINT kLargestSingleLineLimit = 0x7FFFFFFE;
constexpr UINT kLargestMultiLineLimit = 0xFFFFFFFF;
// The cell of the system font, which a window uses until it is given one.
constexpr EditCell kSystemCell = {6, 12};
// A single-line window scrolls at least this many cells when the caret leaves its view.
constexpr int kScrollStepCells = 10;

EditCell CellOfFont(HFONT font)
{
    const FontDescription* description = CQzGdiTable::Instance().FindFont(font);
    if (!description || description->height == 0)
        return kSystemCell;
    EditCell cell;
    cell.height = std::abs(description->height);
    cell.width = description->width > 0 ? description->width : std::max(cell.height / 2, 1);
    return cell;
}

bool IsLineBreakChar(wchar_t ch)
{
    return ch == L'\r' || ch == L'\n';
}

} // namespace

CEditControl::CEditControl(HWND hwnd, DWORD style)
    : m_hWnd(hwnd), m_bMultiLine((style & ES_MULTILINE) != 0),
      m_bAutoHScroll((style & ES_AUTOHSCROLL) != 0), m_bAutoVScroll((style & ES_AUTOVSCROLL) != 0),
      m_bWraps(m_bMultiLine && !(style & (ES_AUTOHSCROLL | WS_HSCROLL))),
      m_bReadOnly((style & ES_READONLY) != 0),
      m_chPassword((style & ES_PASSWORD) && !(style & ES_MULTILINE) ? L'*' : L'\0'),
      m_nLimit(kDefaultLimit), m_cell(kSystemCell)
{
}

DWORD CEditControl::LiveStyle() const
{
    return static_cast<DWORD>(GetWindowLongW(m_hWnd, GWL_STYLE));
}

const std::wstring& CEditControl::DisplayText(const std::wstring& text)
{
    if (!m_chPassword)
        return text;
    m_strMasked.assign(text.size(), m_chPassword);
    return m_strMasked;
}

const CEditLayout& CEditControl::Layout()
{
    if (!m_bLayoutValid)
    {
        m_layout.Build(DisplayText(m_text.Text()), m_cell, m_bMultiLine, WrapWidth());
        m_bLayoutValid = true;
    }
    return m_layout;
}

int CEditControl::ClientWidth() const
{
    RECT rc = {0, 0, 0, 0};
    GetClientRect(m_hWnd, &rc);
    return rc.right - rc.left;
}

int CEditControl::ClientHeight() const
{
    RECT rc = {0, 0, 0, 0};
    GetClientRect(m_hWnd, &rc);
    return rc.bottom - rc.top;
}

// The client rectangle less the margins, one line high for a single-line window and a whole
// number of lines (at least one) for a multi-line window.
RECT CEditControl::FormatRect() const
{
    if (m_bCustomRect)
        return m_rcCustom;
    RECT rc = {m_nLeftMargin, 0, std::max(ClientWidth() - m_nRightMargin, m_nLeftMargin), 0};
    const int lines = m_bMultiLine ? std::max(ClientHeight() / m_cell.height, 1) : 1;
    rc.bottom = lines * m_cell.height;
    return rc;
}

void CEditControl::SetFormatRect(const RECT* rect)
{
    m_bCustomRect = rect != nullptr;
    if (rect)
        m_rcCustom = *rect;
    Invalidate();
    ScrollCaret();
}

size_t CEditControl::VisibleLines() const
{
    const RECT rc = FormatRect();
    return static_cast<size_t>(std::max((rc.bottom - rc.top) / m_cell.height, 1));
}

int CEditControl::WrapWidth() const
{
    if (!m_bWraps)
        return 0;
    const RECT rc = FormatRect();
    return rc.right - rc.left;
}

void CEditControl::SetWindowText(const std::wstring& text, bool notify)
{
    m_text.SetText(text);
    m_undo.Empty();
    m_bModified = false;
    m_nScrollX = 0;
    m_nTopLine = 0;
    Invalidate();
    ScrollCaret();
    // Windows tells the parent of a single-line window only.
    if (!notify || m_bMultiLine || !Notify(EN_UPDATE))
        return;
    Notify(EN_CHANGE);
}

bool CEditControl::CutToLimit(std::wstring& text) const
{
    const size_t kept = m_text.Length() - (m_text.SelEnd() - m_text.SelStart());
    const size_t room = m_nLimit > kept ? m_nLimit - kept : 0;
    if (text.size() <= room)
        return false;
    text.resize(room);
    if (!text.empty() && text.back() == L'\r')
        text.pop_back(); // never half of a line break
    return true;
}

bool CEditControl::ChecksRoom() const
{
    return m_bMultiLine ? !m_bAutoVScroll : !m_bAutoHScroll;
}

// Whether the text with the selection replaced by text fits the window: its width for a
// single-line window without ES_AUTOHSCROLL, its lines for a multi-line one without
// ES_AUTOVSCROLL.
bool CEditControl::Fits(const std::wstring& text)
{
    std::wstring whole = m_text.Text();
    whole.replace(m_text.SelStart(), m_text.SelEnd() - m_text.SelStart(), text);
    CEditLayout trial = Layout(); // laid out again only from the change
    trial.Build(DisplayText(whole), m_cell, m_bMultiLine, WrapWidth());
    if (m_bMultiLine)
        return trial.LineCount() <= VisibleLines();
    const RECT rc = FormatRect();
    return trial.LineWidth(0) <= rc.right - rc.left;
}

// The longest beginning of text that fits; true when text was cut.
bool CEditControl::CutToRoom(std::wstring& text)
{
    if (!ChecksRoom() || text.empty() || Fits(text))
        return false;
    size_t low = 0;
    size_t high = text.size() - 1; // text.size() does not fit
    while (low < high)
    {
        const size_t middle = (low + high + 1) / 2;
        if (Fits(text.substr(0, middle)))
            low = middle;
        else
            high = middle - 1;
    }
    text.resize(low);
    if (!text.empty() && text.back() == L'\r')
        text.pop_back();
    return true;
}

bool CEditControl::InsertText(std::wstring text, const EditInsert& how)
{
    bool cut = how.honorLimit && CutToLimit(text);
    cut = (how.honorLimit && CutToRoom(text)) || cut;
    if (cut && !Notify(EN_MAXTEXT))
        return false;
    if (text.empty() && !m_text.HasSelection())
        return !cut;
    Changed(m_text.ReplaceSelection(text), how.canUndo);
    return !cut;
}

void CEditControl::DeleteRange(size_t start, size_t end)
{
    if (start >= end)
        return;
    m_text.SetSelection(start, end);
    Changed(m_text.ReplaceSelection(std::wstring()), true);
}

void CEditControl::Changed(const EditChange& change, bool canUndo)
{
    if (change.IsEmpty())
        return;
    if (canUndo)
        m_undo.Record(change);
    else
        m_undo.Empty();
    m_bModified = true;
    Invalidate();
    if (change.removed.size() > change.inserted.size())
        PullBackView();
    NotifyChange();
}

// EN_UPDATE once the text is laid out, the view brought to the caret (which may scroll), then
// EN_CHANGE.
void CEditControl::NotifyChange()
{
    if (!Notify(EN_UPDATE))
        return;
    ScrollCaret();
    Notify(EN_CHANGE);
}

// After a deletion a single-line view whose text now ends inside it shows as much as fits.
void CEditControl::PullBackView()
{
    if (m_bMultiLine)
        return;
    const RECT rc = FormatRect();
    const int textWidth = Layout().LineWidth(0);
    m_nScrollX = std::min(m_nScrollX, std::max(textWidth - (rc.right - rc.left), 0));
}

bool CEditControl::Undo()
{
    if (!m_undo.CanUndo())
        return false;
    m_undo.Undo(m_text);
    m_bModified = true;
    Invalidate();
    NotifyChange();
    return true;
}

void CEditControl::SetSelFromMessage(LONG_PTR start, LONG_PTR end)
{
    const size_t length = m_text.Length();
    const auto clamp = [length](LONG_PTR value)
    { return value < 0 ? length : std::min(static_cast<size_t>(value), length); };
    if (static_cast<int>(start) == -1)
    {
        m_text.SetSelection(m_text.Caret(), m_text.Caret());
        return;
    }
    m_text.SetSelection(clamp(static_cast<int>(start)), clamp(static_cast<int>(end)));
}

void CEditControl::MoveCaret(size_t index, bool extend)
{
    m_text.SetSelection(extend ? m_text.Anchor() : index, index);
    ScrollCaret();
}

void CEditControl::Select(size_t anchor, size_t caret)
{
    m_text.SetSelection(anchor, caret);
    ScrollCaret();
}

void CEditControl::Copy()
{
    if (m_text.HasSelection() && !IsPassword())
        CEditClipboard::PutText(m_hWnd, m_text.SelectedText());
}

void CEditControl::Cut()
{
    if (m_bReadOnly || IsPassword() || !m_text.HasSelection())
        return;
    Copy();
    Clear();
}

void CEditControl::Clear()
{
    if (!m_bReadOnly)
        DeleteRange(m_text.SelStart(), m_text.SelEnd());
}

// A single-line window takes the clipboard's text up to its first line break.
void CEditControl::Paste()
{
    std::wstring text;
    if (m_bReadOnly || !CEditClipboard::TakeText(m_hWnd, &text))
        return;
    if (!m_bMultiLine)
        text =
            text.substr(0, std::find_if(text.begin(), text.end(), IsLineBreakChar) - text.begin());
    InsertText(text, EditInsert());
}

void CEditControl::SetLimit(UINT limit)
{
    if (limit == 0)
        limit = m_bMultiLine ? kLargestMultiLineLimit : kLargestSingleLineLimit;
    m_nLimit = limit;
}

void CEditControl::SetReadOnly(bool readOnly)
{
    m_bReadOnly = readOnly;
}

// A multi-line window has no password character.
void CEditControl::SetPasswordChar(wchar_t ch)
{
    if (m_bMultiLine)
        return;
    m_chPassword = ch;
    Invalidate();
}

void CEditControl::SetFont(HFONT font)
{
    m_hFont = font;
    m_cell = CellOfFont(font);
    Invalidate();
    ScrollCaret();
}

// EC_USEFONTINFO gives half a cell.
void CEditControl::SetMargins(UINT flags, int left, int right)
{
    const int fromFont = m_cell.width / 2;
    if (flags == EC_USEFONTINFO)
    {
        m_nLeftMargin = fromFont;
        m_nRightMargin = fromFont;
    }
    if (flags != EC_USEFONTINFO && (flags & EC_LEFTMARGIN))
        m_nLeftMargin = left == EC_USEFONTINFO ? fromFont : left;
    if (flags != EC_USEFONTINFO && (flags & EC_RIGHTMARGIN))
        m_nRightMargin = right == EC_USEFONTINFO ? fromFont : right;
    Invalidate();
    ScrollCaret();
}

POINT CEditControl::PosFromChar(size_t index)
{
    const CEditLayout& layout = Layout();
    const RECT rc = FormatRect();
    const size_t line = layout.LineOfChar(index);
    const auto row = static_cast<LONG>(line) - static_cast<LONG>(m_nTopLine);
    return {rc.left + layout.XOfChar(index) - m_nScrollX, rc.top + row * m_cell.height};
}

size_t CEditControl::CharFromPos(int x, int y, size_t* line)
{
    const CEditLayout& layout = Layout();
    const RECT rc = FormatRect();
    size_t row = m_nTopLine;
    if (m_bMultiLine && y >= rc.top)
        row += static_cast<size_t>((y - rc.top) / m_cell.height);
    row = std::min(row, layout.LineCount() - 1);
    *line = row;
    return layout.CharAtX(row, x - rc.left + m_nScrollX);
}

size_t CEditControl::FirstVisibleChar()
{
    return Layout().FirstCharFrom(0, m_nScrollX);
}

void CEditControl::ScrollCaret()
{
    const CEditLayout& layout = Layout();
    const RECT rc = FormatRect();
    const int width = rc.right - rc.left;
    const int caretX = layout.XOfChar(m_text.Caret());
    if (m_bMultiLine)
        ScrollMultiLine(layout.LineOfChar(m_text.Caret()), caretX, width);
    else
        ScrollSingleLine(caretX, width);
}

// A caret outside the view brings it in by at least kScrollStepCells cells. The view starts on
// a character.
void CEditControl::ScrollSingleLine(int caretX, int width)
{
    if (!m_bAutoHScroll)
    {
        m_nScrollX = 0;
        return;
    }
    int scroll = m_nScrollX;
    const int step = std::min(kScrollStepCells * m_cell.width, std::max(width, 0));
    if (caretX > scroll + width)
        scroll = std::min(std::max(caretX - width, scroll + step), caretX);
    else if (caretX < scroll)
        scroll = std::max(caretX - step, 0);
    m_nScrollX = m_layout.XOfChar(m_layout.FirstCharFrom(0, scroll));
}

// The fewest lines that bring the caret's line in; across, a third of the width past it.
void CEditControl::ScrollMultiLine(size_t caretLine, int caretX, int width)
{
    const size_t visible = VisibleLines();
    size_t top = m_nTopLine;
    if (caretLine < top)
        top = caretLine;
    else if (caretLine >= top + visible)
        top = caretLine - visible + 1;
    int scrollX = m_bWraps ? 0 : m_nScrollX;
    const int step = std::max(width / 3, m_cell.width);
    if (!m_bWraps && caretX > scrollX + width)
        scrollX = caretX - width + step;
    else if (!m_bWraps && caretX < scrollX)
        scrollX = std::max(caretX - step, 0);
    MoveView(top, scrollX);
}

// Every move of a multi-line view tells the parent first, EN_VSCROLL and EN_HSCROLL, as
// Windows does whatever moved it.
bool CEditControl::MoveView(size_t top, int scrollX)
{
    if (top != m_nTopLine && !Notify(EN_VSCROLL))
        return false;
    if (scrollX != m_nScrollX && !Notify(EN_HSCROLL))
        return false;
    m_nTopLine = top;
    m_nScrollX = scrollX;
    return true;
}

void CEditControl::ScrollLines(LONG_PTR lines, LONG_PTR chars)
{
    const auto count = static_cast<LONG_PTR>(Layout().LineCount());
    const LONG_PTR top =
        std::clamp<LONG_PTR>(static_cast<LONG_PTR>(m_nTopLine) + lines, 0, count - 1);
    const LONG_PTR scrollX = m_bWraps ? 0
                                      : std::clamp<LONG_PTR>(m_nScrollX + chars * m_cell.width, 0,
                                                             std::numeric_limits<int>::max());
    MoveView(static_cast<size_t>(top), static_cast<int>(scrollX));
}

LONG_PTR CEditControl::ScrollVertical(int code, int position)
{
    const auto count = static_cast<LONG_PTR>(Layout().LineCount());
    const auto page = static_cast<LONG_PTR>(VisibleLines());
    const auto top = static_cast<LONG_PTR>(m_nTopLine);
    LONG_PTR target = top;
    switch (code)
    {
    case SB_LINEUP:
        target = top - 1;
        break;
    case SB_LINEDOWN:
        target = top + 1;
        break;
    case SB_PAGEUP:
        target = top - page;
        break;
    case SB_PAGEDOWN:
        target = top + page;
        break;
    case SB_TOP:
        target = 0;
        break;
    case SB_BOTTOM:
        target = count - 1;
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        target = position;
        break;
    default:
        return 0;
    }
    MoveView(static_cast<size_t>(std::clamp<LONG_PTR>(target, 0, count - 1)), m_nScrollX);
    return target - top;
}

void CEditControl::ScrollHorizontal(int code)
{
    const RECT rc = FormatRect();
    const int page = std::max<int>(rc.right - rc.left, m_cell.width);
    const int widest = Layout().MaxLineWidth();
    int target = m_nScrollX;
    switch (code)
    {
    case SB_LINELEFT:
        target -= m_cell.width;
        break;
    case SB_LINERIGHT:
        target += m_cell.width;
        break;
    case SB_PAGELEFT:
        target -= page;
        break;
    case SB_PAGERIGHT:
        target += page;
        break;
    case SB_LEFT:
        target = 0;
        break;
    case SB_RIGHT:
        target = widest;
        break;
    default:
        return;
    }
    if (!m_bWraps)
        MoveView(m_nTopLine, std::clamp(target, 0, std::max(widest, 0)));
}

void CEditControl::OnSize()
{
    Invalidate();
    ScrollCaret();
}

void CEditControl::OnSetFocus()
{
    m_bFocused = true;
    ScrollCaret();
    Notify(EN_SETFOCUS);
}

void CEditControl::OnKillFocus()
{
    m_bFocused = false;
    m_bTracking = false;
    Notify(EN_KILLFOCUS);
}

void CEditControl::OnButtonDown(int x, int y, bool extend)
{
    if (!m_bFocused)
        SetFocus(m_hWnd);
    if (m_bDead)
        return;
    size_t line = 0;
    MoveCaret(CharFromPos(x, y, &line), extend);
    m_bTracking = true;
}

void CEditControl::OnMouseMove(int x, int y)
{
    if (!m_bTracking)
        return;
    size_t line = 0;
    MoveCaret(CharFromPos(x, y, &line), true);
}

// A password window selects everything: its words are not to be told apart.
void CEditControl::OnDoubleClick(int x, int y)
{
    size_t line = 0;
    const size_t index = CharFromPos(x, y, &line);
    size_t start = 0;
    size_t end = m_text.Length();
    if (!IsPassword())
        m_text.WordAt(index, &start, &end);
    Select(start, end);
    m_bTracking = true;
}

bool CEditControl::Notify(WORD code)
{
    if (m_bDead)
        return false;
    const HWND parent = GetParent(m_hWnd);
    if (parent)
        SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(m_hWnd), code),
                     reinterpret_cast<LPARAM>(m_hWnd));
    return !m_bDead;
}

void CEditControl::Beep()
{
    MessageBeep(MB_OK);
}

} // namespace QzPlatform
