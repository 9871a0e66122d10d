#include "platform/system/edit/EditLayout.h"

#include <algorithm>
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

void CEditLayout::Build(const std::wstring& text, const EditCell& cell, bool multiLine,
                        int wrapWidth)
{
    m_strText = text;
    m_cell = cell;
    m_nWrapWidth = wrapWidth;
    m_vecLines.clear();
    if (!multiLine)
    {
        m_vecLines.push_back({0, text.size(), 0});
        MeasureLines();
        return;
    }
    size_t start = 0;
    while (true)
    {
        const size_t found = text.find(L"\r\n", start);
        const size_t hardEnd = found == std::wstring::npos ? text.size() : found;
        size_t lineStart = start;
        while (true)
        {
            const size_t end = WrapEnd(lineStart, hardEnd);
            if (end == hardEnd)
                break;
            m_vecLines.push_back({lineStart, end - lineStart, 0});
            lineStart = end;
        }
        if (found == std::wstring::npos)
        {
            m_vecLines.push_back({lineStart, hardEnd - lineStart, 0});
            MeasureLines();
            return;
        }
        m_vecLines.push_back({lineStart, hardEnd - lineStart, 2});
        start = hardEnd + 2;
    }
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
    const auto after =
        std::upper_bound(m_vecLines.begin(), m_vecLines.end(), index,
                         [](size_t value, const EditLine& line) { return value < line.start; });
    return after == m_vecLines.begin() ? 0 : static_cast<size_t>(after - m_vecLines.begin() - 1);
}

// Lines in order: a line's first boundary overwrites the end of a wrapped line before it.
void CEditLayout::MeasureLines()
{
    m_vecX.assign(m_strText.size() + 1, 0);
    m_vecLineWidths.clear();
    for (const EditLine& line : m_vecLines)
    {
        int x = 0;
        for (size_t i = line.start; i < line.start + line.length; ++i)
        {
            m_vecX[i] = x;
            x = Advance(m_strText[i], x);
        }
        m_vecX[line.start + line.length] = x;
        m_vecLineWidths.push_back(x);
    }
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
