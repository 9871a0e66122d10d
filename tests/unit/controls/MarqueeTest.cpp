// The marquee static: a copy of the caption entering at the right, eaten at the
// left, the pause before the next copy, its timing from the record, and sizes
// where nothing fits.
#include "ControlScene.h"

#include "controls/QzWHLStatic.h"

#include <climits>

namespace ControlTest
{

namespace
{

using Shown = std::vector<std::string>;

class MarqueeScene : public ControlScene
{
protected:
    // Marquee 5 at (110, 110): with the default 6-pixel cell, 10 cells in 60
    // pixels.
    CQzWHLStatic* OpenMarquee(const char* pszCaption, int nWidth = 60)
    {
        CQzWHLStatic* pMarquee = AddCtrl<CQzWHLStatic>(5, {10, 10, 10 + nWidth, 30});
        Open();
        pMarquee->SetWindowText(pszCaption);
        return pMarquee;
    }
    // The texts of the last of n frames, each nMs after the one before, as
    // "text@x".
    Shown Frames(int n, DWORD nMs = 100)
    {
        for (int i = 0; i < n; ++i)
        {
            m_harness.Advance(nMs - QzTest::Harness::kFrameMs);
            Frame();
        }
        Shown shown;
        for (const QzTest::DrawCall& call : Texts())
        {
            EXPECT_EQ(110, call.y1); // always the window's top
            shown.push_back(call.text + "@" + std::to_string(call.x1));
        }
        return shown;
    }
    // The first copy's room to the right edge after a draw at the time; -1: no
    // copy.
    int SpaceAt(CQzWHLStatic* pMarquee, DWORD nMs)
    {
        m_harness.SetTime(nMs);
        pMarquee->Show();
        return pMarquee->GetRunSpace(0);
    }
};

TEST_F(MarqueeScene, ACopyEntersMovesTwoPixelsAStepAndIsEatenCharacterByCharacter)
{
    CQzWHLStatic* pMarquee = OpenMarquee("ABCD");
    EXPECT_EQ(Shown{}, Frames(1, QzTest::Harness::kFrameMs)); // the first step comes at once
    // Step number and what it shows: a copy coming in shows one cell fewer than
    // it has room for.
    const std::vector<std::pair<int, Shown>> steps = {
        {5, {}},           {6, {"A@158"}},    {9, {"AB@152"}},  {12, {"ABCD@146"}},
        {30, {"BCD@114"}}, {32, {"BCD@110"}}, {33, {"CD@114"}}, {39, {}}};
    int nDone = 1;
    for (const auto& step : steps)
    {
        EXPECT_EQ(step.second, Frames(step.first - nDone)) << "step " << step.first;
        nDone = step.first;
    }
    for (int i : {-1, 1, INT_MIN}) // bad indexes
        EXPECT_EQ(-1, pMarquee->GetRunWidth(i) & pMarquee->GetRunSpace(i)) << i;
    std::vector<int> spaces; // when the copy leaves, 900 ms into the pause, at its end
    for (int n : {1, 9, 1})
    {
        Frames(n);
        spaces.push_back(pMarquee->GetRunSpace(0));
    }
    EXPECT_EQ((std::vector<int>{-1, -1, 2}), spaces);
}

TEST_F(MarqueeScene, ATwoByteFirstCharacterEntersWholeAndLeavesInOneLongSlide)
{
    CQzWHLStatic* pMarquee = OpenMarquee("\xD6\xD0"
                                         "AB");
    Frames(1, QzTest::Harness::kFrameMs);
    EXPECT_EQ(Shown{}, Frames(5)); // two cells: half a character is never shown
    EXPECT_EQ(Shown{"中@152"}, Frames(3));
    EXPECT_EQ(Shown{"AB@120"},
              Frames(21)); // at the left edge: 2 x 6 - 2 pixels to slide
    EXPECT_EQ(Shown{"AB@110"}, Frames(5));
    EXPECT_EQ(Shown{"B@114"}, Frames(1));
    pMarquee->SetWindowText(""); // an empty caption shows nothing
    EXPECT_EQ(Shown{}, Frames(20));
}

TEST_F(MarqueeScene, TheRecordSetsTheStepPeriodAndThePauseAsTravelTime)
{
    Open();
    // "WHLMoveRate", "WHLMoveLength", then the step period and the pause they
    // give.
    const std::vector<std::tuple<const char*, const char*, DWORD, DWORD>> cases = {
        {"50", "60", 50, 1500}, {"0", "60", 100, 3000}, {"-7", "0", 100, 1000}};
    DWORD nId = 20;
    for (const auto& [pszRate, pszLength, nRate, nPause] : cases)
    {
        // Two cells wide: a copy is eaten as soon as it reaches the left edge.
        CQzWHLStatic* pMarquee = AddCtrl<CQzWHLStatic>(
            nId++, {10, 10, 22, 30}, {{"WHLMoveRate", pszRate}, {"WHLMoveLength", pszLength}});
        DWORD t = m_harness.Now();
        pMarquee->SetWindowText("A");
        EXPECT_EQ(2, SpaceAt(pMarquee, t));
        EXPECT_EQ(2, SpaceAt(pMarquee, t + nRate - 1)) << nRate;
        for (int i = 0; i < 20 && pMarquee->GetRunSpace(0) != -1; ++i)
            SpaceAt(pMarquee, t += nRate);
        EXPECT_EQ(-1, SpaceAt(pMarquee, t + nPause - nRate)) << nPause;
        EXPECT_EQ(2, SpaceAt(pMarquee, t + nPause)) << nPause;
    }
}

// The step period counts elapsed time, so the clock wrapping round does not
// stop the marquee.
TEST_F(MarqueeScene, EdgeValuesNarrowControlsNoCellAZeroRateAndTheClockWrapping)
{
    CQzWHLStatic* pMarquee = OpenMarquee("ABCD", 5); // narrower than a cell
    EXPECT_EQ(Shown{}, Frames(50));
    EXPECT_EQ(-1, pMarquee->GetRunSpace(0));
    pMarquee->MoveWindow(nullptr, 10, 10, 60, 20, TRUE);
    for (int nCell : {0, -6, INT_MAX})
    {
        pMarquee->GetFontSize()->iWidth = nCell;
        EXPECT_EQ(Shown{}, Frames(40)) << nCell;
    }
    pMarquee->GetFontSize()->iWidth = 6;
    pMarquee->SetMoveParam(0, 1000);
    const DWORD t = 0xFFFFFFA0; // 96 ms before the wrap
    m_harness.SetTime(t);
    pMarquee->Restart();
    EXPECT_EQ((std::vector<int>{2, 2, 4, 6}),
              (std::vector<int>{SpaceAt(pMarquee, t), SpaceAt(pMarquee, t + 99),
                                SpaceAt(pMarquee, t + 100), SpaceAt(pMarquee, t + 200)}));
}

} // namespace

} // namespace ControlTest
