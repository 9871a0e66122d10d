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

// The fields of an input that are not at their defaults.
std::string Describe(const DemoInput& input)
{
    std::string text = "kind " + std::to_string(input.kind);
    const auto add = [&text](const char* name, int64_t value)
    {
        if (value != 0)
            text += std::string(" ") + name + " " + std::to_string(value);
    };
    add("message", input.message);
    add("x", input.x);
    add("y", input.y);
    add("keys", static_cast<int64_t>(input.keys));
    add("wheel", input.wheel);
    add("vk", input.vk);
    add("code", input.code);
    add("lParam", input.lParam);
    add("modifiers", input.modifiers);
    return input.text.empty() ? text : text + " text " + input.text;
}

TEST(DemoRecording, EveryKindOfLineReadsAndWritesBackTheSame)
{
    const std::pair<const char*, const char*> lines[] = {
        {"3 100048 mousemove -5 32767 0x0000", "kind 0 message 512 x -5 y 32767"},
        {"3 100048 lbuttondown 10 20 0x0005", "kind 0 message 513 x 10 y 20 keys 5"},
        {"3 100048 mbuttondblclk 1 2 0x0010", "kind 0 message 521 x 1 y 2 keys 16"},
        {"3 100048 mousewheel 7 8 0x0008 -240", "kind 0 message 522 x 7 y 8 keys 8 wheel -240"},
        {"3 100048 keydown 0x41 0x001E0001 SC",
         "kind 1 message 256 vk 65 lParam 1966081 modifiers 3"},
        {"3 100048 syskeyup 0x12 0xC0380001 A",
         "kind 1 message 261 vk 18 lParam 3224895489 modifiers 4"},
        {"3 100048 char \"\xE4\xB8\xAD\" 0x00000001", "kind 2 message 258 code 20013 lParam 1"},
        {"3 100048 char \"\\x08\" 0x000E0001", "kind 2 message 258 code 8 lParam 917505"},
        {"3 100048 compose \"ni hao\"", "kind 3 text ni hao"},
        {"3 100048 result \"\\\"\"", "kind 4 text \""},
        {"3 100048 clipboard \"a\\\\b\\x0Ac\"", "kind 5 text a\\b\nc"},
        {"3 100048 size 800 600", "kind 6 x 800 y 600"},
        {"3 100048 shot login-1.final", "kind 7 text login-1.final"},
    };
    for (const auto& [line, fields] : lines)
    {
        CDemoRecording recording;
        std::string error;
        ASSERT_TRUE(recording.Parse(kHeader + "# a comment\r\n\n" + line + "\r\n", "rec", error))
            << error;
        ASSERT_EQ(1u, recording.Inputs().size()) << line;
        const RecordedInput& entry = recording.Inputs()[0];
        EXPECT_EQ(3, entry.frame);
        EXPECT_EQ(100048u, entry.time);
        EXPECT_EQ(fields, Describe(entry.input)) << line;
        EXPECT_EQ(line, CDemoRecording::FormatLine(entry));
    }
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
