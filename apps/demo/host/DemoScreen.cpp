#include "DemoScreen.h"

#include "CairoScreen.h"
#include "DrawListScreen.h"

std::unique_ptr<CDemoScreen> CDemoScreen::Create(DemoRenderer renderer, int width, int height)
{
    if (renderer == DemoRenderer::DrawList)
        return std::make_unique<CDrawListScreen>(width, height);
    return std::make_unique<CCairoScreen>(width, height);
}
