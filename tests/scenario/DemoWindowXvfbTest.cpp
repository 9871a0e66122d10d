// The window mode for real, on a virtual X server: xdotool moves the mouse, clicks "Login" and
// the name field, types a name and presses F9 while the demo records; the recording played back
// headless shows the login window open with the name typed. Skipped where Xvfb or xdotool is
// missing (apt-get install xvfb xdotool).
#include "DemoRecording.h"
#include "DemoRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace
{

using namespace DemoScenario;

const Box kNameField = {420, 186, 680, 212};

bool HasProgram(const char* name)
{
    return std::system(("command -v " + std::string(name) + " > /dev/null 2>&1").c_str()) == 0;
}

// A process of the test's own, ended (SIGTERM) and waited for when it goes.
class Child
{
public:
    Child(std::vector<std::string> arguments, const std::vector<std::string>& environment,
          posix_spawn_file_actions_t* actions = nullptr)
    {
        std::vector<std::string> env = environment;
        for (char** var = environ; *var; ++var)
            env.push_back(*var);
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        std::vector<char*> envp;
        for (std::string& var : env)
            envp.push_back(var.data());
        envp.push_back(nullptr);
        if (posix_spawnp(&m_pid, argv[0], actions, nullptr, argv.data(), envp.data()) != 0)
            m_pid = -1;
    }
    ~Child() { Stop(); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    bool Started() const { return m_pid > 0; }
    // SIGTERM, then the exit status (-1 when it did not end by itself).
    int Stop()
    {
        if (m_pid <= 0)
            return -1;
        kill(m_pid, SIGTERM);
        int status = 0;
        waitpid(m_pid, &status, 0);
        m_pid = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_pid = -1;
};

// An X server on a free display (Xvfb picks it and writes its number to a pipe).
class VirtualDisplay
{
public:
    VirtualDisplay()
    {
        int fds[2];
        if (pipe(fds) != 0)
            return;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addclose(&actions, fds[0]);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        m_pServer = std::make_unique<Child>(
            std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(fds[1]), "-screen", "0",
                                     "1280x1024x24", "-nolisten", "tcp"},
            std::vector<std::string>(), &actions);
        posix_spawn_file_actions_destroy(&actions);
        close(fds[1]);
        // The number and its line break may come in two writes; the server stops when it
        // cannot write, so the pipe stays open as long as the server runs.
        m_nPipe = fds[0];
        std::string digits;
        pollfd ready = {m_nPipe, POLLIN, 0};
        char ch = 0;
        while (digits.size() < 8 && poll(&ready, 1, 5000) == 1 && read(m_nPipe, &ch, 1) == 1 &&
               ch != '\n')
            digits.push_back(ch);
        if (ch == '\n' && !digits.empty())
            m_display = ":" + digits;
    }
    ~VirtualDisplay()
    {
        m_pServer.reset();
        if (m_nPipe >= 0)
            close(m_nPipe);
    }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    const std::string& Name() const { return m_display; }
    int Run(const std::string& command) const
    {
        return std::system(("DISPLAY=" + m_display + " " + command + " > /dev/null 2>&1").c_str());
    }

private:
    std::unique_ptr<Child> m_pServer;
    int m_nPipe = -1;
    std::string m_display;
};

TEST(DemoWindowXvfb, InputRecordedInTheWindowReplaysToWhatTheUserDid)
{
    if (!HasProgram("Xvfb") || !HasProgram("xdotool"))
        GTEST_SKIP() << "Xvfb or xdotool is missing: the window mode is not driven";
    VirtualDisplay display;
    ASSERT_FALSE(display.Name().empty()) << "Xvfb did not start";
    TempFolder folder("xvfb");
    const std::string recording = folder / "window.txt";
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", O_WRONLY, 0);
    Child demo({std::string(QZGUI_BINARY_DIR) + "/apps/demo/qzgui-demo", "--record", recording},
               {"DISPLAY=" + display.Name(), "SDL_VIDEODRIVER=x11", "SDL_RENDER_DRIVER=software"},
               &quiet);
    posix_spawn_file_actions_destroy(&quiet);
    ASSERT_TRUE(demo.Started());
    ASSERT_EQ(0, display.Run("timeout 10 xdotool search --sync --name 'QzGui demo'"));
    // Positions are the window's: "Login", the name field, then a place away from the fields.
    // Without a window manager the keys go to the window under the pointer.
    ASSERT_EQ(0, display.Run("xdotool search --name 'QzGui demo' "
                             "mousemove --window %1 64 726 click 1 sleep 0.2 "
                             "mousemove --window %1 540 199 click 1 sleep 0.2 "
                             "type --delay 20 Zhang"));
    ASSERT_EQ(0, display.Run("xdotool search --name 'QzGui demo' mousemove --window %1 560 340 "
                             "sleep 0.2 key F9 sleep 0.3"));
    EXPECT_EQ(0, demo.Stop());

    CDemoRecording parsed;
    std::string error;
    ASSERT_TRUE(parsed.Load(recording, error)) << error;
    ASSERT_EQ(0, RunDemo("--headless --replay " + recording + " --out " + (folder / "out")));
    const QzTest::Image shot = ReadShot(folder / "out/shot-001.png");
    // "Zhang" in the name field of the login window that "Login" opened.
    EXPECT_GT(TextRight(shot, kNameField), 35);
}

} // namespace
