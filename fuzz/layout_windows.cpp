// A layout file's records applied to windows: the input is the layout file of a GUI manager
// whose host registers dialogs 1 to 3 (dialog 1 with the child dialog 4) and windows 1 to 3 in
// each. Whatever the file says about them (places, sizes, back types, offsets, tips, fly-ins,
// topmost and click flags, effects, groups, bitmaps), they are then drawn for some frames,
// hovered and clicked one by one, hidden and shown again, and drawn in debug mode.
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

const char* const kAni = "[Panel]\nFrameAmount=1\nFrame0=panel_64x48.png\n"
                         "[Button]\nFrameAmount=4\nFrame0=b_240x20.png 0 0 60 20\n"
                         "Frame1=b_240x20.png 60 0 60 20\nFrame2=b_240x20.png 120 0 60 20\n"
                         "Frame3=b_240x20.png 180 0 60 20\n"
                         "[Skin]\nFrameAmount=9\nFrame0=s_8x8.png\nFrame1=s_1x8.png\n"
                         "Frame2=s_8x8.png\nFrame3=s_8x1.png\nFrame4=s_1x1.png\n"
                         "Frame5=s_8x1.png\nFrame6=s_8x8.png\nFrame7=s_1x8.png\n"
                         "Frame8=s_8x8.png\n"
                         "[Fx]\nFrameAmount=2\nFrame0=fx_16x16.png\nFrame1=fx_16x16.png\n";

HWND g_hWnd = nullptr;
HMODULE g_hModule = nullptr;

// A window that draws its background, takes the capture on a press and notifies its dialog on
// the release, as a button does.
class CFuzzCtrl : public CQzBaseWindow
{
public:
    int GetWndType() override { return QzGui::QZ_WND_BUTTON; }
    BOOL OnCreate() override { return 1; }
    BOOL Show() override
    {
        DrawBack();
        DrawFrontEffect();
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
        if (GetParent())
            GetParent()->SendMessage(WM_COMMAND, GetId(), GetFullId());
        return 1;
    }
};

class CScreen
{
public:
    CScreen()
    {
        QzPlatform::Host::SetTime(100000);
        m_pMgr = static_cast<QzGui::CQzGuiMgr*>(QzGui::CreateGuiMgr());
        m_pMgr->Init(g_hModule, g_hWnd, 100, "Fuzz.ini");
        for (DWORD id = 1; id <= 3; ++id)
            AddDialog(id, nullptr);
        AddDialog(4, m_dialogs[0].get());
    }
    ~CScreen()
    {
        m_ctrls.clear();
        while (!m_dialogs.empty())
            m_dialogs.pop_back();
        m_pMgr->Release();
    }
    CScreen(const CScreen&) = delete;
    CScreen& operator=(const CScreen&) = delete;

    void Play();

private:
    void AddDialog(DWORD nId, CQzDialog* pParent)
    {
        m_dialogs.push_back(std::make_unique<CQzDialog>(nId, pParent));
        CQzDialog* pDialog = m_dialogs.back().get();
        for (DWORD c = 1; c <= 3; ++c)
        {
            m_ctrls.push_back(std::make_unique<CFuzzCtrl>());
            pDialog->AddCtrl(c, m_ctrls.back().get());
        }
        if (pParent)
            pParent->AddChildDialog(pDialog, true);
        else
            m_pMgr->AddDialog(pDialog, nullptr, true);
        pDialog->ShowWindow(SW_SHOW);
    }
    void Frames(int count)
    {
        for (int i = 0; i < count; ++i)
        {
            m_pMgr->Show();
            QzPlatform::Host::AdvanceTime(100);
        }
    }
    void Mouse(UINT message, const RECT& rc, WPARAM keys)
    {
        const LONG x = rc.left / 2 + rc.right / 2;
        const LONG y = rc.top / 2 + rc.bottom / 2;
        m_pMgr->OnMessage(message, keys,
                          MAKELPARAM(static_cast<WORD>(x & 0xFFFF), static_cast<WORD>(y & 0xFFFF)));
    }

    QzGui::CQzGuiMgr* m_pMgr = nullptr;
    std::vector<std::unique_ptr<CFuzzCtrl>> m_ctrls;
    std::vector<std::unique_ptr<CQzDialog>> m_dialogs;
};

void CScreen::Play()
{
    Frames(3);
    for (const auto& pCtrl : m_ctrls)
    {
        const RECT rc = pCtrl->GetWindowRect();
        Mouse(WM_MOUSEMOVE, rc, 0);
        Frames(2);
        Mouse(WM_LBUTTONDOWN, rc, MK_LBUTTON);
        Mouse(WM_MOUSEMOVE, {rc.left + 5, rc.top + 5, rc.right + 5, rc.bottom + 5}, MK_LBUTTON);
        Mouse(WM_LBUTTONUP, rc, 0);
    }
    for (const auto& pDialog : m_dialogs)
    {
        const RECT rc = pDialog->GetWindowRect();
        Mouse(WM_LBUTTONDOWN, rc, MK_LBUTTON);
        Mouse(WM_MOUSEMOVE, {rc.left + 9, rc.top + 9, rc.right + 9, rc.bottom + 9}, MK_LBUTTON);
        Mouse(WM_LBUTTONUP, rc, 0);
        pDialog->ShowWindow(SW_HIDE);
        Frames(3);
        pDialog->ShowWindow(SW_SHOW);
        Frames(3);
    }
    m_pMgr->SetDebugMode(1);
    Frames(2);
    m_pMgr->SetDebugMode(0);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    QzFuzz::Setup();
    QzFuzz::WriteFile("ani/Control.ani", kAni);
    QzFuzz::WriteFile("ini/AniGroup.ini", "[G]\nAmount=2\nSection_1=Button\nTop_1=3\nLeft_1=4\n"
                                          "Section_2=Panel\n");
    QzFuzz::WriteFile("ini/Gui3DEffect.ini", "Fx 100 50 10 20 1.5 0.5 30\n");
    QzFuzz::WriteFile("NoTemplates.dll", "not a module");
    g_hModule = LoadLibraryExA((QzFuzz::DataRoot() / "NoTemplates.dll").c_str(), nullptr,
                               LOAD_LIBRARY_AS_DATAFILE);
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
    QzFuzz::WriteFile("ini/Fuzz.ini", data, size);
    CScreen screen;
    screen.Play();
    return 0;
}
