#include "LintAniIndex.h"

#include "platform/system/kernel/QzPathResolve.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>

namespace QzLint
{

namespace
{

namespace fs = std::filesystem;

constexpr size_t kMaxIndexDigits = 9;

std::string Trim(const std::string& text)
{
    const size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c)
                   { return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c); });
    return text;
}

// The index of a "FrameN" key (any case, digits only after "frame"); -1 for any other key.
int FrameIndex(const std::string& line)
{
    const size_t equals = line.find('=');
    if (equals == std::string::npos)
        return -1;
    const std::string key = Lower(Trim(line.substr(0, equals)));
    const std::string digits = key.compare(0, 5, "frame") == 0 ? key.substr(5) : "";
    if (digits.empty() || digits.size() > kMaxIndexDigits ||
        digits.find_first_not_of("0123456789") != std::string::npos)
        return -1;
    return std::stoi(digits);
}

uint32_t BigEndian(const unsigned char* bytes)
{
    return (static_cast<uint32_t>(bytes[0]) << 24) | (static_cast<uint32_t>(bytes[1]) << 16) |
           (static_cast<uint32_t>(bytes[2]) << 8) | bytes[3];
}

struct ImageSize
{
    bool bKnown = false;
    uint32_t nWidth = 0;
    uint32_t nHeight = 0;
};

// The size a PNG file gives in its header chunk; unknown for any other file.
ImageSize ReadPngSize(const std::string& path)
{
    static const unsigned char kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    unsigned char header[24] = {};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(header), sizeof(header)) ||
        !std::equal(std::begin(kSignature), std::end(kSignature), header) ||
        !std::equal(header + 12, header + 16, "IHDR"))
        return ImageSize();
    return {true, BigEndian(header + 16), BigEndian(header + 20)};
}

} // namespace

void CLintAniIndex::Load(const std::string& path)
{
    m_vecSections.clear();
    m_vecNames.clear();
    m_setKeys.clear();
    if (path.empty() || !m_lines.Load(path))
        return;
    m_ani.Load(path);
    IndexLines();
}

// Headers as the library takes them: a trimmed line from "[" to "]" with a name between. A
// repeated name keeps the first section (the library skips the repeat).
void CLintAniIndex::IndexLines()
{
    Section* pSection = nullptr;
    for (int nLine = 1; nLine <= m_lines.GetCount(); ++nLine)
    {
        std::string line = m_lines.Lines()[static_cast<size_t>(nLine - 1)];
        if (nLine == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0)
            line.erase(0, 3);
        line = Trim(line);
        if (line.empty() || line[0] == ';' || line[0] == '#')
            continue;
        if (line[0] != '[')
        {
            const int nIndex = FrameIndex(line);
            if (pSection && nIndex >= 0)
                pSection->frameLines.emplace(nIndex, nLine);
            continue;
        }
        const std::string name = line.back() == ']' ? Trim(line.substr(1, line.size() - 2)) : "";
        pSection = nullptr;
        if (name.empty() || !m_setKeys.insert(Lower(name)).second)
            continue;
        m_vecNames.push_back(name);
        m_vecSections.push_back({name, {}});
        pSection = &m_vecSections.back();
    }
}

bool CLintAniIndex::Has(const std::string& name) const
{
    return m_setKeys.count(Lower(name)) != 0;
}

void CLintAniIndex::CheckImages(const std::string& root, const ReportProc& report) const
{
    std::map<std::string, ImageSize> sizes; // by resolved path; unknown size for a missing file
    std::map<std::string, bool> found;
    for (const Section& section : m_vecSections)
    {
        const QzPlatform::AniSectionSpec* pSpec = m_ani.FindSection(section.strName);
        if (!pSpec)
            continue; // broken: the reader reported it
        for (size_t i = 0; i < pSpec->frames.size(); ++i)
        {
            const QzPlatform::AniFrameSpec& frame = pSpec->frames[i];
            const auto line = section.frameLines.find(static_cast<int>(i));
            if (frame.path.empty() || line == section.frameLines.end())
                continue;
            const std::string& text = m_lines.Lines()[static_cast<size_t>(line->second - 1)];
            const std::string path = QzPlatform::ResolvePath(
                fs::path(frame.path).is_absolute() ? frame.path : root + "/" + frame.path);
            std::error_code error;
            if (!found.count(path))
                found[path] = fs::is_regular_file(path, error);
            if (!found[path])
            {
                report(line->second, "image file not found", text);
                continue;
            }
            if (!frame.hasRect)
                continue;
            if (!sizes.count(path))
                sizes[path] = ReadPngSize(path);
            const ImageSize& size = sizes[path];
            if (size.bKnown && (static_cast<uint32_t>(frame.rect.right) > size.nWidth ||
                                static_cast<uint32_t>(frame.rect.bottom) > size.nHeight))
                report(line->second,
                       "atlas rectangle outside the image (" + std::to_string(size.nWidth) + "x" +
                           std::to_string(size.nHeight) + ")",
                       text);
        }
    }
}

} // namespace QzLint
