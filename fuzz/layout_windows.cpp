// A layout file's records applied to windows: the input is the layout file of a GUI manager
// whose host registers dialogs 1 to 3 (dialog 1 with the child dialog 4) and windows 1 to 3 in
// each. Whatever the file says about them (places, sizes, back types, offsets, tips, fly-ins,
// topmost and click flags, effects, groups, bitmaps), they are then drawn for some frames,
// hovered and clicked one by one, hidden and shown again, and drawn in debug mode. The manager
// the inputs share reloads the layout for each.
#include "FuzzSupport.h"

#include "layout/QzGuiInfoMgr.h"
#include "platform/services/QzNumeric.h"

namespace
{

const char* const kAni = "[Panel]\nFrameAmount=1\nFrame0=panel_64x48.png\n"
                         "[Button]\nFrameAmount=4\nFrame0=b_240x20.png 0 0 60 20\n"
                         "Frame1=b_240x20.png 60 0 60 20\nFrame2=b_240x20.png 120 0 60 20\n"
                         "Frame3=b_240x20.png 180 0 60 20\n"
                         "[Skin]\nFrameAmount=9\nFrame0=s_8x8.png\nFrame1=s_1x8.png\n"
                         "Frame2=s_8x8.png\nFrame3=s_8x1.png\nFrame4=s_1x1.png\n"
                         "Frame5=s_8x1.png\nFrame6=s_8x8.png\nFrame7=s_1x8.png\n"
                         "Frame8=s_8x8.png\n"
                         "[Fx]\nFrameAmount=2\nFrame0=fx_16x16.png\nFrame1=fx_16x16.png\n";

// A mouse message at the middle of the rectangle.
void Mouse(QzGui::CQzGuiMgr* pMgr, UINT message, const RECT& rc, WPARAM keys)
{
    const LONG x = rc.left / 2 + rc.right / 2;
    const LONG y = rc.top / 2 + rc.bottom / 2;
    pMgr->OnMessage(message, keys,
                    MAKELPARAM(static_cast<WORD>(x & 0xFFFF), static_cast<WORD>(y & 0xFFFF)));
}

// The rectangle moved down and right, stopping at the int range (windows may lie at its ends).
RECT Shifted(const RECT& rc, int d)
{
    return {QzPlatform::AddClamped(rc.left, d), QzPlatform::AddClamped(rc.top, d),
            QzPlatform::AddClamped(rc.right, d), QzPlatform::AddClamped(rc.bottom, d)};
}

// Dialogs 1 to 3 (dialog 1 with the child dialog 4), each with windows 1 to 3.
void Play(QzFuzz::CFuzzScreen& screen)
{
    for (DWORD id = 1; id <= 3; ++id)
        screen.AddDialog(id, nullptr, {1, 2, 3});
    screen.AddDialog(4, screen.Dialogs()[0].get(), {1, 2, 3});
    QzGui::CQzGuiMgr* pMgr = screen.Mgr();
    screen.Frames(2, 100);
    // Each window is hovered, pressed, dragged and clicked; a frame after each dialog's windows
    // draws its last one hovered (a frame a window cost a third of an input's time).
    const auto& ctrls = screen.Ctrls();
    for (size_t i = 0; i < ctrls.size(); ++i)
    {
        const RECT rc = ctrls[i]->GetWindowRect();
        Mouse(pMgr, WM_MOUSEMOVE, rc, 0);
        if (i % 3 == 2)
            screen.Frames(1, 100);
        Mouse(pMgr, WM_LBUTTONDOWN, rc, MK_LBUTTON);
        Mouse(pMgr, WM_MOUSEMOVE, Shifted(rc, 5), MK_LBUTTON);
        Mouse(pMgr, WM_LBUTTONUP, rc, 0);
    }
    // Each dialog is dragged; then all are hidden (fly-outs) and shown again (fly-ins), a frame
    // after each.
    for (const auto& pDialog : screen.Dialogs())
    {
        const RECT rc = pDialog->GetWindowRect();
        Mouse(pMgr, WM_LBUTTONDOWN, rc, MK_LBUTTON);
        Mouse(pMgr, WM_MOUSEMOVE, Shifted(rc, 9), MK_LBUTTON);
        Mouse(pMgr, WM_LBUTTONUP, rc, 0);
    }
    for (int nShow : {SW_HIDE, SW_SHOW})
    {
        for (const auto& pDialog : screen.Dialogs())
            pDialog->ShowWindow(nShow);
        screen.Frames(1, 100);
    }
    screen.SetDebugMode(1);
    screen.Frames(1, 100);
    screen.SetDebugMode(0);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    QzFuzz::WriteFile("ini/AniGroup.ini", "[G]\nAmount=2\nSection_1=Button\nTop_1=3\nLeft_1=4\n"
                                          "Section_2=Panel\n");
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "Fx 100 50 10 20 1.5 0.5 30\n");
    QzFuzz::WriteFile("ini/Fuzz.ini", "");
    QzFuzz::SetupHost();
    QzFuzz::CFuzzScreen::Shared();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::CFuzzScreen& screen = QzFuzz::CFuzzScreen::Shared();
    QzFuzz::WriteFile("ini/Fuzz.ini", data, size);
    screen.BeginInput();
    screen.Mgr()->ReloadLayout();
    Play(screen);
    screen.EndInput(false);
    // The next input loads its own layout: this one's records go now, so that what an input
    // allocates it also frees (see ForgetProfiles).
    screen.Mgr()->GetInfoMgr()->ClearAll();
    return 0;
}
