// Images of the cairo device: loading, sizes, transparency and drawing from source rectangles.
#include "CCairoDevice.h"
#include "TestPng.h"
#include "support/GeometryPrint.h"
#include "support/ImageComparePng.h"
#include "support/LogCapture.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <fstream>
#include <tuple>

using QzPlatform::CCairoDevice;
using QzPlatform::RectI;
using QzPlatform::TextureId;

namespace
{

const uint32_t kBack = 0xFF000000;

// Every pixel of the 6 x 4 test image has its own colour.
uint32_t Distinct(int x, int y)
{
    return 0xFF000000u | (uint32_t(x * 40) << 16) | (uint32_t(y * 60) << 8) | 0x10u;
}

// An 8 x 4 atlas: a red frame at x 0..3 and a green one at x 4..7.
uint32_t Atlas(int x, int y)
{
    return x < 4 ? 0xFFFF0000u : 0xFF00FF00u;
}

class CairoTextures : public ::testing::Test
{
protected:
    CairoTextures() : device(32, 32)
    {
        device.SetClearColor(kBack);
        device.BeginFrame();
    }
    TextureId Load(const std::string& name, int width, int height,
                   const std::function<uint32_t(int, int)>& pixel)
    {
        const std::string path = folder / name;
        QzTest::WritePng(path, width, height, pixel);
        return device.LoadTexture(path);
    }
    const QzTest::TempFolder folder{"cairo"};
    CCairoDevice device;
};

} // namespace

TEST_F(CairoTextures, SamePathGivesSameIdAndSize)
{
    const std::string path = folder / "a.png";
    QzTest::WritePng(path, 6, 4, Distinct);
    const TextureId id = device.LoadTexture(path);
    ASSERT_NE(0u, id);
    EXPECT_EQ(id, device.LoadTexture(path));
    EXPECT_EQ((QzPlatform::SizeI{6, 4}), device.GetTextureSize(id));
    EXPECT_NE(id, Load("b.png", 2, 2, Distinct));
    EXPECT_EQ(0, device.GetTextureSize(id + 100).cx);
}

TEST_F(CairoTextures, FailedLoadIsLoggedOnceAndRememberedUntilClearCaches)
{
    QzTest::LogCapture log;
    const std::string path = folder / "late.png";
    EXPECT_EQ(0u, device.LoadTexture(path));
    ASSERT_EQ(1, log.Count("open file failed"));
    EXPECT_EQ(path, log.Find("open file failed")->Get("file_name"));

    QzTest::WritePng(path, 2, 2, Distinct);
    EXPECT_EQ(0u, device.LoadTexture(path));
    EXPECT_EQ(1, log.Count("open file failed"));
    device.ClearCaches();
    EXPECT_NE(0u, device.LoadTexture(path));
}

TEST_F(CairoTextures, FileThatIsNoPngFails)
{
    QzTest::LogCapture log;
    const std::string path = folder / "text.png";
    std::ofstream(path) << "not an image\n";
    EXPECT_EQ(0u, device.LoadTexture(path));
    EXPECT_EQ(0u, device.LoadTexture(""));
    EXPECT_EQ(2, log.Count("open file failed"));
}

TEST_F(CairoTextures, ClearCachesRetiresOldIds)
{
    const TextureId first = Load("a.png", 6, 4, Distinct);
    device.ClearCaches();
    EXPECT_EQ(0, device.GetTextureSize(first).cx);
    EXPECT_TRUE(device.IsTransparent(first, 0, 0));
    const TextureId second = device.LoadTexture(folder / "a.png");
    EXPECT_NE(0u, second);
    EXPECT_NE(first, second);
}

TEST_F(CairoTextures, IsTransparentReadsTheAlphaByte)
{
    const TextureId id = Load("mask.png", 4, 1,
                              [](int x, int) {
                                  return x == 0 ? 0u : x == 1 ? 0x01010101u : 0xFF123456u;
                              });
    // Pixels 0 (alpha 0) to 3, then outside the image, then a texture that does not exist.
    std::string transparent;
    for (const auto& [texture, x, y] : {std::tuple{id, 0, 0},
                                        {id, 1, 0},
                                        {id, 3, 0},
                                        {id, 4, 0},
                                        {id, -1, 0},
                                        {id, 0, 1},
                                        {TextureId{0}, 0, 0}})
        transparent += device.IsTransparent(texture, x, y) ? '1' : '0';
    EXPECT_EQ("1001111", transparent);
}

TEST_F(CairoTextures, SourceRectLandsAtDestinationAndNeighboursStayUntouched)
{
    const TextureId id = Load("distinct.png", 6, 4, Distinct);
    device.DrawTexture(id, RectI{2, 1, 5, 3}, 10, 20, 3, 2, 255, 1.0f);
    for (int y = 18; y < 24; ++y)
        for (int x = 8; x < 15; ++x)
        {
            const bool inside = x >= 10 && x < 13 && y >= 20 && y < 22;
            EXPECT_EQ(inside ? Distinct(x - 8, y - 19) : kBack, device.GetPixel(x, y))
                << x << "," << y;
        }
}

TEST_F(CairoTextures, StretchedFrameTakesNothingFromItsNeighbour)
{
    const TextureId id = Load("atlas.png", 8, 4, Atlas);
    device.DrawTexture(id, RectI{0, 0, 4, 4}, 0, 0, 16, 12, 255, 1.0f);
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
            ASSERT_EQ(0xFFFF0000u, device.GetPixel(x, y)) << x << "," << y;
    EXPECT_EQ(kBack, device.GetPixel(16, 0));
    EXPECT_EQ(kBack, device.GetPixel(0, 12));
}

TEST_F(CairoTextures, ScaleGrowsAboutTheDestinationCorner)
{
    const TextureId id = Load("atlas.png", 8, 4, Atlas);
    device.DrawTexture(id, RectI{4, 0, 8, 4}, 5, 6, 4, 4, 255, 2.0f);
    EXPECT_EQ(0xFF00FF00u, device.GetPixel(5, 6));
    EXPECT_EQ(0xFF00FF00u, device.GetPixel(12, 13));
    EXPECT_EQ(kBack, device.GetPixel(13, 13));
    EXPECT_EQ(kBack, device.GetPixel(4, 6));
}

TEST_F(CairoTextures, AlphaScalesTheImage)
{
    const TextureId id = Load("white.png", 2, 2, [](int, int) { return 0xFFFFFFFFu; });
    device.DrawTexture(id, RectI{0, 0, 2, 2}, 1, 1, 2, 2, 128, 1.0f);
    const uint32_t pixel = device.GetPixel(1, 1);
    EXPECT_NEAR(128, int((pixel >> 16) & 0xFF), 1);
    EXPECT_NEAR(128, int(pixel & 0xFF), 1);
    EXPECT_EQ(0xFFu, pixel >> 24);
}

TEST_F(CairoTextures, DegenerateDrawsAreSkippedAndLeaveTheDeviceWorking)
{
    const TextureId id = Load("atlas.png", 8, 4, Atlas);
    device.DrawTexture(id, RectI{0, 0, 4, 4}, 0, 0, 4, 4, 255, 1e-30f);
    device.DrawTexture(id, RectI{0, 0, 4, 4}, 0, 0, 4, 4, 255, std::nanf(""));
    device.DrawTexture(id, RectI{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 0, 0, 1, 1, 255, 1.0f);
    device.DrawTexture(id, RectI{9, 0, 12, 4}, 0, 0, 4, 4, 255, 1.0f); // outside the image
    device.DrawTexture(id, RectI{0, 0, 4, 4}, 0, 0, 0, 4, 255, 1.0f);
    device.DrawTexture(12345, RectI{0, 0, 4, 4}, 0, 0, 4, 4, 255, 1.0f);
    EXPECT_EQ(kBack, device.GetPixel(1, 1));
    device.DrawTexture(id, RectI{0, 0, 4, 4}, 0, 0, 4, 4, 255, 1.0f);
    EXPECT_EQ(0xFFFF0000u, device.GetPixel(1, 1));
}

TEST_F(CairoTextures, SavePngReloadsToTheSamePixels)
{
    device.FillRect(2, 2, 20, 9, 0xFF336699);
    device.FillRect(5, 5, 30, 30, 0x80FFCC00);
    device.DrawLine(0, 31, 31, 0, 0xFFFFFFFF);
    const std::string path = folder / "saved.png";
    ASSERT_TRUE(device.SavePng(path));
    QzTest::Image saved;
    ASSERT_TRUE(QzTest::ReadPng(path, saved));
    const QzTest::ImageView surface{device.GetData(), 32, 32, device.GetStride()};
    const QzTest::CompareResult result = QzTest::CompareImages(surface, saved.View());
    EXPECT_TRUE(result.passed) << result.Describe();
    EXPECT_FALSE(device.SavePng(folder / "no/such/dir.png"));
}
