// Damaged and hostile variants of a good module: cut at every length, offsets pointing
// outside, huge counts, loops in the resource directory, random bytes. None is read past its
// end (the sanitizer build watches); all but harmless changes give no records and no lines.
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
    // The good module with one change, read.
    ReadResult ReadPatched(const std::function<void(PeImage&)>& patch)
    {
        PeImage image = m_good;
        patch(image);
        return Read(image);
    }
    static void ExpectNothing(const ReadResult& result, const char* pszWhat)
    {
        EXPECT_FALSE(result.bRead) << pszWhat;
        EXPECT_EQ(0u, result.nDialogs) << pszWhat;
        EXPECT_EQ("", result.trace) << pszWhat;
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
            ExpectNothing(result, ("cut at " + std::to_string(length)).c_str());
        else
            EXPECT_EQ(m_full.trace, result.trace) << "cut at " << length;
    }
}

TEST_F(DumpRscHostileTest, OffsetsPointingOutsideTheFile)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    const uint32_t nOutside = 0x7FFFFFF0;
    ExpectNothing(ReadPatched([&](PeImage& image) { image.SetDword(0x3C, nOutside); }),
                  "PE header");
    ExpectNothing(ReadPatched([&](PeImage& image)
                              { image.SetDword(image.ResourceDataDirectory(), nOutside); }),
                  "resource directory address");
    ExpectNothing(ReadPatched([&](PeImage& image)
                              { image.SetDword(image.ResourceSection() + 20, 0xFFFFFE00); }),
                  "section raw data offset");
    ExpectNothing(ReadPatched([&](PeImage& image)
                              { image.SetDword(image.DialogNameEntry(0), 0x80000000 | nOutside); }),
                  "name string");
    ExpectNothing(
        ReadPatched([&](PeImage& image)
                    { image.SetDword(image.DialogNameEntry(2) + 4, 0x80000000 | nOutside); }),
        "language directory");
    ExpectNothing(
        ReadPatched([&](PeImage& image) { image.SetDword(image.DialogDataEntry(3), nOutside); }),
        "template address");
    ExpectNothing(ReadPatched([&](PeImage& image)
                              { image.SetDword(image.DialogDataEntry(3) + 4, nOutside); }),
                  "template size");
}

TEST_F(DumpRscHostileTest, HugeCounts)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    ExpectNothing(
        ReadPatched([&](PeImage& image) { image.SetWord(image.ResourceRoot() + 14, 0xFFFF); }),
        "type entries");
    ExpectNothing(
        ReadPatched([&](PeImage& image) { image.SetDword(image.DialogNames() + 12, 0xFFFFFFFF); }),
        "name entries");
    ExpectNothing(ReadPatched(
                      [&](PeImage& image)
                      {
                          const size_t root = image.ResourceRoot();
                          const size_t name =
                              root + (image.Dword(image.DialogNameEntry(0)) & 0x7FFFFFFF);
                          image.SetWord(name, 0xFFFF);
                      }),
                  "name length");
    // Dialog 101 is a plain template: its item count follows style and extended style.
    ExpectNothing(
        ReadPatched([&](PeImage& image) { image.SetWord(image.DialogTemplate(2) + 8, 0xFFFF); }),
        "item count");
    // The extended dialog 201: its item count follows version, signature, help id and styles.
    ExpectNothing(
        ReadPatched([&](PeImage& image) { image.SetWord(image.DialogTemplate(4) + 16, 0xFFFF); }),
        "extended item count");
}

TEST_F(DumpRscHostileTest, LoopsInTheResourceDirectory)
{
    QZ_REQUIRE_DIALOG_FIXTURE(QzTest::DialogFixturePath("dialogs64.dll"));
    auto typeEntry = [](const PeImage& image)
    {
        const size_t root = image.ResourceRoot();
        for (size_t at = root + 16;; at += 8)
        {
            if (image.Dword(at) == 5)
                return at;
        }
    };
    ExpectNothing(
        ReadPatched([&](PeImage& image) { image.SetDword(typeEntry(image) + 4, 0x80000000); }),
        "type directory is the root");
    ExpectNothing(ReadPatched(
                      [&](PeImage& image)
                      {
                          const uint32_t names = image.Dword(typeEntry(image) + 4);
                          image.SetDword(image.DialogNameEntry(2) + 4, names);
                      }),
                  "language directory is the name directory");
    ExpectNothing(ReadPatched([&](PeImage& image)
                              { image.SetDword(image.DialogNameEntry(2) + 4, 0x80000000); }),
                  "language directory is the root");
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
