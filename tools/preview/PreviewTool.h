// The qzgui-preview command: checks the command line and the bundle, renders the dialog and
// writes the picture. Exit status 0 when the picture was written, 1 when the bundle, the layout
// file or the dialog's record is missing or the picture cannot be written (one line on err),
// 2 for a wrong command line (the reason and the usage on err).
#pragma once

#include <string>

namespace QzPreview
{

struct PreviewOptions;

class CPreviewTool
{
public:
    // The current directory is the bundle's while the preview runs and is given back after.
    static int Run(int argc, const char* const* argv, std::string& out, std::string& err);

private:
    static int RunInBundle(const PreviewOptions& options, const std::string& outPath,
                           std::string& out, std::string& err);
};

} // namespace QzPreview
