// Damaged and hostile variants of a good module: cut at every length, offsets pointing
// outside, huge counts, loops and shared data in the resource directory, random bytes. None is
// read past its end (the sanitizer build watches); all but harmless changes give no records and
// no lines.
#include "PeImage.h"
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
};

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
        result.bRead = dump.LoadDialogs(hModule);
        result.nDialogs = dump.GetDialogs().size();
        result.trace = m_trace.Text();
        FreeLibrary(hModule);
        return result;
    }
    static void ExpectNothing(const ReadResult& result, const std::string& what)
    {
        EXPECT_FALSE(result.bRead) << what;
        EXPECT_EQ(0u, result.nDialogs) << what;
        EXPECT_EQ("", result.trace) << what;
    }
    // Each change of the good module, on its own, leaves nothing read.
    using Patch = std::pair<const char*, std::function<void(PeImage&)>>;
    void ExpectEachReadsNothing(const std::vector<Patch>& patches)
    {
        for (const Patch& patch : patches)
        {
            PeImage image = m_good;
            patch.second(image);
            ExpectNothing(Read(image), patch.first);
        }
    }

    QzTest::TempDataDir m_data;
    TraceCapture m_trace;
    PeImage m_good;
    ReadResult m_full;
};

TEST_F(DumpRscHostileTest, CutAtAnyLengthGivesNothingOrEverything)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    ASSERT_EQ(5u, m_full.nDialogs);
    const size_t nTemplatesEnd =
        m_good.DialogTemplate(4) + m_good.Dword(m_good.DialogDataEntry(4) + 4);
    // Every fifth length: all residues of the 4-byte alignment of the structures come up.
    for (size_t length = 0; length < m_good.bytes.size(); length += 5)
    {
        PeImage cut = m_good;
        cut.bytes.resize(length);
        const ReadResult result = Read(cut);
        if (length < nTemplatesEnd)
            ExpectNothing(result, "cut at " + std::to_string(length));
        else
            EXPECT_EQ(m_full.trace, result.trace) << "cut at " << length;
    }
}

TEST_F(DumpRscHostileTest, OffsetsPointingOutsideTheFile)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    const uint32_t out = 0x7FFFFFF0;
    ExpectEachReadsNothing({
        {"PE header", [&](PeImage& image) { image.SetDword(0x3C, out); }},
        {"resource directory address",
         [&](PeImage& image) { image.SetDword(image.ResourceDataDirectory(), out); }},
        {"section raw data offset",
         [&](PeImage& image) { image.SetDword(image.ResourceSection() + 20, 0xFFFFFE00); }},
        {"name string",
         [&](PeImage& image) { image.SetDword(image.DialogNameEntry(0), 0x80000000 | out); }},
        {"language directory",
         [&](PeImage& image) { image.SetDword(image.DialogNameEntry(2) + 4, 0x80000000 | out); }},
        {"template address",
         [&](PeImage& image) { image.SetDword(image.DialogDataEntry(3), out); }},
        {"template size",
         [&](PeImage& image) { image.SetDword(image.DialogDataEntry(3) + 4, out); }},
    });
}

TEST_F(DumpRscHostileTest, HugeCounts)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    const auto nameOf = [](const PeImage& image, size_t index)
    { return image.ResourceRoot() + (image.Dword(image.DialogNameEntry(index)) & 0x7FFFFFFF); };
    ExpectEachReadsNothing({
        {"type entries", [](PeImage& image) { image.SetWord(image.ResourceRoot() + 14, 0xFFFF); }},
        {"name entries",
         [](PeImage& image) { image.SetDword(image.DialogNames() + 12, 0xFFFFFFFF); }},
        {"name length", [&](PeImage& image) { image.SetWord(nameOf(image, 0), 0xFFFF); }},
        // Dialog 101 is a plain template: its item count follows style and extended style.
        {"item count", [](PeImage& image) { image.SetWord(image.DialogTemplate(2) + 8, 0xFFFF); }},
        // The extended dialog 201: its item count follows version, signature, help id and styles.
        {"extended item count",
         [](PeImage& image) { image.SetWord(image.DialogTemplate(4) + 16, 0xFFFF); }},
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
    ExpectEachReadsNothing({
        {"type directory is the root",
         [&](PeImage& image) { image.SetDword(typeEntry(image) + 4, 0x80000000); }},
        {"language directory is the name directory", [&](PeImage& image)
         { image.SetDword(image.DialogNameEntry(2) + 4, image.Dword(typeEntry(image) + 4)); }},
        {"language directory is the root",
         [](PeImage& image) { image.SetDword(image.DialogNameEntry(2) + 4, 0x80000000); }},
        // Every name shares one language whose data is the whole resource section: together
        // they would describe more bytes than the file has.
        {"names sharing the whole section",
         [](PeImage& image)
         {
             const size_t section = image.ResourceSection();
             image.SetDword(image.DialogDataEntry(0), image.Dword(section + 12));
             image.SetDword(image.DialogDataEntry(0) + 4, image.Dword(section + 16));
             const uint32_t language = image.Dword(image.DialogNameEntry(0) + 4);
             for (size_t i = 1; i < 5; ++i)
                 image.SetDword(image.DialogNameEntry(i) + 4, language);
         }},
        // A name always leads to a directory; without the flag its offset is not one.
        {"name entry without its directory flag",
         [](PeImage& image)
         {
             const size_t at = image.DialogNameEntry(2) + 4;
             image.SetDword(at, image.Dword(at) & 0x7FFFFFFF);
         }},
    });
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
