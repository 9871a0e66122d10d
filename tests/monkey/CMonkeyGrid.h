// The grid leaves drawing its cells to the host: this one draws a used cell as a small block.
#pragma once

#include "controls/QzGrid.h"

namespace QzMonkey
{

class CMonkeyGrid : public QzGui::CQzGrid
{
public:
    void DrawCellItem(int nCol, int nRow) override;
};

} // namespace QzMonkey
