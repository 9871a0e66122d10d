// Pixel comparison of two ARGB32 images for drawing tests: a per-channel tolerance and a number
// of pixels allowed to differ beyond it, and a report of how many differ and where the first
// one is. PNG files are compared through ImageComparePng.h (it needs cairo).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace QzTest
{

// Pixels that someone else owns: `height` rows `stride` bytes apart, each row `width` pixels of
// 32 bits (0xAARRGGBB in native byte order, as cairo's ARGB32 images keep them).
struct ImageView
{
    const uint8_t* pData = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
};

// Pixels owned, rows packed.
struct Image
{
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    Image() = default;
    Image(int imageWidth, int imageHeight, uint32_t fill = 0);
    uint32_t& At(int x, int y) { return pixels[static_cast<size_t>(y) * width + x]; }
    uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
    ImageView View() const;
};

struct CompareOptions
{
    int tolerance = 0;              // largest difference allowed in each of A, R, G, B
    int64_t maxDifferingPixels = 0; // pixels allowed beyond the tolerance
};

struct CompareResult
{
    bool passed = false;
    std::string error; // set when the images could not be compared at all
    int64_t differingPixels = 0;
    int firstX = -1; // first differing pixel in row order
    int firstY = -1;
    uint32_t expectedPixel = 0;
    uint32_t actualPixel = 0;

    // One line for a failure message: the error, or the count and the first difference.
    std::string Describe() const;
};

// Compares every pixel; images of different sizes or without pixels are not comparable.
CompareResult CompareImages(const ImageView& expected, const ImageView& actual,
                            const CompareOptions& options = CompareOptions());

} // namespace QzTest
