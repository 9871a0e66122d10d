// The one level of undo of an edit window: the last change as one record (where, what was
// removed, how much was inserted). Typing continues the record while it goes on at its end,
// Backspace while it eats into it or goes on before it, Delete while it goes on at its start;
// anything else starts a new record. Undoing applies the record's reverse and keeps that reverse
// as the record, so a second undo redoes the change, as on Windows.
#pragma once

#include "platform/system/edit/EditText.h"

namespace QzPlatform
{

class CEditUndo
{
public:
    enum class Kind
    {
        Typing,
        Backspace,
        Delete,
        Other,
    };

    bool CanUndo() const { return m_bValid; }
    void Empty();
    // Records a change made to the text (an empty change records nothing).
    void Record(const EditChange& change, Kind kind);
    // Reverts the recorded change in text and selects what it restores; false with no record.
    bool Undo(CEditText& text);

private:
    bool Continues(const EditChange& change, Kind kind) const;

    bool m_bValid = false;
    Kind m_eKind = Kind::Other;
    size_t m_nStart = 0;
    size_t m_nInserted = 0;
    std::wstring m_strRemoved;
};

} // namespace QzPlatform
