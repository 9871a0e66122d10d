// The demo's game client: its main window, its message pump and its frame loop, the GUI
// manager with the sample layout, and the client's dialogs. Every message of the main window
// goes to the manager first, the way a game passes its messages to the GUI.
#pragma once

#include "CollectionsDialog.h"
#include "ControlsDialog.h"
#include "DemoScreen.h"
#include "DemoScript.h"
#include "LabelDialog.h"
#include "LoginDialog.h"
#include "PanelCaption.h"
#include "ShowcaseDialog.h"

#include "framework/IQzGuiMgr.h"

#include "platform/system/QzSystem.h"

#include <memory>
#include <string>
#include <vector>

class CDemoHost
{
public:
    // The client draws with the device of the renderer (Default is cairo).
    CDemoHost(int width, int height, DemoRenderer renderer = DemoRenderer::Cairo);
    ~CDemoHost();
    CDemoHost(const CDemoHost&) = delete;
    CDemoHost& operator=(const CDemoHost&) = delete;

    // Creates the main window and the manager, and registers the dialogs of the sample layout.
    bool Create(bool bDebug);
    HWND GetWindow() const { return m_hWnd; }
    QzGui::IQzGuiMgr* GetGuiMgr() const { return m_pGuiMgr; }
    CDemoScreen& GetScreen() { return *m_pScreen; }

    // Dispatches the posted messages, then draws one frame.
    void RunFrame();
    // Puts the client on the manual clock at 100000 ms, once. A headless run does so before
    // Create, so that the effects the client starts while it is created run on the same clock
    // as the scripts and every run draws the same frames.
    void UseManualClock();
    // Runs a script headless on the manual clock (from 100000 ms on unless already on it);
    // screenshots go to outDir.
    bool RunScript(const CDemoScript& script, const std::string& outDir, std::string& error);
    bool SaveShot(const std::string& outDir, const std::string& name, std::string& error);

private:
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    void PumpMessages();
    void RunStep(const DemoStep& step);
    void PostMouse(UINT message, int x, int y, WPARAM keys);
    void PressKey(int nKey, int nModifier);
    HWND KeyboardTarget();
    static void TurnImeOn(HWND hWnd);
    LRESULT OnHostMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void UpdateCursor(LPARAM lParam);
    void AddDialogs();
    void ToggleFlyingDialog();

    int m_nWidth;
    int m_nHeight;
    HWND m_hWnd = nullptr;
    std::unique_ptr<CDemoScreen> m_pScreen;
    QzGui::IQzGuiMgr* m_pGuiMgr = nullptr;
    CShowcaseDialog m_showcase;
    CControlsDialog m_controls;
    CCollectionsDialog m_collections;
    CLoginDialog m_loginDialog;
    std::unique_ptr<CPanelCaption> m_pPanelCaption;
    std::vector<std::unique_ptr<CLabelDialog>> m_vecDialogs;
    CLabelDialog* m_pFlyingDialog = nullptr;
    bool m_bManualClock = false;
};
