#include "SdlInputTranslator.h"

#include "SdlKeyMap.h"

#include "platform/system/text/QzCodePage.h"

#include <algorithm>
#include <cstdlib>

namespace
{

const int kF10 = 0x79; // VK_F10
const uint32_t kRepeatMask = 0xFFFF;
const uint32_t kExtendedBit = 1u << 24;
const uint32_t kContextBit = 1u << 29;
const uint32_t kPreviousBit = 1u << 30;
const uint32_t kTransitionBit = 1u << 31;

int ClampShort(int value)
{
    return std::clamp(value, -32768, 32767);
}

int ModifiersOf(uint16_t mod)
{
    int modifiers = 0;
    modifiers |= (mod & KMOD_SHIFT) ? kModShift : 0;
    modifiers |= (mod & KMOD_CTRL) ? kModControl : 0;
    modifiers |= (mod & KMOD_ALT) ? kModAlt : 0;
    return modifiers;
}

struct ButtonMessages
{
    WPARAM flag;
    UINT down;
    UINT up;
    UINT doubleClick;
};

bool MessagesOf(uint8_t button, ButtonMessages& messages)
{
    switch (button)
    {
    case SDL_BUTTON_LEFT:
        messages = {MK_LBUTTON, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK};
        return true;
    case SDL_BUTTON_RIGHT:
        messages = {MK_RBUTTON, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK};
        return true;
    case SDL_BUTTON_MIDDLE:
        messages = {MK_MBUTTON, WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK};
        return true;
    default:
        return false;
    }
}

// An autorepeat that Windows would fold into the message before it: the same key's repeat,
// nothing between them.
bool MergesInto(const DemoInput& last, const DemoInput& repeat)
{
    return last.kind == DemoInput::Key && last.message == repeat.message && last.vk == repeat.vk &&
           (last.lParam & kPreviousBit) &&
           (last.lParam & ~kRepeatMask) == (repeat.lParam & ~kRepeatMask) &&
           (last.lParam & kRepeatMask) < kRepeatMask;
}

} // namespace

void CSdlInputTranslator::Translate(const SDL_Event& event, std::vector<DemoInput>& out)
{
    switch (event.type)
    {
    case SDL_MOUSEMOTION:
        MouseMove(event.motion, out);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        MouseButton(event.button, out);
        break;
    case SDL_MOUSEWHEEL:
        MouseWheel(event.wheel, out);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        Key(event.key, out);
        break;
    case SDL_TEXTEDITING:
        TextEditing(event.edit, out);
        break;
    case SDL_TEXTINPUT:
        TextInput(event.text, out);
        break;
    case SDL_WINDOWEVENT:
        WindowEvent(event.window, out);
        break;
    default:
        break;
    }
}

WPARAM CSdlInputTranslator::MouseKeys() const
{
    WPARAM keys = m_nButtons;
    keys |= (m_nModifiers & kModShift) ? MK_SHIFT : 0;
    keys |= (m_nModifiers & kModControl) ? MK_CONTROL : 0;
    return keys;
}

DemoInput CSdlInputTranslator::MouseInput(UINT message) const
{
    DemoInput input;
    input.kind = DemoInput::Mouse;
    input.message = message;
    input.x = m_x;
    input.y = m_y;
    input.keys = MouseKeys();
    return input;
}

void CSdlInputTranslator::MouseMove(const SDL_MouseMotionEvent& motion, std::vector<DemoInput>& out)
{
    m_x = ClampShort(motion.x);
    m_y = ClampShort(motion.y);
    out.push_back(MouseInput(WM_MOUSEMOVE));
}

void CSdlInputTranslator::MouseButton(const SDL_MouseButtonEvent& button,
                                      std::vector<DemoInput>& out)
{
    ButtonMessages messages;
    if (!MessagesOf(button.button, messages))
        return;
    m_x = ClampShort(button.x);
    m_y = ClampShort(button.y);
    if (button.state != SDL_PRESSED)
    {
        m_nButtons &= ~messages.flag;
        out.push_back(MouseInput(messages.up));
        return;
    }
    m_nButtons |= messages.flag;
    const bool second = IsDoubleClick(messages.down, button.timestamp, m_x, m_y);
    out.push_back(MouseInput(second ? messages.doubleClick : messages.down));
}

// The press that ends a double click starts no new one: a third press is a plain press again.
bool CSdlInputTranslator::IsDoubleClick(UINT downMessage, uint32_t time, int x, int y)
{
    const bool second = m_bDoubleClicks && m_click.valid && m_click.message == downMessage &&
                        time - m_click.time <= kDoubleClickMs &&
                        std::abs(x - m_click.x) <= kDoubleClickCx / 2 &&
                        std::abs(y - m_click.y) <= kDoubleClickCy / 2;
    if (second)
    {
        m_click.valid = false;
        return true;
    }
    m_click = {true, downMessage, time, x, y};
    return false;
}

void CSdlInputTranslator::MouseWheel(const SDL_MouseWheelEvent& wheel, std::vector<DemoInput>& out)
{
    const int notches = wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -wheel.y : wheel.y;
    const int delta = ClampShort(std::clamp(notches, -273, 273) * WHEEL_DELTA);
    if (delta == 0)
        return;
    DemoInput input = MouseInput(WM_MOUSEWHEEL);
    input.wheel = delta;
    out.push_back(input);
}

bool CSdlInputTranslator::IsPasteKey(int vk) const
{
    const bool control = (m_nModifiers & kModControl) != 0;
    const bool shift = (m_nModifiers & kModShift) != 0;
    const bool alt = (m_nModifiers & kModAlt) != 0;
    return !alt && ((control && vk == 'V') || (shift && !control && vk == VK_INSERT));
}

void CSdlInputTranslator::Key(const SDL_KeyboardEvent& key, std::vector<DemoInput>& out)
{
    const Win32Key win32 = Win32KeyFromSdl(key.keysym);
    const bool down = key.state == SDL_PRESSED;
    const int before = m_nModifiers;
    m_nModifiers = ModifiersOf(key.keysym.mod);
    if (win32.vk == 0)
        return;
    if (win32.vk == kShotKey)
    {
        DemoInput shot;
        shot.kind = DemoInput::Shot;
        if (down && !key.repeat)
            out.push_back(shot);
        return;
    }
    // Alt makes system keys unless Ctrl is held too (AltGr, Ctrl+Alt); F10 is one by itself.
    const int held = down ? m_nModifiers : before;
    const bool alt = (held & kModAlt) != 0;
    const bool system = (alt && !(held & kModControl)) || win32.vk == kF10;
    DemoInput input;
    input.kind = DemoInput::Key;
    input.message =
        down ? (system ? WM_SYSKEYDOWN : WM_KEYDOWN) : (system ? WM_SYSKEYUP : WM_KEYUP);
    input.vk = win32.vk;
    input.modifiers = m_nModifiers;
    input.lParam = 1u | static_cast<uint32_t>(win32.scan & 0xFF) << 16;
    input.lParam |= win32.extended ? kExtendedBit : 0;
    input.lParam |= (m_nModifiers & kModAlt) ? kContextBit : 0;
    input.lParam |= (!down || key.repeat || m_bKeyDown[win32.vk]) ? kPreviousBit : 0;
    input.lParam |= down ? 0 : kTransitionBit;
    m_bKeyDown[win32.vk] = down;
    if (!down)
    {
        out.push_back(input);
        return;
    }
    m_nCharLParam = input.lParam;
    if (!out.empty() && MergesInto(out.back(), input))
    {
        ++out.back().lParam;
        return;
    }
    std::string pasted;
    if (IsPasteKey(win32.vk) && m_pasteSource && m_pasteSource(pasted))
    {
        DemoInput clipboard;
        clipboard.kind = DemoInput::Clipboard;
        clipboard.text = pasted;
        out.push_back(clipboard);
    }
    out.push_back(input);
    if (!system)
        KeyCharacters(win32.vk, input.lParam, out);
}

// The characters TranslateMessage makes of keys that SDL gives no text for: Backspace, Tab,
// Enter and Escape, and Ctrl with a letter its control character (Ctrl+V is 0x16; with AltGr,
// which is Ctrl+Alt, none).
void CSdlInputTranslator::KeyCharacters(int vk, uint32_t lParam, std::vector<DemoInput>& out) const
{
    const bool control = (m_nModifiers & kModControl) != 0;
    const bool alt = (m_nModifiers & kModAlt) != 0;
    uint32_t code = 0;
    if (vk == VK_BACK)
        code = control ? 0x7F : 0x08;
    else if (vk == VK_TAB && !control)
        code = 0x09;
    else if (vk == VK_RETURN)
        code = control ? 0x0A : 0x0D;
    else if (vk == VK_ESCAPE)
        code = 0x1B;
    else if (control && !alt && vk >= 'A' && vk <= 'Z')
        code = static_cast<uint32_t>(vk - 'A' + 1);
    if (code == 0)
        return;
    DemoInput input;
    input.kind = DemoInput::Char;
    input.message = WM_CHAR;
    input.code = code;
    input.lParam = lParam;
    out.push_back(input);
}

void CSdlInputTranslator::TextEditing(const SDL_TextEditingEvent& edit, std::vector<DemoInput>& out)
{
    const std::string text = edit.text;
    // An empty composition while none is going on is SDL starting text input: nothing to say.
    if (text.empty() && !m_bComposing)
        return;
    m_bComposing = !text.empty();
    DemoInput input;
    input.kind = DemoInput::Compose;
    input.text = text;
    out.push_back(input);
}

// Text that ends a composition is the input method's result; other text is typed.
void CSdlInputTranslator::TextInput(const SDL_TextInputEvent& text, std::vector<DemoInput>& out)
{
    DemoInput input;
    if (m_bComposing)
    {
        m_bComposing = false;
        input.kind = DemoInput::Result;
        input.text = text.text;
        out.push_back(input);
        return;
    }
    input.kind = DemoInput::Char;
    input.message = WM_CHAR;
    input.lParam = m_nCharLParam;
    for (wchar_t ch : QzPlatform::Utf8ToWide(text.text))
    {
        input.code = static_cast<uint32_t>(ch);
        out.push_back(input);
    }
}

void CSdlInputTranslator::WindowEvent(const SDL_WindowEvent& window, std::vector<DemoInput>& out)
{
    if (window.event != SDL_WINDOWEVENT_SIZE_CHANGED)
        return;
    DemoInput input;
    input.kind = DemoInput::Size;
    input.x = std::clamp(window.data1, 1, 8192);
    input.y = std::clamp(window.data2, 1, 8192);
    if (!out.empty() && out.back().kind == DemoInput::Size)
        out.back() = input;
    else
        out.push_back(input);
}
