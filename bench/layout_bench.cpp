// The layout manager on a large layout file: 10,000 sections of 8 keys each, written once to a
// temporary data root. LoadLayout reads the whole file per iteration ("sections_per_second");
// GetWndInfo looks up every record of the loaded file per iteration ("lookups_per_second").
// The layout manager is initialised with a GUI manager from CreateGuiMgr, as a host has it.
#include "framework/IQzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/QzSystem.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using QzGui::CQzGuiInfoMgr;

constexpr int kDialogs = 100;
constexpr int kCtrlsPerDialog = 99;
// 100 dialog sections and 9,900 control sections.
constexpr int kSections = kDialogs * (1 + kCtrlsPerDialog);
const char* const kLayoutFile = "BenchLayout.ini";

// One section: its header and 8 keys, as a designer's file has them.
void WriteSection(std::ofstream& out, int parent, int ctrl)
{
    out << "[" << parent << "-" << ctrl << "]\n"
        << "x=" << (ctrl * 7) % 640 << "\n"
        << "y=" << (ctrl * 13) % 480 << "\n"
        << "w=" << 40 + ctrl % 50 << "\n"
        << "h=" << 20 + ctrl % 30 << "\n"
        << "AniSection=Button\n"
        << "BackShowMode=" << ctrl % 8 << "\n"
        << "Title=Item " << ctrl << "\n"
        << "TipText=The tip of item " << ctrl << "\n\n";
}

// A temporary data root holding ini/BenchLayout.ini, the current directory while it lives.
class LayoutDataRoot
{
public:
    LayoutDataRoot() : m_previous(std::filesystem::current_path())
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "qzgui-layout-bench-XXXXXX").string();
        if (!mkdtemp(&pattern[0]))
            throw std::runtime_error("no temporary folder");
        m_path = pattern;
        std::filesystem::create_directories(m_path / "ini");
        std::ofstream(m_path / "ini" / "Gui3DEffect.ini") << "";
        std::ofstream out(m_path / "ini" / kLayoutFile);
        for (int d = 1; d <= kDialogs; ++d)
        {
            WriteSection(out, 0, d);
            for (int c = 1; c <= kCtrlsPerDialog; ++c)
                WriteSection(out, d, c);
        }
        std::filesystem::current_path(m_path);
    }
    ~LayoutDataRoot()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_previous, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    LayoutDataRoot(const LayoutDataRoot&) = delete;
    LayoutDataRoot& operator=(const LayoutDataRoot&) = delete;

private:
    std::filesystem::path m_previous;
    std::filesystem::path m_path;
};

// A GUI manager for the layout manager's Init; its own layout manager stays unused.
class GuiMgrHolder
{
public:
    GuiMgrHolder() : m_pMgr(QzGui::CreateGuiMgr())
    {
        QzPlatform::SetRenderDevice(nullptr);
        m_pMgr->SetScreenSize(1024, 768);
    }
    ~GuiMgrHolder() { m_pMgr->Release(); }
    GuiMgrHolder(const GuiMgrHolder&) = delete;
    GuiMgrHolder& operator=(const GuiMgrHolder&) = delete;

    QzGui::IQzGuiMgr* Get() { return m_pMgr; }

private:
    QzGui::IQzGuiMgr* m_pMgr;
};

void LoadLayout10kSections(benchmark::State& state)
{
    LayoutDataRoot root;
    GuiMgrHolder guiMgr;
    for (auto _ : state)
    {
        // A fresh manager each time: a reload keeps the records it replaces alive.
        state.PauseTiming();
        auto pInfoMgr = std::make_unique<CQzGuiInfoMgr>();
        pInfoMgr->Init(guiMgr.Get());
        state.ResumeTiming();
        if (!pInfoMgr->LoadLayout(kLayoutFile))
            state.SkipWithError("the layout file was not read");
        state.PauseTiming();
        pInfoMgr.reset();
        state.ResumeTiming();
    }
    state.counters["sections_per_second"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * kSections, benchmark::Counter::kIsRate);
}
BENCHMARK(LoadLayout10kSections)->Unit(benchmark::kMillisecond);

void GetWndInfoEveryRecord(benchmark::State& state)
{
    LayoutDataRoot root;
    GuiMgrHolder guiMgr;
    CQzGuiInfoMgr infoMgr;
    infoMgr.Init(guiMgr.Get());
    if (!infoMgr.LoadLayout(kLayoutFile))
        state.SkipWithError("the layout file was not read");
    for (auto _ : state)
    {
        for (DWORD d = 1; d <= kDialogs; ++d)
        {
            benchmark::DoNotOptimize(infoMgr.GetWndInfo(0, d, 1, 0));
            for (DWORD c = 1; c <= kCtrlsPerDialog; ++c)
                benchmark::DoNotOptimize(infoMgr.GetWndInfo(d, c, 2, 0));
        }
    }
    state.counters["lookups_per_second"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * kSections, benchmark::Counter::kIsRate);
}
BENCHMARK(GetWndInfoEveryRecord)->Unit(benchmark::kMicrosecond);

} // namespace
