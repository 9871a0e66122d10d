// Pango layouts of the cairo device, keyed by text, face and pixel size, in a bounded
// least-recently-used cache: a frame that draws the same captions as the last one lays out
// nothing again. Layouts are made in the cache's own pango context (fontconfig fonts, identity
// transform), so they may be shown on any cairo context with an identity matrix.
#pragma once

#include "platform/render/IRenderDevice.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <unordered_map>

typedef struct _PangoContext PangoContext;
typedef struct _PangoLayout PangoLayout;

namespace QzPlatform
{

class CCairoTextCache
{
public:
    static const char* const kDefaultFace; // "Sans"
    static constexpr int kMaxFontSize = 512;

    explicit CCairoTextCache(size_t capacity = 2048);
    ~CCairoTextCache();
    CCairoTextCache(const CCairoTextCache&) = delete;
    CCairoTextCache& operator=(const CCairoTextCache&) = delete;

    // The layout of the UTF-8 text (invalid bytes shown as replacement characters, cut at a NUL)
    // in the font: the face, "Sans" when empty, at the size in pixels (clamped to
    // 1..kMaxFontSize). Owned by the cache; valid until the cache evicts it, which the next call
    // of Get with another key may do.
    PangoLayout* Get(const std::string& utf8, const FontSpec& font);

    void Clear();
    size_t GetSize() const { return m_lstEntries.size(); }
    size_t GetCapacity() const { return m_nCapacity; }
    // Calls of Get answered from the cache, and layouts created.
    uint64_t GetHits() const { return m_nHits; }
    uint64_t GetMisses() const { return m_nMisses; }

private:
    struct Key
    {
        std::string text;
        std::string face;
        int size = 0;
        bool operator==(const Key& other) const;
    };
    struct KeyHash
    {
        size_t operator()(const Key& key) const;
    };
    struct Entry
    {
        Key key;
        PangoLayout* pLayout = nullptr;
    };
    typedef std::list<Entry> EntryList;

    PangoLayout* CreateLayout(const Key& key) const;
    void EvictOldest();

    size_t m_nCapacity;
    PangoContext* m_pContext = nullptr;
    EntryList m_lstEntries; // most recently used first
    std::unordered_map<Key, EntryList::iterator, KeyHash> m_mapEntries;
    uint64_t m_nHits = 0;
    uint64_t m_nMisses = 0;
};

} // namespace QzPlatform
