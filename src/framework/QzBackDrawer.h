// Draws one window's background: a frame of its animation section placed by back type
// (centred, stretched, nine-slice or plain), its bitmap, or the outline that stands in for the
// images of a window without a record, and reports what it drew to the draw record. It works on
// a copy of what the window's look consists of, so it needs nothing else of the window.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>

class IDataAni;
class IMyBitmap;

namespace QzGui
{

// Back types of a window ("BackShowMode"); 0, 5 and every other value draw the plain way.
enum : DWORD
{
    QZ_BACK_CENTRED = 1,
    QZ_BACK_STRETCHED = 2,
    QZ_BACK_NINESLICE = 3,
    QZ_BACK_GROUP = 4,
    QZ_BACK_FILE = 5,
    QZ_BACK_NONE = 6,
    QZ_BACK_BITMAP = 7,
};

// What the background drawing reads of a window.
struct QzBackLook
{
    RECT rcWindow = {0, 0, 0, 0};
    POINT ptPicOffset = {0, 0};
    POINT ptPicOffset2 = {0, 0};
    int nOffsetFrame = -1; // the frame ptPicOffset applies to in the plain type; -1: every frame
    RECT rcAniOffset = {0, 0, 0, 0}; // margins cut off each side of a frame
    WORD wState = 0;                 // selects the frame: state modulo the frame count
    BYTE byAlpha = 255;
};

class CQzBackDrawer
{
public:
    explicit CQzBackDrawer(const QzBackLook& look) : m_look(look) {}

    // Draws the state's frame of the section by back type; a section without frames draws
    // nothing. Returns the position to report.
    POINT DrawSection(IDataAni* pAni, DWORD nBackType) const;
    // The bitmap stretched over the window at the picture offset; returns the position.
    POINT DrawBitmap(IMyBitmap* pBitmap) const;
    // Records a drawn background: window size, position, section, 2 modulo the frame count.
    void Report(POINT ptDrawn, const char* pszSection, int nFrameCount) const;

    // The stand-in for a window's images: a translucent fill, then unless bOutline is false
    // the outline in the colour of the window's type.
    static void DrawOutline(const RECT& rc, int nWndType, bool bOutline);
    static DWORD GetOutlineColour(int nWndType);
    // Frame 0 of a section of the animation file at (x, y), unscaled.
    static void DrawFirstFrame(const char* pszSection, int x, int y, BYTE byAlpha);

private:
    QzBackLook m_look;
};

} // namespace QzGui
