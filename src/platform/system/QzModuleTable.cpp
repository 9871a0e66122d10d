#include "platform/system/QzModuleTable.h"

#include "platform/system/QzPathResolve.h"
#include "platform/system/QzWinKernel.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace QzPlatform
{

namespace
{

// The executable's module handle: the usual image base of a Windows executable.
HMODULE const kExecutable = reinterpret_cast<HMODULE>(static_cast<uintptr_t>(0x400000));

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
    static CQzModuleTable table;
    return table;
}

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
    const auto found = m_mapDataFiles.find(module);
    if (found == m_mapDataFiles.end())
        return false;
    *path = found->second;
    return true;
}

HMODULE CQzModuleTable::AddDataFile(const std::string& path)
{
    const std::string absolute = AbsolutePath(ResolvePath(path));
    if (absolute.empty())
        return nullptr;
    m_nNextHandle += 0x10000;
    const auto module = reinterpret_cast<HMODULE>(m_nNextHandle);
    m_mapDataFiles[module] = absolute;
    return module;
}

bool CQzModuleTable::Remove(HMODULE module)
{
    return m_mapDataFiles.erase(module) > 0;
}

void CQzModuleTable::Reset()
{
    m_mapDataFiles.clear();
}

} // namespace QzPlatform
