#include "platform/system/kernel/QzFileTable.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/files/QzMemoryFiles.h"
#include "platform/system/kernel/QzPathResolve.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace QzPlatform
{

namespace
{

// Windows maps views at multiples of its allocation granularity.
const uint64_t kAllocationGranularity = 65536;
// More files and mappings than a process usually may have descriptors open.
const size_t kMaxObjects = 65536;

DWORD OpenErrorOf(int errorNumber)
{
    switch (errorNumber)
    {
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    default:
        return ERROR_ACCESS_DENIED;
    }
}

int OpenFlags(DWORD access, DWORD disposition)
{
    const bool read = (access & GENERIC_READ) != 0;
    const bool write = (access & GENERIC_WRITE) != 0;
    int flags = O_CLOEXEC | (read && write ? O_RDWR : write ? O_WRONLY : O_RDONLY);
    if (disposition == CREATE_ALWAYS)
        flags |= O_CREAT | O_TRUNC;
    return flags;
}

} // namespace

CQzFileTable& CQzFileTable::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzFileTable& table = *new CQzFileTable;
    return table;
}

CQzFileTable::Object::~Object()
{
    if (fd >= 0)
        close(fd);
}

bool CQzFileTable::SizeOf(const Object& object, uint64_t* size)
{
    if (object.fd < 0)
    {
        const CQzMemoryFiles::File* file = CQzMemoryFiles::Instance().Find(object.memoryPath);
        *size = file ? file->bytes->size() : 0;
        return file != nullptr;
    }
    struct stat info;
    if (fstat(object.fd, &info) != 0)
        return false;
    *size = static_cast<uint64_t>(info.st_size);
    return true;
}

bool CQzFileTable::ReadAt(const Object& object, unsigned char* buffer, uint64_t count,
                          uint64_t offset)
{
    if (object.fd < 0)
    {
        const CQzMemoryFiles::File* file = CQzMemoryFiles::Instance().Find(object.memoryPath);
        if (!file || offset > file->bytes->size() || count > file->bytes->size() - offset)
            return false;
        std::copy_n(file->bytes->data() + offset, count, buffer);
        return true;
    }
    while (count > 0)
    {
        const ssize_t done = pread(object.fd, buffer, count, static_cast<off_t>(offset));
        if (done <= 0)
            return false;
        buffer += done;
        count -= static_cast<uint64_t>(done);
        offset += static_cast<uint64_t>(done);
    }
    return true;
}

int64_t CQzFileTable::ReadSome(Object& object, void* buffer, DWORD count)
{
    if (object.fd >= 0)
        return read(object.fd, buffer, count);
    uint64_t size = 0;
    if (!SizeOf(object, &size))
        return -1;
    const uint64_t length =
        object.position >= size ? 0 : std::min<uint64_t>(count, size - object.position);
    if (length > 0 && !ReadAt(object, static_cast<unsigned char*>(buffer), length, object.position))
        return -1;
    object.position += length;
    return static_cast<int64_t>(length);
}

int64_t CQzFileTable::WriteSome(Object& object, const void* buffer, DWORD count)
{
    if (object.fd >= 0)
        return write(object.fd, buffer, count);
    CQzMemoryFiles& files = CQzMemoryFiles::Instance();
    const CQzMemoryFiles::File* file = files.Find(object.memoryPath);
    if (!file)
        return -1;
    std::string bytes = *file->bytes;
    if (object.position > bytes.size())
        bytes.resize(object.position, '\0');
    bytes.replace(object.position, std::min<uint64_t>(count, bytes.size() - object.position),
                  static_cast<const char*>(buffer), count);
    object.position += count;
    files.Write(object.memoryPath, std::move(bytes));
    return count;
}

// A file of the memory store: OPEN_EXISTING needs it, CREATE_ALWAYS empties or makes it.
HANDLE CQzFileTable::OpenInMemory(const std::string& path, DWORD disposition)
{
    CQzMemoryFiles& files = CQzMemoryFiles::Instance();
    if (disposition == OPEN_EXISTING && !files.Find(path))
    {
        SetLastError(files.IsFolder(path) ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    if (disposition == CREATE_ALWAYS && !files.Find(path) && !files.CanCreate(path))
    {
        SetLastError(files.IsFolder(path) ? ERROR_ACCESS_DENIED : ERROR_PATH_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    if (disposition == CREATE_ALWAYS)
        files.Write(path, std::string());
    auto object = std::make_unique<Object>(-1);
    object->memoryPath = path;
    const HANDLE file = Add(std::move(object));
    return file ? file : INVALID_HANDLE_VALUE;
}

CQzFileTable::CQzFileTable() : m_objects(kFileHandleTag, kMaxObjects) {}

CQzFileTable::Object* CQzFileTable::Find(HANDLE handle, bool wantMapping)
{
    Object* object = m_objects.Find(FromHandle(handle));
    if (object && object->isMapping == wantMapping)
        return object;
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

// Null when the table is full (the object and its descriptor are gone then).
HANDLE CQzFileTable::Add(std::unique_ptr<Object> object)
{
    const auto handle = ToHandle<HANDLE>(m_objects.Add(std::move(object)));
    if (!handle)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return handle;
}

HANDLE CQzFileTable::Open(const std::string& path, DWORD access, DWORD disposition)
{
    if (path.empty() || (disposition != OPEN_EXISTING && disposition != CREATE_ALWAYS))
    {
        SetLastError(path.empty() ? ERROR_PATH_NOT_FOUND : ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    if (CQzMemoryFiles::Instance().IsOn())
        return OpenInMemory(ResolvePath(path), disposition);
    const int fd = open(ResolvePath(path).c_str(), OpenFlags(access, disposition), 0644);
    if (fd < 0)
    {
        SetLastError(OpenErrorOf(errno));
        return INVALID_HANDLE_VALUE;
    }
    struct stat info;
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))
    {
        close(fd);
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE file = Add(std::make_unique<Object>(fd));
    return file ? file : INVALID_HANDLE_VALUE;
}

bool CQzFileTable::Size(HANDLE file, uint64_t* size)
{
    const Object* object = Find(file, false);
    return object && SizeOf(*object, size);
}

bool CQzFileTable::Read(HANDLE file, void* buffer, DWORD count, DWORD* done)
{
    Object* object = Find(file, false);
    if (!object || (!buffer && count > 0))
        return false;
    DWORD total = 0;
    while (total < count)
    {
        const int64_t part = ReadSome(*object, static_cast<char*>(buffer) + total, count - total);
        if (part < 0)
        {
            SetLastError(ERROR_ACCESS_DENIED);
            return false;
        }
        if (part == 0)
            break;
        total += static_cast<DWORD>(part);
    }
    if (done)
        *done = total;
    return true;
}

bool CQzFileTable::Write(HANDLE file, const void* buffer, DWORD count, DWORD* done)
{
    Object* object = Find(file, false);
    if (!object || (!buffer && count > 0))
        return false;
    DWORD total = 0;
    while (total < count)
    {
        const int64_t part =
            WriteSome(*object, static_cast<const char*>(buffer) + total, count - total);
        if (part <= 0)
        {
            SetLastError(ERROR_ACCESS_DENIED);
            return false;
        }
        total += static_cast<DWORD>(part);
    }
    if (done)
        *done = total;
    return true;
}

HANDLE CQzFileTable::CreateMapping(HANDLE file, uint64_t maximumSize)
{
    uint64_t fileSize = 0;
    const Object* object = Find(file, false);
    if (!object || !Size(file, &fileSize))
        return nullptr;
    const uint64_t size = maximumSize == 0 ? fileSize : maximumSize;
    // A read-only mapping cannot grow the file, and an empty one maps nothing.
    if (size == 0 || size > fileSize)
    {
        SetLastError(size == 0 ? ERROR_INVALID_PARAMETER : ERROR_ACCESS_DENIED);
        return nullptr;
    }
    const int fd = object->fd >= 0 ? dup(object->fd) : -1;
    if (object->fd >= 0 && fd < 0)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    auto mapping = std::make_unique<Object>(fd);
    mapping->memoryPath = object->memoryPath;
    mapping->isMapping = true;
    mapping->mappingSize = size;
    return Add(std::move(mapping));
}

const void* CQzFileTable::MapView(HANDLE mapping, uint64_t offset, SIZE_T count)
{
    const Object* object = Find(mapping, true);
    if (!object)
        return nullptr;
    if (offset % kAllocationGranularity != 0 || offset >= object->mappingSize ||
        count > object->mappingSize - offset)
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    const uint64_t length = count == 0 ? object->mappingSize - offset : count;
    std::unique_ptr<unsigned char[]> view(new (std::nothrow) unsigned char[length]);
    if (!view)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    if (!ReadAt(*object, view.get(), length, offset))
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    const void* address = view.get();
    m_mapViews[address] = std::move(view);
    return address;
}

bool CQzFileTable::UnmapView(const void* address)
{
    if (m_mapViews.erase(address) > 0)
        return true;
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

bool CQzFileTable::Close(HANDLE object)
{
    if (m_objects.Remove(FromHandle(object)))
        return true;
    SetLastError(ERROR_INVALID_HANDLE);
    return false;
}

void CQzFileTable::Reset()
{
    m_objects.Clear();
    m_mapViews.clear();
}

} // namespace QzPlatform

using QzPlatform::CQzFileTable;

HANDLE CreateFileA(LPCSTR lpFileName, DWORD dwDesiredAccess, DWORD dwShareMode,
                   LPVOID lpSecurityAttributes, DWORD dwCreationDisposition,
                   DWORD dwFlagsAndAttributes, HANDLE hTemplateFile)
{
    return CQzFileTable::Instance().Open(lpFileName ? lpFileName : "", dwDesiredAccess,
                                         dwCreationDisposition);
}

DWORD GetFileSize(HANDLE hFile, LPDWORD lpFileSizeHigh)
{
    uint64_t size = 0;
    if (!CQzFileTable::Instance().Size(hFile, &size))
        return INVALID_FILE_SIZE;
    if (lpFileSizeHigh)
        *lpFileSizeHigh = static_cast<DWORD>(size >> 32);
    return static_cast<DWORD>(size);
}

BOOL ReadFile(HANDLE hFile, LPVOID lpBuffer, DWORD nNumberOfBytesToRead,
              LPDWORD lpNumberOfBytesRead, LPVOID lpOverlapped)
{
    return CQzFileTable::Instance().Read(hFile, lpBuffer, nNumberOfBytesToRead,
                                         lpNumberOfBytesRead);
}

BOOL WriteFile(HANDLE hFile, LPCVOID lpBuffer, DWORD nNumberOfBytesToWrite,
               LPDWORD lpNumberOfBytesWritten, LPVOID lpOverlapped)
{
    return CQzFileTable::Instance().Write(hFile, lpBuffer, nNumberOfBytesToWrite,
                                          lpNumberOfBytesWritten);
}

HANDLE CreateFileMappingA(HANDLE hFile, LPVOID lpFileMappingAttributes, DWORD flProtect,
                          DWORD dwMaximumSizeHigh, DWORD dwMaximumSizeLow, LPCSTR lpName)
{
    if (flProtect != PAGE_READONLY)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const uint64_t size = (static_cast<uint64_t>(dwMaximumSizeHigh) << 32) | dwMaximumSizeLow;
    return CQzFileTable::Instance().CreateMapping(hFile, size);
}

LPVOID MapViewOfFile(HANDLE hFileMappingObject, DWORD dwDesiredAccess, DWORD dwFileOffsetHigh,
                     DWORD dwFileOffsetLow, SIZE_T dwNumberOfBytesToMap)
{
    if (dwDesiredAccess != FILE_MAP_READ)
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    const uint64_t offset = (static_cast<uint64_t>(dwFileOffsetHigh) << 32) | dwFileOffsetLow;
    // The view is read-only memory in spirit; Win32 hands it out as LPVOID all the same.
    return const_cast<void*>(
        CQzFileTable::Instance().MapView(hFileMappingObject, offset, dwNumberOfBytesToMap));
}

BOOL UnmapViewOfFile(LPCVOID lpBaseAddress)
{
    return CQzFileTable::Instance().UnmapView(lpBaseAddress) ? TRUE : FALSE;
}

BOOL CloseHandle(HANDLE hObject)
{
    // INVALID_HANDLE_VALUE is also the current process's pseudo handle, which Windows "closes"
    // with success.
    if (hObject == INVALID_HANDLE_VALUE)
        return TRUE;
    return CQzFileTable::Instance().Close(hObject) ? TRUE : FALSE;
}
