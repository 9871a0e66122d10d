#include "PanelCaption.h"

#include "framework/QzDialog.h"
#include "platform/services/QzTextDraw.h"

namespace
{

void Text(int x, int y, const char* pszText)
{
    QzPlatform::DrawGameText(x, y, 0xFFFFFFFF, pszText, nullptr, 12, TRUE, 0, 0xFF000000, nullptr);
}

} // namespace

void CPanelCaption::OnApplyShow()
{
    QzGui::CQzDialog* pDialog = m_pGuiMgr->FindDialog(m_nDialogId);
    if (!pDialog)
        return;
    const int x = pDialog->GetX();
    const int y = pDialog->GetY();
    Text(x + 20, y + 16, "Built from ini/GUI_EX.ini alone");
    Text(x + 20, y + 66, "A static: hover it for its tip.");
    Text(x + 20, y + 84, "Its buttons and image are");
    Text(x + 20, y + 102, "records, not client code.");
}
