#include "controls/QzGrid.h"

#include "framework/QzGuiMgr.h"
#include "layout/QzExtraValue.h"
#include "platform/render/DataSet.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzNumeric.h"
#include "platform/services/QzTextDraw.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>

namespace QzGui
{

namespace
{

constexpr const char* kSource = "QzGrid";

// The effect holder's flag for the parts the grid adds and asks about, as every window uses.
constexpr int kEffectPartFlag = 1;
// Gap between cells when the record gives none.
constexpr int kDefaultSpace = 1;

// Cell numbers: white with a black shadow at size 18, right-aligned at 6 pixels a digit,
// their top 11 pixels above the cell's bottom (both less the gap).
constexpr DWORD kCountColor = 0xFFFFFFFF;
constexpr DWORD kCountShadow = 0xFF000000;
constexpr int kCountSize = 18;
constexpr int kCountDigitWidth = 6;
constexpr int kCountRise = 11;

bool IsIndex(int nIndex)
{
    return nIndex >= 0 && nIndex < GRID_MAX_CELLS;
}

// Truncated toward zero and kept inside the int range; 0 for NaN.
int ToPixel(double fValue)
{
    if (std::isnan(fValue))
        return 0;
    return static_cast<int>(
        std::clamp(fValue, static_cast<double>(INT_MIN), static_cast<double>(INT_MAX)));
}

} // namespace

QzCellEffectSlot& QzCellEffectSlot::operator=(const QzCellEffectSlot& other)
{
    if (this != &other)
    {
        pEffect.reset();
        bStopped = false;
    }
    return *this;
}

CQzGrid::CQzGrid()
{
    std::fill(std::begin(m_bCellEnabled), std::end(m_bCellEnabled), true);
    std::fill(std::begin(m_bCellVisible), std::end(m_bCellVisible), true);
}

CQzGrid::~CQzGrid() = default;

// ---------------------------------------------------------------------------------------------
// Set-up and geometry

void CQzGrid::PreSetParam(BYTE byCols, BYTE byRows)
{
    m_nCols = byCols;
    m_nRows = byRows;
    m_bPreSetParam = true;
}

// A missing PreSetParam is reported and creation goes on: without columns or rows the cells
// have no size and nothing is drawn.
BOOL CQzGrid::OnCreate()
{
    if (!m_bPreSetParam)
        LogMsg("ASSERT(m_bPreSetParam) in %d line of %s", __LINE__, kSource);
    m_nGridWidth = GetWidth();
    m_nGridHeight = GetHeight();
    int nSpaceX = kDefaultSpace;
    int nSpaceY = kDefaultSpace;
    if (m_pWndInfo)
    {
        ReadExtraInt(m_pWndInfo, "GridSpaceX", &nSpaceX);
        ReadExtraInt(m_pWndInfo, "GridSpaceY", &nSpaceY);
    }
    SetGridSpace(nSpaceX, nSpaceY);
    return CQzCtrl::OnCreate();
}

void CQzGrid::SetGridSpace(int nSpaceX, int nSpaceY)
{
    m_nSpaceX = nSpaceX;
    m_nSpaceY = nSpaceY;
    const auto size = [](int nLength, int nCount, int nSpace)
    {
        if (nCount == 0)
            return 0.0f;
        const double fGaps = static_cast<double>(nCount - 1) * nSpace;
        return static_cast<float>((nLength - fGaps) / nCount);
    };
    m_fCellWidth = size(m_nGridWidth, m_nCols, nSpaceX);
    m_fCellHeight = size(m_nGridHeight, m_nRows, nSpaceY);
}

int CQzGrid::GetCellIndex(int nCol, int nRow) const
{
    return QzPlatform::ClampToInt(static_cast<int64_t>(nRow) * m_nCols + nCol);
}

int CQzGrid::ValidIndex(int nCol, int nRow) const
{
    const int nIndex = GetCellIndex(nCol, nRow);
    return IsIndex(nIndex) ? nIndex : -1;
}

int CQzGrid::DrawnCells() const
{
    return std::min(GetCellCount(), GRID_MAX_CELLS);
}

// Each row (column) reaches to the end of the gap after it.
bool CQzGrid::HitTest(POINT pt, int* pCol, int* pRow) const
{
    if (pt.x < 0 || pt.y < 0)
        return false;
    const double fStepX = static_cast<double>(m_fCellWidth) + m_nSpaceX;
    const double fStepY = static_cast<double>(m_fCellHeight) + m_nSpaceY;
    for (int r = 0; r < m_nRows; ++r)
    {
        if (pt.y > (r + 1) * fStepY)
            continue;
        for (int c = 0; c < m_nCols; ++c)
        {
            if (pt.x > (c + 1) * fStepX)
                continue;
            if (pCol)
                *pCol = c;
            if (pRow)
                *pRow = r;
            return true;
        }
        return false;
    }
    return false;
}

bool CQzGrid::GetCellFromIndex(int nIndex, int* pCol, int* pRow) const
{
    if (!IsIndex(nIndex) || m_nCols == 0)
        return false;
    if (pCol)
        *pCol = nIndex % m_nCols;
    if (pRow)
        *pRow = nIndex / m_nCols;
    return true;
}

double CQzGrid::CellLeft(int nCol) const
{
    return m_rcWindow.left + nCol * (static_cast<double>(m_fCellWidth) + m_nSpaceX);
}

double CQzGrid::CellTop(int nRow) const
{
    return m_rcWindow.top + nRow * (static_cast<double>(m_fCellHeight) + m_nSpaceY);
}

int CQzGrid::CellPixelWidth() const
{
    return ToPixel(m_fCellWidth);
}

int CQzGrid::CellPixelHeight() const
{
    return ToPixel(m_fCellHeight);
}

void CQzGrid::GetCellPos(int nCol, int nRow, POINT* pPos) const
{
    if (pPos)
        *pPos = {ToPixel(CellLeft(nCol)), ToPixel(CellTop(nRow))};
}

// ---------------------------------------------------------------------------------------------
// Cells

void CQzGrid::SetCellUsed(int nCol, int nRow, bool bUsed)
{
    const int nIndex = ValidIndex(nCol, nRow);
    if (nIndex < 0)
        return;
    m_bCellUsed[nIndex] = bUsed;
    ++m_nItemCount;
}

void CQzGrid::SetCellUsed(int nIndex, bool bUsed)
{
    if (IsIndex(nIndex))
        m_bCellUsed[nIndex] = bUsed;
}

bool CQzGrid::IsCellUsed(POINT pt) const
{
    int nCol = 0;
    int nRow = 0;
    return HitTest(pt, &nCol, &nRow) && IsCellUsed(nCol, nRow);
}

bool CQzGrid::IsCellUsed(int nIndex) const
{
    return IsIndex(nIndex) && m_bCellUsed[nIndex];
}

int CQzGrid::GetUsedCellCount() const
{
    return static_cast<int>(std::count(std::begin(m_bCellUsed), std::end(m_bCellUsed), true));
}

// SetCellUsed counts one item and the removal takes one off: the count stays as it was.
void CQzGrid::RemoveItem(int nCol, int nRow)
{
    const int nIndex = ValidIndex(nCol, nRow);
    if (nIndex < 0)
        return;
    PlayCellFrontEffect(nIndex, nullptr);
    PlayCellBackEffect(nIndex, nullptr);
    SetCellUsed(nCol, nRow, false);
    m_nCellCount[nIndex] = 0;
    m_bCellMarked[nIndex] = false;
    --m_nItemCount;
}

void CQzGrid::ClearAll()
{
    m_nItemCount = 0;
    std::fill(std::begin(m_bCellUsed), std::end(m_bCellUsed), false);
    std::fill(std::begin(m_nCellCount), std::end(m_nCellCount), 0);
    std::fill(std::begin(m_bCellMarked), std::end(m_bCellMarked), false);
    std::fill(std::begin(m_bCellVisible), std::end(m_bCellVisible), true);
    StopAllEffects();
}

void CQzGrid::SetCellMark(int nCol, int nRow, bool bMark)
{
    const int nIndex = ValidIndex(nCol, nRow);
    if (nIndex >= 0)
        m_bCellMarked[nIndex] = bMark;
}

void CQzGrid::ClearCellMarks()
{
    std::fill(std::begin(m_bCellMarked), std::begin(m_bCellMarked) + DrawnCells(), false);
}

void CQzGrid::SetCellEnable(int nIndex, bool bEnable)
{
    if (IsIndex(nIndex))
        m_bCellEnabled[nIndex] = bEnable;
}

bool CQzGrid::IsCellEnabled(int nIndex) const
{
    return IsIndex(nIndex) && m_bCellEnabled[nIndex];
}

void CQzGrid::SetCellVisible(int nIndex, bool bVisible, bool bAlsoEnable)
{
    if (!IsIndex(nIndex))
        return;
    m_bCellVisible[nIndex] = bVisible;
    if (bAlsoEnable)
        m_bCellEnabled[nIndex] = bVisible;
}

bool CQzGrid::IsCellVisible(int nIndex) const
{
    return IsIndex(nIndex) && m_bCellVisible[nIndex];
}

void CQzGrid::SetCellCount(int nIndex, DWORD nCount)
{
    if (IsIndex(nIndex))
        m_nCellCount[nIndex] = nCount;
}

void CQzGrid::SetMaskAni(const char* pszName)
{
    if (!pszName)
        return;
    m_strMaskAni = pszName;
    m_maskAni.Release();
    m_bMaskCurrent = false;
}

// ---------------------------------------------------------------------------------------------
// Effects

void CQzGrid::FitAndLoad(CGui3DEffect& effect, bool& bStopped, const char* pszName, bool bPlay,
                         int nWidth, int nHeight)
{
    effect.SetRect({0, 0, nWidth, nHeight});
    if (!effect.HasPart(pszName, kEffectPartFlag, 0))
        effect.AddEffect(pszName, kEffectPartFlag, true);
    if (bPlay)
        PlayOrStop(&effect, bStopped, pszName);
}

QzCellEffectSlot* CQzGrid::Slot(CellEffectLayer& layer, int nIndex)
{
    return IsIndex(nIndex) ? &layer[nIndex] : nullptr;
}

const QzCellEffectSlot* CQzGrid::Slot(const CellEffectLayer& layer, int nIndex)
{
    return IsIndex(nIndex) ? &layer[nIndex] : nullptr;
}

void CQzGrid::LoadCellEffect(QzCellEffectSlot* pSlot, const char* pszName, bool bPlay)
{
    if (!pSlot || !pszName || !*pszName)
        return;
    if (!pSlot->pEffect)
        pSlot->pEffect = std::make_unique<CGui3DEffect>();
    FitAndLoad(*pSlot->pEffect, pSlot->bStopped, pszName, bPlay, CellPixelWidth(),
               CellPixelHeight());
}

void CQzGrid::PlayCellEffect(QzCellEffectSlot* pSlot, const char* pszName)
{
    if (pSlot)
        PlayOrStop(pSlot->pEffect.get(), pSlot->bStopped, pszName);
}

bool CQzGrid::HasCellEffect(const QzCellEffectSlot* pSlot, const char* pszName)
{
    return pSlot && HasEffect(pSlot->pEffect.get(), pszName);
}

void CQzGrid::PlayOrStop(CGui3DEffect* pEffect, bool& bStopped, const char* pszName)
{
    if (!pEffect)
        return;
    bStopped = pszName == nullptr;
    if (pszName)
        PlayEffect(pEffect, pszName);
}

bool CQzGrid::HasEffect(const CGui3DEffect* pEffect, const char* pszName)
{
    if (!pEffect || !pszName || !*pszName)
        return false;
    // HasPart only reads; the holder's interface is not const.
    return const_cast<CGui3DEffect*>(pEffect)->HasPart(pszName, kEffectPartFlag, 0) != 0;
}

void CQzGrid::LoadCellFrontEffect(int nIndex, const char* pszName, bool bPlay)
{
    LoadCellEffect(Slot(m_CellFrontEffect, nIndex), pszName, bPlay);
}

void CQzGrid::LoadCellBackEffect(int nIndex, const char* pszName, bool bPlay)
{
    LoadCellEffect(Slot(m_CellBackEffect, nIndex), pszName, bPlay);
}

bool CQzGrid::HasCellFrontEffect(int nIndex, const char* pszName) const
{
    return HasCellEffect(Slot(m_CellFrontEffect, nIndex), pszName);
}

bool CQzGrid::HasCellBackEffect(int nIndex, const char* pszName) const
{
    return HasCellEffect(Slot(m_CellBackEffect, nIndex), pszName);
}

void CQzGrid::PlayCellFrontEffect(int nIndex, const char* pszName)
{
    PlayCellEffect(Slot(m_CellFrontEffect, nIndex), pszName);
}

void CQzGrid::PlayCellBackEffect(int nIndex, const char* pszName)
{
    PlayCellEffect(Slot(m_CellBackEffect, nIndex), pszName);
}

void CQzGrid::LoadGridFrontEffect(const char* pszName, bool bPlay)
{
    LoadGridEffect(m_pFrontEffect, m_bFrontStopped, pszName, bPlay);
}

void CQzGrid::LoadGridBackEffect(const char* pszName, bool bPlay)
{
    LoadGridEffect(m_pBackEffect, m_bBackStopped, pszName, bPlay);
}

void CQzGrid::LoadGridEffect(CGui3DEffect*& pEffect, bool& bStopped, const char* pszName,
                             bool bPlay)
{
    if (!pszName || !*pszName)
        return;
    if (!pEffect)
        pEffect = new CGui3DEffect;
    FitAndLoad(*pEffect, bStopped, pszName, bPlay, m_nGridWidth, m_nGridHeight);
}

void CQzGrid::StopAllEffects()
{
    for (int i = 0; i < GRID_MAX_CELLS; ++i)
    {
        PlayCellFrontEffect(i, nullptr);
        PlayCellBackEffect(i, nullptr);
    }
    PlayFrontEffect(nullptr);
    PlayBackEffect(nullptr);
}

void CQzGrid::PlayBackEffect(const char* pszName)
{
    PlayOrStop(m_pBackEffect, m_bBackStopped, pszName);
}

void CQzGrid::PlayFrontEffect(const char* pszName)
{
    PlayOrStop(m_pFrontEffect, m_bFrontStopped, pszName);
}

BOOL CQzGrid::HasFrontEffect(const char* pszName)
{
    return HasEffect(m_pFrontEffect, pszName) ? TRUE : FALSE;
}

BOOL CQzGrid::HasBackEffect(const char* pszName)
{
    return HasEffect(m_pBackEffect, pszName) ? TRUE : FALSE;
}

void CQzGrid::DrawFrontEffect()
{
    if (!m_bFrontStopped)
        DrawEffect(m_pFrontEffect, m_rcWindow.left, m_rcWindow.top);
}

void CQzGrid::DrawBackEffect()
{
    if (!m_bBackStopped)
        DrawEffect(m_pBackEffect, m_rcWindow.left, m_rcWindow.top);
}

void CQzGrid::DrawCellEffect(const QzCellEffectSlot& slot, POINT pt)
{
    if (!slot.bStopped)
        DrawEffect(slot.pEffect.get(), pt.x, pt.y);
}

// ---------------------------------------------------------------------------------------------
// Mouse
//
//   message      | m_bPressed | action
//   -------------+------------+-----------------------------------------------------------
//   button down  | false      | capture, WM_NOTIFY 1 to the dialog, pressed
//   button down  | true       | nothing
//   button up    | true       | release the capture, WM_NOTIFY 2 if the mouse is still over
//                |            | the grid, not pressed
//   button up    | false      | nothing
//
// The capture brings the release to the grid wherever it happens, so a press always ends.

void CQzGrid::OnLButtonDown(UINT, POINT)
{
    if (m_bPressed)
        return;
    SetCapture();
    Notify(QZ_GRID_LBUTTONDOWN);
    m_bPressed = true;
}

void CQzGrid::OnLButtonUp(UINT, POINT point)
{
    if (!m_bPressed)
        return;
    ReleaseCapture();
    if (m_bMouseIn && PtInWindow(point.x, point.y))
        Notify(QZ_GRID_LBUTTONUP);
    m_bPressed = false;
}

void CQzGrid::Notify(WORD nCode)
{
    if (m_pParent)
        m_pParent->SendMessage(WM_NOTIFY, MakeNotifyWParam(nCode, m_nId), GetFullId());
}

// ---------------------------------------------------------------------------------------------
// Drawing

BOOL CQzGrid::Show()
{
    if (!IsWindowVisible())
        return 0;
    CheckMouseLeave();
    ProcessTimers();
    UpdateEffects();
    DrawBackEffect();
    m_bMaskCurrent = false;
    const int nCells = DrawnCells();
    for (int i = 0; i < nCells; ++i)
        DrawCell(i % m_nCols, i / m_nCols);
    DrawFrontEffect();
    return 1;
}

BOOL CQzGrid::DrawCell(int nCol, int nRow)
{
    const int nIndex = ValidIndex(nCol, nRow);
    if (nIndex < 0 || !m_bCellVisible[nIndex])
        return FALSE;
    const bool bUsed = m_bCellUsed[nIndex];
    DrawCellBack(nCol, nRow, bUsed);
    if (bUsed)
    {
        const QzCellEffectSlot& back = m_CellBackEffect[nIndex];
        const QzCellEffectSlot& front = m_CellFrontEffect[nIndex];
        if (back.pEffect)
            back.pEffect->Update();
        if (front.pEffect)
            front.pEffect->Update();
        POINT pt = {0, 0};
        GetCellPos(nCol, nRow, &pt);
        DrawCellEffect(back, pt);
        DrawCellItem(nCol, nRow);
        DrawCellEffect(front, pt);
        DrawCellCount(nCol, nRow);
        if (m_bCellMarked[nIndex])
            DrawCellMark(nCol, nRow);
    }
    DrawCellMask(nCol, nRow);
    return TRUE;
}

void CQzGrid::DrawCellCount(int nCol, int nRow)
{
    const int nIndex = ValidIndex(nCol, nRow);
    CQzGuiMgr* pMgr = GetMgr();
    if (nIndex < 0 || m_nCellCount[nIndex] == 0 || !pMgr)
        return;
    char szCount[16];
    const int nDigits = static_cast<int>(
        std::to_chars(szCount, szCount + sizeof(szCount) - 1, m_nCellCount[nIndex]).ptr - szCount);
    szCount[nDigits] = '\0';
    const double x = CellLeft(nCol) + m_fCellWidth - m_nSpaceX - kCountDigitWidth * nDigits;
    const double y = CellTop(nRow) + m_fCellHeight - m_nSpaceY - kCountRise;
    QzPlatform::DrawGameText(ToPixel(x), ToPixel(y), kCountColor, szCount, pMgr->GetFontFace(),
                             kCountSize, TRUE, 0, kCountShadow, nullptr);
}

void CQzGrid::DrawCellMask(int nCol, int nRow)
{
    const int nIndex = ValidIndex(nCol, nRow);
    if (nIndex < 0 || m_bCellEnabled[nIndex])
        return;
    POINT pt = {0, 0};
    GetCellPos(nCol, nRow, &pt);
    const int nWidth = CellPixelWidth();
    const int nHeight = CellPixelHeight();
    if (m_strMaskAni.empty())
    {
        CMyBitmap::ShowBlock(
            pt.x, pt.y, QzPlatform::ClampToInt(static_cast<int64_t>(pt.x) + nWidth),
            QzPlatform::ClampToInt(static_cast<int64_t>(pt.y) + nHeight), m_dwMaskColor);
        return;
    }
    if (IDataAni* pAni = MaskSection())
        pAni->ShowAniEx(0, pt.x, pt.y, nullptr, nWidth, nHeight);
}

IDataAni* CQzGrid::MaskSection()
{
    if (!m_bMaskCurrent)
    {
        QzPlatform::GetAniStore()->LoadAni(m_maskAni, QzPlatform::kControlAniFile,
                                           m_strMaskAni.c_str());
        m_bMaskCurrent = true;
    }
    return m_maskAni.GetAni();
}

} // namespace QzGui
