// Every file the static and the model export of each shared scene write, hashed, against a table recorded
// before the export's passes were reworked for speed: any output byte that moves shows here, by file.

#include "kestrel/ExportCommand.h"

#include "base/Path.h"
#include "importers/ImportScene.h"
#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

class SharedSceneBytes : public ::testing::Test {
protected:
    SharedSceneBytes()
    {
        setenv("XDG_CONFIG_HOME", (m_folder / "config").c_str(), 1);
    }
    int Export(const ExportRequest& request)
    {
        std::FILE* terminal = std::tmpfile();
        const int code = RunExport(request, [](const std::string& path) { return ImportScene(path); }, terminal, terminal);
        std::fclose(terminal);
        return code;
    }

    UniqueTempFolder m_scratch{"kestrel_bytes"};
    const std::filesystem::path& m_folder = m_scratch.Native();
};

uint64_t Fnv1a(const std::string& bytes)
{
    uint64_t hash = 14695981039346656037ull;
    for (unsigned char byte : bytes)
        hash = (hash ^ byte) * 1099511628211ull;
    return hash;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// Reports name the scene and target folders, which differ between machines and runs, so those are taken out
// before hashing.
TEST_F(SharedSceneBytes, EveryFileMatchesTheRecordedTable)
{
    // Normal form, as the exporter shows it: the built-in folder reaches the scenes through "..".
    const std::filesystem::path scenes = std::filesystem::path(KESTREL_SHARED_SCENES_DIR).lexically_normal();
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    std::vector<std::filesystem::path> sceneFiles;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(scenes))
        if (entry.is_regular_file() && CanImportScene(FromNativePath(entry.path().string())))
            sceneFiles.push_back(entry.path());
    std::sort(sceneFiles.begin(), sceneFiles.end());

    std::map<std::string, std::string> actual;
    const std::filesystem::path outputs = m_folder / "bytes";
    for (const std::filesystem::path& scene : sceneFiles) {
        const std::string relative = scene.lexically_relative(scenes).generic_string();
        // Each kind in a folder of its own: both write their report and texture copies beside the target.
        for (const auto& [target, settings] : {std::pair<std::string, std::vector<std::string>> {"static/scene.qmesh", {}},
                                               {"model/scene.model", {"ExportBones=TRUE"}}}) {
            ExportRequest request;
            request.Scene = scene.string();
            request.Target = (outputs / relative / target).string();
            request.Settings = settings;
            // The page holds the phases' times, which differ from run to run.
            request.ReportPage = false;
            actual[relative + "/" + target + " exit code"] = std::to_string(Export(request));
        }
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(outputs)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        // In the system's form (the debug file) and in the host's (what a person reads).
        for (const std::string& form : {FromNativePath(scenes.string()), scenes.string()})
            ReplaceAll(bytes, form, "<scenes>");
        for (const std::string& form : {FromNativePath(outputs.string()), outputs.string()})
            ReplaceAll(bytes, form, "<outputs>");
        char hash[17];
        std::snprintf(hash, sizeof hash, "%016llx", static_cast<unsigned long long>(Fnv1a(bytes)));
        actual[entry.path().lexically_relative(outputs).generic_string()] = hash;
    }

    std::map<std::string, std::string> recorded;
    std::ifstream table(KESTREL_SOURCE_DIR "/tests/kestrel/SharedSceneBytes.tsv");
    for (std::string line; std::getline(table, line);)
        if (const size_t tab = line.find('\t'); tab != std::string::npos)
            recorded[line.substr(0, tab)] = line.substr(tab + 1);
    for (const auto& [file, value] : actual)
        EXPECT_EQ(recorded.count(file) ? recorded[file] : "(not recorded)", value) << file;
    for (const auto& [file, value] : recorded)
        EXPECT_TRUE(actual.count(file)) << file << " is no longer written";

    if (recorded != actual) {
        // The whole table as this build writes it, for a change of output that is meant.
        std::ofstream written("SharedSceneBytes.tsv");
        for (const auto& [file, value] : actual)
            written << file << '\t' << value << '\n';
        ADD_FAILURE() << "this build's table is in " << std::filesystem::absolute("SharedSceneBytes.tsv");
    }
}

} // namespace
