// One input event of the demo's main window at the level of Win32 messages: what the window mode
// makes of the user's SDL events, what a recording keeps a line for, and what the host posts.
#pragma once

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <string>

// The modifiers held after a key event (DemoInput::modifiers).
enum DemoModifier : int
{
    kModShift = 1,
    kModControl = 2,
    kModAlt = 4,
};

struct DemoInput
{
    enum Kind
    {
        Mouse,     // message WM_MOUSEMOVE..WM_MOUSEWHEEL at (x, y) of the client area
        Key,       // message WM_KEYDOWN, WM_KEYUP, WM_SYSKEYDOWN or WM_SYSKEYUP
        Char,      // WM_CHAR: code, lParam
        Compose,   // the input method's composition string (text, UTF-8)
        Result,    // the input method's result string (text, UTF-8)
        Clipboard, // text another application put on the clipboard, taken in before a paste
        Size,      // the window's client size: x is the width, y the height
        Shot,      // a screenshot mark (text is its name)
    };
    Kind kind = Mouse;
    UINT message = 0;
    int x = 0;
    int y = 0;
    WPARAM keys = 0;   // mouse: the MK_ flags of wParam
    int wheel = 0;     // WM_MOUSEWHEEL: the delta, WHEEL_DELTA a notch
    int vk = 0;        // key: the virtual key
    uint32_t code = 0; // char: the character
    uint32_t lParam = 0;
    int modifiers = 0; // key: DemoModifier bits held after the event
    std::string text;

    bool operator==(const DemoInput& other) const
    {
        return kind == other.kind && message == other.message && x == other.x && y == other.y &&
               keys == other.keys && wheel == other.wheel && vk == other.vk && code == other.code &&
               lParam == other.lParam && modifiers == other.modifiers && text == other.text;
    }
};
