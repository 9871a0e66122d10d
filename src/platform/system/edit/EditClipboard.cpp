#include "platform/system/edit/EditClipboard.h"

#include "platform/system/QzWinKernel.h"

#include <cstring>
#include <cwchar>

namespace QzPlatform
{

namespace
{

// Closes the clipboard when it goes out of scope.
class ClipboardSession
{
public:
    explicit ClipboardSession(HWND owner) : m_bOpen(OpenClipboard(owner) != FALSE) {}
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

bool CEditClipboard::PutText(HWND owner, const std::wstring& text)
{
    const SIZE_T bytes = (text.size() + 1) * sizeof(wchar_t);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (!block)
        return false;
    auto* data = static_cast<wchar_t*>(GlobalLock(block));
    std::wmemcpy(data, text.c_str(), text.size() + 1);
    GlobalUnlock(block);
    ClipboardSession session(owner);
    if (!session.IsOpen() || !EmptyClipboard() || !SetClipboardData(CF_UNICODETEXT, block))
    {
        GlobalFree(block);
        return false;
    }
    return true;
}

bool CEditClipboard::TakeText(HWND owner, std::wstring* text)
{
    ClipboardSession session(owner);
    if (!session.IsOpen())
        return false;
    HANDLE block = GetClipboardData(CF_UNICODETEXT);
    const auto* data = block ? static_cast<const wchar_t*>(GlobalLock(block)) : nullptr;
    if (!data)
        return false;
    const size_t units = GlobalSize(block) / sizeof(wchar_t);
    size_t length = 0;
    while (length < units && data[length] != L'\0')
        ++length;
    text->assign(data, length);
    GlobalUnlock(block);
    return true;
}

} // namespace QzPlatform
