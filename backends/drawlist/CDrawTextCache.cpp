#include "CDrawTextCache.h"

#include "QzPangoText.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <functional>

namespace QzPlatform
{

const char* const CDrawTextCache::kDefaultFace = "Sans";

namespace
{

const std::string& DefaultFace()
{
    static const std::string face(CDrawTextCache::kDefaultFace);
    return face;
}

const std::string& FaceOf(const FontSpec& font)
{
    return font.face.empty() ? DefaultFace() : font.face;
}

int SizeOf(const FontSpec& font)
{
    return std::min(std::max(font.size, 1), CDrawTextCache::kMaxFontSize);
}

size_t HashKey(const std::string& text, const std::string& face, int size)
{
    const size_t hash = std::hash<std::string>()(text);
    return hash ^ (std::hash<std::string>()(face) * 31 + static_cast<size_t>(size) + 0x9e3779b9u +
                   (hash << 6));
}

uint32_t CoverageAt(const DrawQuad& quad, int x, int y)
{
    const DrawAtlas& page = *quad.page;
    const size_t row = size_t(int(quad.ty0) + y - int(quad.y0));
    return page.texels[row * page.width + size_t(int(quad.tx0) + x - int(quad.x0))] >> 24;
}

// Whether the shadow of `glyph` (one pixel down and right) covers any ink of `below`.
bool ShadowOnInk(const DrawQuad& glyph, const DrawQuad& below)
{
    const int left = std::max(int(glyph.x0) + 1, int(below.x0));
    const int right = std::min(int(glyph.x1) + 1, int(below.x1));
    const int top = std::max(int(glyph.y0) + 1, int(below.y0));
    const int bottom = std::min(int(glyph.y1) + 1, int(below.y1));
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            if (CoverageAt(below, x, y) != 0 && CoverageAt(glyph, x - 1, y - 1) != 0)
                return true;
    return false;
}

// Whether drawing each glyph over its own shadow in turn shows what drawing every shadow and
// then every glyph shows: shadows over shadows are the same in any order, a glyph over an
// earlier shadow the same in both, but a shadow over an earlier glyph's ink is not. Colour
// glyphs keep their colours and cannot be drawn so.
bool ShadowsStayUnder(const std::vector<DrawQuad>& quads)
{
    for (size_t later = 0; later < quads.size(); ++later)
    {
        if (quads[later].colour)
            return false;
        for (size_t earlier = 0; earlier < later; ++earlier)
            if (ShadowOnInk(quads[later], quads[earlier]))
                return false;
    }
    return true;
}

} // namespace

CDrawTextCache::CDrawTextCache(CDrawGlyphCache& glyphs, size_t capacity)
    : m_glyphs(glyphs), m_nCapacity(std::max<size_t>(capacity, 1)),
      m_pContext(PangoText::CreateContext()), m_ascii(m_pContext, glyphs)
{
    size_t slots = 2;
    while (slots < m_nCapacity * 2)
        slots *= 2;
    m_vecSlots.resize(slots);
}

CDrawTextCache::~CDrawTextCache()
{
    g_object_unref(m_pContext);
}

SizeI CDrawTextCache::Measure(const std::string& utf8, const FontSpec& font)
{
    Entry& entry = Acquire(utf8, font);
    if (!entry.measured)
        Lay(entry, false);
    return entry.extent;
}

const DrawQuadRun& CDrawTextCache::GetQuads(const std::string& utf8, const FontSpec& font)
{
    return QuadsOf(Acquire(utf8, font));
}

const DrawQuadRun& CDrawTextCache::QuadsOf(Entry& entry)
{
    if (!entry.hasQuads)
    {
        Lay(entry, true);
        entry.quads.Seal();
    }
    return entry.quads;
}

const DrawQuadRun* CDrawTextCache::GetShadowedQuads(const std::string& utf8, const FontSpec& font)
{
    Entry& entry = Acquire(utf8, font);
    QuadsOf(entry);
    if (entry.hasQuads && entry.shadowed == Shadowed::kUnknown)
        BuildShadowed(entry);
    return entry.shadowed == Shadowed::kReady ? &entry.shadowedQuads : nullptr;
}

// A glyph without room on the pages leaves the entry unknown: it is tried again next time.
void CDrawTextCache::BuildShadowed(Entry& entry)
{
    const std::vector<DrawQuad>& quads = entry.quads.quads;
    if (quads.size() > kMaxShadowedQuads || !ShadowsStayUnder(quads))
    {
        entry.shadowed = Shadowed::kRefused;
        return;
    }
    DrawQuadRun& shadowed = entry.shadowedQuads;
    shadowed.Clear();
    for (const DrawQuad& quad : quads)
    {
        const DrawGlyph* glyph =
            m_glyphs.GetShadowed(*quad.page, int(quad.tx0), int(quad.ty0), int(quad.tx1 - quad.tx0),
                                 int(quad.ty1 - quad.ty0));
        if (glyph == nullptr)
        {
            shadowed.Clear();
            return;
        }
        shadowed.quads.push_back(DrawQuad{glyph->page, quad.x0, quad.y0, quad.x1 + 1.0f,
                                          quad.y1 + 1.0f, float(glyph->x), float(glyph->y),
                                          float(glyph->x + glyph->width),
                                          float(glyph->y + glyph->height), false});
    }
    shadowed.Seal();
    entry.shadowed = Shadowed::kReady;
}

// One line of printable ASCII is laid out pair by pair; other text, and ASCII the font does not
// lay out that way, with a pango layout.
void CDrawTextCache::Lay(Entry& entry, bool withQuads)
{
    if (CDrawAsciiLayout::Takes(entry.text) &&
        m_ascii.Measure(entry.text, entry.face, entry.size, entry.extent))
    {
        entry.measured = true;
        if (!withQuads)
            return;
        entry.hasQuads = m_ascii.BuildQuads(entry.text, entry.face, entry.size, entry.quads.quads);
        if (entry.hasQuads)
            return;
    }
    PangoLayout* layout = CreateLayout(entry);
    if (withQuads)
        BuildQuads(entry, layout);
    g_object_unref(layout);
}

CDrawTextCache::Entry& CDrawTextCache::Acquire(const std::string& utf8, const FontSpec& font)
{
    const std::string& face = FaceOf(font);
    const int size = SizeOf(font);
    const size_t hash = HashKey(utf8, face, size);
    uint32_t index = Find(hash, utf8, face, size);
    if (index != kNone)
    {
        ++m_nHits;
        Unlink(index);
        PushNewest(index);
        return m_vecEntries[index];
    }
    ++m_nMisses;
    index = TakeSlot();
    Entry& entry = m_vecEntries[index];
    entry.hash = hash;
    entry.text.assign(utf8);
    entry.face.assign(face);
    entry.size = size;
    entry.measured = false;
    entry.hasQuads = false;
    entry.quads.Clear();
    entry.shadowed = Shadowed::kUnknown;
    entry.shadowedQuads.Clear();
    Index(index);
    PushNewest(index);
    return entry;
}

uint32_t CDrawTextCache::Find(size_t hash, const std::string& text, const std::string& face,
                              int size) const
{
    const size_t mask = m_vecSlots.size() - 1;
    const uint32_t tag = TagOf(hash);
    for (size_t slot = HomeOf(hash); m_vecSlots[slot].entry != kNone; slot = (slot + 1) & mask)
    {
        if (m_vecSlots[slot].tag != tag)
            continue;
        const Entry& entry = m_vecEntries[m_vecSlots[slot].entry];
        if (entry.hash == hash && entry.size == size && entry.text == text && entry.face == face)
            return m_vecSlots[slot].entry;
    }
    return kNone;
}

void CDrawTextCache::Index(uint32_t index)
{
    const size_t hash = m_vecEntries[index].hash;
    const size_t mask = m_vecSlots.size() - 1;
    size_t slot = HomeOf(hash);
    while (m_vecSlots[slot].entry != kNone)
        slot = (slot + 1) & mask;
    m_vecSlots[slot] = Slot{index, TagOf(hash)};
}

// Empties the entry's slot, then moves back each slot of the run after it that may stand
// there (its home is not between the hole and itself), so that no probe stops early.
void CDrawTextCache::Unindex(uint32_t index)
{
    const size_t mask = m_vecSlots.size() - 1;
    size_t hole = HomeOf(m_vecEntries[index].hash);
    while (m_vecSlots[hole].entry != index)
        hole = (hole + 1) & mask;
    for (size_t next = (hole + 1) & mask; m_vecSlots[next].entry != kNone; next = (next + 1) & mask)
    {
        const size_t home = HomeOf(m_vecEntries[m_vecSlots[next].entry].hash);
        if (((next - home) & mask) < ((next - hole) & mask))
            continue;
        m_vecSlots[hole] = m_vecSlots[next];
        hole = next;
    }
    m_vecSlots[hole] = Slot{};
}

// A free entry: a new one while the cache is below its capacity, else the least recently used,
// whose storage is reused.
uint32_t CDrawTextCache::TakeSlot()
{
    if (m_vecEntries.size() < m_nCapacity)
    {
        m_vecEntries.emplace_back();
        return static_cast<uint32_t>(m_vecEntries.size() - 1);
    }
    const uint32_t index = m_nOldest;
    Unindex(index);
    Unlink(index);
    return index;
}

void CDrawTextCache::Unlink(uint32_t index)
{
    Entry& entry = m_vecEntries[index];
    if (entry.newer != kNone)
        m_vecEntries[entry.newer].older = entry.older;
    else
        m_nNewest = entry.older;
    if (entry.older != kNone)
        m_vecEntries[entry.older].newer = entry.newer;
    else
        m_nOldest = entry.newer;
    entry.newer = kNone;
    entry.older = kNone;
}

void CDrawTextCache::PushNewest(uint32_t index)
{
    Entry& entry = m_vecEntries[index];
    entry.older = m_nNewest;
    entry.newer = kNone;
    if (m_nNewest != kNone)
        m_vecEntries[m_nNewest].newer = index;
    m_nNewest = index;
    if (m_nOldest == kNone)
        m_nOldest = index;
}

PangoLayout* CDrawTextCache::CreateLayout(Entry& entry) const
{
    const std::string text = PangoText::ValidUtf8(entry.text);
    PangoLayout* layout = PangoText::CreateLayout(m_pContext, entry.face, entry.size, text.data(),
                                                  static_cast<int>(text.size()));
    pango_layout_get_pixel_size(layout, &entry.extent.cx, &entry.extent.cy);
    entry.measured = true;
    return layout;
}

// Walks the glyphs as pango's renderer places them: each run starts at its logical left edge,
// each glyph at the pen plus its offset, on the line's baseline. A glyph the full atlas cannot
// take is left out, and the quads are made again on the next call.
void CDrawTextCache::BuildQuads(Entry& entry, PangoLayout* layout)
{
    entry.quads.Clear();
    entry.hasQuads = true;
    PangoLayoutIter* iter = pango_layout_get_iter(layout);
    do
    {
        PangoLayoutRun* run = pango_layout_iter_get_run_readonly(iter);
        if (run == nullptr || run->item->analysis.font == nullptr)
            continue;
        PangoRectangle logical = {};
        pango_layout_iter_get_run_extents(iter, nullptr, &logical);
        const int baseline = pango_layout_iter_get_baseline(iter);
        int pen = logical.x;
        for (int i = 0; i < run->glyphs->num_glyphs; ++i)
        {
            const PangoGlyphInfo& info = run->glyphs->glyphs[i];
            const int originX = PANGO_PIXELS(pen + info.geometry.x_offset);
            const int originY = PANGO_PIXELS(baseline + info.geometry.y_offset);
            pen += info.geometry.width;
            if (info.glyph == PANGO_GLYPH_EMPTY || info.glyph == PANGO_GLYPH_INVALID_INPUT)
                continue;
            const DrawGlyph* glyph = m_glyphs.Get(run->item->analysis.font, info.glyph);
            entry.hasQuads = entry.hasQuads && glyph != nullptr;
            if (glyph == nullptr || glyph->page == nullptr)
                continue;
            const float x0 = float(originX + glyph->left);
            const float y0 = float(originY + glyph->top);
            entry.quads.quads.push_back(DrawQuad{glyph->page, x0, y0, x0 + float(glyph->width),
                                                 y0 + float(glyph->height), float(glyph->x),
                                                 float(glyph->y), float(glyph->x + glyph->width),
                                                 float(glyph->y + glyph->height), glyph->colour});
        }
    } while (pango_layout_iter_next_run(iter));
    pango_layout_iter_free(iter);
}

void CDrawTextCache::ForgetQuads()
{
    m_ascii.ForgetGlyphs();
    for (Entry& entry : m_vecEntries)
    {
        entry.hasQuads = false;
        entry.quads.Clear();
        entry.shadowed = Shadowed::kUnknown;
        entry.shadowedQuads.Clear();
    }
}

void CDrawTextCache::Clear()
{
    m_ascii.Clear();
    m_vecEntries.clear();
    std::fill(m_vecSlots.begin(), m_vecSlots.end(), Slot{});
    m_nNewest = kNone;
    m_nOldest = kNone;
}

} // namespace QzPlatform
