#include "DrawListScreen.h"

#include "CSdlDrawListRenderer.h"
#include "SdlPresenter.h"

#include <SDL.h>
#include <cairo.h>

#include <cstdio>
#include <cstring>

namespace
{

uint32_t Premultiply(uint32_t pixel)
{
    const uint32_t alpha = pixel >> 24;
    const auto scale = [alpha](uint32_t channel) { return (channel * alpha + 127) / 255; };
    return alpha << 24 | scale((pixel >> 16) & 0xFF) << 16 | scale((pixel >> 8) & 0xFF) << 8 |
           scale(pixel & 0xFF);
}

// The drawn pixels as cairo keeps them. Over an opaque clear colour every pixel is opaque;
// SDL's software blending only rounds the alpha below 255 under translucent texels, so it is
// set back. Over a translucent clear colour the straight-alpha pixels are premultiplied.
void ToCairoPixels(uint8_t* data, int width, int height, int stride, bool bOpaque)
{
    for (int y = 0; y < height; ++y)
    {
        uint8_t* row = data + static_cast<size_t>(y) * static_cast<size_t>(stride);
        for (int x = 0; x < width; ++x)
        {
            uint32_t pixel;
            std::memcpy(&pixel, row + x * 4, sizeof pixel);
            pixel = bOpaque ? pixel | 0xFF000000 : Premultiply(pixel);
            std::memcpy(row + x * 4, &pixel, sizeof pixel);
        }
    }
}

} // namespace

CDrawListScreen::CDrawListScreen(int width, int height) : m_device(width, height) {}

CDrawListScreen::~CDrawListScreen()
{
    CloseShotTarget();
}

void CDrawListScreen::CloseShotTarget()
{
    // The textures go before their renderer, the renderer before the pixels it draws into.
    m_pListRenderer.reset();
    if (m_pRenderer)
        SDL_DestroyRenderer(m_pRenderer);
    m_pRenderer = nullptr;
    if (m_pSurface)
        SDL_FreeSurface(m_pSurface);
    m_pSurface = nullptr;
    if (m_pImage)
        cairo_surface_destroy(m_pImage);
    m_pImage = nullptr;
}

void CDrawListScreen::Present(CSdlPresenter& presenter)
{
    presenter.Present(m_device);
}

bool CDrawListScreen::Resize(int width, int height)
{
    m_device.SetScreenSize(width, height);
    CloseShotTarget();
    return false;
}

bool CDrawListScreen::OpenShotTarget()
{
    const int width = m_device.GetScreenWidth();
    const int height = m_device.GetScreenHeight();
    m_pImage = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(m_pImage) != CAIRO_STATUS_SUCCESS)
    {
        CloseShotTarget();
        return false;
    }
    m_pSurface = SDL_CreateRGBSurfaceWithFormatFrom(
        cairo_image_surface_get_data(m_pImage), width, height, 32,
        cairo_image_surface_get_stride(m_pImage), SDL_PIXELFORMAT_ARGB8888);
    if (m_pSurface)
        m_pRenderer = SDL_CreateSoftwareRenderer(m_pSurface);
    if (!m_pRenderer)
    {
        std::fprintf(stderr, "qzgui-demo: SDL's software renderer: %s\n", SDL_GetError());
        CloseShotTarget();
        return false;
    }
    m_pListRenderer = std::make_unique<QzPlatform::CSdlDrawListRenderer>(m_pRenderer);
    return true;
}

bool CDrawListScreen::SavePng(const std::string& path)
{
    if (!m_pListRenderer && !OpenShotTarget())
        return false;
    cairo_surface_flush(m_pImage);
    if (!m_pListRenderer->Render(m_device))
        std::fprintf(stderr, "qzgui-demo: SDL: %s\n", SDL_GetError());
    SDL_RenderFlush(m_pRenderer);
    ToCairoPixels(cairo_image_surface_get_data(m_pImage), m_device.GetScreenWidth(),
                  m_device.GetScreenHeight(), cairo_image_surface_get_stride(m_pImage),
                  (m_device.GetClearColor() >> 24) == 0xFF);
    cairo_surface_mark_dirty(m_pImage);
    return cairo_surface_write_to_png(m_pImage, path.c_str()) == CAIRO_STATUS_SUCCESS;
}
