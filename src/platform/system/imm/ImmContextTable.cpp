#include "platform/system/imm/ImmContextTable.h"

namespace QzPlatform
{

namespace
{

constexpr size_t kMaxContexts = 65536 + 1024;

} // namespace

CImmContextTable::CImmContextTable() : m_table(kInputContextHandleTag, kMaxContexts) {}

HIMC CImmContextTable::Create(HWND defaultOf)
{
    auto context = std::make_unique<ImmContext>();
    context->defaultOf = defaultOf;
    return ToHandle<HIMC>(m_table.Add(std::move(context)));
}

ImmContext* CImmContextTable::Find(HIMC himc) const
{
    return m_table.Find(FromHandle(himc));
}

bool CImmContextTable::Destroy(HIMC himc)
{
    return m_table.Remove(FromHandle(himc)) != nullptr;
}

} // namespace QzPlatform
