// The cairo software device as the demo's screen: its image goes to the window as a texture and
// to screenshots as it is. The device's surface has a fixed size, so a new size makes a new
// device; the images and texts it had are loaded again on first use.
#pragma once

#include "DemoScreen.h"

#include "CCairoDevice.h"

#include <memory>

class CCairoScreen : public CDemoScreen
{
public:
    CCairoScreen(int width, int height);

    QzPlatform::IRenderDevice& GetDevice() override { return *m_pDevice; }
    void Present(CSdlPresenter& presenter) override;
    bool SavePng(const std::string& path) override { return m_pDevice->SavePng(path); }
    bool Resize(int width, int height) override;

private:
    std::unique_ptr<QzPlatform::CCairoDevice> m_pDevice;
};
