#include "CMonkeyChecks.h"

#include "CMonkeyWorld.h"
#include "CRemovalProbe.h"

#include "layout/QzGuiInfoMgr.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditSingle.h"

namespace QzMonkey
{

namespace
{

using namespace QzGui;

std::string NameOf(const CQzBaseWindow* pWindow)
{
    const CRemovalProbe* pProbe = CRemovalProbe::Find(pWindow);
    return pProbe ? pProbe->Name() : "an unknown window";
}

std::string CheckPointer(const char* pszWhat, const CQzBaseWindow* pWindow)
{
    if (!pWindow)
        return {};
    const CRemovalProbe* pProbe = CRemovalProbe::Find(pWindow);
    if (!pProbe)
        return std::string(pszWhat) + ": points at a deleted window";
    if (pProbe->IsRemoved())
        return std::string(pszWhat) + ": points at removed " + pProbe->Name();
    return {};
}

// Bottom to top, no visible dialog that is not topmost may follow a visible topmost one.
std::string CheckTopmost(const CQzGuiMgr& mgr)
{
    const CQzDialog* pLowestTopmost = nullptr;
    for (CQzDialog* pDialog : mgr.GetDialogs())
    {
        if (!pDialog->IsVisible())
            continue;
        if (pDialog->IsTopmost())
        {
            if (!pLowestTopmost)
                pLowestTopmost = pDialog;
            continue;
        }
        if (pLowestTopmost)
            return "topmost order: " + NameOf(pDialog) + " lies above topmost " +
                   NameOf(pLowestTopmost);
    }
    return {};
}

std::string CheckRecord(const CQzGuiInfoMgr& info, const CQzBaseWindow& window)
{
    const IQzGuiWndInfo* pInfo = window.GetWndInfo();
    if (!pInfo || info.IsCurrentRecord(pInfo))
        return {};
    return "stale record: " + NameOf(&window) + " holds a record the last reload took out";
}

std::string CheckRecords(const CQzGuiInfoMgr& info, const CMonkeyDialog& dialog)
{
    std::string violation = CheckRecord(info, dialog);
    for (const QzCtrlEntry& entry : dialog.GetCtrlEntries())
    {
        if (violation.empty() && entry.bCreated)
            violation = CheckRecord(info, *entry.pCtrl);
    }
    for (const auto& pChild : dialog.Children())
    {
        if (violation.empty())
            violation = CheckRecords(info, *pChild);
    }
    return violation;
}

std::string CheckRecords(const CMonkeyWorld& world)
{
    const CQzGuiInfoMgr* pInfo = world.Mgr()->FindInfoMgr();
    for (int slot = 0; pInfo && slot < CMonkeyLayout::kTopSlots; ++slot)
    {
        const CMonkeyDialog* pDialog = world.DialogAt(slot);
        if (!pDialog || !world.IsFresh(slot))
            continue;
        std::string violation = CheckRecords(*pInfo, *pDialog);
        if (!violation.empty())
            return violation;
    }
    return {};
}

} // namespace

std::string CMonkeyChecks::Check(const CMonkeyWorld& world)
{
    const CQzGuiMgr& mgr = *world.Mgr();
    const CQzEdit* pBound = g_pQzEditSingle ? g_pQzEditSingle->GetActiveEdit() : nullptr;
    for (std::string violation :
         {CRemovalProbe::TakeViolation(), CheckPointer("capture", mgr.GetCapture()),
          CheckPointer("key focus", mgr.GetKeyFocus()), CheckPointer("bound edit box", pBound),
          CheckTopmost(mgr), CheckRecords(world)})
    {
        if (!violation.empty())
            return violation;
    }
    return {};
}

std::string CMonkeyChecks::RuleOf(const std::string& violation)
{
    return violation.substr(0, violation.find(':'));
}

} // namespace QzMonkey
