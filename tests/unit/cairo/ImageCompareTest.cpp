// The image comparer must itself be trusted: one differing pixel anywhere is found.
#include "support/ImageCompare.h"
#include "TestPng.h"
#include "support/ImageComparePng.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <utility>

using QzTest::CompareImages;
using QzTest::CompareOptions;
using QzTest::CompareResult;
using QzTest::Image;

namespace
{

Image Gradient(int width, int height)
{
    Image image(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.At(x, y) = 0xFF000000u | uint32_t(x * 7) << 16 | uint32_t(y * 11) << 8;
    return image;
}

CompareOptions Options(int tolerance, int64_t maxDiffering)
{
    CompareOptions options;
    options.tolerance = tolerance;
    options.maxDifferingPixels = maxDiffering;
    return options;
}

} // namespace

TEST(ImageCompare, FindsOneDifferingPixelAnywhere)
{
    const Image expected = Gradient(7, 5);
    EXPECT_EQ("images match", CompareImages(expected.View(), expected.View()).Describe());
    const int positions[][2] = {{0, 0}, {6, 0}, {3, 2}, {0, 4}, {6, 4}};
    for (const auto& position : positions)
    {
        Image actual = expected;
        actual.At(position[0], position[1]) ^= 0x00000001;
        const CompareResult result = CompareImages(expected.View(), actual.View());
        EXPECT_FALSE(result.passed);
        EXPECT_EQ(1, result.differingPixels);
        EXPECT_EQ((std::pair{position[0], position[1]}), (std::pair{result.firstX, result.firstY}));
        EXPECT_EQ(actual.At(position[0], position[1]), result.actualPixel);
        EXPECT_TRUE(CompareImages(expected.View(), actual.View(), Options(0, 1)).passed);
    }
}

TEST(ImageCompare, ToleranceAppliesToEveryChannel)
{
    const Image expected(3, 1, 0x80808080);
    for (int shift = 0; shift < 32; shift += 8)
    {
        Image near = expected;
        near.At(1, 0) += 3u << shift;
        EXPECT_TRUE(CompareImages(expected.View(), near.View(), Options(3, 0)).passed) << shift;
        EXPECT_FALSE(CompareImages(expected.View(), near.View(), Options(2, 0)).passed) << shift;
    }
}

TEST(ImageCompare, CountsAllAndReportsTheFirstInRowOrder)
{
    const Image expected = Gradient(4, 3);
    Image actual = expected;
    actual.At(3, 2) = 0;
    actual.At(2, 1) = 0;
    actual.At(0, 2) = 0;
    const CompareResult result = CompareImages(expected.View(), actual.View(), Options(0, 2));
    EXPECT_FALSE(result.passed);
    EXPECT_EQ(3, result.differingPixels);
    EXPECT_EQ(2, result.firstX);
    EXPECT_EQ(1, result.firstY);
    EXPECT_NE(std::string::npos, result.Describe().find("3 pixels differ, first at (2, 1)"));
}

TEST(ImageCompare, HonoursRowStrideAndIgnoresPadding)
{
    const Image packed = Gradient(3, 4);
    Image padded(5, 4, 0xDEADBEEF); // 3 pixels a row plus 2 of padding
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 3; ++x)
            padded.At(x, y) = packed.At(x, y);
    QzTest::ImageView view = padded.View();
    view.width = 3;
    EXPECT_TRUE(CompareImages(packed.View(), view).passed);
    padded.At(2, 3) = 0;
    EXPECT_EQ(2, CompareImages(packed.View(), view).firstX);
}

TEST(ImageCompare, ImagesThatCannotBeComparedFail)
{
    const Image a = Gradient(3, 3);
    const Image b = Gradient(3, 4);
    CompareResult result = CompareImages(a.View(), b.View(), Options(255, 1000));
    EXPECT_FALSE(result.passed);
    EXPECT_NE(std::string::npos, result.Describe().find("sizes differ"));
    EXPECT_FALSE(CompareImages(Image().View(), Image().View()).passed);
}

TEST(ImageCompare, PngFilesDifferingInOnePixel)
{
    const QzTest::TempFolder folder("image-compare");
    const std::string a = folder / "a.png";
    const std::string b = folder / "b.png";
    QzTest::WritePng(a, 9, 6, [](int x, int y) { return 0xFF000000u | uint32_t(x * y); });
    QzTest::WritePng(b, 9, 6,
                     [](int x, int y)
                     { return 0xFF000000u | uint32_t(x * y) | (x == 8 && y == 5 ? 0x100u : 0u); });
    EXPECT_TRUE(QzTest::ComparePngFiles(a, a).passed);
    EXPECT_NE(std::string::npos,
              QzTest::ComparePngFiles(a, b).Describe().find("1 pixels differ, first at (8, 5)"));
    EXPECT_NE(std::string::npos,
              QzTest::ComparePngFiles(a, a + ".missing").Describe().find("cannot read"));
}
