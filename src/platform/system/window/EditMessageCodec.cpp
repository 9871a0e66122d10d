#include "platform/system/window/EditMessageCodec.h"

#include "platform/system/QzWinEdit.h"
#include "platform/system/text/QzCodePage.h"
#include "platform/system/window/CharMessageCodec.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace QzPlatform
{

namespace
{

// Bytes one wide character may need in the ANSI code page.
constexpr size_t kMaxBytesPerChar = 4;

WORD SizeWord(LPARAM buffer)
{
    WORD size = 0;
    std::memcpy(&size, reinterpret_cast<const void*>(buffer), sizeof(size));
    return size;
}

template <class C> void PutSizeWord(std::basic_string<C>& buffer, size_t size)
{
    const auto word = static_cast<WORD>(std::min<size_t>(size, 0xFFFF));
    std::memcpy(&buffer[0], &word, sizeof(word));
}

wchar_t WideChar(WPARAM packed)
{
    return packed ? CCharMessageCodec::ToWide(CCharMessageCodec::Unpack(packed)) : L'\0';
}

WPARAM PackedChar(WPARAM wide)
{
    return wide ? CCharMessageCodec::Pack(CCharMessageCodec::ToAnsi(static_cast<wchar_t>(wide)))
                : 0;
}

} // namespace

bool CEditMessageCodec::Converts(UINT msg)
{
    return msg == EM_REPLACESEL || msg == EM_GETLINE || msg == EM_SETPASSWORDCHAR ||
           msg == EM_GETPASSWORDCHAR;
}

LRESULT CEditMessageCodec::CallWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                            LPARAM lParam)
{
    switch (msg)
    {
    case EM_REPLACESEL:
    {
        if (!lParam)
            return proc(hwnd, msg, wParam, lParam);
        const std::wstring text = AnsiToWide(reinterpret_cast<LPCSTR>(lParam));
        return proc(hwnd, msg, wParam, reinterpret_cast<LPARAM>(text.c_str()));
    }
    case EM_GETLINE:
        return GetLineWideFromAnsi(proc, hwnd, wParam, lParam);
    case EM_SETPASSWORDCHAR:
        return proc(hwnd, msg, static_cast<WPARAM>(WideChar(wParam)), lParam);
    default: // EM_GETPASSWORDCHAR
        return static_cast<LRESULT>(
            PackedChar(static_cast<WPARAM>(proc(hwnd, msg, wParam, lParam))));
    }
}

LRESULT CEditMessageCodec::CallAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                            LPARAM lParam)
{
    switch (msg)
    {
    case EM_REPLACESEL:
    {
        if (!lParam)
            return proc(hwnd, msg, wParam, lParam);
        const std::string text = WideToAnsi(reinterpret_cast<LPCWSTR>(lParam));
        return proc(hwnd, msg, wParam, reinterpret_cast<LPARAM>(text.c_str()));
    }
    case EM_GETLINE:
        return GetLineAnsiFromWide(proc, hwnd, wParam, lParam);
    case EM_SETPASSWORDCHAR:
        return proc(hwnd, msg, PackedChar(wParam), lParam);
    default: // EM_GETPASSWORDCHAR
        return static_cast<LRESULT>(WideChar(static_cast<WPARAM>(proc(hwnd, msg, wParam, lParam))));
    }
}

// The ANSI caller's buffer holds size bytes; the line is read wide and cut between characters.
LRESULT CEditMessageCodec::GetLineWideFromAnsi(WNDPROC proc, HWND hwnd, WPARAM line, LPARAM buffer)
{
    if (!buffer)
        return proc(hwnd, EM_GETLINE, line, buffer);
    const size_t size = SizeWord(buffer);
    if (size == 0)
        return 0;
    std::wstring wide(std::max<size_t>(size, 2), L'\0');
    PutSizeWord(wide, size);
    const LRESULT answer = proc(hwnd, EM_GETLINE, line, reinterpret_cast<LPARAM>(&wide[0]));
    wide.resize(std::clamp<LRESULT>(answer, 0, static_cast<LRESULT>(size)));
    const std::string ansi = WideToAnsi(wide);
    const size_t length = CCharMessageCodec::WholeCharPrefix(ansi, size);
    std::memcpy(reinterpret_cast<char*>(buffer), ansi.data(), length);
    return static_cast<LRESULT>(length);
}

// The wide caller's buffer holds size characters.
LRESULT CEditMessageCodec::GetLineAnsiFromWide(WNDPROC proc, HWND hwnd, WPARAM line, LPARAM buffer)
{
    if (!buffer)
        return proc(hwnd, EM_GETLINE, line, buffer);
    const size_t size = SizeWord(buffer);
    if (size == 0)
        return 0;
    const size_t bytes = std::min<size_t>(size * kMaxBytesPerChar, 0xFFFF);
    std::string ansi(bytes, '\0');
    PutSizeWord(ansi, bytes);
    const LRESULT answer = proc(hwnd, EM_GETLINE, line, reinterpret_cast<LPARAM>(&ansi[0]));
    ansi.resize(std::clamp<LRESULT>(answer, 0, static_cast<LRESULT>(bytes)));
    const std::wstring wide = AnsiToWide(ansi);
    const size_t length = std::min(wide.size(), size);
    std::copy(wide.begin(), wide.begin() + static_cast<std::ptrdiff_t>(length),
              reinterpret_cast<wchar_t*>(buffer));
    return static_cast<LRESULT>(length);
}

} // namespace QzPlatform
