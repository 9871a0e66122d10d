// A frame handle of the logic library's animation store: a reference to one animation section
// that stays usable for as long as the handle holds it, even after the data set purged or
// reloaded the section (the handle then keeps the section as it was when filled).
#pragma once

#include "platform/render/DataSet.h"

#include <cstdint>
#include <memory>

namespace QzPlatform
{

class CAniHandle
{
public:
    bool IsValid() const { return m_pAni != nullptr; }
    // 0 for an invalid handle.
    int GetFrameCount() const;
    // False (and 0 x 0) for an invalid handle or a frame outside the section.
    bool GetFrameSize(int index, int& width, int& height) const;
    // Draws the frame at its size with its top-left at (x, y); false when nothing was drawn.
    bool Draw(int frame, int x, int y, uint8_t alpha = 255) const;
    // Lets go of the section; the handle becomes invalid.
    void Release() { m_pAni.reset(); }

    // The section itself, for drawing parts of frames (ShowAniEx); null for an invalid handle.
    IDataAni* GetAni() const { return m_pAni.get(); }

private:
    friend class CQzAniStore;

    std::shared_ptr<IDataAni> m_pAni;
};

} // namespace QzPlatform
