// What the host tells the system about the user's devices: which keys are down or toggled,
// where the cursor is, and the beeps asked for since the host last looked.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <array>
#include <vector>

namespace QzPlatform
{

class CHostInputState
{
public:
    // Pressing a key that was up flips its toggled state, as the keyboard does.
    void SetKeyDown(int vk, bool down);
    void SetKeyToggled(int vk, bool toggled);
    bool IsKeyDown(int vk) const;
    bool IsKeyToggled(int vk) const;

    POINT CursorPos() const { return m_ptCursor; }
    void SetCursorPos(POINT pt) { m_ptCursor = pt; }

    void AddBeep(UINT type) { m_vecBeeps.push_back(type); }
    std::vector<UINT> TakeBeeps();

    void Clear();

private:
    static constexpr int kKeyCount = 256;
    static bool IsKey(int vk) { return vk >= 0 && vk < kKeyCount; }

    std::array<bool, kKeyCount> m_arrDown = {};
    std::array<bool, kKeyCount> m_arrToggled = {};
    POINT m_ptCursor = {0, 0};
    std::vector<UINT> m_vecBeeps;
};

} // namespace QzPlatform
