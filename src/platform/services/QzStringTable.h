// The game's string table: numbered texts read from "ini/StringTable.ini" under the data root,
// one "id=text" a line. Loaded on first use; a missing file or id gives the empty text.
#pragma once

#include <cstdint>

namespace QzPlatform
{

// The text of an id; never null (empty when the id is unknown).
const char* GetTableString(uint32_t id);
// Drops the loaded table so that the next look-up reads the file again.
void ReloadStringTable();

} // namespace QzPlatform
