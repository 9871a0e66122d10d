// A dialog of the sample client that only shows its background and a label: the row of back
// types, the window that flies in, the topmost window.
#pragma once

#include "framework/QzDialog.h"

#include <string>

class CLabelDialog : public QzGui::CQzDialog
{
public:
    CLabelDialog(DWORD nId, const char* pszLabel);

    void OnAfterDraw() override;

private:
    std::string m_strLabel;
};
