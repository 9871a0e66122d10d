// What a window calls for its messages: an ANSI procedure, a Unicode procedure, or both (the
// built-in classes have one of each, as on Windows, so that either kind of caller reaches a
// procedure of its own kind without conversion).
#pragma once

#include "platform/system/QzWinTypes.h"

namespace QzPlatform
{

struct WindowProcRef
{
    WNDPROC pfnAnsi = nullptr;
    WNDPROC pfnWide = nullptr;

    bool IsEmpty() const { return !pfnAnsi && !pfnWide; }
    // The procedure of this kind, or null when only the other kind exists.
    WNDPROC Of(bool unicode) const { return unicode ? pfnWide : pfnAnsi; }
    bool operator==(const WindowProcRef& other) const
    {
        return pfnAnsi == other.pfnAnsi && pfnWide == other.pfnWide;
    }

    static WindowProcRef Single(WNDPROC proc, bool unicode)
    {
        WindowProcRef ref;
        (unicode ? ref.pfnWide : ref.pfnAnsi) = proc;
        return ref;
    }
};

} // namespace QzPlatform
