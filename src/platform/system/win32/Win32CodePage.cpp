// The text conversions of QzCodePage.h on the system's own MultiByteToWideChar and
// WideCharToMultiByte. The ANSI code page is the system's: a Windows host cannot change it for
// one process, so SetAnsiCodePage only confirms the one in use.
#include "platform/system/text/QzCodePage.h"

#include "platform/system/QzSystem.h"
#include "platform/system/text/QzCodePageHost.h"

#include <climits>

namespace QzPlatform
{

namespace
{

// Invalid bytes and characters are replaced, never refused, as the hosted conversions do.
std::wstring Decode(UINT codePage, const std::string& bytes)
{
    if (bytes.empty() || bytes.size() > static_cast<size_t>(INT_MAX))
        return {};
    const int size = static_cast<int>(bytes.size());
    const int needed = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<size_t>(needed > 0 ? needed : 0), L'\0');
    if (needed > 0)
        MultiByteToWideChar(codePage, 0, bytes.data(), size, wide.data(), needed);
    return wide;
}

std::string Encode(UINT codePage, const std::wstring& wide)
{
    if (wide.empty() || wide.size() > static_cast<size_t>(INT_MAX))
        return {};
    const int size = static_cast<int>(wide.size());
    const int needed =
        WideCharToMultiByte(codePage, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(needed > 0 ? needed : 0), '\0');
    if (needed > 0)
        WideCharToMultiByte(codePage, 0, wide.data(), size, bytes.data(), needed, nullptr, nullptr);
    return bytes;
}

} // namespace

std::wstring AnsiToWide(const std::string& ansi)
{
    return Decode(CP_ACP, ansi);
}

std::string WideToAnsi(const std::wstring& wide)
{
    return Encode(CP_ACP, wide);
}

std::wstring Utf8ToWide(const std::string& utf8)
{
    return Decode(CP_UTF8, utf8);
}

std::string WideToUtf8(const std::wstring& wide)
{
    return Encode(CP_UTF8, wide);
}

std::string AnsiToUtf8(const std::string& ansi)
{
    return WideToUtf8(AnsiToWide(ansi));
}

std::string Utf8ToAnsi(const std::string& utf8)
{
    return WideToAnsi(Utf8ToWide(utf8));
}

bool SetAnsiCodePage(UINT codePage)
{
    return codePage == GetACP();
}

UINT GetAnsiCodePage()
{
    return GetACP();
}

} // namespace QzPlatform
