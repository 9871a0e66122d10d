// The hosted system's clipboard as UTF-8 text, read and written the way a Win32 program does
// (OpenClipboard, CF_UNICODETEXT), for the host that keeps it in step with the desktop's.
#pragma once

#include <string>

// False when the clipboard holds no text or cannot be opened.
bool ReadHostClipboardText(std::string& text);
// Replaces the clipboard's content by the text; false when the clipboard cannot be opened.
bool WriteHostClipboardText(const std::string& text);
