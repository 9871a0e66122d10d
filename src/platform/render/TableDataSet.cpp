#include "platform/render/TableDataSet.h"

#include "platform/services/QzStringTable.h"

#include <cctype>

namespace QzPlatform
{

namespace
{

const DWORD kPurgeIntervalMs = 1000;

// Windows names: either slash, any letter case.
std::string NameKey(const char* name)
{
    std::string key(name);
    for (char& c : key)
        c = c == '\\' ? '/' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return key;
}

std::string SectionKey(const std::string& fileKey, const char* section)
{
    return fileKey + '\n' + NameKey(section);
}

} // namespace

CTableDataSet& CTableDataSet::Instance()
{
    static CTableDataSet dataSet;
    return dataSet;
}

IDataAni* CTableDataSet::GetAni(const char* file, const char* section, int, DWORD keepAliveMs, int)
{
    return GetSharedAni(file, section, keepAliveMs).get();
}

std::shared_ptr<IDataAni> CTableDataSet::GetSharedAni(const char* file, const char* section,
                                                      DWORD keepAliveMs)
{
    if (!file || !section)
        return nullptr;
    const DWORD now = timeGetTime();
    const std::string fileKey = NameKey(file);
    const std::string key = SectionKey(fileKey, section);
    auto found = m_mapSections.find(key);
    if (found == m_mapSections.end())
    {
        std::shared_ptr<CDataAni> pAni = Build(fileKey, file, section);
        if (!pAni)
        {
            PurgeExpired(now);
            return nullptr;
        }
        CachedAni cached;
        cached.pAni = std::move(pAni);
        found = m_mapSections.emplace(key, std::move(cached)).first;
    }
    // Touched before the purge: a section used now is never idle, so it is never the one dropped.
    found->second.dwLastUse = now;
    found->second.dwKeepAlive = keepAliveMs;
    std::shared_ptr<CDataAni> pResult = found->second.pAni;
    PurgeExpired(now);
    return pResult;
}

std::shared_ptr<CDataAni> CTableDataSet::Build(const std::string& fileKey, const char* file,
                                               const char* section)
{
    auto found = m_mapFiles.find(fileKey);
    if (found == m_mapFiles.end())
    {
        // A missing file is remembered as an empty index: reported once until a reload.
        found = m_mapFiles.emplace(fileKey, CAniFile()).first;
        found->second.Load(file);
    }
    const AniSectionSpec* pSpec = found->second.FindSection(section);
    if (!pSpec)
        return nullptr;
    return std::make_shared<CDataAni>(*pSpec);
}

void CTableDataSet::PurgeExpired(DWORD now)
{
    if (m_bPurged && static_cast<DWORD>(now - m_dwLastPurge) < kPurgeIntervalMs)
        return;
    m_bPurged = true;
    m_dwLastPurge = now;
    for (auto it = m_mapSections.begin(); it != m_mapSections.end();)
    {
        const CachedAni& cached = it->second;
        if (static_cast<DWORD>(now - cached.dwLastUse) > cached.dwKeepAlive)
            it = m_mapSections.erase(it);
        else
            ++it;
    }
}

bool CTableDataSet::IsCached(const char* file, const char* section) const
{
    if (!file || !section)
        return false;
    return m_mapSections.count(SectionKey(NameKey(file), section)) != 0;
}

const char* CTableDataSet::GetString(DWORD id)
{
    return GetTableString(id);
}

IDataIcon* CTableDataSet::GetIconSet(int index)
{
    return index == 0 ? &m_iconSet : nullptr;
}

void CTableDataSet::Reload()
{
    m_mapSections.clear();
    m_mapFiles.clear();
    m_bPurged = false;
}

} // namespace QzPlatform

IDataSet* TableDataSetQuery()
{
    return &QzPlatform::CTableDataSet::Instance();
}
