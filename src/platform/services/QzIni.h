// The base library's INI access over the profile functions, with Windows semantics. Paths are
// game data names ("ini\\GuiLayout.ini"); a relative one is taken from the current directory
// (the profile functions alone would look in the system's folder on Windows).
#pragma once

#include "platform/system/QzSystem.h"

namespace QzPlatform
{

// Writes key=value into the section, creating the file, section or key as needed.
BOOL IniWriteString(const char* section, const char* key, const char* value, const char* path);
// The key's integer value, or defaultValue when the key is missing.
int IniReadInt(const char* path, const char* section, const char* key, int defaultValue);
// Copies the key's text (or defaultValue) into buffer of size bytes, always terminated; returns
// the number of characters copied.
DWORD IniReadString(const char* path, const char* section, const char* key,
                    const char* defaultValue, char* buffer, DWORD size);

} // namespace QzPlatform
