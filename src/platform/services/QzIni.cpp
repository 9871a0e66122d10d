#include "platform/services/QzIni.h"

#include <string>

namespace QzPlatform
{

namespace
{

bool IsAbsolute(const std::string& path)
{
    if (!path.empty() && (path[0] == '/' || path[0] == '\\'))
        return true;
    return path.size() >= 2 && path[1] == ':';
}

// The current directory joined with a relative path; an absolute path as it is.
std::string FullPath(const char* path)
{
    const std::string name = path ? path : "";
    if (name.empty() || IsAbsolute(name))
        return name;
    char directory[MAX_PATH * 4];
    const DWORD length = GetCurrentDirectoryA(sizeof(directory), directory);
    if (length == 0 || length >= sizeof(directory))
        return name;
    return std::string(directory, length) + "/" + name;
}

} // namespace

BOOL IniWriteString(const char* section, const char* key, const char* value, const char* path)
{
    if (!path)
        return FALSE;
    return WritePrivateProfileStringA(section, key, value, FullPath(path).c_str());
}

int IniReadInt(const char* path, const char* section, const char* key, int defaultValue)
{
    if (!path)
        return defaultValue;
    return static_cast<int>(
        GetPrivateProfileIntA(section, key, defaultValue, FullPath(path).c_str()));
}

DWORD IniReadString(const char* path, const char* section, const char* key,
                    const char* defaultValue, char* buffer, DWORD size)
{
    if (!buffer || size == 0)
        return 0;
    if (!path)
    {
        buffer[0] = 0;
        return 0;
    }
    return GetPrivateProfileStringA(section, key, defaultValue ? defaultValue : "", buffer, size,
                                    FullPath(path).c_str());
}

} // namespace QzPlatform
