#include "textinput/QzFontIni.h"

#include "platform/services/QzFile.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <cstdio>

namespace QzGui
{

namespace
{

constexpr const char* kFontFile = "ini/font.ini";
constexpr int kLineBytes = 260;

} // namespace

bool ReadFontIniFace(char* pszFace, size_t nSize, const char* pszSource, int nLine)
{
    if (!pszFace || nSize == 0)
        return false;
    pszFace[0] = '\0';
    QzPlatform::CQzFileService& files = QzPlatform::GetFileService();
    QzPlatform::QzFileHandle hFile = files.Open(kFontFile, "r");
    if (!hFile)
    {
        QzPlatform::LogEvent("open file failed", pszSource, nLine,
                             {QzPlatform::LogText("file_name", kFontFile)});
        return false;
    }
    char szLine[kLineBytes] = {};
    char szFace[kLineBytes] = {};
    if (files.ReadLine(szLine, kLineBytes, hFile) && std::sscanf(szLine, "%259s", szFace) == 1)
        QzPlatform::CopyText(pszFace, nSize, szFace);
    files.Close(hFile);
    return true;
}

} // namespace QzGui
