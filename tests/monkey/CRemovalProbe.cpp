#include "CRemovalProbe.h"

#include <unordered_map>

namespace QzMonkey
{

namespace
{

std::unordered_map<const QzGui::CQzBaseWindow*, const CRemovalProbe*>& Registry()
{
    static std::unordered_map<const QzGui::CQzBaseWindow*, const CRemovalProbe*> registry;
    return registry;
}

std::string& Violation()
{
    static std::string violation;
    return violation;
}

} // namespace

CRemovalProbe::CRemovalProbe(const QzGui::CQzBaseWindow* pWindow, std::string name)
    : m_pWindow(pWindow), m_name(std::move(name))
{
    Registry()[m_pWindow] = this;
}

CRemovalProbe::~CRemovalProbe()
{
    Registry().erase(m_pWindow);
}

void CRemovalProbe::Enter(const char* pszEntry, UINT message) const
{
    if (!m_bRemoved || !Violation().empty())
        return;
    Violation() = "message after removal: " + std::string(pszEntry) + "(" +
                  std::to_string(message) + ") on removed " + m_name;
}

const CRemovalProbe* CRemovalProbe::Find(const QzGui::CQzBaseWindow* pWindow)
{
    const auto found = Registry().find(pWindow);
    return found == Registry().end() ? nullptr : found->second;
}

std::string CRemovalProbe::TakeViolation()
{
    std::string violation;
    violation.swap(Violation());
    return violation;
}

} // namespace QzMonkey
