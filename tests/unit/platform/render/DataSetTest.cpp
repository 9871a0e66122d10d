// The data set: sections of .ani files reaching the render device, frames and mask queries, the
// section cache with its keep-alive, reloads, device changes and the animation store's handles.
#include "platform/render/DataSet.h"
#include "platform/render/TableDataSet.h"
#include "platform/services/QzAniStore.h"
#include "support/LogCapture.h"
#include "support/RecordingDevice.h"
#include "support/ScopedClock.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

using QzTest::DrawKind;
using QzTest::RecordingDevice;

const char* const kFile = "ani/Control.ani";

const char* const kControlAni = "[Button]\n"
                                "FrameAmount=2\n"
                                "Frame0=ani/button.png\n"
                                "Frame1=ani/atlas.png 10 20 30 40\n"
                                "[Mask]\n"
                                "FrameAmount=1\n"
                                "Frame0=ani/mask.png\n"
                                "Kind0=2\n"
                                "[AtlasMask]\n"
                                "FrameAmount=1\n"
                                "Frame0=ani/maskatlas.png 2 1 3 2\n"
                                "Kind0=2\n"
                                "[NoImage]\n"
                                "FrameAmount=1\n"
                                "Frame0=ani/nothere.png\n"
                                "[Broken]\n"
                                "FrameAmount=1\n"
                                "Frame0\n";

class DataSetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_root.Write(kFile, kControlAni);
        m_device.DefineTexture("ani/button.png", 16, 8);
        m_device.DefineTexture("ani/atlas.png", 100, 100);
        m_device.DefineTexture("ani/mask.png", {"##..", "#..."});
        m_device.DefineTexture("ani/maskatlas.png", {"......", "..##..", "...#.."});
    }

    IDataAni* Get(const char* section, DWORD keepAliveMs = 30000)
    {
        return TableDataSetQuery()->GetAni(kFile, section, 0, keepAliveMs, 0);
    }

    static bool IsCached(const char* section)
    {
        return QzPlatform::CTableDataSet::Instance().IsCached(kFile, section);
    }
    // What GetAniSize answers for a frame, as "result width x height".
    static std::string SizeOf(IDataAni* pAni, int frame)
    {
        C3_SIZE size = {-1, -1};
        const bool bFound = pAni->GetAniSize(size, frame);
        return (bFound ? "found " : "none ") + std::to_string(size.iWidth) + "x" +
               std::to_string(size.iHeight);
    }
    // The frame's pixels from (-1, -1) to (width, height), '#' where opaque.
    static std::vector<std::string> Opacity(IDataFrame* pFrame, int width, int height)
    {
        std::vector<std::string> rows;
        for (int y = -1; y <= height; ++y)
        {
            rows.emplace_back();
            for (int x = -1; x <= width; ++x)
                rows.back() += pFrame->IsTransparentAt(x, y) ? '.' : '#';
        }
        return rows;
    }

    QzTest::LogCapture m_log; // the file has a broken section
    QzTest::TempDataDir m_root;
    RecordingDevice m_device;
};

TEST_F(DataSetTest, SectionsAreFoundByAnyCaseOfFileAndSectionName)
{
    IDataAni* pButton = Get("Button");
    ASSERT_NE(pButton, nullptr);
    EXPECT_EQ(TableDataSetQuery()->GetAni("ANI\\control.ani", "bUTTON", 1, 30000, 0), pButton);
    EXPECT_EQ(pButton->GetFrameCount(), 2);
    EXPECT_EQ(SizeOf(pButton, 0), "found 16x8");
    EXPECT_EQ(SizeOf(pButton, 1), "found 30x40"); // an atlas frame: its rectangle, not its image
    EXPECT_EQ(SizeOf(pButton, 2), "none 0x0");
    EXPECT_EQ(pButton->GetFrame(-1), nullptr);
    EXPECT_EQ(pButton->GetFrame(2), nullptr);
    EXPECT_EQ(Get("Unknown"), nullptr);
    EXPECT_EQ(Get("Broken"), nullptr);
    ASSERT_EQ(m_log.Records().size(), 1u);
    EXPECT_EQ(m_log.Records()[0].Get("line"), "Frame0");
}

TEST_F(DataSetTest, ShowAniDrawsTheFrameAtItsSizeWithAlphaAndScale)
{
    IDataAni* pButton = Get("Button");
    ASSERT_NE(pButton, nullptr);
    EXPECT_TRUE(pButton->ShowAni(0, 5, 6, 0, 0, 2.0f, 128));
    EXPECT_TRUE(pButton->ShowAni(1, 7, 8, 0, 0, 1.0f));
    EXPECT_FALSE(pButton->ShowAni(2, 7, 8, 0, 0, 1.0f));
    EXPECT_EQ(m_device.Trace(),
              "texture ani/button.png src(0,0,16,8) at 5,6 size 16x8 alpha 128 scale 2\n"
              "texture ani/atlas.png src(10,20,40,60) at 7,8 size 30x40 alpha 255 scale 1\n");
}

TEST_F(DataSetTest, ShowAniExStretchesAPartOfTheFrame)
{
    IDataAni* pButton = Get("Button");
    ASSERT_NE(pButton, nullptr);
    const RECT part = {5, 5, 15, 25};
    EXPECT_TRUE(pButton->ShowAniEx(1, 0, 0, &part, 50, 60, 0, 0, 1.0f, 77));
    EXPECT_TRUE(pButton->ShowAniEx(0, 1, 2, nullptr, 32, 4, 0, 0, 1.0f));
    EXPECT_EQ(m_device.Trace(),
              "texture ani/atlas.png src(15,25,25,45) at 0,0 size 50x60 alpha 77 scale 1\n"
              "texture ani/button.png src(0,0,16,8) at 1,2 size 32x4 alpha 255 scale 1\n");
}

TEST_F(DataSetTest, ShowAniExCutsASourceReachingOutsideTheFrame)
{
    IDataAni* pButton = Get("Button");
    ASSERT_NE(pButton, nullptr);
    // 24 source pixels over 48 destination pixels; the 8 pixels left of the frame are cut.
    const RECT wide = {-8, 0, 16, 8};
    EXPECT_TRUE(pButton->ShowAniEx(0, 100, 0, &wide, 48, 8, 0, 0, 1.0f));
    EXPECT_TRUE(pButton->ShowAniEx(0, 100, 0, &wide, 48, 8, 0, 0, 2.0f));
    // An atlas frame never shows its neighbours in the image.
    const RECT below = {0, 30, 30, 50};
    EXPECT_TRUE(pButton->ShowAniEx(1, 0, 0, &below, 30, 20, 0, 0, 1.0f));
    const RECT outside = {20, 0, 30, 8};
    const RECT upsideDown = {0, 8, 16, 0};
    EXPECT_FALSE(pButton->ShowAniEx(0, 0, 0, &outside, 10, 8, 0, 0, 1.0f));
    EXPECT_FALSE(pButton->ShowAniEx(0, 0, 0, &upsideDown, 10, 8, 0, 0, 1.0f));
    EXPECT_FALSE(pButton->ShowAniEx(0, 0, 0, nullptr, 0, 8, 0, 0, 1.0f));
    EXPECT_EQ(m_device.Trace(),
              "texture ani/button.png src(0,0,16,8) at 116,0 size 32x8 alpha 255 scale 1\n"
              "texture ani/button.png src(0,0,16,8) at 132,0 size 32x8 alpha 255 scale 2\n"
              "texture ani/atlas.png src(10,50,40,60) at 0,0 size 30x10 alpha 255 scale 1\n");
}

TEST_F(DataSetTest, AnImageTheDeviceCannotLoadGivesAnEmptyFrame)
{
    IDataAni* pSection = Get("NoImage");
    ASSERT_NE(pSection, nullptr);
    ASSERT_NE(pSection->GetFrame(0), nullptr);
    EXPECT_EQ(pSection->GetFrame(0)->GetFrameWidth(), 0);
    EXPECT_EQ(pSection->GetFrame(0)->GetFrameHeight(), 0);
    EXPECT_FALSE(pSection->ShowAni(0, 0, 0, 0, 0, 1.0f));
    EXPECT_TRUE(m_device.Calls().empty());
}

TEST_F(DataSetTest, MaskFramesAnswerPointQueries)
{
    IDataAni* pButton = Get("Button");
    IDataAni* pMask = Get("Mask");
    IDataAni* pAtlasMask = Get("AtlasMask");
    ASSERT_TRUE(pButton && pMask && pAtlasMask);
    EXPECT_EQ(pButton->GetFrame(0)->GetKind(), 0);
    EXPECT_EQ(pMask->GetFrame(0)->GetKind(), 2);
    EXPECT_EQ(Opacity(pMask->GetFrame(0), 4, 2),
              (std::vector<std::string>{"......", ".##...", ".#....", "......"}));
    // Atlas masks are queried inside their rectangle (2, 1) - (5, 3) of the image.
    IDataFrame* pAtlas = pAtlasMask->GetFrame(0);
    EXPECT_EQ(pAtlas->GetFrameWidth(), 3);
    EXPECT_EQ(Opacity(pAtlas, 3, 2),
              (std::vector<std::string>{".....", ".##..", "..#..", "....."}));
}

TEST_F(DataSetTest, AMissingFileIsReportedOncePerLoad)
{
    QzTest::LogCapture& log = m_log;
    IDataSet* pData = TableDataSetQuery();
    EXPECT_EQ(pData->GetAni("ani/Other.ani", "Button", 0, 30000, 0), nullptr);
    EXPECT_EQ(pData->GetAni("ani/Other.ani", "Button", 0, 30000, 0), nullptr);
    EXPECT_EQ(log.Count("open file failed"), 1);
    pData->Reload();
    EXPECT_EQ(pData->GetAni("ani/Other.ani", "Button", 0, 30000, 0), nullptr);
    EXPECT_EQ(log.Count("open file failed"), 2);
    EXPECT_EQ(log.Find("open file failed")->Get("file_name"), "ani/Other.ani");
}

TEST_F(DataSetTest, ReloadReadsTheFileAgain)
{
    ASSERT_NE(Get("Button"), nullptr);
    m_root.Write(kFile, "[Button]\nFrameAmount=1\nFrame0=ani/atlas.png\n");
    EXPECT_EQ(Get("Button")->GetFrameCount(), 2);
    TableDataSetQuery()->Reload();
    ASSERT_NE(Get("Button"), nullptr);
    EXPECT_EQ(Get("Button")->GetFrameCount(), 1);
    EXPECT_EQ(Get("Mask"), nullptr);
}

TEST_F(DataSetTest, FramesFollowANewlyInstalledDevice)
{
    IDataAni* pButton = Get("Button");
    ASSERT_NE(pButton, nullptr);
    EXPECT_EQ(pButton->GetFrame(0)->GetFrameWidth(), 16);
    RecordingDevice other;
    other.DefineTexture("ani/unrelated.png", 1, 1);
    other.DefineTexture("ani/button.png", 32, 16);
    EXPECT_EQ(Get("Button"), pButton);
    EXPECT_EQ(pButton->GetFrame(0)->GetFrameWidth(), 32);
    EXPECT_TRUE(pButton->ShowAni(0, 0, 0, 0, 0, 1.0f));
    ASSERT_EQ(other.Calls().size(), 1u);
    EXPECT_EQ(other.Calls()[0].texture, 2u);
    EXPECT_TRUE(m_device.Calls().empty());
}

TEST_F(DataSetTest, StringsAndIconSets)
{
    m_root.Write("ini/StringTable.ini", "7=Hello\n");
    EXPECT_STREQ(TableDataSetQuery()->GetString(7), "Hello");
    EXPECT_STREQ(TableDataSetQuery()->GetString(8), "");
    EXPECT_NE(TableDataSetQuery()->GetIconSet(0), nullptr);
    EXPECT_EQ(TableDataSetQuery()->GetIconSet(1), nullptr);
}

// The cache: a section stays while it is asked for within its keep-alive, is dropped when idle
// longer, and is built again (loading its images again) when asked for after that.
TEST_F(DataSetTest, ASectionIdlePastItsKeepAliveIsDroppedAndBuiltAgain)
{
    QzTest::ScopedClock clock(10000);
    ASSERT_NE(Get("Button", 5000), nullptr);
    EXPECT_EQ(Get("Button", 5000)->GetFrame(0)->GetFrameWidth(), 16);
    EXPECT_EQ(m_device.GetLoadCount("ani/button.png"), 1);
    clock.Set(15000);
    ASSERT_NE(Get("Mask"), nullptr);
    EXPECT_TRUE(IsCached("Button"));
    clock.Set(16001);
    ASSERT_NE(Get("Mask"), nullptr);
    EXPECT_FALSE(IsCached("Button"));
    EXPECT_TRUE(IsCached("Mask"));
    EXPECT_EQ(Get("Button", 5000)->GetFrame(0)->GetFrameWidth(), 16);
    EXPECT_EQ(m_device.GetLoadCount("ani/button.png"), 2);
}

TEST_F(DataSetTest, ASectionInUseIsKept)
{
    QzTest::ScopedClock clock(0);
    ASSERT_NE(Get("AtlasMask", 5000), nullptr);
    for (DWORD now = 3000; now <= 15000; now += 3000)
    {
        clock.Set(now);
        ASSERT_NE(Get("Button", 5000), nullptr);
        ASSERT_NE(Get("Mask", 5000), nullptr);
        EXPECT_TRUE(IsCached("Button")) << now;
    }
    EXPECT_FALSE(IsCached("AtlasMask"));
}

TEST_F(DataSetTest, TheSectionBeingReturnedIsNeverPurged)
{
    QzTest::ScopedClock clock(0);
    ASSERT_NE(Get("Button", 0), nullptr);
    clock.Set(2000);
    ASSERT_NE(Get("Button", 0), nullptr);
    EXPECT_TRUE(IsCached("Button"));
    clock.Set(4000);
    ASSERT_NE(Get("Mask", 0), nullptr);
    EXPECT_FALSE(IsCached("Button"));
}

TEST_F(DataSetTest, PurgesRunAtMostOnceASecond)
{
    QzTest::ScopedClock clock(0);
    ASSERT_NE(Get("Button", 100), nullptr);
    clock.Set(500);
    ASSERT_NE(Get("Mask"), nullptr);
    EXPECT_TRUE(IsCached("Button"));
    clock.Set(1000);
    ASSERT_NE(Get("Mask"), nullptr);
    EXPECT_FALSE(IsCached("Button"));
}

TEST_F(DataSetTest, KeepAliveSurvivesTheClockWrap)
{
    const DWORD start = 0xFFFFF000u;
    QzTest::ScopedClock clock(start);
    ASSERT_NE(Get("Button", 30000), nullptr);
    clock.Set(start + 5000);
    ASSERT_NE(Get("Mask"), nullptr);
    EXPECT_TRUE(IsCached("Button"));
    clock.Set(start + 31000);
    ASSERT_NE(Get("Mask"), nullptr);
    EXPECT_FALSE(IsCached("Button"));
}

// Asking again with the same names is the common case on every frame; the answer must still
// follow the text (not where it is stored), purges and reloads.
TEST_F(DataSetTest, RepeatedLookUpsFollowTheNamesPurgesAndReloads)
{
    QzTest::ScopedClock clock(0);
    char szSection[] = "Button";
    IDataAni* pButton = Get(szSection, 100);
    ASSERT_NE(pButton, nullptr);
    EXPECT_EQ(Get(szSection, 100), pButton);
    std::strcpy(szSection, "Mask");
    IDataAni* pMask = Get(szSection, 100);
    ASSERT_NE(pMask, nullptr);
    EXPECT_NE(pMask, pButton);
    EXPECT_EQ(pMask->GetFrame(0)->GetKind(), 2);
    EXPECT_EQ(TableDataSetQuery()->GetAni("ANI/CONTROL.ANI", "MASK", 0, 100, 0), pMask);

    // The last section found is dropped by a purge that a failed look-up runs.
    ASSERT_NE(Get("Button", 100), nullptr);
    clock.Set(2000);
    EXPECT_EQ(Get("Unknown"), nullptr);
    EXPECT_FALSE(IsCached("Button"));
    ASSERT_NE(Get("Button"), nullptr);
    EXPECT_TRUE(IsCached("Button"));
    EXPECT_EQ(Get("Button")->GetFrame(0)->GetFrameWidth(), 16);

    m_root.Write(kFile, "[Button]\nFrameAmount=1\nFrame0=ani/atlas.png\n");
    TableDataSetQuery()->Reload();
    ASSERT_NE(Get("Button"), nullptr);
    EXPECT_EQ(Get("Button")->GetFrameCount(), 1);
}

TEST_F(DataSetTest, LongNamesAreFoundInAnyCase)
{
    const std::string name = "Long" + std::string(300, 'x');
    m_root.Write("ani/Long.ani", "[" + name + "]\nFrameAmount=1\nFrame0=ani/button.png\n");
    std::string upper = name;
    for (char& c : upper)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    IDataAni* pLong = TableDataSetQuery()->GetAni("ani/Long.ani", name.c_str(), 0, 30000, 0);
    ASSERT_NE(pLong, nullptr);
    EXPECT_EQ(TableDataSetQuery()->GetAni("ANI\\LONG.ANI", upper.c_str(), 0, 30000, 0), pLong);
    EXPECT_TRUE(QzPlatform::CTableDataSet::Instance().IsCached("ani/long.ani", upper.c_str()));
    EXPECT_EQ(TableDataSetQuery()->GetAni("ani/Long.ani", (name + "y").c_str(), 0, 30000, 0),
              nullptr);
}

// The animation store's handles share the cache and outlive purges and reloads.
TEST_F(DataSetTest, AniStoreHandlesShareTheCache)
{
    QzPlatform::CAniHandle handle;
    ASSERT_TRUE(QzPlatform::GetAniStore()->LoadAni(handle, kFile, "Button"));
    EXPECT_EQ(handle.GetAni(), Get("Button"));
    EXPECT_EQ(handle.GetFrameCount(), 2);
    int width = 0;
    int height = 0;
    EXPECT_TRUE(handle.GetFrameSize(1, width, height));
    EXPECT_EQ(std::make_pair(width, height), std::make_pair(30, 40));
    EXPECT_FALSE(handle.GetFrameSize(2, width, height));
    EXPECT_EQ(width, 0);

    QzPlatform::GetAniStore()->Reload();
    EXPECT_FALSE(IsCached("Button"));
    EXPECT_TRUE(handle.Draw(0, 3, 4, 200));
    EXPECT_EQ(m_device.Trace(),
              "texture ani/button.png src(0,0,16,8) at 3,4 size 16x8 alpha 200 scale 1\n");
    handle.Release();
    EXPECT_FALSE(handle.IsValid());
    EXPECT_FALSE(handle.Draw(0, 3, 4));
}

TEST_F(DataSetTest, AniStoreRefusesMissingSections)
{
    QzPlatform::CAniHandle handle;
    EXPECT_FALSE(QzPlatform::GetAniStore()->LoadAni(handle, kFile, "Broken"));
    EXPECT_FALSE(handle.IsValid());
    EXPECT_EQ(handle.GetFrameCount(), 0);
    EXPECT_FALSE(QzPlatform::GetAniStore()->LoadAni(handle, kFile, nullptr));
    EXPECT_FALSE(QzPlatform::GetAniStore()->LoadAni(handle, nullptr, "Button"));
}

} // namespace
