// Text conversion between the ANSI code page (936 by default, settable; 65001 too), UTF-8 and
// wide text. These wrap MultiByteToWideChar and WideCharToMultiByte for C++ strings.
#pragma once

#include <string>

namespace QzPlatform
{

std::wstring AnsiToWide(const std::string& ansi);
std::string WideToAnsi(const std::wstring& wide);
std::wstring Utf8ToWide(const std::string& utf8);
std::string WideToUtf8(const std::wstring& wide);
std::string AnsiToUtf8(const std::string& ansi);
std::string Utf8ToAnsi(const std::string& utf8);

} // namespace QzPlatform
