// What the text of the cairo and the draw-list devices share, so that both lay text out alike
// and measure the same: pango on fontconfig fonts through a cairo font map with grey
// antialiasing, faces at absolute pixel sizes, and valid UTF-8 only. Header-only: each device
// library compiles it in.
#pragma once

#include <pango/pangocairo.h>

#include <string>

namespace QzPlatform
{
namespace PangoText
{

// Pango takes valid UTF-8 only: the text is cut at its first NUL and every invalid sequence
// becomes U+FFFD.
inline std::string ValidUtf8(const std::string& text)
{
    const std::string cut = text.substr(0, text.find('\0'));
    if (g_utf8_validate(cut.data(), static_cast<gssize>(cut.size()), nullptr))
        return cut;
    gchar* valid = g_utf8_make_valid(cut.data(), static_cast<gssize>(cut.size()));
    std::string result(valid);
    g_free(valid);
    return result;
}

// Grey antialiasing whatever the desktop prefers, so that the same text gives the same pixels
// on every machine with the same fonts.
inline PangoContext* CreateContext()
{
    PangoFontMap* fontMap = pango_cairo_font_map_new();
    PangoContext* context = pango_font_map_create_context(fontMap);
    g_object_unref(fontMap);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    return context;
}

// A layout of the text (already valid UTF-8) in the face at `size` pixels.
inline PangoLayout* CreateLayout(PangoContext* context, const std::string& face, int size,
                                 const char* text, int length)
{
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, face.c_str());
    pango_font_description_set_absolute_size(description, size * PANGO_SCALE);
    PangoLayout* layout = pango_layout_new(context);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
    pango_layout_set_text(layout, text, length);
    return layout;
}

} // namespace PangoText
} // namespace QzPlatform
