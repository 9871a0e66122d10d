// The logic library's screen adapter. The game lays its windows out on a logical screen (the
// render device's screen size) and shows it in a window of another size; the adapter converts
// between the two and tells which layout set (resolution index) and font suit the screen.
#pragma once

#include "platform/system/QzSystem.h"

#include <string>

namespace QzPlatform
{

class CQzScreenAdapter
{
public:
    // Conversion directions of ConvertPoint and ConvertRect.
    enum
    {
        kToLogical = 0, // window (screen) pixels to logical pixels
        kToScreen = 1,  // logical pixels to window pixels
    };

    // The host's value when set; otherwise from the logical screen width: below 800 -> 2, below
    // 1024 -> 1, else 0.
    int GetResolutionIndex() const;
    // A negative index goes back to deriving it from the screen width.
    void SetResolutionIndex(int index) { m_nResolutionIndex = index; }

    // Configured font size, 0 when not configured.
    int GetFontSize() const { return m_nFontSize; }
    void SetFontSize(int size) { m_nFontSize = size; }
    // Configured font face, "" when not configured; never null.
    const char* GetFontName() const { return m_strFontName.c_str(); }
    void SetFontName(const char* face) { m_strFontName = face ? face : ""; }

    // Size of the window that shows the logical screen; 0 or negative means "the same as the
    // logical screen" (conversions are then the identity).
    void SetWindowSize(int width, int height);

    // Converts by the ratio of window size to logical size on each axis, rounding to the
    // nearest pixel (halves away from zero). Logical -> screen -> logical gives the point back
    // whenever the window is at least as large as the logical screen; screen -> logical ->
    // screen is exact at ratio 1 and within one pixel up to ratio 2.
    void ConvertPoint(POINT& point, int direction) const;
    // Converts both corners as points.
    void ConvertRect(RECT& rect, int direction) const;

    // Back to the defaults (no host settings).
    void Reset();

private:
    LONG Convert(LONG value, int direction, int windowExtent, int logicalExtent) const;

    int m_nResolutionIndex = -1;
    int m_nFontSize = 0;
    std::string m_strFontName;
    int m_nWindowWidth = 0;
    int m_nWindowHeight = 0;
};

// The process-wide adapter.
CQzScreenAdapter& GetScreenAdapter();

} // namespace QzPlatform
