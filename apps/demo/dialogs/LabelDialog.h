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
    // The back is the library's: a device that keeps what it drew repeats it.
    bool HasStockBack() const override { return true; }

private:
    std::string m_strLabel;
};
