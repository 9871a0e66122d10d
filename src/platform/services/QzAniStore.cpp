#include "platform/services/QzAniStore.h"

#include "platform/render/TableDataSet.h"

namespace QzPlatform
{

bool CQzAniStore::LoadAni(CAniHandle& handle, const char* file, const char* section)
{
    handle.m_pAni = CTableDataSet::Instance().GetSharedAni(file, section, kKeepAliveMs);
    return handle.IsValid();
}

void CQzAniStore::Reload()
{
    CTableDataSet::Instance().Reload();
}

CQzAniStore* GetAniStore()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzAniStore& store = *new CQzAniStore;
    return &store;
}

} // namespace QzPlatform
