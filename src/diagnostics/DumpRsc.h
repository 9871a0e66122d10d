// The dialog-template reader: reads every dialog template (resource type 5) of a module file,
// DLGTEMPLATE and DLGTEMPLATEEX with their items, into records, and describes each template
// and item as text lines through DumpTrace. The layout manager finds templates by identifier
// to generate the records of windows that no layout file configures.
//
// A module file that is not a PE file, or whose resource directory is damaged, gives no records
// and no lines. A damaged template (cut short, offsets outside the file) is skipped with a
// "damaged dialog template" log record naming the module and the template; the others are read.
// A template is described whole or not at all.
#pragma once

#include "diagnostics/DialogRscInfo.h"
#include "diagnostics/QzPeResourceReader.h"
#include "platform/services/QzText.h"
#include "platform/system/QzSystem.h"

#include <cstdint>
#include <string>
#include <vector>

class CDumpRsc
{
public:
    // Where DumpTrace lines go besides the structured log: each line as written, with its
    // line feed.
    using TraceSink = void (*)(const char* pszText, void* pContext);

    // Items of a template beyond this count are neither recorded nor read.
    static constexpr size_t kMaxItems = 1000;

    CDumpRsc();
    virtual ~CDumpRsc();
    CDumpRsc(const CDumpRsc&) = delete;
    CDumpRsc& operator=(const CDumpRsc&) = delete;

    // The template with this identifier, the last one read when several have it; null for 0,
    // for a module without it, and for a module that cannot be read. Reads the module first.
    const DialogRscInfo* FindDialogRsc(HMODULE hModule, uint32_t nId);
    // Reads the templates of the module's file, in directory order, once: a module is read
    // again only while no template was found and only when it is another module. TRUE when
    // the file was read as a PE file (with or without templates).
    BOOL LoadDialogs(HMODULE hModule);
    const std::vector<DialogRscInfo>& GetDialogs() const { return m_vecDialogs; }

    // The names of the set style bits, joined by " | ": the window and dialog style table for
    // a template, the window styles alone for an item.
    static std::string GetStyleText(DWORD dwStyle, BOOL bDialog);
    // The printed name of a predefined window class atom ("Button" for 0x80).
    static const char* GetAtomClassName(WORD nAtom);
    // Control type codes of a predefined class atom and of a class name.
    static DWORD GetTypeFromAtom(WORD nAtom);
    static DWORD GetTypeFromClassName(const char* pszName);
    // The short name of a control type code; empty for an unknown one.
    static const char* GetTypeName(DWORD nType);

    // The text sink of the description: writes the formatted line to the structured log (a
    // "dump trace" record with "level" "debug" and the "text") and to the host's sink.
    static void DumpTrace(const char* pszFormat, ...) QZ_PRINTF_FORMAT(1, 2);
    // Installs the host's sink; null removes it.
    static void SetTraceSink(TraceSink pfnSink, void* pContext);

private:
    BOOL ReadModule(HMODULE hModule);
#ifdef _WIN32
    BOOL ReadDataFileView(HMODULE hModule);
#endif
    BOOL ReadMappedFile(HANDLE hFile, const char* pszPath);
    BOOL ReadImage(const BYTE* pImage, size_t nSize, const char* pszPath);
    bool ReadTemplate(const QzGui::CQzPeResourceReader::Entry& entry, DialogRscInfo& record);
    static void ReportDamaged(const char* pszPath, const QzGui::CQzPeResourceReader::Entry& entry,
                              size_t nIndex);
    bool DumpDialog(QzGui::CQzByteCursor cursor, DialogRscInfo& record);
    bool DumpItem(QzGui::CQzByteCursor& cursor, bool bExtended, DialogItemInfo& item);
    void DumpItemClass(QzGui::CQzByteCursor& cursor, DialogItemInfo& item);
    void DumpItemTitle(QzGui::CQzByteCursor& cursor, DialogItemInfo& item);
    // Keeps a line of the read in progress; the lines go to DumpTrace once the file is read.
    void Trace(const char* pszFormat, ...) QZ_PRINTF_FORMAT(2, 3);

    std::vector<DialogRscInfo> m_vecDialogs;
    std::vector<std::string> m_vecTrace;
    // The last module read, and whether it was read as a PE file.
    bool m_bModuleRead = false;
    HMODULE m_hModuleRead = nullptr;
    BOOL m_bModuleReadable = FALSE;
};
