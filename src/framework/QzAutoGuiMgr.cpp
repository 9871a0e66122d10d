#include "framework/QzAutoGuiMgr.h"

#include "controls/QzButton.h"
#include "controls/QzImage.h"
#include "controls/QzStatic.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "layout/QzGuiWndInfo.h"

namespace QzGui
{

namespace
{

// The window type code a record was written with ("type" of the layout file).
int RecordType(IQzGuiWndInfo* pInfo)
{
    // Every record the layout manager hands out is one of its own CQzGuiWndInfo objects.
    return static_cast<CQzGuiWndInfo*>(pInfo)->GetType();
}

} // namespace

CQzAutoGuiMgr::~CQzAutoGuiMgr()
{
    DestroyWindows();
}

void CQzAutoGuiMgr::DestroyWindows()
{
    // Taken out first: a window's destructor may reach back into this object.
    std::vector<CQzBaseWindow*> windows;
    windows.swap(m_vecWnd);
    m_mapDialog.clear();
    for (CQzBaseWindow* pWnd : windows)
        delete pWnd;
}

void CQzAutoGuiMgr::Init(IQzGuiMgr* pGuiMgr)
{
    // The windows are built once; a second Init of the manager builds nothing more.
    if (!pGuiMgr || m_pGuiMgr)
        return;
    m_pGuiMgr = pGuiMgr;
    auto* pMgr = dynamic_cast<CQzGuiMgr*>(pGuiMgr);
    if (!pMgr)
        return;
    CQzGuiInfoMgr* pInfoMgr = pMgr->GetInfoMgr();
    // In record-key order, so that dialogs stack and take clicks as their keys order them.
    CQzGuiInfoMgr::ExtRecordTable dialogs;
    CQzGuiInfoMgr::ExtRecordTable controls;
    pInfoMgr->CollectExtendedRecords(dialogs, 0);
    for (const auto& dialogEntry : dialogs)
    {
        IQzGuiWndInfo* pDialogInfo = dialogEntry.second;
        if (RecordType(pDialogInfo) != QZ_WND_DIALOG)
            continue;
        auto* pDialog = static_cast<CQzDialog*>(
            CreateWnd(QZ_WND_DIALOG, static_cast<DWORD>(pDialogInfo->GetCtrlId())));
        if (!pDialog)
            continue;
        pGuiMgr->AddDialog(pDialog, nullptr, false);
        pInfoMgr->CollectExtendedRecords(controls, pDialog->GetId());
        for (const auto& ctrlEntry : controls)
        {
            IQzGuiWndInfo* pCtrlInfo = ctrlEntry.second;
            if (CQzBaseWindow* pCtrl = CreateWnd(RecordType(pCtrlInfo), 0))
                pDialog->AddCtrl(static_cast<DWORD>(pCtrlInfo->GetCtrlId()), pCtrl);
        }
    }
}

CQzBaseWindow* CQzAutoGuiMgr::CreateWnd(int nType, DWORD nId)
{
    CQzBaseWindow* pWnd = nullptr;
    switch (nType)
    {
    case QZ_WND_DIALOG:
    {
        auto* pDialog = new CQzDialog(nId, nullptr);
        m_mapDialog[nId] = pDialog;
        pWnd = pDialog;
        break;
    }
    case QZ_WND_BUTTON:
        pWnd = new CQzButton;
        break;
    case QZ_WND_IMAGE:
        pWnd = new CQzImage;
        break;
    case QZ_WND_STATIC:
    case QZ_WND_RECORD_STATIC:
        pWnd = new CQzStatic;
        break;
    default:
        return nullptr;
    }
    m_vecWnd.push_back(pWnd);
    return pWnd;
}

void CQzAutoGuiMgr::ShowDialog(DWORD nId)
{
    auto it = m_mapDialog.find(nId);
    if (it != m_mapDialog.end())
        it->second->ShowWindow(SW_SHOW);
}

void CQzAutoGuiMgr::HideDialog(DWORD nId)
{
    auto it = m_mapDialog.find(nId);
    if (it != m_mapDialog.end())
        it->second->ShowWindow(SW_HIDE);
}

} // namespace QzGui
