// The auto GUI manager building dialog 60 with its controls from the extended
// records read at the manager's Init, and showing and hiding it by id.
#include "ControlScene.h"

#include "controls/QzButton.h"
#include "controls/QzImage.h"
#include "controls/QzStatic.h"

namespace ControlTest
{

namespace
{

using AutoGuiControls = ControlScene;

TEST_F(AutoGuiControls, TheRecordsDialogHoldsAButtonAnImageAndTwoStaticsShownAndHiddenById)
{
    CQzDialog* pDialog = m_pMgr->FindDialog(60);
    ASSERT_NE(nullptr, pDialog);
    const auto ctrl = [pDialog](DWORD nId)
    {
        const QzCtrlEntry* pEntry = pDialog->FindCtrlEntry(nId);
        return pEntry ? pEntry->pCtrl : nullptr;
    };
    auto* pButton = dynamic_cast<CQzButton*>(ctrl(1));
    ASSERT_NE(nullptr, pButton);
    EXPECT_NE(nullptr, dynamic_cast<CQzImage*>(ctrl(2)));
    EXPECT_NE(nullptr, dynamic_cast<CQzStatic*>(ctrl(3)));
    auto* pStatic = dynamic_cast<CQzStatic*>(ctrl(4));
    ASSERT_NE(nullptr, pStatic);
    EXPECT_EQ(nullptr, ctrl(5));

    m_pMgr->AutoShowDialog(60);
    EXPECT_EQ(150, pStatic->GetY());
    pStatic->SetWindowText("auto");
    m_harness.MouseMove(70, 70);
    // The button hovers; the image keeps its background off.
    EXPECT_EQ(std::vector<std::string>{"img/f2.png"}, Frame());
    EXPECT_EQ("auto", Texts().at(0).text);
    int nClicks = 0;
    pDialog->AddMsgHandler(WM_COMMAND, MakeNotifyWParam(QZ_BN_CLICKED, 1),
                           [&nClicks](CQzDialog*) { ++nClicks; });
    m_harness.Click(70, 70);
    EXPECT_EQ(1, nClicks);
    m_pMgr->AutoHideDialog(60);
    EXPECT_EQ(std::vector<std::string>{}, Frame());
}

} // namespace

} // namespace ControlTest
