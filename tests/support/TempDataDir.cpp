#include "support/TempDataDir.h"

#include "platform/render/DataSet.h"
#include "platform/services/QzStringTable.h"
#include "platform/system/host/QzHost.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace QzTest
{

namespace
{

#ifdef _WIN32
// The memory files are the hosted system's; a Windows build has the disk only, and
// QZ_ON_DISK_AND_IN_MEMORY runs its suites on the disk there.
void UseMemoryFiles(bool) {}
void SetMemoryFile(const std::string&, const std::string&) {}
bool GetMemoryFile(const std::string&, std::string*)
{
    return false;
}
bool RemoveMemoryFile(const std::string&)
{
    return false;
}
void MakeMemoryFolder(const std::string&) {}
#else
using QzPlatform::Host::GetMemoryFile;
using QzPlatform::Host::MakeMemoryFolder;
using QzPlatform::Host::RemoveMemoryFile;
using QzPlatform::Host::SetMemoryFile;
using QzPlatform::Host::UseMemoryFiles;
#endif

} // namespace

TempDataDir::TempDataDir(Storage storage)
    : m_storage(storage), m_previous(std::filesystem::current_path())
{
    std::filesystem::current_path(m_folder.Path());
    UseMemoryFiles(storage == Storage::Memory);
    ForgetCaches();
}

TempDataDir::~TempDataDir()
{
    UseMemoryFiles(false);
    ForgetCaches();
    std::error_code ignored;
    std::filesystem::current_path(m_previous, ignored);
}

void TempDataDir::ForgetCaches()
{
    TableDataSetQuery()->Reload();
    QzPlatform::ReloadStringTable();
}

void TempDataDir::Write(const std::string& relative, const std::string& bytes) const
{
    if (m_storage == Storage::Memory)
        return SetMemoryFile(relative, bytes);
    const std::filesystem::path path = Path() / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string TempDataDir::Read(const std::string& relative) const
{
    std::string bytes;
    if (m_storage == Storage::Memory)
        return GetMemoryFile(relative, &bytes) ? bytes : std::string();
    std::ifstream file(Path() / relative, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool TempDataDir::Exists(const std::string& relative) const
{
    std::string bytes;
    if (m_storage == Storage::Memory)
        return GetMemoryFile(relative, &bytes);
    std::error_code ignored;
    return std::filesystem::exists(Path() / relative, ignored);
}

void TempDataDir::Remove(const std::string& relative) const
{
    if (m_storage == Storage::Memory)
        EXPECT_TRUE(RemoveMemoryFile(relative)) << relative;
    else
        EXPECT_TRUE(std::filesystem::remove(Path() / relative)) << relative;
}

void TempDataDir::MakeFolder(const std::string& relative) const
{
    if (m_storage == Storage::Memory)
        return MakeMemoryFolder(relative);
    std::error_code error;
    EXPECT_TRUE(std::filesystem::create_directory(Path() / relative, error))
        << "cannot make the folder " << relative << ": " << error.message();
}

} // namespace QzTest
