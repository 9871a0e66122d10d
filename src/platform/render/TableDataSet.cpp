#include "platform/render/TableDataSet.h"

#include "platform/services/QzClock.h"

#include "platform/services/QzStringTable.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace QzPlatform
{

namespace
{

// Windows names: either slash, any letter case. Only ASCII letters fold; the other bytes (those
// of multi-byte names among them) stay as they are. Branch-free, so that folding vectorises.
char FoldChar(char c)
{
    const unsigned char u = static_cast<unsigned char>(c);
    const unsigned char lower = static_cast<unsigned char>(u - 'A') < 26u ? u + ('a' - 'A') : u;
    return static_cast<char>(u == '\\' ? '/' : lower);
}

void FoldInto(char* pOut, const char* pszText, size_t nLength)
{
    for (size_t i = 0; i < nLength; ++i)
        pOut[i] = FoldChar(pszText[i]);
}

// The cache key of a section: the file key, '\n', the section key. Sections are looked up on
// every draw, so the key is built in a buffer on the stack; only names too long for it take the
// heap.
class CSectionKey
{
public:
    CSectionKey(const char* file, const char* section)
        : m_nFileLength(std::strlen(file)), m_nLength(m_nFileLength + 1 + std::strlen(section))
    {
        char* pKey = m_szBuffer;
        if (m_nLength > sizeof(m_szBuffer))
        {
            m_strLong.resize(m_nLength);
            pKey = &m_strLong[0];
        }
        FoldInto(pKey, file, m_nFileLength);
        pKey[m_nFileLength] = '\n';
        FoldInto(pKey + m_nFileLength + 1, section, m_nLength - m_nFileLength - 1);
    }
    CSectionKey(const CSectionKey&) = delete;
    CSectionKey& operator=(const CSectionKey&) = delete;

    std::string_view Key() const
    {
        return m_strLong.empty() ? std::string_view(m_szBuffer, m_nLength) : m_strLong;
    }
    std::string FileKey() const { return std::string(Key().substr(0, m_nFileLength)); }

private:
    size_t m_nFileLength;
    size_t m_nLength;
    char m_szBuffer[192];
    std::string m_strLong; // the whole key when it does not fit the buffer
};

// A hash of the names for the table of recent answers, cheap rather than thorough (a collision
// only costs a look-up in the map): the file by its address, since callers pass the same
// constant, and the section by its length and its first and last eight bytes.
size_t HashNames(const char* file, const char* section)
{
    const size_t length = std::strlen(section);
    uint64_t head = 0;
    uint64_t tail = 0;
    std::memcpy(&head, section, std::min<size_t>(length, 8));
    if (length > 8)
        std::memcpy(&tail, section + length - std::min<size_t>(length - 8, 8),
                    std::min<size_t>(length - 8, 8));
    const uint64_t mixed = head * 0x9E3779B97F4A7C15ull ^ tail * 0xC2B2AE3D27D4EB4Full ^
                           (reinterpret_cast<uintptr_t>(file) >> 3) ^ length;
    return static_cast<size_t>(mixed ^ (mixed >> 29) ^ (mixed >> 47));
}

} // namespace

CTableDataSet& CTableDataSet::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CTableDataSet& dataSet = *new CTableDataSet;
    return dataSet;
}

IDataAni* CTableDataSet::GetAni(const char* file, const char* section, int, DWORD keepAliveMs, int)
{
    // The cache holds the section, so the caller needs no reference of its own.
    CachedAni* pCached = Touch(file, section, keepAliveMs);
    return pCached ? pCached->pAni.get() : nullptr;
}

IDataAni* CTableDataSet::GetAni(AniRef& ref, const char* file, const char* section,
                                DWORD keepAliveMs)
{
    if (ref.pEntry && ref.nEpoch == m_nEpoch)
    {
        // The purge that may run keeps a section touched now: the entry stays valid.
        auto* pCached = static_cast<CachedAni*>(const_cast<void*>(ref.pEntry));
        const DWORD now = QzPlatform::NowMs();
        pCached->dwLastUse = now;
        pCached->dwKeepAlive = keepAliveMs;
        PurgeExpired(now);
        ref.nEpoch = m_nEpoch;
        return pCached->pAni.get();
    }
    CachedAni* pCached = Touch(file, section, keepAliveMs);
    ref.pEntry = pCached;
    ref.nEpoch = m_nEpoch;
    return pCached ? pCached->pAni.get() : nullptr;
}

std::shared_ptr<IDataAni> CTableDataSet::GetSharedAni(const char* file, const char* section,
                                                      DWORD keepAliveMs)
{
    CachedAni* pCached = Touch(file, section, keepAliveMs);
    return pCached ? pCached->pAni : nullptr;
}

CTableDataSet::CachedAni* CTableDataSet::Touch(const char* file, const char* section,
                                               DWORD keepAliveMs)
{
    if (!file || !section)
        return nullptr;
    const DWORD now = QzPlatform::NowMs();
    CachedAni* pCached = Recall(file, section);
    if (!pCached)
    {
        PurgeExpired(now);
        return nullptr;
    }
    // Touched before the purge: a section used now is never idle, so it is never the one dropped
    // and the entry returned stays in place.
    pCached->dwLastUse = now;
    pCached->dwKeepAlive = keepAliveMs;
    PurgeExpired(now);
    return pCached;
}

CTableDataSet::CachedAni* CTableDataSet::Find(const char* file, const char* section)
{
    const CSectionKey key(file, section);
    auto found = m_mapSections.find(key.Key());
    if (found == m_mapSections.end())
    {
        std::shared_ptr<CDataAni> pAni = Build(key.FileKey(), file, section);
        if (!pAni)
            return nullptr;
        CachedAni cached;
        cached.pAni = std::move(pAni);
        found = m_mapSections.emplace(std::string(key.Key()), std::move(cached)).first;
    }
    return &found->second;
}

CTableDataSet::CachedAni* CTableDataSet::Recall(const char* file, const char* section)
{
    RecentAnswer& slot = m_recent[HashNames(file, section) % kRecentSlots];
    if (slot.nEpoch == m_nEpoch && slot.section == section && slot.file == file)
        return slot.pCached;
    CachedAni* pCached = Find(file, section);
    slot.file.assign(file);
    slot.section.assign(section);
    slot.pCached = pCached;
    slot.nEpoch = m_nEpoch;
    return pCached;
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

void CTableDataSet::PurgeNow(DWORD now)
{
    m_bPurged = true;
    m_dwLastPurge = now;
    for (auto it = m_mapSections.begin(); it != m_mapSections.end();)
    {
        CachedAni& cached = it->second;
        const DWORD idle = now - cached.dwLastUse;
        // Used "later" than now: the clock was set back (a host that keeps its own clock). The
        // section is idle from now on rather than all sections dropped at once. Past the clock's
        // wrap the difference is right as long as it is under 24 days.
        const bool bSetBack = static_cast<int32_t>(idle) < 0;
        if (bSetBack)
            cached.dwLastUse = now;
        if (bSetBack || idle <= cached.dwKeepAlive)
        {
            ++it;
            continue;
        }
        it = m_mapSections.erase(it);
        ++m_nEpoch;
    }
}

bool CTableDataSet::IsCached(const char* file, const char* section) const
{
    if (!file || !section)
        return false;
    return m_mapSections.find(CSectionKey(file, section).Key()) != m_mapSections.end();
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
    ++m_nEpoch;
    m_mapSections.clear();
    m_mapFiles.clear();
    m_bPurged = false;
}

} // namespace QzPlatform

IDataSet* TableDataSetQuery()
{
    return &QzPlatform::CTableDataSet::Instance();
}
