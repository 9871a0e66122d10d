// Parsed profile files kept between calls, so that reading every key of a large file does not
// read and parse the file again for each key. An entry is used while the file's identity, size
// and change times are those seen when it was read. A change within the file system's
// timestamp granularity could keep all of them, so an entry whose file changed shortly before
// it was read is checked against the file's bytes on each use until that time has passed.
#pragma once

#include "platform/system/files/QzMemoryFiles.h"
#include "platform/system/kernel/QzProfileFile.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

struct stat;

namespace QzPlatform
{

class CQzProfileCache
{
public:
    static CQzProfileCache& Instance();

    // The file at a resolved path; null when no regular file can be read there.
    const CQzProfileFile* Find(const std::string& path);
    // The file for editing. A missing file gives an empty one, not yet on disk; null when the
    // path names something that is not a readable regular file (*error tells why).
    CQzProfileFile* OpenForEdit(const std::string& path, DWORD* error);
    // Writes the edited text to the file. On failure the entry is dropped and the Win32 error
    // code is returned; ERROR_SUCCESS otherwise.
    DWORD Save(const std::string& path);
    void Forget(const std::string& path);
    void Reset();
    int ParseCount() const { return m_nParseCount; }

private:
    struct Signature
    {
        uint64_t device = 0;
        uint64_t inode = 0;
        int64_t size = 0;
        int64_t modifiedNs = 0;
        int64_t changedNs = 0;
        bool operator==(const Signature& other) const;
    };
    struct Entry
    {
        Signature signature;
        bool settled = false; // the file's times lie safely before the moment it was read
        std::unique_ptr<CQzProfileFile> file;
        uint64_t lastUse = 0;
    };

    Entry* Load(const std::string& path, int* errorNumber);
    bool Verify(const std::string& path, Entry* entry);
    void Store(const std::string& path, Entry entry);
    // The signature of the regular file at the path; false (and why) when there is none.
    static bool Probe(const std::string& path, Signature* signature, int* errorNumber);
    static bool ReadFile(const std::string& path, std::string* text, Signature* signature,
                         int* errorNumber);
    static Signature SignatureOf(const struct stat& info);
    static Signature SignatureOf(const CQzMemoryFiles::File& file);
    static bool IsSettled(const Signature& signature);

    std::unordered_map<std::string, Entry> m_mapEntries;
    uint64_t m_nUseCounter = 0;
    int m_nParseCount = 0;
};

} // namespace QzPlatform
