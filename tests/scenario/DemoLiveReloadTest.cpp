// The demo's live reload on a copy of its bundle: an edit saved in ini/ reloads within two
// frames and keeps what the user sees; a broken edit keeps the last good screen and shows its
// errors with file and line until a fix.
#include "BundleCheck.h"
#include "BundleWatcher.h"
#include "DemoHost.h"
#include "DemoRun.h"
#include "ScopedCurrentDir.h"
#include "support/LogCapture.h"

#include "controls/QzCheck.h"
#include "controls/QzList.h"
#include "controls/QzSlider.h"
#include "controls/QzTree.h"
#include "framework/QzDialog.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditEx.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

namespace
{

namespace fs = std::filesystem;
using DemoScenario::TempFolder;

const char* const kLayout = "ini/DemoLayout.ini";
const DWORD kChatId = 30;
const DWORD kChatInputId = 42;
const DWORD kNameId = 10;
const DWORD kSliderId = 20;
const DWORD kDraggedId = 201;
const DWORD kQuestsId = 20;
const DWORD kMainQuests = 2; // the tree's first item
const DWORD kMarqueeCheckId = 12;

std::string ReadText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void WriteText(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

// The 1-based line of the text that starts with prefix; 0 when none does.
int LineOf(const std::string& text, const std::string& prefix)
{
    std::istringstream lines(text);
    std::string line;
    for (int n = 1; std::getline(lines, line); ++n)
    {
        if (line.compare(0, prefix.size(), prefix) == 0)
            return n;
    }
    return 0;
}

template <typename Ctrl> Ctrl* FindCtrl(QzGui::IQzGuiMgr* mgr, DWORD dialogId, DWORD ctrlId)
{
    QzGui::CQzDialog* dialog = mgr->FindDialog(dialogId);
    if (!dialog)
        return nullptr;
    for (const QzGui::QzCtrlEntry& entry : dialog->GetCtrlEntries())
    {
        if (entry.nId == ctrlId)
            return dynamic_cast<Ctrl*>(entry.pCtrl);
    }
    return nullptr;
}

// A host on a copy of the sample bundle, which it watches; the collections and login windows
// open.
class DemoLiveReload : public ::testing::Test
{
protected:
    DemoLiveReload() : m_folder("live-reload")
    {
        fs::copy(QZGUI_BINARY_DIR "/demo-bundle", m_folder / "bundle", fs::copy_options::recursive);
        m_pDir = std::make_unique<ScopedCurrentDir>(m_folder / "bundle");
        m_original = ReadText(kLayout);
    }

    void SetUp() override
    {
        m_host.UseManualClock();
        ASSERT_TRUE(m_host.Create(false));
        ASSERT_TRUE(m_host.WatchBundle("."));
        m_pMgr = m_host.GetGuiMgr();
        m_pMgr->FindDialog(CCollectionsDialog::kId)->ShowWindow(SW_SHOW);
        m_pMgr->FindDialog(CLoginDialog::kId)->ShowWindow(SW_SHOW);
        Frames(2);
        ASSERT_NE(nullptr, Chat());
    }

    void Frames(int count)
    {
        for (int i = 0; i < count; ++i)
            m_host.RunFrame();
    }

    // Replaces the first `from` of the layout file and saves it.
    void EditLayout(const std::string& from, const std::string& to)
    {
        std::string text = ReadText(kLayout);
        const size_t at = text.find(from);
        ASSERT_NE(std::string::npos, at) << from;
        WriteText(kLayout, text.replace(at, from.size(), to));
    }

    QzGui::CQzList* Chat()
    {
        return FindCtrl<QzGui::CQzList>(m_pMgr, CCollectionsDialog::kId, kChatId);
    }
    QzGui::CQzTree* Quests()
    {
        return FindCtrl<QzGui::CQzTree>(m_pMgr, CCollectionsDialog::kId, kQuestsId);
    }
    QzGui::CQzCheck* Marquee()
    {
        return FindCtrl<QzGui::CQzCheck>(m_pMgr, CControlsDialog::kId, kMarqueeCheckId);
    }
    QzGui::CQzDialog* Dialog(DWORD id) { return m_pMgr->FindDialog(id); }

    // Red pixels of the bottom-left corner, where the reload panel is drawn.
    int RedInPanelCorner()
    {
        std::string error;
        EXPECT_TRUE(m_host.SaveShot(m_folder / "shots", "frame", error)) << error;
        const QzTest::Image image = DemoScenario::ReadShot(m_folder / "shots/frame.png");
        return DemoScenario::Count(image, {0, 600, 600, 768}, DemoScenario::IsRed);
    }

    TempFolder m_folder;
    std::unique_ptr<ScopedCurrentDir> m_pDir;
    std::string m_original;
    CDemoHost m_host{1024, 768};
    QzGui::IQzGuiMgr* m_pMgr = nullptr;
};

TEST_F(DemoLiveReload, AnEditShowsWithinTwoFramesAndTheScreenKeepsItsState)
{
    // The user drags a window, types, scrolls and selects in the chat, moves the volume.
    CDemoScript drag;
    std::string error;
    ASSERT_TRUE(
        drag.Parse("down 60 380\nmove 80 400\nmove 110 430\nup 110 430\nframe 2\n", "drag", error))
        << error;
    const POINT placed = Dialog(kDraggedId)->GetLocalPos();
    ASSERT_TRUE(m_host.RunScript(drag, m_folder / "shots", error)) << error;
    const POINT dragged = Dialog(kDraggedId)->GetLocalPos();
    ASSERT_EQ(placed.x + 50, dragged.x);
    FindCtrl<QzGui::CQzEditEx>(m_pMgr, CCollectionsDialog::kId, kChatInputId)
        ->SetWindowText("half a line");
    FindCtrl<QzGui::CQzEdit>(m_pMgr, CLoginDialog::kId, kNameId)->SetWindowText("Ann");
    Chat()->SetTopIndex(0);
    Chat()->SelectRow(12);
    Chat()->SetTopIndex(9);
    FindCtrl<QzGui::CQzSlider>(m_pMgr, CControlsDialog::kId, kSliderId)->SetValue(37, TRUE);
    Quests()->Expand(kMainQuests, QzGui::QZ_TREE_COLLAPSE);
    Marquee()->SetCheck(FALSE);
    const int rows = Chat()->GetCount();
    Frames(1);

    EditLayout("[700-30]\ntype=7\nx=540", "[700-30]\ntype=7\nx=520");
    Frames(1);
    EXPECT_EQ(540, Chat()->GetLocalRect().left) << "reloaded in the editor's save burst";
    Frames(1);
    EXPECT_EQ(520, Chat()->GetLocalRect().left);

    EXPECT_TRUE(Dialog(CCollectionsDialog::kId)->IsWindowVisible());
    EXPECT_TRUE(Dialog(CLoginDialog::kId)->IsWindowVisible());
    EXPECT_EQ(dragged.x, Dialog(kDraggedId)->GetLocalPos().x);
    EXPECT_EQ(dragged.y, Dialog(kDraggedId)->GetLocalPos().y);
    EXPECT_STREQ(
        "half a line",
        FindCtrl<QzGui::CQzEditEx>(m_pMgr, CCollectionsDialog::kId, kChatInputId)->GetWindowText());
    char name[16] = {};
    FindCtrl<QzGui::CQzEdit>(m_pMgr, CLoginDialog::kId, kNameId)->GetText(name, sizeof(name));
    EXPECT_STREQ("Ann", name);
    EXPECT_EQ(rows, Chat()->GetCount());
    EXPECT_EQ(12, Chat()->GetCurSel());
    EXPECT_EQ(9, Chat()->GetTopIndex());
    EXPECT_EQ(37, FindCtrl<QzGui::CQzSlider>(m_pMgr, CControlsDialog::kId, kSliderId)->GetValue());
    EXPECT_FALSE(Quests()->GetExpanded(kMainQuests));
    EXPECT_FALSE(Marquee()->GetCheck());
    EXPECT_FALSE(m_host.GetReloadPanel()->IsShown());
}

// The animation file goes through the reload of everything; a script's "reload" step through
// the layout's: both keep the chat's selection.
TEST_F(DemoLiveReload, TheAnimationFileAndTheScriptStepReloadKeepingTheState)
{
    Chat()->SetTopIndex(0);
    Chat()->SelectRow(3);
    const QzGui::IQzGuiWndInfo* record = Dialog(CShowcaseDialog::kId)->GetWndInfo();
    WriteText("ani/Control.ani", ReadText("ani/Control.ani"));
    Frames(2);
    EXPECT_NE(record, Dialog(CShowcaseDialog::kId)->GetWndInfo());
    EXPECT_EQ(3, Chat()->GetCurSel());

    record = Dialog(CShowcaseDialog::kId)->GetWndInfo();
    CDemoScript script;
    std::string error;
    ASSERT_TRUE(script.Parse("reload\nframe\n", "reload", error)) << error;
    ASSERT_TRUE(m_host.RunScript(script, m_folder / "shots", error)) << error;
    EXPECT_NE(record, Dialog(CShowcaseDialog::kId)->GetWndInfo());
    EXPECT_EQ(3, Chat()->GetCurSel());
}

TEST_F(DemoLiveReload, AnUndraggedWindowTakesItsEditedPlace)
{
    EditLayout("[0-201]\nx=20", "[0-201]\nx=24");
    Frames(2);
    EXPECT_EQ(24, Dialog(kDraggedId)->GetLocalPos().x);
}

// Each broken edit: the screen stays (no reload: the records are the same), the panel names
// file and line, the log has the error; the fix reloads and hides the panel.
TEST_F(DemoLiveReload, ABrokenEditKeepsTheScreenUntilAFix)
{
    struct Case
    {
        const char* from;
        const char* to;
        const char* message;
        const char* line; // how the line of the error starts
    };
    const Case cases[] = {
        {"[0-100]\n", "[0-100\n", "unclosed section header", "[0-100"},
        {"[0-100]\nx=40", "[0-100]\nx=forty", "not a number", "x=forty"},
    };
    const int redBefore = RedInPanelCorner();
    for (const Case& c : cases)
    {
        SCOPED_TRACE(c.to);
        QzTest::LogCapture log;
        const QzGui::IQzGuiWndInfo* record = Dialog(CShowcaseDialog::kId)->GetWndInfo();
        const int rows = Chat()->GetCount();
        EditLayout(c.from, c.to);
        Frames(2);

        EXPECT_EQ(record, Dialog(CShowcaseDialog::kId)->GetWndInfo());
        EXPECT_EQ(40, Dialog(CShowcaseDialog::kId)->GetLocalPos().x);
        EXPECT_EQ(rows, Chat()->GetCount());
        const int line = LineOf(ReadText(kLayout), c.line);
        const std::string where = std::string(kLayout) + ":" + std::to_string(line) + ": ";
        const std::vector<std::string>& lines = m_host.GetReloadPanel()->Lines();
        ASSERT_EQ(2u, lines.size());
        EXPECT_EQ(0u, lines[1].find(where + c.message)) << lines[1];
        EXPECT_GT(RedInPanelCorner(), redBefore + 100);
        const QzPlatform::LogRecord* logged = log.Find("data error");
        ASSERT_NE(nullptr, logged);
        EXPECT_EQ(kLayout, logged->Get("file_name"));
        EXPECT_EQ(std::to_string(line), logged->Get("line_no"));

        WriteText(kLayout, m_original);
        Frames(2);
        EXPECT_FALSE(m_host.GetReloadPanel()->IsShown());
        EXPECT_NE(record, Dialog(CShowcaseDialog::kId)->GetWndInfo()) << "the fix reloads";
        EXPECT_EQ(redBefore, RedInPanelCorner());
    }
}

// A broken file stays broken until fixed: a sound edit of another file does not load it.
TEST_F(DemoLiveReload, ASoundEditElsewhereDoesNotLoadAFileStillBroken)
{
    QzTest::LogCapture log;
    EditLayout("[0-100]\nx=40", "[0-100]\nx=forty");
    Frames(2);
    ASSERT_TRUE(m_host.GetReloadPanel()->IsShown());
    const QzGui::IQzGuiWndInfo* record = Dialog(CShowcaseDialog::kId)->GetWndInfo();
    WriteText("ini/Cursor.ini", ReadText("ini/Cursor.ini"));
    Frames(2);
    EXPECT_TRUE(m_host.GetReloadPanel()->IsShown());
    EXPECT_EQ(record, Dialog(CShowcaseDialog::kId)->GetWndInfo());
}

// An editor's burst within one frame (a half-written file, then the whole) is one reload of
// the final text: the broken moment never shows.
TEST_F(DemoLiveReload, ASaveBurstReloadsOnceTheFinalText)
{
    EditLayout("[0-201]\nx=20", "[0-201\nx=");
    EditLayout("[0-201\nx=", "[0-201]\nx=26");
    Frames(2);
    EXPECT_FALSE(m_host.GetReloadPanel()->IsShown());
    EXPECT_EQ(26, Dialog(kDraggedId)->GetLocalPos().x);
}

TEST(DemoBundleCheck, TheSampleBundleIsSound)
{
    std::vector<BundleError> errors;
    for (const char* folder : {"ini", "ani"})
    {
        for (const auto& entry :
             fs::directory_iterator(fs::path(QZGUI_BINARY_DIR "/demo-bundle") / folder))
            CBundleCheck::CheckFile(QZGUI_BINARY_DIR "/demo-bundle",
                                    std::string(folder) + "/" + entry.path().filename().string(),
                                    errors);
    }
    for (const BundleError& error : errors)
        ADD_FAILURE() << CBundleCheck::Format(error);
}

TEST(DemoBundleCheck, FindsWhatTheReadersWouldMisread)
{
    struct Case
    {
        const char* file;
        const char* text;
        const char* expected; // "" when sound
    };
    const Case cases[] = {
        {"ini/L.ini", "[0-1]\nx=-5\ny=+3\nw=10 \nh= 20\r\n", ""},
        {"ini/L.ini", "; [0-1\n[0-1]\nw=1\nh=1\n", ""},
        {"ini/L.ini", "[0-1]\nw=1\nh=1\n[0-2\nw=1\nh=1\n",
         "ini/L.ini:4: unclosed section header (no \"]\"): [0-2"},
        {"ini/L.ini", "[0-1]\nx=12px\nw=1\nh=1\n", "ini/L.ini:2: not a number: x=12px"},
        {"ini/L.ini", "[0-1]\nw=1\nh=\n", "ini/L.ini:1: section without \"w\" or \"h\": [0-1]"},
        {"ini/L.ini", "[0-1]\nFontSize=-\nw=1\nh=1\n", "ini/L.ini:2: not a number: FontSize=-"},
        // Tables of their own format: only their headers are checked.
        {"ini/Cursor.ini", "[Normal]\nx=abc\n", ""},
        {"ani/Control.ani", "[Skin]\nFrameAmount=1\n[Broken\n",
         "ani/Control.ani:3: unclosed section header (no \"]\"): [Broken"},
    };
    for (const Case& c : cases)
    {
        std::vector<BundleError> errors;
        CBundleCheck::CheckText(c.file, c.text, errors);
        const std::string found = errors.empty() ? "" : CBundleCheck::Format(errors[0]);
        EXPECT_EQ(c.expected, found) << c.text;
        EXPECT_LE(errors.size(), 1u) << c.text;
    }
}

TEST(DemoBundleCheck, KeepsAFewErrorsOfAHostileFile)
{
    std::string text = "[0-1]\nw=1\nh=1\n[" + std::string(100000, 'x') + "\n";
    for (int i = 0; i < 1000; ++i)
        text += "x=nan\n[0-" + std::to_string(i) + "\n";
    std::vector<BundleError> errors;
    CBundleCheck::CheckText("ini/L.ini", text, errors);
    ASSERT_EQ(CBundleCheck::kMaxErrors, errors.size());
    EXPECT_LE(errors[0].text.size(), CBundleCheck::kMaxText);
}

// The saves a reload reads, not the temporary and backup files editors write beside them.
TEST(DemoBundleWatcher, TakesTheBundleFilesOnly)
{
    const std::pair<const char*, bool> cases[] = {
        {"DemoLayout.ini", true},
        {"Control.ANI", true},
        {".DemoLayout.ini.swp", false},
        {"DemoLayout.ini~", false},
        {"4913", false},
        {"#DemoLayout.ini#", false},
        {".#DemoLayout.ini", false},
        {"DemoLayout.ini.bak", false},
        {"", false},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(expected, CBundleWatcher::IsBundleFile(name)) << name;
}

} // namespace
