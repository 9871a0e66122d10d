// The base library's file service. Game data names files the Windows way ("ini\\Font.ini"), so
// every path goes through ResolvePath. Handles are numbers handed out once: a closed or made-up
// handle is refused by every operation (null, 0 or failure), never confused with an open file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#if defined(__GNUC__) || defined(__clang__)
#define QZ_SCANF_FORMAT(formatIndex, firstArg) __attribute__((format(scanf, formatIndex, firstArg)))
#else
#define QZ_SCANF_FORMAT(formatIndex, firstArg)
#endif

namespace QzPlatform
{

struct QzFileTag;
typedef QzFileTag* QzFileHandle; // null means "no file"

class CQzFileService
{
public:
    CQzFileService() = default;
    ~CQzFileService();
    CQzFileService(const CQzFileService&) = delete;
    CQzFileService& operator=(const CQzFileService&) = delete;

    // fopen modes: "r", "rb", "a+" (creates a missing file) and the other standard ones.
    QzFileHandle Open(const char* path, const char* mode);
    // fgets: up to size - 1 bytes, keeping the newline; null at the end or on a bad handle.
    char* ReadLine(char* buffer, int size, QzFileHandle file);
    // fseek with origin 0 (start), 1 (current) or 2 (end); 0 on success, -1 on failure.
    int Seek(QzFileHandle file, long offset, int origin);
    // fread: the number of whole items read.
    size_t Read(void* buffer, size_t size, size_t count, QzFileHandle file);
    // End and error tests; a bad handle counts as both, so read loops always stop.
    bool IsEof(QzFileHandle file) const;
    bool IsError(QzFileHandle file) const;
    // fscanf: the number of items assigned, -1 (EOF) at the end or on a bad handle.
    int Scanf(QzFileHandle file, const char* format, ...) QZ_SCANF_FORMAT(3, 4);
    // 0 on success, -1 for a bad handle.
    int Close(QzFileHandle file);

    // Number of files open now (leak checks in tests).
    size_t GetOpenCount() const { return m_mapFiles.size(); }

private:
    void* Find(QzFileHandle file) const;

    std::map<uintptr_t, void*> m_mapFiles; // handle number -> FILE*
    uintptr_t m_nNextHandle = 1;
};

// The process-wide file service.
CQzFileService& GetFileService();

// The whole of a file (the name as game data gives it); false when it cannot be read.
bool ReadWholeFile(const std::string& path, std::string* bytes);
// Whether the name (as game data gives it) is a regular file.
bool IsFile(const std::string& path);

} // namespace QzPlatform
