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
    // Whether the section is in the cache now (tests of the keep-alive).
    bool IsCached(const char* file, const char* section) const;

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
    // Looks the section up in the map, building it when missing, and makes it the last hit.
    CachedAni* Find(const char* file, const char* section);
    bool IsLastHit(const char* file, const char* section) const
    {
        return m_pLastHit && std::strcmp(file, m_strLastFile.c_str()) == 0 &&
               std::strcmp(section, m_strLastSection.c_str()) == 0;
    }
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
    // The section of the last look-up that found one, under the names exactly as they were
    // given: windows drawn one after another mostly ask for the same section, and a hit spares
    // folding the names and searching the map. Null when unset or purged.
    CachedAni* m_pLastHit = nullptr;
    std::string m_strLastFile;
    std::string m_strLastSection;
    CEmotionIconSet m_iconSet{*this};
    bool m_bPurged = false;
    DWORD m_dwLastPurge = 0;
};

} // namespace QzPlatform
