// Input sequences as a host sends them: keys with their characters, Backspace and Delete over
// units, the limit, the input method, the clipboard, selections, Enter and emotion codes.
#include "EditExScene.h"

namespace EditExTest
{

namespace
{

using Beeps = std::vector<UINT>;

TEST_F(EditExScene, AKeyDownAndItsCharacterInsertOnce)
{
    CQzEditEx* pBox = OpenSingle();
    for (const auto& [vk, ch] : {std::pair{'A', L'a'}, {'B', L'b'}, {VK_BACK, L'\b'}, {'C', L'c'}})
    {
        m_harness.KeyDown(vk);
        m_harness.Char(ch);
        m_harness.KeyUp(vk);
    }
    m_harness.Key(VK_HOME);
    m_harness.Key(VK_DELETE); // a key without a character
    EXPECT_EQ("c", TextOf(pBox));
    EXPECT_EQ(Beeps{}, QzPlatform::Host::TakeBeeps());
}

struct EraseCase
{
    const char* text;
    int caret;
    int key; // VK_BACK or VK_DELETE
    const char* left;
    int caretAfter;
};

TEST_F(EditExScene, BackspaceAndDeleteRemoveWholeUnits)
{
    CQzEditEx* pBox = OpenMulti();
    const EraseCase cases[] = {
        {"ab#12|34", 7, VK_BACK, "ab", 1},
        {"#05", 2, VK_BACK, "", -1},
        {"abc#05", 5, VK_BACK, "abc#0", 4},
        {"a\xD6\xD0", 2, VK_BACK, "a", 0},
        {"a\r\nb", 2, VK_BACK, "ab", 0},
        {"ab", -1, VK_BACK, "ab", -1},
        {"#12|34b", -1, VK_DELETE, "b", -1},
        {"a\r\nb", 0, VK_DELETE, "ab", 0},
        {"ab", 1, VK_DELETE, "ab", 1},
        // The forward step takes a byte with the CR LF that follows it.
        {"a\r\nb", -1, VK_DELETE, "b", -1},
    };
    for (const EraseCase& c : cases)
    {
        pBox->SetWindowText(c.text);
        pBox->SetCaret(c.caret);
        m_harness.Key(c.key);
        if (c.key == VK_BACK)
            m_harness.Char(L'\b');
        EXPECT_EQ(c.left, TextOf(pBox)) << '"' << c.text << "\" " << c.caret << " " << c.key;
        EXPECT_EQ(c.caretAfter, pBox->GetCaret()) << '"' << c.text << '"';
    }
}

TEST_F(EditExScene, ATwoByteCharacterIsNeverSplitAtTheLimit)
{
    CQzEditEx* pBox = OpenSingle();
    pBox->SetMaxText(5);
    TypeBytes("abcd" + kZhong); // the first byte fits, the second does not: both go
    EXPECT_EQ("abcd", TextOf(pBox));
    m_harness.Char(L'\x4E2D'); // from a Unicode window: whole or not at all
    EXPECT_EQ("abcd", TextOf(pBox));
    EXPECT_EQ(Beeps(2, 0), QzPlatform::Host::TakeBeeps());
    pBox->SetMaxText(6);
    m_harness.Char(L'\x4E2D');
    EXPECT_EQ("abcd" + kZhong, TextOf(pBox));
}

TEST_F(EditExScene, AnImeResultIsInsertedWholeAndOnce)
{
    CQzEditEx* pBox = OpenSingle();
    ASSERT_TRUE(QzPlatform::Host::InjectImeResult(L"\x4E2D\x6587"));
    m_harness.Pump();
    EXPECT_EQ(kZhong + kWen, TextOf(pBox));
    EXPECT_EQ(3, pBox->GetCaret());

    pBox->SetWindowText("");
    pBox->SetMaxText(3);
    ASSERT_TRUE(QzPlatform::Host::InjectImeResult(L"\x4E2D\x6587"));
    m_harness.Pump();
    EXPECT_EQ(kZhong, TextOf(pBox));
}

TEST_F(EditExScene, PastedTextGoesInAtTheCaretWhichEndsAfterIt)
{
    CQzEditEx* pBox = OpenMulti();
    pBox->SetWindowText("ad");
    pBox->SetCaret(0);
    PutClipboard("b\r\nc\nx\ry");
    m_harness.KeyDown(VK_CONTROL);
    m_harness.Char(L'\x16');
    EXPECT_EQ("ab\r\nc\r\nx\r\nyd", TextOf(pBox)); // every break becomes one CR LF
    EXPECT_EQ(10, pBox->GetCaret());
    pBox->SetSel(-1, 0); // a paste replaces the selection
    m_harness.Char(L'\x16');
    m_harness.KeyUp(VK_CONTROL);
    EXPECT_EQ("b\r\nc\r\nx\r\nyb\r\nc\r\nx\r\nyd", TextOf(pBox));
}

TEST_F(EditExScene, AHugePasteIsCutAtTheLimitBeforeAUnitThatDoesNotFit)
{
    CQzEditEx* pBox = OpenSingle();
    pBox->SetMaxText(256);
    std::string huge;
    while (huge.size() < (1u << 20))
        huge += "ab#12|34" + kZhong; // ten bytes: 250 fit, then "ab", then no room for a code
    PutClipboard(huge);
    CtrlChar(L'\x16');
    const std::string text = TextOf(pBox);
    EXPECT_EQ(252u, text.size());
    EXPECT_EQ(huge.substr(0, 252), text);
    EXPECT_EQ(251, pBox->GetCaret());
    EXPECT_EQ(Beeps{0}, QzPlatform::Host::TakeBeeps());
}

TEST_F(EditExScene, TypingReplacesAShiftArrowSelection)
{
    CQzEditEx* pBox = OpenSingle();
    m_harness.Type(L"hello");
    WithKey(VK_SHIFT,
            [&]
            {
                m_harness.Key(VK_LEFT);
                m_harness.Key(VK_LEFT);
            });
    EXPECT_EQ((std::pair{4, 2}), SelOf(pBox));
    m_harness.Char(L'X');
    EXPECT_EQ("helX", TextOf(pBox));
    EXPECT_EQ((std::pair{3, 3}), SelOf(pBox));
    pBox->SetMaxText(4); // a full box still takes what replaces a selection
    WithKey(VK_SHIFT, [&] { m_harness.Key(VK_HOME); });
    m_harness.Char(L'Y');
    EXPECT_EQ("Y", TextOf(pBox));
}

TEST_F(EditExScene, EnterInASingleLineBoxSendsCode3AndStoresNothing)
{
    CQzEditEx* pBox = OpenSingle();
    m_harness.Type(L"hi");
    m_harness.KeyDown(VK_RETURN);
    m_harness.Char(L'\r');
    m_harness.KeyUp(VK_RETURN);
    EXPECT_EQ("hi", TextOf(pBox));
    ASSERT_EQ(1u, m_dialog.notices.size());
    EXPECT_EQ(MakeNotifyWParam(QZ_EDITEX_ENTER, 1), m_dialog.notices[0].wParam);
    EXPECT_EQ(static_cast<LPARAM>(kDialogId | (1 << 16)), m_dialog.notices[0].lParam);
    EXPECT_EQ(Beeps{}, QzPlatform::Host::TakeBeeps());

    CQzEditEx* pMulti = AddBox(2, {10, 40, 70, 88}, true);
    pMulti->SetFocus();
    m_harness.Type(L"a\rb\r");
    EXPECT_EQ("a\r\nb\r\n", TextOf(pMulti));
    m_harness.Char(L'\r'); // a second Enter keeps the empty line from staying empty
    EXPECT_EQ("a\r\nb\r\n \r\n", TextOf(pMulti));
    EXPECT_EQ(1u, m_dialog.notices.size());
}

TEST_F(EditExScene, AChatDialogReadsAndClearsTheBoxOrDeletesItOnEnter)
{
    CQzEditEx* pBox = OpenSingle();
    std::vector<std::string> sent;
    m_dialog.AddMsgHandler(WM_NOTIFY, (QZ_EDITEX_ENTER << 16) | 1,
                           [&](CQzDialog*)
                           {
                               char szText[64] = {};
                               pBox->GetText(szText, sizeof(szText));
                               sent.push_back(szText);
                               pBox->SetWindowText("");
                           });
    m_harness.Type(L"hello\r#\r");
    EXPECT_EQ((std::vector<std::string>{"hello", "#"}), sent);
    EXPECT_EQ("", TextOf(pBox));

    // A handler that closes the chat deletes the box: the rest of the input reaches nothing.
    m_dialog.AddMsgHandler(WM_NOTIFY, (QZ_EDITEX_ENTER << 16) | 2,
                           [&](CQzDialog*) { m_boxes.clear(); });
    AddBox(2, {10, 40, 70, 60}, false)->SetFocus();
    m_harness.Type(L"x\ry");
    EXPECT_EQ(nullptr, m_pMgr->GetKeyFocus());
}

TEST_F(EditExScene, InsertEmotionTypesTheCodeOrRefusesItWhole)
{
    CQzEditEx* pBox = OpenSingle();
    const std::pair<short, const char*> cases[] = {{5, "#05"},  {0, "#00"},      {42, "#42"},
                                                   {99, "#99"}, {100, "#01|00"}, {1234, "#12|34"},
                                                   {10000, ""}, {-1, ""}};
    for (const auto& [n, code] : cases)
    {
        pBox->SetWindowText("");
        EXPECT_EQ(*code != '\0', pBox->InsertEmotion(n)) << n;
        EXPECT_EQ(code, TextOf(pBox)) << n;
    }
    pBox->SetWindowText(std::string(510, 'x').c_str());
    EXPECT_FALSE(pBox->InsertEmotion(5));
    EXPECT_EQ(510, pBox->GetTextLength());
    pBox->SetDigitMode();
    pBox->SetWindowText("");
    EXPECT_FALSE(pBox->InsertEmotion(5));
    EXPECT_EQ("", TextOf(pBox));
}

TEST_F(EditExScene, DigitModesTakeDigitsAndKeepTheInputLanguage)
{
    CQzEditEx* pBox = OpenSingle();
    EXPECT_EQ(0, m_pMgr->OnMessage(WM_INPUTLANGCHANGEREQUEST, 0, 0));
    for (void (CQzEditEx::*pfnMode)() : {&CQzEditEx::SetDigitMode, &CQzEditEx::SetDigitModeEx})
    {
        (pBox->*pfnMode)();
        pBox->SetWindowText("1a2");
        m_harness.Key(VK_END);
        m_harness.Type(L"b3");
        EXPECT_EQ("123", TextOf(pBox));
        EXPECT_EQ(Beeps{0}, QzPlatform::Host::TakeBeeps());
        EXPECT_EQ(1, m_pMgr->OnMessage(WM_INPUTLANGCHANGEREQUEST, 0, 0));
    }
}

TEST_F(EditExScene, CopyCutAndSelectAllUseTheClipboardThroughTheMainWindow)
{
    CQzEditEx* pBox = OpenSingle();
    m_harness.Type(L"hello");
    CtrlChar(L'\x01');
    EXPECT_EQ((std::pair{-1, 4}), SelOf(pBox));
    CtrlChar(L'\x03');
    EXPECT_EQ("hello", ReadClipboard());
    EXPECT_EQ(m_harness.MainWindow(), ::GetClipboardOwner());
    pBox->SetSel(0, 2);
    CtrlChar(L'\x18');
    EXPECT_EQ("el", ReadClipboard());
    EXPECT_EQ("hlo", TextOf(pBox));
    // Without a selection Ctrl+C is typed as the character it is.
    CtrlChar(L'\x03');
    EXPECT_EQ("h\x03lo", TextOf(pBox));
    EXPECT_EQ("el", ReadClipboard());
}

TEST_F(EditExScene, TheMouseSetsTheCaretDragsASelectionAndSelectsAllOnADoubleClick)
{
    CQzEditEx* pBox = OpenSingle();
    pBox->SetWindowText("abcdef");
    m_harness.Click(110 + 2 * kCellW + 1, 120); // on "c": after it
    EXPECT_EQ((std::pair{2, 2}), SelOf(pBox));
    m_harness.Click(113, 120); // within the first cell: before the text
    EXPECT_EQ((std::pair{-1, -1}), SelOf(pBox));
    m_harness.LButtonDown(110 + kCellW + 1, 120);
    m_harness.MouseMove(110 + 4 * kCellW + 1, 120, MK_LBUTTON);
    m_harness.LButtonUp(300, 120); // outside the box: to the end
    EXPECT_EQ((std::pair{1, 5}), SelOf(pBox));
    m_harness.MouseMove(112, 120); // no longer selecting
    EXPECT_EQ((std::pair{1, 5}), SelOf(pBox));
    m_harness.LButtonDblClk(120, 120);
    EXPECT_EQ((std::pair{-1, 5}), SelOf(pBox));

    // In a multi-line box the left edge of a line is that line's start.
    CQzEditEx* pMulti = AddBox(2, {10, 40, 70, 88}, true);
    pMulti->SetWindowText("ab\r\ncd");
    m_harness.Click(112, 140 + kLineH + 5);
    EXPECT_EQ((std::pair{3, 3}), SelOf(pMulti));
    m_harness.Click(110 + kCellW + 1, 140 + kLineH + 5);
    EXPECT_EQ((std::pair{5, 5}), SelOf(pMulti));
}

} // namespace

} // namespace EditExTest
