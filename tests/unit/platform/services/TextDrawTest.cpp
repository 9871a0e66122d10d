#include "FakeTextDevice.h"

#include "platform/services/QzTextDraw.h"
#include "platform/services/QzWidgetKit.h"
#include "support/GeometryPrint.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace QzPlatform;

namespace
{

class TextDrawTest : public ::testing::Test
{
protected:
    void SetUp() override { SetRenderDevice(&m_device); }
    void TearDown() override
    {
        SetRenderDevice(nullptr);
        GetWidgetKit().Clear();
    }

    QzServicesTest::FakeTextDevice m_device;
};

const char* const kGbkChinese = "\xD6\xD0\xCE\xC4";          // two characters in code page 936
const char* const kUtf8Chinese = "\xE4\xB8\xAD\xE6\x96\x87"; // the same in UTF-8

} // namespace

TEST_F(TextDrawTest, NarrowTextReachesTheDeviceAsUtf8)
{
    C3_SIZE size = {-1, -1};
    DrawGameText(10, 20, 0xFFFFFFFF, kGbkChinese, "SimSun", 14, 0, 0, 0xFF000000, &size);
    ASSERT_EQ(m_device.m_vecDrawn.size(), 1u);
    const QzServicesTest::TextCall& call = m_device.m_vecDrawn[0];
    EXPECT_EQ(call.utf8, kUtf8Chinese);
    EXPECT_EQ(call.x, 10);
    EXPECT_EQ(call.y, 20);
    EXPECT_EQ(call.font.face, "SimSun");
    EXPECT_EQ(call.font.size, 14);
    EXPECT_EQ(call.argb, 0xFFFFFFFFu);
    EXPECT_EQ(size.iWidth, 6 * 7);
    EXPECT_EQ(size.iHeight, 16);
}

// Colours without an alpha byte (0x00RRGGBB) are opaque; translucent ones stay as given.
TEST_F(TextDrawTest, ShadowColourOnlyWhenShadowIsOnAndAlphaZeroTextIsOpaque)
{
    DrawGameText(0, 0, 0xFF00FF00, "a", "", 12, 1, 0, 0xFF000000, nullptr);
    DrawGameText(0, 0, 0x0000FF00, "b", "", 12, 0, 0, 0xFF000000, nullptr);
    DrawGameText(0, 0, 0x8000FF00, L"c", nullptr, 12, 5, 0, 0x80112233, nullptr);
    ASSERT_EQ(m_device.m_vecDrawn.size(), 3u);
    EXPECT_EQ(m_device.m_vecDrawn[1].argb, 0xFF00FF00u);
    EXPECT_EQ(m_device.m_vecDrawn[2].argb, 0x8000FF00u);
    EXPECT_EQ(m_device.m_vecDrawn[0].shadowArgb, 0xFF000000u);
    EXPECT_EQ(m_device.m_vecDrawn[1].shadowArgb, 0u);
    EXPECT_EQ(m_device.m_vecDrawn[2].shadowArgb, 0x80112233u);
    EXPECT_EQ(m_device.m_vecDrawn[2].font.face, "");
    EXPECT_TRUE(m_device.m_vecMeasured.empty()); // no size wanted, nothing measured
}

TEST_F(TextDrawTest, NewlinesStartLinesSizePlusTwoLower)
{
    C3_SIZE size = {};
    DrawGameText(5, 100, 0xFF000000, L"ab\r\n\ncdef", "Tahoma", 11, 0, 0, 0, &size);
    ASSERT_EQ(m_device.m_vecDrawn.size(), 2u); // the empty line is skipped but takes its room
    EXPECT_EQ(m_device.m_vecDrawn[0].utf8, "ab");
    EXPECT_EQ(m_device.m_vecDrawn[0].y, 100);
    EXPECT_EQ(m_device.m_vecDrawn[1].utf8, "cdef");
    EXPECT_EQ(m_device.m_vecDrawn[1].x, 5);
    EXPECT_EQ(m_device.m_vecDrawn[1].y, 100 + 2 * 13);
    EXPECT_EQ(size.iWidth, 4 * 7);
    EXPECT_EQ(size.iHeight, 3 * 13);
}

TEST_F(TextDrawTest, NullAndEmptyTextDrawNothing)
{
    C3_SIZE size = {9, 9};
    DrawGameText(0, 0, 0, static_cast<const char*>(nullptr), "f", 12, 1, 0, 0, &size);
    EXPECT_EQ(size, (C3_SIZE{0, 0}));
    DrawGameText(0, 0, 0, static_cast<const wchar_t*>(nullptr), "f", 12, 1, 0, 0, nullptr);
    DrawGameText(0, 0, 0, "", "f", 12, 1, 0, 0, nullptr);
    EXPECT_TRUE(m_device.m_vecDrawn.empty());
}

TEST_F(TextDrawTest, MeasuresConvertAndBoundTheirText)
{
    CQzWidgetKit& kit = GetWidgetKit();
    EXPECT_EQ(kit.MeasureWideText(L"\u4e2d", "SimSun", 14, 0, 0), 3 * 7);
    EXPECT_EQ(m_device.m_vecMeasured.back().utf8, "\xE4\xB8\xAD");
    EXPECT_EQ(m_device.m_vecMeasured.back().font.size, 14);

    EXPECT_EQ(kit.MeasureTextWidth("abcdef", 3, "f", 12), 3 * 7);
    EXPECT_EQ(m_device.m_vecMeasured.back().utf8, "abc");
    EXPECT_EQ(kit.MeasureTextWidth(kGbkChinese, -1, "f", 12), 6 * 7);
    EXPECT_EQ(m_device.m_vecMeasured.back().utf8, kUtf8Chinese);
    const char shortText[] = {'x', 0, 'y'};
    EXPECT_EQ(kit.MeasureTextWidth(shortText, 3, "f", 12), 7); // stops at the terminator

    EXPECT_EQ(kit.MeasureTextWidth(nullptr, 5, "f", 12), 0);
    EXPECT_EQ(kit.MeasureWideText(nullptr, "f", 12, 0, 0), 0);
}

TEST_F(TextDrawTest, DrawRecordKeepsTheLastReportsAndCountsAll)
{
    CQzWidgetKit& kit = GetWidgetKit();
    EXPECT_EQ(kit.GetLastReport(), nullptr);
    kit.ReportDraw(100, 50, 3, 4, "DialogNorMsg", 2, "ani/control.ani");
    ASSERT_NE(kit.GetLastReport(), nullptr);
    EXPECT_EQ(kit.GetLastReport()->section, "DialogNorMsg");
    EXPECT_EQ(kit.GetLastReport()->height, 50);
    EXPECT_EQ(kit.GetLastReport()->y, 4);

    for (int i = 1; i < 300; ++i)
        kit.ReportDraw(i, 0, 0, 0, nullptr, i, nullptr);
    EXPECT_EQ(kit.GetReportCount(), 300u);
    const std::vector<DrawReport> reports = kit.GetReports();
    ASSERT_EQ(reports.size(), CQzWidgetKit::kReportCapacity);
    EXPECT_EQ(reports.front().frameNumber, 300 - 256);
    for (size_t i = 1; i < reports.size(); ++i)
        ASSERT_EQ(reports[i].frameNumber, reports[i - 1].frameNumber + 1);
    EXPECT_EQ(reports.back().frameNumber, 299);
    EXPECT_EQ(kit.GetLastReport()->frameNumber, 299);
    EXPECT_EQ(kit.GetLastReport()->section, "");

    kit.Clear();
    EXPECT_EQ(kit.GetReportCount(), 0u);
    EXPECT_TRUE(kit.GetReports().empty());
    kit.ReportDraw(1, 1, 1, 1, "A", 0, "f");
    EXPECT_EQ(kit.GetReports().size(), 1u);
    EXPECT_EQ(kit.GetLastReport()->section, "A");
}

TEST_F(TextDrawTest, DrawRecordKeepsSectionsOfAnyLength)
{
    CQzWidgetKit& kit = GetWidgetKit();
    const std::string sections[] = {std::string(47, 'a'), std::string(48, 'b'),
                                    std::string(200, 'c'), "Short", ""};
    for (const std::string& section : sections)
        kit.ReportDraw(1, 2, 3, 4, section.c_str(), 5, "ani/control.ani");
    const std::vector<DrawReport> reports = kit.GetReports();
    ASSERT_EQ(reports.size(), 5u);
    for (size_t i = 0; i < reports.size(); ++i)
    {
        EXPECT_EQ(reports[i].section, sections[i]);
        EXPECT_EQ(reports[i].file, "ani/control.ani");
    }
    // Once the ring is full, reports are written over the oldest: report 5 + 253 goes to the
    // slot of the long section 2, report 5 + 254 to that of "Short".
    for (size_t i = 0; i < CQzWidgetKit::kReportCapacity; ++i)
        kit.ReportDraw(0, 0, 0, 0, i == 253 ? "Short" : sections[2].c_str(), 0, nullptr);
    const std::vector<DrawReport> kept = kit.GetReports();
    EXPECT_EQ(kept[253].section, "Short");
    EXPECT_EQ(kept[254].section, sections[2]);
    EXPECT_EQ(kit.GetLastReport()->file, "");
}
