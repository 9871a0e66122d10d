// What the draw-list tests share: a temporary folder for PNG fixtures (removed when the test
// ends, however it ends) and a small reference rasteriser that draws a device's list into pixels
// so that they can be set against the cairo device's.
#pragma once

#include "CDrawListDevice.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace QzTest
{

// A test's temporary folder for PNG fixtures.
class PngFolder
{
public:
    std::string Path(const std::string& name) const { return m_folder / name; }

    // Writes a width x height PNG whose pixel (x, y) is pixel(x, y), straight ARGB.
    std::string WritePng(const std::string& name, int width, int height,
                         const std::function<uint32_t(int, int)>& pixel) const
    {
        return WritePngAt(Path(name), width, height, pixel);
    }

    static std::string WritePngAt(const std::string& path, int width, int height,
                                  const std::function<uint32_t(int, int)>& pixel)
    {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
        cairo_surface_flush(surface);
        unsigned char* data = cairo_image_surface_get_data(surface);
        const int stride = cairo_image_surface_get_stride(surface);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
            {
                const uint32_t value = Premultiply(pixel(x, y));
                std::memcpy(data + y * stride + x * 4, &value, sizeof value);
            }
        cairo_surface_mark_dirty(surface);
        EXPECT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_write_to_png(surface, path.c_str()));
        cairo_surface_destroy(surface);
        return path;
    }

    static uint32_t Premultiply(uint32_t argb)
    {
        const uint32_t alpha = argb >> 24;
        uint32_t result = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8)
            result |= (((argb >> shift) & 0xFF) * alpha + 127) / 255 << shift;
        return result;
    }

private:
    TempFolder m_folder{"drawlist"};
};

// Opaque pixels of a screen drawn from a draw list: each triangle covers the pixel centres
// inside it (an edge shared by two triangles belongs to one of them), inside the command's clip;
// texels are sampled at the nearest texel and blended "over" with straight alpha.
class ListRaster
{
public:
    ListRaster(const QzPlatform::CDrawListDevice& device, uint32_t background)
        : m_nWidth(device.GetScreenWidth()), m_nHeight(device.GetScreenHeight()),
          m_vecPixels(static_cast<size_t>(m_nWidth) * m_nHeight, background)
    {
        const QzPlatform::DrawList& list = device.GetDrawList();
        for (const QzPlatform::DrawCommand& command : list.commands)
        {
            const QzPlatform::DrawAtlas* atlas = device.FindAtlas(command.atlas);
            EXPECT_NE(nullptr, atlas);
            if (atlas == nullptr)
                continue;
            for (uint32_t i = 0; i + 2 < command.indexCount; i += 3)
            {
                const uint32_t* corner = &list.indices[command.indexOffset + i];
                Triangle(list.vertices[corner[0]], list.vertices[corner[1]],
                         list.vertices[corner[2]], *atlas, command.clip);
            }
        }
    }

    uint32_t At(int x, int y) const { return m_vecPixels[static_cast<size_t>(y) * m_nWidth + x]; }

private:
    static double Edge(const QzPlatform::DrawVertex& a, const QzPlatform::DrawVertex& b, double x,
                       double y)
    {
        return (double(b.x) - a.x) * (y - a.y) - (double(b.y) - a.y) * (x - a.x);
    }
    static bool Owns(const QzPlatform::DrawVertex& a, const QzPlatform::DrawVertex& b)
    {
        return b.y > a.y || (b.y == a.y && b.x < a.x);
    }

    void Triangle(QzPlatform::DrawVertex a, QzPlatform::DrawVertex b, QzPlatform::DrawVertex c,
                  const QzPlatform::DrawAtlas& atlas, const QzPlatform::RectI& clip)
    {
        const double area = Edge(a, b, c.x, c.y);
        if (area == 0.0)
            return;
        if (area < 0.0)
            std::swap(b, c);
        const int left = std::max(clip.left, int(std::floor(std::min({a.x, b.x, c.x}))));
        const int right = std::min(clip.right, int(std::ceil(std::max({a.x, b.x, c.x}))));
        const int top = std::max(clip.top, int(std::floor(std::min({a.y, b.y, c.y}))));
        const int bottom = std::min(clip.bottom, int(std::ceil(std::max({a.y, b.y, c.y}))));
        for (int y = std::max(top, 0); y < std::min(bottom, m_nHeight); ++y)
            for (int x = std::max(left, 0); x < std::min(right, m_nWidth); ++x)
            {
                const double px = x + 0.5;
                const double py = y + 0.5;
                const double wa = Edge(b, c, px, py);
                const double wb = Edge(c, a, px, py);
                const double wc = Edge(a, b, px, py);
                if (!Inside(wa, b, c) || !Inside(wb, c, a) || !Inside(wc, a, b))
                    continue;
                const double sum = wa + wb + wc;
                const double u = (wa * a.u + wb * b.u + wc * c.u) / sum;
                const double v = (wa * a.v + wb * b.v + wc * c.v) / sum;
                Blend(x, y, Sample(atlas, u, v), a.argb);
            }
    }
    static bool Inside(double weight, const QzPlatform::DrawVertex& from,
                       const QzPlatform::DrawVertex& to)
    {
        return weight > 0.0 || (weight == 0.0 && Owns(from, to));
    }
    static uint32_t Sample(const QzPlatform::DrawAtlas& atlas, double u, double v)
    {
        const int x = std::min(std::max(int(std::floor(u * atlas.width)), 0), atlas.width - 1);
        const int y = std::min(std::max(int(std::floor(v * atlas.height)), 0), atlas.height - 1);
        return atlas.texels[static_cast<size_t>(y) * atlas.width + x];
    }
    void Blend(int x, int y, uint32_t texel, uint32_t colour)
    {
        uint32_t& pixel = m_vecPixels[static_cast<size_t>(y) * m_nWidth + x];
        const double alpha = ((texel >> 24) / 255.0) * ((colour >> 24) / 255.0);
        uint32_t result = 0xFF000000u;
        for (int shift = 0; shift < 24; shift += 8)
        {
            const double source = ((texel >> shift) & 0xFF) * ((colour >> shift) & 0xFF) / 255.0;
            const double target = (pixel >> shift) & 0xFF;
            result |= uint32_t(std::lround(source * alpha + target * (1.0 - alpha))) << shift;
        }
        pixel = result;
    }

    int m_nWidth;
    int m_nHeight;
    std::vector<uint32_t> m_vecPixels;
};

// The largest difference of one channel between two pixels.
inline int ChannelDistance(uint32_t a, uint32_t b)
{
    int distance = 0;
    for (int shift = 0; shift < 32; shift += 8)
        distance =
            std::max(distance, std::abs(int((a >> shift) & 0xFF) - int((b >> shift) & 0xFF)));
    return distance;
}

} // namespace QzTest
