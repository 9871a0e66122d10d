// What the draw-list device produces each frame, in the form a GPU renderer submits as it is:
// one vertex array, one 32-bit index array (three indices a triangle) and commands that say
// which texture and clip rectangle apply to a range of indices, in the order of drawing. Textures
// are atlases of images and glyphs that the device owns; a renderer uploads an atlas again when its
// version changes.
#pragma once

#include "platform/render/IRenderDevice.h"

#include <cstdint>
#include <vector>

namespace QzPlatform
{

// One corner of a triangle: position in screen pixels (the top-left of the screen is 0, 0 and
// pixel centres are at .5), texture coordinate in 0..1 of the command's atlas, and a colour in
// ARGB (alpha in the high byte, not premultiplied) that multiplies the texel.
struct DrawVertex
{
    float x;
    float y;
    float u;
    float v;
    uint32_t argb;
};
static_assert(sizeof(DrawVertex) == 20, "vertices are packed: 5 x 4 bytes");

// Draw indices [indexOffset, indexOffset + indexCount) of the list's index array as triangles,
// sampling the atlas `atlas`, with pixels outside `clip` (left/top inclusive, right/bottom
// exclusive) left untouched. Blending is the usual "over" with straight alpha.
struct DrawCommand
{
    uint32_t atlas = 0;
    RectI clip;
    uint32_t indexOffset = 0;
    uint32_t indexCount = 0;
};

// A texture page: width x height texels of ARGB with straight alpha, row after row. Every atlas
// holds an opaque white texel block, so that filled shapes draw with any atlas bound and do not
// break a run of commands. `version` grows whenever texels are added or the page grows.
struct DrawAtlas
{
    uint32_t id = 0;
    int width = 0;
    int height = 0;
    uint32_t version = 0;
    std::vector<uint32_t> texels;
};

// Quad q of the list is vertices 4q..4q+3, drawn by indices 6q..6q+5 (4q, 4q+1, 4q+2, 4q,
// 4q+2, 4q+3): the index array is the same from frame to frame but for its length. Vertices no
// command refers to are unused (room kept for what the library draws in place of them later).
// The list is retained: vertices outside [changedBegin, changedEnd) hold what they held in the
// list of the frame before, so a renderer that keeps a vertex buffer uploads only that range.
struct DrawList
{
    std::vector<DrawVertex> vertices;
    std::vector<uint32_t> indices;
    std::vector<DrawCommand> commands;
    size_t changedBegin = 0;
    size_t changedEnd = 0;

    void Clear()
    {
        vertices.clear();
        indices.clear();
        commands.clear();
        changedBegin = 0;
        changedEnd = 0;
    }
};

} // namespace QzPlatform
