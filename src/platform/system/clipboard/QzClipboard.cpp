#include "platform/system/clipboard/QzClipboard.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/kernel/QzGlobalHeap.h"
#include "platform/system/text/QzCodePage.h"

#include <cstring>
#include <string>

namespace QzPlatform
{

namespace
{

// The text of a block up to its first null (or its end), as the given character type.
template <class C> std::basic_string<C> BlockText(HANDLE data)
{
    CQzGlobalHeap& heap = CQzGlobalHeap::Instance();
    const auto* text = static_cast<const C*>(heap.Lock(data));
    if (!text)
        return std::basic_string<C>();
    const size_t capacity = heap.Size(data) / sizeof(C);
    size_t length = 0;
    while (length < capacity && text[length])
        ++length;
    std::basic_string<C> result(text, length);
    heap.Unlock(data);
    return result;
}

// A new moveable block holding the text and its terminator.
template <class C> HANDLE TextBlock(const std::basic_string<C>& text)
{
    CQzGlobalHeap& heap = CQzGlobalHeap::Instance();
    HGLOBAL block = heap.Alloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(C));
    void* memory = block ? heap.Lock(block) : nullptr;
    if (!memory)
    {
        heap.Free(block);
        return nullptr;
    }
    std::memcpy(memory, text.c_str(), (text.size() + 1) * sizeof(C));
    heap.Unlock(block);
    return block;
}

} // namespace

CQzClipboard& CQzClipboard::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzClipboard& clipboard = *new CQzClipboard;
    return clipboard;
}

bool CQzClipboard::RequireOpen() const
{
    if (m_bOpen)
        return true;
    SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
    return false;
}

BOOL CQzClipboard::Open(HWND window)
{
    if (window && !IsWindow(window))
    {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    if (m_bOpen && m_hOpener != window)
    {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    m_bOpen = true;
    m_hOpener = window;
    return TRUE;
}

BOOL CQzClipboard::Close()
{
    if (!RequireOpen())
        return FALSE;
    m_bOpen = false;
    m_hOpener = nullptr;
    return TRUE;
}

void CQzClipboard::Drop(UINT format)
{
    const auto found = m_mapItems.find(format);
    if (found == m_mapItems.end())
        return;
    CQzGlobalHeap::Instance().Free(found->second.data);
    m_mapItems.erase(found);
}

BOOL CQzClipboard::Empty()
{
    if (!RequireOpen())
        return FALSE;
    while (!m_mapItems.empty())
        Drop(m_mapItems.begin()->first);
    m_hOwner = m_hOpener;
    return TRUE;
}

HANDLE CQzClipboard::SetData(UINT format, HANDLE data)
{
    if (!RequireOpen())
        return nullptr;
    if (!data || !CQzGlobalHeap::Instance().IsValid(data))
    {
        SetLastError(data ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    // Converted copies of the old data would no longer match.
    for (auto it = m_mapItems.begin(); it != m_mapItems.end();)
    {
        if (!it->second.synthesized)
        {
            ++it;
            continue;
        }
        CQzGlobalHeap::Instance().Free(it->second.data);
        it = m_mapItems.erase(it);
    }
    const auto found = m_mapItems.find(format);
    if (found != m_mapItems.end() && found->second.data != data)
        Drop(format);
    m_mapItems[format] = Item{data, false};
    return data;
}

UINT CQzClipboard::SourceFor(UINT format) const
{
    const UINT source = format == CF_TEXT ? CF_UNICODETEXT : format == CF_UNICODETEXT ? CF_TEXT : 0;
    const auto found = m_mapItems.find(source);
    return found != m_mapItems.end() && !found->second.synthesized ? source : 0;
}

HANDLE CQzClipboard::Synthesize(UINT format, UINT source)
{
    const HANDLE sourceData = m_mapItems[source].data;
    const HANDLE data = format == CF_TEXT ? TextBlock(WideToAnsi(BlockText<wchar_t>(sourceData)))
                                          : TextBlock(AnsiToWide(BlockText<char>(sourceData)));
    if (data)
        m_mapItems[format] = Item{data, true};
    return data;
}

HANDLE CQzClipboard::GetData(UINT format)
{
    if (!RequireOpen())
        return nullptr;
    const auto found = m_mapItems.find(format);
    if (found != m_mapItems.end())
        return found->second.data;
    const UINT source = SourceFor(format);
    return source ? Synthesize(format, source) : nullptr;
}

bool CQzClipboard::IsAvailable(UINT format) const
{
    return m_mapItems.count(format) > 0 || SourceFor(format) != 0;
}

int CQzClipboard::CountFormats() const
{
    int count = static_cast<int>(m_mapItems.size());
    for (UINT format : {static_cast<UINT>(CF_TEXT), static_cast<UINT>(CF_UNICODETEXT)})
    {
        if (m_mapItems.count(format) == 0 && SourceFor(format) != 0)
            ++count;
    }
    return count;
}

HWND CQzClipboard::Owner() const
{
    return m_hOwner && IsWindow(m_hOwner) ? m_hOwner : nullptr;
}

HWND CQzClipboard::OpenWindow() const
{
    return m_bOpen ? m_hOpener : nullptr;
}

void CQzClipboard::Reset()
{
    while (!m_mapItems.empty())
        Drop(m_mapItems.begin()->first);
    m_bOpen = false;
    m_hOpener = nullptr;
    m_hOwner = nullptr;
}

} // namespace QzPlatform

using QzPlatform::CQzClipboard;

BOOL OpenClipboard(HWND hWndNewOwner)
{
    return CQzClipboard::Instance().Open(hWndNewOwner);
}

BOOL CloseClipboard()
{
    return CQzClipboard::Instance().Close();
}

BOOL EmptyClipboard()
{
    return CQzClipboard::Instance().Empty();
}

HANDLE SetClipboardData(UINT uFormat, HANDLE hMem)
{
    return CQzClipboard::Instance().SetData(uFormat, hMem);
}

HANDLE GetClipboardData(UINT uFormat)
{
    return CQzClipboard::Instance().GetData(uFormat);
}

BOOL IsClipboardFormatAvailable(UINT format)
{
    return CQzClipboard::Instance().IsAvailable(format) ? TRUE : FALSE;
}

int CountClipboardFormats()
{
    return CQzClipboard::Instance().CountFormats();
}

HWND GetClipboardOwner()
{
    return CQzClipboard::Instance().Owner();
}

HWND GetOpenClipboardWindow()
{
    return CQzClipboard::Instance().OpenWindow();
}
