// Turns the SDL events of the window into the input a Win32 main window gets (DemoInput): mouse
// messages with the MK_ flags, double clicks by Windows' rules, wheel notches of WHEEL_DELTA,
// key messages with the lParam bits Windows sets, the characters TranslateMessage makes, the
// input method's composition and result, and the window's size. F9 marks a screenshot instead
// of being a key. Nothing here needs a window: the tests drive it with SDL_Event values.
#pragma once

#include "DemoInput.h"

#include <SDL_events.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class CSdlInputTranslator
{
public:
    // GetDoubleClickTime() and SM_CXDOUBLECLK, SM_CYDOUBLECLK of Windows' defaults: a second
    // press of the same button within 500 ms (by the events' timestamps) and within the 4 x 4
    // rectangle centred on the first press (2 pixels either way) is a double click.
    static const uint32_t kDoubleClickMs = 500;
    static const int kDoubleClickCx = 4;
    static const int kDoubleClickCy = 4;
    static const int kShotKey = 0x78; // VK_F9

    // Double clicks reach only windows whose class has CS_DBLCLKS; the others get a second
    // button-down message.
    void SetDoubleClicks(bool bEnabled) { m_bDoubleClicks = bEnabled; }
    // Asked before a paste key (Ctrl+V, Shift+Insert) goes in: true with the text when another
    // application's clipboard has text the host has not seen yet.
    void SetPasteSource(std::function<bool(std::string&)> source)
    {
        m_pasteSource = std::move(source);
    }

    // Appends what the event makes to out. Autorepeats of a key that makes no character, with
    // nothing between them in out, become one message with a repeat count, as Windows merges
    // them while they wait in its queue; size changes in a row become the last one.
    void Translate(const SDL_Event& event, std::vector<DemoInput>& out);

private:
    struct Click
    {
        bool valid = false;
        UINT message = 0;
        uint32_t time = 0;
        int x = 0;
        int y = 0;
    };

    void MouseMove(const SDL_MouseMotionEvent& motion, std::vector<DemoInput>& out);
    void MouseButton(const SDL_MouseButtonEvent& button, std::vector<DemoInput>& out);
    void MouseWheel(const SDL_MouseWheelEvent& wheel, std::vector<DemoInput>& out);
    void Key(const SDL_KeyboardEvent& key, std::vector<DemoInput>& out);
    void KeyCharacters(int vk, uint32_t lParam, std::vector<DemoInput>& out) const;
    void TextEditing(const SDL_TextEditingEvent& edit, std::vector<DemoInput>& out);
    void TextInput(const SDL_TextInputEvent& text, std::vector<DemoInput>& out);
    void WindowEvent(const SDL_WindowEvent& window, std::vector<DemoInput>& out);
    bool IsDoubleClick(UINT downMessage, uint32_t time, int x, int y);
    bool IsPasteKey(int vk) const;
    WPARAM MouseKeys() const;
    DemoInput MouseInput(UINT message) const;

    bool m_bDoubleClicks = true;
    std::function<bool(std::string&)> m_pasteSource;
    WPARAM m_nButtons = 0; // MK_LBUTTON, MK_RBUTTON, MK_MBUTTON held
    int m_nModifiers = 0;  // DemoModifier bits, as the last key event left them
    int m_x = 0;
    int m_y = 0;
    Click m_click;
    bool m_bKeyDown[256] = {};
    uint32_t m_nCharLParam = 1; // the lParam of the last key down, which its characters share
    bool m_bComposing = false;
};
