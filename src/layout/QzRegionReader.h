// Reads ini/Rgn.dat, the click regions of windows. Binary, little-endian: an entry count (low 16
// bits used), then per entry the first and second identifier (low 16 bits used), the byte size
// of the region data, a reserved word, and the region data in RGNDATA layout.
#pragma once

#include "platform/services/QzFile.h"
#include "platform/system/QzSystem.h"

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace QzGui
{

struct QzRegionEntry
{
    DWORD dwFirstId = 0;
    DWORD dwSecondId = 0;
    DWORD dwDataSize = 0;
    std::vector<BYTE> data; // RGNDATA: header, then rectangles
};

class CQzRegionReader
{
public:
    using StoredProc = std::function<void(uint64_t nKey)>;

    // The key of an entry: the identifiers read as (parent, control), as record keys are made.
    static uint64_t MakeKey(DWORD dwFirstId, DWORD dwSecondId);

    // Adds the file's entries to the table (a later entry of the same key replaces the earlier
    // one) and tells `stored` each key. False when the file cannot be opened; false and "open
    // file failed" when it is cut short, keeping the entries before.
    static BOOL Read(const char* pszPath, std::map<uint64_t, QzRegionEntry>& table,
                     const StoredProc& stored);

private:
    static bool ReadDword(QzPlatform::QzFileHandle hFile, DWORD* pValue);
    static void ReadData(QzPlatform::QzFileHandle hFile, DWORD dwSize, std::vector<BYTE>& data);
    static BOOL Fail(QzPlatform::QzFileHandle hFile, const char* pszPath);
};

} // namespace QzGui
