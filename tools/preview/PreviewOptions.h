// Command line of qzgui-preview:
//   qzgui-preview [--size WxH] [--frames N] [--watch] BUNDLE_DIR LAYOUT_FILE DIALOG_ID OUT.png
#pragma once

#include "platform/system/QzSystem.h"

#include <string>

namespace QzPreview
{

struct PreviewOptions
{
    static constexpr int kMaxSide = 8192;
    static constexpr int kMaxFrames = 1000;

    int nWidth = 1024;
    int nHeight = 768;
    int nFrames = 2;
    bool bWatch = false; // render again whenever a file of the bundle changes
    std::string strBundleDir;
    std::string strLayoutFile; // the name under ini/ of the bundle
    DWORD nDialogId = 0;
    std::string strOutPath;

    // False with a one-line reason when the command line is wrong.
    static bool Parse(int argc, const char* const* argv, PreviewOptions& options,
                      std::string& error);
    static const char* Usage();
};

} // namespace QzPreview
