#include "settings/PosixProcessLauncher.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "settings/SplitCommandLine.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace {

constexpr int kShellStarted = 42;

[[noreturn]] void ReportFailure(int pipeOut, int errorNumber)
{
    ssize_t written;
    do
        written = write(pipeOut, &errorNumber, sizeof errorNumber);
    while (written < 0 && errno == EINTR);
    _exit(127);
}

// 0 when words[0] started, else the errno of the failure. The program is started by a child
// that exits at once, so it is adopted by init rather than left for the host to reap. Between
// fork and exec only async-signal-safe calls are made: the host may run other threads.
int SpawnDetached(const std::vector<std::string>& words, const std::string& workingFolder)
{
    if (words.empty() || words.front().empty())
        return ENOENT;
    std::vector<char*> argv;
    for (const std::string& word : words)
        argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const bool searchPath = words.front().find('/') == std::string::npos;

    int status[2];
    if (pipe2(status, O_CLOEXEC) != 0)
        return errno;

    const pid_t child = fork();
    if (child == 0) {
        close(status[0]);
        setsid();
        const pid_t program = fork();
        if (program < 0)
            ReportFailure(status[1], errno);
        if (program > 0)
            _exit(0);
        if (!workingFolder.empty() && chdir(workingFolder.c_str()) != 0)
            ReportFailure(status[1], errno);
        if (searchPath)
            execvp(argv[0], argv.data());
        else
            execv(argv[0], argv.data());
        ReportFailure(status[1], errno);
    }
    const int forkError = child < 0 ? errno : 0;
    close(status[1]);
    if (child > 0) {
        int childStatus = 0;
        while (waitpid(child, &childStatus, 0) < 0 && errno == EINTR) {
        }
    }

    // The pipe closes without data when exec succeeded.
    int result = forkError;
    if (!forkError) {
        int reported = 0;
        ssize_t got;
        do
            got = read(status[0], &reported, sizeof reported);
        while (got < 0 && errno == EINTR);
        result = got == static_cast<ssize_t>(sizeof reported) ? reported : 0;
    }
    close(status[0]);
    return result;
}

int ShellErrorCode(int errorNumber)
{
    switch (errorNumber) {
    case ENOENT: return 2;
    case ENOTDIR: return 3;
    case EACCES:
    case EPERM: return 5;
    case ENOMEM: return 8;
    case ENOEXEC: return 11;
    default: return 0;
    }
}

} // namespace

bool PosixProcessLauncher::StartProcess(std::string_view commandLine, std::string* error)
{
    std::vector<std::string> words = SplitCommandLine(commandLine);
    if (!words.empty())
        words.front() = ToNativePath(words.front());
    const int failure = SpawnDetached(words, {});
    if (failure && error)
        *error = Format("cannot start '%s': %s", words.empty() ? "" : words.front().c_str(), std::strerror(failure));
    return failure == 0;
}

int PosixProcessLauncher::ShellOpen(std::string_view file, std::string_view arguments, std::string_view workingFolder)
{
    std::vector<std::string> words {ToNativePath(file)};
    for (std::string& argument : SplitArguments(arguments))
        words.push_back(std::move(argument));
    const int failure = SpawnDetached(words, workingFolder.empty() ? std::string() : ToNativePath(workingFolder));
    return failure ? ShellErrorCode(failure) : kShellStarted;
}
