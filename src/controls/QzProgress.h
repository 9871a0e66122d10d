// A progress bar: a value within a range shown as a filled part of the control's animation
// section. Frame 0 is the fill, frame 1 an optional back layer, frame 2 an optional front layer.
// Styles: 0 fills upwards from the bottom (with an optional trail of an earlier, higher value),
// 1 fills from the left, 2 fills from the left in 36-pixel segments. It takes no input.
#pragma once

#include "controls/QzCtrl.h"

namespace QzGui
{

// Fill styles ("ProgressStyle").
constexpr BYTE QZ_PROGRESS_VERTICAL = 0;
constexpr BYTE QZ_PROGRESS_HORIZONTAL = 1;
constexpr BYTE QZ_PROGRESS_SEGMENTED = 2;

class CQzProgress : public CQzCtrl
{
public:
    CQzProgress() = default;
    CQzProgress(const CQzProgress&) = default;
    CQzProgress& operator=(const CQzProgress&) = default;

    ~CQzProgress() override;
    BOOL LoadWndInfo() override;
    int GetWndType() override { return QZ_WND_PROGRESS; }
    BOOL Show() override;
    BOOL OnCreate() override;

    // New virtual operations, in slot order.
    virtual void SetDrawMode(BYTE byDrawMode) { m_byDrawMode = byDrawMode; }
    // Draws the bar for value b; in the vertical style an earlier value a above b is drawn as
    // a trail first. Both are lowered to the maximum.
    virtual void DrawProgress(int a, int b, BYTE byDrawMode);

    // To be called before the bar is created: style, range and the optional layers with their
    // offsets from the window's top-left (a null offset keeps the current one).
    void PreSetParam(int nMin, int nMax, BYTE byStyle, BOOL bBackAni, const POINT* pBackOffset,
                     BOOL bFrontAni, const POINT* pFrontOffset);
    void SetRange(int nMin, int nMax);
    // Stores the range and keeps the pixels per unit as they are.
    void SetRangeOnly(int nMin, int nMax);
    void GetRange(int* pMin, int* pMax) const;
    void SetSize(int nWidth, int nHeight);
    void SetValue(int nValue) { m_nPos = nValue; }

private:
    void CalcStep();
    // Frame 1 or 2 at the window's top-left plus the offset.
    void DrawLayer(int nFrame, POINT ptOffset, BYTE byDrawMode);
    // The fill (frame 0 of the section, null when the section did not open) by style.
    void DrawVertical(IDataAni* pAni, int a, int b, BYTE byDrawMode);
    void DrawHorizontal(IDataAni* pAni, int a, BYTE byDrawMode);
    void DrawSegments(IDataAni* pAni, int a, BYTE byDrawMode);

    BYTE m_byStyle = QZ_PROGRESS_VERTICAL;
    bool m_bBackAni = false;
    bool m_bFrontAni = false;
    int m_nBarWidth = 0;
    int m_nBarHeight = 0;
    int m_nMax = 0;
    int m_nMin = 0;
    int m_nPos = 0;
    POINT m_ptBackOffset = {0, 0};
    POINT m_ptFrontOffset = {0, 0};
    float m_fStep = 0.0f;
    float m_fMinStep = 0.0f;
    BYTE m_byDrawMode = 0;
    BOOL m_bPreSetParam = 0;
};

} // namespace QzGui
