// Blocks and images the device blends into the surface itself must come out exactly as cairo
// draws them: every draw here goes to a device drawing directly and to one drawing through cairo
// only, and the two surfaces are compared pixel for pixel, without and then with a clip.
#include "CCairoDevice.h"
#include "TestPng.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <vector>

using QzPlatform::CCairoDevice;
using QzPlatform::RectI;
using QzPlatform::TextureId;

namespace
{

const int kWidth = 40;
const int kHeight = 30;

// A premultiplied pixel of the given alpha with channels up to it.
uint32_t Premultiplied(uint32_t alpha, uint32_t r, uint32_t g, uint32_t b)
{
    return alpha << 24 | (r * alpha / 255) << 16 | (g * alpha / 255) << 8 | (b * alpha / 255);
}

// An image drawn whole at (x, y) in width x height.
struct Placement
{
    TextureId texture;
    int x, y, width, height;
    uint8_t alpha;
};

class CairoDirect : public ::testing::Test
{
protected:
    CairoDirect() : direct(kWidth, kHeight), cairo(kWidth, kHeight)
    {
        cairo.SetDirectDrawing(false);
        // Translucent stripes, so that every blend meets different pixels.
        Draw(
            [](CCairoDevice& device)
            {
                device.BeginFrame();
                for (int i = 0; i < 10; ++i)
                    device.FillRect(i * 4, 0, i * 4 + 3, kHeight,
                                    0x30000000u * (i % 5 + 1) | (0x1F3D5Bu * i & 0xFFFFFF));
            });
    }
    TextureId Load(const std::string& name, int width, int height,
                   const std::function<uint32_t(int, int)>& pixel)
    {
        const std::string path = folder / name;
        QzTest::WritePng(path, width, height, pixel);
        const TextureId id = direct.LoadTexture(path);
        EXPECT_EQ(id, cairo.LoadTexture(path));
        return id;
    }
    void Draw(const std::function<void(CCairoDevice&)>& draw)
    {
        draw(direct);
        draw(cairo);
    }
    // Empty when the surfaces are equal, else the first pixel that differs.
    std::string Difference()
    {
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                if (direct.GetPixel(x, y) != cairo.GetPixel(x, y))
                {
                    std::ostringstream text;
                    text << x << "," << y << std::hex << ": direct 0x" << direct.GetPixel(x, y)
                         << ", cairo 0x" << cairo.GetPixel(x, y);
                    return text.str();
                }
        return "";
    }
    void ExpectSameDraws(const std::vector<Placement>& placements, const RectI& clip)
    {
        for (const bool clipped : {false, true})
        {
            if (clipped)
                Draw([&](CCairoDevice& device) { device.PushClip(clip); });
            for (const Placement& p : placements)
            {
                const QzPlatform::SizeI size = direct.GetTextureSize(p.texture);
                Draw(
                    [&](CCairoDevice& device)
                    {
                        device.DrawTexture(p.texture, RectI{0, 0, size.cx, size.cy}, p.x, p.y,
                                           p.width, p.height, p.alpha, 1.0f);
                    });
                ASSERT_EQ("", Difference()) << "image " << p.texture << " at " << p.x << "," << p.y
                                            << " in " << p.width << "x" << p.height;
            }
        }
    }
    const QzTest::TempFolder folder{"cairo"};
    CCairoDevice direct;
    CCairoDevice cairo;
};

} // namespace

TEST_F(CairoDirect, UnscaledImagesOnAndOffTheEdges)
{
    // Every pixel differs; alpha runs from 0 to 255 over the image.
    const TextureId id =
        Load("sprite.png", 10, 6,
             [](int x, int y)
             {
                 const uint32_t alpha = std::min(255, (y * 10 + x) * 5);
                 return Premultiplied(x == 9 ? 255 : alpha, 40 * y, 255 - 20 * x, 90);
             });
    ExpectSameDraws({{id, 3, 2, 10, 6, 255},
                     {id, 20, 10, 10, 6, 200},
                     {id, -4, 5, 10, 6, 128},
                     {id, 35, -3, 10, 6, 77},
                     {id, -6, 27, 10, 6, 1},
                     {id, 33, 26, 10, 6, 254},
                     {id, 50, 0, 10, 6, 255},
                     {id, 12, 20, 10, 6, 160}},
                    RectI{5, 4, 31, 24});
    // A source rectangle reaching out of the image draws only the part inside it.
    Draw(
        [&](CCairoDevice& device) {
            device.DrawTexture(id, RectI{-3, 2, 6, 9}, 8, 8, 9, 7, 180, 1.0f);
        });
    EXPECT_EQ("", Difference());
}

TEST_F(CairoDirect, StretchedPlainRowsColumnsAndBlocks)
{
    // Rows of one colour each, rows all alike, one colour throughout; and, for cairo to filter,
    // colours changing both ways.
    const TextureId rows = Load(
        "rows.png", 4, 5, [](int, int y) { return Premultiplied(60 + 40 * y, 200, 9 * y, 30); });
    const TextureId columns = Load(
        "columns.png", 5, 4, [](int x, int) { return Premultiplied(255 - 50 * x, 20, 90, 7); });
    const TextureId block = Load("block.png", 3, 3, [](int, int) { return 0xC0804020u; });
    const TextureId mixed =
        Load("mixed.png", 4, 4, [](int x, int y) { return Premultiplied(255, 60 * x, 60 * y, 0); });
    ExpectSameDraws({{rows, 2, 3, 30, 5, 255},
                     {rows, -5, 20, 3, 5, 140},
                     {rows, 25, 1, 64, 5, 255},
                     {rows, 12, 4, 4, 13, 255},
                     {columns, 4, 2, 5, 25, 255},
                     {columns, 30, 26, 5, 3, 90},
                     {block, 6, 6, 31, 17, 255},
                     {block, -10, -2, 2, 40, 200},
                     {block, 20, 15, 100, 1, 255},
                     {mixed, 1, 1, 4, 20, 255},
                     {mixed, 9, 2, 25, 4, 255}},
                    RectI{3, 5, 28, 22});
}

TEST_F(CairoDirect, BlocksOfEveryOpacity)
{
    const uint32_t colours[] = {0xFF123456, 0x80FF0000, 0x01FFFFFF, 0x7F00FF80,
                                0xFE010203, 0x00FFFFFF, 0x40FFFFFF, 0xC0101418};
    int step = 0;
    for (const uint32_t colour : colours)
    {
        Draw(
            [&](CCairoDevice& device)
            {
                device.FillRect(step * 5 - 6, step * 3 - 2, step * 5 + 12, step * 4 + 9, colour);
                device.PushClip(RectI{10, 0, 30, 30});
                device.FillRect(0, step * 3, kWidth + 10, step * 3 + 4, colour);
                device.PopClip();
            });
        ASSERT_EQ("", Difference()) << std::hex << colour;
        ++step;
    }
}
