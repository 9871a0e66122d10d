// The clipboard of the hosted system: one for the process, opened by one window (or by no
// window) at a time. Data handed over with SetClipboardData belongs to the clipboard, which
// frees it when it is replaced or emptied. CF_TEXT and CF_UNICODETEXT are each offered when
// only the other was set and converted on first read through the ANSI code page.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <map>

namespace QzPlatform
{

class CQzClipboard
{
public:
    static CQzClipboard& Instance();

    BOOL Open(HWND window);
    BOOL Close();
    BOOL Empty();
    HANDLE SetData(UINT format, HANDLE data);
    HANDLE GetData(UINT format);
    bool IsAvailable(UINT format) const;
    int CountFormats() const;
    HWND Owner() const;
    HWND OpenWindow() const;
    void Reset();

private:
    struct Item
    {
        HANDLE data = nullptr;
        bool synthesized = false;
    };

    bool RequireOpen() const;
    void Drop(UINT format);
    UINT SourceFor(UINT format) const;
    HANDLE Synthesize(UINT format, UINT source);

    std::map<UINT, Item> m_mapItems;
    bool m_bOpen = false;
    HWND m_hOpener = nullptr;
    HWND m_hOwner = nullptr;
};

} // namespace QzPlatform
