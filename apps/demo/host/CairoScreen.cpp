#include "CairoScreen.h"

#include "SdlPresenter.h"

CCairoScreen::CCairoScreen(int width, int height)
    : m_pDevice(std::make_unique<QzPlatform::CCairoDevice>(width, height))
{
}

void CCairoScreen::Present(CSdlPresenter& presenter)
{
    presenter.Present(m_pDevice->GetData(), m_pDevice->GetStride(), m_pDevice->GetScreenWidth(),
                      m_pDevice->GetScreenHeight());
}

bool CCairoScreen::Resize(int width, int height)
{
    if (width == m_pDevice->GetScreenWidth() && height == m_pDevice->GetScreenHeight())
        return false;
    m_pDevice = std::make_unique<QzPlatform::CCairoDevice>(width, height);
    return true;
}
