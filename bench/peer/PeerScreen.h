// The screen both sides of the peer comparison draw: N windows of 50 controls laid out 5 to a
// row, overlapping at fixed places on a full-HD screen, the mouse on the same path every frame.
#pragma once

#include <cmath>

namespace PeerBench
{

constexpr int kScreenWidth = 1920;
constexpr int kScreenHeight = 1080;
constexpr int kControlsPerWindow = 50;
constexpr int kColumns = 5;
constexpr int kColumnWidth = 110;
constexpr int kItemWidth = 90;

// The kind of the i-th control of a window: button, check box, label, slider, progress bar,
// selectable row.
enum ControlKind
{
    kButton,
    kCheck,
    kLabel,
    kSlider,
    kProgress,
    kSelectable,
    kKinds
};

inline ControlKind KindOf(int index)
{
    return static_cast<ControlKind>(index % kKinds);
}

// Where window w goes, for a window of the given size.
inline float WindowX(int w, float width)
{
    return std::fmod(17.0f + static_cast<float>(w) * 37.0f,
                     std::fmax(1.0f, static_cast<float>(kScreenWidth) - width));
}
inline float WindowY(int w, float height)
{
    return std::fmod(11.0f + static_cast<float>(w) * 23.0f,
                     std::fmax(1.0f, static_cast<float>(kScreenHeight) - height));
}

inline float MouseX(int frame)
{
    return 960.0f + 900.0f * std::sin(static_cast<float>(frame) * 0.071f);
}
inline float MouseY(int frame)
{
    return 540.0f + 500.0f * std::sin(static_cast<float>(frame) * 0.113f);
}

// The progress bar's value in frame f (0..99), the same on both sides.
inline int ProgressValue(int frame, int index)
{
    return (frame + index) % 100;
}

// One side of the comparison: builds its screen once, then draws frames and says how many
// vertices and indices the last one produced.
class IPeerSide
{
public:
    virtual ~IPeerSide() = default;
    virtual void Frame(int frame) = 0;
    virtual long Vertices() const = 0;
    virtual long Indices() const = 0;
    // Draw commands (a renderer's draw calls) of the last frame.
    virtual long Commands() const = 0;
};

} // namespace PeerBench
