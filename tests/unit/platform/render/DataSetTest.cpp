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
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using QzTest::RecordingDevice;

const char* const kFile = "ani/Control.ani";

const char* const kControlAni =
    "[Button]\nFrameAmount=2\nFrame0=ani/button.png\nFrame1=ani/atlas.png 10 20 30 40\n"
    "[Mask]\nFrameAmount=1\nFrame0=ani/mask.png\nKind0=2\n"
    "[AtlasMask]\nFrameAmount=1\nFrame0=ani/maskatlas.png 2 1 3 2\nKind0=2\n"
    "[NoImage]\nFrameAmount=1\nFrame0=ani/nothere.png\n"
    "[Broken]\nFrameAmount=1\nFrame0\n";

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

// Sizes and kinds of frames; an image the device cannot load gives an empty frame.
TEST_F(DataSetTest, SectionsAreFoundByAnyCaseAndAnswerFrameSizesKindsAndMaskPoints)
{
    IDataAni* pButton = Get("Button");
    IDataAni* pMask = Get("Mask");
    IDataAni* pNoImage = Get("NoImage");
    ASSERT_TRUE(pButton && pMask && pNoImage);
    EXPECT_EQ(TableDataSetQuery()->GetAni("ANI\\control.ani", "bUTTON", 1, 30000, 0), pButton);
    EXPECT_EQ(pButton->GetFrameCount(), 2);
    // An atlas frame has the size of its rectangle, not of its image.
    EXPECT_EQ((std::vector<std::string>{"found 16x8", "found 30x40", "none 0x0", "found 0x0"}),
              (std::vector<std::string>{SizeOf(pButton, 0), SizeOf(pButton, 1), SizeOf(pButton, 2),
                                        SizeOf(pNoImage, 0)}));
    EXPECT_EQ(pButton->GetFrame(-1), nullptr);
    EXPECT_EQ(pButton->GetFrame(2), nullptr);
    EXPECT_EQ(Get("Unknown"), nullptr);
    EXPECT_EQ(Get("Broken"), nullptr);
    ASSERT_EQ(m_log.Records().size(), 1u);
    EXPECT_EQ(m_log.Records()[0].Get("line"), "Frame0");

    EXPECT_EQ(pButton->GetFrame(0)->GetKind(), 0);
    EXPECT_EQ(pMask->GetFrame(0)->GetKind(), 2);
    EXPECT_EQ(Opacity(pMask->GetFrame(0), 4, 2),
              (std::vector<std::string>{"......", ".##...", ".#....", "......"}));
    // Atlas masks are queried inside their rectangle (2, 1) - (5, 3) of the image.
    IDataFrame* pAtlas = Get("AtlasMask")->GetFrame(0);
    EXPECT_EQ(pAtlas->GetFrameWidth(), 3);
    EXPECT_EQ(Opacity(pAtlas, 3, 2),
              (std::vector<std::string>{".....", ".##..", "..#..", "....."}));
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

// ShowAni draws the frame at its size; ShowAniEx stretches a part of it, cutting what reaches
// outside the frame; an atlas frame never shows its neighbours in the image.
TEST_F(DataSetTest, ShowAniDrawsTheFrameAndShowAniExAPartCutToIt)
{
    IDataAni* pButton = Get("Button");
    IDataAni* pNoImage = Get("NoImage");
    ASSERT_TRUE(pButton && pNoImage);
    const RECT part = {5, 5, 15, 25}, wide = {-8, 0, 16, 8}, below = {0, 30, 30, 50};
    const RECT outside = {20, 0, 30, 8}, upsideDown = {0, 8, 16, 0};
    EXPECT_TRUE(pButton->ShowAni(0, 5, 6, 0, 0, 2.0f, 128));
    EXPECT_TRUE(pButton->ShowAni(1, 7, 8, 0, 0, 1.0f));
    EXPECT_TRUE(pButton->ShowAniEx(1, 0, 0, &part, 50, 60, 0, 0, 1.0f, 77));
    EXPECT_TRUE(pButton->ShowAniEx(0, 1, 2, nullptr, 32, 4, 0, 0, 1.0f));
    // 24 source pixels over 48: the 8 left of the frame are cut, 16 (32 scaled) pixels.
    EXPECT_TRUE(pButton->ShowAniEx(0, 100, 0, &wide, 48, 8, 0, 0, 1.0f));
    EXPECT_TRUE(pButton->ShowAniEx(0, 100, 0, &wide, 48, 8, 0, 0, 2.0f));
    EXPECT_TRUE(pButton->ShowAniEx(1, 0, 0, &below, 30, 20, 0, 0, 1.0f));
    EXPECT_FALSE(pButton->ShowAni(2, 7, 8, 0, 0, 1.0f) || pNoImage->ShowAni(0, 0, 0, 0, 0, 1.0f) ||
                 pButton->ShowAniEx(0, 0, 0, &outside, 10, 8, 0, 0, 1.0f) ||
                 pButton->ShowAniEx(0, 0, 0, &upsideDown, 10, 8, 0, 0, 1.0f) ||
                 pButton->ShowAniEx(0, 0, 0, nullptr, 0, 8, 0, 0, 1.0f));
    EXPECT_EQ(m_device.Trace(),
              "texture ani/button.png src(0,0,16,8) at 5,6 size 16x8 alpha 128 scale 2\n"
              "texture ani/atlas.png src(10,20,40,60) at 7,8 size 30x40 alpha 255 scale 1\n"
              "texture ani/atlas.png src(15,25,25,45) at 0,0 size 50x60 alpha 77 scale 1\n"
              "texture ani/button.png src(0,0,16,8) at 1,2 size 32x4 alpha 255 scale 1\n"
              "texture ani/button.png src(0,0,16,8) at 116,0 size 32x8 alpha 255 scale 1\n"
              "texture ani/button.png src(0,0,16,8) at 132,0 size 32x8 alpha 255 scale 2\n"
              "texture ani/atlas.png src(10,50,40,60) at 0,0 size 30x10 alpha 255 scale 1\n");
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
// longer (purges run at most once a second), and is built again, loading its images again, when
// asked for after that. Each scenario starts from a reload. A step is
// "<now> <section>[/<keep-alive>]" then "+<section>" for each section cached, "-<section>" for
// each not, "#<n>" for the loads of the button's image so far once its size is asked.
TEST_F(DataSetTest, PurgesDropOnlySectionsIdlePastTheirKeepAliveAtMostOnceASecond)
{
    const std::pair<const char*, const char*> scenarios[] = {
        {"idle", "10000 Button/5000 #1; 10000 Button/5000 #1; 15000 Mask +Button;"
                 "16001 Mask -Button +Mask; 16001 Button/5000 #2"},
        {"in use", "0 AtlasMask/5000; 3000 Button/5000; 3000 Mask/5000 +Button; 6000 Button/5000;"
                   "6000 Mask/5000 +Button -AtlasMask; 9000 Button/5000; 9000 Mask/5000 +Button"},
        {"being returned", "0 Button/0; 2000 Button/0 +Button; 4000 Mask/0 +Mask -Button"},
        {"once a second", "0 Button/100; 500 Mask +Button; 1000 Mask -Button"},
        // The clock wraps at 4294967296: 5000 and 31000 ms after the first step.
        {"clock wrap", "4294963200 Button; 904 Mask +Button; 26904 Mask -Button"},
        // A clock set back: the sections are idle from the step on.
        {"clock set back", "100000 Button; 50000 Mask +Button; 79999 Mask +Button;"
                           "81000 Mask -Button +Mask"}};
    // Each scenario by name, and through refs kept by the caller (touching as much).
    for (const auto& [pszScenario, pszSteps] : scenarios)
        for (const bool bByRef : {false, true})
        {
            std::map<std::string, QzPlatform::AniRef> refs;
            const int nLoadsBefore = m_device.GetLoadCount("ani/button.png");
            TableDataSetQuery()->Reload();
            QzTest::ScopedClock clock(0);
            std::istringstream steps(pszSteps);
            for (std::string step; std::getline(steps, step, ';');)
            {
                SCOPED_TRACE(std::string(pszScenario) + (bByRef ? " by ref:" : ":") + step);
                std::istringstream in(step);
                DWORD dwNow = 0;
                std::string section;
                in >> dwNow >> section;
                const size_t nSlash = section.find('/');
                const DWORD dwKeepAlive =
                    nSlash == std::string::npos ? 30000 : std::stoul(section.substr(nSlash + 1));
                clock.Set(dwNow);
                const std::string name = section.substr(0, nSlash);
                IDataAni* pAni = bByRef ? QzPlatform::CTableDataSet::Instance().GetAni(
                                              refs[name], kFile, name.c_str(), dwKeepAlive)
                                        : Get(name.c_str(), dwKeepAlive);
                ASSERT_NE(pAni, nullptr);
                for (std::string mark; in >> mark;)
                {
                    if (mark[0] != '#')
                    {
                        EXPECT_EQ(mark[0] == '+', IsCached(mark.c_str() + 1)) << mark;
                        continue;
                    }
                    EXPECT_EQ(16, pAni->GetFrame(0)->GetFrameWidth());
                    EXPECT_EQ(std::stoi(mark.substr(1)),
                              m_device.GetLoadCount("ani/button.png") - nLoadsBefore);
                }
            }
        }
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

    // A changed file is read again on a reload only; refs follow the reload.
    QzPlatform::CTableDataSet& dataSet = QzPlatform::CTableDataSet::Instance();
    QzPlatform::AniRef button;
    QzPlatform::AniRef mask;
    EXPECT_EQ(dataSet.GetAni(mask, kFile, "Mask", 100), Get("Mask"));
    m_root.Write(kFile, "[Button]\nFrameAmount=1\nFrame0=ani/atlas.png\n");
    EXPECT_EQ(Get("Button")->GetFrameCount(), 2);
    EXPECT_EQ(dataSet.GetAni(button, kFile, "Button", 100)->GetFrameCount(), 2);
    TableDataSetQuery()->Reload();
    ASSERT_NE(Get("Button"), nullptr);
    EXPECT_EQ(Get("Button")->GetFrameCount(), 1);
    EXPECT_EQ(dataSet.GetAni(button, kFile, "Button", 100), Get("Button"));
    EXPECT_EQ(Get("Mask"), nullptr);
    EXPECT_EQ(dataSet.GetAni(mask, kFile, "Mask", 100), nullptr);
}

// The animation store's handles share the cache and outlive purges and reloads.
TEST_F(DataSetTest, AniStoreHandlesShareTheCacheAndRefuseMissingSections)
{
    QzPlatform::CAniHandle handle;
    EXPECT_FALSE(QzPlatform::GetAniStore()->LoadAni(handle, kFile, "Broken") ||
                 QzPlatform::GetAniStore()->LoadAni(handle, kFile, nullptr) ||
                 QzPlatform::GetAniStore()->LoadAni(handle, nullptr, "Button"));
    EXPECT_FALSE(handle.IsValid());
    EXPECT_EQ(handle.GetFrameCount(), 0);

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

} // namespace
