#include "platform/system/text/QzCodePage.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/text/QzCodePageHost.h"
#include "platform/system/text/QzTextCodecs.h"

#include <climits>
#include <cstring>
#include <cwchar>

namespace
{

UINT g_uAnsiCodePage = 936;

const DWORD kDecodeFlags = MB_PRECOMPOSED | MB_COMPOSITE | MB_USEGLYPHCHARS | MB_ERR_INVALID_CHARS;
// The composite-check companions; none changes the result because wide text is taken as
// precomposed.
const DWORD kWcDiscardNs = 0x10;
const DWORD kWcSepChars = 0x20;
const DWORD kWcDefaultChar = 0x40;
const DWORD kEncodeFlags =
    WC_NO_BEST_FIT_CHARS | WC_COMPOSITECHECK | kWcDiscardNs | kWcSepChars | kWcDefaultChar;

int FailWith(DWORD error)
{
    SetLastError(error);
    return 0;
}

// Win32 output rules: size 0 asks for the needed size; a buffer too small receives what fits
// and the call fails with ERROR_INSUFFICIENT_BUFFER.
template <class C> int CopyConverted(const std::basic_string<C>& text, C* out, int outSize)
{
    if (text.size() > static_cast<size_t>(INT_MAX))
        return FailWith(ERROR_INSUFFICIENT_BUFFER);
    const int needed = static_cast<int>(text.size());
    if (outSize == 0)
        return needed;
    if (needed > outSize)
    {
        std::memcpy(out, text.data(), static_cast<size_t>(outSize) * sizeof(C));
        return FailWith(ERROR_INSUFFICIENT_BUFFER);
    }
    std::memcpy(out, text.data(), text.size() * sizeof(C));
    return needed;
}

// The default character as bytes: one byte, or a lead and a trail byte in a double-byte code
// page.
std::string DefaultCharOf(UINT codePage, LPCSTR defaultChar)
{
    if (!defaultChar || !defaultChar[0])
        return "?";
    const bool pair = QzPlatform::IsLeadByteOf(codePage, static_cast<BYTE>(defaultChar[0])) &&
                      defaultChar[1] != '\0';
    return std::string(defaultChar, pair ? 2 : 1);
}

bool EncodeFlagsValid(UINT codePage, DWORD flags)
{
    if (codePage == CP_UTF8)
        return (flags & ~static_cast<DWORD>(WC_ERR_INVALID_CHARS)) == 0;
    return (flags & ~kEncodeFlags) == 0;
}

bool DecodeFlagsValid(UINT codePage, DWORD flags)
{
    if (codePage == CP_UTF8)
        return (flags & ~static_cast<DWORD>(MB_ERR_INVALID_CHARS)) == 0;
    return (flags & ~kDecodeFlags) == 0;
}

} // namespace

namespace QzPlatform
{

bool SetAnsiCodePage(UINT codePage)
{
    if (!IsSupportedCodePage(codePage))
        return false;
    g_uAnsiCodePage = codePage;
    return true;
}

UINT GetAnsiCodePage()
{
    return g_uAnsiCodePage;
}

std::wstring AnsiToWide(const std::string& ansi)
{
    std::wstring wide;
    DecodeText(g_uAnsiCodePage, ansi.data(), ansi.size(), false, &wide);
    return wide;
}

std::string WideToAnsi(const std::wstring& wide)
{
    std::string ansi;
    bool usedDefault = false;
    EncodeText(g_uAnsiCodePage, wide.data(), wide.size(), false, "?", &ansi, &usedDefault);
    return ansi;
}

std::wstring Utf8ToWide(const std::string& utf8)
{
    std::wstring wide;
    DecodeUtf8(utf8.data(), utf8.size(), false, &wide);
    return wide;
}

std::string WideToUtf8(const std::wstring& wide)
{
    std::string utf8;
    EncodeUtf8(wide.data(), wide.size(), false, &utf8);
    return utf8;
}

std::string AnsiToUtf8(const std::string& ansi)
{
    return WideToUtf8(AnsiToWide(ansi));
}

std::string Utf8ToAnsi(const std::string& utf8)
{
    return WideToAnsi(Utf8ToWide(utf8));
}

} // namespace QzPlatform

UINT GetACP()
{
    return g_uAnsiCodePage;
}

UINT GetOEMCP()
{
    return g_uAnsiCodePage;
}

int MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                        LPWSTR lpWideCharStr, int cchWideChar)
{
    if (!lpMultiByteStr || cbMultiByte == 0 || cbMultiByte < -1 || cchWideChar < 0 ||
        (cchWideChar > 0 && !lpWideCharStr))
        return FailWith(ERROR_INVALID_PARAMETER);
    const UINT codePage = QzPlatform::ResolveCodePage(CodePage);
    if (!QzPlatform::IsSupportedCodePage(codePage))
        return FailWith(ERROR_INVALID_PARAMETER);
    if (!DecodeFlagsValid(codePage, dwFlags))
        return FailWith(ERROR_INVALID_FLAGS);
    const size_t length =
        cbMultiByte == -1 ? std::strlen(lpMultiByteStr) + 1 : static_cast<size_t>(cbMultiByte);
    std::wstring wide;
    const bool strict = (dwFlags & MB_ERR_INVALID_CHARS) != 0;
    if (!QzPlatform::DecodeText(codePage, lpMultiByteStr, length, strict, &wide))
        return FailWith(ERROR_NO_UNICODE_TRANSLATION);
    return CopyConverted(wide, lpWideCharStr, cchWideChar);
}

int WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                        LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar,
                        LPBOOL lpUsedDefaultChar)
{
    if (!lpWideCharStr || cchWideChar == 0 || cchWideChar < -1 || cbMultiByte < 0 ||
        (cbMultiByte > 0 && !lpMultiByteStr))
        return FailWith(ERROR_INVALID_PARAMETER);
    const UINT codePage = QzPlatform::ResolveCodePage(CodePage);
    if (!QzPlatform::IsSupportedCodePage(codePage))
        return FailWith(ERROR_INVALID_PARAMETER);
    if (codePage == CP_UTF8 && (lpDefaultChar || lpUsedDefaultChar))
        return FailWith(ERROR_INVALID_PARAMETER);
    if (!EncodeFlagsValid(codePage, dwFlags))
        return FailWith(ERROR_INVALID_FLAGS);
    const size_t length =
        cchWideChar == -1 ? std::wcslen(lpWideCharStr) + 1 : static_cast<size_t>(cchWideChar);
    std::string bytes;
    bool usedDefault = false;
    const bool strict = (dwFlags & WC_ERR_INVALID_CHARS) != 0;
    if (!QzPlatform::EncodeText(codePage, lpWideCharStr, length, strict,
                                DefaultCharOf(codePage, lpDefaultChar), &bytes, &usedDefault))
        return FailWith(ERROR_NO_UNICODE_TRANSLATION);
    if (lpUsedDefaultChar)
        *lpUsedDefaultChar = usedDefault ? TRUE : FALSE;
    return CopyConverted(bytes, lpMultiByteStr, cbMultiByte);
}

BOOL IsDBCSLeadByteEx(UINT CodePage, BYTE TestChar)
{
    const UINT codePage = QzPlatform::ResolveCodePage(CodePage);
    if (!QzPlatform::IsSupportedCodePage(codePage))
        return FailWith(ERROR_INVALID_PARAMETER);
    return QzPlatform::IsLeadByteOf(codePage, TestChar) ? TRUE : FALSE;
}

BOOL IsDBCSLeadByte(BYTE TestChar)
{
    return QzPlatform::IsLeadByteOf(g_uAnsiCodePage, TestChar) ? TRUE : FALSE;
}
