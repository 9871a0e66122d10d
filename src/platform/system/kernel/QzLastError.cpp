#include "platform/system/QzWinKernel.h"

namespace
{

// The library runs on one thread, so one value serves the process.
DWORD g_dwLastError = ERROR_SUCCESS;

} // namespace

DWORD GetLastError()
{
    return g_dwLastError;
}

void SetLastError(DWORD dwErrCode)
{
    g_dwLastError = dwErrCode;
}
