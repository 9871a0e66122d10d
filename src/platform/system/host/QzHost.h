// What a host (the demo, a test) controls of the hosted window system that a Win32 program
// cannot: the clock, the keyboard state, the cursor position, the input method's text, the
// beeps asked for, and a reset between tests. The ANSI code page is set through
// QzCodePageHost.h. Keyboard and mouse messages are not made here: a host posts them to
// GetFocus() or its window as Windows would deliver them.
//
// On Windows the system is the real one and only the clock, the key state, the cursor position
// and the reset are kept (platform/system/win32): the clock is the one the library reads through
// QzPlatform::NowMs, and the key state is the thread's (GetKeyState, not GetAsyncKeyState).
#pragma once

#include "platform/system/QzSystem.h"

#include <string>
#include <vector>

namespace QzPlatform::Host
{

// timeGetTime: SetTime and AdvanceTime take the clock over (advancing starts from the current
// time); UseRealClock gives it back to the monotonic system clock.
void SetTime(DWORD ms);
void AdvanceTime(DWORD ms);
void UseRealClock();

// GetKeyState and GetAsyncKeyState. Pressing a key that was up flips its toggled state, as a
// keyboard does; the three-argument form sets the toggled state as given.
void SetKeyState(int vk, bool down);
void SetKeyState(int vk, bool down, bool toggled);

void SetCursorPos(int x, int y);

// Destroys every window as DestroyWindow does (their procedures see WM_DESTROY and
// WM_NCDESTROY), then empties the posted-message queue and forgets the key state and gives the
// clock back to the system clock. Hosted, it also forgets the focus, the application's window
// classes, the input contexts, the cursors, the cursor position and the beeps (built-in classes
// stay) and no handle given out before stays valid; on Windows it destroys the windows of the
// calling thread.
void ResetForTesting();

#ifndef _WIN32

// The user composes with the input method in the focus window. Both fail (FALSE, no message)
// when no window has the focus, when it has no input context or when that context is closed.
// InjectImeComposition sets the composition string (WM_IME_STARTCOMPOSITION when none is in
// progress, then WM_IME_COMPOSITION with GCS_COMPSTR). InjectImeResult finishes with the result
// string: WM_IME_STARTCOMPOSITION (unless in progress), WM_IME_COMPOSITION with GCS_RESULTSTR
// and wParam the last character, WM_IME_ENDCOMPOSITION. The default window procedure turns the
// result into WM_IME_CHAR messages and those into posted WM_CHAR messages.
BOOL InjectImeComposition(const wchar_t* text);
BOOL InjectImeResult(const wchar_t* text);

// The MessageBeep types since the last call, oldest first; the list is then empty.
std::vector<UINT> TakeBeeps();

// What a cursor handle stands for, so that a host can draw it.
struct CursorInfo
{
    bool valid = false;
    WORD standardId = 0; // the IDC_ id of a standard cursor
    std::string file;    // the resolved path of a cursor loaded from a file
};
CursorInfo DescribeCursor(HCURSOR cursor);

// Files in memory in place of the disk, for fuzzing and tests: while on, every file the library
// and the hosted system read, write or look for is one of these, named relative to the current
// directory of the moment they were turned on, and the disk is not touched. Turning them on or
// off empties them.
void UseMemoryFiles(bool bOn);
void SetMemoryFile(const std::string& path, std::string bytes);
bool RemoveMemoryFile(const std::string& path);
// A folder without files (folders with files in them exist anyway).
void MakeMemoryFolder(const std::string& path);
// A memory file's bytes; false when there is no such file.
bool GetMemoryFile(const std::string& path, std::string* bytes);

#endif

} // namespace QzPlatform::Host
