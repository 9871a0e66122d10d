#include "DemoHost.h"

#include "CCairoDevice.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/QzCodePage.h"
#include "platform/system/QzHost.h"

#include <sys/stat.h>

namespace
{

const wchar_t* const kClassName = L"QzGuiDemoHost";
const DWORD kFrameMs = 16;

bool MakeFolder(const std::string& path)
{
    std::string partial;
    for (size_t i = 0; i <= path.size(); ++i)
    {
        if (i == path.size() || path[i] == '/')
        {
            if (!partial.empty())
                mkdir(partial.c_str(), 0755);
        }
        if (i < path.size())
            partial.push_back(path[i]);
    }
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

CDemoHost::CDemoHost(int width, int height)
    : m_nWidth(width), m_nHeight(height),
      m_pDevice(std::make_unique<QzPlatform::CCairoDevice>(width, height))
{
    QzPlatform::SetRenderDevice(m_pDevice.get());
}

CDemoHost::~CDemoHost()
{
    if (m_hWnd)
        DestroyWindow(m_hWnd);
    QzPlatform::SetRenderDevice(nullptr);
}

bool CDemoHost::Create()
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = &CDemoHost::WindowProc;
    wc.lpszClassName = kClassName;
    RegisterClassW(&wc);
    m_hWnd = CreateWindowExW(0, kClassName, L"QzGui demo", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                             m_nWidth, m_nHeight, nullptr, nullptr, nullptr, nullptr);
    if (!m_hWnd)
        return false;
    SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return true;
}

LRESULT CALLBACK CDemoHost::WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* host = reinterpret_cast<CDemoHost*>(GetWindowLongPtrW(hWnd, GWLP_USERDATA));
    if (host && host->m_scene.OnMessage(message, wParam, lParam))
        return 0;
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

void CDemoHost::PumpMessages()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&msg);
}

void CDemoHost::RunFrame()
{
    PumpMessages();
    m_pDevice->BeginFrame();
    m_scene.Draw();
    m_pDevice->EndFrame();
}

void CDemoHost::PostMouse(UINT message, int x, int y, WPARAM keys)
{
    QzPlatform::Host::SetCursorPos(x, y);
    PostMessageW(m_hWnd, message, keys, MAKELPARAM(x, y));
}

void CDemoHost::RunStep(const DemoStep& step)
{
    switch (step.kind)
    {
    case DemoStep::Frame:
        for (int i = 0; i < step.value; ++i)
        {
            QzPlatform::Host::AdvanceTime(kFrameMs);
            RunFrame();
        }
        break;
    case DemoStep::Wait:
        for (int waited = 0; waited < step.value; waited += kFrameMs)
        {
            QzPlatform::Host::AdvanceTime(kFrameMs);
            RunFrame();
        }
        break;
    case DemoStep::Move:
        PostMouse(WM_MOUSEMOVE, step.x, step.y, 0);
        break;
    case DemoStep::Down:
        PostMouse(WM_LBUTTONDOWN, step.x, step.y, MK_LBUTTON);
        break;
    case DemoStep::Up:
        PostMouse(WM_LBUTTONUP, step.x, step.y, 0);
        break;
    case DemoStep::RDown:
        PostMouse(WM_RBUTTONDOWN, step.x, step.y, MK_RBUTTON);
        break;
    case DemoStep::RUp:
        PostMouse(WM_RBUTTONUP, step.x, step.y, 0);
        break;
    case DemoStep::Click:
        PostMouse(WM_LBUTTONDOWN, step.x, step.y, MK_LBUTTON);
        PostMouse(WM_LBUTTONUP, step.x, step.y, 0);
        break;
    case DemoStep::Wheel:
    {
        RECT rc = {};
        GetWindowRect(m_hWnd, &rc);
        PostMessageW(m_hWnd, WM_MOUSEWHEEL, MAKEWPARAM(0, step.value),
                     MAKELPARAM(step.x + rc.left, step.y + rc.top));
        break;
    }
    case DemoStep::Key:
    {
        HWND target = GetFocus() ? GetFocus() : m_hWnd;
        QzPlatform::Host::SetKeyState(step.value, true);
        PostMessageW(target, WM_KEYDOWN, static_cast<WPARAM>(step.value), 1);
        QzPlatform::Host::SetKeyState(step.value, false);
        PostMessageW(target, WM_KEYUP, static_cast<WPARAM>(step.value), 0xC0000001);
        break;
    }
    case DemoStep::Char:
    {
        HWND target = GetFocus() ? GetFocus() : m_hWnd;
        for (wchar_t ch : QzPlatform::Utf8ToWide(step.text))
            PostMessageW(target, WM_CHAR, static_cast<WPARAM>(ch), 1);
        break;
    }
    case DemoStep::Shot:
        break;
    }
}

bool CDemoHost::RunScript(const CDemoScript& script, const std::string& outDir, std::string& error)
{
    QzPlatform::Host::SetTime(100000);
    RunFrame();
    for (const DemoStep& step : script.Steps())
    {
        if (step.kind == DemoStep::Shot)
        {
            RunFrame();
            if (!SaveShot(outDir, step.text, error))
                return false;
            continue;
        }
        RunStep(step);
    }
    return true;
}

bool CDemoHost::SaveShot(const std::string& outDir, const std::string& name, std::string& error)
{
    if (!MakeFolder(outDir))
    {
        error = outDir + ": cannot create the folder";
        return false;
    }
    const std::string path = outDir + "/" + name + ".png";
    if (!m_pDevice->SavePng(path))
    {
        error = path + ": cannot write";
        return false;
    }
    return true;
}
