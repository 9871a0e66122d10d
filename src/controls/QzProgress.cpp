#include "controls/QzProgress.h"

#include "layout/IQzGuiWndInfo.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzText.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>

namespace QzGui
{

namespace
{

constexpr const char* kSource = "QzProgress";

enum : int
{
    kFillFrame = 0,
    kBackFrame = 1,
    kFrontFrame = 2,
};

// The fill of the segmented style comes in pieces of this width.
constexpr int kSegmentWidth = 36;
// A negative value of the horizontal style shows as a red block of its length.
constexpr DWORD kNegativeColour = 0xFFFF0000;
// From a span of this many units on, the trail's minimum step is this part of the bar.
constexpr int64_t kMinStepParts = 100;

// Pixel lengths are cut to this: far beyond any screen, and small enough that sums with window
// coordinates and the count of segments stay bounded whatever range and value a host sets.
constexpr double kMaxPixels = 32767.0;

// Truncated toward zero and cut to +-kMaxPixels; 0 for NaN.
int Pixels(double fValue)
{
    if (std::isnan(fValue))
        return 0;
    return static_cast<int>(std::max(-kMaxPixels, std::min(kMaxPixels, fValue)));
}

// Frame 0's part rcSource stretched to the size at (x, y); nothing without the section or for
// an empty or inverted part or size.
void DrawFill(IDataAni* pAni, int x, int y, const RECT& rcSource, int nWidth, int nHeight,
              BYTE byDrawMode)
{
    if (!pAni || nWidth <= 0 || nHeight <= 0)
        return;
    if (rcSource.right <= rcSource.left || rcSource.bottom <= rcSource.top)
        return;
    pAni->ShowAniEx(kFillFrame, x, y, &rcSource, nWidth, nHeight, byDrawMode);
}

} // namespace

CQzProgress::~CQzProgress() = default;

// ---------------------------------------------------------------------------------------------
// Set-up

void CQzProgress::PreSetParam(int nMin, int nMax, BYTE byStyle, BOOL bBackAni,
                              const POINT* pBackOffset, BOOL bFrontAni, const POINT* pFrontOffset)
{
    m_byStyle = byStyle;
    SetRange(nMin, nMax);
    if (bBackAni)
    {
        m_bBackAni = true;
        if (pBackOffset)
            m_ptBackOffset = *pBackOffset;
    }
    if (bFrontAni)
    {
        m_bFrontAni = true;
        if (pFrontOffset)
            m_ptFrontOffset = *pFrontOffset;
    }
    m_bPreSetParam = 1;
}

void CQzProgress::SetRange(int nMin, int nMax)
{
    SetRangeOnly(nMin, nMax);
    CalcStep();
}

void CQzProgress::SetRangeOnly(int nMin, int nMax)
{
    m_nMin = nMin;
    m_nMax = nMax;
}

void CQzProgress::GetRange(int* pMin, int* pMax) const
{
    if (pMin)
        *pMin = m_nMin;
    if (pMax)
        *pMax = m_nMax;
}

void CQzProgress::SetSize(int nWidth, int nHeight)
{
    m_nBarWidth = nWidth;
    m_nBarHeight = nHeight;
    CalcStep();
}

// Pixels per unit along the bar. The vertical style also keeps the smallest step its trail
// moves by: one unit, or a hundredth of the bar for a span of 100 and more. An empty span
// leaves the minimum step as it was; the step is then 0 and nothing is drawn.
void CQzProgress::CalcStep()
{
    const int64_t nSpan = static_cast<int64_t>(m_nMax) - m_nMin;
    m_fStep = 0.0f;
    if (nSpan == 0)
        return;
    const float fSpan = static_cast<float>(nSpan);
    if (m_byStyle != QZ_PROGRESS_VERTICAL)
    {
        m_fStep = static_cast<float>(m_nBarWidth) / fSpan;
        return;
    }
    const float fHeight = static_cast<float>(m_nBarHeight);
    m_fStep = fHeight / fSpan;
    m_fMinStep = nSpan < kMinStepParts ? fHeight / fSpan : fHeight / kMinStepParts;
}

// ---------------------------------------------------------------------------------------------
// Creation

BOOL CQzProgress::LoadWndInfo()
{
    if (!CQzCtrl::LoadWndInfo())
        return 0;
    if (!m_pWndInfo)
        return 1;
    m_nBarWidth = GetWidth();
    m_nBarHeight = GetHeight();
    if (const char* pszStyle = m_pWndInfo->GetExtraValue("ProgressStyle"))
        m_byStyle = static_cast<BYTE>(QzPlatform::TextToInt(pszStyle));
    CalcStep();
    return 1;
}

BOOL CQzProgress::OnCreate()
{
    if (m_bPreSetParam)
        return 1;
    LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", __LINE__, kSource);
    return 0;
}

// ---------------------------------------------------------------------------------------------
// Drawing

// The caption goes over the bar; the window's background is not drawn.
BOOL CQzProgress::Show()
{
    DrawProgress(m_nPos, m_nPos, m_byDrawMode);
    ShowText();
    return 1;
}

// Back layer, fill, front layer.
void CQzProgress::DrawProgress(int a, int b, BYTE byDrawMode)
{
    if (!IsWindowVisible())
        return;
    a = std::min(a, m_nMax);
    b = std::min(b, m_nMax);
    if (m_bBackAni)
        DrawLayer(kBackFrame, m_ptBackOffset, byDrawMode);
    CheckMouseLeave();

    IDataAni* pFill = AniOf(GetAniName());
    if (m_byStyle == QZ_PROGRESS_VERTICAL)
        DrawVertical(pFill, a, b, byDrawMode);
    else if (m_byStyle == QZ_PROGRESS_HORIZONTAL)
        DrawHorizontal(pFill, a, byDrawMode);
    else if (m_byStyle == QZ_PROGRESS_SEGMENTED)
        DrawSegments(pFill, a, byDrawMode);

    if (m_bFrontAni)
        DrawLayer(kFrontFrame, m_ptFrontOffset, byDrawMode);
}

void CQzProgress::DrawLayer(int nFrame, POINT ptOffset, BYTE byDrawMode)
{
    IDataAni* pLayer = AniOf(GetAniName());
    if (!pLayer)
        return;
    pLayer->ShowAni(nFrame, QzPlatform::AddClamped(m_rcWindow.left, ptOffset.x),
                    QzPlatform::AddClamped(m_rcWindow.top, ptOffset.y), byDrawMode);
}

// From the bottom up: the part of frame 0 below the value's height. With a lower value b than
// the earlier a, a is drawn first as a trail in its own mode, then b rounded up by the minimum
// step. A negative value draws nothing.
void CQzProgress::DrawVertical(IDataAni* pAni, int a, int b, BYTE byDrawMode)
{
    if (a < 0 || b < 0 || m_fStep == 0.0f)
        return;
    const int nWidth = Pixels(m_nBarWidth);
    const int nHeight = Pixels(m_nBarHeight);
    const float fHeight = static_cast<float>(nHeight);
    const int x = m_rcWindow.left;
    if (b >= a)
    {
        if (a == 0)
            return;
        const int nFillTop = Pixels(fHeight - a * m_fStep);
        DrawFill(pAni, x, QzPlatform::AddClamped(m_rcWindow.top, nFillTop),
                 {0, nFillTop, nWidth, nHeight}, nWidth, nHeight - nFillTop, byDrawMode);
        return;
    }
    int nFillTop = Pixels(fHeight - a * m_fStep);
    DrawFill(pAni, x, QzPlatform::AddClamped(m_rcWindow.top, nFillTop),
             {0, nFillTop, nWidth, nHeight}, nWidth, Pixels(a * m_fStep), QZ_DRAWMODE_TRAIL);

    // The value rounded up by the minimum step, in units, cut to a range whose pixels cannot
    // overflow before it becomes an integer.
    const double fUnits = static_cast<double>(b + m_fMinStep / m_fStep) + 0.5;
    const double fMaxUnits = INT_MAX / 2;
    const int i = static_cast<int>(std::max(-fMaxUnits, std::min(fMaxUnits, fUnits)));
    nFillTop = Pixels(fHeight - i * m_fStep);
    DrawFill(pAni, x, QzPlatform::AddClamped(m_rcWindow.top, nFillTop),
             {0, nFillTop, nWidth, nHeight}, nWidth, Pixels(i * m_fStep + 0.5), byDrawMode);
}

// From the left, placed by the record's offsets (0 without a record); a negative value shows
// as a red block of its length, any positive one as at least one pixel.
void CQzProgress::DrawHorizontal(IDataAni* pAni, int a, BYTE byDrawMode)
{
    const int nHeight = Pixels(m_nBarHeight);
    const int nLeft = m_rcWindow.left;
    const int nTop = m_rcWindow.top;
    if (a < 0)
    {
        const int nLength = Pixels(-static_cast<double>(a) * m_fStep);
        CMyBitmap::ShowBlock(nLeft, nTop, QzPlatform::AddClamped(nLeft, nLength),
                             QzPlatform::AddClamped(nTop, nHeight), kNegativeColour);
        return;
    }
    if (a == 0)
        return;
    const int nFill = std::max(1, Pixels(a * m_fStep));
    const int64_t nOffsetX = m_pWndInfo ? m_pWndInfo->GetOffsetX() : 0;
    const int64_t nOffsetY = m_pWndInfo ? m_pWndInfo->GetOffsetY() : 0;
    DrawFill(pAni, QzPlatform::AddClamped(nLeft, nOffsetX), QzPlatform::AddClamped(nTop, nOffsetY),
             {0, 0, nFill, nHeight}, nFill, nHeight, byDrawMode);
}

// From the left in whole frames of the segment width, after the partial segment at its end.
void CQzProgress::DrawSegments(IDataAni* pAni, int a, BYTE byDrawMode)
{
    if (a <= 0 || !pAni)
        return;
    const int nHeight = Pixels(m_nBarHeight);
    const int nLeft = m_rcWindow.left;
    const int nTop = m_rcWindow.top;
    const int nFill = Pixels(a * m_fStep);
    const int nWhole = nFill / kSegmentWidth;
    const int nRest = nFill % kSegmentWidth;
    if (nRest > 0)
        DrawFill(pAni, QzPlatform::AddClamped(nLeft, kSegmentWidth * nWhole), nTop,
                 {0, 0, nRest, nHeight}, nRest, nHeight, byDrawMode);
    for (int k = 0; k < nWhole; ++k)
        pAni->ShowAni(kFillFrame, QzPlatform::AddClamped(nLeft, kSegmentWidth * k), nTop,
                      byDrawMode);
}

} // namespace QzGui
