// The logic library's animation store: fills frame handles from animation sections. It shares
// the data set's cache (TableDataSetQuery), so a section is parsed and loaded once for both.
#pragma once

#include "platform/services/AniHandle.h"

namespace QzPlatform
{

// The animation file of every window background, control, tip and cursor section.
constexpr const char* kControlAniFile = "ani/Control.ani";

class CQzAniStore
{
public:
    // Keep-alive that the store passes to the data set, as every drawing caller does.
    static constexpr DWORD kKeepAliveMs = 30000;

    // Fills the handle with the section of the file ("ani/Control.ani"); false and an invalid
    // handle when the file or the section is missing or broken.
    bool LoadAni(CAniHandle& handle, const char* file, const char* section);
    // Reloads the data set: the next look-ups read the files again.
    void Reload();
};

// The process-wide store.
CQzAniStore* GetAniStore();

} // namespace QzPlatform
