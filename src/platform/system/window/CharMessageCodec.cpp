#include "platform/system/window/CharMessageCodec.h"

#include "platform/system/QzWinKernel.h"
#include "platform/system/text/QzCodePage.h"

namespace QzPlatform
{

std::string CCharMessageCodec::ToAnsi(wchar_t ch)
{
    if (ch >= 0 && ch < 0x80)
        return std::string(1, static_cast<char>(ch));
    const std::string bytes = WideToAnsi(std::wstring(1, ch));
    return bytes.empty() ? std::string("?") : bytes;
}

wchar_t CCharMessageCodec::ToWide(const std::string& bytes)
{
    if (bytes.size() == 1 && static_cast<unsigned char>(bytes[0]) < 0x80)
        return static_cast<wchar_t>(bytes[0]);
    const std::wstring wide = AnsiToWide(bytes);
    return wide.size() == 1 ? wide[0] : static_cast<wchar_t>(0xFFFD);
}

size_t CCharMessageCodec::SequenceLength(unsigned char firstByte)
{
    if (firstByte < 0x80)
        return 1;
    if (GetACP() != CP_UTF8)
        return IsDBCSLeadByte(firstByte) ? 2 : 1;
    if (firstByte >= 0xC2 && firstByte <= 0xDF)
        return 2;
    if (firstByte >= 0xE0 && firstByte <= 0xEF)
        return 3;
    if (firstByte >= 0xF0 && firstByte <= 0xF4)
        return 4;
    return 1;
}

WPARAM CCharMessageCodec::Pack(const std::string& bytes)
{
    WPARAM packed = 0;
    for (size_t i = 0; i < bytes.size() && i < sizeof(WPARAM); ++i)
        packed = (packed << 8) | static_cast<unsigned char>(bytes[i]);
    return packed;
}

std::string CCharMessageCodec::Unpack(WPARAM packed)
{
    std::string bytes;
    for (int shift = 8 * (sizeof(WPARAM) - 1); shift >= 0; shift -= 8)
    {
        const auto value = static_cast<char>((packed >> shift) & 0xFF);
        if (value != 0 || !bytes.empty())
            bytes += value;
    }
    return bytes.empty() ? std::string(1, '\0') : bytes;
}

size_t CCharMessageCodec::WholeCharPrefix(const std::string& text, size_t maxBytes)
{
    size_t end = 0;
    while (end < text.size())
    {
        const size_t next = end + SequenceLength(static_cast<unsigned char>(text[end]));
        if (next > maxBytes || next > text.size())
            break;
        end = next;
    }
    return end;
}

} // namespace QzPlatform
