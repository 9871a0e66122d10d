// qzgui-preview [--size WxH] [--frames N] BUNDLE_DIR LAYOUT_FILE DIALOG_ID OUT.png
//
// Renders one dialog of a layout file with its controls to a PNG, for layout designers. The
// data errors the library logs on the way go to stderr as JSON lines.
#include "PreviewTool.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    std::string out;
    std::string err;
    const int status = QzPreview::CPreviewTool::Run(argc, argv, out, err);
    std::fputs(out.c_str(), stdout);
    std::fputs(err.c_str(), stderr);
    return status;
}
