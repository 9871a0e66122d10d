#include "platform/system/kernel/QzProfileFile.h"

#include "platform/system/text/QzTextCodecs.h"

#include <utility>

namespace QzPlatform
{

namespace
{

bool IsBlank(char value)
{
    return value == ' ' || value == '\t' || value == '\v' || value == '\f' || value == '\r' ||
           value == '\n';
}

std::string Trim(const std::string& text, size_t begin, size_t end)
{
    while (begin < end && IsBlank(text[begin]))
        ++begin;
    while (end > begin && IsBlank(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

std::string Trim(const std::string& text)
{
    return Trim(text, 0, text.size());
}

std::string TrimLeft(const std::string& text)
{
    size_t begin = 0;
    while (begin < text.size() && IsBlank(text[begin]))
        ++begin;
    return text.substr(begin);
}

bool IsLineBreak(char value)
{
    return value == '\r' || value == '\n';
}

} // namespace

CQzProfileFile::CQzProfileFile(std::string text, UINT codePage)
    : m_strText(std::move(text)), m_uCodePage(codePage)
{
    Parse();
}

std::string CQzProfileFile::Fold(const std::string& name) const
{
    std::string folded = name;
    for (size_t i = 0; i < folded.size(); ++i)
    {
        const auto value = static_cast<unsigned char>(folded[i]);
        if (IsLeadByteOf(m_uCodePage, value))
            ++i; // the trail byte is part of the character, never a letter
        else if (value >= 'A' && value <= 'Z')
            folded[i] = static_cast<char>(value - 'A' + 'a');
    }
    return folded;
}

void CQzProfileFile::Parse()
{
    m_vecSections.clear();
    m_mapSectionIndex.clear();
    const size_t pos = TextStart();
    m_vecSections.emplace_back();
    m_vecSections.back().headerNext = pos;
    ParseFrom(pos);
}

void CQzProfileFile::ParseFrom(size_t pos)
{
    const size_t size = m_strText.size();
    while (pos < size)
    {
        size_t end = pos;
        while (end < size && !IsLineBreak(m_strText[end]))
            ++end;
        size_t next = end;
        if (next < size && m_strText[next] == '\r')
            ++next;
        if (next < size && m_strText[next] == '\n' && (next == end || m_strText[end] == '\r'))
            ++next;
        ParseLine(pos, end, next);
        pos = next;
    }
    m_vecSections.back().end = size;
}

void CQzProfileFile::ParseLine(size_t begin, size_t end, size_t next)
{
    size_t first = begin;
    while (first < end && IsBlank(m_strText[first]))
        ++first;
    if (first == end || m_strText[first] == ';')
        return;
    if (m_strText[first] == '[')
    {
        size_t close = end - 1;
        while (close > first && m_strText[close] != ']')
            --close;
        if (close > first)
        {
            m_vecSections.back().end = begin;
            Section section;
            section.name = Trim(m_strText, first + 1, close);
            section.headerBegin = begin;
            section.headerNext = next;
            m_mapSectionIndex.emplace(Fold(section.name), m_vecSections.size());
            m_vecSections.push_back(std::move(section));
            return;
        }
    }
    Entry entry;
    size_t equals = first;
    while (equals < end && m_strText[equals] != '=')
        ++equals;
    const bool hasValue = equals < end;
    entry.name = Trim(m_strText, first, hasValue ? equals : end);
    entry.value = hasValue ? Trim(m_strText, equals + 1, end) : std::string();
    entry.hasValue = hasValue;
    entry.lineBegin = begin;
    entry.lineEnd = end;
    entry.nextLine = next;
    Section& section = m_vecSections.back();
    if (section.keyIndexed)
        section.keyIndex.emplace(Fold(entry.name), section.entries.size());
    section.entries.push_back(std::move(entry));
}

const std::unordered_map<std::string, size_t>&
CQzProfileFile::KeyIndexOf(const Section& section) const
{
    if (!section.keyIndexed)
    {
        for (size_t i = 0; i < section.entries.size(); ++i)
            section.keyIndex.emplace(Fold(section.entries[i].name), i);
        section.keyIndexed = true;
    }
    return section.keyIndex;
}

// The first section of each name, once the sections moved in the vector.
void CQzProfileFile::IndexSections()
{
    m_mapSectionIndex.clear();
    for (size_t i = 1; i < m_vecSections.size(); ++i)
        m_mapSectionIndex.emplace(Fold(m_vecSections[i].name), i);
}

const CQzProfileFile::Section* CQzProfileFile::FindSection(const std::string& name) const
{
    const auto found = m_mapSectionIndex.find(Fold(Trim(name)));
    return found == m_mapSectionIndex.end() ? nullptr : &m_vecSections[found->second];
}

const CQzProfileFile::Entry* CQzProfileFile::FindEntry(const std::string& section,
                                                       const std::string& key) const
{
    const Section* found = FindSection(section);
    if (!found)
        return nullptr;
    const auto& index = KeyIndexOf(*found);
    const auto entry = index.find(Fold(Trim(key)));
    return entry == index.end() ? nullptr : &found->entries[entry->second];
}

std::string CQzProfileFile::LineEnding() const
{
    const size_t breakAt = m_strText.find_first_of("\r\n");
    if (breakAt == std::string::npos)
        return "\r\n";
    if (m_strText[breakAt] == '\n')
        return "\n";
    const bool crlf = breakAt + 1 < m_strText.size() && m_strText[breakAt + 1] == '\n';
    return crlf ? "\r\n" : "\r";
}

void CQzProfileFile::Splice(size_t begin, size_t end, const std::string& replacement)
{
    m_strText.replace(begin, end - begin, replacement);
    Parse();
}

void CQzProfileFile::InsertLine(size_t position, const std::string& line)
{
    const std::string eol = LineEnding();
    const bool needBreak = position > 0 && !IsLineBreak(m_strText[position - 1]);
    Splice(position, position, (needBreak ? eol : std::string()) + line + eol);
}

// A line "key=value" that reads back as that key with that value: one line, not a header, not a
// comment, the name ending at its '='.
bool CQzProfileFile::IsPlainKeyLine(const std::string& key, const std::string& value)
{
    const auto breaks = [](const std::string& text)
    { return text.find_first_of("\r\n") != std::string::npos; };
    if (breaks(key) || breaks(value) || key.find('=') != std::string::npos)
        return false;
    return key.empty() || (key[0] != '[' && key[0] != ';');
}

// The `removed` bytes at `position` became `added` bytes: what lies after them moves. At the
// position itself, a replaced line keeps its place, and so does a line's pointer to the next
// line when a line is inserted there; the line that began there moves after the inserted one.
void CQzProfileFile::Shift(size_t position, size_t removed, size_t added)
{
    const auto move = [=](size_t& offset, bool pointsToNext)
    {
        if (offset > position || (offset == position && removed == 0 && !pointsToNext))
            offset = offset + added - removed;
    };
    for (Section& section : m_vecSections)
    {
        if (section.end < position)
            continue;
        move(section.headerBegin, false);
        move(section.headerNext, true);
        move(section.end, false);
        for (Entry& entry : section.entries)
        {
            move(entry.lineBegin, false);
            move(entry.lineEnd, false);
            move(entry.nextLine, true);
        }
    }
}

void CQzProfileFile::ReplaceValue(Entry& entry, const std::string& value)
{
    const std::string line = entry.name + "=" + value;
    const size_t length = entry.lineEnd - entry.lineBegin;
    m_strText.replace(entry.lineBegin, length, line);
    Shift(entry.lineBegin, length, line.size());
    entry.value = Trim(value);
    entry.hasValue = true;
}

// After the section's last key line, as InsertLine would put it.
void CQzProfileFile::AddKey(Section& section, const std::string& key, const std::string& value)
{
    const size_t position =
        section.entries.empty() ? section.headerNext : section.entries.back().nextLine;
    const std::string line = key + "=" + value + LineEnding();
    m_strText.insert(position, line);
    Shift(position, 0, line.size());
    Entry entry;
    entry.name = key;
    entry.value = Trim(value);
    entry.hasValue = true;
    entry.lineBegin = position;
    entry.lineEnd = position + key.size() + 1 + value.size();
    entry.nextLine = position + line.size();
    if (section.keyIndexed)
        section.keyIndex.emplace(Fold(key), section.entries.size());
    section.entries.push_back(std::move(entry));
}

// Lines added at the end are indexed on their own: the lines before them read as they did, but
// for a last line without a line break, which gets one and is read again.
void CQzProfileFile::AppendLines(const std::string& lines)
{
    const std::string eol = LineEnding();
    size_t pos = m_strText.size();
    if (!m_strText.empty() && !IsLineBreak(m_strText.back()))
    {
        pos = LastLineStart();
        ForgetLineAt(pos);
        m_strText += eol;
    }
    m_strText += lines + eol;
    ParseFrom(pos);
}

size_t CQzProfileFile::LastLineStart() const
{
    const size_t lastBreak = m_strText.find_last_of("\r\n");
    if (lastBreak != std::string::npos)
        return lastBreak + 1;
    return TextStart();
}

// The first line starts after a UTF-8 byte order mark.
size_t CQzProfileFile::TextStart() const
{
    return m_strText.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
}

// The header or key the line at `pos`, the text's last, made.
void CQzProfileFile::ForgetLineAt(size_t pos)
{
    if (m_vecSections.size() > 1 && m_vecSections.back().headerBegin == pos)
    {
        m_vecSections.pop_back();
        IndexSections();
        return;
    }
    Section& section = m_vecSections.back();
    if (section.entries.empty() || section.entries.back().lineBegin != pos)
        return;
    section.entries.pop_back();
    section.keyIndex.clear();
    section.keyIndexed = false;
}

bool CQzProfileFile::SetValue(const std::string& section, const std::string& key,
                              const std::string& value)
{
    const std::string newValue = TrimLeft(value);
    const Section* found = FindSection(section);
    if (!found)
    {
        AppendLines("[" + Trim(section) + "]" + LineEnding() + Trim(key) + "=" + newValue);
        return true;
    }
    const Entry* entry = FindEntry(section, key);
    if (entry && entry->hasValue && entry->value == newValue)
        return false;
    Section& target = m_vecSections[size_t(found - m_vecSections.data())];
    if (entry && IsPlainKeyLine(entry->name, newValue))
    {
        ReplaceValue(target.entries[size_t(entry - target.entries.data())], newValue);
        return true;
    }
    if (entry)
    {
        Splice(entry->lineBegin, entry->lineEnd, entry->name + "=" + newValue);
        return true;
    }
    const size_t position =
        found->entries.empty() ? found->headerNext : found->entries.back().nextLine;
    const bool atLineStart = position == 0 || IsLineBreak(m_strText[position - 1]);
    if (atLineStart && IsPlainKeyLine(Trim(key), newValue))
    {
        AddKey(target, Trim(key), newValue);
        return true;
    }
    InsertLine(position, Trim(key) + "=" + newValue);
    return true;
}

bool CQzProfileFile::DeleteKey(const std::string& section, const std::string& key)
{
    const Entry* entry = FindEntry(section, key);
    if (!entry)
        return false;
    Splice(entry->lineBegin, entry->nextLine, std::string());
    return true;
}

bool CQzProfileFile::DeleteSection(const std::string& section)
{
    const Section* found = FindSection(section);
    if (!found)
        return false;
    // The section's lines run from its header's line to the next header's line (or the end):
    // without them every other line reads as before, at its offset less theirs.
    const size_t begin = found->headerBegin;
    const size_t removed = found->end - begin;
    m_strText.erase(begin, removed);
    m_vecSections.erase(m_vecSections.begin() + (found - m_vecSections.data()));
    Shift(begin, removed, 0);
    IndexSections();
    return true;
}

} // namespace QzPlatform
