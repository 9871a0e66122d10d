// The library's root object behind IQzGuiMgr: the top-level dialogs and their z-order, input
// routing, per-frame drawing, the tip queue, the mouse capture and position, the font, and the
// sub-objects windows need (layout manager, cursor manager, auto GUI manager).
#pragma once

#include "framework/IQzGuiMgr.h"
#include "framework/QzAutoGuiMgr.h"

#include <list>
#include <string>
#include <vector>

namespace QzGui
{

class CQzGuiInfoMgr;

// One tip box queued for the end of the frame.
struct QzTipEntry
{
    int x = 0;
    int y = 0;
    int nWidth = 0;
    int nHeight = 0;            // 0: computed from the lines
    int nAlign = 0;             // 0 left, 1 centre, 2 right
    std::string strBackSection; // empty: "DialogNorMsg" stretched to the box
    std::vector<std::string> lines;
};

class CQzGuiMgr : public IQzGuiMgr
{
public:
    CQzGuiMgr();
    CQzGuiMgr(const CQzGuiMgr&) = delete;
    CQzGuiMgr& operator=(const CQzGuiMgr&) = delete;

    // IQzGuiMgr, in slot order.
    BOOL Init(HINSTANCE hInstance, HWND hWnd, int nDefaultDlgId,
              const char* pszLayoutFile) override;
    void LoadLayout(const char* pszFile) override;
    void UnhideDialogs() override;
    void ReloadLayout() override;
    void ReloadDialog(DWORD nDialogId) override;
    int Release() override;
    void SetTransformCallback(QzTransformProc pfn) override;
    void SetSoundCallback(QzSoundProc pfn) override;
    void PlaySound(const char* pszName, int a = 0, int b = 0, int c = 0, int d = 0,
                   int nVolume = 100) override;
    void SetScreenSize(int nWidth, int nHeight) override;
    void AddTip(int x, int y, int nWidth, const char* pszBackSection,
                const std::vector<std::string>& lines, int nAlign) override;
    void ShowTipNow(int x, int y, const char* pszText, DWORD dwLineValue, int nMinWidth,
                    int nHeight, const std::string& strBackSection) override;
    void AddDialog(CQzDialog* pDialog, CQzBaseWindow* pParent, bool bCreateCtrls) override;
    void RemoveDialog(CQzDialog* pDialog) override;
    CQzDialog* FindDialog(DWORD nId) override;
    CQzDialog* GetActiveDialog() override;
    void Show() override;
    void ShowExtra() override;
    void DrawTips() override;
    void AutoShowDialog(DWORD nId) override;
    void AutoHideDialog(DWORD nId) override;
    void CloseDialogs(DWORD nEvent) override;
    void SetDialogsShown(bool bShown) override;
    void BringToTop(DWORD nDialogId) override;
    CQzDialog* DialogFromPoint(POINT pt) override;
    CQzCursorMgr* GetCursorMgr() override;
    void GetMousePos(POINT* pPoint) override;
    const char* GetHostString(int nIndex) override;
    void SetHostStrings(const char* psz1, const char* psz2) override;
    const QzCursorEntry* FindCursor(const char* pszName) override;
    void SetFrameMode(DWORD nDialogId, BOOL bFrameMode) override;
    void SplitText(const char* pszText, std::vector<std::string>& lines, int& nMaxLength) override;
    void TransformPoint(int x, int y, int* pOutX, int* pOutY) override;
    BOOL OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetDebugMode(int nMode) override;
    int GetDebugMode() override;
    DWORD GetFocusId() override;
    BOOL GetDebugPos(int* pX, int* pY) override;
    IQzGuiWndInfo* GetWndInfo(DWORD nParentId, DWORD nId) override;
    void SetDrawHook(IQzGuiApplyShow* pHook, DWORD nDialogId) override;
    QzGuiMgrExtra* GetExtra() override;
    void BroadcastEvent(DWORD nCode) override;
    bool IsUnderMouse(CQzBaseWindow* pWindow) override;
    void SetInfoString(uint64_t nRecordKey, const char* pszText) override;
    void NotifyAllDialogs() override;

    // Beyond the interface, in this order.
    virtual ~CQzGuiMgr();
    void LoadGuiLogic();
    bool IsDialogsHidden() const { return m_bHideDialogs; }
    void PinDialog(CQzDialog* pDialog);

    // Used by the windows and the other sub-systems.
    // The window that gets the host window's keyboard, character and IME messages (null: none).
    // It is let go when it or a window above it is destroyed, hidden or disabled, and when its
    // dialog is removed; a key message that finds it unable to take keys lets it go as well.
    // A window taking the key focus takes the host window's keys from a bound edit box too.
    void SetKeyFocus(CQzBaseWindow* pWindow);
    CQzBaseWindow* GetKeyFocus() const { return m_pKeyFocus; }
    // Lets the key focus go when it lies in the tree under pRoot (pRoot included).
    void DropKeyFocusIn(const CQzBaseWindow* pRoot);
    // Drops every reference the manager keeps to a window that is going away: the capture, the
    // key focus, the active dialog, the draw hook when the window is the hook, the window's
    // place in both dialog lists, and the edit shell's binding when it is the bound box.
    void ForgetWindow(CQzBaseWindow* pWindow);
    CQzGuiInfoMgr* GetInfoMgr();
    // The layout manager when one exists; never creates it.
    CQzGuiInfoMgr* FindInfoMgr() const { return m_pInfoMgr; }
    POINT GetClientOrigin() const;
    int GetScreenWidth() const;
    int GetScreenHeight() const;
    HFONT GetFont();
    const char* GetFontFace();
    HWND GetHwnd() const { return m_hWnd; }
    HINSTANCE GetInstance() const { return m_hInstance; }
    int GetDefaultDlgId() const { return m_nDefaultDlgId; }
    void SetCapture(CQzBaseWindow* pWindow) { m_pCapture = pWindow; }
    void ReleaseCapture() { m_pCapture = nullptr; }
    bool IsCapture(const CQzBaseWindow* pWindow) const { return m_pCapture == pWindow; }
    CQzBaseWindow* GetCapture() const { return m_pCapture; }
    void BringToTop(CQzDialog* pDialog);
    bool IsRegistered(const CQzDialog* pDialog) const;
    void SetTopmost(CQzDialog* pDialog, bool bTopmost);
    void DrawTip(const QzTipEntry& tip);
    const std::list<CQzDialog*>& GetDialogs() const { return m_lstDialog; }
    CQzAutoGuiMgr& GetAutoGuiMgr() { return m_AutoGuiMgr; }

private:
    BOOL RouteMouse(UINT message, WPARAM wParam, LPARAM lParam);
    static bool IsKeyFocusMessage(UINT message);
    // The key focus window when it may take keys now; a hidden or disabled one is dropped.
    CQzBaseWindow* KeyFocusTarget();
    // False for a dialog of a snapshot that was unregistered since the snapshot was taken.
    bool IsLive(const CQzDialog* pDialog, unsigned nListVersion) const;
    // Puts the topmost dialogs back above every other, in their registration order.
    void RaiseTopmost();
    void ReloadEffectPlacement();
    void ReloadAllDialogs(int nMode);
    void DrawTipBack(const QzTipEntry& tip, int x, int y, int nBoxWidth, int nBoxHeight);

    bool m_bHideDialogs = false;
    bool m_bTipsByHost = false;
    HFONT m_hFont = nullptr;
    HWND m_hWnd = nullptr;
    int m_nDefaultDlgId = 0;
    HINSTANCE m_hInstance = nullptr;
    int m_nScreenWidth = 0;
    int m_nScreenHeight = 0;
    int m_nDebugMode = 0;
    POINT m_ptDebug = {0, 0};
    CQzCursorMgr* m_pCursorMgr = nullptr;
    CQzBaseWindow* m_pCapture = nullptr;
    CQzDialog* m_pActiveDialog = nullptr;
    std::list<CQzDialog*> m_lstDialog;
    std::list<CQzDialog*> m_lstTopmost;
    QzTransformProc m_pfnTransform = nullptr;
    QzSoundProc m_pfnSound = nullptr;
    POINT m_ptMouse = {0, 0};
    std::string m_strHost1;
    std::string m_strHost2;
    std::vector<QzTipEntry> m_vecTip;
    CQzAutoGuiMgr m_AutoGuiMgr;
    CQzBaseWindow* m_pKeyFocus = nullptr;
    CQzGuiInfoMgr* m_pInfoMgr = nullptr;
    IQzGuiApplyShow* m_pDrawHook = nullptr;
    DWORD m_nDrawHookId = 0;
    QzGuiMgrExtra m_Extra;
    std::string m_strFontFace;
    // The draw hook as a window, when the hook object is one (cleared when it goes away).
    CQzBaseWindow* m_pDrawHookWnd = nullptr;
    // Counts every change of the dialog lists, so that walks over a snapshot notice removals.
    unsigned m_nListVersion = 0;
};

} // namespace QzGui
