// The process-wide GUI helper: the list of live GUI managers and the layout debugging tools
// (debug drawing for all managers, live reloading of layout files, the draggable information
// panel about the window under the mouse). It exists while at least one manager is registered
// and destroys itself when the last one unregisters.
#pragma once

#include "framework/IQzGuiHelper.h"
#include "platform/system/QzSystem.h"

#include <list>
#include <string>

namespace QzGui
{

class CQzBaseWindow;
class IQzGuiMgr;

class CQzGuiHelper : public IQzGuiHelper
{
public:
    CQzGuiHelper(const CQzGuiHelper&) = delete;
    CQzGuiHelper& operator=(const CQzGuiHelper&) = delete;

    void DebugOn() override;
    void DebugOff() override;
    void ReloadAll() override;
    virtual ~CQzGuiHelper();

    // The helper, or null while none exists.
    static CQzGuiHelper* Instance() { return s_pInstance; }
    // The helper, created when none exists.
    static CQzGuiHelper* GetOrCreate();

    // Appends a manager; false for null.
    bool RegisterMgr(IQzGuiMgr* pQzGuiMgr);
    // Removes a manager; the helper deletes itself when that empties its list.
    void UnregisterMgr(IQzGuiMgr* pQzGuiMgr);
    bool IsRegistered(const IQzGuiMgr* pQzGuiMgr) const;
    // The window under the mouse and its manager, kept while debugging is on.
    void SetDebugTarget(IQzGuiMgr* pQzGuiMgr, CQzBaseWindow* pWnd);
    // Drops the target window when it goes away.
    void ForgetWindow(const CQzBaseWindow* pWnd);
    void ReloadTargetDialog(DWORD nDialogId);
    BOOL OnMouseMessage(UINT message, WPARAM wParam, LPARAM lParam);
    BOOL OnKeyMessage(UINT nKey);
    void DrawDebugPanel(IQzGuiMgr* pQzGuiMgr);
    bool IsDebugOn() const { return m_bDebug; }

    // For the panel's users and tests.
    const RECT& GetPanelRect() const { return m_rcPanel; }
    bool IsPanelExpanded() const { return m_bPanelExpanded; }
    int GetFlashFrames() const { return m_nFlashFrames; }
    IQzGuiMgr* GetTargetMgr() const { return m_pTargetMgr; }
    CQzBaseWindow* GetTargetWnd() const { return m_pTargetWnd; }
    // The label naming parent, id, variant and type of a window, as the panel shows it.
    static std::string FormatWindowLabel(CQzBaseWindow* pWnd);
    // The label of a window type code ("BUTTON", ...); "" for codes without one.
    static const char* GetTypeLabel(int nType);

private:
    CQzGuiHelper() = default;

    BOOL OnPanelMouse(UINT message, POINT pt);

    static CQzGuiHelper* s_pInstance;

    bool m_bDebug = false;
    bool m_bPanelExpanded = true;
    bool m_bPanelDragging = false;
    CQzBaseWindow* m_pTargetWnd = nullptr;
    IQzGuiMgr* m_pTargetMgr = nullptr;
    std::list<IQzGuiMgr*> m_lstMgr;
    RECT m_rcPanel = {10, 70, 160, 320};
    POINT m_ptDragOffset = {0, 0};
    int m_nFlashFrames = 0;
};

} // namespace QzGui
