#include "layout/QzAniGroupReader.h"

#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <cstring>
#include <vector>

namespace QzGui
{

namespace
{

constexpr DWORD kSectionNamesSize = 32767;
constexpr DWORD kSmallNamesSize = 1024;
constexpr DWORD kValueSize = 1024;

} // namespace

BOOL CQzAniGroupReader::Read(const char* pszPath, std::map<std::string, QzAniGroup>& groups)
{
    // Most files name a few groups: their names are read into a small buffer first, and into
    // the full one only when they fill it (a full list reads as size - 2).
    char szNames[kSmallNamesSize];
    std::vector<char> full;
    const char* pszNames = szNames;
    DWORD length = GetPrivateProfileSectionNamesA(szNames, kSmallNamesSize, pszPath);
    if (length == kSmallNamesSize - 2)
    {
        full.resize(kSectionNamesSize);
        length = GetPrivateProfileSectionNamesA(full.data(), kSectionNamesSize, pszPath);
        pszNames = full.data();
    }
    if (length == 0)
        return FALSE;
    const char* pszEnd = pszNames + length;
    for (const char* pszName = pszNames; pszName < pszEnd && *pszName;
         pszName += std::strlen(pszName) + 1)
        groups[pszName] = ReadGroup(pszPath, pszName);
    return TRUE;
}

// A missing piece key gives an empty section name or offset 0: "Amount" alone decides how many
// pieces the group has.
QzAniGroup CQzAniGroupReader::ReadGroup(const char* pszPath, const char* pszGroup)
{
    int amount = static_cast<int>(GetPrivateProfileIntA(pszGroup, "Amount", 0, pszPath));
    if (amount > kMaxPieces)
    {
        const std::string line = "Amount=" + std::to_string(amount);
        QzPlatform::LogEvent(
            "data error", "QzAniGroupReader", __LINE__,
            {QzPlatform::LogText("file_name", pszPath), QzPlatform::LogText("line", line.c_str())});
        amount = kMaxPieces;
    }
    QzAniGroup group;
    for (int i = 1; i <= amount; ++i)
    {
        QzAniGroupPiece piece;
        piece.section = ReadKey(pszPath, pszGroup, "Section_%d", i, "");
        piece.top = QzPlatform::TextToInt(ReadKey(pszPath, pszGroup, "Top_%d", i, "0").c_str());
        piece.left = QzPlatform::TextToInt(ReadKey(pszPath, pszGroup, "Left_%d", i, "0").c_str());
        group.pieces.push_back(std::move(piece));
    }
    return group;
}

std::string CQzAniGroupReader::ReadKey(const char* pszPath, const char* pszGroup,
                                       const char* pszFormat, int nIndex, const char* pszDefault)
{
    char szKey[32];
    QzPlatform::FormatText(szKey, sizeof(szKey), pszFormat, nIndex);
    char szValue[kValueSize];
    GetPrivateProfileStringA(pszGroup, szKey, pszDefault, szValue, kValueSize, pszPath);
    return szValue;
}

} // namespace QzGui
