#include "CDrawAsciiLayout.h"

#include "QzPangoText.h"

#include <pango/pangocairo.h>

namespace QzPlatform
{

struct CDrawAsciiLayout::Font
{
    std::string face;
    int size = 0;
    bool usable = false;
    PangoFont* pFont = nullptr; // the font of the reference character, a reference held
    int height = 0;             // of a line, pango units
    int baseline = 0;
    PangoGlyph glyph[kCount] = {};
    int32_t single[kCount] = {};
    const DrawGlyph* drawn[kCount] = {};
    bool drawnKnown[kCount] = {};
    std::vector<int32_t> pairs = std::vector<int32_t>(kCount * kCount, kUnknown);
};

namespace
{

// The one run of a layout of one line, or null.
PangoLayoutRun* OnlyRun(PangoLayout* layout)
{
    if (pango_layout_get_line_count(layout) != 1)
        return nullptr;
    PangoLayoutLine* line = pango_layout_get_line_readonly(layout, 0);
    if (!line->runs || line->runs->next)
        return nullptr;
    return static_cast<PangoLayoutRun*>(line->runs->data);
}

int LogicalHeight(PangoLayout* layout)
{
    PangoRectangle logical = {};
    pango_layout_get_extents(layout, nullptr, &logical);
    return logical.height;
}

} // namespace

CDrawAsciiLayout::CDrawAsciiLayout(PangoContext* context, CDrawGlyphCache& glyphs)
    : m_pContext(context), m_glyphs(glyphs)
{
}

CDrawAsciiLayout::~CDrawAsciiLayout()
{
    Clear();
}

bool CDrawAsciiLayout::Takes(const std::string& utf8)
{
    if (utf8.empty())
        return false;
    for (const char c : utf8)
    {
        if (c < kFirst || c >= kFirst + kCount)
            return false;
    }
    return true;
}

bool CDrawAsciiLayout::Measure(const std::string& utf8, const std::string& face, int size,
                               SizeI& extent)
{
    Font* font = FindFont(face, size);
    if (!font || !Advances(*font, utf8))
        return false;
    int64_t width = 0;
    for (const int32_t advance : m_vecAdvances)
        width += advance;
    extent.cx = static_cast<int>(PANGO_PIXELS_CEIL(width));
    extent.cy = PANGO_PIXELS_CEIL(font->height);
    return true;
}

// Pens and origins as pango's renderer places them: the pen starts at the left edge and each
// glyph's origin is the pen rounded to a pixel, on the line's baseline.
bool CDrawAsciiLayout::BuildQuads(const std::string& utf8, const std::string& face, int size,
                                  std::vector<DrawQuad>& quads)
{
    quads.clear();
    Font* font = FindFont(face, size);
    if (!font || !Advances(*font, utf8))
        return false;
    const int originY = PANGO_PIXELS(font->baseline);
    int64_t pen = 0;
    for (size_t i = 0; i < utf8.size(); ++i)
    {
        const int c = utf8[i] - kFirst;
        const int originX = PANGO_PIXELS(pen);
        pen += m_vecAdvances[i];
        if (!font->drawnKnown[c])
        {
            font->drawn[c] = m_glyphs.Get(font->pFont, font->glyph[c]);
            font->drawnKnown[c] = font->drawn[c] != nullptr;
        }
        const DrawGlyph* glyph = font->drawn[c];
        if (!glyph)
            return false;
        if (!glyph->page)
            continue;
        const float x0 = float(originX + glyph->left);
        const float y0 = float(originY + glyph->top);
        quads.push_back(DrawQuad{glyph->page, x0, y0, x0 + float(glyph->width),
                                 y0 + float(glyph->height), float(glyph->x), float(glyph->y),
                                 float(glyph->x + glyph->width), float(glyph->y + glyph->height),
                                 glyph->colour});
    }
    return true;
}

void CDrawAsciiLayout::ForgetGlyphs()
{
    for (const auto& font : m_vecFonts)
    {
        std::fill(std::begin(font->drawnKnown), std::end(font->drawnKnown), false);
        std::fill(std::begin(font->drawn), std::end(font->drawn), nullptr);
    }
}

void CDrawAsciiLayout::Clear()
{
    for (const auto& font : m_vecFonts)
    {
        if (font->pFont)
            g_object_unref(font->pFont);
    }
    m_vecFonts.clear();
    m_pLastFont = nullptr;
}

CDrawAsciiLayout::Font* CDrawAsciiLayout::FindFont(const std::string& face, int size)
{
    if (m_pLastFont && m_pLastFont->size == size && m_pLastFont->face == face)
        return m_pLastFont->usable ? m_pLastFont : nullptr;
    Font* found = nullptr;
    for (const auto& font : m_vecFonts)
    {
        if (font->size == size && font->face == face)
            found = font.get();
    }
    if (!found)
    {
        m_vecFonts.push_back(std::make_unique<Font>());
        found = m_vecFonts.back().get();
        found->face = face;
        found->size = size;
        found->usable = LearnFont(*found);
    }
    m_pLastFont = found;
    return found->usable ? found : nullptr;
}

PangoLayout* CDrawAsciiLayout::Layout(const Font& font, const char* text, int length) const
{
    return PangoText::CreateLayout(m_pContext, font.face, font.size, text, length);
}

// The font of "x" is the font every character must come from; the line's height and baseline
// are those of its layout.
bool CDrawAsciiLayout::LearnFont(Font& font) const
{
    std::fill(std::begin(font.single), std::end(font.single), kUnknown);
    PangoLayout* layout = Layout(font, "x", 1);
    PangoLayoutRun* run = OnlyRun(layout);
    if (run && run->item->analysis.font)
    {
        font.pFont = PANGO_FONT(g_object_ref(run->item->analysis.font));
        font.height = LogicalHeight(layout);
        font.baseline = pango_layout_get_baseline(layout);
    }
    g_object_unref(layout);
    return font.pFont != nullptr;
}

int32_t CDrawAsciiLayout::Single(Font& font, int c) const
{
    if (font.single[c] != kUnknown)
        return font.single[c];
    font.single[c] = kRefused;
    const char text = static_cast<char>(c + kFirst);
    PangoLayout* layout = Layout(font, &text, 1);
    PangoLayoutRun* run = OnlyRun(layout);
    if (run && run->item->analysis.font == font.pFont && run->glyphs->num_glyphs == 1 &&
        LogicalHeight(layout) == font.height && pango_layout_get_baseline(layout) == font.baseline)
    {
        const PangoGlyphInfo& info = run->glyphs->glyphs[0];
        if (info.geometry.x_offset == 0 && info.geometry.y_offset == 0 &&
            info.glyph != PANGO_GLYPH_INVALID_INPUT)
        {
            font.glyph[c] = info.glyph;
            font.single[c] = info.geometry.width;
        }
    }
    g_object_unref(layout);
    return font.single[c];
}

// The advance of a before b: pango shapes the pair, and the pair is taken only when it gives the
// two glyphs of the characters, unmoved, the second with its own advance.
int32_t CDrawAsciiLayout::Pair(Font& font, int a, int b) const
{
    int32_t& pair = font.pairs[a * kCount + b];
    if (pair != kUnknown)
        return pair;
    pair = kRefused;
    if (Single(font, a) == kRefused || Single(font, b) == kRefused)
        return pair;
    const char text[2] = {static_cast<char>(a + kFirst), static_cast<char>(b + kFirst)};
    PangoLayout* layout = Layout(font, text, 2);
    PangoLayoutRun* run = OnlyRun(layout);
    if (run && run->item->analysis.font == font.pFont && run->glyphs->num_glyphs == 2)
    {
        const PangoGlyphInfo* glyphs = run->glyphs->glyphs;
        const bool same = glyphs[0].glyph == font.glyph[a] && glyphs[1].glyph == font.glyph[b] &&
                          glyphs[1].geometry.width == font.single[b];
        const bool unmoved = glyphs[0].geometry.x_offset == 0 && glyphs[0].geometry.y_offset == 0 &&
                             glyphs[1].geometry.x_offset == 0 && glyphs[1].geometry.y_offset == 0;
        if (same && unmoved)
            pair = glyphs[0].geometry.width;
    }
    g_object_unref(layout);
    return pair;
}

bool CDrawAsciiLayout::Advances(Font& font, const std::string& utf8)
{
    m_vecAdvances.resize(utf8.size());
    for (size_t i = 0; i < utf8.size(); ++i)
    {
        const int c = utf8[i] - kFirst;
        const int32_t advance =
            i + 1 < utf8.size() ? Pair(font, c, utf8[i + 1] - kFirst) : Single(font, c);
        if (advance == kRefused)
            return false;
        m_vecAdvances[i] = advance;
    }
    return true;
}

} // namespace QzPlatform
