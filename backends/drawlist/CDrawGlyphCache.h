// Glyphs of the draw-list device, each rasterised once per font into the glyph atlas pages as
// white texels whose alpha is the coverage (colour glyphs keep their colours). The pages are
// bounded: past the budget the device starts them again between frames, and within one frame
// they never pass a hard limit.
#pragma once

#include "CDrawAtlasAllocator.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

typedef struct _PangoFont PangoFont;
typedef uint32_t PangoGlyph;

namespace QzPlatform
{

// A glyph's bitmap: where it lies on its page (null page: the glyph shows nothing) and where its
// top-left lies from the glyph's origin on the baseline, in pixels.
struct DrawGlyph
{
    const DrawAtlas* page = nullptr;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int left = 0;
    int top = 0;
    bool colour = false; // the texels carry the glyph's own colours
};

class CDrawGlyphCache
{
public:
    static constexpr int kPageStartSide = 512;
    static constexpr int kPageMaxSide = 2048;
    static constexpr size_t kPageBudget = 2; // pages kept from one frame to the next
    static constexpr size_t kMaxPages = 8;   // pages one frame may fill

    explicit CDrawGlyphCache(CDrawAtlasPages& pages);
    ~CDrawGlyphCache();
    CDrawGlyphCache(const CDrawGlyphCache&) = delete;
    CDrawGlyphCache& operator=(const CDrawGlyphCache&) = delete;

    // The glyph of the font, rasterised on first use; null when the pages are full.
    const DrawGlyph* Get(PangoFont* font, PangoGlyph glyph);
    // The texels [x, x + width) x [y, y + height) of a glyph on its page (white, the alpha its
    // coverage) over their black shadow one texel down and right, as one bitmap a texel wider
    // and taller: drawn in an opaque colour, it shows what the shadow and then the glyph would
    // (straight alpha: the texel's alpha is the two coverages over each other, its grey the
    // glyph's share of it). Made on first use; null when the pages are full.
    const DrawGlyph* GetShadowed(const DrawAtlas& page, int x, int y, int width, int height);
    // Forgets every glyph and gives the pages back.
    void Clear();
    bool IsOverBudget() const { return m_allocator.GetPageCount() > kPageBudget; }
    // The text's pages, which small images share (CDrawImageCache).
    CDrawAtlasAllocator& Allocator() { return m_allocator; }

private:
    uint64_t KeyOf(PangoFont* font, PangoGlyph glyph);
    bool Rasterise(PangoFont* font, PangoGlyph glyph, DrawGlyph& result);
    bool Store(const std::vector<uint32_t>& texels, DrawGlyph& result);

    CDrawAtlasAllocator m_allocator;
    std::unordered_map<PangoFont*, uint32_t> m_mapFonts;   // a reference held on each
    std::unordered_map<uint64_t, DrawGlyph> m_mapGlyphs;   // by font index and glyph
    std::unordered_map<uint64_t, DrawGlyph> m_mapShadowed; // by page and place of the glyph
};

} // namespace QzPlatform
