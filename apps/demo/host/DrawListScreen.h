// The draw-list device as the demo's screen. The window's SDL renderer draws its lists; for
// screenshots SDL's software renderer draws them into an image (made on the first shot) that
// is written as a PNG file, so headless runs show what the renderer makes of the lists.
#pragma once

#include "DemoScreen.h"

#include "CDrawListDevice.h"

#include <memory>

struct SDL_Renderer;
struct SDL_Surface;
typedef struct _cairo_surface cairo_surface_t;

namespace QzPlatform
{
class CSdlDrawListRenderer;
}

class CDrawListScreen : public CDemoScreen
{
public:
    CDrawListScreen(int width, int height);
    ~CDrawListScreen() override;

    QzPlatform::IRenderDevice& GetDevice() override { return m_device; }
    void Present(CSdlPresenter& presenter) override;
    bool SavePng(const std::string& path) override;
    // The device keeps its atlases and takes the new size; the shot image is made anew.
    bool Resize(int width, int height) override;

private:
    bool OpenShotTarget();
    void CloseShotTarget();

    QzPlatform::CDrawListDevice m_device;
    // The shot image: cairo's, so that it can be written as PNG, drawn into by SDL's software
    // renderer through a surface on the same pixels.
    cairo_surface_t* m_pImage = nullptr;
    SDL_Surface* m_pSurface = nullptr;
    SDL_Renderer* m_pRenderer = nullptr;
    std::unique_ptr<QzPlatform::CSdlDrawListRenderer> m_pListRenderer;
};
