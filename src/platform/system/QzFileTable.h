// Kernel file objects of the hosted system: open files, read-only file mappings and their
// views, under checked handles that are never reused. A view is a private copy of the mapped
// bytes, read when the view is made: the reader cannot be hurt by a file that shrinks later,
// and reading past a view's end is a heap overrun that the address sanitizer reports.
#pragma once

#include "platform/system/QzWinTypes.h"

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
    struct Object
    {
        int fd = -1;
        bool isMapping = false;
        uint64_t mappingSize = 0;
    };

    Object* Find(HANDLE handle, bool wantMapping);
    HANDLE Add(const Object& object);

    std::map<uintptr_t, Object> m_mapObjects;
    std::map<const void*, std::unique_ptr<unsigned char[]>> m_mapViews;
    uintptr_t m_nLastId = 0;
};

} // namespace QzPlatform
