#include "platform/render/DataAni.h"

#include "platform/system/kernel/QzPathResolve.h"

namespace QzPlatform
{

namespace
{

uint8_t ModeAlpha(int drawMode, uint8_t alpha)
{
    return drawMode == QZ_DRAWMODE_TRAIL ? static_cast<uint8_t>(alpha / 2) : alpha;
}

} // namespace

CDataAni::CDataAni(const AniSectionSpec& desc)
{
    m_vecFrames.reserve(desc.frames.size());
    for (const AniFrameSpec& frame : desc.frames)
        m_vecFrames.emplace_back(frame.path.empty() ? std::string() : ResolvePath(frame.path),
                                 frame);
}

BOOL CDataAni::ShowAni(int frame, int x, int y, int drawMode, int, float scale, uint8_t alpha)
{
    CDataFrame* pFrame = Find(frame);
    if (!pFrame)
        return FALSE;
    const SizeI frameSize = pFrame->GetSize();
    return pFrame->Draw(nullptr, x, y, frameSize.cx, frameSize.cy, ModeAlpha(drawMode, alpha),
                        scale)
               ? TRUE
               : FALSE;
}

BOOL CDataAni::ShowAniEx(int frame, int x, int y, const RECT* source, int width, int height,
                         int drawMode, int, float scale, uint8_t alpha)
{
    const CDataFrame* pFrame = Find(frame);
    if (!pFrame)
        return FALSE;
    return pFrame->Draw(source, x, y, width, height, ModeAlpha(drawMode, alpha), scale) ? TRUE
                                                                                        : FALSE;
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
