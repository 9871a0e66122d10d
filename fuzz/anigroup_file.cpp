// ini/AniGroup.ini through the profile functions: the layout manager's group table, which the
// group reader fills, and its look-ups.
#include "FuzzSupport.h"

#include "layout/QzGuiInfoMgr.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ini/AniGroup.ini", data, size);
    QzGui::CQzGuiInfoMgr mgr;
    mgr.LoadAniGroups(); // through the group reader
    for (const auto& group : mgr.GetAniGroups())
    {
        const char* pszName = group.first.c_str();
        const int count = mgr.GetAniGroupCount(pszName);
        for (int index : {-1, 0, count - 1, count})
        {
            const QzGui::QzAniGroupPiece* pPiece = mgr.GetAniGroupPiece(pszName, index);
            if (pPiece)
                (void)(pPiece->section.size() + static_cast<size_t>(pPiece->left));
        }
    }
    return 0;
}
