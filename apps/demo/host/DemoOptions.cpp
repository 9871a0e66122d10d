#include "DemoOptions.h"

#include <cstdio>
#include <cstring>

namespace
{

bool ReadSize(const char* text, int& width, int& height)
{
    return std::sscanf(text, "%dx%d", &width, &height) == 2 && width > 0 && height > 0 &&
           width <= 8192 && height <= 8192;
}

bool ReadRenderer(const char* text, DemoRenderer& renderer)
{
    if (std::strcmp(text, "cairo") == 0)
        renderer = DemoRenderer::Cairo;
    else if (std::strcmp(text, "drawlist") == 0)
        renderer = DemoRenderer::DrawList;
    else
        return false;
    return true;
}

} // namespace

const char* DemoUsage()
{
    return "usage: qzgui-demo [--help] [--headless] [--out DIR] [--data DIR] [--script FILE]\n"
           "                  [--record FILE] [--replay FILE] [--size WxH]\n"
           "                  [--renderer cairo|drawlist] [--debug] [--watch]\n"
           "  --headless         run scripts on a manual clock and save screenshots (also\n"
           "                     without a display)\n"
           "  --out DIR          screenshot folder (default out/demo)\n"
           "  --data DIR         data folder (default the sample bundle of the build)\n"
           "  --script FILE      the script to run headless (default the bundle's four)\n"
           "  --record FILE      window mode: write the user's input to FILE; F9 in the window\n"
           "                     marks a screenshot (shot-001, shot-002, ...)\n"
           "  --replay FILE      headless: play a recording back and save its marked\n"
           "                     screenshots in --out\n"
           "  --size WxH         screen size (default 1024x768)\n"
           "  --renderer NAME    drawlist: the draw-list device, drawn by SDL's renderer (the\n"
           "                     window's, SDL's software renderer headless); cairo: the cairo\n"
           "                     software device. Default: drawlist in the window, cairo\n"
           "                     headless\n"
           "  --debug            the GUI helper's layout debugging tools\n"
           "  --watch            headless: reload the files saved in the bundle's ini/ and\n"
           "                     ani/ folders, as the window always does\n"
           "keys in the window: F5 flies a window in or out, F9 marks a screenshot while\n"
           "recording, F12 switches the debug mode, Escape closes the topmost window the\n"
           "user opened (unless an edit box has the keys)\n";
}

DemoOptions ParseDemoOptions(int argc, char** argv)
{
    DemoOptions options;
    for (int i = 1; i < argc; ++i)
    {
        const char* arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(arg, "--help") == 0 || std::strcmp(arg, "-h") == 0)
            options.bHelp = true;
        else if (std::strcmp(arg, "--headless") == 0)
            options.bHeadless = true;
        else if (std::strcmp(arg, "--debug") == 0)
            options.bDebug = true;
        else if (std::strcmp(arg, "--watch") == 0)
            options.bWatch = true;
        else if (std::strcmp(arg, "--out") == 0 && hasValue)
            options.strOutDir = argv[++i];
        else if (std::strcmp(arg, "--data") == 0 && hasValue)
            options.strDataDir = argv[++i];
        else if (std::strcmp(arg, "--script") == 0 && hasValue)
            options.strScript = argv[++i];
        else if (std::strcmp(arg, "--record") == 0 && hasValue)
            options.strRecord = argv[++i];
        else if (std::strcmp(arg, "--replay") == 0 && hasValue)
            options.strReplay = argv[++i];
        else if (std::strcmp(arg, "--renderer") == 0 && hasValue)
        {
            if (!ReadRenderer(argv[++i], options.renderer))
                options.strError = std::string("unknown renderer: ") + argv[i];
        }
        else if (std::strcmp(arg, "--size") == 0 && hasValue)
        {
            if (!ReadSize(argv[++i], options.nWidth, options.nHeight))
                options.strError = std::string("bad size: ") + argv[i];
        }
        else
            options.strError = std::string("unknown argument: ") + arg;
        if (!options.strError.empty())
            break;
    }
    if (options.strError.empty() && !options.strRecord.empty() &&
        (options.bHeadless || !options.strReplay.empty()))
        options.strError = "--record needs the window (not --headless or --replay)";
    // A replay is headless.
    options.bHeadless = options.bHeadless || !options.strReplay.empty();
    return options;
}
