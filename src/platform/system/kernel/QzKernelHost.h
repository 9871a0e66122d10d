// Host and test access to the kernel half of the hosted system: what a render device needs to
// know about a font, the rectangles of a region, and a reset of all kernel state for tests.
#pragma once

#include "platform/system/QzSystem.h"

#include <string>
#include <vector>

namespace QzPlatform
{

// What CreateFontA recorded.
struct FontDescription
{
    std::string faceName; // as given, in the ANSI code page
    int height = 0;       // negative: character height; positive: cell height (Win32 rule)
    int width = 0;
    int weight = 0;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    DWORD charSet = 0;
};

// False for a handle that is not a live font.
bool GetFontDescription(HFONT font, FontDescription* description);

// The rectangles the region is made of (they may overlap); empty for a bad handle.
std::vector<RECT> GetRegionRects(HRGN region);

// Frees every global memory block, font and region, empties and closes the clipboard, forgets
// the cached profile files, the open files, mappings and data modules, sets the ANSI code page
// back to 936 and the last error to 0. On Windows it empties the clipboard and sets the last
// error to 0: the rest is the system's.
void ResetKernelForTesting();

#ifndef _WIN32
// How many times a profile file was read and parsed since the last reset (a cache check).
int GetProfileParseCountForTesting();
#endif

} // namespace QzPlatform
