// One line of printable ASCII laid out without a pango layout for each new text. Captions that
// change every frame (counters, timers) would otherwise cost a full layout each: here a font
// learns from pango, once, each character's glyph and advance and the advance of each character
// before each other one (its kerning included, rounded as pango rounds it), and a text is then
// the sum of its pairs. Sizes and glyph places are pango's; a text with a pair pango shapes
// otherwise (a ligature, a character from a fallback font) is refused and goes the long way.
#pragma once

#include "CDrawGlyphCache.h"
#include "CDrawListBuilder.h"
#include "platform/render/IRenderDevice.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

typedef struct _PangoContext PangoContext;
typedef struct _PangoLayout PangoLayout;

namespace QzPlatform
{

class CDrawAsciiLayout
{
public:
    CDrawAsciiLayout(PangoContext* context, CDrawGlyphCache& glyphs);
    ~CDrawAsciiLayout();
    CDrawAsciiLayout(const CDrawAsciiLayout&) = delete;
    CDrawAsciiLayout& operator=(const CDrawAsciiLayout&) = delete;

    // Whether the text is one line of printable ASCII, the only texts laid out here.
    static bool Takes(const std::string& utf8);
    // False when the font does not lay the text out pair by pair.
    bool Measure(const std::string& utf8, const std::string& face, int size, SizeI& extent);
    // The glyph quads of the text; false when the font does not lay the text out pair by pair
    // or a glyph found no room in the atlas.
    bool BuildQuads(const std::string& utf8, const std::string& face, int size,
                    std::vector<DrawQuad>& quads);
    // The glyph atlas starts again: glyphs are looked up anew.
    void ForgetGlyphs();
    void Clear();

private:
    static constexpr int kFirst = 0x20;
    static constexpr int kCount = 0x7F - kFirst;
    static constexpr int32_t kUnknown = INT32_MIN;
    static constexpr int32_t kRefused = INT32_MIN + 1;

    struct Font;
    Font* FindFont(const std::string& face, int size);
    PangoLayout* Layout(const Font& font, const char* text, int length) const;
    bool LearnFont(Font& font) const;
    int32_t Single(Font& font, int c) const;
    int32_t Pair(Font& font, int a, int b) const;
    // The advance of each character of the text in `m_vecAdvances`; false when refused.
    bool Advances(Font& font, const std::string& utf8);

    PangoContext* m_pContext;
    CDrawGlyphCache& m_glyphs;
    std::vector<std::unique_ptr<Font>> m_vecFonts;
    Font* m_pLastFont = nullptr;
    std::vector<int32_t> m_vecAdvances;
};

} // namespace QzPlatform
