#include "platform/system/edit/EditUndo.h"

namespace QzPlatform
{

void CEditUndo::Empty()
{
    m_bValid = false;
    m_eKind = Kind::Other;
    m_nStart = 0;
    m_nInserted = 0;
    m_strRemoved.clear();
}

bool CEditUndo::Continues(const EditChange& change, Kind kind) const
{
    if (!m_bValid || kind != m_eKind || kind == Kind::Other)
        return false;
    const size_t removed = change.removed.size();
    switch (kind)
    {
    case Kind::Typing:
        return removed == 0 && change.start == m_nStart + m_nInserted;
    case Kind::Backspace:
        return change.inserted.empty() && change.start + removed == m_nStart && m_nInserted == 0;
    case Kind::Delete:
        return change.inserted.empty() && change.start == m_nStart && m_nInserted == 0;
    default:
        return false;
    }
}

void CEditUndo::Record(const EditChange& change, Kind kind)
{
    if (change.IsEmpty())
        return;
    // Backspace over characters just typed takes them back out of the typing record.
    const bool eatsTyping = kind == Kind::Backspace && m_bValid && m_eKind == Kind::Typing &&
                            change.inserted.empty() && change.start >= m_nStart &&
                            change.start + change.removed.size() == m_nStart + m_nInserted;
    if (eatsTyping)
    {
        m_nInserted -= change.removed.size();
        return;
    }
    if (Continues(change, kind))
    {
        if (kind == Kind::Typing)
            m_nInserted += change.inserted.size();
        else if (kind == Kind::Backspace)
        {
            m_strRemoved.insert(0, change.removed);
            m_nStart = change.start;
        }
        else
            m_strRemoved += change.removed;
        return;
    }
    m_bValid = true;
    m_eKind = kind;
    m_nStart = change.start;
    m_nInserted = change.inserted.size();
    m_strRemoved = change.removed;
}

bool CEditUndo::Undo(CEditText& text)
{
    if (!m_bValid)
        return false;
    const EditChange reverse = text.Replace(m_nStart, m_nStart + m_nInserted, m_strRemoved);
    m_eKind = Kind::Other;
    m_nStart = reverse.start;
    m_nInserted = reverse.inserted.size();
    m_strRemoved = reverse.removed;
    return true;
}

} // namespace QzPlatform
