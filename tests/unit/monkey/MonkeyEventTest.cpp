// Event lines of the monkey's replay files: written and read back alike, and bad lines refused
// with the reason.
#include "CMonkeyEvent.h"

#include <gtest/gtest.h>

namespace
{

using QzMonkey::CMonkeyEvent;
using QzMonkey::CtrlKind;
using QzMonkey::EventKind;

TEST(MonkeyEvent, LinesReadBackAsTheEventsThatWroteThem)
{
    const std::pair<CMonkeyEvent, const char*> cases[] = {
        {{EventKind::LButtonDown, -20, 45, 1}, "ldown x=-20 y=45 keys=1"},
        {{EventKind::CreateCtrl, 7, 5, static_cast<int>(CtrlKind::EditEx)},
         "create-ctrl dialog=7 slot=5 kind=editex"},
        {{EventKind::ImeResult, 0, 0, 0, "a\"\\\xC4\xE3\r\n"},
         "ime-result text=\"a\\x22\\x5C\\xC4\\xE3\\x0D\\x0A\""},
        {{EventKind::Purge}, "purge"},
    };
    for (const auto& [event, line] : cases)
    {
        EXPECT_EQ(line, event.Format());
        const std::optional<CMonkeyEvent> read = CMonkeyEvent::Parse(line, nullptr);
        ASSERT_TRUE(read) << line;
        EXPECT_EQ(line, read->Format());
    }
}

TEST(MonkeyEvent, BadLinesAreRefusedWithTheirLineNumber)
{
    const std::pair<const char*, const char*> cases[] = {
        {"# comment\n\nfly x=1\n", "line 3: no event named \"fly\""},
        {"ldown x=1 z=2\n", "line 1: bad value \"z=2\""},
        {"ldown x=1y\n", "line 1: bad value \"x=1y\""},
        {"create-ctrl kind=window\n", "line 1: bad value \"kind=window\""},
        {"clipboard text=\"open\n", "line 1: no closed text=\"...\""},
    };
    for (const auto& [text, why] : cases)
    {
        std::vector<CMonkeyEvent> events;
        std::string error;
        EXPECT_FALSE(QzMonkey::ReadEvents(text, events, error));
        EXPECT_EQ(why, error);
    }
}

} // namespace
