// Reading the dialog templates of modules that a resource compiler and linker made: the
// description lines, the records, both optional-header sizes, the code page, and the tool.
#include "TraceCapture.h"

#include "diagnostics/DumpRsc.h"
#include "platform/system/QzSystem.h"
#include "platform/system/text/QzCodePageHost.h"
#include "support/DialogFixtures.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace QzDiagnosticsTest
{

namespace
{

// The lines of one template: from its "Dialog id"/"Dialog name" line to the next one.
std::string Block(const std::string& trace, const std::string& header)
{
    const size_t begin = trace.find(header + "\n");
    if (begin == std::string::npos)
        return std::string();
    const size_t next = trace.find("\nDialog ", begin + header.size());
    return trace.substr(begin, next == std::string::npos ? std::string::npos : next + 1 - begin);
}

std::string ItemLines(const char* style, const char* coords, const char* id, const char* cls,
                      const char* title = nullptr)
{
    std::string lines = std::string("  ----\n  style: ") + style + "\n  dwExtendedStyle: 0\n" +
                        "  Coords: " + coords + "\n  id: " + id + "\n  Class: " + cls + "\n";
    if (title)
        lines += std::string("  Title: ") + title + "\n";
    return lines;
}

// The items of a record as "id:type" words.
std::string Items(const DialogRscInfo& dialog)
{
    std::string text;
    for (const DialogItemInfo& item : dialog.items)
        text += std::to_string(item.id) + ":" + std::to_string(item.type) + " ";
    return text;
}

} // namespace

class DumpRscFixtureTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_nCodePage = QzPlatform::GetAnsiCodePage();
        QzPlatform::SetAnsiCodePage(65001);
    }
    void TearDown() override
    {
        for (HMODULE hModule : m_modules)
            FreeLibrary(hModule);
        QzPlatform::SetAnsiCodePage(m_nCodePage);
    }
    HMODULE Module(const std::string& path)
    {
        m_modules.push_back(LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
        return m_modules.back();
    }

    const std::string m_strPath64 = QzTest::DialogFixturePath("dialogs64.dll");
    const std::string m_strPath32 = QzTest::DialogFixturePath("dialogs32.dll");
    TraceCapture m_trace;
    CDumpRsc m_dump;

private:
    UINT m_nCodePage = 0;
    std::vector<HMODULE> m_modules;
};

TEST_F(DumpRscFixtureTest, PlainTemplateDescribedLineByLine)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    ASSERT_TRUE(m_dump.LoadDialogs(Module(m_strPath64)));

    const std::string expected =
        std::string("Dialog id: 101\n"
                    "style: 10C80040 (WS_VISIBLE | WS_BORDER | WS_DLGFRAME | WS_SYSMENU | "
                    "DS_SETFONT)\n"
                    "extended style: 00000000\n"
                    "controls: 7\n"
                    "Coords: (10,20) - (210,140)\n"
                    "Title: 登录\n"
                    "Font: 9 point 宋体\n") +
        ItemLines("50020000 (WS_CHILD | WS_VISIBLE | WS_GROUP)", "(5,5) - (45,15)", "1000",
                  "Static", "名字:") +
        ItemLines("50810080 (WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP)", "(50,5) - (150,17)",
                  "1001", "Edit") +
        ItemLines("50A00001 (WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL)", "(5,20) - (105,70)",
                  "1002", "List box") +
        ItemLines("50000000 (WS_CHILD | WS_VISIBLE)", "(5,75) - (195,83)", "1003",
                  "MSCTLS_PROGRESS32") +
        ItemLines("50800000 (WS_CHILD | WS_VISIBLE | WS_BORDER)", "(110,20) - (195,70)", "1004",
                  "SYSTREEVIEW32") +
        ItemLines("50010001 (WS_CHILD | WS_VISIBLE | WS_TABSTOP)", "(40,100) - (90,114)", "1",
                  "Button", "确定") +
        ItemLines("50010000 (WS_CHILD | WS_VISIBLE | WS_TABSTOP)", "(100,100) - (150,114)", "2",
                  "Button", "取消");
    EXPECT_EQ(expected, Block(m_trace.Text(), "Dialog id: 101"));
    // Rectangles and captions of the records are what the layout generates records from.
    const DialogRscInfo& login = m_dump.GetDialogs().at(2);
    EXPECT_EQ("登录", login.text);
    EXPECT_EQ(120, login.rect.bottom);
    EXPECT_EQ("1000:1 1001:3 1002:4 1003:6 1004:5 1:2 2:2 ", Items(login));
}

TEST_F(DumpRscFixtureTest, EveryTemplateInDirectoryOrderNamedOnesFirst)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    HMODULE hModule = Module(m_strPath64);
    ASSERT_TRUE(m_dump.LoadDialogs(hModule));

    std::vector<std::string> headers;
    const std::string& trace = m_trace.Text();
    for (size_t at = 0; at < trace.size(); at = trace.find('\n', at) + 1)
    {
        if (trace.compare(at, 7, "Dialog ") == 0)
            headers.push_back(trace.substr(at, trace.find('\n', at) - at));
    }
    EXPECT_EQ((std::vector<std::string>{"Dialog name: ABOUT", "Dialog name: SETTINGS",
                                        "Dialog id: 101", "Dialog id: 102", "Dialog id: 201"}),
              headers);
    // A named dialog keeps id 0 (and is not found by it); its title, when it has one, replaces
    // its name.
    const std::vector<DialogRscInfo>& dialogs = m_dump.GetDialogs();
    ASSERT_EQ(5u, dialogs.size());
    EXPECT_EQ("ABOUT", dialogs[0].text);
    EXPECT_EQ("Settings", dialogs[1].text);
    EXPECT_EQ(nullptr, m_dump.FindDialogRsc(hModule, 0));
    EXPECT_EQ(&dialogs[4], m_dump.FindDialogRsc(hModule, 201));
}

TEST_F(DumpRscFixtureTest, ExtendedTemplateWithShellFontHelpIdsAndCreationData)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    const DialogRscInfo* pDialog = m_dump.FindDialogRsc(Module(m_strPath64), 201);
    ASSERT_NE(nullptr, pDialog);

    const std::string block = Block(m_trace.Text(), "Dialog id: 201");
    EXPECT_EQ(0u, block.find("Dialog id: 201\n"
                             "style: 80C800C8 (WS_POPUP | WS_BORDER | WS_DLGFRAME | WS_SYSMENU | "
                             "DS_SETFONT | DS_MODALFRAME | DS_FIXEDSYS)\n"
                             "extended style: 00000080\n"
                             "controls: 8\n"
                             "Coords: (0,0) - (240,160)\n"
                             "Menu Name: MAINMENU\n"
                             "Title: 设置 Größe\n"
                             "Font: 8 point MS Shell Dlg\n"
                             "  ----\n"
                             "  style: 50800000 (WS_CHILD | WS_VISIBLE | WS_BORDER)\n"
                             "  dwExtendedStyle: 200\n"
                             "  Coords: (5,5) - (105,85)\n"
                             "  id: 2001\n"
                             "  Class: SYSTREEVIEW32\n"))
        << block;
    EXPECT_NE(std::string::npos, block.find("  Class: Combo box\n"));
    EXPECT_NE(std::string::npos, block.find("  Class: Scroll bar\n"));
    EXPECT_EQ(0x80u, pDialog->exStyle);
    EXPECT_EQ(0x200u, pDialog->items.at(0).exStyle);
    // Class names other than the progress bar and the tree are statics, "BUTTON" too; the item
    // after the one with creation data is read from the right place.
    EXPECT_EQ("2001:5 2002:1 2003:6 2004:4 2005:1 2006:1 2007:1 1:2 ", Items(*pDialog));
    EXPECT_EQ("确定", pDialog->items.at(7).title);
    EXPECT_EQ("数据", pDialog->items[6].title);
}

TEST_F(DumpRscFixtureTest, OddItemsAreReportedAndStillRecorded)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    const DialogRscInfo* pDialog = m_dump.FindDialogRsc(Module(m_strPath64), 102);
    ASSERT_NE(nullptr, pDialog);

    const std::string block = Block(m_trace.Text(), "Dialog id: 102");
    EXPECT_NE(std::string::npos, block.find("Coords: (0,0) - (100,60)\n"
                                            "Menu ID: 300\n"
                                            "Class Name: QZEDGECLASS\n"
                                            "  ----\n"))
        << block;
    EXPECT_NE(std::string::npos, block.find("  Class: Static\n  Title resource ID: 7\n"));
    EXPECT_NE(std::string::npos, block.find("  ----\n"
                                            "  *** Dialog item not visible ***\n"
                                            "  style: 40000000 (WS_CHILD)\n"));
    EXPECT_NE(std::string::npos, block.find("  ----\n"
                                            "  *** Item not within dialog ***\n"
                                            "  style: 50010000 (WS_CHILD | WS_VISIBLE | "
                                            "WS_TABSTOP)\n"
                                            "  dwExtendedStyle: 0\n"
                                            "  Coords: (150,10) - (190,22)\n"));
    EXPECT_NE(std::string::npos, block.find("  id: 65535\n"));
    EXPECT_EQ(4u, pDialog->items.size());
    EXPECT_EQ(150, pDialog->items.at(2).rect.left);
    EXPECT_EQ("", pDialog->items[0].title);
}

TEST_F(DumpRscFixtureTest, ThirtyTwoAndSixtyFourBitModulesReadAlike)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath32);
    ASSERT_TRUE(m_dump.LoadDialogs(Module(m_strPath64)));
    const std::string trace64 = m_trace.Text();
    m_trace.Clear();
    CDumpRsc dump32;
    ASSERT_TRUE(dump32.LoadDialogs(Module(m_strPath32)));

    EXPECT_FALSE(trace64.empty());
    EXPECT_EQ(trace64, m_trace.Text());
}

TEST_F(DumpRscFixtureTest, TextsAreInTheAnsiCodePage)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    QzPlatform::SetAnsiCodePage(936);
    HMODULE hModule = Module(m_strPath64);

    const DialogRscInfo* pLogin = m_dump.FindDialogRsc(hModule, 101);
    ASSERT_NE(nullptr, pLogin);
    EXPECT_EQ("\xB5\xC7\xC2\xBC", pLogin->text); // GBK
    // Characters the code page lacks become its default character.
    EXPECT_EQ("\xC9\xE8\xD6\xC3 Gr??e", m_dump.FindDialogRsc(hModule, 201)->text);
}

TEST_F(DumpRscFixtureTest, EveryLineIsAlsoADebugRecordOfTheLog)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    ASSERT_TRUE(m_dump.LoadDialogs(Module(m_strPath64)));

    const std::vector<QzPlatform::LogRecord>& records = m_trace.Log().Records();
    std::string joined;
    for (const QzPlatform::LogRecord& record : records)
    {
        ASSERT_EQ("dump trace", record.message);
        EXPECT_EQ("debug", record.Get("level"));
        joined += record.Get("text") + "\n";
    }
    EXPECT_EQ(m_trace.Text(), joined);
}

// The tool prints what the reader describes, with the default code page of the platform.
TEST_F(DumpRscFixtureTest, ToolPrintsEveryTemplateAndFailsOnUnreadableFiles)
{
    QZ_REQUIRE_DIALOG_FIXTURE(m_strPath64);
    const std::string tool = std::string(QZGUI_BINARY_DIR) + "/tools/rscdump/qzgui-rscdump";
    QzPlatform::SetAnsiCodePage(936);
    ASSERT_TRUE(m_dump.LoadDialogs(Module(m_strPath64)));
    auto run = [&](const std::string& file, std::string* pOutput)
    {
        FILE* pipe = popen((tool + " '" + file + "' 2>/dev/null").c_str(), "r");
        char buffer[4096];
        size_t count = 0;
        while (pipe && (count = std::fread(buffer, 1, sizeof(buffer), pipe)) > 0)
            pOutput->append(buffer, count);
        const int status = pipe ? pclose(pipe) : -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };

    std::string output;
    EXPECT_EQ(0, run(m_strPath64, &output));
    EXPECT_EQ(m_trace.Text(), output);
    std::string ignored;
    EXPECT_EQ(1, run(std::string(QZGUI_SOURCE_DIR) + "/tests/fixtures/dialogs/plain.rc", &ignored));
    EXPECT_EQ(1, run(m_strPath64 + ".missing", &ignored));
    EXPECT_EQ("", ignored);
}

} // namespace QzDiagnosticsTest
