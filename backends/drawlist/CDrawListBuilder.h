// Writes one frame's draw list: quads of four vertices and six indices, gathered into commands
// by atlas and clip rectangle. A command opens only for a quad that is written, so none is ever
// empty; a quad goes on the open command when that has the same atlas and clip; solid quads sample
// the white block of whatever atlas the open command uses, so fills never break a run. Axis-aligned
// quads are cut to the clip rectangle (texture coordinates cut with them), so a quad outside it
// adds nothing and huge coordinates never reach the list.
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

class CDrawListBuilder
{
public:
    // Empties the list (keeping its storage) for a screen of width x height pixels; solid quads
    // use `fillPage` until a textured quad binds another page.
    void Begin(int width, int height, const DrawAtlas& fillPage);

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
    void AddQuads(const DrawQuad* quads, size_t count, float x, float y, uint32_t argb,
                  uint32_t colourArgb);
    // A solid quad of any shape: four corners (x, y) in order around it. Not cut to the clip
    // rectangle (the renderer's scissor does that), so the corners must be near the screen.
    void AddPolygon(const float (&corners)[8], uint32_t argb);

    // Keeps the texture coordinates of the quads already written on the page pointing at the
    // same texels after it grew.
    void OnPageGrown(const DrawAtlas& page, int oldWidth, int oldHeight);

    const DrawList& GetList() const { return m_list; }

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
    void PushIndices(uint32_t base);
    void SetClip(const RectI& clip);
    void Reserve(size_t quads);
    void UsePageScale(const DrawAtlas& page);

    DrawList m_list;
    std::vector<uint32_t> m_vecCommandVertex; // the first vertex of each command
    std::vector<RectI> m_vecClips;            // the clips pushed, innermost last
    RectI m_screen;
    RectI m_clip;
    float m_fClip[4] = {};              // the clip as left, top, right, bottom
    const DrawAtlas* m_pPage = nullptr; // the page of the open command (or the fill page)
    bool m_bSolidOnly = true;           // the open command holds only solid quads
    // Texel to texture coordinate factors of the page last drawn from, at its size then.
    const DrawAtlas* m_pScalePage = nullptr;
    int m_nScaleWidth = 0;
    int m_nScaleHeight = 0;
    float m_fScaleU = 0.0f;
    float m_fScaleV = 0.0f;
};

} // namespace QzPlatform
