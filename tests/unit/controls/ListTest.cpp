// The list: creation from its record with its scroll bar, rows and the kept
// selection, scrolling by wheel, scroll buttons and slider (also past 255
// rows), the parent and owner codes of each style in the order they are
// sent, and what a frame draws: rows, columns, selection, marks, the
// mouse-over bar and the row tip's nine-part frame.
#include "ControlScene.h"

#include "controls/QzList.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "platform/services/QzAniStore.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <initializer_list>

namespace ControlTest
{

namespace
{

using Lines = std::vector<std::string>;

constexpr DWORD kListId = 20;
constexpr DWORD kItemColor = 0xFF00FF00;
constexpr DWORD kSelTextColor = 0xFFFF00FF;

// Row r of the view (4 rows of 14 from y 110) under the mouse.
constexpr int kRowX = 150;
int RowY(int nRow)
{
    return 117 + 14 * nRow;
}

// The owner of the list: what it gets, merged in order with the codes the
// parent got meanwhile.
struct Owner : CQzStatic
{
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        Flush();
        char sz[64];
        std::snprintf(sz, sizeof(sz), "owner %u %lld,%lld", message, static_cast<long long>(wParam),
                      static_cast<long long>(lParam));
        log.emplace_back(sz);
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

// A list that writes down the list-box messages it sends itself.
struct SpyList : CQzList
{
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const LRESULT nResult = CQzList::WindowProc(message, wParam, lParam);
        if (message >= QZ_LB_ADDSTRING && message <= QZ_LB_RESETCONTENT)
        {
            const char* pszText = reinterpret_cast<const char*>(lParam);
            seen.push_back(std::to_string(message) + " " + std::to_string(wParam) + " " +
                           (pszText ? pszText : "-") + " " + std::to_string(GetCountedRows()));
        }
        return nResult;
    }
    Lines seen;
};

class ListScene : public ControlScene
{
protected:
    // Up button 21 at (220, 110), slider 23 at (220, 130)-(237, 240) with a
    // 100-pixel track, down button 22 at (220, 250); list 20 at (110, 110),
    // 127 x 56 in its record: 4 rows of 14 (cell 6 x 12) and 110 wide once
    // the scroll strip is taken. Style 1, owned by m_owner.
    ListScene()
    {
        m_root.Write("ani/Control.ani",
                     "[Look]\nFrameAmount=1\nFrame0=img/f0.png\n"
                     "[Bar]\nFrameAmount=1\nFrame0=img/bar.png\n"
                     "[MarkBack]\nFrameAmount=1\nFrame0=img/back.png\n"
                     "[MarkFront]\nFrameAmount=1\nFrame0=img/front.png\n"
                     "[Pack_OrdinaryItemTipsBG]\nFrameAmount=9\nFrame0=img/tip0.png\n"
                     "Frame1=img/tip1.png\nFrame2=img/tip2.png\nFrame3=img/tip3.png\n"
                     "Frame4=img/tip4.png\nFrame5=img/tip5.png\nFrame6=img/tip6.png\n"
                     "Frame7=img/tip7.png\nFrame8=img/tip8.png\n");
        QzPlatform::GetAniStore()->Reload();
        m_harness.Device().DefineTexture("img/bar.png", 60, 14);
        m_harness.Device().DefineTexture("img/back.png", 90, 10);
        m_harness.Device().DefineTexture("img/front.png", 8, 8);
        for (int i = 0; i < 9; ++i)
            m_harness.Device().DefineTexture("img/tip" + std::to_string(i) + ".png", 32, 32);
        CQzList::ResetClickToggle();
        m_owner.pNotices = &m_dialog.notices;

        m_pUp = AddCtrl<CQzScrollButton>(21, {120, 10, 137, 27});
        m_pSlider = AddCtrl<CQzSlider>(23, {120, 30, 137, 140}, {{"SliderBtnLen", "10"}});
        m_pSlider->PreSetParam(100, QZ_SLIDER_VERT);
        m_pDown = AddCtrl<CQzScrollButton>(22, {120, 150, 137, 167});
        m_pList = AddList(kListId, 10, {}, true);
        Open();
    }
    // A list of the dialog, 127 x 56 at (10, y) in its record, set up (with
    // the scroll bar or none) and created at once when the dialog is open.
    template <typename T = CQzList>
    T* AddList(DWORD nId, int y, Extras extras = {}, bool bScrollBar = false)
    {
        m_pRecord = AddRecord(kDialogId, nId, {10, y, 137, y + 56}, extras);
        m_pRecord->SetAniSection("Look");
        m_pRecord->AddFlags(WNDINFO_FLAG_ANISECTION);
        m_ctrls.push_back(std::make_unique<T>());
        T* pList = static_cast<T*>(m_ctrls.back().get());
        if (bScrollBar)
            pList->PreSetParam(QZ_LIST_STYLE_NOTIFY, m_pUp, m_pDown, QZ_SCROLL_LINEUP,
                               QZ_SCROLL_LINEDOWN, m_pSlider);
        else
            pList->PreSetParam(QZ_LIST_STYLE_NOTIFY, nullptr, nullptr, 0, 0, nullptr);
        pList->SetOwner(&m_owner);
        pList->SetItemColors(kItemColor, kSelTextColor);
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
    // One frame: pictures other than the controls' "Look" as "name
    // l,t,r,b at x,y wxh", texts as "text x,y 'text' colour", fills
    // traced.
    Lines Draws()
    {
        m_harness.Device().Clear();
        m_harness.Frame([this] { m_pMgr->Show(); });
        Lines lines;
        for (const QzTest::DrawCall& c : m_harness.Device().Calls())
        {
            char sz[160];
            if (c.kind == QzTest::DrawKind::Texture)
            {
                if (c.texturePath == "img/f0.png")
                    continue;
                std::snprintf(sz, sizeof(sz), "%s %d,%d,%d,%d at %d,%d %dx%d",
                              c.texturePath.substr(4).c_str(), c.source.left, c.source.top,
                              c.source.right, c.source.bottom, c.x1, c.y1, c.width, c.height);
            }
            else if (c.kind == QzTest::DrawKind::Text)
            {
                std::snprintf(sz, sizeof(sz), "text %d,%d '%s' %08X", c.x1, c.y1, c.text.c_str(),
                              c.colour);
            }
            else
            {
                std::snprintf(sz, sizeof(sz), "%s", QzTest::RecordingDevice::TraceLine(c).c_str());
            }
            lines.emplace_back(sz);
        }
        return lines;
    }
    // The x of every text the frame drew.
    std::vector<int> TextXs()
    {
        std::vector<int> xs;
        for (const std::string& line : Draws())
        {
            int x = 0;
            if (std::sscanf(line.c_str(), "text %d,", &x) == 1)
                xs.push_back(x);
        }
        return xs;
    }
    // Mouse steps on rows of the view: "click r", "dbl r" (a double click's
    // second press), "up r", "rdown r", one after the other.
    void Do(std::initializer_list<std::pair<const char*, int>> steps)
    {
        for (const auto& [pszStep, nRow] : steps)
        {
            const std::string step = pszStep;
            if (step == "click")
                m_harness.Click(kRowX, RowY(nRow));
            else if (step == "dbl")
                m_harness.LButtonDblClk(kRowX, RowY(nRow));
            else if (step == "up")
                m_harness.LButtonUp(kRowX, RowY(nRow));
            else if (step == "rdown")
                m_harness.RButtonDown(kRowX, RowY(nRow));
        }
    }
    void Wheel(int nDelta) { m_harness.Wheel(kRowX, RowY(0), nDelta); }
    // Holds a scroll button over frames, the clock past several repeats.
    void Hold(int x, int y, int nFrames)
    {
        m_harness.MouseMove(x, y);
        m_harness.LButtonDown(x, y);
        for (int i = 0; i < nFrames; ++i)
        {
            m_harness.Advance(250);
            Frame();
        }
        m_harness.LButtonUp(x, y);
    }

    Owner m_owner;
    CQzScrollButton* m_pUp = nullptr;
    CQzScrollButton* m_pDown = nullptr;
    CQzSlider* m_pSlider = nullptr;
    CQzList* m_pList = nullptr;
};

// ---------------------------------------------------------------------------------------------
// Creation

TEST_F(ListScene, CreationTakesTheScrollStripSizesRowsByTheCellAndBindsTheScrollBar)
{
    const RECT rc = m_pList->GetWindowRect();
    EXPECT_EQ((RECT{110, 110, 220, 166}), rc);
    EXPECT_EQ(4, m_pList->GetVisibleRows());
    EXPECT_EQ(14, m_pList->GetItemHeight());
    EXPECT_FALSE(m_pSlider->IsWindowVisible()); // no rows: nothing to scroll

    // "ItemHeight" sets the drawn height only; rows still fit by the cell.
    // A height set before creation wins over the key.
    auto* pKeyed = AddList(31, 100, {{"ItemHeight", "20"}, {"SelBackColor", "80ff0000"}});
    auto* pPreset = AddCtrl<CQzList>(32, {10, 170, 137, 226}, {{"ItemHeight", "20"}});
    pPreset->SetItemHeight(9); // created without PreSetParam: reported, not set up
    pPreset->PreSetParam(1, nullptr, nullptr, 0, 0, nullptr);
    pPreset->LoadWndInfo();
    EXPECT_EQ(20, pKeyed->GetItemHeight());
    EXPECT_EQ(4, pKeyed->GetVisibleRows());
    EXPECT_EQ(0x80FF0000u, pKeyed->GetSelBackColor());
    EXPECT_EQ(9, pPreset->GetItemHeight());

    ASSERT_EQ(1u, m_harness.Log().LogMsgs().size());
    const std::string& msg = m_harness.Log().LogMsgs()[0];
    EXPECT_EQ(0u, msg.rfind("ASSERT(m_bPreSetParam) in ", 0)) << msg;
    EXPECT_NE(std::string::npos, msg.find(" line of QzList")) << msg;
}

// ---------------------------------------------------------------------------------------------
// Rows

TEST_F(ListScene, TheSelectionFollowsItsRowThroughInsertsAndDeletes)
{
    Fill(3);
    Do({{"click", 1}});
    EXPECT_EQ(1, m_pList->GetCurSel());
    const std::tuple<const char*, int, int, int> changes[] = {
        // change, index, result, selection after
        {"insert", 0, 0, 2}, {"insert", 3, 3, 2},  {"insert", 5, 5, 2},   {"delete", 0, 0, 1},
        {"delete", 4, 4, 1}, {"delete", 1, 1, -1}, {"insert", 6, -1, -1}, {"delete", 9, -1, -1}};
    for (const auto& [pszChange, nIndex, nResult, nSel] : changes)
    {
        const bool bInsert = std::strcmp(pszChange, "insert") == 0;
        EXPECT_EQ(nResult,
                  bInsert ? m_pList->InsertString(nIndex, "new") : m_pList->DeleteString(nIndex))
            << pszChange << " " << nIndex;
        EXPECT_EQ(nSel, m_pList->GetCurSel()) << pszChange << " " << nIndex;
        for (int i = 0; i < m_pList->GetCount(); ++i)
            EXPECT_EQ(i == nSel ? 1 : 0, m_pList->GetSel(i)) << pszChange << " " << nIndex;
    }
    // Left: "row 0", "new", "row 2".
    EXPECT_EQ(2, m_pList->FindString(0, "row 2"));
    EXPECT_EQ(-1, m_pList->FindString(3, "row 2"));
    EXPECT_EQ(-1, m_pList->FindString(0, "row"));
    EXPECT_EQ(1, m_pList->FindString(-5, "new"));
}

TEST_F(ListScene, IndexesOutsideTheRowsAndNullTextsGiveMinusOneOrZero)
{
    Fill(2);
    EXPECT_EQ(-1, m_pList->AddString(nullptr));
    EXPECT_EQ(-1, m_pList->InsertString(0, nullptr));
    EXPECT_EQ(-1, m_pList->InsertString(-1, "x"));
    EXPECT_EQ(-1, m_pList->FindString(0, nullptr));
    char szText[16] = "";
    for (int nIndex : {-1, 2, INT_MAX})
    {
        EXPECT_EQ(0xFFFFFFFFu, m_pList->GetItemData(nIndex)) << nIndex;
        EXPECT_EQ(0xFFFFFFFFu, m_pList->GetItemColor(nIndex)) << nIndex;
        EXPECT_EQ(0xFFFFFFFFu, m_pList->GetItemTime(nIndex)) << nIndex;
        EXPECT_EQ(-1, m_pList->GetItemBlink(nIndex)) << nIndex;
        EXPECT_EQ(-1, m_pList->GetSel(nIndex)) << nIndex;
        EXPECT_EQ(-1, m_pList->GetTextLen(nIndex)) << nIndex;
        EXPECT_EQ(-1, m_pList->GetText(nIndex, szText)) << nIndex;
        EXPECT_EQ(0, m_pList->SetItemData(nIndex, 1) + m_pList->SetItemColor(nIndex, 1) +
                         m_pList->SetItemTime(nIndex, 1) + m_pList->SetItemBlink(nIndex, 1))
            << nIndex;
        EXPECT_FALSE(m_pList->GetItemRect(nIndex, nullptr)) << nIndex;
    }
    EXPECT_EQ(-1, m_pList->GetText(0, nullptr));
    EXPECT_EQ(0, m_pList->SetItemTip(-1, "x"));
    EXPECT_EQ(0, m_pList->SetItemTip(CQzList::kMaxItemTipIndex + 1, "x"));
    EXPECT_EQ(0, m_pList->SetItemTip(0, nullptr));

    // A row keeps its colour unless it has none; the list's colour stands in.
    m_pList->SetItemColor(0, 0xFF123456);
    EXPECT_EQ(0xFF123456u, m_pList->GetItemColor(0));
    EXPECT_EQ(kItemColor, m_pList->GetItemColor(1));
}

TEST_F(ListScene, ARowKeepsAtMost1023BytesNeverHalfACharacter)
{
    const std::pair<std::string, int> cases[] = {
        {std::string(1023, 'a'), 1023},
        {std::string(1030, 'a'), 1023},
        {std::string(1021, 'a') + "\xD6\xD0", 1023},
        {std::string(1022, 'a') + "\xD6\xD0", 1022},
    };
    for (const auto& [text, nLength] : cases)
    {
        const int nIndex = m_pList->AddString(text.c_str());
        EXPECT_EQ(nLength, m_pList->GetTextLen(nIndex)) << text.size();
        std::string copy(1100, '\x7F');
        EXPECT_EQ(nIndex, m_pList->GetText(nIndex, copy.data()));
        EXPECT_EQ(text.substr(0, nLength), copy.c_str());
    }
}

TEST_F(ListScene, EveryRowChangeSendsItsListBoxMessageWhichRecountsAndShowsTheSlider)
{
    auto* pSpy = AddList<SpyList>(30, 100); // its creation empties it
    pSpy->AddString("a");
    pSpy->InsertString(0, "b");
    pSpy->DeleteString(1);
    pSpy->DeleteString(5); // no such row: nothing
    pSpy->ResetContent();
    EXPECT_EQ(Lines({"388 0 - 0", "384 0 a 1", "385 0 b 2", "386 1 - 1", "388 0 - 0"}), pSpy->seen);

    // The slider is there only while there are more rows than fit.
    const std::tuple<const char*, int, bool> steps[] = {
        {"add", 4, false}, {"add", 5, true}, {"delete", 4, false}, {"add", 300, true}};
    for (const auto& [pszStep, nCount, bScroll] : steps)
    {
        while (m_pList->GetCount() < nCount)
            m_pList->AddString("x");
        while (m_pList->GetCount() > nCount)
            m_pList->DeleteString(0);
        EXPECT_EQ(bScroll, m_pList->IsNeedScroll()) << nCount;
        EXPECT_EQ(bScroll, m_pSlider->IsWindowVisible() != 0) << nCount;
        EXPECT_EQ(bScroll ? 4 : nCount, m_pList->GetRowsDrawn()) << nCount;
    }
    EXPECT_EQ(300 & 0xFF, m_pList->GetCountedRows());
}

// ---------------------------------------------------------------------------------------------
// Scrolling

TEST_F(ListScene, TheWheelMovesOneRowWithinTheRowsThatCanScrollAndKeepsTheSliderInStep)
{
    Fill(10);                                       // the view can start at rows 0..6
    const std::tuple<int, int, int, int> cases[] = {// top, wheel delta, top after, slider value
                                                    {6, -120, 6, 100},
                                                    {6, 120, 5, 83},
                                                    {0, 120, 0, 0},
                                                    {0, -120, 1, 16},
                                                    {3, -480, 4, 66}};
    for (const auto& [nTop, nDelta, nAfter, nValue] : cases)
    {
        m_pList->SetTopIndex(nTop);
        Wheel(nDelta);
        EXPECT_EQ(nAfter, m_pList->GetTopIndex()) << nTop << " " << nDelta;
        EXPECT_EQ(nValue, m_pSlider->GetValue()) << nTop << " " << nDelta;
    }
    m_pList->SetTopIndex(6);
    Wheel(120);
    Do({{"click", 0}});
    EXPECT_EQ(5, m_pList->GetCurSel());
    EXPECT_EQ(Lines({"parent 1", "owner 336 20,5"}), Codes());
}

TEST_F(ListScene, AScrollButtonMovesOneRowOnReleaseHoweverLongItIsHeld)
{
    Fill(10);
    const POINT up = {228, 118};
    const POINT down = {228, 258};
    const std::tuple<POINT, int, int, int> cases[] = {
        // button, top, frames held (a repeat each), top after
        {down, 0, 8, 1},
        {down, 3, 0, 4},
        {down, 6, 8, 6},
        {up, 6, 8, 5},
        {up, 0, 8, 0}};
    for (const auto& [button, nTop, nFrames, nAfter] : cases)
    {
        m_pList->SetTopIndex(nTop);
        Hold(button.x, button.y, nFrames);
        EXPECT_EQ(nAfter, m_pList->GetTopIndex()) << button.y << " " << nTop;
        EXPECT_EQ(nAfter * 100 / 6, m_pSlider->GetValue()) << button.y << " " << nTop;
    }
}

TEST_F(ListScene, AListOfMoreThan255RowsScrollsToItsEndAndDrawsItsLastRows)
{
    Fill(300);
    EXPECT_EQ(75, m_pList->GetPageCount());
    // The thumb dragged from the top of its track to past its end.
    m_harness.MouseMove(228, 135);
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
    Wheel(120);
    EXPECT_EQ(295, m_pList->GetTopIndex());
    EXPECT_EQ(99, m_pSlider->GetValue());
    Do({{"click", 3}});
    EXPECT_EQ(298, m_pList->GetCurSel());
}

TEST_F(ListScene, ATopIndexNearTheEndDrawsAndHitsOnlyTheRowsThatExist)
{
    Fill(10);
    EXPECT_FALSE(m_pList->SetTopIndex(10));
    EXPECT_FALSE(m_pList->SetTopIndex(-1));
    EXPECT_TRUE(m_pList->SetTopIndex(8));
    EXPECT_EQ(Lines({"text 110,110 'row 8' FF00FF00", "text 110,124 'row 9' FF00FF00"}), Draws());
    BOOL bMiss = 0;
    EXPECT_EQ(-1, m_pList->HitTest({kRowX, RowY(2)}, &bMiss));
    EXPECT_TRUE(bMiss);
    EXPECT_EQ(9, m_pList->HitTest({kRowX, RowY(1)}, &bMiss));
    EXPECT_FALSE(bMiss);
    EXPECT_EQ(9, m_pList->HitTest({kRowX, RowY(1)}, nullptr));

    // A press below the last row clears the selection and tells nobody.
    Do({{"click", 0}, {"click", 2}});
    EXPECT_EQ(-1, m_pList->GetCurSel());
    EXPECT_EQ(Lines({"parent 1", "owner 336 20,8"}), Codes());
}

TEST_F(ListScene, PagesCountWholeViewsAndTheCurrentOneRoundsUp)
{
    const std::tuple<int, int, int, int> cases[] = {// rows, top, pages, page
                                                    {0, 0, 1, 1},  {4, 0, 1, 1},  {5, 0, 2, 1},
                                                    {10, 4, 3, 2}, {10, 5, 3, 3}, {10, 6, 3, 3}};
    for (const auto& [nRows, nTop, nPages, nPage] : cases)
    {
        m_pList->ResetContent();
        Fill(nRows);
        m_pList->SetTopIndex(nTop);
        Frame();
        EXPECT_EQ(nPages, m_pList->GetPageCount()) << nRows << " " << nTop;
        EXPECT_EQ(nPage, m_pList->GetCurPage()) << nRows << " " << nTop;
    }
}

// ---------------------------------------------------------------------------------------------
// Input sequences and the codes they send

TEST_F(ListScene, EachStyleSendsItsCodesInOrder)
{
    const struct
    {
        int nStyle;
        std::initializer_list<std::pair<const char*, int>> steps;
        Lines codes;
    } cases[] = {
        // A double click: press, release, second press, release.
        {1,
         {{"click", 1}, {"dbl", 1}, {"up", 1}},
         {"parent 1", "owner 336 20,1", "owner 336 1,1", "parent 2"}},
        {2,
         {{"click", 1}, {"dbl", 1}, {"up", 1}},
         {"parent 1", "owner 389 0,1", "owner 389 0,1", "parent 2"}},
        {4, {{"click", 1}, {"dbl", 1}, {"up", 1}}, {"parent 1", "owner 389 0,1", "owner 273 2,1"}},
        {3, {{"click", 1}, {"dbl", 1}, {"up", 1}, {"rdown", 1}}, {"parent 1", "parent 2"}},
        // Style 4 only counts presses on rows; elsewhere the parent still
        // hears of the double click.
        {4, {{"click", 3}, {"dbl", 3}}, {"parent 2"}},
        {4, {{"click", 1}, {"dbl", 3}}, {"parent 1", "owner 389 0,1", "parent 2"}},
        // A right press selects nothing and needs a selection.
        {1, {{"rdown", 1}}, {}},
        {1, {{"click", 2}, {"rdown", 0}}, {"parent 1", "owner 336 20,2", "owner 1124 20,2"}},
        {2, {{"click", 2}, {"rdown", 2}}, {"parent 1", "owner 389 0,2", "owner 1124 20,2"}},
        {4, {{"click", 2}, {"rdown", 2}}, {"parent 1", "owner 389 0,2"}},
    };
    for (const auto& c : cases)
    {
        m_pList->ResetContent();
        Fill(3);
        SetStyle(c.nStyle);
        Codes();
        Do(c.steps);
        EXPECT_EQ(c.codes, Codes()) << "style " << c.nStyle << " case " << (&c - cases);
    }
}

TEST_F(ListScene, StyleTwoPressesOnOneRowToggleAndARowChangeStartsAfresh)
{
    SetStyle(QZ_LIST_STYLE_TOGGLE);
    Fill(5);
    Do({{"click", 3}, {"click", 3}, {"click", 3}});
    EXPECT_EQ(Lines({"parent 1", "owner 389 0,3", "owner 389 -1,-1", "owner 389 0,3"}), Codes());
    m_pList->AddString("more");
    Do({{"click", 3}, {"click", 3}});
    EXPECT_EQ(Lines({"owner 389 0,3", "owner 389 -1,-1"}), Codes());

    // The toggle is one for all lists: another list's second press finds it
    // set by the last press on this one.
    auto* pOther = AddList(30, 100); // rows from y 200
    pOther->PreSetParam(QZ_LIST_STYLE_TOGGLE, nullptr, nullptr, 0, 0, nullptr);
    pOther->AddString("a");
    m_harness.Click(kRowX, 205);
    m_harness.Click(kRowX, 205);
    EXPECT_EQ(Lines({"parent 1", "owner 389 0,0", "owner 389 0,0"}), Codes());
}

TEST_F(ListScene, ASecondPressWithoutReleaseAndAReleaseOutsideEndTheCapture)
{
    Fill(10);
    m_harness.LButtonDown(kRowX, RowY(0));
    EXPECT_EQ(m_pList, m_pMgr->GetCapture());
    m_harness.LButtonDown(kRowX, RowY(2));
    m_harness.LButtonUp(400, 380);
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    EXPECT_EQ(2, m_pList->GetCurSel());
    EXPECT_EQ(Lines({"parent 1", "owner 336 20,0", "parent 1", "owner 336 20,2"}), Codes());
    m_harness.Click(400, 380); // no longer the list's
    EXPECT_EQ(Lines{}, Codes());
    EXPECT_EQ(2, m_pList->GetCurSel());
}

TEST_F(ListScene, StyleOneTellsAPressOnTheHoveredRowsIconSquareApart)
{
    Fill(4);
    m_pList->SetHoverAni("Bar", TRUE);
    m_pList->SetIconOffset(2, 1);
    m_harness.MouseMove(kRowX, RowY(1));
    Frame();
    RECT rc = {};
    m_pList->GetIconRect(&rc);
    EXPECT_EQ((RECT{112, 125, 144, 157}), rc);
    m_harness.Click(144, 131); // the square takes its right edge
    m_harness.Click(145, 131);
    EXPECT_EQ(Lines({"parent 1", "owner 331 20,1", "owner 336 20,1"}), Codes());
}

// ---------------------------------------------------------------------------------------------
// Drawing

TEST_F(ListScene, AFrameDrawsTheRowsInViewTheSelectionTheMarksAndTheMouseOverBar)
{
    Fill(6);
    m_pList->SetItemColor(1, 0xFF0000FF);
    m_pList->SetItemTextOffset(4, 2);
    m_pList->SetSelBackColor(0xFF202020);
    m_pList->SetDrawBacking(TRUE);
    m_pList->SetTopIndex(1);
    Do({{"click", 1}}); // row 2
    m_pList->SetMarkIndex(3);
    m_pList->SetMarkBackAni("MarkBack");
    m_pList->SetMarkFrontAni("MarkFront", 5, -1);
    m_pList->SetHoverAni("Bar", FALSE);
    m_harness.MouseMove(kRowX, RowY(3)); // row 4
    EXPECT_EQ(Lines({"fill 110,110,237,166 #FF000000", "text 114,112 'row 1' FF0000FF",
                     "text 114,126 'row 2' FF00FF00", "back.png 0,0,90,10 at 110,140 90x10",
                     "front.png 0,0,8,8 at 115,139 8x8", "text 114,140 'row 3' FF00FF00",
                     "text 114,154 'row 4' FF00FF00", "fill 110,124,220,138 #FF202020",
                     "text 114,124 'row 2' FFFF00FF", "bar.png 0,0,60,14 at 110,152 90x14",
                     "text 114,154 'row 4' FF00FF00"}),
              Draws());
}

TEST_F(ListScene, StyleTwoDrawsBlinkingRowsRedForHalfASecondAfterTheirStamp)
{
    SetStyle(QZ_LIST_STYLE_TOGGLE);
    m_pList->SetItemTextOffset(4, 2); // style 2 draws at the row top all the same
    m_pList->AddString("row");
    const DWORD dwNow = m_harness.Now();
    const std::tuple<BOOL, DWORD, DWORD> cases[] = {
        // blink, stamp, colour (the text routine draws alpha 0 opaque)
        {FALSE, dwNow - 1, kItemColor},   {TRUE, 0, 0xFFFFFFFF},
        {TRUE, dwNow, 0xFFFFFFFF},        {TRUE, dwNow - 1, 0xFFFF0000},
        {TRUE, dwNow - 500, 0xFFFF0000},  {TRUE, dwNow - 501, 0xFFFFFFFF},
        {TRUE, dwNow + 1000, 0xFFFFFFFF},
    };
    for (const auto& [bBlink, dwStamp, dwColor] : cases)
    {
        m_harness.SetTime(dwNow);
        m_pList->SetItemBlink(0, bBlink);
        m_pList->SetItemTime(0, dwStamp);
        char sz[48];
        std::snprintf(sz, sizeof(sz), "text 114,110 'row' %08X", dwColor);
        EXPECT_EQ(Lines{sz}, Draws()) << bBlink << " " << dwNow - dwStamp;
    }
}

TEST_F(ListScene, ColumnFieldsSitTenFontSizesApartAndARowShortOfFieldsDrawsNothing)
{
    const std::tuple<int, const char*, Lines> cases[] = {
        {1, "a b c d e", {"110 a b c d e"}},
        {2, "a b c", {"110 a", "230 b"}},
        {3, " a  b\tc", {"110 a", "230 b", "350 c"}},
        {4, "a b c d", {"110 a", "230 b", "350 c", "470 d"}},
        {2, "alone", {}},
        {4, "a b c", {}},
        {2, "fifteen_bytes__ x", {"110 fifteen_bytes__", "230 x"}},
        {2, "sixteen_bytes___ x", {}},
        {7, "a b", {"110 a b"}},
    };
    for (const auto& [nColumns, pszText, expected] : cases)
    {
        m_pList->ResetContent();
        m_pList->SetColumns(nColumns);
        m_pList->AddString(pszText);
        Lines fields;
        for (const std::string& line : Draws())
        {
            int x = 0;
            char sz[32] = "";
            if (std::sscanf(line.c_str(), "text %d,%*d '%31[^']'", &x, sz) == 2)
                fields.push_back(std::to_string(x) + " " + sz);
        }
        EXPECT_EQ(expected, fields) << nColumns << " " << pszText;
    }
    m_pList->DrawColumns(0, 0, 0, nullptr);
    ASSERT_EQ(1u, m_harness.Log().Asserts().size());
    EXPECT_EQ("sscanf_s source NULL !!!", m_harness.Log().Asserts()[0].expression);
    EXPECT_EQ("QzList", m_harness.Log().Asserts()[0].source);
}

TEST_F(ListScene, ARowTipIsANinePartFrameSizedOnTheCellAtLeastTwoCornersHigh)
{
    Fill(4);
    m_pList->SetItemTip(0, "");
    m_pList->SetItemTip(1, "0123456789\\bab");
    m_pList->SetItemTip(2, "abcdefgh");
    m_pList->SetItemTip(3, "abcdefghi\\bb\\bc");
    // Corners of 32 - 12 = 20: frames at (x0, y0) = (118, row top [+ 20]).
    const std::tuple<int, bool, Lines> cases[] = {
        {0, false, {}},
        {1,
         false, // 68 x 48
         {"tip0 118,124 20x20", "tip1 138,124 28x20", "tip2 166,124 20x20", "tip3 118,144 20x8",
          "tip4 138,144 28x8", "tip5 166,144 20x8", "tip6 118,152 20x20", "tip7 138,152 28x20",
          "tip8 166,152 20x20", "text 128,137 '0123456789'", "text 128,149 'ab'"}},
        {2,
         true, // 56 x 32, raised to 2 x 20 + 2
         {"tip0 118,158 20x20", "tip1 138,158 16x20", "tip2 154,158 20x20", "tip3 118,178 20x2",
          "tip4 138,178 16x2", "tip5 154,178 20x2", "tip6 118,180 20x20", "tip7 138,180 16x20",
          "tip8 154,180 20x20", "text 128,171 'abcdefgh'"}},
        {3,
         false, // 62 x 64: lines 12 apart, then 16
         {"tip0 118,152 20x20", "tip1 138,152 22x20", "tip2 160,152 20x20", "tip3 118,172 20x24",
          "tip4 138,172 22x24", "tip5 160,172 20x24", "tip6 118,196 20x20", "tip7 138,196 22x20",
          "tip8 160,196 20x20", "text 128,165 'abcdefghi'", "text 128,177 'b'",
          "text 128,193 'c'"}},
    };
    for (const auto& [nRow, bBelow, expected] : cases)
    {
        m_pList->SetTipBelow(bBelow);
        m_harness.MouseMove(kRowX, RowY(nRow));
        Lines tip;
        for (const QzTest::DrawCall& c : (Draws(), m_harness.Device().Calls()))
        {
            char sz[64];
            if (c.kind == QzTest::DrawKind::Texture && c.texturePath.rfind("img/tip", 0) == 0)
            {
                EXPECT_EQ((QzPlatform::RectI{0, 0, 20, 20}), c.source);
                std::snprintf(sz, sizeof(sz), "%s %d,%d %dx%d", c.texturePath.substr(4, 4).c_str(),
                              c.x1, c.y1, c.width, c.height);
                tip.emplace_back(sz);
            }
            else if (c.kind == QzTest::DrawKind::Text && c.colour == 0xFFFFFFFF)
            {
                std::snprintf(sz, sizeof(sz), "text %d,%d '%s'", c.x1, c.y1, c.text.c_str());
                tip.emplace_back(sz);
            }
        }
        EXPECT_EQ(expected, tip) << nRow;
    }
}

// ---------------------------------------------------------------------------------------------
// Edge values

TEST_F(ListScene, RowRectanglesTakeTwiceTheMarginAndFollowTheTopIndex)
{
    Fill(6);
    m_pList->SetItemMargin(3, 2);
    m_pList->SetTopIndex(2);
    const std::pair<int, RECT> cases[] = {
        {2, {116, 114, 220, 128}}, {3, {116, 128, 220, 142}}, {1, {116, 100, 220, 114}}};
    for (const auto& [nIndex, expected] : cases)
    {
        RECT rc = {};
        EXPECT_TRUE(m_pList->GetItemRect(nIndex, &rc));
        EXPECT_EQ(expected, rc) << nIndex;
    }
    EXPECT_EQ(3, m_pList->HitTest({kRowX, 130}, nullptr));
    EXPECT_EQ(-1, m_pList->HitTest({kRowX, 112}, nullptr)); // in the margin
}

TEST_F(ListScene, HostileRowHeightsAndATopLeftPastTheRowsSelectNothingAndReadNothing)
{
    Fill(4);
    m_pList->SetItemTip(1, "tip");
    m_pList->SetHoverAni("Bar", TRUE);
    for (int nHeight : {0, -14})
    {
        m_pList->SetItemHeight(nHeight);
        m_harness.MouseMove(kRowX, RowY(1));
        Do({{"click", 1}, {"dbl", 1}, {"up", 1}});
        Draws();
        EXPECT_EQ(-1, m_pList->GetCurSel()) << nHeight;
    }
    m_pList->SetItemHeight(14);

    // Deleting rows leaves the top where it was: nothing left to draw or hit.
    Fill(6); // 10 rows
    m_pList->SetTopIndex(9);
    for (int i = 0; i < 5; ++i)
        m_pList->DeleteString(0);
    Codes();
    Do({{"click", 0}});
    EXPECT_EQ(-1, m_pList->GetCurSel());
    EXPECT_EQ(Lines{}, Codes());
    m_harness.MouseMove(kRowX, RowY(0));
    EXPECT_EQ(Lines{}, Draws());
    Wheel(-120); // the last top is 5 - 4 = 1
    EXPECT_EQ(9, m_pList->GetTopIndex());
    Wheel(120);
    EXPECT_EQ(8, m_pList->GetTopIndex());
}

TEST_F(ListScene, FitTextKeepsTheLongestPrefixNarrowerThanTheLimitAndWholeCharacters)
{
    // The cell is 6 wide for a byte character and 12 for a two-byte one.
    const std::tuple<const char*, int, int, int> cases[] = {
        {"abcdef", 10, 100, 6},
        {"abcdef", 4, 100, 4},
        {"abcdef", 10, 18, 2},
        {"ab\xD6\xD0\xCE\xC4", 10, 25, 4},
        {"ab\xD6\xD0\xCE\xC4", 3, 100, 2},
        {"\xD6\xD0\xCE\xC4", 10, 12, 0},
        {"abc", 10, 0, 0},
        {"abc", -1, 100, 0},
    };
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
