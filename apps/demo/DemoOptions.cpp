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

} // namespace

const char* DemoUsage()
{
    return "usage: qzgui-demo [--headless] [--out DIR] [--data DIR] [--script FILE]\n"
           "                  [--size WxH] [--debug]\n";
}

DemoOptions ParseDemoOptions(int argc, char** argv)
{
    DemoOptions options;
    for (int i = 1; i < argc; ++i)
    {
        const char* arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(arg, "--headless") == 0)
            options.bHeadless = true;
        else if (std::strcmp(arg, "--debug") == 0)
            options.bDebug = true;
        else if (std::strcmp(arg, "--out") == 0 && hasValue)
            options.strOutDir = argv[++i];
        else if (std::strcmp(arg, "--data") == 0 && hasValue)
            options.strDataDir = argv[++i];
        else if (std::strcmp(arg, "--script") == 0 && hasValue)
            options.strScript = argv[++i];
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
    return options;
}
