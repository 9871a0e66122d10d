// The render data library: the data set that gives animation sections of .ani files, the
// string table and the emotion icon set. Sections are cached by the data set; a pointer it hands
// out stays valid until the section is purged (unused past its keep-alive, checked inside
// GetAni) or the data set reloads, so callers look sections up by name every frame and never
// keep the pointer.
#pragma once

#include "platform/render/C3Types.h"
#include "platform/system/QzSystem.h"

#include <cstdint>

// One picture of a section.
class IDataFrame
{
public:
    // Size in pixels; 0 x 0 when the image could not be loaded.
    virtual int GetFrameWidth() = 0;
    virtual int GetFrameHeight() = 0;
    // 0 for an ordinary picture, 2 for a hit-test mask.
    virtual int GetKind() = 0;
    // True when the pixel (x, y) of the frame is transparent or outside the frame; false is a
    // hit.
    virtual bool IsTransparentAt(int x, int y) = 0;

protected:
    ~IDataFrame() = default;
};

// Draw mode of a fading trail (a progress bar's previous value): drawn at half the opacity.
constexpr int QZ_DRAWMODE_TRAIL = 99;

// An animation section: a numbered list of frames. drawMode QZ_DRAWMODE_TRAIL halves the
// opacity; other draw modes and reserved are accepted for the callers' sake and do not change
// the drawing.
class IDataAni
{
public:
    // Draws the frame at its size with its top-left at (x, y), scaled about (x, y). FALSE when
    // the frame does not exist or has no image.
    virtual BOOL ShowAni(int frame, int x, int y, int drawMode = 0, int reserved = 0,
                         float scale = 1.0f, uint8_t alpha = 255) = 0;
    // Draws the part `source` of the frame (frame coordinates; null = the whole frame) stretched
    // to width x height at (x, y). A source reaching outside the frame is cut to it, and the
    // destination with it.
    virtual BOOL ShowAniEx(int frame, int x, int y, const RECT* source, int width, int height,
                           int drawMode = 0, int reserved = 0, float scale = 1.0f,
                           uint8_t alpha = 255) = 0;
    // The frame, or null for an index outside the section.
    virtual IDataFrame* GetFrame(int index) = 0;
    virtual int GetFrameCount() = 0;
    // The frame's size; FALSE (and 0 x 0) for an index outside the section.
    virtual BOOL GetAniSize(C3_SIZE& size, int frame) = 0;

protected:
    ~IDataAni() = default;
};

// The emotion icons that emotion text draws in place of its codes.
class IDataIcon
{
public:
    // The section of an emotion code ("#05", "#12|34"), or null when the code is malformed or
    // has no icon.
    virtual IDataAni* GetIconAni(const char* code) = 0;

protected:
    ~IDataIcon() = default;
};

class IDataSet
{
public:
    // The section of an .ani file (names of any letter case), or null when the file or the
    // section is missing or broken. The section is kept while it is asked for at least once
    // every keepAliveMs milliseconds. flag and reserved do not change the result.
    virtual IDataAni* GetAni(const char* file, const char* section, int flag = 0,
                             DWORD keepAliveMs = 30000, int reserved = 0) = 0;
    // A string-table text; never null.
    virtual const char* GetString(DWORD id) = 0;
    // Icon set 0 is the emotion icon set; there is no other (null).
    virtual IDataIcon* GetIconSet(int index) = 0;
    // Forgets every section and parsed file, so that the next look-ups read the files again.
    virtual void Reload() = 0;

protected:
    ~IDataSet() = default;
};

// The process-wide data set.
IDataSet* TableDataSetQuery();

// What a caller that asks for the same section over and over keeps of it between look-ups
// (CTableDataSet::GetAni): the data set's entry and the epoch it was found under. Reset it when
// the names it was found under change. Packed to 12 bytes: every window holds one.
namespace QzPlatform
{
#pragma pack(push, 4)
struct AniRef
{
    const void* pEntry = nullptr;
    uint32_t nEpoch = 0;
};
#pragma pack(pop)
} // namespace QzPlatform
