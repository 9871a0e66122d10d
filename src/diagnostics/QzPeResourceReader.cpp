#include "diagnostics/QzPeResourceReader.h"

#include <algorithm>
#include <cstdint>

namespace QzGui
{

namespace
{

constexpr WORD kDosSignature = 0x5A4D; // "MZ"
constexpr WORD kMinRelocationOffset = 0x40;
constexpr size_t kRelocationOffsetField = 0x18;
constexpr size_t kPeOffsetField = 0x3C;
constexpr DWORD kPeSignature = 0x00004550; // "PE\0\0"
constexpr WORD kMagicPe32 = 0x10B;
constexpr WORD kMagicPe64 = 0x20B;
// Where NumberOfRvaAndSizes lies in the optional header; the data directories follow it.
constexpr size_t kDirectoryCountField32 = 92;
constexpr size_t kDirectoryCountField64 = 108;
constexpr DWORD kResourceDirectory = 2;
constexpr size_t kDirectorySize = 8;
constexpr size_t kSectionHeaderSize = 40;
constexpr size_t kSectionVirtualAddressField = 12;
constexpr size_t kResourceDirectoryHeaderSize = 16;
constexpr size_t kResourceEntrySize = 8;
constexpr size_t kResourceDataEntrySize = 16;
constexpr DWORD kHighBit = 0x80000000;
// Names longer than this are cut; the directory may give up to 65535 characters.
constexpr size_t kMaxNameLength = 255;

} // namespace

CQzPeResourceReader::CQzPeResourceReader(const BYTE* pFile, size_t nSize) : m_file(pFile, nSize) {}

bool CQzPeResourceReader::Open()
{
    DWORD nRva = 0;
    if (!ReadHeaders(&nRva))
        return false;
    return nRva == 0 || FindResources(nRva);
}

bool CQzPeResourceReader::ReadHeaders(DWORD* pResourceRva)
{
    CQzByteCursor cursor = m_file;
    if (cursor.Word() != kDosSignature)
        return false;
    cursor.Seek(kRelocationOffsetField);
    if (cursor.Word() < kMinRelocationOffset)
        return false;
    cursor.Seek(kPeOffsetField);
    cursor.Seek(cursor.Dword());
    if (cursor.Dword() != kPeSignature)
        return false;
    cursor.Skip(2); // machine
    const WORD nSections = cursor.Word();
    cursor.Skip(12); // time stamp, symbol table, symbol count
    const WORD nOptionalSize = cursor.Word();
    cursor.Skip(2); // characteristics
    if (!cursor.Ok() || !ReadResourceRva(cursor, nOptionalSize, pResourceRva))
        return false;
    cursor.Skip(nOptionalSize);
    return ReadSections(cursor, nSections);
}

// The resource tree is read from the raw data of the section that holds its root, as far as
// the file has it.
bool CQzPeResourceReader::FindResources(DWORD nRva)
{
    const Section* pSection = FindSection(nRva);
    size_t nOffset = 0;
    if (!pSection || !MapRva(nRva, 1, &nOffset))
        return false;
    const size_t nTail = pSection->nRawSize - (nRva - pSection->nVirtualAddress);
    m_resources = m_file.Sub(nOffset, std::min(nTail, m_file.Size() - nOffset));
    return m_resources.Ok();
}

bool CQzPeResourceReader::ReadResourceRva(CQzByteCursor& cursor, WORD nOptionalSize,
                                          DWORD* pRva) const
{
    CQzByteCursor optional = m_file.Sub(cursor.Pos(), nOptionalSize);
    const WORD nMagic = optional.Word();
    if (nMagic != kMagicPe32 && nMagic != kMagicPe64)
        return false;
    optional.Seek(nMagic == kMagicPe32 ? kDirectoryCountField32 : kDirectoryCountField64);
    const DWORD nDirectories = optional.Dword();
    if (!optional.Ok())
        return false;
    *pRva = 0;
    if (nDirectories <= kResourceDirectory)
        return true;
    optional.Skip(kResourceDirectory * kDirectorySize);
    *pRva = optional.Dword();
    return optional.Ok();
}

bool CQzPeResourceReader::ReadSections(CQzByteCursor& cursor, WORD nCount)
{
    if (!cursor.Has(static_cast<size_t>(nCount) * kSectionHeaderSize))
        return false;
    m_vecSection.resize(nCount);
    for (Section& section : m_vecSection)
    {
        CQzByteCursor header = m_file.Sub(cursor.Pos(), kSectionHeaderSize);
        header.Seek(kSectionVirtualAddressField);
        section.nVirtualAddress = header.Dword();
        section.nRawSize = header.Dword();
        section.nRawOffset = header.Dword();
        cursor.Skip(kSectionHeaderSize);
    }
    return cursor.Ok();
}

const CQzPeResourceReader::Section* CQzPeResourceReader::FindSection(DWORD nRva) const
{
    for (const Section& section : m_vecSection)
    {
        if (nRva >= section.nVirtualAddress && nRva - section.nVirtualAddress < section.nRawSize)
            return &section;
    }
    return nullptr;
}

bool CQzPeResourceReader::MapRva(DWORD nRva, DWORD nSize, size_t* pOffset) const
{
    const Section* pSection = FindSection(nRva);
    if (!pSection)
        return false;
    const DWORD nDelta = nRva - pSection->nVirtualAddress;
    const uint64_t nOffset = static_cast<uint64_t>(pSection->nRawOffset) + nDelta;
    if (nSize > pSection->nRawSize - nDelta || nOffset > m_file.Size() ||
        nSize > m_file.Size() - nOffset)
        return false;
    *pOffset = static_cast<size_t>(nOffset);
    return true;
}

bool CQzPeResourceReader::ListType(WORD nType, std::vector<Entry>& entries) const
{
    entries.clear();
    if (!m_resources.Ok())
        return true;
    std::vector<DirectoryEntry> types;
    if (!ReadDirectory(0, types))
        return false;
    const auto type =
        std::find_if(types.begin(), types.end(),
                     [&](const DirectoryEntry& entry) { return entry.nName == nType; });
    if (type == types.end())
        return true;
    std::vector<DirectoryEntry> names;
    if (!(type->nOffset & kHighBit) || !ReadDirectory(type->nOffset & ~kHighBit, names))
        return false;
    ReadEntries(names, entries);
    return true;
}

void CQzPeResourceReader::ReadEntries(const std::vector<DirectoryEntry>& names,
                                      std::vector<Entry>& entries) const
{
    entries.resize(names.size());
    // Data shared between entries could make a small file describe endless resources: the
    // entries of a type together may take no more bytes than the file has.
    size_t nTotal = 0;
    for (size_t i = 0; i < names.size(); ++i)
    {
        Entry& entry = entries[i];
        entry.bDamaged = !ReadEntry(names[i], entry) || entry.data.Size() > m_file.Size() - nTotal;
        if (entry.bDamaged)
            entry.data = CQzByteCursor();
        nTotal += entry.data.Size();
    }
}

bool CQzPeResourceReader::ReadDirectory(DWORD nOffset, std::vector<DirectoryEntry>& entries) const
{
    CQzByteCursor cursor = m_resources;
    cursor.Seek(nOffset);
    cursor.Skip(kResourceDirectoryHeaderSize - 4);
    const size_t nCount = static_cast<size_t>(cursor.Word()) + cursor.Word();
    if (!cursor.Has(nCount * kResourceEntrySize))
        return false;
    entries.resize(nCount);
    for (DirectoryEntry& entry : entries)
    {
        entry.nName = cursor.Dword();
        entry.nOffset = cursor.Dword();
    }
    return cursor.Ok();
}

bool CQzPeResourceReader::ReadEntry(const DirectoryEntry& nameEntry, Entry& entry) const
{
    entry.bNamed = (nameEntry.nName & kHighBit) != 0;
    if (entry.bNamed && !ReadName(nameEntry.nName & ~kHighBit, entry.strName))
        return false;
    entry.nId = entry.bNamed ? 0 : nameEntry.nName;
    // A name leads to the directory of its languages, never straight to data.
    if (!(nameEntry.nOffset & kHighBit))
        return false;
    return ReadFirstLanguage(nameEntry.nOffset & ~kHighBit, entry.data);
}

bool CQzPeResourceReader::ReadName(DWORD nOffset, std::u16string& name) const
{
    CQzByteCursor cursor = m_resources;
    cursor.Seek(nOffset);
    const size_t nLength = cursor.Word();
    if (!cursor.Has(nLength * 2))
        return false;
    name.resize(std::min(nLength, kMaxNameLength));
    for (char16_t& unit : name)
        unit = static_cast<char16_t>(cursor.Word());
    return cursor.Ok();
}

// Only the first entry of a language directory is read: many names may share one directory.
bool CQzPeResourceReader::ReadFirstLanguage(DWORD nDirectory, CQzByteCursor& data) const
{
    CQzByteCursor cursor = m_resources;
    cursor.Seek(nDirectory);
    cursor.Skip(kResourceDirectoryHeaderSize - 4);
    const size_t nCount = static_cast<size_t>(cursor.Word()) + cursor.Word();
    cursor.Skip(4); // the first language's identifier
    const DWORD nDataOffset = cursor.Dword();
    if (!cursor.Ok() || nCount == 0 || (nDataOffset & kHighBit))
        return false;
    cursor.Seek(nDataOffset);
    const DWORD nRva = cursor.Dword();
    const DWORD nSize = cursor.Dword();
    size_t nFileOffset = 0;
    if (!cursor.Has(kResourceDataEntrySize - 8) || !MapRva(nRva, nSize, &nFileOffset))
        return false;
    data = m_file.Sub(nFileOffset, nSize);
    return data.Ok();
}

} // namespace QzGui
