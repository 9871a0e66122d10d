// The profile functions. The narrow functions are the core: they read the file's bytes as
// they are. The wide ones convert names and values through the ANSI code page (file names to
// UTF-8) and format the same answer in wide characters.
#include "platform/system/QzWinKernel.h"
#include "platform/system/kernel/QzPathResolve.h"
#include "platform/system/kernel/QzProfileCache.h"
#include "platform/system/text/QzCodePage.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace
{

using QzPlatform::CQzProfileCache;
using QzPlatform::CQzProfileFile;

// What a read produces before it is put into the caller's buffer: one string or a list of
// strings (each null-terminated, the list ended by a second null).
struct Answer
{
    bool isList = false;
    std::vector<std::string> items;
    std::string text;
};

const CQzProfileFile* FindFile(LPCSTR fileName)
{
    if (!fileName || !fileName[0])
        return nullptr;
    return CQzProfileCache::Instance().Find(QzPlatform::ResolvePath(fileName));
}

std::string StripQuotes(const std::string& value)
{
    const bool quoted =
        value.size() >= 2 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string DefaultValue(LPCSTR defaultValue)
{
    std::string value = defaultValue ? defaultValue : "";
    while (!value.empty() && (value.back() == ' ' || value.back() == '\t'))
        value.pop_back();
    return StripQuotes(value);
}

std::vector<std::string> SectionNames(const CQzProfileFile* file)
{
    std::vector<std::string> names;
    if (!file)
        return names;
    const auto& sections = file->Sections();
    for (size_t i = 1; i < sections.size(); ++i)
    {
        if (!sections[i].name.empty())
            names.push_back(sections[i].name);
    }
    return names;
}

// Keys with a value; lines without '=' are not keys here.
std::vector<std::string> KeyNames(const CQzProfileFile::Section& section)
{
    std::vector<std::string> names;
    for (const auto& entry : section.entries)
    {
        if (entry.hasValue && !entry.name.empty())
            names.push_back(entry.name);
    }
    return names;
}

// Every line of the section as "key=value" (or "key" for a line without '='), blanks trimmed
// and quotes kept.
std::vector<std::string> SectionLines(const CQzProfileFile::Section& section)
{
    std::vector<std::string> lines;
    for (const auto& entry : section.entries)
        lines.push_back(entry.hasValue ? entry.name + "=" + entry.value : entry.name);
    return lines;
}

Answer ReadString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPCSTR fileName)
{
    const CQzProfileFile* file = FindFile(fileName);
    if (!file)
        SetLastError(ERROR_FILE_NOT_FOUND);
    Answer answer;
    if (!section)
    {
        answer.isList = true;
        answer.items = SectionNames(file);
        return answer;
    }
    if (!key)
    {
        const CQzProfileFile::Section* found = file ? file->FindSection(section) : nullptr;
        answer.items = found ? KeyNames(*found) : std::vector<std::string>();
        answer.isList = !answer.items.empty();
        if (!answer.isList)
            answer.text = DefaultValue(defaultValue);
        return answer;
    }
    const CQzProfileFile::Entry* entry = file ? file->FindEntry(section, key) : nullptr;
    answer.text = entry && entry->hasValue ? StripQuotes(entry->value) : DefaultValue(defaultValue);
    return answer;
}

// A single string: cut to size - 1 characters when too long.
template <class C> DWORD CopyString(const std::basic_string<C>& text, C* buffer, DWORD size)
{
    if (!buffer || size == 0)
        return 0;
    const size_t count = text.size() < size ? text.size() : size - 1;
    std::memcpy(buffer, text.data(), count * sizeof(C));
    buffer[count] = 0;
    return static_cast<DWORD>(count);
}

// A list: each string null-terminated, then a second null. When the list does not fit, the
// last string that starts is cut so that it and two nulls end the buffer, and the result is
// size - 2 (a list that just fits is reported the same way, as Windows does).
template <class C>
DWORD CopyList(const std::vector<std::basic_string<C>>& items, C* buffer, DWORD size)
{
    if (!buffer || size == 0)
        return 0;
    buffer[0] = 0;
    if (size == 1)
        return 0;
    size_t used = 0;
    for (const auto& item : items)
    {
        const size_t remaining = size - used;
        if (item.size() + 2 < remaining)
        {
            std::memcpy(buffer + used, item.c_str(), (item.size() + 1) * sizeof(C));
            used += item.size() + 1;
            continue;
        }
        std::memcpy(buffer + used, item.data(), (remaining - 2) * sizeof(C));
        buffer[size - 2] = 0;
        buffer[size - 1] = 0;
        return size - 2;
    }
    buffer[used] = 0;
    return static_cast<DWORD>(used);
}

DWORD CopyAnswer(const Answer& answer, LPSTR buffer, DWORD size)
{
    return answer.isList ? CopyList(answer.items, buffer, size)
                         : CopyString(answer.text, buffer, size);
}

std::vector<std::wstring> Widen(const std::vector<std::string>& items)
{
    std::vector<std::wstring> wide;
    for (const auto& item : items)
        wide.push_back(QzPlatform::AnsiToWide(item));
    return wide;
}

DWORD CopyAnswer(const Answer& answer, LPWSTR buffer, DWORD size)
{
    return answer.isList ? CopyList(Widen(answer.items), buffer, size)
                         : CopyString(QzPlatform::AnsiToWide(answer.text), buffer, size);
}

// Section lines of a file, or false with the Win32 error set.
bool ReadSection(LPCSTR section, LPCSTR fileName, bool hasBuffer, std::vector<std::string>* lines)
{
    if (!hasBuffer || !section)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    const CQzProfileFile* file = FindFile(fileName);
    if (!file)
    {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return false;
    }
    const CQzProfileFile::Section* found = file->FindSection(section);
    if (found)
        *lines = SectionLines(*found);
    SetLastError(ERROR_SUCCESS);
    return true;
}

// A leading decimal number, or a hexadecimal one after "0x", with an optional sign; digits stop
// at the first other character and wrap around in 32 bits, as Windows reads them.
UINT ParseProfileInt(const std::string& text)
{
    size_t pos = 0;
    bool negative = false;
    if (pos < text.size() && (text[pos] == '-' || text[pos] == '+'))
        negative = text[pos++] == '-';
    unsigned base = 10;
    if (text.compare(pos, 2, "0x") == 0 || text.compare(pos, 2, "0X") == 0)
    {
        base = 16;
        pos += 2;
    }
    uint32_t value = 0;
    for (; pos < text.size(); ++pos)
    {
        const char c = text[pos];
        unsigned digit = 0;
        if (c >= '0' && c <= '9')
            digit = static_cast<unsigned>(c - '0');
        else if (base == 16 && c >= 'a' && c <= 'f')
            digit = static_cast<unsigned>(c - 'a' + 10);
        else if (base == 16 && c >= 'A' && c <= 'F')
            digit = static_cast<unsigned>(c - 'A' + 10);
        else
            break;
        value = value * base + digit;
    }
    return negative ? 0u - value : value;
}

BOOL WriteString(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR fileName)
{
    if (!section)
    {
        // All three null asks Windows to flush its cache, which always answers FALSE.
        if (!key && !value && fileName && fileName[0])
            CQzProfileCache::Instance().Forget(QzPlatform::ResolvePath(fileName));
        SetLastError(key || value ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS);
        return FALSE;
    }
    if (!fileName || !fileName[0])
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    const std::string path = QzPlatform::ResolvePath(fileName);
    CQzProfileCache& cache = CQzProfileCache::Instance();
    DWORD error = ERROR_SUCCESS;
    CQzProfileFile* file = cache.OpenForEdit(path, &error);
    if (!file)
    {
        SetLastError(error);
        return FALSE;
    }
    bool changed = false;
    if (!key)
        changed = file->DeleteSection(section);
    else if (!value)
        changed = file->DeleteKey(section, key);
    else
        changed = file->SetValue(section, key, value);
    if (!changed)
    {
        // Nothing to write; a file that was not there stays away.
        if (file->Text().empty())
            cache.Forget(path);
        return TRUE;
    }
    error = cache.Save(path);
    if (error == ERROR_SUCCESS)
        return TRUE;
    SetLastError(error);
    return FALSE;
}

// Wide arguments as the narrow core takes them: names and values in the ANSI code page, file
// names in UTF-8. Null stays null.
std::optional<std::string> Name(LPCWSTR text)
{
    return text ? std::optional<std::string>(QzPlatform::WideToAnsi(text)) : std::nullopt;
}

std::optional<std::string> FileName(LPCWSTR text)
{
    return text ? std::optional<std::string>(QzPlatform::WideToUtf8(text)) : std::nullopt;
}

LPCSTR Ptr(const std::optional<std::string>& text)
{
    return text ? text->c_str() : nullptr;
}

} // namespace

DWORD GetPrivateProfileStringA(LPCSTR lpAppName, LPCSTR lpKeyName, LPCSTR lpDefault,
                               LPSTR lpReturnedString, DWORD nSize, LPCSTR lpFileName)
{
    if (!lpReturnedString || nSize == 0)
        return 0;
    return CopyAnswer(ReadString(lpAppName, lpKeyName, lpDefault, lpFileName), lpReturnedString,
                      nSize);
}

DWORD GetPrivateProfileStringW(LPCWSTR lpAppName, LPCWSTR lpKeyName, LPCWSTR lpDefault,
                               LPWSTR lpReturnedString, DWORD nSize, LPCWSTR lpFileName)
{
    if (!lpReturnedString || nSize == 0)
        return 0;
    const Answer answer = ReadString(Ptr(Name(lpAppName)), Ptr(Name(lpKeyName)),
                                     Ptr(Name(lpDefault)), Ptr(FileName(lpFileName)));
    return CopyAnswer(answer, lpReturnedString, nSize);
}

UINT GetPrivateProfileIntA(LPCSTR lpAppName, LPCSTR lpKeyName, INT nDefault, LPCSTR lpFileName)
{
    if (!lpAppName || !lpKeyName)
        return static_cast<UINT>(nDefault);
    const Answer answer = ReadString(lpAppName, lpKeyName, "", lpFileName);
    if (answer.text.empty())
        return static_cast<UINT>(nDefault);
    return ParseProfileInt(answer.text);
}

UINT GetPrivateProfileIntW(LPCWSTR lpAppName, LPCWSTR lpKeyName, INT nDefault, LPCWSTR lpFileName)
{
    return GetPrivateProfileIntA(Ptr(Name(lpAppName)), Ptr(Name(lpKeyName)), nDefault,
                                 Ptr(FileName(lpFileName)));
}

BOOL WritePrivateProfileStringA(LPCSTR lpAppName, LPCSTR lpKeyName, LPCSTR lpString,
                                LPCSTR lpFileName)
{
    return WriteString(lpAppName, lpKeyName, lpString, lpFileName);
}

BOOL WritePrivateProfileStringW(LPCWSTR lpAppName, LPCWSTR lpKeyName, LPCWSTR lpString,
                                LPCWSTR lpFileName)
{
    return WriteString(Ptr(Name(lpAppName)), Ptr(Name(lpKeyName)), Ptr(Name(lpString)),
                       Ptr(FileName(lpFileName)));
}

DWORD GetPrivateProfileSectionNamesA(LPSTR lpszReturnBuffer, DWORD nSize, LPCSTR lpFileName)
{
    return GetPrivateProfileStringA(nullptr, nullptr, nullptr, lpszReturnBuffer, nSize, lpFileName);
}

DWORD GetPrivateProfileSectionNamesW(LPWSTR lpszReturnBuffer, DWORD nSize, LPCWSTR lpFileName)
{
    return GetPrivateProfileStringW(nullptr, nullptr, nullptr, lpszReturnBuffer, nSize, lpFileName);
}

DWORD GetPrivateProfileSectionA(LPCSTR lpAppName, LPSTR lpReturnedString, DWORD nSize,
                                LPCSTR lpFileName)
{
    std::vector<std::string> lines;
    const bool hasBuffer = lpReturnedString && nSize > 0;
    ReadSection(lpAppName, lpFileName, hasBuffer, &lines);
    return hasBuffer ? CopyList(lines, lpReturnedString, nSize) : 0;
}

DWORD GetPrivateProfileSectionW(LPCWSTR lpAppName, LPWSTR lpReturnedString, DWORD nSize,
                                LPCWSTR lpFileName)
{
    std::vector<std::string> lines;
    const bool hasBuffer = lpReturnedString && nSize > 0;
    ReadSection(Ptr(Name(lpAppName)), Ptr(FileName(lpFileName)), hasBuffer, &lines);
    return hasBuffer ? CopyList(Widen(lines), lpReturnedString, nSize) : 0;
}
