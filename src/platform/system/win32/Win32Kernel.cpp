// The kernel half of the host controls on Windows: paths as given, what the system records of
// fonts and regions, and the little of the kernel's state a test can put back.
#include "platform/system/kernel/QzKernelHost.h"
#include "platform/system/kernel/QzPathResolve.h"

#include <vector>

namespace QzPlatform
{

// Windows file names already take backslashes and any letter case.
std::string ResolvePath(const std::string& path)
{
    return path;
}

bool GetFontDescription(HFONT font, FontDescription* description)
{
    LOGFONTA logFont = {};
    if (!font || GetObjectA(font, sizeof(logFont), &logFont) != sizeof(logFont))
        return false;
    description->faceName = logFont.lfFaceName;
    description->height = logFont.lfHeight;
    description->width = logFont.lfWidth;
    description->weight = logFont.lfWeight;
    description->italic = logFont.lfItalic != 0;
    description->underline = logFont.lfUnderline != 0;
    description->strikeOut = logFont.lfStrikeOut != 0;
    description->charSet = logFont.lfCharSet;
    return true;
}

std::vector<RECT> GetRegionRects(HRGN region)
{
    const DWORD size = region ? GetRegionData(region, 0, nullptr) : 0;
    if (size < sizeof(RGNDATAHEADER))
        return {};
    std::vector<char> bytes(size);
    auto* data = reinterpret_cast<RGNDATA*>(bytes.data());
    if (GetRegionData(region, size, data) != size)
        return {};
    const auto* first = reinterpret_cast<const RECT*>(data->Buffer);
    return std::vector<RECT>(first, first + data->rdh.nCount);
}

void ResetKernelForTesting()
{
    if (OpenClipboard(nullptr))
    {
        EmptyClipboard();
        CloseClipboard();
    }
    SetLastError(0);
}

} // namespace QzPlatform
