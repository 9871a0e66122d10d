// The showcase window of the sample client: a dialog of the layout whose own drawing shows the
// bundle's skins, captions in two scripts, emotion icons, a button and a check box that answer
// the mouse, a round button hit-tested through its mask section, and what the keyboard typed.
#pragma once

#include "framework/QzDialog.h"

#include <string>

class CShowcaseDialog : public QzGui::CQzDialog
{
public:
    static constexpr DWORD kId = 100;

    CShowcaseDialog();
    // The back is the library's: a device that keeps what it drew repeats it.
    bool HasStockBack() const override { return true; }

    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    void OnMouseMove(UINT nFlags, POINT point) override;
    void OnMouseLeave() override;
    void OnAfterDraw() override;

    // A character the host's window received and no window took.
    void OnChar(wchar_t ch);

private:
    // Points in the dialog's own coordinates.
    POINT ToLocal(POINT client) const;
    bool IsOnButton(POINT local) const;
    bool IsOnCheck(POINT local) const;
    void DrawButtonRow(int x, int y);
    void DrawCheckRow(int x, int y);
    void DrawTexts(int x, int y);
    void DrawMaskTest(int x, int y);

    POINT m_ptMouse = {-1000, -1000};
    bool m_bButtonDown = false;
    int m_nClicks = 0;
    bool m_bChecked = false;
    std::wstring m_strTyped;
};
