// The host of the extended edit box tests: dialog 300 at (100, 100)-(500, 400) that records
// its WM_NOTIFYs, boxes set up in the usual order (PreSetParam before the dialog is
// registered), the main window holding the keyboard focus so that keys and the input method's
// text reach the manager, and an icon for the emotion code "#05" (section Emotion_05).
// The default cell is 6 x 12: lines are 16 pixels apart.
#pragma once

#include "support/GuiScene.h"

#include "framework/QzDialog.h"
#include "platform/system/host/QzHost.h"
#include "textinput/QzEditEx.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace EditExTest
{

using namespace QzGui;

constexpr DWORD kDialogId = 300;

// "中" and "文" in code page 936.
inline const std::string kZhong = "\xD6\xD0";
inline const std::string kWen = "\xCE\xC4";

class NotifyDialog : public CQzDialog
{
public:
    NotifyDialog() : CQzDialog(kDialogId, nullptr) {}
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_NOTIFY)
            notices.push_back({message, wParam, lParam});
        return CQzDialog::WindowProc(message, wParam, lParam);
    }
    std::vector<QzTest::Seen> notices;
};

class EditExScene : public QzTest::GuiScene
{
protected:
    EditExScene()
        : GuiScene({{"ini/Test.ini", "[0-300]\nx=100\ny=100\nw=400\nh=300\n"},
                    {"ani/Control.ani", "[Emotion_05]\nFrameAmount=1\nFrame0=img/e05.png\n"}})
    {
        m_harness.Device().DefineTexture("img/e05.png", 20, 20);
        ::SetFocus(m_harness.MainWindow());
    }
    ~EditExScene() override
    {
        if (m_pMgr->IsRegistered(&m_dialog))
            m_pMgr->RemoveDialog(&m_dialog);
        m_boxes.clear();
    }

    // A box of the dialog at rc (relative to the dialog), set up before it is created.
    CQzEditEx* AddBox(DWORD nId, RECT rc, bool bMultiLine)
    {
        AddRecord(kDialogId, nId, rc);
        m_boxes.push_back(std::make_unique<CQzEditEx>());
        CQzEditEx* pBox = m_boxes.back().get();
        pBox->PreSetParam(bMultiLine, 0, 0xFFFFFF00);
        m_dialog.AddCtrl(nId, pBox);
        if (m_pMgr->IsRegistered(&m_dialog))
            m_dialog.CreateCtrl(pBox, TRUE);
        return pBox;
    }
    // A box at (110, 110) ten columns wide, focused by a click: single-line 60 x 20 (id 1), or
    // multi-line 60 x 48, three lines (id 2).
    CQzEditEx* OpenSingle() { return Open(AddBox(1, {10, 10, 70, 30}, false)); }
    CQzEditEx* OpenMulti() { return Open(AddBox(2, {10, 10, 70, 58}, true)); }
    CQzEditEx* Open(CQzEditEx* pBox)
    {
        m_pMgr->AddDialog(&m_dialog, nullptr, false);
        m_dialog.ShowWindow(SW_SHOW);
        m_harness.Click(112, 115);
        return pBox;
    }

    // Bytes of the code page typed as the host's window gets them, one WM_CHAR a byte.
    void TypeBytes(const std::string& bytes)
    {
        for (char ch : bytes)
            m_pMgr->OnMessage(WM_CHAR, static_cast<BYTE>(ch), 1);
    }
    // A key with Ctrl or Shift held.
    void WithKey(int vkHeld, const std::function<void()>& input)
    {
        m_harness.KeyDown(vkHeld);
        input();
        m_harness.KeyUp(vkHeld);
    }
    static std::string TextOf(CQzEditEx* pBox) { return pBox->GetWindowText(); }
    static std::pair<int, int> SelOf(CQzEditEx* pBox)
    {
        int nAnchor = 0;
        int nCaret = 0;
        pBox->GetSel(&nAnchor, &nCaret);
        return {nAnchor, nCaret};
    }

    static void PutClipboard(const std::string& text)
    {
        ASSERT_TRUE(::OpenClipboard(nullptr));
        ::EmptyClipboard();
        HGLOBAL hData = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        std::memcpy(::GlobalLock(hData), text.c_str(), text.size() + 1);
        ::GlobalUnlock(hData);
        ::SetClipboardData(CF_TEXT, hData);
        ::CloseClipboard();
    }
    // One frame on a cleared device.
    void DrawFrame()
    {
        m_harness.Device().Clear();
        Frame();
    }
    // The texts of the last frame, as "x,y:text".
    std::vector<std::string> Texts()
    {
        std::vector<std::string> texts;
        for (const QzTest::DrawCall& call : Calls(QzTest::DrawKind::Text))
            texts.push_back(std::to_string(call.x1) + "," + std::to_string(call.y1) + ":" +
                            call.text);
        return texts;
    }

    NotifyDialog m_dialog;
    std::vector<std::unique_ptr<CQzEditEx>> m_boxes;
};

} // namespace EditExTest
