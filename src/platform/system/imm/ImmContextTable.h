// Input contexts by handle: open status, composition window, and the strings of the composition
// in progress and of the last result, which the host's input method fills (QzHost.h).
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/kernel/HandleTable.h"

#include <string>

namespace QzPlatform
{

struct ImmContext
{
    bool open = true;
    COMPOSITIONFORM compositionForm = {CFS_DEFAULT, {0, 0}, {0, 0, 0, 0}};
    std::wstring composition;
    std::wstring result;
    bool composing = false;   // between WM_IME_STARTCOMPOSITION and WM_IME_ENDCOMPOSITION
    HWND defaultOf = nullptr; // the window whose default context this is
};

class CImmContextTable
{
public:
    CImmContextTable();

    // Null when the table is full.
    HIMC Create(HWND defaultOf);
    ImmContext* Find(HIMC himc) const;
    bool Destroy(HIMC himc);
    void Clear() { m_table.Clear(); }

private:
    CHandleTable<ImmContext> m_table;
};

} // namespace QzPlatform
