#include "CursorImage.h"

#include <cairo.h>

#include <algorithm>
#include <cstring>
#include <fstream>

namespace
{

const size_t kMaxFileBytes = 1 << 20;
const uint8_t kPngSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

uint32_t Read16(const std::vector<uint8_t>& bytes, size_t pos)
{
    return static_cast<uint32_t>(bytes[pos] | bytes[pos + 1] << 8);
}

uint32_t Read32(const std::vector<uint8_t>& bytes, size_t pos)
{
    return Read16(bytes, pos) | Read16(bytes, pos + 2) << 16;
}

bool IsPng(const std::vector<uint8_t>& bytes, size_t pos)
{
    return bytes.size() >= pos + sizeof kPngSignature &&
           std::memcmp(bytes.data() + pos, kPngSignature, sizeof kPngSignature) == 0;
}

struct PngReader
{
    const uint8_t* data;
    size_t left;
};

cairo_status_t ReadPngBytes(void* closure, unsigned char* out, unsigned int length)
{
    auto* reader = static_cast<PngReader*>(closure);
    if (length > reader->left)
        return CAIRO_STATUS_READ_ERROR;
    std::memcpy(out, reader->data, length);
    reader->data += length;
    reader->left -= length;
    return CAIRO_STATUS_SUCCESS;
}

uint32_t Unpremultiply(uint32_t pixel)
{
    const uint32_t alpha = pixel >> 24;
    if (alpha == 0)
        return 0;
    const auto channel = [alpha](uint32_t value) { return (value * 255 + alpha / 2) / alpha; };
    return alpha << 24 | channel((pixel >> 16) & 0xFF) << 16 | channel((pixel >> 8) & 0xFF) << 8 |
           channel(pixel & 0xFF);
}

bool DecodePng(const uint8_t* data, size_t size, CursorImage& image)
{
    PngReader reader = {data, size};
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(ReadPngBytes, &reader);
    const bool ok = cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS &&
                    cairo_image_surface_get_width(surface) <= kMaxCursorSide &&
                    cairo_image_surface_get_height(surface) <= kMaxCursorSide;
    if (ok)
    {
        cairo_surface_flush(surface);
        image.width = cairo_image_surface_get_width(surface);
        image.height = cairo_image_surface_get_height(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        const uint8_t* pixels = cairo_image_surface_get_data(surface);
        image.argb.resize(static_cast<size_t>(image.width) * static_cast<size_t>(image.height));
        for (int y = 0; y < image.height; ++y)
        {
            for (int x = 0; x < image.width; ++x)
            {
                uint32_t pixel = 0;
                std::memcpy(&pixel, pixels + static_cast<size_t>(y) * stride + x * 4, 4);
                image.argb[static_cast<size_t>(y) * image.width + x] = Unpremultiply(pixel);
            }
        }
    }
    cairo_surface_destroy(surface);
    return ok;
}

// A 32-bit BITMAPINFOHEADER image of a .cur entry: rows from the bottom, twice the height (the
// colour rows, then the AND mask, which a 32-bit image's alpha makes unneeded).
bool DecodeBitmap(const std::vector<uint8_t>& bytes, size_t pos, CursorImage& image)
{
    if (bytes.size() < pos + 40 || Read32(bytes, pos) < 40)
        return false;
    const auto width = static_cast<int32_t>(Read32(bytes, pos + 4));
    const auto doubleHeight = static_cast<int32_t>(Read32(bytes, pos + 8));
    const uint32_t bitCount = Read16(bytes, pos + 14);
    const uint32_t compression = Read32(bytes, pos + 16);
    const int height = doubleHeight / 2;
    if (bitCount != 32 || compression != 0 || width <= 0 || height <= 0 || width > kMaxCursorSide ||
        height > kMaxCursorSide)
        return false;
    const size_t first = pos + Read32(bytes, pos);
    const size_t rowBytes = static_cast<size_t>(width) * 4;
    if (bytes.size() < first + rowBytes * static_cast<size_t>(height))
        return false;
    image.width = width;
    image.height = height;
    image.argb.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (int y = 0; y < height; ++y)
    {
        const size_t row = first + rowBytes * static_cast<size_t>(height - 1 - y);
        for (int x = 0; x < width; ++x)
            image.argb[static_cast<size_t>(y) * width + x] = Read32(bytes, row + x * 4);
    }
    return true;
}

} // namespace

bool DecodeCursorImage(const std::vector<uint8_t>& bytes, CursorImage& image)
{
    image = CursorImage();
    if (IsPng(bytes, 0))
        return DecodePng(bytes.data(), bytes.size(), image);
    // ICONDIR of a cursor (type 2) with at least one entry; the first entry is shown.
    if (bytes.size() < 6 + 16 || Read16(bytes, 0) != 0 || Read16(bytes, 2) != 2 ||
        Read16(bytes, 4) == 0)
        return false;
    const int hotX = static_cast<int>(Read16(bytes, 10));
    const int hotY = static_cast<int>(Read16(bytes, 12));
    const size_t size = Read32(bytes, 14);
    const size_t offset = Read32(bytes, 18);
    if (offset >= bytes.size() || size > bytes.size() - offset)
        return false;
    const bool ok = IsPng(bytes, offset) ? DecodePng(bytes.data() + offset, size, image)
                                         : DecodeBitmap(bytes, offset, image);
    if (!ok)
        return false;
    image.hotX = std::min(hotX, image.width - 1);
    image.hotY = std::min(hotY, image.height - 1);
    return true;
}

bool LoadCursorImage(const std::string& path, CursorImage& image)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    std::vector<uint8_t> bytes;
    char buffer[4096];
    while (file.read(buffer, sizeof buffer) || file.gcount() > 0)
    {
        bytes.insert(bytes.end(), buffer, buffer + file.gcount());
        if (bytes.size() > kMaxFileBytes)
            return false;
    }
    return DecodeCursorImage(bytes, image);
}
