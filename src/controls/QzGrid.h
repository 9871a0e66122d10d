// A table of equal item cells, at most 128: the slots of bags, shops and skill bars. The grid
// keeps for every cell whether it holds an item, a number drawn in its corner, a mark, whether
// it is enabled (a disabled cell is shaded) and visible, and a front and a back 3D effect. It
// knows nothing of the items: the host derives a class that draws them (DrawCellItem) and asks
// the grid which cell lies under the mouse (HitTest). Presses and releases go to the dialog as
// WM_NOTIFY.
//
// A cell is addressed by column and row, or by its index = row x columns + column. Every
// per-cell operation ignores an index outside 0..127; column and row are not checked against
// the grid's own size, and drawing never goes past the 128th cell whatever the size.
#pragma once

#include "controls/QzCtrl.h"
#include "effects/Gui3DEffect.h"
#include "platform/services/AniHandle.h"

#include <memory>
#include <string>

namespace QzGui
{

constexpr int GRID_MAX_CELLS = 128;

// Codes of the grid's WM_NOTIFY to its dialog (high word of wParam).
enum : WORD
{
    QZ_GRID_LBUTTONDOWN = 1,
    QZ_GRID_LBUTTONUP = 2, // only when the mouse is still over the grid
};

// One cell's effect holder, owned by its grid, and whether the grid stopped it (a stopped
// effect is not drawn until it is played again). Copying a slot gives an empty one: a copy of a
// grid starts without cell effects and every holder is deleted by the one grid that made it.
struct QzCellEffectSlot
{
    QzCellEffectSlot() = default;
    QzCellEffectSlot(const QzCellEffectSlot&) {}
    QzCellEffectSlot& operator=(const QzCellEffectSlot& other);

    std::unique_ptr<CGui3DEffect> pEffect;
    bool bStopped = false;
};

class CQzGrid : public CQzCtrl
{
public:
    CQzGrid();
    // Copies take every value but no cell effects (see QzCellEffectSlot); the grid's own front
    // and back effects are shared as every window shares them.
    CQzGrid(const CQzGrid&) = default;
    CQzGrid& operator=(const CQzGrid&) = default;

    ~CQzGrid() override;
    // A name plays that effect of the grid; null stops it.
    void PlayBackEffect(const char* pszName) override;
    void PlayFrontEffect(const char* pszName) override;
    // False for a null or empty name.
    BOOL HasFrontEffect(const char* pszName) override;
    BOOL HasBackEffect(const char* pszName) override;
    // The grid's own effects at its top-left, unless stopped.
    void DrawFrontEffect() override;
    void DrawBackEffect() override;
    void OnLButtonDown(UINT nFlags, POINT point) override;
    void OnLButtonUp(UINT nFlags, POINT point) override;
    int GetWndType() override { return QZ_WND_GRID; }
    // Back effect, every cell row by row, front effect; no background and no caption.
    BOOL Show() override;
    // Cell sizes from the rectangle and the gaps ("GridSpaceX", "GridSpaceY"; 1 by default).
    BOOL OnCreate() override;

    // New virtual operations, in slot order; all take column and row.
    virtual void DrawCellBack(int /*nCol*/, int /*nRow*/, bool /*bUsed*/) {}
    virtual bool IsCellHookA(int /*nCol*/, int /*nRow*/) { return false; }
    virtual bool IsCellHookB(int /*nCol*/, int /*nRow*/) { return false; }
    virtual bool IsCellHookC(int /*nCol*/, int /*nRow*/) { return false; }
    // The cell's number, when above 0, right-aligned in its bottom-right corner.
    virtual void DrawCellCount(int nCol, int nRow);
    virtual void DrawCellMark(int /*nCol*/, int /*nRow*/) {}
    // Back, then for a used cell its back effect, item, front effect, number and mark, then
    // the mask. FALSE (nothing drawn) for a bad index or a hidden cell.
    virtual BOOL DrawCell(int nCol, int nRow);
    virtual void DrawCellItem(int nCol, int nRow) = 0;
    // A disabled cell: the mask section's frame 0 stretched over it, or without a section
    // name a block of the mask colour.
    virtual void DrawCellMask(int nCol, int nRow);

    // Set-up, before Create.
    void PreSetParam(BYTE byCols, BYTE byRows);
    // Gaps between cells; the cell sizes follow from the size the grid had at creation.
    void SetGridSpace(int nSpaceX, int nSpaceY);

    // Geometry.
    int GetCellCount() const { return m_nCols * m_nRows; }
    BYTE GetCols() const { return m_nCols; }
    BYTE GetRows() const { return m_nRows; }
    float GetCellWidth() const { return m_fCellWidth; }
    float GetCellHeight() const { return m_fCellHeight; }
    // row x columns + column; the point holds column (x) and row (y).
    int GetCellIndex(int nCol, int nRow) const;
    int GetCellIndex(POINT ptCell) const { return GetCellIndex(ptCell.x, ptCell.y); }
    // The cell under a point relative to the grid's top-left; the gap right of and below a
    // cell belongs to it. False left of or above the grid and beyond the last column or row.
    bool HitTest(POINT pt, int* pCol, int* pRow) const;
    // Column and row of an index; false for an index outside 0..127 or a grid without columns.
    bool GetCellFromIndex(int nIndex, int* pCol, int* pRow) const;
    // The cell's top-left on the screen.
    void GetCellPos(int nCol, int nRow, POINT* pPos) const;

    // Items. SetCellUsed by column and row also counts one item (set or cleared); by index
    // it does not. RemoveItem stops the cell's effects, clears its flag, number and mark and
    // takes the item back off the count. IsCellUsed by point asks HitTest (point relative to
    // the grid).
    void SetCellUsed(int nCol, int nRow, bool bUsed);
    void SetCellUsed(POINT ptCell, bool bUsed) { SetCellUsed(ptCell.x, ptCell.y, bUsed); }
    void SetCellUsed(int nIndex, bool bUsed);
    bool IsCellUsed(POINT pt) const;
    bool IsCellUsed(int nCol, int nRow) const { return IsCellUsed(GetCellIndex(nCol, nRow)); }
    bool IsCellUsed(int nIndex) const;
    int GetUsedCellCount() const;
    void RemoveItem(int nCol, int nRow);
    // No item anywhere: every cell unused, without number or mark, visible, its effects
    // stopped; the grid's own effects stopped; the item count 0.
    void ClearAll();
    DWORD GetItemCount() const { return m_nItemCount; }

    // Marks, enablement, visibility and numbers.
    void SetCellMark(int nCol, int nRow, bool bMark);
    void ClearCellMarks();
    void SetCellEnable(int nIndex, bool bEnable);
    void SetCellEnable(int nCol, int nRow, bool bEnable)
    {
        SetCellEnable(ValidIndex(nCol, nRow), bEnable);
    }
    bool IsCellEnabled(int nIndex) const;
    bool IsCellEnabled(int nCol, int nRow) const { return IsCellEnabled(ValidIndex(nCol, nRow)); }
    // Visible or hidden, and with bAlsoEnable enabled or disabled to match.
    void SetCellVisible(int nIndex, bool bVisible, bool bAlsoEnable);
    bool IsCellVisible(int nIndex) const;
    void SetCellCount(int nIndex, DWORD nCount);

    // The mask of disabled cells: a section of the control animation file (null keeps the
    // current one, "" draws the colour instead) and the colour.
    void SetMaskAni(const char* pszName);
    void SetMaskColor(DWORD dwColor) { m_dwMaskColor = dwColor; }

    // Cell effects, by column and row or by index. Load: creates the cell's holder when
    // missing, fits it to the cell, adds the named effect unless held and, when bPlay, plays
    // it; nothing for an empty name. Play: a name plays that effect, null stops the cell's
    // effect; nothing for a cell without a holder.
    void LoadCellFrontEffect(int nIndex, const char* pszName, bool bPlay);
    void LoadCellFrontEffect(int nCol, int nRow, const char* pszName, bool bPlay)
    {
        LoadCellFrontEffect(ValidIndex(nCol, nRow), pszName, bPlay);
    }
    void LoadCellBackEffect(int nIndex, const char* pszName, bool bPlay);
    void LoadCellBackEffect(int nCol, int nRow, const char* pszName, bool bPlay)
    {
        LoadCellBackEffect(ValidIndex(nCol, nRow), pszName, bPlay);
    }
    bool HasCellFrontEffect(int nIndex, const char* pszName) const;
    bool HasCellFrontEffect(int nCol, int nRow, const char* pszName) const
    {
        return HasCellFrontEffect(ValidIndex(nCol, nRow), pszName);
    }
    bool HasCellBackEffect(int nIndex, const char* pszName) const;
    bool HasCellBackEffect(int nCol, int nRow, const char* pszName) const
    {
        return HasCellBackEffect(ValidIndex(nCol, nRow), pszName);
    }
    void PlayCellFrontEffect(int nIndex, const char* pszName);
    void PlayCellFrontEffect(int nCol, int nRow, const char* pszName)
    {
        PlayCellFrontEffect(ValidIndex(nCol, nRow), pszName);
    }
    void PlayCellBackEffect(int nIndex, const char* pszName);
    void PlayCellBackEffect(int nCol, int nRow, const char* pszName)
    {
        PlayCellBackEffect(ValidIndex(nCol, nRow), pszName);
    }
    // The same for the grid's own effects, fitted to the grid's size at creation.
    void LoadGridFrontEffect(const char* pszName, bool bPlay);
    void LoadGridBackEffect(const char* pszName, bool bPlay);
    // Every cell effect and the grid's own effects stopped.
    void StopAllEffects();

protected:
    using CellEffectLayer = QzCellEffectSlot[GRID_MAX_CELLS];

    BYTE m_nCols = 0;
    BYTE m_nRows = 0;
    float m_fCellHeight = 0.0f;
    float m_fCellWidth = 0.0f;
    bool m_bCellUsed[GRID_MAX_CELLS] = {};
    DWORD m_nCellCount[GRID_MAX_CELLS] = {};
    bool m_bCellMarked[GRID_MAX_CELLS] = {};
    bool m_bCellEnabled[GRID_MAX_CELLS];
    bool m_bCellVisible[GRID_MAX_CELLS];
    int m_nSpaceX = 0;
    int m_nSpaceY = 0;
    DWORD m_nItemCount = 0;
    CellEffectLayer m_CellFrontEffect;
    CellEffectLayer m_CellBackEffect;
    int m_nGridWidth = 0;
    int m_nGridHeight = 0;
    std::string m_strMaskAni;
    DWORD m_dwMaskColor = 0x40000000;
    bool m_bPreSetParam = false;
    bool m_bPressed = false;
    // The grid's own effects were stopped (PlayFrontEffect / PlayBackEffect with null).
    bool m_bFrontStopped = false;
    bool m_bBackStopped = false;

private:
    // The index of the cell, or -1 outside 0..127.
    int ValidIndex(int nCol, int nRow) const;
    // Cells drawn a frame: columns x rows, at most 128.
    int DrawnCells() const;
    // Left and top of the cell on the screen, before truncation.
    double CellLeft(int nCol) const;
    double CellTop(int nRow) const;
    int CellPixelWidth() const;
    int CellPixelHeight() const;
    // Fits the holder to a rectangle of the size, adds the part unless held, and plays it
    // when asked.
    void FitAndLoad(CGui3DEffect& effect, bool& bStopped, const char* pszName, bool bPlay,
                    int nWidth, int nHeight);
    // Creates the grid's own holder (a base window layer) when missing and loads into it.
    void LoadGridEffect(CGui3DEffect*& pEffect, bool& bStopped, const char* pszName, bool bPlay);
    // The cell's slot of a layer, or null for an index outside 0..127; the cell operations
    // do nothing with null.
    static QzCellEffectSlot* Slot(CellEffectLayer& layer, int nIndex);
    static const QzCellEffectSlot* Slot(const CellEffectLayer& layer, int nIndex);
    void LoadCellEffect(QzCellEffectSlot* pSlot, const char* pszName, bool bPlay);
    void PlayCellEffect(QzCellEffectSlot* pSlot, const char* pszName);
    static bool HasCellEffect(const QzCellEffectSlot* pSlot, const char* pszName);
    void PlayOrStop(CGui3DEffect* pEffect, bool& bStopped, const char* pszName);
    static bool HasEffect(const CGui3DEffect* pEffect, const char* pszName);
    void DrawCellEffect(const QzCellEffectSlot& slot, POINT pt);
    void Notify(WORD nCode);
    // The mask section, looked up once a frame (a reload of the animation file shows on the
    // next frame); null when missing.
    IDataAni* MaskSection();

    QzPlatform::CAniHandle m_maskAni;
    // m_maskAni was looked up in the current frame.
    bool m_bMaskCurrent = false;
};

} // namespace QzGui
