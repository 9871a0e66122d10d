#include "effects/Gui3DEffect.h"

#include "effects/GuiEffectInfo.h"

#include <cstdint>
#include <new>

namespace
{

constexpr float kPi = 3.1415927f;
// The plane the parts lie on is tilted back by 30 degrees for scaling, then tilted forward again.
constexpr float kTilt = 0.5235988f;

// 64 bits: a rotation of the placement file added to the caller's may leave the int range.
float DegreesToRadians(int64_t nDegrees)
{
    return static_cast<float>(nDegrees) / 180.0f * kPi;
}

void ReleaseEffectObject(QzPlatform::IEffectObject* pEffect)
{
    if (pEffect != nullptr)
        pEffect->Release();
}

} // namespace

CGui3DEffect::~CGui3DEffect() = default;

CGui3DEffect* CGui3DEffect::CreateNew()
{
    return new (std::nothrow) CGui3DEffect();
}

void CGui3DEffect::Destroy(CGui3DEffect* pEffect)
{
    delete pEffect;
}

QzPlatform::IEffectObject* CGui3DEffect::GetEffectObject()
{
    if (m_pEffect == nullptr)
    {
        QzPlatform::IEffectObject* pEffect = QzPlatform::CreateEffectObject();
        if (pEffect != nullptr)
            m_pEffect.reset(pEffect, ReleaseEffectObject);
    }
    return m_pEffect.get();
}

int CGui3DEffect::AddEffect(const char* pszPart, int nFlag, bool bFit)
{
    if (pszPart == nullptr || GetEffectObject() == nullptr)
        return -1;
    const int nIndex = m_pEffect->AddPart(pszPart, nFlag, 0);
    if (nIndex == -1)
        return -1;
    QzEffectPart part;
    part.strName = pszPart;
    part.nIndex = nIndex;
    const QzEffectPlacement* pPlacement = CGuiEffectInfo::Instance().Find(pszPart);
    if (pPlacement != nullptr)
    {
        part.fX = static_cast<float>(pPlacement->nOffsetX);
        part.fZ = static_cast<float>(pPlacement->nOffsetZ);
        part.fRotation = DegreesToRadians(pPlacement->nRotation);
        if (bFit)
            FitPart(nIndex, part, *pPlacement);
    }
    m_vecParts.push_back(part);
    return nIndex;
}

void CGui3DEffect::SetRect(const RECT& rc)
{
    m_bRectSet = 1;
    m_rc = rc;
    if (m_pEffect == nullptr)
        return;
    for (auto it = m_vecParts.rbegin(); it != m_vecParts.rend(); ++it)
    {
        const int nIndex = m_pEffect->FindPart(it->strName.c_str());
        const QzEffectPlacement* pPlacement = CGuiEffectInfo::Instance().Find(it->strName.c_str());
        if (nIndex != -1 && pPlacement != nullptr)
            FitPart(nIndex, *it, *pPlacement);
    }
}

void CGui3DEffect::ClearRect()
{
    m_bRectSet = 0;
    m_rc = {0, 0, 0, 0};
}

void CGui3DEffect::FitPart(int nIndex, QzEffectPart& part, const QzEffectPlacement& placement)
{
    if (m_pEffect == nullptr || !m_bRectSet)
        return;
    const int nWidth = m_rc.right - m_rc.left;
    const int nHeight = m_rc.bottom - m_rc.top;
    if (nWidth == 0 || nHeight == 0)
        return;
    part.fScaleX = placement.fScaleX;
    if (placement.nRefWidth != 0)
        part.fScaleX *= static_cast<float>(nWidth) / static_cast<float>(placement.nRefWidth);
    part.fScaleZ = placement.fScaleZ;
    if (placement.nRefHeight != 0)
        part.fScaleZ *= static_cast<float>(nHeight) / static_cast<float>(placement.nRefHeight);
    part.nIndex = nIndex;
}

void CGui3DEffect::SetPartScale(float fScaleX, float fScaleZ, int nIndex)
{
    for (QzEffectPart& part : m_vecParts)
    {
        if (nIndex != -1 && part.nIndex != nIndex)
            continue;
        const QzEffectPlacement placement = CGuiEffectInfo::Instance().Get(part.strName.c_str());
        part.fScaleX = fScaleX + placement.fScaleX;
        part.fScaleZ = fScaleZ + placement.fScaleZ;
    }
}

void CGui3DEffect::SetPartRotation(int nDegrees, int nIndex)
{
    for (QzEffectPart& part : m_vecParts)
    {
        if (nIndex != -1 && part.nIndex != nIndex)
            continue;
        const QzEffectPlacement placement = CGuiEffectInfo::Instance().Get(part.strName.c_str());
        part.fRotation = DegreesToRadians(static_cast<int64_t>(nDegrees) + placement.nRotation);
    }
}

D3DXMATRIX CGui3DEffect::ComputePartMatrix(const QzEffectPart& part)
{
    D3DXMATRIX result;
    D3DXMATRIX step;
    D3DXMatrixTranslation(&result, part.fX, 0.0f, part.fZ);
    D3DXMatrixMultiply(&result, &result, D3DXMatrixRotationX(&step, -kTilt));
    D3DXMatrixMultiply(&result, &result,
                       D3DXMatrixScaling(&step, part.fScaleX, 1.0f, part.fScaleZ));
    D3DXMatrixMultiply(&result, &result, D3DXMatrixRotationX(&step, kTilt));
    D3DXMatrixMultiply(&result, &result, D3DXMatrixRotationY(&step, part.fRotation));
    return result;
}

void CGui3DEffect::Draw(int x, int y, int nIndex)
{
    if (m_pEffect == nullptr)
        return;
    for (auto it = m_vecParts.rbegin(); it != m_vecParts.rend(); ++it)
    {
        if (nIndex != -1 && it->nIndex != nIndex)
            continue;
        // A part that matches a given index has that index: the part's index serves both cases.
        m_pEffect->SetPartMatrix(ComputePartMatrix(*it), it->nIndex);
    }
    m_pEffect->Draw(x, y, nIndex);
}

int CGui3DEffect::Update()
{
    return m_pEffect != nullptr ? m_pEffect->Update() : 1;
}

void CGui3DEffect::StartEffect(const char* pszName, int nFlag, int nReserved)
{
    if (m_pEffect != nullptr)
        m_pEffect->StartEffect(pszName, nFlag, nReserved);
}

void CGui3DEffect::Reserved05(int nValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved05(nValue);
}

void CGui3DEffect::Play(const char* pszName)
{
    if (m_pEffect != nullptr)
        m_pEffect->Play(pszName);
}

void CGui3DEffect::Reserved07(int nValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved07(nValue);
}

void CGui3DEffect::Reserved08(int nValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved08(nValue);
}

void CGui3DEffect::Reserved09(int nValue1, int nValue2)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved09(nValue1, nValue2);
}

void CGui3DEffect::Reserved10(int nValue1, int nValue2)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved10(nValue1, nValue2);
}

void CGui3DEffect::Reserved12()
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved12();
}

void CGui3DEffect::Reserved13(bool bValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved13(bValue);
}

void CGui3DEffect::Reserved14(int nValue1, int nValue2, bool bValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved14(nValue1, nValue2, bValue);
}

void CGui3DEffect::Reserved15(int nValue1, int nValue2, int nValue3, int nValue4)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved15(nValue1, nValue2, nValue3, nValue4);
}

int64_t CGui3DEffect::Reserved16(int nValue)
{
    return m_pEffect != nullptr ? m_pEffect->Reserved16(nValue) : 0;
}

int CGui3DEffect::HasPart(const char* pszName, int nValue1, int nValue2)
{
    return m_pEffect != nullptr ? m_pEffect->HasPart(pszName, nValue1, nValue2) : 0;
}

int CGui3DEffect::FindPart(const char* pszName)
{
    return m_pEffect != nullptr ? m_pEffect->FindPart(pszName) : -1;
}

void CGui3DEffect::PlayPart(int nIndex)
{
    if (m_pEffect != nullptr)
        m_pEffect->PlayPart(nIndex);
}

void CGui3DEffect::Reserved20(void* pValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved20(pValue);
}

void CGui3DEffect::Reserved21(QzPlatform::QzEffectVector vector, int nValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved21(vector, nValue);
}

void CGui3DEffect::Reserved22(QzPlatform::QzEffectVector vector, int nValue)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved22(vector, nValue);
}

void CGui3DEffect::Reserved23(int nValue1, int nValue2, int nValue3)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved23(nValue1, nValue2, nValue3);
}

int CGui3DEffect::Reserved24()
{
    return m_pEffect != nullptr ? m_pEffect->Reserved24() : 1;
}

void CGui3DEffect::Reserved25(int nValue1, int nValue2)
{
    if (m_pEffect != nullptr)
        m_pEffect->Reserved25(nValue1, nValue2);
}
