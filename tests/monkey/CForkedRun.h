// Runs a piece of the monkey in a child process, so that a crash (a sanitizer's report, a
// signal, a hang cut short by an alarm) ends only the child and the parent can still shrink and
// report what led to it. The child writes its lines into a pipe; the parent reads them all.
#pragma once

#include <functional>
#include <string>

namespace QzMonkey
{

class CForkedRun
{
public:
    struct Result
    {
        int nExitCode = -1;     // -1 when the child did not exit by itself
        int nSignal = 0;        // the signal that ended it, if one did
        double dCpuSeconds = 0; // user and system time of the child
        std::string output;
    };

    // body gets the pipe's descriptor and ends the child with _exit (returning from it is
    // _exit(0)); stderr goes to /dev/null when bSilent; the child is killed by SIGALRM after
    // nSeconds.
    static Result Run(const std::function<void(int nFd)>& body, unsigned nSeconds, bool bSilent);
    // Writes the whole text to the descriptor.
    static void Write(int nFd, const std::string& text);
};

} // namespace QzMonkey
