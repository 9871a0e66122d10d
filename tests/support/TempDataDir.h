// A fresh temporary folder that is the current directory while the object lives: the data root
// of one test. Files are written into it and read back byte for byte. The data set's and the
// string table's caches are forgotten on entry and on exit, so that nothing read from one
// test's folder is served to the next. The destructor restores the previous directory and
// removes the folder with everything in it. With Storage::Memory the folder stays empty: the
// platform's memory files stand in for the disk while the object lives, named from the folder.
#pragma once

#include "support/TempFolder.h"

#include <filesystem>
#include <string>

namespace QzTest
{

enum class Storage
{
    Disk,
    Memory,
};

class TempDataDir
{
public:
    // Throws std::runtime_error when no folder can be made (the test then fails).
    explicit TempDataDir(Storage storage = Storage::Disk);
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
    void Remove(const std::string& relative) const;
    // Makes one folder under the folder; the test fails when it cannot.
    void MakeFolder(const std::string& relative) const;

private:
    static void ForgetCaches();

    Storage m_storage;
    std::filesystem::path m_previous;
    TempFolder m_folder{"data"};
};

} // namespace QzTest
