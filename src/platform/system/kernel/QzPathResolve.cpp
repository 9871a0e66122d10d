#include "platform/system/kernel/QzPathResolve.h"

#include "platform/system/files/QzMemoryFiles.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>
#include <vector>

namespace QzPlatform
{

namespace
{

bool Exists(const std::string& path)
{
    const CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (memory.IsOn())
        return memory.Find(path) || memory.IsFolder(path);
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

char FoldAscii(char value)
{
    return value >= 'A' && value <= 'Z' ? static_cast<char>(value - 'A' + 'a') : value;
}

bool EqualNoCase(const std::string& a, const char* b)
{
    size_t i = 0;
    for (; i < a.size() && b[i]; ++i)
    {
        if (FoldAscii(a[i]) != FoldAscii(b[i]))
            return false;
    }
    return i == a.size() && !b[i];
}

// The one of `names` that equals `name` without regard to ASCII case; the first in byte order
// when several do, empty when none does.
std::string FindNoCase(const std::vector<std::string>& names, const std::string& name)
{
    std::string best;
    for (const std::string& entry : names)
    {
        if (EqualNoCase(name, entry.c_str()) && (best.empty() || best > entry))
            best = entry;
    }
    return best;
}

// The entry of folder `dir` whose name equals `name` without regard to ASCII case; the first
// in byte order when several do, empty when none does.
std::string FindNoCase(const std::string& dir, const std::string& name)
{
    const CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (memory.IsOn())
        return FindNoCase(memory.List(dir), name);
    DIR* folder = opendir(dir.c_str());
    if (!folder)
        return std::string();
    std::vector<std::string> names;
    while (const dirent* entry = readdir(folder))
        names.emplace_back(entry->d_name);
    closedir(folder);
    return FindNoCase(names, name);
}

std::string Join(const std::string& base, const std::string& name)
{
    if (base.empty())
        return name;
    if (base.back() == '/')
        return base + name;
    return base + "/" + name;
}

std::vector<std::string> SplitComponents(const std::string& path)
{
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= path.size())
    {
        size_t end = path.find('/', start);
        if (end == std::string::npos)
            end = path.size();
        if (end > start)
            parts.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

// The name's parts, each matched without regard to case where the exact part does not exist.
std::string Resolve(const std::string& path)
{
    std::string slashed = path;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    if (slashed.empty() || Exists(slashed))
        return slashed;

    const std::vector<std::string> parts = SplitComponents(slashed);
    std::string result = slashed[0] == '/' ? "/" : "";
    size_t index = 0;
    for (; index < parts.size(); ++index)
    {
        const std::string exact = Join(result, parts[index]);
        if (Exists(exact))
        {
            result = exact;
            continue;
        }
        const std::string match = FindNoCase(result.empty() ? "." : result, parts[index]);
        if (match.empty())
            break;
        result = Join(result, match);
    }
    for (; index < parts.size(); ++index)
        result = Join(result, parts[index]);
    if (slashed.back() == '/' && !result.empty() && result.back() != '/')
        result += '/';
    return result;
}

} // namespace

std::string ResolvePath(const std::string& path)
{
    const CQzMemoryFiles& memory = CQzMemoryFiles::Instance();
    if (!memory.IsOn())
        return Resolve(path);
    if (const std::string* pResolved = memory.FindResolved(path))
        return *pResolved;
    std::string resolved = Resolve(path);
    memory.RememberResolved(path, resolved);
    return resolved;
}

} // namespace QzPlatform
