// A GUI manager on the harness's main window, with records inserted straight into its layout
// manager, and small windows that write down what reaches them.
#pragma once

#include "support/QzHarness.h"

#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"
#include "layout/QzGuiInfoMgr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
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
    int Count(UINT message) const { return CountOf(messages, message); }

    int nCreated = 0;
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

class DialogScene : public ::testing::Test
{
protected:
    using Extras = std::initializer_list<std::pair<const char*, const char*>>;

    DialogScene()
    {
        m_pMgr = static_cast<CQzGuiMgr*>(CreateGuiMgr());
        m_pMgr->Init(GetModuleHandleA(nullptr), m_harness.MainWindow(), 100, nullptr);
        m_pMgr->SetScreenSize(1024, 768);
        m_harness.SetMessageHandler(
            [this](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT
            {
                const BOOL bResult = m_pMgr->OnMessage(message, wParam, lParam);
                if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
                    m_nMouseResult = bResult;
                return bResult;
            });
    }
    ~DialogScene() override
    {
        m_harness.SetMessageHandler(nullptr);
        m_pMgr->Release();
    }

    // The record of window `id` under `parent`: rectangle relative to the parent, extra keys.
    CQzGuiWndInfo* AddRecord(DWORD parent, DWORD id, RECT rc, Extras extras = {})
    {
        auto* pRecord = new CQzGuiWndInfo;
        pRecord->SetParentId(static_cast<int>(parent));
        pRecord->SetCtrlId(static_cast<int>(id));
        pRecord->SetX(static_cast<WORD>(rc.left));
        pRecord->SetY(static_cast<WORD>(rc.top));
        pRecord->SetWidth(static_cast<WORD>(rc.right - rc.left));
        pRecord->SetHeight(static_cast<WORD>(rc.bottom - rc.top));
        for (const auto& extra : extras)
            pRecord->AddExtra(extra.first, extra.second);
        m_pMgr->GetInfoMgr()->InsertRecord(pRecord);
        return pRecord;
    }

    void Frame()
    {
        m_harness.Frame([this] { m_pMgr->Show(); });
    }

    QzTest::Harness m_harness;
    CQzGuiMgr* m_pMgr = nullptr;
    BOOL m_nMouseResult = -1;
};

} // namespace DialogTest
