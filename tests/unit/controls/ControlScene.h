// The host of the control tests: a temp data root whose section "Look" has one
// 10 x 10 frame per look state (img/f0.png .. img/f4.png) and "OneFrame" just the first, a manager
// on the harness's main window, dialog 300 at (100, 100)-(500, 400) that records its WM_COMMANDs
// and runs map handlers, and the extended records of an auto-built dialog 60 with a button 1, an
// image 2, statics 3 and 4 (type 20) and an edit record 5, which makes nothing.
#pragma once

#include "support/GuiScene.h"

#include "controls/QzCtrl.h"
#include "controls/QzStatic.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"
#include "layout/QzGuiWndInfo.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace ControlTest
{

using namespace QzGui;

constexpr DWORD kDialogId = 300;

// A WM_COMMAND as the dialog got it: code, control id, full id.
using Notice = std::tuple<int, int, LPARAM>;
inline Notice MakeNotice(WORD nCode, DWORD nId)
{
    return {nCode, static_cast<int>(nId), static_cast<LPARAM>(kDialogId | (nId << 16))};
}

class NoticeDialog : public CQzDialog
{
public:
    NoticeDialog() : CQzDialog(kDialogId, nullptr) {}
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_COMMAND)
            notices.emplace_back(HIWORD(wParam), LOWORD(wParam), lParam);
        return CQzDialog::WindowProc(message, wParam, lParam);
    }
    void OnClicked() { ++clicks; }

    std::vector<Notice> notices;
    int clicks = 0;
};

// The window that scroll buttons and sliders drive: it records every message
// sent to it.
using Sent = std::tuple<UINT, WPARAM, LPARAM>;
struct ScrollTarget : CQzStatic
{
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        got.emplace_back(message, wParam, lParam);
        return 1;
    }
    std::vector<Sent> got;
};

inline std::vector<std::string>& PlayedSounds()
{
    static std::vector<std::string> sounds;
    return sounds;
}

class ControlScene : public QzTest::GuiScene
{
protected:
    ControlScene()
        : GuiScene({{"ini/Test.ini", "[0-300]\nx=100\ny=100\nw=400\nh=300\n"},
                    {"ini/GUI_EX.ini", "[0-60]\ntype=1\nx=50\ny=50\nw=300\nh=200\n"
                                       "[60-1]\ntype=2\nx=10\ny=10\nw=80\nh=20\nAniSection=Look\n"
                                       "[60-2]\ntype=4\nx=10\ny=40\nw=80\nh=20\nAniSection=Look\n"
                                       "[60-3]\ntype=5\nx=10\ny=70\nw=80\nh=20\n"
                                       "[60-4]\ntype=20\nx=10\ny=100\nw=80\nh=20\n"
                                       "[60-5]\ntype=3\nx=10\ny=130\nw=80\nh=20\n"},
                    {"ani/Control.ani", "[Look]\nFrameAmount=5\nFrame0=img/f0.png\n"
                                        "Frame1=img/f1.png\nFrame2=img/f2.png\n"
                                        "Frame3=img/f3.png\nFrame4=img/f4.png\n"
                                        "[OneFrame]\nFrameAmount=1\nFrame0=img/f0.png\n"}})
    {
        for (int i = 0; i < 5; ++i)
            m_harness.Device().DefineTexture("img/f" + std::to_string(i) + ".png", 10, 10);
        PlayedSounds().clear();
        m_pMgr->SetSoundCallback([](const char* pszName, int, int, int, int, int)
                                 { PlayedSounds().push_back(pszName); });
    }
    ~ControlScene() override
    {
        if (m_pMgr->IsRegistered(&m_dialog))
            m_pMgr->RemoveDialog(&m_dialog);
        m_ctrls.clear();
    }

    // A control of the dialog with a record drawing "Look"; created when the
    // dialog opens (or at once when it is open).
    template <typename T> T* AddCtrl(DWORD nId, RECT rc, Extras extras = {})
    {
        m_pRecord = AddRecord(kDialogId, nId, rc, extras);
        m_pRecord->SetAniSection("Look");
        m_pRecord->AddFlags(WNDINFO_FLAG_ANISECTION);
        m_ctrls.push_back(std::make_unique<T>());
        T* pCtrl = static_cast<T*>(m_ctrls.back().get());
        m_dialog.AddCtrl(nId, pCtrl);
        if (m_pMgr->IsRegistered(&m_dialog))
            m_dialog.CreateCtrl(pCtrl, TRUE);
        return pCtrl;
    }

    // Registers and shows the dialog, then forgets its open sound.
    void Open()
    {
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
        m_dialog.ShowWindow(SW_SHOW);
        PlayedSounds().clear();
    }

    // One frame on a cleared device; the frames (textures) it drew, in order.
    std::vector<std::string> Frame()
    {
        m_harness.Device().Clear();
        m_harness.Frame([this] { m_pMgr->Show(); });
        std::vector<std::string> paths;
        for (const QzTest::DrawCall& call : Calls(QzTest::DrawKind::Texture))
            paths.push_back(call.texturePath);
        return paths;
    }
    // The last frame drawn in a new frame, or "".
    std::string Look()
    {
        const std::vector<std::string> paths = Frame();
        return paths.empty() ? "" : paths.back();
    }
    std::vector<QzTest::DrawCall> Texts() { return Calls(QzTest::DrawKind::Text); }

    NoticeDialog m_dialog;
    CQzGuiWndInfo* m_pRecord = nullptr; // of the last AddCtrl
    std::vector<std::unique_ptr<CQzCtrl>> m_ctrls;
};

} // namespace ControlTest
