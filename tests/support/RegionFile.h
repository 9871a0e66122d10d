// Bytes of a click-region table (ini/Rgn.dat) for tests: the entry count, then entries of two
// window ids, the size of the region data, a reserved DWORD and the data, an RGNDATA of
// rectangles. Everything is little-endian.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <string>
#include <vector>

namespace QzTest
{

void PutDword(std::string& bytes, uint32_t value);
// An RGNDATA whose region is the rectangles.
std::string RegionData(const std::vector<RECT>& rects);
// Appends one entry with the data as given.
void PutRegionEntry(std::string& bytes, uint32_t first, uint32_t second, const std::string& data);

} // namespace QzTest
