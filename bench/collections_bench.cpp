// What a frame of a list, a tree and a grid costs, and whether it grows with the number of
// items: each benchmark draws a big control and a 100-item one of the same kind alternately, one
// frame each per iteration, with the mouse over the rows (hover bar, tips, hit tests), and
// reports both times and their ratio ("ratio" 1.0 = a frame costs the same whatever the
// number of items). The list and the tree are scrolled to the middle, every tree item expanded.
// AddRows measures appending 100,000 rows to an empty list as a chat history grows.
#include "BenchSupport.h"

#include "controls/QzGrid.h"
#include "controls/QzList.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzTree.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "layout/QzGuiWndInfo.h"
#include "platform/render/IRenderDevice.h"
#include "platform/render/MyBitmap.h"
#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace
{

using namespace QzBench;
using namespace QzGui;

constexpr DWORD kDialogId = 1;
constexpr DWORD kCtrlId = 10;
constexpr int kSmall = 100;
// The control: 300 x 600 at (100, 100), 33 rows of 18 pixels.
constexpr int kLeft = 100;
constexpr int kTop = 100;
constexpr int kWidth = 300;
constexpr int kHeight = 600;

// The sections the controls draw.
const char* const kAniText = "[Back]\nFrameAmount=1\nFrame0=ui/back.png\n"
                             "[Hover]\nFrameAmount=1\nFrame0=ui/hover.png\n"
                             "[News_TreeControl]\nFrameAmount=4\nFrame0=ui/m0.png\n"
                             "Frame1=ui/m1.png\nFrame2=ui/m2.png\nFrame3=ui/m3.png\n"
                             "[Item]\nFrameAmount=1\nFrame0=ui/item.png\n";

CQzGuiWndInfo* MakeRecord(DWORD parent, DWORD ctrl, RECT rc, int nType)
{
    auto* pRecord = new CQzGuiWndInfo;
    pRecord->SetParentId(static_cast<int>(parent));
    pRecord->SetCtrlId(static_cast<int>(ctrl));
    pRecord->SetX(static_cast<WORD>(rc.left));
    pRecord->SetY(static_cast<WORD>(rc.top));
    pRecord->SetWidth(static_cast<WORD>(rc.right - rc.left));
    pRecord->SetHeight(static_cast<WORD>(rc.bottom - rc.top));
    pRecord->SetCtrlType(static_cast<WORD>(nType));
    pRecord->SetAniSection("Back");
    pRecord->AddFlags(WNDINFO_FLAG_ANISECTION);
    pRecord->AddExtra("ItemHeight", "18");
    return pRecord;
}

// A bag whose items are one frame of a section.
class CBenchGrid : public CQzGrid
{
public:
    void DrawCellItem(int nCol, int nRow) override
    {
        POINT pos = {};
        GetCellPos(nCol, nRow, &pos);
        CMyBitmap::ShowBlock(pos.x, pos.y, pos.x + 4, pos.y + 4, 0xFF808080);
    }
};

// One manager with one dialog holding the control under test, its scroll buttons and slider.
class BenchScreen
{
public:
    BenchScreen(CQzCtrl* pCtrl, int nType, CQzScrollButton* pUp, CQzScrollButton* pDown,
                CQzSlider* pSlider)
    {
        m_hWnd = CreateHostWindow();
        m_pMgr = static_cast<CQzGuiMgr*>(CreateGuiMgr());
        m_pMgr->SetScreenSize(kScreenWidth, kScreenHeight);
        m_pMgr->Init(GetModuleHandleA(nullptr), m_hWnd, 100, "Bench.ini");
        CQzGuiInfoMgr* pInfoMgr = m_pMgr->GetInfoMgr();
        pInfoMgr->InsertRecord(MakeRecord(0, kDialogId, {0, 0, kScreenWidth, kScreenHeight}, 1));
        pInfoMgr->InsertRecord(
            MakeRecord(kDialogId, kCtrlId, {kLeft, kTop, kLeft + kWidth, kTop + kHeight}, nType));
        const RECT rcBar = {kLeft + kWidth, kTop, kLeft + kWidth + 16, kTop + kHeight};
        pInfoMgr->InsertRecord(MakeRecord(kDialogId, kCtrlId + 1, rcBar, QZ_WND_SCROLLBUTTON));
        pInfoMgr->InsertRecord(MakeRecord(kDialogId, kCtrlId + 2, rcBar, QZ_WND_SCROLLBUTTON));
        pInfoMgr->InsertRecord(MakeRecord(kDialogId, kCtrlId + 3, rcBar, QZ_WND_SLIDER));
        m_pDialog = std::make_unique<CQzDialog>(kDialogId, nullptr);
        m_pDialog->AddCtrl(kCtrlId, pCtrl);
        if (pUp)
        {
            m_pDialog->AddCtrl(kCtrlId + 1, pUp);
            m_pDialog->AddCtrl(kCtrlId + 2, pDown);
            m_pDialog->AddCtrl(kCtrlId + 3, pSlider);
        }
        m_pMgr->AddDialog(m_pDialog.get(), nullptr, true);
        m_pDialog->ShowWindow(SW_SHOW);
    }
    ~BenchScreen()
    {
        m_pMgr->RemoveDialog(m_pDialog.get());
        m_pDialog.reset();
        m_pMgr->Release();
        DestroyWindow(m_hWnd);
    }
    BenchScreen(const BenchScreen&) = delete;
    BenchScreen& operator=(const BenchScreen&) = delete;

    // One frame with the mouse over the control's rows, a little lower each frame.
    void Frame(int nFrame)
    {
        m_pMgr->Show();
        const int y = kTop + 5 + (nFrame * 7) % (kHeight - 10);
        benchmark::DoNotOptimize(m_pMgr->OnMessage(WM_MOUSEMOVE, 0, MAKELPARAM(kLeft + 50, y)));
    }

private:
    HWND m_hWnd = nullptr;
    CQzGuiMgr* m_pMgr = nullptr;
    std::unique_ptr<CQzDialog> m_pDialog;
};

// A list of n rows, every tenth with a tip, scrolled to the middle.
struct ListScene
{
    explicit ListScene(int nRows)
    {
        list.PreSetParam(1, &up, &down, 0, 1, &slider);
        list.SetHoverAni("Hover", FALSE);
        screen = std::make_unique<BenchScreen>(&list, QZ_WND_LIST, &up, &down, &slider);
        for (int i = 0; i < nRows; ++i)
        {
            list.AddString("[World] somebody: a line of chat history");
            if (i % 10 == 0)
                list.SetItemTip(i, "a tip\non two lines");
        }
        list.SetTopIndex(nRows / 2);
        list.SelectRow(3);
    }
    CQzList list;
    CQzScrollButton up;
    CQzScrollButton down;
    CQzSlider slider;
    std::unique_ptr<BenchScreen> screen;
};

// A tree of n items: groups of 10 children under top-level items, every one expanded.
struct TreeScene
{
    explicit TreeScene(int nItems)
    {
        tree.PreSetParam(2, &up, &down, 0, 1, &slider);
        screen = std::make_unique<BenchScreen>(&tree, QZ_WND_TREE, &up, &down, &slider);
        DWORD nGroup = 0;
        for (int i = 0; i < nItems; ++i)
        {
            if (i % 11 == 0)
                nGroup = tree.InsertRootItem("a quest chapter", TRUE);
            else
                tree.InsertCheckItem(nGroup, "a quest of the chapter", 0);
        }
        tree.SetTopIndex(nItems / 2);
    }
    CQzTree tree;
    CQzScrollButton up;
    CQzScrollButton down;
    CQzSlider slider;
    std::unique_ptr<BenchScreen> screen;
};

// A full bag: 16 x 8 cells, every one used, numbered and with a front effect name.
struct GridScene
{
    explicit GridScene(int nCells)
    {
        grid.PreSetParam(16, 8);
        grid.SetMaskColor(0x80000000);
        screen = std::make_unique<BenchScreen>(&grid, QZ_WND_GRID, nullptr, nullptr, nullptr);
        for (int i = 0; i < nCells && i < GRID_MAX_CELLS; ++i)
        {
            grid.SetCellUsed(i, true);
            grid.SetCellCount(i, static_cast<DWORD>(i + 1));
            grid.SetCellEnable(i, i % 16 != 0);
        }
    }
    CBenchGrid grid;
    std::unique_ptr<BenchScreen> screen;
};

// Frames of the big scene and of the small one, alternately; the clock moves 16 ms a frame.
template <typename Big, typename Small>
void BigAgainstSmall(benchmark::State& state, int nBig, int nSmall)
{
    QzPlatform::SetRenderDevice(nullptr);
    QzPlatform::Host::SetTime(100000);
    BenchDataRoot root(kAniText);
    Big big(nBig);
    Small small(nSmall);
    double bigNs = 0;
    double smallNs = 0;
    int frame = 0;
    for (auto _ : state)
    {
        double start = ThreadCpuNs();
        big.screen->Frame(frame);
        bigNs += ThreadCpuNs() - start;
        start = ThreadCpuNs();
        small.screen->Frame(frame);
        smallNs += ThreadCpuNs() - start;
        QzPlatform::Host::AdvanceTime(16);
        ++frame;
    }
    const double frames = static_cast<double>(state.iterations());
    state.counters["big_ns"] = bigNs / frames;
    state.counters["small_ns"] = smallNs / frames;
    state.counters["ratio"] = smallNs > 0 ? bigNs / smallNs : 0;
}

void ListFrame(benchmark::State& state)
{
    BigAgainstSmall<ListScene, ListScene>(state, static_cast<int>(state.range(0)), kSmall);
}
BENCHMARK(ListFrame)->Arg(100000)->Unit(benchmark::kMicrosecond);

void TreeFrame(benchmark::State& state)
{
    BigAgainstSmall<TreeScene, TreeScene>(state, static_cast<int>(state.range(0)), kSmall);
}
BENCHMARK(TreeFrame)->Arg(100000)->Unit(benchmark::kMicrosecond);

// A full bag of 128 cells (big) against a 100-row list (small), the smallest list a bag is
// measured by.
void FullBagFrame(benchmark::State& state)
{
    BigAgainstSmall<GridScene, ListScene>(state, GRID_MAX_CELLS, kSmall);
}
BENCHMARK(FullBagFrame)->Unit(benchmark::kMicrosecond);

// Appending 100,000 rows to an empty list, each with its self-message and recount.
void AddRows(benchmark::State& state)
{
    QzPlatform::SetRenderDevice(nullptr);
    BenchDataRoot root(kAniText);
    double addNs = 0;
    for (auto _ : state)
    {
        ListScene scene(0);
        const double start = ThreadCpuNs();
        for (int i = 0; i < 100000; ++i)
            scene.list.AddString("[World] somebody: a line of chat history");
        addNs += ThreadCpuNs() - start;
    }
    state.counters["ms_for_100000"] = addNs / static_cast<double>(state.iterations()) / 1e6;
}
BENCHMARK(AddRows)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
