// The demo headless on the bundle's four scripts with both renderers: the cairo device, and the
// draw-list device whose lists SDL's software renderer draws. Every screenshot of one must look
// like the same screenshot of the other.
#include "DemoRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace
{

using DemoScenario::DemoRun;

// Measured on the 36 shots of the four scripts (1024 x 768, SDL 2.26): the largest difference
// in a channel is 43, and in every shot all but at most 0.044% of the pixels are within 16.
// Most of the pixels that differ at all (3.5% to 7%) are off by 1 to 15: SDL blends straight
// alpha and cairo premultiplied, with different rounding, and images drawn scaled (the front
// effect, stretched skins) are filtered differently. Beyond 16 are only edges of stretched
// images: the tip frame's border (cairo blends it with the inside, the list keeps the border's
// own colour: 41 to 43) and the right bevel of the login fields (28). The smallest real change
// between two shots of a script, one button lit by the hovering mouse, moves 0.26% of the
// pixels by more than 16; 0.1% lies between the two.
constexpr int kChannelTolerance = 16;
constexpr double kMaxDifferingShare = 0.001;

std::vector<std::string> ShotNames(const DemoRun& run)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(run.OutDir()))
    {
        if (entry.path().extension() == ".png")
            names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

QzTest::CompareOptions Tolerance(const QzTest::Image& image)
{
    QzTest::CompareOptions options;
    options.tolerance = kChannelTolerance;
    options.maxDifferingPixels = int64_t(kMaxDifferingShare * image.width * image.height);
    return options;
}

class DemoRendererCompare : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_cairo = new DemoRun("", "cairo");
        s_drawList = new DemoRun("", "drawlist");
    }
    static void TearDownTestSuite()
    {
        delete s_cairo;
        delete s_drawList;
        s_cairo = s_drawList = nullptr;
    }
    void SetUp() override
    {
        ASSERT_EQ(0, s_cairo->ExitCode());
        ASSERT_EQ(0, s_drawList->ExitCode());
    }

    static inline DemoRun* s_cairo = nullptr;
    static inline DemoRun* s_drawList = nullptr;
};

TEST_F(DemoRendererCompare, EveryShotLooksTheSameWithBothRenderers)
{
    const std::vector<std::string> names = ShotNames(*s_cairo);
    ASSERT_GE(names.size(), 30u);
    EXPECT_EQ(names, ShotNames(*s_drawList));
    for (const std::string& name : names)
    {
        const QzTest::Image cairo = s_cairo->Shot(name.c_str());
        const QzTest::Image drawList = s_drawList->Shot(name.c_str());
        const QzTest::CompareResult result =
            QzTest::CompareImages(cairo.View(), drawList.View(), Tolerance(cairo));
        EXPECT_TRUE(result.passed) << name << ": " << result.Describe();
    }
}

// The tolerance still sees the smallest changes a user notices between two shots: a button lit
// by the mouse, a name typed, a bag slot marked.
TEST_F(DemoRendererCompare, TheToleranceStillSeesADifferentFrame)
{
    const char* const pairs[][2] = {
        {"01-start", "02-hover-button"},
        {"01-login", "02-login-name"},
        {"01-collections", "02-bag-picked"},
    };
    for (const auto& pair : pairs)
    {
        const QzTest::Image before = s_cairo->Shot(pair[0]);
        const QzTest::Image after = s_drawList->Shot(pair[1]);
        EXPECT_FALSE(QzTest::CompareImages(before.View(), after.View(), Tolerance(before)).passed)
            << pair[0] << " / " << pair[1];
    }
}

} // namespace
