// The posted messages of the process, first in, first out. Each remembers whether it was posted
// by PostMessageA or PostMessageW; a character message read by the other kind is converted as
// Windows converts it when a message is retrieved: a wide character becomes its ANSI bytes (the
// lead byte first, the trail byte then waits at the head of the queue), and ANSI bytes posted
// one by one become one wide character.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <cstddef>
#include <deque>
#include <functional>

namespace QzPlatform
{

class CPostedMessageQueue
{
public:
    using Filter = std::function<bool(const MSG&)>;

    void Post(const MSG& msg, bool unicode);
    // The first message the filter takes, in the reader's kind; removed when remove is set.
    bool Retrieve(const Filter& filter, bool remove, bool unicode, MSG* out);
    void RemoveWindow(HWND hwnd);
    void Clear() { m_dqMessages.clear(); }
    size_t Size() const { return m_dqMessages.size(); }

private:
    struct PostedMessage
    {
        MSG msg;
        bool unicode;
    };
    using Iterator = std::deque<PostedMessage>::iterator;

    void RetrieveAsWide(Iterator entry, bool remove, MSG* out);
    void RetrieveAsAnsi(Iterator entry, bool remove, MSG* out);

    std::deque<PostedMessage> m_dqMessages;
};

} // namespace QzPlatform
