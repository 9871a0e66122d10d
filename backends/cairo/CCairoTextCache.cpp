#include "CCairoTextCache.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <functional>

namespace QzPlatform
{

const char* const CCairoTextCache::kDefaultFace = "Sans";

namespace
{

// Pango takes valid UTF-8 only: the text is cut at its first NUL and every invalid sequence
// becomes U+FFFD.
std::string ValidUtf8(const std::string& text)
{
    const std::string cut = text.substr(0, text.find('\0'));
    if (g_utf8_validate(cut.data(), static_cast<gssize>(cut.size()), nullptr))
        return cut;
    gchar* valid = g_utf8_make_valid(cut.data(), static_cast<gssize>(cut.size()));
    std::string result(valid);
    g_free(valid);
    return result;
}

PangoContext* CreateContext()
{
    PangoFontMap* fontMap = pango_cairo_font_map_new();
    PangoContext* context = pango_font_map_create_context(fontMap);
    g_object_unref(fontMap);
    // Grey antialiasing whatever the desktop prefers, so that the same text gives the same
    // pixels on every machine with the same fonts.
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    return context;
}

} // namespace

bool CCairoTextCache::Key::operator==(const Key& other) const
{
    return size == other.size && face == other.face && text == other.text;
}

size_t CCairoTextCache::KeyHash::operator()(const Key& key) const
{
    const size_t text = std::hash<std::string>()(key.text);
    const size_t face = std::hash<std::string>()(key.face);
    return text ^ (face * 31 + static_cast<size_t>(key.size) + 0x9e3779b9u + (text << 6));
}

CCairoTextCache::CCairoTextCache(size_t capacity)
    : m_nCapacity(std::max<size_t>(capacity, 1)), m_pContext(CreateContext())
{
}

CCairoTextCache::~CCairoTextCache()
{
    Clear();
    g_object_unref(m_pContext);
}

PangoLayout* CCairoTextCache::Get(const std::string& utf8, const FontSpec& font)
{
    Key key;
    key.text = utf8;
    key.face = font.face.empty() ? std::string(kDefaultFace) : font.face;
    key.size = std::min(std::max(font.size, 1), kMaxFontSize);

    const auto found = m_mapEntries.find(key);
    if (found != m_mapEntries.end())
    {
        ++m_nHits;
        m_lstEntries.splice(m_lstEntries.begin(), m_lstEntries, found->second);
        return found->second->pLayout;
    }
    ++m_nMisses;
    if (m_lstEntries.size() >= m_nCapacity)
        EvictOldest();
    m_lstEntries.push_front(Entry{key, CreateLayout(key)});
    m_mapEntries.emplace(key, m_lstEntries.begin());
    return m_lstEntries.front().pLayout;
}

PangoLayout* CCairoTextCache::CreateLayout(const Key& key) const
{
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, key.face.c_str());
    pango_font_description_set_absolute_size(description, key.size * PANGO_SCALE);

    PangoLayout* layout = pango_layout_new(m_pContext);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
    const std::string text = ValidUtf8(key.text);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    return layout;
}

void CCairoTextCache::EvictOldest()
{
    Entry& oldest = m_lstEntries.back();
    m_mapEntries.erase(oldest.key);
    g_object_unref(oldest.pLayout);
    m_lstEntries.pop_back();
}

void CCairoTextCache::Clear()
{
    for (Entry& entry : m_lstEntries)
        g_object_unref(entry.pLayout);
    m_lstEntries.clear();
    m_mapEntries.clear();
}

} // namespace QzPlatform
