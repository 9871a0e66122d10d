#include "PreviewOptions.h"

#include <cstdlib>
#include <vector>

namespace QzPreview
{

namespace
{

// A whole decimal number from min to max: no sign, blanks or trailing characters.
bool ReadNumber(const std::string& text, long min, long max, long& value)
{
    if (text.empty() || text.size() > 9 ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    value = std::strtol(text.c_str(), nullptr, 10);
    return value >= min && value <= max;
}

bool ReadSize(const std::string& text, int& width, int& height)
{
    const size_t x = text.find('x');
    long w = 0;
    long h = 0;
    if (x == std::string::npos || !ReadNumber(text.substr(0, x), 1, PreviewOptions::kMaxSide, w) ||
        !ReadNumber(text.substr(x + 1), 1, PreviewOptions::kMaxSide, h))
        return false;
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    return true;
}

// The value of --size or --frames; false with the reason when it is wrong.
bool ReadOption(const std::string& name, const char* value, PreviewOptions& options,
                std::string& error)
{
    if (!value)
    {
        error = name + " needs a value";
        return false;
    }
    if (name == "--size")
    {
        if (ReadSize(value, options.nWidth, options.nHeight))
            return true;
        error = std::string("bad size: ") + value + " (WxH, each 1 to 8192)";
        return false;
    }
    long frames = 0;
    if (!ReadNumber(value, 1, PreviewOptions::kMaxFrames, frames))
    {
        error = std::string("bad frame count: ") + value + " (1 to 1000)";
        return false;
    }
    options.nFrames = static_cast<int>(frames);
    return true;
}

bool ReadPositional(const std::vector<std::string>& args, PreviewOptions& options,
                    std::string& error)
{
    if (args.size() != 4)
    {
        error = "expected BUNDLE_DIR LAYOUT_FILE DIALOG_ID OUT.png";
        return false;
    }
    long id = 0;
    // Dialog ids share a 16-bit field with the parent id in a window's full id.
    if (!ReadNumber(args[2], 1, 65535, id))
    {
        error = "bad dialog id: " + args[2] + " (1 to 65535)";
        return false;
    }
    if (args[0].empty() || args[1].empty() || args[3].empty())
    {
        error = "empty argument";
        return false;
    }
    options.strBundleDir = args[0];
    options.strLayoutFile = args[1];
    options.nDialogId = static_cast<DWORD>(id);
    options.strOutPath = args[3];
    return true;
}

} // namespace

bool PreviewOptions::Parse(int argc, const char* const* argv, PreviewOptions& options,
                           std::string& error)
{
    std::vector<std::string> positional;
    for (int i = 1; i < argc; ++i)
    {
        const std::string arg = argv[i] ? argv[i] : "";
        if (arg == "--watch")
        {
            options.bWatch = true;
            continue;
        }
        if (arg == "--size" || arg == "--frames")
        {
            if (!ReadOption(arg, i + 1 < argc ? argv[i + 1] : nullptr, options, error))
                return false;
            ++i;
            continue;
        }
        if (arg.size() > 1 && arg[0] == '-')
        {
            error = "unknown option: " + arg;
            return false;
        }
        positional.push_back(arg);
    }
    return ReadPositional(positional, options, error);
}

const char* PreviewOptions::Usage()
{
    return "usage: qzgui-preview [--size WxH] [--frames N] [--watch] BUNDLE_DIR LAYOUT_FILE "
           "DIALOG_ID OUT.png\n"
           "  renders dialog DIALOG_ID of ini/LAYOUT_FILE of the bundle, with one control per\n"
           "  record of the dialog, after N frames (default 2) on a WxH screen (default "
           "1024x768);\n"
           "  with --watch it keeps running and renders again whenever a file of the bundle's\n"
           "  ini/ and ani/ folders or an image of ani/Control.ani changes, until interrupted\n";
}

} // namespace QzPreview
