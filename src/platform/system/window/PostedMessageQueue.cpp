#include "platform/system/window/PostedMessageQueue.h"

#include "platform/system/window/CharMessageCodec.h"

#include <algorithm>
#include <string>

namespace QzPlatform
{

namespace
{

bool IsConvertedOnRetrieval(UINT msg)
{
    return msg == WM_CHAR || msg == WM_SYSCHAR || msg == WM_IME_CHAR;
}

} // namespace

void CPostedMessageQueue::Post(const MSG& msg, bool unicode)
{
    m_dqMessages.push_back({msg, unicode});
}

bool CPostedMessageQueue::Retrieve(const Filter& filter, bool remove, bool unicode, MSG* out)
{
    const auto entry = std::find_if(m_dqMessages.begin(), m_dqMessages.end(),
                                    [&filter](const PostedMessage& m) { return filter(m.msg); });
    if (entry == m_dqMessages.end())
        return false;
    if (entry->unicode == unicode || !IsConvertedOnRetrieval(entry->msg.message))
    {
        *out = entry->msg;
        if (remove)
            m_dqMessages.erase(entry);
        return true;
    }
    if (unicode)
        RetrieveAsWide(entry, remove, out);
    else
        RetrieveAsAnsi(entry, remove, out);
    return true;
}

void CPostedMessageQueue::RemoveWindow(HWND hwnd)
{
    m_dqMessages.erase(std::remove_if(m_dqMessages.begin(), m_dqMessages.end(),
                                      [hwnd](const PostedMessage& m)
                                      { return m.msg.hwnd == hwnd; }),
                       m_dqMessages.end());
}

// ANSI bytes to one wide character. WM_CHAR bytes of one character follow each other in the
// queue; they are read together.
void CPostedMessageQueue::RetrieveAsWide(Iterator entry, bool remove, MSG* out)
{
    *out = entry->msg;
    const WPARAM first = entry->msg.wParam;
    std::string bytes = CCharMessageCodec::Unpack(first);
    auto last = entry;
    if (entry->msg.message != WM_IME_CHAR && first <= 0xFF)
    {
        const size_t needed = CCharMessageCodec::SequenceLength(static_cast<unsigned char>(first));
        while (bytes.size() < needed && std::next(last) != m_dqMessages.end())
        {
            const PostedMessage& next = *std::next(last);
            if (next.unicode || next.msg.hwnd != entry->msg.hwnd ||
                next.msg.message != entry->msg.message || next.msg.wParam > 0xFF)
                break;
            bytes += static_cast<char>(next.msg.wParam);
            ++last;
        }
    }
    out->wParam = static_cast<WPARAM>(CCharMessageCodec::ToWide(bytes));
    if (remove)
        m_dqMessages.erase(entry, std::next(last));
}

// A wide character to ANSI. WM_IME_CHAR packs all bytes; WM_CHAR gives the first byte and
// leaves the others at the head of the queue, as ANSI messages.
void CPostedMessageQueue::RetrieveAsAnsi(Iterator entry, bool remove, MSG* out)
{
    *out = entry->msg;
    const std::string bytes = CCharMessageCodec::ToAnsi(static_cast<wchar_t>(entry->msg.wParam));
    if (entry->msg.message == WM_IME_CHAR)
    {
        out->wParam = CCharMessageCodec::Pack(bytes);
        if (remove)
            m_dqMessages.erase(entry);
        return;
    }
    out->wParam = static_cast<unsigned char>(bytes[0]);
    if (!remove)
        return;
    PostedMessage rest = *entry;
    rest.unicode = false;
    auto position = m_dqMessages.erase(entry);
    for (size_t i = bytes.size(); i-- > 1;)
    {
        rest.msg.wParam = static_cast<unsigned char>(bytes[i]);
        position = m_dqMessages.insert(position, rest);
    }
}

} // namespace QzPlatform
