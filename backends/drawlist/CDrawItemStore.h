// What each item (a control, a dialog's back: the draw calls between BeginItem and EndItem)
// drew, kept in place from frame to frame. An item's quads live in a slot of the list's vertex
// storage; each frame its draw calls are compared, one by one, with the calls it made the frame
// before, and only from the first call that differs are quads written again (in place when they
// still fit the slot, else in a larger slot at the end of the storage). An unchanged item costs
// the comparison of its calls and the commands it adds to the frame. Draw calls outside items
// are written anew every frame after the items' slots. Slots of items not drawn in a frame are
// given up at its end; the storage is packed again when more of it is given up than used.
#pragma once

#include "CDrawListBuilder.h"
#include "QzDrawList.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace QzPlatform
{

// One draw call as the store compares it: its kind and arguments (all four-byte fields, so two
// calls compare as bytes), and for text the string and the face beside it.
struct DrawCall
{
    enum Kind : int32_t
    {
        kFill,
        kStroke,
        kLine,
        kTexture,
        kText,
        kPushClip,
        kPopClip,
    };
    int32_t kind = kFill;
    int32_t args[9] = {};
    uint32_t colour[2] = {};
    float scale = 0.0f;
    int32_t unused = 0; // pads the call to whole eight-byte words, so they compare as words
};
static_assert(sizeof(DrawCall) % 8 == 0, "draw calls compare in eight-byte words");

class CDrawItemStore
{
public:
    // Quads are written by `builder`; solid quads start on `fillPage`.
    CDrawItemStore(CDrawListBuilder& builder, const DrawAtlas& fillPage);

    void BeginFrame();
    // Assembles the frame's list: the items' slots, then the quads drawn outside items, and the
    // commands in the order of drawing. Once a frame: a second call changes nothing.
    void EndFrame();

    // The calls up to EndItem are the item's named `key` (an item open already ends first);
    // `clip` is the clip rectangle they start under. An item drawn twice in a frame is drawn the
    // second time as calls outside items.
    void BeginItem(const void* key, const RectI& clip, uint64_t look = 0);
    void EndItem();
    // Draws the item again as the frame before drew it (it adds its commands to the frame), when
    // it was drawn then under the same clip and the same nonzero look; false otherwise.
    bool Repeat(const void* key, const RectI& clip, uint64_t look);

    // True when the open item made this very call at this point the frame before: its quads are
    // in place and the caller draws nothing. Otherwise the call is recorded and the caller draws
    // it (into the builder's target).
    bool Replay(const DrawCall& call, const std::string* text = nullptr,
                const std::string* face = nullptr);

    // Texture coordinates on the page follow it to its new size, in every slot and buffer.
    void OnPageGrown(const DrawAtlas& page, int oldWidth, int oldHeight);
    // Forgets every item and empties the list: everything is drawn anew.
    void Clear();

    // The frame's list; while the frame is open, what was drawn so far.
    const DrawList& GetList() const;
    size_t GetItemCount() const { return m_vecItems.size(); }

private:
    struct Recorded
    {
        DrawCall call;
        std::string text;
        std::string face;
        uint32_t quadsAfter = 0; // the item's quads once the call was drawn
    };
    struct Item
    {
        const void* key = nullptr;
        uint64_t look = 0;
        uint32_t frame = 0;
        RectI clip;
        uint32_t first = 0; // slot: first quad of the storage, quads it holds, quads in use
        uint32_t capacity = 0;
        uint32_t used = 0;
        bool grown = false; // the item outgrew a slot once
        std::vector<Recorded> calls;
        std::vector<DrawCommand> commands; // offsets from the slot's first quad
    };
    struct Pending
    {
        DrawCommand command;
        bool outside; // offsets count from the first quad drawn outside items
    };
    static constexpr uint32_t kNone = UINT32_MAX;

    static bool Same(const Recorded& recorded, const DrawCall& call, const std::string* text,
                     const std::string* face);
    uint32_t Find(const void* key);
    uint32_t FindOrAdd(const void* key);
    // Ends an item still open and the commands drawn outside items so far.
    void CloseRun();
    void StartRun();
    void PrefetchSlot(const Item& item) const;
    void Diverge(Item& item);
    void Commit(Item& item);
    void Relocate(Item& item, uint32_t quads);
    void ClearRoom(const Item& item, uint32_t used);
    void Emit(const Item& item);
    void FlushOutside();
    void ReleaseUndrawn();
    bool IsWorthPacking() const;
    void Compact();
    void Assemble();
    void WriteIndices(size_t quads);
    void MarkChanged(size_t firstVertex, size_t endVertex);

    CDrawListBuilder& m_builder;
    const DrawAtlas& m_fillPage;
    DrawList m_list; // vertices: the items' slots, then the quads drawn outside items
    std::vector<Item> m_vecItems;
    std::unordered_map<const void*, uint32_t> m_mapItems;
    std::vector<uint32_t> m_vecVisited; // the items drawn this frame, in their order
    bool m_bReorder = false;            // an item was not where the frame before had it
    uint32_t m_nFrame = 0;
    bool m_bFrameOpen = true;  // drawing before the first BeginFrame makes a frame too
    uint32_t m_nItemQuads = 0; // end of the slots in the storage
    uint32_t m_nGivenUp = 0;   // quads of slots given up since the last packing
    uint32_t m_nMoved = 0;     // items moved to the end since the last packing
    // The open item, the number of its recorded calls matched so far, and once it differs, the
    // quads kept before the first differing call and the first call recorded anew.
    uint32_t m_nOpen = kNone;
    size_t m_nCursor = 0;
    bool m_bDiverged = false;
    uint32_t m_nKept = 0;
    DrawBuffer m_scratch; // an item's quads from its first differing call
    DrawBuffer m_outside; // quads drawn outside items this frame
    size_t m_nOutsideFlushed = 0;
    std::vector<Pending> m_vecPending;
    size_t m_nChangedBegin = 0;
    size_t m_nChangedEnd = 0;
};

} // namespace QzPlatform
