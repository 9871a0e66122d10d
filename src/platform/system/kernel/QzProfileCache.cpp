#include "platform/system/kernel/QzProfileCache.h"

#include "platform/system/files/QzMemoryFiles.h"
#include "platform/system/text/QzCodePageHost.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace QzPlatform
{

namespace
{

const size_t kMaxEntries = 64;
// Longer than the coarsest clock tick the kernel stamps files with.
const int64_t kTimestampSlackNs = 50 * 1000 * 1000;

int64_t Nanoseconds(const timespec& time)
{
    return static_cast<int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

DWORD WriteErrorOf(int errorNumber)
{
    if (errorNumber == ENOENT || errorNumber == ENOTDIR)
        return ERROR_PATH_NOT_FOUND;
    return ERROR_ACCESS_DENIED;
}

} // namespace

bool CQzProfileCache::Signature::operator==(const Signature& other) const
{
    return device == other.device && inode == other.inode && size == other.size &&
           modifiedNs == other.modifiedNs && changedNs == other.changedNs;
}

CQzProfileCache::Signature CQzProfileCache::SignatureOf(const struct stat& info)
{
    Signature signature;
    signature.device = info.st_dev;
    signature.inode = info.st_ino;
    signature.size = info.st_size;
    signature.modifiedNs = Nanoseconds(info.st_mtim);
    signature.changedNs = Nanoseconds(info.st_ctim);
    return signature;
}

// A file in memory has no device or inode; its version stands for its times.
CQzProfileCache::Signature CQzProfileCache::SignatureOf(const CQzMemoryFiles::File& file)
{
    Signature signature;
    signature.size = static_cast<int64_t>(file.bytes->size());
    signature.modifiedNs = static_cast<int64_t>(file.version);
    signature.changedNs = signature.modifiedNs;
    return signature;
}

CQzProfileCache& CQzProfileCache::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzProfileCache& cache = *new CQzProfileCache;
    return cache;
}

bool CQzProfileCache::IsSettled(const Signature& signature)
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t latest =
        signature.modifiedNs > signature.changedNs ? signature.modifiedNs : signature.changedNs;
    return Nanoseconds(now) - latest > kTimestampSlackNs;
}

bool CQzProfileCache::Probe(const std::string& path, Signature* signature, int* errorNumber)
{
    const CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (memory.IsOn())
    {
        const CQzMemoryFiles::File* file = memory.Find(path);
        if (file)
            *signature = SignatureOf(*file);
        else
            *errorNumber = memory.IsFolder(path) ? EISDIR : ENOENT;
        return file != nullptr;
    }
    struct stat info;
    const bool exists = stat(path.c_str(), &info) == 0;
    if (!exists || !S_ISREG(info.st_mode))
    {
        *errorNumber = exists ? EISDIR : errno;
        return false;
    }
    *signature = SignatureOf(info);
    return true;
}

bool CQzProfileCache::ReadFile(const std::string& path, std::string* text, Signature* signature,
                               int* errorNumber)
{
    const CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (memory.IsOn())
    {
        const CQzMemoryFiles::File* file = memory.Find(path);
        if (!file)
        {
            *errorNumber = ENOENT;
            return false;
        }
        *text = *file->bytes;
        *signature = SignatureOf(*file);
        return true;
    }
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
    {
        *errorNumber = errno;
        return false;
    }
    struct stat info;
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))
    {
        close(fd);
        *errorNumber = EISDIR;
        return false;
    }
    text->clear();
    text->reserve(static_cast<size_t>(info.st_size));
    char chunk[65536];
    ssize_t count = 0;
    while ((count = read(fd, chunk, sizeof(chunk))) > 0)
        text->append(chunk, static_cast<size_t>(count));
    *errorNumber = count < 0 ? errno : 0;
    close(fd);
    *signature = SignatureOf(info);
    return count == 0;
}

CQzProfileCache::Entry* CQzProfileCache::Load(const std::string& path, int* errorNumber)
{
    Signature current;
    if (!Probe(path, &current, errorNumber))
    {
        m_mapEntries.erase(path);
        return nullptr;
    }
    const UINT codePage = GetAnsiCodePage();
    const auto cached = m_mapEntries.find(path);
    const bool usable = cached != m_mapEntries.end() && cached->second.file->CodePage() == codePage;
    if (usable && cached->second.settled)
    {
        if (current == cached->second.signature)
        {
            cached->second.lastUse = ++m_nUseCounter;
            return &cached->second;
        }
    }
    std::string text;
    Signature signature;
    if (!ReadFile(path, &text, &signature, errorNumber))
    {
        m_mapEntries.erase(path);
        return nullptr;
    }
    if (usable && cached->second.file->Text() == text)
    {
        cached->second.signature = signature;
        cached->second.settled = IsSettled(signature);
        cached->second.lastUse = ++m_nUseCounter;
        return &cached->second;
    }
    Entry entry;
    entry.signature = signature;
    entry.settled = IsSettled(signature);
    entry.file = std::make_unique<CQzProfileFile>(std::move(text), codePage);
    ++m_nParseCount;
    Store(path, std::move(entry));
    return &m_mapEntries[path];
}

void CQzProfileCache::Store(const std::string& path, Entry entry)
{
    if (m_mapEntries.size() >= kMaxEntries && m_mapEntries.count(path) == 0)
    {
        auto oldest = m_mapEntries.begin();
        for (auto it = m_mapEntries.begin(); it != m_mapEntries.end(); ++it)
        {
            if (it->second.lastUse < oldest->second.lastUse)
                oldest = it;
        }
        m_mapEntries.erase(oldest);
    }
    entry.lastUse = ++m_nUseCounter;
    m_mapEntries[path] = std::move(entry);
}

const CQzProfileFile* CQzProfileCache::Find(const std::string& path)
{
    int errorNumber = 0;
    Entry* entry = Load(path, &errorNumber);
    return entry ? entry->file.get() : nullptr;
}

CQzProfileFile* CQzProfileCache::OpenForEdit(const std::string& path, DWORD* error)
{
    int errorNumber = 0;
    Entry* entry = Load(path, &errorNumber);
    if (entry)
        return entry->file.get();
    if (errorNumber != ENOENT)
    {
        *error = WriteErrorOf(errorNumber);
        return nullptr;
    }
    Entry fresh;
    fresh.file = std::make_unique<CQzProfileFile>(std::string(), GetAnsiCodePage());
    Store(path, std::move(fresh));
    return m_mapEntries[path].file.get();
}

DWORD CQzProfileCache::Save(const std::string& path)
{
    const auto found = m_mapEntries.find(path);
    if (found == m_mapEntries.end())
        return ERROR_INVALID_PARAMETER;
    CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (memory.IsOn())
    {
        if (!memory.Find(path) && !memory.CanCreate(path))
        {
            m_mapEntries.erase(found);
            return memory.IsFolder(path) ? ERROR_ACCESS_DENIED : ERROR_PATH_NOT_FOUND;
        }
        memory.Write(path, found->second.file->Text());
        found->second.signature = SignatureOf(*memory.Find(path));
        found->second.settled = true;
        return ERROR_SUCCESS;
    }
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
    {
        const int errorNumber = errno;
        m_mapEntries.erase(found);
        return WriteErrorOf(errorNumber);
    }
    const std::string& text = found->second.file->Text();
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const bool closed = std::fclose(file) == 0;
    struct stat info;
    if (!written || !closed || stat(path.c_str(), &info) != 0)
    {
        m_mapEntries.erase(found);
        return ERROR_ACCESS_DENIED;
    }
    found->second.signature = SignatureOf(info);
    found->second.settled = IsSettled(found->second.signature);
    return ERROR_SUCCESS;
}

void CQzProfileCache::Forget(const std::string& path)
{
    m_mapEntries.erase(path);
}

void CQzProfileCache::Reset()
{
    m_mapEntries.clear();
    m_nParseCount = 0;
}

} // namespace QzPlatform
