// Text of the cairo device: ink inside the measured box, shadows, CJK fallback, layout cache.
#include "CCairoDevice.h"

#include <gtest/gtest.h>

#include <pango/pangocairo.h>

using QzPlatform::CCairoDevice;
using QzPlatform::CCairoTextCache;
using QzPlatform::FontSpec;
using QzPlatform::SizeI;

namespace
{

const uint32_t kBack = 0xFF000000;

FontSpec Font(int size, const std::string& face = std::string())
{
    FontSpec font;
    font.face = face;
    font.size = size;
    return font;
}

struct Ink
{
    int inside = 0;
    int outside = 0;
    int reddish = 0; // red clearly above green: shadow pixels
};

// Counts non-background pixels inside the box (x, y, w, h) grown by `margin`, and outside it.
Ink CountInk(CCairoDevice& device, int x, int y, const SizeI& box, int margin)
{
    Ink ink;
    for (int py = 0; py < device.GetScreenHeight(); ++py)
        for (int px = 0; px < device.GetScreenWidth(); ++px)
        {
            const uint32_t pixel = device.GetPixel(px, py);
            if (pixel == kBack)
                continue;
            const bool inside = px >= x - margin && px < x + box.cx + margin && py >= y - margin &&
                                py < y + box.cy + margin;
            ++(inside ? ink.inside : ink.outside);
            if (((pixel >> 16) & 0xFF) > ((pixel >> 8) & 0xFF) + 64)
                ++ink.reddish;
        }
    return ink;
}

class CairoText : public ::testing::Test
{
protected:
    CairoText() : device(120, 60)
    {
        device.SetClearColor(kBack);
        device.BeginFrame();
    }
    CCairoDevice device;
};

} // namespace

TEST_F(CairoText, LatinTextInksOnlyItsMeasuredBox)
{
    const SizeI size = device.MeasureText("Hi", Font(20));
    EXPECT_GT(size.cx, 5);
    EXPECT_GE(size.cy, 18);
    EXPECT_LT(size.cy, 40);
    device.DrawText(10, 10, "Hi", Font(20), 0xFFFFFFFF, 0);
    const Ink ink = CountInk(device, 10, 10, size, 1);
    EXPECT_GT(ink.inside, 20);
    EXPECT_EQ(0, ink.outside);
    EXPECT_EQ(0, ink.reddish);
}

TEST_F(CairoText, SizeIsInPixelsAndGrowsTheBox)
{
    const SizeI small = device.MeasureText("Hello", Font(10));
    const SizeI large = device.MeasureText("Hello", Font(30));
    EXPECT_GT(large.cx, 2 * small.cx);
    EXPECT_GT(large.cy, 2 * small.cy);
    // A line is a little taller than the pixel size (about 1.16 for the default face); a size
    // taken as points would give a third more.
    EXPECT_GE(large.cy, 30);
    EXPECT_LE(large.cy, 39);
}

TEST_F(CairoText, MultiLineTextMeasuresAsLines)
{
    const SizeI one = device.MeasureText("Line", Font(14));
    const SizeI two = device.MeasureText("Line\nLonger line", Font(14));
    EXPECT_GT(two.cx, one.cx);
    EXPECT_NEAR(2 * one.cy, two.cy, 2);
}

TEST_F(CairoText, ShadowIsDrawnOnlyWithAnAlphaByte)
{
    device.DrawText(10, 10, "Hi", Font(20), 0xFFFFFFFF, 0x00FF0000);
    EXPECT_EQ(0, CountInk(device, 10, 10, device.MeasureText("Hi", Font(20)), 1).reddish);
    device.DrawText(10, 10, "Hi", Font(20), 0xFFFFFFFF, 0xFFFF0000);
    const Ink ink = CountInk(device, 10, 10, device.MeasureText("Hi", Font(20)), 2);
    EXPECT_GT(ink.reddish, 5);
    EXPECT_EQ(0, ink.outside);
}

TEST_F(CairoText, ChineseTextUsesARealCjkGlyphFont)
{
    const SizeI size = device.MeasureText("中文", Font(16));
    EXPECT_GT(size.cx, 16);
    device.DrawText(4, 4, "中文", Font(16), 0xFFFFFFFF, 0);
    EXPECT_GT(CountInk(device, 4, 4, size, 1).inside, 30);

    // No glyph of the layout may be a missing-glyph box.
    CCairoTextCache cache;
    PangoLayout* layout = cache.Get("中文", Font(16));
    PangoLayoutIter* iter = pango_layout_get_iter(layout);
    int glyphs = 0;
    do
    {
        PangoLayoutRun* run = pango_layout_iter_get_run_readonly(iter);
        if (run == nullptr)
            continue;
        for (int i = 0; i < run->glyphs->num_glyphs; ++i, ++glyphs)
            EXPECT_EQ(0u, run->glyphs->glyphs[i].glyph & PANGO_GLYPH_UNKNOWN_FLAG);
    } while (pango_layout_iter_next_run(iter));
    pango_layout_iter_free(iter);
    EXPECT_EQ(2, glyphs);
}

TEST_F(CairoText, BadInputIsHarmless)
{
    const SizeI invalid = device.MeasureText("a\xFF\xFE"
                                             "b",
                                             Font(12));
    EXPECT_GT(invalid.cx, 0);
    EXPECT_EQ(device.MeasureText("ab", Font(12)).cx,
              device.MeasureText(std::string("ab\0cd", 5), Font(12)).cx);
    EXPECT_GT(device.MeasureText("x", Font(-40)).cy, 0);
    EXPECT_GT(device.MeasureText("x", Font(1 << 30)).cy, 0);
    device.DrawText(0, 0, "", Font(12), 0xFFFFFFFF, 0xFFFF0000);
    EXPECT_EQ(0, CountInk(device, 0, 0, SizeI{}, 0).outside);
}

TEST_F(CairoText, SameCaptionIsLaidOutOnce)
{
    device.DrawText(0, 0, "Caption", Font(12), 0xFFFFFFFF, 0xFF000000);
    device.DrawText(0, 20, "Caption", Font(12), 0xFFFFFFFF, 0);
    device.MeasureText("Caption", Font(12, "Sans")); // the default face by name: same key
    EXPECT_EQ(1u, device.GetTextCache().GetMisses());
    EXPECT_EQ(1u, device.GetTextCache().GetSize());
    EXPECT_GE(device.GetTextCache().GetHits(), 2u);
    device.MeasureText("Caption", Font(13));
    EXPECT_EQ(2u, device.GetTextCache().GetMisses());
    device.ClearCaches();
    EXPECT_EQ(0u, device.GetTextCache().GetSize());
}

TEST(CairoTextCache, EvictsTheLeastRecentlyUsedLayout)
{
    CCairoTextCache cache(2);
    cache.Get("a", Font(12));
    cache.Get("b", Font(12));
    cache.Get("a", Font(12)); // "b" is now the oldest
    cache.Get("c", Font(12));
    EXPECT_EQ(3u, cache.GetMisses());
    cache.Get("a", Font(12));
    EXPECT_EQ(3u, cache.GetMisses());
    cache.Get("b", Font(12));
    EXPECT_EQ(4u, cache.GetMisses());
    EXPECT_EQ(2u, cache.GetSize());
}

TEST(CairoTextCache, FiveHundredCaptionsStayCachedAcrossFrames)
{
    CCairoTextCache cache;
    for (int frame = 0; frame < 3; ++frame)
        for (int i = 0; i < 500; ++i)
            cache.Get("caption " + std::to_string(i), Font(12));
    EXPECT_EQ(500u, cache.GetMisses());
    EXPECT_EQ(1000u, cache.GetHits());
}
