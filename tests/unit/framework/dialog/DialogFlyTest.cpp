// Fly-in from a screen edge when shown, fly-out before hiding, and the sounds of both.
#include "DialogScene.h"

#include <climits>

namespace DialogTest
{

namespace
{

std::vector<std::string> g_sounds;

void RecordSound(const char* pszName, int, int, int, int, int)
{
    g_sounds.push_back(pszName);
}

} // namespace

class DialogFly : public DialogScene
{
protected:
    DialogFly()
    {
        g_sounds.clear();
        m_pMgr->SetSoundCallback(&RecordSound);
        CQzGuiWndInfo* pRecord =
            AddRecord(0, 500, {100, 50, 300, 150}, {{"FlyInStep", "40"}, {"FlyOutStep", "50"}});
        pRecord->SetFlyDir(1);
        pRecord->SetOpenSound("open.wav");
        pRecord->SetCloseSound("close.wav");
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
    }

    SpyDialog m_dialog{500, nullptr};
};

TEST_F(DialogFly, FliesInFromTheLeftAndOutAgainBeforeHiding)
{
    m_dialog.ShowWindow(SW_SHOW);
    EXPECT_EQ((POINT{-200, 50}), (POINT{m_dialog.GetX(), m_dialog.GetY()}));
    EXPECT_EQ(std::vector<std::string>{"open.wav"}, g_sounds);
    std::vector<int> xs;
    for (int i = 0; i < 8; ++i)
    {
        Frame();
        xs.push_back(m_dialog.GetX());
    }
    EXPECT_EQ((std::vector<int>{-160, -120, -80, -40, 0, 40, 80, 100}), xs);
    EXPECT_FALSE(m_dialog.IsFlying());
    EXPECT_EQ(1, m_dialog.Count(QZ_WM_FLYFINISHED));

    m_dialog.ShowWindow(SW_HIDE);
    xs.clear();
    for (int i = 0; i < 5; ++i)
    {
        Frame();
        xs.push_back(m_dialog.GetX());
    }
    EXPECT_EQ((std::vector<int>{50, 0, -50, -100, -150}), xs);
    EXPECT_TRUE(m_dialog.IsWindowVisible()); // still on its way
    EXPECT_EQ(std::vector<std::string>{"open.wav"}, g_sounds);
    Frame();
    EXPECT_FALSE(m_dialog.IsWindowVisible());
    EXPECT_EQ((std::vector<std::string>{"open.wav", "close.wav"}), g_sounds);
}

// A hostile step flies the dialog away to the end of the int range, with its controls, and it
// can still be hidden (found by fuzzing layouts on live windows: nothing overflows on the way).
TEST_F(DialogFly, AHostileStepStopsAtTheEndOfTheIntRange)
{
    AddRecord(0, 501, {100, 50, 300, 150}, {{"FlyInStep", "-2147436847"}})->SetFlyDir(1);
    AddRecord(501, 1, {10, 10, 30, 30});
    SpyDialog dialog{501, nullptr};
    SpyCtrl ctrl{QZ_WND_IMAGE};
    dialog.AddCtrl(1, &ctrl);
    m_pMgr->AddDialog(&dialog, nullptr, false);
    dialog.ShowWindow(SW_SHOW);
    Frame();
    Frame();
    EXPECT_EQ(INT_MIN, dialog.GetX());
    EXPECT_EQ((RECT{INT_MIN + 10, 60, INT_MIN + 30, 80}), ctrl.GetWindowRect());
    EXPECT_TRUE(dialog.IsFlying());
    POINT pt{5, 5};
    dialog.ScreenToClient(&pt);
    EXPECT_EQ(INT_MAX, pt.x);
    dialog.ShowWindow(SW_HIDE);
    Frame();
    m_pMgr->RemoveDialog(&dialog);
}

} // namespace DialogTest
