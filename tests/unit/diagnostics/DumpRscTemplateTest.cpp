// Templates no resource compiler writes, in modules built by the test: the same identifier
// twice, more than 1000 items, plain creation data, ordinals; modules without templates; and
// the name tables of the description.
#include "PeImage.h"
#include "TemplateWriter.h"
#include "TraceCapture.h"

#include "diagnostics/DumpRsc.h"
#include "platform/system/QzSystem.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace QzDiagnosticsTest
{

class DumpRscTemplateTest : public ::testing::Test
{
protected:
    void TearDown() override
    {
        for (HMODULE hModule : m_modules)
            FreeLibrary(hModule);
    }
    HMODULE Module(const PeImage& image, const std::string& name = "module.dll")
    {
        m_modules.push_back(
            LoadLibraryExA(image.Save(name).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
        return m_modules.back();
    }

    QzTest::TempDataDir m_data;
    TraceCapture m_trace;
    CDumpRsc m_dump;

private:
    std::vector<HMODULE> m_modules;
};

TEST_F(DumpRscTemplateTest, SameIdentifierTwiceFindsTheOneReadLast)
{
    const std::string first = TemplateWriter().PlainHeader(0, 0, 10, 10, "first").Bytes();
    const std::string second = TemplateWriter().PlainHeader(0, 0, 20, 20, "second").Bytes();
    HMODULE hModule = Module(PeImage::Build({{7, first}, {8, first}, {7, second}}));

    const DialogRscInfo* pDialog = m_dump.FindDialogRsc(hModule, 7);
    ASSERT_NE(nullptr, pDialog);
    EXPECT_EQ("second", pDialog->text);
    EXPECT_EQ(3u, m_dump.GetDialogs().size());
}

TEST_F(DumpRscTemplateTest, ItemsBeyondAThousandAreNeitherRecordedNorRead)
{
    // 1001 items announced, 1000 there: reading the last one would run off the template.
    TemplateWriter writer;
    writer.PlainHeader(0x10000000, 1001, 100, 100);
    for (uint16_t id = 1; id <= 1000; ++id)
        writer.PlainItem(id, 1, 1, 0x80, "").Word(0);
    HMODULE hModule = Module(PeImage::Build({{9, writer.Bytes()}}));

    const DialogRscInfo* pDialog = m_dump.FindDialogRsc(hModule, 9);
    ASSERT_NE(nullptr, pDialog);
    EXPECT_EQ(1000u, pDialog->items.size());
    EXPECT_EQ(1000u, pDialog->items.back().id);
    EXPECT_NE(std::string::npos, m_trace.Text().find("controls: 1001\n"));
}

TEST_F(DumpRscTemplateTest, PlainCreationDataSizeCountsItsOwnWord)
{
    // The first item's creation data is its size word (4) and two bytes; taken as a count of
    // the bytes after the word, the next item would be read four bytes too far.
    TemplateWriter writer;
    writer.Dword(0x10000000).Dword(0).Word(2).Word(0).Word(0).Word(100).Word(100);
    writer.Word(0).Ordinal(5).Text(""); // no menu, class ordinal 5, no title
    writer.PlainItem(41, 5, 5, 0x85, "").Word(4).Word(0xBEEF);
    writer.PlainItem(42, 5, 20, 0x80, "ok").Word(0);
    HMODULE hModule = Module(PeImage::Build({{10, writer.Bytes()}}, false));

    const DialogRscInfo* pDialog = m_dump.FindDialogRsc(hModule, 10);
    ASSERT_NE(nullptr, pDialog);
    ASSERT_EQ(2u, pDialog->items.size());
    EXPECT_EQ(42u, pDialog->items[1].id);
    EXPECT_EQ("ok", pDialog->items[1].title);
    EXPECT_NE(std::string::npos, m_trace.Text().find("Class ID: 5\n"));
    EXPECT_NE(std::string::npos, m_trace.Text().find("  Class: Combo box\n"));
}

TEST_F(DumpRscTemplateTest, ModulesWithoutTemplatesAreReadButGiveNothing)
{
    HMODULE hEmpty = Module(PeImage::Build({}), "empty.dll");
    EXPECT_TRUE(m_dump.LoadDialogs(hEmpty));
    EXPECT_TRUE(m_dump.GetDialogs().empty());

    PeImage noResources = PeImage::Build({});
    noResources.SetDword(noResources.ResourceDataDirectory(), 0);
    CDumpRsc dump;
    EXPECT_TRUE(dump.LoadDialogs(Module(noResources, "plain.dll")));

    m_data.Write("text.dll", "not a module at all");
#ifndef _WIN32
    // Windows does not load a file that is no PE image, not even as data (docs/platform.md).
    CDumpRsc text;
    EXPECT_FALSE(text.LoadDialogs(Module(PeImage::Load("text.dll"), "text.dll")));
#endif
    CDumpRsc none;
    EXPECT_EQ(nullptr, none.FindDialogRsc(nullptr, 1));
    EXPECT_EQ("", m_trace.Text());
}

TEST_F(DumpRscTemplateTest, StyleAtomAndTypeNameTables)
{
    EXPECT_EQ("WS_VISIBLE | WS_BORDER | WS_DLGFRAME | WS_SYSMENU | DS_SETFONT",
              CDumpRsc::GetStyleText(0x10C80040, TRUE));
    EXPECT_EQ("WS_CHILD | WS_TABSTOP", CDumpRsc::GetStyleText(0x40010FFF, FALSE));
    EXPECT_EQ("", CDumpRsc::GetStyleText(0, TRUE));

    EXPECT_STREQ("Static", CDumpRsc::GetAtomClassName(0x82));
    EXPECT_STREQ("unknown", CDumpRsc::GetAtomClassName(0x86));
    EXPECT_EQ(5u, CDumpRsc::GetTypeFromClassName("systreeview32"));
    std::string names;
    for (DWORD type = 0; type <= 7; ++type)
        names += std::string(CDumpRsc::GetTypeName(type)) + ",";
    EXPECT_EQ(",Static,Button,Edit,ListBox,Tree,Progress,,", names);
}

} // namespace QzDiagnosticsTest
