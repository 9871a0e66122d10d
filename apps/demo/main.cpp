// qzgui-demo: the sample game client. With a display it opens a window; with --headless it runs
// a script of user input on a manual clock and writes screenshots. --renderer chooses the
// device that draws (draw lists in the window, cairo headless unless told).
#include "DemoHost.h"
#include "DemoOptions.h"
#include "DemoScript.h"
#include "SdlPresenter.h"

#include "platform/system/host/QzHost.h"

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

int RunWindow(CDemoHost& host, CSdlPresenter& presenter)
{
    QzPlatform::Host::UseRealClock();
    while (presenter.PumpInput(host.GetWindow()))
    {
        host.RunFrame();
        host.GetScreen().Present(presenter);
    }
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

int RunClient(const DemoOptions& options, CSdlPresenter* presenter)
{
    CDemoHost host(options.nWidth, options.nHeight, ChooseRenderer(options.renderer, !presenter));
    if (!presenter)
        host.UseManualClock();
    if (!host.Create(options.bDebug))
    {
        std::fprintf(stderr, "qzgui-demo: cannot create the main window\n");
        return 1;
    }
    return presenter ? RunWindow(host, *presenter) : RunHeadless(host, options);
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
        std::fprintf(stderr, "qzgui-demo: no display; running headless\n");
        return RunClient(options, nullptr);
    }
    std::printf("qzgui-demo: SDL renderer %s\n", presenter.GetRendererName());
    return RunClient(options, &presenter);
}
