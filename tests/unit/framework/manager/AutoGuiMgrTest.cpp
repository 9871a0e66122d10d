// Dialogs built from the extended records alone, and the click-through dialog's messages.
#include "ManagerFixture.h"

#include "framework/QzDialogTrans.h"

namespace QzGuiManagerTest
{

namespace
{

// Dialog 50 with an edit record (no control of its own yet), 51, which is not a dialog, and
// dialog 49 named last in the file.
const char* const kGuiEx = "[0-50]\ntype=1\nx=10\ny=10\nw=100\nh=100\n"
                           "[50-1]\ntype=3\nx=0\ny=0\nw=10\nh=10\n"
                           "[0-51]\ntype=2\nx=0\ny=0\nw=10\nh=10\n"
                           "[0-49]\ntype=1\nx=10\ny=10\nw=100\nh=100\n";

class AutoGuiTest : public ManagerFixture
{
protected:
    AutoGuiTest() : ManagerFixture(kGuiEx) {}
};

TEST_F(AutoGuiTest, DialogsOfTheExtendedRecordsAreBuiltHiddenAndShownById)
{
    CQzDialog* pDialog = m_pMgr->FindDialog(50);
    ASSERT_NE(nullptr, pDialog);
    EXPECT_EQ(nullptr, m_pMgr->FindDialog(51));
    EXPECT_FALSE(pDialog->IsWindowVisible());
    EXPECT_EQ(10, pDialog->GetX());
    EXPECT_TRUE(pDialog->GetCtrlEntries().empty()); // an edit record yields no control

    m_pMgr->AutoShowDialog(50);
    EXPECT_TRUE(pDialog->IsWindowVisible());
    m_pMgr->AutoShowDialog(52);
    m_pMgr->AutoHideDialog(52);
    EXPECT_TRUE(pDialog->IsWindowVisible());
    m_pMgr->AutoHideDialog(50);
    EXPECT_FALSE(pDialog->IsWindowVisible());

    m_pMgr->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), 100, "Test.ini");
    EXPECT_EQ(2u, m_pMgr->GetDialogs().size());
}

TEST_F(AutoGuiTest, DialogsAreBuiltInRecordKeyOrderNotFileOrder)
{
    std::vector<DWORD> ids;
    for (const CQzDialog* pDialog : m_pMgr->GetDialogs())
        ids.push_back(pDialog->GetId());
    EXPECT_EQ((std::vector<DWORD>{49, 50}), ids);
}

// A transparent dialog that counts its timers and its handlers.
class CountingTrans : public QzGui::CQzDialogTrans
{
public:
    explicit CountingTrans(DWORD nId) : CQzDialogTrans(nId, nullptr) {}
    void OnTimer(DWORD nTimerId) override { timers.push_back(nTimerId); }

    std::vector<DWORD> timers;
};

using TransTest = ManagerFixture;

TEST_F(TransTest, ATransparentDialogRunsTimersAndCommandsButNotNotifications)
{
    CountingTrans trans(6);
    m_pMgr->AddDialog(&trans, nullptr, false);
    trans.ShowWindow(SW_SHOW);
    int commands = 0;
    trans.AddMsgHandler(WM_COMMAND, QzGui::MakeNotifyWParam(0, 10),
                        [&commands](CQzDialog*) { ++commands; });

    EXPECT_EQ(1, trans.SendMessage(WM_COMMAND, QzGui::MakeNotifyWParam(0, 10), 0));
    EXPECT_EQ(1, commands);
    EXPECT_EQ(0, trans.SendMessage(WM_NOTIFY, QzGui::MakeNotifyWParam(0, 10), 0));
    EXPECT_EQ(1, commands);

    trans.SetTimer(3, 0);
    m_pMgr->Show();
    EXPECT_EQ((std::vector<DWORD>{3}), trans.timers);
    EXPECT_EQ(0, trans.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 200)));
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    m_pMgr->RemoveDialog(&trans);
}

TEST_F(TransTest, ATransparentDialogWithAFlyDirectionFliesOutAndHides)
{
    QzGui::CQzDialogTrans trans(11, nullptr);
    m_pMgr->AddDialog(&trans, nullptr, false);
    trans.ShowWindow(SW_SHOW);
    m_pMgr->Show(); // flies in at once
    EXPECT_EQ(700, trans.GetX());
    EXPECT_TRUE(trans.IsWindowVisible());

    trans.ShowWindow(SW_HIDE);
    EXPECT_TRUE(trans.IsWindowVisible()); // flying out
    m_pMgr->Show();
    EXPECT_EQ(-100, trans.GetX());
    EXPECT_FALSE(trans.IsWindowVisible());
    m_pMgr->RemoveDialog(&trans);
}

} // namespace

} // namespace QzGuiManagerTest
