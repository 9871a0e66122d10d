// The library's one door to the operating system. On Windows it is <windows.h> and <imm.h>;
// elsewhere it is the hosted window system of this folder, which gives the same names the same
// behaviour. Nothing outside src/platform includes a system header.
#pragma once

#ifdef _WIN32
#include <imm.h>
#include <windows.h>
#else
#include "platform/system/QzWinEdit.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinTypes.h"
#include "platform/system/QzWinUser.h"
#endif
