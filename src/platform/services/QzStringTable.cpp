// The table file is optional: a game may ship none, and then every look-up gives the empty
// text without a log record. Lines are "id=text"; blank lines and lines starting with ';' or
// '#' are skipped; the id is decimal (blanks around it allowed); the text is everything after
// the first '=' up to the line end, kept as bytes ("\n" stays two characters). A later line
// with the same id replaces the earlier one; a line without '=' or with a bad id is a data
// error and is skipped.
#include "platform/services/QzStringTable.h"

#include "platform/services/QzFile.h"
#include "platform/services/QzLog.h"
#include "platform/services/QzText.h"

#include <sstream>
#include <string>
#include <unordered_map>

namespace QzPlatform
{

namespace
{

const char* const kTableFile = "ini/StringTable.ini";

struct StringTable
{
    bool bLoaded = false;
    std::unordered_map<uint32_t, std::string> mapTexts;
};

StringTable& Table()
{
    // Never destroyed: a host may release its windows from an exit handler.
    static StringTable& table = *new StringTable;
    return table;
}

std::string TrimBlanks(std::string text)
{
    TrimText(text);
    return text;
}

// Decimal id of at most 32 bits; false for anything else (empty, signs, letters, overflow).
bool ParseId(const std::string& text, uint32_t& id)
{
    if (text.empty())
        return false;
    uint64_t value = 0;
    for (char c : text)
    {
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + static_cast<uint64_t>(c - '0');
        if (value > 0xFFFFFFFFull)
            return false;
    }
    id = static_cast<uint32_t>(value);
    return true;
}

void StripLineEnd(std::string& line)
{
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n'))
        line.pop_back();
}

void ParseLine(const std::string& line, StringTable& table)
{
    const std::string trimmed = TrimBlanks(line);
    if (trimmed.empty() || trimmed[0] == ';' || trimmed[0] == '#')
        return;
    const size_t equals = line.find('=');
    uint32_t id = 0;
    if (equals == std::string::npos || !ParseId(TrimBlanks(line.substr(0, equals)), id))
    {
        LogEvent("data error", "QzStringTable", __LINE__,
                 {LogText("file_name", kTableFile), LogText("line", line.c_str())});
        return;
    }
    table.mapTexts[id] = line.substr(equals + 1);
}

void Load(StringTable& table)
{
    table.bLoaded = true;
    table.mapTexts.clear();
    std::string bytes;
    if (!ReadWholeFile(kTableFile, &bytes))
        return;
    std::istringstream file(bytes);
    std::string line;
    bool first = true;
    while (std::getline(file, line))
    {
        StripLineEnd(line);
        if (first && line.compare(0, 3, "\xEF\xBB\xBF") == 0)
            line.erase(0, 3);
        first = false;
        ParseLine(line, table);
    }
}

} // namespace

const char* GetTableString(uint32_t id)
{
    StringTable& table = Table();
    if (!table.bLoaded)
        Load(table);
    const auto found = table.mapTexts.find(id);
    return found == table.mapTexts.end() ? "" : found->second.c_str();
}

void ReloadStringTable()
{
    StringTable& table = Table();
    table.bLoaded = false;
    table.mapTexts.clear();
}

} // namespace QzPlatform
