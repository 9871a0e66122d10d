// The demo's game client: its main window, its message pump and its frame loop, the GUI
// manager with the sample layout, and the client's dialogs. Every message of the main window
// goes to the manager first, the way a game passes its messages to the GUI.
#pragma once

#include "CollectionsDialog.h"
#include "ControlsDialog.h"
#include "DemoInput.h"
#include "DemoScreen.h"
#include "DemoScript.h"
#include "LabelDialog.h"
#include "LiveReload.h"
#include "LoginDialog.h"
#include "PanelCaption.h"
#include "ShowcaseDialog.h"
#include "WindowPlaces.h"

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

    // The clock a headless run and the window start on.
    static const DWORD kStartMs = 100000;

    // Creates the main window and the manager, and registers the dialogs of the sample layout.
    bool Create(bool bDebug);
    HWND GetWindow() const { return m_hWnd; }
    int GetWidth() const { return m_nWidth; }
    int GetHeight() const { return m_nHeight; }
    // The main window's class has CS_DBLCLKS: its window gets double-click messages.
    bool WantsDoubleClicks() const;
    // The system cursor set (GetCursor); null while the host draws the manager's own cursor.
    HCURSOR GetSystemCursor() const { return ::GetCursor(); }
    QzGui::IQzGuiMgr* GetGuiMgr() const { return m_pGuiMgr; }
    CDemoScreen& GetScreen() { return *m_pScreen; }

    // Dispatches the posted messages, then draws one frame. F12 in the queue switches the
    // manager's debug mode, whichever window has the keys.
    void RunFrame();
    // Posts one input as Windows delivers it: mouse messages to the main window (the wheel in
    // screen coordinates), keys and characters to the focus window once the input before them
    // is handled, the input method's text through the focus window's input context (a result
    // the closed context refuses becomes characters), clipboard text into the clipboard, a size
    // to Resize. Shot marks are the caller's.
    void PostInput(const DemoInput& input);
    // The screen the manager and the device draw becomes width x height (each 1..8192).
    void Resize(int width, int height);
    // Puts the client on the manual clock at startMs, once. A headless run does so before
    // Create, so that the effects the client starts while it is created run on the same clock
    // as the scripts and every run draws the same frames; the window sets it every frame.
    void UseManualClock(DWORD startMs = kStartMs);
    // Runs a script headless on the manual clock (from 100000 ms on unless already on it);
    // screenshots go to outDir.
    bool RunScript(const CDemoScript& script, const std::string& outDir, std::string& error);
    bool SaveShot(const std::string& outDir, const std::string& name, std::string& error);

    // Watches the ini/ and ani/ folders of the bundle at root (the current folder holds the
    // bundle) and reloads the files saved there, a frame after the editor's last event; false
    // when the folders cannot be watched.
    bool WatchBundle(const std::string& root);
    // Checks the files (relative to the bundle: "ini/DemoLayout.ini") and, when they are sound,
    // reloads them keeping what the user sees: open dialogs, dragged places, typed text, the
    // chat's rows and selection. A broken edit is not loaded and shows in the reload panel;
    // false then.
    bool ReloadFiles(const std::vector<std::string>& files);
    // Null until WatchBundle.
    const CReloadPanel* GetReloadPanel() const;

private:
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    void PumpMessages();
    void RunStep(const DemoStep& step);
    void PostMouse(UINT message, int x, int y, WPARAM keys, int wheel = 0);
    void PostKey(const DemoInput& input);
    void PostImeResult(const std::string& text);
    void PressKey(int nKey, int nModifier);
    HWND KeyboardTarget();
    static void TurnImeOn(HWND hWnd);
    LRESULT OnHostMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void ResetCursor();
    void UpdateCursor(LPARAM lParam);
    void AddDialogs();
    void PollBundle();
    void ToggleFlyingDialog();
    void ToggleDebugMode();
    bool CloseTopDialog();
    bool IsResident(const QzGui::CQzDialog* dialog) const;

    int m_nWidth;
    int m_nHeight;
    HWND m_hWnd = nullptr;
    UINT m_nClassStyle = 0;
    std::unique_ptr<CDemoScreen> m_pScreen;
    QzGui::IQzGuiMgr* m_pGuiMgr = nullptr;
    CShowcaseDialog m_showcase;
    CControlsDialog m_controls;
    CCollectionsDialog m_collections;
    CLoginDialog m_loginDialog;
    std::unique_ptr<CPanelCaption> m_pPanelCaption;
    std::vector<std::unique_ptr<CLabelDialog>> m_vecDialogs;
    CLabelDialog* m_pFlyingDialog = nullptr;
    // The dialogs shown from the start (the game's screen), which Escape leaves open.
    std::vector<const QzGui::CQzDialog*> m_vecResident;
    bool m_bManualClock = false;
    std::unique_ptr<CLiveReload> m_pLiveReload;
    CWindowPlaces m_places;
};
