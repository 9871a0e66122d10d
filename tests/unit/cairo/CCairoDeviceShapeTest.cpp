// Blocks, outlines, lines and clearing of the cairo device, checked pixel by pixel.
#include "CCairoDevice.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <utility>

using QzPlatform::CCairoDevice;

namespace
{

const uint32_t kBack = 0xFF000000;
const uint32_t kRed = 0xFFFF0000;

int ChannelOf(uint32_t argb, int shift)
{
    return static_cast<int>((argb >> shift) & 0xFF);
}

void ExpectNear(uint32_t expected, uint32_t actual, int tolerance)
{
    for (int shift = 0; shift < 32; shift += 8)
        EXPECT_LE(std::abs(ChannelOf(expected, shift) - ChannelOf(actual, shift)), tolerance)
            << std::hex << "expected 0x" << expected << ", got 0x" << actual;
}

class CairoShapes : public ::testing::Test
{
protected:
    CairoShapes() : device(16, 12)
    {
        device.SetClearColor(kBack);
        device.BeginFrame();
    }
    CCairoDevice device;
};

} // namespace

TEST_F(CairoShapes, ConstructionClampsSizeAndClearsToDefaultColour)
{
    CCairoDevice tiny(0, -5);
    EXPECT_EQ(1, tiny.GetScreenWidth());
    EXPECT_EQ(1, tiny.GetScreenHeight());
    EXPECT_EQ(CCairoDevice::kDefaultClearColor, tiny.GetPixel(0, 0));
}

TEST_F(CairoShapes, BeginFrameClearsToTheHostColour)
{
    device.FillRect(0, 0, 16, 12, kRed);
    device.SetClearColor(0xFF112233);
    device.BeginFrame();
    EXPECT_EQ(0xFF112233u, device.GetPixel(15, 11));
    EXPECT_EQ(0u, device.GetPixel(16, 0)); // outside
}

TEST_F(CairoShapes, FillRectCoversRightAndBottomExclusive)
{
    device.FillRect(2, 3, 6, 8, kRed);
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
        {
            const bool inside = x >= 2 && x < 6 && y >= 3 && y < 8;
            EXPECT_EQ(inside ? kRed : kBack, device.GetPixel(x, y)) << x << "," << y;
        }
}

TEST_F(CairoShapes, EmptyOrInvertedRectsDrawNothing)
{
    device.FillRect(5, 5, 5, 9, kRed);
    device.FillRect(8, 8, 4, 4, kRed);
    device.StrokeRect(8, 8, 4, 4, kRed);
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
            EXPECT_EQ(kBack, device.GetPixel(x, y));
}

TEST_F(CairoShapes, StrokeRectCoversExactlyTheBorderPixels)
{
    device.StrokeRect(2, 2, 8, 6, kRed);
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
        {
            const bool inside = x >= 2 && x < 8 && y >= 2 && y < 6;
            const bool border = inside && (x == 2 || x == 7 || y == 2 || y == 5);
            EXPECT_EQ(border ? kRed : kBack, device.GetPixel(x, y)) << x << "," << y;
        }
}

TEST_F(CairoShapes, TranslucentOutlinePaintsCornersOnce)
{
    device.StrokeRect(1, 1, 10, 9, 0x80FFFFFF);
    const uint32_t edge = device.GetPixel(5, 1);
    ExpectNear(0xFF808080, edge, 1);
    EXPECT_EQ(edge, device.GetPixel(1, 1));
    EXPECT_EQ(edge, device.GetPixel(9, 8));
    EXPECT_EQ(kBack, device.GetPixel(5, 5));
}

TEST_F(CairoShapes, ThinRectOutlinesFillTheirPixels)
{
    device.StrokeRect(3, 1, 4, 6, kRed);  // one column
    device.StrokeRect(6, 1, 11, 3, kRed); // two rows
    for (int y = 1; y < 6; ++y)
        EXPECT_EQ(kRed, device.GetPixel(3, y));
    EXPECT_EQ(kBack, device.GetPixel(4, 1));
    EXPECT_EQ(kRed, device.GetPixel(8, 2));
    EXPECT_EQ(kBack, device.GetPixel(8, 3));
}

TEST_F(CairoShapes, HalfTransparentBlockBlendsOverAnother)
{
    device.FillRect(0, 0, 8, 8, 0xFF0000FF);
    device.FillRect(4, 4, 12, 12, 0x80FF0000);
    ExpectNear(0xFF80007F, device.GetPixel(5, 5), 1);
    ExpectNear(0xFF800000, device.GetPixel(10, 10), 1); // over the black background
    EXPECT_EQ(0xFF0000FFu, device.GetPixel(3, 3));
}

TEST_F(CairoShapes, LinesIncludeBothEndPixels)
{
    device.DrawLine(1, 1, 5, 1, kRed);
    device.DrawLine(8, 2, 8, 6, kRed);
    for (int x = 1; x <= 5; ++x)
        EXPECT_EQ(kRed, device.GetPixel(x, 1));
    for (int y = 2; y <= 6; ++y)
        EXPECT_EQ(kRed, device.GetPixel(8, y));
    for (const auto& [x, y] : {std::pair{0, 1}, {6, 1}, {1, 0}, {8, 7}})
        EXPECT_EQ(kBack, device.GetPixel(x, y)) << x << "," << y;
}

TEST_F(CairoShapes, HostileCoordinatesDoNotBreakLaterDrawing)
{
    device.FillRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX, 0xFF00FF00);
    EXPECT_EQ(0xFF00FF00u, device.GetPixel(0, 0));
    EXPECT_EQ(0xFF00FF00u, device.GetPixel(15, 11));
    device.StrokeRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX, kRed);
    device.DrawLine(INT_MIN, INT_MAX, INT_MAX, INT_MIN, kRed);
    device.FillRect(2, 2, 4, 4, 0xFF0000FF);
    EXPECT_EQ(0xFF0000FFu, device.GetPixel(3, 3));
}

TEST_F(CairoShapes, ClipsNestUntilPoppedAndEndWithTheFrame)
{
    device.PushClip(QzPlatform::RectI{2, 2, 10, 10});
    device.PushClip(
        QzPlatform::RectI{6, INT_MIN, INT_MAX, 6}); // meets the outer clip in 6..9 x 2..5
    device.FillRect(0, 0, 16, 12, kRed);
    device.PopClip();
    device.DrawLine(0, 8, 15, 8, 0xFF00FF00); // through cairo, still inside the outer clip
    device.PopClip();
    device.PopClip();                               // one too many: ignored
    device.PushClip(QzPlatform::RectI{9, 9, 3, 3}); // inverted: nothing gets through
    device.FillRect(0, 0, 16, 12, 0xFF0000FF);
    for (int y = 0; y < 12; ++y)
        for (int x = 0; x < 16; ++x)
        {
            const bool red = x >= 6 && x < 10 && y >= 2 && y < 6;
            const bool green = y == 8 && x >= 2 && x < 10;
            EXPECT_EQ(red     ? kRed
                      : green ? 0xFF00FF00
                              : kBack,
                      device.GetPixel(x, y))
                << x << "," << y;
        }
    device.BeginFrame(); // drops the clip left in force
    device.FillRect(0, 0, 16, 12, kRed);
    EXPECT_EQ(kRed, device.GetPixel(0, 0));
}
