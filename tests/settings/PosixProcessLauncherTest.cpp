#include "settings/PosixProcessLauncher.h"

#include "base/Path.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "ScratchFolder.h"

namespace {

// The started program runs detached; wait for the file it writes, giving up after a while.
bool AppearsSoon(const ScratchFolder& folder, const std::string& name)
{
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (folder.Has(name) && !folder.Read(name).empty())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace

TEST(PosixProcessLauncher, StartedProcessReceivesItsSplitArguments)
{
    ScratchFolder folder;
    PosixProcessLauncher launcher;
    const std::string out = folder.Native("args.txt").string();
    std::string error;
    ASSERT_TRUE(launcher.StartProcess("\"/bin/sh\" -c \"printf '%s|%s' \\\"$0\\\" \\\"$1\\\" > '" + out + "'\" \"a b\" c",
                                      &error))
        << error;
    ASSERT_TRUE(AppearsSoon(folder, "args.txt"));
    EXPECT_EQ(folder.Read("args.txt"), "a b|c");
}

TEST(PosixProcessLauncher, ProgramThatDoesNotExistIsNotStarted)
{
    PosixProcessLauncher launcher;
    std::string error;
    EXPECT_FALSE(launcher.StartProcess("\"/nonexistent/kestrel/viewer\" -x", &error));
    EXPECT_NE(error.find("/nonexistent/kestrel/viewer"), std::string::npos) << error;
    EXPECT_FALSE(launcher.StartProcess("", &error));
}

TEST(PosixProcessLauncher, ShellOpenRunsTheProgramInTheWorkingFolder)
{
    ScratchFolder folder;
    PosixProcessLauncher launcher;
    const int result = launcher.ShellOpen("\\bin\\sh", "-c \"pwd > where.txt\"", folder.SystemPath());
    EXPECT_GT(result, kShellOpenFailureLimit);
    ASSERT_TRUE(AppearsSoon(folder, "where.txt"));
    EXPECT_EQ(std::filesystem::path(folder.Read("where.txt").substr(0, folder.Read("where.txt").size() - 1)),
              std::filesystem::canonical(folder.Native(".")));
}

TEST(PosixProcessLauncher, ShellOpenAnswersWindowsErrorCodes)
{
    ScratchFolder folder;
    folder.Write("not-a-program.txt", "text");
    PosixProcessLauncher launcher;
    EXPECT_EQ(launcher.ShellOpen("/nonexistent/kestrel/viewer.exe", "", ""), 2);
    EXPECT_EQ(launcher.ShellOpen(folder.SystemPath("not-a-program.txt"), "", ""), 5);
    EXPECT_EQ(launcher.ShellOpen("/bin/sh", "", folder.SystemPath("missing-folder")), 2);
}
