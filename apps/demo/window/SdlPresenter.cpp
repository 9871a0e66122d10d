#include "SdlPresenter.h"

#include "CSdlDrawListRenderer.h"

#include <SDL.h>

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
    m_pWindow = SDL_CreateWindow(title, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width,
                                 height, SDL_WINDOW_RESIZABLE);
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

bool CSdlPresenter::PollEvents(std::vector<SDL_Event>& events)
{
    events.clear();
    SDL_Event event;
    while (SDL_PollEvent(&event))
    {
        if (event.type == SDL_QUIT)
            return false;
        events.push_back(event);
    }
    return true;
}

void CSdlPresenter::Present(const uint8_t* pixels, int stride, int width, int height)
{
    if (m_pTexture && (width != m_nTextureWidth || height != m_nTextureHeight))
    {
        SDL_DestroyTexture(m_pTexture);
        m_pTexture = nullptr;
    }
    if (!m_pTexture && m_pRenderer)
    {
        m_pTexture = SDL_CreateTexture(m_pRenderer, SDL_PIXELFORMAT_ARGB8888,
                                       SDL_TEXTUREACCESS_STREAMING, width, height);
        m_nTextureWidth = width;
        m_nTextureHeight = height;
    }
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
