// Files held in memory in place of the disk. While the store is on, every file the library and the
// hosted system open, read, write, list or look for is one of its files and the disk is not
// touched: fuzzers hand each input to the readers without a system call, and tests run without
// leaving anything behind. Names are kept as the library resolves them, relative to the current
// directory of the moment the store was turned on (a name under that folder given in full is the
// same file); folders exist while a file lies under them.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace QzPlatform
{

class CQzMemoryFiles
{
public:
    static CQzMemoryFiles& Instance();

    bool IsOn() const { return m_bOn; }
    // Turning it on empties it and makes the current directory its root; off empties it too.
    void TurnOn(bool bOn);

    // A file's bytes and its version, which changes every time the file is written.
    struct File
    {
        std::shared_ptr<const std::string> bytes;
        uint64_t version = 0;
    };
    const File* Find(const std::string& path) const;
    void Write(const std::string& path, std::string bytes);
    // Whether a program may make the file: its folder exists and it is no folder itself.
    bool CanCreate(const std::string& path) const;
    bool Remove(const std::string& path);
    // A folder that exists without files in it.
    void MakeFolder(const std::string& path);
    bool IsFolder(const std::string& path) const;
    // The full name of a file or folder under the root, as realpath gives it on disk.
    std::string FullName(const std::string& path) const;
    // The names of the files and folders directly in a folder ("" or "." is the root).
    std::vector<std::string> List(const std::string& folder) const;
    // A name as resolution without regard to case gave it (ResolvePath), remembered while no
    // file or folder comes or goes (writing a file's bytes keeps it); null when not remembered.
    const std::string* FindResolved(const std::string& path) const;
    void RememberResolved(const std::string& path, const std::string& resolved) const;

private:
    std::string Key(const std::string& path) const;
    bool IsAboveRoot(const std::string& key) const;
    // Files or folders came or went: remembered answers about names no longer hold.
    void ForgetNames();

    bool m_bOn = false;
    std::string m_root; // with a trailing slash
    std::unordered_map<std::string, File> m_mapFiles;
    std::set<std::string> m_setFolders; // made empty, with their parents
    uint64_t m_nVersion = 0;
    // The last name Find was asked for and its answer: a reader asks for one file many times in
    // a row (every profile call looks for its file twice). Forgotten when files come or go.
    mutable std::string m_strLastFound;
    mutable const File* m_pLastFound = nullptr;
    mutable bool m_bLastFoundValid = false;
    // Every profile call resolves its file's name, a folder listing a part for a missing file.
    mutable std::unordered_map<std::string, std::string> m_mapResolved;
};

} // namespace QzPlatform
