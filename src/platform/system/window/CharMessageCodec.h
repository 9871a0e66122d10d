// Characters between their wide form and their bytes in the ANSI code page, as the character
// messages carry them: WM_CHAR one byte a message, WM_IME_CHAR and WM_IME_COMPOSITION all bytes
// of a character packed in wParam, the first byte highest (a double-byte character has its
// lead byte in bits 8 to 15, as on Windows).
#pragma once

#include "platform/system/QzWinTypes.h"

#include <cstddef>
#include <string>

namespace QzPlatform
{

class CCharMessageCodec
{
public:
    // The bytes of one character: the code page's default character when it has no form.
    static std::string ToAnsi(wchar_t ch);
    // The character of a complete byte sequence; U+FFFD when it is not exactly one character.
    static wchar_t ToWide(const std::string& bytes);
    // How many bytes the character that starts with this byte has (1 for a trail or bad byte).
    static size_t SequenceLength(unsigned char firstByte);
    static WPARAM Pack(const std::string& bytes);
    static std::string Unpack(WPARAM packed);
    // The longest prefix of at most maxBytes bytes that ends between two characters.
    static size_t WholeCharPrefix(const std::string& text, size_t maxBytes);
};

} // namespace QzPlatform
