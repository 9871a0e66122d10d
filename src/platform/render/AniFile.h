// The parsed index of one .ani file, our own text format:
//
//   ; comment (also '#')
//   [SectionName]
//   FrameAmount=2
//   Frame0=ani/button.png
//   Frame1=ani/atlas.png 0 32 64 32      ; image path, then an optional x y w h rectangle
//   Kind1=2                              ; 2 marks a hit-test mask frame
//
// Keys and section names are matched without regard to case; image paths are relative to the
// data root (the current directory). The whole file is read once; every broken line is logged
// as "data error" with the file name and the line, and the section it belongs to becomes
// unusable while the other sections stay available.
#pragma once

#include "platform/render/IRenderDevice.h"

#include <map>
#include <string>
#include <vector>

namespace QzPlatform
{

struct AniFrameSpec
{
    std::string path; // as written; empty when the section gave no line for the frame
    bool hasRect = false;
    RectI rect; // atlas rectangle inside the image when hasRect
    int kind = 0;
};

struct AniSectionSpec
{
    std::string name; // as written in the file
    std::vector<AniFrameSpec> frames;
};

class CAniFile
{
public:
    static constexpr int kMaxFrameAmount = 4096;

    // Reads the file (resolved on the data root). A missing file is logged as "open file
    // failed" and gives an empty index; the result says whether the file was read.
    bool Load(const std::string& fileName);
    // Parses text already in memory; fileName only names the file in log records.
    void Parse(const std::string& fileName, const std::string& text);

    // The section, or null when the file has none of that name or it is broken.
    const AniSectionSpec* FindSection(const std::string& name) const;
    int GetSectionCount() const { return static_cast<int>(m_mapSections.size()); }
    // Number of data errors logged by the last Load or Parse.
    int GetErrorCount() const { return m_nErrorCount; }

private:
    struct Entry
    {
        bool usable = true;
        AniSectionSpec desc;
    };
    struct ParseState;

    void ParseLine(ParseState& state, const std::string& line);
    void BeginSection(ParseState& state, const std::string& line);
    void ParseKey(ParseState& state, const std::string& line);
    void EndSection(ParseState& state);
    void ReportError(ParseState& state, const std::string& line);

    std::map<std::string, Entry> m_mapSections; // key: lower-case name
    int m_nErrorCount = 0;
};

} // namespace QzPlatform
