// Tells the preview when the bundle it shows has changed. Inotify watches the folders whose
// files a render reads: ini/, ani/, the folders of the images ani/Control.ani names, and the
// bundle folder itself for folders that come and go. A change waits for a quiet time (100 ms
// without another) before it is taken, so that a burst of writes (an editor saving, a tool
// writing many images) gives one render. Hidden files and backups ("~") that editors write are
// no change, nor is the picture the preview writes itself.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct inotify_event;

namespace QzPreview
{

class CPreviewWatcher
{
public:
    static constexpr uint64_t kQuietMs = 100;
    // Folders watched at most (each image folder takes one watch).
    static constexpr size_t kMaxFolders = 256;

    CPreviewWatcher() = default;
    ~CPreviewWatcher();
    CPreviewWatcher(const CPreviewWatcher&) = delete;
    CPreviewWatcher& operator=(const CPreviewWatcher&) = delete;

    // False with the reason when the system gives no inotify instance.
    bool Open(std::string& error);
    // Watches the bundle's folders as they are now (ani/Control.ani may name other image
    // folders after a change); outPath is the picture to pass over. Absolute paths.
    void WatchBundle(const std::string& bundleDir, const std::string& outPath);
    int GetFd() const { return m_fd; }
    size_t GetFolderCount() const { return m_mapWatches.size(); }

    // Reads the events waiting, without blocking; a change (re)starts the quiet time at nowMs.
    void ReadEvents(uint64_t nowMs);
    // True, once, when the quiet time after the last change has passed at nowMs.
    bool TakeChange(uint64_t nowMs);
    // Milliseconds until TakeChange is due; -1 when no change waits.
    int GetWaitMs(uint64_t nowMs) const;

private:
    struct Watch
    {
        std::string strPath;
        bool bFiles = false; // its files count, not only its folders (the bundle folder)
    };

    static std::vector<std::string> ImageFolders(const std::string& bundleDir);
    bool IsChange(const inotify_event& event) const;

    int m_fd = -1;
    std::map<int, Watch> m_mapWatches; // by watch descriptor
    std::string m_strOutPath;
    bool m_bChanged = false;
    uint64_t m_nLastChange = 0;
};

} // namespace QzPreview
