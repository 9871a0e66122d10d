// The qzgui-preview command: checks the command line and the bundle, renders the dialog and
// writes the picture. Exit status 0 when the picture was written, 1 when the bundle, the layout
// file or the dialog's record is missing or the picture cannot be written (one line on err),
// 2 for a wrong command line (the reason and the usage on err). With --watch it renders, then
// renders again after every change of the bundle's files, one line per render on out (a failed
// render's line on err), until SIGINT or SIGTERM; the status is 0 then, 1 when the bundle
// folder cannot be entered or its files cannot be watched.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace QzPreview
{

class CPreviewWatcher;
struct PreviewOptions;

class CPreviewTool
{
public:
    // Receives the tool's output as it is written.
    using WriteProc = std::function<void(const std::string& text)>;

    // The current directory is the bundle's while the preview runs and is given back after.
    static int Run(int argc, const char* const* argv, const WriteProc& out, const WriteProc& err);
    // The same, the output collected.
    static int Run(int argc, const char* const* argv, std::string& out, std::string& err);

    // One step of the watch loop at nowMs: reads the watcher's waiting events and, when a
    // change is due, watches the bundle's folders anew and renders. True when it rendered.
    static bool RunWatchStep(CPreviewWatcher& watcher, const PreviewOptions& options,
                             const std::string& bundleDir, const std::string& outPath,
                             uint64_t nowMs, const WriteProc& out, const WriteProc& err);

private:
    // The picture, with the bundle as the current directory: 0 when written, 1 otherwise.
    static int Render(const PreviewOptions& options, const std::string& outPath,
                      const WriteProc& out, const WriteProc& err);
    static int Watch(const PreviewOptions& options, const std::string& bundleDir,
                     const std::string& outPath, const WriteProc& out, const WriteProc& err);
};

} // namespace QzPreview
