#include "platform/system/edit/EditText.h"

#include <algorithm>

namespace QzPlatform
{

void CEditText::SetText(const std::wstring& text)
{
    m_strText = text;
    m_nAnchor = 0;
    m_nCaret = 0;
}

std::wstring CEditText::SelectedText() const
{
    return m_strText.substr(SelStart(), SelEnd() - SelStart());
}

void CEditText::SetSelection(size_t anchor, size_t caret)
{
    m_nAnchor = Clamp(anchor);
    m_nCaret = Clamp(caret);
}

EditChange CEditText::ReplaceSelection(const std::wstring& text)
{
    const EditChange change = Replace(SelStart(), SelEnd(), text);
    m_nAnchor = m_nCaret;
    return change;
}

EditChange CEditText::Replace(size_t start, size_t end, const std::wstring& text)
{
    start = Clamp(start);
    end = std::max(start, Clamp(end));
    EditChange change;
    change.start = start;
    change.removed = m_strText.substr(start, end - start);
    change.inserted = text;
    m_strText.replace(start, end - start, text);
    m_nAnchor = start;
    m_nCaret = start + text.size();
    return change;
}

bool CEditText::IsBreakAt(size_t index) const
{
    return index + 1 < m_strText.size() && m_strText[index] == L'\r' &&
           m_strText[index + 1] == L'\n';
}

bool CEditText::IsBlankAt(size_t index) const
{
    return m_strText[index] == L' ' || m_strText[index] == L'\t';
}

bool CEditText::IsSpaceAt(size_t index) const
{
    const wchar_t ch = m_strText[index];
    return ch == L' ' || ch == L'\t' || ch == L'\r' || ch == L'\n';
}

size_t CEditText::PreviousPosition(size_t index) const
{
    index = Clamp(index);
    if (index == 0)
        return 0;
    return (index >= 2 && IsBreakAt(index - 2)) ? index - 2 : index - 1;
}

size_t CEditText::NextPosition(size_t index) const
{
    index = Clamp(index);
    if (index == m_strText.size())
        return index;
    return IsBreakAt(index) ? index + 2 : index + 1;
}

// A line break is a step of its own; otherwise back over spaces, then over the word before
// them, both within the line.
size_t CEditText::PreviousWordStart(size_t index) const
{
    index = Clamp(index);
    if (index >= 2 && IsBreakAt(index - 2))
        return index - 2;
    while (index > 0 && IsBlankAt(index - 1))
        --index;
    while (index > 0 && !IsSpaceAt(index - 1))
        --index;
    return index;
}

// A line break is a step of its own; otherwise over the rest of the word, then over the spaces
// after it, both within the line.
size_t CEditText::NextWordStart(size_t index) const
{
    index = Clamp(index);
    if (IsBreakAt(index))
        return index + 2;
    while (index < m_strText.size() && !IsSpaceAt(index))
        ++index;
    while (index < m_strText.size() && IsBlankAt(index))
        ++index;
    return index;
}

// The run of word characters that holds the character at index and the spaces and tabs after
// it, or the run of spaces at index; at the end of the text, the run before it.
void CEditText::WordAt(size_t index, size_t* start, size_t* end) const
{
    index = Clamp(index);
    if (index == m_strText.size() && index > 0)
        --index;
    size_t first = index;
    size_t last = index;
    if (index < m_strText.size())
    {
        const bool space = IsSpaceAt(index);
        while (first > 0 && IsSpaceAt(first - 1) == space)
            --first;
        while (last < m_strText.size() && IsSpaceAt(last) == space)
            ++last;
        while (!space && last < m_strText.size() && IsBlankAt(last))
            ++last;
    }
    *start = first;
    *end = last;
}

} // namespace QzPlatform
