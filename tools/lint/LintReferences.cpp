#include "LintReferences.h"

#include "LintKeyTable.h"
#include "LintSpelling.h"

#include "framework/QzBackDrawer.h"
#include "layout/QzAniGroupReader.h"
#include "layout/QzCursorReader.h"
#include "platform/services/QzText.h"

#include <cstdio>

namespace QzLint
{

namespace
{

// Keys longer than this are cut when read; the linter reports them on their own.
constexpr size_t kMaxKey = 254;
// BackShowMode not given in a variant section: the base record's mode applies.
constexpr int kModeUnknown = -1;

const char* const kAniFile = "ani/Control.ani";

std::string Trim(const std::string& text)
{
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

template <typename Value> std::vector<std::string> KeysOf(const std::map<std::string, Value>& table)
{
    std::vector<std::string> keys;
    for (const auto& entry : table)
        keys.push_back(entry.first);
    return keys;
}

// The line a cursor's "cur" stands on: after the last header of the name, the first line that
// starts with "cur=" (the reader skips blanks before it).
int CursorLine(const CLintLineIndex& index, const std::string& name)
{
    int nHeader = 0;
    for (int nLine = 1; nLine <= index.GetCount(); ++nLine)
    {
        if (index.Lines()[static_cast<size_t>(nLine - 1)].rfind("[" + name + "]", 0) == 0)
            nHeader = nLine;
    }
    for (int nLine = nHeader + 1; nHeader != 0 && nLine <= index.GetCount(); ++nLine)
    {
        if (Trim(index.Lines()[static_cast<size_t>(nLine - 1)]).rfind("cur=", 0) == 0)
            return nLine;
    }
    return nHeader;
}

std::string LineText(const CLintLineIndex& index, int nLine)
{
    return nLine > 0 ? index.Lines()[static_cast<size_t>(nLine - 1)] : std::string();
}

} // namespace

void CLintReferences::Load(const std::string& aniPath, const std::string& groupPath,
                           const std::string& cursorPath)
{
    m_ani.Load(aniPath);
    m_mapGroups.clear();
    m_mapCursors.clear();
    if (!groupPath.empty())
        QzGui::CQzAniGroupReader::Read(groupPath.c_str(), m_mapGroups);
    if (!cursorPath.empty())
        QzGui::CQzCursorReader::Read(cursorPath.c_str(), m_mapCursors);
    m_vecGroupNames = KeysOf(m_mapGroups);
    m_vecCursorNames = KeysOf(m_mapCursors);
}

bool CLintReferences::IsLayoutHeader(const std::string& line, bool bVariant)
{
    if (line.empty() || line[0] != '[')
        return false;
    int first = 0;
    int second = 0;
    int third = 0;
    if (bVariant)
        return std::sscanf(line.c_str(), "[%d-%d-%d]", &first, &second, &third) == 3;
    return std::sscanf(line.c_str(), "[%d-%d]", &first, &second) == 2;
}

bool CLintReferences::IsComment(const std::string& line)
{
    return line.compare(0, 1, ";") == 0 || line.compare(0, 2, "//") == 0;
}

// Sections and key lines as the layout reader splits them: a line starting with "[" ends a
// section, the text before the first "=" is the key, the rest the value; lines without a key
// or a value change nothing.
void CLintReferences::CheckLayout(const CLintLineIndex& index, bool bVariant,
                                  const ReportProc& report) const
{
    bool bInSection = false;
    std::vector<KeyLine> keys;
    for (int nLine = 1; nLine <= index.GetCount(); ++nLine)
    {
        const std::string& line = index.Lines()[static_cast<size_t>(nLine - 1)];
        if (!line.empty() && line[0] == '[')
        {
            CheckSection(keys, bVariant, report);
            keys.clear();
            bInSection = IsLayoutHeader(line, bVariant);
            continue;
        }
        const size_t equals = line.find('=');
        if (!bInSection || IsComment(line) || equals == std::string::npos || equals == 0 ||
            equals + 1 == line.size())
            continue;
        keys.push_back({nLine, line.substr(0, equals), line.substr(equals + 1), line});
    }
    CheckSection(keys, bVariant, report);
}

// The section's last BackShowMode decides what AniSection names.
void CLintReferences::CheckSection(const std::vector<KeyLine>& keys, bool bVariant,
                                   const ReportProc& report) const
{
    int nBackShowMode = bVariant ? kModeUnknown : 0;
    for (const KeyLine& line : keys)
    {
        if (line.key == "BackShowMode")
            nBackShowMode = QzPlatform::TextToInt(line.value.c_str());
    }
    for (const KeyLine& line : keys)
        CheckKey(line, nBackShowMode, report);
}

void CLintReferences::CheckKey(const KeyLine& line, int nBackShowMode,
                               const ReportProc& report) const
{
    if (line.key.size() > kMaxKey)
        return;
    if (!CLintKeyTable::IsKnown(line.key))
    {
        report(line.nLine,
               "unknown key" + CLintSpelling::Hint(line.key, CLintKeyTable::AllKeys(), true),
               line.text);
        return;
    }
    if (line.key == "type" &&
        !CLintKeyTable::IsKnownType(QzPlatform::TextToInt(line.value.c_str())))
        report(line.nLine,
               "unknown control type (the library has types " + CLintKeyTable::DescribeTypes() +
                   ")",
               line.text);
    else if (line.key == "AniSection")
        CheckAniSection(line, nBackShowMode, report);
    else if (line.key == "TipAniSection" || line.key == "SelBackAni")
        CheckAniName(line, report);
    else if (line.key == "Cursor" && !m_mapCursors.count(line.value))
        report(line.nLine,
               "Cursor names no cursor of ini/Cursor.ini" +
                   CLintSpelling::Hint(line.value, m_vecCursorNames, true),
               line.text);
}

// A group of ini/AniGroup.ini in back mode 4, a section of ani/Control.ani otherwise; either
// when a variant section leaves the mode to its base record.
void CLintReferences::CheckAniSection(const KeyLine& line, int nBackShowMode,
                                      const ReportProc& report) const
{
    const bool bGroup = m_mapGroups.count(line.value) != 0;
    if (nBackShowMode == QzGui::QZ_BACK_GROUP)
    {
        if (!bGroup)
            report(line.nLine,
                   "AniSection names no group of ini/AniGroup.ini, as BackShowMode=4 wants" +
                       CLintSpelling::Hint(line.value, m_vecGroupNames, true),
                   line.text);
        return;
    }
    if (nBackShowMode == kModeUnknown && bGroup)
        return;
    CheckAniName(line, report);
}

void CLintReferences::CheckAniName(const KeyLine& line, const ReportProc& report) const
{
    if (m_ani.Has(line.value))
        return;
    report(line.nLine,
           line.key + " names no section of " + kAniFile +
               CLintSpelling::Hint(line.value, m_ani.Names(), false),
           line.text);
}

// Cursors drawn from an animation section (type 1) must name one.
void CLintReferences::CheckCursors(const CLintLineIndex& index, const ReportProc& report) const
{
    for (const auto& entry : m_mapCursors)
    {
        const QzGui::QzCursorEntry& cursor = entry.second;
        if (cursor.type != QzGui::QZ_CURSOR_TYPE_ANI || m_ani.Has(cursor.cursor))
            continue;
        const int nLine = CursorLine(index, cursor.name);
        report(nLine,
               std::string("cur names no section of ") + kAniFile +
                   CLintSpelling::Hint(cursor.cursor, m_ani.Names(), false),
               LineText(index, nLine));
    }
}

// Every piece of a group ("Section_N", N from 1 to Amount) names a section of ani/Control.ani;
// pieces without a section are reported together, at the group's Amount.
void CLintReferences::CheckGroups(const CLintLineIndex& index, const ReportProc& report) const
{
    for (const auto& entry : m_mapGroups)
    {
        const std::vector<QzGui::QzAniGroupPiece>& pieces = entry.second.pieces;
        std::string firstMissing;
        size_t nMissing = 0;
        for (size_t i = 0; i < pieces.size(); ++i)
        {
            const std::string key = "Section_" + std::to_string(i + 1);
            const std::string& section = pieces[i].section;
            if (section.empty() && nMissing++ == 0)
                firstMissing = key;
            if (section.empty() || m_ani.Has(section))
                continue;
            const int nLine = index.LocateProfileKey(entry.first, key);
            report(nLine,
                   key + " names no section of " + kAniFile +
                       CLintSpelling::Hint(section, m_ani.Names(), false),
                   LineText(index, nLine));
        }
        if (nMissing == 0)
            continue;
        const int nLine = index.LocateProfileKey(entry.first, "Amount");
        report(nLine,
               "group has no " + firstMissing +
                   (nMissing > 1 ? " and " + std::to_string(nMissing - 1) +
                                       (nMissing > 2 ? " more pieces" : " more piece")
                                 : ""),
               LineText(index, nLine));
    }
}

void CLintReferences::CheckImages(const std::string& root, const ReportProc& report) const
{
    m_ani.CheckImages(root, report);
}

} // namespace QzLint
