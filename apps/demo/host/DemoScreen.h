// What the demo draws into: the render device that --renderer chose, the way its frames reach
// the window and the way a frame becomes a screenshot.
#pragma once

#include "DemoOptions.h"

#include <memory>
#include <string>

namespace QzPlatform
{
class IRenderDevice;
}

class CSdlPresenter;

class CDemoScreen
{
public:
    virtual ~CDemoScreen() = default;

    virtual QzPlatform::IRenderDevice& GetDevice() = 0;
    // Shows the last frame drawn in the window.
    virtual void Present(CSdlPresenter& presenter) = 0;
    // Writes the last frame drawn as a PNG file; false when it cannot.
    virtual bool SavePng(const std::string& path) = 0;
    // The screen becomes width x height pixels (a resized window) from the next frame on; true
    // when that made a new device, which the caller installs in place of the old one.
    virtual bool Resize(int width, int height) = 0;

    // The screen of the renderer (Default is cairo) with width x height pixels.
    static std::unique_ptr<CDemoScreen> Create(DemoRenderer renderer, int width, int height);
};
