// Window mode of the demo: a resizable SDL window that shows the frames the demo draws (the
// cairo device's image, or the draw-list device's lists drawn by the window's renderer), hands
// over the user's SDL events (CSdlInputTranslator makes Win32 input of them) and shows the
// host's cursor.
#pragma once

#include "SdlCursor.h"

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <memory>
#include <vector>

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
    // Replaces events by the user's events since the last call; false once the user closed the
    // window (events then holds what came before the close).
    bool PollEvents(std::vector<SDL_Event>& events);
    // Shows one frame of premultiplied ARGB pixels, width x height, stretched to the window.
    void Present(const uint8_t* pixels, int stride, int width, int height);
    // Draws the device's last list with the window's renderer and shows it.
    void Present(const QzPlatform::CDrawListDevice& device);
    // The host's system cursor (null: none, the host draws its own).
    void ShowCursor(HCURSOR cursor) { m_cursor.Show(cursor); }

private:
    SDL_Window* m_pWindow = nullptr;
    SDL_Renderer* m_pRenderer = nullptr;
    // Made by the first frame that needs it (again when the frame's size changes): the texture
    // for pixels, the renderer for lists.
    SDL_Texture* m_pTexture = nullptr;
    int m_nTextureWidth = 0;
    int m_nTextureHeight = 0;
    std::unique_ptr<QzPlatform::CSdlDrawListRenderer> m_pListRenderer;
    CSdlCursor m_cursor;
};
