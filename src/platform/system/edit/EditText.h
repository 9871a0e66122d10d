// The text of an edit window and its selection, without keys, pixels or messages. The text is
// wide; an index is a character position between 0 and the length. The selection has an anchor
// (where it started) and a caret (where it ends and the caret shows); either may come first.
// A line break is the pair CR LF, and no operation of this class leaves the caret between its
// two characters except an explicit SetSelection.
#pragma once

#include <cstddef>
#include <string>

namespace QzPlatform
{

// One replacement: the characters [start, start + removed.size()) became inserted.
struct EditChange
{
    size_t start = 0;
    std::wstring removed;
    std::wstring inserted;

    bool IsEmpty() const { return removed.empty() && inserted.empty(); }
};

class CEditText
{
public:
    const std::wstring& Text() const { return m_strText; }
    size_t Length() const { return m_strText.size(); }

    // Replaces the whole text; the selection becomes (0, 0).
    void SetText(const std::wstring& text);

    size_t Anchor() const { return m_nAnchor; }
    size_t Caret() const { return m_nCaret; }
    size_t SelStart() const { return m_nAnchor < m_nCaret ? m_nAnchor : m_nCaret; }
    size_t SelEnd() const { return m_nAnchor < m_nCaret ? m_nCaret : m_nAnchor; }
    bool HasSelection() const { return m_nAnchor != m_nCaret; }
    std::wstring SelectedText() const;
    // Both ends are kept inside the text.
    void SetSelection(size_t anchor, size_t caret);

    // Replaces the selection by text; the caret and anchor end after the inserted text.
    EditChange ReplaceSelection(const std::wstring& text);
    // Replaces [start, end) by text and selects the inserted text (used by undo).
    EditChange Replace(size_t start, size_t end, const std::wstring& text);

    // Moves: one character back or forth (a CR LF pair is one step), the word boundaries that
    // Ctrl+Left and Ctrl+Right reach (a line break is a stop), and what a double click selects: the
    // word at a position with the spaces after it, or the run of spaces there.
    size_t PreviousPosition(size_t index) const;
    size_t NextPosition(size_t index) const;
    size_t PreviousWordStart(size_t index) const;
    size_t NextWordStart(size_t index) const;
    void WordAt(size_t index, size_t* start, size_t* end) const;

private:
    size_t Clamp(size_t index) const { return index < m_strText.size() ? index : m_strText.size(); }
    // A space or tab; IsSpaceAt also takes CR and LF.
    bool IsBlankAt(size_t index) const;
    bool IsSpaceAt(size_t index) const;
    bool IsBreakAt(size_t index) const;

    std::wstring m_strText;
    size_t m_nAnchor = 0;
    size_t m_nCaret = 0;
};

} // namespace QzPlatform
