// Current directory and module file names with the Win32 return-value rules.
#include "platform/system/QzWinKernel.h"
#include "platform/system/kernel/QzModuleTable.h"
#include "platform/system/kernel/QzPathResolve.h"
#include "platform/system/text/QzCodePage.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <unistd.h>

namespace
{

std::string CurrentDirectory()
{
    char buffer[PATH_MAX];
    if (!getcwd(buffer, sizeof(buffer)))
        return std::string();
    return buffer;
}

// GetCurrentDirectory: the length without the terminator, or the size needed with it when the
// buffer is too small (the buffer is then left alone).
template <class C> DWORD CopyDirectory(const std::basic_string<C>& text, DWORD size, C* buffer)
{
    if (text.empty())
    {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return 0;
    }
    const auto length = static_cast<DWORD>(text.size());
    if (!buffer || size <= length)
        return length + 1;
    std::memcpy(buffer, text.c_str(), (text.size() + 1) * sizeof(C));
    return length;
}

// GetModuleFileName: a name too long is cut to size - 1 characters and terminated; the call
// then returns size and sets ERROR_INSUFFICIENT_BUFFER.
template <class C> DWORD CopyModuleName(const std::basic_string<C>& text, C* buffer, DWORD size)
{
    if (!buffer || size == 0)
    {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    if (text.size() < size)
    {
        std::memcpy(buffer, text.c_str(), (text.size() + 1) * sizeof(C));
        SetLastError(ERROR_SUCCESS);
        return static_cast<DWORD>(text.size());
    }
    std::memcpy(buffer, text.data(), (size - 1) * sizeof(C));
    buffer[size - 1] = 0;
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
}

bool ModulePath(HMODULE module, std::string* path)
{
    if (QzPlatform::CQzModuleTable::Instance().PathOf(module, path))
        return true;
    SetLastError(ERROR_MOD_NOT_FOUND);
    return false;
}

BOOL ChangeDirectory(const std::string& path)
{
    if (path.empty())
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (chdir(QzPlatform::ResolvePath(path).c_str()) != 0)
    {
        SetLastError(errno == ENOENT ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    return TRUE;
}

} // namespace

DWORD GetCurrentDirectoryA(DWORD nBufferLength, LPSTR lpBuffer)
{
    return CopyDirectory(CurrentDirectory(), nBufferLength, lpBuffer);
}

DWORD GetCurrentDirectoryW(DWORD nBufferLength, LPWSTR lpBuffer)
{
    return CopyDirectory(QzPlatform::Utf8ToWide(CurrentDirectory()), nBufferLength, lpBuffer);
}

BOOL SetCurrentDirectoryA(LPCSTR lpPathName)
{
    return ChangeDirectory(lpPathName ? lpPathName : "");
}

BOOL SetCurrentDirectoryW(LPCWSTR lpPathName)
{
    return ChangeDirectory(lpPathName ? QzPlatform::WideToUtf8(lpPathName) : std::string());
}

DWORD GetModuleFileNameA(HMODULE hModule, LPSTR lpFilename, DWORD nSize)
{
    std::string path;
    if (!ModulePath(hModule, &path))
        return 0;
    return CopyModuleName(path, lpFilename, nSize);
}

DWORD GetModuleFileNameW(HMODULE hModule, LPWSTR lpFilename, DWORD nSize)
{
    std::string path;
    if (!ModulePath(hModule, &path))
        return 0;
    return CopyModuleName(QzPlatform::Utf8ToWide(path), lpFilename, nSize);
}

HMODULE GetModuleHandleA(LPCSTR lpModuleName)
{
    if (!lpModuleName)
        return QzPlatform::CQzModuleTable::Instance().ExecutableHandle();
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}

HMODULE LoadLibraryExA(LPCSTR lpLibFileName, HANDLE hFile, DWORD dwFlags)
{
    if (!lpLibFileName || hFile || !(dwFlags & LOAD_LIBRARY_AS_DATAFILE))
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HMODULE module = QzPlatform::CQzModuleTable::Instance().AddDataFile(lpLibFileName);
    if (!module)
        SetLastError(ERROR_MOD_NOT_FOUND);
    return module;
}

BOOL FreeLibrary(HMODULE hLibModule)
{
    if (QzPlatform::CQzModuleTable::Instance().Remove(hLibModule))
        return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
