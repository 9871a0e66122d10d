#include "SdlKeyMap.h"

#include "platform/system/QzSystem.h"

namespace
{

struct KeyEntry
{
    SDL_Scancode scancode;
    int vk;
    int scan;
    bool extended;
    int vkWithoutNumLock; // keypad keys: the navigation key they are with Num Lock off
};

// Keys by position. Letters and digits are named by the layout afterwards.
const KeyEntry kKeys[] = {
    {SDL_SCANCODE_A, 'A', 0x1E, false, 0},
    {SDL_SCANCODE_B, 'B', 0x30, false, 0},
    {SDL_SCANCODE_C, 'C', 0x2E, false, 0},
    {SDL_SCANCODE_D, 'D', 0x20, false, 0},
    {SDL_SCANCODE_E, 'E', 0x12, false, 0},
    {SDL_SCANCODE_F, 'F', 0x21, false, 0},
    {SDL_SCANCODE_G, 'G', 0x22, false, 0},
    {SDL_SCANCODE_H, 'H', 0x23, false, 0},
    {SDL_SCANCODE_I, 'I', 0x17, false, 0},
    {SDL_SCANCODE_J, 'J', 0x24, false, 0},
    {SDL_SCANCODE_K, 'K', 0x25, false, 0},
    {SDL_SCANCODE_L, 'L', 0x26, false, 0},
    {SDL_SCANCODE_M, 'M', 0x32, false, 0},
    {SDL_SCANCODE_N, 'N', 0x31, false, 0},
    {SDL_SCANCODE_O, 'O', 0x18, false, 0},
    {SDL_SCANCODE_P, 'P', 0x19, false, 0},
    {SDL_SCANCODE_Q, 'Q', 0x10, false, 0},
    {SDL_SCANCODE_R, 'R', 0x13, false, 0},
    {SDL_SCANCODE_S, 'S', 0x1F, false, 0},
    {SDL_SCANCODE_T, 'T', 0x14, false, 0},
    {SDL_SCANCODE_U, 'U', 0x16, false, 0},
    {SDL_SCANCODE_V, 'V', 0x2F, false, 0},
    {SDL_SCANCODE_W, 'W', 0x11, false, 0},
    {SDL_SCANCODE_X, 'X', 0x2D, false, 0},
    {SDL_SCANCODE_Y, 'Y', 0x15, false, 0},
    {SDL_SCANCODE_Z, 'Z', 0x2C, false, 0},
    {SDL_SCANCODE_1, '1', 0x02, false, 0},
    {SDL_SCANCODE_2, '2', 0x03, false, 0},
    {SDL_SCANCODE_3, '3', 0x04, false, 0},
    {SDL_SCANCODE_4, '4', 0x05, false, 0},
    {SDL_SCANCODE_5, '5', 0x06, false, 0},
    {SDL_SCANCODE_6, '6', 0x07, false, 0},
    {SDL_SCANCODE_7, '7', 0x08, false, 0},
    {SDL_SCANCODE_8, '8', 0x09, false, 0},
    {SDL_SCANCODE_9, '9', 0x0A, false, 0},
    {SDL_SCANCODE_0, '0', 0x0B, false, 0},
    {SDL_SCANCODE_RETURN, VK_RETURN, 0x1C, false, 0},
    {SDL_SCANCODE_ESCAPE, VK_ESCAPE, 0x01, false, 0},
    {SDL_SCANCODE_BACKSPACE, VK_BACK, 0x0E, false, 0},
    {SDL_SCANCODE_TAB, VK_TAB, 0x0F, false, 0},
    {SDL_SCANCODE_SPACE, VK_SPACE, 0x39, false, 0},
    {SDL_SCANCODE_MINUS, 0xBD, 0x0C, false, 0},          // VK_OEM_MINUS
    {SDL_SCANCODE_EQUALS, 0xBB, 0x0D, false, 0},         // VK_OEM_PLUS
    {SDL_SCANCODE_LEFTBRACKET, 0xDB, 0x1A, false, 0},    // VK_OEM_4
    {SDL_SCANCODE_RIGHTBRACKET, 0xDD, 0x1B, false, 0},   // VK_OEM_6
    {SDL_SCANCODE_BACKSLASH, 0xDC, 0x2B, false, 0},      // VK_OEM_5
    {SDL_SCANCODE_SEMICOLON, 0xBA, 0x27, false, 0},      // VK_OEM_1
    {SDL_SCANCODE_APOSTROPHE, 0xDE, 0x28, false, 0},     // VK_OEM_7
    {SDL_SCANCODE_GRAVE, 0xC0, 0x29, false, 0},          // VK_OEM_3
    {SDL_SCANCODE_COMMA, 0xBC, 0x33, false, 0},          // VK_OEM_COMMA
    {SDL_SCANCODE_PERIOD, 0xBE, 0x34, false, 0},         // VK_OEM_PERIOD
    {SDL_SCANCODE_SLASH, 0xBF, 0x35, false, 0},          // VK_OEM_2
    {SDL_SCANCODE_NONUSBACKSLASH, 0xE2, 0x56, false, 0}, // VK_OEM_102
    {SDL_SCANCODE_CAPSLOCK, VK_CAPITAL, 0x3A, false, 0},
    {SDL_SCANCODE_F1, VK_F1, 0x3B, false, 0},
    {SDL_SCANCODE_F2, VK_F1 + 1, 0x3C, false, 0},
    {SDL_SCANCODE_F3, VK_F1 + 2, 0x3D, false, 0},
    {SDL_SCANCODE_F4, VK_F1 + 3, 0x3E, false, 0},
    {SDL_SCANCODE_F5, VK_F1 + 4, 0x3F, false, 0},
    {SDL_SCANCODE_F6, VK_F1 + 5, 0x40, false, 0},
    {SDL_SCANCODE_F7, VK_F1 + 6, 0x41, false, 0},
    {SDL_SCANCODE_F8, VK_F1 + 7, 0x42, false, 0},
    {SDL_SCANCODE_F9, VK_F1 + 8, 0x43, false, 0},
    {SDL_SCANCODE_F10, VK_F1 + 9, 0x44, false, 0},
    {SDL_SCANCODE_F11, VK_F1 + 10, 0x57, false, 0},
    {SDL_SCANCODE_F12, VK_F1 + 11, 0x58, false, 0},
    {SDL_SCANCODE_PRINTSCREEN, 0x2C, 0x37, true, 0}, // VK_SNAPSHOT
    {SDL_SCANCODE_SCROLLLOCK, 0x91, 0x46, false, 0}, // VK_SCROLL
    {SDL_SCANCODE_PAUSE, 0x13, 0x45, false, 0},      // VK_PAUSE
    {SDL_SCANCODE_INSERT, VK_INSERT, 0x52, true, 0},
    {SDL_SCANCODE_HOME, VK_HOME, 0x47, true, 0},
    {SDL_SCANCODE_PAGEUP, VK_PRIOR, 0x49, true, 0},
    {SDL_SCANCODE_DELETE, VK_DELETE, 0x53, true, 0},
    {SDL_SCANCODE_END, VK_END, 0x4F, true, 0},
    {SDL_SCANCODE_PAGEDOWN, VK_NEXT, 0x51, true, 0},
    {SDL_SCANCODE_RIGHT, VK_RIGHT, 0x4D, true, 0},
    {SDL_SCANCODE_LEFT, VK_LEFT, 0x4B, true, 0},
    {SDL_SCANCODE_DOWN, VK_DOWN, 0x50, true, 0},
    {SDL_SCANCODE_UP, VK_UP, 0x48, true, 0},
    {SDL_SCANCODE_NUMLOCKCLEAR, 0x90, 0x45, true, 0}, // VK_NUMLOCK
    {SDL_SCANCODE_KP_DIVIDE, 0x6F, 0x35, true, 0},    // VK_DIVIDE
    {SDL_SCANCODE_KP_MULTIPLY, 0x6A, 0x37, false, 0}, // VK_MULTIPLY
    {SDL_SCANCODE_KP_MINUS, 0x6D, 0x4A, false, 0},    // VK_SUBTRACT
    {SDL_SCANCODE_KP_PLUS, 0x6B, 0x4E, false, 0},     // VK_ADD
    {SDL_SCANCODE_KP_ENTER, VK_RETURN, 0x1C, true, 0},
    {SDL_SCANCODE_KP_1, 0x61, 0x4F, false, VK_END}, // VK_NUMPAD1..
    {SDL_SCANCODE_KP_2, 0x62, 0x50, false, VK_DOWN},
    {SDL_SCANCODE_KP_3, 0x63, 0x51, false, VK_NEXT},
    {SDL_SCANCODE_KP_4, 0x64, 0x4B, false, VK_LEFT},
    {SDL_SCANCODE_KP_5, 0x65, 0x4C, false, 0x0C}, // VK_CLEAR
    {SDL_SCANCODE_KP_6, 0x66, 0x4D, false, VK_RIGHT},
    {SDL_SCANCODE_KP_7, 0x67, 0x47, false, VK_HOME},
    {SDL_SCANCODE_KP_8, 0x68, 0x48, false, VK_UP},
    {SDL_SCANCODE_KP_9, 0x69, 0x49, false, VK_PRIOR},
    {SDL_SCANCODE_KP_0, 0x60, 0x52, false, VK_INSERT},
    {SDL_SCANCODE_KP_PERIOD, 0x6E, 0x53, false, VK_DELETE}, // VK_DECIMAL
    {SDL_SCANCODE_APPLICATION, 0x5D, 0x5D, true, 0},        // VK_APPS
    {SDL_SCANCODE_LCTRL, VK_CONTROL, 0x1D, false, 0},
    {SDL_SCANCODE_LSHIFT, VK_SHIFT, 0x2A, false, 0},
    {SDL_SCANCODE_LALT, VK_MENU, 0x38, false, 0},
    {SDL_SCANCODE_LGUI, 0x5B, 0x5B, true, 0}, // VK_LWIN
    {SDL_SCANCODE_RCTRL, VK_CONTROL, 0x1D, true, 0},
    {SDL_SCANCODE_RSHIFT, VK_SHIFT, 0x36, false, 0},
    {SDL_SCANCODE_RALT, VK_MENU, 0x38, true, 0},
    {SDL_SCANCODE_RGUI, 0x5C, 0x5C, true, 0}, // VK_RWIN
};

// The layout's name of a letter or digit key: on an AZERTY keyboard the key at Q's place is A.
int LayoutVirtualKey(SDL_Keycode sym)
{
    if (sym >= SDLK_a && sym <= SDLK_z)
        return 'A' + (sym - SDLK_a);
    if (sym >= SDLK_0 && sym <= SDLK_9)
        return '0' + (sym - SDLK_0);
    return 0;
}

} // namespace

Win32Key Win32KeyFromSdl(const SDL_Keysym& keysym)
{
    for (const KeyEntry& entry : kKeys)
    {
        if (entry.scancode != keysym.scancode)
            continue;
        Win32Key key;
        key.scan = entry.scan;
        key.extended = entry.extended;
        key.vk = entry.vk;
        if (const int named = LayoutVirtualKey(keysym.sym))
            key.vk = named;
        if (entry.vkWithoutNumLock && !(keysym.mod & KMOD_NUM))
            key.vk = entry.vkWithoutNumLock;
        return key;
    }
    return Win32Key();
}
