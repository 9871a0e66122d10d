// PNG files for ImageCompare, read with cairo: include this only in tests that link QzGuiCairo
// (which brings cairo). Pixels come out as cairo keeps them, premultiplied ARGB32, so a file
// compares equal to the device surface that was saved into it.
#pragma once

#include "ImageCompare.h"

#include <cairo.h>

#include <string>
#include <utility>

namespace QzTest
{

// Reads a PNG file into `image`; false (and `image` untouched) when it cannot be read.
inline bool ReadPng(const std::string& path, Image& image)
{
    cairo_surface_t* file = cairo_image_surface_create_from_png(path.c_str());
    if (cairo_surface_status(file) != CAIRO_STATUS_SUCCESS)
    {
        cairo_surface_destroy(file);
        return false;
    }
    Image pixels(cairo_image_surface_get_width(file), cairo_image_surface_get_height(file));
    cairo_surface_t* target = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels.pixels.data()), CAIRO_FORMAT_ARGB32, pixels.width,
        pixels.height, pixels.width * 4);
    cairo_t* cr = cairo_create(target);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(cr, file, 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(target);
    cairo_surface_destroy(file);
    image = std::move(pixels);
    return true;
}

// Compares two PNG files pixel by pixel; a file that cannot be read is reported as the error.
inline CompareResult ComparePngFiles(const std::string& expectedPath, const std::string& actualPath,
                                     const CompareOptions& options = CompareOptions())
{
    Image expected;
    Image actual;
    CompareResult result;
    if (!ReadPng(expectedPath, expected))
        result.error = "cannot read " + expectedPath;
    else if (!ReadPng(actualPath, actual))
        result.error = "cannot read " + actualPath;
    else
        result = CompareImages(expected.View(), actual.View(), options);
    return result;
}

} // namespace QzTest
