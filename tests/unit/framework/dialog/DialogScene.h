// A GUI scene whose records are inserted straight into its layout manager, and small windows
// that write down what reaches them.
#pragma once

#include "support/GuiScene.h"

#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace DialogTest
{

using namespace QzGui;

inline int CountOf(const std::vector<UINT>& messages, UINT message)
{
    return static_cast<int>(std::count(messages.begin(), messages.end(), message));
}

// A control of the given type; a button answers clicks and sends WM_COMMAND 0 to its dialog on
// the button-up, as the real one does.
class SpyCtrl : public CQzBaseWindow
{
public:
    explicit SpyCtrl(int nType = QZ_WND_BUTTON) : m_nType(nType) {}
    int GetWndType() override { return m_nType; }
    BOOL OnCreate() override
    {
        ++nCreated;
        return 1;
    }
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        messages.push_back(message);
        if (message == WM_MOUSEMOVE)
            m_bMouseIn = true;
        if (message == WM_LBUTTONUP && m_nType == QZ_WND_BUTTON && GetParent())
            GetParent()->SendMessage(WM_COMMAND, MakeNotifyWParam(QZ_BN_CLICKED, GetId()),
                                     GetFullId());
        return 1;
    }
    BOOL Show() override
    {
        ++nShown;
        if (onShow)
            onShow();
        return CQzBaseWindow::Show();
    }
    int Count(UINT message) const { return CountOf(messages, message); }

    int nCreated = 0;
    int nShown = 0;
    std::function<void()> onShow;
    std::vector<UINT> messages;

private:
    int m_nType;
};

// A dialog that writes down its messages and the steps of its frame.
class SpyDialog : public CQzDialog
{
public:
    using CQzDialog::CQzDialog;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        messages.push_back(message);
        if (pJournal)
            pJournal->emplace_back(GetId(), message);
        return CQzDialog::WindowProc(message, wParam, lParam);
    }
    void OnLButtonDown(UINT, POINT) override { steps.push_back("ldown"); }
    void OnLButtonUp(UINT, POINT) override { steps.push_back("lup"); }
    void OnTimer(DWORD) override { steps.push_back("timer"); }
    void DrawBack() override { steps.push_back("back"); }
    void DrawBackEffect() override { steps.push_back("back effect"); }
    void DrawCtrls() override
    {
        steps.push_back("controls");
        CQzDialog::DrawCtrls();
    }
    void DrawChildDialogs() override
    {
        steps.push_back("child dialogs");
        CQzDialog::DrawChildDialogs();
    }
    void DrawFrontEffect() override { steps.push_back("front effect"); }
    void UpdateEffects() override { steps.push_back("update effects"); }
    void OnAfterDraw() override { steps.push_back("after draw"); }
    void OnClicked() { steps.push_back("clicked"); }
    int Count(UINT message) const { return CountOf(messages, message); }

    std::vector<UINT> messages;
    std::vector<std::string> steps;
    // Messages of several dialogs in the order they came: (dialog id, message).
    std::vector<std::pair<DWORD, UINT>>* pJournal = nullptr;
};

using DialogScene = QzTest::GuiScene;

} // namespace DialogTest
