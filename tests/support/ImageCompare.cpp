#include "ImageCompare.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace QzTest
{

namespace
{

uint32_t ReadPixel(const ImageView& view, int x, int y)
{
    uint32_t pixel = 0;
    const uint8_t* row = view.pData + static_cast<size_t>(y) * static_cast<size_t>(view.stride);
    std::memcpy(&pixel, row + static_cast<size_t>(x) * 4, sizeof pixel);
    return pixel;
}

bool WithinTolerance(uint32_t a, uint32_t b, int tolerance)
{
    for (int shift = 0; shift < 32; shift += 8)
    {
        const int channelA = static_cast<int>((a >> shift) & 0xFF);
        const int channelB = static_cast<int>((b >> shift) & 0xFF);
        if (std::abs(channelA - channelB) > tolerance)
            return false;
    }
    return true;
}

std::string CheckComparable(const ImageView& expected, const ImageView& actual)
{
    if (expected.pData == nullptr || actual.pData == nullptr)
        return "no pixels to compare";
    if (expected.width <= 0 || expected.height <= 0)
        return "empty image";
    if (expected.stride < expected.width * 4 || actual.stride < actual.width * 4)
        return "row stride shorter than a row";
    if (expected.width != actual.width || expected.height != actual.height)
        return "sizes differ: expected " + std::to_string(expected.width) + "x" +
               std::to_string(expected.height) + ", actual " + std::to_string(actual.width) + "x" +
               std::to_string(actual.height);
    return std::string();
}

std::string Hex(uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", value);
    return text;
}

} // namespace

Image::Image(int imageWidth, int imageHeight, uint32_t fill)
    : width(imageWidth), height(imageHeight),
      pixels(static_cast<size_t>(imageWidth) * static_cast<size_t>(imageHeight), fill)
{
}

ImageView Image::View() const
{
    ImageView view;
    view.pData = reinterpret_cast<const uint8_t*>(pixels.data());
    view.width = width;
    view.height = height;
    view.stride = width * 4;
    return view;
}

CompareResult CompareImages(const ImageView& expected, const ImageView& actual,
                            const CompareOptions& options)
{
    CompareResult result;
    result.error = CheckComparable(expected, actual);
    if (!result.error.empty())
        return result;
    for (int y = 0; y < expected.height; ++y)
    {
        for (int x = 0; x < expected.width; ++x)
        {
            const uint32_t want = ReadPixel(expected, x, y);
            const uint32_t got = ReadPixel(actual, x, y);
            if (WithinTolerance(want, got, options.tolerance))
                continue;
            if (result.differingPixels == 0)
            {
                result.firstX = x;
                result.firstY = y;
                result.expectedPixel = want;
                result.actualPixel = got;
            }
            ++result.differingPixels;
        }
    }
    result.passed = result.differingPixels <= options.maxDifferingPixels;
    return result;
}

std::string CompareResult::Describe() const
{
    if (!error.empty())
        return "images not comparable: " + error;
    if (differingPixels == 0)
        return "images match";
    return std::to_string(differingPixels) + " pixels differ, first at (" + std::to_string(firstX) +
           ", " + std::to_string(firstY) + "): expected " + Hex(expectedPixel) + ", actual " +
           Hex(actualPixel);
}

} // namespace QzTest
