#include "platform/system/QzClipboard.h"
#include "platform/system/QzCodePageHost.h"
#include "platform/system/QzFileTable.h"
#include "platform/system/QzGdiTable.h"
#include "platform/system/QzGlobalHeap.h"
#include "platform/system/QzKernelHost.h"
#include "platform/system/QzModuleTable.h"
#include "platform/system/QzProfileCache.h"
#include "platform/system/QzWinKernel.h"

namespace QzPlatform
{

int GetProfileParseCountForTesting()
{
    return CQzProfileCache::Instance().ParseCount();
}

void ResetKernelForTesting()
{
    CQzClipboard::Instance().Reset();
    CQzGlobalHeap::Instance().Reset();
    CQzGdiTable::Instance().Reset();
    CQzProfileCache::Instance().Reset();
    CQzModuleTable::Instance().Reset();
    CQzFileTable::Instance().Reset();
    SetAnsiCodePage(936);
    SetLastError(ERROR_SUCCESS);
}

} // namespace QzPlatform
