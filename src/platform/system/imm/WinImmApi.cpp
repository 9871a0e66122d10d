// Input contexts of the input method manager.
#include "platform/system/HostedSystem.h"
#include "platform/system/QzWinKernel.h"
#include "platform/system/QzWinUser.h"
#include "platform/system/text/QzCodePage.h"
#include "platform/system/window/CharMessageCodec.h"

#include <algorithm>
#include <cstring>
#include <string>

using QzPlatform::CHostedSystem;
using QzPlatform::ImmContext;

namespace
{

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

ImmContext* FindContextOrFail(HIMC himc)
{
    ImmContext* context = System().Contexts().Find(himc);
    if (!context)
        SetLastError(ERROR_INVALID_HANDLE);
    return context;
}

const std::wstring* CompositionString(const ImmContext& context, DWORD index)
{
    if (index == GCS_COMPSTR)
        return &context.composition;
    if (index == GCS_RESULTSTR)
        return &context.result;
    return nullptr;
}

// Copies whole units that fit; the size in bytes when the buffer length is 0.
LONG CopyOut(const void* data, size_t bytes, size_t wholeBytes, LPVOID buffer, DWORD length)
{
    if (length == 0)
        return static_cast<LONG>(bytes);
    if (!buffer)
        return IMM_ERROR_GENERAL;
    std::memcpy(buffer, data, wholeBytes);
    return static_cast<LONG>(wholeBytes);
}

} // namespace

HIMC ImmGetContext(HWND hWnd)
{
    const QzPlatform::HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window || !System().Contexts().Find(window->context))
        return nullptr;
    return window->context;
}

BOOL ImmReleaseContext(HWND hWnd, HIMC hIMC)
{
    return IsWindow(hWnd) && System().Contexts().Find(hIMC);
}

HIMC ImmCreateContext()
{
    return System().Contexts().Create(nullptr);
}

// A window's default context goes only with its window.
BOOL ImmDestroyContext(HIMC hIMC)
{
    const ImmContext* context = FindContextOrFail(hIMC);
    if (!context || context->defaultOf)
        return FALSE;
    return System().Contexts().Destroy(hIMC);
}

HIMC ImmAssociateContext(HWND hWnd, HIMC hIMC)
{
    QzPlatform::HostedWindow* window = System().FindWindowOrFail(hWnd);
    if (!window || (hIMC && !FindContextOrFail(hIMC)))
        return nullptr;
    const HIMC previous = System().Contexts().Find(window->context) ? window->context : nullptr;
    window->context = hIMC;
    return previous;
}

BOOL ImmGetOpenStatus(HIMC hIMC)
{
    const ImmContext* context = System().Contexts().Find(hIMC);
    return context && context->open;
}

BOOL ImmSetOpenStatus(HIMC hIMC, BOOL fOpen)
{
    ImmContext* context = FindContextOrFail(hIMC);
    if (!context)
        return FALSE;
    context->open = fOpen != FALSE;
    return TRUE;
}

BOOL ImmSetCompositionWindow(HIMC hIMC, COMPOSITIONFORM* lpCompForm)
{
    ImmContext* context = FindContextOrFail(hIMC);
    if (!context || !lpCompForm)
        return FALSE;
    context->compositionForm = *lpCompForm;
    return TRUE;
}

BOOL ImmGetCompositionWindow(HIMC hIMC, COMPOSITIONFORM* lpCompForm)
{
    const ImmContext* context = FindContextOrFail(hIMC);
    if (!context || !lpCompForm)
        return FALSE;
    *lpCompForm = context->compositionForm;
    return TRUE;
}

LONG ImmGetCompositionStringA(HIMC hIMC, DWORD dwIndex, LPVOID lpBuf, DWORD dwBufLen)
{
    const ImmContext* context = FindContextOrFail(hIMC);
    const std::wstring* text = context ? CompositionString(*context, dwIndex) : nullptr;
    if (!text)
        return IMM_ERROR_GENERAL;
    const std::string ansi = QzPlatform::WideToAnsi(*text);
    const size_t whole = QzPlatform::CCharMessageCodec::WholeCharPrefix(ansi, dwBufLen);
    return CopyOut(ansi.data(), ansi.size(), whole, lpBuf, dwBufLen);
}

LONG ImmGetCompositionStringW(HIMC hIMC, DWORD dwIndex, LPVOID lpBuf, DWORD dwBufLen)
{
    const ImmContext* context = FindContextOrFail(hIMC);
    const std::wstring* text = context ? CompositionString(*context, dwIndex) : nullptr;
    if (!text)
        return IMM_ERROR_GENERAL;
    const size_t bytes = text->size() * sizeof(WCHAR);
    const size_t whole = std::min<size_t>(bytes, dwBufLen / sizeof(WCHAR) * sizeof(WCHAR));
    return CopyOut(text->data(), bytes, whole, lpBuf, dwBufLen);
}
