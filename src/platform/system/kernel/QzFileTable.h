// Kernel file objects of the hosted system: open files, read-only file mappings and their
// views. Files and mappings are under checked handles of a handle table (HandleTable.h), so a
// closed handle stays invalid after a new object takes its slot. A view is a private copy of the
// mapped bytes, read when the view is made: the reader cannot be hurt by a file that shrinks later,
// and reading past a view's end is a heap overrun that the address sanitizer reports.
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/kernel/HandleTable.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace QzPlatform
{

class CQzFileTable
{
public:
    static CQzFileTable& Instance();

    CQzFileTable();

    HANDLE Open(const std::string& path, DWORD access, DWORD disposition);
    bool Size(HANDLE file, uint64_t* size);
    bool Read(HANDLE file, void* buffer, DWORD count, DWORD* done);
    bool Write(HANDLE file, const void* buffer, DWORD count, DWORD* done);
    HANDLE CreateMapping(HANDLE file, uint64_t maximumSize);
    const void* MapView(HANDLE mapping, uint64_t offset, SIZE_T count);
    bool UnmapView(const void* address);
    bool Close(HANDLE object);
    void Reset();

private:
    // An open file or a mapping: a descriptor, closed with the object, or a file of the memory
    // store (fd -1) read and written at a position of its own.
    struct Object
    {
        explicit Object(int descriptor) : fd(descriptor) {}
        ~Object();
        Object(const Object&) = delete;
        Object& operator=(const Object&) = delete;

        int fd;
        std::string memoryPath;
        uint64_t position = 0;
        bool isMapping = false;
        uint64_t mappingSize = 0;
    };

    HANDLE OpenInMemory(const std::string& path, DWORD disposition);
    static bool SizeOf(const Object& object, uint64_t* size);
    static bool ReadAt(const Object& object, unsigned char* buffer, uint64_t count,
                       uint64_t offset);
    // One read or write of up to count bytes at the object's position: the bytes done, 0 at the
    // end, -1 on failure.
    static int64_t ReadSome(Object& object, void* buffer, DWORD count);
    static int64_t WriteSome(Object& object, const void* buffer, DWORD count);

    Object* Find(HANDLE handle, bool wantMapping);
    HANDLE Add(std::unique_ptr<Object> object);

    CHandleTable<Object> m_objects;
    std::map<const void*, std::unique_ptr<unsigned char[]>> m_mapViews;
};

} // namespace QzPlatform
