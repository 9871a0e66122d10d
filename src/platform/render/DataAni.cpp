#include "platform/render/DataAni.h"

#include "platform/system/QzPathResolve.h"

namespace QzPlatform
{

CDataAni::CDataAni(const AniSectionSpec& desc)
{
    m_vecFrames.reserve(desc.frames.size());
    for (const AniFrameSpec& frame : desc.frames)
        m_vecFrames.emplace_back(frame.path.empty() ? std::string() : ResolvePath(frame.path),
                                 frame);
}

BOOL CDataAni::ShowAni(int frame, int x, int y, int, int, float scale, uint8_t alpha)
{
    CDataFrame* pFrame = Find(frame);
    if (!pFrame)
        return FALSE;
    const SizeI frameSize = pFrame->GetSize();
    return pFrame->Draw(nullptr, x, y, frameSize.cx, frameSize.cy, alpha, scale) ? TRUE : FALSE;
}

BOOL CDataAni::ShowAniEx(int frame, int x, int y, const RECT* source, int width, int height, int,
                         int, float scale, uint8_t alpha)
{
    const CDataFrame* pFrame = Find(frame);
    if (!pFrame)
        return FALSE;
    return pFrame->Draw(source, x, y, width, height, alpha, scale) ? TRUE : FALSE;
}

BOOL CDataAni::GetAniSize(C3_SIZE& size, int frame)
{
    size.iWidth = 0;
    size.iHeight = 0;
    CDataFrame* pFrame = Find(frame);
    if (!pFrame)
        return FALSE;
    const SizeI frameSize = pFrame->GetSize();
    size.iWidth = frameSize.cx;
    size.iHeight = frameSize.cy;
    return TRUE;
}

} // namespace QzPlatform
