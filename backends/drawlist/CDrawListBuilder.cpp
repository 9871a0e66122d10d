#include "CDrawListBuilder.h"

#include "CDrawAtlasPages.h"

#include <algorithm>
#include <limits>

namespace QzPlatform
{

namespace
{

bool SameRect(const RectI& a, const RectI& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Cuts [from, to) to [low, high), moving the texture coordinates [uFrom, uTo) in step.
void CutSpan(float& from, float& to, float& uFrom, float& uTo, float low, float high)
{
    const double perPixel = (double(uTo) - uFrom) / (double(to) - from);
    if (from < low)
    {
        uFrom = static_cast<float>(uFrom + (double(low) - from) * perPixel);
        from = low;
    }
    if (to > high)
    {
        uTo = static_cast<float>(uTo - (double(to) - high) * perPixel);
        to = high;
    }
}

} // namespace

void DrawQuadRun::Seal()
{
    page = quads.empty() ? nullptr : quads.front().page;
    bounds[0] = bounds[1] = std::numeric_limits<float>::max();
    bounds[2] = bounds[3] = std::numeric_limits<float>::lowest();
    for (const DrawQuad& quad : quads)
    {
        if (quad.page != page || !(quad.x0 < quad.x1 && quad.y0 < quad.y1))
            page = nullptr;
        bounds[0] = std::min(bounds[0], quad.x0);
        bounds[1] = std::min(bounds[1], quad.y0);
        bounds[2] = std::max(bounds[2], quad.x1);
        bounds[3] = std::max(bounds[3], quad.y1);
    }
}

void DrawQuadRun::Clear()
{
    quads.clear();
    page = nullptr;
}

void DrawBuffer::Reset(const DrawAtlas& fillPage)
{
    vertices.clear();
    commands.clear();
    page = &fillPage;
    solidOnly = true;
    sealed = false;
}

void CDrawListBuilder::Begin(int width, int height)
{
    m_vecClips.clear();
    m_screen = RectI{0, 0, width, height};
    SetClip(m_screen);
}

void CDrawListBuilder::PushClip(const RectI& clip)
{
    // An empty intersection stays inside the screen, with no width or no height.
    RectI next;
    next.left = std::min(std::max(clip.left, m_clip.left), m_clip.right);
    next.top = std::min(std::max(clip.top, m_clip.top), m_clip.bottom);
    next.right = std::max(std::min(clip.right, m_clip.right), next.left);
    next.bottom = std::max(std::min(clip.bottom, m_clip.bottom), next.top);
    m_vecClips.push_back(next);
    SetClip(next);
}

void CDrawListBuilder::PopClip()
{
    if (m_vecClips.empty())
        return;
    m_vecClips.pop_back();
    SetClip(m_vecClips.empty() ? m_screen : m_vecClips.back());
}

void CDrawListBuilder::SetClip(const RectI& clip)
{
    m_clip = clip;
    m_fClip[0] = static_cast<float>(clip.left);
    m_fClip[1] = static_cast<float>(clip.top);
    m_fClip[2] = static_cast<float>(clip.right);
    m_fClip[3] = static_cast<float>(clip.bottom);
}

inline bool CDrawListBuilder::CanExtend(const DrawAtlas& page) const
{
    const DrawBuffer& target = *m_pTarget;
    return !target.sealed && !target.commands.empty() && target.commands.back().atlas == page.id &&
           SameRect(target.commands.back().clip, m_clip);
}

inline void CDrawListBuilder::BindPage(const DrawAtlas& page)
{
    DrawBuffer& target = *m_pTarget;
    if (!CanExtend(page))
    {
        if (target.solidOnly && !target.sealed && !target.commands.empty() &&
            SameRect(target.commands.back().clip, m_clip))
            Retarget(page);
        else
            OpenCommand(page);
    }
    target.solidOnly = false;
}

inline void CDrawListBuilder::PushQuad(float x0, float y0, float x1, float y1, float u0, float v0,
                                       float u1, float v1, uint32_t argb)
{
    std::vector<DrawVertex>& vertices = m_pTarget->vertices;
    vertices.push_back(DrawVertex{x0, y0, u0, v0, argb});
    vertices.push_back(DrawVertex{x1, y0, u1, v0, argb});
    vertices.push_back(DrawVertex{x1, y1, u1, v1, argb});
    vertices.push_back(DrawVertex{x0, y1, u0, v1, argb});
    m_pTarget->commands.back().indexCount += 6;
}

// Room for that many more quads, growing the storage by doubling so that a frame of many small
// calls does not reallocate at each.
inline void CDrawListBuilder::Reserve(size_t quads)
{
    std::vector<DrawVertex>& vertices = m_pTarget->vertices;
    if (vertices.capacity() - vertices.size() < quads * 4)
        vertices.reserve(std::max(vertices.capacity() * 2, vertices.size() + quads * 4));
}

inline void CDrawListBuilder::UsePageScale(const DrawAtlas& page)
{
    if (&page == m_pScalePage && page.width == m_nScaleWidth && page.height == m_nScaleHeight)
        return;
    m_pScalePage = &page;
    m_nScaleWidth = page.width;
    m_nScaleHeight = page.height;
    m_fScaleU = 1.0f / static_cast<float>(page.width);
    m_fScaleV = 1.0f / static_cast<float>(page.height);
}

void CDrawListBuilder::AddRect(int x1, int y1, int x2, int y2, uint32_t argb)
{
    x1 = std::max(x1, m_clip.left);
    y1 = std::max(y1, m_clip.top);
    x2 = std::min(x2, m_clip.right);
    y2 = std::min(y2, m_clip.bottom);
    if (x2 <= x1 || y2 <= y1)
        return;
    BindSolid();
    const DrawAtlas& page = *m_pTarget->page;
    const float u = CDrawAtlasPages::kWhiteCentre / static_cast<float>(page.width);
    const float v = CDrawAtlasPages::kWhiteCentre / static_cast<float>(page.height);
    Reserve(1);
    PushQuad(float(x1), float(y1), float(x2), float(y2), u, v, u, v, argb);
}

inline bool CDrawListBuilder::CutToClip(float& x0, float& y0, float& x1, float& y1, float& tx0,
                                        float& ty0, float& tx1, float& ty1) const
{
    if (!(x0 < x1 && y0 < y1) || x1 <= m_fClip[0] || y1 <= m_fClip[1] || x0 >= m_fClip[2] ||
        y0 >= m_fClip[3] || m_clip.right == m_clip.left || m_clip.bottom == m_clip.top)
        return false;
    if (x0 < m_fClip[0] || x1 > m_fClip[2])
        CutSpan(x0, x1, tx0, tx1, m_fClip[0], m_fClip[2]);
    if (y0 < m_fClip[1] || y1 > m_fClip[3])
        CutSpan(y0, y1, ty0, ty1, m_fClip[1], m_fClip[3]);
    return true;
}

void CDrawListBuilder::AddImage(const DrawAtlas& page, float x0, float y0, float x1, float y1,
                                float tx0, float ty0, float tx1, float ty1, uint32_t argb)
{
    if (!CutToClip(x0, y0, x1, y1, tx0, ty0, tx1, ty1))
        return;
    BindPage(page);
    UsePageScale(page);
    Reserve(1);
    PushQuad(x0, y0, x1, y1, tx0 * m_fScaleU, ty0 * m_fScaleV, tx1 * m_fScaleU, ty1 * m_fScaleV,
             argb);
}

// Quads of one page wholly inside the clip are written without a test each; others are cut to
// the clip one by one.
void CDrawListBuilder::AddQuads(const DrawQuadRun& run, float x, float y, uint32_t argb,
                                uint32_t colourArgb)
{
    if (run.page && IsInside(run.bounds, x, y))
        AddQuadsWhole(run, x, y, argb, colourArgb);
    else
        AddQuadsEach(run.quads.data(), run.quads.size(), x, y, argb, colourArgb);
}

// Whether the box moved by (x, y) lies inside a clip that is not empty. The corners are moved
// as each quad's are, so a quad inside the box lands inside the clip.
inline bool CDrawListBuilder::IsInside(const float (&bounds)[4], float x, float y) const
{
    return m_clip.right != m_clip.left && m_clip.bottom != m_clip.top &&
           x + bounds[0] >= m_fClip[0] && y + bounds[1] >= m_fClip[1] &&
           x + bounds[2] <= m_fClip[2] && y + bounds[3] <= m_fClip[3];
}

void CDrawListBuilder::AddQuadsWhole(const DrawQuadRun& run, float x, float y, uint32_t argb,
                                     uint32_t colourArgb)
{
    BindPage(*run.page);
    UsePageScale(*run.page);
    Reserve(run.quads.size());
    for (const DrawQuad& quad : run.quads)
        PushQuad(x + quad.x0, y + quad.y0, x + quad.x1, y + quad.y1, quad.tx0 * m_fScaleU,
                 quad.ty0 * m_fScaleV, quad.tx1 * m_fScaleU, quad.ty1 * m_fScaleV,
                 quad.colour ? colourArgb : argb);
}

// The page is bound again only when it changes from one quad to the next: the clip stays.
void CDrawListBuilder::AddQuadsEach(const DrawQuad* quads, size_t count, float x, float y,
                                    uint32_t argb, uint32_t colourArgb)
{
    Reserve(count);
    const DrawAtlas* bound = nullptr;
    for (const DrawQuad* quad = quads; quad != quads + count; ++quad)
    {
        float x0 = x + quad->x0, y0 = y + quad->y0, x1 = x + quad->x1, y1 = y + quad->y1;
        float tx0 = quad->tx0, ty0 = quad->ty0, tx1 = quad->tx1, ty1 = quad->ty1;
        if (!CutToClip(x0, y0, x1, y1, tx0, ty0, tx1, ty1))
            continue;
        if (quad->page != bound)
        {
            bound = quad->page;
            BindPage(*bound);
            UsePageScale(*bound);
        }
        PushQuad(x0, y0, x1, y1, tx0 * m_fScaleU, ty0 * m_fScaleV, tx1 * m_fScaleU, ty1 * m_fScaleV,
                 quad->colour ? colourArgb : argb);
    }
}

void CDrawListBuilder::AddPolygon(const float (&corners)[8], uint32_t argb)
{
    if (m_clip.right == m_clip.left || m_clip.bottom == m_clip.top)
        return;
    BindSolid();
    const DrawAtlas& page = *m_pTarget->page;
    const float u = CDrawAtlasPages::kWhiteCentre / static_cast<float>(page.width);
    const float v = CDrawAtlasPages::kWhiteCentre / static_cast<float>(page.height);
    std::vector<DrawVertex>& vertices = m_pTarget->vertices;
    for (int corner = 0; corner < 4; ++corner)
        vertices.push_back(DrawVertex{corners[corner * 2], corners[corner * 2 + 1], u, v, argb});
    m_pTarget->commands.back().indexCount += 6;
}

void CDrawListBuilder::OnPageGrown(const DrawAtlas& page, int oldWidth, int oldHeight,
                                   std::vector<DrawVertex>& vertices, size_t firstQuad,
                                   const std::vector<DrawCommand>& commands)
{
    const float scaleU = static_cast<float>(oldWidth) / static_cast<float>(page.width);
    const float scaleV = static_cast<float>(oldHeight) / static_cast<float>(page.height);
    for (const DrawCommand& command : commands)
    {
        if (command.atlas != page.id)
            continue;
        const size_t begin = (firstQuad + command.indexOffset / 6) * 4;
        const size_t end = std::min(vertices.size(), begin + command.indexCount / 6 * 4);
        for (size_t vertex = begin; vertex < end; ++vertex)
        {
            vertices[vertex].u *= scaleU;
            vertices[vertex].v *= scaleV;
        }
    }
}

void CDrawListBuilder::BindSolid()
{
    DrawBuffer& target = *m_pTarget;
    if (target.sealed || target.commands.empty() || !SameRect(target.commands.back().clip, m_clip))
        OpenCommand(*target.page);
}

void CDrawListBuilder::OpenCommand(const DrawAtlas& page)
{
    DrawBuffer& target = *m_pTarget;
    const uint32_t indexOffset = static_cast<uint32_t>(target.GetQuadCount() * 6);
    target.commands.push_back(DrawCommand{page.id, m_clip, indexOffset, 0});
    target.page = &page;
    target.solidOnly = true;
    target.sealed = false;
}

// The open command holds only solid quads: it moves to the page, its quads to the page's white
// block.
void CDrawListBuilder::Retarget(const DrawAtlas& page)
{
    DrawBuffer& target = *m_pTarget;
    const float u = CDrawAtlasPages::kWhiteCentre / static_cast<float>(page.width);
    const float v = CDrawAtlasPages::kWhiteCentre / static_cast<float>(page.height);
    DrawCommand& command = target.commands.back();
    for (size_t vertex = command.indexOffset / 6 * 4; vertex < target.vertices.size(); ++vertex)
    {
        target.vertices[vertex].u = u;
        target.vertices[vertex].v = v;
    }
    command.atlas = page.id;
    target.page = &page;
}

} // namespace QzPlatform
