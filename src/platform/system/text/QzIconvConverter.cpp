#include "platform/system/text/QzIconvConverter.h"

#include <cerrno>
#include <iconv.h>

namespace QzPlatform
{

namespace
{

const wchar_t kReplacement = 0xFFFD;
const iconv_t kNoDescriptor = reinterpret_cast<iconv_t>(-1);

iconv_t OpenFirst(const char* const* charsets, bool toWide)
{
    for (const char* const* name = charsets; *name; ++name)
    {
        iconv_t cd = toWide ? iconv_open("WCHAR_T", *name) : iconv_open(*name, "WCHAR_T");
        if (cd != kNoDescriptor)
            return cd;
    }
    return kNoDescriptor;
}

bool IsAscii(const char* text, size_t length)
{
    for (size_t i = 0; i < length; ++i)
    {
        if (static_cast<unsigned char>(text[i]) >= 0x80)
            return false;
    }
    return true;
}

} // namespace

CQzIconvConverter::CQzIconvConverter(const char* const* charsets) : m_pCharsets(charsets) {}

CQzIconvConverter::~CQzIconvConverter()
{
    if (m_pToWide)
        iconv_close(static_cast<iconv_t>(m_pToWide));
    if (m_pFromWide)
        iconv_close(static_cast<iconv_t>(m_pFromWide));
}

CQzIconvConverter& CQzIconvConverter::Gbk()
{
    static const char* const kNames[] = {"CP936", "GBK", nullptr};
    static CQzIconvConverter converter(kNames);
    return converter;
}

bool CQzIconvConverter::Open()
{
    if (m_bTried)
        return m_pToWide && m_pFromWide;
    m_bTried = true;
    iconv_t toWide = OpenFirst(m_pCharsets, true);
    iconv_t fromWide = OpenFirst(m_pCharsets, false);
    m_pToWide = toWide == kNoDescriptor ? nullptr : toWide;
    m_pFromWide = fromWide == kNoDescriptor ? nullptr : fromWide;
    return m_pToWide && m_pFromWide;
}

bool CQzIconvConverter::Decode(const char* text, size_t length, bool strict, std::wstring* out)
{
    if (IsAscii(text, length))
    {
        out->append(text, text + length);
        return true;
    }
    if (!Open())
    {
        // Without the converter only ASCII is known; every other byte is invalid.
        for (size_t i = 0; i < length; ++i)
        {
            const auto value = static_cast<unsigned char>(text[i]);
            if (value >= 0x80 && strict)
                return false;
            out->push_back(value >= 0x80 ? kReplacement : static_cast<wchar_t>(value));
        }
        return true;
    }
    auto cd = static_cast<iconv_t>(m_pToWide);
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    char* in = const_cast<char*>(text);
    size_t inLeft = length;
    wchar_t chunk[256];
    while (inLeft > 0)
    {
        char* outPos = reinterpret_cast<char*>(chunk);
        size_t outLeft = sizeof(chunk);
        const size_t result = iconv(cd, &in, &inLeft, &outPos, &outLeft);
        out->append(chunk, (sizeof(chunk) - outLeft) / sizeof(wchar_t));
        if (result != static_cast<size_t>(-1) || errno == E2BIG)
            continue;
        // EILSEQ or EINVAL: the byte at `in` starts no valid character.
        if (strict)
            return false;
        out->push_back(kReplacement);
        ++in;
        --inLeft;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
    }
    return true;
}

void CQzIconvConverter::Encode(const wchar_t* text, size_t length, const std::string& defaultChar,
                               std::string* out, bool* usedDefault)
{
    bool ascii = true;
    for (size_t i = 0; i < length && ascii; ++i)
        ascii = static_cast<unsigned int>(text[i]) < 0x80;
    if (ascii)
    {
        for (size_t i = 0; i < length; ++i)
            out->push_back(static_cast<char>(text[i]));
        return;
    }
    if (!Open())
    {
        for (size_t i = 0; i < length; ++i)
        {
            const bool known = static_cast<unsigned int>(text[i]) < 0x80;
            if (known)
                out->push_back(static_cast<char>(text[i]));
            else
                out->append(defaultChar);
            *usedDefault = *usedDefault || !known;
        }
        return;
    }
    auto cd = static_cast<iconv_t>(m_pFromWide);
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    char* in = reinterpret_cast<char*>(const_cast<wchar_t*>(text));
    size_t inLeft = length * sizeof(wchar_t);
    char chunk[1024];
    while (inLeft > 0)
    {
        char* outPos = chunk;
        size_t outLeft = sizeof(chunk);
        const size_t result = iconv(cd, &in, &inLeft, &outPos, &outLeft);
        out->append(chunk, sizeof(chunk) - outLeft);
        if (result != static_cast<size_t>(-1) || errno == E2BIG)
            continue;
        out->append(defaultChar);
        *usedDefault = true;
        const size_t skip = inLeft < sizeof(wchar_t) ? inLeft : sizeof(wchar_t);
        in += skip;
        inLeft -= skip;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
    }
}

} // namespace QzPlatform
