// The animation index file (ani/Control.ani): parsed from memory, then read through the data
// set as windows draw from it.
#include "FuzzSupport.h"

#include "platform/render/AniFile.h"
#include "platform/render/DataSet.h"

#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    QzPlatform::CAniFile ani;
    ani.Parse("ani/Control.ani", text);
    for (const char* pszName : {"A", "Button", "a"})
    {
        const QzPlatform::AniSectionSpec* pSection = ani.FindSection(pszName);
        if (pSection)
            (void)pSection->frames.size();
    }
    QzFuzz::WriteFile("ani/Control.ani", text);
    IDataSet* pDataSet = TableDataSetQuery();
    pDataSet->Reload();
    for (const char* pszName : {"A", "Button"})
    {
        IDataAni* pAni = pDataSet->GetAni("ani/Control.ani", pszName, 1, 30000, 0);
        if (!pAni)
            continue;
        C3_SIZE frameSize = {};
        for (int frame = -1; frame <= pAni->GetFrameCount(); ++frame)
        {
            pAni->GetAniSize(frameSize, frame);
            pAni->ShowAni(frame, 10, 10);
            if (IDataFrame* pFrame = pAni->GetFrame(frame))
                (void)pFrame->IsTransparentAt(1, 1);
        }
    }
    return 0;
}
