#include "BundleWatcher.h"

#include <cstring>
#include <filesystem>
#include <sys/inotify.h>
#include <unistd.h>

namespace
{

const uint32_t kEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE | IN_MOVED_FROM;

bool EndsWith(const std::string& text, const char* suffix)
{
    const std::string end(suffix);
    if (text.size() < end.size())
        return false;
    for (size_t i = 0; i < end.size(); ++i)
    {
        const char c = text[text.size() - end.size() + i];
        const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        if (lower != end[i])
            return false;
    }
    return true;
}

} // namespace

CBundleWatcher::~CBundleWatcher()
{
    if (m_nFd >= 0)
        close(m_nFd);
}

bool CBundleWatcher::IsBundleFile(const std::string& name)
{
    if (name.empty() || name[0] == '.' || name[0] == '#')
        return false;
    return EndsWith(name, ".ini") || EndsWith(name, ".ani");
}

bool CBundleWatcher::Start(const std::string& root)
{
    if (m_nFd >= 0)
        return true;
    m_nFd = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_nFd < 0)
        return false;
    m_strRoot = root;
    m_nIniWatch = inotify_add_watch(m_nFd, (root + "/ini").c_str(), kEvents);
    m_nAniWatch = inotify_add_watch(m_nFd, (root + "/ani").c_str(), kEvents);
    if (m_nIniWatch >= 0 || m_nAniWatch >= 0)
        return true;
    close(m_nFd);
    m_nFd = -1;
    return false;
}

// Takes every queued event; true when there was one for a bundle file.
bool CBundleWatcher::ReadEvents()
{
    alignas(inotify_event) char buffer[4096];
    bool bAny = false;
    for (;;)
    {
        const ssize_t nRead = read(m_nFd, buffer, sizeof(buffer));
        if (nRead <= 0)
            return bAny;
        for (ssize_t offset = 0; offset + static_cast<ssize_t>(sizeof(inotify_event)) <= nRead;)
        {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + offset);
            offset += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            if (event->mask & IN_Q_OVERFLOW)
            {
                bAny = true;
                AddFolder("ini");
                AddFolder("ani");
                continue;
            }
            if (event->len == 0 || offset > nRead)
                continue;
            const std::string name(event->name, strnlen(event->name, event->len));
            const char* folder = event->wd == m_nIniWatch   ? "ini/"
                                 : event->wd == m_nAniWatch ? "ani/"
                                                            : nullptr;
            if (!folder || !IsBundleFile(name))
                continue;
            bAny = true;
            if (m_setPending.size() < kMaxPending)
                m_setPending.insert(folder + name);
        }
    }
}

// The events were lost: every bundle file of the folder may have changed.
void CBundleWatcher::AddFolder(const char* folder)
{
    std::error_code error;
    std::filesystem::directory_iterator it(m_strRoot + "/" + folder, error);
    for (; !error && it != std::filesystem::directory_iterator(); it.increment(error))
    {
        const std::string name = it->path().filename().string();
        if (IsBundleFile(name) && m_setPending.size() < kMaxPending)
            m_setPending.insert(std::string(folder) + "/" + name);
    }
}

std::vector<std::string> CBundleWatcher::Poll()
{
    if (m_nFd < 0 || ReadEvents() || m_setPending.empty())
        return {};
    std::vector<std::string> files(m_setPending.begin(), m_setPending.end());
    m_setPending.clear();
    return files;
}
