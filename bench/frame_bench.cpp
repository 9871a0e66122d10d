// The manager's cost per frame with a full screen of windows: 40 dialogs of 50 controls each,
// every one with a record and an animation section, drawn through the null render device, plus
// one mouse move routed through OnMessage. One iteration is one frame; "ns_per_control" is the
// CPU time of a frame divided by the number of controls. ShowAndMouseMovePerFrame uses the
// simplest control (its background only); RealControlsPerFrame a mix of the library's controls
// with captions: buttons, check boxes, sliders, progress bars of the three styles and marquees.
#include "BenchSupport.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzProgress.h"
#include "controls/QzSlider.h"
#include "controls/QzWHLStatic.h"
#include "framework/QzBaseWindow.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "layout/QzGuiWndInfo.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace
{

using namespace QzBench;
using QzGui::CQzBaseWindow;
using QzGui::CQzDialog;
using QzGui::CQzGuiMgr;
using QzGui::CQzGuiWndInfo;

constexpr int kDialogs = 40;
constexpr int kCtrlsPerDialog = 50;
constexpr int kControls = kDialogs * kCtrlsPerDialog;
// Dialogs in 8 columns and 5 rows; controls in 5 columns and 10 rows inside each.
constexpr int kDialogColumns = 8;
constexpr int kDialogWidth = 128;
constexpr int kDialogHeight = 150;
constexpr int kCtrlColumns = 5;
constexpr int kCtrlWidth = 24;
constexpr int kCtrlHeight = 14;
const char* const kSection = "BenchBack";

// A control that draws its background, as the simplest real control does.
class CBenchCtrl : public CQzBaseWindow
{
public:
    int GetWndType() override { return QzGui::QZ_WND_BUTTON; }
    BOOL OnCreate() override { return 1; }
    BOOL Show() override
    {
        DrawBack();
        return 1;
    }
};

CQzGuiWndInfo* MakeRecord(int parent, int ctrl, int x, int y, int w, int h)
{
    auto* pRecord = new CQzGuiWndInfo;
    pRecord->SetParentId(parent);
    pRecord->SetCtrlId(ctrl);
    pRecord->SetX(static_cast<WORD>(x));
    pRecord->SetY(static_cast<WORD>(y));
    pRecord->SetWidth(static_cast<WORD>(w));
    pRecord->SetHeight(static_cast<WORD>(h));
    pRecord->SetAniSection(kSection);
    pRecord->AddFlags(QzGui::WNDINFO_FLAG_ANISECTION);
    return pRecord;
}

using CtrlFactory = std::function<std::unique_ptr<CQzBaseWindow>(int nIndex)>;

std::unique_ptr<CQzBaseWindow> MakeBenchCtrl(int)
{
    return std::make_unique<CBenchCtrl>();
}

// One of five real controls by the index, set up as a host would before creation.
std::unique_ptr<CQzBaseWindow> MakeRealCtrl(int nIndex)
{
    switch (nIndex % 5)
    {
    case 0:
    {
        auto pButton = std::make_unique<QzGui::CQzButton>();
        pButton->SetWindowText("OK");
        return pButton;
    }
    case 1:
    {
        auto pCheck = std::make_unique<QzGui::CQzCheck>();
        pCheck->SetWindowText("On");
        return pCheck;
    }
    case 2:
    {
        auto pSlider = std::make_unique<QzGui::CQzSlider>();
        pSlider->PreSetParam(100, 0);
        return pSlider;
    }
    case 3:
    {
        auto pBar = std::make_unique<QzGui::CQzProgress>();
        pBar->PreSetParam(0, 100, static_cast<BYTE>(nIndex % 3), 1, nullptr, 0, nullptr);
        pBar->SetValue(nIndex % 100);
        return pBar;
    }
    default:
    {
        auto pMarquee = std::make_unique<QzGui::CQzWHLStatic>();
        pMarquee->SetWindowText("news of the day");
        return pMarquee;
    }
    }
}

// The manager with every dialog and control registered, created and shown.
class BenchScreen
{
public:
    explicit BenchScreen(const CtrlFactory& makeCtrl) : m_makeCtrl(makeCtrl)
    {
        QzPlatform::SetRenderDevice(nullptr);
        m_hWnd = CreateHostWindow();
        m_pMgr = static_cast<CQzGuiMgr*>(QzGui::CreateGuiMgr());
        m_pMgr->SetScreenSize(kScreenWidth, kScreenHeight);
        m_pMgr->Init(GetModuleHandleA(nullptr), m_hWnd, 100, "Bench.ini");
        InsertRecords();
        for (int d = 0; d < kDialogs; ++d)
            AddDialog(static_cast<DWORD>(d + 1));
    }
    ~BenchScreen()
    {
        m_ctrls.clear();
        m_dialogs.clear();
        m_pMgr->Release();
        DestroyWindow(m_hWnd);
    }
    BenchScreen(const BenchScreen&) = delete;
    BenchScreen& operator=(const BenchScreen&) = delete;

    CQzGuiMgr* Mgr() { return m_pMgr; }

private:
    void InsertRecords()
    {
        QzGui::CQzGuiInfoMgr* pInfoMgr = m_pMgr->GetInfoMgr();
        for (int d = 0; d < kDialogs; ++d)
        {
            int x = (d % kDialogColumns) * kDialogWidth;
            int y = (d / kDialogColumns) * kDialogHeight;
            pInfoMgr->InsertRecord(MakeRecord(0, d + 1, x, y, kDialogWidth, kDialogHeight));
            for (int c = 0; c < kCtrlsPerDialog; ++c)
            {
                int cx = (c % kCtrlColumns) * kCtrlWidth;
                int cy = (c / kCtrlColumns) * kCtrlHeight;
                pInfoMgr->InsertRecord(
                    MakeRecord(d + 1, c + 1, cx, cy, kCtrlWidth - 2, kCtrlHeight - 2));
            }
        }
    }
    void AddDialog(DWORD nId)
    {
        m_dialogs.push_back(std::make_unique<CQzDialog>(nId, nullptr));
        CQzDialog* pDialog = m_dialogs.back().get();
        for (int c = 0; c < kCtrlsPerDialog; ++c)
        {
            m_ctrls.push_back(m_makeCtrl(c));
            pDialog->AddCtrl(static_cast<DWORD>(c + 1), m_ctrls.back().get());
        }
        m_pMgr->AddDialog(pDialog, nullptr, true);
        pDialog->ShowWindow(SW_SHOW);
    }

    CtrlFactory m_makeCtrl;
    HWND m_hWnd = nullptr;
    CQzGuiMgr* m_pMgr = nullptr;
    std::vector<std::unique_ptr<CQzBaseWindow>> m_ctrls;
    std::vector<std::unique_ptr<CQzDialog>> m_dialogs;
};

// Frames with the mouse wandering over the screen, so that hover and routing change dialogs
// and controls; the clock moves 16 ms a frame (tips, marquee steps).
void RunFrames(benchmark::State& state, const CtrlFactory& makeCtrl)
{
    QzPlatform::Host::SetTime(100000);
    BenchDataRoot root(std::string("[") + kSection +
                       "]\nFrameAmount=2\nFrame0=ui/back0.png\nFrame1=ui/back1.png\n");
    BenchScreen screen(makeCtrl);
    CQzGuiMgr* pMgr = screen.Mgr();
    int frame = 0;
    const double start = ThreadCpuNs();
    for (auto _ : state)
    {
        pMgr->Show();
        int x = (frame * 37) % kScreenWidth;
        int y = (frame * 23) % kScreenHeight;
        benchmark::DoNotOptimize(pMgr->OnMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, y)));
        QzPlatform::Host::AdvanceTime(16);
        ++frame;
    }
    const double frames = static_cast<double>(state.iterations());
    state.counters["ns_per_control"] = (ThreadCpuNs() - start) / frames / kControls;
}

void ShowAndMouseMovePerFrame(benchmark::State& state)
{
    RunFrames(state, MakeBenchCtrl);
}
BENCHMARK(ShowAndMouseMovePerFrame)->Unit(benchmark::kMicrosecond);

void RealControlsPerFrame(benchmark::State& state)
{
    RunFrames(state, MakeRealCtrl);
}
BENCHMARK(RealControlsPerFrame)->Unit(benchmark::kMicrosecond);

} // namespace
