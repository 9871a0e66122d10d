// The cairo device's cost per frame for the loads a game GUI puts on it: clearing the frame,
// many short captions (pango layouts come from the cache after the first frame), many
// alpha-blended sprites, and a busy full-HD screen mixing all of them. "height" picks the screen:
// 768 for 1024 x 768, 1080 for 1920 x 1080; "direct" 0 draws everything through cairo, without
// the device's own pixel loops, for comparison. One iteration is one frame, so the time column
// reads as time per frame.
#include "CCairoDevice.h"

#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cstdio>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

using QzPlatform::CCairoDevice;
using QzPlatform::RectI;
using QzPlatform::TextureId;

const double kPi = 3.14159265358979323846;

int ScreenWidth(int height)
{
    return height == 1080 ? 1920 : 1024;
}

// PNG files drawn with cairo into the temporary folder, removed with the set.
class BenchImages
{
public:
    ~BenchImages()
    {
        for (const std::string& path : m_paths)
            std::remove(path.c_str());
    }
    std::string Make(const std::string& name, int width, int height,
                     const std::function<void(cairo_t*)>& draw)
    {
        const std::string path =
            "/tmp/qzgui-bench-" + std::to_string(getpid()) + "-" + name + ".png";
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
        cairo_t* cr = cairo_create(surface);
        draw(cr);
        cairo_destroy(cr);
        cairo_surface_write_to_png(surface, path.c_str());
        cairo_surface_destroy(surface);
        m_paths.push_back(path);
        return path;
    }

private:
    std::vector<std::string> m_paths;
};

void ClearFrame(benchmark::State& state)
{
    const int height = static_cast<int>(state.range(0));
    CCairoDevice device(ScreenWidth(height), height);
    for (auto _ : state)
    {
        device.BeginFrame();
        device.EndFrame();
    }
}
BENCHMARK(ClearFrame)->ArgName("height")->Arg(768)->Arg(1080)->Unit(benchmark::kMillisecond);

void TextRunsPerFrame(benchmark::State& state)
{
    const int runs = static_cast<int>(state.range(0));
    const int height = static_cast<int>(state.range(1));
    const int width = ScreenWidth(height);
    CCairoDevice device(width, height);
    const QzPlatform::FontSpec font{"", 14};
    std::vector<std::string> captions;
    for (int i = 0; i < runs; ++i)
        captions.push_back("Caption " + std::to_string(i));
    const int columns = width / 100;
    for (auto _ : state)
    {
        device.BeginFrame();
        for (int i = 0; i < runs; ++i)
            device.DrawText((i % columns) * 100, (i / columns) * 15 % (height - 8), captions[i],
                            font, 0xFFFFFFFF, 0xFF000000);
        device.EndFrame();
    }
}
BENCHMARK(TextRunsPerFrame)
    ->ArgNames({"runs", "height"})
    ->Args({500, 768})
    ->Args({500, 1080})
    ->Unit(benchmark::kMillisecond);

void SpritesPerFrame(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const int height = static_cast<int>(state.range(1));
    const int width = ScreenWidth(height);
    CCairoDevice device(width, height);
    device.SetDirectDrawing(state.range(2) != 0);
    BenchImages images;
    const TextureId sprite =
        device.LoadTexture(images.Make("sprite", 64, 32,
                                       [](cairo_t* cr)
                                       {
                                           cairo_set_source_rgba(cr, 0.2, 0.5, 0.9, 0.6);
                                           cairo_paint(cr);
                                       }));
    const RectI source{0, 0, 64, 32};
    for (auto _ : state)
    {
        device.BeginFrame();
        for (int i = 0; i < count; ++i)
            device.DrawTexture(sprite, source, (i * 37) % (width - 64), (i * 53) % (height - 32),
                               64, 32, 200, 1.0f);
        device.EndFrame();
    }
}
BENCHMARK(SpritesPerFrame)
    ->ArgNames({"sprites", "height", "direct"})
    ->Args({2000, 768, 1})
    ->Args({2000, 1080, 1})
    ->Args({2000, 1080, 0})
    ->Unit(benchmark::kMillisecond);

// The images of a skinned screen, in the shapes the sample bundle uses: a dialog frame in nine
// 16 x 16 pieces (gradient title, rounded translucent corners), a four-state 96 x 28 button
// atlas, a five-state 18 x 18 check box atlas and a 24 x 24 icon.
struct SkinImages
{
    TextureId pieces[9] = {};
    TextureId button = 0;
    TextureId check = 0;
    TextureId icon = 0;
};

void DrawSkin(cairo_t* cr)
{
    cairo_pattern_t* gradient = cairo_pattern_create_linear(0, 0, 0, 16);
    cairo_pattern_add_color_stop_rgb(gradient, 0, 0.25, 0.35, 0.6);
    cairo_pattern_add_color_stop_rgb(gradient, 1, 0.12, 0.14, 0.2);
    cairo_set_source(cr, gradient);
    cairo_new_sub_path(cr);
    cairo_arc(cr, 42, 6, 6, -kPi / 2, 0);
    cairo_arc(cr, 42, 42, 6, 0, kPi / 2);
    cairo_arc(cr, 6, 42, 6, kPi / 2, kPi);
    cairo_arc(cr, 6, 6, 6, kPi, 3 * kPi / 2);
    cairo_close_path(cr);
    cairo_fill_preserve(cr);
    cairo_pattern_destroy(gradient);
    cairo_set_source_rgba(cr, 0.7, 0.75, 0.9, 0.8);
    cairo_set_line_width(cr, 2.0);
    cairo_stroke(cr);
}

SkinImages LoadSkin(CCairoDevice& device, BenchImages& images)
{
    SkinImages skin;
    for (int piece = 0; piece < 9; ++piece)
        skin.pieces[piece] = device.LoadTexture(
            images.Make("dlg" + std::to_string(piece), 16, 16,
                        [piece](cairo_t* cr)
                        {
                            cairo_translate(cr, -(piece % 3) * 16, -(piece / 3) * 16);
                            DrawSkin(cr);
                        }));
    skin.button = device.LoadTexture(
        images.Make("button", 384, 28,
                    [](cairo_t* cr)
                    {
                        for (int state = 0; state < 4; ++state)
                        {
                            cairo_set_source_rgba(cr, 0.3 + 0.1 * state, 0.4, 0.6, 1.0);
                            cairo_rectangle(cr, state * 96 + 1, 1, 94, 26);
                            cairo_fill(cr);
                        }
                    }));
    skin.check =
        device.LoadTexture(images.Make("check", 90, 18,
                                       [](cairo_t* cr)
                                       {
                                           cairo_set_source_rgba(cr, 0.9, 0.9, 0.9, 0.9);
                                           for (int state = 0; state < 5; ++state)
                                               cairo_rectangle(cr, state * 18 + 2, 2, 14, 14);
                                           cairo_fill(cr);
                                       }));
    skin.icon = device.LoadTexture(images.Make("icon", 24, 24,
                                               [](cairo_t* cr)
                                               {
                                                   cairo_set_source_rgba(cr, 1.0, 0.8, 0.2, 0.85);
                                                   cairo_arc(cr, 12, 12, 11, 0, 2 * kPi);
                                                   cairo_fill(cr);
                                               }));
    return skin;
}

// A panel of the given size in nine pieces: exact corners, edges stretched along their length,
// the centre stretched both ways.
void DrawPanel(CCairoDevice& device, const SkinImages& skin, int x, int y, int width, int height)
{
    const RectI piece{0, 0, 16, 16};
    const int xs[3] = {x, x + 16, x + width - 16};
    const int ys[3] = {y, y + 16, y + height - 16};
    const int ws[3] = {16, width - 32, 16};
    const int hs[3] = {16, height - 32, 16};
    for (int i = 0; i < 9; ++i)
        device.DrawTexture(skin.pieces[i], piece, xs[i % 3], ys[i / 3], ws[i % 3], hs[i / 3], 255,
                           1.0f);
}

// One frame of a crowded full-HD screen: 40 overlapping panels (nine pieces each), 300 captions
// with shadows, 200 control sprites (buttons, check boxes, icons, some translucent), list rows
// drawn under a clip, and a few filled and outlined rectangles.
void DrawBusyScreen(CCairoDevice& device, const SkinImages& skin,
                    const std::vector<std::string>& captions)
{
    const QzPlatform::FontSpec font{"", 13};
    device.BeginFrame();
    for (int i = 0; i < 40; ++i)
        DrawPanel(device, skin, (i * 197) % 1600, (i * 131) % 820, 200 + (i * 53) % 280,
                  140 + (i * 29) % 160);
    for (int i = 0; i < 12; ++i)
    {
        const int x = 40 + (i % 6) * 300;
        const int y = 60 + (i / 6) * 500;
        device.FillRect(x, y, x + 260, y + 220, 0xC0101418);
        device.StrokeRect(x, y, x + 260, y + 220, 0xFF8090A0);
        device.PushClip(RectI{x + 4, y + 4, x + 256, y + 216});
        for (int row = 0; row < 10; ++row)
            device.FillRect(x + 4, y + 4 + row * 24, x + 256, y + 26 + row * 24,
                            row % 2 ? 0x40FFFFFF : 0x20FFFFFF);
        device.PopClip();
    }
    for (int i = 0; i < 200; ++i)
    {
        const int x = (i * 89) % 1820;
        const int y = (i * 61) % 1040;
        if (i % 4 < 2)
            device.DrawTexture(skin.button, RectI{(i % 4) * 96, 0, (i % 4) * 96 + 96, 28}, x, y, 96,
                               28, 255, 1.0f);
        else if (i % 4 == 2)
            device.DrawTexture(skin.check, RectI{(i % 5) * 18, 0, (i % 5) * 18 + 18, 18}, x, y, 18,
                               18, i % 3 ? 255 : 128, 1.0f);
        else
            device.DrawTexture(skin.icon, RectI{0, 0, 24, 24}, x, y, 24, 24, 255, 1.0f);
    }
    for (int i = 0; i < 300; ++i)
        device.DrawText((i * 113) % 1800, (i * 37) % 1060, captions[i], font, 0xFFE0E0E0,
                        0xC0000000);
    device.EndFrame();
}

void BusyScreen(benchmark::State& state)
{
    CCairoDevice device(1920, 1080);
    device.SetDirectDrawing(state.range(0) != 0);
    BenchImages images;
    const SkinImages skin = LoadSkin(device, images);
    std::vector<std::string> captions;
    for (int i = 0; i < 300; ++i)
        captions.push_back((i % 3 ? "Option " : "Player name ") + std::to_string(i));
    for (auto _ : state)
        DrawBusyScreen(device, skin, captions);
}
BENCHMARK(BusyScreen)->ArgName("direct")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

} // namespace
