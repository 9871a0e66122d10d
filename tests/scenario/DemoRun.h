// Runs the demo headless once per test program on one script of its sample bundle, the way CI
// does, and reads back its screenshots.
#pragma once

#include "support/ImageComparePng.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace DemoScenario
{

class DemoRun
{
public:
    // script: a file of the bundle's scripts/ folder, or "" for the default showcase.
    explicit DemoRun(const std::string& script)
    {
        // One folder per process and script: CTest runs the cases in parallel.
        m_out = std::filesystem::temp_directory_path() /
                ("qzgui-demo-" + (script.empty() ? std::string("showcase") : script) + "-" +
                 std::to_string(getpid()));
        std::filesystem::remove_all(m_out);
        std::string command = std::string(QZGUI_BINARY_DIR) +
                              "/apps/demo/qzgui-demo --headless --out " + m_out.string();
        if (!script.empty())
            command +=
                " --script " + std::string(QZGUI_BINARY_DIR) + "/demo-bundle/scripts/" + script;
        m_exitCode = std::system((command + " > /dev/null").c_str());
    }
    ~DemoRun() { std::filesystem::remove_all(m_out); }
    DemoRun(const DemoRun&) = delete;
    DemoRun& operator=(const DemoRun&) = delete;

    int ExitCode() const { return m_exitCode; }
    bool HasShot(const char* name) const
    {
        return std::filesystem::exists(m_out / (std::string(name) + ".png"));
    }
    QzTest::Image Shot(const char* name) const
    {
        QzTest::Image image;
        EXPECT_TRUE(QzTest::ReadPng((m_out / (std::string(name) + ".png")).string(), image))
            << name;
        return image;
    }

private:
    std::filesystem::path m_out;
    int m_exitCode = -1;
};

// Counts the pixels of the rectangle that differ between a and b, with b read at an offset.
inline int CountDiffs(const QzTest::Image& a, const QzTest::Image& b, int left, int top, int right,
                      int bottom, int dx = 0, int dy = 0)
{
    int diffs = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            diffs += a.At(x, y) != b.At(x + dx, y + dy) ? 1 : 0;
    return diffs;
}

} // namespace DemoScenario
