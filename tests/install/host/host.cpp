// A game host built outside QzGui's tree against the installed package: a hidden main window, a
// GUI manager initialised on a data folder the host writes, one dialog with a button, one frame
// drawn on the null device and on each device of the backends the host links, and the manager
// released. Usage: qzgui-host DATA_DIR (an empty folder). Exits 1 naming the step that failed.
#include "controls/QzButton.h"
#include "framework/IQzGuiMgr.h"
#include "framework/QzDialog.h"
#include "platform/render/IRenderDevice.h"
#include "platform/services/QzTextDraw.h"
#include "platform/system/QzSystem.h"
#ifdef QZGUI_HOST_DRAWLIST
#include "CDrawListDevice.h"
#endif
#ifdef QZGUI_HOST_SDL
#include "CSdlDrawListRenderer.h"
#endif
#ifdef QZGUI_HOST_CAIRO
#include "CCairoDevice.h"
#endif

#include <cstdio>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

const DWORD kDialogId = 100;
const DWORD kButtonId = 101;

// A dialog 200 x 120 at (10, 10) holding a button; see WriteDataFolder.
class CHostDialog : public QzGui::CQzDialog
{
public:
    CHostDialog() : CQzDialog(kDialogId, nullptr)
    {
        m_button.SetWindowText("OK");
        AddCtrl(kButtonId, &m_button);
    }

    void OnAfterDraw() override
    {
        QzPlatform::DrawGameText(GetX() + 4, GetY() + 4, 0xFFFFFFFF, "host", nullptr, 12, FALSE, 0,
                                 0xFF000000, nullptr);
    }

private:
    QzGui::CQzButton m_button;
};

LRESULT CALLBACK HostWindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

// The layout file of the dialog and its button, and an animation file without sections: the
// windows draw no images.
bool WriteDataFolder(const std::string& dataDir)
{
    const std::string ini = dataDir + "/ini";
    const std::string ani = dataDir + "/ani";
    if (mkdir(ini.c_str(), 0755) != 0 || mkdir(ani.c_str(), 0755) != 0)
        return false;
    std::ofstream layout(ini + "/Host.ini");
    layout << "[0-100]\nx=10\ny=10\nw=200\nh=120\n\n[100-101]\nx=20\ny=40\nw=80\nh=24\n";
    std::ofstream animations(ani + "/Control.ani");
    return layout && animations;
}

// The null device and those of the backends the host was built with.
struct HostDevices
{
#ifdef QZGUI_HOST_DRAWLIST
    QzPlatform::CDrawListDevice drawList{320, 240};
#endif
#ifdef QZGUI_HOST_CAIRO
    QzPlatform::CCairoDevice cairo{320, 240};
#endif

    std::vector<QzPlatform::IRenderDevice*> All()
    {
        std::vector<QzPlatform::IRenderDevice*> devices = {&QzPlatform::GetRenderDevice()};
#ifdef QZGUI_HOST_DRAWLIST
        devices.push_back(&drawList);
#endif
#ifdef QZGUI_HOST_CAIRO
        devices.push_back(&cairo);
#endif
        return devices;
    }
};

int Fail(const char* step)
{
    std::fprintf(stderr, "qzgui-host: %s failed\n", step);
    return 1;
}

// One frame as a host draws it: the device's frame around the manager's Show.
void DrawFrame(QzGui::IQzGuiMgr* pMgr, QzPlatform::IRenderDevice* pDevice)
{
    QzPlatform::SetRenderDevice(pDevice);
    pDevice->BeginFrame();
    pMgr->Show();
    pDevice->EndFrame();
    QzPlatform::SetRenderDevice(nullptr);
}

#ifdef QZGUI_HOST_CAIRO
// Pixels of the dialog's text (at 14, 14) that differ from an untouched corner of the screen.
int TextPixels(QzPlatform::CCairoDevice& device)
{
    const uint32_t background = device.GetPixel(300, 200);
    int count = 0;
    for (int y = 14; y < 34; ++y)
    {
        for (int x = 14; x < 60; ++x)
            count += device.GetPixel(x, y) != background ? 1 : 0;
    }
    return count;
}
#endif

// The devices' frames show the dialog's text: a draw-list command, pixels not of the clear
// colour.
bool FramesDrawn(HostDevices& devices)
{
#ifdef QZGUI_HOST_DRAWLIST
    if (devices.drawList.GetDrawList().commands.empty())
        return false;
#ifdef QZGUI_HOST_SDL
    // Without an SDL renderer the presenter draws nothing and says so.
    QzPlatform::CSdlDrawListRenderer presenter(nullptr);
    if (presenter.Render(devices.drawList))
        return false;
#endif
#endif
#ifdef QZGUI_HOST_CAIRO
    return TextPixels(devices.cairo) > 0;
#else
    (void)devices;
    return true;
#endif
}

int RunHost(HWND hWnd, HostDevices& devices)
{
    QzGui::IQzGuiMgr* pMgr = QzGui::CreateGuiMgr();
    if (!pMgr)
        return Fail("CreateGuiMgr");
    if (!pMgr->Init(GetModuleHandleA(nullptr), hWnd, kDialogId, "Host.ini"))
        return Fail("Init");
    pMgr->SetScreenSize(320, 240);
    int result = 0;
    {
        CHostDialog dialog;
        pMgr->AddDialog(&dialog, nullptr, true);
        dialog.ShowWindow(SW_SHOW);
        for (QzPlatform::IRenderDevice* pDevice : devices.All())
            DrawFrame(pMgr, pDevice);
        if (pMgr->FindDialog(kDialogId) != &dialog || dialog.GetWidth() != 200)
            result = Fail("the dialog's record");
        else if (!FramesDrawn(devices))
            result = Fail("drawing the frame");
        pMgr->RemoveDialog(&dialog);
    }
    pMgr->Release();
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2 || !WriteDataFolder(argv[1]) || chdir(argv[1]) != 0)
        return Fail("writing the data folder");
    WNDCLASSW wc = {};
    wc.lpfnWndProc = &HostWindowProc;
    wc.lpszClassName = L"QzGuiHost";
    RegisterClassW(&wc);
    // Not WS_VISIBLE: the library needs a window, not that anyone sees it.
    HWND hWnd = CreateWindowExW(0, L"QzGuiHost", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 320, 240,
                                nullptr, nullptr, nullptr, nullptr);
    if (!hWnd)
        return Fail("CreateWindowExW");
    HostDevices devices;
    const int result = RunHost(hWnd, devices);
    DestroyWindow(hWnd);
    if (result == 0)
        std::printf("qzgui-host: ok\n");
    return result;
}
