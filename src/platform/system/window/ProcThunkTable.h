// Handles for window procedures of the other kind. When an ANSI caller reads the procedure of a
// Unicode window (or the reverse), it gets a handle that stands for that procedure and its kind;
// CallWindowProc and SetWindowLongPtr turn it back, so that a subclass chain converts messages at
// each change of kind. The handle is a non-canonical address: calling it directly faults at once,
// as calling such a handle does on Windows.
#pragma once

#include "platform/system/window/WindowProcRef.h"

#include <vector>

namespace QzPlatform
{

class CProcThunkTable
{
public:
    // The handle for the reference (the same one for equal references); null when the table is
    // full.
    WNDPROC HandleFor(const WindowProcRef& ref);
    // The reference a value stands for: the decoded handle, or the value itself as a procedure
    // of the caller's kind.
    WindowProcRef Resolve(WNDPROC value, bool callerUnicode) const;
    // What a caller of the given kind sees as the procedure: its own kind's procedure, else a
    // handle.
    WNDPROC ValueFor(const WindowProcRef& ref, bool callerUnicode);

private:
    std::vector<WindowProcRef> m_vecThunks;
};

} // namespace QzPlatform
