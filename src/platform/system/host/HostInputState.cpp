#include "platform/system/host/HostInputState.h"

#include <utility>

namespace QzPlatform
{

void CHostInputState::SetKeyDown(int vk, bool down)
{
    if (!IsKey(vk))
        return;
    if (down && !m_arrDown[vk])
        m_arrToggled[vk] = !m_arrToggled[vk];
    m_arrDown[vk] = down;
}

void CHostInputState::SetKeyToggled(int vk, bool toggled)
{
    if (IsKey(vk))
        m_arrToggled[vk] = toggled;
}

bool CHostInputState::IsKeyDown(int vk) const
{
    return IsKey(vk) && m_arrDown[vk];
}

bool CHostInputState::IsKeyToggled(int vk) const
{
    return IsKey(vk) && m_arrToggled[vk];
}

std::vector<UINT> CHostInputState::TakeBeeps()
{
    return std::exchange(m_vecBeeps, {});
}

void CHostInputState::Clear()
{
    m_arrDown.fill(false);
    m_arrToggled.fill(false);
    m_ptCursor = {0, 0};
    m_vecBeeps.clear();
}

} // namespace QzPlatform
