#include "LabelDialog.h"

#include "platform/services/QzTextDraw.h"

CLabelDialog::CLabelDialog(DWORD nId, const char* pszLabel)
    : CQzDialog(nId, nullptr), m_strLabel(pszLabel)
{
}

void CLabelDialog::OnAfterDraw()
{
    QzPlatform::DrawGameText(GetX() + 6, GetY() + GetHeight() - 20, 0xFFFFFFFF, m_strLabel.c_str(),
                             nullptr, 12, TRUE, 0, 0xFF000000, nullptr);
}
