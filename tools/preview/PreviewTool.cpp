#include "PreviewTool.h"

#include "DialogPreview.h"
#include "PreviewLayout.h"
#include "PreviewOptions.h"
#include "PreviewWatcher.h"

#include "platform/render/DataSet.h"
#include "platform/services/QzStringTable.h"
#include "platform/system/kernel/QzPathResolve.h"
#include "textinput/QzEdit.h"
#include "textinput/QzEditSingle.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <system_error>

namespace QzPreview
{

namespace
{

const char* const kName = "qzgui-preview: ";

int Fail(const CPreviewTool::WriteProc& err, const std::string& reason)
{
    err(kName + reason + "\n");
    return 1;
}

uint64_t NowMs()
{
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                     std::chrono::steady_clock::now().time_since_epoch())
                                     .count());
}

// The files are read afresh for every render: one after a change must not be served what the
// last one read.
void ForgetFiles()
{
    TableDataSetQuery()->Reload();
    QzPlatform::ReloadStringTable();
    QzGui::CQzEdit::ForgetFontName();
    QzGui::CQzEditSingle::ForgetFontFace();
}

// SIGINT and SIGTERM, blocked while the watch runs, arrive on a descriptor the loop polls.
class CStopSignals
{
public:
    CStopSignals()
    {
        sigemptyset(&m_signals);
        sigaddset(&m_signals, SIGINT);
        sigaddset(&m_signals, SIGTERM);
        sigprocmask(SIG_BLOCK, &m_signals, &m_previous);
        m_fd = signalfd(-1, &m_signals, SFD_NONBLOCK | SFD_CLOEXEC);
    }
    ~CStopSignals()
    {
        if (m_fd >= 0)
            close(m_fd);
        sigprocmask(SIG_SETMASK, &m_previous, nullptr);
    }
    CStopSignals(const CStopSignals&) = delete;
    CStopSignals& operator=(const CStopSignals&) = delete;

    int GetFd() const { return m_fd; }
    // Takes the signal that arrived, so that it is not delivered once the mask is given back.
    bool Take()
    {
        signalfd_siginfo info;
        return read(m_fd, &info, sizeof(info)) == static_cast<ssize_t>(sizeof(info));
    }

private:
    sigset_t m_signals;
    sigset_t m_previous;
    int m_fd = -1;
};

} // namespace

int CPreviewTool::Run(int argc, const char* const* argv, std::string& out, std::string& err)
{
    return Run(
        argc, argv, [&](const std::string& text) { out += text; },
        [&](const std::string& text) { err += text; });
}

int CPreviewTool::Run(int argc, const char* const* argv, const WriteProc& out, const WriteProc& err)
{
    PreviewOptions options;
    std::string error;
    if (!PreviewOptions::Parse(argc, argv, options, error))
    {
        err(kName + error + "\n" + PreviewOptions::Usage());
        return 2;
    }
    // The paths are taken before the bundle becomes the current directory.
    std::error_code ec;
    const std::filesystem::path outPath = std::filesystem::absolute(options.strOutPath, ec);
    const std::filesystem::path bundleDir = std::filesystem::absolute(options.strBundleDir, ec);
    const std::filesystem::path previous = std::filesystem::current_path(ec);
    std::filesystem::current_path(options.strBundleDir, ec);
    if (ec)
        return Fail(err, "cannot enter the bundle folder " + options.strBundleDir);
    const int status = options.bWatch
                           ? Watch(options, bundleDir.string(), outPath.string(), out, err)
                           : Render(options, outPath.string(), out, err);
    std::filesystem::current_path(previous, ec);
    return status;
}

int CPreviewTool::Render(const PreviewOptions& options, const std::string& outPath,
                         const WriteProc& out, const WriteProc& err)
{
    ForgetFiles();
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
    out(kName + outPath + ": dialog " + dialog + " with " + std::to_string(preview.GetCtrlCount()) +
        " controls\n");
    return 0;
}

bool CPreviewTool::RunWatchStep(CPreviewWatcher& watcher, const PreviewOptions& options,
                                const std::string& bundleDir, const std::string& outPath,
                                uint64_t nowMs, const WriteProc& out, const WriteProc& err)
{
    watcher.ReadEvents(nowMs);
    if (!watcher.TakeChange(nowMs))
        return false;
    // Watched before the render, so that a change while it runs is not lost.
    watcher.WatchBundle(bundleDir, outPath);
    Render(options, outPath, out, err);
    return true;
}

// A render that fails (a layout being edited) says why and the watch goes on.
int CPreviewTool::Watch(const PreviewOptions& options, const std::string& bundleDir,
                        const std::string& outPath, const WriteProc& out, const WriteProc& err)
{
    CPreviewWatcher watcher;
    std::string error;
    if (!watcher.Open(error))
        return Fail(err, error);
    CStopSignals signals;
    if (signals.GetFd() < 0)
        return Fail(err, "cannot take the stop signals");
    watcher.WatchBundle(bundleDir, outPath);
    Render(options, outPath, out, err);
    for (;;)
    {
        pollfd fds[2] = {{watcher.GetFd(), POLLIN, 0}, {signals.GetFd(), POLLIN, 0}};
        poll(fds, 2, watcher.GetWaitMs(NowMs()));
        if ((fds[1].revents & POLLIN) && signals.Take())
            return 0;
        RunWatchStep(watcher, options, bundleDir, outPath, NowMs(), out, err);
    }
}

} // namespace QzPreview
