#include "CMonkeyEvent.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace QzMonkey
{

namespace
{

struct KindInfo
{
    const char* pszName;
    const char* keys[3]; // the names of the values; null past the last
    bool bText;
};

const KindInfo kKinds[] = {
    {"move", {"x", "y", "keys"}, false},
    {"ldown", {"x", "y", "keys"}, false},
    {"lup", {"x", "y", "keys"}, false},
    {"ldouble", {"x", "y", "keys"}, false},
    {"rdown", {"x", "y", "keys"}, false},
    {"rup", {"x", "y", "keys"}, false},
    {"rdouble", {"x", "y", "keys"}, false},
    {"mdown", {"x", "y", "keys"}, false},
    {"mup", {"x", "y", "keys"}, false},
    {"wheel", {"x", "y", "delta"}, false},
    {"keydown", {"vk", "ctrl", "shift"}, false},
    {"keyup", {"vk", "ctrl", "shift"}, false},
    {"char", {"code"}, false},
    {"ime-compose", {}, true},
    {"ime-result", {}, true},
    {"clipboard", {}, true},
    {"paste", {}, false},
    {"show", {"dialog"}, false},
    {"hide", {"dialog"}, false},
    {"reload", {"variant"}, false},
    {"reload-dialog", {"dialog", "variant"}, false},
    {"add-dialog", {"dialog"}, false},
    {"remove-dialog", {"dialog"}, false},
    {"create-ctrl", {"dialog", "slot", "kind"}, false},
    {"destroy-ctrl", {"dialog", "slot"}, false},
    {"focus", {"dialog", "ctrl"}, false},
    {"frames", {"count"}, false},
    {"clock", {"ms"}, false},
    {"purge", {}, false},
};
static_assert(sizeof(kKinds) / sizeof(kKinds[0]) == static_cast<size_t>(EventKind::Count),
              "a name for every event kind");

const char* const kCtrlKindNames[] = {"button", "check",    "static",  "image", "scroll",
                                      "slider", "progress", "marquee", "list",  "tree",
                                      "grid",   "edit",     "editex"};
static_assert(sizeof(kCtrlKindNames) / sizeof(kCtrlKindNames[0]) ==
                  static_cast<size_t>(CtrlKind::Count),
              "a name for every control kind");

const KindInfo& InfoOf(EventKind kind)
{
    return kKinds[static_cast<size_t>(kind)];
}

std::string Escape(const std::string& text)
{
    std::string out;
    for (unsigned char ch : text)
    {
        if (ch >= 0x20 && ch < 0x7F && ch != '"' && ch != '\\')
        {
            out += static_cast<char>(ch);
            continue;
        }
        char hex[8];
        std::snprintf(hex, sizeof(hex), "\\x%02X", ch);
        out += hex;
    }
    return out;
}

// The text between the quotes at pos, escapes undone; false when it is not closed.
bool Unescape(const std::string& line, size_t pos, std::string& text)
{
    for (size_t i = pos; i < line.size(); ++i)
    {
        if (line[i] == '"')
            return true;
        if (line[i] != '\\')
        {
            text += line[i];
            continue;
        }
        if (i + 3 >= line.size() || line[i + 1] != 'x')
            return false;
        text += static_cast<char>(std::strtol(line.substr(i + 2, 2).c_str(), nullptr, 16));
        i += 3;
    }
    return false;
}

bool ParseValue(const std::string& key, const std::string& value, int& out)
{
    if (key == "kind")
    {
        for (size_t i = 0; i < static_cast<size_t>(CtrlKind::Count); ++i)
        {
            if (value == kCtrlKindNames[i])
            {
                out = static_cast<int>(i);
                return true;
            }
        }
        return false;
    }
    char* pEnd = nullptr;
    const long n = std::strtol(value.c_str(), &pEnd, 10);
    out = static_cast<int>(n);
    return !value.empty() && *pEnd == '\0';
}

std::optional<EventKind> KindNamed(const std::string& name)
{
    for (size_t i = 0; i < static_cast<size_t>(EventKind::Count); ++i)
    {
        if (name == kKinds[i].pszName)
            return static_cast<EventKind>(i);
    }
    return std::nullopt;
}

// "key=value" into the value of that key's place.
bool ParsePair(const KindInfo& info, const std::string& token, int values[3], std::string* pError)
{
    const size_t eq = token.find('=');
    const std::string key = token.substr(0, eq);
    for (int i = 0; i < 3 && info.keys[i]; ++i)
    {
        if (key != info.keys[i])
            continue;
        if (eq != std::string::npos && ParseValue(key, token.substr(eq + 1), values[i]))
            return true;
        break;
    }
    if (pError)
        *pError = "bad value \"" + token + "\"";
    return false;
}

} // namespace

const char* CtrlKindName(CtrlKind kind)
{
    return kCtrlKindNames[static_cast<size_t>(kind) % static_cast<size_t>(CtrlKind::Count)];
}

std::string CMonkeyEvent::Format() const
{
    const KindInfo& info = InfoOf(m_kind);
    std::string line = info.pszName;
    for (int i = 0; i < 3 && info.keys[i]; ++i)
    {
        line += ' ';
        line += info.keys[i];
        line += '=';
        if (std::strcmp(info.keys[i], "kind") == 0)
            line += CtrlKindName(static_cast<CtrlKind>(m_values[i]));
        else
            line += std::to_string(m_values[i]);
    }
    if (info.bText)
        line += " text=\"" + Escape(m_text) + "\"";
    return line;
}

std::optional<CMonkeyEvent> CMonkeyEvent::Parse(const std::string& line, std::string* pError)
{
    std::istringstream in(line);
    std::string name;
    in >> name;
    const std::optional<EventKind> kind = KindNamed(name);
    if (!kind)
    {
        if (pError)
            *pError = "no event named \"" + name + "\"";
        return std::nullopt;
    }
    const KindInfo& info = InfoOf(*kind);
    int values[3] = {0, 0, 0};
    std::string text;
    const size_t quote = line.find("text=\"");
    if (info.bText && (quote == std::string::npos || !Unescape(line, quote + 6, text)))
    {
        if (pError)
            *pError = "no closed text=\"...\"";
        return std::nullopt;
    }
    std::istringstream pairs(line.substr(0, quote));
    pairs >> name;
    std::string token;
    while (pairs >> token)
    {
        if (!ParsePair(info, token, values, pError))
            return std::nullopt;
    }
    return CMonkeyEvent(*kind, values[0], values[1], values[2], text);
}

bool ReadEvents(const std::string& text, std::vector<CMonkeyEvent>& events, std::string& error)
{
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number)
    {
        const size_t start = line.find_first_not_of(" \t\r");
        if (start == std::string::npos || line[start] == '#')
            continue;
        std::string why;
        std::optional<CMonkeyEvent> event = CMonkeyEvent::Parse(line.substr(start), &why);
        if (!event)
        {
            error = "line " + std::to_string(number) + ": " + why;
            return false;
        }
        events.push_back(std::move(*event));
    }
    return true;
}

} // namespace QzMonkey
