#include "platform/services/QzText.h"

#include "platform/system/QzSystem.h"
#include "platform/system/text/QzCodePage.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace QzPlatform
{

namespace
{

struct DisplayTransforms
{
    NarrowTransform narrow;
    WideTransform wide;
};

DisplayTransforms& Transforms()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static DisplayTransforms& transforms = *new DisplayTransforms;
    return transforms;
}

bool IsTrimmed(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

int DigitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z')
        return c - 'A' + 10;
    return 99;
}

bool HasHexPrefix(const char* text)
{
    return text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && DigitValue(text[2]) < 16;
}

// Radix 0 picks 16 for "0x", 8 for a leading 0 and 10 otherwise, and skips the "0x" prefix.
int ResolveRadix(const char*& text, int radix)
{
    if ((radix == 0 || radix == 16) && HasHexPrefix(text))
    {
        text += 2;
        return 16;
    }
    if (radix == 0)
        return text[0] == '0' ? 8 : 10;
    return radix;
}

char FoldAscii(char c)
{
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsLead(char c)
{
    return IsDBCSLeadByte(static_cast<BYTE>(c)) != FALSE;
}

bool IsDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

template <typename Char> bool IsEmotionCodeAtImpl(const Char* text, int index, int length)
{
    if (!text || index < 0 || length < 6 || index > length - 6)
        return false;
    const Char* code = text + index;
    return code[0] == '#' && IsDigit(code[1]) && IsDigit(code[2]) && code[3] == '|' &&
           IsDigit(code[4]) && IsDigit(code[5]);
}

template <typename Char, typename Transform>
void TransformBuffer(Char* run, size_t size, const Transform& transform)
{
    if (!run || size == 0 || !transform)
        return;
    size_t length = 0;
    while (length < size && run[length] != 0)
        ++length;
    std::basic_string<Char> text(run, length);
    transform(text);
    const size_t kept = text.size() < size ? text.size() : size - 1;
    std::copy(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(kept), run);
    run[kept] = 0;
}

} // namespace

int TextToInt(const char* text)
{
    if (!text)
        return 0;
    const long long value = std::strtoll(text, nullptr, 10);
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return static_cast<int>(value);
}

unsigned long TextToUnsigned(const char* text, int radix)
{
    if (!text || radix < 0 || radix == 1 || radix > 36)
        return 0;
    while (IsBlank(*text))
        ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    radix = ResolveRadix(text, radix);
    uint64_t value = 0;
    for (; DigitValue(*text) < radix; ++text)
    {
        value = value * static_cast<uint64_t>(radix) + static_cast<uint64_t>(DigitValue(*text));
        if (value > 0xFFFFFFFFull)
            return 0xFFFFFFFFul; // out of range, as strtoul of a 32-bit unsigned long
    }
    const auto result = static_cast<uint32_t>(value);
    return negative ? static_cast<uint32_t>(0u - result) : result;
}

bool IntToText(int value, char* buffer, size_t size, int radix)
{
    if (!buffer || size == 0)
        return false;
    buffer[0] = 0;
    if (radix < 2 || radix > 36)
        return false;
    const bool negative = radix == 10 && value < 0;
    uint32_t rest = negative ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
    char digits[40];
    size_t count = 0;
    do
    {
        digits[count++] = "0123456789abcdefghijklmnopqrstuvwxyz"[rest % radix];
        rest /= static_cast<uint32_t>(radix);
    } while (rest != 0);
    if (negative)
        digits[count++] = '-';
    if (count + 1 > size)
        return false;
    for (size_t i = 0; i < count; ++i)
        buffer[i] = digits[count - 1 - i];
    buffer[count] = 0;
    return true;
}

int FormatText(char* buffer, size_t size, const char* format, ...)
{
    if (!buffer || size == 0)
        return -1;
    buffer[0] = 0;
    if (!format)
        return -1;
    va_list args;
    va_start(args, format);
    const int needed = std::vsnprintf(buffer, size, format, args);
    va_end(args);
    if (needed < 0)
    {
        buffer[0] = 0;
        return -1;
    }
    return static_cast<size_t>(needed) < size ? needed : -1;
}

bool CopyText(char* buffer, size_t size, const char* source, size_t count)
{
    if (!buffer || size == 0)
        return false;
    if (!source)
    {
        buffer[0] = 0;
        return true;
    }
    size_t length = 0;
    while (length < count && source[length] != 0)
        ++length;
    const bool fits = length < size;
    const size_t kept = fits ? length : size - 1;
    std::memmove(buffer, source, kept);
    buffer[kept] = 0;
    return fits;
}

void TrimText(char* text)
{
    if (!text)
        return;
    size_t end = std::strlen(text);
    while (end > 0 && IsTrimmed(text[end - 1]))
        --end;
    size_t begin = 0;
    while (begin < end && IsTrimmed(text[begin]))
        ++begin;
    std::memmove(text, text + begin, end - begin);
    text[end - begin] = 0;
}

void TrimText(std::string& text)
{
    size_t end = text.size();
    while (end > 0 && IsTrimmed(text[end - 1]))
        --end;
    size_t begin = 0;
    while (begin < end && IsTrimmed(text[begin]))
        ++begin;
    text = text.substr(begin, end - begin);
}

int CompareNoCase(const char* left, const char* right)
{
    const char* a = left ? left : "";
    const char* b = right ? right : "";
    bool secondByte = false;
    for (;; ++a, ++b)
    {
        const char ca = secondByte ? *a : FoldAscii(*a);
        const char cb = secondByte ? *b : FoldAscii(*b);
        if (ca != cb || ca == 0)
            return static_cast<unsigned char>(ca) - static_cast<unsigned char>(cb);
        secondByte = !secondByte && IsLead(*a);
    }
}

bool IsLeadByteAt(const char* text, int index)
{
    if (!text || index < 0)
        return false;
    int i = 0;
    while (i < index)
    {
        if (text[i] == 0)
            return false;
        i += (IsLead(text[i]) && text[i + 1] != 0) ? 2 : 1;
    }
    return i == index && text[i] != 0 && IsLead(text[i]) && text[i + 1] != 0;
}

std::wstring Utf8TextToWide(const char* utf8)
{
    return utf8 ? Utf8ToWide(utf8) : std::wstring();
}

std::string WideTextToUtf8(const wchar_t* wide)
{
    return wide ? WideToUtf8(wide) : std::string();
}

bool IsEmotionCodeAt(const char* text, int index, int length)
{
    return IsEmotionCodeAtImpl(text, index, length);
}

bool IsEmotionCodeAt(const wchar_t* text, int index, int length)
{
    return IsEmotionCodeAtImpl(text, index, length);
}

void SetDisplayTransform(NarrowTransform narrow, WideTransform wide)
{
    Transforms().narrow = std::move(narrow);
    Transforms().wide = std::move(wide);
}

void ApplyDisplayTransform(std::string& run)
{
    if (Transforms().narrow)
        Transforms().narrow(run);
}

void ApplyDisplayTransform(std::wstring& run)
{
    if (Transforms().wide)
        Transforms().wide(run);
}

void ApplyDisplayTransform(char* run, size_t size)
{
    TransformBuffer(run, size, Transforms().narrow);
}

void ApplyDisplayTransform(wchar_t* run, size_t size)
{
    TransformBuffer(run, size, Transforms().wide);
}

} // namespace QzPlatform
