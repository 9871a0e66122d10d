// The animation index file (ani/Control.ani) read through the data set as windows draw from it:
// sections looked up by name in any case, their frames, sizes and pixels.
#include "FuzzSupport.h"

#include "platform/render/DataSet.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ani/Control.ani", data, size);
    IDataSet* pDataSet = TableDataSetQuery();
    pDataSet->Reload();
    for (const char* pszName : {"A", "Button", "a"})
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
