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

    EXPECT_EQ((std::vector<int>{1, 0, 0, 1, 1}),
              (std::vector<int>{m_static.Count(WM_MOUSEMOVE), m_static.Count(WM_LBUTTONDOWN),
                                m_static.Count(WM_LBUTTONUP), m_button.Count(WM_LBUTTONDOWN),
                                m_button.Count(WM_LBUTTONUP)}));
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

// Only Topmost=1 keeps a dialog above the others.
TEST_F(DialogRouting, TopmostTwoIsNotTopmost)
{
    SpyDialog almostTop(403, nullptr);
    AddRecord(0, 403, {400, 0, 500, 100}, {{"Topmost", "2"}});
    m_pMgr->AddDialog(&almostTop, nullptr, false);
    almostTop.ShowWindow(SW_SHOW);
    Open(false);
    m_harness.Click(150, 120);
    EXPECT_EQ((std::list<CQzDialog*>{&almostTop, &m_dialog}), m_pMgr->GetDialogs());
}

} // namespace DialogTest
