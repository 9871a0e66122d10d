// Random mouse and keyboard messages, frames, clock steps, dialogs shown and hidden and debug
// modes against a populated GUI manager: four top-level dialogs (one with two child dialogs,
// one that drags and flies, one topmost, one that stays in place when clicked), each with a few
// windows that take the capture on a press and notify their dialog on the release; one window
// hides its dialog when clicked, as a close button does. The dialogs and windows are made again
// for every input, on the manager the inputs share. An input is a list of 6-byte steps: kind, a
// value, x and y (signed 16 bits each).
#include "FuzzSupport.h"

namespace
{

const char* const kLayout = "[0-1]\nx=50\ny=50\nw=400\nh=300\nStyle=1\nAniSection=Panel\n"
                            "BackShowMode=1\nTitle=One\n"
                            "[0-2]\nx=300\ny=200\nw=300\nh=200\nStyle=1\nFlyDir=1\n"
                            "FlyInStep=40\nFlyOutStep=40\nAniSection=Panel\nBackShowMode=3\n"
                            "[0-3]\nx=600\ny=0\nw=200\nh=150\nTopmost=1\n"
                            "[0-4]\nx=0\ny=400\nw=200\nh=150\nClickToTop=0\nStyle=1\n"
                            "[0-11]\nx=10\ny=30\nw=150\nh=100\nStyle=1\n"
                            "[0-12]\nx=200\ny=30\nw=150\nh=100\n"
                            "[1-21]\nx=10\ny=150\nw=60\nh=20\nAniSection=Button\n"
                            "TipText=first\\bsecond\n"
                            "[1-22]\nx=80\ny=150\nw=60\nh=20\n"
                            "[1-23]\nx=380\ny=5\nw=15\nh=15\n"
                            "[2-21]\nx=10\ny=10\nw=60\nh=20\nAniSection=Button\n"
                            "[2-22]\nx=10\ny=40\nw=60\nh=20\n"
                            "[2-23]\nx=280\ny=5\nw=15\nh=15\n"
                            "[3-21]\nx=10\ny=10\nw=60\nh=20\nTipText=tip\n"
                            "[4-21]\nx=10\ny=10\nw=60\nh=20\n"
                            "[11-21]\nx=5\ny=5\nw=60\nh=20\nAniSection=Button\n"
                            "[11-22]\nx=5\ny=40\nw=60\nh=20\n"
                            "[12-21]\nx=5\ny=5\nw=60\nh=20\n";
const char* const kAni = "[Panel]\nFrameAmount=1\nFrame0=panel.png\n"
                         "[Button]\nFrameAmount=4\nFrame0=b.png 0 0 60 20\n"
                         "Frame1=b.png 60 0 60 20\nFrame2=b.png 120 0 60 20\n"
                         "Frame3=b.png 180 0 60 20\n";
constexpr DWORD kCloseId = 23;
constexpr size_t kStepSize = 6;

// Dialogs 1 to 4 with windows 21 to 23 (1 and 2), 21 and 22 (child dialog 11 of dialog 1) or 21
// alone; window 23 closes its dialog.
void Populate(QzFuzz::CFuzzScreen& screen)
{
    screen.AddDialog(1, nullptr, {21, 22, 23}, kCloseId);
    screen.AddDialog(2, nullptr, {21, 22, 23}, kCloseId);
    screen.AddDialog(3, nullptr, {21});
    screen.AddDialog(4, nullptr, {21});
    screen.AddDialog(11, screen.Dialogs()[0].get(), {21, 22});
    screen.AddDialog(12, screen.Dialogs()[0].get(), {21});
}

void Step(QzFuzz::CFuzzScreen& screen, const uint8_t* step)
{
    static const UINT kMouse[] = {WM_MOUSEMOVE,     WM_LBUTTONDOWN, WM_LBUTTONUP,
                                  WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONUP,
                                  WM_MBUTTONDOWN,   WM_MBUTTONUP,   WM_MOUSEWHEEL};
    static const UINT kKeys[] = {WM_KEYDOWN, WM_KEYUP, WM_CHAR};
    const int kind = step[0] % 16;
    const uint8_t value = step[1];
    const auto x = static_cast<int16_t>(step[2] | (step[3] << 8));
    const auto y = static_cast<int16_t>(step[4] | (step[5] << 8));
    const LPARAM lParam = MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
    QzGui::CQzGuiMgr* pMgr = screen.Mgr();
    if (kind < 8)
        pMgr->OnMessage(kMouse[kind], value & (MK_LBUTTON | MK_RBUTTON | MK_SHIFT | MK_CONTROL),
                        lParam);
    else if (kind == 8)
        pMgr->OnMessage(WM_MOUSEWHEEL,
                        MAKEWPARAM(0, static_cast<WORD>(static_cast<int8_t>(value) * 40)), lParam);
    else if (kind < 12)
        pMgr->OnMessage(kKeys[kind - 9], value, 1);
    else if (kind == 12)
        screen.Frames(1, 16);
    else if (kind == 13)
        QzPlatform::Host::AdvanceTime(value * 16u);
    else if (kind == 14)
    {
        QzGui::CQzDialog* pDialog = screen.Dialogs()[value % screen.Dialogs().size()].get();
        pDialog->ShowWindow(pDialog->IsWindowVisible() ? SW_HIDE : SW_SHOW);
    }
    else
        screen.SetDebugMode(value % 3);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    QzFuzz::WriteFile("ini/Fuzz.ini", kLayout);
    QzFuzz::SetupHost();
    QzFuzz::CFuzzScreen::Shared();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::CFuzzScreen& screen = QzFuzz::CFuzzScreen::Shared();
    screen.BeginInput();
    Populate(screen);
    for (size_t offset = 0; offset + kStepSize <= size; offset += kStepSize)
        Step(screen, data + offset);
    screen.EndInput();
    return 0;
}
