// The sections of an animation file (ani/Control.ani) as the library reads them, names without
// regard to case, with the lines they stand on: each header's and each "FrameN" line's. It
// checks the images the frames name: that the file exists, found as the library finds it
// (relative to the bundle, backslashes and any letter case), and that an atlas rectangle lies
// inside the image when its size can be read (PNG).
#pragma once

#include "LintLineIndex.h"

#include "platform/render/AniFile.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace QzLint
{

class CLintAniIndex
{
public:
    using ReportProc =
        std::function<void(int nLine, const std::string& message, const std::string& text)>;

    // Reads the file at the absolute path; an empty path or a missing file gives no sections.
    // The library's reader logs the file's data errors to the log sink installed.
    void Load(const std::string& path);
    // Whether a header of the file has the name, as a section look-up of the library takes it.
    bool Has(const std::string& name) const;
    // The names as written, in file order.
    const std::vector<std::string>& Names() const { return m_vecNames; }
    // Frames of usable sections whose image is missing or too small for the atlas rectangle.
    void CheckImages(const std::string& root, const ReportProc& report) const;

private:
    struct Section
    {
        std::string strName;
        std::map<int, int> frameLines; // frame index -> line (from 1)
    };

    void IndexLines();

    CLintLineIndex m_lines;
    QzPlatform::CAniFile m_ani;
    std::vector<Section> m_vecSections;
    std::vector<std::string> m_vecNames;
    std::set<std::string> m_setKeys; // lower-case names
};

} // namespace QzLint
