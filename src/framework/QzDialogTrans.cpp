#include "framework/QzDialogTrans.h"

namespace QzGui
{

CQzDialogTrans::CQzDialogTrans(DWORD nId, CQzBaseWindow* pParent) : CQzDialog(nId, pParent)
{
    m_bTrans = true;
}

// | Message      | Handling                                              | Result |
// |--------------|-------------------------------------------------------|--------|
// | WM_MOVE      | OnMove (children follow), then the base               | 0      |
// | WM_SIZE      | OnSize, then the base                                 | 0      |
// | WM_COMMAND   | OnCommand; 1 when a handler ran, else the base        | 1 / 0  |
// | WM_TIMER     | OnTimer, then the base                                | 0      |
// | fly finished | as a dialog: hides once it is off screen              | 0      |
// | other        | the base window (cursor only): no drag, no capture    | 0      |
LRESULT CQzDialogTrans::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_MOVE:
        OnMove(wParam, lParam);
        break;
    case WM_SIZE:
        OnSize(wParam, lParam);
        break;
    case WM_COMMAND:
        if (OnCommand(HIWORD(wParam), LOWORD(wParam)))
            return 1;
        break;
    case WM_TIMER:
        OnTimer(static_cast<DWORD>(wParam));
        break;
    case QZ_WM_FLYFINISHED:
        // A fly-out started by OnHiding must end hidden, as for any dialog.
        return CQzDialog::WindowProc(message, wParam, lParam);
    default:
        break;
    }
    CQzBaseWindow::WindowProc(message, wParam, lParam);
    return 0;
}

} // namespace QzGui
