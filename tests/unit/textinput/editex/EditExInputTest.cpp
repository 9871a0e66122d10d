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

TEST_F(EditExScene, PastedTextGoesInAtTheCaretWhichEndsAfterItAndIsCutBeforeAUnitThatDoesNotFit)
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
    EXPECT_EQ("b\r\nc\r\nx\r\nyb\r\nc\r\nx\r\nyd", TextOf(pBox));

    pBox->SetWindowText("");
    pBox->SetMaxText(256);
    std::string huge;
    while (huge.size() < (1u << 20))
        huge += "ab#12|34" + kZhong; // ten bytes: 250 fit, then "ab", then no room for a code
    PutClipboard(huge);
    m_harness.Char(L'\x16');
    m_harness.KeyUp(VK_CONTROL);
    EXPECT_EQ(huge.substr(0, 252), TextOf(pBox));
    EXPECT_EQ(251, pBox->GetCaret());
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

    // A multi-line box stores the line break instead.
    CQzEditEx* pMulti = AddBox(2, {10, 40, 70, 88}, true);
    pMulti->SetFocus();
    m_harness.Type(L"a\r");
    EXPECT_EQ("a\r\n", TextOf(pMulti));
    EXPECT_EQ(1u, m_dialog.notices.size());
}

} // namespace

} // namespace EditExTest
