// The lint tool on small bundles with known errors: every data error the readers log comes out
// with its file and the number of the line it is on, also when the same text stands on several
// lines; the checks of its own (cut keys and values, long lines, unusable regions); which files
// it reads; the command line and its exit status; and the sample bundle is clean. The checks of
// keys, types, references, images and headers are in LintReferencesTest.cpp.
#include "../../../../tools/lint/BundleLinter.h"
#include "../../../../tools/lint/LintLineIndex.h"

#include "support/RegionFile.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using QzLint::CBundleLinter;
using QzLint::CLintLineIndex;
using Lines = std::vector<std::string>;

class BundleLinterTest : public ::testing::Test
{
protected:
    void Write(const std::string& relative, const std::string& text) const
    {
        data.Write(relative, text);
    }
    // The findings, formatted without a folder prefix.
    Lines Lint()
    {
        CBundleLinter linter;
        EXPECT_TRUE(linter.Run(data.Folder()));
        Lines lines;
        for (const auto& finding : linter.Findings())
            lines.push_back(CBundleLinter::Format(finding));
        return lines;
    }

    QzTest::TempDataDir data;
};

// The bundle as the build makes it: the text files with the images drawn for them.
TEST(BundleLinterSampleTest, DemoBundleIsClean)
{
    CBundleLinter linter;
    ASSERT_TRUE(linter.Run(QZGUI_BINARY_DIR "/demo-bundle")) << "build qzgui-demo-bundle";
    Lines lines;
    for (const auto& finding : linter.Findings())
        lines.push_back(CBundleLinter::Format(finding));
    EXPECT_EQ(lines, Lines());
}

TEST_F(BundleLinterTest, InvalidSectionsAreReportedAtTheLineThatEndedThem)
{
    // [0-1] twice without a size; "[0-2]" ends one at line 4 and one at line 9; [0-3] ends at
    // the end of the file on "w=1", which stands on line 10 too.
    Write("ini/Layout.ini", "; layout\n[0-1]\nx=1\n[0-2]\nw=5\nh=5\n[0-1]\nx=1\n[0-2]\nw=1\n"
                            "h=2\n[0-3]\nx=1\nw=1\n");
    EXPECT_EQ(Lint(),
              (Lines{"ini/Layout.ini:4: data error: [0-2]", "ini/Layout.ini:9: data error: [0-2]",
                     "ini/Layout.ini:14: data error: w=1"}));
}

TEST_F(BundleLinterTest, OneHeaderCanEndTwoInvalidSections)
{
    // "[0-2]" ends [0-1], then is the last line of the file and ends its own empty section.
    Write("ini/Layout.ini", "[0-1]\r\nx=1\r\n[0-2]");
    Write("ini/Other.ini", "[0-1]\r\nw=1\r\nh=1\r\n\r\n[0-2]\r\nw=1\r\n\r\n");
    EXPECT_EQ(Lint(),
              (Lines{"ini/Layout.ini:3: data error: [0-2]", "ini/Layout.ini:3: data error: [0-2]",
                     "ini/Other.ini:7: data error: "}));
}

TEST_F(BundleLinterTest, KeysAndValuesThatAreCutAreReported)
{
    const std::string longKey(255, 'k');
    const std::string longValue(256, 'v');
    const std::string longLine = "Title=" + std::string(1100, 't');
    Write("ini/Layout.ini", longKey +
                                "=outside any section\n"
                                "[0-1]\nw=1\nh=1\n" +
                                std::string(254, 'k') + "=v\n" + longKey +
                                "=v\nTitle=" + std::string(255, 'v') + "\nTitle=" + longValue +
                                "\n;" + longKey + "=comment\n" + longLine + "\n");
    EXPECT_EQ(
        Lint(),
        (Lines{"ini/Layout.ini:5: unknown key: " + std::string(254, 'k') + "=v",
               "ini/Layout.ini:6: key longer than 254 bytes (cut when read): " + longKey + "=v",
               "ini/Layout.ini:8: value longer than 255 bytes (cut when read): "
               "Title=" +
                   longValue,
               "ini/Layout.ini:10: line longer than 1023 bytes (read as several "
               "lines): " +
                   longLine,
               "ini/Layout.ini:10: value longer than 255 bytes (cut when read): " + longLine}));
}

TEST_F(BundleLinterTest, VariantExtendedAndAuxiliaryFilesAreReadByTheirOwnFormat)
{
    Write("ini/guilogic_800.ini", "[1-2]\nx=1\n[1-2-3]\nw=1\nh=1\n[1-2-4]\nx=1\n");
    Write("ini/gui_ex.ini", "[5-1]\nx=1\n[5-2]\nw=1\nh=1\n");
    Write("ini/font.ini", "[0-1]\nx=1\n");
    Write("ini/StringTable.ini", "10049=Sans\n");
    Write("ini/Notes.ini", "[General]\nx=1\n");
    EXPECT_EQ(Lint(), (Lines{"ini/guilogic_800.ini:7: data error: x=1",
                             "ini/gui_ex.ini:3: invalid data: [5-2]"}));
}

TEST_F(BundleLinterTest, CursorBlocksReportTheirHeaderLine)
{
    Write("ini/Cursor.ini", "; cursors\n[Normal]\ntype=0\ncur=a.cur\n\n[Hand]\ncur=b.cur\n");
    EXPECT_EQ(Lint(), Lines{"ini/Cursor.ini:6: data error when read type: [Hand]"});
    Write("ini/Cursor.ini", "[Normal]\ntype=0\ncur=a.cur\n[arrow\ntype=0\ncur=b.cur\n");
    EXPECT_EQ(Lint(), Lines{"ini/Cursor.ini:4: unclosed section header (no \"]\"): [arrow"});
}

TEST_F(BundleLinterTest, AniGroupsOverTheLimitPointAtTheirAmountKey)
{
    Write("ini/AniGroup.ini", "[Small]\nAmount=2000\n[Fine]\nAmount=2\n[Big]\n; big\n"
                              " amount = 2000\n");
    // Groups without pieces besides.
    EXPECT_EQ(Lint(), (Lines{"ini/AniGroup.ini:2: data error: Amount=2000",
                             "ini/AniGroup.ini:2: group has no Section_1 and 1023 more pieces: "
                             "Amount=2000",
                             "ini/AniGroup.ini:4: group has no Section_1 and 1 more piece: "
                             "Amount=2",
                             "ini/AniGroup.ini:7: data error: Amount=2000",
                             "ini/AniGroup.ini:7: group has no Section_1 and 1023 more pieces: "
                             " amount = 2000"}));
}

TEST_F(BundleLinterTest, RegionFilesReportWhereTheyAreCutAndUnusableRegions)
{
    std::string bytes;
    QzTest::PutDword(bytes, 3);
    QzTest::PutRegionEntry(bytes, 1, 2, QzTest::RegionData({{0, 0, 10, 10}}));
    QzTest::PutRegionEntry(bytes, 7, 8, "abcd");
    const size_t cutAt = bytes.size();
    QzTest::PutRegionEntry(bytes, 9, 9, QzTest::RegionData({{0, 0, 10, 10}}));
    bytes.resize(bytes.size() - 1);
    Write("ini/Rgn.dat", bytes);
    EXPECT_EQ(Lint(), (Lines{"ini/Rgn.dat: open file failed: entry 3 of 3 is cut short at byte " +
                                 std::to_string(cutAt) + " (the file has " +
                                 std::to_string(bytes.size()) + " bytes)",
                             "ini/Rgn.dat: region data gives no region: ids 7 and 8, 4 bytes"}));
    Write("ini/Rgn.dat", "\x01");
    EXPECT_EQ(Lint(),
              Lines{"ini/Rgn.dat: open file failed: no entry count (the file has 1 bytes)"});
}

TEST_F(BundleLinterTest, EffectPlacementLinesWithTheSameTextKeepTheirOwnNumbers)
{
    Write("ini/Gui3DEffect.ini", "Good 1 2 3 4 1.0 1.0 0\nbad 1 2\n\n  bad 1 2\n");
    EXPECT_EQ(Lint(), (Lines{"ini/Gui3DEffect.ini:2: data error: bad 1 2",
                             "ini/Gui3DEffect.ini:4: data error: bad 1 2"}));
}

TEST_F(BundleLinterTest, AnimationSectionsCheckedAtTheirEndPointBackToTheirLines)
{
    Write("a.png", "");
    Write("ani/Control.ani", "[A]\nFrameAmount=4\nFrame3=a.png\n[B]\nFrame3=a.png\njunk\n"
                             "FrameAmount=2\n[C]\nFrame0=c.png\noops\n");
    EXPECT_EQ(
        Lint(),
        (Lines{"ani/Control.ani:5: data error: Frame3=a.png", "ani/Control.ani:6: data error: junk",
               "ani/Control.ani:8: data error: [C]", "ani/Control.ani:10: data error: oops"}));
}

TEST_F(BundleLinterTest, CommandLineExitStatus)
{
    std::string out;
    std::string err;
    const std::string folder = data.Folder() + "/";
    const char* clean[] = {"qzgui-lint", folder.c_str()};
    EXPECT_EQ(CBundleLinter::RunTool(2, clean, out, err), 0);
    EXPECT_EQ(out, "");

    Write("ini/Layout.ini", "[0-1]\nx=1\n");
    EXPECT_EQ(CBundleLinter::RunTool(2, clean, out, err), 1);
    EXPECT_EQ(out, data.Folder() + "/ini/Layout.ini:2: data error: x=1\n");
    EXPECT_EQ(err, "");

    const std::string missing = data.Folder() + "/missing";
    const char* absent[] = {"qzgui-lint", missing.c_str()};
    EXPECT_EQ(CBundleLinter::RunTool(2, absent, out, err), 2);
    EXPECT_NE(err.find("usage: qzgui-lint BUNDLE_DIR"), std::string::npos);
    const char* bare[] = {"qzgui-lint"};
    EXPECT_EQ(CBundleLinter::RunTool(1, bare, out, err), 2);
}

TEST_F(BundleLinterTest, LineSearchTakesPiecesAndProfileKeys)
{
    Write("a.txt", "\xEF\xBB\xBF[A]\nkey = 1\n" + std::string(1100, 'x') + "\n[B]\n");
    CLintLineIndex index;
    ASSERT_TRUE(index.Load(data.Folder() + "/a.txt"));
    EXPECT_EQ(index.GetCount(), 4);
    EXPECT_EQ(index.Locate("[A]"), 1);                  // behind the byte order mark
    EXPECT_EQ(index.Locate(std::string(1023, 'x')), 3); // the first piece of a long line
    EXPECT_EQ(index.Locate("missing"), 0);
    EXPECT_EQ(index.LocateProfileKey(" a ", "KEY"), 2); // after the mark, any case
    EXPECT_EQ(index.LocateProfileKey("b", "key"), 4);   // the header without the key
    EXPECT_EQ(index.LocateProfileKey("C", "key"), 0);
    EXPECT_FALSE(index.Load(data.Folder() + "/none.txt"));
}

} // namespace
