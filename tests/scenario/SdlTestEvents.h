// SDL events as the window gets them, made by hand for the tests of the window mode's input.
#pragma once

#include <SDL_events.h>

#include <cstdint>

namespace SdlTestEvents
{

inline SDL_Event Motion(int x, int y)
{
    SDL_Event event = {SDL_MOUSEMOTION};
    event.motion.x = x;
    event.motion.y = y;
    return event;
}

inline SDL_Event Button(uint8_t button, bool down, int x, int y, uint32_t time = 0)
{
    SDL_Event event = {static_cast<Uint32>(down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP)};
    event.button.timestamp = time;
    event.button.button = button;
    event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    return event;
}

inline SDL_Event Wheel(int notches, bool flipped = false)
{
    SDL_Event event = {SDL_MOUSEWHEEL};
    event.wheel.y = notches;
    event.wheel.direction = flipped ? SDL_MOUSEWHEEL_FLIPPED : SDL_MOUSEWHEEL_NORMAL;
    return event;
}

// mod: the modifiers as SDL reports them with the event (a modifier key's own included).
inline SDL_Event Key(SDL_Scancode scancode, SDL_Keycode sym, bool down, uint16_t mod = KMOD_NONE,
                     bool repeat = false)
{
    SDL_Event event = {static_cast<Uint32>(down ? SDL_KEYDOWN : SDL_KEYUP)};
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.repeat = repeat ? 1 : 0;
    event.key.keysym = {scancode, sym, mod, 0};
    return event;
}

// type: SDL_TEXTINPUT or SDL_TEXTEDITING (whose text is at the same place).
inline SDL_Event Text(Uint32 type, const char* text)
{
    SDL_Event event = {type};
    SDL_strlcpy(event.text.text, text, sizeof event.edit.text);
    return event;
}

inline SDL_Event Resized(int width, int height)
{
    SDL_Event event = {SDL_WINDOWEVENT};
    event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
    event.window.data1 = width;
    event.window.data2 = height;
    return event;
}

} // namespace SdlTestEvents
