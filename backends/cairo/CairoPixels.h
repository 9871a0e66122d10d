// Row kernels of the cairo device's direct drawing: the "over" blends cairo's pixel library
// performs for the common draws, on premultiplied ARGB32 pixels in native byte order, with its
// exact 8-bit arithmetic (x * y / 255 rounded to nearest, saturating sums), so that a row drawn
// here is byte for byte the row cairo would have drawn.
#pragma once

#include <cstdint>

namespace QzPlatform
{

// The premultiplied pixel of a solid cairo source of this ARGB colour: each channel scaled by
// the alpha in double precision and rounded through 16 bits, as cairo converts colours.
uint32_t PremultiplyColor(uint32_t argb);

// Each channel of the premultiplied pixel scaled by alpha / 255.
uint32_t ScalePixel(uint32_t pixel, uint8_t alpha);

// dst = src * alpha + dst * (1 - alpha(src * alpha)) for count pixels: the source row painted
// over the destination with an opacity. The rows must not overlap.
void BlendRowOver(uint32_t* dst, const uint32_t* src, int count, uint8_t alpha);

// dst = pixel + dst * (1 - alpha(pixel)) for count pixels: one premultiplied pixel painted over
// the row (a plain fill when the pixel is opaque).
void BlendPixelOver(uint32_t* dst, uint32_t pixel, int count);

} // namespace QzPlatform
