// The library's one door to the operating system. On Windows it is <windows.h> and <imm.h>;
// elsewhere it is the hosted window system of this folder, which gives the same names the same
// behaviour. Nothing outside src/platform includes a system header.
#pragma once

#ifdef _WIN32
// No min and max macros: the library uses std::min and std::max.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// <imm.h> needs the types of <windows.h>: keep the blank line, which stops include sorting.

#include <imm.h>
// GetMappedFileName: the file behind a module loaded as a data file.
#include <psapi.h>
// From <windowsx.h>, which would bring hundreds of other macros along.
#ifndef GET_X_LPARAM
#define GET_X_LPARAM(lp) ((int)(short)LOWORD(lp))
#define GET_Y_LPARAM(lp) ((int)(short)HIWORD(lp))
#endif
#else
#include "platform/system/QzWinEdit.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinTypes.h"
#include "platform/system/QzWinUser.h"
#endif
