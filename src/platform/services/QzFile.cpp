#include "platform/services/QzFile.h"

#include "platform/system/kernel/QzPathResolve.h"
#ifndef _WIN32
#include "platform/system/files/QzMemoryFiles.h"
#include "platform/system/files/QzMemoryStream.h"
#endif

#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace QzPlatform
{

namespace
{

FILE* AsFile(void* file)
{
    return static_cast<FILE*>(file);
}

// The memory files in place of the disk belong to the hosted system; Windows reads the disk.
#ifdef _WIN32
bool InMemory()
{
    return false;
}

FILE* OpenMemoryStream(const std::string&, const char*)
{
    return nullptr;
}

bool FindMemoryFile(const std::string&, std::string*)
{
    return false;
}
#else
bool InMemory()
{
    return CQzMemoryFiles::Instance().IsOn();
}

bool FindMemoryFile(const std::string& path, std::string* bytes)
{
    const CQzMemoryFiles::File* file = CQzMemoryFiles::Instance().Find(path);
    if (file && bytes)
        *bytes = *file->bytes;
    return file != nullptr;
}
#endif

} // namespace

CQzFileService::~CQzFileService()
{
    for (const auto& entry : m_mapFiles)
        std::fclose(AsFile(entry.second));
}

QzFileHandle CQzFileService::Open(const char* path, const char* mode)
{
    if (!path || !mode || path[0] == 0)
        return nullptr;
    const std::string resolved = ResolvePath(path);
    FILE* file = InMemory() ? OpenMemoryStream(resolved, mode) : std::fopen(resolved.c_str(), mode);
    if (!file)
        return nullptr;
    // Numbers are never handed out twice, so a stale handle cannot reach a newer file.
    const uintptr_t number = m_nNextHandle++;
    m_mapFiles[number] = file;
    return reinterpret_cast<QzFileHandle>(number);
}

char* CQzFileService::ReadLine(char* buffer, int size, QzFileHandle file)
{
    FILE* stream = AsFile(Find(file));
    if (!stream || !buffer || size < 2)
        return nullptr;
    return std::fgets(buffer, size, stream);
}

int CQzFileService::Seek(QzFileHandle file, long offset, int origin)
{
    FILE* stream = AsFile(Find(file));
    if (!stream || origin < 0 || origin > 2)
        return -1;
    static const int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    return std::fseek(stream, offset, kOrigins[origin]) == 0 ? 0 : -1;
}

size_t CQzFileService::Read(void* buffer, size_t size, size_t count, QzFileHandle file)
{
    FILE* stream = AsFile(Find(file));
    if (!stream || !buffer)
        return 0;
    return std::fread(buffer, size, count, stream);
}

bool CQzFileService::IsEof(QzFileHandle file) const
{
    FILE* stream = AsFile(Find(file));
    return !stream || std::feof(stream) != 0;
}

bool CQzFileService::IsError(QzFileHandle file) const
{
    FILE* stream = AsFile(Find(file));
    return !stream || std::ferror(stream) != 0;
}

int CQzFileService::Scanf(QzFileHandle file, const char* format, ...)
{
    FILE* stream = AsFile(Find(file));
    if (!stream || !format)
        return EOF;
    va_list args;
    va_start(args, format);
    const int assigned = std::vfscanf(stream, format, args);
    va_end(args);
    return assigned;
}

int CQzFileService::Close(QzFileHandle file)
{
    const auto found = m_mapFiles.find(reinterpret_cast<uintptr_t>(file));
    if (found == m_mapFiles.end())
        return -1;
    FILE* stream = AsFile(found->second);
    m_mapFiles.erase(found);
    return std::fclose(stream) == 0 ? 0 : -1;
}

void* CQzFileService::Find(QzFileHandle file) const
{
    const auto found = m_mapFiles.find(reinterpret_cast<uintptr_t>(file));
    return found == m_mapFiles.end() ? nullptr : found->second;
}

CQzFileService& GetFileService()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzFileService& service = *new CQzFileService;
    return service;
}

bool ReadWholeFile(const std::string& path, std::string* bytes)
{
    const std::string resolved = ResolvePath(path);
    if (InMemory())
        return FindMemoryFile(resolved, bytes);
    std::ifstream file(resolved, std::ios::binary);
    if (!file)
        return false;
    bytes->assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return !file.bad();
}

bool IsFile(const std::string& path)
{
    const std::string resolved = ResolvePath(path);
    if (InMemory())
        return FindMemoryFile(resolved, nullptr);
    struct stat info;
    return stat(resolved.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

} // namespace QzPlatform
