// The GDI objects of the hosted system, fonts and regions, under handles that are checked on
// every use. Each kind has its own handle table (HandleTable.h): a deleted object's handle stays
// invalid after a new object takes its slot, and a font handle never names a region.
#pragma once

#include "platform/system/gdi/QzRegion.h"
#include "platform/system/kernel/HandleTable.h"
#include "platform/system/kernel/QzKernelHost.h"

namespace QzPlatform
{

class CQzGdiTable
{
public:
    static CQzGdiTable& Instance();

    CQzGdiTable();

    // Null when the kind's table is full.
    HFONT AddFont(const FontDescription& font);
    HRGN AddRegion(const CQzRegion& region);
    const FontDescription* FindFont(HFONT font) const;
    CQzRegion* FindRegion(HRGN region);
    bool Delete(HGDIOBJ object);
    void Reset();

private:
    CHandleTable<FontDescription> m_fonts;
    CHandleTable<CQzRegion> m_regions;
};

} // namespace QzPlatform
