// Text of the draw-list device: sizes equal to the cairo device's, glyphs rasterised once into
// the glyph pages, cached quads, page growth and budget, and the pixels next to cairo's.
#include "CCairoDevice.h"
#include "CDrawListDevice.h"
#include "CDrawTextCache.h"
#include "DrawListTestSupport.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

using QzPlatform::CDrawListDevice;
using QzPlatform::DrawAtlas;
using QzPlatform::DrawList;
using QzPlatform::DrawVertex;
using QzPlatform::FontSpec;
using QzPlatform::RectI;
using QzPlatform::TextureId;

namespace
{

const FontSpec kFont{"", 16};

// The CJK ideograph U+4E00 + index in UTF-8.
std::string Ideograph(int index)
{
    const int code = 0x4E00 + index;
    std::string text;
    text += char(0xE0 | (code >> 12));
    text += char(0x80 | ((code >> 6) & 0x3F));
    text += char(0x80 | (code & 0x3F));
    return text;
}

class DrawListText : public ::testing::Test
{
protected:
    DrawListText() : device(200, 60) { device.BeginFrame(); }
    const DrawList& List()
    {
        device.EndFrame();
        return device.GetDrawList();
    }
    CDrawListDevice device;
};

} // namespace

TEST_F(DrawListText, MeasuresAsTheCairoDevice)
{
    QzPlatform::CCairoDevice cairo(8, 8);
    const struct
    {
        std::string text;
        FontSpec font;
    } cases[] = {
        {"Hello, world", {"", 14}},
        {"你好，世界", {"", 16}},
        {"mixed 中文 text", {"Serif", 20}},
        {"Monospace 123", {"Monospace", 11}},
        {"two\nlines", {"", 12}},
        {"", {"", 12}},
        {"bad \xff\xfe bytes", {"", 12}},
        {std::string("cut\0here", 8), {"", 12}},
        {"tiny", {"", -5}},
        {"huge", {"", 100000}},
        {"No such face", {"Qz Missing Face", 13}},
    };
    for (const auto& test : cases)
    {
        const QzPlatform::SizeI expected = cairo.MeasureText(test.text, test.font);
        const QzPlatform::SizeI actual = device.MeasureText(test.text, test.font);
        EXPECT_EQ(expected.cx, actual.cx) << test.text << " " << test.font.size;
        EXPECT_EQ(expected.cy, actual.cy) << test.text << " " << test.font.size;
        device.DrawText(0, 0, test.text, test.font, 0xFFFFFFFF, 0); // sizes stay the same
        EXPECT_EQ(expected.cx, device.MeasureText(test.text, test.font).cx) << test.text;
    }
}

TEST_F(DrawListText, TextMatchesTheCairoDevicePixels)
{
    QzPlatform::CCairoDevice cairo(200, 60);
    const uint32_t background = 0xFF203040;
    cairo.SetClearColor(background);
    cairo.BeginFrame();
    for (QzPlatform::IRenderDevice* target :
         std::initializer_list<QzPlatform::IRenderDevice*>{&cairo, &device})
    {
        target->DrawText(4, 2, "Hello, Wy 你好", kFont, 0xFFFFFF00, 0xFF000000);
        target->DrawText(10, 30, "half clear", FontSpec{"Serif", 13}, 0x80FFFFFF, 0);
        target->DrawText(120, 30, "二行\nlines", FontSpec{"", 12}, 0xFF80FF80, 0);
    }
    const QzTest::ListRaster raster(device, background);
    int inked = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 200; ++x)
        {
            inked += cairo.GetPixel(x, y) != background ? 1 : 0;
            EXPECT_LE(QzTest::ChannelDistance(cairo.GetPixel(x, y), raster.At(x, y)), 2)
                << x << "," << y << std::hex << " cairo 0x" << cairo.GetPixel(x, y) << " list 0x"
                << raster.At(x, y);
        }
    EXPECT_GT(inked, 300);
}

TEST_F(DrawListText, EachGlyphIsRasterisedOnceAndCaptionsAreCached)
{
    device.DrawText(10, 10, "aaaa", kFont, 0xFFFFFFFF, 0);
    const std::vector<DrawVertex> first = List().vertices;
    ASSERT_EQ(16u, first.size());
    for (size_t vertex = 4; vertex < first.size(); ++vertex)
    {
        EXPECT_EQ(first[vertex % 4].u, first[vertex].u);
        EXPECT_EQ(first[vertex % 4].v, first[vertex].v);
    }
    const DrawAtlas* page = device.FindAtlas(device.GetDrawList().commands[0].atlas);
    ASSERT_NE(nullptr, page);
    const uint32_t version = page->version;

    device.BeginFrame();
    device.DrawText(0, 0, "a a a", kFont, 0xFFFFFFFF, 0);
    device.DrawText(10, 10, "aaaa", kFont, 0xFFFFFFFF, 0);
    device.DrawText(17, 19, "aaaa", kFont, 0x80FF0000, 0);
    const DrawList& list = List();
    EXPECT_EQ(version, page->version);
    ASSERT_EQ(12u + 16u + 16u, list.vertices.size());
    ASSERT_EQ(1u, list.commands.size());
    for (size_t vertex = 0; vertex < 16; ++vertex)
    {
        const DrawVertex& again = list.vertices[12 + vertex];
        const DrawVertex& moved = list.vertices[28 + vertex];
        EXPECT_EQ(first[vertex].x, again.x);
        EXPECT_EQ(first[vertex].u, again.u);
        EXPECT_EQ(first[vertex].x + 7, moved.x);
        EXPECT_EQ(first[vertex].y + 9, moved.y);
        EXPECT_EQ(0x80FF0000u, moved.argb);
    }
}

// An opaque text over a black shadow (the captions' look) is one quad a glyph; any other text
// draws its shadow's quads first. Either way fills and glyphs share one command.
TEST_F(DrawListText, ACaptionOverABlackShadowIsOneQuadAGlyph)
{
    const struct
    {
        uint32_t argb, shadow;
        size_t quads;
    } cases[] = {
        {0xFFFFFFFF, 0xFF000000, 2}, {0xFF20C040, 0xFF000000, 2}, {0xFFFFFFFF, 0, 2},
        {0xC0FFFFFF, 0xFF000000, 4}, {0xFFFFFFFF, 0xFF101010, 4}, {0xFFFFFFFF, 0x80000000, 4},
    };
    for (const auto& test : cases)
    {
        device.BeginFrame();
        device.FillRect(0, 0, 50, 20, 0xFF000080);
        device.DrawText(2, 2, "Ok", kFont, test.argb, test.shadow);
        const DrawList& list = List();
        ASSERT_EQ(1u, list.commands.size());
        ASSERT_EQ((1 + test.quads) * 4, list.vertices.size()) << std::hex << test.argb;
        EXPECT_EQ(test.quads == 4 ? test.shadow : test.argb, list.vertices[4].argb);
        EXPECT_EQ(test.argb, list.vertices.back().argb);
    }
}

// Each glyph over its own shadow shows what every shadow and then every glyph show: texts whose
// shadows would fall on the ink of a glyph before them are drawn the long way, and the rest
// within a step of rounding.
TEST_F(DrawListText, OneQuadAGlyphShowsWhatTheShadowAndThenTheTextShow)
{
    const uint32_t background = 0xFF607080;
    const struct
    {
        const char* text;
        FontSpec font;
    } cases[] = {
        {"Button Check Lbl 12:34", kFont},
        {"AVATAR To Wy", {"Serif", 22}},
        {"ff fj jj yj \\//", {"Serif Italic", 20}},
        {"你好 二行", kFont},
        // Combining marks lie on the letter before them: their shadows fall on its ink.
        {"e\xCC\x81 a\xCC\x81\xCC\x81 o\xCC\xB2\xCC\xB2 i\xCC\x83\xCC\x84", kFont},
    };
    QzPlatform::CDrawListDevice twice(200, 60);
    for (const auto& test : cases)
    {
        device.BeginFrame();
        device.DrawText(3, 5, test.text, test.font, 0xFFFFE080, 0xFF000000);
        device.EndFrame();
        twice.BeginFrame();
        twice.DrawText(4, 6, test.text, test.font, 0xFF000000, 0);
        twice.DrawText(3, 5, test.text, test.font, 0xFFFFE080, 0);
        twice.EndFrame();
        const QzTest::ListRaster once(device, background);
        const QzTest::ListRaster reference(twice, background);
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 200; ++x)
                ASSERT_LE(QzTest::ChannelDistance(once.At(x, y), reference.At(x, y)), 1)
                    << test.text << " at " << x << "," << y;
    }
}

TEST_F(DrawListText, HostileTextAddsNothingOrWhatCairoShows)
{
    for (const std::string& text : {std::string(), std::string("\0abc", 4), std::string("\n\n")})
        device.DrawText(0, 0, text, kFont, 0xFFFFFFFF, 0xFF000000);
    device.DrawText(0, 0, "clear", kFont, 0x00FFFFFF, 0x00000000);
    device.DrawText(INT_MIN, INT_MAX, "far", kFont, 0xFFFFFFFF, 0xFF000000);
    EXPECT_TRUE(List().vertices.empty());

    // Bytes that are not UTF-8 show as replacement characters, as on the cairo device.
    device.BeginFrame();
    device.DrawText(0, 0, "\xff\xfe", kFont, 0xFFFFFFFF, 0);
    const std::vector<DrawVertex> bad = List().vertices;
    device.BeginFrame();
    device.DrawText(0, 0, "\xEF\xBF\xBD\xEF\xBF\xBD", kFont, 0xFFFFFFFF, 0);
    const std::vector<DrawVertex> replaced = List().vertices;
    ASSERT_EQ(replaced.size(), bad.size());
    for (size_t vertex = 0; vertex < bad.size(); ++vertex)
        EXPECT_EQ(replaced[vertex].x, bad[vertex].x);
}

// Texel coordinates of a frame's vertices.
std::vector<std::pair<float, float>> TexelsOf(const CDrawListDevice& device, size_t count)
{
    const DrawList& list = device.GetDrawList();
    const DrawAtlas* page = device.FindAtlas(list.commands[0].atlas);
    std::vector<std::pair<float, float>> texels;
    for (size_t vertex = 0; vertex < count; ++vertex)
        texels.emplace_back(list.vertices[vertex].u * page->width,
                            list.vertices[vertex].v * page->height);
    return texels;
}

TEST_F(DrawListText, GlyphPageGrowthKeepsEarlierGlyphsOnTheirTexels)
{
    device.DrawText(10, 10, "Ab", kFont, 0xFFFFFFFF, 0);
    const std::vector<std::pair<float, float>> before = TexelsOf(device, 8);
    const DrawAtlas* page = device.FindAtlas(device.GetDrawList().commands[0].atlas);
    const int width = page->width;
    const std::vector<uint32_t> texels = page->texels;
    for (int i = 0; i < 40 && page->width == width; ++i)
        device.DrawText(0, 20, Ideograph(i), FontSpec{"", 120}, 0xFFFFFFFF, 0);
    ASSERT_GT(page->width, width);
    device.EndFrame();
    const std::vector<std::pair<float, float>> after = TexelsOf(device, 8);
    for (size_t vertex = 0; vertex < 8; ++vertex)
    {
        EXPECT_FLOAT_EQ(before[vertex].first, after[vertex].first);
        EXPECT_FLOAT_EQ(before[vertex].second, after[vertex].second);
    }
    for (size_t quad = 0; quad < 8; quad += 4)
        for (int y = int(before[quad].second); y < int(before[quad + 2].second); ++y)
            for (int x = int(before[quad].first); x < int(before[quad + 2].first); ++x)
                ASSERT_EQ(texels[size_t(y) * width + x], page->texels[size_t(y) * page->width + x]);
}

// Text that fills more glyph pages than the budget gets them back at the next frame, and text
// drawn then is rasterised again.
TEST_F(DrawListText, GlyphPagesPastTheBudgetStartAgainAtTheNextFrame)
{
    const size_t atlases = device.GetAtlasCount();
    for (int i = 0; i < 400 && device.GetAtlasCount() < atlases + 3; ++i)
        device.DrawText(0, 0, Ideograph(i), FontSpec{"", 400}, 0xFFFFFFFF, 0);
    ASSERT_EQ(atlases + 3, device.GetAtlasCount());
    const uint32_t lastPage = device.GetAtlas(device.GetAtlasCount() - 1).id;
    device.EndFrame();
    device.BeginFrame();
    EXPECT_EQ(atlases, device.GetAtlasCount());
    EXPECT_EQ(nullptr, device.FindAtlas(lastPage));
    device.DrawText(0, 0, Ideograph(0), kFont, 0xFFFFFFFF, 0);
    const DrawList& list = List();
    ASSERT_EQ(1u, list.commands.size());
    EXPECT_NE(nullptr, device.FindAtlas(list.commands[0].atlas));
}

// Small images share the text's first page, so a skin and its caption make one command. When
// the text's pages start again an image is laid out again from its file on its next use, drawing
// the same pixels; an image whose file is gone by then draws nothing, has no size and is
// reported once.
TEST_F(DrawListText, ImagesOnTheTextPageComeBackFromTheirFilesAfterItStartsAgain)
{
    QzTest::PngFolder folder;
    const auto opaque = [](int x, int y) { return 0xFF000000u | uint32_t(x * 40 << 8 | y * 50); };
    const TextureId skin = device.LoadTexture(folder.WritePng("skin.png", 6, 4, opaque));
    const TextureId gone = device.LoadTexture(folder.WritePng("gone.png", 6, 4, opaque));
    const auto draw = [&]
    {
        device.DrawTexture(skin, RectI{0, 0, 6, 4}, 2, 2, 6, 4, 255, 1.0f);
        device.DrawText(10, 0, "Ok", kFont, 0xFFFFFFFF, 0xFF000000);
        device.DrawTexture(gone, RectI{0, 0, 6, 4}, 40, 2, 6, 4, 255, 1.0f);
        EXPECT_EQ(1u, List().commands.size());
        return QzTest::ListRaster(device, 0xFF808080);
    };
    const QzTest::ListRaster before = draw();

    device.BeginFrame();
    const size_t atlases = device.GetAtlasCount();
    for (int i = 0; i < 400 && device.GetAtlasCount() < atlases + 2; ++i)
        device.DrawText(0, 0, Ideograph(i), FontSpec{"", 400}, 0xFFFFFFFF, 0);
    device.EndFrame();
    std::remove(folder.Path("gone.png").c_str());
    QzTest::LogCapture log;
    device.BeginFrame();
    ASSERT_LT(device.GetAtlasCount(), atlases);
    const QzTest::ListRaster after = draw();
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x)
            ASSERT_EQ(before.At(x, y), after.At(x, y)) << x << "," << y;
    EXPECT_EQ(0xFF808080u, after.At(42, 4));
    EXPECT_EQ(0, device.GetTextureSize(gone).cx);
    EXPECT_FALSE(device.IsTransparent(skin, 5, 3));
    device.BeginFrame();
    draw();
    EXPECT_EQ(1u, log.Records().size());
}

TEST(DrawTextCache, KeepsTheMostRecentlyUsedLayouts)
{
    QzPlatform::CDrawAtlasPages pages;
    QzPlatform::CDrawGlyphCache glyphs(pages);
    QzPlatform::CDrawTextCache cache(glyphs, 2);
    const QzPlatform::SizeI one = cache.Measure("one", kFont);
    cache.Measure("two", kFont);
    cache.Measure("one", kFont);
    cache.Measure("three", kFont); // evicts "two"
    EXPECT_EQ(2u, cache.GetSize());
    EXPECT_EQ(3u, cache.GetMisses());
    EXPECT_EQ(one.cx, cache.Measure("one", FontSpec{"Sans", 16}).cx);
    EXPECT_EQ(2u, cache.GetHits());
    cache.Measure("two", kFont);
    EXPECT_EQ(4u, cache.GetMisses());
    EXPECT_EQ(3u, cache.GetQuads("one", kFont).quads.size());
}

// A small cache crowded with texts (its index collides and evicts all the time) answers as a
// list of the most recently used texts does, each with its own size.
TEST(DrawTextCache, HitsFollowAListOfRecentUseUnderEviction)
{
    QzPlatform::CDrawAtlasPages pages;
    QzPlatform::CDrawGlyphCache glyphs(pages);
    QzPlatform::CDrawTextCache cache(glyphs, 8);
    QzPlatform::CDrawTextCache reference(glyphs, 64);
    std::mt19937 random(3);
    std::vector<std::string> pool;
    for (int i = 0; i < 40; ++i)
        pool.push_back(std::string(1 + i % 7, static_cast<char>('a' + i % 26)) + std::to_string(i));
    std::vector<std::string> recent; // most recent last
    uint64_t hits = 0;
    for (int call = 0; call < 3000; ++call)
    {
        const std::string& text = pool[random() % (call < 1500 ? 12 : pool.size())];
        const auto found = std::find(recent.begin(), recent.end(), text);
        hits += found != recent.end() ? 1 : 0;
        if (found != recent.end())
            recent.erase(found);
        else if (recent.size() == 8)
            recent.erase(recent.begin());
        recent.push_back(text);
        ASSERT_EQ(cache.Measure(text, kFont).cx, reference.Measure(text, kFont).cx) << text;
        ASSERT_EQ(cache.GetHits(), hits) << "call " << call;
    }
}

// A text's quads written whole (one page, inside the clip) are the quads written one by one
// with a test each, wherever the text lies about the clip's edges.
TEST(DrawQuadRun, WrittenWholeAsWhenEachQuadIsTested)
{
    QzPlatform::CDrawAtlasPages pages;
    const QzPlatform::DrawAtlas& fill = *pages.Create(8, 8);
    const QzPlatform::DrawAtlas& glyphs = *pages.Create(64, 64);
    QzPlatform::DrawQuadRun run;
    for (int i = 0; i < 6; ++i)
        run.quads.push_back({&glyphs, 7.0f * i, 1.0f + i % 3, 7.0f * i + 6, 12.0f + i % 2, 8.0f * i,
                             4, 8.0f * i + 6, 15.0f + i % 2, i == 4});
    run.Seal();
    ASSERT_EQ(run.page, &glyphs);
    QzPlatform::DrawQuadRun tested = run;
    tested.page = nullptr; // as quads of several pages are written
    QzPlatform::CDrawListBuilder builder;
    for (float x : {-30.0f, 9.0f, 10.0f, 30.0f, 48.0f, 49.0f, 95.0f})
        for (float y : {-5.0f, 9.0f, 10.0f, 40.0f, 58.0f, 59.0f})
        {
            QzPlatform::DrawBuffer whole, each;
            whole.Reset(fill);
            each.Reset(fill);
            builder.Begin(100, 80);
            builder.PushClip({10, 10, 90, 70});
            builder.SetTarget(whole);
            builder.AddQuads(run, x, y, 0xFF102030, 0xFFFFFFFF);
            builder.SetTarget(each);
            builder.AddQuads(tested, x, y, 0xFF102030, 0xFFFFFFFF);
            ASSERT_EQ(whole.vertices.size(), each.vertices.size()) << x << "," << y;
            EXPECT_EQ(0, std::memcmp(whole.vertices.data(), each.vertices.data(),
                                     whole.vertices.size() * sizeof(QzPlatform::DrawVertex)))
                << x << "," << y;
            ASSERT_EQ(whole.commands.size(), each.commands.size());
            for (size_t i = 0; i < whole.commands.size(); ++i)
                EXPECT_EQ(whole.commands[i].indexCount, each.commands[i].indexCount);
        }
}

// The pair-by-pair layout of ASCII agrees with pango's layout of the whole text, kerned pairs
// and spaces included.
TEST(DrawTextCache, LaysOutAsciiAsPangoDoes)
{
    QzPlatform::CCairoDevice cairo(64, 64);
    QzPlatform::CDrawListDevice device(64, 64);
    std::mt19937 random(7);
    std::uniform_int_distribution<int> printable(0x20, 0x7E);
    for (int size : {9, 12, 16, 23})
    {
        for (int n = 0; n < 200; ++n)
        {
            std::string text(1 + n % 17, ' ');
            for (char& c : text)
                c = static_cast<char>(printable(random));
            const FontSpec font{n % 2 ? "Serif" : "", size};
            const QzPlatform::SizeI ours = device.MeasureText(text, font);
            const QzPlatform::SizeI theirs = cairo.MeasureText(text, font);
            ASSERT_EQ(theirs.cx, ours.cx) << text << " at " << size;
            ASSERT_EQ(theirs.cy, ours.cy) << text << " at " << size;
        }
    }
    for (const char* kerned : {"AVATAR To", "Te Yo LT", "WAVE fi fl"})
        EXPECT_EQ(cairo.MeasureText(kerned, kFont).cx, device.MeasureText(kerned, kFont).cx);
}
