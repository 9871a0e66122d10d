#include "BundleCheck.h"

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace
{

// The files of ini/ that have a format of their own.
const char* const kTableFiles[] = {"GUI_EX.ini",      "Cursor.ini",      "AniGroup.ini",
                                   "Gui3DEffect.ini", "StringTable.ini", "font.ini"};
// The keys of a layout section the reader takes as integers.
const char* const kNumberKeys[] = {"x",           "y",           "w",          "h",
                                   "OffsetX",     "OffsetY",     "TipOffsetX", "TipOffsetY",
                                   "TextOffsetX", "TextOffsetY", "FontSize"};

std::string Trimmed(const std::string& line)
{
    size_t end = line.size();
    while (end > 0 && (line[end - 1] == '\r' || line[end - 1] == '\n' || line[end - 1] == ' ' ||
                       line[end - 1] == '\t'))
        --end;
    return line.substr(0, end);
}

// An integer as the readers take it: spaces before it, a sign, digits.
bool IsNumber(const std::string& value)
{
    size_t i = value.find_first_not_of(" \t");
    if (i == std::string::npos)
        return false;
    i += value[i] == '-' || value[i] == '+' ? 1 : 0;
    if (i == value.size())
        return false;
    for (; i < value.size(); ++i)
    {
        if (value[i] < '0' || value[i] > '9')
            return false;
    }
    return true;
}

bool IsNumberKey(const std::string& key)
{
    for (const char* name : kNumberKeys)
    {
        if (key == name)
            return true;
    }
    return false;
}

bool IsComment(const std::string& line)
{
    return line[0] == ';' || (line[0] == '/' && line.size() > 1 && line[1] == '/');
}

// One pass over a file's lines, section by section.
class CFileCheck
{
public:
    CFileCheck(const std::string& relative, std::vector<BundleError>& errors)
        : m_strFile(relative), m_bLayout(CBundleCheck::IsLayoutFile(relative)), m_errors(errors)
    {
    }

    void Line(int nLine, const std::string& raw)
    {
        const std::string line = Trimmed(raw);
        if (line.empty() || IsComment(line))
            return;
        if (line[0] == '[')
            Header(nLine, line);
        else if (m_bInSection)
            KeyLine(nLine, line);
    }

    void End() { EndSection(); }

private:
    void Add(int nLine, const char* message, const std::string& text)
    {
        if (m_nAdded++ >= CBundleCheck::kMaxErrors)
            return;
        m_errors.push_back({m_strFile, nLine, message, text.substr(0, CBundleCheck::kMaxText)});
    }

    void Header(int nLine, const std::string& line)
    {
        EndSection();
        if (line.back() != ']')
        {
            Add(nLine, "unclosed section header (no \"]\")", line);
            return;
        }
        int nParent = 0;
        int nCtrl = 0;
        char cEnd = 0;
        m_bInSection = m_bLayout &&
                       std::sscanf(line.c_str(), "[%d-%d%c", &nParent, &nCtrl, &cEnd) == 3 &&
                       cEnd == ']';
        m_nHeaderLine = nLine;
        m_strHeader = line;
        m_bWidth = false;
        m_bHeight = false;
    }

    void KeyLine(int nLine, const std::string& line)
    {
        const size_t equals = line.find('=');
        if (equals == std::string::npos || equals == 0 || equals + 1 == line.size())
            return;
        const std::string key = line.substr(0, equals);
        m_bWidth = m_bWidth || key == "w";
        m_bHeight = m_bHeight || key == "h";
        if (IsNumberKey(key) && !IsNumber(line.substr(equals + 1)))
            Add(nLine, "not a number", line);
    }

    void EndSection()
    {
        if (m_bInSection && (!m_bWidth || !m_bHeight))
            Add(m_nHeaderLine, "section without \"w\" or \"h\"", m_strHeader);
        m_bInSection = false;
    }

    std::string m_strFile;
    bool m_bLayout;
    std::vector<BundleError>& m_errors;
    bool m_bInSection = false;
    bool m_bWidth = false;
    bool m_bHeight = false;
    int m_nHeaderLine = 0;
    size_t m_nAdded = 0;
    std::string m_strHeader;
};

} // namespace

bool CBundleCheck::IsLayoutFile(const std::string& relative)
{
    if (relative.compare(0, 4, "ini/") != 0)
        return false;
    const std::string name = relative.substr(4);
    for (const char* table : kTableFiles)
    {
        if (name == table)
            return false;
    }
    return true;
}

void CBundleCheck::CheckText(const std::string& relative, const std::string& text,
                             std::vector<BundleError>& errors)
{
    CFileCheck check(relative, errors);
    std::istringstream lines(text);
    std::string line;
    for (int nLine = 1; std::getline(lines, line); ++nLine)
        check.Line(nLine, line);
    check.End();
}

void CBundleCheck::CheckFile(const std::string& root, const std::string& relative,
                             std::vector<BundleError>& errors)
{
    std::ifstream file(root + "/" + relative, std::ios::binary | std::ios::ate);
    if (!file)
    {
        errors.push_back({relative, 0, "cannot read the file", std::string()});
        return;
    }
    if (static_cast<uint64_t>(file.tellg()) > kMaxFileBytes)
    {
        errors.push_back({relative, 0, "file too large to check", std::string()});
        return;
    }
    file.seekg(0);
    std::ostringstream text;
    text << file.rdbuf();
    CheckText(relative, text.str(), errors);
}

std::string CBundleCheck::Format(const BundleError& error)
{
    std::string out = error.file;
    if (error.line > 0)
        out += ":" + std::to_string(error.line);
    out += ": " + error.message;
    if (!error.text.empty())
        out += ": " + error.text;
    return out;
}
