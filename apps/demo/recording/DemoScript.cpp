#include "DemoScript.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace
{

const int kShift = 0x10;
const int kControl = 0x11;

int KeyFromName(const std::string& name)
{
    static const std::map<std::string, int> keys = {
        {"BACK", 0x08},   {"TAB", 0x09},   {"RETURN", 0x0D}, {"SHIFT", 0x10}, {"CONTROL", 0x11},
        {"ESCAPE", 0x1B}, {"SPACE", 0x20}, {"PRIOR", 0x21},  {"NEXT", 0x22},  {"END", 0x23},
        {"HOME", 0x24},   {"LEFT", 0x25},  {"UP", 0x26},     {"RIGHT", 0x27}, {"DOWN", 0x28},
        {"DELETE", 0x2E}, {"F1", 0x70},    {"F2", 0x71},     {"F3", 0x72},    {"F4", 0x73},
        {"F5", 0x74},
    };
    auto found = keys.find(name);
    if (found != keys.end())
        return found->second;
    // A letter or a digit is its own virtual key.
    if (name.size() == 1 &&
        ((name[0] >= 'A' && name[0] <= 'Z') || (name[0] >= '0' && name[0] <= '9')))
        return name[0];
    char* end = nullptr;
    long value = std::strtol(name.c_str(), &end, 0);
    return (end && *end == 0 && value > 0 && value < 256) ? static_cast<int>(value) : 0;
}

} // namespace

bool CDemoScript::Load(const std::string& path, std::string& error)
{
    std::ifstream file(path);
    if (!file)
    {
        error = path + ": cannot open";
        return false;
    }
    std::stringstream text;
    text << file.rdbuf();
    return Parse(text.str(), path, error);
}

bool CDemoScript::Parse(const std::string& text, const std::string& name, std::string& error)
{
    m_vecSteps.clear();
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#')
            continue;
        DemoStep step;
        if (!ParseLine(line.substr(first), step))
        {
            error = name + ":" + std::to_string(number) + ": cannot read \"" + line + "\"";
            return false;
        }
        m_vecSteps.push_back(step);
    }
    return true;
}

bool CDemoScript::ParseLine(const std::string& line, DemoStep& step) const
{
    static const std::map<std::string, DemoStep::Kind> kinds = {
        {"frame", DemoStep::Frame},     {"wait", DemoStep::Wait},   {"move", DemoStep::Move},
        {"down", DemoStep::Down},       {"up", DemoStep::Up},       {"rdown", DemoStep::RDown},
        {"rup", DemoStep::RUp},         {"click", DemoStep::Click}, {"wheel", DemoStep::Wheel},
        {"key", DemoStep::Key},         {"char", DemoStep::Char},   {"shot", DemoStep::Shot},
        {"compose", DemoStep::Compose}, {"ime", DemoStep::Ime},     {"reload", DemoStep::Reload},
    };
    std::istringstream words(line);
    std::string verb;
    words >> verb;
    auto kind = kinds.find(verb);
    if (kind == kinds.end())
        return false;
    step.kind = kind->second;
    switch (step.kind)
    {
    case DemoStep::Frame:
        step.value = 1;
        words >> step.value;
        return step.value > 0 && step.value <= 100000;
    case DemoStep::Wait:
        return static_cast<bool>(words >> step.value) && step.value >= 0;
    case DemoStep::Wheel:
        return static_cast<bool>(words >> step.x >> step.y >> step.value);
    case DemoStep::Key:
    {
        std::string name;
        words >> name;
        const size_t plus = name.find('+');
        if (plus != std::string::npos)
        {
            step.modifier = KeyFromName(name.substr(0, plus));
            name = name.substr(plus + 1);
            if (step.modifier != kControl && step.modifier != kShift)
                return false;
        }
        step.value = KeyFromName(name);
        return step.value != 0;
    }
    case DemoStep::Char:
    case DemoStep::Compose:
    case DemoStep::Ime:
    {
        size_t space = line.find(' ');
        step.text = space == std::string::npos ? "" : line.substr(space + 1);
        return !step.text.empty();
    }
    case DemoStep::Shot:
        return static_cast<bool>(words >> step.text) && step.text.find('/') == std::string::npos;
    case DemoStep::Reload:
        return true;
    default:
        return static_cast<bool>(words >> step.x >> step.y);
    }
}
