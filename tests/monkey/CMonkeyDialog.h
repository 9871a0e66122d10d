// A dialog of the monkey's screen: a probe that owns its controls, its child dialogs and the
// controls the monkey makes in its spawn places, so that deleting it deletes its whole tree.
#pragma once

#include "CMonkeyLayout.h"
#include "CProbe.h"

#include "framework/QzDialog.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace QzMonkey
{

class CMonkeyDialog : public CProbe<QzGui::CQzDialog>
{
public:
    CMonkeyDialog(DWORD nId, QzGui::CQzBaseWindow* pParent, std::string name);
    ~CMonkeyDialog() override;

    // Adds the control under the id and keeps it; returns it.
    template <class TCtrl> TCtrl* Keep(DWORD nId, std::unique_ptr<TCtrl> pCtrl)
    {
        TCtrl* p = pCtrl.get();
        AddCtrl(nId, p);
        m_ctrls.push_back(std::move(pCtrl));
        return p;
    }
    // Keeps a child dialog (the caller adds it with AddChildDialog).
    CMonkeyDialog* KeepChild(std::unique_ptr<CMonkeyDialog> pChild);
    const std::vector<std::unique_ptr<CMonkeyDialog>>& Children() const { return m_children; }

    // The control made in the spawn place, if any.
    QzGui::CQzBaseWindow* Spawned(int nSlot) const;
    // Adds, creates and shows the control in the empty spawn place.
    void Spawn(int nSlot, std::unique_ptr<QzGui::CQzBaseWindow> pCtrl);
    // Takes the control of the spawn place out of the dialog, marked removed, for the caller to
    // delete.
    std::unique_ptr<QzGui::CQzBaseWindow> Unspawn(int nSlot);

    // Marks the dialog, its child dialogs and every control they hold as removed.
    void MarkTreeRemoved();
    // Runs the action when the control with the id reports a click.
    void OnClick(DWORD nCtrlId, std::function<void()> action);

private:
    std::vector<std::unique_ptr<QzGui::CQzBaseWindow>> m_ctrls;
    std::unique_ptr<QzGui::CQzBaseWindow> m_spawned[CMonkeyLayout::kSpawnSlots];
    std::vector<std::unique_ptr<CMonkeyDialog>> m_children;
};

} // namespace QzMonkey
