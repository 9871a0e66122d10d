// The faults the client passes over without a word, each reported by lint with its file and
// line: mistyped keys (with the nearest known key), unknown window types, animation sections,
// groups and cursors that are named but missing, missing images and atlas rectangles outside
// their image, and section headers without "]". The keys lint knows are those the library
// reads, taken from its sources.
#include "../../../../tools/lint/BundleLinter.h"
#include "../../../../tools/lint/LintKeyTable.h"
#include "../../../../tools/lint/LintSpelling.h"

#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace
{

using QzLint::CBundleLinter;
using Lines = std::vector<std::string>;

// The start of a PNG file of that size: signature and header chunk, all lint reads.
std::string PngHeader(uint32_t width, uint32_t height)
{
    std::string bytes("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
    for (uint32_t value : {width, height})
    {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>((value >> shift) & 0xFF);
    }
    return bytes + std::string("\x08\x06\0\0\0", 5);
}

struct Fault
{
    const char* what;
    const char* finding; // "FILE:LINE: message: text"
};

// A bundle with one fault of each kind, and the same references written right beside them.
class LintReferencesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        data.Write("images/button.png", PngHeader(20, 10));
        data.Write("ani/Control.ani", "[Button]\n"
                                      "FrameAmount=3\n"
                                      "Frame0=images/button.png 0 0 10 10\n"
                                      "Frame1=IMAGES\\Button.PNG 10 0 10 10\n"
                                      "Frame2=images/button.png 15 0 10 10\n"
                                      "[Missing]\n"
                                      "FrameAmount=1\n"
                                      "Frame0=images/none.png\n"
                                      "[Cursor_Hand]\n"
                                      "FrameAmount=1\n"
                                      "Frame0=images/button.png\n"
                                      "[Open\n"
                                      "FrameAmount=1\n");
        data.Write("ini/Layout.ini", "[0-1]\n"
                                     "w=10\n"
                                     "h=10\n"
                                     "AniSecton=Button\n"
                                     "AniSection=Buton\n"
                                     "AniSection=button\n"
                                     "TipAniSection=Nothing\n"
                                     "type=9\n"
                                     "type=22\n"
                                     "Cursor=hand\n"
                                     "Cursor=Hand\n"
                                     "AniSection =Button\n"
                                     "SliderBtnLen=4\n"
                                     "[0-2\n"
                                     "w=1\n"
                                     "h=1\n"
                                     "BackShowMode=4\n"
                                     "AniSection=Groop\n"
                                     "[0-3]\n"
                                     "w=1\n"
                                     "h=1\n"
                                     "AniSection=Group\n"
                                     "BackShowMode=4\n");
        data.Write("ini/guilogic_1.ini", "[0-1-1]\nAniSection=Group\nw=1\nh=1\n"
                                         "[0-1-2]\nw=1\nh=1\nAniSection=Nowhere\n");
        data.Write("ini/Cursor.ini", "[Hand]\ntype=1\ncur=Cursor_Hnd\n[Arrow]\ntype=1\n"
                                     "cur=Cursor_Hand\n");
        data.Write("ini/AniGroup.ini", "[Group]\nAmount=3\nSection_1=Button\nSection_2=Nope\n");
        data.Write("ini/Notes.ini", "; notes\n[General\n");
    }

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

TEST_F(LintReferencesTest, EveryFaultIsReportedWithItsFileAndLine)
{
    const Fault faults[] = {
        {"mistyped key", "ini/Layout.ini:4: unknown key (did you mean AniSection?): "
                         "AniSecton=Button"},
        {"misspelt section", "ini/Layout.ini:5: AniSection names no section of ani/Control.ani "
                             "(did you mean Button?): AniSection=Buton"},
        {"section far from any", "ini/Layout.ini:7: TipAniSection names no section of "
                                 "ani/Control.ani: TipAniSection=Nothing"},
        {"unknown type", "ini/Layout.ini:8: unknown control type (the library has types 1 to 8, "
                         "15 to 17, 19 to 22): type=9"},
        {"cursor in another case", "ini/Layout.ini:10: Cursor names no cursor of ini/Cursor.ini "
                                   "(did you mean Hand? letter case counts): Cursor=hand"},
        {"key with a blank", "ini/Layout.ini:12: unknown key (did you mean AniSection? blanks "
                             "around it count): AniSection =Button"},
        {"unclosed layout header", "ini/Layout.ini:14: unclosed section header (no \"]\"): [0-2"},
        {"missing group", "ini/Layout.ini:18: AniSection names no group of ini/AniGroup.ini, as "
                          "BackShowMode=4 wants (did you mean Group?): AniSection=Groop"},
        {"variant naming nothing", "ini/guilogic_1.ini:8: AniSection names no section of "
                                   "ani/Control.ani: AniSection=Nowhere"},
        {"cursor section", "ini/Cursor.ini:3: cur names no section of ani/Control.ani (did you "
                           "mean Cursor_Hand?): cur=Cursor_Hnd"},
        {"group piece", "ini/AniGroup.ini:4: Section_2 names no section of ani/Control.ani: "
                        "Section_2=Nope"},
        {"group piece missing", "ini/AniGroup.ini:2: group has no Section_3: Amount=3"},
        {"unclosed header no reader takes", "ini/Notes.ini:2: unclosed section header (no \"]\"): "
                                            "[General"},
        {"rectangle outside", "ani/Control.ani:5: atlas rectangle outside the image (20x10): "
                              "Frame2=images/button.png 15 0 10 10"},
        {"missing image", "ani/Control.ani:8: image file not found: Frame0=images/none.png"},
        {"unclosed ani header", "ani/Control.ani:12: unclosed section header (no \"]\"): [Open"},
    };
    const Lines lines = Lint();
    for (const Fault& fault : faults)
        EXPECT_NE(std::find(lines.begin(), lines.end(), fault.finding), lines.end())
            << fault.what << ": " << fault.finding;
    // Nothing else: the same references written correctly pass.
    EXPECT_EQ(lines.size(), std::size(faults)) << ::testing::PrintToString(lines);
}

TEST_F(LintReferencesTest, CommandLineFailsOnTheFaults)
{
    std::string out;
    std::string err;
    const std::string folder = data.Folder();
    const char* argv[] = {"qzgui-lint", folder.c_str()};
    EXPECT_EQ(CBundleLinter::RunTool(2, argv, out, err), 1);
    EXPECT_NE(out.find(folder + "/ini/Layout.ini:4: unknown key"), std::string::npos) << out;
}

std::string ReadSource(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// Every key the library's sources read, by the record table or as an extra pair: a key the
// library starts to read must not be reported as unknown.
TEST(LintKeyTableTest, KnowsTheKeysTheLibraryReads)
{
    const std::regex recordKey(R"re(\{"(\w+)", LayoutKey::)re");
    const std::regex extraKey(
        R"re((?:GetExtraValue\(|(?:ReadExtraInt|ReadExtra|ExtraFlag)\([^,()]+,\s*)"(\w+)")re");
    std::set<std::string> recordKeys;
    std::set<std::string> extraKeys;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QZGUI_SOURCE_DIR "/src"))
    {
        if (!entry.is_regular_file())
            continue;
        const std::string text = ReadSource(entry.path());
        for (std::sregex_iterator it(text.begin(), text.end(), recordKey), end; it != end; ++it)
            recordKeys.insert((*it)[1]);
        for (std::sregex_iterator it(text.begin(), text.end(), extraKey), end; it != end; ++it)
            extraKeys.insert((*it)[1]);
    }
    const auto& lintRecord = QzLint::CLintKeyTable::RecordKeys();
    const auto& lintExtra = QzLint::CLintKeyTable::ExtraKeys();
    EXPECT_EQ(std::set<std::string>(lintRecord.begin(), lintRecord.end()), recordKeys);
    EXPECT_EQ(std::set<std::string>(lintExtra.begin(), lintExtra.end()), extraKeys);
}

} // namespace

TEST(LintSpellingTest, NearestKnownNameWithinAThirdOfTheWord)
{
    using QzLint::CLintSpelling;
    const std::vector<std::string> names = {"AniSection", "TipAniSection", "Title", "x", "w"};
    const struct
    {
        const char* word;
        const char* nearest;
    } cases[] = {
        {"AniSecton", "AniSection"},  // a letter left out
        {"AniSetcion", "AniSection"}, // two letters swapped
        {"anisection", "AniSection"}, // case only
        {"Titel", "Title"},
        {"TipAniSecton", "TipAniSection"},
        {"xx", "x"},
        {"Tit", ""},      // two edits in three letters
        {"Position", ""}, // nothing near
        {"   ", ""},      // blanks only
        {"AniSection  ", "AniSection"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CLintSpelling::Nearest(c.word, names), c.nearest) << c.word;
    EXPECT_EQ(CLintSpelling::Distance("abc", "ABC"), 0u);
    EXPECT_EQ(CLintSpelling::Distance("", "abc"), 3u);
}

// Bytes that are no text, huge numbers and very long values give findings, not a crash or a
// hang.
TEST(LintHostileTest, HostileBundleIsLintedQuickly)
{
    QzTest::TempDataDir data;
    std::string junk;
    for (int i = 0; i < 4096; ++i)
        junk += static_cast<char>(i * 37 % 256);
    data.Write("ini/Layout.ini", "[0-1]\nw=1\nh=1\nAniSection=" + std::string(100000, 'A') + "\n" +
                                     junk + "\n[\n[]\n");
    data.Write("ani/Control.ani",
               "[A]\nFrameAmount=1\nFrame0=big.png 2147483000 0 2000 1\n[]\n[" + junk + "\n");
    data.Write("big.png", PngHeader(0xFFFFFFFF, 0xFFFFFFFF));
    data.Write("ini/AniGroup.ini", "[G]\nAmount=99999999\n");
    CBundleLinter linter;
    ASSERT_TRUE(linter.Run(data.Folder()));
    EXPECT_GT(linter.Findings().size(), 3u);
    EXPECT_LT(linter.Findings().size(), 100u);
}
