// The logic library's plain text drawing: captions, labels, counts and tip lines. Text goes to
// the render device in UTF-8; a newline character starts a new line size + 2 pixels lower.
// (Named DrawGameText because DrawText is a macro of the Windows headers.)
#pragma once

#include "platform/render/C3Types.h"
#include "platform/system/QzSystem.h"

namespace QzPlatform
{

// Draws narrow text (ANSI code page) with its top-left at (x, y) in the given colour, face
// ("" or null: the device's default face) and pixel size; a colour whose alpha byte is 0 is
// drawn opaque (0x00FF0000 is opaque red). The shadow colour is used only when
// shadow is nonzero. style is accepted for the callers' sake and not used. out (may be null)
// gets the drawn size: the widest line's width, and the number of lines times size + 2.
// Null or empty text draws nothing and gives (0, 0).
void DrawGameText(int x, int y, DWORD colour, const char* text, const char* face, int size,
                  BOOL shadow, int style, DWORD shadowColour, C3_SIZE* out);
// The same for wide text.
void DrawGameText(int x, int y, DWORD colour, const wchar_t* text, const char* face, int size,
                  BOOL shadow, int style, DWORD shadowColour, C3_SIZE* out);

} // namespace QzPlatform
