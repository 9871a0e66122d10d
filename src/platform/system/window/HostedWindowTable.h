// The windows of the process by handle, their tree and the keyboard focus.
#pragma once

#include "platform/system/kernel/HandleTable.h"
#include "platform/system/window/HostedWindow.h"

#include <memory>
#include <vector>

namespace QzPlatform
{

class CHostedWindowTable
{
public:
    CHostedWindowTable();

    // Null when the table is full.
    HWND Add(std::unique_ptr<HostedWindow> window);
    HostedWindow* Find(HWND hwnd) const;
    std::unique_ptr<HostedWindow> Remove(HWND hwnd);
    // Every window, oldest first.
    std::vector<HWND> All() const;
    // The direct children of a window (null: the top-level windows), oldest first.
    std::vector<HWND> Children(HWND parent) const;
    // The top-level windows owned by a window, oldest first.
    std::vector<HWND> Owned(HWND owner) const;
    // True when hwnd is strictly below ancestor.
    bool IsDescendant(HWND ancestor, HWND hwnd) const;
    // True when hwnd is strictly below upper by parents and owners, so that upper's destruction
    // takes hwnd with it.
    bool DependsOn(HWND upper, HWND hwnd) const;
    // Where the window's top-left corner is on the screen.
    POINT ScreenOrigin(HWND hwnd) const;

    // The focus window; null when none or when it no longer exists.
    HWND Focus() const;
    void SetFocusHandle(HWND hwnd) { m_hFocus = hwnd; }

    // Forgets every window without messages.
    void Clear();

private:
    template <typename Keep> std::vector<HWND> Collect(Keep keep) const;

    CHandleTable<HostedWindow> m_table;
    uint64_t m_nNextSerial = 1;
    HWND m_hFocus = nullptr;
};

} // namespace QzPlatform
