// Hostile input against one of each control: mouse messages at any point (presses, drags and
// releases on sliders and scroll buttons, clicks on buttons and check boxes), frames and clock
// steps (scroll-button repeats, marquee steps, tips), and the host's set-up calls with any
// values: slider ranges and values, progress ranges, sizes, values and trails, marquee captions
// of arbitrary bytes (broken two-byte characters included) and move parameters. An input is a
// list of 6-byte steps: kind, a byte, and a signed 32-bit value.
#include "FuzzSupport.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzProgress.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzWHLStatic.h"

#include <cstring>

namespace
{

using namespace QzGui;

const char* const kLayout = "[0-1]\nx=20\ny=20\nw=600\nh=400\nStyle=1\n"
                            "[1-1]\nx=10\ny=10\nw=80\nh=20\nAniSection=Four\nTipText=a\\bb\n"
                            "[1-2]\nx=10\ny=40\nw=80\nh=18\nAniSection=Four\nTextFormat=0\n"
                            "[1-3]\nx=10\ny=70\nw=212\nh=20\nAniSection=Four\nSliderBtnLen=12\n"
                            "[1-4]\nx=300\ny=10\nw=20\nh=200\nAniSection=Four\n"
                            "[1-5]\nx=230\ny=70\nw=16\nh=16\nAniSection=Four\n"
                            "[1-6]\nx=250\ny=70\nw=16\nh=16\nAniSection=Four\n"
                            "[1-7]\nx=10\ny=100\nw=200\nh=16\nAniSection=Three\n"
                            "[1-8]\nx=10\ny=120\nw=216\nh=16\nAniSection=Three\nProgressStyle=2\n"
                            "[1-9]\nx=350\ny=10\nw=16\nh=132\nAniSection=Three\n"
                            "[1-10]\nx=10\ny=200\nw=300\nh=20\nWHLMoveRate=1\nWHLMoveLength=8\n";
const char* const kAni = "[Four]\nFrameAmount=4\nFrame0=f_12x20.png\nFrame1=f_12x20.png\n"
                         "Frame2=f_12x20.png\nFrame3=f_12x20.png\n"
                         "[Three]\nFrameAmount=3\nFrame0=fill_200x132.png\nFrame1=back.png\n"
                         "Frame2=front.png\n";

// The controls of dialog 1, made again for every input.
struct Controls
{
    CQzButton button;
    CQzCheck check;
    CQzSlider slider;
    CQzSlider vslider;
    CQzScrollButton up;
    CQzScrollButton down;
    CQzProgress bar;
    CQzProgress segments;
    CQzProgress vbar;
    CQzWHLStatic marquee;
};

void Populate(CQzGuiMgr* pMgr, CQzDialog& dialog, Controls& c)
{
    c.slider.PreSetParam(100, 0);
    c.vslider.PreSetParam(50, 1);
    c.slider.SetTarget(&dialog);
    c.vslider.SetTarget(&dialog);
    c.up.Attach(&dialog, 0);
    c.down.Attach(&dialog, 3);
    const POINT offset = {-3, 2};
    c.bar.PreSetParam(0, 200, 1, 1, &offset, 1, &offset);
    c.segments.PreSetParam(-50, 50, 2, 0, nullptr, 0, nullptr);
    c.vbar.PreSetParam(0, 10, 0, 1, nullptr, 1, nullptr);
    c.marquee.SetWindowText("marquee \xC4\xE3\xBA\xC3 text");
    dialog.AddCtrls(1, &c.button, 2, &c.check, 3, &c.slider, 4, &c.vslider, 5, &c.up, 6, &c.down, 7,
                    &c.bar, 8, &c.segments, 9, &c.vbar, 10, &c.marquee);
    pMgr->AddDialog(&dialog, nullptr, true);
    dialog.ShowWindow(SW_SHOW);
}

void Mouse(CQzGuiMgr* pMgr, uint8_t kind, int32_t value)
{
    static const UINT kMouse[] = {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK};
    const auto x = static_cast<WORD>(value & 0xFFFF);
    const auto y = static_cast<WORD>((value >> 16) & 0xFFFF);
    pMgr->OnMessage(kMouse[kind % 4], kind & 4 ? MK_LBUTTON : 0, MAKELPARAM(x, y));
}

void Setup(Controls& c, uint8_t which, int32_t value)
{
    switch (which % 12)
    {
    case 0:
        c.slider.SetValue(value, TRUE);
        break;
    case 1:
        c.vslider.PreSetParam(static_cast<WORD>(value), static_cast<DWORD>(value >> 16));
        break;
    case 2:
        c.bar.SetRange(value, value >> 8);
        break;
    case 3:
        c.bar.SetValue(value);
        break;
    case 4:
        c.vbar.SetSize(value >> 16, static_cast<int16_t>(value));
        break;
    case 5:
        c.vbar.DrawProgress(value, value >> 12, 99);
        break;
    case 6:
        c.segments.SetRangeOnly(value >> 4, value);
        break;
    case 7:
        c.segments.SetValue(value);
        break;
    case 8:
        c.marquee.SetMoveParam(static_cast<DWORD>(value) & 0xFF, static_cast<DWORD>(value));
        break;
    case 9:
        c.slider.EnableDrag(value & 1);
        break;
    case 10:
        c.check.EnableWindow(value & 1);
        break;
    default:
        c.up.SetInterval(static_cast<DWORD>(value) & 0x3FF);
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ini/Fuzz.ini", kLayout);
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    QzFuzz::SetupHost();
    QzFuzz::CFuzzScreen::Shared();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QzFuzz::CFuzzScreen& screen = QzFuzz::CFuzzScreen::Shared();
    screen.BeginInput();
    CQzGuiMgr* pMgr = screen.Mgr();
    CQzDialog dialog(1, nullptr);
    Controls controls;
    Populate(pMgr, dialog, controls);
    std::string caption;
    for (size_t offset = 0; offset + QzFuzz::kStepSize <= size; offset += QzFuzz::kStepSize)
    {
        const uint8_t* step = data + offset;
        const int32_t value = QzFuzz::StepValue(step);
        switch (step[0] % 6)
        {
        case 0:
        case 1:
            Mouse(pMgr, step[1], value);
            break;
        case 2:
            screen.Frames(1 + step[1] % 4, static_cast<DWORD>(value) & 0x3FF);
            break;
        case 3:
            QzPlatform::Host::AdvanceTime(static_cast<DWORD>(value));
            break;
        case 4:
            Setup(controls, step[1], value);
            break;
        default:
            // Caption bytes come four at a time; a zero byte ends the caption and sets it.
            caption.append(reinterpret_cast<const char*>(step + 2), 4);
            caption.resize(std::strlen(caption.c_str()));
            if (caption.size() < offset % 64 + 1)
                break;
            controls.marquee.SetWindowText(caption.c_str());
            caption.clear();
            break;
        }
    }
    pMgr->RemoveDialog(&dialog);
    screen.EndInput();
    return 0;
}
