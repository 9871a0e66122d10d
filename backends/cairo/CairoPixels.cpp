// The loops work on bytes in 16-bit steps so that the compiler turns them into vector code
// (this file is built with -O3). On x86-64 Linux the kernels are also built for AVX2 and, with
// GCC, for AVX-512 (x86-64-v4); the loader picks the best one the processor runs.
#include "CairoPixels.h"

#include <algorithm>

#if defined(__x86_64__) && defined(__linux__) && !defined(__clang__) && __GNUC__ >= 11
#define QZ_PIXEL_KERNEL __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#elif defined(__x86_64__) && defined(__linux__) && defined(__clang__)
#define QZ_PIXEL_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define QZ_PIXEL_KERNEL
#endif

namespace QzPlatform
{

namespace
{

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr int kAlphaByte = 0;
#else
constexpr int kAlphaByte = 3;
#endif

// x * y / 255 rounded to nearest; (t * 257) >> 16 equals (t + (t >> 8)) >> 8 for every t here.
inline uint16_t MulUn8(uint16_t x, uint16_t y)
{
    const uint16_t t = static_cast<uint16_t>(x * y + 0x80);
    return static_cast<uint16_t>((uint32_t(t) * 0x101u) >> 16);
}

// Saturating, as cairo's sums are (premultiplied pixels never reach the limit).
inline uint8_t AddUn8(uint16_t x, uint16_t y)
{
    const uint16_t sum = static_cast<uint16_t>(x + y);
    return static_cast<uint8_t>(sum > 255 ? 255 : sum);
}

// With a full alpha the scaling of the source is the identity and is left out.
template <bool kFullAlpha>
void BlendBytes(uint8_t* __restrict dst, const uint8_t* __restrict src, int bytes, uint16_t alpha)
{
    for (int i = 0; i < bytes; i += 4)
    {
        const uint16_t sourceAlpha =
            kFullAlpha ? src[i + kAlphaByte] : MulUn8(src[i + kAlphaByte], alpha);
        const uint16_t inverse = static_cast<uint16_t>(255 - sourceAlpha);
        for (int c = 0; c < 4; ++c)
        {
            const uint16_t source = kFullAlpha ? src[i + c] : MulUn8(src[i + c], alpha);
            dst[i + c] = AddUn8(source, MulUn8(dst[i + c], inverse));
        }
    }
}

uint32_t Premultiply(double channel, double alpha)
{
    return static_cast<uint32_t>(static_cast<uint16_t>(channel * alpha * 65535.0 + 0.5) >> 8);
}

} // namespace

uint32_t PremultiplyColor(uint32_t argb)
{
    const double alpha = double(argb >> 24) / 255.0;
    return (Premultiply(1.0, alpha) << 24) |
           (Premultiply(double((argb >> 16) & 0xFF) / 255.0, alpha) << 16) |
           (Premultiply(double((argb >> 8) & 0xFF) / 255.0, alpha) << 8) |
           Premultiply(double(argb & 0xFF) / 255.0, alpha);
}

uint32_t ScalePixel(uint32_t pixel, uint8_t alpha)
{
    uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8)
        result |= uint32_t(MulUn8(uint16_t((pixel >> shift) & 0xFF), alpha)) << shift;
    return result;
}

QZ_PIXEL_KERNEL void BlendRowOver(uint32_t* dst, const uint32_t* src, int count, uint8_t alpha)
{
    uint8_t* dstBytes = reinterpret_cast<uint8_t*>(dst);
    const uint8_t* srcBytes = reinterpret_cast<const uint8_t*>(src);
    if (alpha == 255)
        BlendBytes<true>(dstBytes, srcBytes, count * 4, alpha);
    else
        BlendBytes<false>(dstBytes, srcBytes, count * 4, alpha);
}

QZ_PIXEL_KERNEL void BlendPixelOver(uint32_t* dst, uint32_t pixel, int count)
{
    const uint16_t inverse = static_cast<uint16_t>(255 - (pixel >> 24));
    if (inverse == 0)
    {
        std::fill(dst, dst + count, pixel);
        return;
    }
    uint8_t channels[4];
    for (int c = 0; c < 4; ++c)
        channels[c] = reinterpret_cast<const uint8_t*>(&pixel)[c];
    uint8_t* bytes = reinterpret_cast<uint8_t*>(dst);
    for (int i = 0; i < count * 4; i += 4)
        for (int c = 0; c < 4; ++c)
            bytes[i + c] = AddUn8(channels[c], MulUn8(bytes[i + c], inverse));
}

} // namespace QzPlatform
