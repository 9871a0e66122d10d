#include "DemoRecording.h"

#include "RecordingText.h"

#include <cctype>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace
{

const char* const kMagic = "qzgui-recording";

struct EventName
{
    const char* name;
    DemoInput::Kind kind;
    UINT message;
};

const EventName kEvents[] = {
    {"mousemove", DemoInput::Mouse, WM_MOUSEMOVE},
    {"lbuttondown", DemoInput::Mouse, WM_LBUTTONDOWN},
    {"lbuttonup", DemoInput::Mouse, WM_LBUTTONUP},
    {"lbuttondblclk", DemoInput::Mouse, WM_LBUTTONDBLCLK},
    {"rbuttondown", DemoInput::Mouse, WM_RBUTTONDOWN},
    {"rbuttonup", DemoInput::Mouse, WM_RBUTTONUP},
    {"rbuttondblclk", DemoInput::Mouse, WM_RBUTTONDBLCLK},
    {"mbuttondown", DemoInput::Mouse, WM_MBUTTONDOWN},
    {"mbuttonup", DemoInput::Mouse, WM_MBUTTONUP},
    {"mbuttondblclk", DemoInput::Mouse, WM_MBUTTONDBLCLK},
    {"mousewheel", DemoInput::Mouse, WM_MOUSEWHEEL},
    {"keydown", DemoInput::Key, WM_KEYDOWN},
    {"keyup", DemoInput::Key, WM_KEYUP},
    {"syskeydown", DemoInput::Key, WM_SYSKEYDOWN},
    {"syskeyup", DemoInput::Key, WM_SYSKEYUP},
    {"char", DemoInput::Char, WM_CHAR},
    {"compose", DemoInput::Compose, 0},
    {"result", DemoInput::Result, 0},
    {"clipboard", DemoInput::Clipboard, 0},
    {"size", DemoInput::Size, 0},
    {"shot", DemoInput::Shot, 0},
};

const EventName* FindEvent(const std::string& name)
{
    for (const EventName& event : kEvents)
    {
        if (name == event.name)
            return &event;
    }
    return nullptr;
}

const char* EventNameOf(const DemoInput& input)
{
    for (const EventName& event : kEvents)
    {
        if (event.kind == input.kind && (event.message == input.message || event.message == 0))
            return event.name;
    }
    return "?";
}

std::string Hex(uint64_t value, int digits)
{
    char text[24];
    std::snprintf(text, sizeof text, "0x%0*" PRIX64, digits, value);
    return text;
}

std::string ModifierText(int modifiers)
{
    std::string text;
    text += (modifiers & kModShift) ? "S" : "";
    text += (modifiers & kModControl) ? "C" : "";
    text += (modifiers & kModAlt) ? "A" : "";
    return text.empty() ? "-" : text;
}

bool IsShotName(const std::string& name)
{
    if (name.empty() || name.size() > 64 || name[0] == '.')
        return false;
    for (char ch : name)
    {
        const bool ok = (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
                        (ch >= '0' && ch <= '9') || ch == '-' || ch == '_' || ch == '.';
        if (!ok)
            return false;
    }
    return true;
}

// The fields of one line, read left to right; the first failure leaves its reason in Error().
class FieldReader
{
public:
    explicit FieldReader(const std::string& line) : m_line(line) {}

    const std::string& Error() const { return m_error; }

    bool Word(const char* what, std::string& word)
    {
        SkipSpace();
        if (m_pos >= m_line.size())
            return Fail(std::string("the ") + what + " is missing");
        const size_t start = m_pos;
        while (m_pos < m_line.size() && m_line[m_pos] != ' ' && m_line[m_pos] != '\t')
            ++m_pos;
        word = m_line.substr(start, m_pos - start);
        return true;
    }

    bool Number(const char* what, int64_t minimum, int64_t maximum, int64_t& value)
    {
        std::string word;
        if (!Word(what, word))
            return false;
        if (!ParseNumber(word, value))
            return Fail(std::string("the ") + what + " \"" + word + "\" is not a number");
        if (value < minimum || value > maximum)
            return Fail(std::string("the ") + what + " " + word + " is out of range (" +
                        std::to_string(minimum) + ".." + std::to_string(maximum) + ")");
        return true;
    }

    template <typename T> bool Number(const char* what, int64_t minimum, int64_t maximum, T& out)
    {
        int64_t value = 0;
        if (!Number(what, minimum, maximum, value))
            return false;
        out = static_cast<T>(value);
        return true;
    }

    bool Text(const char* what, std::string& text)
    {
        SkipSpace();
        if (m_pos >= m_line.size())
            return Fail(std::string("the ") + what + " is missing");
        std::string error;
        if (!UnquoteRecordingText(m_line, m_pos, text, error))
            return Fail(error);
        if (text.size() > CDemoRecording::kMaxText)
            return Fail(std::string("the ") + what + " is longer than " +
                        std::to_string(CDemoRecording::kMaxText) + " bytes");
        if (!IsUtf8(text))
            return Fail(std::string("the ") + what + " is not UTF-8");
        return true;
    }

    bool End()
    {
        SkipSpace();
        if (m_pos < m_line.size())
            return Fail("unexpected \"" + m_line.substr(m_pos) + "\" at the end");
        return true;
    }

    bool Fail(const std::string& reason)
    {
        if (m_error.empty())
            m_error = reason;
        return false;
    }

private:
    void SkipSpace()
    {
        while (m_pos < m_line.size() && (m_line[m_pos] == ' ' || m_line[m_pos] == '\t'))
            ++m_pos;
    }

    static bool ParseNumber(const std::string& word, int64_t& value)
    {
        const bool negative = !word.empty() && word[0] == '-';
        const std::string digits = negative ? word.substr(1) : word;
        const bool hex =
            digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X');
        const std::string body = hex ? digits.substr(2) : digits;
        if (body.empty() || body.size() > 16)
            return false;
        for (char ch : body)
        {
            const bool ok =
                hex ? std::isxdigit(static_cast<unsigned char>(ch)) != 0 : (ch >= '0' && ch <= '9');
            if (!ok)
                return false;
        }
        errno = 0;
        const unsigned long long magnitude = std::strtoull(body.c_str(), nullptr, hex ? 16 : 10);
        if (errno != 0 || magnitude > static_cast<unsigned long long>(INT64_MAX))
            return false;
        value = negative ? -static_cast<int64_t>(magnitude) : static_cast<int64_t>(magnitude);
        return true;
    }

    const std::string& m_line;
    size_t m_pos = 0;
    std::string m_error;
};

bool ReadModifiers(FieldReader& reader, int& modifiers)
{
    std::string word;
    if (!reader.Word("modifiers", word))
        return false;
    modifiers = 0;
    if (word == "-")
        return true;
    for (char ch : word)
    {
        const int bit = ch == 'S' ? kModShift : ch == 'C' ? kModControl : ch == 'A' ? kModAlt : 0;
        if (bit == 0 || (modifiers & bit))
            return reader.Fail("the modifiers \"" + word + "\" are not a set of S, C and A");
        modifiers |= bit;
    }
    return true;
}

bool ReadFields(FieldReader& reader, DemoInput& input)
{
    switch (input.kind)
    {
    case DemoInput::Mouse:
        if (!reader.Number("x", -32768, 32767, input.x) ||
            !reader.Number("y", -32768, 32767, input.y) ||
            !reader.Number("keys", 0, 0xFFFF, input.keys))
            return false;
        return input.message != WM_MOUSEWHEEL || reader.Number("delta", -32768, 32767, input.wheel);
    case DemoInput::Key:
        return reader.Number("virtual key", 1, 254, input.vk) &&
               reader.Number("lParam", 0, 0xFFFFFFFF, input.lParam) &&
               ReadModifiers(reader, input.modifiers);
    case DemoInput::Char:
        if (!reader.Text("character", input.text))
            return false;
        if (!SingleCodePoint(input.text, input.code))
            return reader.Fail("a char line holds one character");
        input.text.clear();
        return reader.Number("lParam", 0, 0xFFFFFFFF, input.lParam);
    case DemoInput::Compose:
    case DemoInput::Result:
    case DemoInput::Clipboard:
        return reader.Text("text", input.text);
    case DemoInput::Size:
        return reader.Number("width", 1, 8192, input.x) &&
               reader.Number("height", 1, 8192, input.y);
    case DemoInput::Shot:
        if (!reader.Word("shot name", input.text))
            return false;
        return IsShotName(input.text) ||
               reader.Fail("the shot name \"" + input.text +
                           "\" is not 1..64 letters, digits, '-', '_' or '.' (no leading '.')");
    }
    return false;
}

bool ParseEntry(const std::string& line, RecordedInput& entry, std::string& error)
{
    FieldReader reader(line);
    std::string name;
    const bool ok = reader.Number("frame", 0, CDemoRecording::kMaxFrame, entry.frame) &&
                    reader.Number("time", 0, 0xFFFFFFFF, entry.time) && reader.Word("event", name);
    const EventName* event = ok ? FindEvent(name) : nullptr;
    if (ok && !event)
        reader.Fail("unknown event \"" + name + "\"");
    if (event)
    {
        entry.input.kind = event->kind;
        entry.input.message = event->message;
    }
    if (event && ReadFields(reader, entry.input) && reader.End())
        return true;
    error = reader.Error();
    return false;
}

bool CheckHeader(const std::string& line, std::string& error)
{
    std::istringstream words(line);
    std::string magic;
    std::string version;
    std::string rest;
    words >> magic >> version >> rest;
    if (magic != kMagic || version.empty() || !rest.empty())
    {
        error = std::string("not a recording: the first line must be \"") + kMagic + " " +
                std::to_string(CDemoRecording::kVersion) + "\"";
        return false;
    }
    if (version != std::to_string(CDemoRecording::kVersion))
    {
        error = "recording version " + version + " is not supported (this demo reads version " +
                std::to_string(CDemoRecording::kVersion) + ")";
        return false;
    }
    return true;
}

// The order of frames and times: frames never go back, one time a frame, later frames no
// earlier time.
bool CheckOrder(const RecordedInput& previous, const RecordedInput& entry, std::string& error)
{
    if (entry.frame < previous.frame)
        error = "frame " + std::to_string(entry.frame) + " comes after frame " +
                std::to_string(previous.frame);
    else if (entry.frame == previous.frame && entry.time != previous.time)
        error = "frame " + std::to_string(entry.frame) + " has two times, " +
                std::to_string(previous.time) + " and " + std::to_string(entry.time);
    else if (entry.time < previous.time)
        error = "the time " + std::to_string(entry.time) + " goes back from " +
                std::to_string(previous.time);
    return error.empty();
}

} // namespace

std::string CDemoRecording::Header()
{
    return std::string(kMagic) + " " + std::to_string(kVersion);
}

std::string CDemoRecording::FormatLine(const RecordedInput& entry)
{
    const DemoInput& input = entry.input;
    std::string line =
        std::to_string(entry.frame) + " " + std::to_string(entry.time) + " " + EventNameOf(input);
    switch (input.kind)
    {
    case DemoInput::Mouse:
        line += " " + std::to_string(input.x) + " " + std::to_string(input.y) + " " +
                Hex(input.keys, 4);
        if (input.message == WM_MOUSEWHEEL)
            line += " " + std::to_string(input.wheel);
        break;
    case DemoInput::Key:
        line += " " + Hex(static_cast<uint64_t>(input.vk), 2) + " " + Hex(input.lParam, 8) + " " +
                ModifierText(input.modifiers);
        break;
    case DemoInput::Char:
        line += " " + QuoteRecordingText(EncodeUtf8(input.code)) + " " + Hex(input.lParam, 8);
        break;
    case DemoInput::Compose:
    case DemoInput::Result:
    case DemoInput::Clipboard:
        line += " " + QuoteRecordingText(input.text);
        break;
    case DemoInput::Size:
        line += " " + std::to_string(input.x) + " " + std::to_string(input.y);
        break;
    case DemoInput::Shot:
        line += " " + input.text;
        break;
    }
    return line;
}

bool CDemoRecording::Load(const std::string& path, std::string& error)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
    {
        error = path + ": cannot open";
        return false;
    }
    std::stringstream text;
    text << file.rdbuf();
    return Parse(text.str(), path, error);
}

bool CDemoRecording::Parse(const std::string& text, const std::string& name, std::string& error)
{
    m_vecInputs.clear();
    std::istringstream lines(text);
    std::string line;
    int number = 1;
    std::string reason;
    if (!std::getline(lines, line))
        line.clear();
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    bool ok = CheckHeader(line, reason);
    while (ok && std::getline(lines, line))
    {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#')
            continue;
        RecordedInput entry;
        ok = ParseEntry(line, entry, reason) &&
             (m_vecInputs.empty() || CheckOrder(m_vecInputs.back(), entry, reason));
        if (ok)
            m_vecInputs.push_back(std::move(entry));
    }
    if (ok)
        return true;
    m_vecInputs.clear();
    error = name + ":" + std::to_string(number) + ": " + reason;
    return false;
}

DWORD CDemoRecording::StartTime(DWORD fallback) const
{
    return m_vecInputs.empty() ? fallback : m_vecInputs.front().time;
}

bool CDemoRecording::GetInitialSize(int& width, int& height) const
{
    for (const RecordedInput& entry : m_vecInputs)
    {
        if (entry.frame != 0)
            break;
        if (entry.input.kind == DemoInput::Size)
        {
            width = entry.input.x;
            height = entry.input.y;
            return true;
        }
    }
    return false;
}
