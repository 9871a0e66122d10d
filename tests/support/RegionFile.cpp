#include "support/RegionFile.h"

namespace QzTest
{

void PutDword(std::string& bytes, uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

std::string RegionData(const std::vector<RECT>& rects)
{
    std::string region;
    PutDword(region, sizeof(RGNDATAHEADER));
    PutDword(region, RDH_RECTANGLES);
    PutDword(region, static_cast<uint32_t>(rects.size()));
    PutDword(region, static_cast<uint32_t>(rects.size() * sizeof(RECT)));
    for (int i = 0; i < 4; ++i)
        PutDword(region, 0); // the bounding rectangle, which readers work out themselves
    for (const RECT& rect : rects)
    {
        for (LONG value : {rect.left, rect.top, rect.right, rect.bottom})
            PutDword(region, static_cast<uint32_t>(value));
    }
    return region;
}

void PutRegionEntry(std::string& bytes, uint32_t first, uint32_t second, const std::string& data)
{
    PutDword(bytes, first);
    PutDword(bytes, second);
    PutDword(bytes, static_cast<uint32_t>(data.size()));
    PutDword(bytes, 0);
    bytes += data;
}

} // namespace QzTest
