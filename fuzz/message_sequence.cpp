// Random mouse and keyboard messages, frames, clock steps, dialogs shown and hidden and debug
// modes against a populated GUI manager: four top-level dialogs (one with two child dialogs,
// one that drags and flies, one topmost, one that stays in place when clicked), each with a few
// windows that take the capture on a press and notify their dialog on the release; one window
// hides its dialog when clicked, as a close button does. Everything is made again for every
// input. An input is a list of 6-byte steps: kind, a value, x and y (signed 16 bits each).
#include "FuzzSupport.h"

#include "framework/QzBaseWindow.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "platform/system/QzHost.h"
#include "platform/system/QzSystem.h"

#include <memory>
#include <vector>

namespace
{

using QzGui::CQzBaseWindow;
using QzGui::CQzDialog;

const char* const kLayout = "[0-1]\nx=50\ny=50\nw=400\nh=300\nStyle=1\nAniSection=Panel\n"
                            "BackShowMode=1\nTitle=One\n"
                            "[0-2]\nx=300\ny=200\nw=300\nh=200\nStyle=1\nFlyDir=1\n"
                            "FlyInStep=40\nFlyOutStep=40\nAniSection=Panel\nBackShowMode=3\n"
                            "[0-3]\nx=600\ny=0\nw=200\nh=150\nTopmost=1\n"
                            "[0-4]\nx=0\ny=400\nw=200\nh=150\nClickToTop=0\nStyle=1\n"
                            "[0-11]\nx=10\ny=30\nw=150\nh=100\nStyle=1\n"
                            "[0-12]\nx=200\ny=30\nw=150\nh=100\n"
                            "[1-21]\nx=10\ny=150\nw=60\nh=20\nAniSection=Button\n"
                            "TipText=first\\bsecond\n"
                            "[1-22]\nx=80\ny=150\nw=60\nh=20\n"
                            "[1-23]\nx=380\ny=5\nw=15\nh=15\n"
                            "[2-21]\nx=10\ny=10\nw=60\nh=20\nAniSection=Button\n"
                            "[2-22]\nx=10\ny=40\nw=60\nh=20\n"
                            "[2-23]\nx=280\ny=5\nw=15\nh=15\n"
                            "[3-21]\nx=10\ny=10\nw=60\nh=20\nTipText=tip\n"
                            "[4-21]\nx=10\ny=10\nw=60\nh=20\n"
                            "[11-21]\nx=5\ny=5\nw=60\nh=20\nAniSection=Button\n"
                            "[11-22]\nx=5\ny=40\nw=60\nh=20\n"
                            "[12-21]\nx=5\ny=5\nw=60\nh=20\n";
const char* const kAni = "[Panel]\nFrameAmount=1\nFrame0=panel.png\n"
                         "[Button]\nFrameAmount=4\nFrame0=b.png 0 0 60 20\n"
                         "Frame1=b.png 60 0 60 20\nFrame2=b.png 120 0 60 20\n"
                         "Frame3=b.png 180 0 60 20\n";
constexpr DWORD kCloseId = 23;
constexpr size_t kStepSize = 6;

HWND g_hWnd = nullptr;
// The host's resource module: a data file without dialog templates, so that a window without a
// record gets none generated (and the executable is not read as one every time).
HMODULE g_hModule = nullptr;

// A window that takes the capture on a press and notifies its dialog on the release; the one
// with the close id hides its dialog instead.
class CFuzzCtrl : public CQzBaseWindow
{
public:
    int GetWndType() override { return QzGui::QZ_WND_BUTTON; }
    BOOL OnCreate() override { return 1; }
    BOOL Show() override
    {
        DrawBack();
        return 1;
    }
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_LBUTTONDOWN && GetMgr())
            GetMgr()->SetCapture(this);
        if (message != WM_LBUTTONUP)
            return CQzBaseWindow::SendMessage(message, wParam, lParam);
        if (GetMgr() && GetMgr()->IsCapture(this))
            GetMgr()->ReleaseCapture();
        CQzBaseWindow* pParent = GetParent();
        if (!pParent)
            return 1;
        if (GetId() == kCloseId)
            pParent->ShowWindow(SW_HIDE);
        else
            pParent->SendMessage(WM_COMMAND, GetId(), GetFullId());
        return 1;
    }
};

// The manager with its dialogs and windows, in the order a host makes and ends them.
class CScreen
{
public:
    CScreen()
    {
        // The debugging tools may write into the layout file: every input starts from it.
        QzFuzz::WriteFile("ini/Fuzz.ini", kLayout);
        QzPlatform::Host::SetTime(100000);
        m_pMgr = static_cast<QzGui::CQzGuiMgr*>(QzGui::CreateGuiMgr());
        m_pMgr->Init(g_hModule, g_hWnd, 100, "Fuzz.ini");
        for (DWORD id = 1; id <= 4; ++id)
            AddDialog(id, nullptr);
        AddDialog(11, m_dialogs[0].get());
        AddDialog(12, m_dialogs[0].get());
    }
    ~CScreen()
    {
        m_ctrls.clear();
        while (!m_dialogs.empty())
            m_dialogs.pop_back(); // child dialogs first
        m_pMgr->Release();
    }
    CScreen(const CScreen&) = delete;
    CScreen& operator=(const CScreen&) = delete;

    void Step(const uint8_t* step);

private:
    void AddDialog(DWORD nId, CQzDialog* pParent)
    {
        m_dialogs.push_back(std::make_unique<CQzDialog>(nId, pParent));
        CQzDialog* pDialog = m_dialogs.back().get();
        const DWORD nCtrls = nId <= 2 ? 3 : nId == 11 ? 2 : 1;
        for (DWORD c = 0; c < nCtrls; ++c)
        {
            m_ctrls.push_back(std::make_unique<CFuzzCtrl>());
            pDialog->AddCtrl(21 + c, m_ctrls.back().get());
        }
        if (pParent)
            pParent->AddChildDialog(pDialog, true);
        else
            m_pMgr->AddDialog(pDialog, nullptr, true);
        pDialog->ShowWindow(SW_SHOW);
    }

    QzGui::CQzGuiMgr* m_pMgr = nullptr;
    std::vector<std::unique_ptr<CFuzzCtrl>> m_ctrls;
    std::vector<std::unique_ptr<CQzDialog>> m_dialogs;
};

void CScreen::Step(const uint8_t* step)
{
    static const UINT kMouse[] = {WM_MOUSEMOVE,     WM_LBUTTONDOWN, WM_LBUTTONUP,
                                  WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_RBUTTONUP,
                                  WM_MBUTTONDOWN,   WM_MBUTTONUP,   WM_MOUSEWHEEL};
    static const UINT kKeys[] = {WM_KEYDOWN, WM_KEYUP, WM_CHAR};
    const int kind = step[0] % 16;
    const uint8_t value = step[1];
    const auto x = static_cast<int16_t>(step[2] | (step[3] << 8));
    const auto y = static_cast<int16_t>(step[4] | (step[5] << 8));
    const LPARAM lParam = MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
    if (kind < 8)
        m_pMgr->OnMessage(kMouse[kind], value & (MK_LBUTTON | MK_RBUTTON | MK_SHIFT | MK_CONTROL),
                          lParam);
    else if (kind == 8)
        m_pMgr->OnMessage(WM_MOUSEWHEEL,
                          MAKEWPARAM(0, static_cast<WORD>(static_cast<int8_t>(value) * 40)),
                          lParam);
    else if (kind < 12)
        m_pMgr->OnMessage(kKeys[kind - 9], value, 1);
    else if (kind == 12)
    {
        m_pMgr->Show();
        QzPlatform::Host::AdvanceTime(16);
    }
    else if (kind == 13)
        QzPlatform::Host::AdvanceTime(value * 16u);
    else if (kind == 14)
    {
        CQzDialog* pDialog = m_dialogs[value % m_dialogs.size()].get();
        pDialog->ShowWindow(pDialog->IsWindowVisible() ? SW_HIDE : SW_SHOW);
    }
    else
        m_pMgr->SetDebugMode(value % 3);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "");
    QzFuzz::WriteFile("NoTemplates.dll", "not a module");
    g_hModule = LoadLibraryExA((QzFuzz::DataRoot() / "NoTemplates.dll").c_str(), nullptr,
                               LOAD_LIBRARY_AS_DATAFILE);
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.lpszClassName = L"QzFuzzHost";
    RegisterClassW(&wc);
    g_hWnd = CreateWindowExW(0, L"QzFuzzHost", L"fuzz", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                             1024, 768, nullptr, nullptr, nullptr, nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    CScreen screen;
    for (size_t offset = 0; offset + kStepSize <= size; offset += kStepSize)
        screen.Step(data + offset);
    return 0;
}
