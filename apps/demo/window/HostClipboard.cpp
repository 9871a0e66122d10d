#include "HostClipboard.h"

#include "platform/system/edit/EditClipboard.h"
#include "platform/system/text/QzCodePage.h"

// The same CF_UNICODETEXT exchange the EDIT class makes, with no owner window, in UTF-8.
bool ReadHostClipboardText(std::string& text)
{
    std::wstring wide;
    if (!QzPlatform::CEditClipboard::TakeText(nullptr, &wide))
        return false;
    text = QzPlatform::WideToUtf8(wide);
    return true;
}

bool WriteHostClipboardText(const std::string& text)
{
    return QzPlatform::CEditClipboard::PutText(nullptr, QzPlatform::Utf8ToWide(text));
}
