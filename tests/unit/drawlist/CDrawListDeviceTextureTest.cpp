// Images of the draw-list device: loading into atlas pages, texels, the quads DrawTexture adds
// and the pixels they give next to the cairo device's.
#include "CCairoDevice.h"
#include "CDrawListDevice.h"
#include "DrawListTestSupport.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <fstream>
#include <limits>

using QzPlatform::CDrawListDevice;
using QzPlatform::DrawAtlas;
using QzPlatform::DrawList;
using QzPlatform::DrawVertex;
using QzPlatform::RectI;
using QzPlatform::TextureId;

namespace
{

// Every pixel of a test image has its own colour; column 1 of row 0 is half transparent and
// pixel (2, 1) fully transparent.
uint32_t Distinct(int x, int y)
{
    if (x == 2 && y == 1)
        return 0;
    const uint32_t alpha = x == 1 && y == 0 ? 0x80u : 0xFFu;
    return (alpha << 24) | (uint32_t(x * 30) << 16) | (uint32_t(y * 60) << 8) | 0x10u;
}

uint32_t Opaque(int x, int y)
{
    return 0xFF000000u | uint32_t(x * 7 + y);
}

class DrawListTextures : public ::testing::Test
{
protected:
    DrawListTextures() : device(64, 48) { device.BeginFrame(); }
    TextureId Load(const std::string& name, int width, int height,
                   const std::function<uint32_t(int, int)>& pixel = Distinct)
    {
        return device.LoadTexture(folder.WritePng(name, width, height, pixel));
    }
    const DrawList& List()
    {
        device.EndFrame();
        return device.GetDrawList();
    }
    // The texel under a vertex's texture coordinate.
    void TexelOf(const DrawVertex& vertex, const DrawAtlas& atlas, float& x, float& y) const
    {
        x = vertex.u * float(atlas.width);
        y = vertex.v * float(atlas.height);
    }
    QzTest::PngFolder folder;
    CDrawListDevice device;
};

} // namespace

TEST_F(DrawListTextures, SamePathGivesSameIdAndOnePlacement)
{
    const std::string path = folder.WritePng("a.png", 6, 4, Distinct);
    const TextureId id = device.LoadTexture(path);
    ASSERT_NE(0u, id);
    const size_t atlases = device.GetAtlasCount();
    const uint32_t version = device.GetAtlas(atlases - 1).version;
    EXPECT_EQ(id, device.LoadTexture(path));
    EXPECT_EQ(atlases, device.GetAtlasCount());
    EXPECT_EQ(version, device.GetAtlas(atlases - 1).version);
    EXPECT_EQ(6, device.GetTextureSize(id).cx);
    EXPECT_EQ(4, device.GetTextureSize(id).cy);
    EXPECT_NE(id, Load("b.png", 2, 2));
    EXPECT_EQ(0, device.GetTextureSize(id + 100).cx);
    EXPECT_EQ(0, device.GetTextureSize(0).cy);
}

TEST_F(DrawListTextures, FailedLoadsAreLoggedOnceAndRememberedUntilClearCaches)
{
    QzTest::LogCapture log;
    const std::string path = folder.Path("late.png");
    EXPECT_EQ(0u, device.LoadTexture(path));
    EXPECT_EQ(0u, device.LoadTexture(path));
    ASSERT_EQ(1, log.Count("open file failed"));
    EXPECT_EQ(path, log.Find("open file failed")->Get("file_name"));
    folder.WritePng("late.png", 2, 2, Distinct);
    EXPECT_EQ(0u, device.LoadTexture(path));
    device.ClearCaches();
    EXPECT_NE(0u, device.LoadTexture(path));

    std::ofstream(folder.Path("text.png")) << "not a picture";
    for (const std::string& bad : {folder.Path("text.png"), std::string(), std::string("a\0b", 3)})
        EXPECT_EQ(0u, device.LoadTexture(bad));
}

TEST_F(DrawListTextures, TexelsAreStraightAlphaWithEdgesRepeatedAround)
{
    const TextureId id = Load("a.png", 3, 2);
    device.DrawTexture(id, RectI{0, 0, 3, 2}, 0, 0, 3, 2, 255, 1.0f);
    const DrawList& list = List();
    ASSERT_EQ(4u, list.vertices.size());
    const DrawAtlas* atlas = device.FindAtlas(list.commands[0].atlas);
    ASSERT_NE(nullptr, atlas);
    float left = 0;
    float top = 0;
    TexelOf(list.vertices[0], *atlas, left, top);
    for (int y = -1; y <= 2; ++y)
        for (int x = -1; x <= 3; ++x)
        {
            const uint32_t texel =
                atlas->texels[size_t(int(top) + y) * atlas->width + size_t(int(left) + x)];
            const uint32_t expected =
                Distinct(std::min(std::max(x, 0), 2), std::min(std::max(y, 0), 1));
            EXPECT_LE(QzTest::ChannelDistance(expected, texel), 2)
                << x << "," << y << std::hex << " 0x" << texel;
        }
    const struct
    {
        TextureId texture;
        int x, y;
        bool transparent;
    } cases[] = {{id, 0, 0, false}, {id, 1, 0, false}, {id, 2, 1, true},     {id, -1, 0, true},
                 {id, 3, 0, true},  {id, 0, 2, true},  {id + 9, 0, 0, true}, {0, 0, 0, true}};
    for (const auto& test : cases)
        EXPECT_EQ(test.transparent, device.IsTransparent(test.texture, test.x, test.y))
            << test.texture << " " << test.x << "," << test.y;
}

// The quad covers where the cairo device draws: the source mapped onto the destination size,
// scaled about (x, y), and only the part of the source inside the image.
TEST_F(DrawListTextures, QuadsMapTheSourceOntoTheDestination)
{
    const TextureId id = Load("a.png", 8, 4, Opaque);
    const struct
    {
        RectI source;
        int x, y, width, height;
        float scale;
        float dest[4];   // left, top, right, bottom
        float texels[4]; // from the image's top-left
    } cases[] = {
        {{0, 0, 8, 4}, 2, 3, 8, 4, 1.0f, {2, 3, 10, 7}, {0, 0, 8, 4}},
        {{4, 0, 8, 4}, 0, 0, 8, 8, 1.0f, {0, 0, 8, 8}, {4, 0, 8, 4}},
        {{0, 0, 8, 4}, 10, 10, 8, 4, 0.5f, {10, 10, 14, 12}, {0, 0, 8, 4}},
        {{-4, 0, 4, 4}, 0, 0, 16, 8, 1.0f, {8, 0, 16, 8}, {0, 0, 4, 4}},
        {{6, 2, 12, 8}, 20, 20, 6, 6, 1.0f, {20, 20, 22, 22}, {6, 2, 8, 4}},
        {{0, 0, 8, 4}, -4, -2, 8, 4, 1.0f, {0, 0, 4, 2}, {4, 2, 8, 4}}, // cut by the screen
    };
    for (const auto& test : cases)
    {
        device.BeginFrame();
        device.DrawTexture(id, test.source, test.x, test.y, test.width, test.height, 0x80,
                           test.scale);
        const DrawList& list = List();
        ASSERT_EQ(4u, list.vertices.size());
        const DrawAtlas* atlas = device.FindAtlas(list.commands[0].atlas);
        ASSERT_NE(nullptr, atlas);
        EXPECT_EQ(0x80FFFFFFu, list.vertices[0].argb);
        const DrawVertex& first = list.vertices[0];
        const DrawVertex& third = list.vertices[2];
        EXPECT_FLOAT_EQ(test.dest[0], first.x);
        EXPECT_FLOAT_EQ(test.dest[1], first.y);
        EXPECT_FLOAT_EQ(test.dest[2], third.x);
        EXPECT_FLOAT_EQ(test.dest[3], third.y);
        float x0 = 0, y0 = 0, x1 = 0, y1 = 0;
        TexelOf(first, *atlas, x0, y0);
        TexelOf(third, *atlas, x1, y1);
        // The image's top-left texel: where the whole image drawn at (0, 0) starts.
        device.BeginFrame();
        device.DrawTexture(id, RectI{0, 0, 8, 4}, 0, 0, 8, 4, 255, 1.0f);
        float originX = 0, originY = 0;
        TexelOf(List().vertices[0], *atlas, originX, originY);
        EXPECT_FLOAT_EQ(test.texels[0], x0 - originX);
        EXPECT_FLOAT_EQ(test.texels[1], y0 - originY);
        EXPECT_FLOAT_EQ(test.texels[2], x1 - originX);
        EXPECT_FLOAT_EQ(test.texels[3], y1 - originY);
    }
}

TEST_F(DrawListTextures, HostileDrawsAddNothing)
{
    const TextureId id = Load("a.png", 8, 4, Opaque);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const struct
    {
        TextureId texture;
        RectI source;
        int x, y, width, height;
        uint8_t alpha;
        float scale;
    } cases[] = {
        {id, {0, 0, 8, 4}, 0, 0, 8, 4, 255, nan},
        {id, {0, 0, 8, 4}, 0, 0, 8, 4, 255, inf},
        {id, {0, 0, 8, 4}, 0, 0, 8, 4, 255, 0.0f},
        {id, {0, 0, 8, 4}, 0, 0, 8, 4, 255, -1.0f},
        {id, {0, 0, 8, 4}, 0, 0, 8, 4, 255, 1e7f},
        {id, {0, 0, 8, 4}, 0, 0, 8, 4, 0, 1.0f},
        {id, {0, 0, 8, 4}, 0, 0, 0, 4, 255, 1.0f},
        {id, {0, 0, 8, 4}, 0, 0, 8, -4, 255, 1.0f},
        {id, {4, 0, 4, 4}, 0, 0, 8, 4, 255, 1.0f},
        {id, {8, 4, 16, 8}, 0, 0, 8, 4, 255, 1.0f},
        {id, {0, 0, 1, 1}, 0, 0, INT_MAX, INT_MAX, 255, 1.0f},
        {id, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 0, 0, 8, 4, 255, 1.0f},
        {id, {0, 0, 8, 4}, INT_MAX, INT_MIN, 8, 4, 255, 1.0f},
        {id + 7, {0, 0, 8, 4}, 0, 0, 8, 4, 255, 1.0f},
        {0, {0, 0, 8, 4}, 0, 0, 8, 4, 255, 1.0f},
    };
    for (const auto& test : cases)
        device.DrawTexture(test.texture, test.source, test.x, test.y, test.width, test.height,
                           test.alpha, test.scale);
    device.PushClip(RectI{100, 0, 200, 10}); // off screen: nothing shows
    device.DrawTexture(id, RectI{0, 0, 8, 4}, 0, 0, 150, 4, 255, 1.0f);
    device.PopClip();
    EXPECT_TRUE(List().vertices.empty());
    device.BeginFrame();
    device.DrawTexture(id, RectI{0, 0, 8, 4}, -1000000, -1000000, 2000000, 2000000, 255, 1.0f);
    const DrawList& list = List();
    ASSERT_EQ(4u, list.vertices.size());
    EXPECT_EQ(0.0f, list.vertices[0].x);
    EXPECT_EQ(64.0f, list.vertices[2].x);
}

TEST_F(DrawListTextures, OneToOneDrawsMatchTheCairoDevice)
{
    const std::string path = folder.WritePng("a.png", 6, 4, Distinct);
    const TextureId id = device.LoadTexture(path);
    QzPlatform::CCairoDevice cairo(64, 48);
    cairo.SetClearColor(0xFF204060);
    cairo.BeginFrame();
    const TextureId cairoId = cairo.LoadTexture(path);
    for (QzPlatform::IRenderDevice* target :
         std::initializer_list<QzPlatform::IRenderDevice*>{&cairo, &device})
    {
        const TextureId image = target == &cairo ? cairoId : id;
        target->DrawTexture(image, RectI{0, 0, 6, 4}, 3, 5, 6, 4, 255, 1.0f);
        target->DrawTexture(image, RectI{0, 0, 6, 4}, 20, 5, 6, 4, 100, 1.0f);
        target->DrawTexture(image, RectI{2, 1, 5, 3}, 40, 40, 3, 2, 255, 1.0f);
        target->DrawTexture(image, RectI{-2, -2, 4, 4}, 30, 20, 6, 6, 255, 1.0f);
        target->FillRect(0, 30, 10, 40, 0xFF00FF00);
    }
    const QzTest::ListRaster raster(device, 0xFF204060);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x)
            EXPECT_LE(QzTest::ChannelDistance(cairo.GetPixel(x, y), raster.At(x, y)), 2)
                << x << "," << y << std::hex << " cairo 0x" << cairo.GetPixel(x, y) << " list 0x"
                << raster.At(x, y);
}

TEST_F(DrawListTextures, ImagesAndFillsShareAPageAndACommand)
{
    device.FillRect(0, 0, 4, 4, 0xFFFF0000); // retargeted to the image page
    for (int i = 0; i < 20; ++i)
    {
        const TextureId id = Load("i" + std::to_string(i) + ".png", 30, 30, Opaque);
        device.DrawTexture(id, RectI{0, 0, 30, 30}, 10 + i, 10 + i, 30, 30, 255, 1.0f);
        device.FillRect(i, 0, i + 1, 1, 0xFF00FF00);
    }
    const DrawList& list = List();
    ASSERT_EQ(1u, list.commands.size());
    EXPECT_EQ(41u * 6, list.commands[0].indexCount);
    const QzTest::ListRaster raster(device, 0xFF000000);
    EXPECT_EQ(0xFF00FF00u, raster.At(3, 0));
    EXPECT_EQ(0xFFFF0000u, raster.At(0, 3));
}

TEST_F(DrawListTextures, AnImageLargerThanAPageGetsItsOwnPage)
{
    const size_t atlases = device.GetAtlasCount();
    const TextureId wide = Load("wide.png", 2100, 3, Opaque);
    ASSERT_NE(0u, wide);
    ASSERT_EQ(atlases + 1, device.GetAtlasCount());
    const DrawAtlas& page = device.GetAtlas(atlases);
    EXPECT_EQ(2102, page.width); // with its border
    EXPECT_LT(page.height, 16);
    const TextureId small = Load("small.png", 40, 40, Opaque);
    EXPECT_EQ(atlases + 2, device.GetAtlasCount());
    EXPECT_FALSE(device.IsTransparent(wide, 2099, 2));
    EXPECT_FALSE(device.IsTransparent(small, 3, 3));
}

// Images take no more than kSharedArea texels of the text's first page; the rest go on pages of
// their own.
TEST_F(DrawListTextures, ImagesShareTheTextPageOnlyUpToTheirArea)
{
    const TextureId first = Load("first.png", 800, 800, Opaque);
    const TextureId second = Load("second.png", 800, 800, Opaque);
    device.DrawTexture(first, RectI{0, 0, 4, 4}, 0, 0, 4, 4, 255, 1.0f);
    device.DrawTexture(second, RectI{0, 0, 4, 4}, 4, 0, 4, 4, 255, 1.0f);
    const DrawList& list = List();
    ASSERT_EQ(2u, list.commands.size());
    EXPECT_NE(list.commands[0].atlas, list.commands[1].atlas);
}

// A page that grows while a frame is drawn keeps the quads already written on the same texels.
TEST_F(DrawListTextures, PageGrowthKeepsEarlierQuadsOnTheirTexels)
{
    const TextureId first = Load("first.png", 10, 10, Opaque);
    device.DrawTexture(first, RectI{0, 0, 10, 10}, 0, 0, 10, 10, 255, 1.0f);
    const DrawAtlas* page = device.FindAtlas(device.GetDrawList().commands[0].atlas);
    ASSERT_NE(nullptr, page);
    const int width = page->width;
    const uint32_t version = page->version;
    const TextureId large = Load("large.png", 600, 600, Opaque);
    EXPECT_EQ(page, device.FindAtlas(page->id));
    EXPECT_EQ(width * 2, page->width);
    EXPECT_LT(version, page->version);
    device.DrawTexture(large, RectI{0, 0, 600, 600}, 0, 0, 600, 600, 255, 1.0f);
    device.DrawTexture(first, RectI{0, 0, 10, 10}, 20, 0, 10, 10, 255, 1.0f);
    const DrawList& list = List();
    ASSERT_EQ(12u, list.vertices.size());
    for (int corner = 0; corner < 4; ++corner)
    {
        EXPECT_FLOAT_EQ(list.vertices[8 + corner].u, list.vertices[corner].u);
        EXPECT_FLOAT_EQ(list.vertices[8 + corner].v, list.vertices[corner].v);
    }
    const QzTest::ListRaster raster(device, 0);
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            EXPECT_EQ(Opaque(x, y), raster.At(20 + x, y)) << x << "," << y;
}

TEST_F(DrawListTextures, ClearCachesForgetsImagesAndNeverReusesIds)
{
    const std::string path = folder.WritePng("a.png", 6, 4, Distinct);
    const TextureId id = device.LoadTexture(path);
    device.DrawTexture(id, RectI{0, 0, 6, 4}, 0, 0, 6, 4, 255, 1.0f);
    const uint32_t page = device.GetDrawList().commands[0].atlas;
    device.ClearCaches();
    EXPECT_TRUE(device.GetDrawList().vertices.empty());
    EXPECT_EQ(nullptr, device.FindAtlas(page));
    EXPECT_EQ(0, device.GetTextureSize(id).cx);
    const TextureId again = device.LoadTexture(path);
    EXPECT_NE(0u, again);
    EXPECT_NE(id, again);
    device.DrawTexture(id, RectI{0, 0, 6, 4}, 0, 0, 6, 4, 255, 1.0f);
    EXPECT_TRUE(List().vertices.empty());
}
