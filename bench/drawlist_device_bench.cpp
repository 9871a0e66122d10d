// The draw-list device's cost per frame for the loads of cairo_device_bench.cpp: many short
// captions drawn every frame (their glyph quads come from the cache after the first frame) and
// many alpha-blended sprites. One iteration is one frame: BeginFrame, the draws, EndFrame; the
// list is built, not submitted, so the time is what the device adds to a GPU host's frame.
#include "CDrawListDevice.h"

#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cstdio>
#include <string>
#include <unistd.h>

namespace
{

// A 64x32 half-transparent sprite written to a temporary PNG for the device to load.
std::string MakeSprite()
{
    const std::string path =
        "/tmp/qzgui-bench-drawlist-sprite-" + std::to_string(getpid()) + ".png";
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 64, 32);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgba(cr, 0.2, 0.5, 0.9, 0.6);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
    return path;
}

// The captions are formatted in the loop as in cairo_device_bench.cpp (they fit the string's
// inline buffer, so no allocation), so that the two read side by side.
void TextRunsPerFrame(benchmark::State& state)
{
    QzPlatform::CDrawListDevice device(1024, 768);
    const QzPlatform::FontSpec font{"", 14};
    const int runs = static_cast<int>(state.range(0));
    for (auto _ : state)
    {
        device.BeginFrame();
        for (int i = 0; i < runs; ++i)
            device.DrawText((i % 10) * 100, (i / 10) * 15 % 760, "Caption " + std::to_string(i),
                            font, 0xFFFFFFFF, 0xFF000000);
        device.EndFrame();
        benchmark::DoNotOptimize(device.GetDrawList().vertices.data());
    }
    state.counters["vertices"] = static_cast<double>(device.GetDrawList().vertices.size());
    state.counters["commands"] = static_cast<double>(device.GetDrawList().commands.size());
}
BENCHMARK(TextRunsPerFrame)->Arg(500)->Unit(benchmark::kMicrosecond);

void SpritesPerFrame(benchmark::State& state)
{
    QzPlatform::CDrawListDevice device(1024, 768);
    const std::string path = MakeSprite();
    const QzPlatform::TextureId sprite = device.LoadTexture(path);
    std::remove(path.c_str());
    const QzPlatform::RectI source{0, 0, 64, 32};
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state)
    {
        device.BeginFrame();
        for (int i = 0; i < count; ++i)
            device.DrawTexture(sprite, source, (i * 37) % 960, (i * 53) % 736, 64, 32, 200, 1.0f);
        device.EndFrame();
        benchmark::DoNotOptimize(device.GetDrawList().vertices.data());
    }
    state.counters["commands"] = static_cast<double>(device.GetDrawList().commands.size());
}
BENCHMARK(SpritesPerFrame)->Arg(2000)->Unit(benchmark::kMicrosecond);

} // namespace
