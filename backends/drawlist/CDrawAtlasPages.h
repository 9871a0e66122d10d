// Every texture page of the draw-list device, images and glyphs alike: creates pages with their
// white texel block, grows them keeping each texel where it was, and hands out ids that are
// never used twice, so a renderer can key its textures by id.
#pragma once

#include "QzDrawList.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace QzPlatform
{

class CDrawAtlasPages
{
public:
    // The white block fills texels [0, kWhiteSide) x [0, kWhiteSide) of every page; the texel
    // coordinate kWhiteCentre (in both axes) samples white even with linear filtering.
    static constexpr int kWhiteSide = 4;
    static constexpr float kWhiteCentre = 2.0f;

    // Told after a page grew: the page (already at its new size) and its old size.
    typedef std::function<void(const DrawAtlas& page, int oldWidth, int oldHeight)> GrowHandler;

    void SetGrowHandler(GrowHandler handler) { m_fnGrown = std::move(handler); }

    // A new page of width x height texels, transparent but for the white block.
    DrawAtlas* Create(int width, int height);
    // Makes the page larger; existing texels keep their texel coordinates.
    void Grow(DrawAtlas& page, int width, int height);
    void Remove(const DrawAtlas* page);

    size_t GetCount() const { return m_vecPages.size(); }
    const DrawAtlas& Get(size_t index) const { return *m_vecPages[index]; }
    const DrawAtlas* Find(uint32_t id) const;

private:
    std::vector<std::unique_ptr<DrawAtlas>> m_vecPages;
    uint32_t m_nLastId = 0;
    GrowHandler m_fnGrown;
};

} // namespace QzPlatform
