// The SDL renderer of draw lists on SDL's software renderer: what it leaves in the pixels
// (clear colour, straight-alpha blending, clips, image texels), which atlases it keeps as
// textures, and that drawing an unchanged frame again uploads and allocates nothing.
#include "AllocationCounter.h"
#include "CDrawListDevice.h"
#include "CSdlDrawListRenderer.h"
#include "support/TempFolder.h"

#include <SDL.h>
#include <cairo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace
{

using QzPlatform::CDrawListDevice;
using QzPlatform::CSdlDrawListRenderer;

constexpr int kWidth = 64;
constexpr int kHeight = 48;

// A software renderer drawing into an ARGB8888 surface the test reads.
class SoftwareTarget
{
public:
    SoftwareTarget()
    {
        m_pSurface =
            SDL_CreateRGBSurfaceWithFormat(0, kWidth, kHeight, 32, SDL_PIXELFORMAT_ARGB8888);
        m_pRenderer = m_pSurface ? SDL_CreateSoftwareRenderer(m_pSurface) : nullptr;
    }
    ~SoftwareTarget()
    {
        if (m_pRenderer)
            SDL_DestroyRenderer(m_pRenderer);
        if (m_pSurface)
            SDL_FreeSurface(m_pSurface);
    }
    SoftwareTarget(const SoftwareTarget&) = delete;
    SoftwareTarget& operator=(const SoftwareTarget&) = delete;

    SDL_Renderer* Renderer() const { return m_pRenderer; }
    uint32_t At(int x, int y) const
    {
        SDL_RenderFlush(m_pRenderer);
        uint32_t pixel = 0;
        const auto* row = static_cast<const uint8_t*>(m_pSurface->pixels) + y * m_pSurface->pitch;
        std::memcpy(&pixel, row + x * 4, sizeof pixel);
        return pixel;
    }

private:
    SDL_Surface* m_pSurface = nullptr;
    SDL_Renderer* m_pRenderer = nullptr;
};

// The colour channels of a and b within 1 (rounding of the blend). Alpha is left out: SDL's
// software blending rounds an opaque target's alpha down under translucent texels (0xFD).
bool Near(uint32_t a, uint32_t b)
{
    for (int shift = 0; shift < 24; shift += 8)
    {
        if (std::abs(int((a >> shift) & 0xFF) - int((b >> shift) & 0xFF)) > 1)
            return false;
    }
    return true;
}

// Writes a 2 x 2 PNG: opaque red, opaque green, blue at half opacity, fully transparent.
std::string WriteQuadPng(const std::string& path)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 2, 2);
    cairo_surface_flush(surface);
    const uint32_t premultiplied[4] = {0xFFFF0000, 0xFF00FF00, 0x80000080, 0x00000000};
    unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    std::memcpy(data, premultiplied, 8);
    std::memcpy(data + stride, premultiplied + 2, 8);
    cairo_surface_mark_dirty(surface);
    EXPECT_EQ(CAIRO_STATUS_SUCCESS, cairo_surface_write_to_png(surface, path.c_str()));
    cairo_surface_destroy(surface);
    return path;
}

class SdlDrawListRenderer : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_NE(nullptr, m_target.Renderer()) << SDL_GetError(); }

    template <typename Draw> void Frame(Draw draw)
    {
        m_device.BeginFrame();
        draw(m_device);
        m_device.EndFrame();
        ASSERT_TRUE(m_renderer.Render(m_device)) << SDL_GetError();
    }

    // Draws a frame and returns the allocations its Render made.
    template <typename Draw> int RenderCounted(Draw draw)
    {
        m_device.BeginFrame();
        draw(m_device);
        m_device.EndFrame();
        CAllocationCounter allocations;
        const bool ok = m_renderer.Render(m_device);
        const int count = allocations.Count();
        EXPECT_TRUE(ok) << SDL_GetError();
        return count;
    }

    const QzTest::TempFolder m_folder{"sdl-renderer"};
    SoftwareTarget m_target;
    CDrawListDevice m_device{kWidth, kHeight};
    CSdlDrawListRenderer m_renderer{m_target.Renderer()};
};

TEST_F(SdlDrawListRenderer, ClearsFillsBlendsAndClips)
{
    m_device.SetClearColor(0xFF102030);
    Frame(
        [](CDrawListDevice& device)
        {
            device.FillRect(0, 0, 10, 10, 0xFFFF8000);
            device.FillRect(20, 0, 30, 10, 0x80FFFFFF); // half white over the clear colour
            device.PushClip({40, 0, 45, 48});
            device.FillRect(30, 20, 60, 30, 0xFF00FF00);
            device.PopClip();
        });
    const struct
    {
        int x, y;
        uint32_t expected;
    } cases[] = {
        {5, 5, 0xFFFF8000},   {9, 9, 0xFFFF8000},   {10, 10, 0xFF102030},
        {25, 5, 0xFF888F97},  {40, 25, 0xFF00FF00}, {44, 25, 0xFF00FF00},
        {39, 25, 0xFF102030}, {45, 25, 0xFF102030}, {63, 47, 0xFF102030},
    };
    for (const auto& c : cases)
        EXPECT_TRUE(Near(c.expected, m_target.At(c.x, c.y)))
            << c.x << "," << c.y << ": " << std::hex << m_target.At(c.x, c.y);
}

TEST_F(SdlDrawListRenderer, ImagesKeepTheirTexelsAndStraightAlpha)
{
    const QzPlatform::TextureId image = m_device.LoadTexture(WriteQuadPng(m_folder / "quad.png"));
    ASSERT_NE(0u, image);
    m_device.SetClearColor(0xFF000000);
    Frame(
        [image](CDrawListDevice& device) {
            device.DrawTexture(image, {0, 0, 2, 2}, 10, 10, 2, 2, 255, 1.0f);
        });
    EXPECT_TRUE(Near(0xFFFF0000, m_target.At(10, 10))) << std::hex << m_target.At(10, 10);
    EXPECT_TRUE(Near(0xFF00FF00, m_target.At(11, 10))) << std::hex << m_target.At(11, 10);
    EXPECT_TRUE(Near(0xFF000080, m_target.At(10, 11))) << std::hex << m_target.At(10, 11);
    EXPECT_TRUE(Near(0xFF000000, m_target.At(11, 11))) << std::hex << m_target.At(11, 11);
}

TEST_F(SdlDrawListRenderer, OneTexturePerAtlasUploadedOnlyWhenItChanges)
{
    const QzPlatform::TextureId image = m_device.LoadTexture(WriteQuadPng(m_folder / "quad.png"));
    const auto draw = [image](CDrawListDevice& device)
    {
        device.FillRect(0, 0, 8, 8, 0xFFFFFFFF);
        device.DrawTexture(image, {0, 0, 2, 2}, 10, 10, 2, 2, 255, 1.0f);
        device.DrawText(2, 20, "Abc", QzPlatform::FontSpec(), 0xFFFFFFFF, 0);
    };
    const int firstFrame = RenderCounted(draw);
    EXPECT_EQ(m_device.GetAtlasCount(), m_renderer.GetTextureCount());
    const uint64_t uploads = m_renderer.GetUploadCount();
    EXPECT_GE(uploads, 1u);

    // The same frame again: the device's list is rebuilt, the renderer's work is steady.
    const int secondFrame = RenderCounted(draw);
    EXPECT_EQ(uploads, m_renderer.GetUploadCount());
    if (firstFrame == 0)
        GTEST_SKIP() << "allocations are not counted (a memory checker replaced operator new)";
    EXPECT_EQ(0, secondFrame);

    // Atlases that vanish lose their textures.
    m_device.ClearCaches();
    Frame([](CDrawListDevice& device) { device.FillRect(0, 0, 8, 8, 0xFFFFFFFF); });
    EXPECT_EQ(m_device.GetAtlasCount(), m_renderer.GetTextureCount());
}

} // namespace
