#include "support/TempDataDir.h"

#include "platform/render/DataSet.h"
#include "platform/services/QzStringTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace QzTest
{

TempDataDir::TempDataDir() : m_previous(std::filesystem::current_path())
{
    std::filesystem::current_path(m_folder.Path());
    ForgetCaches();
}

TempDataDir::~TempDataDir()
{
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
    const std::filesystem::path path = Path() / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string TempDataDir::Read(const std::string& relative) const
{
    std::ifstream file(Path() / relative, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool TempDataDir::Exists(const std::string& relative) const
{
    std::error_code ignored;
    return std::filesystem::exists(Path() / relative, ignored);
}

void TempDataDir::MakeFolder(const std::string& relative) const
{
    std::error_code error;
    EXPECT_TRUE(std::filesystem::create_directory(Path() / relative, error))
        << "cannot make the folder " << relative << ": " << error.message();
}

} // namespace QzTest
