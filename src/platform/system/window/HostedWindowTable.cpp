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

std::vector<HWND> CHostedWindowTable::All() const
{
    std::vector<HWND> windows;
    for (uint64_t handle : m_table.Handles())
        windows.push_back(ToHandle<HWND>(handle));
    std::sort(windows.begin(), windows.end(),
              [this](HWND a, HWND b) { return Find(a)->serial < Find(b)->serial; });
    return windows;
}

std::vector<HWND> CHostedWindowTable::Children(HWND parent) const
{
    std::vector<HWND> children = All();
    children.erase(std::remove_if(children.begin(), children.end(),
                                  [this, parent](HWND hwnd)
                                  { return Find(hwnd)->parent != parent; }),
                   children.end());
    return children;
}

std::vector<HWND> CHostedWindowTable::Owned(HWND owner) const
{
    std::vector<HWND> owned = All();
    owned.erase(std::remove_if(owned.begin(), owned.end(),
                               [this, owner](HWND hwnd) { return Find(hwnd)->owner != owner; }),
                owned.end());
    return owned;
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
