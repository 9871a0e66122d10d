#include "platform/render/NullRenderDevice.h"

#include <algorithm>
#include <iterator>

namespace QzPlatform
{

namespace
{

struct CodeRange
{
    uint32_t first;
    uint32_t last;
};

// East Asian wide and fullwidth blocks: Hangul Jamo, CJK radicals to Yi (less U+303F, the
// half-width ideographic space), Hangul syllables, compatibility ideographs, vertical and
// compatibility forms, fullwidth forms and signs, and the supplementary ideograph planes.
const CodeRange kWideRanges[] = {
    {0x1100, 0x115F}, {0x2329, 0x232A}, {0x2E80, 0x303E},   {0x3040, 0xA4CF},
    {0xAC00, 0xD7A3}, {0xF900, 0xFAFF}, {0xFE10, 0xFE19},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x20000, 0x2FFFD}, {0x30000, 0x3FFFD},
};

// Length of the UTF-8 sequence that starts with this byte; 0 for a byte that cannot start one.
size_t SequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

// Decodes the code point at `pos` and advances past it; an invalid byte gives U+FFFD and
// advances by one.
uint32_t NextCodePoint(const std::string& text, size_t& pos)
{
    const unsigned char lead = static_cast<unsigned char>(text[pos]);
    const size_t length = SequenceLength(lead);
    if (length == 0 || pos + length > text.size())
    {
        ++pos;
        return length == 1 ? lead : 0xFFFD;
    }
    if (length == 1)
    {
        ++pos;
        return lead;
    }
    uint32_t codePoint = lead & (0x7F >> length);
    for (size_t i = 1; i < length; ++i)
    {
        const unsigned char trail = static_cast<unsigned char>(text[pos + i]);
        if ((trail & 0xC0) != 0x80)
        {
            ++pos;
            return 0xFFFD;
        }
        codePoint = (codePoint << 6) | (trail & 0x3F);
    }
    pos += length;
    return codePoint;
}

} // namespace

void CNullRenderDevice::SetScreenSize(int width, int height)
{
    m_nScreenWidth = width;
    m_nScreenHeight = height;
}

SizeI CNullRenderDevice::MeasureText(const std::string& utf8, const FontSpec& font)
{
    return MeasureOnCell(utf8, font);
}

bool CNullRenderDevice::IsWideCodePoint(uint32_t codePoint)
{
    return std::any_of(std::begin(kWideRanges), std::end(kWideRanges),
                       [codePoint](const CodeRange& range)
                       { return codePoint >= range.first && codePoint <= range.last; });
}

SizeI CNullRenderDevice::MeasureOnCell(const std::string& utf8, const FontSpec& font)
{
    const int size = std::max(font.size, 0);
    const int narrow = size / 2;
    SizeI extent;
    int lineWidth = 0;
    int lines = 1;
    size_t pos = 0;
    while (pos < utf8.size())
    {
        const uint32_t codePoint = NextCodePoint(utf8, pos);
        if (codePoint == '\n')
        {
            extent.cx = std::max(extent.cx, lineWidth);
            lineWidth = 0;
            ++lines;
            continue;
        }
        lineWidth += IsWideCodePoint(codePoint) ? size : narrow;
    }
    extent.cx = std::max(extent.cx, lineWidth);
    extent.cy = lines * size;
    return extent;
}

CNullRenderDevice& GetNullRenderDevice()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static CNullRenderDevice& device = *new CNullRenderDevice;
    return device;
}

} // namespace QzPlatform
