// The text half of CMyBitmap: measuring, lead-byte tests and emotion text.
#include "platform/render/MyBitmap.h"

#include "platform/render/DataSet.h"
#include "platform/render/EmotionTextLayout.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/text/QzCodePage.h"

namespace
{

QzPlatform::FontSpec MakeFont(const char* face, int size)
{
    QzPlatform::FontSpec font;
    font.face = face && *face ? face : CMyBitmap::GetDefaultFontName();
    font.size = size > 0 ? size : CMyBitmap::GetFontSize();
    return font;
}

C3_SIZE ToC3Size(const QzPlatform::SizeI& size)
{
    return C3_SIZE{size.cx, size.cy};
}

C3_SIZE ShowUtf8EmotionString(int x, int y, DWORD colour, const std::string& utf8, IDataIcon* icons,
                              const char* face, int size, int iconCell, DWORD shadowColour)
{
    const QzPlatform::CEmotionTextLayout layout(utf8, icons, MakeFont(face, size), iconCell);
    layout.Draw(x, y, colour, shadowColour);
    return layout.GetSize();
}

} // namespace

C3_SIZE CMyBitmap::CalcuTextExtent(const char* text, const char* face, int size, IDataIcon* icons,
                                   int iconCell, C3_FONT_INFO*)
{
    if (!text)
        return C3_SIZE{0, 0};
    const std::string utf8 = QzPlatform::AnsiToUtf8(text);
    const QzPlatform::FontSpec font = MakeFont(face, size);
    if (!icons)
        return ToC3Size(QzPlatform::GetRenderDevice().MeasureText(utf8, font));
    return QzPlatform::CEmotionTextLayout(utf8, icons, font, iconCell).GetSize();
}

bool CMyBitmap::IsDBCSLeadByte(const char* text, int index)
{
    if (!text || index < 0)
        return false;
    // Walk whole characters from the start, so that a second byte is never taken for a first.
    int pos = 0;
    while (pos < index)
    {
        if (text[pos] == '\0')
            return false;
        const bool pair = ::IsDBCSLeadByte(static_cast<BYTE>(text[pos])) && text[pos + 1] != '\0';
        pos += pair ? 2 : 1;
    }
    return pos == index && text[pos] != '\0' && ::IsDBCSLeadByte(static_cast<BYTE>(text[pos])) &&
           text[pos + 1] != '\0';
}

C3_SIZE CMyBitmap::ShowEmotionStringEx(int x, int y, DWORD colour, const char* text,
                                       IDataIcon* icons, const char* face, int size, bool,
                                       int iconCell, int, int, int, DWORD shadowColour, C3_POS,
                                       RENDER_TEXT_STYLE*)
{
    if (!text || !*text)
        return C3_SIZE{0, 0};
    return ShowUtf8EmotionString(x, y, colour, QzPlatform::AnsiToUtf8(text), icons, face, size,
                                 iconCell, shadowColour);
}

C3_SIZE CMyBitmap::ShowEmotionStringW(int x, int y, DWORD colour, const wchar_t* text,
                                      IDataIcon* icons, const char* face, int size, bool,
                                      int iconCell, int, int, int, DWORD shadowColour, C3_POS,
                                      RENDER_TEXT_STYLE*)
{
    if (!text || !*text)
        return C3_SIZE{0, 0};
    return ShowUtf8EmotionString(x, y, colour, QzPlatform::WideToUtf8(text), icons, face, size,
                                 iconCell, shadowColour);
}
