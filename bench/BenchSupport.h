// What the benchmarks share: a temporary data root with the files a benchmark gives (the current
// directory while it lives), a host window for the GUI manager, and the thread's CPU clock.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <time.h>
#include <utility>

namespace QzBench
{

// ani/Control.ani with the given text, an empty ini/Gui3DEffect.ini and ini/Bench.ini (the
// layout file), and any further files given as (path, text).
class BenchDataRoot
{
public:
    using Files = std::initializer_list<std::pair<const char*, const char*>>;

    explicit BenchDataRoot(const std::string& aniText, Files files = {})
        : m_previous(std::filesystem::current_path())
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "qzgui-bench-XXXXXX").string();
        if (!mkdtemp(&pattern[0]))
            throw std::runtime_error("no temporary folder");
        m_path = pattern;
        std::filesystem::create_directories(m_path / "ani");
        std::filesystem::create_directories(m_path / "ini");
        std::ofstream(m_path / "ani" / "Control.ani") << aniText;
        std::ofstream(m_path / "ini" / "Gui3DEffect.ini") << "";
        std::ofstream(m_path / "ini" / "Bench.ini") << "";
        for (const auto& file : files)
            std::ofstream(m_path / file.first) << file.second;
        std::filesystem::current_path(m_path);
    }
    ~BenchDataRoot()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_previous, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    BenchDataRoot(const BenchDataRoot&) = delete;
    BenchDataRoot& operator=(const BenchDataRoot&) = delete;

private:
    std::filesystem::path m_previous;
    std::filesystem::path m_path;
};

constexpr int kScreenWidth = 1024;
constexpr int kScreenHeight = 768;

// A visible 1024 x 768 host window of a class with this procedure (registered on first use).
inline HWND CreateHostWindow(WNDPROC pfnProc = DefWindowProcW,
                             const wchar_t* pszClass = L"QzBenchHost")
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = pfnProc;
    wc.lpszClassName = pszClass;
    RegisterClassW(&wc);
    return CreateWindowExW(0, pszClass, L"bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                           kScreenWidth, kScreenHeight, nullptr, nullptr, nullptr, nullptr);
}

inline double ThreadCpuNs()
{
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

} // namespace QzBench
