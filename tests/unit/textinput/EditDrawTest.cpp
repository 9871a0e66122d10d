// What edit boxes draw: the stored text when unfocused (wrapped in a multi-line box), the
// system window's text with caret and selection when focused, asterisks for passwords, the
// caret's blink and the horizontal scroll of a single-line box. The recording device measures
// 7 pixels a character at size 14 (14 for East Asian ones); box 1 is at (110, 110)-(250, 130).
#include "EditScene.h"

#include "platform/services/QzGameData.h"
#include "platform/services/QzText.h"

#include <algorithm>

namespace EditTest
{
namespace
{

constexpr DWORD kCaret = 0xFFFFFFFF;
constexpr DWORD kSelection = 0xFF2222FF;

class EditDrawTest : public EditScene
{
protected:
    // The text runs of a new frame: position and text.
    std::vector<std::tuple<int, int, std::string>> Runs()
    {
        std::vector<std::tuple<int, int, std::string>> runs;
        for (const QzTest::DrawCall& call : DrawnFrame())
        {
            if (call.kind == QzTest::DrawKind::Text)
                runs.emplace_back(call.x1, call.y1, call.text);
        }
        return runs;
    }
    // The caret of the last frame as (x, y, height), or (-1, -1, 0) when none was drawn.
    std::tuple<int, int, int> Caret()
    {
        const std::vector<QzTest::DrawCall> fills = Fills(kCaret);
        if (fills.empty())
            return {-1, -1, 0};
        EXPECT_EQ(1u, fills.size());
        EXPECT_EQ(2, fills[0].x2 - fills[0].x1);
        return {fills[0].x1, fills[0].y1, fills[0].y2 - fills[0].y1};
    }
    using Run = std::tuple<int, int, std::string>;
};

TEST_F(EditDrawTest, AnUnfocusedBoxDrawsItsStoredTextInItsColourAndFace)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30});
    pEdit->SetTextColor(0xFF102030);
    pEdit->SetWindowText("hello");
    m_harness.Device().Clear();
    Frame();
    const std::vector<QzTest::DrawCall> texts = Calls(QzTest::DrawKind::Text);
    ASSERT_EQ(1u, texts.size());
    EXPECT_EQ(110, texts[0].x1);
    EXPECT_EQ(114, texts[0].y1);
    EXPECT_EQ("hello", texts[0].text);
    EXPECT_EQ(0xFF102030u, texts[0].colour);
    EXPECT_EQ("Courier", texts[0].font.face);
    EXPECT_EQ(14, texts[0].font.size);
    EXPECT_EQ(std::make_tuple(-1, -1, 0), Caret());

    // Longer than the box: the bytes that fit, never half a character.
    pEdit->SetWindowText(std::string(25, 'w').c_str());
    EXPECT_EQ((std::vector<Run>{{110, 114, std::string(20, 'w')}}), Runs());
}

TEST_F(EditDrawTest, APasswordShowsOneAsteriskPerStoredByteFocusedOrNot)
{
    CQzEdit* pPass = AddEdit(1, {10, 10, 150, 30});
    pPass->SetPassword(true);
    pPass->SetWindowText("s3cret");
    EXPECT_EQ((std::vector<Run>{{110, 114, "******"}}), Runs());
    pPass->SetFocus();
    Type(L"!");
    EXPECT_EQ((std::vector<Run>{{110, 114, "*******"}}), Runs());
    EXPECT_EQ(std::make_tuple(110 + 7 * 7, 114, 16), Caret());
    EXPECT_EQ("s3cret!", std::string(pPass->GetWindowText()));
    EXPECT_EQ('*', Shell()->GetPasswordChar());
    // Nor can it be copied out.
    SetClipboard(L"kept");
    pPass->SetSel(0, -1, true);
    Chord(VK_CONTROL, 'C', 3);
    OpenClipboard(nullptr);
    EXPECT_STREQ(L"kept",
                 static_cast<const wchar_t*>(GlobalLock(GetClipboardData(CF_UNICODETEXT))));
    CloseClipboard();
    AddEdit(2, {10, 40, 150, 60})->SetFocus();
    EXPECT_EQ('\0', Shell()->GetPasswordChar());
}

TEST_F(EditDrawTest, TheCaretBlinksEveryHalfSecondOnlyWhileFocused)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30});
    pEdit->SetFocus();
    Type(L"ab");
    m_harness.SetTime(200000);
    Runs();
    EXPECT_EQ(std::make_tuple(110 + 14, 114, 16), Caret());
    m_harness.SetTime(200500);
    Runs();
    EXPECT_EQ(std::make_tuple(-1, -1, 0), Caret());
    m_harness.SetTime(201000);
    Runs();
    EXPECT_EQ(std::make_tuple(110 + 14, 114, 16), Caret());
    SetFocus(m_harness.MainWindow());
    Runs();
    EXPECT_EQ(std::make_tuple(-1, -1, 0), Caret());
}

TEST_F(EditDrawTest, AnEmptyFocusedBoxDrawsOnlyTheCaretAtItsOrigin)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30});
    pEdit->SetTextMargin(3, 9);
    pEdit->SetFocus();
    EXPECT_TRUE(Runs().empty());
    EXPECT_EQ(std::make_tuple(110, 117, 16), Caret());
}

TEST_F(EditDrawTest, TypingPastTheRightEdgeKeepsTheCaretInsideAndMovesTheFirstCharacter)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30}); // 20 characters wide
    pEdit->SetFocus();
    const std::wstring typed = L"abcdefghijklmnopqrstuvwxyz0123";
    for (size_t i = 0; i < typed.size(); ++i)
    {
        Type(typed.substr(i, 1));
        const std::vector<Run> runs = Runs();
        ASSERT_EQ(1u, runs.size());
        const auto [x, y, height] = Caret();
        EXPECT_LE(x + 2, 250 + 2) << "after " << i + 1 << " characters";
        EXPECT_GE(x, 110);
        const size_t nFirst = i + 1 > 20 ? i + 1 - 20 : 0;
        EXPECT_EQ(QzPlatform::WideTextToUtf8(typed.substr(nFirst, i + 1 - nFirst).c_str()),
                  std::get<2>(runs[0]));
    }
    Key(VK_HOME);
    const std::vector<Run> runs = Runs();
    ASSERT_EQ(1u, runs.size());
    EXPECT_EQ("abcdefghijklmnopqrst", std::get<2>(runs[0]));
    EXPECT_EQ(std::make_tuple(110, 114, 16), Caret());
}

TEST_F(EditDrawTest, ASelectionIsABlockUnderItsCharacters)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30});
    pEdit->SetSelColor(kSelection);
    pEdit->SetFocus();
    Type(L"abcdef");
    pEdit->SetSel(1, 4, false);
    Runs();
    const std::vector<QzTest::DrawCall> blocks = Fills(kSelection);
    ASSERT_EQ(1u, blocks.size());
    EXPECT_EQ(117, blocks[0].x1);
    EXPECT_EQ(117 + 21, blocks[0].x2);
    EXPECT_EQ(114, blocks[0].y1);
    EXPECT_EQ(130, blocks[0].y2);
}

TEST_F(EditDrawTest, AFocusedMultiLineBoxDrawsEachLineWithItsSelectionPart)
{
    CQzEdit* pNotes = AddEdit(1, {10, 10, 150, 70}, true);
    pNotes->SetSelColor(kSelection);
    pNotes->SetFocus();
    Type(L"ab\rcd");
    EXPECT_EQ((std::vector<Run>{{110, 110, "ab"}, {110, 124, "cd"}}), Runs());
    EXPECT_EQ(std::make_tuple(110 + 14, 124, 14), Caret());

    pNotes->SetSel(1, 5, false); // "b", the break, "c"
    Runs();
    std::vector<std::pair<int, int>> blocks;
    for (const QzTest::DrawCall& call : Fills(kSelection))
        blocks.emplace_back(call.x1, call.x2);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{117, 124}, {110, 117}}), blocks);
}

struct LinesCase
{
    const char* text;
    int width;
    std::vector<std::string> lines;
};

class InactiveLinesTest : public EditScene, public ::testing::WithParamInterface<LinesCase>
{
};

TEST_P(InactiveLinesTest, AnUnfocusedMultiLineBoxWrapsAtItsColumns)
{
    const LinesCase& c = GetParam();
    CQzEdit* pNotes = AddEdit(1, {10, 10, 10 + c.width, 200}, true);
    pNotes->SetWindowText(c.text);
    m_harness.Device().Clear();
    Frame();
    std::vector<std::string> lines;
    int y = 110;
    for (const QzTest::DrawCall& call : Calls(QzTest::DrawKind::Text))
    {
        EXPECT_EQ(110, call.x1);
        EXPECT_EQ(y, call.y1);
        y += 14;
        lines.push_back(call.text);
    }
    EXPECT_EQ(c.lines, lines);
}

INSTANTIATE_TEST_SUITE_P(Wrapping, InactiveLinesTest,
                         ::testing::Values(LinesCase{"aaaaabbbbbc", 35, {"aaaaa", "bbbbb", "c"}},
                                           LinesCase{"x\n\ny\r\nz", 35, {"x", "y", "z"}},
                                           LinesCase{"\xD6\xD0\xD6\xD0"
                                                     "a",
                                                     21,
                                                     {"\xE4\xB8\xAD", "\xE4\xB8\xAD"
                                                                      "a"}},
                                           LinesCase{"\xD6\xD0", 7, {"\xE4\xB8\xAD"}},
                                           LinesCase{"ab\xD6", 70, {"ab\xEF\xBF\xBD"}},
                                           LinesCase{"abc", 1, {}}));

TEST_F(EditDrawTest, TheLanguageSwitchTransformsTheDrawnRun)
{
    CQzEdit* pEdit = AddEdit(1, {10, 10, 150, 30});
    pEdit->SetWindowText("abc");
    QzPlatform::SetDisplayTransform([](std::string& run) { std::reverse(run.begin(), run.end()); },
                                    [](std::wstring& run)
                                    { std::reverse(run.begin(), run.end()); });
    QzPlatform::GetGameData().SetLanguageSwitch(true);
    const std::vector<Run> inactive = Runs();
    pEdit->SetFocus();
    const std::vector<Run> focused = Runs();
    QzPlatform::GetGameData().Reset();
    QzPlatform::SetDisplayTransform(nullptr, nullptr);
    EXPECT_EQ((std::vector<Run>{{110, 114, "cba"}}), inactive);
    EXPECT_EQ((std::vector<Run>{{110, 114, "cba"}}), focused);
}

} // namespace
} // namespace EditTest
