#include "kestrel/InfoCommand.h"

#include "tests/UniqueTempFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

struct Captured {
    int ExitCode = 0;
    std::string Out;
    std::string Err;
};

std::string ReadBack(std::FILE* file)
{
    std::string text;
    std::rewind(file);
    char buffer[4096];
    for (size_t got; (got = std::fread(buffer, 1, sizeof(buffer), file)) > 0;)
        text.append(buffer, got);
    std::fclose(file);
    return text;
}

Captured RunInfoOn(const std::string& path)
{
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    Captured captured;
    captured.ExitCode = RunInfo(path, out, err);
    captured.Out = ReadBack(out);
    captured.Err = ReadBack(err);
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

class InfoOnObj : public testing::Test {
protected:
    void SetUp() override
    {
        WriteFile("board.mtl", "newmtl red\nKd 1 0 0\nmap_Kd red.png\nnewmtl blue\nKd 0 0 1\n");
        m_path = WriteFile("board.obj", kTwoMaterialObj);
        m_info = RunInfoOn(m_path);
    }

    std::string m_path;
    Captured m_info;
};

TEST_F(InfoOnObj, SucceedsAndNamesTheScene)
{
    EXPECT_EQ(m_info.ExitCode, 0) << m_info.Err;
    EXPECT_EQ(m_info.Out.rfind("Scene: " + m_path + "\n", 0), 0u) << m_info.Out;
    EXPECT_NE(m_info.Out.find("Units: centimetre, time film (24 fps)\n"), std::string::npos) << m_info.Out;
}

TEST_F(InfoOnObj, ShowsTheDagWithNodeTypesAndMeshStatistics)
{
    EXPECT_NE(m_info.Out.find("DAG:\n  board (transform)\n"
                              "    boardShape (mesh): 5 vertices, 2 polygons, 7 face-vertices, UV sets: map1 (current)\n"),
              std::string::npos)
        << m_info.Out;
}

TEST_F(InfoOnObj, ShowsEachShadingSetWithItsShaderTextureAndMembers)
{
    EXPECT_NE(m_info.Out.find("  redSG: 1 members\n    shader red (lambert)\n      colour texture \""),
              std::string::npos)
        << m_info.Out;
    EXPECT_NE(m_info.Out.find("red.png\"\n    member boardShape: 1 faces\n"), std::string::npos) << m_info.Out;
    EXPECT_NE(m_info.Out.find("  blueSG: 1 members\n    shader blue (lambert)\n    member boardShape: 1 faces\n"),
              std::string::npos)
        << m_info.Out;
}

TEST_F(InfoOnObj, ReportsNoSkinsAndNoAnimation)
{
    EXPECT_NE(m_info.Out.find("Skins:\nAnimation: 0 curves\n"), std::string::npos) << m_info.Out;
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

TEST(InfoFailures, ATruncatedSceneNamesTheFileAndTheReasonAndFails)
{
    const std::string path = WriteFile("cut.gltf", "{\"asset\":{\"version\":\"2.0\"},\"nodes\":[");
    const Captured info = RunInfoOn(path);
    EXPECT_EQ(info.ExitCode, 1);
    EXPECT_TRUE(info.Out.empty());
    EXPECT_EQ(info.Err.rfind("kestrel info: cannot load 'cut.gltf': ", 0), 0u) << info.Err;
}

TEST(InfoFailures, AFileOfUnknownKindIsRefused)
{
    const std::string path = WriteFile("notes.txt", "hello");
    const Captured info = RunInfoOn(path);
    EXPECT_EQ(info.ExitCode, 1);
    EXPECT_NE(info.Err.find("'" + path + "': not a scene or asset file kestrel can read"), std::string::npos) << info.Err;
}

TEST(InfoFailures, AMissingSceneFileIsNamedAsMissing)
{
    const std::string path = WriteFile("here", "") + "-not.fbx";
    const Captured info = RunInfoOn(path);
    EXPECT_EQ(info.ExitCode, 1);
    EXPECT_EQ(info.Err, "kestrel info: '" + path + "': no such file\n");
}

TEST(InfoFailures, AMissingAssetFileNamesTheFile)
{
    const std::string path = WriteFile("gone", "") + ".qmesh";
    const Captured info = RunInfoOn(path);
    EXPECT_EQ(info.ExitCode, 1);
    EXPECT_EQ(info.Err.rfind("kestrel info: '" + path + "': ", 0), 0u) << info.Err;
}

} // namespace
