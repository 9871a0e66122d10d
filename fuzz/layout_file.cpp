// Layout, variant and extended layout (GUI_EX) files through the layout manager: reading,
// reloading, writing a section back into the file and reading it again, and the look-ups a
// window makes. The first byte picks the kind of file (and for a layout what follows the
// reading), the rest is the file.
#include "FuzzSupport.h"

#include "layout/QzGuiInfoMgr.h"

namespace
{

using QzGui::CQzGuiInfoMgr;

// The records and extended records of a few small identifiers, as windows ask for them.
void LookUp(CQzGuiInfoMgr& mgr)
{
    for (DWORD parent = 0; parent < 4; ++parent)
    {
        for (DWORD ctrl = 0; ctrl < 4; ++ctrl)
        {
            for (DWORD variant = 0; variant < 3; ++variant)
            {
                QzGui::IQzGuiWndInfo* pInfo = mgr.GetWndInfo(parent, ctrl, 2, variant);
                if (pInfo)
                    (void)(pInfo->GetWidth() + pInfo->GetOpenBindList()->size());
            }
        }
        QzGui::CQzGuiInfoMgr::ExtRecordTable records;
        mgr.CollectExtendedRecords(records, parent);
    }
    for (int link = -1; link < 4; ++link)
        (void)mgr.GetHelpLink(link);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Base.ini", "[0-1]\nw=100\nh=100\n[1-2]\nw=10\nh=10\n");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    CQzGuiInfoMgr mgr;
    switch (data[0] % 3)
    {
    case 0:
        QzFuzz::WriteFile("ini/Fuzz.ini", data + 1, size - 1);
        mgr.LoadLayout("Fuzz.ini");
        // One more pass over the file a layout in three: a reload, or a section written back
        // into it and the file read again.
        if (data[0] / 3 % 3 == 1)
            mgr.ReloadCurrentLayout();
        if (data[0] / 3 % 3 == 2)
        {
            mgr.WriteWndSection("1-2", 1, 2, 3, 4, 5, "Title", "Button", 7);
            mgr.LoadLayout("Fuzz.ini");
        }
        break;
    case 1:
        QzFuzz::WriteFile("ini/Fuzz.ini", data + 1, size - 1);
        mgr.LoadLogicLayout("Fuzz.ini");
        break;
    default:
        QzFuzz::WriteFile("ini/GUI_EX.ini", data + 1, size - 1);
        mgr.LoadLayout("Base.ini");
        mgr.LoadExtendedLayout();
        QzFuzz::RemoveFile("ini/GUI_EX.ini");
        break;
    }
    LookUp(mgr);
    QzFuzz::ForgetProfiles();
    return 0;
}
