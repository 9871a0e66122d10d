// ini/Rgn.dat through the region reader and the layout manager, and every region it keeps
// made into a platform region and hit-tested, as a window with a click region does.
#include "FuzzSupport.h"

#include "layout/QzGuiInfoMgr.h"
#include "layout/QzRegionReader.h"
#include "platform/system/QzSystem.h"

namespace
{

void HitTest(HRGN hRegion)
{
    if (!hRegion)
        return;
    RECT box = {};
    GetRgnBox(hRegion, &box);
    (void)PtInRegion(hRegion, box.left, box.top);
    (void)PtInRegion(hRegion, box.right, box.bottom);
    (void)PtInRegion(hRegion, 0, 0);
    DeleteObject(hRegion);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ini/Rgn.dat", data, size);
    std::map<uint64_t, QzGui::QzRegionEntry> table;
    QzGui::CQzRegionReader::Read("ini/Rgn.dat", table, [](uint64_t) {});
    QzGui::CQzGuiInfoMgr mgr;
    mgr.LoadRegions();
    for (const auto& entry : table)
    {
        const QzGui::QzRegionEntry& region = entry.second;
        if (!region.data.empty())
            HitTest(ExtCreateRegion(nullptr, static_cast<DWORD>(region.data.size()),
                                    reinterpret_cast<const RGNDATA*>(region.data.data())));
        HitTest(mgr.CreateWndRegion(region.dwFirstId & 0xFFFF, region.dwSecondId & 0xFFFF));
    }
    return 0;
}
