#include "CMonkeyRunner.h"

#include "CEventSource.h"
#include "CForkedRun.h"
#include "CMonkeyChecks.h"
#include "CMonkeyWorld.h"
#include "CRemovalProbe.h"
#include "CShrinker.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace QzMonkey
{

namespace
{

constexpr int kViolationExit = 3;

// Enough for a run of a few dozen events a second, the slowest a sanitizer build goes.
unsigned AlarmSeconds(size_t nEvents)
{
    return static_cast<unsigned>(60 + nEvents / 50);
}

// What a child reported: the events it announced, the violation it wrote, or how it ended.
MonkeyOutcome ReadChild(const CForkedRun::Result& result, std::vector<CMonkeyEvent>* pEvents)
{
    MonkeyOutcome outcome;
    std::istringstream in(result.output);
    std::string line;
    while (std::getline(in, line))
    {
        if (!line.empty() && line[0] == '!')
        {
            outcome.kind = MonkeyOutcome::Kind::Violation;
            outcome.message = line.substr(1);
            continue;
        }
        ++outcome.nApplied;
        if (pEvents)
            pEvents->push_back(CMonkeyEvent::Parse(line, nullptr).value_or(CMonkeyEvent()));
    }
    if (outcome.kind == MonkeyOutcome::Kind::Violation || result.nExitCode == 0)
        return outcome;
    outcome.kind = MonkeyOutcome::Kind::Crashed;
    outcome.message = result.nSignal ? "crash: signal " + std::to_string(result.nSignal)
                                     : "crash: exit code " + std::to_string(result.nExitCode);
    return outcome;
}

double SecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

std::string MonkeyOutcome::Rule() const
{
    switch (kind)
    {
    case Kind::Violation:
        return CMonkeyChecks::RuleOf(message);
    case Kind::Crashed:
        return "crash";
    default:
        return {};
    }
}

MonkeyOutcome CMonkeyRunner::Drive(const Feed& feed, int nFd)
{
    CRemovalProbe::TakeViolation();
    CMonkeyWorld world;
    MonkeyOutcome outcome;
    outcome.message = CMonkeyChecks::Check(world);
    while (outcome.message.empty())
    {
        std::optional<CMonkeyEvent> event = feed(world);
        if (!event)
            return outcome;
        if (nFd >= 0)
            CForkedRun::Write(nFd, event->Format() + "\n");
        world.Apply(*event);
        ++outcome.nApplied;
        outcome.message = CMonkeyChecks::Check(world);
    }
    outcome.kind = MonkeyOutcome::Kind::Violation;
    if (nFd >= 0)
        CForkedRun::Write(nFd, "!" + outcome.message + "\n");
    return outcome;
}

MonkeyOutcome CMonkeyRunner::DriveEvents(const std::vector<CMonkeyEvent>& events)
{
    size_t next = 0;
    return Drive(
        [&](const CMonkeyWorld&) -> std::optional<CMonkeyEvent>
        {
            if (next == events.size())
                return std::nullopt;
            return events[next++];
        },
        -1);
}

bool CMonkeyRunner::Replay(const std::vector<CMonkeyEvent>& events)
{
    const MonkeyOutcome outcome = DriveEvents(events);
    if (outcome.kind == MonkeyOutcome::Kind::Passed)
    {
        std::printf("replay: %zu events, no violation\n", events.size());
        return true;
    }
    const std::string at =
        outcome.nApplied ? events[outcome.nApplied - 1].Format() : "before the first event";
    std::printf("replay: violation at event %zu (%s): %s\n", outcome.nApplied, at.c_str(),
                outcome.message.c_str());
    return false;
}

MonkeyOutcome CMonkeyRunner::ReplayInChild(const std::vector<CMonkeyEvent>& events)
{
    const CForkedRun::Result result = CForkedRun::Run(
        [&](int nFd)
        {
            const MonkeyOutcome outcome = DriveEvents(events);
            if (outcome.kind == MonkeyOutcome::Kind::Violation)
            {
                CForkedRun::Write(nFd, "!" + outcome.message + "\n");
                _exit(kViolationExit);
            }
        },
        AlarmSeconds(events.size()), true);
    return ReadChild(result, nullptr);
}

std::vector<CMonkeyEvent> CMonkeyRunner::Shrink(const std::vector<CMonkeyEvent>& events,
                                                const std::string& rule, size_t& nReplays) const
{
    const std::vector<size_t> kept =
        CShrinker::Shrink(events.size(),
                          [&](const std::vector<size_t>& indexes)
                          {
                              std::vector<CMonkeyEvent> subset;
                              for (size_t index : indexes)
                                  subset.push_back(events[index]);
                              ++nReplays;
                              return ReplayInChild(subset).Rule() == rule;
                          });
    std::vector<CMonkeyEvent> shrunk;
    for (size_t index : kept)
        shrunk.push_back(events[index]);
    return shrunk;
}

bool CMonkeyRunner::RunSeed(uint64_t nSeed, size_t nEvents)
{
    const auto start = std::chrono::steady_clock::now();
    const CForkedRun::Result result = CForkedRun::Run(
        [&](int nFd)
        {
            CEventSource source(nSeed);
            size_t made = 0;
            const MonkeyOutcome outcome = Drive(
                [&](const CMonkeyWorld& world) -> std::optional<CMonkeyEvent>
                {
                    if (made++ == nEvents)
                        return std::nullopt;
                    return source.Next(world);
                },
                nFd);
            if (outcome.kind == MonkeyOutcome::Kind::Violation)
                _exit(kViolationExit);
        },
        AlarmSeconds(nEvents), false);
    const double seconds = SecondsSince(start);
    std::vector<CMonkeyEvent> events;
    const MonkeyOutcome outcome = ReadChild(result, &events);
    m_nEventsRun += outcome.nApplied;
    m_dSecondsRun += seconds;
    m_dCpuSecondsRun += result.dCpuSeconds;
    if (outcome.kind == MonkeyOutcome::Kind::Passed)
    {
        if (!m_bQuiet)
            std::printf("seed %llu: %zu events in %.1f s, %.1f s of processor time (%.0f events "
                        "a processor second), no violation\n",
                        static_cast<unsigned long long>(nSeed), outcome.nApplied, seconds,
                        result.dCpuSeconds, outcome.nApplied / result.dCpuSeconds);
        std::fflush(stdout);
        return true;
    }
    std::printf("seed %llu: %s at event %zu of %zu (%.1f s)\n",
                static_cast<unsigned long long>(nSeed), outcome.message.c_str(), outcome.nApplied,
                nEvents, seconds);
    std::fflush(stdout);
    Report(nSeed, outcome, events);
    return false;
}

void CMonkeyRunner::Report(uint64_t nSeed, const MonkeyOutcome& outcome,
                           const std::vector<CMonkeyEvent>& events) const
{
    size_t nReplays = 0;
    const std::vector<CMonkeyEvent> shrunk = Shrink(events, outcome.Rule(), nReplays);
    const MonkeyOutcome last = ReplayInChild(shrunk);
    const std::string file = m_outputDir + "/qzgui-monkey-seed" + std::to_string(nSeed) + ".txt";
    std::ostringstream text;
    text << "# qzgui-monkey seed " << nSeed << ", " << shrunk.size() << " of " << outcome.nApplied
         << " events: " << last.message << "\n";
    for (const CMonkeyEvent& event : shrunk)
        text << event.Format() << "\n";
    std::ofstream(file) << text.str();
    std::printf("seed %llu: shrunk to %zu events in %zu replays (%s; rerun with --replay %s):\n%s",
                static_cast<unsigned long long>(nSeed), shrunk.size(), nReplays,
                last.message.c_str(), file.c_str(), text.str().c_str());
}

} // namespace QzMonkey
