#include "DemoBag.h"

#include "platform/services/AniHandle.h"
#include "platform/services/QzAniStore.h"

namespace
{

const char* const kItemNames[] = {"Sword", "Potion", "Shield", "Gem", "Scroll"};
// Items are 32 x 32 in 40 x 40 slots.
const int kItemInset = 4;

} // namespace

void CDemoBag::PutItem(int nIndex, Item item, DWORD nCount)
{
    if (nIndex < 0 || nIndex >= QzGui::GRID_MAX_CELLS)
        return;
    m_nItem[nIndex] = item;
    SetCellUsed(nIndex, true);
    SetCellCount(nIndex, nCount > 1 ? nCount : 0);
}

const char* CDemoBag::GetItemName(int nIndex) const
{
    if (!IsCellUsed(nIndex))
        return "";
    return kItemNames[m_nItem[nIndex]];
}

void CDemoBag::DrawCellBack(int nCol, int nRow, bool)
{
    DrawFrame("BagSlot", 0, nCol, nRow, 0);
}

void CDemoBag::DrawCellItem(int nCol, int nRow)
{
    DrawFrame("BagItems", m_nItem[GetCellIndex(nCol, nRow)], nCol, nRow, kItemInset);
}

void CDemoBag::DrawCellMark(int nCol, int nRow)
{
    DrawFrame("BagMark", 0, nCol, nRow, 0);
}

void CDemoBag::DrawFrame(const char* pszSection, int nFrame, int nCol, int nRow, int nInset)
{
    QzPlatform::CAniHandle handle;
    if (!QzPlatform::GetAniStore()->LoadAni(handle, QzPlatform::kControlAniFile, pszSection))
        return;
    POINT pos = {};
    GetCellPos(nCol, nRow, &pos);
    handle.Draw(nFrame, pos.x + nInset, pos.y + nInset);
}
