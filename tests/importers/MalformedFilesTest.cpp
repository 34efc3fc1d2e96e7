#include "SceneFiles.h"

#include "importers/ImportScene.h"
#include "importers/SceneRecord.h"
#include "importers/assimp/ChildProcessTrial.h"
#include "importers/assimp/ColladaIndexCheck.h"
#include "importers/assimp/ColladaSkinCheck.h"
#include "importers/assimp/FbxContentCheck.h"
#include "importers/assimp/ReadAssimpScene.h"

#include <maya/MFn.h>
#include <maya/MItDependencyNodes.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

bool SceneIsEmpty()
{
    return MItDependencyNodes(MFn::kDagNode).isDone();
}

TEST(MalformedFiles, TruncatedGltfGivesAssimpsReasonAndAnEmptyScene)
{
    const std::string folder = MakeTestFolder("truncated_gltf");
    const ImportResult result = ImportScene(WriteTestFile(folder, "cut.gltf", "{\"asset\":{\"version\":\"2.0\"},\"nodes\":[{\"na"));
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(result.Error.rfind("'cut.gltf': ", 0), 0u) << result.Error;
    EXPECT_GT(result.Error.size(), std::string("'cut.gltf': ").size());
    EXPECT_TRUE(SceneIsEmpty());
}

TEST(MalformedFiles, TruncatedBinaryFbxFails)
{
    const std::string folder = MakeTestFolder("truncated_fbx");
    std::string bytes("Kaydara FBX Binary  \0\x1a\0\xe8\x1c\0\0", 27);
    bytes += std::string(40, '\xff');
    const ImportResult result = ImportScene(WriteTestFile(folder, "cut.fbx", bytes));
    EXPECT_FALSE(result.Ok);
    EXPECT_EQ(result.Error.rfind("'cut.fbx': ", 0), 0u) << result.Error;
}

TEST(MalformedFiles, AGlbWithAHugeDeclaredLengthFails)
{
    std::string bytes("glTF\x02\0\0\0\xff\xff\xff\x7f\xff\xff\xff\x7fJSON", 20);
    SceneRecord record;
    ImportResult result;
    EXPECT_FALSE(ReadAssimpMemory(bytes.data(), bytes.size(), "glb", record, result));
    EXPECT_EQ(result.Error, "'scene.glb': the binary glTF file is shorter than its header says (truncated?)");
}

TEST(FbxContentCheck, WholeBase64ContentPassesAndBrokenContentDoesNot)
{
    EXPECT_TRUE(FbxContentIsWholeBase64("Content: ,\n \"iVBORw0K\"\n}"));
    EXPECT_TRUE(FbxContentIsWholeBase64("Content: \"iVBO\", \"Rw0K\"\n}"));
    EXPECT_FALSE(FbxContentIsWholeBase64("Content: \"iVBOR\"\n}"));
    EXPECT_FALSE(FbxContentIsWholeBase64("Content: \"iV*O\"\n}"));
    EXPECT_FALSE(FbxContentIsWholeBase64("Content: \"iVBO"));
    EXPECT_TRUE(FbxContentIsWholeBase64(std::string("Kaydara FBX Binary  \0Content: \"x\"", 32)));
}

TEST(ColladaIndexCheck, IndexListsOfNumbersPassAndStrayCharactersDoNot)
{
    EXPECT_TRUE(ColladaIndexListsAreNumeric("<param name=\"X\"/><vcount>3 4</vcount><p>0 1 -2\n3</p><v/>"));
    EXPECT_TRUE(ColladaIndexListsAreNumeric("<float_array count=\"1\">1.5e3</float_array>"));
    EXPECT_FALSE(ColladaIndexListsAreNumeric("<p>0 1 \xc2\xcf" "2</p>"));
    EXPECT_FALSE(ColladaIndexListsAreNumeric("<vcount>3x</vcount>"));
    EXPECT_FALSE(ColladaIndexListsAreNumeric("<p count=\"2\">0 1.5</p>"));
}

// A two-joint skin over a three-vertex mesh; the pieces are replaced one at a time to break it.
std::string SkinnedCollada(std::string_view pairs, std::string_view weightCount = "3",
                           std::string_view weightValues = "3")
{
    return "<COLLADA><library_geometries><geometry id=\"mesh\"><mesh>"
           "<source id=\"pos\"><float_array id=\"pos-array\" count=\"9\">0 0 0 1 0 0 0 1 0</float_array>"
           "<technique_common><accessor source=\"#pos-array\" count=\"3\" stride=\"3\"/></technique_common></source>"
           "<vertices id=\"verts\"><input semantic=\"POSITION\" source=\"#pos\"/></vertices>"
           "</mesh></geometry></library_geometries>"
           "<library_controllers><controller id=\"skin\"><skin source=\"#mesh\">"
           "<source id=\"joints\"><Name_array id=\"joints-array\" count=\"2\">a b</Name_array>"
           "<technique_common><accessor source=\"#joints-array\" count=\"2\"/></technique_common></source>"
           "<source id=\"weights\"><float_array id=\"weights-array\" count=\"" + std::string(weightValues) +
           "\">1 0.5 0.5</float_array><technique_common><accessor source=\"#weights-array\" count=\"3\"/>"
           "</technique_common></source>"
           "<joints><input semantic=\"JOINT\" source=\"#joints\"/></joints>"
           "<vertex_weights count=\"" + std::string(weightCount) + "\">"
           "<input semantic=\"JOINT\" source=\"#joints\" offset=\"0\"/>"
           "<input semantic=\"WEIGHT\" source=\"#weights\" offset=\"1\"/>"
           "<vcount>1 2 1</vcount><v>" + std::string(pairs) + "</v></vertex_weights>"
           "</skin></controller></library_controllers></COLLADA>";
}

TEST(ColladaSkinCheck, IndicesAndAccessorsInsideTheirSourcesPassAndOthersAreNamed)
{
    EXPECT_EQ(ColladaSkinProblem(SkinnedCollada("0 0 0 1 1 2 1 0")), "");
    EXPECT_EQ(ColladaSkinProblem(SkinnedCollada("0 0 0 1 81 2 1 0")), "the skin of 'mesh' names joint 81 of 2");
    EXPECT_EQ(ColladaSkinProblem(SkinnedCollada("0 0 0 1 1 3 1 0")), "the skin of 'mesh' names weight 3 of 3");
    EXPECT_EQ(ColladaSkinProblem(SkinnedCollada("0 0 0 1 1 2 1 0", "2")), "the skin of 'mesh' weights 2 of its 3 vertices");
    EXPECT_EQ(ColladaSkinProblem(SkinnedCollada("0 0 0 1 1 2 1 0", "3", "2")),
              "the accessor of source 'weights' reads 3 values from an array of 2");
    // Not XML at all: Assimp names that error better.
    EXPECT_EQ(ColladaSkinProblem("<COLLADA><skin"), "");
}

// A missing file, a file of another kind, and contents our own checks refuse before Assimp reads them.
TEST(MalformedFiles, RefusalsNameTheFileAndTheReason)
{
    const std::string folder = MakeTestFolder("refused");
    const ImportResult missing = ImportScene(folder + "\\nothing.fbx");
    EXPECT_FALSE(missing.Ok);
    EXPECT_EQ(missing.Error, "'nothing.fbx': no such file");
    const struct {
        const char* Name;
        std::string Contents;
        const char* Error;
    } refusals[] = {
        {"notes.txt", "hello", "'notes.txt': not a Maya ASCII, FBX, glTF, COLLADA or OBJ file"},
        {"cut.fbx",
         "; FBX 7.5.0 project file\nObjects:  {\n  Video: 1, \"Video::a\", \"Clip\" {\n    Content: ,\n \"iVBORw0KGgo\"\n  }\n}\n",
         "'cut.fbx': an embedded file of this ASCII FBX is not whole base64 (truncated?)"},
        {"skin.dae", SkinnedCollada("0 0 7 1 1 2 1 0"), "'skin.dae': the skin of 'mesh' names joint 7 of 2"}};
    for (const auto& refusal : refusals) {
        const ImportResult result = ImportScene(WriteTestFile(folder, refusal.Name, refusal.Contents));
        EXPECT_FALSE(result.Ok) << refusal.Name;
        EXPECT_EQ(result.Error, refusal.Error);
    }
}

TEST(ChildProcessTrial, TheChildsBytesComeBackWholeAndACrashCostsOnlyTheChild)
{
    int touched = 0;
    // More than a pipe holds at once, so that the parent must read while the child writes.
    const std::string large(3 << 20, 'k');
    EXPECT_EQ(RunInChildProcess([&] {
        touched = 1;
        return large + "end";
    }),
              large + "end");
    EXPECT_EQ(touched, 0);
    EXPECT_EQ(RunInChildProcess([]() -> std::string { std::abort(); }), std::nullopt);
    EXPECT_EQ(RunInChildProcess([]() -> std::string { std::exit(3); }), std::nullopt);
    EXPECT_EQ(RunInChildProcess([]() -> std::string { throw std::runtime_error("lost"); }), std::nullopt);
}

TEST(MalformedFiles, FacesNamingMissingVerticesAreRefusedByTheReader)
{
    const std::string folder = MakeTestFolder("bad_faces");
    const ImportResult result = ImportScene(WriteTestFile(folder, "bad.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n"));
    if (result.Ok)
        EXPECT_GE(result.WarningCount(), 1);
    else
        EXPECT_EQ(result.Error.rfind("'bad.obj': ", 0), 0u) << result.Error;
}

} // namespace
