// The render library: blocks, outlines, lines, text measuring and emotion text (static functions
// of CMyBitmap), bitmap images, the LogMsg report line and the matrix functions. Everything is
// drawn through the installed render device (IRenderDevice.h). Narrow text is in the ANSI code
// page and wide text is UTF-32; both reach the device as UTF-8.
#pragma once

#include "platform/render/C3Types.h"
#include "platform/render/D3DXMath.h"
#include "platform/system/QzSystem.h"

#include <cstdint>

class IDataIcon;

// A bitmap image loaded from a file. Release destroys it.
class IMyBitmap
{
public:
    virtual void Release() = 0;
    virtual C3_SIZE GetSize() const = 0;
    // Draws the whole image stretched to width x height at (x, y) (0 or less: the image's own
    // size), scaled about (x, y). reserved arguments do not change the drawing.
    virtual BOOL ShowImage(int x, int y, int reserved, int width, int height, uint8_t alpha,
                           int reserved2, int reserved3, float scale) = 0;

protected:
    ~IMyBitmap() = default;
};

// The image of a file (resolved on the data root), or null when the device cannot load it; a
// failure is logged as "open file failed" with the file name.
IMyBitmap* MyBitmapCreate(const char* file);

// One report line, printf-style, through QzPlatform::ReportLogMsg.
#if defined(__GNUC__) || defined(__clang__)
__attribute__((format(printf, 1, 2)))
#endif
void LogMsg(const char* format, ...);

class CMyBitmap
{
public:
    // Filled rectangle, outline and line between the corners; colours ARGB.
    static void ShowBlock(int x1, int y1, int x2, int y2, DWORD colour);
    static void ShowRect(int x1, int y1, int x2, int y2, DWORD colour);
    static void ShowLine(int x1, int y1, int x2, int y2, DWORD colour);

    static int GetScreenWidth();
    static int GetScreenHeight();

    // The default character cell: half the default size wide, the default size high (6 x 12).
    static void GetFontSize(C3_SIZE& cell);
    // The default font size (12 unless the host sets another).
    static int GetFontSize();
    // The width of one character of the face (null: the default) at the size (0 or less: the
    // default size), as the device measures "0".
    static int GetFontWidth(const char* face, int size, C3_FONT_INFO* info);
    // The face used where none is configured ("Sans" unless the host sets another).
    static const char* GetDefaultFontName();
    static void SetDefaultFontName(const char* face);
    static void SetDefaultFontSize(int size);

    // Size of narrow text in the face (null: the default) at the size (0 or less: the default).
    // With an icon set, emotion codes are measured as the icons ShowEmotionStringEx draws, and
    // a line is at least iconCell high. Null text measures (0, 0).
    static C3_SIZE CalcuTextExtent(const char* text, const char* face = nullptr, int size = 0,
                                   IDataIcon* icons = nullptr, int iconCell = 0,
                                   C3_FONT_INFO* info = nullptr);

    // True when byte `index` opens a two-byte character of the ANSI code page: it lies on a
    // character boundary counted from the start, is a lead byte and a second byte follows.
    static bool IsDBCSLeadByte(const char* text, int index);

    // Text with inline emotion codes ("#NN", "#NN|MM") drawn as icons of the icon set; a code
    // without an icon (or without an icon set) stays text. Lines end at '\n'; a line is as high
    // as its text and at least iconCell; icons are centred on it. Face null: the default face;
    // size 0 or less: the default size. A shadow colour with a zero alpha byte draws no shadow.
    // The remaining arguments are accepted for the callers' sake and do not change the drawing.
    // Returns the drawn size ((0, 0) for null or empty text).
    static C3_SIZE ShowEmotionStringEx(int x, int y, DWORD colour, const char* text,
                                       IDataIcon* icons, const char* face, int size = 14,
                                       bool reserved = false, int iconCell = 21, int reserved2 = 0,
                                       int reserved3 = 0, int style = 0,
                                       DWORD shadowColour = 0xFF000000,
                                       C3_POS position = C3_POS{0, 0},
                                       RENDER_TEXT_STYLE* textStyle = nullptr);
    static C3_SIZE ShowEmotionStringW(int x, int y, DWORD colour, const wchar_t* text,
                                      IDataIcon* icons, const char* face, int size = 14,
                                      bool reserved = false, int iconCell = 21, int reserved2 = 0,
                                      int reserved3 = 0, int style = 0,
                                      DWORD shadowColour = 0xFF000000,
                                      C3_POS position = C3_POS{0, 0},
                                      RENDER_TEXT_STYLE* textStyle = nullptr);
};
