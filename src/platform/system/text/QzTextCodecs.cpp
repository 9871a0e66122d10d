#include "platform/system/text/QzTextCodecs.h"

#include "platform/system/text/QzCodePageHost.h"
#include "platform/system/text/QzIconvConverter.h"

#include <cstdint>

namespace QzPlatform
{

namespace
{

const wchar_t kReplacement = 0xFFFD;

// Windows 1252 in 0x80..0x9F; the five bytes it leaves undefined map to the C1 controls of the
// same value, as Windows does. Every other byte is its Latin-1 character.
const uint16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool IsContinuation(unsigned char value)
{
    return (value & 0xC0) == 0x80;
}

// The length of the sequence a lead byte starts and the allowed range of its second byte
// (which excludes overlong forms, surrogates and values above U+10FFFF); 0 for a byte that
// cannot start a sequence.
int SequenceLength(unsigned char lead, unsigned char* secondLow, unsigned char* secondHigh)
{
    *secondLow = 0x80;
    *secondHigh = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead == 0xE0)
        *secondLow = 0xA0;
    else if (lead == 0xED)
        *secondHigh = 0x9F;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead == 0xF0)
        *secondLow = 0x90;
    else if (lead == 0xF4)
        *secondHigh = 0x8F;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

// Reads one sequence at text[0]; returns the bytes consumed and sets *value, or U+FFFD for the
// longest invalid prefix (one replacement per maximal invalid part, as Windows does).
size_t ReadUtf8(const unsigned char* text, size_t length, uint32_t* value, bool* valid)
{
    unsigned char low = 0;
    unsigned char high = 0;
    const int expected = SequenceLength(text[0], &low, &high);
    *valid = false;
    *value = kReplacement;
    if (expected == 0)
        return 1;
    uint32_t code = text[0] & (0xFF >> (expected + 1));
    for (int i = 1; i < expected; ++i)
    {
        if (static_cast<size_t>(i) >= length)
            return length;
        const unsigned char next = text[i];
        const bool inRange = i == 1 ? (next >= low && next <= high) : IsContinuation(next);
        if (!inRange)
            return static_cast<size_t>(i);
        code = (code << 6) | (next & 0x3F);
    }
    *valid = true;
    *value = code;
    return static_cast<size_t>(expected);
}

void AppendUtf8(uint32_t code, std::string* out)
{
    if (code < 0x80)
    {
        out->push_back(static_cast<char>(code));
        return;
    }
    if (code < 0x800)
    {
        out->push_back(static_cast<char>(0xC0 | (code >> 6)));
    }
    else if (code < 0x10000)
    {
        out->push_back(static_cast<char>(0xE0 | (code >> 12)));
        out->push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    }
    else
    {
        out->push_back(static_cast<char>(0xF0 | (code >> 18)));
        out->push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        out->push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    }
    out->push_back(static_cast<char>(0x80 | (code & 0x3F)));
}

bool IsScalarValue(uint32_t code)
{
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

} // namespace

UINT ResolveCodePage(UINT codePage)
{
    if (codePage == CP_ACP || codePage == CP_OEMCP)
        return GetAnsiCodePage();
    return codePage;
}

bool IsSupportedCodePage(UINT codePage)
{
    return codePage == 936 || codePage == 1252 || codePage == CP_UTF8;
}

bool IsLeadByteOf(UINT codePage, BYTE value)
{
    return codePage == 936 && value >= 0x81 && value <= 0xFE;
}

bool DecodeText(UINT codePage, const char* text, size_t length, bool strict, std::wstring* out)
{
    out->clear();
    if (codePage == CP_UTF8)
        return DecodeUtf8(text, length, strict, out);
    if (codePage == 1252)
    {
        DecodeCp1252(text, length, out);
        return true;
    }
    return CQzIconvConverter::Gbk().Decode(text, length, strict, out);
}

bool EncodeText(UINT codePage, const wchar_t* text, size_t length, bool strict,
                const std::string& defaultChar, std::string* out, bool* usedDefault)
{
    out->clear();
    *usedDefault = false;
    if (codePage == CP_UTF8)
        return EncodeUtf8(text, length, strict, out);
    if (codePage == 1252)
        EncodeCp1252(text, length, defaultChar, out, usedDefault);
    else
        CQzIconvConverter::Gbk().Encode(text, length, defaultChar, out, usedDefault);
    return true;
}

bool DecodeUtf8(const char* text, size_t length, bool strict, std::wstring* out)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    out->reserve(out->size() + length);
    size_t pos = 0;
    while (pos < length)
    {
        if (bytes[pos] < 0x80)
        {
            out->push_back(static_cast<wchar_t>(bytes[pos++]));
            continue;
        }
        uint32_t code = 0;
        bool valid = false;
        pos += ReadUtf8(bytes + pos, length - pos, &code, &valid);
        if (!valid && strict)
            return false;
        out->push_back(static_cast<wchar_t>(code));
    }
    return true;
}

bool EncodeUtf8(const wchar_t* text, size_t length, bool strict, std::string* out)
{
    out->reserve(out->size() + length);
    for (size_t i = 0; i < length; ++i)
    {
        uint32_t code = static_cast<uint32_t>(text[i]);
        if (!IsScalarValue(code))
        {
            if (strict)
                return false;
            code = kReplacement;
        }
        AppendUtf8(code, out);
    }
    return true;
}

void DecodeCp1252(const char* text, size_t length, std::wstring* out)
{
    out->reserve(out->size() + length);
    for (size_t i = 0; i < length; ++i)
    {
        const auto value = static_cast<unsigned char>(text[i]);
        const bool high = value >= 0x80 && value < 0xA0;
        out->push_back(static_cast<wchar_t>(high ? kCp1252High[value - 0x80] : value));
    }
}

void EncodeCp1252(const wchar_t* text, size_t length, const std::string& defaultChar,
                  std::string* out, bool* usedDefault)
{
    for (size_t i = 0; i < length; ++i)
    {
        const auto code = static_cast<uint32_t>(text[i]);
        if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
        {
            out->push_back(static_cast<char>(code));
            continue;
        }
        int found = -1;
        for (int k = 0; k < 32 && found < 0; ++k)
        {
            if (kCp1252High[k] == code)
                found = k;
        }
        if (found >= 0)
        {
            out->push_back(static_cast<char>(0x80 + found));
            continue;
        }
        out->append(defaultChar);
        *usedDefault = true;
    }
}

} // namespace QzPlatform
