// Recordings of the window mode played back headless: input that goes through the window's own
// path (SDL events, translation, recording, the host) replays to the screenshots a script of the
// same input makes, the bundle's recording (made in the window) replays to the same shots every
// run, a frame without input runs at the time between its neighbours, and a broken recording
// stops the demo with the line that is wrong.
#include "DemoReplay.h"
#include "DemoRecorder.h"
#include "DemoRun.h"
#include "DemoSession.h"
#include "ScopedCurrentDir.h"
#include "SdlTestEvents.h"

#include "platform/system/host/QzHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{

using namespace DemoScenario;
using namespace SdlTestEvents;

const Box kScreen = {0, 0, 1024, 768};
// The login window's name field (the window at (300, 160)).
const Box kNameField = {420, 186, 680, 212};

std::vector<SDL_Event> Click(int x, int y)
{
    return {Motion(x, y), Button(SDL_BUTTON_LEFT, true, x, y),
            Button(SDL_BUTTON_LEFT, false, x, y)};
}

std::vector<SDL_Event> Type(SDL_Scancode scancode, SDL_Keycode sym, const char* text)
{
    std::vector<SDL_Event> events = {Key(scancode, sym, true)};
    if (text)
        events.push_back(Text(SDL_TEXTINPUT, text));
    events.push_back(Key(scancode, sym, false));
    return events;
}

// The user opens the login window, marks a shot, types "ab" into the name (as one text), takes
// the b back, moves away and marks another: one list of SDL events a frame, 16 ms apart. The
// script does the same; its shots' extra frame draws the same time again.
std::vector<std::vector<SDL_Event>> SessionFrames()
{
    const std::vector<SDL_Event> f9 = Type(SDL_SCANCODE_F9, SDLK_F9, nullptr);
    return {{},
            Click(64, 726),
            {},
            {},
            f9,
            Click(540, 199),
            Type(SDL_SCANCODE_A, SDLK_a, "ab"),
            Type(SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, nullptr),
            {Motion(560, 340)},
            {},
            {},
            f9};
}
const char* const kSameScript = "move 64 726\nclick 64 726\nframe 4\nshot shot-001\n"
                                "move 540 199\nclick 540 199\nframe 1\nchar ab\nframe 1\n"
                                "key BACK\nframe 1\nmove 560 340\nframe 4\nshot shot-002\n";

void RecordSession(const std::string& path)
{
    ScopedCurrentDir bundle(QZGUI_BINARY_DIR "/demo-bundle");
    CDemoHost host(1024, 768);
    host.UseManualClock();
    ASSERT_TRUE(host.Create(false));
    CDemoRecorder recorder;
    std::string error;
    ASSERT_TRUE(recorder.Open(path, error)) << error;
    CDemoSession session(host, &recorder);
    for (const std::vector<SDL_Event>& frame : SessionFrames())
    {
        session.RunFrame(frame);
        QzPlatform::Host::AdvanceTime(16);
    }
}

void WriteFile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

TEST(DemoReplay, ARecordedSessionReplaysToTheShotsOfTheSameInputScripted)
{
    TempFolder folder("replay-round-trip");
    RecordSession(folder / "session.txt");
    WriteFile(folder / "session.script", kSameScript);
    ASSERT_EQ(0, RunDemo("--headless --replay " + (folder / "session.txt") + " --out " +
                         (folder / "replayed")));
    ASSERT_EQ(0, RunDemo("--headless --script " + (folder / "session.script") + " --out " +
                         (folder / "scripted")));
    for (const char* shot : {"shot-001.png", "shot-002.png"})
    {
        const QzTest::Image replayed = ReadShot(folder / "replayed/" + shot);
        const QzTest::Image scripted = ReadShot(folder / "scripted/" + shot);
        ASSERT_EQ(scripted.width, replayed.width);
        EXPECT_EQ(0, Diffs(replayed, scripted, kScreen)) << shot;
    }
    // The name holds "a": one letter, where "ab" would run further.
    const int right = TextRight(ReadShot(folder / "replayed/shot-002.png"), kNameField);
    EXPECT_GT(right, 0);
    EXPECT_LT(right, 12);
    // The recording starts with the screen's size, at the start of the clock.
    EXPECT_EQ(0u,
              ReadFile(folder / "session.txt").find("qzgui-recording 1\n0 100000 size 1024 768\n"));
}

// The right end of the text of a row of the screen, coloured or light, over the dark skin; 0
// when there is none.
int TextEnd(const QzTest::Image& image, const Box& row)
{
    int right = 0;
    for (int y = row.top; y < row.bottom; ++y)
        for (int x = row.left; x < row.right; ++x)
        {
            const uint32_t pixel = image.At(x, y);
            if (std::max({Red(pixel), Green(pixel), Blue(pixel)}) > 150)
                right = std::max(right, x);
        }
    return right;
}

// The bundle's recording replays to the images it gave when it was made
// (tests/scenario/expected/recording: copy a replay's shots there when the client's look changes
// on purpose). The tolerance lets through what another machine's font files may change: 16 a
// channel, a thousandth of the pixels.
TEST(DemoReplay, TheBundlesRecordingReplaysToTheImagesItGaveWhenMade)
{
    TempFolder folder("replay-bundle");
    const std::string recording =
        std::string(QZGUI_BINARY_DIR) + "/demo-bundle/recordings/chat-and-login.txt";
    ASSERT_EQ(0, RunDemo("--headless --replay " + recording + " --out " + (folder / "first")));
    for (const char* shot : {"shot-001.png", "shot-002.png", "shot-003.png"})
    {
        const QzTest::Image expected =
            ReadShot(std::string(QZGUI_SOURCE_DIR) + "/tests/scenario/expected/recording/" + shot);
        const QzTest::Image replayed = ReadShot(folder / "first/" + shot);
        QzTest::CompareOptions options;
        options.tolerance = 16;
        options.maxDifferingPixels = int64_t(expected.width) * expected.height / 1000;
        const QzTest::CompareResult result =
            QzTest::CompareImages(expected.View(), replayed.View(), options);
        EXPECT_TRUE(result.passed) << shot << ": " << result.Describe();
    }
    // The line sent is "hi", which the double click let replace "hello #02": the last row of the
    // history ends soon after "[Guild] You:".
    const Box lastRow = {656, 392, 900, 406};
    const int before = TextEnd(ReadShot(folder / "first/shot-001.png"), lastRow);
    const int after = TextEnd(ReadShot(folder / "first/shot-002.png"), lastRow);
    EXPECT_NE(before, after);
    EXPECT_GT(after, 720);
    EXPECT_LT(after, 760);
    EXPECT_GT(TextRight(ReadShot(folder / "first/shot-003.png"), kNameField), 35);
}

TEST(DemoReplay, AFrameWithoutInputRunsAtTheTimeBetweenItsNeighbours)
{
    CDemoRecording recording;
    std::string error;
    ASSERT_TRUE(recording.Parse("qzgui-recording 1\n2 1000 size 10 10\n6 1100 shot a\n"
                                "6 1100 shot b\n9 1100 shot c\n",
                                "rec", error))
        << error;
    const std::vector<RecordedInput>& inputs = recording.Inputs();
    struct Case
    {
        size_t next; // the first input of the frame or after it
        int frame;
        DWORD time;
    };
    const Case cases[] = {{0, 0, 1000}, {0, 2, 1000}, {1, 3, 1025},
                          {1, 5, 1075}, {1, 6, 1100}, {3, 8, 1100}};
    for (const Case& test : cases)
        EXPECT_EQ(test.time, CDemoReplay::FrameTime(inputs, test.next, test.frame)) << test.frame;
}

TEST(DemoReplay, ABrokenRecordingStopsTheDemoWithTheLineThatIsWrong)
{
    TempFolder folder("replay-broken");
    WriteFile(folder / "bad.txt",
              "qzgui-recording 1\n0 100000 size 640 480\n1 100016 mousemove 1\n");
    EXPECT_NE(0, RunDemo("--replay " + (folder / "bad.txt") + " --out " + (folder / "out"),
                         folder / "bad.err"));
    EXPECT_NE(std::string::npos, ReadFile(folder / "bad.err").find("bad.txt:3: the y is missing"));
}

} // namespace
