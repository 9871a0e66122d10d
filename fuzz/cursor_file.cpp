// ini/Cursor.ini through the cursor reader and the layout manager's cursor table.
#include "FuzzSupport.h"

#include "layout/QzCursorReader.h"
#include "layout/QzGuiInfoMgr.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ini/Cursor.ini", data, size);
    std::map<std::string, QzGui::QzCursorEntry> table;
    QzGui::CQzCursorReader::Read("ini/Cursor.ini", table);
    QzGui::CQzGuiInfoMgr mgr;
    mgr.LoadCursors();
    for (const auto& entry : table)
    {
        const QzGui::QzCursorEntry* pEntry = mgr.GetCursorEntry(entry.first.c_str());
        if (pEntry)
            (void)(pEntry->type + pEntry->cursor.size());
    }
    return 0;
}
