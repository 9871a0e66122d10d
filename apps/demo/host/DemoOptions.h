// Command line of qzgui-demo.
#pragma once

#include <string>

// What draws the frames: the cairo software device, or the draw-list device whose lists an SDL
// renderer draws (the window's, or SDL's software renderer headless).
enum class DemoRenderer
{
    Default, // draw lists in the window, cairo headless
    Cairo,
    DrawList,
};

struct DemoOptions
{
    bool bHeadless = false;
    std::string strOutDir = "out/demo";
    std::string strDataDir; // the sample bundle when empty
    std::string strScript;  // the bundle's showcase script when empty
    std::string strRecord;  // window mode: the recording to write
    std::string strReplay;  // headless: the recording to play back
    int nWidth = 1024;
    int nHeight = 768;
    bool bDebug = false; // the GUI helper's layout debugging tools
    bool bWatch = false; // headless: reload the bundle's edited files (the window always does)
    DemoRenderer renderer = DemoRenderer::Default;
    bool bHelp = false;   // --help: print the usage and stop
    std::string strError; // set when the command line is wrong
};

DemoOptions ParseDemoOptions(int argc, char** argv);
const char* DemoUsage();
