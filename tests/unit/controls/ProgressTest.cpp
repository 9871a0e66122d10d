// The progress bar: what each style draws of its section, its layers and
// set-up, and values far outside the sensible ones.
#include "ControlScene.h"

#include "controls/QzProgress.h"
#include "platform/services/QzAniStore.h"

#include <climits>
#include <cstdio>

namespace ControlTest
{

namespace
{

using Lines = std::vector<std::string>;

class ProgressScene : public ControlScene
{
protected:
    // Bar 7 at (110, 110), 100 x 20, range 0..100, segmented by its record; its
    // section "Look" has a 200 x 100 fill, a 20 x 20 back and a 30 x 30 front
    // layer.
    ProgressScene()
    {
        m_root.Write("ani/Control.ani", "[Look]\nFrameAmount=3\nFrame0=img/fill.png\n"
                                        "Frame1=img/back.png\nFrame2=img/front.png\n");
        QzPlatform::GetAniStore()->Reload();
        m_harness.Device().DefineTexture("img/fill.png", 200, 100);
        m_harness.Device().DefineTexture("img/back.png", 20, 20);
        m_harness.Device().DefineTexture("img/front.png", 30, 30);
        m_pBar = AddCtrl<CQzProgress>(7, {10, 10, 110, 30}, {{"ProgressStyle", "2"}});
        m_pBar->PreSetParam(0, 100, QZ_PROGRESS_HORIZONTAL, 0, nullptr, 0, nullptr);
        Open();
    }
    // One frame drawn by the call: pictures as "name source at x,y width,height[
    // alpha a]", others traced.
    Lines Draw(const std::function<void()>& draw)
    {
        m_harness.Device().Clear();
        m_harness.Frame(draw);
        Lines lines;
        for (const QzTest::DrawCall& c : m_harness.Device().Calls())
        {
            if (c.kind != QzTest::DrawKind::Texture)
            {
                lines.push_back(QzTest::RecordingDevice::TraceLine(c));
                continue;
            }
            char sz[128];
            std::snprintf(sz, sizeof(sz), "%s %d,%d-%d,%d at %d,%d %d,%d",
                          c.texturePath.substr(4).c_str(), c.source.left, c.source.top,
                          c.source.right, c.source.bottom, c.x1, c.y1, c.width, c.height);
            lines.push_back(sz + (c.alpha == 255 ? "" : " alpha " + std::to_string(c.alpha)));
        }
        return lines;
    }
    // A frame of the manager after setting the bar's value.
    Lines Draw(int nValue)
    {
        m_pBar->SetValue(nValue);
        return Draw([this] { m_pMgr->Show(); });
    }
    void Configure(BYTE byStyle, int nMax, int nWidth, int nHeight)
    {
        m_pBar->PreSetParam(0, nMax, byStyle, 0, nullptr, 0, nullptr);
        m_pBar->SetSize(nWidth, nHeight);
    }

    CQzProgress* m_pBar = nullptr;
};

TEST_F(ProgressScene, EachStyleFillsByValueTimesStepUpToTheMaximum)
{
    EXPECT_EQ(Lines({"fill.png 0,0-28,20 at 182,110 28,20", // segments: the
                                                            // partial one first
                     "fill.png 0,0-200,100 at 110,110 200,100",
                     "fill.png 0,0-200,100 at 146,110 200,100"}),
              Draw(100));
    const struct
    {
        BYTE byStyle;
        int nMax, nWidth, nHeight, nValue;
        Lines expected;
    } cases[] = {
        {QZ_PROGRESS_HORIZONTAL, 200, 100, 20, 50, {"fill.png 0,0-25,20 at 110,110 25,20"}},
        {QZ_PROGRESS_HORIZONTAL, 200, 100, 20, 300, {"fill.png 0,0-100,20 at 110,110 100,20"}},
        {QZ_PROGRESS_HORIZONTAL, 200, 100, 20, 0, {}},
        {QZ_PROGRESS_HORIZONTAL, 200, 100, 20, -10, {"fill 110,110,115,130 #FFFF0000"}},
        {QZ_PROGRESS_SEGMENTED, 100, 100, 20, 35, {"fill.png 0,0-35,20 at 110,110 35,20"}},
        {QZ_PROGRESS_SEGMENTED, 100, 100, 20, -5, {}},
        {QZ_PROGRESS_VERTICAL, 10, 20, 50, 4, {"fill.png 0,30-20,50 at 110,140 20,20"}},
        {QZ_PROGRESS_VERTICAL, 10, 20, 50, -3, {}},
    };
    for (const auto& c : cases)
    {
        Configure(c.byStyle, c.nMax, c.nWidth, c.nHeight);
        EXPECT_EQ(c.expected, Draw(c.nValue)) << int(c.byStyle) << " " << c.nValue;
    }
}

TEST_F(ProgressScene, VerticalTrailOfAHigherEarlierValueThenTheValueRoundedUp)
{
    Configure(QZ_PROGRESS_VERTICAL, 10, 20, 50);
    // The 40-pixel trail of 8 at half opacity, then 4 rounded up by one unit:
    // trunc(4 + 1 + 0.5) = 5 units.
    const std::string five = "fill.png 0,25-20,50 at 110,135 20,25";
    EXPECT_EQ(Lines({"fill.png 0,10-20,50 at 110,120 20,40 alpha 127", five}),
              Draw([this] { m_pBar->DrawProgress(8, 4, 0); }));
    EXPECT_EQ(Lines({"fill.png 0,0-20,50 at 110,110 20,50 alpha 127", five}), // 12 lowered to 10
              Draw([this] { m_pBar->DrawProgress(12, 4, 0); }));
    // A span of 100 and more rounds up by a hundredth of the bar: 0.5 px / 0.25
    // px = 2 units.
    m_pBar->SetRange(0, 200);
    EXPECT_EQ(Lines({"fill.png 0,25-20,50 at 110,135 20,25 alpha 127",
                     "fill.png 0,39-20,50 at 110,149 20,11"}),
              Draw([this] { m_pBar->DrawProgress(100, 40, 0); }));
}

// Frames 1 and 2 are placed by their offsets, the fill by the record's, or none
// without one.
TEST_F(ProgressScene, BackLayerFillFrontLayerThenCaptionAndNoBackground)
{
    const POINT back = {-5, -3};
    const POINT front = {2, 4};
    m_pBar->PreSetParam(0, 100, QZ_PROGRESS_HORIZONTAL, 1, &back, 1, &front);
    m_pBar->PreSetParam(0, 100, QZ_PROGRESS_HORIZONTAL, 0, nullptr, 1,
                        nullptr); // keeps both
    m_pBar->SetRangeOnly(0, 200); // keeps the step
    m_pBar->SetWindowText("50%");
    m_pRecord->SetOffsetX(3);
    m_pRecord->SetOffsetY(4);
    const std::string caption = "text 110,110 \"50%\" font default/12 #FFFFFFFF shadow #FF000000";
    EXPECT_EQ(Lines({"back.png 0,0-20,20 at 105,107 20,20", "fill.png 0,0-50,20 at 113,114 50,20",
                     "front.png 0,0-30,30 at 112,114 30,30", caption}),
              Draw(50));
    m_pBar->ShowWindow(SW_HIDE);
    EXPECT_EQ(Lines{}, Draw([this] { m_pBar->DrawProgress(50, 50, 0); }));

    CQzProgress loose;
    loose.PreSetParam(0, 100, QZ_PROGRESS_HORIZONTAL, 0, nullptr, 0, nullptr);
    loose.Create(m_pMgr);
    loose.SetAniName("Look");
    loose.MoveWindow(nullptr, 10, 50, 100, 20, TRUE);
    loose.SetSize(50, 20); // half a pixel a unit
    loose.ShowWindow(SW_SHOW);
    loose.SetValue(10);
    EXPECT_EQ(Lines{"fill.png 0,0-5,20 at 10,50 5,20"}, Draw([&loose] { loose.Show(); }));
}

// Whatever the host sets, a frame draws a bounded number of pieces.
TEST_F(ProgressScene, CreationNeedsSetUpAndHostileValuesDrawBoundedPieces)
{
    CQzProgress bare;
    EXPECT_FALSE(bare.Create(m_pMgr));

    const int ranges[][2] = {{INT_MIN, INT_MAX}, {INT_MAX - 1, INT_MAX}, {INT_MAX, INT_MIN}};
    const int sizes[][2] = {{-100, -20}, {INT_MAX, INT_MAX}, {INT_MIN, 0}, {36, 20}};
    for (BYTE byStyle : {QZ_PROGRESS_VERTICAL, QZ_PROGRESS_HORIZONTAL, QZ_PROGRESS_SEGMENTED})
        for (const auto& range : ranges)
            for (const auto& size : sizes)
                for (int nValue : {INT_MIN, -1, 1, INT_MAX})
                {
                    m_pBar->PreSetParam(range[0], range[1], byStyle, 0, nullptr, 0, nullptr);
                    m_pBar->SetSize(size[0], size[1]);
                    EXPECT_LE(Draw([&] { m_pBar->DrawProgress(INT_MAX, nValue, 0); }).size(),
                              1000u);
                }
}

} // namespace

} // namespace ControlTest
