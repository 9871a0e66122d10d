#include "BundleLinter.h"

#include "LintLineIndex.h"
#include "LintReferences.h"

#include "effects/GuiEffectInfo.h"
#include "layout/QzAniGroupReader.h"
#include "layout/QzCursorReader.h"
#include "layout/QzGuiWndInfo.h"
#include "layout/QzLayoutReader.h"
#include "layout/QzRegionReader.h"
#include "platform/render/AniFile.h"
#include "platform/system/QzSystem.h"
#include "platform/system/kernel/QzPathResolve.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace QzLint
{

namespace
{

namespace fs = std::filesystem;

constexpr size_t kMaxKey = 254;
constexpr size_t kMaxValue = 255;
constexpr size_t kMaxLine = QzGui::CQzLayoutReader::kMaxLine;
// The section-name buffer of the group reader: the groups it reads, and in that order.
constexpr DWORD kSectionNamesSize = 32767;

// Files of ini/ that have their own format; every other file with "[parent-ctrl]" sections is
// a layout file.
const char* const kAuxiliaryFiles[] = {"GUI_EX.ini",      "Cursor.ini",      "AniGroup.ini",
                                       "Gui3DEffect.ini", "StringTable.ini", "font.ini"};
const char* const kVariantPrefix = "guilogic";
const char* const kUnclosedHeader = "unclosed section header (no \"]\")";
const char* const kDataError = "data error";

const char* const kUsage =
    "usage: qzgui-lint BUNDLE_DIR\n"
    "Checks the layout, variant, GUI_EX, Cursor, AniGroup, Rgn.dat, Gui3DEffect and\n"
    "ani/Control.ani files of a bundle folder (keys, window types, the animation sections,\n"
    "groups, cursors and images they name, section headers) and prints every data error with\n"
    "its file and line. Exit status: 0 clean, 1 errors found, 2 usage or missing folder.\n";

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c)
                   { return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); });
    return text;
}

std::string FileName(const std::string& relative)
{
    return fs::path(relative).filename().string();
}

bool IsVariantFile(const std::string& relative)
{
    return Lower(FileName(relative)).rfind(kVariantPrefix, 0) == 0;
}

bool IsAuxiliaryFile(const std::string& relative)
{
    const std::string name = Lower(FileName(relative));
    return std::any_of(std::begin(kAuxiliaryFiles), std::end(kAuxiliaryFiles),
                       [&](const char* pszAux) { return name == Lower(pszAux); });
}

bool IsSectionHeader(const std::string& line, bool bVariant)
{
    return CLintReferences::IsLayoutHeader(line, bVariant);
}

bool IsComment(const std::string& line)
{
    return CLintReferences::IsComment(line);
}

// A line that opens a section ("[" first, blanks and a byte order mark before it allowed) and
// never closes it.
bool IsUnclosedHeader(const std::string& line, bool bFirst)
{
    const size_t start =
        line.find_first_not_of(" \t", bFirst && line.rfind("\xEF\xBB\xBF", 0) == 0 ? 3 : 0);
    return start != std::string::npos && line[start] == '[' &&
           line.find(']', start) == std::string::npos;
}

uint32_t LittleEndianDword(const std::string& bytes, size_t offset)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= static_cast<uint32_t>(static_cast<unsigned char>(bytes[offset + i])) << (8 * i);
    return value;
}

// Where a region file the reader gave up on is cut short: its entries walked by their sizes.
std::string DescribeRegionCut(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string size = " (the file has " + std::to_string(bytes.size()) + " bytes)";
    if (bytes.size() < 4)
        return "no entry count" + size;
    const uint32_t nCount = LittleEndianDword(bytes, 0) & 0xFFFF;
    uint64_t offset = 4;
    for (uint32_t i = 0; i < nCount; ++i)
    {
        const uint64_t dataSize =
            offset + 16 <= bytes.size() ? LittleEndianDword(bytes, offset + 8) : 0;
        if (offset + 16 + dataSize > bytes.size())
            return "entry " + std::to_string(i + 1) + " of " + std::to_string(nCount) +
                   " is cut short at byte " + std::to_string(offset) + size;
        offset += 16 + dataSize;
    }
    return "cut short" + size;
}

} // namespace

bool CBundleLinter::Run(const std::string& bundleDir)
{
    m_vecFindings.clear();
    std::error_code error;
    if (bundleDir.empty() || !fs::is_directory(bundleDir, error))
        return false;
    m_strRoot = fs::absolute(bundleDir, error).lexically_normal().string();
    if (!m_strRoot.empty() && m_strRoot.back() == '/')
        m_strRoot.pop_back();
    m_setChecked.clear();
    QzPlatform::SetLogSink(this);
    // The names references lead to; the readers' reports come again when each file is checked.
    m_references.Load(PathOf(FindFile("ani/Control.ani")), PathOf(FindFile("ini/AniGroup.ini")),
                      PathOf(FindFile("ini/Cursor.ini")));
    m_vecRecords.clear();
    const std::vector<std::string> iniFiles = ListFiles("ini", ".ini");
    for (const std::string& relative : iniFiles)
    {
        if (!IsVariantFile(relative) && !IsAuxiliaryFile(relative))
            Check(relative, [&] { CheckLayoutFile(relative, false, kDataError); });
    }
    for (const std::string& relative : iniFiles)
    {
        if (IsVariantFile(relative))
            Check(relative, [&] { CheckLayoutFile(relative, true, kDataError); });
    }
    const std::string extended = FindFile("ini/GUI_EX.ini");
    Check(extended, [&] { CheckLayoutFile(extended, false, "invalid data"); });
    const std::string cursors = FindFile("ini/Cursor.ini");
    Check(
        cursors, [&] { CheckCursorFile(cursors); }, true);
    const std::string groups = FindFile("ini/AniGroup.ini");
    Check(groups, [&] { CheckAniGroupFile(groups); });
    const std::string regions = FindFile("ini/Rgn.dat");
    Check(regions, [&] { CheckRegionFile(regions); });
    const std::string effects = FindFile("ini/Gui3DEffect.ini");
    Check(effects, [&] { CheckEffectFile(effects); });
    const std::string ani = FindFile("ani/Control.ani");
    Check(
        ani, [&] { CheckAniFile(ani); }, true);
    // The files no reader takes still must not open a section they never close.
    for (const std::string& relative : iniFiles)
        Check(relative, nullptr);
    for (const std::string& relative : ListFiles("ani", ".ani"))
        Check(relative, nullptr);
    QzPlatform::SetLogSink(nullptr);
    return true;
}

// Each file once: its check, then its section headers, its findings by line.
void CBundleLinter::Check(const std::string& relative, const std::function<void()>& check,
                          bool bReaderReportsHeaders)
{
    if (relative.empty() || !m_setChecked.insert(relative).second)
        return;
    const size_t first = m_vecFindings.size();
    if (check)
        check();
    const std::string extension = Lower(fs::path(relative).extension().string());
    if (extension == ".ini" || extension == ".ani")
        CheckHeaders(relative, first, bReaderReportsHeaders);
    SortFileFindings(first);
}

// Headers without "]": the layout reader takes "[0-100" as a section, the profile functions
// skip the line. A reader that reports such a header as a data error (the cursor and animation
// readers) leaves its report to this one.
void CBundleLinter::CheckHeaders(const std::string& relative, size_t first,
                                 bool bReaderReportsHeaders)
{
    CLintLineIndex index;
    index.Load(AbsolutePath(relative));
    std::set<int> unclosed;
    for (int nLine = 1; nLine <= index.GetCount(); ++nLine)
    {
        if (IsUnclosedHeader(index.Lines()[static_cast<size_t>(nLine - 1)], nLine == 1))
            unclosed.insert(nLine);
    }
    if (bReaderReportsHeaders)
        m_vecFindings.erase(
            std::remove_if(
                m_vecFindings.begin() + static_cast<std::ptrdiff_t>(first), m_vecFindings.end(),
                [&](const QzLintFinding& finding)
                { return finding.message == kDataError && unclosed.count(finding.line) != 0; }),
            m_vecFindings.end());
    for (int nLine : unclosed)
        Add(relative, nLine, kUnclosedHeader, index.Lines()[static_cast<size_t>(nLine - 1)]);
}

std::string CBundleLinter::Format(const QzLintFinding& finding, const std::string& folderPrefix)
{
    std::string out = folderPrefix.empty() ? finding.file : folderPrefix + "/" + finding.file;
    if (finding.line > 0)
        out += ":" + std::to_string(finding.line);
    out += ": " + finding.message;
    if (finding.line > 0 || !finding.text.empty())
        out += ": " + finding.text;
    return out;
}

int CBundleLinter::RunTool(int argc, const char* const* argv, std::string& out, std::string& err)
{
    CBundleLinter linter;
    if (argc != 2 || !linter.Run(argv[1]))
    {
        if (argc == 2)
            err += std::string("qzgui-lint: no folder ") + argv[1] + "\n";
        err += kUsage;
        return 2;
    }
    std::string prefix = argv[1];
    while (prefix.size() > 1 && prefix.back() == '/')
        prefix.pop_back();
    for (const QzLintFinding& finding : linter.Findings())
        out += Format(finding, prefix) + "\n";
    return linter.Findings().empty() ? 0 : 1;
}

void CBundleLinter::Write(const QzPlatform::LogRecord& record)
{
    m_vecRecords.push_back(record);
}

// The files of the folder with the extension (both in any letter case), by name.
std::vector<std::string> CBundleLinter::ListFiles(const std::string& folderName,
                                                  const std::string& extension) const
{
    std::vector<std::string> files;
    const std::string folder = FindFile(folderName);
    std::error_code error;
    if (folder.empty() || !fs::is_directory(AbsolutePath(folder), error))
        return files;
    for (const auto& entry : fs::directory_iterator(AbsolutePath(folder), error))
    {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file(error) && Lower(entry.path().extension().string()) == extension)
            files.push_back(folder + "/" + name);
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The bundle's file of that name, found as the readers find it (any letter case), relative to
// the bundle folder; empty when there is none.
std::string CBundleLinter::FindFile(const std::string& relative) const
{
    const std::string resolved = QzPlatform::ResolvePath(AbsolutePath(relative));
    std::error_code error;
    if (!fs::exists(resolved, error) || resolved.size() <= m_strRoot.size() + 1)
        return std::string();
    return resolved.substr(m_strRoot.size() + 1);
}

std::string CBundleLinter::AbsolutePath(const std::string& relative) const
{
    return m_strRoot + "/" + relative;
}

std::string CBundleLinter::PathOf(const std::string& relative) const
{
    return relative.empty() ? std::string() : AbsolutePath(relative);
}

CLintReferences::ReportProc CBundleLinter::Reporter(const std::string& relative)
{
    return [this, relative](int nLine, const std::string& message, const std::string& text)
    { Add(relative, nLine, message, text); };
}

// Layout, variant and extended layout files: one reader, with the section format and the
// message of an invalid section. The line that ends a section is a header or the file's last.
void CBundleLinter::CheckLayoutFile(const std::string& relative, bool bVariant,
                                    const char* pszInvalid)
{
    CLintLineIndex index;
    if (!LoadLines(relative, index))
        return;
    const bool bLayout =
        std::any_of(index.Lines().begin(), index.Lines().end(),
                    [&](const std::string& line) { return IsSectionHeader(line, bVariant); });
    if (!bLayout)
        return;
    m_vecRecords.clear();
    std::deque<std::string> links;
    QzGui::CQzLayoutReader reader(links, bVariant, pszInvalid);
    if (reader.Open(AbsolutePath(relative).c_str()))
    {
        QzGui::CQzGuiWndInfo record;
        reader.Read(
            [&](const QzGui::QzLayoutSection&)
            {
                record.ResetToDefaults();
                return &record;
            },
            [](const QzGui::QzLayoutSection&, QzGui::CQzGuiWndInfo*, bool) {});
    }
    const int nCount = index.GetCount();
    for (const QzPlatform::LogRecord& record : m_vecRecords)
    {
        const std::string text = record.Get("line");
        const int nLine = index.Locate(
            text,
            [&](int n) {
                return n == nCount || index.Lines()[static_cast<size_t>(n - 1)].rfind('[', 0) == 0;
            });
        Add(relative, nLine, record.message, text);
    }
    m_vecRecords.clear();
    CheckKeyLengths(relative, index, bVariant);
    m_references.CheckLayout(index, bVariant, Reporter(relative));
}

// Key lines of the sections the reader takes, as it splits them: the text before the first
// "=" is the key, the rest the value. Lines longer than the reader's buffer anywhere.
void CBundleLinter::CheckKeyLengths(const std::string& relative, const CLintLineIndex& index,
                                    bool bVariant)
{
    bool bInSection = false;
    for (int nLine = 1; nLine <= index.GetCount(); ++nLine)
    {
        const std::string& line = index.Lines()[static_cast<size_t>(nLine - 1)];
        if (line.size() > kMaxLine)
            Add(relative, nLine, "line longer than 1023 bytes (read as several lines)", line);
        if (!line.empty() && line[0] == '[')
        {
            bInSection = IsSectionHeader(line, bVariant);
            continue;
        }
        const size_t equals = line.find('=');
        if (!bInSection || IsComment(line) || equals == std::string::npos || equals == 0 ||
            equals + 1 == line.size())
            continue;
        if (equals > kMaxKey)
            Add(relative, nLine, "key longer than 254 bytes (cut when read)", line);
        if (line.size() - equals - 1 > kMaxValue)
            Add(relative, nLine, "value longer than 255 bytes (cut when read)", line);
    }
}

void CBundleLinter::CheckCursorFile(const std::string& relative)
{
    CLintLineIndex index;
    if (!LoadLines(relative, index))
        return;
    m_vecRecords.clear();
    std::map<std::string, QzGui::QzCursorEntry> table;
    QzGui::CQzCursorReader::Read(AbsolutePath(relative).c_str(), table);
    TakeRecords(relative, index);
    m_references.CheckCursors(index, Reporter(relative));
}

// The reader reports a cut "Amount" by a line it makes up ("Amount=N"), not naming the group:
// the groups over the limit, in the reader's order, give the records their lines.
void CBundleLinter::CheckAniGroupFile(const std::string& relative)
{
    CLintLineIndex index;
    if (!LoadLines(relative, index))
        return;
    const std::string path = AbsolutePath(relative);
    m_vecRecords.clear();
    std::map<std::string, QzGui::QzAniGroup> groups;
    QzGui::CQzAniGroupReader::Read(path.c_str(), groups);
    std::vector<int> lines;
    std::vector<char> names(kSectionNamesSize, 0);
    const DWORD length =
        GetPrivateProfileSectionNamesA(names.data(), kSectionNamesSize, path.c_str());
    for (const char* pszName = names.data(); pszName < names.data() + length && *pszName;
         pszName += std::strlen(pszName) + 1)
    {
        const int amount =
            static_cast<int>(GetPrivateProfileIntA(pszName, "Amount", 0, path.c_str()));
        if (amount > QzGui::CQzAniGroupReader::kMaxPieces)
            lines.push_back(index.LocateProfileKey(pszName, "Amount"));
    }
    TakeRecords(relative, index, lines);
    m_references.CheckGroups(index, Reporter(relative));
}

// Besides what the reader logs, every entry it keeps must give a region.
void CBundleLinter::CheckRegionFile(const std::string& relative)
{
    CLintLineIndex readable; // a binary file: only whether it can be read
    if (!LoadLines(relative, readable))
        return;
    const std::string path = AbsolutePath(relative);
    m_vecRecords.clear();
    std::map<uint64_t, QzGui::QzRegionEntry> table;
    QzGui::CQzRegionReader::Read(path.c_str(), table, [](uint64_t) {});
    for (const QzPlatform::LogRecord& record : m_vecRecords)
        Add(relative, 0, record.message, DescribeRegionCut(path));
    m_vecRecords.clear();
    for (const auto& entry : table)
    {
        const QzGui::QzRegionEntry& region = entry.second;
        HRGN hRegion = region.data.empty()
                           ? nullptr
                           : ExtCreateRegion(nullptr, static_cast<DWORD>(region.data.size()),
                                             reinterpret_cast<const RGNDATA*>(region.data.data()));
        if (hRegion)
        {
            DeleteObject(hRegion);
            continue;
        }
        Add(relative, 0, "region data gives no region",
            "ids " + std::to_string(region.dwFirstId & 0xFFFF) + " and " +
                std::to_string(region.dwSecondId & 0xFFFF) + ", " +
                std::to_string(region.data.size()) + " bytes");
    }
}

void CBundleLinter::CheckEffectFile(const std::string& relative)
{
    m_vecRecords.clear();
    CGuiEffectInfo info;
    info.Load(AbsolutePath(relative).c_str());
    CLintLineIndex index;
    index.Load(AbsolutePath(relative));
    TakeRecords(relative, index);
}

void CBundleLinter::CheckAniFile(const std::string& relative)
{
    m_vecRecords.clear();
    QzPlatform::CAniFile ani;
    ani.Load(AbsolutePath(relative));
    CLintLineIndex index;
    index.Load(AbsolutePath(relative));
    TakeRecords(relative, index);
    m_references.CheckImages(m_strRoot, Reporter(relative));
}

// The file's lines; false, with "open file failed", when the bundle has the file but it cannot
// be read (the cursor, group and region readers give up on such a file without a word). False
// without a finding when the bundle lacks the file.
bool CBundleLinter::LoadLines(const std::string& relative, CLintLineIndex& index)
{
    if (relative.empty())
        return false;
    if (index.Load(AbsolutePath(relative)))
        return true;
    Add(relative, 0, "open file failed", "");
    return false;
}

// Records with a "line" field get the number of that line: from `lines` in record order while
// it has one, else by searching the file.
void CBundleLinter::TakeRecords(const std::string& relative, CLintLineIndex& index,
                                const std::vector<int>& lines)
{
    size_t nNext = 0;
    for (const QzPlatform::LogRecord& record : m_vecRecords)
    {
        if (!record.Has("line"))
        {
            Add(relative, 0, record.message, "");
            continue;
        }
        const std::string text = record.Get("line");
        const int nLine = nNext < lines.size() ? lines[nNext++] : index.Locate(text);
        Add(relative, nLine, record.message, text);
    }
    m_vecRecords.clear();
}

void CBundleLinter::Add(const std::string& relative, int nLine, const std::string& message,
                        const std::string& text)
{
    m_vecFindings.push_back({relative, nLine, message, text});
}

void CBundleLinter::SortFileFindings(size_t first)
{
    std::stable_sort(
        m_vecFindings.begin() + static_cast<std::ptrdiff_t>(first), m_vecFindings.end(),
        [](const QzLintFinding& a, const QzLintFinding& b) { return a.line < b.line; });
}

} // namespace QzLint
