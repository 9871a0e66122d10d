// The names a bundle defines and the references to them that the client follows without a
// word when they lead nowhere: the sections of ani/Control.ani, the groups of ini/AniGroup.ini
// and the cursors of ini/Cursor.ini, each read with the library's reader. Checks the key lines
// of layout-format files (keys the library does not read, window types it has no class for,
// AniSection, TipAniSection, SelBackAni and Cursor values naming nothing), the animation
// sections the cursors of ini/Cursor.ini and the pieces of ini/AniGroup.ini name, and the
// images of ani/Control.ani.
#pragma once

#include "LintAniIndex.h"
#include "LintLineIndex.h"

#include "layout/QzAniGroup.h"
#include "layout/QzCursorEntry.h"

#include <map>
#include <string>
#include <vector>

namespace QzLint
{

class CLintReferences
{
public:
    using ReportProc = CLintAniIndex::ReportProc;

    // Absolute paths; an empty path is a file the bundle lacks. The readers log the files'
    // data errors to the log sink installed.
    void Load(const std::string& aniPath, const std::string& groupPath,
              const std::string& cursorPath);

    // A section header the layout reader takes: "[%d-%d]", or "[%d-%d-%d]" for a variant file.
    static bool IsLayoutHeader(const std::string& line, bool bVariant);
    // ";" or "//" at the start, as the layout reader skips them.
    static bool IsComment(const std::string& line);

    void CheckLayout(const CLintLineIndex& index, bool bVariant, const ReportProc& report) const;
    void CheckCursors(const CLintLineIndex& index, const ReportProc& report) const;
    void CheckGroups(const CLintLineIndex& index, const ReportProc& report) const;
    void CheckImages(const std::string& root, const ReportProc& report) const;

private:
    struct KeyLine
    {
        int nLine = 0;
        std::string key;
        std::string value;
        std::string text;
    };

    void CheckSection(const std::vector<KeyLine>& keys, bool bVariant,
                      const ReportProc& report) const;
    void CheckKey(const KeyLine& line, int nBackShowMode, const ReportProc& report) const;
    void CheckAniSection(const KeyLine& line, int nBackShowMode, const ReportProc& report) const;
    void CheckAniName(const KeyLine& line, const ReportProc& report) const;

    CLintAniIndex m_ani;
    std::map<std::string, QzGui::QzAniGroup> m_mapGroups;
    std::map<std::string, QzGui::QzCursorEntry> m_mapCursors;
    std::vector<std::string> m_vecGroupNames;
    std::vector<std::string> m_vecCursorNames;
};

} // namespace QzLint
