// Command line of qzgui-demo.
#pragma once

#include <string>

struct DemoOptions
{
    bool bHeadless = false;
    std::string strOutDir = "out/demo";
    std::string strDataDir; // the sample bundle when empty
    std::string strScript;  // the bundle's showcase script when empty
    int nWidth = 1024;
    int nHeight = 768;
    bool bDebug = false;  // the GUI helper's layout debugging tools
    std::string strError; // set when the command line is wrong
};

DemoOptions ParseDemoOptions(int argc, char** argv);
const char* DemoUsage();
