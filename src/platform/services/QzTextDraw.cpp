#include "platform/services/QzTextDraw.h"

#include "platform/render/IRenderDevice.h"
#include "platform/system/text/QzCodePage.h"

#include <algorithm>
#include <string>

namespace QzPlatform
{

namespace
{

// Draws each line of the UTF-8 text; the size is measured only when the caller wants it.
void DrawLines(int x, int y, DWORD colour, const std::string& utf8, const char* face, int size,
               BOOL shadow, DWORD shadowColour, C3_SIZE* out)
{
    IRenderDevice& device = GetRenderDevice();
    FontSpec font;
    font.face = face ? face : "";
    font.size = size;
    const uint32_t shadowArgb = shadow ? shadowColour : 0;
    const int lineHeight = size + 2;
    int lines = 0;
    int width = 0;
    size_t start = 0;
    for (;;)
    {
        const size_t end = utf8.find('\n', start);
        std::string line = utf8.substr(start, end == std::string::npos ? end : end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty())
        {
            device.DrawText(x, y + lines * lineHeight, line, font, colour, shadowArgb);
            if (out)
                width = std::max(width, device.MeasureText(line, font).cx);
        }
        ++lines;
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    if (out)
        *out = {width, lines * lineHeight};
}

// The game's text colours are 0xRRGGBB as often as 0xAARRGGBB (a list's selected and blinking
// rows, for one): an alpha byte of 0 means opaque here, never invisible text.
DWORD OpaqueUnlessTranslucent(DWORD colour)
{
    return (colour >> 24) == 0 ? colour | 0xFF000000 : colour;
}

void DrawConverted(int x, int y, DWORD colour, const std::string& utf8, const char* face, int size,
                   BOOL shadow, DWORD shadowColour, C3_SIZE* out)
{
    colour = OpaqueUnlessTranslucent(colour);
    if (utf8.empty())
    {
        if (out)
            *out = {0, 0};
        return;
    }
    DrawLines(x, y, colour, utf8, face, size, shadow, shadowColour, out);
}

} // namespace

void DrawGameText(int x, int y, DWORD colour, const char* text, const char* face, int size,
                  BOOL shadow, int style, DWORD shadowColour, C3_SIZE* out)
{
    const std::string utf8 = text ? AnsiToUtf8(text) : std::string();
    DrawConverted(x, y, colour, utf8, face, size, shadow, shadowColour, out);
}

void DrawGameText(int x, int y, DWORD colour, const wchar_t* text, const char* face, int size,
                  BOOL shadow, int style, DWORD shadowColour, C3_SIZE* out)
{
    const std::string utf8 = text ? WideToUtf8(text) : std::string();
    DrawConverted(x, y, colour, utf8, face, size, shadow, shadowColour, out);
}

} // namespace QzPlatform
