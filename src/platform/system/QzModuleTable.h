// Module handles of the hosted kernel: the executable (the null module and GetModuleHandleA's
// answer) and files named as data modules by LoadLibraryExA, each with its absolute path.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <map>
#include <string>

namespace QzPlatform
{

class CQzModuleTable
{
public:
    static CQzModuleTable& Instance();

    HMODULE ExecutableHandle() const;
    // The path of a module (the executable for null); false for an unknown handle.
    bool PathOf(HMODULE module, std::string* path) const;
    // Registers an existing file as a data module; null when the file does not exist.
    HMODULE AddDataFile(const std::string& path);
    bool Remove(HMODULE module);
    void Reset();

private:
    std::map<HMODULE, std::string> m_mapDataFiles;
    uintptr_t m_nNextHandle = 0x10000000;
};

} // namespace QzPlatform
