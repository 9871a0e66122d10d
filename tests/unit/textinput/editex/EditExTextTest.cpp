// The text as the box edits it, without a window: the units one step covers (CR LF, two-byte
// characters, emotion codes in both forms, malformed codes) and the lines of the layout walk.
#include "textinput/QzEditExText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using QzGui::CQzEditExText;

struct StepCase
{
    const char* text;
    int direction;
    int p;
    int expected;
};

TEST(EditExText, StepsCoverWholeUnits)
{
    const StepCase cases[] = {
        // Backward from p (caret + 1).
        {"ab", 0, 2, 1},
        {"a\r\n", 0, 3, 2},
        {"a\xD6\xD0", 0, 3, 2},
        {"\xD6\xD0", 0, 2, 2},
        {"x#12|34", 0, 7, 6},
        {"#05", 0, 3, 3},
        {"ab#05", 0, 5, 3},
        {"abc#05", 0, 6, 1}, // a short code counts only from bytes 0 to 2
        {"#1|", 0, 3, 1},
        {"#", 0, 1, 1},
        {"#99|9", 0, 5, 1},
        {"a\xD6", 0, 2, 1}, // a lone first byte is one byte
        {"", 0, 0, 0},
        // Forward from p (the caret).
        {"ab", 1, -1, 1},
        {"ab", 1, 1, 0},
        {"\r\nb", 1, -1, 2},
        {"\xD6\xD0"
         "a",
         1, -1, 2},
        {"#12|34a", 1, -1, 6},
        {"a#05", 1, 0, 3},
        {"#05abcdef", 1, -1, 1}, // a short code counts only where a long one cannot fit
        {"a\r\nb", 1, -1, 3},    // a CR LF right after the unit joins it
        {"#99|9x", 1, -1, 1},
        {"a\xD6", 1, 0, 1},
        {"", 1, -1, 0},
    };
    for (const StepCase& c : cases)
    {
        const std::string text = c.text;
        EXPECT_EQ(c.expected, CQzEditExText(text, 10, true).GetStepLength(c.direction, c.p))
            << '"' << c.text << "\" direction " << c.direction << " p " << c.p;
    }
}

struct LayoutCase
{
    const char* text;
    int columns;
    std::vector<int> starts;
};

TEST(EditExText, TheWalkBreaksBeforeAUnitThatDoesNotFitAndAfterLineFeeds)
{
    const LayoutCase cases[] = {
        {"abcdef", 4, {0, 4}},
        {"ab\r\ncd", 10, {0, 4}},
        {"ab\r\n", 10, {0, 4}},
        {"abc\xD6\xD0", 4, {0, 3}}, // the character moves to the next line whole
        {"abcd#12|34", 8, {0, 4}},  // so does an emotion code
        {"abc", 0, {0, 1, 2, 3}},   // no room: every byte ends a line
        {"", 5, {0}},
    };
    for (const LayoutCase& c : cases)
    {
        const std::string text = c.text;
        const CQzEditExText lines(text, c.columns, true);
        std::vector<int> starts;
        for (int nLine = 1; nLine <= lines.GetLineCount(); ++nLine)
            starts.push_back(lines.GetLineStart(nLine));
        EXPECT_EQ(c.starts, starts) << '"' << c.text << "\" in " << c.columns;
    }
}

} // namespace
