#include "platform/system/host/QzHost.h"

#include "platform/system/HostedSystem.h"
#include "platform/system/files/QzMemoryFiles.h"
#include "platform/system/kernel/QzProfileCache.h"

#include <string>

namespace QzPlatform::Host
{

namespace
{

CHostedSystem& System()
{
    return CHostedSystem::Instance();
}

// The open input context of the focus window, with the window; null when there is none.
ImmContext* FocusContext(HWND* focus)
{
    *focus = GetFocus();
    const HIMC himc = *focus ? ImmGetContext(*focus) : nullptr;
    ImmContext* context = System().Contexts().Find(himc);
    return (context && context->open) ? context : nullptr;
}

void StartComposition(HWND focus, ImmContext* context)
{
    if (context->composing)
        return;
    context->composing = true;
    SendMessageW(focus, WM_IME_STARTCOMPOSITION, 0, 0);
}

} // namespace

void SetTime(DWORD ms)
{
    System().Clock().Set(ms);
}

void AdvanceTime(DWORD ms)
{
    System().Clock().Advance(ms);
}

void UseRealClock()
{
    System().Clock().UseRealClock();
}

void SetKeyState(int vk, bool down)
{
    System().Input().SetKeyDown(vk, down);
}

void SetKeyState(int vk, bool down, bool toggled)
{
    System().Input().SetKeyDown(vk, down);
    System().Input().SetKeyToggled(vk, toggled);
}

void SetCursorPos(int x, int y)
{
    System().Input().SetCursorPos({x, y});
}

BOOL InjectImeComposition(const wchar_t* text)
{
    HWND focus = nullptr;
    ImmContext* context = FocusContext(&focus);
    if (!context || !text)
        return FALSE;
    context->composition = text;
    StartComposition(focus, context);
    const std::wstring composition = text;
    const WPARAM last = composition.empty() ? 0 : static_cast<WPARAM>(composition.back());
    SendMessageW(focus, WM_IME_COMPOSITION, last, GCS_COMPSTR);
    return TRUE;
}

// The context is looked up again after each message: a procedure may destroy the window or
// its context while it handles one.
BOOL InjectImeResult(const wchar_t* text)
{
    HWND focus = nullptr;
    ImmContext* context = FocusContext(&focus);
    if (!context || !text || !*text)
        return FALSE;
    const HIMC himc = ImmGetContext(focus);
    const std::wstring result = text;
    context->composition.clear();
    context->result = result;
    StartComposition(focus, context);
    SendMessageW(focus, WM_IME_COMPOSITION, static_cast<WPARAM>(result.back()), GCS_RESULTSTR);
    if (ImmContext* after = System().Contexts().Find(himc))
        after->composing = false;
    SendMessageW(focus, WM_IME_ENDCOMPOSITION, 0, 0);
    return TRUE;
}

std::vector<UINT> TakeBeeps()
{
    return System().Input().TakeBeeps();
}

CursorInfo DescribeCursor(HCURSOR cursor)
{
    CursorInfo info;
    const HostedCursor* found = System().Cursors().Find(cursor);
    if (!found)
        return info;
    info.valid = true;
    info.standardId = found->standardId;
    info.file = found->file;
    return info;
}

void ResetForTesting()
{
    for (HWND hwnd : System().Windows().All())
    {
        if (IsWindow(hwnd))
            DestroyWindow(hwnd);
    }
    System().Windows().Clear();
    System().Queue().Clear();
    System().Classes().ClearApplicationClasses();
    System().Contexts().Clear();
    System().Cursors().Clear();
    System().Input().Clear();
    System().Clock().UseRealClock();
}

void UseMemoryFiles(bool bOn)
{
    CQzMemoryFiles::Instance().TurnOn(bOn);
    // Profile files read from the disk must not answer for memory files of the same name.
    CQzProfileCache::Instance().Reset();
}

void SetMemoryFile(const std::string& path, std::string bytes)
{
    CQzMemoryFiles::Instance().Write(path, std::move(bytes));
}

bool RemoveMemoryFile(const std::string& path)
{
    return CQzMemoryFiles::Instance().Remove(path);
}

void MakeMemoryFolder(const std::string& path)
{
    CQzMemoryFiles::Instance().MakeFolder(path);
}

bool GetMemoryFile(const std::string& path, std::string* bytes)
{
    const CQzMemoryFiles::File* file = CQzMemoryFiles::Instance().Find(path);
    if (file)
        *bytes = *file->bytes;
    return file != nullptr;
}

} // namespace QzPlatform::Host
