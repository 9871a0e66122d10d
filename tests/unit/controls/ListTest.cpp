// The list: rows and the kept selection, scrolling by wheel, scroll buttons and slider (also past
// 255 rows), the parent and owner codes of each style in the order they are sent, and what a
// frame draws: rows, columns, selection, marks, the mouse-over bar and the row tip's nine frames.
#include "ControlScene.h"

#include "controls/QzList.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "platform/services/QzAniStore.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace ControlTest
{

namespace
{

using Lines = std::vector<std::string>;

constexpr DWORD kItemColor = 0xFF00FF00;

// Row r of the view (4 rows of 14 from y 110) under the mouse.
constexpr int kRowX = 150;
int RowY(int nRow)
{
    return 117 + 14 * nRow;
}

// The owner of the list: what it gets, merged in order with the codes the parent got meanwhile.
struct Owner : CQzStatic
{
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Flush();
        log.push_back("owner " + std::to_string(message) + " " +
                      std::to_string(static_cast<long long>(wParam)) + "," +
                      std::to_string(static_cast<long long>(lParam)));
        return 1;
    }
    void Flush()
    {
        for (; nSeen < pNotices->size(); ++nSeen)
            log.push_back("parent " + std::to_string(std::get<0>((*pNotices)[nSeen])));
    }
    std::vector<Notice>* pNotices = nullptr;
    size_t nSeen = 0;
    Lines log;
};

class ListScene : public ControlScene
{
protected:
    // Up button 21 at (220, 110), slider 23 at (220, 130)-(237, 240) with a 100-pixel track, down
    // button 22 at (220, 250); list 20 at (110, 110), 127 x 56 in its record: 4 rows of 14 (cell
    // 6 x 12) and 110 wide once the scroll strip is taken. Style 1, owned by m_owner.
    ListScene()
    {
        std::string ani = "[Look]\nFrameAmount=1\nFrame0=img/f0.png\n"
                          "[Bar]\nFrameAmount=1\nFrame0=img/bar.png\n"
                          "[MarkBack]\nFrameAmount=1\nFrame0=img/back.png\n"
                          "[MarkFront]\nFrameAmount=1\nFrame0=img/front.png\n"
                          "[Pack_OrdinaryItemTipsBG]\nFrameAmount=9\n";
        for (int i = 0; i < 9; ++i)
        {
            const std::string tip = "img/tip" + std::to_string(i) + ".png";
            ani += "Frame" + std::to_string(i) + "=" + tip + "\n";
            m_harness.Device().DefineTexture(tip, 32, 32);
        }
        m_root.Write("ani/Control.ani", ani);
        QzPlatform::GetAniStore()->Reload();
        m_harness.Device().DefineTexture("img/bar.png", 60, 14);
        m_harness.Device().DefineTexture("img/back.png", 90, 10);
        m_harness.Device().DefineTexture("img/front.png", 8, 8);
        CQzList::ResetClickToggle();
        m_owner.pNotices = &m_dialog.notices;

        m_pUp = AddCtrl<CQzScrollButton>(21, {120, 10, 137, 27});
        m_pSlider = AddCtrl<CQzSlider>(23, {120, 30, 137, 140}, {{"SliderBtnLen", "10"}});
        m_pSlider->PreSetParam(100, QZ_SLIDER_VERT);
        m_pDown = AddCtrl<CQzScrollButton>(22, {120, 150, 137, 167});
        m_pList = AddList(20, 10, QZ_LIST_STYLE_NOTIFY, {}, true);
        Open();
    }
    // A list of the dialog, 127 x 56 at (10, y) in its record, set up (with the scroll bar or
    // none) and created at once when the dialog is open.
    CQzList* AddList(DWORD nId, int y, int nStyle, Extras extras = {}, bool bScrollBar = false)
    {
        m_pRecord = AddRecord(kDialogId, nId, {10, y, 137, y + 56}, extras);
        m_ctrls.push_back(std::make_unique<CQzList>());
        auto* pList = static_cast<CQzList*>(m_ctrls.back().get());
        pList->PreSetParam(nStyle, bScrollBar ? m_pUp : nullptr, bScrollBar ? m_pDown : nullptr,
                           QZ_SCROLL_LINEUP, QZ_SCROLL_LINEDOWN, bScrollBar ? m_pSlider : nullptr);
        pList->SetOwner(&m_owner);
        pList->SetItemColors(kItemColor, 0xFFFF00FF);
        m_dialog.AddCtrl(nId, pList);
        if (m_pMgr->IsRegistered(&m_dialog))
            m_dialog.CreateCtrl(pList, TRUE);
        return pList;
    }
    void SetStyle(int nStyle)
    {
        m_pList->PreSetParam(nStyle, m_pUp, m_pDown, QZ_SCROLL_LINEUP, QZ_SCROLL_LINEDOWN,
                             m_pSlider);
    }
    // Rows "row 0" .. "row n-1".
    void Fill(int nRows)
    {
        for (int i = 0; i < nRows; ++i)
            m_pList->AddString(("row " + std::to_string(i)).c_str());
    }
    // The codes sent since the last call, parent and owner in order.
    Lines Codes()
    {
        m_owner.Flush();
        Lines log;
        log.swap(m_owner.log);
        return log;
    }
    // One frame: pictures as "name l,t,r,b at x,y wxh", texts as "text x,y 'text' colour", fills
    // traced; the record's own look is left out.
    Lines Draws()
    {
        m_harness.Device().Clear();
        m_harness.Frame([this] { m_pMgr->Show(); });
        Lines lines;
        for (const QzTest::DrawCall& c : m_harness.Device().Calls())
        {
            char sz[160];
            if (c.kind == QzTest::DrawKind::Texture && c.texturePath == "img/f0.png")
                continue;
            if (c.kind == QzTest::DrawKind::Texture)
                std::snprintf(sz, sizeof(sz), "%s %d,%d,%d,%d at %d,%d %dx%d",
                              c.texturePath.substr(4).c_str(), c.source.left, c.source.top,
                              c.source.right, c.source.bottom, c.x1, c.y1, c.width, c.height);
            else if (c.kind == QzTest::DrawKind::Text)
                std::snprintf(sz, sizeof(sz), "text %d,%d '%s' %08X", c.x1, c.y1, c.text.c_str(),
                              c.colour);
            else
                std::snprintf(sz, sizeof(sz), "%s", QzTest::RecordingDevice::TraceLine(c).c_str());
            lines.emplace_back(sz);
        }
        return lines;
    }
    // Mouse steps on rows of the view, e.g. "c1 d1 u1 r0 p2": a click, a double click's second
    // press, a release, a right press and a press the list must hold the mouse for, each on the
    // row of its digit; "o" releases and "x" clicks outside the list.
    void Do(const char* pszSteps)
    {
        std::istringstream in(pszSteps);
        for (std::string step; in >> step;)
        {
            const int y = step.size() > 1 ? RowY(step[1] - '0') : 380;
            if (step[0] == 'c' || step[0] == 'x')
                m_harness.Click(step[0] == 'c' ? kRowX : 400, y);
            else if (step[0] == 'd')
                m_harness.LButtonDblClk(kRowX, y);
            else if (step[0] == 'u' || step[0] == 'o')
                m_harness.LButtonUp(step[0] == 'u' ? kRowX : 400, y);
            else if (step[0] == 'r')
                m_harness.RButtonDown(kRowX, y);
            else
                m_harness.LButtonDown(kRowX, y);
            if (step[0] == 'p')
            {
                EXPECT_EQ(m_pList, m_pMgr->GetCapture()) << step;
            }
        }
    }
    void Wheel(int nDelta) { m_harness.Wheel(kRowX, RowY(0), nDelta); }
    // Holds the scroll button at (228, y) for n frames of 250 ms, a repeat each, then lets go.
    void Hold(int y, int n)
    {
        m_harness.MouseMove(228, y);
        m_harness.LButtonDown(228, y);
        for (int i = 0; i < n; ++i)
        {
            m_harness.Advance(250);
            Frame();
        }
        m_harness.LButtonUp(228, y);
    }

    Owner m_owner;
    CQzScrollButton* m_pUp = nullptr;
    CQzScrollButton* m_pDown = nullptr;
    CQzSlider* m_pSlider = nullptr;
    CQzList* m_pList = nullptr;
};

TEST_F(ListScene, CreationTakesTheScrollStripSizesRowsByTheCellAndReportsAMissingSetUp)
{
    // "ItemHeight" sets the drawn height only; rows still fit by the cell. A height set before
    // creation wins over the key.
    auto* pKeyed = AddList(31, 100, 1, {{"ItemHeight", "20"}, {"SelBackColor", "80ff0000"}});
    auto* pPreset = AddCtrl<CQzList>(32, {10, 170, 137, 226}, {{"ItemHeight", "20"}});
    pPreset->SetItemHeight(9); // created without PreSetParam: reported, not set up
    pPreset->PreSetParam(1, nullptr, nullptr, 0, 0, nullptr);
    pPreset->LoadWndInfo();
    EXPECT_EQ((RECT{110, 110, 220, 166}), m_pList->GetWindowRect());
    EXPECT_EQ((std::vector<int>{4, 14, 4, 20, 9}),
              (std::vector<int>{m_pList->GetVisibleRows(), m_pList->GetItemHeight(),
                                pKeyed->GetVisibleRows(), pKeyed->GetItemHeight(),
                                pPreset->GetItemHeight()}));
    EXPECT_EQ(0x80FF0000u, pKeyed->GetSelBackColor());
    ASSERT_EQ(1u, m_harness.Log().LogMsgs().size());
    const std::string& msg = m_harness.Log().LogMsgs()[0];
    EXPECT_EQ(0u, msg.rfind("ASSERT(m_bPreSetParam) in ", 0)) << msg;
    EXPECT_NE(std::string::npos, msg.find(" line of QzList")) << msg;
}

TEST_F(ListScene, TheSelectionFollowsItsRowAndBadIndexesOrNullTextsGiveMinusOneOrZero)
{
    Fill(3);
    Do("c1");
    const std::tuple<char, int, int, int> changes[] = {
        // insert or delete, index, result, selection after
        {'i', 0, 0, 2}, {'i', 3, 3, 2},  {'i', 5, 5, 2},   {'d', 0, 0, 1},
        {'d', 4, 4, 1}, {'d', 1, 1, -1}, {'i', 6, -1, -1}, {'d', 9, -1, -1}};
    for (const auto& [cChange, nIndex, nResult, nSel] : changes)
    {
        EXPECT_EQ(nResult, cChange == 'i' ? m_pList->InsertString(nIndex, "new")
                                          : m_pList->DeleteString(nIndex))
            << cChange << nIndex;
        EXPECT_EQ(nSel, m_pList->GetCurSel()) << cChange << nIndex;
        for (int i = 0; i < m_pList->GetCount(); ++i)
            EXPECT_EQ(i == nSel, m_pList->GetSel(i)) << cChange << nIndex << " row " << i;
    }
    // Left: "row 0", "new", "row 2".
    EXPECT_EQ((std::vector<int>{2, -1, -1, 1, -1, -1, -1, -1, -1, 0, 0, 0}),
              (std::vector<int>{m_pList->FindString(0, "row 2"), m_pList->FindString(3, "row 2"),
                                m_pList->FindString(0, "row"), m_pList->FindString(-5, "new"),
                                m_pList->AddString(nullptr), m_pList->InsertString(0, nullptr),
                                m_pList->InsertString(-1, "x"), m_pList->FindString(0, nullptr),
                                m_pList->GetText(0, nullptr), m_pList->SetItemTip(-1, "x"),
                                m_pList->SetItemTip(CQzList::kMaxItemTipIndex + 1, "x"),
                                m_pList->SetItemTip(0, nullptr)}));
    EXPECT_EQ(kItemColor, m_pList->GetItemColor(0)); // none of its own: the list's
    char szText[16] = "";
    for (int n : {-1, 3, INT_MAX})
    {
        EXPECT_EQ((std::vector<int>(7, -1)),
                  (std::vector<int>{static_cast<int>(m_pList->GetItemData(n)),
                                    static_cast<int>(m_pList->GetItemColor(n)),
                                    static_cast<int>(m_pList->GetItemTime(n)),
                                    m_pList->GetItemBlink(n), m_pList->GetSel(n),
                                    m_pList->GetTextLen(n), m_pList->GetText(n, szText)}))
            << n;
        EXPECT_FALSE(m_pList->SetItemData(n, 1) || m_pList->SetItemColor(n, 1) ||
                     m_pList->SetItemTime(n, 1) || m_pList->SetItemBlink(n, 1) ||
                     m_pList->GetItemRect(n, nullptr))
            << n;
    }
    // A row keeps at most 1023 bytes and never half a two-byte character.
    const std::pair<std::string, int> texts[] = {{std::string(1030, 'a'), 1023},
                                                 {std::string(1021, 'a') + "\xD6\xD0", 1023},
                                                 {std::string(1022, 'a') + "\xD6\xD0", 1022}};
    for (const auto& [text, nLength] : texts)
    {
        std::string copy(1100, '\x7F');
        EXPECT_EQ(3, m_pList->GetText(m_pList->InsertString(3, text.c_str()), copy.data()));
        EXPECT_EQ(text.substr(0, nLength), copy.c_str());
        EXPECT_EQ(nLength, m_pList->GetTextLen(3)) << text.size();
    }
}

TEST_F(ListScene, EveryRowChangeRecountsShowsTheSliderOnlyWhenNeededAndCountsPages)
{
    EXPECT_EQ((std::vector<int>{1, 2, 1, 1, 0}),
              (std::vector<int>{(m_pList->AddString("a"), m_pList->GetCountedRows()),
                                (m_pList->InsertString(0, "b"), m_pList->GetCountedRows()),
                                (m_pList->DeleteString(1), m_pList->GetCountedRows()),
                                (m_pList->DeleteString(5), m_pList->GetCountedRows()),
                                (m_pList->ResetContent(), m_pList->GetCountedRows())}));
    const std::tuple<int, int, bool, int, int> cases[] = {
        // rows, top, slider, pages, current page (rounded up)
        {0, 0, false, 1, 1}, {5, 0, true, 2, 1},  {4, 0, false, 1, 1},  {10, 4, true, 3, 2},
        {10, 5, true, 3, 3}, {10, 6, true, 3, 3}, {300, 0, true, 75, 1}};
    for (const auto& [nRows, nTop, bScroll, nPages, nPage] : cases)
    {
        while (m_pList->GetCount() > nRows)
            m_pList->DeleteString(0);
        Fill(nRows - m_pList->GetCount());
        m_pList->SetTopIndex(nTop);
        Frame();
        EXPECT_EQ((std::vector<int>{bScroll, bScroll, bScroll ? 4 : nRows, nPages, nPage}),
                  (std::vector<int>{m_pList->IsNeedScroll(), m_pSlider->IsWindowVisible() != 0,
                                    m_pList->GetRowsDrawn(), m_pList->GetPageCount(),
                                    m_pList->GetCurPage()}))
            << nRows << " " << nTop;
    }
}

// Ten rows, four in view: the top runs from 0 to 6. The wheel moves one row a notch; a line
// button moves one row on release however many repeats it was held for; the slider follows.
TEST_F(ListScene, TheWheelAndAHeldScrollButtonMoveOneRowAndStopAtBothEnds)
{
    Fill(10);
    const std::tuple<int, char, int, int> cases[] = {
        // top, 'w' the wheel by n or 'u' / 'd' a button held n frames of 250 ms, top after
        {6, 'w', -120, 6}, {6, 'w', 120, 5}, {0, 'w', 120, 0}, {0, 'w', -120, 1}, {3, 'w', -480, 4},
        {0, 'd', 8, 1},    {3, 'd', 0, 4},   {6, 'd', 8, 6},   {6, 'u', 8, 5},    {0, 'u', 8, 0}};
    for (const auto& [nTop, cInput, n, nAfter] : cases)
    {
        m_pList->SetTopIndex(nTop);
        if (cInput == 'w')
            Wheel(n);
        else
            Hold(cInput == 'u' ? 118 : 258, n);
        EXPECT_EQ(nAfter, m_pList->GetTopIndex()) << cInput << " " << nTop;
        EXPECT_EQ(nAfter * 100 / 6, m_pSlider->GetValue()) << cInput << " " << nTop;
    }
}

TEST_F(ListScene, AListOfMoreThan255RowsScrollsToItsEndBySliderOrWheelAndDrawsItsLastRows)
{
    Fill(300);
    m_harness.MouseMove(228, 135); // the thumb, dragged from the top of its track past its end
    m_harness.LButtonDown(228, 135);
    m_harness.MouseMove(228, 400);
    m_harness.LButtonUp(228, 400);
    EXPECT_EQ(296, m_pList->GetTopIndex());
    EXPECT_EQ(Lines({"text 110,110 'row 296' FF00FF00", "text 110,124 'row 297' FF00FF00",
                     "text 110,138 'row 298' FF00FF00", "text 110,152 'row 299' FF00FF00"}),
              Draws());
    EXPECT_EQ(75, m_pList->GetCurPage());
    Wheel(-120);
    EXPECT_EQ(296, m_pList->GetTopIndex());
    Wheel(120); // SyncSlider puts the thumb back in step
    EXPECT_EQ(295, m_pList->GetTopIndex());
    EXPECT_EQ(99, m_pSlider->GetValue());
    Do("c3");
    EXPECT_EQ(298, m_pList->GetCurSel());
}

// Rows start twice the margin in; a top near the end, or left past the rows by deletes, and
// hostile row heights draw, hover and hit nothing beyond the rows.
TEST_F(ListScene, RowRectsAndHitsStopAtTheLastRowWhateverTheTopAndTheRowHeight)
{
    Fill(10);
    m_pList->SetItemMargin(3, 2);
    m_pList->SetTopIndex(2);
    RECT rc = {};
    EXPECT_TRUE(m_pList->GetItemRect(1, &rc)); // above the view
    EXPECT_EQ((RECT{116, 100, 220, 114}), rc);
    EXPECT_EQ(3, m_pList->HitTest({kRowX, 130}, nullptr));
    EXPECT_EQ(-1, m_pList->HitTest({kRowX, 112}, nullptr)); // in the margin
    m_pList->SetItemMargin(0, 0);

    EXPECT_FALSE(m_pList->SetTopIndex(10) || m_pList->SetTopIndex(-1));
    EXPECT_TRUE(m_pList->SetTopIndex(8));
    EXPECT_EQ(Lines({"text 110,110 'row 8' FF00FF00", "text 110,124 'row 9' FF00FF00"}), Draws());
    BOOL bMiss = 0;
    EXPECT_EQ(-1, m_pList->HitTest({kRowX, RowY(2)}, &bMiss));
    EXPECT_TRUE(bMiss);
    EXPECT_EQ(9, m_pList->HitTest({kRowX, RowY(1)}, &bMiss));
    EXPECT_FALSE(bMiss);
    Do("c0 c2"); // a press below the last row clears the selection and tells nobody
    EXPECT_EQ(-1, m_pList->GetCurSel());
    EXPECT_EQ(Lines({"parent 1", "owner 336 20,8"}), Codes());

    m_pList->SetItemTip(1, "tip");
    m_pList->SetHoverAni("Bar", TRUE);
    m_pList->SetTopIndex(9);
    for (int i = 0; i < 5; ++i)
        m_pList->DeleteString(0);
    Do("c0");
    EXPECT_EQ(Lines{}, Codes());
    EXPECT_EQ(Lines{}, Draws());

    m_pList->SetTopIndex(0);
    for (int nHeight : {0, -14})
    {
        m_pList->SetItemHeight(nHeight);
        m_harness.MouseMove(kRowX, RowY(1));
        Do("c1 d1 u1");
        Draws();
        EXPECT_EQ(-1, m_pList->GetCurSel()) << nHeight;
    }
}

// The selection as the parent and owner hear of it, by style. Style 2 presses on one row select
// and deselect in turn; a row change (here the refill of each case) starts afresh. A second press
// without a release and a release outside the list end the list's hold on the mouse.
TEST_F(ListScene, EachStyleSendsItsCodesInOrderForPressesDoubleClicksAndRightPresses)
{
    const std::tuple<int, const char*, Lines> cases[] = {
        // A double click: press, release, second press, release.
        {1, "c1 d1 u1", {"parent 1", "owner 336 20,1", "owner 336 1,1", "parent 2"}},
        {2, "c1 d1 u1", {"parent 1", "owner 389 0,1", "owner 389 0,1", "parent 2"}},
        {4, "c1 d1 u1", {"parent 1", "owner 389 0,1", "owner 273 2,1"}},
        {3, "c1 d1 u1 r1", {"parent 1", "parent 2"}},
        // Style 4 only counts presses on rows; elsewhere the parent hears of the double click.
        {4, "c3 d3", {"parent 2"}},
        {4, "c1 d3", {"parent 1", "owner 389 0,1", "parent 2"}},
        // A right press selects nothing and needs a selection.
        {1, "r1", {}},
        {1, "c2 r0", {"parent 1", "owner 336 20,2", "owner 1124 20,2"}},
        {2, "c2 r2", {"parent 1", "owner 389 0,2", "owner 1124 20,2"}},
        {4, "c2 r2", {"parent 1", "owner 389 0,2"}},
        {2, "c2 c2 c2", {"parent 1", "owner 389 0,2", "owner 389 -1,-1", "owner 389 0,2"}},
        {2, "c2 c2", {"parent 1", "owner 389 0,2", "owner 389 -1,-1"}},
        {1, "p0 p2 o x", {"parent 1", "owner 336 20,0", "parent 1", "owner 336 20,2"}},
    };
    for (const auto& [nStyle, pszSteps, codes] : cases)
    {
        SCOPED_TRACE("style " + std::to_string(nStyle) + " " + pszSteps);
        m_pList->ResetContent();
        Fill(3);
        SetStyle(nStyle);
        Codes();
        Do(pszSteps);
        EXPECT_EQ(codes, Codes());
        EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    }
}

// Another list's second press finds the toggle set by the last press on this one.
TEST_F(ListScene, StyleTwoListsShareOneToggle)
{
    SetStyle(QZ_LIST_STYLE_TOGGLE);
    Fill(5);
    Do("c3 c3");
    AddList(30, 100, QZ_LIST_STYLE_TOGGLE)->AddString("a"); // rows from y 200
    Codes();
    m_harness.Click(kRowX, 205);
    m_harness.Click(kRowX, 205);
    EXPECT_EQ(Lines({"parent 1", "owner 389 0,0", "owner 389 0,0"}), Codes());
}

// The mouse-over bar is stretched to the marked row's back; with an icon, a press on the hovered
// row's 32 x 32 square (right edge included) sends its own code.
TEST_F(ListScene, AFrameDrawsTheRowsTheSelectionTheMarksAndTheMouseOverBarWithItsIconSquare)
{
    Fill(6);
    m_pList->SetItemColor(1, 0xFF0000FF);
    m_pList->SetItemTextOffset(4, 2);
    m_pList->SetSelBackColor(0xFF202020);
    m_pList->SetDrawBacking(TRUE);
    m_pList->SetTopIndex(1);
    Do("c1"); // row 2
    m_pList->SetMarkIndex(3);
    m_pList->SetMarkBackAni("MarkBack");
    m_pList->SetMarkFrontAni("MarkFront", 5, -1);
    m_pList->SetHoverAni("Bar", TRUE);
    m_pList->SetIconOffset(2, 1);
    m_harness.MouseMove(kRowX, RowY(3)); // row 4
    EXPECT_EQ(Lines({"fill 110,110,237,166 #FF000000", "text 114,112 'row 1' FF0000FF",
                     "text 114,126 'row 2' FF00FF00", "back.png 0,0,90,10 at 110,140 90x10",
                     "front.png 0,0,8,8 at 115,139 8x8", "text 114,140 'row 3' FF00FF00",
                     "text 114,154 'row 4' FF00FF00", "fill 110,124,220,138 #FF202020",
                     "text 114,124 'row 2' FFFF00FF", "bar.png 0,0,60,14 at 110,152 90x14",
                     "text 114,154 'row 4' FF00FF00"}),
              Draws());
    RECT rc = {};
    m_pList->GetIconRect(&rc);
    EXPECT_EQ((RECT{112, 153, 144, 185}), rc);
    Codes();
    m_harness.Click(144, 159);
    m_harness.Click(145, 159);
    EXPECT_EQ(Lines({"parent 1", "owner 331 20,4", "owner 336 20,4"}), Codes());
}

TEST_F(ListScene, StyleTwoDrawsBlinkingRowsRedForHalfASecondAfterTheirStamp)
{
    SetStyle(QZ_LIST_STYLE_TOGGLE);
    m_pList->SetItemTextOffset(4, 2); // style 2 draws at the row top all the same
    m_pList->AddString("row");
    const DWORD dwNow = m_harness.Now();
    const std::tuple<BOOL, DWORD, DWORD> cases[] = {
        // blink, stamp, colour (the text routine draws alpha 0 opaque)
        {FALSE, dwNow - 1, kItemColor},  {TRUE, 0, 0xFFFFFFFF},
        {TRUE, dwNow, 0xFFFFFFFF},       {TRUE, dwNow - 1, 0xFFFF0000},
        {TRUE, dwNow - 500, 0xFFFF0000}, {TRUE, dwNow - 501, 0xFFFFFFFF},
        {TRUE, dwNow + 1000, 0xFFFFFFFF}};
    for (const auto& [bBlink, dwStamp, dwColor] : cases)
    {
        m_harness.SetTime(dwNow);
        m_pList->SetItemBlink(0, bBlink);
        m_pList->SetItemTime(0, dwStamp);
        char sz[48];
        std::snprintf(sz, sizeof(sz), "text 114,110 'row' %08X", static_cast<unsigned>(dwColor));
        EXPECT_EQ(Lines{sz}, Draws()) << bBlink << " " << dwNow - dwStamp;
    }
}

TEST_F(ListScene, ColumnFieldsSitTenFontSizesApartAShortRowDrawsNothingANullTextIsReported)
{
    const std::tuple<int, const char*, Lines> cases[] = {
        {2, "a b c", {"110 a", "230 b"}},
        {3, " a  b\tc", {"110 a", "230 b", "350 c"}},
        {4, "a b c d", {"110 a", "230 b", "350 c", "470 d"}},
        {2, "fifteen_bytes__ x", {"110 fifteen_bytes__", "230 x"}},
        {7, "a b", {"110 a b"}}, // anything outside 1 to 4 is one column
        {2, "alone", {}},
        {4, "a b c", {}},
        {2, "sixteen_bytes___ x", {}}};
    for (const auto& [nColumns, pszText, expected] : cases)
    {
        m_pList->ResetContent();
        m_pList->SetColumns(nColumns);
        m_pList->AddString(pszText);
        Draws();
        Lines fields;
        for (const QzTest::DrawCall& c : Texts())
            fields.push_back(std::to_string(c.x1) + " " + c.text);
        EXPECT_EQ(expected, fields) << nColumns << " " << pszText;
    }
    m_pList->DrawColumns(0, 0, 0, nullptr);
    ASSERT_EQ(1u, m_harness.Log().Asserts().size());
    EXPECT_EQ("sscanf_s source NULL !!!", m_harness.Log().Asserts()[0].expression);
    EXPECT_EQ("QzList", m_harness.Log().Asserts()[0].source);
}

// The nine frames of a tip w x h at (118, y0) with 20 x 20 corners, each from (0, 0, 20, 20).
Lines TipFrames(int y0, int w, int h)
{
    const int xs[] = {118, 138, 98 + w}, ws[] = {20, w - 40, 20};
    const int ys[] = {y0, y0 + 20, y0 + h - 20}, hs[] = {20, h - 40, 20};
    Lines lines;
    for (int i = 0; i < 9; ++i)
        lines.push_back("tip" + std::to_string(i) + ".png 0,0,20,20 at " +
                        std::to_string(xs[i % 3]) + "," + std::to_string(ys[i / 3]) + " " +
                        std::to_string(ws[i % 3]) + "x" + std::to_string(hs[i / 3]));
    return lines;
}

TEST_F(ListScene, ARowTipIsANinePartFrameSizedOnTheCellAtLeastTwoCornersHigh)
{
    Fill(4);
    m_pList->SetItemTip(0, "");
    m_pList->SetItemTip(1, "0123456789\\bab");
    m_pList->SetItemTip(2, "abcdefgh");
    m_pList->SetItemTip(3, "abcdefghi\\bb\\bc");
    // Corners of 32 - 12 = 20; the frame at x 118 and the row top, 20 lower below the row.
    const std::tuple<int, bool, int, int, int, Lines> cases[] = {
        // row, below, y, width, height (0: no tip), the lines
        {0, false, 0, 0, 0, {}},
        {1, false, 124, 68, 48, {"128,137 '0123456789'", "128,149 'ab'"}},
        {2, true, 158, 56, 42, {"128,171 'abcdefgh'"}}, // 32 high, raised to 2 x 20 + 2
        {3, false, 152, 62, 64, {"128,165 'abcdefghi'", "128,177 'b'", "128,193 'c'"}}};
    for (const auto& [nRow, bBelow, y0, w, h, texts] : cases)
    {
        m_pList->SetTipBelow(bBelow);
        m_harness.MouseMove(kRowX, RowY(nRow));
        Lines expected = h ? TipFrames(y0, w, h) : Lines{};
        for (const std::string& text : texts)
            expected.push_back("text " + text + " FFFFFFFF");
        Lines tip;
        for (const std::string& line : Draws())
            if (line.rfind("tip", 0) == 0 || line.find("' FFFFFFFF") != std::string::npos)
                tip.push_back(line);
        EXPECT_EQ(expected, tip) << nRow;
    }
}

TEST_F(ListScene, FitTextKeepsTheLongestPrefixNarrowerThanTheLimitAndWholeCharacters)
{
    // The cell is 6 wide for a byte character and 12 for a two-byte one.
    const std::tuple<const char*, int, int, int> cases[] = {{"abcdef", 10, 100, 6},
                                                            {"abcdef", 4, 100, 4},
                                                            {"abcdef", 10, 18, 2},
                                                            {"ab\xD6\xD0\xCE\xC4", 10, 25, 4},
                                                            {"ab\xD6\xD0\xCE\xC4", 3, 100, 2},
                                                            {"\xD6\xD0\xCE\xC4", 10, 12, 0},
                                                            {"abc", 10, 0, 0},
                                                            {"abc", -1, 100, 0}};
    for (const auto& [pszText, nMaxBytes, nMaxPixels, nLength] : cases)
    {
        char sz[16];
        std::snprintf(sz, sizeof(sz), "%s", pszText);
        EXPECT_EQ(nLength, m_pList->FitText(sz, nMaxBytes, nMaxPixels)) << pszText;
        EXPECT_EQ(std::string(pszText, nLength), sz) << pszText;
    }
    EXPECT_EQ(0, m_pList->FitText(nullptr, 10, 100));
}

} // namespace

} // namespace ControlTest
