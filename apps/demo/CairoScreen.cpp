#include "CairoScreen.h"

#include "SdlPresenter.h"

void CCairoScreen::Present(CSdlPresenter& presenter)
{
    presenter.Present(m_device.GetData(), m_device.GetStride());
}
