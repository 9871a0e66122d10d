#include "platform/system/edit/EditLayout.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

namespace QzPlatform
{

namespace
{

constexpr int kTabCells = 8;

struct CodeRange
{
    wchar_t first;
    wchar_t last;
};

// East Asian wide and fullwidth blocks (Hangul Jamo, CJK radicals to Yi, Hangul syllables,
// compatibility ideographs, vertical and compatibility forms, fullwidth forms, supplementary
// ideographs): two cells each, as a double-byte character of the ANSI code page takes.
const CodeRange kWideRanges[] = {
    {0x1100, 0x115F}, {0x2329, 0x232A}, {0x2E80, 0x303E},   {0x3040, 0xA4CF},
    {0xAC00, 0xD7A3}, {0xF900, 0xFAFF}, {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD},
};

bool IsSpace(wchar_t ch)
{
    return ch == L' ' || ch == L'\t';
}

// The line that holds the character at index (a wrapped boundary belongs to the next line).
size_t LineIndexOf(const std::vector<EditLine>& lines, size_t index)
{
    const auto after =
        std::upper_bound(lines.begin(), lines.end(), index,
                         [](size_t value, const EditLine& line) { return value < line.start; });
    return after == lines.begin() ? 0 : static_cast<size_t>(after - lines.begin() - 1);
}

// Texts are compared a block at a time with the C library first: a long text changes in one
// place at a time.
constexpr size_t kCompareBlock = 64;

size_t CommonPrefix(const std::wstring& a, const std::wstring& b)
{
    const size_t most = std::min(a.size(), b.size());
    size_t at = 0;
    while (at + kCompareBlock <= most &&
           std::wmemcmp(a.data() + at, b.data() + at, kCompareBlock) == 0)
        at += kCompareBlock;
    while (at < most && a[at] == b[at])
        ++at;
    return at;
}

// The length of the common end of two texts that share `prefix` characters at their start,
// no longer than what is left of the shorter one.
size_t CommonSuffix(const std::wstring& a, const std::wstring& b, size_t prefix)
{
    const size_t most = std::min(a.size(), b.size()) - prefix;
    size_t length = 0;
    while (length + kCompareBlock <= most &&
           std::wmemcmp(a.data() + a.size() - length - kCompareBlock,
                        b.data() + b.size() - length - kCompareBlock, kCompareBlock) == 0)
        length += kCompareBlock;
    while (length < most && a[a.size() - length - 1] == b[b.size() - length - 1])
        ++length;
    return length;
}

} // namespace

bool CEditLayout::IsWide(wchar_t ch)
{
    // Most text lies below the first block; the blocks are in order, so the one that may hold
    // the character is the last that starts at or before it.
    if (ch < kWideRanges[0].first)
        return false;
    const CodeRange* pAfter =
        std::upper_bound(std::begin(kWideRanges), std::end(kWideRanges), ch,
                         [](wchar_t c, const CodeRange& range) { return c < range.first; });
    return ch <= pAfter[-1].last;
}

// The x after the character that starts at x.
int CEditLayout::Advance(wchar_t ch, int x) const
{
    const int cell = std::max(m_cell.width, 1);
    if (ch == L'\t')
        return (x / (cell * kTabCells) + 1) * cell * kTabCells;
    return x + (IsWide(ch) ? 2 * cell : cell);
}

// The lines of a layout before its text changed, and where the change lies: the new text
// equals the old one before `prefix` and from `newEnd` on (from `oldEnd` in the old text).
struct CEditLayout::Before
{
    std::vector<EditLine> lines;
    std::vector<int> widths;
    size_t prefix = 0;
    size_t oldEnd = 0;
    size_t newEnd = 0;

    size_t ToOld(size_t index) const { return index - newEnd + oldEnd; }
    // The old line that starts at start, or none.
    const EditLine* LineAt(size_t start) const
    {
        const auto found =
            std::lower_bound(lines.begin(), lines.end(), start,
                             [](const EditLine& line, size_t value) { return line.start < value; });
        return found != lines.end() && found->start == start ? &*found : nullptr;
    }
};

void CEditLayout::Build(const std::wstring& text, const EditCell& cell, bool multiLine,
                        int wrapWidth)
{
    if (m_bBuilt && cell.width == m_cell.width && cell.height == m_cell.height &&
        multiLine == m_bMultiLine && wrapWidth == m_nWrapWidth)
    {
        Update(text);
        return;
    }
    m_bBuilt = true;
    m_strText = text;
    m_cell = cell;
    m_bMultiLine = multiLine;
    m_nWrapWidth = wrapWidth;
    m_vecLines.clear();
    m_vecLineWidths.clear();
    m_vecX.assign(m_strText.size() + 1, 0);
    LayFrom(0, nullptr);
}

// The lines before the one the change starts on stay (before the line before that one when
// wrapping: a line's end depends on the start of the next); the rest is laid out again. The
// positions of the unchanged end of the text move to its new place first, where the lines laid
// out again read them.
void CEditLayout::Update(const std::wstring& text)
{
    Before before;
    before.prefix = CommonPrefix(m_strText, text);
    if (before.prefix == m_strText.size() && before.prefix == text.size())
        return;
    const size_t suffix = CommonSuffix(m_strText, text, before.prefix);
    before.oldEnd = m_strText.size() - suffix;
    before.newEnd = text.size() - suffix;
    size_t line = LineIndexOf(m_vecLines, before.prefix);
    if (Wraps())
        line = line > 2 ? line - 2 : 0;
    const size_t start = m_vecLines[line].start;
    before.lines.swap(m_vecLines);
    before.widths.swap(m_vecLineWidths);
    m_vecLines.assign(before.lines.begin(), before.lines.begin() + std::ptrdiff_t(line));
    m_vecLineWidths.assign(before.widths.begin(), before.widths.begin() + std::ptrdiff_t(line));
    const auto at = m_vecX.begin() + std::ptrdiff_t(std::min(before.oldEnd, before.newEnd));
    if (before.newEnd > before.oldEnd)
        m_vecX.insert(at, before.newEnd - before.oldEnd, 0);
    else
        m_vecX.erase(at, at + std::ptrdiff_t(before.oldEnd - before.newEnd));
    m_strText = text;
    LayFrom(start, &before);
}

// Lines from start (the start of a line) to the end of the text, or until the rest of the
// layout is the one before the change.
void CEditLayout::LayFrom(size_t start, const Before* pBefore)
{
    if (!m_bMultiLine)
    {
        AddLine(0, m_strText.size(), 0, pBefore);
        return;
    }
    while (!pBefore || !Resync(start, *pBefore))
    {
        const size_t found = m_strText.find(L"\r\n", start);
        const size_t hardEnd = found == std::wstring::npos ? m_strText.size() : found;
        size_t lineStart = start;
        while (true)
        {
            const size_t end = WrapEnd(lineStart, hardEnd);
            if (end == hardEnd)
                break;
            AddLine(lineStart, end - lineStart, 0, pBefore);
            lineStart = end;
            if (pBefore && Resync(lineStart, *pBefore))
                return;
        }
        if (found == std::wstring::npos)
        {
            AddLine(lineStart, hardEnd - lineStart, 0, pBefore);
            return;
        }
        AddLine(lineStart, hardEnd - lineStart, 2, pBefore);
        start = hardEnd + 2;
    }
}

// A line's first boundary overwrites the end of a wrapped line before it.
void CEditLayout::AddLine(size_t start, size_t length, size_t breakLength, const Before* pBefore)
{
    m_vecLines.push_back({start, length, breakLength});
    const size_t end = start + length;
    int x = 0;
    size_t i = start;
    if (pBefore)
        SkipKept(start, end, *pBefore, i, x);
    while (i < end)
    {
        if (pBefore && i == pBefore->newEnd && !Wraps() && ShiftTail(end, *pBefore, i, x))
            continue;
        m_vecX[i] = x;
        x = Advance(m_strText[i], x);
        ++i;
    }
    m_vecX[end] = x;
    m_vecLineWidths.push_back(x);
}

// A line [start, end) that starts where a line started before keeps the positions of its
// characters before the change and before the old line's end (its first boundary may hold the
// end of a wrapped line laid out before it).
void CEditLayout::SkipKept(size_t start, size_t end, const Before& before, size_t& i, int& x)
{
    if (start >= before.prefix)
        return;
    const EditLine* pOld = before.LineAt(start);
    if (!pOld)
        return;
    const size_t kept = std::min({before.prefix, pOld->start + pOld->length, end});
    if (kept <= start + 1)
        return;
    m_vecX[start] = 0;
    i = kept - 1;
    x = m_vecX[i];
}

// Once a line starts after the change where one started before it, the lines from there are
// the ones before, moved (their positions are in place already).
bool CEditLayout::Resync(size_t start, const Before& before)
{
    if (start < before.newEnd)
        return false;
    const EditLine* pOld = before.LineAt(before.ToOld(start));
    if (!pOld)
        return false;
    const size_t first = static_cast<size_t>(pOld - before.lines.data());
    for (size_t line = first; line < before.lines.size(); ++line)
    {
        const EditLine& old = before.lines[line];
        m_vecLines.push_back({old.start - pOld->start + start, old.length, old.breakLength});
    }
    m_vecLineWidths.insert(m_vecLineWidths.end(), before.widths.begin() + std::ptrdiff_t(first),
                           before.widths.end());
    m_vecX[start] = 0;
    return true;
}

// The characters from the change's end to the end of a line that does not wrap stood on one
// line before too: up to the first tab they stand where they stood, moved by as much as the
// change moved the first of them. False when they did not stand so.
bool CEditLayout::ShiftTail(size_t end, const Before& before, size_t& i, int& x)
{
    const size_t oldAt = before.ToOld(i);
    const EditLine& old = before.lines[LineIndexOf(before.lines, oldAt)];
    const size_t oldEnd = old.start + old.length;
    if (oldAt >= oldEnd || oldEnd - oldAt != end - i)
        return false;
    const int moved = x - m_vecX[i];
    const wchar_t* pTab = std::wmemchr(m_strText.data() + i, L'\t', end - i);
    const size_t stop = pTab ? static_cast<size_t>(pTab - m_strText.data()) : end;
    for (size_t k = i; k <= stop; ++k)
        m_vecX[k] += moved;
    x = stop < end ? Advance(L'\t', m_vecX[stop]) : m_vecX[end];
    i = stop < end ? stop + 1 : end;
    return true;
}

// Where a wrapped line that starts at start ends, hardEnd when the rest fits. A line ends after
// a run of spaces or beside a wide character; a character that passes the width with no such
// place before it on the line ends the line before it (never before the line's first).
size_t CEditLayout::WrapEnd(size_t start, size_t hardEnd) const
{
    if (m_nWrapWidth <= 0)
        return hardEnd;
    int x = 0;
    size_t lastBreak = start;
    for (size_t i = start; i < hardEnd; ++i)
    {
        const wchar_t ch = m_strText[i];
        if (i > start &&
            (IsWide(ch) || IsWide(m_strText[i - 1]) || (IsSpace(m_strText[i - 1]) && !IsSpace(ch))))
            lastBreak = i;
        x = Advance(ch, x);
        if (IsSpace(ch) || x <= m_nWrapWidth)
            continue;
        if (lastBreak > start)
            return lastBreak;
        return i > start ? i : i + 1;
    }
    return hardEnd;
}

const EditLine& CEditLayout::Line(size_t line) const
{
    return m_vecLines[std::min(line, m_vecLines.size() - 1)];
}

size_t CEditLayout::LineOfChar(size_t index) const
{
    return LineIndexOf(m_vecLines, index);
}

int CEditLayout::XOfChar(size_t index) const
{
    const size_t line = LineOfChar(index);
    const EditLine& info = Line(line);
    return index < info.start + info.length ? m_vecX[std::max(index, info.start)] : LineWidth(line);
}

// The first boundary whose character's middle lies past x.
size_t CEditLayout::CharAtX(size_t line, int x) const
{
    const EditLine& info = Line(line);
    const size_t end = info.start + info.length;
    const int width = LineWidth(line);
    size_t low = info.start;
    size_t high = end;
    while (low < high)
    {
        const size_t i = low + (high - low) / 2;
        const int right = i + 1 < end ? m_vecX[i + 1] : width;
        if (x < (m_vecX[i] + right + 1) / 2)
            high = i;
        else
            low = i + 1;
    }
    return low;
}

size_t CEditLayout::FirstCharFrom(size_t line, int x) const
{
    const EditLine& info = Line(line);
    const auto first = m_vecX.begin() + static_cast<std::ptrdiff_t>(info.start);
    return static_cast<size_t>(
        std::lower_bound(first, first + static_cast<std::ptrdiff_t>(info.length), x) -
        m_vecX.begin());
}

int CEditLayout::MaxLineWidth() const
{
    return *std::max_element(m_vecLineWidths.begin(), m_vecLineWidths.end());
}

int CEditLayout::LineWidth(size_t line) const
{
    return m_vecLineWidths[std::min(line, m_vecLineWidths.size() - 1)];
}

} // namespace QzPlatform
