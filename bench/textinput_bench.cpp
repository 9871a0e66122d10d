// What a focused multi-line edit box of 1,000 characters with emotion codes costs a frame, and
// what typing one character into it costs: for the extended edit box, which keeps and lays out
// its own text, and for the edit box bound to the system edit window, which reads its text
// back every frame. "Frame" benchmarks draw one frame of the manager with the box focused and
// its caret at the end; "Type" benchmarks send one character (and take it back with
// Backspace, so the text stays at 1,000 characters) and draw the frame that shows it.
#include "BenchSupport.h"

#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "layout/QzGuiWndInfo.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/QzSystem.h"
#include "platform/system/host/QzHost.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditEx.h"
#include "textinput/QzEditSingle.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace
{

using namespace QzBench;
using namespace QzGui;

constexpr DWORD kDialogId = 1;
constexpr DWORD kEditId = 10;
constexpr int kTextLength = 1000;

// The box's back and the emotion icons' sections.
const char* const kAniText = "[Back]\nFrameAmount=1\nFrame0=ui/back.png\n"
                             "[Emotion_01]\nFrameAmount=1\nFrame0=ui/e1.png\n"
                             "[Emotion_02_03]\nFrameAmount=1\nFrame0=ui/e2.png\n";

CQzGuiWndInfo* MakeRecord(DWORD parent, DWORD ctrl, RECT rc)
{
    auto* pRecord = new CQzGuiWndInfo;
    pRecord->SetParentId(static_cast<int>(parent));
    pRecord->SetCtrlId(static_cast<int>(ctrl));
    pRecord->SetX(static_cast<WORD>(rc.left));
    pRecord->SetY(static_cast<WORD>(rc.top));
    pRecord->SetWidth(static_cast<WORD>(rc.right - rc.left));
    pRecord->SetHeight(static_cast<WORD>(rc.bottom - rc.top));
    pRecord->SetCtrlType(QZ_WND_EDIT);
    pRecord->SetAniSection("Back");
    pRecord->AddFlags(WNDINFO_FLAG_ANISECTION);
    return pRecord;
}

LRESULT CALLBACK HostProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

// The manager of one host window, which passes its messages to the manager as a game does.
class BenchScreen
{
public:
    explicit BenchScreen(CQzCtrl* pEdit)
    {
        m_hWnd = CreateHostWindow(HostProc, L"QzTextBenchHost");
        m_pMgr = static_cast<CQzGuiMgr*>(CreateGuiMgr());
        s_pMgr = m_pMgr;
        m_pMgr->SetScreenSize(kScreenWidth, kScreenHeight);
        m_pMgr->Init(GetModuleHandleA(nullptr), m_hWnd, 100, "Bench.ini");
        CQzGuiInfoMgr* pInfoMgr = m_pMgr->GetInfoMgr();
        pInfoMgr->InsertRecord(MakeRecord(0, kDialogId, {0, 0, kScreenWidth, kScreenHeight}));
        pInfoMgr->InsertRecord(MakeRecord(kDialogId, kEditId, {100, 100, 500, 400}));
        m_pDialog = std::make_unique<CQzDialog>(kDialogId, nullptr);
        m_pDialog->AddCtrl(kEditId, pEdit);
        m_pMgr->AddDialog(m_pDialog.get(), nullptr, true);
        m_pDialog->ShowWindow(SW_SHOW);
    }
    ~BenchScreen()
    {
        m_pMgr->RemoveDialog(m_pDialog.get());
        m_pDialog.reset();
        m_pMgr->Release();
        s_pMgr = nullptr;
        DestroyWindow(m_hWnd);
    }
    BenchScreen(const BenchScreen&) = delete;
    BenchScreen& operator=(const BenchScreen&) = delete;

    // Posts a character to the focus window (the host window, or the system edit window that
    // the bound box uses), dispatches the queue and draws a frame.
    void Type(wchar_t ch)
    {
        HWND hFocus = GetFocus() ? GetFocus() : m_hWnd;
        PostMessageW(hFocus, WM_CHAR, ch, 1);
        Frame();
    }
    void Frame()
    {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&msg);
        m_pMgr->Show();
        QzPlatform::Host::AdvanceTime(16);
    }
    HWND Window() const { return m_hWnd; }

    static CQzGuiMgr* s_pMgr;

private:
    HWND m_hWnd = nullptr;
    CQzGuiMgr* m_pMgr = nullptr;
    std::unique_ptr<CQzDialog> m_pDialog;
};

CQzGuiMgr* BenchScreen::s_pMgr = nullptr;

LRESULT CALLBACK HostProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (BenchScreen::s_pMgr && BenchScreen::s_pMgr->OnMessage(message, wParam, lParam))
        return 0;
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

// 1,000 characters: words, line breaks and an emotion code every few words.
std::string SampleText()
{
    std::string text;
    for (int i = 0; text.size() < kTextLength; ++i)
    {
        text += i % 5 == 4 ? "#02|03 " : "word ";
        if (i % 12 == 11)
            text += "\r\n";
    }
    text.resize(kTextLength);
    return text;
}

struct EditExScene
{
    EditExScene()
    {
        edit.PreSetParam(true, 0, 0xFFFFFFFF);
        edit.SetMaxText(4 * kTextLength);
        screen = std::make_unique<BenchScreen>(&edit);
        edit.SetWindowText(SampleText().c_str());
        edit.SetFocus();
        edit.SetCaret(edit.GetTextLength() - 1);
        screen->Frame();
    }
    CQzEditEx edit;
    std::unique_ptr<BenchScreen> screen;
};

struct EditScene
{
    EditScene()
    {
        edit.PreSetParam(true, 0, 0xFFFFFFFF, true);
        edit.SetLimitText(4 * kTextLength);
        screen = std::make_unique<BenchScreen>(&edit);
        edit.SetFocus();
        edit.SetWindowText(SampleText().c_str());
        edit.SetSel(kTextLength, kTextLength, FALSE);
        screen->Frame();
    }
    CQzEdit edit;
    std::unique_ptr<BenchScreen> screen;
};

template <typename Scene> void FocusedFrame(benchmark::State& state)
{
    QzPlatform::SetRenderDevice(nullptr);
    QzPlatform::Host::SetTime(100000);
    BenchDataRoot root(kAniText, {{"ini/font.ini", "SimSun 12\n"}});
    Scene scene;
    for (auto _ : state)
        scene.screen->Frame();
}

template <typename Scene> void TypeOneCharacter(benchmark::State& state)
{
    QzPlatform::SetRenderDevice(nullptr);
    QzPlatform::Host::SetTime(100000);
    BenchDataRoot root(kAniText, {{"ini/font.ini", "SimSun 12\n"}});
    Scene scene;
    for (auto _ : state)
    {
        scene.screen->Type(L'x');
        scene.screen->Type(VK_BACK);
    }
    state.counters["per_character"] =
        benchmark::Counter(2.0 * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK_TEMPLATE(FocusedFrame, EditExScene)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(TypeOneCharacter, EditExScene)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(FocusedFrame, EditScene)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(TypeOneCharacter, EditScene)->Unit(benchmark::kMicrosecond);

} // namespace
