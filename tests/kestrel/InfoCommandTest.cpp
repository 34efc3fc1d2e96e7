#include "kestrel/InfoCommand.h"

#include "CapturedRun.h"
#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

struct Captured : CapturedRun {
    int ExitCode = 0;
};

Captured RunInfoOn(const std::string& path)
{
    Captured captured;
    captured.ExitCode = captured.Run([&](std::FILE* out, std::FILE* err) { return RunInfo(path, out, err); });
    return captured;
}

std::string WriteFile(const std::string& name, const std::string& text)
{
    // Tests run in parallel processes; each writes into a folder of its own.
    static const UniqueTempFolder root("kestrel_info");
    const std::filesystem::path folder =
        root.Native(std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::create_directories(folder);
    const std::filesystem::path path = folder / name;
    std::ofstream(path, std::ios::binary) << text;
    return path.string();
}

const char* const kTwoMaterialObj = "mtllib board.mtl\n"
                                    "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 2 0\n"
                                    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nvt 0 1\n"
                                    "o board\n"
                                    "usemtl red\nf 1/1 2/2 3/3 4/4\n"
                                    "usemtl blue\nf 4/4 3/3 5/5\n";

// The scene, its DAG with node types and mesh statistics, each shading set with its shader, texture and
// members, and no skins or animation.
TEST(InfoOnScene, ShowsTheDagShadingSetsSkinsAndAnimationOfAnObj)
{
    WriteFile("board.mtl", "newmtl red\nKd 1 0 0\nmap_Kd red.png\nnewmtl blue\nKd 0 0 1\n");
    const std::string path = WriteFile("board.obj", kTwoMaterialObj);
    const Captured info = RunInfoOn(path);
    EXPECT_EQ(info.ExitCode, 0) << info.Err;
    EXPECT_EQ(info.Out.rfind("Scene: " + path + "\n", 0), 0u) << info.Out;
    for (const char* part :
         {"Units: centimetre, time film (24 fps)\n",
          "DAG:\n  board (transform)\n"
          "    boardShape (mesh): 5 vertices, 2 polygons, 7 face-vertices, UV sets: map1 (current)\n",
          "  redSG: 1 members\n    shader red (lambert)\n      colour texture \"",
          "red.png\"\n    member boardShape: 1 faces\n",
          "  blueSG: 1 members\n    shader blue (lambert)\n    member boardShape: 1 faces\n",
          "Skins:\nAnimation: 0 curves\n"})
        EXPECT_NE(info.Out.find(part), std::string::npos) << part << "\nin\n" << info.Out;
}

TEST(InfoOnScene, ShowsCustomAttributesUnderTheirNode)
{
    const std::string path = WriteFile(
        "flagged.gltf",
        "{\"asset\":{\"version\":\"2.0\"},\"nodes\":[{\"name\":\"door\",\"extras\":{\"ExportSkip\":1,"
        "\"portal_key\":\"north\"}}],\"scenes\":[{\"nodes\":[0]}],\"scene\":0}");
    const Captured info = RunInfoOn(path);
    EXPECT_EQ(info.ExitCode, 0) << info.Err;
    EXPECT_NE(info.Out.find("  door (transform)\n    attribute ExportSkip = 1\n    attribute portal_key = \"north\"\n"),
              std::string::npos)
        << info.Out;
}

// The file's two joints were bound at (0.5, 1, 0) m; of its 10 vertices 8 follow each joint, never more than two
// joints one vertex. Its one animation keys 5.5 s.
TEST(InfoOnScene, ShowsEachSkinsInfluencesWithWhereTheyWereBoundAndWhatTheyMove)
{
    const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "gltf/SimpleSkin/SimpleSkin.gltf";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "shared scene not present: " << scene;
    const Captured info = RunInfoOn(scene.string());
    EXPECT_EQ(info.ExitCode, 0) << info.Err;
    EXPECT_NE(info.Out.find("Skins:\n  skinCluster1 on nodes_0_Shape: 2 influences, 10 vertices, at most 2 influences a vertex\n"
                            "    nodes_1_: bound at (50.000, 100.000, 0.000) cm, moves 8 vertices\n"
                            "    nodes_2_: bound at (50.000, 100.000, 0.000) cm, moves 8 vertices\n"
                            "Animation: 3 curves, playback range 0.000 to 132.000\n"
                            "  clip \"clip1\": frames 0.000 to 132.000 at 24.000 fps (5.500 s)\n"),
              std::string::npos)
        << info.Out;
}

// A truncated scene, a file of unknown kind, a missing scene and a missing asset: each fails with its name.
TEST(InfoFailures, WhatCannotBeReadFailsNamingTheFileAndTheReason)
{
    const Captured truncated = RunInfoOn(WriteFile("cut.gltf", "{\"asset\":{\"version\":\"2.0\"},\"nodes\":["));
    EXPECT_EQ(truncated.ExitCode, 1);
    EXPECT_TRUE(truncated.Out.empty());
    EXPECT_EQ(truncated.Err.rfind("kestrel info: cannot load 'cut.gltf': ", 0), 0u) << truncated.Err;

    const std::string notes = WriteFile("notes.txt", "hello");
    const Captured unknown = RunInfoOn(notes);
    EXPECT_EQ(unknown.ExitCode, 1);
    EXPECT_NE(unknown.Err.find("'" + notes + "': not a scene or asset file kestrel can read"), std::string::npos)
        << unknown.Err;

    const std::string scene = WriteFile("here", "") + "-not.fbx";
    const Captured missingScene = RunInfoOn(scene);
    EXPECT_EQ(missingScene.ExitCode, 1);
    EXPECT_EQ(missingScene.Err, "kestrel info: '" + scene + "': no such file\n");

    const std::string asset = WriteFile("gone", "") + ".qmesh";
    const Captured missingAsset = RunInfoOn(asset);
    EXPECT_EQ(missingAsset.ExitCode, 1);
    EXPECT_EQ(missingAsset.Err.rfind("kestrel info: '" + asset + "': ", 0), 0u) << missingAsset.Err;
}

} // namespace
