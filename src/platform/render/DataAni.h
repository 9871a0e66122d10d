// An animation section built from its parsed description: the frames with their images.
#pragma once

#include "platform/render/AniFile.h"
#include "platform/render/DataFrame.h"
#include "platform/render/DataSet.h"

#include <vector>

namespace QzPlatform
{

class CDataAni final : public IDataAni
{
public:
    // Image paths are resolved on the data root now; images are loaded on first use.
    explicit CDataAni(const AniSectionSpec& desc);

    BOOL ShowAni(int frame, int x, int y, int drawMode, int reserved, float scale,
                 uint8_t alpha) override;
    BOOL ShowAniEx(int frame, int x, int y, const RECT* source, int width, int height, int drawMode,
                   int reserved, float scale, uint8_t alpha) override;
    IDataFrame* GetFrame(int index) override { return Find(index); }
    int GetFrameCount() override { return static_cast<int>(m_vecFrames.size()); }
    BOOL GetAniSize(C3_SIZE& size, int frame) override;

private:
    // Null for an index outside the section. Asked for on every draw of a window, so inline.
    CDataFrame* Find(int index)
    {
        if (index < 0 || index >= GetFrameCount())
            return nullptr;
        return &m_vecFrames[static_cast<size_t>(index)];
    }

    std::vector<CDataFrame> m_vecFrames;
};

} // namespace QzPlatform
