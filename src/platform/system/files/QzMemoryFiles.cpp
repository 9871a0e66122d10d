#include "platform/system/files/QzMemoryFiles.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>

namespace QzPlatform
{

namespace
{

std::string RealCurrentDirectory()
{
    char buffer[4096];
    if (!getcwd(buffer, sizeof(buffer)))
        return std::string();
    std::string folder = buffer;
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    return folder;
}

bool Holds(const std::string& text, const char* part)
{
    return memmem(text.data(), text.size(), part, std::strlen(part)) != nullptr;
}

// A relative name of plain parts, as the library's readers give them, is its own key. Searched
// with the C library, not a loop over the characters: every profile call comes here twice, and
// such loops are slow in instrumented builds.
bool IsPlainRelative(const std::string& path)
{
    if (path.empty() || path[0] == '/' || path.back() == '/' || path == ".")
        return false;
    if (Holds(path, "\\") || Holds(path, "//") || Holds(path, "/./"))
        return false;
    // A "." part at the start or at the end.
    const size_t size = path.size();
    return !(size >= 2 && ((path[0] == '.' && path[1] == '/') ||
                           (path[size - 2] == '/' && path[size - 1] == '.')));
}

} // namespace

CQzMemoryFiles& CQzMemoryFiles::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzMemoryFiles& files = *new CQzMemoryFiles;
    return files;
}

void CQzMemoryFiles::TurnOn(bool bOn)
{
    m_bOn = bOn;
    m_mapFiles.clear();
    m_setFolders.clear();
    ForgetNames();
    m_root = bOn ? RealCurrentDirectory() : std::string();
}

// Slashes only, no "./" parts or doubled slashes, no trailing slash, and relative to the root
// when the name lies under it.
std::string CQzMemoryFiles::Key(const std::string& path) const
{
    if (IsPlainRelative(path))
        return path;
    std::string key;
    key.reserve(path.size());
    for (size_t i = 0; i < path.size(); ++i)
    {
        const char c = path[i] == '\\' ? '/' : path[i];
        const bool startsPart = key.empty() || key.back() == '/';
        if (c == '/' && !key.empty() && key.back() == '/')
            continue;
        if (c == '.' && startsPart &&
            (i + 1 == path.size() || path[i + 1] == '/' || path[i + 1] == '\\'))
        {
            ++i; // "./": the folder itself
            continue;
        }
        key += c;
    }
    if (key.size() > 1 && key.back() == '/')
        key.pop_back();
    if (!m_root.empty() && key.compare(0, m_root.size(), m_root) == 0)
        key.erase(0, m_root.size());
    else if (key + '/' == m_root)
        key.clear();
    return key;
}

const CQzMemoryFiles::File* CQzMemoryFiles::Find(const std::string& path) const
{
    if (m_bLastFoundValid && path == m_strLastFound)
        return m_pLastFound;
    const auto found = m_mapFiles.find(Key(path));
    m_strLastFound = path;
    m_pLastFound = found == m_mapFiles.end() ? nullptr : &found->second;
    m_bLastFoundValid = true;
    return m_pLastFound;
}

void CQzMemoryFiles::Write(const std::string& path, std::string bytes)
{
    const auto added = m_mapFiles.try_emplace(Key(path));
    if (added.second)
        ForgetNames();
    File& file = added.first->second;
    file.bytes = std::make_shared<const std::string>(std::move(bytes));
    file.version = ++m_nVersion;
}

bool CQzMemoryFiles::CanCreate(const std::string& path) const
{
    const std::string key = Key(path);
    const size_t slash = key.find_last_of('/');
    return !key.empty() && !IsFolder(key) &&
           (slash == std::string::npos || IsFolder(key.substr(0, slash == 0 ? 1 : slash)));
}

bool CQzMemoryFiles::Remove(const std::string& path)
{
    ForgetNames();
    return m_mapFiles.erase(Key(path)) > 0;
}

void CQzMemoryFiles::MakeFolder(const std::string& path)
{
    ForgetNames();
    std::string key = Key(path);
    while (!key.empty() && key != "/")
    {
        m_setFolders.insert(key);
        const size_t slash = key.find_last_of('/');
        key.resize(slash == std::string::npos ? 0 : slash);
    }
}

bool CQzMemoryFiles::IsFolder(const std::string& path) const
{
    const std::string key = Key(path);
    if (key.empty() || key == "/" || m_setFolders.count(key) > 0 || IsAboveRoot(key))
        return true;
    const std::string prefix = key + '/';
    return std::any_of(m_mapFiles.begin(), m_mapFiles.end(),
                       [&prefix](const auto& entry)
                       { return entry.first.compare(0, prefix.size(), prefix) == 0; });
}

// A folder the root lies in ("/tmp" for the root "/tmp/data/").
bool CQzMemoryFiles::IsAboveRoot(const std::string& key) const
{
    return !key.empty() && key[0] == '/' && m_root.size() > key.size() + 1 &&
           m_root.compare(0, key.size(), key) == 0 && (key == "/" || m_root[key.size()] == '/');
}

std::string CQzMemoryFiles::FullName(const std::string& path) const
{
    const std::string key = Key(path);
    if (!key.empty() && key[0] == '/')
        return key;
    return key.empty() ? m_root.substr(0, m_root.size() - 1) : m_root + key;
}

std::vector<std::string> CQzMemoryFiles::List(const std::string& folder) const
{
    const std::string key = Key(folder);
    const std::string prefix = key.empty() || key.back() == '/' ? key : key + '/';
    std::vector<std::string> names;
    if (IsAboveRoot(key))
        names.push_back(
            m_root.substr(prefix.size(), m_root.find('/', prefix.size()) - prefix.size()));
    const auto add = [&prefix, &names](const std::string& entry)
    {
        if (entry.compare(0, prefix.size(), prefix) != 0)
            return;
        const std::string rest = entry.substr(prefix.size());
        const std::string name = rest.substr(0, rest.find('/'));
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    };
    for (const auto& entry : m_mapFiles)
        add(entry.first);
    for (const std::string& made : m_setFolders)
        add(made);
    return names;
}

const std::string* CQzMemoryFiles::FindResolved(const std::string& path) const
{
    const auto found = m_mapResolved.find(path);
    return found == m_mapResolved.end() ? nullptr : &found->second;
}

void CQzMemoryFiles::RememberResolved(const std::string& path, const std::string& resolved) const
{
    constexpr size_t kMaxRemembered = 1024; // names made up by a hostile program stay bounded
    if (m_mapResolved.size() >= kMaxRemembered)
        m_mapResolved.clear();
    m_mapResolved.emplace(path, resolved);
}

void CQzMemoryFiles::ForgetNames()
{
    m_bLastFoundValid = false;
    m_mapResolved.clear();
}

} // namespace QzPlatform
