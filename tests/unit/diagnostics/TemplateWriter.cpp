#include "TemplateWriter.h"

namespace QzDiagnosticsTest
{

TemplateWriter& TemplateWriter::Word(uint16_t value)
{
    m_bytes += static_cast<char>(value & 0xFF);
    m_bytes += static_cast<char>(value >> 8);
    return *this;
}

TemplateWriter& TemplateWriter::Dword(uint32_t value)
{
    return Word(static_cast<uint16_t>(value & 0xFFFF)).Word(static_cast<uint16_t>(value >> 16));
}

TemplateWriter& TemplateWriter::Text(const char* pszText)
{
    for (const char* p = pszText; *p; ++p)
        Word(static_cast<uint8_t>(*p));
    return Word(0);
}

TemplateWriter& TemplateWriter::Align4()
{
    while (m_bytes.size() % 4 != 0)
        m_bytes += '\0';
    return *this;
}

TemplateWriter& TemplateWriter::PlainHeader(uint32_t style, uint16_t items, int16_t cx, int16_t cy,
                                            const char* pszTitle)
{
    Dword(style).Dword(0).Word(items).Word(0).Word(0);
    Word(static_cast<uint16_t>(cx)).Word(static_cast<uint16_t>(cy));
    return Word(0).Word(0).Text(pszTitle);
}

TemplateWriter& TemplateWriter::PlainItem(uint16_t id, int16_t x, int16_t y, uint16_t atom,
                                          const char* pszTitle)
{
    Align4().Dword(0x50000000).Dword(0);
    Word(static_cast<uint16_t>(x)).Word(static_cast<uint16_t>(y)).Word(10).Word(10).Word(id);
    return Ordinal(atom).Text(pszTitle);
}

} // namespace QzDiagnosticsTest
