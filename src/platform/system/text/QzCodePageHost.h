// Host control of the ANSI code page that CP_ACP, the narrow text of the library and the
// AnsiTo... conversions use: 936 (GBK) by default, 65001 (UTF-8) and 1252 as well. On Windows
// it is the system's (GetACP), which a process cannot change: setting it succeeds for that one.
#pragma once

#include "platform/system/QzSystem.h"

namespace QzPlatform
{

// Sets the ANSI code page; an unsupported code page changes nothing and gives false.
bool SetAnsiCodePage(UINT codePage);
UINT GetAnsiCodePage();

} // namespace QzPlatform
