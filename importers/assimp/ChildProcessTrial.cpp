#include "importers/assimp/ChildProcessTrial.h"

#if defined(__unix__) || defined(__APPLE__)
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace {

bool WriteAll(int fd, const std::string& bytes)
{
    for (size_t written = 0; written < bytes.size();) {
        const ssize_t count = write(fd, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR)
            return false;
        written += count > 0 ? static_cast<size_t>(count) : 0;
    }
    return true;
}

// Reads until the child closes its end, which it does by finishing or by dying.
void ReadAll(int fd, std::string& bytes)
{
    constexpr size_t kStep = size_t {1} << 20;
    for (;;) {
        const size_t used = bytes.size();
        bytes.resize(used + kStep);
        const ssize_t count = read(fd, bytes.data() + used, kStep);
        bytes.resize(used + (count > 0 ? static_cast<size_t>(count) : 0));
        if (count == 0 || (count < 0 && errno != EINTR))
            return;
    }
}

} // namespace

std::optional<std::string> RunInChildProcess(const std::function<std::string()>& work)
{
    int ends[2];
    if (pipe(ends) != 0)
        return work(); // No pipe to spare: the read goes ahead unguarded, as on other platforms.
    const pid_t child = fork();
    if (child < 0) {
        close(ends[0]);
        close(ends[1]);
        return work();
    }
    if (child == 0) {
        close(ends[0]);
        bool handed = false;
        try {
            handed = WriteAll(ends[1], work());
        } catch (...) {
            // Unwinding further would run the parent's code in the child.
        }
        // Leaves without the parent's exit handlers and buffered output.
        _exit(handed ? 0 : 1);
    }
    close(ends[1]);
    std::string bytes;
    ReadAll(ends[0], bytes);
    close(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return std::nullopt;
    }
    // A sanitizer reports a crash and exits with a code of its own, so anything but a clean exit counts.
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return bytes;
}

#else

std::optional<std::string> RunInChildProcess(const std::function<std::string()>& work)
{
    return work();
}

#endif
