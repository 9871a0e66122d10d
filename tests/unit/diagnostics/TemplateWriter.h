// Bytes of a dialog template written field by field, little-endian, for templates no resource
// compiler makes (more than 1000 items, plain creation data, class ordinals).
#pragma once

#include <cstdint>
#include <string>

namespace QzDiagnosticsTest
{

class TemplateWriter
{
public:
    TemplateWriter& Word(uint16_t value);
    TemplateWriter& Dword(uint32_t value);
    // An ASCII text as a zero-terminated UTF-16 string.
    TemplateWriter& Text(const char* pszText);
    TemplateWriter& Ordinal(uint16_t value) { return Word(0xFFFF).Word(value); }
    TemplateWriter& Align4();

    // A plain template header: style, extended style, item count, x, y, cx, cy, then no menu,
    // no class and the title.
    TemplateWriter& PlainHeader(uint32_t style, uint16_t items, int16_t cx, int16_t cy,
                                const char* pszTitle = "");
    // A plain item at a DWORD boundary: style (WS_CHILD | WS_VISIBLE), no extended style, the
    // rectangle and id, the class atom and the title; creation data is left to the caller.
    TemplateWriter& PlainItem(uint16_t id, int16_t x, int16_t y, uint16_t atom,
                              const char* pszTitle);

    const std::string& Bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

} // namespace QzDiagnosticsTest
