// Control creation, the message map, record reloads, the frame, the record's dialog attributes
// and the checks on an unregistered dialog.
#include "DialogScene.h"

namespace DialogTest
{

namespace
{

std::vector<DWORD> EntryIds(const CQzDialog& dialog)
{
    std::vector<DWORD> ids;
    for (const QzCtrlEntry& entry : dialog.GetCtrlEntries())
        ids.push_back(entry.nId);
    return ids;
}

} // namespace

class DialogLifecycle : public DialogScene
{
protected:
    DialogLifecycle()
    {
        AddRecord(0, 700, {100, 100, 400, 300});
        for (DWORD id = 1; id <= 5; ++id)
            AddRecord(700, id, {0, 0, 20, 20});
        for (DWORD id = 1; id <= 3; ++id)
            m_dialog.AddCtrl(id, &m_ctrls[id - 1]);
    }

    SpyDialog m_dialog{700, nullptr};
    SpyCtrl m_ctrls[5];
};

TEST_F(DialogLifecycle, ControlsAreCreatedAtTheFirstShowingAndCreatedEntriesStayLast)
{
    m_pMgr->AddDialog(&m_dialog, nullptr, false);
    EXPECT_EQ(0, m_ctrls[0].nCreated);

    m_dialog.ShowWindow(SW_SHOW);
    EXPECT_EQ(1, m_ctrls[2].nCreated);
    EXPECT_TRUE(m_ctrls[2].IsWindowVisible());

    m_dialog.AddCtrl(4, &m_ctrls[3]);
    m_dialog.AddCtrl(5, &m_ctrls[4]);
    m_dialog.AddCtrl(5, &m_ctrls[0]);
    EXPECT_EQ((std::vector<DWORD>{4, 5, 1, 2, 3}), EntryIds(m_dialog));
    m_dialog.CreateCtrl(&m_ctrls[4], FALSE);
    EXPECT_EQ((std::vector<DWORD>{4, 1, 2, 3, 5}), EntryIds(m_dialog));
    EXPECT_FALSE(m_ctrls[4].IsWindowVisible());

    m_dialog.ShowWindow(SW_HIDE);
    m_dialog.ShowWindow(SW_SHOW); // creates only what was never created
    EXPECT_EQ(1, m_ctrls[3].nCreated);
    EXPECT_EQ(1, m_ctrls[0].nCreated);
}

TEST_F(DialogLifecycle, TheRegistrationFlagCreatesTheControlsAtOnceAndRemovalForgetsThem)
{
    m_pMgr->AddDialog(&m_dialog, nullptr, true);
    EXPECT_EQ(1, m_ctrls[0].nCreated);

    m_pMgr->RemoveDialog(&m_dialog);
    for (const QzCtrlEntry& entry : m_dialog.GetCtrlEntries())
        EXPECT_FALSE(entry.bCreated);
    EXPECT_FALSE(m_dialog.IsValid());
}

TEST_F(DialogLifecycle, ARemovedControlGetsNoMoreMessagesAndTheManagerLetsItGo)
{
    m_pMgr->AddDialog(&m_dialog, nullptr, true);
    m_dialog.ShowWindow(SW_SHOW);
    m_pMgr->SetCapture(&m_ctrls[1]);
    m_pMgr->SetKeyFocus(&m_ctrls[1]);

    m_dialog.RemoveCtrl(&m_ctrls[1]);
    m_dialog.RemoveCtrl(&m_ctrls[4]); // never added
    EXPECT_EQ((std::vector<DWORD>{1, 3}), EntryIds(m_dialog));
    EXPECT_EQ(nullptr, m_pMgr->GetCapture());
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
    const size_t nSeen = m_ctrls[1].messages.size();
    const int nMoves = m_ctrls[2].Count(WM_MOVE);
    m_dialog.SetPos(150, 150); // moves the controls it holds
    m_harness.Click(160, 160);
    EXPECT_EQ(nSeen, m_ctrls[1].messages.size());
    EXPECT_EQ(nMoves + 1, m_ctrls[2].Count(WM_MOVE));
}

TEST_F(DialogLifecycle, TheFirstMatchingMapEntryRunsForCommandsAndNotifications)
{
    m_pMgr->AddDialog(&m_dialog, nullptr, false);
    std::vector<std::string> ran;
    m_dialog.AddMsgHandler(WM_COMMAND, MAKELONG(7, 0), [&](CQzDialog*) { ran.push_back("first"); });
    m_dialog.AddMsgHandler(WM_COMMAND, MAKELONG(7, 0), [&](CQzDialog*) { ran.push_back("dup"); });
    m_dialog.AddMsgHandler(WM_NOTIFY, MAKELONG(7, 0), [&](CQzDialog*) { ran.push_back("notify"); });
    m_dialog.AddMsgHandler(WM_COMMAND, MAKELONG(8, 0), CQzDialog::Handler());

    EXPECT_EQ(1, m_dialog.SendMessage(WM_COMMAND, MakeNotifyWParam(0, 7), 0));
    EXPECT_EQ(1, m_dialog.SendMessage(WM_NOTIFY, MakeNotifyWParam(0, 7), 0));
    EXPECT_EQ(0, m_dialog.SendMessage(WM_COMMAND, MakeNotifyWParam(0, 8), 0));
    EXPECT_EQ(0, m_dialog.SendMessage(WM_COMMAND, MakeNotifyWParam(1, 7), 0));
    EXPECT_EQ((std::vector<std::string>{"first", "first"}), ran);
}

TEST_F(DialogLifecycle, ReloadTellsTheChildDialogsFirstThenItselfAndRereadsCreatedControls)
{
    SpyDialog child(701, nullptr);
    AddRecord(0, 701, {0, 0, 50, 50});
    m_pMgr->AddDialog(&m_dialog, nullptr, false);
    m_dialog.AddChildDialog(&child, false);
    m_dialog.CreateCtrl(&m_ctrls[0], TRUE);
    AddRecord(700, 1, {30, 40, 50, 60});
    AddRecord(700, 2, {30, 40, 50, 60});
    std::vector<std::pair<DWORD, UINT>> journal;
    m_dialog.pJournal = child.pJournal = &journal;

    m_dialog.ReloadInfo(1);
    m_dialog.ReloadInfo(0);
    m_dialog.ReloadInfo(2);

    const std::vector<std::pair<DWORD, UINT>> expected = {{701, QZ_WM_RELOADED},
                                                          {700, QZ_WM_RELOADED},
                                                          {701, QZ_WM_RELOADED2},
                                                          {700, QZ_WM_RELOADED2}};
    EXPECT_EQ(expected, journal);
    EXPECT_EQ(130, m_ctrls[0].GetX());
    EXPECT_EQ(100, m_ctrls[1].GetX()); // not created: only placed by its dialog's move
}

TEST_F(DialogLifecycle, AFrameRunsItsStepsInOrderAndNotesTheHoverControl)
{
    m_pMgr->AddDialog(&m_dialog, nullptr, false);
    m_dialog.ShowWindow(SW_SHOW);
    m_dialog.SetTimer(1, 0);
    m_harness.MouseMove(105, 105);
    m_dialog.steps.clear();

    Frame();

    EXPECT_EQ((std::vector<std::string>{"timer", "back", "back effect", "controls", "child dialogs",
                                        "front effect", "update effects", "after draw"}),
              m_dialog.steps);
    EXPECT_EQ(&m_ctrls[2], m_dialog.GetHoverCtrl());
}

// A control's Show may take controls out, add or move them: the frame goes on with the controls
// it had still to draw that remain, each once; the next frame draws the new order.
TEST_F(DialogLifecycle, AControlChangingTheListWhileItDrawsLeavesTheRestDrawnOnce)
{
    m_pMgr->AddDialog(&m_dialog, nullptr, true);
    m_dialog.ShowWindow(SW_SHOW);
    m_dialog.AddCtrl(4, &m_ctrls[3]);
    m_dialog.CreateCtrl(&m_ctrls[3], TRUE);
    m_ctrls[0].onShow = [this]
    {
        m_dialog.RemoveCtrl(&m_ctrls[1]);
        m_dialog.MoveCtrlToEnd(1);
        m_dialog.AddCtrl(5, &m_ctrls[4]);
        m_dialog.CreateCtrl(&m_ctrls[4], TRUE);
    };
    const auto shown = [this]
    {
        std::vector<int> counts;
        for (const SpyCtrl& ctrl : m_ctrls)
            counts.push_back(ctrl.nShown);
        return counts;
    };

    Frame();
    EXPECT_EQ((std::vector<int>{1, 0, 1, 1, 0}), shown());
    m_ctrls[0].onShow = nullptr;
    Frame();
    EXPECT_EQ((std::vector<int>{2, 0, 2, 2, 1}), shown());
    EXPECT_EQ((std::vector<DWORD>{3, 4, 1, 5}), EntryIds(m_dialog));
}

TEST_F(DialogLifecycle, TheRecordGivesTheDialogAttributes)
{
    AddRecord(0, 700, {100, 100, 400, 300},
              {{"NoPush", "1"},
               {"ExtraShow", "1"},
               {"IgnoreEscClose", "1"},
               {"IgnoreChgMapClose", "3"},
               {"RClose", "0"},
               {"FlyInStep", "9"}});
    m_pMgr->AddDialog(&m_dialog, nullptr, false);
    m_dialog.ShowWindow(SW_SHOW);
    EXPECT_FALSE(m_dialog.IsRClose());
    EXPECT_EQ(9, m_dialog.GetFlyInStep());

    m_pMgr->SetDialogsShown(false); // NoPush and ExtraShow keep it visible
    EXPECT_TRUE(m_dialog.IsVisible());
    m_dialog.SetPushable(true);
    EXPECT_FALSE(m_dialog.IsVisible());
    m_pMgr->SetDialogsShown(true);

    EXPECT_FALSE(m_dialog.CloseByEvent(5)); // IgnoreChgMapClose=3: events 5 and 6
    EXPECT_FALSE(m_dialog.CloseByEvent(6));
    EXPECT_TRUE(m_dialog.CloseByEvent(7));
    EXPECT_FALSE(m_dialog.IsWindowVisible());
}

TEST_F(DialogLifecycle, AnUnregisteredDialogReportsItsUseAndGoesOn)
{
    m_dialog.WindowProc(WM_TIMER, 1, 0);
    m_dialog.CreateCtrl(&m_ctrls[0], TRUE);

    std::vector<int> lines;
    for (const QzTest::AssertReport& report : m_harness.Log().Asserts())
    {
        if (report.expression == "m_bValid" && report.source == "QzDialog")
            lines.push_back(report.line);
    }
    EXPECT_EQ((std::vector<int>{217, 1044}), lines);
    EXPECT_EQ(std::vector<std::string>{"timer"}, m_dialog.steps);
}

} // namespace DialogTest
