// The window mode's translation of SDL events into the input of a Win32 main window: mouse
// messages and their MK_ flags, wheel notches, double clicks by Windows' time and distance, the
// lParam bits of key messages, the characters TranslateMessage makes, the input method's text,
// paste keys that take in the desktop's clipboard, sizes and screenshot marks.
#include "SdlInputTranslator.h"
#include "SdlTestEvents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace SdlTestEvents;

std::vector<DemoInput> Translate(CSdlInputTranslator& translator,
                                 const std::vector<SDL_Event>& events)
{
    std::vector<DemoInput> out;
    for (const SDL_Event& event : events)
        translator.Translate(event, out);
    return out;
}

std::vector<UINT> Messages(const std::vector<DemoInput>& inputs)
{
    std::vector<UINT> messages;
    for (const DemoInput& input : inputs)
        messages.push_back(input.message);
    return messages;
}

TEST(SdlInputTranslator, MouseMessagesCarryThePositionTheButtonsAndModifiersHeldAndTheWheel)
{
    CSdlInputTranslator translator;
    const std::vector<DemoInput> out = Translate(
        translator, {Motion(10, 20), Key(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT, true, KMOD_LSHIFT),
                     Button(SDL_BUTTON_LEFT, true, 11, 21), Motion(-40, 99999),
                     Button(SDL_BUTTON_RIGHT, true, 0, 0), Button(SDL_BUTTON_LEFT, false, 3, 4),
                     Button(SDL_BUTTON_MIDDLE, true, 3, 4), Button(SDL_BUTTON_X1, true, 0, 0),
                     Wheel(1), Wheel(-2), Wheel(1, true), Wheel(0)});
    struct Expected
    {
        UINT message;
        int x, y;
        WPARAM keys;
        int wheel;
    };
    const WPARAM shift = MK_SHIFT;
    const Expected expected[] = {
        {WM_MOUSEMOVE, 10, 20, 0, 0},
        {WM_KEYDOWN, 0, 0, 0, 0},
        {WM_LBUTTONDOWN, 11, 21, MK_LBUTTON | shift, 0},
        {WM_MOUSEMOVE, -40, 32767, MK_LBUTTON | shift, 0},
        {WM_RBUTTONDOWN, 0, 0, MK_LBUTTON | MK_RBUTTON | shift, 0},
        {WM_LBUTTONUP, 3, 4, MK_RBUTTON | shift, 0},
        {WM_MBUTTONDOWN, 3, 4, MK_RBUTTON | MK_MBUTTON | shift, 0},
        {WM_MOUSEWHEEL, 3, 4, MK_RBUTTON | MK_MBUTTON | shift, WHEEL_DELTA},
        {WM_MOUSEWHEEL, 3, 4, MK_RBUTTON | MK_MBUTTON | shift, -2 * WHEEL_DELTA},
        {WM_MOUSEWHEEL, 3, 4, MK_RBUTTON | MK_MBUTTON | shift, -WHEEL_DELTA},
    };
    ASSERT_EQ(std::size(expected), out.size());
    for (size_t i = 0; i < out.size(); ++i)
    {
        EXPECT_EQ(expected[i].message, out[i].message) << i;
        if (out[i].kind != DemoInput::Mouse)
            continue;
        EXPECT_EQ(expected[i].x, out[i].x) << i;
        EXPECT_EQ(expected[i].y, out[i].y) << i;
        EXPECT_EQ(expected[i].keys, out[i].keys) << i;
        EXPECT_EQ(expected[i].wheel, out[i].wheel) << i;
    }
}

TEST(SdlInputTranslator, ASecondPressIsADoubleClickWithinWindowsTimeAndDistance)
{
    struct Case
    {
        const char* what;
        uint8_t secondButton;
        uint32_t secondTime;
        int secondX, secondY;
        bool classWantsThem;
        UINT expected;
    };
    const Case cases[] = {
        {"in time and place", SDL_BUTTON_LEFT, 1100, 102, 198, true, WM_LBUTTONDBLCLK},
        {"at 500 ms", SDL_BUTTON_LEFT, 1500, 100, 200, true, WM_LBUTTONDBLCLK},
        {"at 501 ms", SDL_BUTTON_LEFT, 1501, 100, 200, true, WM_LBUTTONDOWN},
        {"3 pixels right", SDL_BUTTON_LEFT, 1100, 103, 200, true, WM_LBUTTONDOWN},
        {"3 pixels up", SDL_BUTTON_LEFT, 1100, 100, 197, true, WM_LBUTTONDOWN},
        {"another button", SDL_BUTTON_RIGHT, 1100, 100, 200, true, WM_RBUTTONDOWN},
        {"class without CS_DBLCLKS", SDL_BUTTON_LEFT, 1100, 100, 200, false, WM_LBUTTONDOWN},
    };
    for (const Case& test : cases)
    {
        CSdlInputTranslator translator;
        translator.SetDoubleClicks(test.classWantsThem);
        const std::vector<DemoInput> out = Translate(
            translator,
            {Button(SDL_BUTTON_LEFT, true, 100, 200, 1000),
             Button(SDL_BUTTON_LEFT, false, 100, 200, 1050),
             Button(test.secondButton, true, test.secondX, test.secondY, test.secondTime)});
        ASSERT_EQ(3u, out.size());
        EXPECT_EQ(test.expected, out[2].message) << test.what;
    }
    // The press after a double click starts a new sequence; middle and right double-click too.
    CSdlInputTranslator translator;
    std::vector<SDL_Event> presses;
    for (uint32_t time : {0u, 100u, 200u, 300u})
        presses.push_back(Button(SDL_BUTTON_MIDDLE, true, 5, 5, time));
    EXPECT_EQ(
        (std::vector<UINT>{WM_MBUTTONDOWN, WM_MBUTTONDBLCLK, WM_MBUTTONDOWN, WM_MBUTTONDBLCLK}),
        Messages(Translate(translator, presses)));
}

TEST(SdlInputTranslator, KeyMessagesHaveTheLParamBitsWindowsSets)
{
    struct Case
    {
        const char* what;
        SDL_Event event;
        UINT message;
        int vk;
        uint32_t lParam;
    };
    // Each case follows the ones before it in one translator: Alt stays held from its row on.
    const Case cases[] = {
        {"A down", Key(SDL_SCANCODE_A, SDLK_a, true), WM_KEYDOWN, 'A', 0x001E0001},
        {"A repeat", Key(SDL_SCANCODE_A, SDLK_a, true, KMOD_NONE, true), WM_KEYDOWN, 'A',
         0x401E0001},
        {"A up", Key(SDL_SCANCODE_A, SDLK_a, false), WM_KEYUP, 'A', 0xC01E0001},
        {"AZERTY's A at Q", Key(SDL_SCANCODE_Q, SDLK_a, true), WM_KEYDOWN, 'A', 0x00100001},
        {"left arrow", Key(SDL_SCANCODE_LEFT, SDLK_LEFT, true), WM_KEYDOWN, VK_LEFT, 0x014B0001},
        {"keypad 7 without Num Lock", Key(SDL_SCANCODE_KP_7, SDLK_KP_7, true), WM_KEYDOWN, VK_HOME,
         0x00470001},
        {"right Ctrl", Key(SDL_SCANCODE_RCTRL, SDLK_RCTRL, true, KMOD_RCTRL), WM_KEYDOWN,
         VK_CONTROL, 0x011D0001},
        {"right Ctrl up", Key(SDL_SCANCODE_RCTRL, SDLK_RCTRL, false), WM_KEYUP, VK_CONTROL,
         0xC11D0001},
        {"F10", Key(SDL_SCANCODE_F10, SDLK_F10, true), WM_SYSKEYDOWN, 0x79, 0x00440001},
        {"Alt down", Key(SDL_SCANCODE_LALT, SDLK_LALT, true, KMOD_LALT), WM_SYSKEYDOWN, VK_MENU,
         0x20380001},
        {"Alt+F4", Key(SDL_SCANCODE_F4, SDLK_F4, true, KMOD_LALT), WM_SYSKEYDOWN, VK_F4,
         0x203E0001},
        {"F4 up under Alt", Key(SDL_SCANCODE_F4, SDLK_F4, false, KMOD_LALT), WM_SYSKEYUP, VK_F4,
         0xE03E0001},
        {"Alt up", Key(SDL_SCANCODE_LALT, SDLK_LALT, false), WM_SYSKEYUP, VK_MENU, 0xC0380001},
    };
    CSdlInputTranslator translator;
    for (const Case& test : cases)
    {
        std::vector<DemoInput> out;
        translator.Translate(test.event, out);
        ASSERT_FALSE(out.empty()) << test.what;
        EXPECT_EQ(test.message, out[0].message) << test.what;
        EXPECT_EQ(test.vk, out[0].vk) << test.what;
        EXPECT_EQ(test.lParam, out[0].lParam) << std::hex << test.what << " " << out[0].lParam;
    }
}

TEST(SdlInputTranslator, RepeatsWaitingTogetherFoldIntoARepeatCount)
{
    CSdlInputTranslator translator;
    const SDL_Event down = Key(SDL_SCANCODE_DOWN, SDLK_DOWN, true);
    const SDL_Event repeat = Key(SDL_SCANCODE_DOWN, SDLK_DOWN, true, KMOD_NONE, true);
    const std::vector<DemoInput> out = Translate(
        translator, {down, repeat, repeat, repeat, Key(SDL_SCANCODE_DOWN, SDLK_DOWN, false)});
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(0x01500001u, out[0].lParam);
    EXPECT_EQ(0x41500003u, out[1].lParam);
    EXPECT_EQ(WM_KEYUP, out[2].message);
    // A key that types keeps one message a repeat, each with its character.
    const SDL_Event back = Key(SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, true, KMOD_NONE, true);
    EXPECT_EQ((std::vector<UINT>{WM_KEYDOWN, WM_CHAR, WM_KEYDOWN, WM_CHAR}),
              Messages(Translate(translator, {back, back})));
}

TEST(SdlInputTranslator, KeysWithoutTextMakeTheCharactersTranslateMessageMakes)
{
    struct Case
    {
        SDL_Scancode scancode;
        SDL_Keycode sym;
        uint16_t mod;
        uint32_t code; // 0: none
    };
    const Case cases[] = {
        {SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, KMOD_NONE, 0x08},
        {SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, KMOD_LCTRL, 0x7F},
        {SDL_SCANCODE_TAB, SDLK_TAB, KMOD_NONE, 0x09},
        {SDL_SCANCODE_RETURN, SDLK_RETURN, KMOD_NONE, 0x0D},
        {SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER, KMOD_NONE, 0x0D},
        {SDL_SCANCODE_ESCAPE, SDLK_ESCAPE, KMOD_NONE, 0x1B},
        {SDL_SCANCODE_C, SDLK_c, KMOD_LCTRL, 0x03},
        {SDL_SCANCODE_C, SDLK_c, KMOD_LCTRL | KMOD_LALT, 0},
        {SDL_SCANCODE_C, SDLK_c, KMOD_NONE, 0},
        {SDL_SCANCODE_DELETE, SDLK_DELETE, KMOD_NONE, 0},
    };
    for (const Case& test : cases)
    {
        CSdlInputTranslator translator;
        std::vector<DemoInput> out;
        translator.Translate(Key(test.scancode, test.sym, true, test.mod), out);
        ASSERT_EQ(test.code ? 2u : 1u, out.size()) << test.sym;
        if (test.code == 0)
            continue;
        EXPECT_EQ(WM_CHAR, out[1].message);
        EXPECT_EQ(test.code, out[1].code);
        EXPECT_EQ(out[0].lParam, out[1].lParam);
    }
}

TEST(SdlInputTranslator, TextIsTypedUnlessItEndsAComposition)
{
    CSdlInputTranslator translator;
    const std::vector<DemoInput> out =
        Translate(translator, {Text(SDL_TEXTEDITING, ""), Text(SDL_TEXTINPUT, "a\xE4\xB8\xAD"),
                               Text(SDL_TEXTEDITING, "zhong"), Text(SDL_TEXTINPUT, "\xE4\xB8\xAD"),
                               Text(SDL_TEXTEDITING, "x"), Text(SDL_TEXTEDITING, "")});
    ASSERT_EQ(6u, out.size());
    EXPECT_EQ(DemoInput::Char, out[0].kind);
    EXPECT_EQ(uint32_t('a'), out[0].code);
    EXPECT_EQ(0x4E2Du, out[1].code);
    EXPECT_EQ(DemoInput::Compose, out[2].kind);
    EXPECT_EQ("zhong", out[2].text);
    EXPECT_EQ(DemoInput::Result, out[3].kind);
    EXPECT_EQ("\xE4\xB8\xAD", out[3].text);
    // A composition given up ends with an empty one.
    EXPECT_EQ(DemoInput::Compose, out[5].kind);
    EXPECT_EQ("", out[5].text);
}

TEST(SdlInputTranslator, APasteKeyTakesInTheDesktopsNewTextFirst)
{
    CSdlInputTranslator translator;
    int asked = 0;
    translator.SetPasteSource(
        [&asked](std::string& text)
        {
            text = "from the desktop";
            return ++asked == 1;
        });
    const SDL_Event ctrlV = Key(SDL_SCANCODE_V, SDLK_v, true, KMOD_LCTRL);
    std::vector<DemoInput> out = Translate(translator, {ctrlV});
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ(DemoInput::Clipboard, out[0].kind);
    EXPECT_EQ("from the desktop", out[0].text);
    EXPECT_EQ(WM_KEYDOWN, out[1].message);
    EXPECT_EQ(0x16u, out[2].code);
    // Nothing new the second time; Shift+Insert asks too, a plain V does not.
    EXPECT_EQ(2u, Translate(translator, {ctrlV}).size());
    Translate(translator, {Key(SDL_SCANCODE_INSERT, SDLK_INSERT, true, KMOD_LSHIFT),
                           Key(SDL_SCANCODE_V, SDLK_v, true)});
    EXPECT_EQ(3, asked);
}

TEST(SdlInputTranslator, F9MarksAShotAndSizesInARowBecomeTheLast)
{
    CSdlInputTranslator translator;
    const std::vector<DemoInput> out = Translate(
        translator,
        {Key(SDL_SCANCODE_F9, SDLK_F9, true), Key(SDL_SCANCODE_F9, SDLK_F9, true, 0, true),
         Key(SDL_SCANCODE_F9, SDLK_F9, false), Resized(800, 600), Resized(640, 0)});
    ASSERT_EQ(2u, out.size());
    EXPECT_EQ(DemoInput::Shot, out[0].kind);
    EXPECT_EQ(DemoInput::Size, out[1].kind);
    EXPECT_EQ(640, out[1].x);
    EXPECT_EQ(1, out[1].y);
}

} // namespace
