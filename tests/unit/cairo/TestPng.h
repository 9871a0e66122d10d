// Small PNG files for the cairo tests, written with cairo itself.
#pragma once

#include <gtest/gtest.h>

#include <cairo.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>

namespace QzTest
{

// Writes a width x height PNG whose pixel (x, y) is pixel(x, y), premultiplied ARGB.
inline void WritePng(const std::string& path, int width, int height,
                     const std::function<uint32_t(int, int)>& pixel)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_surface_flush(surface);
    unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            const uint32_t value = pixel(x, y);
            std::memcpy(data + y * stride + x * 4, &value, sizeof value);
        }
    }
    cairo_surface_mark_dirty(surface);
    ASSERT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_write_to_png(surface, path.c_str()));
    cairo_surface_destroy(surface);
}

} // namespace QzTest
