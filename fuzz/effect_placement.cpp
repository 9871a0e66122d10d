// ini/Gui3DEffect.ini into the placement table, and its values used as a window uses them:
// parts of a 3D effect holder placed, fitted to the window, scaled, rotated and drawn (parts
// "A" and "B" are animation sections of the fixed ani/Control.ani).
#include "FuzzSupport.h"

#include "effects/Gui3DEffect.h"
#include "effects/GuiEffectInfo.h"
#include "platform/render/DataSet.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ani/Control.ani", "[A]\nFrameAmount=2\nFrame0=a.png\nFrame1=b.png\n"
                                         "[B]\nFrameAmount=1\nFrame0=c.png 0 0 8 8\n");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", data, size);
    CGuiEffectInfo& info = CGuiEffectInfo::Instance();
    info.Load("ini/Gui3DEffect.ini");
    (void)info.Get("A");
    CGui3DEffect effect;
    effect.SetRect({0, 0, 200, 100});
    effect.AddEffect("A", 1, true);
    effect.AddEffect("B", 1, false);
    effect.AddEffect("C", 1, true);
    effect.SetRect({10, 20, 330, 260});
    effect.SetPartScale(0.5f, 0.25f, -1);
    effect.SetPartRotation(90, -1);
    effect.PlayPart(-1);
    effect.Update();
    // Near the screen's top-left and bottom-right corners.
    effect.Draw(100, 100, -1);
    effect.Draw(1000, 700, -1);
    info.Clear();
    return 0;
}
