// Window mode of the demo: an SDL window that shows the frames the cairo device draws and turns
// the user's mouse and keyboard into the Win32 messages a game host would pass on.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>

struct SDL_Window;
struct SDL_Renderer;
struct SDL_Texture;
union SDL_Event;

class CSdlPresenter
{
public:
    CSdlPresenter() = default;
    ~CSdlPresenter();
    CSdlPresenter(const CSdlPresenter&) = delete;
    CSdlPresenter& operator=(const CSdlPresenter&) = delete;

    // False when no display can be opened.
    bool Open(int width, int height, const char* title);
    // Posts the pending user input to the host window; false once the user closed the window.
    bool PumpInput(HWND hostWindow);
    // Shows one frame of premultiplied ARGB pixels.
    void Present(const uint8_t* pixels, int stride);

private:
    void Translate(const SDL_Event& event, HWND hostWindow);

    SDL_Window* m_pWindow = nullptr;
    SDL_Renderer* m_pRenderer = nullptr;
    SDL_Texture* m_pTexture = nullptr;
    int m_nWidth = 0;
    int m_nHeight = 0;
    // The input method has a composition in progress (SDL_TEXTEDITING with text).
    bool m_bComposing = false;
};
