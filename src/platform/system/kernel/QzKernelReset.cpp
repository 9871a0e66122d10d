#include "platform/system/QzWinKernel.h"
#include "platform/system/clipboard/QzClipboard.h"
#include "platform/system/gdi/QzGdiTable.h"
#include "platform/system/kernel/QzFileTable.h"
#include "platform/system/kernel/QzGlobalHeap.h"
#include "platform/system/kernel/QzKernelHost.h"
#include "platform/system/kernel/QzModuleTable.h"
#include "platform/system/kernel/QzProfileCache.h"
#include "platform/system/text/QzCodePageHost.h"

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
