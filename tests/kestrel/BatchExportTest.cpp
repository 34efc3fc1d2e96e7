// Batch export through the kestrel program itself, one process per scene.

#include "kestrel/BatchExport.h"

#include "base/Path.h"
#include "formats/StaticMeshReader.h"
#include "tests/UniqueTempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <sys/wait.h>

using ::testing::ContainsRegex;
using ::testing::HasSubstr;

namespace {

class BatchExport : public ::testing::Test {
protected:
    // The exports keep the user's application settings; tests keep theirs apart.
    BatchExport() { setenv("XDG_CONFIG_HOME", Native("config").c_str(), 1); }

    std::filesystem::path Native(const std::string& relative) const { return m_folder.Native(relative); }
    void Write(const std::string& relative, const std::string& text) const
    {
        std::ofstream(Native(relative), std::ios::binary) << text;
    }
    std::string Read(const std::string& relative) const
    {
        std::ifstream in(Native(relative), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    std::string ReadBack(const std::string& text, std::vector<BatchEntry>& entries) const
    {
        Write("batch.txt", text);
        std::string error;
        ReadBatchFile(Native("batch.txt").string(), entries, error);
        return error;
    }

private:
    UniqueTempFolder m_folder {"kestrel_batch"};
};

std::string Captured(std::FILE* file)
{
    std::string text;
    std::rewind(file);
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        text += static_cast<char>(c);
    std::fclose(file);
    return text;
}

}

TEST_F(BatchExport, TheExamplesExportBesideABrokenSceneThatTheSummaryAndJsonNameAsFailed)
{
    const std::string examples = KESTREL_SOURCE_DIR "/examples";
    Write("broken.fbx", "Kaydara FBX Binary  \nnot really");
    std::vector<BatchEntry> entries;
    ASSERT_EQ(ReadBack("# the examples, and a scene that is not one\n" + examples + "/crate/crate.obj crate/crate.qmesh\n\n" +
                           examples + "/level/level.obj \"the level/level.qmesh\" --set ColMesh=0\r\n" +
                           "broken.fbx broken/broken.qmesh\n",
                       entries),
              "");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].Target, Native("the level/level.qmesh").string());
    EXPECT_EQ(entries[1].Settings, std::vector<std::string> {"ColMesh=0"});

    BatchOptions options;
    options.Program = KESTREL_EXECUTABLE;
    options.Jobs = 2;
    options.JsonPath = Native("summary.json").string();
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    EXPECT_EQ(ExportBatch(entries, options, out, err), 1);
    const std::string printed = Captured(out);
    EXPECT_EQ(Captured(err), "");

    VStaticMeshFile crate;
    ASSERT_TRUE(ReadStaticMesh(FromNativePath(Native("crate/crate.qmesh").string()), crate));
    VStaticMeshFile level;
    ASSERT_TRUE(ReadStaticMesh(FromNativePath(Native("the level/level.qmesh").string()), level));
    EXPECT_FALSE(std::filesystem::exists(Native("the level/level.qcolmesh")));
    EXPECT_FALSE(std::filesystem::exists(Native("broken/broken.qmesh")));

    EXPECT_THAT(printed, HasSubstr("== " + Native("broken.fbx").string() + " -> " +
                                   Native("broken/broken.qmesh").string() + "\nkestrel export: cannot load"));
    EXPECT_THAT(printed, HasSubstr("\n2 exported, 1 failed\n"));
    EXPECT_THAT(printed, ContainsRegex("crate/crate\\.qmesh +ok +" + std::to_string(crate.TriangleCount) + " +0 +[0-9.]+ s\n"));
    EXPECT_THAT(printed, ContainsRegex("broken/broken\\.qmesh +failed \\(1\\) +0 +0 +[0-9.]+ s\n"));

    const std::string json = Read("summary.json");
    EXPECT_THAT(json, HasSubstr("\"target\": \"" + Native("crate/crate.qmesh").string() +
                                "\", \"result\": \"ok\", \"exitCode\": 0, \"triangles\": " +
                                std::to_string(crate.TriangleCount) + ", \"issues\": 0, \"seconds\": "));
    EXPECT_THAT(json, HasSubstr("\"triangles\": " + std::to_string(level.TriangleCount)));
    EXPECT_THAT(json, HasSubstr("\"result\": \"failed\", \"exitCode\": 1, \"triangles\": 0"));
}

TEST_F(BatchExport, BatchFileLinesThatCannotBeReadAreNamedByTheirNumber)
{
    std::vector<BatchEntry> entries;
    const std::string file = Native("batch.txt").string();
    EXPECT_EQ(ReadBack("a.obj a.qmesh\n\"b c.obj b.qmesh\n", entries), file + ":2: a double quote is not closed");
    EXPECT_EQ(ReadBack("a.obj\n", entries), file + ":1: expected \"scene target [--set Key=Value ...]\"");
    EXPECT_EQ(ReadBack("a.obj a.qmesh -j 4\n", entries),
              file + ":1: after the target only \"--set Key=Value\" may follow, not '-j'");
    EXPECT_EQ(ReadBack("a.obj a.qmesh --set\n", entries),
              file + ":1: after the target only \"--set Key=Value\" may follow, not '--set'");
}

// The command line as a user types it: several scenes go to one folder, a folder per scene, each
// with the options given once for all.
TEST_F(BatchExport, SeveralScenesOnTheCommandLineExportEachIntoTheFolderAndTheExitCodeNamesAFailure)
{
    Write("broken.fbx", "Kaydara FBX Binary  \nnot really");
    const auto run = [&](const std::string& arguments, int& code) {
        const std::string command = std::string("'") + KESTREL_EXECUTABLE + "' export " + arguments + " 2>&1";
        std::FILE* pipe = popen(command.c_str(), "r");
        std::string printed;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
            printed += static_cast<char>(c);
        code = WEXITSTATUS(pclose(pipe));
        return printed;
    };
    const std::string crate = KESTREL_SOURCE_DIR "/examples/crate/crate.obj";
    const std::string broken = Native("broken.fbx").string();
    const std::string folder = Native("out").string();

    int code = 0;
    const std::string printed =
        run("'" + crate + "' '" + broken + "' -o '" + folder + "' --set ColMesh=0 -j 2 --no-progress", code);
    EXPECT_EQ(code, 1) << printed;
    VStaticMeshFile exported;
    EXPECT_TRUE(ReadStaticMesh(FromNativePath(Native("out/crate/crate.qmesh").string()), exported)) << printed;
    EXPECT_FALSE(std::filesystem::exists(Native("out/crate/crate.qcolmesh")));
    EXPECT_FALSE(std::filesystem::exists(Native("out/broken/broken.qmesh")));
    EXPECT_THAT(printed, HasSubstr("\n1 exported, 1 failed\n"));

    EXPECT_EQ(run("'" + crate + "' '" + broken + "'", code),
              "kestrel export: with several scenes, --output names the folder to export them into\n");
    EXPECT_EQ(code, 2);
}
