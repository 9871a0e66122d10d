#include "platform/services/QzGameData.h"

#include "platform/services/QzStringTable.h"
#include "platform/services/QzText.h"

namespace QzPlatform
{

const char* CQzGameData::GetString(uint32_t id, const char* source, int line) const
{
    return GetTableString(id);
}

int CQzGameData::QueryInt(uint32_t key) const
{
    return TextToInt(GetTableString(key));
}

const char* CQzGameData::GetFont(const char* face) const
{
    if (!face)
        return "";
    const auto found = m_mapFonts.find(face);
    return found == m_mapFonts.end() ? face : found->second.c_str();
}

void CQzGameData::SetFontMapping(const char* face, const char* drawFace)
{
    const std::string key = face ? face : "";
    if (!drawFace || drawFace[0] == 0)
        m_mapFonts.erase(key);
    else
        m_mapFonts[key] = drawFace;
}

void CQzGameData::Reset()
{
    *this = CQzGameData();
}

CQzGameData& GetGameData()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CQzGameData& data = *new CQzGameData;
    return data;
}

} // namespace QzPlatform
