// The one level of undo of an edit window: one record of the last edit (where, what it removed,
// how many characters it inserted), as Windows keeps it. A removal continues the record when the
// record has inserted nothing and the removal touches its place (Delete at it, Backspace just
// before it); any other removal starts a new record. An insertion continues the record when it
// goes on at the end of what the record inserted, or at the record's place when it has inserted
// nothing yet (typing after Backspace). Undoing applies the record's reverse and keeps that
// reverse as the record, so a second undo redoes the edit.
#pragma once

#include "platform/system/edit/EditText.h"

namespace QzPlatform
{

class CEditUndo
{
public:
    bool CanUndo() const { return m_bValid; }
    void Empty();
    // Records a change made to the text (an empty change records nothing).
    void Record(const EditChange& change);
    // Reverts the recorded change in text and selects what it restores; false with no record.
    bool Undo(CEditText& text);

private:
    void RecordRemoval(size_t start, const std::wstring& removed);
    void RecordInsertion(size_t start, size_t length, bool sameEdit);

    bool m_bValid = false;
    size_t m_nStart = 0;
    size_t m_nInserted = 0;
    std::wstring m_strRemoved;
};

} // namespace QzPlatform
