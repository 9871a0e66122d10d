// Damaged and hostile variants of a good module: cut at every length, offsets pointing
// outside, huge counts, loops and shared data in the resource directory, random bytes. None is
// read past its end (the sanitizer build watches). Damage to the headers or the directory of
// templates gives no records and no lines; a damaged template is skipped with a log record and
// costs the others nothing.
#include "PeImage.h"
#include "TemplateWriter.h"
#include "TraceCapture.h"

#include "diagnostics/DumpRsc.h"
#include "platform/system/QzSystem.h"
#include "support/DialogFixtures.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace QzDiagnosticsTest
{

namespace
{

struct ReadResult
{
    BOOL bRead = FALSE;
    size_t nDialogs = 0;
    std::string trace;
    // The "dialog" field of every "damaged dialog template" record.
    std::vector<std::string> damaged;
};

// The good module's templates in directory order, as the damage records name them.
const std::vector<std::string> kLabels = {"ABOUT", "SETTINGS", "101", "102", "201"};

} // namespace

class DumpRscHostileTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_good = PeImage::Load(QzTest::DialogFixturePath("dialogs64.dll"));
        if (!m_good.bytes.empty())
            m_full = Read(m_good);
    }
    ReadResult Read(const PeImage& image)
    {
        HMODULE hModule =
            LoadLibraryExA(image.Save("hostile.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        CDumpRsc dump;
        ReadResult result;
        m_trace.Clear();
        m_trace.Log().Clear();
        result.bRead = dump.LoadDialogs(hModule);
        result.nDialogs = dump.GetDialogs().size();
        result.trace = m_trace.Text();
        for (const QzPlatform::LogRecord& record : m_trace.Log().Records())
        {
            if (record.message != "damaged dialog template")
                continue;
            EXPECT_EQ("hostile.dll",
                      record.Get("module").substr(record.Get("module").find_last_of("/\\") + 1));
            result.damaged.push_back(record.Get("dialog"));
        }
        FreeLibrary(hModule);
        return result;
    }
    static void ExpectNothing(const ReadResult& result, const std::string& what)
    {
        EXPECT_FALSE(result.bRead) << what;
        EXPECT_EQ(0u, result.nDialogs) << what;
        EXPECT_EQ("", result.trace) << what;
    }
    // A change of the good module, on its own, and the templates it damages; none: the module
    // is not read at all.
    struct Patch
    {
        const char* what;
        std::function<void(PeImage&)> apply;
        std::vector<std::string> damaged;
    };
    void ExpectEach(const std::vector<Patch>& patches)
    {
        for (const Patch& patch : patches)
        {
            PeImage image = m_good;
            patch.apply(image);
            const ReadResult result = Read(image);
            if (patch.damaged.empty())
            {
                ExpectNothing(result, patch.what);
                continue;
            }
            EXPECT_TRUE(result.bRead) << patch.what;
            EXPECT_EQ(patch.damaged, result.damaged) << patch.what;
            EXPECT_EQ(kLabels.size() - patch.damaged.size(), result.nDialogs) << patch.what;
            EXPECT_EQ(TraceWithout(patch.damaged), result.trace) << patch.what;
        }
    }
    // The good module's description less the templates named.
    std::string TraceWithout(const std::vector<std::string>& damaged) const
    {
        std::string trace;
        for (size_t at = 0, index = 0; at < m_full.trace.size(); ++index)
        {
            size_t next = m_full.trace.find("\nDialog ", at);
            next = next == std::string::npos ? m_full.trace.size() : next + 1;
            const std::string byPlace = "entry " + std::to_string(index + 1);
            if (std::find(damaged.begin(), damaged.end(), kLabels[index]) == damaged.end() &&
                std::find(damaged.begin(), damaged.end(), byPlace) == damaged.end())
                trace += m_full.trace.substr(at, next - at);
            at = next;
        }
        return trace;
    }

    QzTest::TempDataDir m_data;
    TraceCapture m_trace;
    PeImage m_good;
    ReadResult m_full;
};

// A cut inside the templates loses only the templates it cuts.
TEST_F(DumpRscHostileTest, CutAtAnyLengthLosesOnlyWhatIsCut)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    ASSERT_EQ(5u, m_full.nDialogs);
    std::vector<size_t> ends;
    for (size_t i = 0; i < kLabels.size(); ++i)
        ends.push_back(m_good.DialogTemplate(i) + m_good.Dword(m_good.DialogDataEntry(i) + 4));
    const size_t nFirstTemplate = m_good.DialogTemplate(0);
    size_t nPartial = 0;
    // Every fifth length: all residues of the 4-byte alignment of the structures come up.
    for (size_t length = 0; length < m_good.bytes.size(); length += 5)
    {
        PeImage cut = m_good;
        cut.bytes.resize(length);
        const ReadResult result = Read(cut);
        const std::string what = "cut at " + std::to_string(length);
        if (!result.bRead)
        {
            EXPECT_LT(length, nFirstTemplate) << what;
            ExpectNothing(result, what);
            continue;
        }
        std::vector<std::string> damaged;
        for (size_t i = 0; i < kLabels.size(); ++i)
        {
            if (ends[i] > length)
                damaged.push_back(kLabels[i]);
        }
        // A cut before the names' strings names the templates by their places.
        ASSERT_EQ(damaged.size(), result.damaged.size()) << what;
        for (size_t i = 0; i < damaged.size(); ++i)
        {
            if (result.damaged[i].rfind("entry ", 0) != 0)
            {
                EXPECT_EQ(damaged[i], result.damaged[i]) << what;
            }
        }
        EXPECT_EQ(TraceWithout(damaged), result.trace) << what;
        nPartial += !damaged.empty() && damaged.size() < kLabels.size() ? 1 : 0;
    }
    EXPECT_GT(nPartial, 0u);
}

TEST_F(DumpRscHostileTest, OffsetsPointingOutsideTheFile)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    const uint32_t out = 0x7FFFFFF0;
    ExpectEach({
        {"PE header", [&](PeImage& image) { image.SetDword(0x3C, out); }, {}},
        {"resource directory address",
         [&](PeImage& image) { image.SetDword(image.ResourceDataDirectory(), out); },
         {}},
        {"section raw data offset",
         [&](PeImage& image) { image.SetDword(image.ResourceSection() + 20, 0xFFFFFE00); },
         {}},
        {"name string",
         [&](PeImage& image) { image.SetDword(image.DialogNameEntry(0), 0x80000000 | out); },
         {"entry 1"}},
        {"language directory",
         [&](PeImage& image) { image.SetDword(image.DialogNameEntry(2) + 4, 0x80000000 | out); },
         {"101"}},
        {"template address",
         [&](PeImage& image) { image.SetDword(image.DialogDataEntry(3), out); },
         {"102"}},
        {"template size",
         [&](PeImage& image) { image.SetDword(image.DialogDataEntry(3) + 4, out); },
         {"102"}},
    });
}

TEST_F(DumpRscHostileTest, HugeCounts)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    const auto nameOf = [](const PeImage& image, size_t index)
    { return image.ResourceRoot() + (image.Dword(image.DialogNameEntry(index)) & 0x7FFFFFFF); };
    ExpectEach({
        {"type entries",
         [](PeImage& image) { image.SetWord(image.ResourceRoot() + 14, 0xFFFF); },
         {}},
        {"name entries",
         [](PeImage& image) { image.SetDword(image.DialogNames() + 12, 0xFFFFFFFF); },
         {}},
        {"name length",
         [&](PeImage& image) { image.SetWord(nameOf(image, 0), 0xFFFF); },
         {"entry 1"}},
        // Dialog 101 is a plain template: its item count follows style and extended style.
        {"item count",
         [](PeImage& image) { image.SetWord(image.DialogTemplate(2) + 8, 0xFFFF); },
         {"101"}},
        // The extended dialog 201: its item count follows version, signature, help id and styles.
        {"extended item count",
         [](PeImage& image) { image.SetWord(image.DialogTemplate(4) + 16, 0xFFFF); },
         {"201"}},
    });
}

TEST_F(DumpRscHostileTest, LoopsAndSharingInTheResourceDirectory)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    const auto typeEntry = [](const PeImage& image)
    {
        for (size_t at = image.ResourceRoot() + 16;; at += 8)
        {
            if (image.Dword(at) == 5)
                return at;
        }
    };
    ExpectEach({
        {"language directory is the name directory",
         [&](PeImage& image)
         { image.SetDword(image.DialogNameEntry(2) + 4, image.Dword(typeEntry(image) + 4)); },
         {"101"}},
        {"language directory is the root",
         [](PeImage& image) { image.SetDword(image.DialogNameEntry(2) + 4, 0x80000000); },
         {"101"}},
        // A name always leads to a directory; without the flag its offset is not one.
        {"name entry without its directory flag",
         [](PeImage& image)
         {
             const size_t at = image.DialogNameEntry(2) + 4;
             image.SetDword(at, image.Dword(at) & 0x7FFFFFFF);
         },
         {"101"}},
    });

    // The type directory is the root: its entries lead to no templates at all.
    PeImage looped = m_good;
    looped.SetDword(typeEntry(looped) + 4, 0x80000000);
    const ReadResult result = Read(looped);
    EXPECT_EQ(0u, result.nDialogs);
    EXPECT_EQ("", result.trace);

    // Every name shares one language whose data is the whole resource section: the templates
    // read may together take no more bytes than the file has, the others are damaged.
    PeImage shared = m_good;
    const size_t section = shared.ResourceSection();
    shared.SetDword(shared.DialogDataEntry(0), shared.Dword(section + 12));
    shared.SetDword(shared.DialogDataEntry(0) + 4, shared.Dword(section + 16));
    const uint32_t language = shared.Dword(shared.DialogNameEntry(0) + 4);
    for (size_t i = 1; i < 5; ++i)
        shared.SetDword(shared.DialogNameEntry(i) + 4, language);
    const ReadResult sharing = Read(shared);
    EXPECT_LE(sharing.nDialogs, shared.bytes.size() / shared.Dword(section + 16));
    EXPECT_EQ(5u, sharing.nDialogs + sharing.damaged.size());
    EXPECT_FALSE(sharing.damaged.empty());
}

// One template cut short between two good ones: the good ones are read and found, the cut one
// is reported once, by its id and module.
TEST_F(DumpRscHostileTest, ACutTemplateBetweenTwoGoodOnesCostsThemNothing)
{
    const std::string good = TemplateWriter().PlainHeader(0, 0, 10, 10, "good").Bytes();
    TemplateWriter cut; // two items announced, the first one ends halfway
    cut.PlainHeader(0x10000000, 2, 100, 100).PlainItem(1, 1, 1, 0x80, "");
    const std::string cutBytes = cut.Bytes().substr(0, cut.Bytes().size() - 6);

    const ReadResult result = Read(PeImage::Build({{7, good}, {8, cutBytes}, {9, good}}));

    EXPECT_TRUE(result.bRead);
    EXPECT_EQ(2u, result.nDialogs);
    EXPECT_EQ(std::vector<std::string>{"8"}, result.damaged);
    EXPECT_EQ(std::string::npos, result.trace.find("Dialog id: 8"));
    EXPECT_NE(std::string::npos, result.trace.find("Dialog id: 9"));
}

// Random bytes over the resource section: whatever the result, nothing is read outside.
TEST_F(DumpRscHostileTest, RandomBytesInTheResourceSection)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    uint32_t seed = 12345;
    auto next = [&seed]()
    {
        seed = seed * 1103515245u + 12345u;
        return seed >> 8;
    };
    const size_t root = m_good.ResourceRoot();
    const size_t span = m_good.bytes.size() - root;
    for (int round = 0; round < 300; ++round)
    {
        PeImage image = m_good;
        for (int i = 0; i < 4; ++i)
            image.bytes[root + next() % span] = static_cast<char>(next());
        const ReadResult result = Read(image);
        if (!result.bRead)
        {
            EXPECT_EQ("", result.trace) << round;
        }
    }
}

} // namespace QzDiagnosticsTest
