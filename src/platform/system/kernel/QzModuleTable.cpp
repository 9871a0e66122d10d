#include "platform/system/kernel/QzModuleTable.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/files/QzMemoryFiles.h"
#include "platform/system/kernel/QzPathResolve.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <unistd.h>

namespace QzPlatform
{

namespace
{

// The executable's module handle: the usual image base of a Windows executable.
HMODULE const kExecutable = reinterpret_cast<HMODULE>(static_cast<uintptr_t>(0x400000));
// Far more data modules than a program loads.
constexpr size_t kMaxDataModules = 4096;

std::string ExecutablePath()
{
    char buffer[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof(buffer));
    if (length <= 0)
        return std::string();
    return std::string(buffer, static_cast<size_t>(length));
}

std::string AbsolutePath(const std::string& path)
{
    const CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (memory.IsOn())
        return memory.Find(path) || memory.IsFolder(path) ? memory.FullName(path) : std::string();
    char* real = realpath(path.c_str(), nullptr);
    if (!real)
        return std::string();
    std::string result(real);
    std::free(real);
    return result;
}

} // namespace

CQzModuleTable& CQzModuleTable::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzModuleTable& table = *new CQzModuleTable;
    return table;
}

CQzModuleTable::CQzModuleTable() : m_dataFiles(kModuleHandleTag, kMaxDataModules) {}

HMODULE CQzModuleTable::ExecutableHandle() const
{
    return kExecutable;
}

bool CQzModuleTable::PathOf(HMODULE module, std::string* path) const
{
    if (!module || module == kExecutable)
    {
        *path = ExecutablePath();
        return !path->empty();
    }
    const std::string* found = m_dataFiles.Find(FromHandle(module));
    if (!found)
        return false;
    *path = *found;
    return true;
}

HMODULE CQzModuleTable::AddDataFile(const std::string& path)
{
    const std::string absolute = AbsolutePath(ResolvePath(path));
    if (absolute.empty())
        return nullptr;
    return ToHandle<HMODULE>(m_dataFiles.Add(std::make_unique<std::string>(absolute)));
}

bool CQzModuleTable::Remove(HMODULE module)
{
    return m_dataFiles.Remove(FromHandle(module)) != nullptr;
}

void CQzModuleTable::Reset()
{
    m_dataFiles.Clear();
}

} // namespace QzPlatform
