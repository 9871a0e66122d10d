#include "platform/system/edit/EditUndo.h"

namespace QzPlatform
{

void CEditUndo::Empty()
{
    m_bValid = false;
    m_nStart = 0;
    m_nInserted = 0;
    m_strRemoved.clear();
}

void CEditUndo::Record(const EditChange& change)
{
    if (change.IsEmpty())
        return;
    if (!change.removed.empty())
        RecordRemoval(change.start, change.removed);
    if (!change.inserted.empty())
        RecordInsertion(change.start, change.inserted.size(), !change.removed.empty());
}

void CEditUndo::RecordRemoval(size_t start, const std::wstring& removed)
{
    const bool joins = m_bValid && m_nInserted == 0;
    if (joins && start == m_nStart)
        m_strRemoved += removed; // Delete again at the same place
    else if (joins && start + removed.size() == m_nStart)
    {
        m_strRemoved.insert(0, removed); // Backspace again before it
        m_nStart = start;
    }
    else
    {
        m_strRemoved = removed;
        m_nStart = start;
    }
    m_nInserted = 0;
    m_bValid = true;
}

void CEditUndo::RecordInsertion(size_t start, size_t length, bool sameEdit)
{
    const bool continues = m_bValid && (m_nInserted > 0 ? start == m_nStart + m_nInserted
                                                        : sameEdit || start == m_nStart);
    if (!continues)
    {
        m_strRemoved.clear();
        m_nStart = start;
        m_nInserted = 0;
    }
    m_nInserted += length;
    m_bValid = true;
}

bool CEditUndo::Undo(CEditText& text)
{
    if (!m_bValid)
        return false;
    const EditChange reverse = text.Replace(m_nStart, m_nStart + m_nInserted, m_strRemoved);
    m_nStart = reverse.start;
    m_nInserted = reverse.inserted.size();
    m_strRemoved = reverse.removed;
    return true;
}

} // namespace QzPlatform
