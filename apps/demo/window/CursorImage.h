// The picture of a cursor file, for a window that shows the host's file cursors in colour: a
// PNG file (hot spot at the top-left corner) or a .cur file whose first image is a PNG or a
// 32-bit bitmap with its alpha channel. Other files (paletted or monochrome cursors, animated
// ones) are not read; the caller shows a standard cursor instead.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct CursorImage
{
    int width = 0;
    int height = 0;
    int hotX = 0;
    int hotY = 0;
    std::vector<uint32_t> argb; // straight alpha, row by row from the top
};

// Cursors larger than this on a side are refused.
const int kMaxCursorSide = 256;

bool LoadCursorImage(const std::string& path, CursorImage& image);
bool DecodeCursorImage(const std::vector<uint8_t>& bytes, CursorImage& image);
