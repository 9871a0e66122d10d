// Runs the demo on its sample bundle the way CI does and checks what a user would see in the
// screenshots: the first button takes the hover and pressed looks of the sample buttons beside
// it, typing leaves the rest of the window as it was, a dragged window moves with the mouse,
// and a window flies in to its place and away again.
#include "DemoRun.h"

namespace
{

using DemoScenario::CountDiffs;

const int kButtonTop = 111;
const int kButtonBottom = 137;
const int kFirstButtonLeft = 70;
const int kButtonGap = 110;

class DemoShowcase : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_run = new DemoScenario::DemoRun(""); }
    static void TearDownTestSuite()
    {
        delete s_run;
        s_run = nullptr;
    }

    static QzTest::Image Shot(const char* name) { return s_run->Shot(name); }

    // True when the left strip of button `index` (no caption there) looks like that of button
    // `sample` in the same screenshot.
    static bool SameButtonLook(const QzTest::Image& image, int index, int sample)
    {
        for (int y = kButtonTop; y < kButtonBottom; ++y)
        {
            for (int dx = 0; dx < 8; ++dx)
            {
                if (image.At(kFirstButtonLeft + index * kButtonGap + dx, y) !=
                    image.At(kFirstButtonLeft + sample * kButtonGap + dx, y))
                    return false;
            }
        }
        return true;
    }

    static DemoScenario::DemoRun* s_run;
};

DemoScenario::DemoRun* DemoShowcase::s_run = nullptr;

} // namespace

TEST_F(DemoShowcase, RunsHeadlessAndWritesEveryScreenshot)
{
    ASSERT_EQ(0, s_run->ExitCode());
    for (const char* name :
         {"01-start", "02-hover-button", "03-pressed-button", "04-after-input", "05-mask-corner"})
        EXPECT_TRUE(s_run->HasShot(name)) << name;
}

TEST_F(DemoShowcase, FirstButtonShowsNormalHoverAndPressedLooks)
{
    ASSERT_EQ(0, s_run->ExitCode());
    QzTest::Image start = Shot("01-start");
    QzTest::Image hover = Shot("02-hover-button");
    QzTest::Image pressed = Shot("03-pressed-button");
    ASSERT_EQ(1024, start.width);

    EXPECT_FALSE(SameButtonLook(start, 0, 1));
    EXPECT_TRUE(SameButtonLook(hover, 0, 2));
    EXPECT_TRUE(SameButtonLook(pressed, 0, 1));
    EXPECT_FALSE(SameButtonLook(pressed, 0, 2));
}

TEST_F(DemoShowcase, InputChangesOnlyTheInteractivePartsOfTheWindow)
{
    ASSERT_EQ(0, s_run->ExitCode());
    QzTest::Image start = Shot("01-start");
    QzTest::Image after = Shot("04-after-input");
    // The title of the panel is untouched; the typed-text line is not.
    int titleDiffs = 0;
    int typedDiffs = 0;
    for (int x = 60; x < 400; ++x)
    {
        for (int y = 50; y < 90; ++y)
            titleDiffs += start.At(x, y) != after.At(x, y) ? 1 : 0;
        for (int y = 262; y < 284; ++y)
            typedDiffs += start.At(x, y) != after.At(x, y) ? 1 : 0;
    }
    EXPECT_EQ(0, titleDiffs);
    EXPECT_GT(typedDiffs, 50);
}

TEST_F(DemoShowcase, DraggedWindowMovesWithTheMouse)
{
    ASSERT_EQ(0, s_run->ExitCode());
    QzTest::Image start = Shot("01-start");
    QzTest::Image dragged = Shot("06-dragged");
    // The title and the first row of the showcase, 40 pixels right and down.
    EXPECT_EQ(0, CountDiffs(start, dragged, 60, 50, 400, 140, 40, 40));
    EXPECT_GT(CountDiffs(start, dragged, 60, 50, 400, 140), 100);
}

TEST_F(DemoShowcase, WindowFliesInToItsPlaceAndAwayAgain)
{
    ASSERT_EQ(0, s_run->ExitCode());
    QzTest::Image before = Shot("07-row-on-top");
    QzTest::Image flying = Shot("08-flying-in");
    QzTest::Image arrived = Shot("09-flown-in");
    QzTest::Image gone = Shot("12-flown-out");
    // Its place (760, 40, 220 x 150) is empty before, still empty while it flies, taken once it
    // arrived, and empty again after it flew out.
    EXPECT_EQ(0, CountDiffs(before, flying, 762, 42, 978, 188));
    EXPECT_GT(CountDiffs(before, arrived, 762, 42, 978, 188), 1000);
    EXPECT_EQ(0, CountDiffs(before, gone, 762, 42, 978, 188));
    // While it flies in it covers part of the showcase on its way.
    EXPECT_GT(CountDiffs(before, flying, 80, 42, 760, 188), 1000);
}
