// The demo's game client: its main window, its message pump and its frame loop. Every message
// of the main window goes to the scene, the way a game passes its messages to the GUI.
#pragma once

#include "DemoScene.h"
#include "DemoScript.h"

#include "platform/system/QzSystem.h"

#include <memory>
#include <string>

namespace QzPlatform
{
class CCairoDevice;
}

class CDemoHost
{
public:
    CDemoHost(int width, int height);
    ~CDemoHost();
    CDemoHost(const CDemoHost&) = delete;
    CDemoHost& operator=(const CDemoHost&) = delete;

    bool Create();
    HWND GetWindow() const { return m_hWnd; }
    QzPlatform::CCairoDevice& GetDevice() { return *m_pDevice; }

    // Dispatches the posted messages, then draws one frame.
    void RunFrame();
    // Runs a script headless on the manual clock; screenshots go to outDir.
    bool RunScript(const CDemoScript& script, const std::string& outDir, std::string& error);
    bool SaveShot(const std::string& outDir, const std::string& name, std::string& error);

private:
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    void PumpMessages();
    void RunStep(const DemoStep& step);
    void PostMouse(UINT message, int x, int y, WPARAM keys);

    int m_nWidth;
    int m_nHeight;
    HWND m_hWnd = nullptr;
    std::unique_ptr<QzPlatform::CCairoDevice> m_pDevice;
    CDemoScene m_scene;
};
