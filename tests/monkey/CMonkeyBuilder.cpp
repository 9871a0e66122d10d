#include "CMonkeyBuilder.h"

#include "CMonkeyGrid.h"

#include "controls/QzButton.h"
#include "controls/QzCheck.h"
#include "controls/QzImage.h"
#include "controls/QzList.h"
#include "controls/QzProgress.h"
#include "controls/QzScrollButton.h"
#include "controls/QzSlider.h"
#include "controls/QzStatic.h"
#include "controls/QzTree.h"
#include "controls/QzWHLStatic.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditEx.h"

#include <set>

namespace QzMonkey
{

namespace
{

using namespace QzGui;

std::unique_ptr<CQzBaseWindow> MakeWindow(CtrlKind kind, std::string name)
{
    switch (kind)
    {
    case CtrlKind::Button:
        return std::make_unique<CProbe<CQzButton>>(std::move(name));
    case CtrlKind::Check:
        return std::make_unique<CProbe<CQzCheck>>(std::move(name));
    case CtrlKind::Static:
        return std::make_unique<CProbe<CQzStatic>>(std::move(name));
    case CtrlKind::Image:
        return std::make_unique<CProbe<CQzImage>>(std::move(name));
    case CtrlKind::ScrollButton:
        return std::make_unique<CProbe<CQzScrollButton>>(std::move(name));
    case CtrlKind::Slider:
        return std::make_unique<CProbe<CQzSlider>>(std::move(name));
    case CtrlKind::Progress:
        return std::make_unique<CProbe<CQzProgress>>(std::move(name));
    case CtrlKind::Marquee:
        return std::make_unique<CProbe<CQzWHLStatic>>(std::move(name));
    case CtrlKind::List:
        return std::make_unique<CProbe<CQzList>>(std::move(name));
    case CtrlKind::Tree:
        return std::make_unique<CProbe<CQzTree>>(std::move(name));
    case CtrlKind::Grid:
        return std::make_unique<CProbe<CMonkeyGrid>>(std::move(name));
    case CtrlKind::Edit:
        return std::make_unique<CProbe<CQzEdit>>(std::move(name));
    default:
        return std::make_unique<CProbe<CQzEditEx>>(std::move(name));
    }
}

// What a control needs before creation. links as in CtrlDesc; find gives the dialog's other
// controls by id (null for a spawned control, which stands alone).
void SetUp(CQzBaseWindow& window, CtrlKind kind, CQzDialog& dialog, const int links[3],
           const std::function<CQzBaseWindow*(int)>& find)
{
    const POINT offset = {-3, 2};
    switch (kind)
    {
    case CtrlKind::ScrollButton:
        static_cast<CQzScrollButton&>(window).Attach(&dialog, static_cast<BYTE>(links[0]));
        break;
    case CtrlKind::Slider:
        static_cast<CQzSlider&>(window).PreSetParam(100, static_cast<DWORD>(links[0]));
        static_cast<CQzSlider&>(window).SetTarget(&dialog);
        break;
    case CtrlKind::Progress:
        static_cast<CQzProgress&>(window).PreSetParam(0, 200, static_cast<BYTE>(links[0]), 1,
                                                      &offset, 1, &offset);
        break;
    case CtrlKind::Marquee:
        static_cast<CQzWHLStatic&>(window).SetWindowText("marquee \xC4\xE3\xBA\xC3 text");
        break;
    case CtrlKind::List:
        static_cast<CQzList&>(window).PreSetParam(1, static_cast<CQzScrollButton*>(find(links[0])),
                                                  static_cast<CQzScrollButton*>(find(links[1])), 0,
                                                  1, static_cast<CQzSlider*>(find(links[2])));
        static_cast<CQzList&>(window).SetOwner(&dialog);
        break;
    case CtrlKind::Tree:
        static_cast<CQzTree&>(window).PreSetParam(5, static_cast<CQzScrollButton*>(find(links[0])),
                                                  static_cast<CQzScrollButton*>(find(links[1])), 0,
                                                  1, static_cast<CQzSlider*>(find(links[2])));
        break;
    case CtrlKind::Grid:
        static_cast<CQzGrid&>(window).PreSetParam(4, 2);
        break;
    case CtrlKind::Edit:
    {
        auto& edit = static_cast<CQzEdit&>(window);
        edit.PreSetParam(links[0] == 1, 0, 0xFFFFFFFF, links[0] == 1);
        edit.SetNumberOnly(links[0] == 2);
        edit.SetPassword(links[0] == 2);
        edit.SetLimitText(links[0] == 1 ? 0 : 32);
        break;
    }
    case CtrlKind::EditEx:
        static_cast<CQzEditEx&>(window).PreSetParam(links[0] == 1, 0, 0xFFFFFFFF);
        static_cast<CQzEditEx&>(window).SetMaxText(links[0] == 1 ? 512 : 24);
        break;
    default:
        break;
    }
}

std::string CtrlName(const CQzDialog& dialog, DWORD nId, CtrlKind kind)
{
    return "dialog " + std::to_string(dialog.GetId()) + " ctrl " + std::to_string(nId) + " (" +
           CtrlKindName(kind) + ")";
}

// The ids of the scroll buttons and sliders a list or tree of the dialog binds itself.
std::set<int> BoundIds(const DialogDesc& desc)
{
    std::set<int> ids;
    for (const CtrlDesc& ctrl : desc.ctrls)
    {
        if (ctrl.kind == CtrlKind::List || ctrl.kind == CtrlKind::Tree)
            ids.insert(ctrl.links, ctrl.links + 3);
    }
    return ids;
}

void AddAction(CMonkeyDialog& dialog, const CtrlDesc& ctrl, const std::function<void()>& removeSelf)
{
    const auto action = static_cast<ClickAction>(ctrl.links[0]);
    if (action == ClickAction::HideDialog)
        dialog.OnClick(ctrl.nId, [pDialog = &dialog] { pDialog->ShowWindow(SW_HIDE); });
    else if (action == ClickAction::RemoveDialog)
        dialog.OnClick(ctrl.nId, removeSelf);
}

} // namespace

std::unique_ptr<CMonkeyDialog> CMonkeyBuilder::BuildDialog(int nAddress, CQzBaseWindow* pParent,
                                                           const std::function<void()>& removeSelf)
{
    const DialogDesc& desc = CMonkeyLayout::Dialog(nAddress);
    auto pDialog =
        std::make_unique<CMonkeyDialog>(desc.nId, pParent, "dialog " + std::to_string(desc.nId));
    for (const CtrlDesc& ctrl : desc.ctrls)
        pDialog->Keep(ctrl.nId, MakeWindow(ctrl.kind, CtrlName(*pDialog, ctrl.nId, ctrl.kind)));
    const std::set<int> bound = BoundIds(desc);
    const auto find = [&](int nId)
    { return pDialog->FindCtrlEntry(static_cast<DWORD>(nId))->pCtrl; };
    for (const CtrlDesc& ctrl : desc.ctrls)
    {
        if (bound.count(static_cast<int>(ctrl.nId)))
            continue;
        SetUp(*pDialog->FindCtrlEntry(ctrl.nId)->pCtrl, ctrl.kind, *pDialog, ctrl.links, find);
        if (ctrl.kind != CtrlKind::Button)
            continue;
        AddAction(*pDialog, ctrl, removeSelf);
    }
    return pDialog;
}

std::unique_ptr<CQzBaseWindow> CMonkeyBuilder::BuildCtrl(CtrlKind kind, CQzDialog& dialog,
                                                         std::string name)
{
    std::unique_ptr<CQzBaseWindow> pCtrl = MakeWindow(kind, std::move(name));
    const int links[3] = {0, 0, 0};
    SetUp(*pCtrl, kind, dialog, links, [](int) { return nullptr; });
    return pCtrl;
}

void CMonkeyBuilder::Fill(CQzBaseWindow& ctrl)
{
    if (auto* pList = dynamic_cast<CQzList*>(&ctrl))
    {
        for (int i = 0; i < 30; ++i)
            pList->AddString(("row " + std::to_string(i)).c_str());
    }
    else if (auto* pTree = dynamic_cast<CQzTree*>(&ctrl))
    {
        for (int i = 0; i < 6; ++i)
        {
            const DWORD nRoot = pTree->InsertRootItem("root", i % 2);
            pTree->InsertItem(nRoot, "leaf \xC4\xE3");
            pTree->InsertCheckItem(nRoot, "check", static_cast<BYTE>(i % 2));
        }
    }
    else if (auto* pGrid = dynamic_cast<CQzGrid*>(&ctrl))
    {
        for (int i = 0; i < 8; i += 3)
            pGrid->SetCellUsed(i, true);
    }
    else if (auto* pProgress = dynamic_cast<CQzProgress*>(&ctrl))
        pProgress->SetValue(120);
    else if (auto* pEdit = dynamic_cast<CQzEdit*>(&ctrl))
        pEdit->SetWindowText("12");
    else if (auto* pEditEx = dynamic_cast<CQzEditEx*>(&ctrl))
        pEditEx->SetWindowText("#01 text \xC4\xE3");
}

} // namespace QzMonkey
