// The tree: ids and the visible order against a plain walk, the scroll bar it keeps in step
// (buttons, slider, wheel) through expanding and deleting, selection notices and check marks
// from clicks, and what a frame draws: markers, check marks, the selection bar and item tips.
#include "ControlScene.h"

#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzTree.h"
#include "platform/services/QzAniStore.h"

#include <cstdio>
#include <random>

namespace ControlTest
{

namespace
{

using Lines = std::vector<std::string>;
using Ids = std::vector<DWORD>;
using Step = std::function<void()>;

constexpr DWORD kTreeId = 10;

class TreeScene : public ControlScene
{
protected:
    // The marker section has 16 x 16 frames t0..t3; "Short" has too few frames for markers.
    TreeScene()
    {
        m_root.Write("ani/Control.ani",
                     "[News_TreeControl]\nFrameAmount=4\nFrame0=img/t0.png\nFrame1=img/t1.png\n"
                     "Frame2=img/t2.png\nFrame3=img/t3.png\n[Short]\nFrameAmount=3\n"
                     "Frame0=img/t0.png\nFrame1=img/t1.png\nFrame2=img/t2.png\n"
                     "[SelBack]\nFrameAmount=1\nFrame0=img/bar.png\n"
                     "[Look]\nFrameAmount=1\nFrame0=img/f0.png\n");
        QzPlatform::GetAniStore()->Reload();
        for (const char* pszName : {"img/t0.png", "img/t1.png", "img/t2.png", "img/t3.png"})
            m_harness.Device().DefineTexture(pszName, 16, 16);
        m_harness.Device().DefineTexture("img/bar.png", 10, 10);
        m_dialog.AddMsgHandler(WM_NOTIFY, MakeNotifyWParam(QZ_TREE_SELCHANGED, kTreeId),
                               [this](CQzDialog*) { OnSelChange(); });
    }

    // Tree 10 at (110, 110), 200 x 80 with rows of 20: four rows in view. Its up button 11
    // at (320, 110), its down button 12 at (320, 170), its slider 13 between them.
    void Build(int nStyle, Extras extras = {{"ItemHeight", "20"}})
    {
        m_pTree = AddCtrl<CQzTree>(kTreeId, {10, 10, 210, 90}, extras);
        m_pTreeRecord = m_pRecord;
        m_pUp = AddCtrl<CQzScrollButton>(11, {220, 10, 240, 30});
        m_pDown = AddCtrl<CQzScrollButton>(12, {220, 70, 240, 90});
        m_pSlider = AddCtrl<CQzSlider>(13, {220, 30, 240, 70});
        m_pTree->PreSetParam(nStyle, m_pUp, m_pDown, QZ_SCROLL_LINEUP, QZ_SCROLL_LINEDOWN,
                             m_pSlider);
        m_pTree->SetColors(0xFFFFFFFF, 0);
        Open();
    }
    // n top-level items "R0".. (collapsed), each with the given number of leaves "c0"..
    Ids Fill(int n, int nLeaves)
    {
        Ids ids;
        for (int i = 0; i < n; ++i)
        {
            ids.push_back(m_pTree->InsertRootItem(("R" + std::to_string(i)).c_str(), FALSE));
            for (int k = 0; k < nLeaves; ++k)
                m_pTree->InsertItem(ids.back(), ("c" + std::to_string(k)).c_str());
        }
        return ids;
    }
    // "top/visible", then what is shown and enabled of the scroll bar.
    std::string ScrollState()
    {
        return std::to_string(m_pTree->GetTopIndex()) + "/" +
               std::to_string(m_pTree->GetVisibleCount()) +
               (m_pSlider->IsWindowVisible() ? " slider" : "") +
               (m_pUp->IsWindowEnabled() ? " up" : "") +
               (m_pDown->IsWindowEnabled() ? " down" : "");
    }
    void Click(int x, int y)
    {
        m_harness.MouseMove(x, y);
        m_harness.Click(x, y);
    }
    void ClickRow(int nRow) { Click(150, 115 + 20 * nRow); }
    // One frame of the tree alone: textures as "name x,y wxh", texts as "'text' x,y", the
    // rest traced.
    Lines Draw()
    {
        m_harness.Device().Clear();
        m_harness.Frame([this] { m_pTree->Show(); });
        Lines lines;
        for (const QzTest::DrawCall& c : m_harness.Device().Calls())
        {
            char sz[160];
            if (c.kind == QzTest::DrawKind::Texture)
                std::snprintf(sz, sizeof(sz), "%s %d,%d %dx%d", c.texturePath.substr(4, 2).c_str(),
                              c.x1, c.y1, c.width, c.height);
            else if (c.kind == QzTest::DrawKind::Text)
                std::snprintf(sz, sizeof(sz), "'%s' %d,%d", c.text.c_str(), c.x1, c.y1);
            else
                std::snprintf(sz, sizeof(sz), "%s", QzTest::RecordingDevice::TraceLine(c).c_str());
            lines.push_back(sz);
        }
        return lines;
    }

    std::function<void()> OnSelChange = [this] { ++m_nSelChanges; };
    int m_nSelChanges = 0;
    CQzTree* m_pTree = nullptr;
    CQzGuiWndInfo* m_pTreeRecord = nullptr;
    CQzScrollButton* m_pUp = nullptr;
    CQzScrollButton* m_pDown = nullptr;
    CQzSlider* m_pSlider = nullptr;
};

// The visible order by GetNextVisibleItem from the first top-level item.
Ids VisibleWalk(CQzTree& tree)
{
    Ids ids;
    for (DWORD nId = tree.GetChildItem(1, 0); nId != 0; nId = tree.GetNextVisibleItem(nId))
        ids.push_back(nId);
    return ids;
}

// Every item under nId, depth first, through GetChildItem.
void AllItems(CQzTree& tree, DWORD nId, Ids& ids)
{
    for (DWORD nChild = tree.GetChildItem(nId, 0), n = 1; nChild != 0;
         nChild = tree.GetChildItem(nId, static_cast<int>(n++)))
    {
        ids.push_back(nChild);
        AllItems(tree, nChild, ids);
    }
}

TEST_F(TreeScene, IdsStartAtTwoUnderTheHiddenRootAndRestartAfterDeletingAll)
{
    Build(0);
    const DWORD a = m_pTree->InsertRootItem("A", FALSE);
    const DWORD a1 = m_pTree->InsertItem(a, "a1");
    const DWORD a11 = m_pTree->InsertCheckItem(a1, "a11", 7);
    EXPECT_EQ((Ids{2, 3, 4, 0, 0, 0, 0, 0}),
              (Ids{a, a1, a11, m_pTree->InsertRootItem("", TRUE),
                   m_pTree->InsertRootItem(nullptr, TRUE), m_pTree->InsertCheckItem(0, "x", 1),
                   m_pTree->InsertItem(99, "x"), m_pTree->InsertItem(a, nullptr)}));
    // Under a collapsed parent the new child is expanded but not in view.
    EXPECT_EQ((Ids{a}), VisibleWalk(*m_pTree));
    EXPECT_EQ((Ids{1, 0, 1, 2, 3, 1, 1}),
              (Ids{m_pTree->GetParentItem(a), m_pTree->GetParentItem(1), m_pTree->GetItemLevel(a),
                   m_pTree->GetItemLevel(a1), m_pTree->GetItemLevel(a11),
                   DWORD(m_pTree->GetCheck(a11)), DWORD(m_pTree->GetExpanded(a1))}));
    m_pTree->Expand(a, QZ_TREE_EXPAND);
    EXPECT_EQ((Ids{a, a1, a11}), VisibleWalk(*m_pTree));
    EXPECT_EQ(3, m_pTree->GetCount());
    char sz[8] = "";
    EXPECT_TRUE(m_pTree->GetItemText(a11, sz));
    EXPECT_STREQ("a11", sz);
    EXPECT_FALSE(m_pTree->GetItemText(a11, nullptr) || m_pTree->GetItemText(42, sz));

    m_pTree->DeleteAllItems();
    EXPECT_EQ(0, m_pTree->GetCount());
    EXPECT_EQ(0u, m_pTree->GetItemLevel(a1)); // gone
    EXPECT_EQ(2u, m_pTree->InsertRootItem("B", FALSE));
}

// The visible count, the top index and the item at a position come from totals the items keep;
// after every step of a random sequence they must agree with a plain walk of the tree.
TEST_F(TreeScene, KeptTotalsAgreeWithAWalkThroughInsertsDeletesAndFolding)
{
    Build(0);
    std::mt19937 random(7);
    for (int nStep = 0; nStep < 600; ++nStep)
    {
        Ids all{1};
        AllItems(*m_pTree, 1, all);
        const DWORD nId = all[random() % all.size()];
        const unsigned nOp = random() % 6;
        if (nOp < 2)
            m_pTree->InsertItem(nId, "x");
        else if (nOp == 2 && random() % 4 == 0)
            m_pTree->DeleteItem(nId);
        else if (nOp == 3)
            m_pTree->Expand(nId, QZ_TREE_TOGGLE);
        else if (nOp > 3)
            m_pTree->SetTopIndex(static_cast<int>(random() % (all.size() + 1)));
        Ids items;
        AllItems(*m_pTree, 1, items);
        const Ids walk = VisibleWalk(*m_pTree);
        ASSERT_EQ(static_cast<int>(items.size()), m_pTree->GetCount()) << nStep;
        ASSERT_EQ(static_cast<int>(walk.size()), m_pTree->GetVisibleCount()) << nStep;
        const DWORD nTop =
            m_pTree->GetTopItem() ? m_pTree->GetTopItem() : m_pTree->GetChildItem(1, 0);
        const auto found = std::find(walk.begin(), walk.end(), nTop);
        ASSERT_TRUE(walk.empty() || found != walk.end()) << nStep << ": the top is folded away";
        ASSERT_EQ(walk.empty() ? 0 : found - walk.begin(), m_pTree->GetTopIndex()) << nStep;
    }
}

TEST_F(TreeScene, ExpandingCollapsingAndClicksKeepTheScrollBarInStep)
{
    Build(0);
    const Ids roots = Fill(3, 3); // R0 R1 R2, three leaves each, all collapsed
    const std::pair<Step, std::string> steps[] = {
        {[] {}, "0/3"}, // everything fits: no slider, both buttons off
        {[&] { m_pTree->Expand(roots[0], QZ_TREE_EXPAND); }, "0/6 slider down"},
        {[&] { m_pTree->Expand(99, QZ_TREE_EXPAND); }, "0/6 slider down"},
        {[&] { m_pTree->SetTopIndex(2), m_pTree->UpdateScrollButtons(); }, "2/6 slider up"},
        {[&] { m_pTree->Expand(roots[2], QZ_TREE_TOGGLE); }, "2/9 slider up down"},
        {[&] { m_pTree->Expand(roots[0], QZ_TREE_COLLAPSE); }, "0/6 slider down"}, // top was in R0
        {[&] { ClickRow(1); }, "0/9 slider down"},                                 // R1 opens
        {[&] { ClickRow(1); }, "0/6 slider down"},                                 // and closes
        {[&] { m_pTree->DeleteItem(roots[2]); }, "0/2"},
    };
    for (const auto& [step, expected] : steps)
    {
        step();
        EXPECT_EQ(expected, ScrollState());
    }
}

// Ten items, four rows: the view runs from top 0 to top 6. A click on a button moves one item
// and its release disables the button at its end, where a click no longer reaches it; the wheel
// moves within the same bounds and the slider's thumb stops at the end of its track.
TEST_F(TreeScene, ScrollButtonsWheelAndSliderStopAtBothEnds)
{
    Build(0);
    Fill(10, 0);
    const std::tuple<char, int, const char*> moves[] = {
        // 'w' the wheel by n, 'u' / 'd' n clicks on a button, 't' the thumb pressed at n, 'm'
        // the mouse moved to n, then the scroll state
        {'w', 120, "0/10 slider down"},     {'u', 1, "0/10 slider down"},
        {'d', 1, "1/10 slider up down"},    {'w', -120, "2/10 slider up down"},
        {'w', -240, "3/10 slider up down"}, {'w', 0, "3/10 slider up down"},
        {'d', 3, "6/10 slider up"},         {'w', -120, "6/10 slider up"},
        {'d', 1, "6/10 slider up"},         {'w', 120, "5/10 slider up down"},
        {'d', 1, "6/10 slider up"},         {'u', 6, "0/10 slider down"},
        {'t', 135, "0/10 slider down"},     {'m', 400, "6/10 slider up"},
        {'m', 380, "3/10 slider up down"},  {'m', -100, "0/10 slider down"}};
    for (const auto& [cMove, n, pszState] : moves)
    {
        if (cMove == 'w')
            m_harness.Wheel(150, 130, n);
        for (int i = 0; (cMove == 'u' || cMove == 'd') && i < n; ++i)
            Click(325, cMove == 'u' ? 115 : 175);
        if (cMove == 't' || cMove == 'm')
            m_harness.MouseMove(330, n);
        if (cMove == 't')
            m_harness.LButtonDown(330, n);
        EXPECT_EQ(pszState, ScrollState()) << cMove << " " << n;
        const int nTop = m_pTree->GetTopIndex();
        if (nTop % 3 == 0) // the slider's value at the ends and halfway
        {
            EXPECT_EQ(nTop * 100 / 6, m_pSlider->GetValue()) << nTop;
        }
    }
    m_harness.LButtonUp(330, -100);
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());

    m_pTree->DeleteAllItems();
    EXPECT_EQ("0/0", ScrollState());     // both buttons off and the slider hidden, and so they stay
    m_pTree->InsertRootItem("A", FALSE); // when the slider moves while everything fits
    m_pSlider->SetValue(100, TRUE);
    EXPECT_EQ("0/1", ScrollState());
}

TEST_F(TreeScene, ClicksSelectOnceOpenParentsToggleCheckMarksAndSurviveAReleaseOutside)
{
    Build(QZ_TREE_STYLE_CHECK);
    const DWORD r0 = m_pTree->InsertRootItem("R0", TRUE);
    const DWORD c0 = m_pTree->InsertItem(r0, "c0");
    m_pTree->InsertItem(r0, "c1");
    const DWORD leaf = m_pTree->InsertRootItem("L", FALSE); // rows: R0 c0 c1 L
    const std::tuple<int, int, Ids> clicks[] = {
        // row, notices so far, c0's and L's checks and R0 open
        {1, 1, {1, 0, 1}},
        {1, 1, {0, 0, 1}}, // the same item: no second notice
        {3, 2, {0, 1, 1}}, // a top-level leaf has a check too
        {0, 3, {0, 1, 0}},
        {0, 3, {0, 1, 1}}}; // a parent opens or closes
    auto state = [&]
    {
        return Ids{DWORD(m_pTree->GetCheck(c0)), DWORD(m_pTree->GetCheck(leaf)),
                   DWORD(m_pTree->GetExpanded(r0))};
    };
    for (const auto& [nRow, nNotices, expected] : clicks)
    {
        ClickRow(nRow);
        EXPECT_EQ(nNotices, m_nSelChanges) << nRow;
        EXPECT_EQ(expected, state()) << nRow;
    }
    // Pressed twice, released outside the tree: each press acts, the release is not ours.
    m_harness.MouseMove(150, 135);
    m_harness.LButtonDown(150, 135);
    m_harness.LButtonDown(150, 135);
    m_harness.MouseMove(20, 20);
    m_harness.LButtonUp(20, 20);
    EXPECT_EQ(4, m_nSelChanges);
    EXPECT_EQ((Ids{0, 1, 1}), state());
    EXPECT_EQ(c0, m_pTree->GetSelectedItem());
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    m_pTree->SelectItem(c0);
    m_pTree->SelectItem(0); // names nothing
    EXPECT_EQ(4, m_nSelChanges);

    // The notice as the parent gets it.
    ScrollTarget parent;
    parent.SetId(300);
    CQzTree loose;
    loose.SetParent(&parent);
    loose.SetId(kTreeId);
    loose.SelectItem(loose.InsertRootItem("A", FALSE));
    EXPECT_EQ((std::vector<Sent>{{WM_NOTIFY, MakeNotifyWParam(QZ_TREE_SELCHANGED, kTreeId),
                                  MAKELPARAM(300, kTreeId)}}),
              parent.got);
}

// Removing the item above the selection and the top item leaves no pointer to a freed item:
// the view starts at the first item again, nothing is selected, and the parent is told.
TEST_F(TreeScene, DeletingTheParentOfTheSelectedAndTopItemsResetsBoth)
{
    Build(0);
    const Ids roots = Fill(3, 3);
    m_pTree->Expand(roots[0], QZ_TREE_EXPAND);
    m_pTree->Expand(roots[1], QZ_TREE_EXPAND); // R0 c0 c1 c2 R1 c0 c1 c2 R2
    m_pTree->SetTopIndex(5);                   // R1's c0
    ClickRow(1);                               // R1's c1
    m_pTree->DeleteItem(roots[1]);
    EXPECT_EQ(2, m_nSelChanges);
    EXPECT_EQ((Ids{0, 0}), (Ids{m_pTree->GetSelectedItem(), m_pTree->GetTopItem()}));
    EXPECT_EQ("0/5 slider down", ScrollState());
    EXPECT_EQ(
        (Lines{"t1 110,106 16x16", "'R0' 134,110", "'c0' 134,130", "'c1' 134,150", "'c2' 134,170"}),
        Draw());

    // Deleting before the top keeps the top item; its position follows.
    m_pTree->SetTopIndex(4); // R2
    m_pTree->DeleteItem(roots[0]);
    EXPECT_EQ((Ids{roots[2], 0, 2}),
              (Ids{m_pTree->GetTopItem(), DWORD(m_pTree->GetTopIndex()), DWORD(m_nSelChanges)}));

    // A parent that removes the item while told of its selection.
    m_pTree->InsertItem(m_pTree->InsertRootItem("R3", FALSE), "c");
    OnSelChange = [this]
    {
        ++m_nSelChanges;
        m_pTree->DeleteItem(m_pTree->GetSelectedItem());
    };
    ClickRow(1);
    EXPECT_EQ(4, m_nSelChanges);       // selected, then unselected by the removal
    EXPECT_EQ(4, m_pTree->GetCount()); // R2 and its leaves
}

// Indent 24 a level; a marker (raised 4) for top-level and parent items, a check mark for leaves
// in the check style, each a column of 24 before the text.
TEST_F(TreeScene, MarkersAndCheckMarksSitByLevelAndState)
{
    Build(QZ_TREE_STYLE_CHECK, {{"ItemHeight", "16"}}); // five rows
    const DWORD r0 = m_pTree->InsertRootItem("R0", TRUE);
    m_pTree->InsertCheckItem(r0, "c0", 1);
    const DWORD p = m_pTree->InsertItem(r0, "P");
    m_pTree->InsertItem(p, "q");
    m_pTree->InsertRootItem("L", FALSE);
    EXPECT_EQ((Lines{"t1 110,106 16x16", "'R0' 134,110",                      // open parent
                     "t2 134,126 16x16", "'c0' 158,126",                      // checked leaf
                     "t1 134,138 16x16", "'P' 158,142",                       // open parent
                     "t3 158,158 16x16", "'q' 182,158",                       // unchecked leaf
                     "t1 110,170 16x16", "t3 134,174 16x16", "'L' 158,174"}), // top-level leaf
              Draw());
    m_pTree->Expand(p, QZ_TREE_COLLAPSE);
    m_pTree->Expand(r0, QZ_TREE_COLLAPSE);
    EXPECT_EQ((Lines{"t0 110,106 16x16", "'R0' 134,110", "t1 110,122 16x16", "t3 134,126 16x16",
                     "'L' 158,126"}),
              Draw());

    m_pTree->SetTreeAni("Short"); // too few frames: no markers, the texts keep their place
    EXPECT_EQ((Lines{"'R0' 134,110", "'L' 158,126"}), Draw());
    m_pTreeRecord->SetFontColor(0xFF00FF00);
    m_pTreeRecord->AddFlags(WNDINFO_FLAG_FONTCOLOR);
    m_pTree->LoadWndInfo();
    Draw();
    EXPECT_EQ(0xFF00FF00u, Texts().at(0).colour);
}

// Without a bar section the selection is a block from the text to the right edge; a bar section
// is offset, stretched over the same width and drawn on parents only in the bar style.
TEST_F(TreeScene, TheSelectionIsABlockOrAnOffsetBarSectionFromTheTextToTheRightEdge)
{
    Build(0, {{"ItemHeight", "20"}, {"SelBackOffsetX", "-2"}, {"SelBackOffsetY", "1"}});
    const DWORD r0 = m_pTree->InsertRootItem("R0", TRUE);
    const DWORD c0 = m_pTree->InsertItem(r0, "c0");
    const std::string marker = "t1 110,106 16x16", r0Text = "'R0' 134,110", c0Text = "'c0' 134,130";
    m_pTree->SelectItem(c0);
    EXPECT_EQ((Lines{marker, r0Text, "fill 134,130,310,144 #800000FF", c0Text}), Draw());
    m_pTree->SetDrawBacking(TRUE);
    m_pTree->SetItemMargin(3, 4);
    m_pTree->SetSelColor(0x40FF0000);
    m_pTree->SelectItem(r0);
    EXPECT_EQ((Lines{"fill 113,114,310,190 #FF000000", marker, "fill 134,110,310,124 #40FF0000",
                     r0Text, c0Text}),
              Draw());

    m_pTree->SetDrawBacking(FALSE);
    m_pTreeRecord->AddExtra("SelBackAni", "SelBack");
    m_pTree->LoadWndInfo();
    const std::tuple<int, DWORD, Lines> cases[] = {
        {0, c0, {marker, r0Text, "ba 132,131 176x14", c0Text}},
        {0, r0, {marker, r0Text, c0Text}},
        {QZ_TREE_STYLE_SELBAR, r0, {marker, "ba 132,111 176x14", r0Text, c0Text}}};
    for (const auto& [nStyle, nSelected, expected] : cases)
    {
        m_pTree->PreSetParam(nStyle, m_pUp, m_pDown, 0, 1, m_pSlider);
        m_pTree->SelectItem(nSelected);
        EXPECT_EQ(expected, Draw()) << nStyle << " " << nSelected;
    }
}

// The tip of the item under the mouse: a block (8 + 6 x longest line + 8 wide, 14 a line + 4
// high) under the row or over it, and its lines in white.
TEST_F(TreeScene, TheItemTipFollowsTheMouseBelowOrOnItsRow)
{
    Build(0);
    const DWORD r0 = m_pTree->InsertRootItem("R0", TRUE);
    m_pTree->SetItemTip(m_pTree->InsertItem(r0, "c0"), "Line one\\bLine two");
    m_pTree->SetItemTip(r0, nullptr);
    const std::tuple<BOOL, POINT, int, Lines> cases[] = {
        // below, mouse, tip top (0: no tip), lines
        {TRUE, {150, 135}, 152, {"'Line one' 122,154", "'Line two' 122,166"}},
        {FALSE, {150, 149}, 130, {"'Line one' 122,132", "'Line two' 122,144"}},
        {TRUE, {150, 115}, 0, {}}, // R0 has no tip
        {TRUE, {150, 175}, 0, {}}, // no item in that row
        {TRUE, {20, 135}, 0, {}}}; // off the tree
    for (const auto& [bBelow, pt, nTop, texts] : cases)
    {
        m_pTree->SetTipBelow(bBelow);
        m_harness.MouseMove(pt.x, pt.y);
        Lines expected = {"t1 110,106 16x16", "'R0' 134,110", "'c0' 134,130"};
        if (nTop)
            expected.push_back("fill 118," + std::to_string(nTop) + ",174," +
                               std::to_string(nTop + 32) + " #80000000");
        expected.insert(expected.end(), texts.begin(), texts.end());
        EXPECT_EQ(expected, Draw()) << pt.x << "," << pt.y;
    }
}

TEST_F(TreeScene, CreationNeedsARecordAndReportsAMissingSetUp)
{
    m_pTree = AddCtrl<CQzTree>(kTreeId, {10, 10, 210, 90}, {{"ItemHeight", "-5"}});
    Open();
    EXPECT_EQ(Lines{"ASSERT(m_bPreSetParam) in 82 line of QzTree"}, m_harness.Log().LogMsgs());
    EXPECT_EQ(20, m_pTree->GetItemHeight()); // the default cell (12) + 8
    EXPECT_EQ(4, m_pTree->GetVisibleRows());
    m_pTree->InsertRootItem("A", FALSE); // no scroll bar to keep in step
    m_pTree->SetItemHeight(0);
    ClickRow(0);
    EXPECT_EQ(0, m_nSelChanges);
    EXPECT_EQ(Lines{}, Draw());

    CQzTree loose;
    loose.PreSetParam(0, nullptr, nullptr, 0, 0, nullptr);
    EXPECT_FALSE(loose.Create(m_pMgr));
}

// A chain thousands of levels deep is built, scrolled, drawn and freed without recursion; its
// deepest text lies far right of the tree, where no selection bar is drawn.
TEST_F(TreeScene, ADeepChainScrollsDrawsAndFrees)
{
    Build(0);
    DWORD nId = 1;
    for (int i = 0; i < 5000; ++i)
        nId = m_pTree->InsertItem(nId, "x");
    EXPECT_EQ(5000, m_pTree->GetVisibleCount());
    m_pTree->SetTopIndex(4999);
    m_pTree->SelectItem(nId);
    EXPECT_EQ((Lines{"'x' 120086,110"}), Draw()); // 110 + 24 x 4999 + ... leaf: no marker
    m_pTree->DeleteItem(m_pTree->GetChildItem(1, 0));
    EXPECT_EQ("0/0", ScrollState());
}

} // namespace

} // namespace ControlTest
