// The scroll button: what each kind sends on press and release, and the repeat
// while held.
#include "ControlScene.h"

#include "controls/QzScrollButton.h"

namespace ControlTest
{

namespace
{

Sent Scroll(WPARAM nCode)
{
    return {WM_VSCROLL, nCode, 0};
}

class ScrollButtonScene : public ControlScene
{
protected:
    // Scroll button 7 at (110, 110)-(130, 130), the mouse over it.
    ScrollButtonScene()
    {
        m_pButton = AddCtrl<CQzScrollButton>(7, {10, 10, 30, 30});
        Open();
        m_harness.MouseMove(120, 120);
    }
    // Presses, draws a frame after each wait (ms), releases: what the target got.
    std::vector<Sent> Hold(std::initializer_list<DWORD> waits)
    {
        m_target.got.clear();
        m_harness.LButtonDown(120, 120);
        for (DWORD nWait : waits)
        {
            m_harness.Advance(nWait);
            Frame();
        }
        m_harness.LButtonUp(120, 120);
        EXPECT_EQ(nullptr, m_pMgr->GetCapture());
        return m_target.got;
    }

    CQzScrollButton* m_pButton = nullptr;
    ScrollTarget m_target;
};

TEST_F(ScrollButtonScene, EachKindStepsOnPressAndEndsOnReleaseOnlyWithATarget)
{
    EXPECT_EQ((std::vector<Sent>{}), Hold({500})); // without a target the press is ignored
    const Sent end = Scroll(SB_ENDSCROLL);
    const std::pair<BYTE, std::vector<Sent>> cases[] = {
        {QZ_SCROLL_LINEUP, {Scroll(SB_LINEUP), Scroll(SB_LINEUP), end}}, // held: one repeat
        {QZ_SCROLL_LINEDOWN, {Scroll(SB_LINEDOWN), Scroll(SB_LINEDOWN), end}},
        {QZ_SCROLL_PAGEUP, {Scroll(SB_PAGEUP), end}},
        {QZ_SCROLL_PAGEDOWN, {Scroll(SB_PAGEDOWN), end}},
        {200, {end}},
        {QZ_SCROLL_TOGGLE, {{QZ_WM_SCROLLTOGGLE, 1, 1}}},
        {QZ_SCROLL_TOGGLE, {{QZ_WM_SCROLLTOGGLE, 0, 1}}},
    };
    for (const auto& [byKind, sent] : cases)
    {
        m_pButton->Attach(&m_target, byKind);
        EXPECT_EQ(sent, Hold({500})) << "kind " << int(byKind);
    }
    m_pButton->Attach(nullptr, QZ_SCROLL_LINEUP); // keeps its target
    EXPECT_EQ((std::vector<Sent>{Scroll(SB_LINEUP), end}), Hold({}));
}

TEST_F(ScrollButtonScene, ALineButtonRepeatsOncePerDueFrameWhileHeld)
{
    m_pButton->Attach(&m_target, QZ_SCROLL_LINEDOWN);
    m_pButton->SetInterval(50);
    std::vector<Sent> steps(3, Scroll(SB_LINEDOWN));
    steps.push_back(Scroll(SB_ENDSCROLL));
    EXPECT_EQ(steps, Hold({0, 50, 0, 40})); // frames 0, 66 (due), 82, 138 (due) ms in
    m_harness.Advance(500);
    Frame();
    EXPECT_EQ(steps, m_target.got); // the release stopped the repeat
}

} // namespace

} // namespace ControlTest
