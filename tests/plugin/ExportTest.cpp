// Whole exports through the translator's writer, as Maya's export-all and export-selection run
// them in batch mode, read back with the format readers.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "formats/CollisionMeshReader.h"
#include "formats/StaticMeshReader.h"
#include "settings/ApplicationSettings.h"

#include <maya/MDagPath.h>
#include <standin/SceneBuilder.h>

#include <gmock/gmock.h>

#include <filesystem>

using ::testing::HasSubstr;

namespace {

class StaticExport : public PluginFixture {
protected:
    VStaticMeshFile ReadMesh(const std::string& relative)
    {
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(SystemPath(relative), mesh));
        return mesh;
    }
};

TEST_F(StaticExport, ExportAllWritesMeshCollisionMeshAndSettingsFolderAndDeletesTheCookedMeshes)
{
    AssignMaterial(AddCube("boxA", 0, 0, 0, 100), "stone");
    AssignMaterial(AddCube("boxB", 300, 0, 0, 100), "wood");
    Write("level/town.qmesh_data/cookedMesh_0.bin", "x");
    Write("level/town.qmesh_data/CookedMesh17", "x");
    Write("level/town.qmesh_data/cookedMeshes/keep", "x");

    ASSERT_TRUE(ExportAll("level/town.qmesh"));

    const VStaticMeshFile mesh = ReadMesh("level/town.qmesh");
    EXPECT_EQ(mesh.TriangleCount, 24);
    EXPECT_EQ(mesh.Materials.size(), 2u);
    VCollisionMeshFile collision;
    ASSERT_TRUE(ReadCollisionMesh(SystemPath("level/town.qcolmesh"), collision));
    EXPECT_EQ(collision.Indices.size(), 24u * 3u);
    EXPECT_TRUE(Has("level/town.qmesh_data/_config.Xportel"));
    EXPECT_TRUE(Has("level/town.qmesh_data/materials.xml"));
    EXPECT_TRUE(Has("level/town.qmesh_data/resources.xml"));
    EXPECT_THAT(Read("level/town.qmesh_data/materials.xml"), HasSubstr("name=\"wood\""));
    EXPECT_FALSE(Has("level/town.qmesh_data/cookedMesh_0.bin"));
    EXPECT_FALSE(Has("level/town.qmesh_data/CookedMesh17"));
    EXPECT_TRUE(Has("level/town.qmesh_data/cookedMeshes/keep"));
}

TEST_F(StaticExport, ExportSelectionWritesOnlyTheSelectedNodesAndNodesTaggedExportSkipAreLeftOut)
{
    AssignMaterial(AddCube("boxA", 0, 0, 0, 100), "stone");
    AssignMaterial(AddCube("boxB", 300, 0, 0, 100), "wood");
    AssignMaterial(AddCube("skipped", 600, 0, 0, 100), "wood");
    ASSERT_TRUE(standin::AddAttr(standin::NodeByName("skipped"), "ExportSkip", standin::AttrType::Int, 1.0));
    standin::Select({standin::PathTo("boxB")});

    ASSERT_TRUE(ExportSelection("sel.qmesh"));
    const VStaticMeshFile selected = ReadMesh("sel.qmesh");
    EXPECT_EQ(selected.TriangleCount, 12);
    EXPECT_FLOAT_EQ(selected.Bounds.Min[0], 300.0f);
    EXPECT_EQ(Report.Find("Empty scene"), nullptr);

    // Files that show nothing are still written, and the report says why (a warning, which only an
    // interactive export keeps).
    standin::Select({standin::PathTo("skipped")});
    standin::SetInteractive(true);
    const MStatus exported = ExportSelection("none.qmesh");
    standin::SetInteractive(false);
    ASSERT_TRUE(exported);
    EXPECT_EQ(ReadMesh("none.qmesh").TriangleCount, 0);
    EXPECT_NE(Report.Find("Empty scene"), nullptr);

    ASSERT_TRUE(ExportAll("all.qmesh"));
    const VStaticMeshFile all = ReadMesh("all.qmesh");
    EXPECT_EQ(all.TriangleCount, 24);
    EXPECT_FLOAT_EQ(all.Bounds.Max[0], 400.0f);
}

TEST_F(StaticExport, TargetNameIsSettledBeforeAnythingIsWritten)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");

    EXPECT_FALSE(ExportAll("out/rock.model"));
    EXPECT_FALSE(Has("out"));
    EXPECT_TRUE(Report.Entries.empty());

    ASSERT_TRUE(ExportAll("rock.qmesh.qmesh"));
    EXPECT_TRUE(Has("rock.qmesh"));
    EXPECT_FALSE(Has("rock.qmesh.qmesh"));
    // Without DebugPrint no trace is left beside the target.
    EXPECT_FALSE(Has("debug.txt"));
}

TEST_F(StaticExport, MissingTargetFolderIsIssueFourWithSuccessStatus)
{
    // With a project the textures go to the project's folder, so nothing creates the target's.
    Write("game/town.project", "");
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");

    EXPECT_TRUE(ExportAll("game/nowhere/town.qmesh"));
    EXPECT_FALSE(Has("game/nowhere"));
    const VReportEntry* entry = Report.Find("Could not save file");
    ASSERT_NE(entry, nullptr);
    EXPECT_THAT(entry->Detail, HasSubstr("town.qmesh"));
}

// Maya's own export writes the page, as the command line's does, with warnings and statistics that
// a batch export does not file; a page that cannot be written is said and the export stands.
TEST_F(StaticExport, ReportPageIsWrittenBesideTheTargetWithEveryIssueOrSaidWhyNot)
{
    Stop();
    Services.ReportPage = true;
    Start();
    standin::SetSceneFileName(MayaName("scenes/town.ma"));
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone", "/nowhere/bark.tga");
    AddCube("bare", 300, 0, 0, 100);

    ASSERT_TRUE(ExportAll("level/town.qmesh"));
    const std::string page = Read("level/report.html");
    EXPECT_THAT(page, HasSubstr("<th>Scene</th><td>" + Native("scenes/town.ma").string() + "</td>"));
    EXPECT_THAT(page, HasSubstr("<b>warning</b>: Node without material"));
    EXPECT_THAT(page, HasSubstr("<b>information</b>: Triangle stripping and listing statistics"));
    EXPECT_TRUE(MessageBoxes.Requests.empty());

    // With a project the textures go to the project's folder, so nothing creates the target's.
    Write("game/town.project", "");
    EXPECT_TRUE(ExportAll("game/nowhere/town.qmesh"));
    ASSERT_EQ(MessageBoxes.Requests.size(), 1u);
    EXPECT_THAT(MessageBoxes.Requests[0].Text,
                HasSubstr("Could not write the report page beside '" + Native("game/nowhere/town.qmesh").string() + "': "));
}

TEST_F(StaticExport, ExportRunsTheLogLinesOfEveryPhaseInOrder)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    ASSERT_TRUE(ExportAll("log.qmesh"));

    const std::vector<std::string> phases {"*** ExportWorld started ***\r\n", "Calculating meshes and textures...\r\n",
                                           "Centering Mesh...\r\n", "Checking materials...\r\n",
                                           "Generating triangle strips...\r\n", "Sorting primitivies...\r\n",
                                           "Final enumeration...\r\n", "SaveWorld returned 1\r\n",
                                           "SaveCollisionMesh returned 1\r\n", "Finished!\r\n"};
    auto from = Log.Messages.begin();
    for (const std::string& phase : phases) {
        from = std::find(from, Log.Messages.end(), phase);
        ASSERT_NE(from, Log.Messages.end()) << "missing or out of order: " << phase;
    }
    EXPECT_TRUE(Log.Has("Total time taken : 0 minutes, 0 seconds\r\n"));
}

TEST_F(StaticExport, LightmapUVsOneUnwrapsEveryMaterialIntoTheSecondUVSet)
{
    AssignMaterial(AddCube("boxA", 0, 0, 0, 100), "stone");
    AssignMaterial(AddCube("boxB", 300, 0, 0, 100), "wood");
    SetOptions("// LightmapUVs : 1\r\n");
    ASSERT_TRUE(ExportAll("lit.qmesh"));

    const VStaticMeshFile mesh = ReadMesh("lit.qmesh");
    EXPECT_EQ(mesh.TriangleCount, 24);
    ASSERT_TRUE(mesh.HasComponent(DescriptorSecondUV));
    for (const VStaticMeshVertex& vertex : mesh.Vertices) {
        EXPECT_GE(std::min(vertex.SecondUV[0], vertex.SecondUV[1]), 0.0f);
        EXPECT_LE(std::max(vertex.SecondUV[0], vertex.SecondUV[1]), 1.0f);
    }
    const std::vector<std::string> steps {"Generating UVs...\r\n", "Processing material: stone (0/2)\r\n",
                                          "Processing material: wood (1/2)\r\n", "Done",
                                          "Generating triangle strips...\r\n"};
    auto from = Log.Messages.begin();
    for (const std::string& step : steps) {
        from = std::find(from, Log.Messages.end(), step);
        ASSERT_NE(from, Log.Messages.end()) << "missing or out of order: " << step;
    }
}

// A portal far from every wall touches nothing and makes no zone: the export goes on without
// visibility, and the dump holds the stages that ran.
TEST_F(StaticExport, VisibilityThatMakesNoZoneLeavesTheWorldWithoutVisibility)
{
    AssignMaterial(AddCube("room", 0, 0, 0, 100), "stone");
    const MObject door = standin::CreateNode("transform", "door");
    standin::CreateMesh("doorShape", door,
                        standin::MeshDescription {{MPoint(1000, 0, 0), MPoint(1000, 100, 0), MPoint(1000, 100, 100),
                                                   MPoint(1000, 0, 100)},
                                                  {4},
                                                  {0, 1, 2, 3}});
    ASSERT_TRUE(standin::AddAttr(door, "ExportAs", standin::AttrType::Int, 2.0));
    SetOptions("// ComputeVisibility : 1\r\n// DebugVisInfo : 1\r\n");

    ASSERT_TRUE(ExportAll("lost.qmesh"));

    EXPECT_TRUE(Log.Has("Calculating visibility...\r\n"));
    EXPECT_TRUE(Log.Has("Error while calculating visibility. Visibility will not be added to world\r\n"));
    EXPECT_FALSE(Log.Has("Calculating visibility completed...\r\n"));
    EXPECT_NE(Report.Find("Portals didn't generate any visibility areas."), nullptr);
    EXPECT_EQ(ReadMesh("lost.qmesh").TriangleCount, 12);
    EXPECT_FALSE(Has("lost.qmesh_data/visibility.xml"));
    EXPECT_TRUE(Has("lost.qmesh_data/_debug.VISINFO"));
}

TEST_F(StaticExport, DebugPrintTracesTheExportIntoDebugTxtBesideTheTarget)
{
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "stone");
    standin::Select({standin::PathTo("box")});
    TheApplicationSettings().DebugPrint = 1;
    std::filesystem::create_directories(Native("traced"));

    ASSERT_TRUE(ExportSelection("traced/town.qmesh"));
    const std::string trace = Read("traced/debug.txt");
    EXPECT_THAT(trace, HasSubstr("Opening debug file for " + SystemPath("traced/town.qmesh") + "\r\n\r\n"));
    EXPECT_THAT(trace, HasSubstr("Export only selection\r\n"));
    EXPECT_THAT(trace, HasSubstr("Texture directory: " + SystemPath("traced/Textures") + "\\\r\n"));
    EXPECT_THAT(trace, HasSubstr("Managed to save. Now, trying to deinitialize\r\nFreeing mesh nodes...\r\nFile dir\r\n"));
}

TEST_F(StaticExport, TexturesAreCopiedIntoTheEnclosingProject)
{
    Write("game/town.project", "");
    std::filesystem::create_directories(Native("game/levels"));
    Write("art/wall.tga", "not really an image");
    AssignMaterial(AddCube("box", 0, 0, 0, 100), "wall", Native("art/wall.tga").generic_string());

    ASSERT_TRUE(ExportAll("game/levels/town.qmesh"));
    EXPECT_TRUE(Has("game/Textures/wall.tga"));
    EXPECT_THAT(Read("game/levels/town.qmesh_data/resources.xml"), HasSubstr("wall.tga"));
}

} // namespace
