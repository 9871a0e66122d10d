// The text model, the layout and the undo record of the EDIT class on their own, without a
// window: the rules the messages rest on.
#include "platform/system/edit/EditLayout.h"
#include "platform/system/edit/EditText.h"
#include "platform/system/edit/EditUndo.h"

#include <gtest/gtest.h>

using QzPlatform::CEditLayout;
using QzPlatform::CEditText;
using QzPlatform::CEditUndo;
using QzPlatform::EditCell;

namespace
{

const EditCell kCell = {6, 12};

std::vector<size_t> LineStarts(const CEditLayout& layout)
{
    std::vector<size_t> starts;
    for (size_t i = 0; i < layout.LineCount(); ++i)
        starts.push_back(layout.Line(i).start);
    return starts;
}

} // namespace

TEST(EditLayoutTest, WrapsAtSpacesWideCharactersAndLongWords)
{
    const struct
    {
        const wchar_t* text;
        int width;
        std::vector<size_t> starts;
    } cases[] = {
        {L"aaa bbb", 36, {0, 4}},              // "aaa " hangs its space; "bbb" goes down
        {L"aaa     bbb", 36, {0, 8}},          // all the spaces hang
        {L"abcdefgh", 36, {0, 6}},             // a long word is cut where it passes
        {L"ab\u4E00\u4E01\u4E02", 36, {0, 4}}, // wide characters (2 cells) break anywhere
        {L"ab\r\ncd", 36, {0, 4}},             // CR LF ends a line
        {L"ab\r\n", 36, {0, 4}},               // and leaves an empty last line
        {L"abcdef", 0, {0}},                   // no width, no wrap
        {L"abc", 3, {0, 1, 2}},                // narrower than a cell: a character a line
    };
    for (const auto& c : cases)
    {
        CEditLayout layout;
        layout.Build(c.text, kCell, true, c.width);
        EXPECT_EQ(LineStarts(layout), c.starts) << "width " << c.width;
    }
}

TEST(EditLayoutTest, PositionsFollowCellsTabsAndLines)
{
    CEditLayout layout;
    layout.Build(L"a\u4E2D\tb\r\nc", kCell, true, 0);
    const struct
    {
        size_t index;
        size_t line;
        int x;
    } cases[] = {{0, 0, 0}, {1, 0, 6}, {2, 0, 18}, {3, 0, 48}, {4, 0, 54}, {6, 1, 0}, {7, 1, 6}};
    for (const auto& c : cases)
    {
        EXPECT_EQ(layout.LineOfChar(c.index), c.line) << c.index;
        EXPECT_EQ(layout.XOfChar(c.index), c.x) << c.index;
    }
    EXPECT_EQ(layout.CharAtX(0, 11), 1u);  // before the middle of the wide character
    EXPECT_EQ(layout.CharAtX(0, 12), 2u);  // from its middle on
    EXPECT_EQ(layout.CharAtX(0, 999), 4u); // the end of the line, before its break
    EXPECT_EQ(layout.FirstCharFrom(0, 7), 2u);
    EXPECT_EQ(layout.MaxLineWidth(), 54);
}

TEST(EditLayoutTest, WrappedBoundaryBelongsToTheNextLine)
{
    CEditLayout layout;
    layout.Build(L"aaa bbb", kCell, true, 36);
    EXPECT_EQ(layout.LineOfChar(3), 0u);
    EXPECT_EQ(layout.LineOfChar(4), 1u);
    EXPECT_EQ(layout.XOfChar(4), 0);
}

TEST(EditTextTest, MovesStepOverLineBreaksWhole)
{
    CEditText text;
    text.SetText(L"a\r\nb");
    EXPECT_EQ(text.NextPosition(1), 3u);
    EXPECT_EQ(text.PreviousPosition(3), 1u);
    EXPECT_EQ(text.NextPosition(4), 4u);
    EXPECT_EQ(text.PreviousPosition(0), 0u);
    text.SetSelection(99, 2);
    EXPECT_EQ(text.Anchor(), 4u);
    EXPECT_EQ(text.SelStart(), 2u);
}

TEST(EditUndoTest, ASecondUndoRedoesAndAThirdUndoesAgain)
{
    CEditText text;
    text.SetText(L"abc");
    CEditUndo undo;
    EXPECT_FALSE(undo.Undo(text));
    text.SetSelection(1, 2);
    undo.Record(text.ReplaceSelection(L"XYZ"));
    EXPECT_EQ(text.Text(), L"aXYZc");
    const wchar_t* expected[] = {L"abc", L"aXYZc", L"abc"};
    for (const wchar_t* after : expected)
    {
        ASSERT_TRUE(undo.Undo(text));
        EXPECT_EQ(text.Text(), after);
    }
    undo.Empty();
    EXPECT_FALSE(undo.CanUndo());
}
