#include "WindowPlaces.h"

#include "framework/QzDialog.h"
#include "framework/QzGuiMgr.h"

namespace
{

bool SamePoint(const POINT& a, const POINT& b)
{
    return a.x == b.x && a.y == b.y;
}

} // namespace

void CWindowPlaces::NotePlaced(QzGui::CQzGuiMgr& mgr)
{
    m_mapPlaced.clear();
    for (const QzGui::CQzDialog* dialog : mgr.GetDialogs())
    {
        if (!dialog->GetParent())
            m_mapPlaced[dialog] = dialog->GetLocalPos();
    }
}

void CWindowPlaces::Save(QzGui::CQzGuiMgr& mgr)
{
    m_mapSaved.clear();
    for (const QzGui::CQzDialog* dialog : mgr.GetDialogs())
    {
        if (!dialog->GetParent())
            m_mapSaved[dialog] = {dialog->GetLocalPos(), dialog->IsWindowVisible() != 0};
    }
}

void CWindowPlaces::Restore(QzGui::CQzGuiMgr& mgr)
{
    std::map<const QzGui::CQzDialog*, POINT> placed;
    for (QzGui::CQzDialog* dialog : mgr.GetDialogs())
    {
        const auto saved = m_mapSaved.find(dialog);
        if (dialog->GetParent() || saved == m_mapSaved.end())
            continue;
        placed[dialog] = dialog->GetLocalPos();
        const auto before = m_mapPlaced.find(dialog);
        const bool bDragged =
            before != m_mapPlaced.end() && !SamePoint(before->second, saved->second.pos);
        if (bDragged)
            dialog->MoveWindow(nullptr, saved->second.pos.x, saved->second.pos.y,
                               dialog->GetWidth(), dialog->GetHeight(), TRUE);
        if ((dialog->IsWindowVisible() != 0) != saved->second.bVisible)
            dialog->ShowWindow(saved->second.bVisible ? SW_SHOW : SW_HIDE);
    }
    m_mapPlaced = std::move(placed);
    m_mapSaved.clear();
}
