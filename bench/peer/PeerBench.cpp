// The library against an immediate-mode peer on the same screen, side by side in one run: for
// 200, 2,000 and 20,000 controls both sides draw their frames alternately and the medians of
// the thread's CPU time per frame are compared, per control. Then the memory of the library's
// screen: heap bytes a control costs and the peak resident size of the 20,000-control screen.
//
//   qzgui-bench-peer [frames=500] [warmup=100] [--null-device] [--profile] [--windows=N]
//
// --profile draws the library's side alone (for a profiler), without the peer and the memory;
// --windows=N compares only the screen of N windows (50 controls each).
// Pin it to one core (taskset -c 1): only the ratio of a side-by-side run means anything on a
// shared machine.
#include "../BenchSupport.h"
#include "ImGuiSide.h"
#include "QzGuiSide.h"

#include "CDrawListDevice.h"
#include "platform/render/DataSet.h"
#include "platform/render/NullRenderDevice.h"
#include "platform/system/host/QzHost.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

using namespace PeerBench;

struct Options
{
    int frames = 500;
    int warmup = 100;
    bool nullDevice = false;
    bool profile = false;
    int windows = 0; // 0: the three screens
};

Options ParseOptions(int argc, char** argv)
{
    Options options;
    int position = 0;
    for (int i = 1; i < argc; ++i)
    {
        if (std::strcmp(argv[i], "--null-device") == 0)
            options.nullDevice = true;
        else if (std::strcmp(argv[i], "--profile") == 0)
            options.profile = true;
        else if (std::strncmp(argv[i], "--windows=", 10) == 0)
            options.windows = std::max(1, std::atoi(argv[i] + 10));
        else if (position++ == 0)
            options.frames = std::max(1, std::atoi(argv[i]));
        else
            options.warmup = std::max(0, std::atoi(argv[i]));
    }
    return options;
}

// The sample bundle's animation file and images, with the screen's layout file beside them.
void CopyBundle()
{
    namespace fs = std::filesystem;
    const fs::path bundle = QZGUI_DEMO_BUNDLE;
    // A directory is copied only with `recursive` (or no options at all).
    fs::copy(bundle / "ani", "ani",
             fs::copy_options::overwrite_existing | fs::copy_options::recursive);
    fs::copy(bundle / "images", "images", fs::copy_options::recursive);
}

void WriteLayout(int windows)
{
    std::ofstream("ini/Peer.ini") << QzGuiSide::LayoutText(windows);
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The device the library draws on and its counts of the last frame.
class Device
{
public:
    explicit Device(bool null) : m_bNull(null), m_drawList(kScreenWidth, kScreenHeight) {}
    QzPlatform::IRenderDevice& Get()
    {
        if (m_bNull)
            return QzPlatform::GetNullRenderDevice();
        return m_drawList;
    }
    QzGuiSide::Counts Counts()
    {
        return [this]()
        {
            // The vertices and indices the commands draw (the list keeps room beside them).
            const QzPlatform::DrawList& list = m_drawList.GetDrawList();
            QzGuiSide::Tally tally;
            for (const QzPlatform::DrawCommand& command : list.commands)
                tally.indices += command.indexCount;
            tally.vertices = tally.indices / 6 * 4;
            tally.commands = static_cast<long>(list.commands.size());
            return tally;
        };
    }

private:
    bool m_bNull;
    QzPlatform::CDrawListDevice m_drawList;
};

void ProfileAt(int windows, const Options& options)
{
    WriteLayout(windows);
    Device device(options.nullDevice);
    QzGuiSide ours(windows, device.Get(), device.Counts());
    for (int f = 0; f < options.warmup + options.frames; ++f)
        ours.Frame(f);
}

void CompareAt(int windows, const Options& options)
{
    if (options.profile)
        return ProfileAt(windows, options);
    WriteLayout(windows);
    Device device(options.nullDevice);
    ImGuiSide peer(windows);
    QzGuiSide ours(windows, device.Get(), device.Counts());
    std::vector<double> peerNs;
    std::vector<double> ourNs;
    for (int f = 0; f < options.warmup + options.frames; ++f)
    {
        double start = QzBench::ThreadCpuNs();
        peer.Frame(f);
        const double peerCost = QzBench::ThreadCpuNs() - start;
        start = QzBench::ThreadCpuNs();
        ours.Frame(f);
        const double ourCost = QzBench::ThreadCpuNs() - start;
        if (f < options.warmup)
            continue;
        peerNs.push_back(peerCost);
        ourNs.push_back(ourCost);
    }
    const double controls = static_cast<double>(windows) * kControlsPerWindow;
    const double peerPer = Median(peerNs) / controls;
    const double ourPer = Median(ourNs) / controls;
    std::printf("%6.0f controls | peer %7.1f ns/control (%6.3f ms, %ld vtx, %ld cmd) | QzGui %7.1f "
                "ns/control (%6.3f ms, %ld vtx, %ld cmd) | ratio %.3f\n",
                controls, peerPer, Median(peerNs) / 1e6, peer.Vertices(), peer.Commands(), ourPer,
                Median(ourNs) / 1e6, ours.Vertices(), ours.Commands(), ourPer / peerPer);
    std::fflush(stdout);
}

size_t HeapInUse()
{
    return mallinfo2().uordblks;
}

// Heap bytes of the library's screen with this many windows: dialogs, controls, records and
// captions, drawn on the null device so that the draw list's vertices do not count.
size_t ScreenHeap(int windows)
{
    WriteLayout(windows);
    Device device(true);
    const size_t before = HeapInUse();
    QzGuiSide ours(windows, device.Get(), device.Counts());
    for (int f = 0; f < 10; ++f)
        ours.Frame(f);
    return HeapInUse() - before;
}

// In a child process of its own, so that the peak resident size is the library's alone.
void ReportMemory(const Options& options)
{
    std::fflush(stdout);
    const pid_t child = fork();
    if (child != 0)
    {
        int status = 0;
        waitpid(child, &status, 0);
        return;
    }
    const size_t small = ScreenHeap(40);
    const size_t large = ScreenHeap(400);
    const double perControl = double(large - small) / double(360 * kControlsPerWindow);
    {
        WriteLayout(400);
        Device device(options.nullDevice);
        QzGuiSide ours(400, device.Get(), device.Counts());
        for (int f = 0; f < 10; ++f)
            ours.Frame(f);
    }
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("memory | %.0f heap bytes a control (20,000 vs 2,000 controls, short captions) | "
                "peak resident %.1f MB with the 20,000-control screen\n",
                perControl, usage.ru_maxrss / 1024.0);
    std::fflush(stdout);
    _exit(0);
}

} // namespace

int main(int argc, char** argv)
{
    const Options options = ParseOptions(argc, argv);
    QzPlatform::Host::SetTime(100000);
    QzBench::BenchDataRoot root("");
    CopyBundle();
    // The screen is skinned: without its sections the comparison would be of bare controls.
    for (const char* section : {"DialogSkin", "Button", "CheckBox", "SliderThumb", "Progress"})
    {
        if (TableDataSetQuery()->GetAni("ani/Control.ani", section))
            continue;
        std::fprintf(stderr, "the sample bundle has no section %s\n", section);
        return 1;
    }
    std::printf("peer comparison, %d frames after %d warm-up frames, device: %s\n", options.frames,
                options.warmup, options.nullDevice ? "null" : "draw list");
    if (options.windows != 0)
        CompareAt(options.windows, options);
    else
        for (int windows : {4, 40, 400})
            CompareAt(windows, options);
    if (!options.profile && options.windows == 0)
        ReportMemory(options);
    return 0;
}
