// The cursor manager on a GUI manager over a temp data root: cursor files the system shows,
// animation sections drawn at the mouse, effect parts, and the windows that set cursors by name.
#include "support/GuiScene.h"
#include "unit/effects/RecordingEffectObject.h"

#include "controls/QzButton.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzCursorMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/system/host/QzHost.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace QzGui;

// "Busy" has three frames: a.png 10 x 10, b.png 12 x 12, c.png 14 x 14.
const char* const kAniFile = "[Busy]\nFrameAmount=3\nFrame0=img/a.png\nFrame1=img/b.png\n"
                             "Frame2=img/c.png\n"
                             "[Empty]\nFrameAmount=0\n";
const char* const kCursors =
    "[Normal]\ntype=0\ncur=cursor/arrow.cur\n[Hand]\ntype=0\ncur=cursor/hand.cur\n"
    "[Grab]\ntype=0\ncur=cursor/hand.cur\n[Lost]\ntype=0\ncur=cursor/missing.cur\n"
    "[Busy]\ntype=1\ncur=Busy\n[Blank]\ntype=1\ncur=Empty\n"
    "[Spark]\ntype=2\ncur=SparkPart\n[Glow]\ntype=2\ncur=GlowPart\n";
// Dialog 1 at (0, 0)-(300, 300); its button 2 configures its own cursor, button 3 does not.
const char* const kLayout = "[0-1]\nx=0\ny=0\nw=300\nh=300\n"
                            "[1-2]\nx=10\ny=10\nw=50\nh=20\nCursor=Hand\n"
                            "[1-3]\nx=10\ny=40\nw=50\nh=20\n";

// The recording effect factory, installed before the scene's manager makes its cursor manager.
struct RecordedEffects
{
    QzTest::EffectObjectLog m_effectLog;
    QzTest::ScopedRecordingFactory m_factory{m_effectLog};
};

class CursorScene : protected RecordedEffects, public QzTest::GuiScene
{
protected:
    explicit CursorScene(const char* pszCursors = kCursors)
        : GuiScene({{"ani/Control.ani", kAniFile},
                    {"ini/Cursor.ini", pszCursors},
                    {"ini/Test.ini", kLayout},
                    {"cursor/arrow.cur", "arrow"},
                    {"cursor/hand.cur", "hand"}}),
          m_pCursors(m_pMgr->GetCursorMgr())
    {
        m_harness.Device().DefineTexture("img/a.png", 10, 10);
        m_harness.Device().DefineTexture("img/b.png", 12, 12);
        m_harness.Device().DefineTexture("img/c.png", 14, 14);
    }

    // The file of the cursor the system shows, under the data root; empty when none is shown.
    std::string ShownFile() const
    {
        const QzPlatform::Host::CursorInfo info = QzPlatform::Host::DescribeCursor(GetCursor());
        const std::string root = m_root.Folder() + "/";
        if (!info.valid)
            return "";
        return info.file.compare(0, root.size(), root) == 0 ? info.file.substr(root.size())
                                                            : info.file;
    }
    // The trace of the textures DrawCursor draws in one frame.
    std::string DrawnCursor()
    {
        m_harness.Device().Clear();
        m_harness.Frame([this] { m_pCursors->DrawCursor(); });
        return QzTest::RecordingDevice::Trace(m_harness.Device().Calls(QzTest::DrawKind::Texture));
    }

    CQzCursorMgr* m_pCursors;
};

using Effects = std::vector<std::string>;

TEST_F(CursorScene, InitCreatesOneCursorManagerWithItsOwnEffectObject)
{
    ASSERT_NE(nullptr, m_pCursors);
    EXPECT_EQ(1, m_effectLog.nCreated);
    m_pMgr->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), 100, "Test.ini");
    EXPECT_EQ(m_pCursors, m_pMgr->GetCursorMgr());
    EXPECT_EQ(1, m_effectLog.nCreated);
}

TEST(CursorMgrLifetime, ReleasesItsEffectObjectAndDestroysItsCursors)
{
    QzTest::Harness harness;
    QzTest::TempDataDir root;
    QzTest::EffectObjectLog log;
    QzTest::ScopedRecordingFactory factory(log);
    root.Write("ini/Cursor.ini", "[Hand]\ntype=0\ncur=hand.cur\n");
    root.Write("ini/Test.ini", "");
    root.Write("hand.cur", "hand");
    auto* pMgr = static_cast<CQzGuiMgr*>(CreateGuiMgr());
    pMgr->Init(GetModuleHandleA(nullptr), harness.MainWindow(), 100, "Test.ini");
    pMgr->GetCursorMgr()->SetCursorByName("Hand");
    const HCURSOR hHand = GetCursor();
    ASSERT_TRUE(QzPlatform::Host::DescribeCursor(hHand).valid);
    pMgr->Release();
    EXPECT_EQ(1, log.nReleased);
    EXPECT_FALSE(QzPlatform::Host::DescribeCursor(hHand).valid);
}

TEST(CursorMgrLifetime, WithoutAManagerOrAnEffectObjectNothingHappens)
{
    QzTest::Harness harness;
    QzTest::EffectObjectLog log;
    QzTest::ScopedRecordingFactory factory(log, true);
    CQzCursorMgr cursors;
    cursors.SetCursorByName("Hand");
    cursors.DrawCursor();
    EXPECT_FALSE(cursors.HasCursorName());
    EXPECT_EQ(0, cursors.GetCursorType());
    EXPECT_EQ(nullptr, cursors.GetCursorAniName());
    EXPECT_EQ(0, log.nCreated);
}

// Type 0: the system shows the file, each file loaded once until the cache is cleared; a
// missing file hides the system cursor.
TEST_F(CursorScene, AFileCursorIsShownByTheSystemLoadedOnceAndRestartsTheEffect)
{
    m_pCursors->SetCursorByName("Hand");
    EXPECT_EQ("cursor/hand.cur", ShownFile());
    EXPECT_EQ(0, m_pCursors->GetCursorType());
    EXPECT_EQ(nullptr, m_pCursors->GetCursorAniName());
    EXPECT_TRUE(m_pCursors->HasCursorName());
    EXPECT_EQ(Effects{"StartEffect(null,0,0)"}, m_effectLog.calls);
    EXPECT_EQ("", DrawnCursor());

    const HCURSOR hHand = GetCursor();
    m_pCursors->SetCursorByName("Normal");
    EXPECT_EQ("cursor/arrow.cur", ShownFile());
    m_pCursors->SetCursorByName("Grab"); // another name for the same file
    EXPECT_EQ(hHand, GetCursor());
    m_pCursors->ClearCursorCache();
    EXPECT_FALSE(QzPlatform::Host::DescribeCursor(hHand).valid);
    m_pCursors->SetCursorByName("Hand");
    EXPECT_NE(hHand, GetCursor());
    EXPECT_EQ("cursor/hand.cur", ShownFile());

    m_pCursors->SetCursorByName("Lost");
    EXPECT_EQ(nullptr, GetCursor());
    EXPECT_EQ(0, m_pCursors->GetCursorType());
}

// Type 1: the system cursor hidden, the section's frames drawn at the mouse, one every 200 ms.
TEST_F(CursorScene, AnAnimatedCursorHidesTheSystemCursorAndDrawsItsFramesAtTheMouse)
{
    m_pCursors->SetCursorByName("Hand");
    m_effectLog.calls.clear();
    m_pCursors->SetCursorByName("Busy");
    EXPECT_EQ(nullptr, GetCursor());
    EXPECT_EQ(1, m_pCursors->GetCursorType());
    EXPECT_STREQ("Busy", m_pCursors->GetCursorAniName());
    EXPECT_EQ(Effects{"StartEffect(null,0,0)"}, m_effectLog.calls);

    m_harness.MouseMove(40, 50);
    // 1000 / 200 = 5, frame 5 % 3 = 2.
    const std::pair<DWORD, const char*> frames[] = {
        {1000, "c.png src(0,0,14,14) at 40,50 size 14x14"},
        {1199, "c.png src(0,0,14,14) at 40,50 size 14x14"},
        {1200, "a.png src(0,0,10,10) at 40,50 size 10x10"},
        {1400, "b.png src(0,0,12,12) at 40,50 size 12x12"}};
    for (const auto& [time, pszFrame] : frames)
    {
        m_harness.SetTime(time);
        EXPECT_EQ("texture img/" + std::string(pszFrame) + " alpha 255 scale 1\n", DrawnCursor())
            << time;
    }
    m_pCursors->SetCursorByName("Blank"); // a section without frames
    EXPECT_EQ(1, m_pCursors->GetCursorType());
    EXPECT_EQ("", DrawnCursor());
}

// Type 2: a part of the cursor manager's effect object, added once, drawn at the mouse as the
// manager transforms it.
TEST_F(CursorScene, AnEffectCursorAddsItsPartOnceAndDrawsItAtTheTransformedMouse)
{
    m_pMgr->SetTransformCallback(
        [](int x, int y, int* pX, int* pY)
        {
            *pX = x * 2;
            *pY = y + 7;
        });
    m_harness.MouseMove(30, 40);
    m_pCursors->SetCursorByName("Spark");
    EXPECT_EQ(2, m_pCursors->GetCursorType());
    EXPECT_STREQ("SparkPart", m_pCursors->GetCursorAniName());
    EXPECT_EQ("", DrawnCursor()); // the recording object holds no part yet
    EXPECT_EQ((Effects{"HasPart(SparkPart,0,0)", "AddPart(SparkPart,1,0)", "PlayPart(-1)",
                       "FindPart(SparkPart)"}),
              m_effectLog.calls);

    m_effectLog.mapIndexes["SparkPart"] = 4; // the object holds the part now
    m_effectLog.calls.clear();
    m_pCursors->SetCursorByName("Glow");
    m_pCursors->SetCursorByName("Spark");
    DrawnCursor();
    EXPECT_EQ((Effects{"HasPart(GlowPart,0,0)", "AddPart(GlowPart,1,0)", "PlayPart(-1)",
                       "HasPart(SparkPart,0,0)", "FindPart(SparkPart)", "Draw(60,47,4)"}),
              m_effectLog.calls);
}

// The last name shown counts until it is forgotten: asked again, it changes nothing; unknown
// names change nothing either.
TEST_F(CursorScene, TheSameOrAnUnknownNameChangesNothingUntilTheNameIsForgotten)
{
    m_pCursors->SetCursorByName("Busy");
    m_effectLog.calls.clear();
    for (const char* pszName : {"Busy", "NoSuchCursor", "", "Busy"})
        m_pCursors->SetCursorByName(pszName);
    EXPECT_EQ(1, m_pCursors->GetCursorType());
    EXPECT_STREQ("Busy", m_pCursors->GetCursorAniName());
    EXPECT_TRUE(m_effectLog.calls.empty());

    m_pCursors->SetCursorByName(nullptr);
    EXPECT_FALSE(m_pCursors->HasCursorName());
    m_pCursors->SetCursorByName("Busy");
    EXPECT_EQ(Effects{"StartEffect(null,0,0)"}, m_effectLog.calls);
}

// ---------------------------------------------------------------------------------------------
// Windows setting cursors by name

class CursorWindowScene : public CursorScene
{
protected:
    explicit CursorWindowScene(const char* pszCursors = kCursors) : CursorScene(pszCursors)
    {
        m_dialog.AddCtrl(2, &m_ownCursor);
        m_dialog.AddCtrl(3, &m_plain);
        m_pMgr->AddDialog(&m_dialog, nullptr, true);
        m_dialog.ShowWindow(SW_SHOW);
    }
    ~CursorWindowScene() override { m_pMgr->RemoveDialog(&m_dialog); }

    CQzDialog m_dialog{1, nullptr};
    CQzButton m_ownCursor;
    CQzButton m_plain;
};

// WM_SETCURSOR shows the window's cursor; a button's ChangeCursor yields to the cursor its
// record configures.
TEST_F(CursorWindowScene, WindowsShowTheirCursorAndButtonsChangeItUnlessTheirRecordHasOne)
{
    m_dialog.SendMessage(WM_SETCURSOR, 0, 0); // no name: the cursor stays alone
    m_ownCursor.ChangeCursor("Busy");
    m_plain.ChangeCursor(nullptr);
    EXPECT_FALSE(m_pCursors->HasCursorName());
    m_plain.ChangeCursor("Busy");
    EXPECT_STREQ("Busy", m_pCursors->GetCursorAniName());

    m_dialog.SetCursorName("Blank");
    m_dialog.SendMessage(WM_SETCURSOR, 0, 0);
    EXPECT_STREQ("Empty", m_pCursors->GetCursorAniName());
    m_ownCursor.SendMessage(WM_SETCURSOR, 0, 0); // "Cursor=Hand" of its record
    EXPECT_EQ("cursor/hand.cur", ShownFile());
}

TEST_F(CursorWindowScene, EnteringADialogResetsTheCursorWhenANormalCursorExists)
{
    m_pCursors->SetCursorByName("Busy");
    m_harness.MouseMove(200, 200);
    EXPECT_FALSE(m_pCursors->HasCursorName());
    EXPECT_EQ(1, m_pCursors->GetCursorType()); // the reset only forgets the name
}

class CursorWithoutNormalScene : public CursorWindowScene
{
protected:
    CursorWithoutNormalScene() : CursorWindowScene("[Busy]\ntype=1\ncur=Busy\n") {}
};

TEST_F(CursorWithoutNormalScene, EnteringADialogKeepsTheCursorWithoutANormalCursor)
{
    m_pCursors->SetCursorByName("Busy");
    m_harness.MouseMove(200, 200);
    EXPECT_TRUE(m_pCursors->HasCursorName());
}

} // namespace
