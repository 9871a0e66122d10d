#include "layout/QzRegionReader.h"

#include "platform/services/QzLog.h"

#include <algorithm>

namespace QzGui
{

namespace
{

// Region data is read in pieces, so a size the file does not hold never allocates more than
// the file gives.
constexpr DWORD kChunk = 64 * 1024;

} // namespace

uint64_t CQzRegionReader::MakeKey(DWORD dwFirstId, DWORD dwSecondId)
{
    return static_cast<uint64_t>(dwFirstId & 0xFFFF) |
           (static_cast<uint64_t>(dwSecondId & 0xFFFF) << 32);
}

BOOL CQzRegionReader::Read(const char* pszPath, std::map<uint64_t, QzRegionEntry>& table,
                           const StoredProc& stored)
{
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    QzPlatform::QzFileHandle hFile = files.Open(pszPath, "rb");
    if (!hFile)
        return FALSE;
    DWORD dwCount = 0;
    if (!ReadDword(hFile, &dwCount))
        return Fail(hFile, pszPath);
    dwCount &= 0xFFFF;
    for (DWORD i = 0; i < dwCount; ++i)
    {
        QzRegionEntry entry;
        DWORD dwReserved = 0;
        ReadDword(hFile, &entry.dwFirstId);
        ReadDword(hFile, &entry.dwSecondId);
        ReadDword(hFile, &entry.dwDataSize);
        ReadDword(hFile, &dwReserved);
        ReadData(hFile, entry.dwDataSize, entry.data);
        if (files.IsEof(hFile) || files.IsError(hFile))
            return Fail(hFile, pszPath);
        const uint64_t nKey = MakeKey(entry.dwFirstId, entry.dwSecondId);
        table[nKey] = std::move(entry);
        stored(nKey);
    }
    files.Close(hFile);
    return TRUE;
}

bool CQzRegionReader::ReadDword(QzPlatform::QzFileHandle hFile, DWORD* pValue)
{
    BYTE bytes[4] = {0, 0, 0, 0};
    const bool bRead = QzPlatform::GetFileService().Read(bytes, sizeof(bytes), 1, hFile) == 1;
    *pValue = static_cast<DWORD>(bytes[0]) | (static_cast<DWORD>(bytes[1]) << 8) |
              (static_cast<DWORD>(bytes[2]) << 16) | (static_cast<DWORD>(bytes[3]) << 24);
    return bRead;
}

void CQzRegionReader::ReadData(QzPlatform::QzFileHandle hFile, DWORD dwSize,
                               std::vector<BYTE>& data)
{
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    DWORD dwLeft = dwSize;
    while (dwLeft > 0)
    {
        const DWORD dwPiece = std::min(dwLeft, kChunk);
        const size_t offset = data.size();
        data.resize(offset + dwPiece);
        const size_t read = files.Read(data.data() + offset, 1, dwPiece, hFile);
        if (read < dwPiece)
        {
            data.resize(offset + read);
            return;
        }
        dwLeft -= dwPiece;
    }
}

BOOL CQzRegionReader::Fail(QzPlatform::QzFileHandle hFile, const char* pszPath)
{
    QzPlatform::GetFileService().Close(hFile);
    QzPlatform::LogEvent("open file failed", "QzRegionReader", __LINE__,
                         {QzPlatform::LogText("file_name", pszPath)});
    return FALSE;
}

} // namespace QzGui
