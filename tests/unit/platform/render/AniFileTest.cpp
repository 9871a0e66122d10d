// Reading .ani files: sections, frames, atlas rectangles, kinds, and how broken lines are
// reported and contained.
#include "platform/render/AniFile.h"
#include "support/GeometryPrint.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using QzPlatform::AniSectionSpec;
using QzPlatform::CAniFile;

std::vector<std::string> ErrorLines(const QzTest::LogCapture& log)
{
    std::vector<std::string> lines;
    for (const auto& record : log.Records())
    {
        EXPECT_EQ(record.message, "data error");
        EXPECT_EQ(record.Get("file_name"), "ani/Control.ani");
        lines.push_back(record.Get("line"));
    }
    return lines;
}

TEST(AniFileTest, ReadsFramesRectanglesKindsAndSkipsComments)
{
    QzTest::LogCapture log;
    CAniFile file;
    file.Parse("ani/Control.ani", "\xEF\xBB\xBF; the buttons\r\n"
                                  "\r\n"
                                  "[Button]\r\n"
                                  "  frameAMOUNT = 3 \r\n"
                                  "# the normal look\r\n"
                                  "Frame0=ani/button.png\r\n"
                                  "FRAME1 = ani/atlas.png 4 8 16 32\r\n"
                                  "kind1=2\r\n"
                                  "Delay=100\r\n");
    EXPECT_TRUE(log.Empty());
    const AniSectionSpec* pSection = file.FindSection("Button");
    ASSERT_NE(pSection, nullptr);
    ASSERT_EQ(pSection->frames.size(), 3u);
    EXPECT_EQ(pSection->frames[0].path, "ani/button.png");
    EXPECT_FALSE(pSection->frames[0].hasRect);
    EXPECT_EQ(pSection->frames[0].kind, 0);
    EXPECT_EQ(pSection->frames[1].path, "ani/atlas.png");
    EXPECT_TRUE(pSection->frames[1].hasRect);
    EXPECT_EQ(pSection->frames[1].rect, (QzPlatform::RectI{4, 8, 20, 40}));
    EXPECT_EQ(pSection->frames[1].kind, 2);
    // A frame the section does not describe exists without an image.
    EXPECT_TRUE(pSection->frames[2].path.empty());
}

TEST(AniFileTest, SectionNamesMatchWithoutCaseAndFrameAmountMayComeLast)
{
    CAniFile file;
    file.Parse("ani/Control.ani", "[Dialog_Back]\nFrame1=b.png\nFrame0=a.png\nFrameAmount=2\n"
                                  "[Empty]\nFrameAmount=0\n");
    const AniSectionSpec* pSection = file.FindSection("dialog_BACK");
    ASSERT_NE(pSection, nullptr);
    EXPECT_EQ(pSection->name, "Dialog_Back");
    ASSERT_EQ(pSection->frames.size(), 2u);
    EXPECT_EQ(pSection->frames[1].path, "b.png");
    ASSERT_NE(file.FindSection("Empty"), nullptr);
    EXPECT_TRUE(file.FindSection("Empty")->frames.empty());
    EXPECT_EQ(file.FindSection("Missing"), nullptr);
}

TEST(AniFileTest, BrokenLinesAreReportedAndDisableOnlyTheirSection)
{
    QzTest::LogCapture log;
    CAniFile file;
    file.Parse("ani/Control.ani", "[Good1]\nFrameAmount=1\nFrame0=a.png\n"
                                  "[NoEquals]\nFrameAmount=1\nFrame0 a.png\n"
                                  "[BadRect]\nFrameAmount=1\nFrame0=a.png 1 2 3\n"
                                  "[ZeroRect]\nFrameAmount=1\nFrame0=a.png 0 0 0 5\n"
                                  "[WordRect]\nFrameAmount=1\nFrame0=a.png 0 0 5 x\n"
                                  "[IndexTooBig]\nFrameAmount=2\nFrame2=a.png\n"
                                  "[KindTooBig]\nFrameAmount=1\nKind1=2\n"
                                  "[NoAmount]\nFrame0=a.png\nFrame1=b.png\n"
                                  "[WordAmount]\nFrameAmount=three\nFrame0=a.png\n"
                                  "[HugeAmount]\nFrameAmount=4097\n"
                                  "[TwoFrame0]\nFrameAmount=1\nFrame0=a.png\nFrame0=b.png\n"
                                  "[BadIndex]\nFrameAmount=1\nFrameX=a.png\n"
                                  "[Good2]\nFrameAmount=4096\n");
    const std::vector<std::string> expected = {
        "Frame0 a.png",         "Frame0=a.png 1 2 3", "Frame0=a.png 0 0 0 5",
        "Frame0=a.png 0 0 5 x", "Frame2=a.png",       "Kind1=2",
        "[NoAmount]",           "FrameAmount=three",  "FrameAmount=4097",
        "Frame0=b.png",         "FrameX=a.png",
    };
    EXPECT_EQ(ErrorLines(log), expected);
    EXPECT_EQ(file.GetErrorCount(), static_cast<int>(expected.size()));
    for (const char* broken :
         {"NoEquals", "BadRect", "ZeroRect", "WordRect", "IndexTooBig", "KindTooBig", "NoAmount",
          "WordAmount", "HugeAmount", "TwoFrame0", "BadIndex"})
        EXPECT_EQ(file.FindSection(broken), nullptr) << broken;
    EXPECT_NE(file.FindSection("Good1"), nullptr);
    ASSERT_NE(file.FindSection("Good2"), nullptr);
    EXPECT_EQ(file.FindSection("Good2")->frames.size(), 4096u);
}

TEST(AniFileTest, RepeatedHeadersAndStrayKeysAreReported)
{
    QzTest::LogCapture log;
    CAniFile file;
    file.Parse("ani/Control.ani", "FrameAmount=1\n"
                                  "[A]\nFrameAmount=1\nFrame0=first.png\n"
                                  "[a]\nFrameAmount=1\nFrame0=second.png\n"
                                  "[]\nFrameAmount=1\n"
                                  "[Open\n"
                                  "[B]\nFrameAmount=1\nFrame0=b.png\n");
    const std::vector<std::string> expected = {"FrameAmount=1", "[a]", "[]", "[Open"};
    EXPECT_EQ(ErrorLines(log), expected);
    // The first of two sections of one name stays; the lines of the repeat are not its own.
    ASSERT_NE(file.FindSection("A"), nullptr);
    EXPECT_EQ(file.FindSection("A")->frames[0].path, "first.png");
    EXPECT_NE(file.FindSection("B"), nullptr);
}

TEST(AniFileTest, MissingFileIsReportedWithItsName)
{
    QzTest::LogCapture log;
    CAniFile file;
    EXPECT_FALSE(file.Load("no/such/Control.ani"));
    ASSERT_EQ(log.Records().size(), 1u);
    EXPECT_EQ(log.Records()[0].message, "open file failed");
    EXPECT_EQ(log.Records()[0].Get("file_name"), "no/such/Control.ani");
    EXPECT_EQ(file.GetSectionCount(), 0);
}

} // namespace
