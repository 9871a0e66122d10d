#include "support/TempDataDir.h"

#include "platform/render/DataSet.h"
#include "platform/services/QzStringTable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace QzTest
{

TempDataDir::TempDataDir() : m_previous(std::filesystem::current_path())
{
    std::string pattern = (std::filesystem::temp_directory_path() / "qzgui-data-XXXXXX").string();
    if (!mkdtemp(&pattern[0]))
        throw std::runtime_error("cannot make a temporary folder from " + pattern);
    m_path = std::filesystem::canonical(pattern);
    std::filesystem::current_path(m_path);
    ForgetCaches();
}

TempDataDir::~TempDataDir()
{
    ForgetCaches();
    std::error_code ignored;
    std::filesystem::current_path(m_previous, ignored);
    std::filesystem::remove_all(m_path, ignored);
}

void TempDataDir::ForgetCaches()
{
    TableDataSetQuery()->Reload();
    QzPlatform::ReloadStringTable();
}

void TempDataDir::Write(const std::string& relative, const std::string& bytes) const
{
    const std::filesystem::path path = m_path / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string TempDataDir::Read(const std::string& relative) const
{
    std::ifstream file(m_path / relative, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool TempDataDir::Exists(const std::string& relative) const
{
    std::error_code ignored;
    return std::filesystem::exists(m_path / relative, ignored);
}

void TempDataDir::MakeFolder(const std::string& relative) const
{
    std::error_code error;
    EXPECT_TRUE(std::filesystem::create_directory(m_path / relative, error))
        << "cannot make the folder " << relative << ": " << error.message();
}

} // namespace QzTest
