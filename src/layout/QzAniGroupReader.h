// Reads ini/AniGroup.ini through the profile functions: every section is one animation group,
// "Amount" pieces each given by "Section_N", "Top_N" and "Left_N" (N from 1).
#pragma once

#include "layout/QzAniGroup.h"
#include "platform/system/QzSystem.h"

#include <map>
#include <string>

namespace QzGui
{

class CQzAniGroupReader
{
public:
    // Most pieces one group keeps; a larger "Amount" is logged as a data error and cut.
    static constexpr int kMaxPieces = 1024;

    // Adds every group of the file to the table (a group of the same name is replaced). False
    // when the file gives no section.
    static BOOL Read(const char* pszPath, std::map<std::string, QzAniGroup>& groups);

private:
    static QzAniGroup ReadGroup(const char* pszPath, const char* pszGroup);
    static std::string ReadKey(const char* pszPath, const char* pszGroup, const char* pszFormat,
                               int nIndex, const char* pszDefault);
};

} // namespace QzGui
