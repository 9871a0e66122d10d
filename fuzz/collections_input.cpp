// Hostile input against one list, one tree and one grid, each list and tree with its scroll
// buttons and slider: mouse messages at any point (presses, double clicks, right presses, drags,
// wheel turns of any delta), frames and clock steps (button repeats, blinking rows, tips), and
// the host's calls with any values: rows and items added, inserted and deleted at any index
// (the selected one and its parent included), top indexes, marks, columns, item heights, cell
// indexes, flags and numbers out of range, and texts of arbitrary bytes (broken two-byte
// characters included). An input is a list of 6-byte steps: kind, a byte, and a signed 32-bit
// value.
#include "FuzzSupport.h"

#include "controls/QzGrid.h"
#include "controls/QzList.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzTree.h"
#include "platform/render/MyBitmap.h"

#include <string>

namespace
{

using namespace QzGui;

const char* const kLayout = "[0-1]\nx=0\ny=0\nw=800\nh=600\n"
                            "[1-1]\nx=10\ny=10\nw=217\nh=200\nAniSection=Four\nItemHeight=18\n"
                            "[1-2]\nx=210\ny=10\nw=16\nh=16\nAniSection=Four\n"
                            "[1-3]\nx=210\ny=190\nw=16\nh=16\nAniSection=Four\n"
                            "[1-4]\nx=210\ny=30\nw=16\nh=150\nAniSection=Four\n"
                            "[1-5]\nx=250\ny=10\nw=200\nh=200\nItemHeight=18\nSelBackAni=Four\n"
                            "[1-6]\nx=450\ny=10\nw=16\nh=16\nAniSection=Four\n"
                            "[1-7]\nx=450\ny=190\nw=16\nh=16\nAniSection=Four\n"
                            "[1-8]\nx=450\ny=30\nw=16\nh=150\nAniSection=Four\n"
                            "[1-9]\nx=500\ny=10\nw=200\nh=160\nGridSpaceX=1\nGridSpaceY=1\n";
const char* const kAni = "[Four]\nFrameAmount=4\nFrame0=f_12x20.png\nFrame1=f_12x20.png\n"
                         "Frame2=f_12x20.png\nFrame3=f_12x20.png\n"
                         "[News_TreeControl]\nFrameAmount=4\nFrame0=m_12x12.png\n"
                         "Frame1=m_12x12.png\nFrame2=m_12x12.png\nFrame3=m_12x12.png\n"
                         "[Pack_OrdinaryItemTipsBG]\nFrameAmount=9\nFrame0=t_20x20.png\n"
                         "Frame1=t_20x20.png\nFrame2=t_20x20.png\nFrame3=t_20x20.png\n"
                         "Frame4=t_20x20.png\nFrame5=t_20x20.png\nFrame6=t_20x20.png\n"
                         "Frame7=t_20x20.png\nFrame8=t_20x20.png\n";

class CFuzzGrid : public CQzGrid
{
public:
    void DrawCellItem(int nCol, int nRow) override
    {
        POINT pos = {};
        GetCellPos(nCol, nRow, &pos);
        CMyBitmap::ShowBlock(pos.x, pos.y, pos.x + 2, pos.y + 2, 0xFFFFFFFF);
    }
};

// The controls of dialog 1, made again for every input.
struct Controls
{
    CQzList list;
    CQzScrollButton listUp;
    CQzScrollButton listDown;
    CQzSlider listSlider;
    CQzTree tree;
    CQzScrollButton treeUp;
    CQzScrollButton treeDown;
    CQzSlider treeSlider;
    CFuzzGrid grid;
};

void Populate(CQzGuiMgr* pMgr, CQzDialog& dialog, Controls& c, uint8_t style)
{
    c.list.PreSetParam(1 << (style % 3), &c.listUp, &c.listDown, 0, 1, &c.listSlider);
    c.list.SetOwner(&dialog);
    c.list.SetHoverAni("Four", style & 8);
    c.tree.PreSetParam(style & 16 ? 2 : 5, &c.treeUp, &c.treeDown, 0, 1, &c.treeSlider);
    c.grid.PreSetParam(static_cast<BYTE>(1 + style % 16), static_cast<BYTE>(1 + (style >> 4)));
    dialog.AddCtrls(1, &c.list, 2, &c.listUp, 3, &c.listDown, 4, &c.listSlider, 5, &c.tree, 6,
                    &c.treeUp, 7, &c.treeDown, 8, &c.treeSlider, 9, &c.grid);
    pMgr->AddDialog(&dialog, nullptr, true);
    dialog.ShowWindow(SW_SHOW);
}

void Mouse(CQzGuiMgr* pMgr, uint8_t kind, int32_t value)
{
    static const UINT kMouse[] = {WM_MOUSEMOVE,     WM_LBUTTONDOWN, WM_LBUTTONUP,
                                  WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MOUSEWHEEL};
    const UINT message = kMouse[kind % 6];
    const auto x = static_cast<WORD>(value & 0xFFFF);
    const auto y = static_cast<WORD>((value >> 16) & 0xFFFF);
    const WPARAM wParam = message == WM_MOUSEWHEEL ? MAKEWPARAM(0, static_cast<int8_t>(kind) * 40)
                                                   : (kind & 8 ? 1 : 0);
    pMgr->OnMessage(message, wParam, MAKELPARAM(x, y));
}

void ListCall(CQzList& list, uint8_t which, int32_t value, const char* pszText)
{
    switch (which % 12)
    {
    case 0:
        list.AddString(pszText);
        break;
    case 1:
        list.InsertString(value, pszText);
        break;
    case 2:
        list.DeleteString(value);
        break;
    case 3:
        list.SetTopIndex(value);
        break;
    case 4:
        list.SelectRow(value);
        break;
    case 5:
        list.SetItemTip(value & 0xFFFF, pszText);
        break;
    case 6:
        list.SetMarkIndex(value);
        break;
    case 7:
        list.SetColumns(value);
        break;
    case 8:
        list.SetItemBlink(value, TRUE);
        list.SetItemTime(value, static_cast<DWORD>(value));
        break;
    case 9:
        list.SetItemHeight(value & 0x3F);
        break;
    case 10:
        // Up to 255 rows at once (a few such steps make lists of thousands).
        for (int i = 0; i < (value & 0xFF); ++i)
            list.AddString(pszText);
        break;
    default:
        list.ResetContent();
        break;
    }
}

void TreeCall(CQzTree& tree, uint8_t which, int32_t value, const char* pszText)
{
    const auto id = static_cast<DWORD>(value & 0x3FF);
    switch (which % 10)
    {
    case 0:
        tree.InsertRootItem(pszText, value & 1);
        break;
    case 1:
        tree.InsertItem(id, pszText);
        break;
    case 2:
        tree.InsertCheckItem(id, pszText, static_cast<BYTE>(value));
        break;
    case 3:
        tree.DeleteItem(id);
        break;
    case 4:
        tree.Expand(id, static_cast<UINT>(value >> 10) % 4);
        break;
    case 5:
        tree.SelectItem(id);
        break;
    case 6:
        tree.SetTopIndex(value);
        break;
    case 7:
        tree.SetItemTip(id, pszText);
        break;
    case 8:
        tree.ToggleCheck(id);
        break;
    default:
        tree.DeleteAllItems();
        break;
    }
}

void GridCall(CQzGrid& grid, uint8_t which, int32_t value)
{
    const int index = value % 200;
    switch (which % 8)
    {
    case 0:
        grid.SetCellUsed(index, value & 1);
        break;
    case 1:
        grid.SetCellCount(index, static_cast<DWORD>(value));
        break;
    case 2:
        grid.SetCellEnable(index, value & 1);
        break;
    case 3:
        grid.SetCellVisible(index, value & 1, value & 2);
        break;
    case 4:
        grid.SetCellMark(value & 0xFF, (value >> 8) & 0xFF, value & 1);
        break;
    case 5:
        grid.RemoveItem(value & 0xFF, (value >> 8) & 0xFF);
        break;
    case 6:
        grid.SetGridSpace(value >> 16, static_cast<int16_t>(value));
        break;
    default:
        grid.LoadCellFrontEffect(index, "Four", value & 1);
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("ini/Fuzz.ini", kLayout);
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    QzFuzz::SetupHost();
    QzFuzz::CFuzzScreen::Shared();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    QzFuzz::CFuzzScreen& screen = QzFuzz::CFuzzScreen::Shared();
    screen.BeginInput();
    CQzGuiMgr* pMgr = screen.Mgr();
    CQzDialog dialog(1, nullptr);
    Controls controls;
    Populate(pMgr, dialog, controls, data[0]);
    // Texts come four bytes a step; a zero byte ends a text, which the next call then uses.
    std::string text = "row";
    std::string pending;
    for (size_t offset = 1; offset + QzFuzz::kStepSize <= size; offset += QzFuzz::kStepSize)
    {
        const uint8_t* step = data + offset;
        const int32_t value = QzFuzz::StepValue(step);
        switch (step[0] % 8)
        {
        case 0:
        case 1:
            Mouse(pMgr, step[1], value);
            break;
        case 2:
            screen.Frames(1 + step[1] % 2, static_cast<DWORD>(value) & 0x3FF);
            break;
        case 3:
            ListCall(controls.list, step[1], value, step[1] & 0x80 ? nullptr : text.c_str());
            break;
        case 4:
            TreeCall(controls.tree, step[1], value, step[1] & 0x80 ? nullptr : text.c_str());
            break;
        case 5:
            GridCall(controls.grid, step[1], value);
            break;
        case 6:
            QzPlatform::Host::AdvanceTime(static_cast<DWORD>(value));
            break;
        default:
            QzFuzz::AddTextStep(pending, step, SIZE_MAX, text);
            break;
        }
    }
    pMgr->RemoveDialog(&dialog);
    screen.EndInput();
    return 0;
}
