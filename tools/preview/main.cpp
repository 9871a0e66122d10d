// qzgui-preview [--size WxH] [--frames N] [--watch] BUNDLE_DIR LAYOUT_FILE DIALOG_ID OUT.png
//
// Renders one dialog of a layout file with its controls to a PNG, for layout designers; with
// --watch again after every change of the bundle, until interrupted. The data errors the
// library logs on the way go to stderr as JSON lines.
#include "PreviewTool.h"

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    const auto write = [](std::FILE* pFile)
    {
        return [pFile](const std::string& text)
        {
            std::fputs(text.c_str(), pFile);
            std::fflush(pFile);
        };
    };
    return QzPreview::CPreviewTool::Run(argc, argv, write(stdout), write(stderr));
}
