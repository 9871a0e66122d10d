#include "platform/system/window/HostedWindowTable.h"

#include <algorithm>

namespace QzPlatform
{

namespace
{

constexpr size_t kMaxWindows = 65536;

} // namespace

CHostedWindowTable::CHostedWindowTable() : m_table(kWindowHandleTag, kMaxWindows) {}

HWND CHostedWindowTable::Add(std::unique_ptr<HostedWindow> window)
{
    window->serial = m_nNextSerial++;
    return ToHandle<HWND>(m_table.Add(std::move(window)));
}

HostedWindow* CHostedWindowTable::Find(HWND hwnd) const
{
    return m_table.Find(FromHandle(hwnd));
}

std::unique_ptr<HostedWindow> CHostedWindowTable::Remove(HWND hwnd)
{
    if (m_hFocus == hwnd)
        m_hFocus = nullptr;
    return m_table.Remove(FromHandle(hwnd));
}

// The windows whose record passes `keep`, oldest first: each record is looked up once, and the
// windows are put in order by their serials.
template <typename Keep> std::vector<HWND> CHostedWindowTable::Collect(Keep keep) const
{
    std::vector<std::pair<uint64_t, HWND>> found;
    for (uint64_t handle : m_table.Handles())
    {
        const HWND hwnd = ToHandle<HWND>(handle);
        const HostedWindow* window = Find(hwnd);
        if (keep(*window))
            found.emplace_back(window->serial, hwnd);
    }
    std::sort(found.begin(), found.end());
    std::vector<HWND> windows;
    windows.reserve(found.size());
    for (const auto& entry : found)
        windows.push_back(entry.second);
    return windows;
}

std::vector<HWND> CHostedWindowTable::All() const
{
    return Collect([](const HostedWindow&) { return true; });
}

std::vector<HWND> CHostedWindowTable::Children(HWND parent) const
{
    return Collect([parent](const HostedWindow& window) { return window.parent == parent; });
}

std::vector<HWND> CHostedWindowTable::Owned(HWND owner) const
{
    return Collect([owner](const HostedWindow& window) { return window.owner == owner; });
}

bool CHostedWindowTable::IsDescendant(HWND ancestor, HWND hwnd) const
{
    const HostedWindow* window = Find(hwnd);
    // The tree has no cycles (SetParent refuses them); the bound only guards against a fault.
    for (size_t depth = 0; window && depth < kMaxWindows; ++depth)
    {
        if (window->parent == ancestor)
            return ancestor != nullptr;
        window = Find(window->parent);
    }
    return false;
}

bool CHostedWindowTable::DependsOn(HWND upper, HWND hwnd) const
{
    const HostedWindow* window = Find(hwnd);
    for (size_t depth = 0; window && depth < kMaxWindows; ++depth)
    {
        const HWND next = window->parent ? window->parent : window->owner;
        if (next == upper)
            return upper != nullptr;
        window = Find(next);
    }
    return false;
}

POINT CHostedWindowTable::ScreenOrigin(HWND hwnd) const
{
    POINT origin = {0, 0};
    const HostedWindow* window = Find(hwnd);
    for (size_t depth = 0; window && depth < kMaxWindows; ++depth)
    {
        origin.x += window->rect.left;
        origin.y += window->rect.top;
        window = Find(window->parent);
    }
    return origin;
}

HWND CHostedWindowTable::Focus() const
{
    return Find(m_hFocus) ? m_hFocus : nullptr;
}

void CHostedWindowTable::Clear()
{
    m_table.Clear();
    m_hFocus = nullptr;
}

} // namespace QzPlatform
