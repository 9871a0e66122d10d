// The window mode for real, on a virtual X server: xdotool moves the mouse, clicks "Login" and
// the name field, types a name and presses F9 while the demo records; the recording played back
// headless shows the login window open with the name typed. Skipped where Xvfb or xdotool is
// missing (apt-get install xvfb xdotool).
#include "DemoRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace
{

using namespace DemoScenario;

bool HasProgram(const char* name)
{
    return std::system(("command -v " + std::string(name) + " > /dev/null").c_str()) == 0;
}

// Xvfb picks a free display and writes its number, then its line break, to the pipe it is given;
// it stops when it cannot, so the reader keeps the pipe open. Without a window manager the keys
// go to the window under the pointer. SIGTERM closes the window as the user would. In sanitizer
// builds the window's demo runs without leak detection: D-Bus, the X libraries and the code-page
// modules they load keep blocks until the process ends (the headless replay is checked fully).
const char* const kSession = R"sh(
exec 2> /dev/null
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3> "$DIR/display" &
XVFB=$!
trap 'kill $DEMO $XVFB; wait' EXIT
for i in $(seq 100); do grep -q . "$DIR/display" 2> /dev/null && break; sleep 0.05; done
export DISPLAY=":$(head -n 1 "$DIR/display")"
ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0" \
SDL_VIDEODRIVER=x11 SDL_RENDER_DRIVER=software "$DEMO_BIN" --record "$DIR/window.txt" > /dev/null &
DEMO=$!
timeout 10 xdotool search --sync --name 'QzGui demo' > /dev/null || exit 1
xdotool search --name 'QzGui demo' mousemove --window %1 64 726 click 1 sleep 0.2 \
    mousemove --window %1 540 199 click 1 sleep 0.2 type --delay 20 Zhang || exit 1
xdotool search --name 'QzGui demo' mousemove --window %1 560 340 sleep 0.2 key F9 sleep 0.3 || exit 1
kill -TERM $DEMO && wait $DEMO
)sh";

TEST(DemoWindowXvfb, InputRecordedInTheWindowReplaysToWhatTheUserDid)
{
    if (!HasProgram("Xvfb") || !HasProgram("xdotool"))
        GTEST_SKIP() << "Xvfb or xdotool is missing: the window mode is not driven";
    TempFolder folder("xvfb");
    std::ofstream(folder / "session.sh") << kSession;
    const std::string command = "DIR=" + (folder / "") + " DEMO_BIN=" + QZGUI_BINARY_DIR +
                                "/apps/demo/qzgui-demo bash " + (folder / "session.sh");
    ASSERT_EQ(0, std::system(command.c_str()));
    ASSERT_EQ(0, RunDemo("--headless --replay " + (folder / "window.txt") + " --out " +
                         (folder / "out")));
    // "Zhang" in the name field of the login window that "Login" opened.
    const Box nameField = {420, 186, 680, 212};
    EXPECT_GT(TextRight(ReadShot(folder / "out/shot-001.png"), nameField), 35);
}

} // namespace
