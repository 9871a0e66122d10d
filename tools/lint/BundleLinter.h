// Checks the data files of a bundle (a data root with ini/ and ani/) with the library's own
// readers and collects every data error they log, with the file and the line it is on:
// layout files (ini/*.ini with "[parent-ctrl]" sections), variant files (ini/guilogic*.ini),
// ini/GUI_EX.ini, ini/Cursor.ini, ini/AniGroup.ini, ini/Rgn.dat, ini/Gui3DEffect.ini and
// ani/Control.ani. Missing files are no error. On top of what the readers log it reports the
// key lines of layout-format files whose key or value is cut when read, lines longer than the
// reader's line buffer, click regions that give no region, section headers without "]" in
// every .ini file of ini/ and .ani file of ani/, and what CLintReferences checks: unknown keys
// and window types, names of animation sections, groups and cursors that lead nowhere, and
// frames whose image is missing or smaller than their atlas rectangle.
#pragma once

#include "LintReferences.h"

#include "platform/services/QzLog.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace QzLint
{

struct QzLintFinding
{
    std::string file; // relative to the bundle folder, with "/" ("ini/Layout.ini")
    int line = 0;     // from 1; 0 when the problem has no line (binary files, whole files)
    std::string message;
    std::string text; // the line as the reader reported it, or a description
};

class CBundleLinter : private QzPlatform::ILogSink
{
public:
    CBundleLinter() = default;
    CBundleLinter(const CBundleLinter&) = delete;
    CBundleLinter& operator=(const CBundleLinter&) = delete;

    // Checks every file of the bundle folder. False when the folder does not exist. The linter
    // takes the log while it reads; afterwards the default (stderr) sink is installed.
    bool Run(const std::string& bundleDir);
    // File by file in the order checked, each file's findings by line.
    const std::vector<QzLintFinding>& Findings() const { return m_vecFindings; }

    // "FILE:LINE: message: text"; "FILE: message: text" without a line. The file name is put
    // under the folder prefix when one is given.
    static std::string Format(const QzLintFinding& finding, const std::string& folderPrefix = "");

    // The command line "qzgui-lint BUNDLE_DIR": the findings under the folder as given go to
    // out, a usage text to err. Exit status: 0 clean, 1 findings, 2 usage or missing folder.
    static int RunTool(int argc, const char* const* argv, std::string& out, std::string& err);

private:
    void Write(const QzPlatform::LogRecord& record) override;

    std::vector<std::string> ListFiles(const std::string& folderName,
                                       const std::string& extension) const;
    std::string FindFile(const std::string& relative) const;
    std::string AbsolutePath(const std::string& relative) const;
    // The absolute path of a file the bundle has; empty for an empty name.
    std::string PathOf(const std::string& relative) const;
    CLintReferences::ReportProc Reporter(const std::string& relative);

    // Runs the check of a file (none for a file no reader takes) unless the file was checked
    // already, then the check of its section headers, and sorts the file's findings by line.
    void Check(const std::string& relative, const std::function<void()>& check,
               bool bReaderReportsHeaders = false);
    void CheckHeaders(const std::string& relative, size_t first, bool bReaderReportsHeaders);

    void CheckLayoutFile(const std::string& relative, bool bVariant, const char* pszInvalid);
    void CheckCursorFile(const std::string& relative);
    void CheckAniGroupFile(const std::string& relative);
    void CheckRegionFile(const std::string& relative);
    void CheckEffectFile(const std::string& relative);
    void CheckAniFile(const std::string& relative);

    bool LoadLines(const std::string& relative, CLintLineIndex& index);
    void CheckKeyLengths(const std::string& relative, const CLintLineIndex& index, bool bVariant);
    // Turns the records the last reader logged into findings of the file.
    void TakeRecords(const std::string& relative, CLintLineIndex& index,
                     const std::vector<int>& lines = {});
    void Add(const std::string& relative, int nLine, const std::string& message,
             const std::string& text);
    void SortFileFindings(size_t first);

    std::string m_strRoot; // absolute bundle folder
    std::vector<QzPlatform::LogRecord> m_vecRecords;
    std::vector<QzLintFinding> m_vecFindings;
    CLintReferences m_references;
    std::set<std::string> m_setChecked; // files checked in this run
};

} // namespace QzLint
