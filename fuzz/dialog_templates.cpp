// Module files with dialog templates (PE files, resource type 5) through the dialog-template
// reader: the file is named as a data module, its templates read and described, and each one
// found again by its identifier, as the layout manager does when it generates a record.
#include "FuzzSupport.h"

#include "diagnostics/DumpRsc.h"
#include "platform/system/QzSystem.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("Fuzz.dll", data, size);
    const std::string path = (QzFuzz::DataRoot() / "Fuzz.dll").string();
    HMODULE hModule = LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!hModule)
        return 0;
    CDumpRsc dump;
    dump.LoadDialogs(hModule);
    for (const DialogRscInfo& dialog : dump.GetDialogs())
    {
        const DialogRscInfo* pFound = dump.FindDialogRsc(hModule, dialog.id);
        if (pFound)
            (void)(pFound->items.size() + pFound->text.size());
        (void)CDumpRsc::GetStyleText(dialog.style, TRUE);
    }
    FreeLibrary(hModule);
    return 0;
}
