// Cursors and the cursor position.
#include "platform/services/QzFile.h"
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/kernel/QzPathResolve.h"

using QzPlatform::CHostedSystem;

namespace
{

QzPlatform::CCursorTable& Cursors()
{
    return CHostedSystem::Instance().Cursors();
}

} // namespace

HCURSOR LoadCursorA(HINSTANCE hInstance, LPCSTR lpCursorName)
{
    HCURSOR cursor = nullptr;
    if (!hInstance && lpCursorName && IS_INTRESOURCE(lpCursorName))
        cursor = Cursors().Standard(static_cast<WORD>(reinterpret_cast<ULONG_PTR>(lpCursorName)));
    if (!cursor)
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return cursor;
}

HCURSOR LoadCursorFromFileA(LPCSTR lpFileName)
{
    if (!lpFileName || !*lpFileName)
    {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    const std::string path = QzPlatform::ResolvePath(lpFileName);
    if (!QzPlatform::IsFile(path))
    {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    HCURSOR cursor = Cursors().AddFile(path);
    if (!cursor)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return cursor;
}

HCURSOR SetCursor(HCURSOR hCursor)
{
    if (hCursor && !Cursors().Find(hCursor))
    {
        SetLastError(ERROR_INVALID_CURSOR_HANDLE);
        return nullptr;
    }
    const HCURSOR previous = Cursors().Current();
    Cursors().SetCurrent(hCursor);
    return previous;
}

HCURSOR GetCursor()
{
    const HCURSOR current = Cursors().Current();
    return Cursors().Find(current) ? current : nullptr;
}

BOOL DestroyCursor(HCURSOR hCursor)
{
    if (!Cursors().Destroy(hCursor))
    {
        SetLastError(ERROR_INVALID_CURSOR_HANDLE);
        return FALSE;
    }
    return TRUE;
}

BOOL GetCursorPos(LPPOINT lpPoint)
{
    if (!lpPoint)
        return FALSE;
    *lpPoint = CHostedSystem::Instance().Input().CursorPos();
    return TRUE;
}

BOOL SetCursorPos(int X, int Y)
{
    CHostedSystem::Instance().Input().SetCursorPos({X, Y});
    return TRUE;
}
