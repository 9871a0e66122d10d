// Where the top-level dialogs of a manager are, kept across a reload of the layout: the reload
// puts every dialog where its record says, so a dialog the user dragged elsewhere goes back
// there afterwards, and every dialog keeps its shown or hidden state. A dialog still where the
// layout put it takes the new place, so that an edited "x" or "y" shows.
#pragma once

#include "platform/system/QzSystem.h"

#include <map>

namespace QzGui
{
class CQzDialog;
class CQzGuiMgr;
} // namespace QzGui

class CWindowPlaces
{
public:
    // Notes where the layout put each dialog (after the manager is made or resized).
    void NotePlaced(QzGui::CQzGuiMgr& mgr);
    // Before the reload: each dialog's place and shown state.
    void Save(QzGui::CQzGuiMgr& mgr);
    // After the reload: the dragged dialogs back in place, the shown state as before.
    void Restore(QzGui::CQzGuiMgr& mgr);

private:
    struct Place
    {
        POINT pos = {0, 0};
        bool bVisible = false;
    };

    std::map<const QzGui::CQzDialog*, POINT> m_mapPlaced;
    std::map<const QzGui::CQzDialog*, Place> m_mapSaved;
};
