// The slider: values onto the track and back, clicks and drags with what they
// report, where the thumb is drawn, and lengths that leave no track.
#include "ControlScene.h"

#include "controls/QzSlider.h"

#include <climits>

namespace ControlTest
{

namespace
{

using Points = std::vector<std::pair<int, int>>;

class SliderScene : public ControlScene
{
protected:
    // A slider of the dialog driving m_target, with "SliderBtnLen".
    CQzSlider* Add(DWORD nId, DWORD nStyle, RECT rc, const char* pszBtnLen, WORD wRange = 100)
    {
        auto* pSlider = AddCtrl<CQzSlider>(nId, rc, {{"SliderBtnLen", pszBtnLen}});
        pSlider->PreSetParam(wRange, nStyle);
        pSlider->SetTarget(&m_target);
        return pSlider;
    }
    // Where a new frame drew its thumbs.
    Points Thumbs()
    {
        Points points;
        Frame();
        for (const QzTest::DrawCall& call : Calls(QzTest::DrawKind::Texture))
            points.emplace_back(call.x1, call.y1);
        return points;
    }

    ScrollTarget m_target;
};

Sent Report(UINT message, WPARAM nCode)
{
    return {message, nCode, 9};
}

TEST_F(SliderScene, ValuesMapOntoTheTrackAndBackRoundingToTheNearest)
{
    // (110, 110)-(220, 130) along x, thumb 10 long: a track of 100.
    CQzSlider* pSlider = Add(9, QZ_SLIDER_HORZ, {10, 10, 120, 30}, "10");
    Open();
    const std::tuple<WORD, int, int, int> cases[] = {
        {100, 50, 50, 50}, {100, 150, 100, 100}, {100, -3, 0, 0}, {100, INT_MIN, 0, 0},
        {3, 1, 33, 1},     {3, 2, 66, 2},        {7, 3, 42, 3},   {65535, 65535, 100, 65535}};
    for (const auto& [wRange, nSet, nThumb, nGet] : cases)
    {
        pSlider->PreSetParam(wRange, QZ_SLIDER_HORZ);
        pSlider->SetValue(nSet, FALSE);
        EXPECT_EQ(nGet, pSlider->GetValue()) << wRange << " " << nSet;
        EXPECT_EQ((Points{{110 + nThumb, 115}}), Thumbs()) << wRange << " " << nSet;
    }
    pSlider->SetValue(10, TRUE); // only a notifying set tells the target
    EXPECT_EQ(std::vector<Sent>{Report(WM_HSCROLL, QZ_SLIDER_SET)}, m_target.got);
}

TEST_F(SliderScene, AClickCentresTheThumbOnThePointAndADragFollowsTheMouseWithinTheTrack)
{
    CQzSlider* pSlider = Add(9, QZ_SLIDER_VERT, {10, 10, 30, 130}, "20"); // track 100
    Open();
    std::vector<Sent> expected(3, Report(WM_VSCROLL, QZ_SLIDER_JUMP));
    for (const auto& [y, nValue] : {std::pair{229, 100}, {112, 0}, {170, 50}})
    {
        m_harness.MouseMove(120, y);
        m_harness.Click(120, y);
        EXPECT_EQ(nValue, pSlider->GetValue()) << y;
    }
    m_harness.LButtonDown(120, 170);
    for (const auto& [y, nValue] : {std::pair{190, 70}, {400, 100}, {380, 80}, {-50, 0}})
    {
        m_harness.MouseMove(120,
                            y); // the thumb moves by the mouse's moves, not to it
        EXPECT_EQ(nValue, pSlider->GetValue()) << y;
        expected.push_back(Report(WM_VSCROLL, QZ_SLIDER_DRAG));
    }
    m_harness.LButtonUp(120, -50);
    expected.push_back(Report(WM_VSCROLL, QZ_SLIDER_DRAGEND));
    EXPECT_EQ(expected, m_target.got);

    pSlider->EnableDrag(false); // moves do nothing, so the release jumps
    m_harness.MouseMove(120, 115);
    m_harness.LButtonDown(120, 115);
    m_harness.MouseMove(120, 200);
    m_harness.LButtonUp(120, 200);
    EXPECT_EQ(80, pSlider->GetValue());
    expected.push_back(Report(WM_VSCROLL, QZ_SLIDER_JUMP));
    EXPECT_EQ(expected, m_target.got);
}

TEST_F(SliderScene, AThumbWithFewerFramesThanLookStatesIsDrawnInEveryState)
{
    Add(9, QZ_SLIDER_HORZ, {10, 10, 120, 30}, "10");
    m_pRecord->SetAniSection("OneFrame");
    Open();
    for (WORD wState = 0; wState < 5; ++wState)
    {
        static_cast<CQzSlider*>(m_ctrls.back().get())->SetCtrlState(wState);
        EXPECT_EQ((std::vector<std::string>{"img/f0.png"}), Frame()) << wState;
    }
    m_harness.MouseMove(115, 120); // hovered and dragged, the one frame stays
    m_harness.LButtonDown(115, 120);
    m_harness.MouseMove(150, 120);
    EXPECT_EQ((std::vector<std::string>{"img/f0.png"}), Frame());
    m_harness.LButtonUp(150, 120);
}

TEST_F(SliderScene, NoRangeNoTrackOrHostileLengthsClampInsteadOfOverflowing)
{
    CQzSlider* sliders[] = {Add(11, QZ_SLIDER_HORZ, {10, 10, 120, 30}, "10", 0),
                            Add(12, QZ_SLIDER_HORZ, {10, 40, 120, 60}, "110"),
                            Add(13, QZ_SLIDER_VERT, {10, 70, 30, 90}, "500")};
    CQzSlider* pLong = Add(14, QZ_SLIDER_HORZ, {10, 100, 120, 120}, "-2147483648", 65535);
    AddCtrl<CQzSlider>(15, {10, 130, 30, 150}); // no PreSetParam: vertical, range 1
    Open();
    EXPECT_EQ(std::vector<std::string>{"ASSERT(m_bPreSetParam) in 40 line of QzSlider"},
              m_harness.Log().LogMsgs());
    for (CQzSlider* pSlider : sliders)
    {
        pSlider->SetValue(50, FALSE);
        EXPECT_EQ(0, pSlider->GetValue()) << pSlider->GetId();
    }
    EXPECT_EQ(0, sliders[2]->GetTrackHeight()); // 20 high, a thumb of 500
    pLong->SetValue(65535, FALSE);
    EXPECT_EQ((Points{{110, 115}, {110, 145}, {115, 170}, {INT_MAX, 205}, {115, 230}}), Thumbs());

    m_harness.MouseMove(150, 210);
    m_harness.LButtonDown(150, 210);
    m_harness.MouseMove(30000, 210); // past the end of a track INT_MAX long
    m_harness.LButtonUp(30000, 210);
    EXPECT_EQ(65535, pLong->GetValue());
    sliders[1]->MoveWindow(nullptr, -100, 40, INT_MAX, 20,
                           FALSE); // absolute 0 to INT_MAX
    sliders[1]->SetValue(100, FALSE);
    sliders[1]->MoveWindow(nullptr, 10, 40, 111, 20,
                           FALSE); // the thumb is far beyond it now
    EXPECT_EQ(INT_MAX, sliders[1]->GetValue());
}

} // namespace

} // namespace ControlTest
