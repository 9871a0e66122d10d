// C streams over the files of the memory store, so that the readers that use fgets, fread and
// fscanf read memory files exactly as they read disk files.
#pragma once

#include <cstdio>
#include <string>

namespace QzPlatform
{

// fopen on the memory store: the same modes ("r" needs the file; "w" empties or makes it; "a"
// makes a missing one and writes at its end; "+" reads and writes). Writes reach the store at
// once. Null when "r" names no file or the mode is not one of fopen's.
FILE* OpenMemoryStream(const std::string& path, const char* mode);

} // namespace QzPlatform
