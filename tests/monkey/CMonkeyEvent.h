// One step of the message monkey: what the user or the host does to a GUI manager. An event
// carries every value it needs, so that a list of them replays the same way from a fresh
// manager, and reads and writes as one line of text ("ldown x=120 y=45 keys=1",
// "clipboard text=\"ab\\xC4\\xE3\"") for replay files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace QzMonkey
{

enum class EventKind : uint8_t
{
    MouseMove,
    LButtonDown,
    LButtonUp,
    LButtonDblClk,
    RButtonDown,
    RButtonUp,
    RButtonDblClk,
    MButtonDown,
    MButtonUp,
    Wheel,
    KeyDown,
    KeyUp,
    Char,
    ImeComposition,
    ImeResult,
    Clipboard,
    Paste,
    ShowDialog,
    HideDialog,
    ReloadLayout,
    ReloadDialog,
    AddDialog,
    RemoveDialog,
    CreateCtrl,
    DestroyCtrl,
    Focus,
    Frames,
    Clock,
    Purge,
    Count,
};

// The kinds of control a dialog holds or the monkey makes and destroys.
enum class CtrlKind : uint8_t
{
    Button,
    Check,
    Static,
    Image,
    ScrollButton,
    Slider,
    Progress,
    Marquee,
    List,
    Tree,
    Grid,
    Edit,
    EditEx,
    Count,
};

const char* CtrlKindName(CtrlKind kind);

class CMonkeyEvent
{
public:
    CMonkeyEvent() = default;
    CMonkeyEvent(EventKind kind, int a = 0, int b = 0, int c = 0, std::string text = {})
        : m_kind(kind), m_values{a, b, c}, m_text(std::move(text))
    {
    }

    EventKind Kind() const { return m_kind; }
    // The values in the order the line names them (x, y, keys for a mouse event).
    int Value(int index) const { return m_values[index]; }
    const std::string& Text() const { return m_text; }

    std::string Format() const;
    // One line as Format writes it; nothing for a line that is not an event (the error says
    // why when given).
    static std::optional<CMonkeyEvent> Parse(const std::string& line, std::string* pError);

private:
    EventKind m_kind = EventKind::Frames;
    int m_values[3] = {0, 0, 0};
    std::string m_text;
};

// Reads a replay file: one event a line; blank lines and lines starting with '#' are skipped.
// False, with the error naming the line, when a line is no event.
bool ReadEvents(const std::string& text, std::vector<CMonkeyEvent>& events, std::string& error);

} // namespace QzMonkey
