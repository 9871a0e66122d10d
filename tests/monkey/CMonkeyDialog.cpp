#include "CMonkeyDialog.h"

#include "framework/QzMsg.h"

namespace QzMonkey
{

namespace
{

void MarkWindowRemoved(QzGui::CQzBaseWindow* pWindow)
{
    if (auto* pProbe = dynamic_cast<CRemovalProbe*>(pWindow))
        pProbe->MarkRemoved();
}

} // namespace

CMonkeyDialog::CMonkeyDialog(DWORD nId, QzGui::CQzBaseWindow* pParent, std::string name)
    : CProbe<QzGui::CQzDialog>(std::move(name), nId, pParent)
{
}

CMonkeyDialog::~CMonkeyDialog() = default;

CMonkeyDialog* CMonkeyDialog::KeepChild(std::unique_ptr<CMonkeyDialog> pChild)
{
    m_children.push_back(std::move(pChild));
    return m_children.back().get();
}

QzGui::CQzBaseWindow* CMonkeyDialog::Spawned(int nSlot) const
{
    return m_spawned[nSlot].get();
}

void CMonkeyDialog::Spawn(int nSlot, std::unique_ptr<QzGui::CQzBaseWindow> pCtrl)
{
    QzGui::CQzBaseWindow* p = pCtrl.get();
    m_spawned[nSlot] = std::move(pCtrl);
    AddCtrl(CMonkeyLayout::kFirstSpawnId + static_cast<DWORD>(nSlot), p);
    CreateCtrl(p, TRUE);
}

std::unique_ptr<QzGui::CQzBaseWindow> CMonkeyDialog::Unspawn(int nSlot)
{
    std::unique_ptr<QzGui::CQzBaseWindow> pCtrl = std::move(m_spawned[nSlot]);
    if (!pCtrl)
        return pCtrl;
    RemoveCtrl(pCtrl.get());
    MarkWindowRemoved(pCtrl.get());
    return pCtrl;
}

void CMonkeyDialog::MarkTreeRemoved()
{
    MarkRemoved();
    for (const QzGui::QzCtrlEntry& entry : GetCtrlEntries())
        MarkWindowRemoved(entry.pCtrl);
    for (const auto& pChild : m_children)
        pChild->MarkTreeRemoved();
}

void CMonkeyDialog::OnClick(DWORD nCtrlId, std::function<void()> action)
{
    AddMsgHandler(WM_COMMAND, (static_cast<DWORD>(QzGui::QZ_BN_CLICKED) << 16) | nCtrlId,
                  [action](QzGui::CQzDialog*) { action(); });
}

} // namespace QzMonkey
