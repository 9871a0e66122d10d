#include "LintLineIndex.h"

#include <fstream>
#include <iterator>

namespace QzLint
{

namespace
{

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\r' || c == '\n';
}

std::string Trim(const std::string& text)
{
    size_t begin = 0;
    size_t end = text.size();
    while (begin < end && IsBlank(text[begin]))
        ++begin;
    while (end > begin && IsBlank(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

char FoldAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualNoCase(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
    {
        if (FoldAscii(a[i]) != FoldAscii(b[i]))
            return false;
    }
    return true;
}

// The name of a profile section header ("[name]", blanks around allowed, the last "]" closes
// it); false for any other line.
bool ProfileSectionName(const std::string& line, std::string* pName)
{
    const std::string trimmed = Trim(line);
    if (trimmed.empty() || trimmed[0] != '[')
        return false;
    const size_t close = trimmed.rfind(']');
    if (close == 0 || close == std::string::npos)
        return false;
    *pName = Trim(trimmed.substr(1, close - 1));
    return true;
}

} // namespace

bool CLintLineIndex::Load(const std::string& path)
{
    m_vecLines.clear();
    m_nLast = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    size_t start = 0;
    while (start < text.size())
    {
        size_t end = text.find('\n', start);
        const size_t next = end == std::string::npos ? text.size() : end + 1;
        if (end == std::string::npos)
            end = text.size();
        if (end > start && text[end - 1] == '\r')
            --end;
        m_vecLines.push_back(text.substr(start, end - start));
        start = next;
    }
    return true;
}

int CLintLineIndex::Locate(const std::string& text, const CandidateProc& isCandidate)
{
    int nLine = Search(text, isCandidate, true);
    if (nLine == 0)
        nLine = Search(text, nullptr, false);
    if (nLine != 0)
        m_nLast = nLine;
    return nLine;
}

// Forward from the line after the last one found, then backward from the last one found.
int CLintLineIndex::Search(const std::string& text, const CandidateProc& isCandidate,
                           bool bWhole) const
{
    const int nCount = GetCount();
    for (int nLine = m_nLast + 1; nLine <= nCount; ++nLine)
    {
        if ((!isCandidate || isCandidate(nLine)) && IsMatch(nLine, text, bWhole))
            return nLine;
    }
    for (int nLine = m_nLast; nLine >= 1; --nLine)
    {
        if ((!isCandidate || isCandidate(nLine)) && IsMatch(nLine, text, bWhole))
            return nLine;
    }
    return 0;
}

// Whole: the line as it is or trimmed on both sides. Otherwise the line holds the text (a
// piece of a long line, or a line behind a byte order mark).
bool CLintLineIndex::IsMatch(int nLine, const std::string& text, bool bWhole) const
{
    const std::string& line = m_vecLines[static_cast<size_t>(nLine - 1)];
    if (bWhole)
        return line == text || Trim(line) == Trim(text);
    return !text.empty() && line.find(text) != std::string::npos;
}

int CLintLineIndex::LocateProfileKey(const std::string& section, const std::string& key) const
{
    int nHeader = 0;
    for (int nLine = 1; nLine <= GetCount(); ++nLine)
    {
        std::string line = m_vecLines[static_cast<size_t>(nLine - 1)];
        // The profile functions read a file after its byte order mark.
        if (nLine == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0)
            line.erase(0, 3);
        std::string name;
        if (ProfileSectionName(line, &name))
        {
            if (nHeader != 0)
                break;
            if (EqualNoCase(name, Trim(section)))
                nHeader = nLine;
            continue;
        }
        const size_t equals = line.find('=');
        if (nHeader != 0 && equals != std::string::npos &&
            EqualNoCase(Trim(line.substr(0, equals)), key))
            return nLine;
    }
    return nHeader;
}

} // namespace QzLint
