#include "textinput/QzEditSingle.h"

namespace QzGui
{

CQzEditSingle* g_pQzEditSingle = nullptr;

CQzEditSingle* CQzEditSingle::AcquireInstance()
{
    if (!g_pQzEditSingle)
        g_pQzEditSingle = new CQzEditSingle;
    ++g_pQzEditSingle->m_nRefCount;
    return g_pQzEditSingle;
}

void CQzEditSingle::ReleaseInstance()
{
    if (!g_pQzEditSingle)
        return;
    if (--g_pQzEditSingle->m_nRefCount > 0)
        return;
    delete g_pQzEditSingle;
    g_pQzEditSingle = nullptr;
}

bool CQzEditSingle::Init(HINSTANCE hInstance, HWND hParentWnd, CQzGuiMgr* pGuiMgr)
{
    if (!hInstance || !hParentWnd || !pGuiMgr)
        return false;
    m_hInstance = hInstance;
    m_hParentWnd = hParentWnd;
    m_pGuiMgr = pGuiMgr;
    m_bInitialized = true;
    return true;
}

DWORD CQzEditSingle::GetFocusId() const
{
    // Binding an edit box comes with the edit box itself; nothing can be bound before that.
    return 0;
}

} // namespace QzGui
