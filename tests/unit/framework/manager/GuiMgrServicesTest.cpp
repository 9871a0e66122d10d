// The manager's life and its services: Init, reloading, the logic file, closing and
// broadcasting, text splitting, the font and the small host conveniences.
#include "ManagerFixture.h"

#include "effects/GuiEffectInfo.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/services/QzScreenAdapter.h"
#include "platform/system/kernel/QzKernelHost.h"
#include "textinput/QzEditSingle.h"

#include <cstdlib>

namespace QzGuiManagerTest
{

namespace
{

using ServicesTest = ManagerFixture;
using QzGui::g_pQzEditSingle;

TEST_F(ServicesTest, InitNeedsAnInstanceAWindowADialogIdAndTheEditShell)
{
    HINSTANCE hInstance = GetModuleHandleA(nullptr);
    HWND hWnd = m_harness.MainWindow();
    IQzGuiMgrPtr other(QzGui::CreateGuiMgr());
    EXPECT_EQ(0, other->Init(nullptr, hWnd, 100, "Test.ini"));
    EXPECT_EQ(0, other->Init(hInstance, nullptr, 100, "Test.ini"));
    EXPECT_EQ(0, other->Init(hInstance, hWnd, 0, "Test.ini"));

    // The shell was set up by the fixture's manager and stays with it.
    ASSERT_NE(nullptr, g_pQzEditSingle);
    EXPECT_EQ(1, other->Init(hInstance, hWnd, 100, "Test.ini"));
    EXPECT_EQ(m_pMgr, g_pQzEditSingle->GetGuiMgr());
    EXPECT_EQ(hWnd, g_pQzEditSingle->GetParentWnd());
}

TEST_F(ServicesTest, InitLoadsTheLayoutAndTheEffectPlacement)
{
    QzGui::IQzGuiWndInfo* pInfo = m_pMgr->GetWndInfo(0, 2);
    ASSERT_NE(nullptr, pInfo);
    EXPECT_EQ(100u, pInfo->GetX());

    m_root.Write("ini/Gui3DEffect.ini", "Spark 100 50 1 2 1.0 1.0 0\n");
    IQzGuiMgrPtr other(QzGui::CreateGuiMgr());
    other->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), 100, "Test.ini");
    EXPECT_NE(nullptr, CGuiEffectInfo::Instance().Find("Spark"));
    CGuiEffectInfo::Instance().Clear();
}

TEST_F(ServicesTest, LoadingAndReloadingMakeDialogsRereadTheirRecords)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2);
    m_root.Write("ini/Other.ini", "[0-1]\nx=50\ny=60\nw=300\nh=300\n"
                                  "[0-2]\nx=70\ny=80\nw=300\nh=300\n");
    m_pMgr->LoadLayout("Other.ini");
    EXPECT_EQ(50, pLower->GetX());
    EXPECT_EQ(70, pUpper->GetX());

    m_root.Write("ini/Other.ini", "[0-1]\nx=5\ny=60\nw=300\nh=300\n"
                                  "[0-2]\nx=7\ny=80\nw=300\nh=300\n");
    m_pMgr->ReloadDialog(3); // not registered
    m_pMgr->ReloadDialog(2);
    EXPECT_EQ(50, pLower->GetX());
    EXPECT_EQ(7, pUpper->GetX());
    m_pMgr->ReloadLayout();
    EXPECT_EQ(5, pLower->GetX());
}

TEST_F(ServicesTest, AReloadThatMovesTheTopmostAttributeMovesTheDialogs)
{
    AddDialog(3); // topmost
    AddDialog(1);
    AddDialog(5);
    ASSERT_EQ((std::vector<DWORD>{1, 5, 3}), ZOrder());
    m_root.Write("ini/Other.ini", "[0-1]\nx=0\ny=0\nw=300\nh=300\n"
                                  "[0-3]\nx=500\ny=0\nw=100\nh=100\n"
                                  "[0-5]\nx=0\ny=400\nw=100\nh=100\nTopmost=1\n");
    m_pMgr->LoadLayout("Other.ini");
    EXPECT_EQ((std::vector<DWORD>{1, 3, 5}), ZOrder());
    m_pMgr->BringToTop(DWORD{1}); // dialog 3 is an ordinary dialog now
    EXPECT_EQ((std::vector<DWORD>{3, 1, 5}), ZOrder());

    m_root.Write("ini/Other.ini", "[0-1]\nx=0\ny=0\nw=300\nh=300\nTopmost=1\n");
    m_pMgr->ReloadDialog(1);
    EXPECT_EQ((std::vector<DWORD>{3, 5, 1}), ZOrder());
}

TEST_F(ServicesTest, TheLogicFileFollowsTheResolutionIndex)
{
    m_root.Write("ini/guilogic.ini", "[0-1-3]\nx=1\ny=0\nw=10\nh=10\n");
    m_root.Write("ini/guilogic_800.ini", "[0-1-3]\nx=800\ny=0\nw=10\nh=10\n");
    m_root.Write("ini/guilogic_640.ini", "[0-1-3]\nx=640\ny=0\nw=10\nh=10\n");
    QzPlatform::CQzScreenAdapter& adapter = QzPlatform::GetScreenAdapter();
    auto variantX = [this]
    {
        QzGui::IQzGuiWndInfo* pInfo = m_pMgr->GetInfoMgr()->GetWndInfo(0, 1, 1, 3);
        return pInfo ? static_cast<int>(pInfo->GetX()) : -1;
    };

    // 7 is no resolution: the plain file.
    for (const auto& [index, x] : {std::pair{1, 800}, {2, 640}, {0, 1}, {7, 1}})
    {
        adapter.SetResolutionIndex(index);
        m_pMgr->LoadGuiLogic();
        EXPECT_EQ(x, variantX()) << index;
    }
    adapter.Reset();
}

TEST_F(ServicesTest, CloseDialogsHidesWhatAgreesAndStopsFlyingAtOnce)
{
    ProbeDialog* pPlain = AddDialog(1);
    ProbeDialog* pStays = AddDialog(2);
    pStays->autoClose = 0;
    ProbeDialog* pFlying = AddDialog(7); // flies in from the left at 10 pixels a frame
    m_pMgr->Show();
    ASSERT_TRUE(pFlying->IsFlying());
    const int nFlightX = pFlying->GetX();

    m_pMgr->CloseDialogs(5);
    EXPECT_FALSE(pPlain->IsWindowVisible());
    EXPECT_TRUE(pStays->IsWindowVisible());
    EXPECT_FALSE(pFlying->IsWindowVisible());
    EXPECT_EQ(nFlightX, pFlying->GetX()); // hidden where it was, not moved to its place
}

TEST_F(ServicesTest, BroadcastAsksVisibleDialogsOnBothListsTwice)
{
    ProbeDialog* pPlain = AddDialog(1);
    ProbeDialog* pTopmost = AddDialog(3);
    ProbeDialog* pHidden = AddDialog(2, false);
    for (ProbeDialog* pDialog : {pPlain, pTopmost, pHidden})
        pDialog->canHandle = 1;

    m_pMgr->BroadcastEvent(42);
    pPlain->canHandle = 0;
    m_pMgr->BroadcastEvent(42);
    EXPECT_EQ((std::vector<int>{2, 1, 4, 4, 0}),
              (std::vector<int>{pPlain->asked, pPlain->handled, pTopmost->asked, pTopmost->handled,
                                pHidden->asked}));
}

TEST_F(ServicesTest, SplitTextCutsAtBackslashBBeforeBackslashN)
{
    std::vector<std::string> lines = {"old"};
    int longest = -1;
    m_pMgr->SplitText("a\\nb\\bc", lines, longest);
    EXPECT_EQ((std::vector<std::string>{"a\\nb", "c"}), lines);
    EXPECT_EQ(4, longest);

    m_pMgr->SplitText("one\\ntwo22\\n", lines, longest);
    EXPECT_EQ((std::vector<std::string>{"one", "two22", ""}), lines);
    EXPECT_EQ(5, longest);

    m_pMgr->SplitText(nullptr, lines, longest); // leaves both alone
    EXPECT_EQ(3u, lines.size());

    std::string huge(3000, 'x');
    m_pMgr->SplitText(huge.c_str(), lines, longest);
    EXPECT_EQ(1024, longest);
}

TEST_F(ServicesTest, TheActiveDialogFallsBackToTheTopmostVisibleOne)
{
    ProbeDialog* pLower = AddDialog(1);
    ProbeDialog* pUpper = AddDialog(2);
    m_pMgr->BringToTop(pLower);
    EXPECT_EQ(pLower, m_pMgr->GetActiveDialog());
    pLower->ShowWindow(SW_HIDE);
    EXPECT_EQ(pUpper, m_pMgr->GetActiveDialog());
    pUpper->ShowWindow(SW_HIDE);
    EXPECT_EQ(nullptr, m_pMgr->GetActiveDialog());
}

TEST(GuiMgrFont, SizesOutside12To18Become14)
{
    QzTest::Harness harness;
    QzPlatform::CQzScreenAdapter& adapter = QzPlatform::GetScreenAdapter();
    const std::pair<int, int> cases[] = {{20, 14}, {12, 12}, {18, 18}, {11, 14}};
    for (auto [given, expected] : cases)
    {
        adapter.SetFontSize(given);
        IQzGuiMgrPtr pMgr(QzGui::CreateGuiMgr());
        auto* pGuiMgr = static_cast<CQzGuiMgr*>(pMgr.get());
        QzPlatform::FontDescription font;
        ASSERT_TRUE(QzPlatform::GetFontDescription(pGuiMgr->GetFont(), &font));
        EXPECT_EQ(expected, font.height) << given;
        EXPECT_EQ(static_cast<DWORD>(GB2312_CHARSET), font.charSet);
    }
    adapter.Reset();
}

TEST(GuiMgrFont, WithoutAnAdapterSizeTheDataTableGivesIt)
{
    QzTest::Harness harness;
    QzTest::TempDataDir root;
    root.Write("ini/StringTable.ini", "10461=16\n");
    QzPlatform::GetScreenAdapter().SetFontName("Kai");
    IQzGuiMgrPtr pMgr(QzGui::CreateGuiMgr());
    auto* pGuiMgr = static_cast<CQzGuiMgr*>(pMgr.get());
    QzPlatform::FontDescription font;
    ASSERT_TRUE(QzPlatform::GetFontDescription(pGuiMgr->GetFont(), &font));
    EXPECT_EQ(16, font.height);
    EXPECT_EQ("Kai", font.faceName);
    QzPlatform::GetScreenAdapter().Reset();
}

TEST(GuiMgrLifetime, TheHelperLivesWhileAManagerIsRegistered)
{
    QzTest::Harness harness;
    QzTest::TempDataDir root;
    root.Write("ini/Test.ini", kLayout);
    ASSERT_EQ(nullptr, QzGui::CQzGuiHelper::Instance());
    IQzGuiMgrPtr first(QzGui::CreateGuiMgr());
    QzGui::CQzGuiHelper* pHelper = QzGui::CQzGuiHelper::Instance();
    ASSERT_NE(nullptr, pHelper);
    pHelper->DebugOn();
    EXPECT_EQ(1, first->GetDebugMode());
    IQzGuiMgrPtr second(QzGui::CreateGuiMgr());
    second->Init(GetModuleHandleA(nullptr), harness.MainWindow(), 100, "Test.ini");
    EXPECT_EQ(1, second->GetDebugMode());

    first.reset();
    EXPECT_EQ(pHelper, QzGui::CQzGuiHelper::Instance());
    EXPECT_NE(nullptr, g_pQzEditSingle);
    second.reset();
    EXPECT_EQ(nullptr, QzGui::CQzGuiHelper::Instance());
    EXPECT_EQ(nullptr, g_pQzEditSingle);

    IQzGuiMgrPtr third(QzGui::CreateGuiMgr()); // a new helper, not in debug mode
    third->Init(GetModuleHandleA(nullptr), harness.MainWindow(), 100, "Test.ini");
    EXPECT_EQ(0, third->GetDebugMode());
}

TEST(GuiMgrLifetime, NullManagersAreReportedByTheHelper)
{
    QzTest::Harness harness;
    IQzGuiMgrPtr pMgr(QzGui::CreateGuiMgr());
    QzGui::CQzGuiHelper* pHelper = QzGui::CQzGuiHelper::Instance();
    EXPECT_FALSE(pHelper->RegisterMgr(nullptr));
    pHelper->UnregisterMgr(nullptr);
    pHelper->SetDebugTarget(nullptr, nullptr);
    EXPECT_EQ((std::vector<QzTest::AssertReport>{{"pQzGuiMgr != NULL", "QzGuiHelper", 102},
                                                 {"pQzGuiMgr != NULL", "QzGuiHelper", 115}}),
              harness.Log().Asserts());

    // A manager that never registered leaves the helper alone when released.
    (new CQzGuiMgr)->Release();
    EXPECT_EQ(pHelper, QzGui::CQzGuiHelper::Instance());
}

// A host that keeps its manager to the end of the process and releases it from an exit handler:
// the system's tables (windows, fonts, files) that the release touches are made after the
// handler was registered, so they must outlive every exit handler. Run in a fresh process so
// that nothing was made before the handler.
void ReleaseTheManagerFromAnExitHandler()
{
    static QzTest::Harness* s_pHarness = nullptr;
    static QzGui::IQzGuiMgr* s_pMgr = nullptr;
    static HFONT s_hFont = nullptr;
    std::atexit(
        []
        {
            DeleteObject(s_hFont);
            s_pMgr->Release();
            delete s_pHarness;
        });
    s_pHarness = new QzTest::Harness;
    s_pMgr = QzGui::CreateGuiMgr();
    s_pMgr->Init(GetModuleHandleA(nullptr), s_pHarness->MainWindow(), 100, "Test.ini");
    s_pMgr->Show();
    s_hFont = CreateFontA(12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0,
                          "SimSun");
    std::exit(0);
}

TEST(GuiMgrLifetime, AManagerCanBeReleasedFromAnExitHandler)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ReleaseTheManagerFromAnExitHandler(), ::testing::ExitedWithCode(0), "");
}

} // namespace

} // namespace QzGuiManagerTest
