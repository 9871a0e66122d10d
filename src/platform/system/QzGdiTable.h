// The GDI objects of the hosted system, fonts and regions, under handles that are checked on
// every use. Handles are numbers, never addresses, and are not reused.
#pragma once

#include "platform/system/QzKernelHost.h"
#include "platform/system/QzRegion.h"

#include <cstdint>
#include <unordered_map>

namespace QzPlatform
{

class CQzGdiTable
{
public:
    static CQzGdiTable& Instance();

    HFONT AddFont(const FontDescription& font);
    HRGN AddRegion(const CQzRegion& region);
    const FontDescription* FindFont(HFONT font) const;
    CQzRegion* FindRegion(HRGN region);
    bool Delete(HGDIOBJ object);
    void Reset();

private:
    uintptr_t NextHandle();

    std::unordered_map<uintptr_t, FontDescription> m_mapFonts;
    std::unordered_map<uintptr_t, CQzRegion> m_mapRegions;
    uintptr_t m_nLastId = 0;
};

} // namespace QzPlatform
