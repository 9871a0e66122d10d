// The sample client's bag: a grid whose cells hold items drawn from the "BagItems" section (one
// frame an item kind) on "BagSlot" slots, with "BagMark" over a marked cell.
#pragma once

#include "controls/QzGrid.h"

class CDemoBag : public QzGui::CQzGrid
{
public:
    // Items, by the frame of "BagItems" that draws them.
    enum Item
    {
        kSword,
        kPotion,
        kShield,
        kGem,
        kScroll,
        kItemKinds,
    };

    // Puts the item in the cell, with its number when above 1.
    void PutItem(int nIndex, Item item, DWORD nCount);
    // The item's name, or "" for an empty cell.
    const char* GetItemName(int nIndex) const;

    void DrawCellBack(int nCol, int nRow, bool bUsed) override;
    void DrawCellItem(int nCol, int nRow) override;
    void DrawCellMark(int nCol, int nRow) override;

private:
    void DrawFrame(const char* pszSection, int nFrame, int nCol, int nRow, int nInset);

    int m_nItem[QzGui::GRID_MAX_CELLS] = {};
};
