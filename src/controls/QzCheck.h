// A check box: a click inside it (press and release on the box) toggles its check; it reports
// the press and the click to its parent as WM_COMMAND. With the hover look, the mouse over the
// box draws frame 3 (unchecked) or 4 (checked).
#pragma once

#include "controls/QzCtrl.h"

namespace QzGui
{

class CQzCheck : public CQzCtrl
{
public:
    CQzCheck() = default;
    CQzCheck(const CQzCheck&) = default;
    CQzCheck& operator=(const CQzCheck&) = default;

    ~CQzCheck() override = default;
    BOOL LoadWndInfo() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    int GetWndType() override { return QZ_WND_CHECK; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    WORD UpdateState() override;

    // New virtual operation.
    virtual void SetHoverLook(bool bHoverLook)
    {
        m_bHoverLook = bHoverLook;
        ForgetLook();
    }
    bool HasHoverLook() const { return m_bHoverLook; }

private:
    void OnPress();
    bool CanToggle();

    bool m_bHoverLook = false;
    bool m_bPressed = false;
};

} // namespace QzGui
