#include "platform/services/AniHandle.h"

namespace QzPlatform
{

int CAniHandle::GetFrameCount() const
{
    return m_pAni ? m_pAni->GetFrameCount() : 0;
}

bool CAniHandle::GetFrameSize(int index, int& width, int& height) const
{
    width = 0;
    height = 0;
    if (!m_pAni)
        return false;
    C3_SIZE size = {0, 0};
    if (!m_pAni->GetAniSize(size, index))
        return false;
    width = size.iWidth;
    height = size.iHeight;
    return true;
}

bool CAniHandle::Draw(int frame, int x, int y, uint8_t alpha) const
{
    return m_pAni && m_pAni->ShowAni(frame, x, y, 0, 0, 1.0f, alpha);
}

} // namespace QzPlatform
