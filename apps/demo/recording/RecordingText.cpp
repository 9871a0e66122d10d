#include "RecordingText.h"

#include <cstdio>

namespace
{

int HexDigit(char ch)
{
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a' + 10;
    if (ch >= 'A' && ch <= 'F')
        return ch - 'A' + 10;
    return -1;
}

// The length of the UTF-8 sequence at text[pos] and its code point; 0 when it is malformed.
size_t DecodeAt(const std::string& text, size_t pos, uint32_t& codePoint)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    if (lead < 0x80)
    {
        codePoint = lead;
        return 1;
    }
    size_t length = 0;
    uint32_t minimum = 0;
    if ((lead & 0xE0) == 0xC0)
    {
        length = 2;
        minimum = 0x80;
        codePoint = lead & 0x1F;
    }
    else if ((lead & 0xF0) == 0xE0)
    {
        length = 3;
        minimum = 0x800;
        codePoint = lead & 0x0F;
    }
    else if ((lead & 0xF8) == 0xF0)
    {
        length = 4;
        minimum = 0x10000;
        codePoint = lead & 0x07;
    }
    else
        return 0;
    if (pos + length > text.size())
        return 0;
    for (size_t i = 1; i < length; ++i)
    {
        const auto next = static_cast<unsigned char>(text[pos + i]);
        if ((next & 0xC0) != 0x80)
            return 0;
        codePoint = codePoint << 6 | (next & 0x3F);
    }
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < minimum || codePoint > 0x10FFFF || surrogate)
        return 0;
    return length;
}

} // namespace

std::string QuoteRecordingText(const std::string& text)
{
    std::string quoted = "\"";
    for (char ch : text)
    {
        const auto byte = static_cast<unsigned char>(ch);
        if (ch == '"' || ch == '\\')
        {
            quoted.push_back('\\');
            quoted.push_back(ch);
        }
        else if (byte < 0x20 || byte == 0x7F)
        {
            char escape[5];
            std::snprintf(escape, sizeof escape, "\\x%02X", byte);
            quoted += escape;
        }
        else
            quoted.push_back(ch);
    }
    quoted.push_back('"');
    return quoted;
}

bool UnquoteRecordingText(const std::string& line, size_t& pos, std::string& text,
                          std::string& error)
{
    text.clear();
    if (pos >= line.size() || line[pos] != '"')
    {
        error = "a quoted text was expected";
        return false;
    }
    for (size_t i = pos + 1; i < line.size(); ++i)
    {
        if (line[i] == '"')
        {
            pos = i + 1;
            return true;
        }
        if (line[i] != '\\')
        {
            text.push_back(line[i]);
            continue;
        }
        const char escaped = i + 1 < line.size() ? line[i + 1] : '\0';
        if (escaped == '"' || escaped == '\\')
        {
            text.push_back(escaped);
            ++i;
            continue;
        }
        const int high = i + 2 < line.size() ? HexDigit(line[i + 2]) : -1;
        const int low = i + 3 < line.size() ? HexDigit(line[i + 3]) : -1;
        if (escaped != 'x' || high < 0 || low < 0)
        {
            error = "bad escape in a quoted text (\\\\, \\\" and \\xHH are known)";
            return false;
        }
        text.push_back(static_cast<char>(high * 16 + low));
        i += 3;
    }
    error = "the quoted text is not closed";
    return false;
}

bool IsUtf8(const std::string& text)
{
    for (size_t pos = 0; pos < text.size();)
    {
        uint32_t codePoint = 0;
        const size_t length = DecodeAt(text, pos, codePoint);
        if (length == 0)
            return false;
        pos += length;
    }
    return true;
}

bool SingleCodePoint(const std::string& text, uint32_t& codePoint)
{
    return !text.empty() && DecodeAt(text, 0, codePoint) == text.size();
}

std::string EncodeUtf8(uint32_t codePoint)
{
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
        codePoint = 0xFFFD;
    std::string bytes;
    if (codePoint < 0x80)
        bytes.push_back(static_cast<char>(codePoint));
    else if (codePoint < 0x800)
    {
        bytes.push_back(static_cast<char>(0xC0 | codePoint >> 6));
        bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    }
    else if (codePoint < 0x10000)
    {
        bytes.push_back(static_cast<char>(0xE0 | codePoint >> 12));
        bytes.push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    }
    else
    {
        bytes.push_back(static_cast<char>(0xF0 | codePoint >> 18));
        bytes.push_back(static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
    }
    return bytes;
}
