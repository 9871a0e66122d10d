#include "CDrawItemStore.h"

#include <algorithm>
#include <cstring>

namespace QzPlatform
{

namespace
{

// A slot holds the quads an item drew first and no more: most items draw the same number of
// quads frame after frame. An item that outgrew its slot gets room to grow again in place.
uint32_t RoomFor(uint32_t quads, bool grown)
{
    return grown ? quads + quads / 2 + 2 : quads;
}

// Equality of two blocks of 8 x N bytes, compared in the open (no library call: it runs for
// every draw call).
template <size_t N> bool SameWords(const void* a, const void* b)
{
    uint64_t x[N];
    uint64_t y[N];
    std::memcpy(x, a, sizeof x);
    std::memcpy(y, b, sizeof y);
    uint64_t difference = 0;
    for (size_t i = 0; i < N; ++i)
        difference |= x[i] ^ y[i];
    return difference == 0;
}

bool SameRect(const RectI& a, const RectI& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Puts the command, its quads counted from quad `firstQuad`, at the end of the list, or
// lengthens the last one when it draws the quads just before with the same atlas and clip.
void Append(std::vector<DrawCommand>& commands, DrawCommand command, uint32_t firstQuad = 0)
{
    command.indexOffset += firstQuad * 6;
    if (!commands.empty())
    {
        DrawCommand& last = commands.back();
        if (last.atlas == command.atlas && SameRect(last.clip, command.clip) &&
            last.indexOffset + last.indexCount == command.indexOffset)
        {
            last.indexCount += command.indexCount;
            return;
        }
    }
    commands.push_back(command);
}

} // namespace

CDrawItemStore::CDrawItemStore(CDrawListBuilder& builder, const DrawAtlas& fillPage)
    : m_builder(builder), m_fillPage(fillPage)
{
    m_outside.Reset(m_fillPage);
    m_builder.SetTarget(m_outside);
}

bool CDrawItemStore::Same(const Recorded& recorded, const DrawCall& call, const std::string* text,
                          const std::string* face)
{
    if (!SameWords<sizeof(DrawCall) / 8>(&recorded.call, &call))
        return false;
    if (text && recorded.text != *text)
        return false;
    return !face || recorded.face == *face;
}

void CDrawItemStore::BeginFrame()
{
    EndFrame();
    m_bFrameOpen = true;
    ++m_nFrame;
    if (IsWorthPacking())
        Compact();
    m_list.vertices.resize(size_t(m_nItemQuads) * 4);
    m_list.indices.resize(size_t(m_nItemQuads) * 6);
    m_list.commands.clear();
    StartRun();
}

// Nothing drawn yet outside items, no command of the frame, nothing rewritten.
void CDrawItemStore::StartRun()
{
    m_outside.Reset(m_fillPage);
    m_builder.SetTarget(m_outside);
    m_nOutsideFlushed = 0;
    m_vecPending.clear();
    m_nChangedBegin = SIZE_MAX;
    m_nChangedEnd = 0;
}

void CDrawItemStore::EndFrame()
{
    EndItem();
    if (!m_bFrameOpen)
        return;
    FlushOutside();
    ReleaseUndrawn();
    Assemble();
    m_bFrameOpen = false;
}

const DrawList& CDrawItemStore::GetList() const
{
    if (m_bFrameOpen)
        const_cast<CDrawItemStore*>(this)->Assemble();
    return m_list;
}

// The slots, the quads drawn outside items after them, and the commands drawn so far in their
// order (an item still open is left out).
void CDrawItemStore::Assemble()
{
    const size_t outsideStart = size_t(m_nItemQuads) * 4;
    m_list.vertices.resize(outsideStart);
    m_list.vertices.insert(m_list.vertices.end(), m_outside.vertices.begin(),
                           m_outside.vertices.end());
    WriteIndices(m_list.vertices.size() / 4);
    m_list.commands.clear();
    for (const Pending& pending : m_vecPending)
        Append(m_list.commands, pending.command, pending.outside ? m_nItemQuads : 0);
    for (size_t index = m_nOutsideFlushed; index < m_outside.commands.size(); ++index)
        Append(m_list.commands, m_outside.commands[index], m_nItemQuads);
    size_t changedBegin = m_nChangedBegin;
    size_t changedEnd = m_nChangedEnd;
    if (!m_outside.vertices.empty())
    {
        changedBegin = std::min(changedBegin, outsideStart);
        changedEnd = m_list.vertices.size();
    }
    m_list.changedBegin = std::min(changedBegin, m_list.vertices.size());
    m_list.changedEnd = std::max(m_list.changedBegin, std::min(changedEnd, m_list.vertices.size()));
}

void CDrawItemStore::CloseRun()
{
    EndItem();
    FlushOutside();
    m_outside.sealed = true;
}

void CDrawItemStore::BeginItem(const void* key, const RectI& clip, uint64_t look)
{
    CloseRun();
    const uint32_t index = FindOrAdd(key);
    Item& item = m_vecItems[index];
    if (item.frame == m_nFrame)
        return;
    item.frame = m_nFrame;
    item.look = look;
    m_vecVisited.push_back(index);
    m_nOpen = index;
    m_nCursor = 0;
    m_bDiverged = false;
    PrefetchSlot(item);
    if (!SameRect(item.clip, clip))
    {
        item.clip = clip;
        Diverge(item);
    }
}

// An item drawn again mostly writes its slot anew once its control has drawn: the start of the
// slot is fetched meanwhile (with many items, the list's storage is far larger than the caches).
void CDrawItemStore::PrefetchSlot(const Item& item) const
{
    constexpr size_t kLine = 64;
    constexpr size_t kMaxLines = 8;
    if (item.used == 0)
        return;
    const char* pStart =
        reinterpret_cast<const char*>(m_list.vertices.data() + size_t(item.first) * 4);
    const size_t bytes = std::min(size_t(item.used) * 4 * sizeof(DrawVertex), kLine * kMaxLines);
    for (size_t at = 0; at < bytes; at += kLine)
        __builtin_prefetch(pStart + at, 1);
}

void CDrawItemStore::EndItem()
{
    if (m_nOpen == kNone)
        return;
    Item& item = m_vecItems[m_nOpen];
    if (!m_bDiverged && m_nCursor < item.calls.size())
        Diverge(item);
    if (m_bDiverged)
        Commit(item);
    Emit(item);
    m_nOpen = kNone;
    m_builder.SetTarget(m_outside);
}

bool CDrawItemStore::Repeat(const void* key, const RectI& clip, uint64_t look)
{
    CloseRun();
    const uint32_t index = Find(key);
    if (index == kNone || look == 0)
        return false;
    Item& item = m_vecItems[index];
    if (item.look != look || item.frame + 1 != m_nFrame || !SameRect(item.clip, clip))
        return false;
    item.frame = m_nFrame;
    m_vecVisited.push_back(index);
    Emit(item);
    return true;
}

bool CDrawItemStore::Replay(const DrawCall& call, const std::string* text, const std::string* face)
{
    if (m_nOpen == kNone)
        return false;
    Item& item = m_vecItems[m_nOpen];
    if (!m_bDiverged)
    {
        if (m_nCursor < item.calls.size() && Same(item.calls[m_nCursor], call, text, face))
        {
            ++m_nCursor;
            return true;
        }
        Diverge(item);
    }
    const uint32_t quads = m_nKept + static_cast<uint32_t>(m_scratch.GetQuadCount());
    if (item.calls.size() > m_nCursor)
        item.calls.back().quadsAfter = quads;
    item.calls.push_back(
        Recorded{call, text ? *text : std::string(), face ? *face : std::string(), quads});
    return false;
}

// Items are kept in the order they were drawn in the frame before, so the item after the last
// one is tried first: a frame drawn as the one before needs no look-up by key.
uint32_t CDrawItemStore::Find(const void* key)
{
    const uint32_t expected = m_vecVisited.empty() ? 0 : m_vecVisited.back() + 1;
    if (expected < m_vecItems.size() && m_vecItems[expected].key == key)
    {
        // The item after it is asked for next: its record is fetched while this one draws.
        if (expected + 1 < m_vecItems.size())
        {
            const Item& next = m_vecItems[expected + 1];
            __builtin_prefetch(next.calls.data());
            __builtin_prefetch(next.commands.data());
        }
        if (expected + 2 < m_vecItems.size())
            __builtin_prefetch(&m_vecItems[expected + 2]);
        return expected;
    }
    m_bReorder = true;
    const auto found = m_mapItems.find(key);
    return found != m_mapItems.end() ? found->second : kNone;
}

uint32_t CDrawItemStore::FindOrAdd(const void* key)
{
    const uint32_t found = Find(key);
    if (found != kNone)
        return found;
    const uint32_t index = static_cast<uint32_t>(m_vecItems.size());
    m_vecItems.emplace_back();
    m_vecItems.back().key = key;
    m_mapItems.emplace(key, index);
    return index;
}

// The item's quads up to the cursor stay; the calls from there on are drawn into the scratch
// buffer and recorded anew.
void CDrawItemStore::Diverge(Item& item)
{
    m_bDiverged = true;
    m_nKept = m_nCursor > 0 ? item.calls[m_nCursor - 1].quadsAfter : 0;
    item.calls.resize(m_nCursor);
    m_scratch.Reset(m_fillPage);
    m_builder.SetTarget(m_scratch);
}

// The kept quads' commands, cut where the scratch quads begin, then the scratch's commands.
void CDrawItemStore::Commit(Item& item)
{
    const uint32_t added = static_cast<uint32_t>(m_scratch.GetQuadCount());
    const uint32_t total = m_nKept + added;
    if (item.calls.size() > m_nCursor)
        item.calls.back().quadsAfter = total;
    const uint32_t keptIndices = m_nKept * 6;
    while (!item.commands.empty() && item.commands.back().indexOffset >= keptIndices)
        item.commands.pop_back();
    if (!item.commands.empty())
    {
        DrawCommand& last = item.commands.back();
        last.indexCount = std::min(last.indexCount, keptIndices - last.indexOffset);
    }
    if (total > item.capacity)
        Relocate(item, total);
    ClearRoom(item, total);
    const size_t at = (size_t(item.first) + m_nKept) * 4;
    std::copy(m_scratch.vertices.begin(), m_scratch.vertices.end(), m_list.vertices.begin() + at);
    MarkChanged(at, at + m_scratch.vertices.size());
    for (DrawCommand command : m_scratch.commands)
    {
        command.indexOffset += keptIndices;
        Append(item.commands, command);
    }
    item.used = total;
}

// A slot at the end of the storage with room to grow; the kept quads move into it.
void CDrawItemStore::Relocate(Item& item, uint32_t quads)
{
    item.grown = item.grown || item.capacity > 0;
    const uint32_t capacity = RoomFor(quads, item.grown);
    const uint32_t first = m_nItemQuads;
    m_nItemQuads += capacity;
    m_list.vertices.resize(size_t(m_nItemQuads) * 4);
    const auto from = m_list.vertices.begin() + size_t(item.first) * 4;
    std::copy(from, from + size_t(m_nKept) * 4, m_list.vertices.begin() + size_t(first) * 4);
    MarkChanged(size_t(first) * 4, size_t(first + m_nKept) * 4);
    m_nGivenUp += item.capacity;
    m_nMoved += item.capacity > 0 ? 1 : 0;
    item.first = first;
    item.capacity = capacity;
}

// Packing copies every slot: worth it when half the storage is given up, or when enough items
// left their neighbours (each one moved splits its run of commands in two). Moved items get room
// to grow, so they rarely move again.
bool CDrawItemStore::IsWorthPacking() const
{
    const bool wasted = m_nGivenUp > 4096 && m_nGivenUp > m_nItemQuads / 2;
    const bool scattered = m_nMoved >= 8 && m_nMoved * 16 >= m_vecItems.size();
    return wasted || scattered;
}

// Quads the item drew before past its new end become degenerate (all corners at the origin):
// the item's commands run over its slot's room, which must draw nothing.
void CDrawItemStore::ClearRoom(const Item& item, uint32_t used)
{
    if (used >= item.used)
        return;
    const auto begin = m_list.vertices.begin() + (size_t(item.first) + used) * 4;
    std::fill(begin, begin + size_t(item.used - used) * 4, DrawVertex{});
    MarkChanged((size_t(item.first) + used) * 4, (size_t(item.first) + item.used) * 4);
}

// Commands of items drawn one after the other in their slots' order join into one. The item's
// last command also takes in the room of its slot (degenerate quads), so that it reaches the
// next slot's first quad and joins the next item's first command.
void CDrawItemStore::Emit(const Item& item)
{
    const uint32_t offset = item.first * 6;
    for (const DrawCommand& source : item.commands)
    {
        const uint32_t indexOffset = source.indexOffset + offset;
        if (!m_vecPending.empty())
        {
            Pending& last = m_vecPending.back();
            if (!last.outside && last.command.atlas == source.atlas &&
                last.command.indexOffset + last.command.indexCount == indexOffset &&
                SameRect(last.command.clip, source.clip))
            {
                last.command.indexCount += source.indexCount;
                continue;
            }
        }
        m_vecPending.push_back(
            Pending{DrawCommand{source.atlas, source.clip, indexOffset, source.indexCount}, false});
    }
    if (item.commands.empty() || item.capacity <= item.used)
        return;
    const DrawCommand& last = item.commands.back();
    if (last.indexOffset + last.indexCount == item.used * 6)
        m_vecPending.back().command.indexCount += (item.capacity - item.used) * 6;
}

// The commands drawn outside items so far join the frame's, in their order.
void CDrawItemStore::FlushOutside()
{
    for (; m_nOutsideFlushed < m_outside.commands.size(); ++m_nOutsideFlushed)
        m_vecPending.push_back(Pending{m_outside.commands[m_nOutsideFlushed], true});
}

// Items not drawn in the frame give up their slots; the others are put in the order they were
// drawn (when that changed) for the next frame's look-ups.
void CDrawItemStore::ReleaseUndrawn()
{
    if (!m_bReorder && m_vecVisited.size() == m_vecItems.size())
    {
        m_vecVisited.clear();
        return;
    }
    std::vector<Item> ordered;
    ordered.reserve(m_vecVisited.size());
    for (uint32_t index : m_vecVisited)
        ordered.push_back(std::move(m_vecItems[index]));
    for (const Item& item : m_vecItems)
        if (item.frame != m_nFrame)
            m_nGivenUp += item.capacity;
    m_vecItems.swap(ordered);
    m_mapItems.clear();
    for (uint32_t index = 0; index < m_vecItems.size(); ++index)
        m_mapItems.emplace(m_vecItems[index].key, index);
    m_vecVisited.clear();
    m_bReorder = false;
}

// Slots are laid side by side in drawing order (the order of the items), grown ones with room: a
// run of items drawn from one page then joins into one command.
void CDrawItemStore::Compact()
{
    size_t total = 0;
    for (const Item& item : m_vecItems)
        total += RoomFor(item.used, item.grown);
    std::vector<DrawVertex> packed;
    packed.reserve(total * 4);
    uint32_t next = 0;
    for (Item& item : m_vecItems)
    {
        const auto from = m_list.vertices.begin() + size_t(item.first) * 4;
        packed.insert(packed.end(), from, from + size_t(item.used) * 4);
        item.first = next;
        item.capacity = RoomFor(item.used, item.grown);
        next += item.capacity;
        packed.resize(size_t(next) * 4);
    }
    m_list.vertices.swap(packed);
    m_nItemQuads = next;
    m_nGivenUp = 0;
    m_nMoved = 0;
    MarkChanged(0, m_list.vertices.size());
}

// Every quad has the same six indices, counted from its first vertex.
void CDrawItemStore::WriteIndices(size_t quads)
{
    std::vector<uint32_t>& indices = m_list.indices;
    size_t quad = indices.size() / 6;
    indices.resize(quads * 6);
    for (; quad < quads; ++quad)
    {
        const uint32_t base = static_cast<uint32_t>(quad * 4);
        uint32_t* out = &indices[quad * 6];
        out[0] = base;
        out[1] = base + 1;
        out[2] = base + 2;
        out[3] = base;
        out[4] = base + 2;
        out[5] = base + 3;
    }
}

void CDrawItemStore::MarkChanged(size_t firstVertex, size_t endVertex)
{
    if (firstVertex >= endVertex)
        return;
    m_nChangedBegin = std::min(m_nChangedBegin, firstVertex);
    m_nChangedEnd = std::max(m_nChangedEnd, endVertex);
}

void CDrawItemStore::OnPageGrown(const DrawAtlas& page, int oldWidth, int oldHeight)
{
    for (const Item& item : m_vecItems)
    {
        CDrawListBuilder::OnPageGrown(page, oldWidth, oldHeight, m_list.vertices, item.first,
                                      item.commands);
        for (const DrawCommand& command : item.commands)
            if (command.atlas == page.id)
                MarkChanged(size_t(item.first) * 4 + command.indexOffset / 6 * 4,
                            size_t(item.first) * 4 +
                                (command.indexOffset + command.indexCount) / 6 * 4);
    }
    CDrawListBuilder::OnPageGrown(page, oldWidth, oldHeight, m_scratch.vertices, 0,
                                  m_scratch.commands);
    CDrawListBuilder::OnPageGrown(page, oldWidth, oldHeight, m_outside.vertices, 0,
                                  m_outside.commands);
}

void CDrawItemStore::Clear()
{
    m_vecItems.clear();
    m_mapItems.clear();
    m_vecVisited.clear();
    m_bReorder = false;
    m_list.Clear();
    m_nItemQuads = 0;
    m_nGivenUp = 0;
    m_nMoved = 0;
    m_nOpen = kNone;
    m_bDiverged = false;
    m_scratch.Reset(m_fillPage);
    StartRun();
    m_bFrameOpen = true;
}

} // namespace QzPlatform
