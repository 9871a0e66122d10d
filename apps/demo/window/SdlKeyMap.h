// What Windows reports for a key of the keyboard: its virtual key (as the user's layout names
// letters and digits), the scan code of the PC keyboard (set 1) and the extended-key flag of the
// keys of the separate blocks (arrows, Insert..Page Down, right Ctrl and Alt, keypad Enter and
// slash, Num Lock, the Windows and menu keys).
#pragma once

#include <SDL_keyboard.h>

struct Win32Key
{
    int vk = 0; // 0: a key Windows has no virtual key for
    int scan = 0;
    bool extended = false;
};

Win32Key Win32KeyFromSdl(const SDL_Keysym& keysym);
