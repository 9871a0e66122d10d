// Conversions between the supported code pages and wide text (UTF-32), for the kernel units.
// UTF-8 and 1252 are converted here; 936 goes through iconv (CQzIconvConverter).
#pragma once

#include "platform/system/QzWinTypes.h"

#include <cstddef>
#include <string>

namespace QzPlatform
{

// CP_ACP and CP_OEMCP become the ANSI code page; other values stay.
UINT ResolveCodePage(UINT codePage);
bool IsSupportedCodePage(UINT codePage); // after ResolveCodePage
bool IsLeadByteOf(UINT codePage, BYTE value);

// Bytes to wide text. Each invalid sequence becomes U+FFFD; when strict, it fails the call.
bool DecodeText(UINT codePage, const char* text, size_t length, bool strict, std::wstring* out);
// Wide text to bytes. For UTF-8 a value that is no Unicode scalar becomes U+FFFD, or fails the
// call when strict; for the other code pages a character without a byte form becomes
// defaultChar and sets *usedDefault.
bool EncodeText(UINT codePage, const wchar_t* text, size_t length, bool strict,
                const std::string& defaultChar, std::string* out, bool* usedDefault);

bool DecodeUtf8(const char* text, size_t length, bool strict, std::wstring* out);
bool EncodeUtf8(const wchar_t* text, size_t length, bool strict, std::string* out);
void DecodeCp1252(const char* text, size_t length, std::wstring* out);
void EncodeCp1252(const wchar_t* text, size_t length, const std::string& defaultChar,
                  std::string* out, bool* usedDefault);

} // namespace QzPlatform
