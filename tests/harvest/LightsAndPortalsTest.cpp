// Lights into light records, portal shapes into the visibility builder, and the helpers
// that create the plug-in's node attributes.

#include "HarvestTestScene.h"

#include "geometry/visibility/VBVisBuilder.h"
#include "harvest/AddNodeAttribute.h"
#include "harvest/ExportLight.h"
#include "harvest/ExportPortal.h"
#include "harvest/NodeAttributes.h"
#include "model/VMWorld.h"
#include "ui/VMessageBox.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>

#include <gmock/gmock.h>

#include <numbers>

namespace {

using namespace harvesttest;
using namespace standin;
using ::testing::ElementsAre;
using ::testing::FloatNear;
using ::testing::Pointwise;

constexpr double Degrees = std::numbers::pi / 180.0;

class LightsTest : public HarvestTest {
protected:
    MDagPath Light(const std::string& type, const std::string& name, const MObject& parent = MObject::kNullObj)
    {
        const MObject transform = CreateNode("transform", name, parent);
        CreateNode(type, name + "Shape", transform);
        return PathTo(name);
    }
};

TEST_F(LightsTest, PointLightTakesWorldPositionPackedColourAndDecayRadius)
{
    const MObject parent = CreateNode("transform", "rig");
    SetAttr("rig.translate", 0.0, 5.0, 0.0);
    const MDagPath path = Light("pointLight", "bulb", parent);
    SetAttr("bulb.translate", 10.0, 20.0, 30.0);
    SetAttr("bulbShape.intensity", 2.0);
    SetAttr("bulbShape.decayRate", 2.0);
    SetAttr("bulbShape.color", 1.5, 0.5, 0.0);

    const std::unique_ptr<VMLight> light = ExportLight(path, 3.0f);
    ASSERT_TRUE(light);
    EXPECT_EQ(light->Name, "bulb");
    EXPECT_EQ(light->Type, VMLight::PointLight);
    EXPECT_THAT(light->Position, ElementsAre(10.0f, -30.0f, 25.0f));
    EXPECT_THAT(light->Colour, ElementsAre(1.5f, 0.5f, 0.0f));
    EXPECT_EQ(light->PackedColour, 0xFFFF7F00u);
    EXPECT_FLOAT_EQ(light->Intensity, 2.0f);
    EXPECT_NEAR(light->Radius, std::sqrt(200.0) * 3.0, 1e-4);
}

// The axes follow the light's world rotation: its own, then its parent's.
TEST_F(LightsTest, SpotLightTakesConeInDegreesAndAxesFromItsWorldRotation)
{
    const MObject parent = CreateNode("transform", "rig");
    SetAttr("rig.rotateX", 90.0 * Degrees);
    const MDagPath path = Light("spotLight", "beam", parent);
    SetAttr("beam.rotateY", 90.0 * Degrees);
    SetAttr("beamShape.coneAngle", 0.7854);

    const std::unique_ptr<VMLight> light = ExportLight(path, 1.0f);
    ASSERT_TRUE(light);
    EXPECT_EQ(light->Type, VMLight::SpotLight);
    EXPECT_NEAR(light->ConeAngle, 45.0f, 1e-3);
    EXPECT_THAT(light->Direction, Pointwise(FloatNear(1e-6f), {-1.0f, 0.0f, 0.0f}));
    EXPECT_THAT(light->SecondAxis, Pointwise(FloatNear(1e-6f), {0.0f, 1.0f, 0.0f}));
}

TEST_F(LightsTest, DirectionalLightIsTypeThreeAndAmbientAndAreaLightsGiveNone)
{
    const MDagPath sun = Light("directionalLight", "sun");
    SetAttr("sun.rotateX", -90.0 * Degrees);
    const std::unique_ptr<VMLight> light = ExportLight(sun, 1.0f);
    ASSERT_TRUE(light);
    EXPECT_EQ(light->Type, VMLight::DirectionalLight);
    // Pointing straight down: Maya's -Y is the engine's -Z.
    EXPECT_THAT(light->Direction, Pointwise(FloatNear(1e-6f), {0.0f, 0.0f, -1.0f}));
    // Without decay a light reaches the endless radius times the light scale.
    EXPECT_FLOAT_EQ(ExportLight(sun, 0.5f)->Radius, 167772160.0f * 0.5f);
    EXPECT_FALSE(ExportLight(Light("ambientLight", "fill"), 1.0f));
    EXPECT_FALSE(ExportLight(Light("areaLight", "panel"), 1.0f));
}

TEST_F(LightsTest, TransformAttributesSetFlagsAndValuesAndTheLaterAttributeDecidesABit)
{
    const MDagPath path = Light("pointLight", "lamp");
    const MObject node = NodeByName("lamp");
    AddAttr(node, "dynamic", AttrType::Bool, 1.0);
    AddAttr(node, "Corona", AttrType::Int, 0.0);
    AddAttr(node, "Corona_Type", AttrType::Enum, 1.0, {"Off", "On"});
    AddAttr(node, "Lensflare", AttrType::Int, 1.0);
    AddAttr(node, "Affect_Models", AttrType::Int, 7.0);
    AddAttr(node, "AffectWorld", AttrType::Int, 5.0);
    AddAttr(node, "Speed", AttrType::Enum, 2.0, {"Slow", "Medium", "Fast"});
    AddAttr(node, "AnimPhase", AttrType::Float, 0.25);
    AddAttr(node, "CoronaTexture", AttrType::String);
    SetAttr("lamp.CoronaTexture", std::string("flare.dds"));
    AddAttr(node, "Volumetric", AttrType::Float, 9.0);

    std::unique_ptr<VMLight> light = ExportLight(path, 1.0f);
    ASSERT_TRUE(light);
    EXPECT_TRUE(light->Dynamic);
    EXPECT_EQ(light->Flags, VMLight::CoronaBit | VMLight::LensflareBit);
    EXPECT_EQ(light->AffectEntities, 1);
    EXPECT_EQ(light->AffectWorld, 5);
    EXPECT_EQ(light->Speed, 2);
    EXPECT_FLOAT_EQ(light->AnimPhase, 0.25f);
    EXPECT_EQ(light->CoronaTexture, "flare.dds");
    EXPECT_FLOAT_EQ(light->VolumetricDensity, 0.0f);

    const MDagPath other = Light("pointLight", "lamp2");
    AddAttr(NodeByName("lamp2"), "Corona_Type", AttrType::Enum, 1.0, {"Off", "On"});
    AddAttr(NodeByName("lamp2"), "Corona", AttrType::Int, 0.0);
    EXPECT_EQ(ExportLight(other, 1.0f)->Flags, 0u);
}

class PortalsTest : public HarvestTest {
protected:
    //  2
    //  | \      a triangle in Maya's xy plane, moved by the transform
    //  0--1
    MDagPath Triangle(const std::string& name)
    {
        const MObject transform = CreateNode("transform", name);
        CreateMesh(name + "Shape", transform,
                   MeshDescription {{MPoint(0, 0, 0), MPoint(100, 0, 0), MPoint(0, 100, 0)}, {3}, {0, 1, 2}});
        SetAttr(name + ".translateZ", 50.0);
        return PathTo(name + "Shape");
    }

    VBVisBuilder builder;
    VMWorld world;
};

TEST_F(PortalsTest, PortalHandsItsWorldCornersNamesAndCutFlagToTheBuilder)
{
    const MDagPath path = Triangle("door");
    AddAttr(NodeByName("door"), "front_name", AttrType::String);
    SetAttr("door.front_name", std::string("hall"));
    AddAttr(NodeByName("door"), "portal_key", AttrType::String);
    SetAttr("door.portal_key", std::string("gate"));

    ASSERT_EQ(ExportPortal(path, world, &builder), 1);
    ASSERT_EQ(builder.Portals().size(), 1u);
    const VBPortal& portal = *builder.Portals()[0];
    EXPECT_EQ(portal.Name, "doorShape");
    ASSERT_EQ(portal.Corners.size(), 3u);
    const double expected[3][3] = {{0, -50, 0}, {100, -50, 0}, {0, -50, 100}};
    for (int corner = 0; corner < 3; ++corner)
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_EQ(portal.Corners[static_cast<size_t>(corner)][axis], expected[corner][axis]);
    EXPECT_EQ(portal.FrontName, "hall");
    EXPECT_EQ(portal.Key, "gate");
    EXPECT_EQ(portal.BackName, "");
    EXPECT_TRUE(portal.CutGeometry);

    AddAttr(NodeByName("door"), "CutGeometry", AttrType::Int, 2.0);
    ASSERT_EQ(ExportPortal(path, world, &builder), 1);
    EXPECT_FALSE(builder.Portals()[1]->CutGeometry);
    EXPECT_TRUE(world.AntiPortals.IsEmpty());
}

TEST_F(PortalsTest, AntiPortalStaysInTheWorldWithItsVisAreaAndBox)
{
    const MDagPath path = Triangle("wall");
    AddAttr(NodeByName("wall"), "antiportal", AttrType::Int, 1.0);
    AddAttr(NodeByName("wall"), "visarea", AttrType::String);
    SetAttr("wall.visarea", std::string("cellar"));

    ASSERT_EQ(ExportPortal(path, world, &builder), 1);
    ASSERT_EQ(world.AntiPortals.Count(), 1);
    const VMVisAntiPortal& antiPortal = *world.AntiPortals[0];
    EXPECT_EQ(antiPortal.Name, "wallShape");
    EXPECT_EQ(antiPortal.VisAreaName, "cellar");
    EXPECT_THAT(antiPortal.Corners[2]->Position, ElementsAre(0.0f, -50.0f, 100.0f));
    ASSERT_EQ(builder.Items().size(), 1u);
    const VBPlacementItem& item = *builder.Items()[0];
    EXPECT_EQ(item.AntiPortal, &antiPortal);
    EXPECT_EQ(item.AreaName, "cellar");
    EXPECT_EQ(item.Box.Min.X, 0.0);
    EXPECT_EQ(item.Box.Max.X, 100.0);
    EXPECT_EQ(item.Box.Min.Y, -50.0);
    EXPECT_EQ(item.Box.Max.Z, 100.0);
    EXPECT_TRUE(builder.Portals().empty());
}

TEST_F(PortalsTest, ShapesOtherThanOnePolygonAndExportsWithoutBuilderAreRejected)
{
    const MObject transform = CreateNode("transform", "slab");
    CreateMesh("slabShape", transform, TwoQuads());
    EXPECT_EQ(ExportPortal(PathTo("slabShape"), world, &builder), 0);
    EXPECT_EQ(ExportPortal(Triangle("door"), world, nullptr), 0);
    EXPECT_TRUE(builder.Portals().empty());
    EXPECT_NE(DebugText().find("Portal shape (|slab|slabShape) must have only 1 polygon.\n"), std::string::npos);
}

class RecordingMessageBox final : public VMessageBox {
public:
    VMessageBoxAnswer Show(const VMessageBoxRequest& request) override
    {
        Requests.push_back(request);
        return request.DefaultAnswer;
    }
    std::vector<VMessageBoxRequest> Requests;
};

TEST_F(HarvestTest, SetNodeStringAttributeSetsWhereFoundOrAddsAHiddenAttributeToTheNode)
{
    const MObject transform = CreateNode("transform", "crate");
    CreateMesh("crateShape", transform, Cube());
    AddAttr(transform, "zephra_ExportTo", AttrType::String);
    RecordingMessageBox messageBox;

    ASSERT_TRUE(SetNodeStringAttribute("zephra_ExportTo", PathTo("crateShape"), "Meshes\\crate.qmesh", messageBox));
    EXPECT_EQ(std::string(Plug("crate.zephra_ExportTo").asString().asChar()), "Meshes\\crate.qmesh");
    EXPECT_FALSE(MFnDependencyNode(NodeByName("crateShape")).hasAttribute("zephra_ExportTo"));

    ASSERT_TRUE(SetNodeStringAttribute("visarea", PathTo("crateShape"), "cellar", messageBox));
    EXPECT_EQ(std::string(Plug("crateShape.visarea").asString().asChar()), "cellar");
    EXPECT_TRUE(MFnAttribute(MFnDependencyNode(NodeByName("crateShape")).attribute("visarea")).isHidden());
    EXPECT_TRUE(messageBox.Requests.empty());
}

TEST_F(HarvestTest, AttributeThatCannotBeMadeIsReportedInAMessageBox)
{
    MObject node = CreateNode("transform", "crate");
    RecordingMessageBox messageBox;
    ASSERT_TRUE(AddNumericAttribute(node, "Visible", MFnNumericData::kInt, 1.0, messageBox));
    EXPECT_EQ(Plug("crate.Visible").asInt(), 1);
    EXPECT_FALSE(AddStringAttribute("Visible", node, "", messageBox));
    ASSERT_EQ(messageBox.Requests.size(), 1u);
    EXPECT_EQ(messageBox.Requests[0].Text, "Error! Could not make Visible attribute");
    EXPECT_EQ(messageBox.Requests[0].Caption, "Error");
    EXPECT_EQ(messageBox.Requests[0].Owner, VMessageBoxOwner::Desktop);
}

}
