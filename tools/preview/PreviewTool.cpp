#include "PreviewTool.h"

#include "DialogPreview.h"
#include "PreviewLayout.h"
#include "PreviewOptions.h"

#include "platform/system/kernel/QzPathResolve.h"

#include <filesystem>
#include <system_error>

namespace QzPreview
{

namespace
{

const char* const kName = "qzgui-preview: ";

int Fail(std::string& err, const std::string& reason)
{
    err += kName + reason + "\n";
    return 1;
}

} // namespace

int CPreviewTool::Run(int argc, const char* const* argv, std::string& out, std::string& err)
{
    PreviewOptions options;
    std::string error;
    if (!PreviewOptions::Parse(argc, argv, options, error))
    {
        err += kName + error + "\n" + PreviewOptions::Usage();
        return 2;
    }
    // The picture's path is taken before the bundle becomes the current directory.
    std::error_code ec;
    const std::filesystem::path outPath = std::filesystem::absolute(options.strOutPath, ec);
    const std::filesystem::path previous = std::filesystem::current_path(ec);
    std::filesystem::current_path(options.strBundleDir, ec);
    if (ec)
        return Fail(err, "cannot enter the bundle folder " + options.strBundleDir);
    const int status = RunInBundle(options, outPath.string(), out, err);
    std::filesystem::current_path(previous, ec);
    return status;
}

int CPreviewTool::RunInBundle(const PreviewOptions& options, const std::string& outPath,
                              std::string& out, std::string& err)
{
    const std::string layoutName = "ini/" + options.strLayoutFile;
    CPreviewLayout layout;
    if (!layout.Load(QzPlatform::ResolvePath(layoutName)))
        return Fail(err, options.strBundleDir + ": no layout file " + layoutName);
    const std::string dialog = std::to_string(options.nDialogId);
    if (!layout.HasDialog(options.nDialogId))
        return Fail(err, layoutName + " has no record of dialog " + dialog + " (section [0-" +
                             dialog + "])");
    CDialogPreview preview(options.nWidth, options.nHeight);
    std::string error;
    if (!preview.Open(options.strLayoutFile, layout, options.nDialogId, error))
        return Fail(err, error);
    preview.RunFrames(options.nFrames);
    if (!preview.SavePng(outPath))
        return Fail(err, "cannot write " + outPath);
    out += kName + outPath + ": dialog " + dialog + " with " +
           std::to_string(preview.GetCtrlCount()) + " controls\n";
    return 0;
}

} // namespace QzPreview
