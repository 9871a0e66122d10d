// Module handles of the hosted kernel: the executable (the null module and GetModuleHandleA's
// answer) and files named as data modules by LoadLibraryExA, each with its absolute path. Data
// modules are under handles of a handle table (HandleTable.h): a freed module's handle stays
// invalid after another module takes its slot.
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/kernel/HandleTable.h"

#include <string>

namespace QzPlatform
{

class CQzModuleTable
{
public:
    static CQzModuleTable& Instance();

    CQzModuleTable();

    HMODULE ExecutableHandle() const;
    // The path of a module (the executable for null); false for an unknown handle.
    bool PathOf(HMODULE module, std::string* path) const;
    // Registers an existing file as a data module; null when the file does not exist or the
    // table is full.
    HMODULE AddDataFile(const std::string& path);
    bool Remove(HMODULE module);
    void Reset();

private:
    CHandleTable<std::string> m_dataFiles; // the absolute path of each data module
};

} // namespace QzPlatform
