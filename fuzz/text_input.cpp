// Hostile typing into both edit boxes: a single-line, a number-only password and a multi-line
// edit box bound in turn to the edit shell's system edit window, and a single-line and a
// multi-line extended edit box with the manager's key focus. Steps are clicks at any point,
// characters and keys of any value (Ctrl held or not), the input method's composition and
// result strings, clipboard text pasted, texts set by the host, limits, boxes hidden, disabled
// and shown, frames and clock steps. Texts are arbitrary bytes: broken two-byte characters,
// malformed emotion codes, lone CR and LF. An input is a list of 6-byte steps: kind, a byte, and
// a signed 32-bit value; text bytes come four a step.
#include "FuzzSupport.h"

#include "platform/system/QzSystem.h"
#include "platform/system/text/QzCodePage.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditEx.h"
#include "textinput/QzEditSingle.h"

#include <cstring>
#include <string>

namespace
{

using namespace QzGui;

const char* const kLayout = "[0-1]\nx=0\ny=0\nw=800\nh=600\n"
                            "[1-1]\nx=10\ny=10\nw=200\nh=24\n"
                            "[1-2]\nx=10\ny=40\nw=200\nh=24\n"
                            "[1-3]\nx=10\ny=70\nw=200\nh=120\n"
                            "[1-4]\nx=300\ny=10\nw=200\nh=24\n"
                            "[1-5]\nx=300\ny=40\nw=200\nh=150\n";
const char* const kAni = "[Emotion_01]\nFrameAmount=1\nFrame0=e_20x20.png\n"
                         "[Emotion_02_03]\nFrameAmount=1\nFrame0=e_20x20.png\n";
constexpr int kBoxes = 5;

struct Boxes
{
    CQzEdit single;
    CQzEdit pin;
    CQzEdit multi;
    CQzEditEx exSingle;
    CQzEditEx exMulti;

    CQzCtrl* At(int n)
    {
        CQzCtrl* boxes[kBoxes] = {&single, &pin, &multi, &exSingle, &exMulti};
        return boxes[n % kBoxes];
    }
};

void Populate(CQzGuiMgr* pMgr, CQzDialog& dialog, Boxes& b, uint8_t limits)
{
    b.single.PreSetParam(false, 0, 0xFFFFFFFF, false);
    b.single.SetLimitText(8 + limits % 64);
    b.pin.PreSetParam(false, 0, 0xFFFFFFFF, false);
    b.pin.SetNumberOnly(true);
    b.pin.SetPassword(true);
    b.pin.SetNoSpace(true);
    b.multi.PreSetParam(true, 0, 0xFFFFFFFF, limits & 1);
    b.exSingle.PreSetParam(false, 0, 0xFFFFFFFF);
    b.exSingle.SetMaxText(4 + limits % 32);
    b.exMulti.PreSetParam(true, 0, 0xFFFFFFFF);
    dialog.AddCtrls(1, &b.single, 2, &b.pin, 3, &b.multi, 4, &b.exSingle, 5, &b.exMulti);
    pMgr->AddDialog(&dialog, nullptr, true);
    dialog.ShowWindow(SW_SHOW);
}

// Input goes to the focus window as Windows routes it: the system edit window of a bound box,
// or the host window, whose messages the game passes to the manager.
void Dispatch(CQzGuiMgr* pMgr, UINT message, WPARAM wParam, LPARAM lParam)
{
    HWND hFocus = GetFocus();
    if (hFocus && hFocus != QzFuzz::Host().hWnd)
        SendMessageW(hFocus, message, wParam, lParam);
    else
        pMgr->OnMessage(message, wParam, lParam);
    MSG msg;
    for (int i = 0; i < 4096 && PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE); ++i)
    {
        if (msg.hwnd == QzFuzz::Host().hWnd)
            pMgr->OnMessage(msg.message, msg.wParam, msg.lParam);
        else
            DispatchMessageW(&msg);
    }
}

void Mouse(CQzGuiMgr* pMgr, uint8_t kind, int32_t value)
{
    static const UINT kMouse[] = {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK,
                                  WM_RBUTTONDOWN};
    const auto x = static_cast<WORD>(value & 0xFFFF);
    const auto y = static_cast<WORD>((value >> 16) & 0xFFFF);
    pMgr->OnMessage(kMouse[kind % 5], kind & 8 ? MK_LBUTTON : 0, MAKELPARAM(x, y));
}

// A key with Ctrl or Shift held as the byte says, and its character where one goes with it.
void Key(CQzGuiMgr* pMgr, uint8_t flags, int32_t value)
{
    const int vk = value & 0xFF;
    QzPlatform::Host::SetKeyState(VK_CONTROL, flags & 1);
    QzPlatform::Host::SetKeyState(VK_SHIFT, flags & 2);
    Dispatch(pMgr, WM_KEYDOWN, static_cast<WPARAM>(vk), 1);
    if (flags & 4)
        Dispatch(pMgr, WM_CHAR, static_cast<WPARAM>((value >> 8) & 0xFFFF), 1);
    Dispatch(pMgr, WM_KEYUP, static_cast<WPARAM>(vk), static_cast<LPARAM>(0xC0000001));
    QzPlatform::Host::SetKeyState(VK_CONTROL, false);
    QzPlatform::Host::SetKeyState(VK_SHIFT, false);
}

void Ime(uint8_t which, const std::string& text)
{
    const std::wstring wide = QzPlatform::AnsiToWide(text);
    HWND hFocus = GetFocus();
    if (HIMC hImc = hFocus ? ImmGetContext(hFocus) : nullptr)
    {
        ImmSetOpenStatus(hImc, TRUE);
        ImmReleaseContext(hFocus, hImc);
    }
    if (which & 1)
        QzPlatform::Host::InjectImeComposition(wide.c_str());
    else
        QzPlatform::Host::InjectImeResult(wide.c_str());
}

// One of the boxes takes the focus as a click gives it, or the host takes the key focus back.
void FocusBox(Boxes& b, int32_t value)
{
    switch ((value & 0xFF) % (kBoxes + 1))
    {
    case 0:
        b.single.SetFocus();
        break;
    case 1:
        b.pin.SetFocus();
        break;
    case 2:
        b.multi.SetFocus();
        break;
    case 3:
        b.exSingle.SetFocus();
        break;
    case 4:
        b.exMulti.SetFocus();
        break;
    default:
        if (CQzGuiMgr* pMgr = static_cast<CQzGuiMgr*>(b.single.GetGuiMgr()))
            pMgr->SetKeyFocus(nullptr);
        break;
    }
}

void HostCall(Boxes& b, uint8_t which, int32_t value, const std::string& text)
{
    CQzCtrl* pBox = b.At(value & 0xFF);
    switch (which % 8)
    {
    case 0:
        pBox->SetWindowText(text.c_str());
        break;
    case 1:
        pBox->ShowWindow(value & 0x100 ? SW_SHOW : SW_HIDE);
        break;
    case 2:
        pBox->EnableWindow(value & 0x100 ? TRUE : FALSE);
        break;
    case 3:
        b.single.SetLimitText(value >> 8);
        b.exSingle.SetMaxText(value >> 8);
        break;
    case 4:
        b.exMulti.InsertEmotion(static_cast<short>(value >> 8));
        break;
    case 5:
        b.exSingle.SetSel(value >> 20, (value >> 8) & 0xFFF);
        b.multi.SetSel(value >> 20, (value >> 8) & 0xFFF, (value & 0x100) != 0);
        break;
    case 6:
        FocusBox(b, value);
        break;
    default:
        b.multi.InsertNewLine();
        break;
    }
}

// The edit shell's system windows outlive the input, as the manager the inputs share does:
// their texts and undo go and their input method is closed, as the first input found them (a
// composition left unfinished stays with its context; the next composition replaces it). The
// clipboard is emptied, so that no input pastes what an earlier one put there.
void ResetShell()
{
    if (OpenClipboard(QzFuzz::Host().hWnd))
    {
        EmptyClipboard();
        CloseClipboard();
    }
    for (HWND hEdit : {g_pQzEditSingle->GetSingleLineWnd(), g_pQzEditSingle->GetMultiLineWnd()})
    {
        if (HIMC hImc = ImmGetContext(hEdit))
        {
            ImmSetOpenStatus(hImc, FALSE);
            ImmReleaseContext(hEdit, hImc);
        }
        SetWindowTextW(hEdit, L"");
        SendMessageW(hEdit, EM_EMPTYUNDOBUFFER, 0, 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ini/font.ini", "SimSun 12\n");
    QzFuzz::WriteFile("ini/Fuzz.ini", kLayout);
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    QzFuzz::SetupHost();
    QzFuzz::CFuzzScreen::Shared();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    QzFuzz::CFuzzScreen& screen = QzFuzz::CFuzzScreen::Shared();
    screen.BeginInput();
    CQzGuiMgr* pMgr = screen.Mgr();
    CQzDialog dialog(1, nullptr);
    Boxes boxes;
    Populate(pMgr, dialog, boxes, data[0]);
    std::string text = "#01|02 \xC4\xE3";
    std::string pending;
    for (size_t offset = 1; offset + QzFuzz::kStepSize <= size; offset += QzFuzz::kStepSize)
    {
        const uint8_t* step = data + offset;
        const int32_t value = QzFuzz::StepValue(step);
        switch (step[0] % 9)
        {
        case 0:
            Mouse(pMgr, step[1], value);
            break;
        case 1:
        case 2:
            Key(pMgr, step[1], value);
            break;
        case 3:
            for (char ch : text)
                Dispatch(pMgr, WM_CHAR, static_cast<BYTE>(ch), step[1] & 1);
            break;
        case 4:
            Ime(step[1], text);
            break;
        case 5:
            QzFuzz::PutOnClipboard(
                QzFuzz::Host().hWnd,
                step[1] & 1 ? text : std::string(static_cast<size_t>(value & 0xFFFF), 'x'));
            break;
        case 6:
            HostCall(boxes, step[1], value, text);
            break;
        case 7:
            screen.Frames(1 + step[1] % 2, static_cast<DWORD>(value) & 0x3FF);
            break;
        default:
            QzFuzz::AddTextStep(pending, step, 256, text);
            break;
        }
    }
    pMgr->RemoveDialog(&dialog);
    ResetShell();
    screen.EndInput();
    return 0;
}
