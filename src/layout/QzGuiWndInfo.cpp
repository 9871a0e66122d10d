#include "layout/QzGuiWndInfo.h"

namespace QzGui
{

namespace
{
size_t g_nLiveRecords = 0;
} // namespace

CQzGuiWndInfo::CQzGuiWndInfo()
{
    ++g_nLiveRecords;
}

CQzGuiWndInfo::~CQzGuiWndInfo()
{
    --g_nLiveRecords;
}

size_t CQzGuiWndInfo::GetLiveCount()
{
    return g_nLiveRecords;
}

void CQzGuiWndInfo::Drop() const
{
    if (--m_nHolds == 0 && m_bRetired)
        delete this;
}

void CQzGuiWndInfo::Retire(std::unique_ptr<CQzGuiWndInfo> pRecord)
{
    if (!pRecord || pRecord->m_nHolds == 0)
        return;
    pRecord->m_bRetired = true;
    pRecord.release();
}

const char* CQzGuiWndInfo::GetExtraValue(const char* key) const
{
    if (!key)
        return nullptr;
    for (const auto& pair : m_vecExtra)
    {
        if (pair.first == key)
            return pair.second.c_str();
    }
    return nullptr;
}

void CQzGuiWndInfo::ResetToDefaults()
{
    m_wX = 0;
    m_wY = 0;
    m_nHelpId = 0;
    m_wWidth = 65535;
    m_wHeight = 65535;
    m_nLinkIndex = 65535;
    m_nFlyDir = 0;
    m_nReserved2 = 0;
    m_nTipId = 0;
    m_wGroup = 65535;
    m_dwFontColor = 65535;
    m_nFontSize = 65535;
    m_nStyle = 0;
    m_dwFlags = 0;
    m_nParentId = 0;
    m_nCtrlId = 0;
    m_wOffsetX = 0;
    m_wOffsetY = 0;
    m_wCtrlType = 1;
    m_nType = 0;
    m_nBackShowMode = 0;
    m_ptTipOffset = {65535, 65535};
    for (TextField field :
         {kAniSection, kFlyInEffect, kFlyOutEffect, kBgEffect, kFgEffect, kTipText})
        SetText(field, nullptr);
    m_vecExtra.clear();
}

const char* CQzGuiWndInfo::GetText(TextField field) const
{
    for (const auto& pEntry : m_vecText)
    {
        if (pEntry->field == field)
            return pEntry->text.c_str();
    }
    return "";
}

void CQzGuiWndInfo::SetText(TextField field, const char* text)
{
    for (const auto& pEntry : m_vecText)
    {
        if (pEntry->field == field)
        {
            pEntry->text = text ? text : "";
            return;
        }
    }
    if (text && *text)
        m_vecText.push_back(std::make_unique<TextEntry>(TextEntry{field, text}));
}

void CQzGuiWndInfo::AddExtra(const char* key, const char* value)
{
    m_vecExtra.emplace_back(key ? key : "", value ? value : "");
}

} // namespace QzGui
