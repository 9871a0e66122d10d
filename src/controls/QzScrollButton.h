// A button that scrolls another window: a press sends one step of its kind to the target, the
// line kinds repeat the step while the button is held, and the release ends the scroll. The
// toggle kind flips a flag and reports it instead. The button does not know what the target
// scrolls.
#pragma once

#include "controls/QzCtrl.h"

namespace QzGui
{

// What a scroll button sends when pressed (kind 2 and kinds above 5 send nothing).
enum : BYTE
{
    QZ_SCROLL_LINEUP = 0,
    QZ_SCROLL_LINEDOWN = 1,
    QZ_SCROLL_TOGGLE = 3,
    QZ_SCROLL_PAGEUP = 4,
    QZ_SCROLL_PAGEDOWN = 5,
};

// The toggle kind's report to its target: wParam the new toggle state (0 or 1), lParam 1.
constexpr UINT QZ_WM_SCROLLTOGGLE = 335;

class CQzScrollButton : public CQzCtrl
{
public:
    CQzScrollButton() = default;
    CQzScrollButton(const CQzScrollButton&) = default;
    CQzScrollButton& operator=(const CQzScrollButton&) = default;

    ~CQzScrollButton() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    int GetWndType() override { return QZ_WND_SCROLLBUTTON; }
    void OnTimer(DWORD nTimerId) override;

    // Binds the button to the target with the kind; returns 1.
    BOOL Attach(CQzBaseWindow* pTarget, BYTE byKind);
    // Period of the repeat while a line button is held, in milliseconds.
    void SetInterval(DWORD nInterval) { m_nInterval = nInterval; }
    // A null target is ignored: the button keeps the one it has. The target is not owned and
    // must outlive the button; it is usually the dialog that holds the button.
    void SetTarget(CQzBaseWindow* pTarget);

private:
    // The press step of the kind; the toggle kind flips its flag first.
    void SendPressStep();
    void SendScroll(WPARAM nCode);

    BYTE m_byKind = QZ_SCROLL_LINEUP;
    bool m_bToggle = false;
    bool m_bAttached = false;
    DWORD m_nInterval = 100;
    CQzBaseWindow* m_pTarget = nullptr; // not owned
};

} // namespace QzGui
