// Items of the draw-list device: frames drawn on one device that keeps what its items drew, each
// set against the same frame drawn on a fresh device (the pixels must be the same), what a frame
// rewrites, items repeated without drawing, and the storage given back.
#include "CDrawListDevice.h"
#include "DrawListTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using QzPlatform::CDrawListDevice;
using QzPlatform::DrawCommand;
using QzPlatform::DrawList;
using QzPlatform::FontSpec;
using QzPlatform::RectI;

const int kWidth = 96;
const int kHeight = 64;
const uint32_t kBackground = 0xFF000000;
const char kKeys[] = "atcsu";

class DrawListItems : public ::testing::Test
{
protected:
    DrawListItems()
    {
        m_sprite = folder.WritePng("sprite.png", 12, 10,
                                   [](int x, int y) { return 0xFF000000u | uint32_t(x * 20 + y); });
        m_large = folder.WritePng("large.png", 700, 8, [](int x, int) { return 0xFF00FF00u | x; });
    }

    // Draws a frame described by tokens: a letter of kKeys is an item (the same letter, the same
    // item), its digit a variant of what it draws; "o" draws outside items, "K" and "P" push and
    // pop a clip around the items that follow. Without items, every call is drawn as it comes.
    void Draw(QzPlatform::IRenderDevice& device, const std::string& script, bool items) const
    {
        std::istringstream tokens(script);
        std::string token;
        while (tokens >> token)
        {
            const char kind = token[0];
            const int variant = token.size() > 1 ? token[1] - '0' : 0;
            const size_t key = items ? std::string(kKeys).find(kind) : std::string::npos;
            if (key != std::string::npos)
                device.BeginItem(&kKeys[key]);
            DrawPart(device, kind, variant);
            if (key != std::string::npos)
                device.EndItem();
        }
    }

    void DrawPart(QzPlatform::IRenderDevice& device, char kind, int variant) const
    {
        const QzPlatform::TextureId sprite = device.LoadTexture(m_sprite);
        switch (kind)
        {
        case 'a': // a fill and a sprite
            device.FillRect(2, 2, 30, 20, 0xFF203040u + uint32_t(variant) * 0x300000u);
            device.DrawTexture(sprite, RectI{0, 0, 12, 10}, 4 + variant, 4, 12, 10, 255, 1.0f);
            break;
        case 't': // a caption, longer with each variant
            device.DrawText(2, 30, std::string(size_t(1 + variant * 6), char('A' + variant)),
                            FontSpec{"", 12}, 0xFFFFFFFF, 0xFF000000);
            break;
        case 'u': // a fill that stays, then a caption that grows
            device.FillRect(60, 40, 90, 60, 0xFF405060u);
            device.DrawText(60, 44, std::string(size_t(1 + variant * 5), 'x'), FontSpec{"", 10},
                            0xFFFFFF00u, 0);
            break;
        case 'c': // a clip of its own
            device.PushClip(RectI{40, 2 + variant, 60, 20});
            device.FillRect(35, 0, 70, 30, 0xC0FF8000u);
            device.PopClip();
            break;
        case 's': // a sprite from a page that a large image makes grow
            if (variant == 1)
                device.DrawTexture(device.LoadTexture(m_large), RectI{0, 0, 700, 8}, 0, 50, 96, 8,
                                   255, 1.0f);
            device.DrawTexture(sprite, RectI{0, 0, 12, 10}, 70, 30, 12, 10, 200, 1.0f);
            break;
        case 'o':
            device.FillRect(50 + variant, 40, 90, 60, 0x8000FFFFu);
            break;
        case 'K':
            device.PushClip(RectI{0, 0, 64 - variant * 20, 64});
            break;
        case 'P':
            device.PopClip();
            break;
        default:
            ADD_FAILURE() << "unknown token " << kind;
        }
    }

    // One frame on the kept device; its pixels against those of a fresh device that draws the
    // same calls without items.
    void ExpectFrame(const std::string& script)
    {
        kept.BeginFrame();
        Draw(kept, script, true);
        kept.EndFrame();
        ExpectLooksFresh(script,
                         [&](QzPlatform::IRenderDevice& device) { Draw(device, script, false); });
    }

    template <typename Drawing> void ExpectLooksFresh(const std::string& what, Drawing drawing)
    {
        CDrawListDevice fresh(kWidth, kHeight);
        fresh.BeginFrame();
        drawing(fresh);
        fresh.EndFrame();
        // The same quads, in commands none of which is empty.
        EXPECT_EQ(DrawnIndices(fresh), DrawnIndices(kept)) << what;
        const QzTest::ListRaster got(kept, kBackground);
        const QzTest::ListRaster want(fresh, kBackground);
        int differing = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                differing += got.At(x, y) != want.At(x, y) ? 1 : 0;
        EXPECT_EQ(0, differing) << what;
    }

    // The indices of the quads the commands draw that are not degenerate (the room of a slot
    // that a command runs over has all four corners at the origin).
    static uint32_t DrawnIndices(const CDrawListDevice& device)
    {
        const DrawList& list = device.GetDrawList();
        uint32_t indices = 0;
        for (const QzPlatform::DrawCommand& command : list.commands)
        {
            EXPECT_GT(command.indexCount, 0u);
            for (uint32_t quad = command.indexOffset / 6;
                 quad < (command.indexOffset + command.indexCount) / 6; ++quad)
            {
                const QzPlatform::DrawVertex* corner = &list.vertices[size_t(quad) * 4];
                const bool degenerate =
                    std::all_of(corner, corner + 4,
                                [](const auto& vertex) { return vertex.x == 0 && vertex.y == 0; });
                indices += degenerate ? 0 : 6;
            }
        }
        return indices;
    }

    size_t Changed() const
    {
        const DrawList& list = kept.GetDrawList();
        return list.changedEnd - list.changedBegin;
    }

    QzTest::PngFolder folder;
    CDrawListDevice kept{kWidth, kHeight};
    std::string m_sprite;
    std::string m_large;
};

TEST_F(DrawListItems, EveryFrameLooksAsAFreshDeviceDrawsIt)
{
    const std::vector<std::vector<std::string>> scripts = {
        {"a0 t0 c0", "a0 t0 c0", "a0 t1 c0", "a0 t0 c0", "a1 t0 c1"}, // grow, shrink, change
        {"a0 t0 c0", "c0 a0 t0", "a0", "t2 a0 c0"},                   // reorder, vanish, return
        {"a0 o0 a0 t0", "o0 a0 o1 t0", "t0 t1", "t1 t0"},             // outside, drawn twice
        {"K0 a0 P t0", "K1 a0 P t0", "a0 K1 t0 P"},                   // the clip at the start
        {"a0 s0", "a0 s1", "a0 s0"},                                  // a page grows mid-frame
    };
    for (const std::vector<std::string>& frames : scripts)
    {
        kept.ClearCaches();
        for (const std::string& frame : frames)
            ExpectFrame(frame);
    }
}

// Frames made of random tokens: items that change, vanish, come back, move in the order, are
// drawn twice or under another clip, calls outside items between them, now and then a frame
// whose many short-lived items make the storage be packed again.
TEST_F(DrawListItems, RandomFramesLookAsAFreshDeviceDrawsThem)
{
    std::mt19937 random(20261124);
    const std::string tokens[] = {"a0", "a1", "a2", "t0",    "t1",      "t2",     "t3",
                                  "c0", "c1", "c2", "s0",    "s1",      "o0",     "o1",
                                  "u0", "u1", "u3", "a0 a1", "K1 t1 P", "K0 c2 P"};
    const size_t count = sizeof tokens / sizeof tokens[0];
    for (int frame = 0; frame < 300; ++frame)
    {
        std::string script;
        for (int token = int(random() % 6); token >= 0; --token)
            script += tokens[random() % count] + " ";
        if (frame % 50 == 49)
        {
            kept.BeginFrame();
            for (int i = 0; i < 5000; ++i)
            {
                kept.BeginItem(&m_large[0] + i);
                kept.FillRect(i % kWidth, 20, i % kWidth + 1, 22, 0xFF00FF00u);
                kept.EndItem();
            }
            kept.EndFrame();
        }
        ExpectFrame(script);
        if (HasFailure())
            return;
    }
}

// A steady frame rewrites no vertex; a change rewrites that item's quads only.
TEST_F(DrawListItems, OnlyWhatChangedIsRewritten)
{
    ExpectFrame("a0 t0 c0");
    ExpectFrame("a0 t0 c0");
    EXPECT_EQ(0u, Changed());
    ExpectFrame("a1 t0 c0");
    EXPECT_EQ(8u, Changed()); // the fill and the sprite of "a"
    const DrawList& list = kept.GetDrawList();
    EXPECT_EQ(0u, list.changedBegin % 4);
    ExpectFrame("a1 t0 c0 o0");
    EXPECT_EQ(4u, Changed()); // the quad drawn outside items is always new
}

TEST_F(DrawListItems, AnItemIsRepeatedOnlyUnderTheLookItWasDrawnWith)
{
    const auto drawA = [&](QzPlatform::IRenderDevice& device, uint64_t look)
    {
        if (device.RepeatItem(&kKeys[0], look))
            return true;
        device.BeginItem(&kKeys[0], look);
        DrawPart(device, 'a', 0);
        device.EndItem();
        return false;
    };
    const struct
    {
        uint64_t look;
        bool repeated;
    } frames[] = {{7, false}, {7, true}, {7, true}, {8, false}, {0, false}, {0, false}, {9, false}};
    for (const auto& frame : frames)
    {
        kept.BeginFrame();
        EXPECT_EQ(frame.repeated, drawA(kept, frame.look)) << frame.look;
        EXPECT_FALSE(kept.RepeatItem(&kKeys[0], frame.look)); // once a frame
        kept.EndFrame();
        ExpectLooksFresh("look",
                         [&](QzPlatform::IRenderDevice& device) { DrawPart(device, 'a', 0); });
    }
    // Not drawn in the frame before, or forgotten with the caches: drawn anew.
    kept.BeginFrame();
    kept.EndFrame();
    kept.BeginFrame();
    EXPECT_FALSE(drawA(kept, 9));
    kept.EndFrame();
    kept.ClearCaches();
    kept.BeginFrame();
    EXPECT_FALSE(drawA(kept, 9));
    kept.EndFrame();
}

// Items that outgrow their slots move to the end of the storage, out of their drawing order;
// once enough have moved, the slots are packed in drawing order again and the frame's commands
// run forward through the vertex array.
TEST_F(DrawListItems, MovedItemsArePackedBackInDrawingOrder)
{
    const auto frame = [this](int rows)
    {
        kept.BeginFrame();
        for (int i = 0; i < 64; ++i)
        {
            kept.BeginItem(&m_sprite[0] + i);
            for (int row = 0; row < (i % 2 ? rows : 1); ++row)
                kept.FillRect(i, row, i + 1, row + 1, 0xFF0000FFu);
            kept.EndItem();
        }
        kept.EndFrame();
        const std::vector<DrawCommand>& commands = kept.GetDrawList().commands;
        return std::is_sorted(commands.begin(), commands.end(),
                              [](const DrawCommand& a, const DrawCommand& b)
                              { return a.indexOffset < b.indexOffset; });
    };
    EXPECT_TRUE(frame(1));
    EXPECT_FALSE(frame(3)); // the odd items moved to the end
    EXPECT_TRUE(frame(3));  // packed at the frame's start
    EXPECT_TRUE(frame(4));  // room to grow: nothing moves
}

TEST_F(DrawListItems, StorageOfItemsThatWentIsGivenBack)
{
    const int items = 5000;
    kept.BeginFrame();
    for (int i = 0; i < items; ++i)
    {
        kept.BeginItem(&m_sprite[0] + i);
        kept.FillRect(i % kWidth, 0, i % kWidth + 1, 10, 0xFF0000FFu);
        kept.EndItem();
    }
    kept.EndFrame();
    const size_t full = kept.GetDrawList().vertices.size();
    EXPECT_GE(full, size_t(items) * 4);
    ExpectFrame("a0 t0"); // the others go at its end
    ExpectFrame("a0 t0"); // packed at its start
    EXPECT_LT(kept.GetDrawList().vertices.size(), full / 20);
    ExpectFrame("a1 t1");
}

} // namespace
