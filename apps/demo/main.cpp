// qzgui-demo: the sample game client. With a display it opens a window (and records its input
// with --record); with --headless it runs a script of user input, or plays a recording back, on
// a manual clock and writes screenshots. --renderer chooses the device that draws (draw lists in
// the window, cairo headless unless told).
#include "DemoHost.h"
#include "DemoOptions.h"
#include "DemoRecorder.h"
#include "DemoReplay.h"
#include "DemoScript.h"
#include "DemoSession.h"
#include "SdlClipboard.h"
#include "SdlPresenter.h"

#include "platform/system/host/QzHost.h"

#include <SDL.h>

#include <cstdio>
#include <unistd.h>

namespace
{

// Without --script the headless demo runs the bundle's scripts one after the other.
const char* const kDefaultScripts[] = {"scripts/showcase.txt", "scripts/controls.txt",
                                       "scripts/collections.txt", "scripts/login.txt"};

std::string AbsolutePath(const std::string& path)
{
    if (path.empty() || path[0] == '/')
        return path;
    char cwd[4096];
    return getcwd(cwd, sizeof(cwd)) ? std::string(cwd) + "/" + path : path;
}

bool RunScriptFile(CDemoHost& host, const std::string& path, const std::string& outDir)
{
    CDemoScript script;
    std::string error;
    if (script.Load(path, error) && host.RunScript(script, outDir, error))
        return true;
    std::fprintf(stderr, "qzgui-demo: %s\n", error.c_str());
    return false;
}

int RunHeadless(CDemoHost& host, const DemoOptions& options)
{
    if (!options.strScript.empty())
    {
        if (!RunScriptFile(host, options.strScript, options.strOutDir))
            return 1;
    }
    else
    {
        for (const char* path : kDefaultScripts)
        {
            if (!RunScriptFile(host, path, options.strOutDir))
                return 1;
        }
    }
    std::printf("qzgui-demo: screenshots in %s\n", options.strOutDir.c_str());
    return 0;
}

int RunReplay(CDemoHost& host, const CDemoRecording& recording, const DemoOptions& options)
{
    std::string error;
    if (!CDemoReplay::Run(host, recording, options.strOutDir, error))
    {
        std::fprintf(stderr, "qzgui-demo: %s\n", error.c_str());
        return 1;
    }
    std::printf("qzgui-demo: screenshots in %s\n", options.strOutDir.c_str());
    return 0;
}

// The window's clock is the frame's: the milliseconds since the first frame, from the start
// time on, the same all through a frame, as a replay runs it. Frames are paced at about 60 a
// second.
int RunWindow(CDemoHost& host, CSdlPresenter& presenter, const DemoOptions& options)
{
    const uint32_t kFrameMs = 16;
    CDemoRecorder recorder;
    const bool bRecord = !options.strRecord.empty();
    std::string error;
    if (bRecord && !recorder.Open(options.strRecord, error))
    {
        std::fprintf(stderr, "qzgui-demo: %s\n", error.c_str());
        return 1;
    }
    CDemoSession session(host, bRecord ? &recorder : nullptr);
    CSdlClipboard clipboard;
    session.GetTranslator().SetPasteSource([&clipboard](std::string& text)
                                           { return clipboard.TakeNewText(text); });
    std::vector<SDL_Event> events;
    const uint32_t start = SDL_GetTicks();
    for (;;)
    {
        const uint32_t frameStart = SDL_GetTicks();
        const bool bOpen = presenter.PollEvents(events);
        QzPlatform::Host::SetTime(CDemoHost::kStartMs + (frameStart - start));
        session.RunFrame(events);
        if (!bOpen)
            break;
        clipboard.Export();
        presenter.ShowCursor(host.GetSystemCursor());
        host.GetScreen().Present(presenter);
        const uint32_t spent = SDL_GetTicks() - frameStart;
        if (spent < kFrameMs)
            SDL_Delay(kFrameMs - spent);
    }
    if (bRecord)
        std::printf("qzgui-demo: %d frames recorded in %s\n", session.GetFrame(),
                    options.strRecord.c_str());
    return 0;
}

// The window draws lists unless told otherwise; headless runs keep cairo, whose screenshots
// the scenario tests know.
DemoRenderer ChooseRenderer(DemoRenderer asked, bool bHeadless)
{
    if (asked != DemoRenderer::Default)
        return asked;
    return bHeadless ? DemoRenderer::Cairo : DemoRenderer::DrawList;
}

// A replay's client is made at the recording's start time and first size.
int RunClient(const DemoOptions& options, CSdlPresenter* presenter)
{
    CDemoRecording recording;
    int width = options.nWidth;
    int height = options.nHeight;
    DWORD start = CDemoHost::kStartMs;
    if (!options.strReplay.empty())
    {
        std::string error;
        if (!recording.Load(options.strReplay, error))
        {
            std::fprintf(stderr, "qzgui-demo: %s\n", error.c_str());
            return 1;
        }
        recording.GetInitialSize(width, height);
        start = recording.StartTime(start);
    }
    CDemoHost host(width, height, ChooseRenderer(options.renderer, !presenter));
    host.UseManualClock(start);
    if (!host.Create(options.bDebug))
    {
        std::fprintf(stderr, "qzgui-demo: cannot create the main window\n");
        return 1;
    }
    // The data folder is the current one.
    if ((presenter || options.bWatch) && !host.WatchBundle("."))
        std::fprintf(stderr, "qzgui-demo: cannot watch the data folder; no live reload\n");
    if (presenter)
        return RunWindow(host, *presenter, options);
    if (!options.strReplay.empty())
        return RunReplay(host, recording, options);
    return RunHeadless(host, options);
}

} // namespace

int main(int argc, char** argv)
{
    DemoOptions options = ParseDemoOptions(argc, argv);
    if (!options.strError.empty())
    {
        std::fprintf(stderr, "qzgui-demo: %s\n%s", options.strError.c_str(), DemoUsage());
        return 2;
    }
    if (options.bHelp)
    {
        std::fputs(DemoUsage(), stdout);
        return 0;
    }
    // Paths of the command line are taken before the data folder becomes the current one.
    options.strOutDir = AbsolutePath(options.strOutDir);
    options.strScript = AbsolutePath(options.strScript);
    options.strRecord = AbsolutePath(options.strRecord);
    options.strReplay = AbsolutePath(options.strReplay);
    const std::string data = options.strDataDir.empty() ? QZGUI_DEMO_BUNDLE : options.strDataDir;
    if (chdir(data.c_str()) != 0)
    {
        std::fprintf(stderr, "qzgui-demo: cannot enter the data folder %s\n", data.c_str());
        return 1;
    }
    if (options.bHeadless)
        return RunClient(options, nullptr);
    // The window comes first: without a display the demo runs headless, with the headless
    // default renderer.
    CSdlPresenter presenter;
    if (!presenter.Open(options.nWidth, options.nHeight, "QzGui demo"))
    {
        if (!options.strRecord.empty())
        {
            std::fprintf(stderr, "qzgui-demo: no display to record in\n");
            return 1;
        }
        std::fprintf(stderr, "qzgui-demo: no display; running headless\n");
        return RunClient(options, nullptr);
    }
    std::printf("qzgui-demo: SDL renderer %s\n", presenter.GetRendererName());
    return RunClient(options, &presenter);
}
