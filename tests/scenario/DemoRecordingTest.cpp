// The recording format of the demo's window mode: every kind of line reads into the input it
// names and is written back the same, texts keep any bytes, and each way a line can be wrong is
// reported with its line number.
#include "DemoRecording.h"
#include "RecordingText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

const std::string kHeader = "qzgui-recording 1\n";

DemoInput Mouse(UINT message, int x, int y, WPARAM keys, int wheel = 0)
{
    DemoInput input;
    input.kind = DemoInput::Mouse;
    input.message = message;
    input.x = x;
    input.y = y;
    input.keys = keys;
    input.wheel = wheel;
    return input;
}

DemoInput Key(UINT message, int vk, uint32_t lParam, int modifiers)
{
    DemoInput input;
    input.kind = DemoInput::Key;
    input.message = message;
    input.vk = vk;
    input.lParam = lParam;
    input.modifiers = modifiers;
    return input;
}

DemoInput Char(uint32_t code, uint32_t lParam)
{
    DemoInput input;
    input.kind = DemoInput::Char;
    input.message = WM_CHAR;
    input.code = code;
    input.lParam = lParam;
    return input;
}

DemoInput Text(DemoInput::Kind kind, const std::string& text, int x = 0, int y = 0)
{
    DemoInput input;
    input.kind = kind;
    input.text = text;
    input.x = x;
    input.y = y;
    return input;
}

struct GoodLine
{
    const char* line;
    DemoInput input;
};

TEST(DemoRecording, EveryKindOfLineReadsAndWritesBackTheSame)
{
    const GoodLine lines[] = {
        {"3 100048 mousemove -5 32767 0x0000", Mouse(WM_MOUSEMOVE, -5, 32767, 0)},
        {"3 100048 lbuttondown 10 20 0x0005", Mouse(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON | MK_SHIFT)},
        {"3 100048 lbuttondblclk 10 20 0x0001", Mouse(WM_LBUTTONDBLCLK, 10, 20, MK_LBUTTON)},
        {"3 100048 rbuttonup 1 2 0x0000", Mouse(WM_RBUTTONUP, 1, 2, 0)},
        {"3 100048 mbuttondblclk 1 2 0x0010", Mouse(WM_MBUTTONDBLCLK, 1, 2, MK_MBUTTON)},
        {"3 100048 mousewheel 7 8 0x0008 -240", Mouse(WM_MOUSEWHEEL, 7, 8, MK_CONTROL, -240)},
        {"3 100048 keydown 0x41 0x001E0001 SC",
         Key(WM_KEYDOWN, 'A', 0x001E0001, kModShift | kModControl)},
        {"3 100048 syskeyup 0x12 0xC0380001 -", Key(WM_SYSKEYUP, VK_MENU, 0xC0380001, 0)},
        {"3 100048 char \"\xE4\xB8\xAD\" 0x00000001", Char(0x4E2D, 1)},
        {"3 100048 char \"\\x08\" 0x000E0001", Char(8, 0x000E0001)},
        {"3 100048 char \"\\\"\" 0x00280001", Char('"', 0x00280001)},
        {"3 100048 compose \"ni hao\"", Text(DemoInput::Compose, "ni hao")},
        {"3 100048 result \"\xE4\xBD\xA0\xE5\xA5\xBD\"",
         Text(DemoInput::Result, "\xE4\xBD\xA0\xE5\xA5\xBD")},
        {"3 100048 clipboard \"a\\\\b\\x0Ac\"", Text(DemoInput::Clipboard, "a\\b\nc")},
        {"3 100048 size 800 600", Text(DemoInput::Size, "", 800, 600)},
        {"3 100048 shot login-1.final", Text(DemoInput::Shot, "login-1.final")},
    };
    for (const GoodLine& good : lines)
    {
        CDemoRecording recording;
        std::string error;
        ASSERT_TRUE(recording.Parse(kHeader + good.line + "\n", "rec", error)) << error;
        ASSERT_EQ(1u, recording.Inputs().size()) << good.line;
        const RecordedInput& entry = recording.Inputs()[0];
        EXPECT_EQ(3, entry.frame);
        EXPECT_EQ(100048u, entry.time);
        EXPECT_TRUE(entry.input == good.input) << good.line;
        EXPECT_EQ(good.line, CDemoRecording::FormatLine(entry));
    }
}

TEST(DemoRecording, CommentsBlankLinesAndCarriageReturnsAreSkipped)
{
    CDemoRecording recording;
    std::string error;
    ASSERT_TRUE(
        recording.Parse("qzgui-recording 1\r\n\n# a note\r\n  \n0 5 size 10 10\r\n", "rec", error))
        << error;
    ASSERT_EQ(1u, recording.Inputs().size());
    int width = 0;
    int height = 0;
    EXPECT_TRUE(recording.GetInitialSize(width, height));
    EXPECT_EQ(10, width);
    EXPECT_EQ(5u, recording.StartTime(0));
}

struct BadText
{
    const char* text;
    int line;
    const char* reason; // a part of the message
};

TEST(DemoRecording, EachMalformedLineIsReportedWithItsNumber)
{
    const BadText cases[] = {
        {"", 1, "not a recording"},
        {"qzgui-script 1\n", 1, "not a recording"},
        {"qzgui-recording\n", 1, "not a recording"},
        {"qzgui-recording 2\n0 0 size 1 1\n", 1, "version 2 is not supported"},
        {"qzgui-recording 1\n\n0 0 jump 1 1\n", 3, "unknown event \"jump\""},
        {"qzgui-recording 1\n0 0 mousemove 1\n", 2, "the y is missing"},
        {"qzgui-recording 1\n0 0 mousemove 1 2 0 9\n", 2, "unexpected \"9\""},
        {"qzgui-recording 1\n0 0 mousemove 1 2 0x1G\n", 2, "not a number"},
        {"qzgui-recording 1\n0 0 mousemove 40000 2 0\n", 2, "out of range"},
        {"qzgui-recording 1\n0 0 keydown 0 0x1 -\n", 2, "out of range"},
        {"qzgui-recording 1\n0 0 keydown 0x41 0x1 SS\n", 2, "not a set of S, C and A"},
        {"qzgui-recording 1\n0 0 size 0 600\n", 2, "out of range"},
        {"qzgui-recording 1\n0 0 size 800 600\nx 0 size 1 1\n", 3, "frame \"x\" is not a number"},
        {"qzgui-recording 1\n2000000 0 size 1 1\n", 2, "out of range"},
        {"qzgui-recording 1\n5 10 size 1 1\n4 10 size 1 1\n", 3, "comes after frame 5"},
        {"qzgui-recording 1\n5 10 size 1 1\n5 11 size 1 1\n", 3, "two times"},
        {"qzgui-recording 1\n5 10 size 1 1\n6 9 size 1 1\n", 3, "goes back"},
        {"qzgui-recording 1\n0 0 compose \"open\n", 2, "not closed"},
        {"qzgui-recording 1\n0 0 compose \"\\q\"\n", 2, "bad escape"},
        {"qzgui-recording 1\n0 0 compose \"\\x4\"\n", 2, "bad escape"},
        {"qzgui-recording 1\n0 0 compose \"\\xFF\"\n", 2, "not UTF-8"},
        {"qzgui-recording 1\n0 0 compose \"\xC0\xAF\"\n", 2, "not UTF-8"},
        {"qzgui-recording 1\n0 0 result text\n", 2, "quoted text was expected"},
        {"qzgui-recording 1\n0 0 char \"ab\" 1\n", 2, "one character"},
        {"qzgui-recording 1\n0 0 shot ../up\n", 2, "shot name"},
        {"qzgui-recording 1\n0 0\n", 2, "the event is missing"},
    };
    for (const BadText& bad : cases)
    {
        CDemoRecording recording;
        std::string error;
        EXPECT_FALSE(recording.Parse(bad.text, "rec.txt", error)) << bad.text;
        const std::string where = "rec.txt:" + std::to_string(bad.line) + ": ";
        EXPECT_EQ(0u, error.find(where)) << error;
        EXPECT_NE(std::string::npos, error.find(bad.reason)) << error;
        EXPECT_TRUE(recording.Inputs().empty());
    }
}

TEST(DemoRecording, QuotedTextsKeepEveryByte)
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    const std::string quoted = QuoteRecordingText(bytes);
    EXPECT_EQ(std::string::npos, quoted.find('\n'));
    size_t pos = 0;
    std::string back;
    std::string error;
    ASSERT_TRUE(UnquoteRecordingText(quoted, pos, back, error)) << error;
    EXPECT_EQ(bytes, back);
    EXPECT_EQ(quoted.size(), pos);
}

} // namespace
