// Text helpers of the base library. Narrow text is a byte string in the ANSI code page (two-byte
// characters possible), wide text comes from UTF-8. Every function accepts null text and treats
// it as empty unless it says otherwise; none writes past the buffer size it is given.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#if defined(__GNUC__) || defined(__clang__)
#define QZ_PRINTF_FORMAT(formatIndex, firstArg)                                                    \
    __attribute__((format(printf, formatIndex, firstArg)))
#else
#define QZ_PRINTF_FORMAT(formatIndex, firstArg)
#endif

namespace QzPlatform
{

// Decimal text to integer with atoi rules (leading blanks, optional sign, digits until the
// first other character); 0 for null.
int TextToInt(const char* text);
// Text to unsigned with strtoul rules in the given radix (16 for colours such as "ff00ff00";
// a "0x" prefix is accepted in radix 16); 0 for null or a radix outside 2..36 (0 = guess).
unsigned long TextToUnsigned(const char* text, int radix);
// Integer to text in radix 2..36 (lower-case digits). Radix 10 is signed; other radixes write
// the 32-bit two's complement pattern, as the C runtime does. False (and an empty buffer when
// size > 0) when the radix is bad or the text does not fit.
bool IntToText(int value, char* buffer, size_t size, int radix);

// Bounded printf: never writes more than size bytes and always terminates when size > 0.
// Returns the number of characters written, or -1 when the text was cut (or nothing could be
// written: null buffer or format, size 0).
int FormatText(char* buffer, size_t size, const char* format, ...) QZ_PRINTF_FORMAT(3, 4);

// Copies at most `count` bytes of source (fewer at its terminator) into buffer of size bytes,
// always terminating when size > 0; kCopyAll copies the whole source. Returns false when
// the copy was cut to fit (bytes are cut as they are; a two-byte character may be split).
constexpr size_t kCopyAll = static_cast<size_t>(-1);
bool CopyText(char* buffer, size_t size, const char* source, size_t count = kCopyAll);

// Removes blanks, tabs, CR and LF from both ends, in place.
void TrimText(char* text);
void TrimText(std::string& text);

// Compares without regard to the case of ASCII letters; the second byte of a two-byte character
// is compared exactly. Result < 0, 0 or > 0 as strcmp; null sorts as empty.
int CompareNoCase(const char* left, const char* right);

// True when text[index] is the first byte of a two-byte character of the ANSI code page: the
// index lies on a character boundary (counted from the start), the byte is a lead byte and a
// second byte follows. False for a null text or an index outside the text.
bool IsLeadByteAt(const char* text, int index);

// UTF-8 (code page 65001) to wide text and back.
std::wstring Utf8TextToWide(const char* utf8);
std::string WideTextToUtf8(const wchar_t* wide);

// True when the six characters "#NN|MM" (N, M digits) start at index of a text of the given
// length. Never reads at or beyond length.
bool IsEmotionCodeAt(const char* text, int index, int length);
bool IsEmotionCodeAt(const wchar_t* text, int index, int length);

// The display transform of the language switch: rewrites a run for display (for instance
// right-to-left languages). Identity until a host installs functions; callers apply it only
// when the data library's language switch is on. Null functions restore the identity.
using NarrowTransform = std::function<void(std::string&)>;
using WideTransform = std::function<void(std::wstring&)>;
void SetDisplayTransform(NarrowTransform narrow, WideTransform wide);
void ApplyDisplayTransform(std::string& run);
void ApplyDisplayTransform(std::wstring& run);
// In place on a terminated buffer of `size` characters; a longer result is cut to fit.
void ApplyDisplayTransform(char* run, size_t size);
void ApplyDisplayTransform(wchar_t* run, size_t size);

} // namespace QzPlatform
