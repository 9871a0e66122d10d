#include "platform/render/EmotionIconSet.h"

namespace QzPlatform
{

namespace
{

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

const DWORD kIconKeepAliveMs = 30000;

} // namespace

std::string CEmotionIconSet::SectionOfCode(const char* code)
{
    if (!code || code[0] != '#' || !IsDigit(code[1]) || !IsDigit(code[2]))
        return std::string();
    const std::string major(code + 1, 2);
    if (code[3] == '\0')
        return "Emotion_" + major;
    if (code[3] != '|' || !IsDigit(code[4]) || !IsDigit(code[5]) || code[6] != '\0')
        return std::string();
    return "Emotion_" + major + "_" + std::string(code + 4, 2);
}

IDataAni* CEmotionIconSet::GetIconAni(const char* code)
{
    const std::string section = SectionOfCode(code);
    if (section.empty())
        return nullptr;
    return m_dataSet.GetAni("ani/Control.ani", section.c_str(), 0, kIconKeepAliveMs, 0);
}

} // namespace QzPlatform
