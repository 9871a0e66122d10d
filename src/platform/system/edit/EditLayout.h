// The lines of an edit window's text and where each character stands, on the fixed cell of the
// window's font: a character is one cell wide, an East Asian wide character two, a tab reaches
// the next stop (every 8 cells). A multi-line window breaks lines at CR LF and, when it wraps,
// before a word that would pass the wrap width (spaces hang past it; a word longer than the
// width is cut where it passes; wide characters may break anywhere). A single-line window has
// one line holding the whole text. Positions are in pixels from the start of a line.
// A layout built again with the same cell and mode lays out only what the change can move: the
// lines from the change (two lines before it when wrapping) until a line starts where one
// started before in the unchanged end of the text, and on a line that does not wrap, the
// characters after the change move by the same distance up to the next tab.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace QzPlatform
{

struct EditCell
{
    int width = 6;
    int height = 12;
};

struct EditLine
{
    size_t start = 0;
    size_t length = 0;      // without its line break
    size_t breakLength = 0; // 2 for CR LF, 0 for a wrapped line or the last one
};

class CEditLayout
{
public:
    // wrapWidth 0 (or below) does not wrap.
    void Build(const std::wstring& text, const EditCell& cell, bool multiLine, int wrapWidth);

    size_t LineCount() const { return m_vecLines.size(); }
    // Line i, or the last line when i is past the end.
    const EditLine& Line(size_t line) const;
    // The line that holds the character at index (a wrapped boundary belongs to the next line).
    size_t LineOfChar(size_t index) const;
    // From the start of the character's line to the character.
    int XOfChar(size_t index) const;
    // The character boundary of a line nearest to x.
    size_t CharAtX(size_t line, int x) const;
    // The first character boundary of a line at or after x (the line's end when none is).
    size_t FirstCharFrom(size_t line, int x) const;
    // The widest line.
    int MaxLineWidth() const;
    int LineWidth(size_t line) const;

    static bool IsWide(wchar_t ch);

private:
    struct Before; // the layout before a change, and where the change lies

    int Advance(wchar_t ch, int x) const;
    size_t WrapEnd(size_t start, size_t end) const;
    bool Wraps() const { return m_bMultiLine && m_nWrapWidth > 0; }

    void Update(const std::wstring& text);
    void LayFrom(size_t start, const Before* pBefore);
    void AddLine(size_t start, size_t length, size_t breakLength, const Before* pBefore);
    void SkipKept(size_t start, size_t end, const Before& before, size_t& i, int& x);
    bool Resync(size_t start, const Before& before);
    bool ShiftTail(size_t end, const Before& before, size_t& i, int& x);

    std::wstring m_strText;
    EditCell m_cell;
    bool m_bBuilt = false;
    bool m_bMultiLine = false;
    int m_nWrapWidth = 0;
    std::vector<EditLine> m_vecLines;
    // Where each character starts, from the start of its line (a wrapped boundary counts on the
    // next line), and each line's width: every question about positions is a look-up or a
    // binary search, not a walk along the line (a single line may hold a long text).
    std::vector<int> m_vecX;
    std::vector<int> m_vecLineWidths;
};

} // namespace QzPlatform
