// A fresh temporary folder that is the current directory while the object lives: the data root
// of one test. Files are written into it and read back byte for byte. The data set's and the
// string table's caches are forgotten on entry and on exit, so that nothing read from one
// test's folder is served to the next. The destructor restores the previous directory and
// removes the folder with everything in it.
#pragma once

#include "support/TempFolder.h"

#include <filesystem>
#include <string>

namespace QzTest
{

class TempDataDir
{
public:
    // Throws std::runtime_error when no folder can be made (the test then fails).
    TempDataDir();
    ~TempDataDir();
    TempDataDir(const TempDataDir&) = delete;
    TempDataDir& operator=(const TempDataDir&) = delete;

    // The folder's absolute path, without symbolic links (as getcwd reports it).
    const std::filesystem::path& Path() const { return m_folder.Path(); }
    std::string Folder() const { return m_folder.Path().string(); }

    // Writes the bytes as given to a file under the folder, creating its parent folders.
    void Write(const std::string& relative, const std::string& bytes) const;
    // The bytes of a file under the folder; empty when it cannot be read.
    std::string Read(const std::string& relative) const;
    bool Exists(const std::string& relative) const;
    // Makes one folder under the folder; the test fails when it cannot.
    void MakeFolder(const std::string& relative) const;

private:
    static void ForgetCaches();

    std::filesystem::path m_previous;
    TempFolder m_folder{"data"};
};

} // namespace QzTest
