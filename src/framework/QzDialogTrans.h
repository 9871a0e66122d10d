// A dialog the mouse passes through wherever it has no control: it lays out, draws, runs its
// timers and dispatches WM_COMMAND like any dialog, but its own surface neither drags,
// captures nor consumes clicks, and the manager never brings it to the top on a click.
#pragma once

#include "framework/QzDialog.h"

namespace QzGui
{

class CQzDialogTrans : public CQzDialog
{
public:
    CQzDialogTrans(DWORD nId, CQzBaseWindow* pParent);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

} // namespace QzGui
