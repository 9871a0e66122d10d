// One double-byte code page converted through iconv, both ways, with the two conversion
// descriptors opened once and kept. Used for code page 936 (GBK).
#pragma once

#include <cstddef>
#include <string>

namespace QzPlatform
{

class CQzIconvConverter
{
public:
    // charsets: names to try in order, null-terminated list ("CP936", "GBK", nullptr).
    explicit CQzIconvConverter(const char* const* charsets);
    ~CQzIconvConverter();
    CQzIconvConverter(const CQzIconvConverter&) = delete;
    CQzIconvConverter& operator=(const CQzIconvConverter&) = delete;

    // Bytes to wide text; an invalid byte becomes U+FFFD, or fails the call when strict.
    bool Decode(const char* text, size_t length, bool strict, std::wstring* out);
    // Wide text to bytes; a character the code page lacks becomes defaultChar.
    void Encode(const wchar_t* text, size_t length, const std::string& defaultChar,
                std::string* out, bool* usedDefault);

    static CQzIconvConverter& Gbk();

private:
    bool Open();

    const char* const* m_pCharsets;
    void* m_pToWide = nullptr;
    void* m_pFromWide = nullptr;
    bool m_bTried = false;
};

} // namespace QzPlatform
