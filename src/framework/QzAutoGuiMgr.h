// Builds dialogs with their simple controls from the extended records alone, without host code,
// and shows and hides them by id. One is embedded in each GUI manager; it owns what it creates.
#pragma once

#include "platform/system/QzSystem.h"

#include <map>
#include <vector>

namespace QzGui
{

class CQzBaseWindow;
class CQzDialog;
class IQzGuiMgr;

class CQzAutoGuiMgr
{
public:
    CQzAutoGuiMgr() = default;
    CQzAutoGuiMgr(const CQzAutoGuiMgr&) = delete;
    CQzAutoGuiMgr& operator=(const CQzAutoGuiMgr&) = delete;
    virtual ~CQzAutoGuiMgr();

    void Init(IQzGuiMgr* pGuiMgr);
    // A window of the type (1 dialog, 2 button, 4 image, 5 and 20 static), or null.
    CQzBaseWindow* CreateWnd(int nType, DWORD nId);
    void ShowDialog(DWORD nId);
    void HideDialog(DWORD nId);
    // Deletes every window created so far; the owning manager calls it first thing in its
    // destructor, while the windows can still reach it.
    void DestroyWindows();

private:
    std::vector<CQzBaseWindow*> m_vecWnd;
    std::map<DWORD, CQzDialog*> m_mapDialog;
    IQzGuiMgr* m_pGuiMgr = nullptr;
};

// The host's per-dialog drawing hook (IQzGuiMgr::SetDrawHook).
class IQzGuiApplyShow
{
public:
    virtual void OnApplyShow() = 0;

protected:
    ~IQzGuiApplyShow() = default;
};

} // namespace QzGui
