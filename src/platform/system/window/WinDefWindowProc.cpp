// The default window procedure: window text, WM_CLOSE, and the input method's result turned
// into characters (WM_IME_COMPOSITION -> WM_IME_CHAR sent -> WM_CHAR posted).
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/text/QzCodePage.h"
#include "platform/system/window/CharMessageCodec.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <string>

using QzPlatform::CCharMessageCodec;
using QzPlatform::CHostedSystem;
using QzPlatform::HostedWindow;

namespace
{

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

std::wstring TextOf(LPARAM lParam, bool unicode)
{
    if (!lParam)
        return std::wstring();
    if (unicode)
        return reinterpret_cast<LPCWSTR>(lParam);
    return QzPlatform::AnsiToWide(reinterpret_cast<LPCSTR>(lParam));
}

// The title of CREATESTRUCT; a resource ordinal (first unit 0xFF or 0xFFFF) is no title.
std::wstring CreationTitle(LPARAM lParam, bool unicode)
{
    if (!lParam)
        return std::wstring();
    if (unicode)
    {
        LPCWSTR name = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpszName;
        return (name && name[0] != 0xFFFF) ? std::wstring(name) : std::wstring();
    }
    LPCSTR name = reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpszName;
    if (!name || static_cast<unsigned char>(name[0]) == 0xFF)
        return std::wstring();
    return QzPlatform::AnsiToWide(name);
}

LRESULT CopyText(const std::wstring& text, WPARAM capacity, LPARAM buffer, bool unicode)
{
    if (capacity == 0 || !buffer)
        return 0;
    if (unicode)
    {
        const size_t length = std::min<size_t>(text.size(), capacity - 1);
        auto* out = reinterpret_cast<wchar_t*>(buffer);
        std::wmemcpy(out, text.data(), length);
        out[length] = L'\0';
        return static_cast<LRESULT>(length);
    }
    const std::string ansi = QzPlatform::WideToAnsi(text);
    const size_t length = CCharMessageCodec::WholeCharPrefix(ansi, capacity - 1);
    auto* out = reinterpret_cast<char*>(buffer);
    std::memcpy(out, ansi.data(), length);
    out[length] = '\0';
    return static_cast<LRESULT>(length);
}

// One WM_IME_CHAR (repeat count 1) per character of the context's result string.
LRESULT SendResultChars(HWND hwnd, const HostedWindow& window, bool unicode)
{
    const QzPlatform::ImmContext* context = System().Contexts().Find(window.context);
    if (!context)
        return 0;
    const std::wstring result = context->result;
    for (wchar_t ch : result)
    {
        if (!IsWindow(hwnd))
            break;
        if (unicode)
            SendMessageW(hwnd, WM_IME_CHAR, static_cast<WPARAM>(ch), 1);
        else
            SendMessageA(hwnd, WM_IME_CHAR, CCharMessageCodec::Pack(CCharMessageCodec::ToAnsi(ch)),
                         1);
    }
    return 0;
}

LRESULT PostImeChar(HWND hwnd, WPARAM wParam, LPARAM lParam, bool unicode)
{
    if (unicode)
    {
        PostMessageW(hwnd, WM_CHAR, wParam, lParam);
        return 0;
    }
    for (char byte : CCharMessageCodec::Unpack(wParam))
        PostMessageA(hwnd, WM_CHAR, static_cast<unsigned char>(byte), lParam);
    return 0;
}

LRESULT DefCommon(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, bool unicode)
{
    HostedWindow* window = System().Windows().Find(hwnd);
    if (!window)
        return 0;
    switch (msg)
    {
    case WM_NCCREATE:
        window->text = CreationTitle(lParam, unicode);
        return TRUE;
    case WM_SETTEXT:
        window->text = TextOf(lParam, unicode);
        return TRUE;
    case WM_GETTEXT:
        return CopyText(window->text, wParam, lParam, unicode);
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(unicode ? window->text.size()
                                            : QzPlatform::WideToAnsi(window->text).size());
    case WM_CLOSE:
        DestroyWindow(hwnd);
        return 0;
    case WM_IME_COMPOSITION:
        return (lParam & GCS_RESULTSTR) ? SendResultChars(hwnd, *window, unicode) : 0;
    case WM_IME_CHAR:
        return PostImeChar(hwnd, wParam, lParam, unicode);
    default:
        return 0;
    }
}

} // namespace

LRESULT DefWindowProcA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return DefCommon(hWnd, Msg, wParam, lParam, false);
}

LRESULT DefWindowProcW(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return DefCommon(hWnd, Msg, wParam, lParam, true);
}
