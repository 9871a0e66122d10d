#include "platform/render/MyBitmap.h"

#include "platform/render/IRenderDevice.h"
#include "platform/services/QzAssert.h"

#include <cstdarg>
#include <cstdio>
#include <string>

namespace
{

const int kDefaultFontSize = 12;

std::string g_strDefaultFontName = "Sans";
int g_nDefaultFontSize = kDefaultFontSize;

} // namespace

void LogMsg(const char* format, ...)
{
    if (!format)
        return;
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(&text[0], text.size() + 1, format, args);
    va_end(args);
    QzPlatform::ReportLogMsg(text);
}

void CMyBitmap::ShowBlock(int x1, int y1, int x2, int y2, DWORD colour)
{
    QzPlatform::GetRenderDevice().FillRect(x1, y1, x2, y2, colour);
}

void CMyBitmap::ShowRect(int x1, int y1, int x2, int y2, DWORD colour)
{
    QzPlatform::GetRenderDevice().StrokeRect(x1, y1, x2, y2, colour);
}

void CMyBitmap::ShowLine(int x1, int y1, int x2, int y2, DWORD colour)
{
    QzPlatform::GetRenderDevice().DrawLine(x1, y1, x2, y2, colour);
}

int CMyBitmap::GetScreenWidth()
{
    return QzPlatform::GetRenderDevice().GetScreenWidth();
}

int CMyBitmap::GetScreenHeight()
{
    return QzPlatform::GetRenderDevice().GetScreenHeight();
}

void CMyBitmap::GetFontSize(C3_SIZE& cell)
{
    cell.iWidth = g_nDefaultFontSize / 2;
    cell.iHeight = g_nDefaultFontSize;
}

int CMyBitmap::GetFontSize()
{
    return g_nDefaultFontSize;
}

int CMyBitmap::GetFontWidth(const char* face, int size, C3_FONT_INFO*)
{
    QzPlatform::FontSpec font;
    font.face = face && *face ? face : g_strDefaultFontName;
    font.size = size > 0 ? size : g_nDefaultFontSize;
    return QzPlatform::GetRenderDevice().MeasureText("0", font).cx;
}

const char* CMyBitmap::GetDefaultFontName()
{
    return g_strDefaultFontName.c_str();
}

void CMyBitmap::SetDefaultFontName(const char* face)
{
    g_strDefaultFontName = face && *face ? face : "Sans";
}

void CMyBitmap::SetDefaultFontSize(int size)
{
    g_nDefaultFontSize = size > 0 ? size : kDefaultFontSize;
}
