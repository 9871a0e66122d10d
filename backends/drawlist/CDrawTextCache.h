// Laid-out text of the draw-list device, keyed by text, face and pixel size, in a bounded
// least-recently-used cache: each entry keeps the text's size and, once drawn, its glyph quads
// relative to the top-left of the text, so a caption drawn every frame is found with one hash of
// its text and costs only vertex writes. Layouts are made as the cairo device makes them (a
// fontconfig font map, grey antialiasing, absolute pixel sizes), so sizes agree with it.
#pragma once

#include "CDrawAsciiLayout.h"
#include "CDrawGlyphCache.h"
#include "CDrawListBuilder.h"
#include "platform/render/IRenderDevice.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

typedef struct _PangoContext PangoContext;
typedef struct _PangoLayout PangoLayout;

namespace QzPlatform
{

class CDrawTextCache
{
public:
    static const char* const kDefaultFace; // "Sans"
    static constexpr int kMaxFontSize = 512;
    static constexpr size_t kMaxShadowedQuads = 256;

    // The least recently used text goes when the cache is full. Texts asked for in a cycle
    // longer than the capacity all miss (with 2,048 entries, the labels of a screen that counted
    // through 2,058 texts missed every frame); 4,096 entries are a megabyte or two.
    explicit CDrawTextCache(CDrawGlyphCache& glyphs, size_t capacity = 4096);
    ~CDrawTextCache();
    CDrawTextCache(const CDrawTextCache&) = delete;
    CDrawTextCache& operator=(const CDrawTextCache&) = delete;

    // The size of the UTF-8 text (invalid bytes shown as replacement characters, cut at a NUL)
    // in the font: the face, "Sans" when empty, at the size in pixels (clamped to
    // 1..kMaxFontSize).
    SizeI Measure(const std::string& utf8, const FontSpec& font);
    // The glyph quads of the text, rasterising glyphs not seen before. Valid until the next
    // call of the cache.
    const DrawQuadRun& GetQuads(const std::string& utf8, const FontSpec& font);

    // The text's quads drawn over its black shadow, one a glyph (CDrawGlyphCache::GetShadowed),
    // for an opaque colour; null when that would not show what the shadow and then the text
    // show: a colour glyph, a glyph's shadow falling on the ink of a glyph before it, a text of
    // more than kMaxShadowedQuads glyphs (not checked), or no room left on the glyph pages.
    // Valid until the next call of the cache.
    const DrawQuadRun* GetShadowedQuads(const std::string& utf8, const FontSpec& font);

    // Drops the glyph quads (the glyph pages are starting again) but keeps the sizes.
    void ForgetQuads();
    void Clear();
    size_t GetSize() const { return m_vecEntries.size(); }
    // Calls answered from the cache, and layouts created.
    uint64_t GetHits() const { return m_nHits; }
    uint64_t GetMisses() const { return m_nMisses; }

private:
    static constexpr uint32_t kNone = UINT32_MAX;

    enum class Shadowed : uint8_t
    {
        kUnknown,
        kReady,
        kRefused,
    };

    struct Entry
    {
        size_t hash = 0;
        std::string text;
        std::string face;
        int size = 0;
        SizeI extent;
        bool measured = false;
        bool hasQuads = false;
        DrawQuadRun quads;
        Shadowed shadowed = Shadowed::kUnknown;
        DrawQuadRun shadowedQuads;
        uint32_t newer = kNone;
        uint32_t older = kNone;
    };

    // A slot of the index: an entry and the high half of its hash, so that a probe reads an
    // entry only when the halves agree.
    struct Slot
    {
        uint32_t entry = kNone;
        uint32_t tag = 0;
    };

    Entry& Acquire(const std::string& utf8, const FontSpec& font);
    // The entry's quads, laid out when they are not yet.
    const DrawQuadRun& QuadsOf(Entry& entry);
    void BuildShadowed(Entry& entry);
    uint32_t Find(size_t hash, const std::string& text, const std::string& face, int size) const;
    size_t HomeOf(size_t hash) const { return hash & (m_vecSlots.size() - 1); }
    static uint32_t TagOf(size_t hash) { return static_cast<uint32_t>(uint64_t(hash) >> 32); }
    void Index(uint32_t index);
    void Unindex(uint32_t index);
    uint32_t TakeSlot();
    void Unlink(uint32_t index);
    void PushNewest(uint32_t index);
    void Lay(Entry& entry, bool withQuads);
    PangoLayout* CreateLayout(Entry& entry) const;
    void BuildQuads(Entry& entry, PangoLayout* layout);

    CDrawGlyphCache& m_glyphs;
    size_t m_nCapacity;
    PangoContext* m_pContext = nullptr;
    // Lays out one line of printable ASCII without a pango layout.
    CDrawAsciiLayout m_ascii;
    std::vector<Entry> m_vecEntries;
    // Open addressing with linear probing, at most half full: one look-up reads a slot or two
    // of one array instead of a bucket, a node and the entry.
    std::vector<Slot> m_vecSlots;
    uint32_t m_nNewest = kNone;
    uint32_t m_nOldest = kNone;
    uint64_t m_nHits = 0;
    uint64_t m_nMisses = 0;
};

} // namespace QzPlatform
