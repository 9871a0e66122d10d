#include "CMonkeyGrid.h"

#include "platform/render/MyBitmap.h"

namespace QzMonkey
{

void CMonkeyGrid::DrawCellItem(int nCol, int nRow)
{
    POINT pos = {};
    GetCellPos(nCol, nRow, &pos);
    CMyBitmap::ShowBlock(pos.x, pos.y, pos.x + 4, pos.y + 4, 0xFFFFFFFF);
}

} // namespace QzMonkey
