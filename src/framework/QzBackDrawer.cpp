#include "framework/QzBackDrawer.h"

#include "framework/QzMsg.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzWidgetKit.h"

#include <algorithm>
#include <climits>

namespace QzGui
{

namespace
{

constexpr const char* kReportFile = "ani/control.ani";
constexpr DWORD kFillColour = 0x50000000;
constexpr int kNinePieces = 9;

// Sums of window coordinates, offsets and margins are taken in 64 bits, so that hostile
// margins cannot overflow, and cut back to int where they reach the render library.
int ToInt(int64_t value)
{
    return static_cast<int>(std::clamp<int64_t>(value, INT_MIN, INT_MAX));
}

C3_SIZE FrameSize(IDataAni* pAni, int nFrame)
{
    C3_SIZE size = {0, 0};
    pAni->GetAniSize(size, nFrame);
    return size;
}

int64_t Width(const QzBackLook& look)
{
    return static_cast<int64_t>(look.rcWindow.right) - look.rcWindow.left;
}

int64_t Height(const QzBackLook& look)
{
    return static_cast<int64_t>(look.rcWindow.bottom) - look.rcWindow.top;
}

RECT MarginSource(const QzBackLook& look, int64_t nWidth, int64_t nHeight)
{
    const RECT& rcMargin = look.rcAniOffset;
    return {rcMargin.left, rcMargin.top, ToInt(nWidth - rcMargin.right),
            ToInt(nHeight - rcMargin.bottom)};
}

void DrawPart(const QzBackLook& look, IDataAni* pAni, int nFrame, const RECT& rcSource, int64_t x,
              int64_t y, int64_t nWidth, int64_t nHeight)
{
    pAni->ShowAniEx(nFrame, ToInt(x), ToInt(y), &rcSource, ToInt(nWidth), ToInt(nHeight), 0, 0,
                    1.0f, look.byAlpha);
}

// One frame less the margins, centred in the window and moved by the picture offset.
POINT DrawCentred(const QzBackLook& look, IDataAni* pAni, int nFrame)
{
    const C3_SIZE size = FrameSize(pAni, nFrame);
    const RECT& rcMargin = look.rcAniOffset;
    const int64_t nWidth = static_cast<int64_t>(size.iWidth) - rcMargin.left - rcMargin.right;
    const int64_t nHeight = static_cast<int64_t>(size.iHeight) - rcMargin.top - rcMargin.bottom;
    const int64_t x = look.rcWindow.left + static_cast<int64_t>(look.ptPicOffset.x) +
                      (Width(look) / 2 - nWidth / 2);
    const int64_t y = look.rcWindow.top + static_cast<int64_t>(look.ptPicOffset.y) +
                      (Height(look) / 2 - nHeight / 2);
    DrawPart(look, pAni, nFrame, MarginSource(look, size.iWidth, size.iHeight), x, y, nWidth,
             nHeight);
    return {ToInt(x), ToInt(y)};
}

// One frame less the margins, stretched over the window from the picture offset.
POINT DrawStretched(const QzBackLook& look, IDataAni* pAni, int nFrame)
{
    const C3_SIZE size = FrameSize(pAni, nFrame);
    const int64_t x = static_cast<int64_t>(look.rcWindow.left) + look.ptPicOffset.x;
    const int64_t y = static_cast<int64_t>(look.rcWindow.top) + look.ptPicOffset.y;
    DrawPart(look, pAni, nFrame, MarginSource(look, size.iWidth, size.iHeight), x, y, Width(look),
             Height(look));
    return {ToInt(x), ToInt(y)};
}

// Frames 0 to 8 as corners, edges and centre. The placement keeps the long-standing quirks of
// existing skins: the state's frame f stands in for the top-left piece's size in piece 0's
// source and in the top row's heights and the bottom edge's x, and the bottom edge sits at -at
// where the bottom corners use +at. With state 0 and symmetric pieces it is the plain picture.
POINT DrawNineSlice(const QzBackLook& look, IDataAni* pAni, int nFrame)
{
    int64_t w[kNinePieces];
    int64_t h[kNinePieces];
    for (int i = 0; i < kNinePieces; ++i)
    {
        const C3_SIZE size = FrameSize(pAni, i);
        w[i] = size.iWidth;
        h[i] = size.iHeight;
    }
    const C3_SIZE frame = FrameSize(pAni, nFrame);
    const int64_t fw = frame.iWidth;
    const int64_t fh = frame.iHeight;
    const int64_t L = look.rcWindow.left;
    const int64_t T = look.rcWindow.top;
    const int64_t W = Width(look);
    const int64_t H = Height(look);
    const int64_t al = look.rcAniOffset.left;
    const int64_t at = look.rcAniOffset.top;
    const int64_t ar = look.rcAniOffset.right;
    const int64_t ab = look.rcAniOffset.bottom;

    struct Piece
    {
        int64_t x, y, cx, cy;
    };
    const Piece pieces[kNinePieces] = {
        {L + al, T + at, w[0] - al - ar, fh - ab - at},
        {L + w[0], T + at, W - w[0] - w[2], fh - at - ab},
        {L + W - w[2] + al, T + at, w[2] - al - ar, fh - ab - at},
        {L + al, T + h[0], w[3] - al - ar, H - 2 * fh},
        {L + w[3], T + h[0], W - w[3] - w[5], H - h[1] - h[7]},
        {L + W - w[5] + al, T + h[2], w[5] - al - ar, H - h[2] - h[8]},
        {L + al, T + H - h[6] + at, w[6] - al - ar, h[6] - ab - at},
        {L + fw, T + H - h[7] - at, W - w[6] - w[8], h[7] - at - ab},
        {L + W - w[8] + al, T + H - h[8] + at, w[8] - al - ar, h[8] - at - ab},
    };
    for (int i = 0; i < kNinePieces; ++i)
    {
        const RECT rcSource = i == 0 ? MarginSource(look, fw, fh) : MarginSource(look, w[i], h[i]);
        const Piece& piece = pieces[i];
        DrawPart(look, pAni, i, rcSource, piece.x, piece.y, piece.cx, piece.cy);
    }
    return {look.rcWindow.left, look.rcWindow.top};
}

// One frame at its size less the margins. The picture offset applies to every frame or only
// to the chosen one; the second offset always applies.
POINT DrawPlain(const QzBackLook& look, IDataAni* pAni, int nFrame)
{
    const C3_SIZE size = FrameSize(pAni, nFrame);
    const bool bOffset = look.nOffsetFrame == -1 || look.nOffsetFrame == nFrame;
    const POINT ptOffset = bOffset ? look.ptPicOffset : POINT{0, 0};
    const RECT& rcMargin = look.rcAniOffset;
    const int64_t x =
        static_cast<int64_t>(look.rcWindow.left) + ptOffset.x + rcMargin.left + look.ptPicOffset2.x;
    const int64_t y =
        static_cast<int64_t>(look.rcWindow.top) + ptOffset.y + rcMargin.top + look.ptPicOffset2.y;
    const int64_t nWidth = static_cast<int64_t>(size.iWidth) - rcMargin.left - rcMargin.right;
    const int64_t nHeight = static_cast<int64_t>(size.iHeight) - rcMargin.top - rcMargin.bottom;
    DrawPart(look, pAni, nFrame, MarginSource(look, size.iWidth, size.iHeight), x, y, nWidth,
             nHeight);
    return {ToInt(x), ToInt(y)};
}

} // namespace

POINT CQzBackDrawer::DrawSection(IDataAni* pAni, DWORD nBackType) const
{
    const POINT ptWindow = {m_look.rcWindow.left, m_look.rcWindow.top};
    const int nCount = pAni ? pAni->GetFrameCount() : 0;
    if (nCount <= 0)
        return ptWindow;
    const int nFrame = m_look.wState % nCount;
    switch (nBackType)
    {
    case QZ_BACK_CENTRED:
        return DrawCentred(m_look, pAni, nFrame);
    case QZ_BACK_STRETCHED:
        return DrawStretched(m_look, pAni, nFrame);
    case QZ_BACK_NINESLICE:
        return DrawNineSlice(m_look, pAni, nFrame);
    default:
        return DrawPlain(m_look, pAni, nFrame);
    }
}

POINT CQzBackDrawer::DrawBitmap(IMyBitmap* pBitmap) const
{
    const int x = ToInt(static_cast<int64_t>(m_look.rcWindow.left) + m_look.ptPicOffset.x);
    const int y = ToInt(static_cast<int64_t>(m_look.rcWindow.top) + m_look.ptPicOffset.y);
    pBitmap->ShowImage(x, y, 0, ToInt(Width(m_look)), ToInt(Height(m_look)), m_look.byAlpha, 0, 0,
                       1.0f);
    return {x, y};
}

void CQzBackDrawer::Report(POINT ptDrawn, const char* pszSection, int nFrameCount) const
{
    if (nFrameCount <= 0)
        return;
    QzPlatform::GetWidgetKit().ReportDraw(ToInt(Width(m_look)), ToInt(Height(m_look)), ptDrawn.x,
                                          ptDrawn.y, pszSection, 2 % nFrameCount, kReportFile);
}

void CQzBackDrawer::DrawOutline(const RECT& rc, int nWndType, bool bOutline)
{
    CMyBitmap::ShowBlock(rc.left, rc.top, rc.right, rc.bottom, kFillColour);
    if (bOutline)
        CMyBitmap::ShowRect(rc.left, rc.top, rc.right, rc.bottom, GetOutlineColour(nWndType));
}

DWORD CQzBackDrawer::GetOutlineColour(int nWndType)
{
    switch (nWndType)
    {
    case QZ_WND_DIALOG:
        return 0xf0000000;
    case QZ_WND_BUTTON:
        return 0xff31e805;
    case QZ_WND_EDIT:
        return 0xff2ac204;
    case QZ_WND_IMAGE:
        return 0xff229c03;
    case QZ_WND_STATIC:
    case QZ_WND_RECORD_STATIC:
        return 0xffcae805;
    case QZ_WND_CHECK:
        return 0xffa8c204;
    case QZ_WND_LIST:
        return 0xff879c03;
    case QZ_WND_PROGRESS:
        return 0xff171717;
    case QZ_WND_GRID:
    case QZ_WND_GRID_SHORTCUT:
    case QZ_WND_GRID_EX:
        return 0xfff6cfb6;
    case QZ_WND_TREE:
        return 0xff844af2;
    default:
        return 0xff8080ff;
    }
}

void CQzBackDrawer::DrawFirstFrame(const char* pszSection, int x, int y, BYTE byAlpha)
{
    IDataAni* pAni = TableDataSetQuery()->GetAni(QzPlatform::kControlAniFile, pszSection, 0,
                                                 QzPlatform::CQzAniStore::kKeepAliveMs, 0);
    if (pAni)
        pAni->ShowAni(0, x, y, 0, 0, 1.0f, byAlpha);
}

} // namespace QzGui
