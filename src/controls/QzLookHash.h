// A digest of the values a control's drawing reads, built word by word: the sum of the words,
// each multiplied by an odd factor of its own place. The products do not wait for each other, so
// a digest of twenty words costs little more than reading them; a change in any one word always
// changes the digest (an odd factor is invertible), and the digest is never 0 (0 means "no
// digest").
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace QzGui
{

class CQzLookHash
{
public:
    void Add(uint64_t value)
    {
        m_nSum += value * m_nFactor;
        m_nFactor += kStep;
    }
    void Add(const RECT& rc)
    {
        Add(Pair(rc.left, rc.top));
        Add(Pair(rc.right, rc.bottom));
    }
    void Add(const POINT& pt) { Add(Pair(pt.x, pt.y)); }
    void Add(const std::string& text)
    {
        Add(text.size());
        size_t at = 0;
        for (; at + 8 <= text.size(); at += 8)
        {
            uint64_t word = 0;
            std::memcpy(&word, text.data() + at, 8);
            Add(word);
        }
        Add(Tail(text.data() + at, text.size() - at));
    }
    uint64_t Get() const { return m_nSum != 0 ? m_nSum : 1; }

private:
    // Place i multiplies by (2i + 1) times the golden-ratio constant: odd, and different for
    // every place.
    static constexpr uint64_t kFirst = 0x9e3779b97f4a7c15ull;
    static constexpr uint64_t kStep = 2 * kFirst;
    static uint64_t Pair(int32_t a, int32_t b) { return uint64_t(uint32_t(a)) << 32 | uint32_t(b); }
    // The last 0 to 7 bytes of a text as one word, read with fixed-size copies (a copy of a
    // variable length is a library call): the first and last four bytes, which overlap below
    // eight, or the first, middle and last byte below four. Every byte is in the word, so with
    // the text's length (added before) no two tails give the same word.
    static uint64_t Tail(const char* p, size_t n)
    {
        if (n >= 4)
        {
            uint32_t first = 0;
            uint32_t last = 0;
            std::memcpy(&first, p, 4);
            std::memcpy(&last, p + n - 4, 4);
            return uint64_t(first) << 32 | last;
        }
        if (n == 0)
            return 0;
        return uint64_t(uint8_t(p[0])) << 16 | uint64_t(uint8_t(p[n / 2])) << 8 | uint8_t(p[n - 1]);
    }
    uint64_t m_nSum = 0;
    uint64_t m_nFactor = kFirst;
};

} // namespace QzGui
