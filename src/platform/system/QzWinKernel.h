// The kernel and GDI half of the hosted Win32 system: last error, code pages, current directory
// and modules, files and read-only mappings, profile (INI) files, global memory, the clipboard,
// fonts and regions. The names, arguments, results and last-error codes are those of Win32;
// where this host differs it is said next to the declaration.
//
// Text: narrow text is in the ANSI code page (936 unless the host sets another, see
// QzCodePageHost.h); wide text (WCHAR, 32 bits here) is UTF-32. Narrow file names are the file
// system's bytes as they are; wide file names are converted to UTF-8 for the file system.
#pragma once

#include "platform/system/QzWinTypes.h"

// Last error. One value for the process: the library runs on one thread.
DWORD GetLastError();
void SetLastError(DWORD dwErrCode);

// Code pages: CP_ACP (and CP_OEMCP, treated as the ANSI code page), 936, 1252 and CP_UTF8.
// 1252 has no best-fit mapping: characters it lacks become the default character.
UINT GetACP();
UINT GetOEMCP();
int MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                        LPWSTR lpWideCharStr, int cchWideChar);
int WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                        LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar,
                        LPBOOL lpUsedDefaultChar);
BOOL IsDBCSLeadByte(BYTE TestChar);
BOOL IsDBCSLeadByteEx(UINT CodePage, BYTE TestChar);

// Current directory and modules. The null module is the executable (/proc/self/exe);
// LoadLibraryExA loads nothing: with LOAD_LIBRARY_AS_DATAFILE it names a file (for example a PE
// file with dialog templates) by a module handle whose GetModuleFileName is that file's path.
DWORD GetCurrentDirectoryA(DWORD nBufferLength, LPSTR lpBuffer);
DWORD GetCurrentDirectoryW(DWORD nBufferLength, LPWSTR lpBuffer);
BOOL SetCurrentDirectoryA(LPCSTR lpPathName);
BOOL SetCurrentDirectoryW(LPCWSTR lpPathName);
DWORD GetModuleFileNameA(HMODULE hModule, LPSTR lpFilename, DWORD nSize);
DWORD GetModuleFileNameW(HMODULE hModule, LPWSTR lpFilename, DWORD nSize);
HMODULE GetModuleHandleA(LPCSTR lpModuleName);
HMODULE LoadLibraryExA(LPCSTR lpLibFileName, HANDLE hFile, DWORD dwFlags);
BOOL FreeLibrary(HMODULE hLibModule);

// Files, enough to read a module file through a read-only mapping. Names go through
// QzPlatform::ResolvePath. CreateFileA opens for reading (OPEN_EXISTING) or writing
// (CREATE_ALWAYS); security attributes and templates are ignored.
HANDLE CreateFileA(LPCSTR lpFileName, DWORD dwDesiredAccess, DWORD dwShareMode,
                   LPVOID lpSecurityAttributes, DWORD dwCreationDisposition,
                   DWORD dwFlagsAndAttributes, HANDLE hTemplateFile);
DWORD GetFileSize(HANDLE hFile, LPDWORD lpFileSizeHigh);
BOOL ReadFile(HANDLE hFile, LPVOID lpBuffer, DWORD nNumberOfBytesToRead,
              LPDWORD lpNumberOfBytesRead, LPVOID lpOverlapped);
BOOL WriteFile(HANDLE hFile, LPCVOID lpBuffer, DWORD nNumberOfBytesToWrite,
               LPDWORD lpNumberOfBytesWritten, LPVOID lpOverlapped);
HANDLE CreateFileMappingA(HANDLE hFile, LPVOID lpFileMappingAttributes, DWORD flProtect,
                          DWORD dwMaximumSizeHigh, DWORD dwMaximumSizeLow, LPCSTR lpName);
LPVOID MapViewOfFile(HANDLE hFileMappingObject, DWORD dwDesiredAccess, DWORD dwFileOffsetHigh,
                     DWORD dwFileOffsetLow, SIZE_T dwNumberOfBytesToMap);
BOOL UnmapViewOfFile(LPCVOID lpBaseAddress);
BOOL CloseHandle(HANDLE hObject);

// Profile (INI) files with the Windows behaviour. A file name without a folder is taken
// relative to the current directory (Windows would look in its own folder); every name goes
// through QzPlatform::ResolvePath. The A functions keep the file's bytes as they are and compare
// section and key names without regard to the case of ASCII letters; the W functions convert
// names and values through the ANSI code page. New lines use the line ending the file already
// uses (CR LF for a new file).
DWORD GetPrivateProfileStringA(LPCSTR lpAppName, LPCSTR lpKeyName, LPCSTR lpDefault,
                               LPSTR lpReturnedString, DWORD nSize, LPCSTR lpFileName);
DWORD GetPrivateProfileStringW(LPCWSTR lpAppName, LPCWSTR lpKeyName, LPCWSTR lpDefault,
                               LPWSTR lpReturnedString, DWORD nSize, LPCWSTR lpFileName);
UINT GetPrivateProfileIntA(LPCSTR lpAppName, LPCSTR lpKeyName, INT nDefault, LPCSTR lpFileName);
UINT GetPrivateProfileIntW(LPCWSTR lpAppName, LPCWSTR lpKeyName, INT nDefault, LPCWSTR lpFileName);
BOOL WritePrivateProfileStringA(LPCSTR lpAppName, LPCSTR lpKeyName, LPCSTR lpString,
                                LPCSTR lpFileName);
BOOL WritePrivateProfileStringW(LPCWSTR lpAppName, LPCWSTR lpKeyName, LPCWSTR lpString,
                                LPCWSTR lpFileName);
DWORD GetPrivateProfileSectionNamesA(LPSTR lpszReturnBuffer, DWORD nSize, LPCSTR lpFileName);
DWORD GetPrivateProfileSectionNamesW(LPWSTR lpszReturnBuffer, DWORD nSize, LPCWSTR lpFileName);
DWORD GetPrivateProfileSectionA(LPCSTR lpAppName, LPSTR lpReturnedString, DWORD nSize,
                                LPCSTR lpFileName);
DWORD GetPrivateProfileSectionW(LPCWSTR lpAppName, LPWSTR lpReturnedString, DWORD nSize,
                                LPCWSTR lpFileName);

// Global memory. A GMEM_FIXED handle is the block's address, as on Windows; a GMEM_MOVEABLE
// handle is an opaque number. Both are checked against the table of live blocks.
HGLOBAL GlobalAlloc(UINT uFlags, SIZE_T dwBytes);
LPVOID GlobalLock(HGLOBAL hMem);
BOOL GlobalUnlock(HGLOBAL hMem);
HGLOBAL GlobalFree(HGLOBAL hMem);
SIZE_T GlobalSize(HGLOBAL hMem);

// The clipboard, one for the process. CF_TEXT and CF_UNICODETEXT are synthesized from each other
// through the ANSI code page. Delayed rendering (a null data handle) is not supported.
BOOL OpenClipboard(HWND hWndNewOwner);
BOOL CloseClipboard();
BOOL EmptyClipboard();
HANDLE SetClipboardData(UINT uFormat, HANDLE hMem);
HANDLE GetClipboardData(UINT uFormat);
BOOL IsClipboardFormatAvailable(UINT format);
int CountClipboardFormats();
HWND GetClipboardOwner();
HWND GetOpenClipboardWindow();

// GDI fonts and regions. A font is a description (see QzKernelHost.h); the render device draws
// text. ExtCreateRegion accepts no transform other than the identity.
HFONT CreateFontA(int cHeight, int cWidth, int cEscapement, int cOrientation, int cWeight,
                  DWORD bItalic, DWORD bUnderline, DWORD bStrikeOut, DWORD iCharSet,
                  DWORD iOutPrecision, DWORD iClipPrecision, DWORD iQuality, DWORD iPitchAndFamily,
                  LPCSTR pszFaceName);
BOOL DeleteObject(HGDIOBJ ho);
HRGN CreateRectRgn(int x1, int y1, int x2, int y2);
HRGN ExtCreateRegion(const XFORM* lpx, DWORD nCount, const RGNDATA* lpData);
BOOL PtInRegion(HRGN hrgn, int x, int y);
int GetRgnBox(HRGN hrgn, LPRECT lprc);
int CombineRgn(HRGN hrgnDst, HRGN hrgnSrc1, HRGN hrgnSrc2, int iMode);
