// The data set behind TableDataSetQuery: .ani files parsed once into an index, sections built on
// demand and cached while they are used, the string table and the emotion icon set.
#pragma once

#include "platform/render/AniFile.h"
#include "platform/render/DataAni.h"
#include "platform/render/DataSet.h"
#include "platform/render/EmotionIconSet.h"

#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace QzPlatform
{

class CTableDataSet final : public IDataSet
{
public:
    static CTableDataSet& Instance();

    IDataAni* GetAni(const char* file, const char* section, int flag, DWORD keepAliveMs,
                     int reserved) override;
    const char* GetString(DWORD id) override;
    IDataIcon* GetIconSet(int index) override;
    void Reload() override;

    // The same look-up for holders that keep a section across frames: the object outlives a
    // purge or a reload of the cache (it then no longer follows the file).
    std::shared_ptr<IDataAni> GetSharedAni(const char* file, const char* section,
                                           DWORD keepAliveMs);
    // GetAni for a caller asking for the same names again and again: while the data set's epoch
    // is the one the ref was filled under, its entry is the section of those names and no name
    // is looked up. The section is touched and the purge runs as with a look-up by name.
    IDataAni* GetAni(AniRef& ref, const char* file, const char* section, DWORD keepAliveMs);
    // Whether the section is in the cache now (tests of the keep-alive).
    bool IsCached(const char* file, const char* section) const;
    // Moves on whenever a cached section goes (purge, reload): what was drawn from sections
    // before may look different now.
    uint32_t GetEpoch() const { return m_nEpoch; }

private:
    static constexpr DWORD kPurgeIntervalMs = 1000;

    struct CachedAni
    {
        std::shared_ptr<CDataAni> pAni;
        DWORD dwLastUse = 0;
        DWORD dwKeepAlive = 0;
    };

    // The cached section, built and cached on first use, touched now; null when it cannot be
    // had. Runs the purge either way.
    CachedAni* Touch(const char* file, const char* section, DWORD keepAliveMs);
    // Looks the section up in the map, building it when missing; null when it cannot be had.
    CachedAni* Find(const char* file, const char* section);
    // The answer of Find through the table of recent answers.
    CachedAni* Recall(const char* file, const char* section);
    std::shared_ptr<CDataAni> Build(const std::string& fileKey, const char* file,
                                    const char* section);
    // Drops sections unused past their keep-alive, at most once a second (checked on every
    // look-up, so the check is inline).
    void PurgeExpired(DWORD now)
    {
        if (!m_bPurged || static_cast<DWORD>(now - m_dwLastPurge) >= kPurgeIntervalMs)
            PurgeNow(now);
    }
    void PurgeNow(DWORD now);

    std::map<std::string, CAniFile> m_mapFiles; // key: file key
    // key: file key, '\n', section key; looked up by a key built on the stack (std::less<>)
    std::map<std::string, CachedAni, std::less<>> m_mapSections;
    // Recent answers under the names exactly as they were given, in slots chosen by a hash of
    // the names: every window asks for its sections on every frame, and a hit spares folding
    // the names and searching the map. A slot holds a section that could not be had as well
    // (a window without a skin asks for one every frame). A slot is valid while its epoch is
    // the data set's; the epoch moves on whenever a cached section goes (purge, reload).
    struct RecentAnswer
    {
        std::string file;
        std::string section;
        CachedAni* pCached = nullptr;
        uint32_t nEpoch = 0;
    };
    static constexpr size_t kRecentSlots = 256;
    std::vector<RecentAnswer> m_recent = std::vector<RecentAnswer>(kRecentSlots);
    uint32_t m_nEpoch = 1;
    CEmotionIconSet m_iconSet{*this};
    bool m_bPurged = false;
    DWORD m_dwLastPurge = 0;
};

} // namespace QzPlatform
