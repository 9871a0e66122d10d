// Runs the monkey: a seed's events made and applied in a child process with the checks after
// every event; on a failure (a broken rule or a crash) the events are shrunk by replaying
// subsets of them from a fresh manager, each in a child of its own, and the shortest failing
// list is printed one event a line (and written to qzgui-monkey-seed<N>.txt) for --replay.
#pragma once

#include "CMonkeyEvent.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace QzMonkey
{

class CMonkeyWorld;

struct MonkeyOutcome
{
    enum class Kind
    {
        Passed,
        Violation,
        Crashed,
    };
    Kind kind = Kind::Passed;
    size_t nApplied = 0; // the events applied, the failing one included
    std::string message;

    // The broken rule, "crash", or an empty text for a pass: what a shrunk list must keep.
    std::string Rule() const;
};

class CMonkeyRunner
{
public:
    // Shrunk failures are written into the folder.
    CMonkeyRunner(bool bQuiet, std::string outputDir)
        : m_bQuiet(bQuiet), m_outputDir(std::move(outputDir))
    {
    }

    // True when the seed's events broke nothing.
    bool RunSeed(uint64_t nSeed, size_t nEvents);
    // Applies the events in this process and prints the first rule broken; true when none was.
    static bool Replay(const std::vector<CMonkeyEvent>& events);

    size_t EventsRun() const { return m_nEventsRun; }
    double SecondsRun() const { return m_dSecondsRun; }
    // The processor time of the runs (on a shared machine less than the time they took).
    double CpuSecondsRun() const { return m_dCpuSecondsRun; }

private:
    // The next event for the world, none at the end.
    using Feed = std::function<std::optional<CMonkeyEvent>(const CMonkeyWorld&)>;

    // Applies the fed events and checks after each; with a descriptor, writes each event's line
    // before applying it and "!<violation>" when a rule breaks.
    static MonkeyOutcome Drive(const Feed& feed, int nFd);
    // Drive on the events as they are, without a descriptor.
    static MonkeyOutcome DriveEvents(const std::vector<CMonkeyEvent>& events);
    // The events replayed in a child; a crash is an outcome too.
    static MonkeyOutcome ReplayInChild(const std::vector<CMonkeyEvent>& events);
    std::vector<CMonkeyEvent> Shrink(const std::vector<CMonkeyEvent>& events,
                                     const std::string& rule, size_t& nReplays) const;
    void Report(uint64_t nSeed, const MonkeyOutcome& outcome,
                const std::vector<CMonkeyEvent>& events) const;

    bool m_bQuiet;
    std::string m_outputDir;
    size_t m_nEventsRun = 0;
    double m_dSecondsRun = 0;
    double m_dCpuSecondsRun = 0;
};

} // namespace QzMonkey
