#include "importers/assimp/ChildProcessTrial.h"

#if defined(__unix__) || defined(__APPLE__)
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <exception>

namespace {

bool WriteAll(int fd, const void* data, size_t length)
{
    const auto* bytes = static_cast<const char*>(data);
    for (size_t written = 0; written < length;) {
        const ssize_t count = write(fd, bytes + written, length - written);
        if (count < 0 && errno != EINTR)
            return false;
        written += count > 0 ? static_cast<size_t>(count) : 0;
    }
    return true;
}

// The child sends the length first, so that the parent reads into a buffer of the right size.
bool Send(int fd, const std::string& bytes)
{
    const uint64_t length = bytes.size();
    return WriteAll(fd, &length, sizeof length) && WriteAll(fd, bytes.data(), bytes.size());
}

bool ReadAll(int fd, void* data, size_t length)
{
    auto* bytes = static_cast<char*>(data);
    for (size_t done = 0; done < length;) {
        const ssize_t count = read(fd, bytes + done, length - done);
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        done += count > 0 ? static_cast<size_t>(count) : 0;
    }
    return true;
}

// False when the child ended before sending all it announced, or sent more.
bool Receive(int fd, std::string& bytes)
{
    uint64_t length = 0;
    if (!ReadAll(fd, &length, sizeof length))
        return false;
    try {
        bytes.resize(length);
    } catch (const std::exception&) {
        return false;
    }
    char extra = 0;
    return ReadAll(fd, bytes.data(), bytes.size()) && !ReadAll(fd, &extra, 1);
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
            handed = Send(ends[1], work());
        } catch (...) {
            // Unwinding further would run the parent's code in the child.
        }
        // Leaves without the parent's exit handlers and buffered output.
        _exit(handed ? 0 : 1);
    }
    close(ends[1]);
    std::string bytes;
    const bool received = Receive(ends[0], bytes);
    // A child still writing when the parent gave up dies of the closed pipe instead of waiting forever.
    close(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return std::nullopt;
    }
    // A sanitizer reports a crash and exits with a code of its own, so anything but a clean exit counts.
    if (!received || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return bytes;
}

#else

std::optional<std::string> RunInChildProcess(const std::function<std::string()>& work)
{
    return work();
}

#endif
