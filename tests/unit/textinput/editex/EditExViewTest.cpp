// What the box shows and who gets the keys: scrolling to the caret, the caret's blink,
// selection blocks, asterisks, emotion icons, cut runs, and the manager's key focus.
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
    EXPECT_EQ(4, pBox->GetLineCount());
    EXPECT_EQ(2, pBox->GetFirstVisibleLine());
    char szLine[16] = {};
    EXPECT_EQ(5, pBox->GetLineText(4, szLine, sizeof(szLine)));
    EXPECT_STREQ("xxxxx", szLine);
    DrawFrame();
    const std::string ten(10, 'x');
    EXPECT_EQ((Strings{"110,112:" + ten, "110,128:" + ten, "110,144:xxxxx"}), Texts());
    m_harness.Wheel(120, 120, 120); // the wheel moves the caret a line up
    EXPECT_EQ(24, pBox->GetCaret());
    m_harness.Key(VK_HOME);
    EXPECT_EQ(1, pBox->GetFirstVisibleLine());
}

TEST_F(EditExScene, ASingleLineBoxScrollsSidewaysToItsCaret)
{
    CQzEditEx* pBox = OpenSingle(); // ten columns
    m_harness.Type(L"abcdefghijklmno");
    EXPECT_EQ(5, pBox->GetFirstVisibleChar());
    m_harness.SetTime(0); // the caret shows
    DrawFrame();
    EXPECT_EQ((Strings{"110,112:fghijklmno"}), Texts());
    EXPECT_EQ((Strings{"170,112-172,128"}), Blocks(0xFFFFFFFF));
    m_harness.Key(VK_HOME);
    EXPECT_EQ(0, pBox->GetFirstVisibleChar());
    // A key puts the input method's window 5 pixels off the caret it found.
    COMPOSITIONFORM form = {};
    HIMC hImc = ::ImmGetContext(m_harness.MainWindow());
    ::ImmGetCompositionWindow(hImc, &form);
    ::ImmReleaseContext(m_harness.MainWindow(), hImc);
    EXPECT_EQ(static_cast<DWORD>(CFS_FORCE_POSITION), form.dwStyle);
    EXPECT_EQ((POINT{175, 117}), form.ptCurrentPos);
    // A character cut by the right edge is not drawn half.
    pBox->SetWindowText(("abcdefghi" + kZhong).c_str());
    DrawFrame();
    EXPECT_EQ((Strings{"110,112:abcdefghi"}), Texts());
}

TEST_F(EditExScene, TheCaretBlinksAndSelectionsAreBlocksOfTheirColour)
{
    CQzEditEx* pBox = OpenMulti();
    pBox->SetSelColor(0xFF00FF00);
    pBox->SetWindowText("abcd\r\nef");
    m_harness.SetTime(600);
    pBox->SetSel(1, 6); // "cd", the line break and "e"
    DrawFrame();
    EXPECT_EQ((Strings{"122,110-134,126", "110,126-116,142"}), Blocks(0xFF00FF00));
    EXPECT_EQ((Strings{"116,126-118,142"}), Blocks(0xFFFFFFFF));
    m_harness.SetTime(900);
    DrawFrame();
    EXPECT_EQ(Strings{}, Blocks(0xFFFFFFFF));
    m_pMgr->SetKeyFocus(nullptr); // an unfocused box has no caret
    m_harness.SetTime(1200);
    DrawFrame();
    EXPECT_EQ(Strings{}, Blocks(0xFFFFFFFF));
}

TEST_F(EditExScene, TextIsDrawnWithIconsAsterisksAndNoHalfCode)
{
    CQzEditEx* pBox = OpenSingle();
    EXPECT_EQ(0xFFFFFF00, pBox->GetTextColor()); // the colour given before creation stays
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

TEST_F(EditExScene, AClickGivesTheKeyFocusAndOnlyTheFocusedBoxGetsKeys)
{
    CQzEditEx* pFirst = OpenSingle();
    CQzEditEx* pSecond = AddBox(2, {10, 40, 70, 60}, false);
    m_harness.Char(L'a');
    m_harness.Click(112, 145);
    EXPECT_TRUE(pSecond->IsFocused());
    EXPECT_FALSE(pFirst->IsFocused());
    m_harness.Char(L'b');
    EXPECT_EQ("a", TextOf(pFirst));
    EXPECT_EQ("b", TextOf(pSecond));
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

TEST_F(EditExScene, ABoxWithoutPreSetParamOrMainWindowSaysSo)
{
    auto pBox = std::make_unique<CQzEditEx>();
    pBox->Create(m_pMgr);
    pBox->ShowWindow(SW_SHOW);
    pBox->SetFocus();
    m_harness.Key(VK_LEFT);
    const Strings& lines = m_harness.Log().LogMsgs();
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(0u, lines[0].find("ASSERT(m_bPreSetParam) in ")) << lines[0];
    EXPECT_EQ(0u, lines[1].find("ASSERT(NULL != m_hMyShellWnd) in ")) << lines[1];
    for (const std::string& line : lines)
        EXPECT_NE(std::string::npos, line.find(" line of QzEditEx")) << line;
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
