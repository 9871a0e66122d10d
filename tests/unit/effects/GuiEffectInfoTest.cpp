// The placement table: reading ini/Gui3DEffect.ini, its data errors and look-ups.
#include "effects/GuiEffectInfo.h"
#include "support/LogCapture.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace
{

const char* const kPath = "ini\\Gui3DEffect.ini";

// A placement as its line in the file gives it, without the name.
std::string Fields(const QzEffectPlacement& placement)
{
    std::ostringstream text;
    text << placement.nRefWidth << " " << placement.nRefHeight << " " << placement.nOffsetX << " "
         << placement.nOffsetZ << " " << placement.fScaleX << " " << placement.fScaleZ << " "
         << placement.nRotation;
    return text.str();
}

class GuiEffectInfoTest : public ::testing::Test
{
protected:
    BOOL LoadText(const std::string& text)
    {
        m_root.Write("ini/Gui3DEffect.ini", text);
        return m_table.Load(kPath);
    }

    QzTest::LogCapture m_log;
    QzTest::TempDataDir m_root;
    CGuiEffectInfo m_table;
};

TEST_F(GuiEffectInfoTest, ReadsTrimmedLinesLaterDuplicatesReplaceAndNamesAreExact)
{
    EXPECT_TRUE(LoadText("Fire 9 9 9 9 9 9 9\n"
                         "Fire 200 100 15 25 1.5 2.25 -45\r\n"
                         "\n"
                         "   \t  \n"
                         "\t  Smoke 0 0 0 0 0.5 1 90   \n"));

    EXPECT_EQ(m_table.GetCount(), 2u);
    EXPECT_EQ(Fields(m_table.Get("Fire")), "200 100 15 25 1.5 2.25 -45");
    EXPECT_EQ(Fields(m_table.Get("Smoke")), "0 0 0 0 0.5 1 90");
    EXPECT_EQ(m_table.Find("fire"), nullptr);
    EXPECT_EQ(m_table.Find(nullptr), nullptr);
    EXPECT_EQ(Fields(m_table.Get("Water")), "0 0 0 0 0 0 0");
    EXPECT_TRUE(m_log.Empty());
}

TEST_F(GuiEffectInfoTest, IncompleteLinesAndOverlongNamesAreSkippedAndLoggedWithFileAndLine)
{
    const std::string longest(127, 'a');
    // The rest of a longer name is digits: cut at 127 it would read as a complete line.
    const std::string tooLong = std::string(127, 'b') + "123 1 2 3 4 1 1 0";
    LoadText("Fire 200 100 15 25 1.5 2.25\n" // no rotation
             "Smoke 1 2 3 4 x 1 0\n"         // a word for a number
             + longest + " 1 2 3 4 1 1 0\n" + tooLong + "\nRain 1 2 3 4 1 1 5\n");

    EXPECT_EQ(m_table.GetCount(), 2u);
    EXPECT_NE(m_table.Find("Rain"), nullptr);
    EXPECT_NE(m_table.Find(longest.c_str()), nullptr);
    ASSERT_EQ(m_log.Count("data error"), 3);
    const auto& records = m_log.Records();
    EXPECT_EQ(records[0].Get("file_name"), kPath);
    EXPECT_EQ(records[0].Get("line"), "Fire 200 100 15 25 1.5 2.25");
    EXPECT_EQ(records[1].Get("line"), "Smoke 1 2 3 4 x 1 0");
    EXPECT_EQ(records[2].Get("line"), tooLong);
}

TEST_F(GuiEffectInfoTest, LinesLongerThanTheReadBufferStayOneLine)
{
    LoadText("Fire 1 2 3 4" + std::string(600, ' ') + "1.5 2 9\nSmoke 5 6 7 8 1 1 0\n");

    EXPECT_EQ(Fields(m_table.Get("Fire")), "1 2 3 4 1.5 2 9");
    EXPECT_EQ(Fields(m_table.Get("Smoke")), "5 6 7 8 1 1 0");
    EXPECT_TRUE(m_log.Empty());
}

TEST_F(GuiEffectInfoTest, LoadingEmptiesTheTableFirstAndAMissingFileLeavesItEmpty)
{
    LoadText("Fire 1 1 1 1 1 1 1\n");
    LoadText("Smoke 1 1 1 1 1 1 1\n");
    EXPECT_EQ(m_table.Find("Fire"), nullptr);

    EXPECT_FALSE(m_table.Load("ini\\Missing.ini"));

    EXPECT_EQ(m_table.GetCount(), 0u);
    ASSERT_NE(m_log.Find("open file failed"), nullptr);
    EXPECT_EQ(m_log.Find("open file failed")->Get("file_name"), "ini\\Missing.ini");
}

} // namespace
