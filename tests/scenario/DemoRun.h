// Runs the demo headless once per test program on one script of its sample bundle, the way CI
// does, and reads back its screenshots.
#pragma once

#include "support/ImageComparePng.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace DemoScenario
{

// Runs the demo with the arguments (--headless and --out among them); its exit code. Its output
// goes nowhere, its errors to errorFile when one is named.
inline int RunDemo(const std::string& arguments, const std::string& errorFile = std::string())
{
    const std::string command = std::string(QZGUI_BINARY_DIR) + "/apps/demo/qzgui-demo " +
                                arguments + " > /dev/null" +
                                (errorFile.empty() ? std::string() : " 2> " + errorFile);
    return std::system(command.c_str());
}

using QzTest::TempFolder;

inline QzTest::Image ReadShot(const std::string& path)
{
    QzTest::Image image;
    EXPECT_TRUE(QzTest::ReadPng(path, image)) << path;
    return image;
}

class DemoRun
{
public:
    // script: a file of the bundle's scripts/ folder, or "" for the bundle's four scripts;
    // renderer: the demo's --renderer, or "" for its headless default (cairo).
    explicit DemoRun(const std::string& script, const std::string& renderer = std::string())
    {
        std::string arguments = "--headless --out " + OutDir().string();
        if (!renderer.empty())
            arguments += " --renderer " + renderer;
        if (!script.empty())
            arguments +=
                " --script " + std::string(QZGUI_BINARY_DIR) + "/demo-bundle/scripts/" + script;
        m_exitCode = RunDemo(arguments);
    }

    int ExitCode() const { return m_exitCode; }
    const std::filesystem::path& OutDir() const { return m_out.Path(); }
    bool HasShot(const char* name) const
    {
        return std::filesystem::exists(m_out / (std::string(name) + ".png"));
    }
    QzTest::Image Shot(const char* name) const
    {
        return ReadShot(m_out / (std::string(name) + ".png"));
    }

private:
    // The screenshots' folder, one a run: CTest runs the cases in parallel.
    TempFolder m_out{"demo"};
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

// A rectangle of the screenshots, in screen pixels (right and bottom excluded).
struct Box
{
    int left, top, right, bottom;
};

inline int Red(uint32_t pixel)
{
    return (pixel >> 16) & 0xFF;
}
inline int Green(uint32_t pixel)
{
    return (pixel >> 8) & 0xFF;
}
inline int Blue(uint32_t pixel)
{
    return pixel & 0xFF;
}
inline bool IsRed(uint32_t pixel)
{
    return Red(pixel) > 180 && Green(pixel) < 90 && Blue(pixel) < 90;
}

inline bool IsLight(uint32_t pixel)
{
    return ((pixel >> 16) & 0xFF) > 210 && ((pixel >> 8) & 0xFF) > 210 && (pixel & 0xFF) > 210;
}

// The right end of the white (text) pixels inside the box, less its 6-pixel sunken frame; 0
// when there are none.
inline int TextRight(const QzTest::Image& image, const Box& rc)
{
    int right = 0;
    for (int y = rc.top + 6; y < rc.bottom - 6; ++y)
        for (int x = rc.left + 6; x < rc.right - 6; ++x)
            right = IsLight(image.At(x, y)) ? std::max(right, x - rc.left) : right;
    return right;
}

// The pixels of the box that pass the test.
template <typename Test> int Count(const QzTest::Image& image, const Box& rc, Test test)
{
    int count = 0;
    for (int y = rc.top; y < rc.bottom; ++y)
        for (int x = rc.left; x < rc.right; ++x)
            count += test(image.At(x, y)) ? 1 : 0;
    return count;
}

inline int Diffs(const QzTest::Image& a, const QzTest::Image& b, const Box& rc)
{
    return CountDiffs(a, b, rc.left, rc.top, rc.right, rc.bottom);
}

// A test suite on one run of the demo, made before its first test: Suite names the script as
// its public kScript.
template <typename Suite> class DemoScriptTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_run = new DemoRun(Suite::kScript); }
    static void TearDownTestSuite()
    {
        delete s_run;
        s_run = nullptr;
    }
    void SetUp() override { ASSERT_EQ(0, s_run->ExitCode()); }
    static QzTest::Image Shot(const char* name) { return s_run->Shot(name); }

    static inline DemoRun* s_run = nullptr;
};

} // namespace DemoScenario
