// Reads one layout file (sections "[parent-ctrl]"), variant file ("[parent-ctrl-variant]") or
// extended layout file in a single pass, line by line. For every section it asks its owner for
// the record to fill, applies the key lines to it and tells the owner whether the section was
// valid (both "w" and "h" given). Invalid sections are logged with the file and the line that
// ended them; the owner decides what happens to the record.
#pragma once

#include "platform/services/QzFile.h"
#include "platform/system/QzSystem.h"

#include <deque>
#include <functional>
#include <string>

namespace QzGui
{

class CQzGuiWndInfo;

struct QzLayoutSection
{
    int nParentId = 0;
    int nCtrlId = 0;
    int nVariant = 0; // third number of a variant header; 0 otherwise
};

class CQzLayoutReader
{
public:
    // The record a section fills; never null.
    using BeginProc = std::function<CQzGuiWndInfo*(const QzLayoutSection& section)>;
    using EndProc =
        std::function<void(const QzLayoutSection& section, CQzGuiWndInfo* pRecord, bool bValid)>;

    // Longest line read at once; a longer line is read on as the next one.
    static constexpr int kMaxLine = 1023;

    // links: the help-link list "Link" keys append to. bVariant: three-number headers.
    // pszInvalidMessage: the log message of an invalid section.
    CQzLayoutReader(std::deque<std::string>& links, bool bVariant, const char* pszInvalidMessage);
    ~CQzLayoutReader();
    CQzLayoutReader(const CQzLayoutReader&) = delete;
    CQzLayoutReader& operator=(const CQzLayoutReader&) = delete;

    // False, with "open file failed", when the file cannot be opened.
    BOOL Open(const char* pszPath);
    // Reads every section of the opened file, then closes it.
    void Read(const BeginProc& begin, const EndProc& end);

private:
    void Close();
    bool ReadLine();
    bool ParseHeader(QzLayoutSection* pSection) const;
    void ReadSection(const QzLayoutSection& section, const BeginProc& begin, const EndProc& end);
    void ApplyKeyLine(CQzGuiWndInfo& record);

    std::deque<std::string>& m_links;
    bool m_bVariant;
    const char* m_pszInvalidMessage;
    std::string m_strPath;
    QzPlatform::QzFileHandle m_hFile = nullptr;
    char m_szLine[kMaxLine + 1] = {};
    bool m_bPending = false; // m_szLine holds a header still to be read
};

} // namespace QzGui
