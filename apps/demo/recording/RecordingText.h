// The text of a recording's string fields: UTF-8 between double quotes, with a backslash before
// a quote or a backslash and \xHH for every other byte below 0x20 and for 0x7F, so that a line
// never holds a control character and every string reads back byte for byte.
#pragma once

#include <cstdint>
#include <string>

// text (any bytes) as a quoted field.
std::string QuoteRecordingText(const std::string& text);

// Reads the quoted field that starts at line[pos] into text and moves pos past it; false with
// the reason in error when the field is not closed or holds a bad escape.
bool UnquoteRecordingText(const std::string& line, size_t& pos, std::string& text,
                          std::string& error);

// True when text is well-formed UTF-8 (no overlong forms, no surrogates, nothing above
// U+10FFFF).
bool IsUtf8(const std::string& text);

// The code point of a text that is exactly one UTF-8 character; false otherwise.
bool SingleCodePoint(const std::string& text, uint32_t& codePoint);

// The UTF-8 bytes of a code point (U+FFFD for one that is not a character).
std::string EncodeUtf8(uint32_t codePoint);
