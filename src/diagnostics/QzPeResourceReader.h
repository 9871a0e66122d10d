// The resources of a PE file (a Windows module read as a file, not loaded): the DOS header, the
// PE header with its 32- or 64-bit optional header, the section table, and the resource
// directory with its three levels (type, name, language). Everything is read from the bytes of
// the file with every offset and count checked; a file that lies about them is refused, never
// read past its end.
#pragma once

#include "diagnostics/QzByteCursor.h"
#include "platform/system/QzSystem.h"

#include <string>
#include <vector>

namespace QzGui
{

class CQzPeResourceReader
{
public:
    // One resource of a type, with the data of its first language.
    struct Entry
    {
        bool bNamed = false;
        DWORD nId = 0;          // numeric identifier; 0 for a named resource
        std::u16string strName; // the name of a named resource (UTF-16), cut at 255 units
        CQzByteCursor data;     // the resource data, inside the file
        // The entry's name, language directory or data lies outside the file or is not where
        // its level puts it; bNamed and nId say what could be read of it.
        bool bDamaged = false;
    };

    CQzPeResourceReader(const BYTE* pFile, size_t nSize);

    // Checks the headers and finds the resource directory. False for bytes that are not a PE
    // file, or whose resource directory lies outside every section.
    bool Open();
    // The entries of one resource type in directory order; none when the file has no such
    // type. False when the type's directory lies outside the file or is no directory. An entry
    // whose name, language or data cannot be read, or whose data would take the entries of
    // the type past the size of the file, comes out damaged; the others are read.
    bool ListType(WORD nType, std::vector<Entry>& entries) const;

private:
    struct Section
    {
        DWORD nVirtualAddress = 0;
        DWORD nRawSize = 0;
        DWORD nRawOffset = 0;
    };
    struct DirectoryEntry
    {
        DWORD nName = 0;
        DWORD nOffset = 0;
    };

    // The DOS and PE headers and the section table; the resource directory's address, 0 when
    // the optional header gives none.
    bool ReadHeaders(DWORD* pResourceRva);
    bool FindResources(DWORD nRva);
    // The resource directory's address from the optional header; 0 when it gives none.
    bool ReadResourceRva(CQzByteCursor& cursor, WORD nOptionalSize, DWORD* pRva) const;
    bool ReadSections(CQzByteCursor& cursor, WORD nCount);
    // The first section whose raw data holds the address; null when none does.
    const Section* FindSection(DWORD nRva) const;
    // The file offset of nSize bytes at the address, when one section's raw data holds them.
    bool MapRva(DWORD nRva, DWORD nSize, size_t* pOffset) const;
    bool ReadDirectory(DWORD nOffset, std::vector<DirectoryEntry>& entries) const;
    void ReadEntries(const std::vector<DirectoryEntry>& names, std::vector<Entry>& entries) const;
    bool ReadEntry(const DirectoryEntry& nameEntry, Entry& entry) const;
    bool ReadName(DWORD nOffset, std::u16string& name) const;
    bool ReadFirstLanguage(DWORD nDirectory, CQzByteCursor& data) const;

    CQzByteCursor m_file;
    std::vector<Section> m_vecSection;
    // From the root directory to the end of the raw data of the section that holds it; empty
    // when the file has no resources.
    CQzByteCursor m_resources;
};

} // namespace QzGui
