#include "CCairoTextCache.h"

#include "QzPangoText.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <functional>

namespace QzPlatform
{

const char* const CCairoTextCache::kDefaultFace = "Sans";

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
    : m_nCapacity(std::max<size_t>(capacity, 1)), m_pContext(PangoText::CreateContext())
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
    const std::string text = PangoText::ValidUtf8(key.text);
    return PangoText::CreateLayout(m_pContext, key.face, key.size, text.data(),
                                   static_cast<int>(text.size()));
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
