// A GUI manager on a host window of its own, populated with the monkey's screen, and what the
// events do to it: input delivered as Windows delivers it (the mouse to the host window, keys to
// the focus window, posted messages pumped after every event), the host's calls, reloads of the
// layout file in its variants, dialogs and controls made, removed and later deleted. Removed
// windows wait in a graveyard until a purge (or until more than a few dozen wait), so that a
// message reaching one is caught by its probe rather than by a crash.
#pragma once

#include "CMonkeyDialog.h"
#include "CMonkeyEvent.h"
#include "CMonkeyLayout.h"

#include "framework/QzGuiMgr.h"

#include <deque>
#include <memory>

namespace QzMonkey
{

class CMonkeyWorld
{
public:
    // Once a process, before the first world: the files the screen reads, as memory files.
    static void SetupProcess();

    CMonkeyWorld();
    ~CMonkeyWorld();
    CMonkeyWorld(const CMonkeyWorld&) = delete;
    CMonkeyWorld& operator=(const CMonkeyWorld&) = delete;

    void Apply(const CMonkeyEvent& event);

    QzGui::CQzGuiMgr* Mgr() const { return m_pMgr; }
    HWND HostWnd() const { return m_hWnd; }
    // The dialog at the address (CMonkeyLayout), null while it is not there.
    CMonkeyDialog* DialogAt(int nAddress) const;
    // Whether every record the dialog of the slot holds came from the last load of the layout:
    // true after a reload that reached it or its making, false once another dialog alone was
    // reloaded.
    bool IsFresh(int nSlot) const { return m_bFresh[nSlot]; }

private:
    void AddSlot(int nSlot);
    void RemoveSlot(int nSlot);
    void Mouse(UINT message, const CMonkeyEvent& event);
    void Key(UINT message, const CMonkeyEvent& event);
    void Paste();
    void Ime(const CMonkeyEvent& event);
    void Reload(const CMonkeyEvent& event);
    void ReloadDialog(const CMonkeyEvent& event);
    void CreateCtrl(const CMonkeyEvent& event);
    void DestroyCtrl(const CMonkeyEvent& event);
    void Focus(const CMonkeyEvent& event);
    void Frames(int nCount);
    void Bury(std::unique_ptr<QzGui::CQzBaseWindow> pWindow);
    // Input for the focus window: the system edit window of a bound box, or the host window,
    // whose messages the host passes to the manager.
    void Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void Pump();

    HWND m_hWnd = nullptr;
    QzGui::CQzGuiMgr* m_pMgr = nullptr;
    std::unique_ptr<CMonkeyDialog> m_slots[CMonkeyLayout::kTopSlots];
    bool m_bFresh[CMonkeyLayout::kTopSlots] = {};
    std::deque<std::unique_ptr<QzGui::CQzBaseWindow>> m_graveyard;
};

} // namespace QzMonkey
