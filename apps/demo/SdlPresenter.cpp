#include "SdlPresenter.h"

#include "CSdlDrawListRenderer.h"

#include "platform/system/host/QzHost.h"
#include "platform/system/text/QzCodePage.h"

#include <SDL.h>

#include <string>

namespace
{

WPARAM MouseKeys()
{
    const uint32_t buttons = SDL_GetMouseState(nullptr, nullptr);
    WPARAM keys = 0;
    keys |= (buttons & SDL_BUTTON_LMASK) ? MK_LBUTTON : 0;
    keys |= (buttons & SDL_BUTTON_RMASK) ? MK_RBUTTON : 0;
    keys |= (buttons & SDL_BUTTON_MMASK) ? MK_MBUTTON : 0;
    keys |= (SDL_GetModState() & KMOD_SHIFT) ? MK_SHIFT : 0;
    keys |= (SDL_GetModState() & KMOD_CTRL) ? MK_CONTROL : 0;
    return keys;
}

// The virtual key of an SDL key, for the keys a game GUI reacts to.
int VirtualKey(SDL_Keycode key)
{
    if (key >= SDLK_a && key <= SDLK_z)
        return 'A' + (key - SDLK_a);
    if (key >= SDLK_0 && key <= SDLK_9)
        return '0' + (key - SDLK_0);
    if (key >= SDLK_F1 && key <= SDLK_F12)
        return VK_F1 + (key - SDLK_F1);
    switch (key)
    {
    case SDLK_BACKSPACE:
        return VK_BACK;
    case SDLK_TAB:
        return VK_TAB;
    case SDLK_RETURN:
        return VK_RETURN;
    case SDLK_ESCAPE:
        return VK_ESCAPE;
    case SDLK_SPACE:
        return VK_SPACE;
    case SDLK_PAGEUP:
        return VK_PRIOR;
    case SDLK_PAGEDOWN:
        return VK_NEXT;
    case SDLK_END:
        return VK_END;
    case SDLK_HOME:
        return VK_HOME;
    case SDLK_LEFT:
        return VK_LEFT;
    case SDLK_UP:
        return VK_UP;
    case SDLK_RIGHT:
        return VK_RIGHT;
    case SDLK_DOWN:
        return VK_DOWN;
    case SDLK_DELETE:
        return VK_DELETE;
    case SDLK_LSHIFT:
    case SDLK_RSHIFT:
        return VK_SHIFT;
    case SDLK_LCTRL:
    case SDLK_RCTRL:
        return VK_CONTROL;
    default:
        return 0;
    }
}

UINT ButtonMessage(uint8_t button, bool down)
{
    switch (button)
    {
    case SDL_BUTTON_LEFT:
        return down ? WM_LBUTTONDOWN : WM_LBUTTONUP;
    case SDL_BUTTON_RIGHT:
        return down ? WM_RBUTTONDOWN : WM_RBUTTONUP;
    case SDL_BUTTON_MIDDLE:
        return down ? WM_MBUTTONDOWN : WM_MBUTTONUP;
    default:
        return 0;
    }
}

} // namespace

CSdlPresenter::CSdlPresenter() = default;

CSdlPresenter::~CSdlPresenter()
{
    // The list renderer's textures go before the renderer.
    m_pListRenderer.reset();
    if (m_pTexture)
        SDL_DestroyTexture(m_pTexture);
    if (m_pRenderer)
        SDL_DestroyRenderer(m_pRenderer);
    if (m_pWindow)
        SDL_DestroyWindow(m_pWindow);
    if (m_pWindow || m_pRenderer)
        SDL_Quit();
}

bool CSdlPresenter::Open(int width, int height, const char* title)
{
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        return false;
    m_pWindow =
        SDL_CreateWindow(title, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height, 0);
    if (!m_pWindow)
    {
        SDL_Quit();
        return false;
    }
    m_pRenderer = SDL_CreateRenderer(m_pWindow, -1, SDL_RENDERER_ACCELERATED);
    if (!m_pRenderer)
        m_pRenderer = SDL_CreateRenderer(m_pWindow, -1, SDL_RENDERER_SOFTWARE);
    if (!m_pRenderer)
        return false;
    m_nWidth = width;
    m_nHeight = height;
    SDL_ShowCursor(SDL_DISABLE);
    SDL_StartTextInput();
    return true;
}

const char* CSdlPresenter::GetRendererName() const
{
    SDL_RendererInfo info;
    if (!m_pRenderer || SDL_GetRendererInfo(m_pRenderer, &info) != 0)
        return "";
    return info.name;
}

bool CSdlPresenter::PumpInput(HWND hostWindow)
{
    SDL_Event event;
    while (SDL_PollEvent(&event))
    {
        if (event.type == SDL_QUIT)
            return false;
        Translate(event, hostWindow);
    }
    return true;
}

void CSdlPresenter::Translate(const SDL_Event& event, HWND hostWindow)
{
    switch (event.type)
    {
    case SDL_MOUSEMOTION:
        PostMessageW(hostWindow, WM_MOUSEMOVE, MouseKeys(),
                     MAKELPARAM(event.motion.x, event.motion.y));
        QzPlatform::Host::SetCursorPos(event.motion.x, event.motion.y);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    {
        const UINT message = ButtonMessage(event.button.button, event.type == SDL_MOUSEBUTTONDOWN);
        if (message)
            PostMessageW(hostWindow, message, MouseKeys(),
                         MAKELPARAM(event.button.x, event.button.y));
        break;
    }
    case SDL_MOUSEWHEEL:
    {
        int x = 0;
        int y = 0;
        SDL_GetMouseState(&x, &y);
        // The wheel message carries screen coordinates; the host window sits at the origin.
        const WPARAM wParam = MAKEWPARAM(MouseKeys(), event.wheel.y * WHEEL_DELTA);
        PostMessageW(hostWindow, WM_MOUSEWHEEL, wParam, MAKELPARAM(x, y));
        break;
    }
    case SDL_KEYDOWN:
    case SDL_KEYUP:
    {
        const int vk = VirtualKey(event.key.keysym.sym);
        if (!vk)
            break;
        const bool down = event.type == SDL_KEYDOWN;
        QzPlatform::Host::SetKeyState(vk, down);
        PostMessageW(GetFocus() ? GetFocus() : hostWindow, down ? WM_KEYDOWN : WM_KEYUP,
                     static_cast<WPARAM>(vk), down ? 1 : static_cast<LPARAM>(0xC0000001));
        // The characters TranslateMessage makes of keys that give no text input: Backspace,
        // Enter, Escape, Tab, and Ctrl+letter as its control character (Ctrl+V is 0x16).
        const bool bControl = (SDL_GetModState() & KMOD_CTRL) != 0;
        if (down && (vk == VK_BACK || vk == VK_RETURN || vk == VK_ESCAPE || vk == VK_TAB))
            PostMessageW(GetFocus() ? GetFocus() : hostWindow, WM_CHAR, static_cast<WPARAM>(vk), 1);
        else if (down && bControl && vk >= 'A' && vk <= 'Z')
            PostMessageW(GetFocus() ? GetFocus() : hostWindow, WM_CHAR,
                         static_cast<WPARAM>(vk - 'A' + 1), 1);
        break;
    }
    case SDL_TEXTEDITING:
    {
        // The input method's composition, shown by the focus window as the system shows it.
        const std::wstring text = QzPlatform::Utf8ToWide(event.edit.text);
        m_bComposing = !text.empty();
        QzPlatform::Host::InjectImeComposition(text.c_str());
        break;
    }
    case SDL_TEXTINPUT:
    {
        // Text that ends a composition is the input method's result; other text is typed.
        const std::wstring text = QzPlatform::Utf8ToWide(event.text.text);
        if (m_bComposing && QzPlatform::Host::InjectImeResult(text.c_str()))
        {
            m_bComposing = false;
            break;
        }
        m_bComposing = false;
        HWND target = GetFocus() ? GetFocus() : hostWindow;
        for (wchar_t ch : text)
            PostMessageW(target, WM_CHAR, static_cast<WPARAM>(ch), 1);
        break;
    }
    default:
        break;
    }
}

void CSdlPresenter::Present(const uint8_t* pixels, int stride)
{
    if (!m_pTexture && m_pRenderer)
        m_pTexture = SDL_CreateTexture(m_pRenderer, SDL_PIXELFORMAT_ARGB8888,
                                       SDL_TEXTUREACCESS_STREAMING, m_nWidth, m_nHeight);
    if (!m_pTexture)
        return;
    SDL_UpdateTexture(m_pTexture, nullptr, pixels, stride);
    SDL_RenderClear(m_pRenderer);
    SDL_RenderCopy(m_pRenderer, m_pTexture, nullptr, nullptr);
    SDL_RenderPresent(m_pRenderer);
}

void CSdlPresenter::Present(const QzPlatform::CDrawListDevice& device)
{
    if (!m_pRenderer)
        return;
    if (!m_pListRenderer)
        m_pListRenderer = std::make_unique<QzPlatform::CSdlDrawListRenderer>(m_pRenderer);
    m_pListRenderer->Render(device);
    SDL_RenderPresent(m_pRenderer);
}
