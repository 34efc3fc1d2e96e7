// "kestrel export" run in-process: the scene loader is handed in, the terminal is a temporary file.

#include "kestrel/ExportCommand.h"
#include "kestrel/InfoCommand.h"
#include "kestrel/ImportCommand.h"

#include "base/Path.h"
#include "formats/LoadModel.h"
#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"
#include "model/Validate.h"
#include "importers/ImportScene.h"
#include "tests/UniqueTempFolder.h"

#include "../geometry/lightmap/AtlasChecks.h"
#include "CapturedRun.h"

#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <standin/SceneBuilder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

bool LoadTwoCubes(const std::string&, std::string&)
{
    standin::NewScene();
    for (int cube = 0; cube < 2; ++cube) {
        const std::string name = cube == 0 ? "near" : "far";
        const MObject transform = standin::CreateNode("transform", name);
        standin::MeshDescription description;
        for (int corner = 0; corner < 8; ++corner)
            description.points.emplace_back(300.0 * cube + 100.0 * (corner & 1), 100.0 * ((corner >> 1) & 1),
                                     100.0 * ((corner >> 2) & 1));
        description.counts = {4, 4, 4, 4, 4, 4};
        description.connects = {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5};
        const MObject shape = standin::CreateMesh(name + "Shape", transform, description);
        standin::Assign(standin::CreateShader("lambert", name + "Stone"), shape);
    }
    return true;
}

// Loads through the importers, as the command line does.
bool ImportFromFile(const std::string& path, std::string& error)
{
    const ImportResult result = ImportScene(path);
    error = result.Error;
    return result.Ok;
}

class ExportCommand : public ::testing::Test {
protected:
    ExportCommand()
    {
        // The command keeps the user's application settings; tests keep theirs apart.
        setenv("XDG_CONFIG_HOME", (m_folder / "config").c_str(), 1);
    }
    int Run(ExportRequest request, const SceneLoader& loader = LoadTwoCubes)
    {
        CapturedRun run;
        const int code = run.Run([&](std::FILE* out, std::FILE* err) { return RunExport(request, loader, out, err); });
        Out = run.Out;
        Err = run.Err;
        return code;
    }
    ExportRequest Request(const std::string& target) const
    {
        ExportRequest request;
        request.Scene = (m_folder / "scene.ma").string();
        request.Target = (m_folder / target).string();
        return request;
    }
    std::filesystem::path Native(const std::string& relative) const { return m_folder / relative; }

    // Exports every shared scene the importers take to shared/NAME/NAME.extension with the
    // settings given and hands on those that loaded; answers how many did.
    int ExportSharedScenes(const std::string& extension, const std::vector<std::string>& settings,
                           const std::function<void(const std::string& name, const ExportRequest&, int code)>& check)
    {
        int exported = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(KESTREL_SHARED_SCENES_DIR)) {
            const std::string scene = entry.path().string();
            if (!entry.is_regular_file() || !CanImportScene(FromNativePath(scene)))
                continue;
            const std::string name = entry.path().stem().string();
            ExportRequest request;
            request.Scene = scene;
            request.Target = Native("shared/" + name + "/" + name + extension).string();
            request.Settings = settings;
            const int code = Run(request, ImportFromFile);
            if (Err.find("cannot load") != std::string::npos)
                continue;
            SCOPED_TRACE(scene);
            check(name, request, code);
            ++exported;
        }
        return exported;
    }
    int Triangles(const std::string& relative) const
    {
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(FromNativePath(Native(relative).string()), mesh));
        return mesh.TriangleCount;
    }

    std::string Out;
    std::string Err;

private:
    UniqueTempFolder m_scratch{"kestrel_export"};
    const std::filesystem::path& m_folder = m_scratch.Native();
};

TEST_F(ExportCommand, ExportsTheWholeSceneAndSaysWhere)
{
    EXPECT_EQ(Run(Request("out/level.qmesh")), 0);
    EXPECT_EQ(Triangles("out/level.qmesh"), 24);
    EXPECT_TRUE(std::filesystem::exists(Native("out/level.qcolmesh")));
    EXPECT_THAT(Out, HasSubstr("*** ExportWorld started ***\n"));
    EXPECT_THAT(Out, HasSubstr("Exported '"));
    EXPECT_TRUE(Err.empty()) << Err;
}

TEST_F(ExportCommand, FiledReportIsPrinted)
{
    const auto missingTexture = [](const std::string& scene, std::string& error) {
        LoadTwoCubes(scene, error);
        standin::CreateFileTexture("bark", "/nowhere/bark.tga", "nearStone.color");
        return true;
    };
    EXPECT_EQ(Run(Request("out/level.qmesh"), missingTexture), 0);
    EXPECT_TRUE(std::filesystem::exists(Native("out/ErrLog.txt")));
    EXPECT_THAT(Out, HasSubstr("Error:\nCould not copy file\n"));
}

TEST_F(ExportCommand, SelectionExportsOnlyTheNamedNodes)
{
    ExportRequest request = Request("sel.qmesh");
    request.Selection = {"far"};
    EXPECT_EQ(Run(request), 0);
    EXPECT_EQ(Triangles("sel.qmesh"), 12);
}

TEST_F(ExportCommand, SetChangesAnOptionAndIsStoredWithTheTarget)
{
    ExportRequest request = Request("nocol.qmesh");
    request.Settings = {"ColMesh=0"};
    EXPECT_EQ(Run(request), 0);
    EXPECT_FALSE(std::filesystem::exists(Native("nocol.qcolmesh")));

    EXPECT_EQ(Run(Request("nocol.qmesh")), 0);
    EXPECT_FALSE(std::filesystem::exists(Native("nocol.qcolmesh")));
}

TEST_F(ExportCommand, UnknownOptionKeyIsRefusedBeforeLoading)
{
    ExportRequest request = Request("x.qmesh");
    request.Settings = {"ColourMesh=0"};
    bool loaded = false;
    EXPECT_EQ(Run(request, [&](const std::string&, std::string&) { return loaded = true; }), 2);
    EXPECT_FALSE(loaded);
    EXPECT_THAT(Err, HasSubstr("'ColourMesh' is not an export option"));
}

TEST_F(ExportCommand, SettingWithoutEqualsSignIsRefused)
{
    ExportRequest request = Request("x.qmesh");
    request.Settings = {"ColMesh"};
    EXPECT_EQ(Run(request), 2);
    EXPECT_THAT(Err, HasSubstr("is not of the form Key=Value"));
}

TEST_F(ExportCommand, UnknownSelectedNodeIsNamed)
{
    ExportRequest request = Request("x.qmesh");
    request.Selection = {"nowhere"};
    EXPECT_EQ(Run(request), 1);
    EXPECT_THAT(Err, HasSubstr("no node named 'nowhere'"));
}

TEST_F(ExportCommand, TargetOfNoKnownFormatIsRefusedWithTheKnownExtensions)
{
    EXPECT_EQ(Run(Request("level.obj")), 2);
    EXPECT_THAT(Err, HasSubstr("the known extensions are .qmesh"));
    EXPECT_FALSE(std::filesystem::exists(Native("level.obj")));
}

TEST_F(ExportCommand, SceneThatCannotBeLoadedFailsWithTheReason)
{
    const SceneLoader broken = [](const std::string&, std::string& error) {
        error = "not a scene";
        return false;
    };
    EXPECT_EQ(Run(Request("x.qmesh"), broken), 1);
    EXPECT_THAT(Err, HasSubstr("not a scene"));
}

TEST_F(ExportCommand, DebugWritesTheDebugFileBesideTheTarget)
{
    ExportRequest request = Request("dbg/level.qmesh");
    request.Debug = true;
    EXPECT_EQ(Run(request), 0);
    EXPECT_TRUE(std::filesystem::exists(Native("dbg/debug.txt")));
}

TEST_F(ExportCommand, LightmapPictureIsDrawnForEachMaterialOfTheAtlas)
{
    ExportRequest request = Request("lit.qmesh");
    request.Settings = {"LightmapUVs=1"};
    request.LightmapPicture = Native("atlas.png").string();
    EXPECT_EQ(Run(request), 0) << Err;
    // The two cubes have a shader each: one picture per material, numbered.
    for (const char* name : {"atlas.0.png", "atlas.1.png"}) {
        std::ifstream in(Native(name), std::ios::binary);
        std::string head(24, '\0');
        in.read(head.data(), 24);
        EXPECT_EQ(head.substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8)) << name;
        // The width in the header: a pixel per texel of the atlas.
        EXPECT_EQ(head.substr(16, 4), std::string("\0\0\x08\0", 4)) << name;
    }
    EXPECT_THAT(Out, HasSubstr("Lightmap atlas of material 'nearStone' drawn to '"));
    EXPECT_TRUE(Err.empty()) << Err;
}

TEST_F(ExportCommand, LightmapPictureOfAMeshWithoutLightmapUVsIsRefused)
{
    ExportRequest request = Request("unlit.qmesh");
    request.Settings = {"LightmapUVs=0"};
    request.LightmapPicture = Native("atlas.png").string();
    EXPECT_EQ(Run(request), 1);
    EXPECT_THAT(Err, HasSubstr("has no lightmap UVs to draw; export with --set LightmapUVs=1"));
    EXPECT_FALSE(std::filesystem::exists(Native("atlas.png")));
}

// The atlases of a real scene, read back from the file and drawn texel by texel.
TEST_F(ExportCommand, SharedSceneLightmapAtlasesKeepTheirGuttersAndStretch)
{
    const std::filesystem::path scene =
        std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "gltf/KenneyCity/building-small-a.glb";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    ExportRequest request;
    request.Scene = scene.string();
    request.Target = Native("lit/building.qmesh").string();
    request.Settings = {"LightmapUVs=1"};
    const SceneLoader import = [](const std::string& path, std::string& error) {
        const ImportResult result = ImportScene(path);
        error = result.Error;
        return result.Ok;
    };
    ASSERT_EQ(Run(request, import), 0) << Err;
    EXPECT_THAT(Out, ::testing::Not(HasSubstr("AtlasCreate failed")));
    VStaticMeshFile mesh;
    ASSERT_TRUE(ReadStaticMesh(FromNativePath(request.Target), mesh));
    EXPECT_THAT(DescribeStaticMesh(mesh), HasSubstr("Second UV: ("));
    for (size_t material = 0; material < mesh.Materials.size(); ++material) {
        std::vector<float> positions;
        std::vector<float> uvs;
        std::vector<uint32_t> corners;
        for (const VStaticMeshSubmesh& submesh : mesh.Submeshes) {
            if (submesh.Material != static_cast<int32_t>(material))
                continue;
            for (int32_t i = submesh.RenderFirstIndex; i < submesh.RenderFirstIndex + submesh.RenderIndexCount; ++i) {
                const uint32_t vertex = mesh.Indices[static_cast<size_t>(i)];
                const VStaticMeshVertex& v = mesh.Vertices[vertex];
                positions.insert(positions.end(), std::begin(v.Position), std::end(v.Position));
                uvs.insert(uvs.end(), std::begin(v.SecondUV), std::end(v.SecondUV));
                corners.push_back(vertex);
            }
        }
        AtlasFigures figures;
        EXPECT_EQ(CheckAtlas(positions, uvs, corners, 2048, 5, 0.1, figures), "") << mesh.Materials[material]->Name;
    }
}

TEST_F(ExportCommand, SharedTexturedSceneHasItsTextureCopiedBesideTheTarget)
{
    const std::filesystem::path scene =
        std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "gltf/KenneyCity/building-small-a.glb";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    ExportRequest request;
    request.Scene = scene.string();
    request.Target = Native("city/building.qmesh").string();
    ASSERT_EQ(Run(request, ImportFromFile), 0) << Err;
    EXPECT_TRUE(std::filesystem::exists(Native("city/Textures/colormap.png")));
    EXPECT_TRUE(std::filesystem::exists(Native("city/building.qcolmesh")));
    EXPECT_GT(Triangles("city/building.qmesh"), 0);
}

// The scene names its images by absolute paths of the machine it was saved on; they lie beside it here.
TEST_F(ExportCommand, MayaAsciiSceneExportsWithTheTexturesFoundBesideIt)
{
    const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / "maya_ascii" / "maya-usd" /
                                        "UsdExportUVSetMappingsTest" / "UsdExportUVSetMappingsTest.ma";
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";
    const SceneLoader import = [](const std::string& path, std::string& error) {
        const ImportResult result = ImportScene(path);
        error = result.Error;
        return result.Ok;
    };
    ExportRequest request;
    request.Scene = scene.string();
    request.Target = Native("uv/uv.qmesh").string();
    ASSERT_EQ(Run(request, import), 0) << Err;
    EXPECT_GT(Triangles("uv/uv.qmesh"), 0);
    EXPECT_TRUE(std::filesystem::exists(Native("uv/Textures/red.png")));
    EXPECT_TRUE(std::filesystem::exists(Native("uv/Textures/green.png")));
}

TEST_F(ExportCommand, EveryStaticSceneOfTheSharedSetExports)
{
    const std::filesystem::path scenes = KESTREL_SHARED_SCENES_DIR;
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    const int exported = ExportSharedScenes(".qmesh", {}, [&](const std::string&, const ExportRequest& request, int code) {
        EXPECT_EQ(code, 0) << Err;
        const std::filesystem::path target = request.Target;
        EXPECT_TRUE(std::filesystem::exists(target));
        EXPECT_TRUE(std::filesystem::exists(target.string() + "_data/_config.Xportel"));
        EXPECT_TRUE(std::filesystem::exists(target.string() + "_data/materials.xml"));
        EXPECT_TRUE(std::filesystem::exists(target.string() + "_data/resources.xml"));
    });
    EXPECT_GT(exported, 20);
}

TEST_F(ExportCommand, EverySharedSceneExportsAsAModelAndTheSkinnedOnesKeepTheirSkins)
{
    const std::filesystem::path scenes = KESTREL_SHARED_SCENES_DIR;
    if (!std::filesystem::exists(scenes))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    std::set<std::string> skinned;
    const int exported = ExportSharedScenes(".model", {"ExportBones=TRUE"}, [&](const std::string& name,
                                                                               const ExportRequest& request, int code) {
        ASSERT_EQ(code, 0) << Err;
        VMModel model;
        ASSERT_TRUE(LoadModel(model, FromNativePath(request.Target))) << LastError().Text;
        EXPECT_THAT(Validate(model), ::testing::IsEmpty());
        if (!model.Skeleton)
            return;
        skinned.insert(name);
        for (const VMSkinVertex* vertex : model.Vertices) {
            float sum = 0.0f;
            for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot)
                sum += vertex->InfluenceWeights[slot];
            ASSERT_NEAR(sum, 1.0f, 1e-4f) << "vertex " << vertex->Index;
        }
    });
    EXPECT_GT(exported, 20);
    for (const char* name : {"CesiumMan", "SimpleSkin", "Fox", "skin_2_influence", "maya_kenney_character_7700_binary"})
        EXPECT_TRUE(skinned.count(name)) << name;
    EXPECT_FALSE(skinned.count("box"));
}

// The house example: two rooms joined by a door, a corridor beyond an arch; both doorways are
// portal nodes, the screen in the second room an anti-portal.
TEST_F(ExportCommand, HouseExampleGetsAZoneForEachRoomJoinedByItsPortalsOnlyWithVisibilityOn)
{
    ExportRequest request;
    request.Scene = std::string(KESTREL_SOURCE_DIR) + "/examples/house/house.gltf";
    request.Target = Native("vis/house.qmesh").string();
    request.Settings = {"ComputeVisibility=1"};
    ASSERT_EQ(Run(request, ImportFromFile), 0);

    VMWShapeInstance3DCollection shapes;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(FromNativePath(Native("vis/house.qmesh_data/visibility.xml").string()), shapes, error), 0)
        << error;
    std::map<std::string, std::set<std::string>> leadsTo;
    for (const auto& zone : shapes.Shapes) {
        EXPECT_FALSE(static_cast<const VMWVisibilityZoneInstance&>(*zone).SubMeshIndices.empty()) << zone->Name;
        for (const auto& child : zone->Children) {
            const auto& portal = static_cast<const VMWPortalInstance&>(*child);
            ASSERT_TRUE(portal.TargetZone && portal.TargetPortal) << portal.Name;
            EXPECT_EQ(portal.TargetPortal->TargetPortal, &portal);
            leadsTo[zone->Name].insert(portal.TargetZone->Name);
        }
    }
    EXPECT_EQ(leadsTo, (std::map<std::string, std::set<std::string>> {
                           {"VisZone_RoomA", {"VisZone_RoomB"}},
                           {"VisZone_RoomB", {"VisZone_RoomA", "VisZone_Corridor"}},
                           {"VisZone_Corridor", {"VisZone_RoomB"}}}));
    EXPECT_TRUE(std::filesystem::exists(Native("vis/house.qmesh_data/_debug.VISINFO")));

    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    EXPECT_EQ(RunInfo(request.Target, out, err), 0);
    std::rewind(out);
    char buffer[8192] = {};
    std::fread(buffer, 1, sizeof buffer - 1, out);
    std::fclose(out);
    std::fclose(err);
    EXPECT_THAT(std::string(buffer), HasSubstr("Visibility: 3 zones, 4 portals\n  zone VisZone_RoomB: box"));

    // Without visibility there is no builder: the portal nodes are refused and neither file is
    // written.
    request.Target = Native("plain/house.qmesh").string();
    request.Settings = {"ComputeVisibility=-1"};
    request.Debug = true;
    ASSERT_EQ(Run(request, ImportFromFile), 0);
    EXPECT_THAT(Out, Not(HasSubstr("Calculating visibility")));
    EXPECT_FALSE(std::filesystem::exists(Native("plain/house.qmesh_data/visibility.xml")));
    EXPECT_FALSE(std::filesystem::exists(Native("plain/house.qmesh_data/_debug.VISINFO")));
    std::ifstream trace(Native("plain/debug.txt"), std::ios::binary);
    const std::string debug((std::istreambuf_iterator<char>(trace)), std::istreambuf_iterator<char>());
    EXPECT_THAT(debug, HasSubstr("#portals=3\r\n0  Error.\r\n1  Error.\r\n2  Error.\r\n"));
}

// The static mesh's triangles as sets of corners rounded to hundredths: the way back may renumber,
// reorder and rewind them.
std::multiset<std::array<std::array<long, 3>, 3>> TriangleSet(const std::filesystem::path& native)
{
    VStaticMeshFile mesh;
    EXPECT_TRUE(ReadStaticMesh(FromNativePath(native.string()), mesh)) << LastError().Text;
    std::multiset<std::array<std::array<long, 3>, 3>> triangles;
    for (size_t first = 0; first + 2 < mesh.Indices.size(); first += 3) {
        std::array<std::array<long, 3>, 3> triangle {};
        for (size_t corner = 0; corner < 3; ++corner)
            for (size_t axis = 0; axis < 3; ++axis)
                triangle[corner][axis] = std::lround(mesh.Vertices[mesh.Indices[first + corner]].Position[axis] * 100.0f);
        std::sort(triangle.begin(), triangle.end());
        triangles.insert(triangle);
    }
    return triangles;
}

class ImportCommand : public ExportCommand, public ::testing::WithParamInterface<const char*> {};

TEST_P(ImportCommand, ExportedStaticMeshGoesThroughTheSceneFileAndBackWithTheSameTriangles)
{
    ASSERT_EQ(Run(Request("first.qmesh")), 0);
    const std::string scene = Native(std::string("viewer/level") + GetParam()).string();

    std::FILE* out = std::tmpfile();
    ASSERT_EQ(RunImport(Native("first.qmesh").string(), scene, out, stderr), 0);
    std::fclose(out);

    ExportRequest again;
    again.Scene = scene;
    again.Target = Native("again.qmesh").string();
    ASSERT_EQ(Run(again, ImportFromFile), 0) << Err;
    EXPECT_EQ(TriangleSet(Native("again.qmesh")), TriangleSet(Native("first.qmesh")));
}

INSTANTIATE_TEST_SUITE_P(SceneFormats, ImportCommand, ::testing::Values(".glb", ".fbx", ".obj", ".dae"),
                         [](const auto& format) { return std::string(format.param + 1); });

TEST_F(ExportCommand, ImportRefusesAssetsAndScenesOfOtherKinds)
{
    ASSERT_EQ(Run(Request("first.qmesh")), 0);
    std::FILE* err = std::tmpfile();
    EXPECT_EQ(RunImport(Native("first.qmesh").string(), Native("level.blend").string(), stdout, err), 1);
    EXPECT_EQ(RunImport(Native("first.anim").string(), Native("level.glb").string(), stdout, err), 1);
    std::rewind(err);
    char text[512] = {};
    std::fread(text, 1, sizeof text - 1, err);
    std::fclose(err);
    EXPECT_THAT(text, HasSubstr("level.blend': scenes are written as .glb, .fbx, .obj, .dae\n"));
    EXPECT_THAT(text, HasSubstr("first.anim': only static meshes (.qmesh), collision meshes (.qcolmesh), models (.model)"));
    EXPECT_FALSE(std::filesystem::exists(Native("level.glb")));
}

} // namespace
