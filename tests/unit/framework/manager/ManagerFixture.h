// The manager's scenarios: a GUI scene over the layout below, and probe dialogs and controls
// that record what reaches them.
#pragma once

#include "framework/QzBaseWindow.h"
#include "framework/QzDialog.h"
#include "framework/QzGuiHelper.h"
#include "framework/QzGuiMgr.h"
#include "support/GuiScene.h"

#include <memory>
#include <string>
#include <vector>

namespace QzGuiManagerTest
{

using QzGui::CQzBaseWindow;
using QzGui::CQzDialog;
using QzGui::CQzGuiMgr;
using QzTest::CountOf;
using QzTest::Seen;

// Dialogs 1 and 2 overlap over (100..300, 100..300); 3 and 4 are topmost; 5 keeps its place
// on a click; 6 covers 1 and 2 as a click-through dialog with a control 10 at (20, 20); 7
// flies in from the left; 8 is drawn by ShowExtra; 9 lies at (300, 300)..(500, 400); 11 flies
// in and out in one frame.
const char* const kLayout = "[0-1]\nx=0\ny=0\nw=300\nh=300\n"
                            "[0-2]\nx=100\ny=100\nw=300\nh=300\n"
                            "[0-3]\nx=500\ny=0\nw=100\nh=100\nTopmost=1\n"
                            "[0-4]\nx=600\ny=0\nw=100\nh=100\nTopmost=1\n"
                            "[0-5]\nx=0\ny=400\nw=100\nh=100\nClickToTop=0\n"
                            "[0-6]\nx=0\ny=0\nw=400\nh=400\n"
                            "[0-7]\nx=700\ny=400\nw=100\nh=100\nFlyDir=1\nFlyInStep=10\n"
                            "[0-8]\nx=800\ny=400\nw=100\nh=100\nExtraShow=1\n"
                            "[0-9]\nx=300\ny=300\nw=200\nh=100\n"
                            "[0-11]\nx=700\ny=400\nw=100\nh=100\nFlyDir=1\n"
                            "FlyInStep=1000\nFlyOutStep=1000\n"
                            "[6-10]\nx=20\ny=20\nw=50\nh=20\n"
                            "[1-20]\nx=10\ny=10\nw=50\nh=20\n";

// Managers a test makes itself are released at the end of their scope.
struct ReleaseMgr
{
    void operator()(QzGui::IQzGuiMgr* pMgr) const { pMgr->Release(); }
};
using IQzGuiMgrPtr = std::unique_ptr<QzGui::IQzGuiMgr, ReleaseMgr>;

// A control that records its messages and answers them with a chosen result.
class ProbeCtrl : public CQzBaseWindow
{
public:
    int GetWndType() override { return QzGui::QZ_WND_BUTTON; }
    BOOL OnCreate() override { return 1; }
    LRESULT SendMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        seen.push_back({message, wParam, lParam});
        return answer;
    }

    std::vector<Seen> seen;
    LRESULT answer = 1;
};

// A dialog that records the mouse messages reaching its WindowProc and can refuse them.
class ProbeDialog : public CQzDialog
{
public:
    ProbeDialog(DWORD nId, std::vector<DWORD>* pDrawLog)
        : CQzDialog(nId, nullptr), m_pDrawLog(pDrawLog)
    {
    }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message < WM_MOUSEFIRST || message > WM_MOUSEWHEEL)
            return CQzDialog::WindowProc(message, wParam, lParam);
        mouse.push_back({message, wParam, lParam});
        return refuseMouse ? 0 : CQzDialog::WindowProc(message, wParam, lParam);
    }
    BOOL IsAutoClose(DWORD) override { return autoClose; }
    BOOL CanHandleEvent(DWORD) override
    {
        ++asked;
        return canHandle;
    }
    void HandleEvent(DWORD) override { ++handled; }
    void OnAfterDraw() override
    {
        if (m_pDrawLog)
            m_pDrawLog->push_back(GetId());
    }
    void OnHoverDraw() override { ++hoverDraws; }

    std::vector<Seen> mouse;
    bool refuseMouse = false;
    BOOL autoClose = 1;
    BOOL canHandle = 0;
    int asked = 0;
    int handled = 0;
    int hoverDraws = 0;

private:
    std::vector<DWORD>* m_pDrawLog;
};

class ManagerFixture : public QzTest::GuiScene
{
protected:
    // Extended records, when given, are in place before the manager's Init.
    explicit ManagerFixture(const char* pszGuiEx = nullptr)
        : GuiScene({{"ini/Test.ini", kLayout}, {"ini/GUI_EX.ini", pszGuiEx}})
    {
    }
    ~ManagerFixture() override
    {
        m_ctrls.clear();
        m_dialogs.clear();
    }

    // A registered dialog, shown unless told otherwise.
    ProbeDialog* AddDialog(DWORD nId, bool bShow = true)
    {
        m_dialogs.push_back(std::make_unique<ProbeDialog>(nId, &m_drawLog));
        ProbeDialog* pDialog = m_dialogs.back().get();
        m_pMgr->AddDialog(pDialog, nullptr, false);
        if (bShow)
            pDialog->ShowWindow(SW_SHOW);
        return pDialog;
    }
    // A control of the dialog, created and shown.
    ProbeCtrl* AddCtrl(CQzDialog* pDialog, DWORD nId)
    {
        m_ctrls.push_back(std::make_unique<ProbeCtrl>());
        ProbeCtrl* pCtrl = m_ctrls.back().get();
        pDialog->AddCtrl(nId, pCtrl);
        pDialog->CreateCtrl(pCtrl, TRUE);
        return pCtrl;
    }
    // Dialog ids bottom of the z-order first.
    std::vector<DWORD> ZOrder() const
    {
        std::vector<DWORD> ids;
        for (CQzDialog* pDialog : m_pMgr->GetDialogs())
            ids.push_back(pDialog->GetId());
        return ids;
    }

    std::vector<DWORD> m_drawLog;
    std::vector<std::unique_ptr<ProbeCtrl>> m_ctrls;
    std::vector<std::unique_ptr<ProbeDialog>> m_dialogs;
};

} // namespace QzGuiManagerTest
