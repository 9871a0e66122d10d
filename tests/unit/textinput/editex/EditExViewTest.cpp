// What the box shows and who gets the keys: scrolling to the caret, asterisks, emotion icons,
// cut runs, the manager's key focus, and hostile input.
#include "EditExScene.h"

#include <random>

namespace EditExTest
{

namespace
{

using Strings = std::vector<std::string>;

TEST_F(EditExScene, TypingPastTheBottomKeepsTheCaretsLineVisible)
{
    CQzEditEx* pBox = OpenMulti(); // ten bytes a line, three lines shown
    for (int i = 0; i < 35; ++i)
    {
        m_harness.Char(L'x');
        const int nLine = pBox->GetLineOfChar(pBox->GetCaret());
        EXPECT_LE(pBox->GetFirstVisibleLine(), nLine) << i;
        EXPECT_GE(pBox->GetFirstVisibleLine() + 2, nLine) << i;
    }
    EXPECT_EQ(2, pBox->GetFirstVisibleLine());
    DrawFrame();
    const std::string ten(10, 'x');
    EXPECT_EQ((Strings{"110,112:" + ten, "110,128:" + ten, "110,144:xxxxx"}), Texts());
    m_harness.Key(VK_HOME);
    EXPECT_EQ(1, pBox->GetFirstVisibleLine());
}

TEST_F(EditExScene, TextIsDrawnWithIconsAsterisksAndNoHalfCode)
{
    CQzEditEx* pBox = OpenSingle();
    pBox->SetWindowText("ab#05");
    DrawFrame();
    EXPECT_EQ((Strings{"110,112:ab"}), Texts());
    ASSERT_EQ(1u, Calls(QzTest::DrawKind::Texture).size());
    EXPECT_EQ("img/e05.png", Calls(QzTest::DrawKind::Texture)[0].texturePath);

    // Malformed codes and a lone first byte are kept, and drawn without their incomplete end.
    const std::pair<const char*, const char*> runs[] = {
        {"ab#1", "ab"}, {"ab#", "ab"}, {"#1|", "#1|"}, {"a\xD6", "a"}};
    for (const auto& [text, shown] : runs)
    {
        pBox->SetWindowText("");
        TypeBytes(text);
        EXPECT_EQ(text, TextOf(pBox));
        DrawFrame();
        EXPECT_EQ((Strings{std::string("110,112:") + shown}), Texts()) << text;
    }
    pBox->SetPasswordMode();
    pBox->SetWindowText("abc");
    DrawFrame();
    EXPECT_EQ((Strings{"110,112:***"}), Texts());
}

TEST_F(EditExScene, ABoxThatIsHiddenDisabledRemovedOrDestroyedGetsNoMoreKeys)
{
    CQzEditEx* pBox = OpenSingle();
    const std::pair<const char*, std::function<void()>> losses[] = {
        {"box hidden", [&] { pBox->ShowWindow(SW_HIDE); }},
        {"box disabled", [&] { pBox->EnableWindow(FALSE); }},
        {"dialog hidden", [&] { m_dialog.ShowWindow(SW_HIDE); }},
        {"host", [&] { m_pMgr->SetKeyFocus(nullptr); }},
        {"dialog removed", [&] { m_pMgr->RemoveDialog(&m_dialog); }},
    };
    for (const auto& [what, lose] : losses)
    {
        pBox->SetFocus();
        lose();
        // Shown and enabled again, it still waits for a click.
        m_dialog.ShowWindow(SW_SHOW);
        pBox->ShowWindow(SW_SHOW);
        pBox->EnableWindow(TRUE);
        EXPECT_FALSE(pBox->IsFocused()) << what;
        EXPECT_EQ(0, m_pMgr->OnMessage(WM_CHAR, 'x', 1)) << what;
    }
    EXPECT_EQ("", TextOf(pBox));

    // A box outside any dialog, destroyed while it has the keys.
    auto pLoose = std::make_unique<CQzEditEx>();
    pLoose->PreSetParam(false, 0, 0);
    pLoose->Create(m_pMgr);
    pLoose->ShowWindow(SW_SHOW);
    pLoose->SetFocus();
    EXPECT_EQ(1, m_pMgr->OnMessage(WM_CHAR, 'x', 1));
    pLoose.reset();
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_CHAR, 'x', 1));
}

TEST_F(EditExScene, HostileInputKeepsTheTextWithinItsLimitAndTheCaretInside)
{
    CQzEditEx* pBox = OpenMulti();
    pBox->SetMaxText(64);
    PutClipboard("#12|34\xD6\xD0\r\n#1|#\xD6");
    std::mt19937 random(7);
    int nLongest = 0;
    // Mostly characters, so that the text grows between the selections that mice make.
    const UINT messages[] = {
        WM_CHAR,         WM_CHAR,      WM_CHAR,      WM_CHAR,       WM_CHAR,
        WM_CHAR,         WM_CHAR,      WM_CHAR,      WM_KEYDOWN,    WM_KEYDOWN,
        WM_LBUTTONDOWN,  WM_MOUSEMOVE, WM_LBUTTONUP, WM_MOUSEWHEEL, WM_IME_COMPOSITION,
        WM_LBUTTONDBLCLK};
    for (int i = 0; i < 5000; ++i)
    {
        const UINT message = messages[random() % std::size(messages)];
        const WPARAM wParam = random() % 3 == 0 ? random() : random() % 256;
        const LPARAM lParam = MAKELPARAM(100 + random() % 90, 100 + random() % 70);
        QzPlatform::Host::SetKeyState(VK_CONTROL, random() % 4 == 0);
        QzPlatform::Host::SetKeyState(VK_SHIFT, random() % 2 == 0);
        if (message == WM_CHAR || message == WM_KEYDOWN || message == WM_IME_COMPOSITION)
            m_pMgr->OnMessage(message, wParam, lParam);
        else
            pBox->SendMessage(message, wParam, lParam);
        if (i % 500 == 0)
            pBox->SetSel(static_cast<int>(random() % 80) - 10, static_cast<int>(random() % 80));
        const auto [nAnchor, nCaret] = SelOf(pBox);
        ASSERT_LE(pBox->GetTextLength(), 64) << i;
        nLongest = std::max(nLongest, pBox->GetTextLength());
        ASSERT_TRUE(nAnchor >= -1 && nAnchor < pBox->GetTextLength()) << i;
        ASSERT_TRUE(nCaret >= -1 && nCaret < pBox->GetTextLength()) << i;
        if (i % 100 == 0)
            DrawFrame();
    }
    EXPECT_GE(nLongest, 32); // the input did reach the box
}

} // namespace

} // namespace EditExTest
