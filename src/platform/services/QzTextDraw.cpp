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
// Captions are drawn by the thousand each frame: the font and the lines are kept in buffers that
// live on, so that a caption costs no allocation.
void DrawLines(int x, int y, DWORD colour, const std::string& utf8, const char* face, int size,
               BOOL shadow, DWORD shadowColour, C3_SIZE* out)
{
    IRenderDevice& device = GetRenderDevice();
    static FontSpec s_font;
    static std::string s_line;
    s_font.face.assign(face ? face : "");
    s_font.size = size;
    const uint32_t shadowArgb = shadow ? shadowColour : 0;
    const int lineHeight = size + 2;
    int lines = 0;
    int width = 0;
    size_t start = 0;
    for (;;)
    {
        const size_t end = utf8.find('\n', start);
        size_t length = (end == std::string::npos ? utf8.size() : end) - start;
        if (length > 0 && utf8[start + length - 1] == '\r')
            --length;
        const bool whole = start == 0 && length == utf8.size();
        if (!whole)
            s_line.assign(utf8, start, length);
        const std::string& line = whole ? utf8 : s_line;
        if (length > 0)
        {
            device.DrawText(x, y + lines * lineHeight, line, s_font, colour, shadowArgb);
            if (out)
                width = std::max(width, device.MeasureText(line, s_font).cx);
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

// ASCII reads the same in every code page the game uses, so ASCII captions need no conversion.
bool IsAscii(const char* text)
{
    for (; *text; ++text)
        if (static_cast<unsigned char>(*text) >= 0x80)
            return false;
    return true;
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
    static std::string s_utf8;
    if (!text)
        s_utf8.clear();
    else if (IsAscii(text))
        s_utf8.assign(text);
    else
        s_utf8 = AnsiToUtf8(text);
    DrawConverted(x, y, colour, s_utf8, face, size, shadow, shadowColour, out);
}

void DrawGameText(int x, int y, DWORD colour, const wchar_t* text, const char* face, int size,
                  BOOL shadow, int style, DWORD shadowColour, C3_SIZE* out)
{
    const std::string utf8 = text ? WideToUtf8(text) : std::string();
    DrawConverted(x, y, colour, utf8, face, size, shadow, shadowColour, out);
}

} // namespace QzPlatform
