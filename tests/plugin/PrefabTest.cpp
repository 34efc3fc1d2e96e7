// Prefab exports through the "Zephra_Scene_Prefab" translator: the editor project they need, the
// shapes of the prefab file, and the nested exports of the nodes that name a file.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "formats/LoadModel.h"
#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/StaticMeshReader.h"
#include "plugin/ExportSession.h"
#include "model/VMModel.h"
#include "plugin/VExportFormat.h"

#include <maya/MDagPath.h>
#include <standin/SceneBuilder.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using ::testing::ElementsAre;
using ::testing::FloatNear;
using ::testing::Pointwise;

class PrefabExport : public PluginFixture {
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        Write("game/Game.project", "");
        std::filesystem::create_directories(Native("game/Prefabs"));
    }

    MStatus ExportPrefab(const std::string& relative)
    {
        return standin::ExportFile("Zephra_Scene_Prefab", MayaName(relative), MPxFileTranslator::kExportAccessMode);
    }

    // A transform at (x, y, z) naming file in "zephra_ExportTo", with a cube of edge 100 centred
    // on it below.
    void AddReference(const std::string& name, const std::string& file, double x, double y, double z)
    {
        const MObject node = standin::CreateNode("transform", name);
        standin::SetAttr(name + ".translate", x, y, z);
        standin::AddAttr(node, "zephra_ExportTo", standin::AttrType::String);
        standin::SetAttr(name + ".zephra_ExportTo", file);
        const MObject cube = standin::CreateNode("transform", name + "Cube", node);
        standin::MeshDescription description;
        for (int corner = 0; corner < 8; ++corner)
            description.points.emplace_back(100.0 * (corner & 1) - 50.0, 100.0 * ((corner >> 1) & 1) - 50.0,
                                            100.0 * ((corner >> 2) & 1) - 50.0);
        description.counts = {4, 4, 4, 4, 4, 4};
        description.connects = {0, 2, 3, 1, 4, 5, 7, 6, 0, 1, 5, 4, 2, 6, 7, 3, 0, 4, 6, 2, 1, 3, 7, 5};
        AssignMaterial(standin::CreateMesh(name + "CubeShape", cube, description), name + "Paint");
    }

    VMWShapeInstance3DCollection ReadPrefab(const std::string& relative)
    {
        VMWShapeInstance3DCollection shapes;
        std::string error;
        EXPECT_EQ(LoadPrefabXML(SystemPath(relative), shapes, error), 0) << error;
        return shapes;
    }

    template <class Shape>
    const Shape* Find(const VMWShapeInstance3DCollection& shapes, const std::string& name)
    {
        for (const auto& shape : shapes.Shapes)
            if (shape->Name == name)
                return dynamic_cast<const Shape*>(shape.get());
        return nullptr;
    }

    VStaticMeshFile ReadMesh(const std::string& relative)
    {
        VStaticMeshFile mesh;
        EXPECT_TRUE(ReadStaticMesh(SystemPath(relative), mesh));
        return mesh;
    }

    int LogCount(const std::string& line) const
    {
        return static_cast<int>(std::count(Log.Messages.begin(), Log.Messages.end(), line));
    }
};

TEST_F(PrefabExport, PrefabOutsideAnyProjectShowsIssue10AndWritesNothing)
{
    AssignMaterial(AddCube("floor", 0, 0, 0, 100), "stone");
    EXPECT_FALSE(ExportPrefab("loose/yard.prefab"));
    ASSERT_NE(Report.Find("Project not found"), nullptr);
    EXPECT_THAT(Report.Captions, ElementsAre("Issues during export"));
    EXPECT_FALSE(Has("loose/yard.prefab"));
    EXPECT_FALSE(Has("loose/yard.qmesh"));
}

TEST_F(PrefabExport, PrefabHoldsTheWorldMeshTheLightsAndAnInstancePerReferencingNode)
{
    AssignMaterial(AddCube("floor", 0, 0, 0, 100), "stone");
    AddReference("crateA", "Meshes\\crate.qmesh", 300, 0, 0);
    AddReference("crateB", "meshes\\CRATE.qmesh", 0, 0, -500);
    AddReference("hero", "Models\\hero.model", 0, 50, 0);
    const MObject lamp = standin::CreateNode("transform", "lamp");
    standin::CreateNode("pointLight", "lampShape", lamp);
    standin::SetAttr("lamp.translate", 10.0, 200.0, 30.0);
    SetOptions("// MeshFactor : 2\r\n");

    ASSERT_TRUE(ExportPrefab("game/Prefabs/yard.prefab"));

    const VMWShapeInstance3DCollection shapes = ReadPrefab("game/Prefabs/yard.prefab");
    std::vector<std::string> names;
    for (const auto& shape : shapes.Shapes)
        names.push_back(shape->Name);
    EXPECT_THAT(names, ElementsAre("world", "crateA", "crateB", "hero", "lamp"));
    EXPECT_EQ(Find<VMWStaticMeshInstance>(shapes, "world")->MeshFileName, "Prefabs\\yard.qmesh");
    const auto* crateA = Find<VMWStaticMeshInstance>(shapes, "crateA");
    ASSERT_NE(crateA, nullptr);
    EXPECT_EQ(crateA->MeshFileName, "Meshes\\crate.qmesh");
    // Engine axes, scaled by the prefab's MeshFactor like the geometry.
    EXPECT_THAT(crateA->Position, ElementsAre(600.0f, 0.0f, 0.0f));
    EXPECT_THAT(Find<VMWStaticMeshInstance>(shapes, "crateB")->Position, ElementsAre(0.0f, 1000.0f, 0.0f));
    EXPECT_EQ(Find<VMWEntityInstance>(shapes, "hero")->ModelFile, "Models\\hero.model");
    EXPECT_THAT(Find<VMWLightInstance>(shapes, "lamp")->Position, ElementsAre(20.0f, -60.0f, 400.0f));

    // The prefab's own geometry is the floor alone; the referenced subtrees are their files'.
    EXPECT_EQ(ReadMesh("game/Prefabs/yard.qmesh").TriangleCount, 12);
    // Exported once, placed at its first node and scaled by the prefab's MeshFactor.
    EXPECT_EQ(LogCount("*** ExportWorld started ***\r\n"), 2);
    const VStaticMeshFile crate = ReadMesh("game/Meshes/crate.qmesh");
    EXPECT_EQ(crate.TriangleCount, 12);
    EXPECT_THAT(crate.Bounds.Min, Pointwise(FloatNear(1e-4f), {-100.0f, -100.0f, -100.0f}));
    EXPECT_THAT(crate.Bounds.Max, Pointwise(FloatNear(1e-4f), {100.0f, 100.0f, 100.0f}));
    EXPECT_TRUE(Has("game/Meshes/crate.qmesh_data/_config.Xportel"));
    // The model holds the referencing node's subtree alone.
    VMModel hero;
    ASSERT_TRUE(LoadModel(hero, SystemPath("game/Models/hero.model")));
    EXPECT_EQ(hero.Faces.Count(), 12);
}

TEST_F(PrefabExport, NestedExportsLeaveTheSessionAsThePrefabHadIt)
{
    AssignMaterial(AddCube("floor", 0, 0, 0, 100), "stone");
    AddReference("crate", "Meshes\\crate.qmesh", 300, 0, 0);
    ExportSession& session = TheExportSession();
    ASSERT_TRUE(ExportPrefab("game/Prefabs/yard.prefab"));

    EXPECT_EQ(session.TargetFile, SystemPath("game/Prefabs/yard.prefab"));
    EXPECT_EQ(session.TargetDirectory, SystemPath("game/Prefabs") + "\\");
    EXPECT_EQ(session.ProjectDirectory, SystemPath("game") + "\\");
    EXPECT_EQ(session.ProjectFile, SystemPath("game/Game.project"));
    EXPECT_EQ(session.TextureDirectory, SystemPath("game/Textures") + "\\");
    EXPECT_EQ(std::string(session.Format->ShortName()), "PREFAB");
    EXPECT_EQ(session.Options.CenterMethod, 0);
    EXPECT_TRUE(session.NoPrompt);
    EXPECT_TRUE(Has("game/Meshes/crate.qmesh"));
}

TEST_F(PrefabExport, ExportToNamingNeitherMeshNorModelAddsNothingYetHidesTheSubtree)
{
    AssignMaterial(AddCube("floor", 0, 0, 0, 100), "stone");
    AddReference("door", "Doors\\door.fbx", 300, 0, 0);

    ASSERT_TRUE(ExportPrefab("game/Prefabs/yard.prefab"));

    const VMWShapeInstance3DCollection shapes = ReadPrefab("game/Prefabs/yard.prefab");
    ASSERT_EQ(shapes.Shapes.size(), 1u);
    EXPECT_EQ(shapes.Shapes[0]->Name, "world");
    EXPECT_EQ(ReadMesh("game/Prefabs/yard.qmesh").TriangleCount, 12);
    EXPECT_EQ(LogCount("*** ExportWorld started ***\r\n"), 1);
    EXPECT_FALSE(Has("game/Doors"));
}

}
