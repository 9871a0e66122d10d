// A minimal game client around one dialog: a hosted main window, the cairo device, a GUI
// manager on the bundle's layout file (the current directory is the bundle), and a plain
// dialog holding one control per record of the dialog. Frames run on the manual clock.
#pragma once

#include "PreviewCtrls.h"
#include "PreviewLayout.h"

#include "framework/IQzGuiMgr.h"
#include "framework/QzDialog.h"

#include <memory>
#include <string>

namespace QzPlatform
{
class CCairoDevice;
}

namespace QzPreview
{

class CDialogPreview
{
public:
    static constexpr DWORD kFrameMs = 16;

    CDialogPreview(int nWidth, int nHeight);
    ~CDialogPreview();
    CDialogPreview(const CDialogPreview&) = delete;
    CDialogPreview& operator=(const CDialogPreview&) = delete;

    // Loads the layout file (a name under ini/) and shows the dialog with the controls the
    // layout gives it. False with a one-line reason when the manager cannot start or the
    // layout keeps no usable record of the dialog.
    bool Open(const std::string& layoutFile, const CPreviewLayout& layout, DWORD nDialogId,
              std::string& error);
    // Each frame advances the clock by kFrameMs, dispatches the posted messages and draws.
    void RunFrames(int nFrames);
    bool SavePng(const std::string& path);

    size_t GetCtrlCount() const { return m_ctrls.Count(); }

private:
    static LRESULT CALLBACK WindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    bool CreateHostWindow();
    void AddCtrls(const CPreviewLayout& layout, DWORD nDialogId);
    void RunFrame();

    int m_nWidth;
    int m_nHeight;
    std::unique_ptr<QzPlatform::CCairoDevice> m_pDevice;
    HWND m_hWnd = nullptr;
    QzGui::IQzGuiMgr* m_pGuiMgr = nullptr;
    std::unique_ptr<QzGui::CQzDialog> m_pDialog;
    CPreviewCtrls m_ctrls;
};

} // namespace QzPreview
