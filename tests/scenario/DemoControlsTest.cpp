// Runs the demo's controls script and checks what the user sees: the slider's volume in the
// length of the bars, the tip of a rested-on button, an arrow button that keeps stepping while
// held, check boxes that hide the marquee and the vertical bar, the panel built from records
// alone, and a marquee that moves.
#include "DemoRun.h"

#include <cstdint>

namespace
{

using namespace DemoScenario;

// Where the controls window (at 20, 480) puts its parts, in screen pixels.
const int kBarLeft = 36;
const int kBarRight = 236;
const int kBarRow = 618;
const int kSegmentRow = 644;
const int kVBarX = 618;
const int kVBarLowY = 640;
const Box kMarquee = {36, 680, 436, 700};
const Box kResetButton = {36, 520, 132, 548};
const Box kPanel = {700, 500, 980, 660};

// Pixels of the horizontal bar's green fill along its middle row: two per unit of volume.
int FillLength(const QzTest::Image& image, int row)
{
    int length = 0;
    for (int x = kBarLeft; x < kBarRight + 20; ++x)
    {
        const uint32_t pixel = image.At(x, row);
        length += Green(pixel) > Red(pixel) + 40 && Green(pixel) > Blue(pixel) + 30 ? 1 : 0;
    }
    return length;
}

// Pixels of the segmented bar's blue fill along its middle row.
int SegmentLength(const QzTest::Image& image)
{
    int length = 0;
    for (int x = kBarLeft; x < kBarRight + 20; ++x)
        length += Blue(image.At(x, kSegmentRow)) > Red(image.At(x, kSegmentRow)) + 60 ? 1 : 0;
    return length;
}

bool IsOrange(uint32_t pixel)
{
    return Red(pixel) > 180 && Green(pixel) > 60 && Green(pixel) < 220 && Blue(pixel) < 110;
}

int YellowPixels(const QzTest::Image& image, const Box& rc)
{
    int count = 0;
    for (int y = rc.top; y < rc.bottom; ++y)
    {
        for (int x = rc.left; x < rc.right; ++x)
        {
            const uint32_t pixel = image.At(x, y);
            count += Red(pixel) > 200 && Green(pixel) > 160 && Blue(pixel) < 150 ? 1 : 0;
        }
    }
    return count;
}

class DemoControls : public DemoScenario::DemoScriptTest<DemoControls>
{
public:
    static constexpr const char* kScript = "controls.txt";
};

} // namespace

TEST_F(DemoControls, SliderVolumeSetsTheLengthOfTheBars)
{
    const QzTest::Image start = Shot("01-controls");
    const QzTest::Image dragged = Shot("03-dragged");
    const QzTest::Image reset = Shot("07-reset");
    // Volume 50 of 100 on a 200-pixel bar, then 80 after a 60-pixel drag, then 0.
    EXPECT_NEAR(100, FillLength(start, kBarRow), 2);
    EXPECT_NEAR(160, FillLength(dragged, kBarRow), 2);
    EXPECT_EQ(0, FillLength(reset, kBarRow));
    // The segmented bar follows on its 216-pixel length: 108 pixels are three whole 36-pixel
    // segments, each ending in a 2-pixel gap; 172 are four and a 28-pixel part.
    EXPECT_NEAR(3 * 34, SegmentLength(start), 1);
    EXPECT_NEAR(4 * 34 + 28, SegmentLength(dragged), 1);
    EXPECT_TRUE(IsOrange(start.At(kVBarX, kVBarLowY)));
}

TEST_F(DemoControls, HeldArrowKeepsSteppingTheVolumeDown)
{
    const int before = FillLength(Shot("03-dragged"), kBarRow);
    const int after = FillLength(Shot("04-held-arrow"), kBarRow);
    // One step is 2 units (4 pixels); a second of holding repeats it several times.
    EXPECT_LT(after, before - 4 * 5);
    EXPECT_GT(after, 0);
}

TEST_F(DemoControls, RestingOnAButtonShowsItsTip)
{
    const QzTest::Image start = Shot("01-controls");
    const QzTest::Image tip = Shot("02-reset-tip");
    // Around the button, outside the button itself and the moving marquee.
    const Box around = {0, 440, 400, 520};
    const Box below = {0, 548, 400, 680};
    EXPECT_GT(Diffs(start, tip, around) + Diffs(start, tip, below), 300);
    EXPECT_GT(Diffs(start, tip, kResetButton), 0); // the hover look
}

TEST_F(DemoControls, UntickedCheckBoxesHideTheMarqueeAndTheVerticalBar)
{
    const QzTest::Image before = Shot("04-held-arrow");
    const QzTest::Image unticked = Shot("05-unticked");
    EXPECT_GT(YellowPixels(before, kMarquee), 20);
    EXPECT_TRUE(IsOrange(before.At(kVBarX, kVBarLowY)));
    EXPECT_EQ(0, YellowPixels(unticked, kMarquee));
    EXPECT_FALSE(IsOrange(unticked.At(kVBarX, kVBarLowY)));
}

TEST_F(DemoControls, PanelBuiltFromRecordsOpensOnItsButton)
{
    const QzTest::Image unticked = Shot("05-unticked");
    const QzTest::Image panel = Shot("06-panel");
    const int area = (kPanel.right - kPanel.left) * (kPanel.bottom - kPanel.top);
    EXPECT_GT(Diffs(unticked, panel, kPanel), area / 2);
}

TEST_F(DemoControls, MarqueeMovesOverTime)
{
    EXPECT_GT(Diffs(Shot("01-controls"), Shot("02-reset-tip"), kMarquee), 50);
}
