// The demo's host as a game's main window takes input: Escape closes the windows the user
// opened, top first, unless a box has the keys; F12 switches the debug mode from any window;
// a new window size reaches the manager and the device (a new one for cairo, whose images load
// again); an edit box under the mouse shows the system's I-beam instead of the drawn cursor.
#include "DemoHost.h"
#include "DemoRun.h"
#include "ScopedCurrentDir.h"

#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/host/QzHost.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

const int kF12 = 0x7B;
const DWORD kShowcaseId = 100;
const DWORD kTopmostId = 400;
const DWORD kControlsId = 500;
const POINT kBagButton = {498, 534};
const POINT kLoginButton = {64, 726};
const POINT kChatLine = {760, 430};
const POINT kNameField = {540, 199};

class DemoHostInput : public ::testing::TestWithParam<DemoRenderer>
{
protected:
    void SetUp() override
    {
        m_pHost = std::make_unique<CDemoHost>(1024, 768, GetParam());
        m_pHost->UseManualClock();
        ASSERT_TRUE(m_pHost->Create(false));
        m_pHost->RunFrame();
    }

    void Post(DemoInput::Kind kind, UINT message, POINT pt, int vk = 0, uint32_t lParam = 1)
    {
        DemoInput input;
        input.kind = kind;
        input.message = message;
        input.x = pt.x;
        input.y = pt.y;
        input.keys = message == WM_LBUTTONDOWN ? MK_LBUTTON : 0;
        input.vk = vk;
        input.lParam = lParam;
        m_pHost->PostInput(input);
    }
    void Move(POINT pt)
    {
        Post(DemoInput::Mouse, WM_MOUSEMOVE, pt);
        Frame();
    }
    void Click(POINT pt)
    {
        for (UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP})
            Post(DemoInput::Mouse, message, pt);
        Frame();
    }
    void Press(int vk)
    {
        Post(DemoInput::Key, WM_KEYDOWN, {}, vk);
        Post(DemoInput::Key, WM_KEYUP, {}, vk, 0xC0000001);
        Frame();
    }
    void Frame()
    {
        QzPlatform::Host::AdvanceTime(16);
        m_pHost->RunFrame();
    }
    bool Shown(DWORD id) { return m_pHost->GetGuiMgr()->FindDialog(id)->IsVisible(); }

    ScopedCurrentDir m_bundle{QZGUI_BINARY_DIR "/demo-bundle"};
    std::unique_ptr<CDemoHost> m_pHost;
};

TEST_P(DemoHostInput, EscapeClosesTheWindowsTheUserOpenedTopFirstUnlessABoxHasTheKeys)
{
    // Nothing opened: nothing closes (checked at the end).
    Press(VK_ESCAPE);
    Click(kBagButton);
    Click(kLoginButton);
    Press(VK_ESCAPE);
    EXPECT_FALSE(Shown(CLoginDialog::kId));
    EXPECT_TRUE(Shown(CCollectionsDialog::kId));
    // The chat line takes the keys from the manager; the name field binds the system edit.
    Click(kChatLine);
    Press(VK_ESCAPE);
    EXPECT_TRUE(Shown(CCollectionsDialog::kId));
    Click(kLoginButton);
    Click(kNameField);
    Press(VK_ESCAPE);
    EXPECT_TRUE(Shown(CLoginDialog::kId));
    // The windows shown from the start stay, the topmost one too.
    for (DWORD id : {kShowcaseId, kTopmostId, kControlsId})
        EXPECT_TRUE(Shown(id)) << id;
}

TEST_P(DemoHostInput, F12SwitchesTheDebugModeWhicheverWindowHasTheKeys)
{
    QzGui::IQzGuiMgr* mgr = m_pHost->GetGuiMgr();
    Press(kF12);
    EXPECT_EQ(1, mgr->GetDebugMode());
    // An autorepeat of the held key changes nothing.
    Post(DemoInput::Key, WM_KEYDOWN, {}, kF12, 0x40580001);
    Frame();
    EXPECT_EQ(1, mgr->GetDebugMode());
    Click(kLoginButton);
    Click(kNameField);
    Press(kF12);
    EXPECT_EQ(0, mgr->GetDebugMode());
}

TEST_P(DemoHostInput, ANewSizeReachesTheManagerAndTheDevice)
{
    DemoInput size;
    size.kind = DemoInput::Size;
    size.x = 800;
    size.y = 600;
    m_pHost->PostInput(size);
    Frame();
    EXPECT_EQ(&m_pHost->GetScreen().GetDevice(), &QzPlatform::GetRenderDevice());
    EXPECT_EQ(800, QzPlatform::GetRenderDevice().GetScreenWidth());
    EXPECT_EQ(600, QzPlatform::GetRenderDevice().GetScreenHeight());
    EXPECT_EQ(800, dynamic_cast<QzGui::CQzGuiMgr*>(m_pHost->GetGuiMgr())->GetScreenWidth());
    RECT rc = {};
    GetClientRect(m_pHost->GetWindow(), &rc);
    EXPECT_EQ(600, rc.bottom - rc.top);
    DemoScenario::TempFolder folder("host-resize");
    std::string error;
    ASSERT_TRUE(m_pHost->SaveShot(folder / "", "resized", error)) << error;
    const QzTest::Image shot = DemoScenario::ReadShot(folder / "resized.png");
    EXPECT_EQ(800, shot.width);
    EXPECT_EQ(600, shot.height);
    // The showcase's skin still draws: its images were loaded again for the new device.
    const DemoScenario::Box skin = {44, 44, 700, 60};
    EXPECT_GT(DemoScenario::Count(shot, skin, [](uint32_t pixel) { return pixel != 0xFF202020; }),
              5000);
}

TEST_P(DemoHostInput, AnEditBoxShowsTheIBeamAndElsewhereTheCursorIsDrawn)
{
    Click(kBagButton);
    Move(kChatLine);
    ASSERT_NE(nullptr, m_pHost->GetSystemCursor());
    EXPECT_EQ(32513, QzPlatform::Host::DescribeCursor(m_pHost->GetSystemCursor()).standardId);
    Move({200, 600});
    EXPECT_EQ(nullptr, m_pHost->GetSystemCursor());
}

INSTANTIATE_TEST_SUITE_P(Renderers, DemoHostInput,
                         ::testing::Values(DemoRenderer::Cairo, DemoRenderer::DrawList));

} // namespace
