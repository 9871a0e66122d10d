#include "platform/services/QzGameData.h"
#include "platform/services/QzStringTable.h"
#include "support/LogCapture.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

using namespace QzPlatform;

namespace
{

class StringTableTest : public ::testing::Test
{
protected:
    void TearDown() override { GetGameData().Reset(); }

    QzTest::TempDataDir m_folder;
};

} // namespace

TEST_F(StringTableTest, ReadsIdsAndTextsSkippingCommentsAndBlankLines)
{
    m_folder.Write("ini/StringTable.ini", "; comment\r\n"
                                          "# another\n"
                                          "\n"
                                          "   \t\n"
                                          "10049=Tahoma\r\n"
                                          " 20 = padded\n"
                                          "30=a=b\n"
                                          "40=\n"
                                          "50=Record x=%d\\ny=%d\n"
                                          "60=\xD6\xD0\xCE\xC4\n"
                                          "10049=Arial");
    QzTest::LogCapture capture;
    EXPECT_STREQ(GetTableString(10049), "Arial"); // a later duplicate wins
    EXPECT_STREQ(GetTableString(20), " padded");
    EXPECT_STREQ(GetTableString(30), "a=b");
    EXPECT_STREQ(GetTableString(40), "");
    EXPECT_STREQ(GetTableString(50), "Record x=%d\\ny=%d");
    EXPECT_STREQ(GetTableString(60), "\xD6\xD0\xCE\xC4");
    EXPECT_STREQ(GetTableString(70), "");
    EXPECT_TRUE(capture.Empty());
}

TEST_F(StringTableTest, MalformedLinesAreDataErrorsAndTheRestLoads)
{
    m_folder.Write("ini/StringTable.ini", "abc=x\n"
                                          "no equals sign\r\n"
                                          "=empty id\n"
                                          "-5=negative\n"
                                          "4294967296=too big\n"
                                          "4294967295=largest\n"
                                          "7=fine\n");
    QzTest::LogCapture capture;
    EXPECT_STREQ(GetTableString(7), "fine");
    EXPECT_STREQ(GetTableString(4294967295u), "largest");

    ASSERT_EQ(capture.Count("data error"), 5);
    const std::vector<std::string> lines = {"abc=x", "no equals sign", "=empty id", "-5=negative",
                                            "4294967296=too big"};
    for (size_t i = 0; i < lines.size(); ++i)
    {
        EXPECT_EQ(capture.Records()[i].Get("file_name"), "ini/StringTable.ini");
        EXPECT_EQ(capture.Records()[i].Get("line"), lines[i]);
    }
}

TEST_F(StringTableTest, MissingFileGivesEmptyTextsWithoutLogAndReloadReadsAgain)
{
    QzTest::LogCapture capture;
    EXPECT_STREQ(GetTableString(1), "");
    EXPECT_TRUE(capture.Empty());

    m_folder.Write("INI/stringtable.INI", "1=now there\n");
    EXPECT_STREQ(GetTableString(1), ""); // loaded once until a reload
    ReloadStringTable();
    EXPECT_STREQ(GetTableString(1), "now there");
}

TEST_F(StringTableTest, GameDataLooksTextsAndNumbersUpInTheTable)
{
    m_folder.Write("ini/StringTable.ini", "10049=SimSun\n10461= 16px\n5=abc\n");
    CQzGameData& data = GetGameData();
    EXPECT_STREQ(data.GetString(10049, "QzCtrl", 623), "SimSun");
    EXPECT_STREQ(data.GetString(999, "QzCtrl", 659), "");
    EXPECT_EQ(data.QueryInt(10461), 16);
    EXPECT_EQ(data.QueryInt(5), 0);
    EXPECT_EQ(data.QueryInt(999), 0);
}

TEST_F(StringTableTest, GameDataMapsFontFacesExactly)
{
    CQzGameData& data = GetGameData();
    EXPECT_STREQ(data.GetLanguageName(), "Chinese");
    EXPECT_STREQ(data.GetFont("SimSun"), "SimSun");
    EXPECT_STREQ(data.GetFont(nullptr), "");
    data.SetFontMapping("SimSun", "WenQuanYi Micro Hei");
    EXPECT_STREQ(data.GetFont("SimSun"), "WenQuanYi Micro Hei");
    EXPECT_STREQ(data.GetFont("simsun"), "simsun");
    data.SetFontMapping("SimSun", "");
    EXPECT_STREQ(data.GetFont("SimSun"), "SimSun");
}
