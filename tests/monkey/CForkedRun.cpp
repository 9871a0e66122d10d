#include "CForkedRun.h"

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace QzMonkey
{

CForkedRun::Result CForkedRun::Run(const std::function<void(int nFd)>& body, unsigned nSeconds,
                                   bool bSilent)
{
    int fds[2];
    if (pipe(fds) != 0)
        throw std::runtime_error("no pipe");
    const pid_t pid = fork();
    if (pid < 0)
        throw std::runtime_error("no fork");
    if (pid == 0)
    {
        close(fds[0]);
        if (bSilent)
        {
            const int nNull = open("/dev/null", O_WRONLY);
            if (nNull >= 0)
                dup2(nNull, STDERR_FILENO);
        }
        alarm(nSeconds);
        body(fds[1]);
        _exit(0);
    }
    close(fds[1]);
    Result result;
    char buffer[65536];
    for (;;)
    {
        const ssize_t n = read(fds[0], buffer, sizeof(buffer));
        if (n > 0)
            result.output.append(buffer, static_cast<size_t>(n));
        else if (n == 0 || errno != EINTR)
            break;
    }
    close(fds[0]);
    int status = 0;
    rusage usage = {};
    while (wait4(pid, &status, 0, &usage) < 0 && errno == EINTR)
    {
    }
    result.dCpuSeconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                         (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    if (WIFEXITED(status))
        result.nExitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        result.nSignal = WTERMSIG(status);
    return result;
}

void CForkedRun::Write(int nFd, const std::string& text)
{
    size_t done = 0;
    while (done < text.size())
    {
        const ssize_t n = write(nFd, text.data() + done, text.size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return;
        done += static_cast<size_t>(n);
    }
}

} // namespace QzMonkey
