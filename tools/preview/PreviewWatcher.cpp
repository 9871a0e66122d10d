#include "PreviewWatcher.h"

#include "platform/system/kernel/QzPathResolve.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace QzPreview
{

namespace
{

namespace fs = std::filesystem;

// Writes rather than closes after writing: the library opens the layout file for appending
// (and writes nothing) when a record is missing, which must not start the next render.
constexpr uint32_t kMask =
    IN_MODIFY | IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr size_t kMaxFrameDigits = 9;

std::string Trim(const std::string& text)
{
    const size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c)
                   { return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); });
    return text;
}

// The image a "FrameN=path [x y w h]" line names; empty for any other line.
std::string FrameImage(const std::string& line)
{
    const size_t equals = line.find('=');
    if (equals == std::string::npos)
        return std::string();
    const std::string key = Lower(Trim(line.substr(0, equals)));
    const std::string digits = key.compare(0, 5, "frame") == 0 ? key.substr(5) : "";
    if (digits.empty() || digits.size() > kMaxFrameDigits ||
        digits.find_first_not_of("0123456789") != std::string::npos)
        return std::string();
    std::istringstream value(line.substr(equals + 1));
    std::string path;
    value >> path;
    return path;
}

// Names of editors' and tools' own files: "." first (".Layout.ini.swp") or "~" last.
bool IsScratchName(const std::string& name)
{
    return !name.empty() && (name[0] == '.' || name.back() == '~');
}

std::string Normal(const std::string& path)
{
    return fs::path(path).lexically_normal().string();
}

} // namespace

CPreviewWatcher::~CPreviewWatcher()
{
    if (m_fd >= 0)
        close(m_fd);
}

bool CPreviewWatcher::Open(std::string& error)
{
    m_fd = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_fd >= 0)
        return true;
    error = std::string("cannot watch files: ") + std::strerror(errno);
    return false;
}

// The folders of the images ani/Control.ani names, found as the library finds the images.
std::vector<std::string> CPreviewWatcher::ImageFolders(const std::string& bundleDir)
{
    std::vector<std::string> folders;
    std::ifstream file(QzPlatform::ResolvePath(bundleDir + "/ani/Control.ani"));
    std::set<std::string> seen;
    std::string line;
    std::error_code error;
    while (std::getline(file, line) && folders.size() < kMaxFolders)
    {
        const std::string image = FrameImage(line);
        if (image.empty())
            continue;
        const std::string folder =
            fs::path(QzPlatform::ResolvePath(bundleDir + "/" + image)).parent_path().string();
        if (seen.insert(folder).second && fs::is_directory(folder, error))
            folders.push_back(folder);
    }
    return folders;
}

void CPreviewWatcher::WatchBundle(const std::string& bundleDir, const std::string& outPath)
{
    m_strOutPath = Normal(outPath);
    std::map<std::string, bool> folders = {{Normal(bundleDir), false}};
    for (const char* pszFolder : {"/ini", "/ani"})
        folders[Normal(QzPlatform::ResolvePath(bundleDir + pszFolder))] = true;
    for (const std::string& folder : ImageFolders(bundleDir))
        folders[Normal(folder)] = true;
    std::map<int, Watch> watches;
    for (const auto& folder : folders)
    {
        if (watches.size() >= kMaxFolders)
            break;
        const int wd = inotify_add_watch(m_fd, folder.first.c_str(), kMask);
        if (wd >= 0)
            watches[wd] = {folder.first, folder.second};
    }
    for (const auto& watch : m_mapWatches)
    {
        if (!watches.count(watch.first))
            inotify_rm_watch(m_fd, watch.first);
    }
    m_mapWatches.swap(watches);
}

void CPreviewWatcher::ReadEvents(uint64_t nowMs)
{
    alignas(inotify_event) char buffer[4096];
    for (;;)
    {
        const ssize_t length = read(m_fd, buffer, sizeof(buffer));
        if (length <= 0)
            return;
        for (ssize_t offset = 0; offset < length;)
        {
            const auto* pEvent = reinterpret_cast<const inotify_event*>(buffer + offset);
            if (IsChange(*pEvent))
            {
                m_bChanged = true;
                m_nLastChange = nowMs;
            }
            if (pEvent->mask & IN_IGNORED)
                m_mapWatches.erase(pEvent->wd);
            offset += static_cast<ssize_t>(sizeof(inotify_event) + pEvent->len);
        }
    }
}

// Lost events may have been changes. A watched folder that goes is one.
bool CPreviewWatcher::IsChange(const inotify_event& event) const
{
    if (event.mask & (IN_Q_OVERFLOW | IN_DELETE_SELF | IN_MOVE_SELF))
        return true;
    const auto watch = m_mapWatches.find(event.wd);
    if (watch == m_mapWatches.end() || event.len == 0)
        return false;
    const std::string name = event.name;
    if (event.mask & IN_ISDIR)
        return !IsScratchName(name);
    return watch->second.bFiles && !IsScratchName(name) &&
           Normal(watch->second.strPath + "/" + name) != m_strOutPath;
}

bool CPreviewWatcher::TakeChange(uint64_t nowMs)
{
    if (!m_bChanged || nowMs - m_nLastChange < kQuietMs)
        return false;
    m_bChanged = false;
    return true;
}

int CPreviewWatcher::GetWaitMs(uint64_t nowMs) const
{
    if (!m_bChanged)
        return -1;
    const uint64_t elapsed = nowMs - m_nLastChange;
    return elapsed >= kQuietMs ? 0 : static_cast<int>(kQuietMs - elapsed);
}

} // namespace QzPreview
