// The edit shell: the process-wide object behind the text entry of edit boxes, reached through
// g_pQzEditSingle. Every GUI manager holds one reference on it; the last one deletes it.
//
// This first version keeps the reference count and the host's instance, window and manager.
// The two hidden system edit windows, the binding of an edit box, the window procedures, the
// IME and the edit font arrive with the edit box; until then no edit box can be bound and the
// focus id is 0.
#pragma once

#include "platform/system/QzSystem.h"

namespace QzGui
{

class CQzEdit;
class CQzGuiMgr;

class CQzEditSingle
{
public:
    CQzEditSingle(const CQzEditSingle&) = delete;
    CQzEditSingle& operator=(const CQzEditSingle&) = delete;

    // Creates the shell on the first call, adds one reference and returns it.
    static CQzEditSingle* AcquireInstance();
    // Drops one reference; the last one deletes the shell and clears g_pQzEditSingle.
    static void ReleaseInstance();

    // Records the host's module instance, main window and the manager that set the shell up.
    // False, changing nothing, when any of them is null.
    bool Init(HINSTANCE hInstance, HWND hParentWnd, CQzGuiMgr* pGuiMgr);
    bool IsInitialized() const { return m_bInitialized; }

    HINSTANCE GetInstance() const { return m_hInstance; }
    HWND GetParentWnd() const { return m_hParentWnd; }
    CQzGuiMgr* GetGuiMgr() const { return m_pGuiMgr; }
    unsigned GetRefCount() const { return m_nRefCount; }

    CQzEdit* GetActiveEdit() const { return m_pActiveEdit; }
    // Full id of the bound edit box (dialog id low, control id high); 0 while none is bound.
    DWORD GetFocusId() const;

private:
    CQzEditSingle() = default;
    ~CQzEditSingle() = default;

    unsigned m_nRefCount = 0;
    bool m_bInitialized = false;
    HWND m_hParentWnd = nullptr;
    CQzEdit* m_pActiveEdit = nullptr;
    HINSTANCE m_hInstance = nullptr;
    CQzGuiMgr* m_pGuiMgr = nullptr;
};

// The shell while at least one manager holds it, else null.
extern CQzEditSingle* g_pQzEditSingle;

} // namespace QzGui
