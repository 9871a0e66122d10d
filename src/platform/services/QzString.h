// The base library's string handle: one pointer to an owned, terminated byte string (null while
// empty). Narrow text in the ANSI code page; copies are deep.
#pragma once

#include "platform/services/QzText.h"

#include <cstddef>

namespace QzPlatform
{

class CQzString
{
public:
    CQzString() = default;
    CQzString(const char* text); // null gives the empty string
    CQzString(const CQzString& other);
    CQzString(CQzString&& other) noexcept;
    ~CQzString();

    CQzString& operator=(const char* text); // text may point into this string
    CQzString& operator=(const CQzString& other);
    CQzString& operator=(CQzString&& other) noexcept;

    // Never null: "" while empty.
    const char* c_str() const { return m_pText ? m_pText : ""; }
    // printf into the string; the values may point into it. Returns the new length.
    int Format(const char* format, ...) QZ_PRINTF_FORMAT(2, 3);
    bool IsEmpty() const { return m_pText == nullptr; }
    // Exact byte comparison; null text equals the empty string.
    bool Equals(const char* text) const;
    size_t GetLength() const;

private:
    void Adopt(char* text); // takes ownership of a new[] buffer holding a non-empty text, or null

    char* m_pText = nullptr;
};

} // namespace QzPlatform
