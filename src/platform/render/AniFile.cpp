#include "platform/render/AniFile.h"

#include "platform/services/QzFile.h"
#include "platform/services/QzLog.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <iterator>
#include <sstream>

namespace QzPlatform
{

namespace
{

std::string Trim(const std::string& text)
{
    const char* blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return std::string();
    const size_t last = text.find_last_not_of(blanks);
    return text.substr(first, last - first + 1);
}

std::string ToLower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool StartsWith(const std::string& text, const char* prefix)
{
    return text.compare(0, std::char_traits<char>::length(prefix), prefix) == 0;
}

// A whole decimal integer (optional '-'), nothing else.
bool ParseInt(const std::string& text, int& value)
{
    if (text.empty())
        return false;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

// The frame index after "frame" or "kind": digits only.
bool ParseIndex(const std::string& digits, int& index)
{
    if (digits.empty() || digits.size() > 9)
        return false;
    if (!std::all_of(digits.begin(), digits.end(),
                     [](unsigned char c) { return std::isdigit(c) != 0; }))
        return false;
    return ParseInt(digits, index);
}

// "path" or "path x y w h" with a non-negative corner and a positive size.
bool ParseFrameValue(const std::string& value, AniFrameSpec& frame)
{
    std::istringstream stream(value);
    std::vector<std::string> tokens{std::istream_iterator<std::string>(stream),
                                    std::istream_iterator<std::string>()};
    if (tokens.size() != 1 && tokens.size() != 5)
        return false;
    frame.path = tokens[0];
    if (tokens.size() == 1)
        return true;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (!ParseInt(tokens[1], x) || !ParseInt(tokens[2], y) || !ParseInt(tokens[3], width) ||
        !ParseInt(tokens[4], height))
        return false;
    if (x < 0 || y < 0 || width <= 0 || height <= 0)
        return false;
    if (width > INT_MAX - x || height > INT_MAX - y)
        return false;
    frame.hasRect = true;
    frame.rect.left = x;
    frame.rect.top = y;
    frame.rect.right = x + width;
    frame.rect.bottom = y + height;
    return true;
}

struct IndexedLine
{
    int index = 0;
    std::string line;
};

} // namespace

// The section being read: its lines are checked one by one, and against FrameAmount once the
// section ends (FrameAmount may come after the frames).
struct CAniFile::ParseState
{
    enum class Amount
    {
        Missing,
        Bad,
        Good,
    };

    explicit ParseState(const std::string& file) : fileName(file) {}

    const std::string& fileName;
    bool inSection = false;
    bool skipping = false; // after a broken or repeated header, until the next header
    std::string key;
    std::string headerLine;
    bool broken = false;
    Amount amount = Amount::Missing;
    int frameAmount = 0;
    std::map<int, AniFrameSpec> frames;
    std::map<int, int> kinds;
    std::vector<IndexedLine> indexLines; // every FrameN and KindN line
};

bool CAniFile::Load(const std::string& fileName)
{
    m_mapSections.clear();
    m_nErrorCount = 0;
    std::string text;
    if (!ReadWholeFile(fileName, &text))
    {
        LogEvent("open file failed", "AniFile", __LINE__, {LogText("file_name", fileName.c_str())});
        return false;
    }
    Parse(fileName, text);
    return true;
}

void CAniFile::Parse(const std::string& fileName, const std::string& text)
{
    m_mapSections.clear();
    m_nErrorCount = 0;
    ParseState state{fileName};
    size_t start = StartsWith(text, "\xEF\xBB\xBF") ? 3 : 0;
    while (start <= text.size())
    {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        ParseLine(state, text.substr(start, end - start));
        start = end + 1;
    }
    EndSection(state);
}

const AniSectionSpec* CAniFile::FindSection(const std::string& name) const
{
    const auto found = m_mapSections.find(ToLower(name));
    if (found == m_mapSections.end() || !found->second.usable)
        return nullptr;
    return &found->second.desc;
}

void CAniFile::ParseLine(ParseState& state, const std::string& rawLine)
{
    const std::string line = Trim(rawLine);
    if (line.empty() || line[0] == ';' || line[0] == '#')
        return;
    if (line[0] == '[')
    {
        EndSection(state);
        BeginSection(state, line);
        return;
    }
    if (state.skipping)
        return;
    if (!state.inSection)
    {
        ReportError(state, line);
        return;
    }
    ParseKey(state, line);
}

void CAniFile::BeginSection(ParseState& state, const std::string& line)
{
    const std::string name = line.back() == ']' ? Trim(line.substr(1, line.size() - 2)) : "";
    const std::string key = ToLower(name);
    if (name.empty() || m_mapSections.count(key) != 0)
    {
        ReportError(state, line);
        state.skipping = true;
        return;
    }
    state.skipping = false;
    state.inSection = true;
    state.key = key;
    state.headerLine = line;
    state.broken = false;
    state.amount = ParseState::Amount::Missing;
    state.frameAmount = 0;
    state.frames.clear();
    state.kinds.clear();
    state.indexLines.clear();
    // Reserve the name now, so that a later header with the same name is a repeat.
    m_mapSections[key].desc.name = name;
}

void CAniFile::ParseKey(ParseState& state, const std::string& line)
{
    const size_t equals = line.find('=');
    if (equals == std::string::npos)
    {
        ReportError(state, line);
        return;
    }
    const std::string key = ToLower(Trim(line.substr(0, equals)));
    const std::string value = Trim(line.substr(equals + 1));
    int index = 0;
    if (key == "frameamount")
    {
        int amount = 0;
        if (state.amount != ParseState::Amount::Missing || !ParseInt(value, amount) || amount < 0 ||
            amount > kMaxFrameAmount)
        {
            state.amount = ParseState::Amount::Bad;
            ReportError(state, line);
            return;
        }
        state.amount = ParseState::Amount::Good;
        state.frameAmount = amount;
    }
    else if (StartsWith(key, "frame"))
    {
        AniFrameSpec frame;
        if (!ParseIndex(key.substr(5), index) || state.frames.count(index) != 0 ||
            !ParseFrameValue(value, frame))
        {
            ReportError(state, line);
            return;
        }
        state.frames[index] = frame;
        state.indexLines.push_back({index, line});
    }
    else if (StartsWith(key, "kind"))
    {
        int kind = 0;
        if (!ParseIndex(key.substr(4), index) || state.kinds.count(index) != 0 ||
            !ParseInt(value, kind) || kind < 0)
        {
            ReportError(state, line);
            return;
        }
        state.kinds[index] = kind;
        state.indexLines.push_back({index, line});
    }
    // Other keys are left for other readers of the file and ignored here.
}

void CAniFile::EndSection(ParseState& state)
{
    if (!state.inSection)
        return;
    state.inSection = false;
    // Without a valid FrameAmount the indices cannot be checked; the one error is enough.
    if (state.amount == ParseState::Amount::Missing)
        ReportError(state, state.headerLine);
    for (const IndexedLine& indexed : state.indexLines)
    {
        if (state.amount == ParseState::Amount::Good && indexed.index >= state.frameAmount)
            ReportError(state, indexed.line);
    }
    Entry& entry = m_mapSections[state.key];
    entry.usable = !state.broken;
    if (!entry.usable)
        return;
    entry.desc.frames.resize(static_cast<size_t>(state.frameAmount));
    for (const auto& frame : state.frames)
        entry.desc.frames[static_cast<size_t>(frame.first)] = frame.second;
    for (const auto& kind : state.kinds)
        entry.desc.frames[static_cast<size_t>(kind.first)].kind = kind.second;
}

void CAniFile::ReportError(ParseState& state, const std::string& line)
{
    state.broken = true;
    ++m_nErrorCount;
    LogEvent("data error", "AniFile", __LINE__,
             {LogText("file_name", state.fileName.c_str()), LogText("line", line.c_str())});
}

} // namespace QzPlatform
