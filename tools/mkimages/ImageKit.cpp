#include "ImageKit.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace ImageKit
{

namespace
{
std::string g_strImageDir;
bool g_bFailed = false;
} // namespace

void SetImageDir(const std::string& dir)
{
    g_strImageDir = dir;
}

bool Failed()
{
    return g_bFailed;
}

// ---------------------------------------------------------------------------------------------
// Drawing helpers

void SetColor(cairo_t* cr, uint32_t argb)
{
    cairo_set_source_rgba(cr, ((argb >> 16) & 0xFF) / 255.0, ((argb >> 8) & 0xFF) / 255.0,
                          (argb & 0xFF) / 255.0, (argb >> 24) / 255.0);
}

void FillRect(cairo_t* cr, double x, double y, double width, double height, uint32_t argb)
{
    SetColor(cr, argb);
    cairo_rectangle(cr, x, y, width, height);
    cairo_fill(cr);
}

// A 1-pixel outline through the centres of the border pixels of (x, y, width, height).
void OutlineRect(cairo_t* cr, double x, double y, double width, double height, uint32_t argb)
{
    SetColor(cr, argb);
    cairo_set_line_width(cr, 1.0);
    cairo_rectangle(cr, x + 0.5, y + 0.5, width - 1, height - 1);
    cairo_stroke(cr);
}

void RoundedRectPath(cairo_t* cr, double x, double y, double width, double height, double radius)
{
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + width - radius, y + radius, radius, -kPi / 2, 0);
    cairo_arc(cr, x + width - radius, y + height - radius, radius, 0, kPi / 2);
    cairo_arc(cr, x + radius, y + height - radius, radius, kPi / 2, kPi);
    cairo_arc(cr, x + radius, y + radius, radius, kPi, 3 * kPi / 2);
    cairo_close_path(cr);
}

// A vertical gradient from `top` to `bottom` as the source.
void SetVerticalGradient(cairo_t* cr, double y0, double y1, uint32_t top, uint32_t bottom)
{
    cairo_pattern_t* pattern = cairo_pattern_create_linear(0, y0, 0, y1);
    for (const auto& stop : {std::make_pair(0.0, top), std::make_pair(1.0, bottom)})
        cairo_pattern_add_color_stop_rgba(pattern, stop.first, ((stop.second >> 16) & 0xFF) / 255.0,
                                          ((stop.second >> 8) & 0xFF) / 255.0,
                                          (stop.second & 0xFF) / 255.0,
                                          (stop.second >> 24) / 255.0);
    cairo_set_source(cr, pattern);
    cairo_pattern_destroy(pattern);
}

// Mixes two colours: weight 0 gives a, 1 gives b.
uint32_t Mix(uint32_t a, uint32_t b, double weight)
{
    uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8)
    {
        const double channelA = (a >> shift) & 0xFF;
        const double channelB = (b >> shift) & 0xFF;
        result |= uint32_t(std::lround(channelA + (channelB - channelA) * weight)) << shift;
    }
    return result;
}

// Raised (or, when sunken, pressed) 1-pixel bevel inside (x, y, width, height).
void Bevel(cairo_t* cr, double x, double y, double width, double height, bool sunken)
{
    const uint32_t light = 0x90FFFFFF;
    const uint32_t dark = 0x90000000;
    FillRect(cr, x + 1, y + 1, width - 2, 1, sunken ? dark : light);
    FillRect(cr, x + 1, y + 2, 1, height - 3, sunken ? dark : light);
    FillRect(cr, x + 1, y + height - 2, width - 2, 1, sunken ? light : dark);
    FillRect(cr, x + width - 2, y + 1, 1, height - 3, sunken ? light : dark);
}

// Makes a transparent image, lets `draw` paint it and writes it as images/<name>.
void MakeImage(const char* name, int width, int height, const std::function<void(cairo_t*)>& draw)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cr = cairo_create(surface);
    draw(cr);
    cairo_destroy(cr);
    const std::string path = g_strImageDir + "/" + name;
    if (cairo_surface_write_to_png(surface, path.c_str()) != CAIRO_STATUS_SUCCESS)
    {
        std::fprintf(stderr, "qzgui-mkimages: cannot write %s\n", path.c_str());
        g_bFailed = true;
    }
    cairo_surface_destroy(surface);
}

// Calls draw(cr, frame) once per frame, each frame translated to its own cell of a strip.
void DrawFrames(cairo_t* cr, int frames, int frameWidth,
                const std::function<void(cairo_t*, int)>& draw)
{
    for (int frame = 0; frame < frames; ++frame)
    {
        cairo_save(cr);
        cairo_translate(cr, frame * frameWidth, 0);
        draw(cr, frame);
        cairo_restore(cr);
    }
}

} // namespace ImageKit
