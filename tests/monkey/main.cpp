// qzgui-monkey: seeded random events against a populated GUI manager, with the library's
// invariants checked after every event; a failure is shrunk to the shortest failing list of
// events and printed for --replay. docs/fuzzing.md tells how to use it.
#include "CMonkeyEvent.h"
#include "CMonkeyRunner.h"
#include "CMonkeyWorld.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace
{

struct Options
{
    unsigned long long nSeed = 1;
    size_t nEvents = 100000;
    unsigned long long nSeeds = 1;
    std::string replayFile;
    bool bQuiet = false;
};

const char* const kUsage =
    "usage: qzgui-monkey [--seed N] [--events N] [--seeds K] [--quiet] | --replay FILE\n"
    "  --seed N     the first seed (1)\n"
    "  --events N   events a seed (100000)\n"
    "  --seeds K    seeds N to N+K-1 in turn (1)\n"
    "  --replay F   the events of F (as a failure prints them), in this process\n"
    "  --quiet      print failures only\n";

bool ParseNumber(const char* pszText, unsigned long long& value)
{
    char* pEnd = nullptr;
    value = std::strtoull(pszText, &pEnd, 10);
    return *pszText && *pEnd == '\0';
}

bool ParseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i)
    {
        const std::string arg = argv[i];
        if (arg == "--quiet")
        {
            options.bQuiet = true;
            continue;
        }
        if (i + 1 >= argc)
            return false;
        const char* pszValue = argv[++i];
        unsigned long long value = 0;
        if (arg == "--replay")
            options.replayFile = pszValue;
        else if (arg == "--seed" && ParseNumber(pszValue, value))
            options.nSeed = value;
        else if (arg == "--events" && ParseNumber(pszValue, value))
            options.nEvents = static_cast<size_t>(value);
        else if (arg == "--seeds" && ParseNumber(pszValue, value) && value > 0)
            options.nSeeds = value;
        else
            return false;
    }
    return true;
}

int Replay(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
    {
        std::fprintf(stderr, "qzgui-monkey: cannot read %s\n", path.c_str());
        return 2;
    }
    std::ostringstream text;
    text << in.rdbuf();
    std::vector<QzMonkey::CMonkeyEvent> events;
    std::string error;
    if (!QzMonkey::ReadEvents(text.str(), events, error))
    {
        std::fprintf(stderr, "qzgui-monkey: %s: %s\n", path.c_str(), error.c_str());
        return 2;
    }
    return QzMonkey::CMonkeyRunner::Replay(events) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!ParseOptions(argc, argv, options))
    {
        std::fputs(kUsage, stderr);
        return 2;
    }
    // Shrunk failures go into the current directory; a relative replay path is taken against it.
    const std::string startDir = std::filesystem::current_path().string();
    std::string replayPath = options.replayFile;
    if (!replayPath.empty() && replayPath[0] != '/')
        replayPath = startDir + "/" + replayPath;
    QzMonkey::CMonkeyWorld::SetupProcess();
    if (!replayPath.empty())
        return Replay(replayPath);
    QzMonkey::CMonkeyRunner runner(options.bQuiet, startDir);
    unsigned long long nFailed = 0;
    for (unsigned long long i = 0; i < options.nSeeds; ++i)
        nFailed += runner.RunSeed(options.nSeed + i, options.nEvents) ? 0 : 1;
    const double cpu = runner.CpuSecondsRun() > 0 ? runner.CpuSecondsRun() : 1;
    if (!options.bQuiet || nFailed)
        std::printf("%llu seeds, %zu events in %.1f s, %.1f s of processor time (%.0f events a "
                    "processor second), %llu failed\n",
                    options.nSeeds, runner.EventsRun(), runner.SecondsRun(), runner.CpuSecondsRun(),
                    runner.EventsRun() / cpu, nFailed);
    return nFailed ? 1 : 0;
}
