// The data set behind TableDataSetQuery: .ani files parsed once into an index, sections built on
// demand and cached while they are used, the string table and the emotion icon set.
#pragma once

#include "platform/render/AniFile.h"
#include "platform/render/DataAni.h"
#include "platform/render/DataSet.h"
#include "platform/render/EmotionIconSet.h"

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
    struct CachedAni
    {
        std::shared_ptr<CDataAni> pAni;
        DWORD dwLastUse = 0;
        DWORD dwKeepAlive = 0;
    };

    std::shared_ptr<CDataAni> Build(const std::string& fileKey, const char* file,
                                    const char* section);
    // Drops sections unused past their keep-alive, at most once a second.
    void PurgeExpired(DWORD now);

    std::map<std::string, CAniFile> m_mapFiles;     // key: file key
    std::map<std::string, CachedAni> m_mapSections; // key: file key, '\n', section key
    CEmotionIconSet m_iconSet{*this};
    bool m_bPurged = false;
    DWORD m_dwLastPurge = 0;
};

} // namespace QzPlatform
