// A draggable thumb on a horizontal or vertical track, standing for a value from 0 to a range.
// It reports every move to a target window as WM_HSCROLL (horizontal) or WM_VSCROLL
// (vertical) with the slider's id in lParam, and draws only its thumb: no background, no
// caption.
#pragma once

#include "controls/QzCtrl.h"

#include <cstdint>

namespace QzGui
{

// Track directions (PreSetParam's style); every style other than 0 lies along y.
enum : DWORD
{
    QZ_SLIDER_HORZ = 0,
    QZ_SLIDER_VERT = 1,
};

// Scroll codes a slider sends to its target (wParam).
enum : WORD
{
    QZ_SLIDER_DRAG = 100,    // each mouse move while dragging
    QZ_SLIDER_DRAGEND = 101, // release after a drag
    QZ_SLIDER_JUMP = 102,    // release without a drag: the thumb jumped to the click
    QZ_SLIDER_SET = 103,     // SetValue with notify
};

class CQzSlider : public CQzCtrl
{
public:
    CQzSlider();
    CQzSlider(const CQzSlider&) = default;
    CQzSlider& operator=(const CQzSlider&) = default;

    ~CQzSlider() override;
    BOOL LoadWndInfo() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    void OnMouseMove(UINT nFlags, POINT point) override;
    int GetWndType() override { return QZ_WND_SLIDER; }
    BOOL Show() override;

    // Range and direction, before Create.
    void PreSetParam(WORD wRange, DWORD nStyle);
    // Moves the thumb to the value, clamped to 0..range; with bNotify, tells the target.
    void SetValue(int nValue, BOOL bNotify);
    // The value the thumb stands for, rounded to the nearest; 0 without a range or a track.
    int GetValue() const;
    WORD GetRange() const { return m_wRange; }
    // A null target is ignored: the slider keeps the one it has. The target is not owned and
    // must outlive the slider; it is usually the dialog that holds the slider.
    void SetTarget(CQzBaseWindow* pTarget);
    void EnableDrag(bool bEnable) { m_bDragEnable = bEnable; }
    bool IsDragEnabled() const { return m_bDragEnable; }
    // Pixels the thumb can travel: the window's length less the thumb's, never below 0.
    int GetTrackWidth() const;
    int GetTrackHeight() const;
    // Keeps a copy of the point for the host; null is ignored.
    void SetExtraPoint(const POINT* pPoint);
    // The look digest of a stock slider: what DrawThumb reads (see CQzCtrl::LookDigestOf).
    uint64_t ThumbLook() const;

private:
    bool IsHorizontal() const { return m_nStyle == QZ_SLIDER_HORZ; }
    int GetTrackLength() const;
    // Places the thumb, clamped to the track.
    void PlaceThumb(int64_t nPos);
    void DrawThumb();
    void Notify(WORD nCode);

    bool m_bDragging = false;
    WORD m_wRange = 1;
    int m_nThumbPos = 0;
    DWORD m_nStyle = QZ_SLIDER_VERT;
    int m_nBtnLenH = 0;
    int m_nBtnLenV = 0;
    POINT m_ptLast = {0, 0};
    CQzBaseWindow* m_pTarget = nullptr; // not owned
    POINT m_ptExtra = {0, 0};
    bool m_bDragEnable = true;
    bool m_bMoved = false;
    BOOL m_bPreSetParam = 0;
};

} // namespace QzGui
