#include "HostClipboard.h"

#include "platform/system/QzSystem.h"
#include "platform/system/text/QzCodePage.h"

#include <cstring>

namespace
{

// Closes the clipboard it opened.
class ClipboardSession
{
public:
    ClipboardSession() : m_bOpen(OpenClipboard(nullptr) != 0) {}
    ~ClipboardSession()
    {
        if (m_bOpen)
            CloseClipboard();
    }
    ClipboardSession(const ClipboardSession&) = delete;
    ClipboardSession& operator=(const ClipboardSession&) = delete;
    bool IsOpen() const { return m_bOpen; }

private:
    bool m_bOpen;
};

} // namespace

bool ReadHostClipboardText(std::string& text)
{
    ClipboardSession session;
    if (!session.IsOpen() || !IsClipboardFormatAvailable(CF_UNICODETEXT))
        return false;
    HANDLE block = GetClipboardData(CF_UNICODETEXT);
    const auto* chars = block ? static_cast<const wchar_t*>(GlobalLock(block)) : nullptr;
    if (!chars)
        return false;
    const size_t capacity = GlobalSize(block) / sizeof(wchar_t);
    const std::wstring wide(chars, wcsnlen(chars, capacity));
    GlobalUnlock(block);
    text = QzPlatform::WideToUtf8(wide);
    return true;
}

bool WriteHostClipboardText(const std::string& text)
{
    const std::wstring wide = QzPlatform::Utf8ToWide(text);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (wide.size() + 1) * sizeof(wchar_t));
    auto* chars = block ? static_cast<wchar_t*>(GlobalLock(block)) : nullptr;
    if (!chars)
    {
        if (block)
            GlobalFree(block);
        return false;
    }
    std::memcpy(chars, wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
    GlobalUnlock(block);
    ClipboardSession session;
    if (session.IsOpen() && EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, block))
        return true;
    GlobalFree(block);
    return false;
}
