#include "platform/system/window/WindowProcCaller.h"

#include "platform/system/HostedSystem.h"
#include "platform/system/text/QzCodePage.h"
#include "platform/system/window/CharMessageCodec.h"
#include "platform/system/window/EditMessageCodec.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>

namespace QzPlatform
{

namespace
{

// Bound of the temporary buffer of a converted WM_GETTEXT, whatever size the caller claims.
constexpr size_t kMaxTextBuffer = 1 << 20;
// Bytes one wide character may need in the ANSI code page.
constexpr size_t kMaxBytesPerChar = 4;

// The length a procedure answered for a buffer of capacity units, kept inside the buffer and
// before its first zero.
template <class C> size_t AnsweredLength(LRESULT answer, const C* buffer, size_t capacity)
{
    size_t length = answer > 0 ? static_cast<size_t>(answer) : 0;
    length = std::min(length, capacity == 0 ? 0 : capacity - 1);
    return std::find(buffer, buffer + length, C(0)) - buffer;
}

// A buffer for a procedure to fill with text. It is not cleared: callers ask with buffers far
// larger than most texts, and only what the procedure answered is read (AnsweredLength).
template <class C> std::unique_ptr<C[]> TextBuffer(size_t units)
{
    std::unique_ptr<C[]> buffer(new C[units]);
    buffer[0] = C(0);
    return buffer;
}

std::string AnsiOrNull(LPCWSTR text)
{
    return text ? WideToAnsi(text) : std::string();
}

std::wstring WideOrNull(LPCSTR text)
{
    return text ? AnsiToWide(text) : std::wstring();
}

// CREATESTRUCT of the other kind with every field but the two texts.
template <class To, class From> To WithCommonFields(const From& from)
{
    To to = {};
    to.lpCreateParams = from.lpCreateParams;
    to.hInstance = from.hInstance;
    to.hMenu = from.hMenu;
    to.hwndParent = from.hwndParent;
    to.cy = from.cy;
    to.cx = from.cx;
    to.y = from.y;
    to.x = from.x;
    to.style = from.style;
    to.dwExStyle = from.dwExStyle;
    return to;
}

} // namespace

LRESULT CWindowProcCaller::Call(const WindowProcRef& proc, bool callerUnicode, HWND hwnd, UINT msg,
                                WPARAM wParam, LPARAM lParam)
{
    if (WNDPROC own = proc.Of(callerUnicode))
        return own(hwnd, msg, wParam, lParam);
    if (proc.IsEmpty())
        return 0;
    if (CEditMessageCodec::Converts(msg))
        return callerUnicode
                   ? CEditMessageCodec::CallAnsiFromWide(proc.pfnAnsi, hwnd, msg, wParam, lParam)
                   : CEditMessageCodec::CallWideFromAnsi(proc.pfnWide, hwnd, msg, wParam, lParam);
    if (callerUnicode)
        return CallAnsiFromWide(proc.pfnAnsi, hwnd, msg, wParam, lParam);
    return CallWideFromAnsi(proc.pfnWide, hwnd, msg, wParam, lParam);
}

LRESULT CWindowProcCaller::CallWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                            LPARAM lParam)
{
    switch (msg)
    {
    case WM_SETTEXT:
    {
        if (!lParam)
            return proc(hwnd, msg, wParam, lParam);
        const std::wstring text = AnsiToWide(reinterpret_cast<LPCSTR>(lParam));
        return proc(hwnd, msg, wParam, reinterpret_cast<LPARAM>(text.c_str()));
    }
    case WM_GETTEXT:
        return GetTextWideFromAnsi(proc, hwnd, wParam, lParam);
    case WM_GETTEXTLENGTH:
        return GetTextLengthWideFromAnsi(proc, hwnd);
    case WM_CHAR:
    case WM_SYSCHAR:
        return CharWideFromAnsi(proc, hwnd, msg, wParam, lParam);
    case WM_IME_CHAR:
    case WM_IME_COMPOSITION:
    {
        const wchar_t ch = CCharMessageCodec::ToWide(CCharMessageCodec::Unpack(wParam));
        return proc(hwnd, msg, static_cast<WPARAM>(ch), lParam);
    }
    case WM_NCCREATE:
    case WM_CREATE:
        return CreateWideFromAnsi(proc, hwnd, msg, wParam, lParam);
    default:
        return proc(hwnd, msg, wParam, lParam);
    }
}

LRESULT CWindowProcCaller::CallAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                            LPARAM lParam)
{
    switch (msg)
    {
    case WM_SETTEXT:
    {
        if (!lParam)
            return proc(hwnd, msg, wParam, lParam);
        const std::string text = WideToAnsi(reinterpret_cast<LPCWSTR>(lParam));
        return proc(hwnd, msg, wParam, reinterpret_cast<LPARAM>(text.c_str()));
    }
    case WM_GETTEXT:
        return GetTextAnsiFromWide(proc, hwnd, wParam, lParam);
    case WM_GETTEXTLENGTH:
        return GetTextLengthAnsiFromWide(proc, hwnd);
    case WM_CHAR:
    case WM_SYSCHAR:
        return CharAnsiFromWide(proc, hwnd, msg, wParam, lParam);
    case WM_IME_CHAR:
    case WM_IME_COMPOSITION:
    {
        const std::string bytes = CCharMessageCodec::ToAnsi(static_cast<wchar_t>(wParam));
        return proc(hwnd, msg, CCharMessageCodec::Pack(bytes), lParam);
    }
    case WM_NCCREATE:
    case WM_CREATE:
        return CreateAnsiFromWide(proc, hwnd, msg, wParam, lParam);
    default:
        return proc(hwnd, msg, wParam, lParam);
    }
}

// An ANSI caller's buffer of capacity bytes, filled by a Unicode procedure.
LRESULT CWindowProcCaller::GetTextWideFromAnsi(WNDPROC proc, HWND hwnd, WPARAM capacity,
                                               LPARAM buffer)
{
    if (capacity == 0 || !buffer)
        return proc(hwnd, WM_GETTEXT, capacity, buffer);
    const size_t units = std::min<size_t>(capacity, kMaxTextBuffer);
    const std::unique_ptr<wchar_t[]> filled = TextBuffer<wchar_t>(units);
    const LRESULT answer = proc(hwnd, WM_GETTEXT, units, reinterpret_cast<LPARAM>(filled.get()));
    const std::string ansi =
        WideToAnsi(std::wstring(filled.get(), AnsweredLength(answer, filled.get(), units)));
    const size_t length = CCharMessageCodec::WholeCharPrefix(ansi, units - 1);
    char* out = reinterpret_cast<char*>(buffer);
    std::memcpy(out, ansi.data(), length);
    out[length] = '\0';
    return static_cast<LRESULT>(length);
}

// A Unicode caller's buffer of capacity characters, filled by an ANSI procedure.
LRESULT CWindowProcCaller::GetTextAnsiFromWide(WNDPROC proc, HWND hwnd, WPARAM capacity,
                                               LPARAM buffer)
{
    if (capacity == 0 || !buffer)
        return proc(hwnd, WM_GETTEXT, capacity, buffer);
    const size_t units = std::min<size_t>(capacity, kMaxTextBuffer);
    const size_t bytes = units * kMaxBytesPerChar;
    const std::unique_ptr<char[]> filled = TextBuffer<char>(bytes);
    const LRESULT answer = proc(hwnd, WM_GETTEXT, bytes, reinterpret_cast<LPARAM>(filled.get()));
    const std::wstring wide =
        AnsiToWide(std::string(filled.get(), AnsweredLength(answer, filled.get(), bytes)));
    const size_t length = std::min(wide.size(), units - 1);
    wchar_t* out = reinterpret_cast<wchar_t*>(buffer);
    std::wmemcpy(out, wide.data(), length);
    out[length] = L'\0';
    return static_cast<LRESULT>(length);
}

// The exact length in the caller's kind: the procedure's length bounds the text, which is then
// read and converted.
LRESULT CWindowProcCaller::GetTextLengthWideFromAnsi(WNDPROC proc, HWND hwnd)
{
    const LRESULT length = proc(hwnd, WM_GETTEXTLENGTH, 0, 0);
    if (length <= 0)
        return length;
    const size_t units = std::min<size_t>(static_cast<size_t>(length) + 1, kMaxTextBuffer);
    std::wstring wide(units, L'\0');
    const LRESULT answer = proc(hwnd, WM_GETTEXT, units, reinterpret_cast<LPARAM>(&wide[0]));
    wide.resize(AnsweredLength(answer, wide.data(), units));
    return static_cast<LRESULT>(WideToAnsi(wide).size());
}

LRESULT CWindowProcCaller::GetTextLengthAnsiFromWide(WNDPROC proc, HWND hwnd)
{
    const LRESULT length = proc(hwnd, WM_GETTEXTLENGTH, 0, 0);
    if (length <= 0)
        return length;
    const size_t units = std::min<size_t>(static_cast<size_t>(length) + 1, kMaxTextBuffer);
    std::string ansi(units, '\0');
    const LRESULT answer = proc(hwnd, WM_GETTEXT, units, reinterpret_cast<LPARAM>(&ansi[0]));
    ansi.resize(AnsweredLength(answer, ansi.data(), units));
    return static_cast<LRESULT>(AnsiToWide(ansi).size());
}

// One byte a message: the bytes of a character gather in the window until it is complete. A
// value above 0xFF carries a whole packed character.
LRESULT CWindowProcCaller::CharWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                            LPARAM lParam)
{
    if (wParam > 0xFF)
    {
        const wchar_t ch = CCharMessageCodec::ToWide(CCharMessageCodec::Unpack(wParam));
        return proc(hwnd, msg, static_cast<WPARAM>(ch), lParam);
    }
    std::string bytes(1, static_cast<char>(wParam));
    HostedWindow* window = CHostedSystem::Instance().Windows().Find(hwnd);
    if (window)
    {
        bytes = window->pendingBytes + bytes;
        const size_t needed =
            CCharMessageCodec::SequenceLength(static_cast<unsigned char>(bytes[0]));
        window->pendingBytes = bytes.size() < needed ? bytes : std::string();
        if (bytes.size() < needed)
            return 0;
    }
    const wchar_t ch = CCharMessageCodec::ToWide(bytes);
    return proc(hwnd, msg, static_cast<WPARAM>(ch), lParam);
}

// A character of several bytes reaches the ANSI procedure as one message a byte, lead first.
LRESULT CWindowProcCaller::CharAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                            LPARAM lParam)
{
    const std::string bytes = CCharMessageCodec::ToAnsi(static_cast<wchar_t>(wParam));
    LRESULT result = 0;
    for (char byte : bytes)
        result = proc(hwnd, msg, static_cast<unsigned char>(byte), lParam);
    return result;
}

// The title and class name are converted; a class atom stays as it is.
LRESULT CWindowProcCaller::CreateWideFromAnsi(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                              LPARAM lParam)
{
    const auto* ansi = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    if (!ansi)
        return proc(hwnd, msg, wParam, lParam);
    const std::wstring name = WideOrNull(ansi->lpszName);
    const bool atom = IS_INTRESOURCE(ansi->lpszClass);
    const std::wstring className = atom ? std::wstring() : WideOrNull(ansi->lpszClass);
    CREATESTRUCTW wide = WithCommonFields<CREATESTRUCTW>(*ansi);
    wide.lpszName = ansi->lpszName ? name.c_str() : nullptr;
    wide.lpszClass = atom ? reinterpret_cast<LPCWSTR>(ansi->lpszClass) : className.c_str();
    return proc(hwnd, msg, wParam, reinterpret_cast<LPARAM>(&wide));
}

LRESULT CWindowProcCaller::CreateAnsiFromWide(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam,
                                              LPARAM lParam)
{
    const auto* wide = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    if (!wide)
        return proc(hwnd, msg, wParam, lParam);
    const std::string name = AnsiOrNull(wide->lpszName);
    const bool atom = IS_INTRESOURCE(wide->lpszClass);
    const std::string className = atom ? std::string() : AnsiOrNull(wide->lpszClass);
    CREATESTRUCTA ansi = WithCommonFields<CREATESTRUCTA>(*wide);
    ansi.lpszName = wide->lpszName ? name.c_str() : nullptr;
    ansi.lpszClass = atom ? reinterpret_cast<LPCSTR>(wide->lpszClass) : className.c_str();
    return proc(hwnd, msg, wParam, reinterpret_cast<LPARAM>(&ansi));
}

} // namespace QzPlatform
