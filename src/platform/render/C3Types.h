// Size and point records of the render library: 32-bit integers, width then height, x then y.
#pragma once

#include <cstdint>

struct C3_SIZE
{
    int32_t iWidth;
    int32_t iHeight;
};

struct C3_POS
{
    int32_t x;
    int32_t y;
};

// Opaque records of the render library that callers only pass through.
struct C3_FONT_INFO;
struct RENDER_TEXT_STYLE;
