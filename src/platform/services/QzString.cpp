#include "platform/services/QzString.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace QzPlatform
{

namespace
{

// A new[] copy of text, or null for null or empty text.
char* Duplicate(const char* text)
{
    if (!text || text[0] == 0)
        return nullptr;
    const size_t length = std::strlen(text);
    char* copy = new char[length + 1];
    std::memcpy(copy, text, length + 1);
    return copy;
}

} // namespace

CQzString::CQzString(const char* text) : m_pText(Duplicate(text)) {}

CQzString::CQzString(const CQzString& other) : m_pText(Duplicate(other.m_pText)) {}

CQzString::CQzString(CQzString&& other) noexcept : m_pText(std::exchange(other.m_pText, nullptr)) {}

CQzString::~CQzString()
{
    delete[] m_pText;
}

CQzString& CQzString::operator=(const char* text)
{
    // Copy first: text may point into the current buffer.
    Adopt(Duplicate(text));
    return *this;
}

CQzString& CQzString::operator=(const CQzString& other)
{
    if (this != &other)
        Adopt(Duplicate(other.m_pText));
    return *this;
}

CQzString& CQzString::operator=(CQzString&& other) noexcept
{
    if (this != &other)
        Adopt(std::exchange(other.m_pText, nullptr));
    return *this;
}

int CQzString::Format(const char* format, ...)
{
    if (!format)
    {
        Adopt(nullptr);
        return 0;
    }
    va_list args;
    va_start(args, format);
    va_list measure;
    va_copy(measure, args);
    const int length = std::vsnprintf(nullptr, 0, format, measure);
    va_end(measure);
    if (length <= 0)
    {
        va_end(args);
        Adopt(nullptr);
        return 0;
    }
    char* text = new char[static_cast<size_t>(length) + 1];
    std::vsnprintf(text, static_cast<size_t>(length) + 1, format, args);
    va_end(args);
    Adopt(text);
    return length;
}

bool CQzString::Equals(const char* text) const
{
    return std::strcmp(c_str(), text ? text : "") == 0;
}

size_t CQzString::GetLength() const
{
    return m_pText ? std::strlen(m_pText) : 0;
}

void CQzString::Adopt(char* text)
{
    delete[] m_pText;
    m_pText = text;
}

} // namespace QzPlatform
