// qzgui-rscdump FILE
//
// Prints the description of every dialog template of a Windows module file, in the order of
// its resource directory: a "Dialog id: N" or "Dialog name: NAME" line, then the template's
// style, size, menu, class, title, font and items. Texts are in the ANSI code page (936).
// Exit status 0 when the file was read (a module without dialogs prints nothing), 1 when it
// cannot be opened or is not a readable PE file, 2 for a wrong command line.
#include "RscDumpLogSink.h"

#include "diagnostics/DumpRsc.h"
#include "platform/system/QzSystem.h"

#include <cstdio>

namespace
{

void PrintTraceLine(const char* pszText, void*)
{
    std::fputs(pszText, stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: qzgui-rscdump FILE\n");
        return 2;
    }
    HMODULE hModule = LoadLibraryExA(argv[1], nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!hModule)
    {
        std::fprintf(stderr, "qzgui-rscdump: cannot open %s\n", argv[1]);
        return 1;
    }
    CRscDumpLogSink logSink;
    QzPlatform::SetLogSink(&logSink);
    CDumpRsc::SetTraceSink(PrintTraceLine, nullptr);
    CDumpRsc dump;
    const BOOL bRead = dump.LoadDialogs(hModule);
    CDumpRsc::SetTraceSink(nullptr, nullptr);
    QzPlatform::SetLogSink(nullptr);
    FreeLibrary(hModule);
    if (!bRead)
    {
        std::fprintf(stderr, "qzgui-rscdump: %s is not a readable PE file\n", argv[1]);
        return 1;
    }
    return 0;
}
