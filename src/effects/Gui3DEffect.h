// The GUI-side holder of one 3D effect object of the logic library: it creates the object on
// first use, keeps the named parts added to it, places every part in the window's space with a
// fixed tilted-plane transform (fitted to the window rectangle when the placement table says
// how) and forwards the remaining operations. Every window holds a front and a back one.
//
// Copies share the effect object: it is released once, by the last holder that points to it.
// The forwarding operations never create the object; without one they return the default given
// with each. Release, Draw, AddPart and SetPartMatrix of the object are not forwarded: the
// holder's own destructor, Draw and AddEffect use them and keep the part list in step.
#pragma once

#include "platform/render/D3DXMath.h"
#include "platform/services/QzEffectObject.h"
#include "platform/system/QzSystem.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct QzEffectPlacement;

// One part added to the effect object, with its place in the window's space.
struct QzEffectPart
{
    std::string strName;
    int nIndex = -1; // the effect object's index of the part
    float fX = 0.0f;
    float fZ = 0.0f;
    float fScaleX = 1.0f;
    float fScaleZ = 1.0f;
    float fRotation = 0.0f; // radians about the vertical axis
};

class CGui3DEffect
{
public:
    CGui3DEffect() = default;
    CGui3DEffect(const CGui3DEffect& other) = default;
    CGui3DEffect& operator=(const CGui3DEffect& other) = default;
    virtual ~CGui3DEffect();

    // A new holder, or null when out of memory; the destroyer deletes one (nothing for null).
    static CGui3DEffect* CreateNew();
    static void Destroy(CGui3DEffect* pEffect);

    // The effect object, created through the logic library's factory on the first call (null
    // when that fails).
    QzPlatform::IEffectObject* GetEffectObject();

    // Adds the named part (nFlag is passed on to the object) and places it from the placement
    // table, fitted to the rectangle when bFit. The object's index of the part, or -1 for a null
    // name, no effect object or a part the object refuses.
    int AddEffect(const char* pszPart, int nFlag, bool bFit);
    // The window rectangle the parts are fitted to; refits every part the table places.
    void SetRect(const RECT& rc);
    void ClearRect();
    // Scales the part to the rectangle as the placement says and gives it nIndex. Nothing
    // without an effect object, without a rectangle or for an empty one.
    void FitPart(int nIndex, QzEffectPart& part, const QzEffectPlacement& placement);
    // Scale = given + placement scale, for the part with that index (-1: every part).
    void SetPartScale(float fScaleX, float fScaleZ, int nIndex);
    // Rotation = degrees + placement rotation, in radians, for the part with that index (-1:
    // every part).
    void SetPartRotation(int nDegrees, int nIndex);
    // The part's matrix: translation, tilt back, scale, tilt forward, turn (row vectors).
    static D3DXMATRIX ComputePartMatrix(const QzEffectPart& part);
    // Places the parts with that index (-1: all) and draws the object at (x, y).
    void Draw(int x, int y, int nIndex);

    // Forwarded to the effect object; the defaults apply without one.
    int Update(); // 1
    void StartEffect(const char* pszName, int nFlag, int nReserved);
    void Reserved05(int nValue);
    void Play(const char* pszName);
    void Reserved07(int nValue);
    void Reserved08(int nValue);
    void Reserved09(int nValue1, int nValue2);
    void Reserved10(int nValue1, int nValue2);
    void Reserved12();
    void Reserved13(bool bValue);
    void Reserved14(int nValue1, int nValue2, bool bValue);
    void Reserved15(int nValue1, int nValue2, int nValue3, int nValue4);
    int64_t Reserved16(int nValue);                             // 0
    int HasPart(const char* pszName, int nValue1, int nValue2); // 0
    int FindPart(const char* pszName);                          // -1
    void PlayPart(int nIndex);
    void Reserved20(void* pValue);
    void Reserved21(QzPlatform::QzEffectVector vector, int nValue);
    void Reserved22(QzPlatform::QzEffectVector vector, int nValue);
    void Reserved23(int nValue1, int nValue2, int nValue3);
    int Reserved24(); // 1
    void Reserved25(int nValue1, int nValue2);

    BOOL IsRectSet() const { return m_bRectSet; }
    const RECT& GetRect() const { return m_rc; }
    const std::vector<QzEffectPart>& GetParts() const { return m_vecParts; }
    // Whether the effect object exists (without creating it).
    bool HasEffectObject() const { return m_pEffect != nullptr; }

private:
    BOOL m_bRectSet = 0;
    RECT m_rc = {0, 0, 0, 0};
    std::vector<QzEffectPart> m_vecParts; // in the order added
    // Shared by copies; the last one releases the object through its Release.
    std::shared_ptr<QzPlatform::IEffectObject> m_pEffect;
};
