#include "support/GuiScene.h"

#include "layout/QzGuiInfoMgr.h"
#include "platform/services/QzScreenAdapter.h"

namespace QzTest
{

GuiScene::GuiScene(Files files)
{
    m_root.Write("ini/Test.ini", "");
    m_root.Write("ini/Gui3DEffect.ini", "");
    for (const auto& file : files)
    {
        if (file.second)
            m_root.Write(file.first, file.second);
    }
    m_pMgr = static_cast<QzGui::CQzGuiMgr*>(QzGui::CreateGuiMgr());
    m_pMgr->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), 100, "Test.ini");
    m_pMgr->SetScreenSize(1024, 768);
    m_harness.SetMessageHandler(
        [this](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT
        {
            const BOOL bResult = m_pMgr->OnMessage(message, wParam, lParam);
            if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
                m_nMouseResult = bResult;
            return bResult;
        });
}

GuiScene::~GuiScene()
{
    m_harness.SetMessageHandler(nullptr);
    m_pMgr->Release();
    QzPlatform::GetScreenAdapter().Reset();
}

QzGui::CQzGuiWndInfo* GuiScene::AddRecord(DWORD nParent, DWORD nId, RECT rc, Extras extras)
{
    auto* pRecord = new QzGui::CQzGuiWndInfo;
    pRecord->SetParentId(static_cast<int>(nParent));
    pRecord->SetCtrlId(static_cast<int>(nId));
    pRecord->SetX(static_cast<WORD>(rc.left));
    pRecord->SetY(static_cast<WORD>(rc.top));
    pRecord->SetWidth(static_cast<WORD>(rc.right - rc.left));
    pRecord->SetHeight(static_cast<WORD>(rc.bottom - rc.top));
    for (const auto& extra : extras)
        pRecord->AddExtra(extra.first, extra.second);
    m_pMgr->GetInfoMgr()->InsertRecord(pRecord);
    return pRecord;
}

void GuiScene::Frame()
{
    m_harness.Frame([this] { m_pMgr->Show(); });
}

} // namespace QzTest
