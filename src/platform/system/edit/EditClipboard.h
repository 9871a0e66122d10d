// The edit window's side of the clipboard: the selection goes in as CF_UNICODETEXT (the
// clipboard offers it as CF_TEXT too) and comes out as CF_UNICODETEXT, which the clipboard makes
// from CF_TEXT when only that was set.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <string>

namespace QzPlatform
{

class CEditClipboard
{
public:
    // False when the clipboard cannot be opened or the memory not had.
    static bool PutText(HWND owner, const std::wstring& text);
    // The clipboard's text up to its first null; false when it holds none.
    static bool TakeText(HWND owner, std::wstring* text);
};

} // namespace QzPlatform
