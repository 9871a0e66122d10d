#include "FakeTextDevice.h"

#include "platform/services/QzScreenAdapter.h"
#include "support/GeometryPrint.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace QzPlatform;

namespace
{

class ScreenAdapterTest : public ::testing::Test
{
protected:
    void SetUp() override { SetRenderDevice(&m_device); }
    void TearDown() override
    {
        SetRenderDevice(nullptr);
        GetScreenAdapter().Reset();
    }

    POINT Convert(LONG x, LONG y, int direction)
    {
        POINT point = {x, y};
        m_adapter.ConvertPoint(point, direction);
        return point;
    }

    QzServicesTest::FakeTextDevice m_device{768, 576};
    CQzScreenAdapter& m_adapter = GetScreenAdapter();
};

} // namespace

TEST_F(ScreenAdapterTest, IdentityWithoutAWindowSizeAndAtRatioOne)
{
    EXPECT_EQ(m_adapter.GetFontSize(), 0); // not configured until a host says
    EXPECT_STREQ(m_adapter.GetFontName(), "");
    EXPECT_EQ(Convert(-5, 700, CQzScreenAdapter::kToLogical).x, -5);
    EXPECT_EQ(Convert(-5, 700, CQzScreenAdapter::kToScreen).y, 700);

    m_adapter.SetWindowSize(768, 576);
    for (LONG v = -50; v < 900; ++v)
    {
        const POINT logical = Convert(v, v, CQzScreenAdapter::kToLogical);
        ASSERT_EQ(Convert(logical.x, logical.y, CQzScreenAdapter::kToScreen), (POINT{v, v}));
    }
}

TEST_F(ScreenAdapterTest, RoundTripsAtRatioFourThirds)
{
    m_adapter.SetWindowSize(1024, 768); // logical 768 x 576
    EXPECT_EQ(Convert(1024, 768, CQzScreenAdapter::kToLogical), (POINT{768, 576}));
    EXPECT_EQ(Convert(3, 3, CQzScreenAdapter::kToScreen), (POINT{4, 4}));
    // Negative values round the same way as positive ones.
    EXPECT_EQ(Convert(-4, 4, CQzScreenAdapter::kToLogical).x, -3);
    EXPECT_EQ(Convert(-2, 2, CQzScreenAdapter::kToLogical).x,
              -Convert(2, 2, CQzScreenAdapter::kToLogical).x);

    for (LONG v = -100; v < 1100; ++v)
    {
        const POINT logical = Convert(v, v, CQzScreenAdapter::kToLogical);
        const POINT screen = Convert(logical.x, logical.y, CQzScreenAdapter::kToScreen);
        ASSERT_LE(std::abs(screen.x - v), 1) << v;
        ASSERT_LE(std::abs(screen.y - v), 1) << v;
        const POINT toScreen = Convert(v, v, CQzScreenAdapter::kToScreen);
        ASSERT_EQ(Convert(toScreen.x, toScreen.y, CQzScreenAdapter::kToLogical), (POINT{v, v}));
    }
}

TEST_F(ScreenAdapterTest, RectanglesConvertBothCornersPerAxis)
{
    m_adapter.SetWindowSize(1536, 576); // x doubled, y unchanged
    RECT rect = {10, 20, 30, 40};
    m_adapter.ConvertRect(rect, CQzScreenAdapter::kToScreen);
    EXPECT_EQ(rect, (RECT{20, 20, 60, 40}));
    m_adapter.ConvertRect(rect, CQzScreenAdapter::kToLogical);
    EXPECT_EQ(rect, (RECT{10, 20, 30, 40}));

    POINT unknown = {5, 5};
    m_adapter.ConvertPoint(unknown, 7);
    EXPECT_EQ(unknown.x, 5);
}

TEST_F(ScreenAdapterTest, ResolutionIndexFollowsTheScreenWidthUnlessSet)
{
    const std::pair<int, int> cases[] = {{640, 2},  {799, 2},  {800, 1},
                                         {1023, 1}, {1024, 0}, {1920, 0}};
    for (const auto& [width, index] : cases)
    {
        m_device.m_nWidth = width;
        EXPECT_EQ(m_adapter.GetResolutionIndex(), index) << width;
    }
    m_adapter.SetResolutionIndex(1);
    EXPECT_EQ(m_adapter.GetResolutionIndex(), 1);
    m_adapter.SetResolutionIndex(-1);
    EXPECT_EQ(m_adapter.GetResolutionIndex(), 0);
}
