// The smallest complete QzGui host: one host window, one GUI manager, one dialog with a caption,
// a check box, a slider over a track image, a progress bar, an edit box and a button. It runs
// headless on the manual clock: it plays a user's input into the host window, prints what the
// dialog's handlers saw and writes the last frame to minimal.png. docs/host.md explains each
// step.
//
//     minimal_host DATA_DIR      (DATA_DIR holds ini/Minimal.ini and ani/Control.ani)
#include "CCairoDevice.h"
#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzImage.h"
#include "controls/QzProgress.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "framework/IQzGuiMgr.h"
#include "framework/QzDialog.h"
#include "layout/QzCursorMgr.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"
#include "platform/system/text/QzCodePage.h"
#include "textinput/QzEdit.h"

#include <cstdio>
#include <memory>
#include <string>
#include <unistd.h>

namespace
{

using namespace QzGui;

constexpr int kScreenWidth = 440;
constexpr int kScreenHeight = 270;
constexpr DWORD kFrameMs = 16;

// A message-map key: the notification code in the high word, the control id in the low word.
DWORD Code(WORD nCode, DWORD nCtrlId)
{
    return (static_cast<DWORD>(nCode) << 16) | nCtrlId;
}

class CMainDialog : public CQzDialog
{
public:
    // The dialog's record is [0-100]; its controls' records are [100-id].
    static constexpr DWORD kId = 100;

    CMainDialog() : CQzDialog(kId, nullptr)
    {
        // What a control needs before it is created: the slider its range, direction and the
        // window it reports to, the bar its range and style, the edit box its kind and colour.
        m_volume.PreSetParam(kMaxVolume, QZ_SLIDER_HORZ);
        m_volume.SetTarget(this);
        const POINT origin = {0, 0};
        m_bar.PreSetParam(0, kMaxVolume, QZ_PROGRESS_HORIZONTAL, TRUE, &origin, FALSE, nullptr);
        m_name.PreSetParam(false, 0, 0xFFFFFFFF, false);
        m_name.SetLimitText(16);
        // Captions before creation too: a check box places its box after a left caption.
        m_sound.SetWindowText("Sound");
        m_ok.SetWindowText("OK");
        m_caption.SetWindowText("Type a name and press OK");
        // Listed bottom to top: the track lies under the slider.
        AddCtrls(kCaptionId, &m_caption, kSoundId, &m_sound, kTrackId, &m_track, kVolumeId,
                 &m_volume, kBarId, &m_bar, kNameId, &m_name, kOkId, &m_ok);
    }

    // Called once, when the manager creates the dialog: the message map.
    void OnInitDialog(uint64_t) override
    {
        AddMsgHandler(WM_COMMAND, Code(QZ_BN_CLICKED, kOkId), &CMainDialog::OnOk);
        AddMsgHandler(WM_COMMAND, Code(QZ_BN_CLICKED, kSoundId), &CMainDialog::OnSound);
        AddMsgHandler(WM_COMMAND, Code(QZ_EN_CHANGE, kNameId), &CMainDialog::OnNameChange);
    }

    // The controls are created when the dialog is first shown; then they get their values.
    void CreateCtrls() override
    {
        CQzDialog::CreateCtrls();
        if (m_bStarted)
            return;
        m_bStarted = true;
        m_track.SetShowBack(true);
        m_sound.SetCheck(TRUE);
        m_volume.SetValue(50, TRUE);
    }

    // The slider reports every move as WM_HSCROLL with its id in lParam.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_HSCROLL && static_cast<DWORD>(lParam) == kVolumeId)
        {
            m_bar.SetValue(m_volume.GetValue());
            return 1;
        }
        return CQzDialog::WindowProc(message, wParam, lParam);
    }

private:
    enum : DWORD
    {
        kCaptionId = 1,
        kOkId = 10,
        kSoundId = 11,
        kVolumeId = 12,
        kBarId = 13,
        kNameId = 14,
        kTrackId = 19,
    };
    static constexpr WORD kMaxVolume = 100;

    std::string Name()
    {
        char szName[64] = {};
        m_name.GetText(szName, sizeof(szName));
        // Narrow texts of the library are in the ANSI code page (936 unless the host sets it).
        return QzPlatform::AnsiToUtf8(szName);
    }

    void OnOk()
    {
        std::printf("OK: name \"%s\", sound %s, volume %d\n", Name().c_str(),
                    m_sound.GetCheck() ? "on" : "off", m_volume.GetValue());
        const std::string greeting = "Hello, " + Name();
        m_caption.SetWindowText(QzPlatform::Utf8ToAnsi(greeting).c_str());
    }

    void OnSound() { std::printf("Sound: %s\n", m_sound.GetCheck() ? "on" : "off"); }

    void OnNameChange() { std::printf("Name: \"%s\"\n", Name().c_str()); }

    CQzStatic m_caption;
    CQzCheck m_sound;
    CQzImage m_track;
    CQzSlider m_volume;
    CQzProgress m_bar;
    CQzEdit m_name;
    CQzButton m_ok;
    bool m_bStarted = false;
};

IQzGuiMgr* g_pGuiMgr = nullptr;

// Every message of the host window goes to the manager first; what it does not take is the
// game's.
LRESULT CALLBACK HostWindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (g_pGuiMgr && g_pGuiMgr->OnMessage(message, wParam, lParam))
        return 0;
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

void PumpMessages()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&msg);
}

// One frame: the messages, then the drawing between the device's BeginFrame and EndFrame.
void RunFrame(QzPlatform::IRenderDevice& device)
{
    PumpMessages();
    device.BeginFrame();
    g_pGuiMgr->Show();
    if (CQzCursorMgr* pCursors = g_pGuiMgr->GetCursorMgr())
        pCursors->DrawCursor();
    device.EndFrame();
}

// Frames on the manual clock: 16 ms each.
void RunFrames(QzPlatform::IRenderDevice& device, int nFrames)
{
    for (int i = 0; i < nFrames; ++i)
    {
        QzPlatform::Host::AdvanceTime(kFrameMs);
        RunFrame(device);
    }
}

// The user's input, posted as Windows would deliver it: the mouse to the host window (a move
// first, so that the control under the mouse knows it is there), keys and characters to the
// window that has the keyboard focus.
void PostMouse(HWND hWnd, UINT message, int x, int y, WPARAM keys)
{
    QzPlatform::Host::SetCursorPos(x, y);
    PostMessageW(hWnd, message, keys, MAKELPARAM(x, y));
}

void Click(HWND hWnd, int x, int y)
{
    PostMouse(hWnd, WM_MOUSEMOVE, x, y, 0);
    PostMouse(hWnd, WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    PostMouse(hWnd, WM_LBUTTONUP, x, y, 0);
}

HWND KeyboardTarget(HWND hWnd)
{
    PumpMessages();
    return GetFocus() ? GetFocus() : hWnd;
}

void Type(HWND hWnd, const wchar_t* pszText)
{
    const HWND hTarget = KeyboardTarget(hWnd);
    for (const wchar_t* p = pszText; *p; ++p)
        PostMessageW(hTarget, WM_CHAR, static_cast<WPARAM>(*p), 1);
}

// The user turns the input method on and picks a result string.
void TypeWithIme(HWND hWnd, const wchar_t* pszText)
{
    const HWND hTarget = KeyboardTarget(hWnd);
    if (HIMC hImc = ImmGetContext(hTarget))
    {
        ImmSetOpenStatus(hImc, TRUE);
        ImmReleaseContext(hTarget, hImc);
    }
    QzPlatform::Host::InjectImeResult(pszText);
}

void PlayUser(HWND hWnd, QzPlatform::IRenderDevice& device)
{
    // Drag the slider's thumb (value 50, centre x 146) 40 pixels right: value 70.
    PostMouse(hWnd, WM_MOUSEMOVE, 146, 110, 0);
    PostMouse(hWnd, WM_LBUTTONDOWN, 146, 110, MK_LBUTTON);
    PostMouse(hWnd, WM_MOUSEMOVE, 186, 110, MK_LBUTTON);
    PostMouse(hWnd, WM_LBUTTONUP, 186, 110, 0);
    RunFrames(device, 2);
    // Untick "Sound".
    Click(hWnd, 50, 76);
    RunFrames(device, 2);
    // Click into the name, type it, and finish it with the input method.
    Click(hWnd, 100, 172);
    Type(hWnd, L"Ada ");
    RunFrames(device, 2);
    TypeWithIme(hWnd, L"洛芙莱斯");
    RunFrames(device, 2);
    // Press OK, then rest on it until its tip shows (300 ms).
    Click(hWnd, 88, 218);
    RunFrames(device, 30);
}

} // namespace

int main(int argc, char** argv)
{
    // The data root is the current directory: every data path (ini/..., ani/..., images/...)
    // is relative to it.
    if (argc > 1 && chdir(argv[1]) != 0)
    {
        std::fprintf(stderr, "minimal_host: cannot enter %s\n", argv[1]);
        return 1;
    }

    // The device the library draws with; the host installs it before anything draws.
    QzPlatform::CCairoDevice device(kScreenWidth, kScreenHeight);
    QzPlatform::SetRenderDevice(&device);
    // Headless: the clock moves only when the host says (a windowed host keeps the real one).
    QzPlatform::Host::SetTime(100000);

    // The host window: its procedure passes every message to the manager.
    WNDCLASSW wc = {};
    wc.lpfnWndProc = &HostWindowProc;
    wc.lpszClassName = L"MinimalHost";
    RegisterClassW(&wc);
    HWND hWnd =
        CreateWindowExW(0, L"MinimalHost", L"Minimal host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                        kScreenWidth, kScreenHeight, nullptr, nullptr, nullptr, nullptr);
    if (!hWnd)
        return 1;
    SetFocus(hWnd);

    // The manager: module, host window, default dialog id, layout file under ini/.
    g_pGuiMgr = CreateGuiMgr();
    if (!g_pGuiMgr ||
        !g_pGuiMgr->Init(GetModuleHandleA(nullptr), hWnd, CMainDialog::kId, "Minimal.ini"))
        return 1;

    auto pDialog = std::make_unique<CMainDialog>();
    g_pGuiMgr->AddDialog(pDialog.get(), nullptr, false);
    pDialog->ShowWindow(SW_SHOW);
    RunFrame(device);

    PlayUser(hWnd, device);
    const bool bSaved = device.SavePng("minimal.png");

    // Shutdown: the dialogs, then the manager, then the window and the device.
    g_pGuiMgr->RemoveDialog(pDialog.get());
    pDialog.reset();
    g_pGuiMgr->Release();
    g_pGuiMgr = nullptr;
    DestroyWindow(hWnd);
    QzPlatform::SetRenderDevice(nullptr);
    return bSaved ? 0 : 1;
}
