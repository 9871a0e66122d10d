#include "platform/services/QzEffectObject.h"

#include "platform/services/QzClock.h"

#include "platform/render/DataSet.h"
#include "platform/services/QzAniStore.h"
#include "platform/services/QzText.h"
#include "platform/system/QzSystem.h"

#include <climits>
#include <cmath>
#include <new>
#include <string>
#include <vector>

namespace QzPlatform
{

namespace
{

constexpr DWORD kFrameMs = 100;

EffectObjectFactory g_pfnFactory = nullptr;

IDataAni* FindSection(const char* pszName)
{
    return TableDataSetQuery()->GetAni(kControlAniFile, pszName, 0, CQzAniStore::kKeepAliveMs, 0);
}

float RowLength(float a, float b, float c)
{
    return std::sqrt(a * a + b * b + c * c);
}

// The value rounded to an int; false when it is not a number or lies outside the int range.
// Placement data can scale and move a part anywhere: such a part is off every screen.
bool RoundToInt(double value, int* pResult)
{
    const double rounded = std::round(value);
    if (!(rounded >= static_cast<double>(INT_MIN) && rounded <= static_cast<double>(INT_MAX)))
        return false;
    *pResult = static_cast<int>(rounded);
    return true;
}

// The sprite object: one looping animation section per part.
class CQzEffectObject final : public IEffectObject
{
public:
    void Release() override { delete this; }
    // Sprites follow the clock when they are drawn: there is nothing to advance.
    int Update() override { return 1; }
    void StartEffect(const char* pszName, int nFlag, int nReserved) override;
    void Draw(int x, int y, int nIndex) override;
    int AddPart(const char* pszName, int nFlag, int nReserved) override;
    void Reserved05(int) override {}
    void Play(const char* pszName) override;
    void Reserved07(int) override {}
    void Reserved08(int) override {}
    void Reserved09(int, int) override {}
    void Reserved10(int, int) override {}
    void SetPartMatrix(const D3DXMATRIX& matrix, int nIndex) override;
    void Reserved12() override {}
    void Reserved13(bool) override {}
    void Reserved14(int, int, bool) override {}
    void Reserved15(int, int, int, int) override {}
    int64_t Reserved16(int) override { return 0; }
    int HasPart(const char* pszName, int, int) override { return FindPart(pszName) != -1; }
    int FindPart(const char* pszName) override;
    void PlayPart(int nIndex) override;
    void Reserved20(void*) override {}
    void Reserved21(QzEffectVector, int) override {}
    void Reserved22(QzEffectVector, int) override {}
    void Reserved23(int, int, int) override {}
    int Reserved24() override { return 1; }
    void Reserved25(int, int) override {}

private:
    struct Part
    {
        std::string strName;
        int nFlag = 0;
        bool bPlaying = false;
        DWORD dwStart = 0;
        D3DXMATRIX matrix;
    };

    bool IsIndex(int nIndex) const
    {
        return nIndex >= 0 && nIndex < static_cast<int>(m_vecParts.size());
    }
    static void Start(Part& part);
    static void DrawPart(const Part& part, int x, int y);

    std::vector<Part> m_vecParts; // index = position
};

void CQzEffectObject::Start(Part& part)
{
    part.bPlaying = true;
    part.dwStart = QzPlatform::NowMs();
}

void CQzEffectObject::StartEffect(const char* pszName, int nFlag, int)
{
    if (pszName == nullptr || *pszName == '\0')
    {
        PlayPart(-1);
        return;
    }
    const int nIndex = AddPart(pszName, nFlag, 0);
    if (nIndex != -1)
        Start(m_vecParts[nIndex]);
}

int CQzEffectObject::AddPart(const char* pszName, int nFlag, int)
{
    if (pszName == nullptr || *pszName == '\0')
        return -1;
    const int nHeld = FindPart(pszName);
    if (nHeld != -1)
        return nHeld;
    if (FindSection(pszName) == nullptr)
        return -1;
    Part part;
    part.strName = pszName;
    part.nFlag = nFlag;
    D3DXMatrixIdentity(&part.matrix);
    m_vecParts.push_back(part);
    return static_cast<int>(m_vecParts.size()) - 1;
}

void CQzEffectObject::Play(const char* pszName)
{
    for (Part& part : m_vecParts)
    {
        if (CompareNoCase(part.strName.c_str(), pszName) == 0)
            Start(part);
    }
}

void CQzEffectObject::SetPartMatrix(const D3DXMATRIX& matrix, int nIndex)
{
    if (IsIndex(nIndex))
        m_vecParts[nIndex].matrix = matrix;
}

int CQzEffectObject::FindPart(const char* pszName)
{
    if (pszName == nullptr)
        return -1;
    for (size_t i = 0; i < m_vecParts.size(); ++i)
    {
        if (CompareNoCase(m_vecParts[i].strName.c_str(), pszName) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

void CQzEffectObject::PlayPart(int nIndex)
{
    if (nIndex == -1)
    {
        for (Part& part : m_vecParts)
            Start(part);
        return;
    }
    if (IsIndex(nIndex))
        Start(m_vecParts[nIndex]);
}

void CQzEffectObject::Draw(int x, int y, int nIndex)
{
    if (nIndex != -1)
    {
        if (IsIndex(nIndex))
            DrawPart(m_vecParts[nIndex], x, y);
        return;
    }
    for (const Part& part : m_vecParts)
        DrawPart(part, x, y);
}

// The section is looked up on every draw: section pointers live for one frame only.
void CQzEffectObject::DrawPart(const Part& part, int x, int y)
{
    if (!part.bPlaying)
        return;
    IDataAni* pAni = FindSection(part.strName.c_str());
    if (pAni == nullptr || pAni->GetFrameCount() <= 0)
        return;
    const DWORD dwElapsed = QzPlatform::NowMs() - part.dwStart;
    const int nFrame = static_cast<int>((dwElapsed / kFrameMs) % pAni->GetFrameCount());
    C3_SIZE size = {0, 0};
    if (!pAni->GetAniSize(size, nFrame))
        return;
    const D3DXMATRIX& m = part.matrix;
    const float fScaleX = RowLength(m._11, m._12, m._13);
    const float fScaleZ = RowLength(m._31, m._32, m._33);
    int nWidth = 0;
    int nHeight = 0;
    int nLeft = 0;
    int nTop = 0;
    if (!RoundToInt(size.iWidth * fScaleX, &nWidth) ||
        !RoundToInt(size.iHeight * fScaleZ, &nHeight) ||
        !RoundToInt(x + std::round(static_cast<double>(m._41)), &nLeft) ||
        !RoundToInt(y + std::round(static_cast<double>(m._43)), &nTop))
        return;
    if (nWidth <= 0 || nHeight <= 0)
        return;
    pAni->ShowAniEx(nFrame, nLeft, nTop, nullptr, nWidth, nHeight);
}

} // namespace

IEffectObject* CreateEffectObject()
{
    if (g_pfnFactory != nullptr)
        return g_pfnFactory();
    return new (std::nothrow) CQzEffectObject();
}

void SetEffectObjectFactory(EffectObjectFactory factory)
{
    g_pfnFactory = factory;
}

} // namespace QzPlatform
