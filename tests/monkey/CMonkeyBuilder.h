// Makes the windows of the monkey's screen: a dialog of the layout with its controls set up as a
// host sets them up before creation (lists and trees bound to their scroll buttons and sliders,
// sliders and scroll buttons aimed at the dialog, edit boxes of each style), a control of any
// kind for a spawn place, and the values controls take once created (rows, items, cells, texts).
#pragma once

#include "CMonkeyDialog.h"
#include "CMonkeyEvent.h"

#include <functional>
#include <memory>
#include <string>

namespace QzMonkey
{

class CMonkeyBuilder
{
public:
    // The dialog of the address and its controls; child dialogs are made on their own. A button
    // whose action removes the dialog runs removeSelf.
    static std::unique_ptr<CMonkeyDialog> BuildDialog(int nAddress, QzGui::CQzBaseWindow* pParent,
                                                      const std::function<void()>& removeSelf);
    // A control of the kind for a spawn place of the dialog, set up for creation.
    static std::unique_ptr<QzGui::CQzBaseWindow> BuildCtrl(CtrlKind kind, QzGui::CQzDialog& dialog,
                                                           std::string name);
    // The values of a created control; nothing for a kind that has none.
    static void Fill(QzGui::CQzBaseWindow& ctrl);
};

} // namespace QzMonkey
