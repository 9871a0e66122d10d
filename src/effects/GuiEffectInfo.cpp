#include "effects/GuiEffectInfo.h"

#include "platform/services/QzFile.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <cstdio>
#include <cstring>

namespace
{

constexpr size_t kMaxNameLength = 127;

// One line of any length, without splitting it at the read buffer; false at the end.
bool ReadWholeLine(QzPlatform::QzFileHandle file, std::string& line)
{
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    line.clear();
    char buffer[256];
    while (files.ReadLine(buffer, sizeof buffer, file) != nullptr)
    {
        line += buffer;
        if (!line.empty() && line.back() == '\n')
            return true;
    }
    return !line.empty();
}

} // namespace

CGuiEffectInfo::~CGuiEffectInfo() = default;

CGuiEffectInfo& CGuiEffectInfo::Instance()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CGuiEffectInfo& table = *new CGuiEffectInfo;
    return table;
}

BOOL CGuiEffectInfo::Load(const char* pszPath)
{
    m_mapPlacements.clear();
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    QzPlatform::QzFileHandle file = files.Open(pszPath, "r");
    if (file == nullptr)
    {
        QzPlatform::LogEvent("open file failed", "GuiEffectInfo", __LINE__,
                             {QzPlatform::LogText("file_name", pszPath)});
        return FALSE;
    }
    std::string line;
    while (ReadWholeLine(file, line))
        ParseLine(pszPath, line);
    files.Close(file);
    return TRUE;
}

// The name is checked for its length before scanning: a longer name would otherwise be cut and
// its rest read as the first number.
void CGuiEffectInfo::ParseLine(const char* pszPath, std::string& line)
{
    QzPlatform::TrimText(line);
    if (line.empty())
        return;
    char szName[kMaxNameLength + 1] = {};
    QzEffectPlacement placement = {};
    const bool bNameFits = std::strcspn(line.c_str(), " \t") <= kMaxNameLength;
    if (!bNameFits ||
        std::sscanf(line.c_str(), "%127s %u %u %u %u %f %f %d", szName, &placement.nRefWidth,
                    &placement.nRefHeight, &placement.nOffsetX, &placement.nOffsetZ,
                    &placement.fScaleX, &placement.fScaleZ, &placement.nRotation) != 8)
    {
        QzPlatform::LogEvent(
            "data error", "GuiEffectInfo", __LINE__,
            {QzPlatform::LogText("file_name", pszPath), QzPlatform::LogText("line", line.c_str())});
        return;
    }
    m_mapPlacements[szName] = placement;
}

const QzEffectPlacement* CGuiEffectInfo::Find(const char* pszName) const
{
    if (pszName == nullptr)
        return nullptr;
    const auto found = m_mapPlacements.find(pszName);
    return found == m_mapPlacements.end() ? nullptr : &found->second;
}

QzEffectPlacement CGuiEffectInfo::Get(const char* pszName) const
{
    const QzEffectPlacement* pPlacement = Find(pszName);
    return pPlacement != nullptr ? *pPlacement : QzEffectPlacement{};
}
