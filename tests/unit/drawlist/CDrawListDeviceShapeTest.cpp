// Fills, outlines, lines and clip rectangles of the draw-list device: what they add to the list,
// how commands form, and the pixels the list covers set against the cairo device's.
#include "CCairoDevice.h"
#include "CDrawListDevice.h"
#include "DrawListTestSupport.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>

using QzPlatform::CDrawListDevice;
using QzPlatform::DrawList;
using QzPlatform::RectI;

namespace
{

const uint32_t kRed = 0xFFFF0000;

class DrawListShapes : public ::testing::Test
{
protected:
    DrawListShapes() : device(40, 30) { device.BeginFrame(); }
    const DrawList& List()
    {
        device.EndFrame();
        return device.GetDrawList();
    }
    CDrawListDevice device;
};

struct CountCase
{
    const char* name;
    std::function<void(CDrawListDevice&)> draw;
    size_t quads;
};

} // namespace

TEST_F(DrawListShapes, EachCallAddsItsQuads)
{
    const CountCase cases[] = {
        {"fill", [](CDrawListDevice& d) { d.FillRect(1, 1, 5, 5, kRed); }, 1},
        {"outline", [](CDrawListDevice& d) { d.StrokeRect(1, 1, 9, 9, kRed); }, 4},
        {"thin outline", [](CDrawListDevice& d) { d.StrokeRect(1, 1, 3, 9, kRed); }, 1},
        {"horizontal line", [](CDrawListDevice& d) { d.DrawLine(9, 2, 1, 2, kRed); }, 1},
        {"diagonal line", [](CDrawListDevice& d) { d.DrawLine(1, 2, 20, 9, kRed); }, 1},
        {"dot", [](CDrawListDevice& d) { d.DrawLine(3, 3, 3, 3, kRed); }, 0},
        {"empty fill", [](CDrawListDevice& d) { d.FillRect(5, 5, 5, 9, kRed); }, 0},
        {"inverted outline", [](CDrawListDevice& d) { d.StrokeRect(9, 9, 1, 1, kRed); }, 0},
        {"off screen", [](CDrawListDevice& d) { d.FillRect(50, 5, 60, 9, kRed); }, 0},
        {"outline around the screen",
         [](CDrawListDevice& d) { d.StrokeRect(-100, -100, 500, 500, kRed); }, 0},
        {"transparent", [](CDrawListDevice& d) { d.FillRect(1, 1, 5, 5, 0x00FFFFFF); }, 0},
        {"transparent line", [](CDrawListDevice& d) { d.DrawLine(1, 1, 5, 9, 0x00FFFFFF); }, 0},
        {"diagonal far off", [](CDrawListDevice& d) { d.DrawLine(-9000, -10, -10, -9000, kRed); },
         0},
        {"hostile line",
         [](CDrawListDevice& d) { d.DrawLine(INT_MIN, INT_MAX, INT_MAX, INT_MIN, kRed); }, 1},
    };
    for (const CountCase& test : cases)
    {
        device.BeginFrame();
        test.draw(device);
        const DrawList& list = List();
        EXPECT_EQ(test.quads * 4, list.vertices.size()) << test.name;
        EXPECT_EQ(test.quads * 6, list.indices.size()) << test.name;
        EXPECT_EQ(test.quads == 0 ? 0u : 1u, list.commands.size()) << test.name;
        for (const QzPlatform::DrawVertex& vertex : list.vertices)
            EXPECT_TRUE(std::abs(vertex.x) < 100 && std::abs(vertex.y) < 100) << test.name;
    }
}

TEST_F(DrawListShapes, HostileRectanglesAreCutToTheScreen)
{
    device.FillRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX, kRed);
    const DrawList& list = List();
    ASSERT_EQ(4u, list.vertices.size());
    EXPECT_EQ(0.0f, list.vertices[0].x);
    EXPECT_EQ(0.0f, list.vertices[0].y);
    EXPECT_EQ(40.0f, list.vertices[2].x);
    EXPECT_EQ(30.0f, list.vertices[2].y);
    const std::vector<uint32_t> quad = {0, 1, 2, 0, 2, 3};
    EXPECT_EQ(quad, list.indices);
}

TEST_F(DrawListShapes, FillsShareOneCommandSampleWhiteAndCarryTheirColour)
{
    for (int i = 0; i < 50; ++i)
        device.FillRect(i % 30, i % 20, i % 30 + 5, i % 20 + 5, 0x80000000u | uint32_t(i));
    device.StrokeRect(2, 2, 20, 20, kRed);
    device.DrawLine(0, 0, 30, 20, kRed);
    const DrawList& list = List();
    ASSERT_EQ(1u, list.commands.size());
    EXPECT_EQ(0u, list.commands[0].indexOffset);
    EXPECT_EQ(list.indices.size(), list.commands[0].indexCount);
    EXPECT_EQ(0x80000007u, list.vertices[7 * 4].argb);
    const QzPlatform::DrawAtlas* atlas = device.FindAtlas(list.commands[0].atlas);
    ASSERT_NE(nullptr, atlas);
    for (const QzPlatform::DrawVertex& vertex : list.vertices)
    {
        const int x = int(vertex.u * atlas->width);
        const int y = int(vertex.v * atlas->height);
        EXPECT_EQ(0xFFFFFFFFu, atlas->texels[size_t(y) * atlas->width + x]);
    }
}

TEST_F(DrawListShapes, ClipsIntersectAndStartNewCommands)
{
    device.FillRect(0, 0, 40, 30, kRed);
    device.PushClip(RectI{5, 5, 30, 25});
    device.FillRect(0, 0, 40, 30, kRed);
    device.PushClip(RectI{20, -10, 60, 10});
    device.FillRect(0, 0, 40, 30, kRed);
    device.PopClip();
    device.FillRect(0, 0, 40, 30, kRed);
    device.PopClip();
    device.PopClip(); // one too many: ignored
    device.FillRect(0, 0, 40, 30, kRed);
    const DrawList& list = List();
    ASSERT_EQ(5u, list.commands.size());
    const RectI clips[] = {
        {0, 0, 40, 30}, {5, 5, 30, 25}, {20, 5, 30, 10}, {5, 5, 30, 25}, {0, 0, 40, 30}};
    for (size_t i = 0; i < 5; ++i)
    {
        const RectI& clip = list.commands[i].clip;
        EXPECT_EQ(clips[i].left, clip.left) << i;
        EXPECT_EQ(clips[i].top, clip.top) << i;
        EXPECT_EQ(clips[i].right, clip.right) << i;
        EXPECT_EQ(clips[i].bottom, clip.bottom) << i;
        EXPECT_EQ(i * 6, list.commands[i].indexOffset);
        EXPECT_EQ(6u, list.commands[i].indexCount);
        // The fill is cut to the clip.
        EXPECT_EQ(float(clip.left), list.vertices[i * 4].x);
        EXPECT_EQ(float(clip.bottom), list.vertices[i * 4 + 2].y);
    }
}

TEST_F(DrawListShapes, ClipsWithoutDrawingOrOutsideEverythingAddNothing)
{
    device.FillRect(0, 0, 10, 10, kRed);
    device.PushClip(RectI{2, 2, 8, 8});
    device.PopClip();
    device.PushClip(RectI{50, 50, 60, 60}); // off screen: empty
    device.FillRect(0, 0, 40, 30, kRed);
    device.DrawLine(0, 0, 30, 20, kRed);
    device.PushClip(RectI{INT_MIN, INT_MIN, INT_MAX, INT_MAX});
    device.FillRect(0, 0, 40, 30, kRed);
    device.PopClip();
    device.PopClip();
    device.FillRect(0, 0, 10, 10, kRed);
    const DrawList& list = List();
    ASSERT_EQ(1u, list.commands.size());
    EXPECT_EQ(12u, list.commands[0].indexCount);
}

TEST_F(DrawListShapes, FramesStartEmptyAndReuseTheirStorage)
{
    for (int i = 0; i < 300; ++i)
        device.FillRect(i % 40, 0, i % 40 + 1, 30, kRed);
    device.PushClip(RectI{1, 1, 5, 5}); // left open
    device.EndFrame();
    const DrawList& list = device.GetDrawList();
    const size_t vertexCapacity = list.vertices.capacity();
    const size_t indexCapacity = list.indices.capacity();
    const QzPlatform::DrawVertex* vertexData = list.vertices.data();
    for (int frame = 0; frame < 3; ++frame)
    {
        device.BeginFrame();
        EXPECT_TRUE(list.vertices.empty() && list.indices.empty() && list.commands.empty());
        for (int i = 0; i < 300; ++i)
            device.FillRect(i % 40, 0, i % 40 + 1, 30, kRed);
        device.EndFrame();
        ASSERT_EQ(1u, list.commands.size()); // the clip did not survive the frame
        EXPECT_EQ(40, list.commands[0].clip.right);
        EXPECT_EQ(vertexCapacity, list.vertices.capacity());
        EXPECT_EQ(indexCapacity, list.indices.capacity());
        EXPECT_EQ(vertexData, list.vertices.data());
    }
}

TEST_F(DrawListShapes, ScreenSizeChangesWithTheNextFrame)
{
    device.SetScreenSize(100, -3);
    EXPECT_EQ(100, device.GetScreenWidth());
    EXPECT_EQ(1, device.GetScreenHeight());
    device.BeginFrame();
    device.FillRect(0, 0, 1000, 1000, kRed);
    EXPECT_EQ(100.0f, List().vertices[2].x);
    CDrawListDevice huge(100000, 0);
    EXPECT_EQ(32767, huge.GetScreenWidth());
    EXPECT_EQ(1, huge.GetScreenHeight());
    EXPECT_EQ(CDrawListDevice::kDefaultClearColor, huge.GetClearColor());
}

// Every axis-aligned shape covers exactly the pixels the cairo device paints, in its tone.
TEST_F(DrawListShapes, AxisAlignedShapesMatchTheCairoDevice)
{
    QzPlatform::CCairoDevice cairo(40, 30);
    const uint32_t background = 0xFF102030;
    cairo.SetClearColor(background);
    cairo.BeginFrame();
    for (QzPlatform::IRenderDevice* target :
         std::initializer_list<QzPlatform::IRenderDevice*>{&cairo, &device})
    {
        target->FillRect(2, 3, 17, 12, 0xFF0000FF);
        target->FillRect(8, 6, 30, 20, 0x80FF8000);
        target->StrokeRect(1, 1, 39, 29, 0x80FFFFFF);
        target->StrokeRect(20, 20, 22, 28, 0xFF00FF00);
        target->StrokeRect(-5, 15, 10, 50, kRed);
        target->DrawLine(3, 25, 15, 25, 0xC000FFFF);
        target->DrawLine(35, 27, 35, 2, 0xFFFFFF00);
        target->DrawLine(5, 5, 5, 5, kRed);
        target->FillRect(INT_MIN, 28, INT_MAX, INT_MAX, 0x40FFFFFF);
    }
    const QzTest::ListRaster raster(device, background);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            EXPECT_LE(QzTest::ChannelDistance(cairo.GetPixel(x, y), raster.At(x, y)), 1)
                << x << "," << y << std::hex << " cairo 0x" << cairo.GetPixel(x, y) << " list 0x"
                << raster.At(x, y);
}

// A diagonal line is cairo's stroke: the pixels it covers are those cairo paints at least half,
// within one pixel where coverage is close to a half.
TEST_F(DrawListShapes, DiagonalLinesCoverWhatCairoCovers)
{
    QzPlatform::CCairoDevice cairo(40, 30);
    cairo.SetClearColor(0xFF000000);
    cairo.BeginFrame();
    const int lines[][4] = {{1, 1, 30, 20}, {38, 2, 4, 27}, {10, 28, 12, 1}, {2, 15, 39, 16}};
    for (const auto& line : lines)
    {
        cairo.DrawLine(line[0], line[1], line[2], line[3], 0xFFFFFFFF);
        device.DrawLine(line[0], line[1], line[2], line[3], 0xFFFFFFFF);
    }
    const QzTest::ListRaster raster(device, 0xFF000000);
    int covered = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
        {
            const int coverage = int(cairo.GetPixel(x, y) & 0xFF);
            const bool drawn = raster.At(x, y) == 0xFFFFFFFFu;
            covered += drawn ? 1 : 0;
            if (coverage > 200)
            {
                EXPECT_TRUE(drawn) << x << "," << y;
            }
            if (coverage < 40)
            {
                EXPECT_FALSE(drawn) << x << "," << y;
            }
        }
    EXPECT_GT(covered, 100);
}
