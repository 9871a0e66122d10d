// Live reload of the demo's bundle: the files saved in its ini/ and ani/ folders are checked and,
// when they are sound, reloaded through the manager's own reload operations. A broken edit is
// not loaded: the screen stays as it was, and the errors go to the log and to an on-screen
// panel until an edit makes every file sound again.
#pragma once

#include "BundleCheck.h"
#include "BundleWatcher.h"
#include "ReloadPanel.h"

#include <set>
#include <string>
#include <vector>

namespace QzGui
{
class IQzGuiMgr;
}

class CLiveReload
{
public:
    // root: the bundle folder (the one holding ini/ and ani/).
    explicit CLiveReload(const std::string& root) : m_strRoot(root) {}

    // Starts watching; false when the folders cannot be watched.
    bool Start() { return m_watcher.Start(m_strRoot); }
    // Once a frame: the files an editor finished saving.
    std::vector<std::string> Poll() { return m_watcher.Poll(); }
    // Checks the files and those still broken from an earlier edit. Sound: the panel goes and
    // true is returned; broken: the errors are logged and shown, and false is returned.
    bool Check(const std::vector<std::string>& files);
    // Reloads the files: layout tables through the manager's layout reload, the animation file
    // and the other tables through the GUI helper's reload of everything.
    static void Reload(QzGui::IQzGuiMgr& mgr, const std::vector<std::string>& files);
    const CReloadPanel& GetPanel() const { return m_panel; }

private:
    static void Log(const BundleError& error);

    std::string m_strRoot;
    CBundleWatcher m_watcher;
    CReloadPanel m_panel;
    std::set<std::string> m_setBroken;
};
