// The layout manager with its GUI manager: the root record follows the manager's screen.
#include "LayoutTestSupport.h"

#include "framework/QzGuiMgr.h"

#include <string>

namespace QzLayoutTest
{

class LayoutRootTest : public LayoutTest
{
protected:
    LayoutRootTest() : pGuiMgr(QzGui::CreateGuiMgr()) { pGuiMgr->SetScreenSize(1024, 700); }
    ~LayoutRootTest() override { pGuiMgr->Release(); }

    QzGui::IQzGuiMgr* pGuiMgr;
};

TEST_F(LayoutRootTest, InitCreatesTheRootRecordOfTheScreenSize)
{
    ASSERT_TRUE(mgr.Init(pGuiMgr));

    IQzGuiWndInfo* pRoot = Record(0, 0);
    ASSERT_NE(nullptr, pRoot);
    EXPECT_EQ(0, pRoot->GetParentId());
    EXPECT_EQ((Place{0, 0, 1024, 700}), PlaceOf(pRoot));
}

TEST_F(LayoutRootTest, InitWithoutManagerIsReportedAndFails)
{
    EXPECT_FALSE(mgr.Init(nullptr));

    ASSERT_EQ(1u, Log().LogMsgs().size());
    const std::string& text = Log().LogMsgs()[0];
    EXPECT_EQ(0u, text.find("ASSERT(NULL != pGuiMgr) in "));
    EXPECT_NE(std::string::npos, text.find(" line of QzGuiInfoMgr"));
    EXPECT_EQ(nullptr, Record(0, 0));
}

TEST_F(LayoutRootTest, RootSectionOfTheFileGetsTheScreenSizeAtTheEnd)
{
    ASSERT_TRUE(mgr.Init(pGuiMgr));
    ASSERT_TRUE(Load("[0-0]\nx=5\nw=10\nh=10\nTitle=Root\n"));

    IQzGuiWndInfo* pRoot = Record(0, 0);
    ASSERT_NE(nullptr, pRoot);
    EXPECT_STREQ("Root", pRoot->GetTitle());
    EXPECT_EQ((Place{5, 0, 1024, 700}), PlaceOf(pRoot));
}

TEST_F(LayoutRootTest, UnconfiguredWindowWithoutDialogTemplateGetsNoRecordAndNoLog)
{
    ASSERT_TRUE(mgr.Init(pGuiMgr));
    ASSERT_TRUE(Load("[0-5]\nw=100\n"));
    Log().Clear();

    EXPECT_EQ(nullptr, mgr.GetWndInfo(0, 5, 2, 0));
    EXPECT_EQ(nullptr, mgr.GetWndInfo(0, 5, 1, 0));
    EXPECT_TRUE(Log().Empty());
}

} // namespace QzLayoutTest
