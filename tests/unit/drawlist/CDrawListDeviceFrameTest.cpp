// A steady frame of the draw-list device (the same fills, sprites and captions as the frame
// before) allocates no memory: the list keeps its storage and the captions come from the cache.
#include "CDrawListDevice.h"
#include "DrawListTestSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

namespace
{

std::atomic<long> g_nAllocations{0};

} // namespace

// Every allocation of the test program is counted. Every form of new and delete is replaced, so
// that each block is freed the way it was allocated (the library also allocates with nothrow
// new). The functions are never inlined, so that a memory checker that puts its own in their
// place replaces all of them.
namespace
{

void* Allocate(std::size_t size) noexcept
{
    ++g_nAllocations;
    return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size)
{
    if (void* block = Allocate(size))
        return block;
    throw std::bad_alloc();
}

} // namespace

__attribute__((noinline)) void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}

__attribute__((noinline)) void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}

__attribute__((noinline)) void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

__attribute__((noinline)) void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

__attribute__((noinline)) void operator delete(void* block) noexcept
{
    std::free(block);
}

__attribute__((noinline)) void operator delete[](void* block) noexcept
{
    std::free(block);
}

__attribute__((noinline)) void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

__attribute__((noinline)) void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}

TEST(DrawListFrames, ASteadyFrameAllocatesNothing)
{
    QzTest::PngFolder folder;
    QzPlatform::CDrawListDevice device(320, 200);
    const QzPlatform::TextureId sprite = device.LoadTexture(folder.WritePng(
        "sprite.png", 16, 8, [](int x, int y) { return 0xFF000000u | uint32_t(x * y); }));
    const std::string captions[] = {"Start game", "Options", "选项", "A longer caption to draw"};
    const QzPlatform::FontSpec font{"", 14};
    long firstFrame = 0;
    long allocations = 0;
    for (int frame = 0; frame < 4; ++frame)
    {
        const long before = g_nAllocations;
        device.BeginFrame();
        device.FillRect(0, 0, 320, 200, 0xFF101010);
        device.PushClip(QzPlatform::RectI{10, 10, 300, 190});
        for (int i = 0; i < 200; ++i)
            device.DrawTexture(sprite, QzPlatform::RectI{0, 0, 16, 8}, i, i % 180, 16, 8, 200,
                               1.0f);
        for (int i = 0; i < 40; ++i)
            device.DrawText(i * 7, i * 4, captions[i % 4], font, 0xFFFFFFFF, 0xFF000000);
        device.StrokeRect(5, 5, 100, 50, 0xFFFFFFFF);
        device.PopClip();
        device.DrawLine(0, 0, 319, 199, 0x80FFFFFF);
        device.EndFrame();
        allocations = g_nAllocations - before;
        firstFrame = frame == 0 ? allocations : firstFrame;
    }
    if (firstFrame == 0)
        GTEST_SKIP() << "allocations are not counted (a memory checker replaced operator new)";
    EXPECT_EQ(0, allocations);
    EXPECT_GT(device.GetDrawList().vertices.size(), 1000u);
}
