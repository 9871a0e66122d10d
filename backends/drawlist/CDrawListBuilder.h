// Writes quads of four vertices into a buffer and gathers them into commands by atlas and clip
// rectangle. A command opens only for a quad that is written, so none is ever empty; a quad goes
// on the open command when that has the same atlas and clip; solid quads sample the white block
// of whatever atlas the open command uses, so fills never break a run. Axis-aligned quads are
// cut to the clip rectangle (texture coordinates cut with them), so a quad outside it adds
// nothing and huge coordinates never reach the list.
//
// Quad q of a buffer is its vertices 4q..4q+3 and its indices 6q..6q+5 (two triangles, the same
// pattern for every quad), so a buffer holds no indices: a command's indexOffset is six times
// its first quad in the buffer and its indexCount six times its quads.
#pragma once

#include "QzDrawList.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace QzPlatform
{

// A textured quad placed relative to an origin: pixels [x0, x1) x [y0, y1) from it, showing the
// texels [tx0, tx1) x [ty0, ty1) of the page; a colour quad keeps its texels' colours.
struct DrawQuad
{
    const DrawAtlas* page;
    float x0, y0, x1, y1;
    float tx0, ty0, tx1, ty1;
    bool colour;
};

// Quads kept to be drawn again and again (a text's glyphs), with what lets the builder write
// them without a test a quad: the box around them and the one page they all lie on.
struct DrawQuadRun
{
    std::vector<DrawQuad> quads;
    float bounds[4] = {}; // left, top, right, bottom of the quads
    // The page of every quad when all lie on one and none is empty; else null.
    const DrawAtlas* page = nullptr;

    // Works out the bounds and the page once the quads are in.
    void Seal();
    void Clear();
};

// Quads and their commands, written one after the other.
struct DrawBuffer
{
    std::vector<DrawVertex> vertices;
    std::vector<DrawCommand> commands;
    const DrawAtlas* page = nullptr; // the page of the open command (or the fill page)
    bool solidOnly = true;           // the open command holds only solid quads
    bool sealed = false;             // the next quad opens a command whatever it is

    size_t GetQuadCount() const { return vertices.size() / 4; }
    // Empties it (keeping its storage); solid quads use `fillPage` until a page is bound.
    void Reset(const DrawAtlas& fillPage);
};

class CDrawListBuilder
{
public:
    // A screen of width x height pixels: the clip rectangle is the screen again.
    void Begin(int width, int height);
    // Quads go to `buffer` from now on.
    void SetTarget(DrawBuffer& buffer) { m_pTarget = &buffer; }

    // The clip rectangle becomes `clip` intersected with the current one, until PopClip.
    void PushClip(const RectI& clip);
    void PopClip();
    const RectI& GetClip() const { return m_clip; }

    // The pixels x1 <= x < x2, y1 <= y < y2 in one colour.
    void AddRect(int x1, int y1, int x2, int y2, uint32_t argb);
    // The texels [tx0, tx1) x [ty0, ty1) of the page drawn onto [x0, x1) x [y0, y1), the colour
    // multiplying them.
    void AddImage(const DrawAtlas& page, float x0, float y0, float x1, float y1, float tx0,
                  float ty0, float tx1, float ty1, uint32_t argb);
    // The quads moved by (x, y): in `argb`, or in `colourArgb` for colour quads.
    void AddQuads(const DrawQuadRun& run, float x, float y, uint32_t argb, uint32_t colourArgb);
    // A solid quad of any shape: four corners (x, y) in order around it. Not cut to the clip
    // rectangle (the renderer's scissor does that), so the corners must be near the screen.
    void AddPolygon(const float (&corners)[8], uint32_t argb);

    // Keeps the texture coordinates of the buffer's quads on the page pointing at the same texels
    // after the page grew; commands' offsets count from quad `firstQuad` of `vertices`.
    static void OnPageGrown(const DrawAtlas& page, int oldWidth, int oldHeight,
                            std::vector<DrawVertex>& vertices, size_t firstQuad,
                            const std::vector<DrawCommand>& commands);

private:
    // Cuts an axis-aligned quad and its texel rectangle to the clip; false when nothing is left.
    bool CutToClip(float& x0, float& y0, float& x1, float& y1, float& tx0, float& ty0, float& tx1,
                   float& ty1) const;
    void BindSolid();
    void BindPage(const DrawAtlas& page);
    void OpenCommand(const DrawAtlas& page);
    bool CanExtend(const DrawAtlas& page) const;
    void Retarget(const DrawAtlas& page);
    void PushQuad(float x0, float y0, float x1, float y1, float u0, float v0, float u1, float v1,
                  uint32_t argb);
    bool IsInside(const float (&bounds)[4], float x, float y) const;
    void AddQuadsEach(const DrawQuad* quads, size_t count, float x, float y, uint32_t argb,
                      uint32_t colourArgb);
    void AddQuadsWhole(const DrawQuadRun& run, float x, float y, uint32_t argb,
                       uint32_t colourArgb);
    void SetClip(const RectI& clip);
    void Reserve(size_t quads);
    void UsePageScale(const DrawAtlas& page);

    DrawBuffer* m_pTarget = nullptr;
    std::vector<RectI> m_vecClips; // the clips pushed, innermost last
    RectI m_screen;
    RectI m_clip;
    float m_fClip[4] = {}; // the clip as left, top, right, bottom
    // Texel to texture coordinate factors of the page last drawn from, at its size then.
    const DrawAtlas* m_pScalePage = nullptr;
    int m_nScaleWidth = 0;
    int m_nScaleHeight = 0;
    float m_fScaleU = 0.0f;
    float m_fScaleV = 0.0f;
};

} // namespace QzPlatform
