// Mouse input from the host window through the manager to a dialog, its controls and the
// dialogs beneath it.
#include "DialogScene.h"

#include <list>

namespace DialogTest
{

class DialogRouting : public DialogScene
{
protected:
    DialogRouting()
    {
        AddRecord(0, 300, {100, 100, 400, 300});
        AddRecord(300, 1, {10, 10, 110, 50}); // button at (110, 110)-(210, 150)
        AddRecord(300, 2, {0, 0, 200, 100});  // static over it
    }

    void Open(bool bWithStatic)
    {
        m_dialog.AddCtrl(1, &m_button);
        if (bWithStatic)
            m_dialog.AddCtrl(2, &m_static);
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
        m_dialog.ShowWindow(SW_SHOW);
    }

    SpyDialog m_dialog{300, nullptr};
    SpyCtrl m_button{QZ_WND_BUTTON};
    SpyCtrl m_static{QZ_WND_STATIC};
};

TEST_F(DialogRouting, AClickOnAStaticOverAButtonReachesTheButtonAndItsHandler)
{
    Open(true);
    m_dialog.AddMsgHandler(WM_COMMAND, MAKELONG(1, QZ_BN_CLICKED), &SpyDialog::OnClicked);

    m_harness.MouseMove(150, 120);
    m_harness.Click(150, 120);

    EXPECT_EQ(1, m_static.Count(WM_MOUSEMOVE));
    EXPECT_EQ(0, m_static.Count(WM_LBUTTONDOWN) + m_static.Count(WM_LBUTTONUP));
    EXPECT_EQ(1, m_button.Count(WM_LBUTTONDOWN));
    EXPECT_EQ(1, m_button.Count(WM_LBUTTONUP));
    EXPECT_EQ(std::vector<std::string>{"clicked"}, m_dialog.steps);
}

TEST_F(DialogRouting, ADisabledControlGetsMovesButItsClickGoesToTheDialog)
{
    Open(false);
    m_button.EnableWindow(FALSE);

    m_harness.MouseMove(150, 120);
    m_harness.LButtonDown(150, 120);

    EXPECT_EQ(1, m_button.Count(WM_MOUSEMOVE));
    EXPECT_EQ(0, m_button.Count(WM_LBUTTONDOWN));
    EXPECT_EQ(std::vector<std::string>{"ldown"}, m_dialog.steps);
    EXPECT_EQ(1, m_nMouseResult);
}

TEST_F(DialogRouting, AButtonUpOverAnEmptyAreaIsOfferedToTheDialogBelow)
{
    SpyDialog below(301, nullptr);
    AddRecord(0, 301, {50, 50, 450, 350});
    m_pMgr->AddDialog(&below, nullptr, false);
    below.ShowWindow(SW_SHOW);
    Open(false);

    m_harness.LButtonUp(350, 250);

    EXPECT_EQ(std::vector<std::string>{"lup"}, m_dialog.steps);
    EXPECT_EQ(std::vector<std::string>{"lup"}, below.steps);
    EXPECT_EQ(0, m_nMouseResult);
}

TEST_F(DialogRouting, ClickToTopZeroKeepsTheOrderAndTopmostTwoIsNotTopmost)
{
    SpyDialog stays(401, nullptr), rises(402, nullptr), almostTop(403, nullptr);
    AddRecord(0, 401, {0, 0, 100, 100}, {{"ClickToTop", "0"}});
    AddRecord(0, 402, {200, 0, 300, 100});
    AddRecord(0, 403, {400, 0, 500, 100}, {{"Topmost", "2"}});
    for (CQzDialog* pDialog : {&stays, &rises, &almostTop})
    {
        m_pMgr->AddDialog(pDialog, nullptr, false);
        pDialog->ShowWindow(SW_SHOW);
    }
    EXPECT_FALSE(stays.IsClickToTop());
    EXPECT_FALSE(almostTop.IsTopmost());

    m_harness.Click(50, 50);
    EXPECT_EQ((std::list<CQzDialog*>{&stays, &rises, &almostTop}), m_pMgr->GetDialogs());
    m_harness.Click(250, 50);
    EXPECT_EQ((std::list<CQzDialog*>{&stays, &almostTop, &rises}), m_pMgr->GetDialogs());
}

} // namespace DialogTest
