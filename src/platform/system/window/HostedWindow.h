// One window of the hosted window system: what Win32 keeps for a window. Visibility and the
// enabled state are the WS_VISIBLE and WS_DISABLED bits of the style, as on Windows.
#pragma once

#include "platform/system/QzWinTypes.h"
#include "platform/system/window/WindowProcRef.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace QzPlatform
{

struct HostedWindow
{
    std::wstring className;
    WindowProcRef proc;
    bool createdUnicode = false; // by CreateWindowExW
    DWORD style = 0;
    DWORD exStyle = 0;
    LONG_PTR id = 0; // the menu handle of a top-level window
    LONG_PTR userData = 0;
    HINSTANCE instance = nullptr;
    std::vector<unsigned char> extraBytes; // cbWndExtra of the class
    std::wstring text;
    HWND parent = nullptr;    // of a WS_CHILD window (or one given a parent by SetParent)
    HWND owner = nullptr;     // of a top-level window created with a parent window
    RECT rect = {0, 0, 0, 0}; // relative to the parent, or the screen for a top-level window
    HIMC defaultContext = nullptr;
    HIMC context = nullptr;   // associated; null when disassociated
    std::string pendingBytes; // ANSI bytes of WM_CHAR waiting for the rest of their character
    bool destroying = false;
    uint64_t serial = 0; // creation order, for the order of children

    // Reads or writes size bytes at a byte offset of the extra bytes; false when out of range.
    bool ReadExtra(int offset, void* out, size_t size) const
    {
        if (!ExtraInRange(offset, size))
            return false;
        std::memcpy(out, extraBytes.data() + offset, size);
        return true;
    }
    bool WriteExtra(int offset, const void* in, size_t size)
    {
        if (!ExtraInRange(offset, size))
            return false;
        std::memcpy(extraBytes.data() + offset, in, size);
        return true;
    }

private:
    bool ExtraInRange(int offset, size_t size) const
    {
        return offset >= 0 && static_cast<size_t>(offset) + size <= extraBytes.size();
    }
};

} // namespace QzPlatform
