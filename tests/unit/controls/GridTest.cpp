// The item grid: cell geometry and hit testing, presses as the dialog sees them,
// the flags of a cell, what a frame draws (items, numbers, masks, effects), and
// the cell effects the grid owns through copies.
#include "ControlScene.h"

#include "controls/QzGrid.h"
#include "platform/render/MyBitmap.h"
#include "platform/services/QzAniStore.h"

#include <climits>
#include <cstdio>
#include <regex>

namespace ControlTest
{

namespace
{

using Lines = std::vector<std::string>;

constexpr DWORD kGridId = 9;

// A host's grid: every item is a 4 x 4 green block at its cell's top-left, and
// every call of the back, item and mark hooks is recorded.
class ProbeGrid : public CQzGrid
{
public:
    void DrawCellBack(int nCol, int nRow, bool) override { Hook("back", nCol, nRow); }
    void DrawCellMark(int nCol, int nRow) override { Hook("mark", nCol, nRow); }
    void DrawCellItem(int nCol, int nRow) override
    {
        Hook("item", nCol, nRow);
        POINT pt = {0, 0};
        GetCellPos(nCol, nRow, &pt);
        CMyBitmap::ShowBlock(pt.x, pt.y, pt.x + 4, pt.y + 4, 0xFF00FF00);
    }
    void Hook(const char* pszWhat, int nCol, int nRow)
    {
        hooks.push_back(pszWhat + (" " + std::to_string(nCol)) + "," + std::to_string(nRow));
    }

    Lines hooks;
};

class GridScene : public ControlScene
{
protected:
    // Grid 9 of the dialog: 5 x 4 cells over (110, 110)-(310, 270) with gaps of
    // 1, so cells of 39.2 x 39.25. Sections "Mask", "Spark" and "Glow" have one
    // frame each (8 x 8, 6 x 6, 4 x 4).
    GridScene()
    {
        m_root.Write("ani/Control.ani", "[Look]\nFrameAmount=1\nFrame0=img/f0.png\n"
                                        "[Mask]\nFrameAmount=1\nFrame0=img/mask.png\n"
                                        "[Spark]\nFrameAmount=1\nFrame0=img/spark.png\n"
                                        "[Glow]\nFrameAmount=1\nFrame0=img/glow.png\n");
        QzPlatform::GetAniStore()->Reload();
        m_harness.Device().DefineTexture("img/mask.png", 8, 8);
        m_harness.Device().DefineTexture("img/spark.png", 6, 6);
        m_harness.Device().DefineTexture("img/glow.png", 4, 4);
        m_pGrid = AddCtrl<ProbeGrid>(kGridId, {10, 10, 210, 170});
        m_pGrid->PreSetParam(5, 4);
        for (WORD nCode : {QZ_GRID_LBUTTONDOWN, QZ_GRID_LBUTTONUP})
            m_dialog.AddMsgHandler(WM_NOTIFY, MakeNotifyWParam(nCode, kGridId),
                                   [this, nCode](CQzDialog*) { m_vecCodes.push_back(nCode); });
        Open();
    }

    // A grid of the dialog outside its control list, created from a record.
    std::unique_ptr<ProbeGrid> MakeGrid(DWORD nId, RECT rc, BYTE byCols, BYTE byRows,
                                        Extras extras = {})
    {
        AddRecord(kDialogId, nId, rc, extras);
        auto pGrid = std::make_unique<ProbeGrid>();
        pGrid->SetParent(&m_dialog);
        pGrid->SetId(nId);
        pGrid->PreSetParam(byCols, byRows);
        pGrid->Create(m_pMgr);
        pGrid->ShowWindow(SW_SHOW);
        return pGrid;
    }

    // The calls of one frame in which the grid draws itself: pictures as
    // "path at x,y wxh", the rest traced.
    Lines Draw(CQzGrid& grid)
    {
        m_harness.Device().Clear();
        m_harness.Frame([&grid] { grid.Show(); });
        Lines lines;
        for (const QzTest::DrawCall& c : m_harness.Device().Calls())
        {
            char sz[96];
            std::snprintf(sz, sizeof(sz), "%s at %d,%d %dx%d", c.texturePath.c_str(), c.x1, c.y1,
                          c.width, c.height);
            lines.push_back(
                c.kind == QzTest::DrawKind::Texture ? sz : QzTest::RecordingDevice::TraceLine(c));
        }
        return lines;
    }
    size_t Sprites(CQzGrid& grid, const std::string& path)
    {
        const Lines lines = Draw(grid);
        return std::count_if(lines.begin(), lines.end(),
                             [&path](const std::string& line) { return line.find(path) == 0; });
    }
    std::string CountText(int x, int y, const char* pszText)
    {
        return "text " + std::to_string(x) + "," + std::to_string(y) + " \"" + pszText +
               "\" font " + m_pMgr->GetFontFace() + "/18 #FFFFFFFF shadow #FF000000";
    }

    ProbeGrid* m_pGrid = nullptr;
    std::vector<int> m_vecCodes;
};

TEST_F(GridScene, CellSizesComeFromTheRectangleAtCreationAndTheGaps)
{
    const struct
    {
        Extras extras;
        BYTE byCols;
        float fWidth, fHeight;
        POINT ptLastCell; // the top-left of cell (4, 3)
    } cases[] = {
        {{}, 5, 39.2f, 39.25f, {270, 230}},
        {{{"GridSpaceX", "4"}, {"GridSpaceY", "0"}}, 5, 36.8f, 40.0f, {273, 230}},
        {{{"GridSpaceX", "-2"}}, 5, 41.6f, 39.25f, {268, 230}},
        {{}, 0, 0.0f, 39.25f, {114, 230}}, // no columns: gaps only
    };
    DWORD nId = 20;
    for (const auto& c : cases)
    {
        auto pGrid = MakeGrid(++nId, {10, 10, 210, 170}, c.byCols, 4, c.extras);
        EXPECT_FLOAT_EQ(c.fWidth, pGrid->GetCellWidth()) << nId;
        EXPECT_FLOAT_EQ(c.fHeight, pGrid->GetCellHeight()) << nId;
        POINT pt = {0, 0};
        pGrid->GetCellPos(4, 3, &pt);
        EXPECT_EQ(c.ptLastCell, pt) << nId;
    }
    m_pGrid->MoveWindow(nullptr, 0, 0, 400, 400, TRUE);
    m_pGrid->SetGridSpace(0, 0);
    EXPECT_FLOAT_EQ(40.0f, m_pGrid->GetCellWidth());
    EXPECT_FLOAT_EQ(40.0f, m_pGrid->GetCellHeight());
}

TEST_F(GridScene, HitTestGivesTheGapToTheCellBeforeIt)
{
    const struct
    {
        POINT pt;
        bool bHit;
        int nCol, nRow;
    } cases[] = {
        {{40, 10}, true, 0, 0},   {{41, 10}, true, 1, 0}, {{197, 159}, true, 4, 3},
        {{201, 161}, true, 4, 3}, {{40, 41}, true, 0, 1}, {{202, 0}, false, 0, 0},
        {{0, 162}, false, 0, 0},  {{-1, 5}, false, 0, 0}, {{5, -1}, false, 0, 0},
    };
    for (const auto& c : cases)
    {
        int nCol = -1;
        int nRow = -1;
        EXPECT_EQ(c.bHit, m_pGrid->HitTest(c.pt, &nCol, &nRow)) << c.pt.x << "," << c.pt.y;
        if (c.bHit)
        {
            EXPECT_EQ(std::make_pair(c.nCol, c.nRow), std::make_pair(nCol, nRow)) << c.pt.x;
        }
    }
    m_pGrid->SetCellUsed(4, 3, true);
    EXPECT_TRUE(m_pGrid->IsCellUsed(POINT{200, 160}));
    EXPECT_FALSE(m_pGrid->IsCellUsed(POINT{202, 160}));

    int nCol = -1;
    int nRow = -1;
    auto pEven = MakeGrid(45, {10, 10, 110, 50}, 2, 1, {{"GridSpaceX", "0"}}); // steps 50, 41
    EXPECT_TRUE(pEven->HitTest({50, 41}, &nCol, &nRow));
    EXPECT_EQ(std::make_pair(0, 0), std::make_pair(nCol, nRow));
    EXPECT_TRUE(m_pGrid->GetCellFromIndex(127, &nCol, &nRow));
    EXPECT_EQ(127, m_pGrid->GetCellIndex(POINT{nCol, nRow}));
    EXPECT_FALSE(m_pGrid->GetCellFromIndex(128, &nCol, &nRow) ||
                 m_pGrid->GetCellFromIndex(-1, &nCol, &nRow));
}

TEST_F(GridScene, PressesAndReleasesAsTheDialogSeesThem)
{
    m_harness.MouseMove(150, 130);
    m_harness.LButtonDown(150, 130);
    m_harness.LButtonDown(150, 130); // already pressed: nothing
    m_harness.LButtonUp(150, 130);
    m_harness.LButtonUp(150, 130); // not pressed: nothing
    EXPECT_EQ((std::vector<int>{1, 2}), m_vecCodes);

    // Released outside: the press ends without a code 2, and the next one counts.
    m_harness.LButtonDown(150, 130);
    m_harness.MouseMove(450, 300);
    Frame();
    m_harness.MouseMove(460, 300);
    m_harness.LButtonUp(460, 300);
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    m_harness.MouseMove(150, 130);
    m_harness.Click(150, 130);
    EXPECT_EQ((std::vector<int>{1, 2, 1, 1, 2}), m_vecCodes);

    // The words of the message.
    ScrollTarget dialog;
    dialog.SetId(kDialogId);
    auto pLoose = MakeGrid(30, {0, 0, 50, 50}, 1, 1);
    pLoose->SetParent(&dialog);
    pLoose->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(105, 105));
    const LPARAM nFullId = kDialogId | (30 << 16);
    EXPECT_EQ((std::vector<Sent>{{WM_NOTIFY, (1 << 16) | 30, nFullId}}), dialog.got);
    pLoose->SetParent(&m_dialog);
}

TEST_F(GridScene, UsedMarkedAndVisibleFlagsThroughRemoveItemAndClearAll)
{
    auto pGrid = MakeGrid(40, {10, 10, 130, 50}, 3, 1);
    pGrid->SetCellUsed(0, 0, true);
    pGrid->SetCellUsed(1, true); // by index: not counted as an item
    pGrid->SetCellMark(0, 0, true);
    pGrid->SetCellVisible(2, false, true);
    EXPECT_EQ(2, pGrid->GetUsedCellCount());
    EXPECT_EQ(1u, pGrid->GetItemCount());
    Draw(*pGrid);
    EXPECT_EQ(Lines({"back 0,0", "item 0,0", "mark 0,0", "back 1,0", "item 1,0"}), pGrid->hooks);

    pGrid->RemoveItem(0, 0); // counts one item and takes one off
    EXPECT_EQ(1u, pGrid->GetItemCount());
    pGrid->SetCellUsed(0, true);
    pGrid->hooks.clear();
    Draw(*pGrid);
    EXPECT_EQ(Lines({"back 0,0", "item 0,0", "back 1,0", "item 1,0"}), pGrid->hooks);

    pGrid->ClearAll();
    EXPECT_EQ(0u, pGrid->GetItemCount());
    EXPECT_EQ(0, pGrid->GetUsedCellCount());
    EXPECT_TRUE(pGrid->IsCellVisible(2));
    EXPECT_FALSE(pGrid->IsCellEnabled(2)); // ClearAll leaves enablement alone

    // Indexes outside 0..127 change and report nothing.
    pGrid->SetCellUsed(1, 0, true);
    pGrid->SetCellUsed(0, 43, true); // index 129
    pGrid->SetCellMark(INT_MAX, INT_MAX, true);
    pGrid->SetCellVisible(-7, false, true);
    pGrid->RemoveItem(200, 0);
    EXPECT_EQ(1, pGrid->GetUsedCellCount());
    EXPECT_EQ(1u, pGrid->GetItemCount());
    EXPECT_FALSE(pGrid->IsCellUsed(128) || pGrid->IsCellEnabled(-1) || pGrid->IsCellVisible(128));
}

// Back hook, back effect, item, front effect, number, mark; then the mask of a disabled cell,
// by section or colour.
TEST_F(GridScene, AFrameDrawsEachCellInLayersAndMasksADisabledCell)
{
    auto pGrid = MakeGrid(41, {10, 10, 110, 50}, 2, 1); // cells of 49.5 x 40
    pGrid->SetCellUsed(0, 0, true);
    pGrid->SetCellCount(0, 12);
    pGrid->SetCellMark(0, 0, true);
    pGrid->LoadCellBackEffect(0, 0, "Spark", true);
    pGrid->LoadCellFrontEffect(0, "Glow", true);
    pGrid->SetCellEnable(1, 0, false);
    EXPECT_EQ(Lines({"img/spark.png at 110,110 6x6", "fill 110,110,114,114 #FF00FF00",
                     "img/glow.png at 110,110 4x4", CountText(146, 138, "12"),
                     "fill 160,110,209,150 #40000000"}),
              Draw(*pGrid));
    EXPECT_EQ(Lines({"back 0,0", "item 0,0", "mark 0,0", "back 1,0"}), pGrid->hooks);

    const std::tuple<const char*, DWORD, const char*> masks[] = {
        {"Missing", 0, nullptr},
        {"Mask", 0, "img/mask.png at 160,110 49x40"},
        {nullptr, 0, "img/mask.png at 160,110 49x40"}, // null keeps the section
        {"", 0x80FF0000, "fill 160,110,209,150 #80FF0000"}};
    for (const auto& [pszMask, dwColour, pszDrawn] : masks)
    {
        SCOPED_TRACE(pszMask ? pszMask : "null");
        pGrid->SetMaskAni(pszMask);
        pGrid->SetMaskColor(dwColour);
        const Lines lines = Draw(*pGrid);
        EXPECT_EQ(pszDrawn ? pszDrawn : CountText(146, 138, "12"), lines.back());
    }

    // The number ends the gap width left of the cell's right edge, 6 pixels a
    // digit; a hidden cell draws not even its mask.
    pGrid->SetCellCount(0, 4294967295u);
    pGrid->SetCellVisible(1, false, false);
    EXPECT_EQ(CountText(98, 138, "4294967295"), Draw(*pGrid).back());
    EXPECT_EQ(4u, Draw(*pGrid).size());
}

TEST_F(GridScene, CellAndGridEffectsPlayStopAndAreAskedByName)
{
    m_pGrid->SetCellUsed(2, 1, true); // index 7 at (190, 150)
    m_pGrid->LoadCellFrontEffect(2, 1, "Glow", false);
    m_pGrid->LoadCellBackEffect(7, "Spark", true);
    m_pGrid->LoadGridFrontEffect("Glow", true);
    m_pGrid->LoadCellFrontEffect(128, "Glow", true);
    EXPECT_TRUE(m_pGrid->HasCellFrontEffect(7, "Glow") &&
                m_pGrid->HasCellBackEffect(2, 1, "Spark"));
    EXPECT_FALSE(m_pGrid->HasCellFrontEffect(2, 1, "Spark") || m_pGrid->HasCellFrontEffect(7, "") ||
                 m_pGrid->HasCellFrontEffect(128, "Glow") || m_pGrid->HasFrontEffect(nullptr));
    const std::string item = "fill 190,150,194,154 #FF00FF00";
    const std::string grid = "img/glow.png at 110,110 4x4";
    EXPECT_EQ(Lines({"img/spark.png at 190,150 6x6", item, grid}), Draw(*m_pGrid));

    m_pGrid->PlayCellFrontEffect(7, "Glow");
    m_pGrid->PlayCellBackEffect(2, 1, nullptr);
    EXPECT_EQ(Lines({item, "img/glow.png at 190,150 4x4", grid}), Draw(*m_pGrid));

    m_pGrid->RemoveItem(2, 1);
    m_pGrid->SetCellUsed(2, 1, true);
    EXPECT_EQ(Lines({item, grid}), Draw(*m_pGrid));
    m_pGrid->ClearAll();
    EXPECT_EQ(Lines{}, Draw(*m_pGrid));
    m_pGrid->PlayFrontEffect("Glow");
    EXPECT_EQ(Lines{grid}, Draw(*m_pGrid));
}

// The lead runs this under AddressSanitizer: every holder is deleted once.
TEST_F(GridScene, CopiesStartWithoutCellEffectsAndEachGridDeletesItsOwn)
{
    auto pSource = MakeGrid(42, {10, 10, 110, 50}, 2, 1);
    for (int i = 0; i < 2; ++i)
    {
        pSource->SetCellUsed(i, true);
        pSource->LoadCellFrontEffect(i, "Glow", true);
    }
    pSource->LoadGridFrontEffect("Glow", true);
    {
        ProbeGrid copy(*pSource);
        EXPECT_TRUE(copy.IsCellUsed(1));
        EXPECT_FALSE(copy.HasCellFrontEffect(1, "Glow"));
        EXPECT_EQ(1u, Sprites(copy, "img/glow.png")); // the grid's own, shared

        auto pOther = MakeGrid(43, {10, 10, 110, 50}, 2, 1);
        pOther->LoadCellBackEffect(0, "Spark", true);
        *pOther = copy;
        EXPECT_FALSE(pOther->HasCellBackEffect(0, "Spark"));
        ProbeGrid& self = *pSource;
        *pSource = self;
    }
    EXPECT_TRUE(pSource->HasCellFrontEffect(1, "Glow"));
    EXPECT_EQ(3u, Sprites(*pSource, "img/glow.png"));

    auto pCopy = std::make_unique<ProbeGrid>(*pSource);
    pSource.reset();
    EXPECT_EQ(1u, Sprites(*pCopy, "img/glow.png"));
}

// Whatever size the host gives, a frame visits at most 128 cells.
TEST_F(GridScene, OversizedAndUnsetGridsStayInsideTheCells)
{
    auto pGrid = MakeGrid(44, {10, 10, 110, 110}, 255, 255);
    for (int i = -1; i <= GRID_MAX_CELLS; ++i)
        pGrid->SetCellUsed(i, true);
    pGrid->ClearCellMarks();
    Draw(*pGrid);
    EXPECT_EQ(2u * GRID_MAX_CELLS, pGrid->hooks.size());
    EXPECT_EQ("item 127,0", pGrid->hooks.back());
    EXPECT_FALSE(pGrid->DrawCell(128, 0));

    ProbeGrid bare;
    bare.SetUseInfo(false);
    EXPECT_TRUE(bare.Create(m_pMgr));
    bare.ShowWindow(SW_SHOW);
    EXPECT_EQ(Lines{}, Draw(bare));
    ASSERT_FALSE(m_harness.Log().LogMsgs().empty());
    const std::regex report("ASSERT\\(m_bPreSetParam\\) in [0-9]+ line of QzGrid");
    EXPECT_TRUE(std::regex_match(m_harness.Log().LogMsgs().back(), report));
}

} // namespace

} // namespace ControlTest
