// The drawing kit of qzgui-mkimages: the sample skin's palette, cairo helpers, and MakeImage,
// which writes one PNG under the image folder and remembers a failure.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <string>

namespace ImageKit
{

constexpr double kPi = 3.14159265358979323846;

// The palette of the sample skin.
constexpr uint32_t kSkinFill = 0xFF2B3445;   // dark blue-grey
constexpr uint32_t kSkinTitle = 0xFF3A4760;  // top band of dialogs
constexpr uint32_t kSkinBorder = 0xFFA8B8D0; // light border
constexpr uint32_t kSkinShade = 0xFF161B24;  // inner dark line
constexpr uint32_t kButtonFace = 0xFF46587A;
constexpr uint32_t kButtonHover = 0xFF5A7099;
constexpr uint32_t kButtonPressed = 0xFF34425C;
constexpr uint32_t kDisabledFace = 0xFF4A4D52;
constexpr uint32_t kDisabledEdge = 0xFF6E7278;
constexpr uint32_t kHighlight = 0xFFDCE6F5;
constexpr uint32_t kCheckMark = 0xFF7CE07C;

// Where MakeImage writes, and whether any image could not be written.
void SetImageDir(const std::string& dir);
bool Failed();

void SetColor(cairo_t* cr, uint32_t argb);
void FillRect(cairo_t* cr, double x, double y, double width, double height, uint32_t argb);
// A 1-pixel outline through the centres of the border pixels of (x, y, width, height).
void OutlineRect(cairo_t* cr, double x, double y, double width, double height, uint32_t argb);
void RoundedRectPath(cairo_t* cr, double x, double y, double width, double height, double radius);
// A vertical gradient from `top` to `bottom` as the source.
void SetVerticalGradient(cairo_t* cr, double y0, double y1, uint32_t top, uint32_t bottom);
// Mixes two colours: weight 0 gives a, 1 gives b.
uint32_t Mix(uint32_t a, uint32_t b, double weight);
// Raised (or, when sunken, pressed) 1-pixel bevel inside (x, y, width, height).
void Bevel(cairo_t* cr, double x, double y, double width, double height, bool sunken);
// Makes a transparent image, lets `draw` paint it and writes it as images/<name>.
void MakeImage(const char* name, int width, int height, const std::function<void(cairo_t*)>& draw);
// Calls draw(cr, frame) once per frame, each frame translated to its own cell of a strip.
void DrawFrames(cairo_t* cr, int frames, int frameWidth,
                const std::function<void(cairo_t*, int)>& draw);

} // namespace ImageKit
