// A fresh folder of one test under the temporary folder (TMPDIR, which CTest points into the
// build tree), removed with everything in it when the object goes: also when the test fails, an
// ASSERT returns early or an exception leaves it.
#pragma once

#include <filesystem>
#include <string>

namespace QzTest
{

class TempFolder
{
public:
    // The folder is named qzgui-<tag>-XXXXXX. Throws std::runtime_error when it cannot be made
    // (the test then fails).
    explicit TempFolder(const std::string& tag = "test");
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    // The folder's absolute path, without symbolic links (as getcwd reports it).
    const std::filesystem::path& Path() const { return m_path; }
    // The path of a file or folder in it.
    std::string operator/(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

} // namespace QzTest
