// Window mode of the demo: an SDL window that shows the frames the demo draws (the cairo
// device's image, or the draw-list device's lists drawn by the window's renderer) and turns the
// user's mouse and keyboard into the Win32 messages a game host would pass on.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <memory>

namespace QzPlatform
{
class CDrawListDevice;
class CSdlDrawListRenderer;
} // namespace QzPlatform

struct SDL_Window;
struct SDL_Renderer;
struct SDL_Texture;
union SDL_Event;

class CSdlPresenter
{
public:
    CSdlPresenter();
    ~CSdlPresenter();
    CSdlPresenter(const CSdlPresenter&) = delete;
    CSdlPresenter& operator=(const CSdlPresenter&) = delete;

    // False when no display can be opened. The renderer is a GPU one when SDL has one, else
    // SDL's software renderer.
    bool Open(int width, int height, const char* title);
    // The name of the SDL renderer in use ("" before Open).
    const char* GetRendererName() const;
    // Posts the pending user input to the host window; false once the user closed the window.
    bool PumpInput(HWND hostWindow);
    // Shows one frame of premultiplied ARGB pixels.
    void Present(const uint8_t* pixels, int stride);
    // Draws the device's last list with the window's renderer and shows it.
    void Present(const QzPlatform::CDrawListDevice& device);

private:
    void Translate(const SDL_Event& event, HWND hostWindow);

    SDL_Window* m_pWindow = nullptr;
    SDL_Renderer* m_pRenderer = nullptr;
    // Made by the first frame that needs it: the texture for pixels, the renderer for lists.
    SDL_Texture* m_pTexture = nullptr;
    std::unique_ptr<QzPlatform::CSdlDrawListRenderer> m_pListRenderer;
    int m_nWidth = 0;
    int m_nHeight = 0;
    // The input method has a composition in progress (SDL_TEXTEDITING with text).
    bool m_bComposing = false;
};
