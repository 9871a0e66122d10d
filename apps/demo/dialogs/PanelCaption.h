// The client's drawing hook of the window that the library builds from ini/GUI_EX.ini: the
// records give that window its skin, buttons, image and tips but no texts, so the client writes
// them over it right after the window has drawn itself.
#pragma once

#include "framework/IQzGuiMgr.h"
#include "framework/QzAutoGuiMgr.h"

class CPanelCaption : public QzGui::IQzGuiApplyShow
{
public:
    CPanelCaption(QzGui::IQzGuiMgr* pGuiMgr, DWORD nDialogId)
        : m_pGuiMgr(pGuiMgr), m_nDialogId(nDialogId)
    {
    }

    void OnApplyShow() override;

private:
    QzGui::IQzGuiMgr* m_pGuiMgr;
    DWORD m_nDialogId;
};
