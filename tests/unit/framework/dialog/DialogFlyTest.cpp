// Fly-in from a screen edge when shown, fly-out before hiding, and the sounds of both.
#include "DialogScene.h"

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

} // namespace DialogTest
