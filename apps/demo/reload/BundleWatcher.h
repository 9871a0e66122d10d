// Watches the ini/ and ani/ folders of a bundle for saved files, without blocking: the host
// polls it once a frame. An editor's save is a burst of events (a temporary file written,
// renamed, the old one removed); the watcher hands the changed names over once a poll finds
// no new event, so one save makes one reload.
#pragma once

#include <set>
#include <string>
#include <vector>

class CBundleWatcher
{
public:
    CBundleWatcher() = default;
    ~CBundleWatcher();
    CBundleWatcher(const CBundleWatcher&) = delete;
    CBundleWatcher& operator=(const CBundleWatcher&) = delete;

    // Most names kept between two hand-overs; a larger burst is cut.
    static constexpr size_t kMaxPending = 256;

    // Watches root/ini and root/ani; false when neither can be watched.
    bool Start(const std::string& root);
    bool IsWatching() const { return m_nFd >= 0; }
    // The files ("ini/DemoLayout.ini") changed since the last hand-over, sorted, once a poll
    // finds the burst over; empty otherwise.
    std::vector<std::string> Poll();
    // True for the names a reload reads: .ini and .ani files, not an editor's temporary or
    // backup files.
    static bool IsBundleFile(const std::string& name);

private:
    bool ReadEvents();
    void AddFolder(const char* folder);

    std::string m_strRoot;
    int m_nFd = -1;
    int m_nIniWatch = -1;
    int m_nAniWatch = -1;
    std::set<std::string> m_setPending;
};
