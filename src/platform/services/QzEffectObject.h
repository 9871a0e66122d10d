// The logic library's 3D effect object: a set of named parts that the object loads, animates and
// draws, each placed by a matrix its owner sets every frame. The GUI's effect holder
// (CGui3DEffect) creates one through CreateEffectObject and drives it.
//
// Our object draws every part as a looping sprite: the part name is the name of an animation
// section of "ani/Control.ani", its frame advances every 100 ms of timeGetTime from the moment the
// part is played, and the part matrix places it on the screen: the matrix's x and z translation
// (_41, _43) offset the sprite from the draw position (z runs down the screen), and the lengths
// of the matrix's first and third rows scale its width and height. A part draws only after Play,
// PlayPart or StartEffect started it.
//
// The operations named ReservedNN (NN = the slot in the interface, release being slot 0) keep
// the interface in the order of the logic library's; nothing in this library gives them a role.
// Our object accepts and ignores their arguments and returns the default a caller without an
// object would get (ReservedNN results: 0 for slot 16, 1 for slot 24).
#pragma once

#include "platform/render/D3DXMath.h"

#include <cstdint>

namespace QzPlatform
{

// A 12-byte vector of three floats, as the logic library passes positions and scales.
struct QzEffectVector
{
    float x;
    float y;
    float z;
};

class IEffectObject
{
public:
    // Destroys the object (the owner's last holder calls it once).
    virtual void Release() = 0;
    // Advances the effect; nonzero while it is alive.
    virtual int Update() = 0;
    // Starts a named effect: plays the part of that name, adding the section as a part first
    // (with nFlag) when it is not held; a null or empty name plays every part. nReserved is
    // accepted and ignored.
    virtual void StartEffect(const char* pszName, int nFlag, int nReserved) = 0;
    // Draws the playing parts (nIndex -1) or the one part at the position.
    virtual void Draw(int x, int y, int nIndex) = 0;
    // Adds the named part; its index, or -1 for a null or empty name or a section that does not
    // exist. A name already held gives the index it has. nFlag is kept with the part.
    virtual int AddPart(const char* pszName, int nFlag, int nReserved) = 0;
    virtual void Reserved05(int nValue) = 0;
    // Plays (restarts) every part of that name.
    virtual void Play(const char* pszName) = 0;
    virtual void Reserved07(int nValue) = 0;
    virtual void Reserved08(int nValue) = 0;
    virtual void Reserved09(int nValue1, int nValue2) = 0;
    virtual void Reserved10(int nValue1, int nValue2) = 0;
    // The placement of one part; an index that is not a part's is ignored.
    virtual void SetPartMatrix(const D3DXMATRIX& matrix, int nIndex) = 0;
    virtual void Reserved12() = 0;
    virtual void Reserved13(bool bValue) = 0;
    virtual void Reserved14(int nValue1, int nValue2, bool bValue) = 0;
    virtual void Reserved15(int nValue1, int nValue2, int nValue3, int nValue4) = 0;
    virtual int64_t Reserved16(int nValue) = 0;
    // Nonzero when a part of that name is held; nValue1 and nValue2 are ignored.
    virtual int HasPart(const char* pszName, int nValue1, int nValue2) = 0;
    // The index of the part of that name, or -1.
    virtual int FindPart(const char* pszName) = 0;
    // Plays (restarts) the part with that index, or every part for -1.
    virtual void PlayPart(int nIndex) = 0;
    virtual void Reserved20(void* pValue) = 0;
    virtual void Reserved21(QzEffectVector vector, int nValue) = 0;
    virtual void Reserved22(QzEffectVector vector, int nValue) = 0;
    virtual void Reserved23(int nValue1, int nValue2, int nValue3) = 0;
    virtual int Reserved24() = 0;
    virtual void Reserved25(int nValue1, int nValue2) = 0;

protected:
    ~IEffectObject() = default;
};

// The logic library's effect factory: a new object, or null when none can be made. It uses the
// factory a host installed, else makes our sprite object.
IEffectObject* CreateEffectObject();

// A host with its own effect objects (or a test) installs their factory; null restores ours.
using EffectObjectFactory = IEffectObject* (*)();
void SetEffectObjectFactory(EffectObjectFactory factory);

} // namespace QzPlatform
