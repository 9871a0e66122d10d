#include "QzGuiSide.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzProgress.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "platform/system/host/QzHost.h"

#include <cstdio>

namespace PeerBench
{

namespace
{

const char* const kLayoutFile = "Peer.ini";
const wchar_t* const kHostClass = L"QzPeerHost";

// Skin of each kind of control (a section of ani/Control.ani) and its height.
struct KindLook
{
    const char* section;
    int height;
};
const KindLook kLooks[kKinds] = {
    {"Button", 20},      {"CheckBox", 20}, {nullptr, 18},
    {"SliderThumb", 20}, {"Progress", 16}, {nullptr, 20},
};

HWND CreatePeerHostWindow()
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.lpszClassName = kHostClass;
    RegisterClassW(&wc);
    return CreateWindowExW(0, kHostClass, L"peer", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                           kScreenWidth, kScreenHeight, nullptr, nullptr, nullptr, nullptr);
}

void AppendKey(std::string& text, const char* key, int value)
{
    text += key;
    text += '=';
    text += std::to_string(value);
    text += '\n';
}

} // namespace

std::string QzGuiSide::LayoutText(int windows)
{
    std::string text;
    for (int w = 0; w < windows; ++w)
    {
        const int id = w + 1;
        text += "[0-" + std::to_string(id) + "]\n";
        AppendKey(text, "x", static_cast<int>(WindowX(w, kWindowWidth)));
        AppendKey(text, "y", static_cast<int>(WindowY(w, kWindowHeight)));
        AppendKey(text, "w", kWindowWidth);
        AppendKey(text, "h", kWindowHeight);
        text += "AniSection=DialogSkin\nBackShowMode=3\nTitle=Dialog " + std::to_string(w) + "\n";
        for (int i = 0; i < kControlsPerWindow; ++i)
        {
            const KindLook& look = kLooks[KindOf(i)];
            text += "[" + std::to_string(id) + "-" + std::to_string(i + 1) + "]\n";
            AppendKey(text, "x", 8 + (i % kColumns) * kColumnWidth);
            AppendKey(text, "y", kTitleHeight + (i / kColumns) * kRowHeight);
            AppendKey(text, "w", kItemWidth);
            AppendKey(text, "h", look.height);
            if (look.section)
                text += std::string("AniSection=") + look.section + "\n";
        }
    }
    return text;
}

QzGuiSide::QzGuiSide(int windows, QzPlatform::IRenderDevice& device, Counts counts)
    : m_device(device), m_counts(std::move(counts))
{
    QzPlatform::SetRenderDevice(&m_device);
    m_hWnd = CreatePeerHostWindow();
    m_pMgr = static_cast<QzGui::CQzGuiMgr*>(QzGui::CreateGuiMgr());
    m_pMgr->SetScreenSize(kScreenWidth, kScreenHeight);
    m_pMgr->Init(GetModuleHandleA(nullptr), m_hWnd, 100, kLayoutFile);
    for (int w = 0; w < windows; ++w)
        AddWindow(w);
}

QzGuiSide::~QzGuiSide()
{
    m_controls.clear();
    m_dialogs.clear();
    m_pMgr->Release();
    DestroyWindow(m_hWnd);
    QzPlatform::SetRenderDevice(nullptr);
}

std::unique_ptr<QzGui::CQzBaseWindow> QzGuiSide::MakeControl(int index)
{
    switch (KindOf(index))
    {
    case kButton:
    {
        auto pButton = std::make_unique<QzGui::CQzButton>();
        pButton->SetWindowText("Button");
        return pButton;
    }
    case kCheck:
    {
        auto pCheck = std::make_unique<QzGui::CQzCheck>();
        pCheck->SetWindowText("Check");
        return pCheck;
    }
    case kLabel:
    {
        auto pLabel = std::make_unique<QzGui::CQzStatic>();
        m_labels.push_back(pLabel.get());
        return pLabel;
    }
    case kSlider:
    {
        auto pSlider = std::make_unique<QzGui::CQzSlider>();
        pSlider->PreSetParam(100, 0);
        return pSlider;
    }
    case kProgress:
    {
        auto pBar = std::make_unique<QzGui::CQzProgress>();
        pBar->PreSetParam(0, 100, 0, 1, nullptr, 0, nullptr);
        m_bars.push_back(pBar.get());
        return pBar;
    }
    default:
    {
        auto pRow = std::make_unique<QzGui::CQzButton>();
        pRow->SetWindowText("Select");
        return pRow;
    }
    }
}

void QzGuiSide::AddWindow(int w)
{
    m_dialogs.push_back(std::make_unique<QzGui::CQzDialog>(static_cast<DWORD>(w + 1), nullptr));
    QzGui::CQzDialog* pDialog = m_dialogs.back().get();
    for (int i = 0; i < kControlsPerWindow; ++i)
    {
        m_controls.push_back(MakeControl(i));
        pDialog->AddCtrl(static_cast<DWORD>(i + 1), m_controls.back().get());
    }
    m_pMgr->AddDialog(pDialog, nullptr, true);
    pDialog->ShowWindow(SW_SHOW);
}

void QzGuiSide::Frame(int frame)
{
    // Labels are the third control of each group of six: index 2 + 6k of their window.
    for (size_t n = 0; n < m_labels.size(); ++n)
    {
        const int index = static_cast<int>(n % 8) * kKinds + kLabel;
        char text[32];
        std::snprintf(text, sizeof text, "Lbl %d:%d", index, (frame + index) & 255);
        m_labels[n]->SetWindowText(text);
    }
    for (size_t n = 0; n < m_bars.size(); ++n)
        m_bars[n]->SetValue(ProgressValue(frame, static_cast<int>(n % 8) * kKinds + kProgress));
    const int x = static_cast<int>(MouseX(frame));
    const int y = static_cast<int>(MouseY(frame));
    m_pMgr->OnMessage(WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    m_device.BeginFrame();
    m_pMgr->Show();
    m_device.EndFrame();
    QzPlatform::Host::AdvanceTime(16);
}

} // namespace PeerBench
