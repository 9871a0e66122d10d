// A push button: reports the press, the click (a release over the button after a press on it)
// and the double click to its parent as WM_COMMAND.
#pragma once

#include "controls/QzCtrl.h"

namespace QzGui
{

class CQzButton : public CQzCtrl
{
public:
    CQzButton() = default;
    CQzButton(const CQzButton&) = default;
    CQzButton& operator=(const CQzButton&) = default;

    ~CQzButton() override = default;
    void OnMouseMove(UINT /*nFlags*/, POINT /*point*/) override {}
    void OnMouseLeave() override {}
    int GetWndType() override { return QZ_WND_BUTTON; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Shows the named cursor, unless the record configures a cursor of its own.
    void ChangeCursor(const char* pszName);

private:
    LRESULT OnPress(UINT nFlags, POINT point);
    void OnRelease(UINT nFlags, POINT point);

    // A press is in progress: it began on this button and the button is not yet released.
    bool m_bPressed = false;
};

} // namespace QzGui
