// Makes a fresh temporary folder the current directory for the lifetime of the object, then
// restores the previous directory and removes the folder.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace QzServicesTest
{

class ScopedTempCwd
{
public:
    ScopedTempCwd() : m_previous(std::filesystem::current_path())
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "qzsvcXXXXXX").string();
        m_folder = mkdtemp(pattern.data()) ? pattern : std::string();
        std::filesystem::current_path(m_folder);
    }
    ~ScopedTempCwd()
    {
        std::filesystem::current_path(m_previous);
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    ScopedTempCwd(const ScopedTempCwd&) = delete;
    ScopedTempCwd& operator=(const ScopedTempCwd&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }

    // Writes a file relative to the folder, creating its parent folders; bytes as given.
    void WriteFile(const std::string& relative, const std::string& bytes) const
    {
        const std::filesystem::path path = m_folder / relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
    }

    std::string ReadFile(const std::string& relative) const
    {
        std::ifstream file(m_folder / relative, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }

private:
    std::filesystem::path m_previous;
    std::filesystem::path m_folder;
};

} // namespace QzServicesTest
