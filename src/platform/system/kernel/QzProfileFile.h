// One profile (INI) file in memory: its bytes as read and an index of its sections and keys.
// Edits change the bytes of the affected lines only, so that everything else of the file stays
// as it was, and then index the text again; a key line given a new value or added to a section
// moves the offsets after it instead (a layout written back is a key at a time).
//
// Reading rules (those of Windows): lines end with CR LF, LF or CR; blanks around names and
// values are ignored; a line whose first non-blank character is ';' is a comment; "[name]"
// starts a section (the last ']' closes the name; a line without one is an ordinary line);
// lines before the first section belong to no section; a line without '=' is a key without a
// value; names compare without regard to the case of ASCII letters (never inside a
// double-byte character); when a section or a key appears twice, the first one counts.
#pragma once

#include "platform/system/QzWinTypes.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace QzPlatform
{

class CQzProfileFile
{
public:
    struct Entry
    {
        std::string name;  // trimmed
        std::string value; // trimmed, quotes kept
        bool hasValue = false;
        size_t lineBegin = 0;
        size_t lineEnd = 0;  // end of the line's text, before its line ending
        size_t nextLine = 0; // start of the following line
    };

    struct Section
    {
        std::string name;
        size_t headerBegin = 0;
        size_t headerNext = 0; // start of the line after the header
        size_t end = 0;        // start of the next section's header, or the end of the text
        std::vector<Entry> entries;
        // Folded name -> first entry, made when a key of the section is first looked up (most
        // sections of a file read once are never searched by key).
        mutable std::unordered_map<std::string, size_t> keyIndex;
        mutable bool keyIndexed = false;
    };

    // codePage: the ANSI code page, which tells lead bytes apart when names are compared.
    CQzProfileFile(std::string text, UINT codePage);

    const std::string& Text() const { return m_strText; }
    UINT CodePage() const { return m_uCodePage; }
    const std::vector<Section>& Sections() const { return m_vecSections; }

    const Section* FindSection(const std::string& name) const;
    const Entry* FindEntry(const std::string& section, const std::string& key) const;

    // Edits; each returns whether the text changed. SetValue replaces the first such key's
    // line, or adds the key after the section's last key line, or adds the section at the end.
    bool SetValue(const std::string& section, const std::string& key, const std::string& value);
    bool DeleteKey(const std::string& section, const std::string& key);
    bool DeleteSection(const std::string& section);

private:
    void Parse();
    // Indexes the lines from `pos` (a line's start) to the end of the text, after those indexed.
    void ParseFrom(size_t pos);
    void ParseLine(size_t begin, size_t end, size_t next);
    const std::unordered_map<std::string, size_t>& KeyIndexOf(const Section& section) const;
    void IndexSections();
    void AppendLines(const std::string& lines);
    size_t LastLineStart() const;
    size_t TextStart() const;
    void ForgetLineAt(size_t pos);
    void Splice(size_t begin, size_t end, const std::string& replacement);
    void InsertLine(size_t position, const std::string& line);
    static bool IsPlainKeyLine(const std::string& key, const std::string& value);
    void ReplaceValue(Entry& entry, const std::string& value);
    void AddKey(Section& section, const std::string& key, const std::string& value);
    void Shift(size_t position, size_t removed, size_t added);
    std::string LineEnding() const;
    std::string Fold(const std::string& name) const;

    std::string m_strText;
    UINT m_uCodePage;
    std::vector<Section> m_vecSections; // [0] holds the lines before the first header
    std::unordered_map<std::string, size_t> m_mapSectionIndex; // folded name -> first section
};

} // namespace QzPlatform
