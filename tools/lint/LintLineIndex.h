// The lines of one data file, read again after a reader reported a problem by the text of a
// line only, so that the report can name the line's number. Readers hand out a line as they
// held it: whole, trimmed, without its line ending, or a piece of a line longer than their
// buffer; the search accepts each of these.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace QzLint
{

class CLintLineIndex
{
public:
    // Tells whether the line of that number (from 1) may be the one a report names.
    using CandidateProc = std::function<bool(int nLine)>;

    // False when the file cannot be read; the index is empty then.
    bool Load(const std::string& path);
    // The file's lines without their line endings ("\n" or "\r\n").
    const std::vector<std::string>& Lines() const { return m_vecLines; }
    int GetCount() const { return static_cast<int>(m_vecLines.size()); }

    // The number (from 1) of the line a reported text came from; 0 when no line holds it.
    // Reports mostly follow the file: the search goes forward from the line found last, then
    // back from it (a reader that checks a section when it ends reports earlier lines), and
    // only then settles for a line that merely contains the text.
    int Locate(const std::string& text, const CandidateProc& isCandidate = nullptr);
    // The line of the key in the profile section (both without regard to ASCII case, the first
    // section and key of the name as the profile functions take them); the header's line when
    // the section lacks the key; 0 without the section.
    int LocateProfileKey(const std::string& section, const std::string& key) const;

private:
    int Search(const std::string& text, const CandidateProc& isCandidate, bool bWhole) const;
    bool IsMatch(int nLine, const std::string& text, bool bWhole) const;

    std::vector<std::string> m_vecLines;
    int m_nLast = 0;
};

} // namespace QzLint
