#include "layout/QzCursorMgr.h"

#include "framework/IQzGuiMgr.h"
#include "layout/QzCursorEntry.h"
#include "platform/render/DataSet.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzClock.h"
#include "platform/services/QzEffectObject.h"

namespace QzGui
{

namespace
{

// A software cursor shows the next frame of its section every 200 ms.
constexpr DWORD kFrameMs = 200;

} // namespace

CQzCursorMgr::CQzCursorMgr() : m_pEffect(QzPlatform::CreateEffectObject()) {}

CQzCursorMgr::~CQzCursorMgr()
{
    ClearCursorCache();
    if (m_pEffect)
        m_pEffect->Release();
}

int CQzCursorMgr::SetGuiMgr(IQzGuiMgr* pMgr)
{
    m_pGuiMgr = pMgr;
    return 1;
}

void CQzCursorMgr::SetCursorByName(const char* pszName)
{
    if (!pszName)
    {
        m_strLastName.clear();
        return;
    }
    if (!m_strLastName.empty() && m_strLastName == pszName)
        return;
    if (!m_pGuiMgr)
        return;
    const QzCursorEntry* pEntry = m_pGuiMgr->FindCursor(pszName);
    if (!pEntry)
        return;
    switch (pEntry->type)
    {
    case QZ_CURSOR_TYPE_FILE:
        SetCursor(LoadFileCursor(pEntry->cursor));
        if (m_pEffect)
            m_pEffect->StartEffect(nullptr, 0, 0);
        break;
    case QZ_CURSOR_TYPE_ANI:
        m_strCursor = pEntry->cursor;
        SetCursor(nullptr);
        if (m_pEffect)
            m_pEffect->StartEffect(nullptr, 0, 0);
        break;
    case QZ_CURSOR_TYPE_EFFECT:
        ShowEffectCursor(pEntry->cursor);
        break;
    default:
        break;
    }
    m_nType = pEntry->type;
    m_strLastName = pszName;
}

// A file is loaded once; later requests get the cached handle. A failed load is not cached, so
// a file that appears later (a patched bundle) is still found.
HCURSOR CQzCursorMgr::LoadFileCursor(const std::string& strFile)
{
    const auto found = m_mapCursorCache.find(strFile);
    if (found != m_mapCursorCache.end())
        return found->second;
    HCURSOR hCursor = LoadCursorFromFileA(strFile.c_str());
    if (hCursor)
        m_mapCursorCache[strFile] = hCursor;
    return hCursor;
}

void CQzCursorMgr::ShowEffectCursor(const std::string& strPart)
{
    m_strCursor = strPart;
    if (!m_pEffect || m_pEffect->HasPart(strPart.c_str(), 0, 0))
        return;
    m_pEffect->AddPart(strPart.c_str(), 1, 0);
    m_pEffect->PlayPart(-1);
}

void CQzCursorMgr::DrawCursor()
{
    if (!m_pGuiMgr)
        return;
    if (m_nType == QZ_CURSOR_TYPE_ANI)
        DrawAniCursor();
    else if (m_nType == QZ_CURSOR_TYPE_EFFECT)
        DrawEffectCursor();
}

void CQzCursorMgr::DrawAniCursor()
{
    if (m_strCursor.empty())
        return;
    IDataAni* pAni = TableDataSetQuery()->GetAni(QzPlatform::kControlAniFile, m_strCursor.c_str(),
                                                 1, QzPlatform::CQzAniStore::kKeepAliveMs, 0);
    if (!pAni)
        return;
    const int nCount = pAni->GetFrameCount();
    if (nCount <= 0)
        return;
    POINT pt = {0, 0};
    m_pGuiMgr->GetMousePos(&pt);
    const int nFrame = static_cast<int>((QzPlatform::NowMs() / kFrameMs) % nCount);
    pAni->ShowAni(nFrame, pt.x, pt.y, 0, 0, 1.0f);
}

void CQzCursorMgr::DrawEffectCursor()
{
    if (!m_pEffect)
        return;
    POINT pt = {0, 0};
    m_pGuiMgr->GetMousePos(&pt);
    int nX = pt.x;
    int nY = pt.y;
    m_pGuiMgr->TransformPoint(pt.x, pt.y, &nX, &nY);
    const int nIndex = m_pEffect->FindPart(m_strCursor.c_str());
    if (nIndex < 0)
        return;
    m_pEffect->Draw(nX, nY, nIndex);
}

const char* CQzCursorMgr::GetCursorAniName() const
{
    if (m_nType == QZ_CURSOR_TYPE_FILE)
        return nullptr;
    return m_strCursor.c_str();
}

void CQzCursorMgr::ClearCursorCache()
{
    for (const auto& entry : m_mapCursorCache)
        DestroyCursor(entry.second);
    m_mapCursorCache.clear();
}

} // namespace QzGui
