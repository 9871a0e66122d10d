// The demo client's busiest screen at 1920x1080: every window of the sample layout open at once
// (the showcase, the back types, the fly-in and topmost windows, the controls, the panel, the
// collections and the login), the mouse moving over them. One iteration is one frame of the
// client: its messages, the manager's Show and the device's whole frame (for cairo: the pixels
// of the screen; for the draw list: its vertices, indices and commands).
#include "DemoHost.h"

#include "framework/QzDialog.h"
#include "platform/system/host/QzHost.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <initializer_list>

namespace
{

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

class ScopedBundleDir
{
public:
    ScopedBundleDir() : m_previous(std::filesystem::current_path())
    {
        std::filesystem::current_path(QZGUI_DEMO_BUNDLE);
    }
    ~ScopedBundleDir()
    {
        std::error_code ignored;
        std::filesystem::current_path(m_previous, ignored);
    }
    ScopedBundleDir(const ScopedBundleDir&) = delete;
    ScopedBundleDir& operator=(const ScopedBundleDir&) = delete;

private:
    std::filesystem::path m_previous;
};

void OpenEveryWindow(QzGui::IQzGuiMgr* pMgr)
{
    for (DWORD nId : {100u, 201u, 202u, 203u, 204u, 205u, 206u, 300u, 400u, 500u, 600u, 700u, 800u})
    {
        if (QzGui::CQzDialog* pDialog = pMgr->FindDialog(nId))
            pDialog->ShowWindow(SW_SHOW);
    }
}

void BusiestScreen(benchmark::State& state, DemoRenderer renderer)
{
    ScopedBundleDir bundle;
    CDemoHost host(kWidth, kHeight, renderer);
    host.UseManualClock();
    if (!host.Create(false))
    {
        state.SkipWithError("the demo client could not be created");
        return;
    }
    OpenEveryWindow(host.GetGuiMgr());
    for (int warm = 0; warm < 10; ++warm)
        host.RunFrame();
    int frame = 0;
    for (auto _ : state)
    {
        const int x = 100 + (frame * 37) % (kWidth - 200);
        const int y = 100 + (frame * 23) % (kHeight - 200);
        PostMessageA(host.GetWindow(), WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
        host.RunFrame();
        QzPlatform::Host::AdvanceTime(16);
        ++frame;
    }
}

void CairoDevice(benchmark::State& state)
{
    BusiestScreen(state, DemoRenderer::Cairo);
}
BENCHMARK(CairoDevice)->Unit(benchmark::kMillisecond);

void DrawListDevice(benchmark::State& state)
{
    BusiestScreen(state, DemoRenderer::DrawList);
}
BENCHMARK(DrawListDevice)->Unit(benchmark::kMillisecond);

} // namespace
