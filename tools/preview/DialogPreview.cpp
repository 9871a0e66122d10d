#include "DialogPreview.h"

#include "CCairoDevice.h"
#include "platform/render/IRenderDevice.h"
#include "platform/system/host/QzHost.h"

namespace QzPreview
{

namespace
{

const wchar_t* const kClassName = L"QzGuiPreviewHost";
// Where the manual clock starts: far from 0, as on a machine that has been running.
constexpr DWORD kStartTime = 100000;

} // namespace

CDialogPreview::CDialogPreview(int nWidth, int nHeight)
    : m_nWidth(nWidth), m_nHeight(nHeight),
      m_pDevice(std::make_unique<QzPlatform::CCairoDevice>(nWidth, nHeight))
{
    QzPlatform::SetRenderDevice(m_pDevice.get());
    QzPlatform::Host::SetTime(kStartTime);
}

// As a game ends: the dialog leaves the manager, the dialog and its controls are deleted,
// then the manager is released.
CDialogPreview::~CDialogPreview()
{
    if (m_pGuiMgr && m_pDialog)
        m_pGuiMgr->RemoveDialog(m_pDialog.get());
    m_pDialog.reset();
    m_ctrls.Clear();
    if (m_pGuiMgr)
        m_pGuiMgr->Release();
    // The window procedure sees WM_DESTROY and must find no manager.
    m_pGuiMgr = nullptr;
    if (m_hWnd)
        DestroyWindow(m_hWnd);
    QzPlatform::SetRenderDevice(nullptr);
    QzPlatform::Host::UseRealClock();
}

bool CDialogPreview::CreateHostWindow()
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = &CDialogPreview::WindowProc;
    wc.lpszClassName = kClassName;
    // A second preview in the same process finds the class registered already.
    RegisterClassW(&wc);
    m_hWnd = CreateWindowExW(0, kClassName, L"QzGui preview", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                             0, m_nWidth, m_nHeight, nullptr, nullptr, nullptr, nullptr);
    if (!m_hWnd)
        return false;
    SetWindowLongPtrW(m_hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return true;
}

bool CDialogPreview::Open(const std::string& layoutFile, const CPreviewLayout& layout,
                          DWORD nDialogId, std::string& error)
{
    if (!CreateHostWindow())
    {
        error = "cannot create the main window";
        return false;
    }
    m_pGuiMgr = QzGui::CreateGuiMgr();
    if (!m_pGuiMgr || !m_pGuiMgr->Init(GetModuleHandleA(nullptr), m_hWnd,
                                       static_cast<int>(nDialogId), layoutFile.c_str()))
    {
        error = "cannot start the GUI manager";
        return false;
    }
    // A section without "w" or "h" gives no record; the manager has logged it.
    if (!m_pGuiMgr->GetWndInfo(0, nDialogId))
    {
        error = "ini/" + layoutFile + ": dialog " + std::to_string(nDialogId) +
                " has no usable record (it needs w and h)";
        return false;
    }
    m_pDialog = std::make_unique<QzGui::CQzDialog>(nDialogId, nullptr);
    AddCtrls(layout, nDialogId);
    m_pGuiMgr->AddDialog(m_pDialog.get(), nullptr, true);
    m_ctrls.Start();
    // A dialog that flies in is shown where it lands.
    m_pDialog->SetFlyDir(0);
    m_pDialog->ShowWindow(SW_SHOW);
    return true;
}

// Controls whose record the manager does not hold (a section without "w" or "h") are left
// out: the manager has logged the section.
void CDialogPreview::AddCtrls(const CPreviewLayout& layout, DWORD nDialogId)
{
    for (const PreviewCtrlRecord& ctrl : layout.GetCtrls(nDialogId))
    {
        if (const QzGui::IQzGuiWndInfo* pInfo = m_pGuiMgr->GetWndInfo(nDialogId, ctrl.nId))
            m_ctrls.Add(*m_pDialog, ctrl, *pInfo);
    }
}

LRESULT CALLBACK CDialogPreview::WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* preview = reinterpret_cast<CDialogPreview*>(GetWindowLongPtrW(hWnd, GWLP_USERDATA));
    if (preview && preview->m_pGuiMgr && preview->m_pGuiMgr->OnMessage(message, wParam, lParam))
        return 0;
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

void CDialogPreview::RunFrames(int nFrames)
{
    for (int i = 0; i < nFrames; ++i)
    {
        QzPlatform::Host::AdvanceTime(kFrameMs);
        RunFrame();
    }
}

void CDialogPreview::RunFrame()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&msg);
    m_pDevice->BeginFrame();
    if (m_pGuiMgr)
        m_pGuiMgr->Show();
    m_pDevice->EndFrame();
}

bool CDialogPreview::SavePng(const std::string& path)
{
    return m_pDevice->SavePng(path);
}

} // namespace QzPreview
