#include "layout/QzLayoutReader.h"

#include "layout/QzGuiWndInfo.h"
#include "layout/QzLayoutKeyTable.h"
#include "layout/QzLineText.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <cstdio>
#include <cstring>

namespace QzGui
{

namespace
{

constexpr size_t kMaxKey = 254;
constexpr size_t kMaxValue = 255;

// The length a text of `length` bytes keeps under the limit, never splitting a two-byte
// character.
size_t CutLength(const char* pszText, size_t length, size_t limit)
{
    if (length <= limit)
        return length;
    return QzPlatform::IsLeadByteAt(pszText, static_cast<int>(limit - 1)) ? limit - 1 : limit;
}

} // namespace

CQzLayoutReader::CQzLayoutReader(std::deque<std::string>& links, bool bVariant,
                                 const char* pszInvalidMessage)
    : m_links(links), m_bVariant(bVariant), m_pszInvalidMessage(pszInvalidMessage)
{
}

CQzLayoutReader::~CQzLayoutReader()
{
    Close();
}

BOOL CQzLayoutReader::Open(const char* pszPath)
{
    Close();
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    m_hFile = files.Open(pszPath, "r");
    // The first line is read here, so that a path that names no readable file (a folder)
    // fails like a missing file.
    const bool bFirstLine = m_hFile && files.ReadLine(m_szLine, sizeof(m_szLine), m_hFile);
    if (m_hFile && !bFirstLine && files.IsError(m_hFile))
        Close();
    if (!m_hFile)
    {
        QzPlatform::LogEvent("open file failed", "QzLayoutReader", __LINE__,
                             {QzPlatform::LogText("file_name", pszPath)});
        return FALSE;
    }
    m_strPath = pszPath;
    m_bPending = bFirstLine;
    return TRUE;
}

void CQzLayoutReader::Close()
{
    if (m_hFile)
        QzPlatform::GetFileService().Close(m_hFile);
    m_hFile = nullptr;
}

void CQzLayoutReader::Read(const BeginProc& begin, const EndProc& end)
{
    while (m_hFile && ReadLine())
    {
        // Comments, empty lines and lines outside a section start with anything but "[".
        if (m_szLine[0] != '[')
            continue;
        StripLineFeed(m_szLine);
        QzLayoutSection section;
        if (ParseHeader(&section))
            ReadSection(section, begin, end);
    }
    Close();
}

// The next line: a header that ended the last section first, then the file's lines.
bool CQzLayoutReader::ReadLine()
{
    if (m_bPending)
    {
        m_bPending = false;
        return true;
    }
    return QzPlatform::GetFileService().ReadLine(m_szLine, sizeof(m_szLine), m_hFile) != nullptr;
}

bool CQzLayoutReader::ParseHeader(QzLayoutSection* pSection) const
{
    if (m_bVariant)
        return std::sscanf(m_szLine, "[%d-%d-%d]", &pSection->nParentId, &pSection->nCtrlId,
                           &pSection->nVariant) == 3;
    return std::sscanf(m_szLine, "[%d-%d]", &pSection->nParentId, &pSection->nCtrlId) == 2;
}

void CQzLayoutReader::ReadSection(const QzLayoutSection& section, const BeginProc& begin,
                                  const EndProc& end)
{
    CQzGuiWndInfo* pRecord = begin(section);
    while (ReadLine())
    {
        if (m_szLine[0] == '[')
        {
            m_bPending = true;
            break;
        }
        StripLineFeed(m_szLine);
        if (m_szLine[0] == 0 || IsCommentLine(m_szLine))
            continue;
        ApplyKeyLine(*pRecord);
    }
    const bool bValid =
        pRecord->GetWidth() != WNDINFO_NOT_GIVEN && pRecord->GetHeight() != WNDINFO_NOT_GIVEN;
    if (!bValid)
    {
        // The line that ended the section: the next header, or the last line of the file.
        m_szLine[kMaxLine] = 0;
        char szLine[kMaxLine + 1];
        std::memcpy(szLine, m_szLine, sizeof(szLine));
        StripLineFeed(szLine);
        QzPlatform::LogEvent(m_pszInvalidMessage, "QzLayoutReader", __LINE__,
                             {QzPlatform::LogText("file_name", m_strPath.c_str()),
                              QzPlatform::LogText("line", szLine)});
    }
    end(section, pRecord, bValid);
}

// key=value: the key is the text before the first "=", the value the rest, nothing trimmed.
// A line without "=", without a key or without a value changes nothing. Keys keep at most 254
// bytes and values 255.
void CQzLayoutReader::ApplyKeyLine(CQzGuiWndInfo& record)
{
    const char* pszEquals = std::strchr(m_szLine, '=');
    if (!pszEquals || pszEquals == m_szLine || pszEquals[1] == 0)
        return;
    // Copies, so that the line stays whole for a data error report.
    char szKey[kMaxKey + 1];
    const size_t keyLength =
        CutLength(m_szLine, static_cast<size_t>(pszEquals - m_szLine), kMaxKey);
    std::memcpy(szKey, m_szLine, keyLength);
    szKey[keyLength] = 0;
    char szValue[kMaxValue + 1];
    const char* pszValue = pszEquals + 1;
    const size_t valueLength = CutLength(pszValue, std::strlen(pszValue), kMaxValue);
    std::memcpy(szValue, pszValue, valueLength);
    szValue[valueLength] = 0;
    CQzLayoutKeyTable::Apply(record, szKey, szValue, m_links);
}

} // namespace QzGui
