// The cairo software device as the demo's screen: its image goes to the window as a texture and
// to screenshots as it is.
#pragma once

#include "DemoScreen.h"

#include "CCairoDevice.h"

class CCairoScreen : public CDemoScreen
{
public:
    CCairoScreen(int width, int height) : m_device(width, height) {}

    QzPlatform::IRenderDevice& GetDevice() override { return m_device; }
    void Present(CSdlPresenter& presenter) override;
    bool SavePng(const std::string& path) override { return m_device.SavePng(path); }

private:
    QzPlatform::CCairoDevice m_device;
};
