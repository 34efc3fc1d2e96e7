// The prefab shape file: document layout, each class's properties and default name, value
// formats whatever the locale, unique IDs, and reading files back.

#include "TempDirectory.h"
#include "tests/ScopedLocale.h"

#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/ShapeOrientation.h"
#include "model/VMLight.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::FloatNear;
using ::testing::HasSubstr;
using ::testing::Pointwise;

// The property names of a saved file, in file order.
std::vector<std::string> PropertyNames(const std::string& xml)
{
    std::vector<std::string> names;
    const std::regex property("<property name=\"([A-Za-z]+)\"");
    for (auto it = std::sregex_iterator(xml.begin(), xml.end(), property); it != std::sregex_iterator(); ++it)
        names.push_back((*it)[1]);
    return names;
}

class PrefabXml : public ::testing::Test {
protected:
    std::string Save(VMWShapeInstance3DCollection& shapes)
    {
        EXPECT_EQ(SavePrefabXML(shapes, folder.Path("level.prefab")), 0);
        return folder.Read("level.prefab");
    }

    TempDirectory folder;
};

TEST_F(PrefabXml, DocumentHasHeaderInfoAndShapesWithNestedChildren)
{
    VMWShapeInstance3DCollection shapes;
    shapes.Name = "Courtyard";
    auto mesh = std::make_unique<VMWStaticMeshInstance>();
    mesh->Name = "world";
    mesh->UniqueID = 7;
    mesh->MeshFileName = "Meshes\\yard.qmesh";
    auto camera = std::make_unique<VMWCameraPositionInstance>();
    camera->UniqueID = 8;
    camera->Position[2] = 170.0f;
    mesh->Children.push_back(std::move(camera));
    shapes.Shapes.push_back(std::move(mesh));

    EXPECT_EQ(Save(shapes),
              "<root>\r\n"
              "    <header version=\"0\" convertible=\"FALSE\" name=\"Courtyard\" />\r\n"
              "    <info generatedby=\"Gemvor Version 7, 6, 3, 0\" />\r\n"
              "    <shape class=\"StaticMeshShape\">\r\n"
              "        <property name=\"ShapeName\" value=\"world\" />\r\n"
              "        <property name=\"UniqueID\" value=\"7\" />\r\n"
              "        <property name=\"ExportShape\" value=\"TRUE\" />\r\n"
              "        <property name=\"Visible\" value=\"TRUE\" />\r\n"
              "        <property name=\"Position\" value=\"0.0000,0.0000,0.0000\" />\r\n"
              "        <property name=\"Orientation\" value=\"0.0000,0.0000,0.0000\" />\r\n"
              "        <property name=\"Scaling\" value=\"1.0000,1.0000,1.0000\" />\r\n"
              "        <property name=\"MeshFileName\" value=\"Meshes\\yard.qmesh\" />\r\n"
              "        <property name=\"VisibleBitmask\" value=\"4294967295\" />\r\n"
              "        <property name=\"LightInfluenceBitmask\" value=\"65535\" />\r\n"
              "        <property name=\"CollisionBitmask\" value=\"65535\" />\r\n"
              "        <property name=\"CastStaticShadows\" value=\"TRUE\" />\r\n"
              "        <property name=\"CastDynamicShadows\" value=\"FALSE\" />\r\n"
              "        <shape class=\"CameraPositionShape\">\r\n"
              "            <property name=\"ShapeName\" value=\"Shape000\" />\r\n"
              "            <property name=\"UniqueID\" value=\"8\" />\r\n"
              "            <property name=\"ExportShape\" value=\"TRUE\" />\r\n"
              "            <property name=\"Visible\" value=\"TRUE\" />\r\n"
              "            <property name=\"Position\" value=\"0.0000,0.0000,170.0000\" />\r\n"
              "            <property name=\"Orientation\" value=\"0.0000,0.0000,0.0000\" />\r\n"
              "            <property name=\"Scaling\" value=\"1.0000,1.0000,1.0000\" />\r\n"
              "        </shape>\r\n"
              "    </shape>\r\n"
              "</root>\r\n");
}

struct ClassCase {
    const char* ClassName;
    const char* DefaultName;
    std::vector<std::string> OwnProperties;
};

void PrintTo(const ClassCase& shape, std::ostream* out)
{
    *out << shape.ClassName;
}

class PrefabClasses : public PrefabXml, public ::testing::WithParamInterface<ClassCase> {};

// The eighth shape of a list takes the number 7; a fresh light is a point light ("LightType"
// "Point") and a fresh zone has no submeshes.
TEST_P(PrefabClasses, ShapeWritesItsPropertiesInOrderAndGetsItsDefaultName)
{
    VMWShapeInstance3DCollection shapes;
    for (int i = 0; i < 8; ++i) {
        shapes.Shapes.push_back(NewPrefabShape(GetParam().ClassName));
        shapes.Shapes.back()->ScriptFile = i == 7 ? "door.lua" : "";
    }
    const std::string xml = Save(shapes);

    std::vector<std::string> expected = {"ShapeName", "UniqueID", "ExportShape", "Visible",
                                         "Position",  "Orientation", "Scaling", "ScriptFile"};
    expected.insert(expected.end(), GetParam().OwnProperties.begin(), GetParam().OwnProperties.end());
    const std::vector<std::string> names = PropertyNames(xml.substr(xml.rfind("<shape ")));
    EXPECT_THAT(names, ElementsAreArray(expected));
    EXPECT_THAT(xml, HasSubstr(std::string("<shape class=\"") + GetParam().ClassName + "\">"));
    EXPECT_THAT(xml, HasSubstr(std::string("name=\"ShapeName\" value=\"") + GetParam().DefaultName + "\""));
}

INSTANTIATE_TEST_SUITE_P(
    EveryClass, PrefabClasses,
    ::testing::Values(
        ClassCase {"StaticMeshShape", "Shape007",
                   {"VisibleBitmask", "LightInfluenceBitmask", "CollisionBitmask", "CastStaticShadows",
                    "CastDynamicShadows"}},
        ClassCase {"EntityShape", "Entity007",
                   {"VisibleBitmask", "CastStaticShadows", "CastDynamicShadows", "LightInfluenceBitmask",
                    "LightGridSampleOfs"}},
        ClassCase {"DynLightShape", "Light007",
                   {"ExportAsStatic", "PreviewAsDynamicLight", "TurnOffAfterLighting", "Radius", "Multiplier",
                    "LightType", "LightColor", "WorldInfluenceMask", "ObjectInfluenceMask", "EnableCorona",
                    "EnableLensFlares", "CastWorldShadows", "CastModelShadows", "AnimationTiming",
                    "AnimationPhase"}},
        ClassCase {"PortalShape", "Shape007",
                   {"TargetPortalID", "TargetZoneID", "VertexCount", "LocalVertexPositions", "LeadsToOutside"}},
        ClassCase {"VisibilityZoneShape", "Shape007",
                   {"BoundingBoxMin", "BoundingBoxMax", "DebugColor", "MergeWithOutside"}},
        ClassCase {"LightGridDetailShape", "Shape007",
                   {"BoxSizeX", "BoxSizeY", "BoxSizeZ", "SubDivX", "SubDivY", "SubDivZ"}},
        ClassCase {"LightGridBoxShape", "Shape007",
                   {"BoxSizeX", "BoxSizeY", "BoxSizeZ", "SubDivX", "SubDivY", "SubDivZ"}},
        ClassCase {"CameraPositionShape", "Shape007", {}}),
    [](const ::testing::TestParamInfo<ClassCase>& param) { return std::string(param.param.ClassName); });

VMLight SpotLight()
{
    VMLight light;
    light.Name = "beam";
    light.Type = VMLight::SpotLight;
    light.Position[0] = 1.0f;
    light.Position[1] = 2.5f;
    light.Position[2] = -3.0f;
    light.Colour[0] = 1.2f;
    light.Colour[1] = 0.5f;
    light.Colour[2] = 0.0f;
    light.Radius = 14.142136f;
    light.ConeAngle = 45.0f;
    light.Texture = "gobo.dds";
    light.Flags = VMLight::CoronaBit | VMLight::CastDynamicShadowsBit;
    light.AffectWorld = 0;
    return light;
}

TEST_F(PrefabXml, ValuesKeepTheirFormatsAndADecimalPointUnderACommaLocale)
{
    const ScopedLocale german("de_DE.UTF-8");
    if (!german.IsActive())
        GTEST_SKIP() << "de_DE.UTF-8 is not installed (scripts/install-deps.sh installs it)";
    ASSERT_EQ(std::string(localeconv()->decimal_point), ",");

    VMWShapeInstance3DCollection shapes;
    shapes.Shapes.push_back(MakeLightShape(SpotLight()));
    auto zone = std::make_unique<VMWVisibilityZoneInstance>();
    zone->SubMeshIndices = {0, 3, 12};
    zone->DebugColor = 0x80102030u;
    shapes.Shapes.push_back(std::move(zone));
    VMLight point;
    point.Type = VMLight::PointLight;
    shapes.Shapes.push_back(MakeLightShape(point));
    const std::string xml = Save(shapes);

    EXPECT_THAT(xml, HasSubstr("<property name=\"Position\" value=\"1.0000,2.5000,-3.0000\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"Radius\" value=\"14.142136\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"LightType\" value=\"Spotlight\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"SpotAngle\" value=\"45.000000\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"ProjectedTexture\" value=\"gobo.dds\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"LightColor\" value=\"255,127,0,255\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"WorldInfluenceMask\" value=\"0\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"EnableCorona\" value=\"TRUE\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"CastModelShadows\" value=\"TRUE\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"DebugColor\" value=\"16,32,48,128\" />"));
    EXPECT_THAT(xml, HasSubstr("<property name=\"SubMeshIndices\" value=\"0,3,12\" />"));
    // The harvested point light has the type number 2, which has no name in the file.
    const std::string lastShape = xml.substr(xml.rfind("<shape "));
    EXPECT_THAT(PropertyNames(lastShape), ::testing::Not(::testing::Contains("LightType")));

    VMWShapeInstance3DCollection read;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(folder.Path("level.prefab"), read, error), 0) << error;
    ASSERT_EQ(read.Shapes.size(), 3u);
    const auto& light = dynamic_cast<const VMWLightInstance&>(*read.Shapes[0]);
    EXPECT_THAT(light.Position, ElementsAre(1.0f, 2.5f, -3.0f));
    EXPECT_FLOAT_EQ(light.Radius, 14.142136f);
    EXPECT_EQ(light.Type, VMWLightInstance::SpotType);
    EXPECT_EQ(light.Colour, 0xFFFF7F00u);
    EXPECT_EQ(dynamic_cast<const VMWLightInstance&>(*read.Shapes[2]).Type, VMWLightInstance::PointType);
    EXPECT_THAT(dynamic_cast<const VMWVisibilityZoneInstance&>(*read.Shapes[1]).SubMeshIndices,
                ElementsAre(0, 3, 12));
}

TEST_F(PrefabXml, EveryClassReadsBackWhatItWrote)
{
    VMWShapeInstance3DCollection shapes;
    shapes.Convertible = true;
    shapes.Category = "Props";
    shapes.Description = "two lamps";
    shapes.Shapes.push_back(MakeLightShape(SpotLight()));
    auto entity = std::make_unique<VMWEntityInstance>();
    entity->EntityClass = "Door";
    entity->Keys = {{"Origin", "10/20/30.5"}, {"MODELFILE", "Models\\door.model"}};
    entity->LightGridSampleOfs[2] = 40.0f;
    shapes.Shapes.push_back(std::move(entity));
    auto portal = std::make_unique<VMWPortalInstance>();
    portal->LocalVertexPositions = {0, 0, 0, 100, 0, 0, 100, 0, 200};
    portal->TargetZoneID = 99;
    portal->Children.push_back(std::make_unique<VMWLightGridInstance>(true));
    shapes.Shapes.push_back(std::move(portal));
    const std::string first = Save(shapes);
    EXPECT_THAT(first, HasSubstr("<property name=\"Position\" value=\"10.0000,20.0000,30.5000\" />"));
    EXPECT_THAT(first, HasSubstr("<property name=\"ModelFile\" value=\"Models\\door.model\" />"));

    VMWShapeInstance3DCollection read;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(folder.Path("level.prefab"), read, error), 0) << error;
    EXPECT_EQ(Save(read), first);
}

TEST_F(PrefabXml, SharedOrMissingIdsRenumberEveryShapeDepthFirstAndUniqueIdsStay)
{
    VMWShapeInstance3DCollection shapes;
    for (int i = 0; i < 2; ++i) {
        shapes.Shapes.push_back(std::make_unique<VMWStaticMeshInstance>());
        shapes.Shapes.back()->UniqueID = 5;
    }
    shapes.Shapes[0]->Children.push_back(std::make_unique<VMWCameraPositionInstance>());
    shapes.Shapes[0]->Children[0]->UniqueID = 6;
    Save(shapes);
    const uint64_t first = shapes.Shapes[0]->UniqueID;
    EXPECT_NE(first, 5u);
    EXPECT_EQ(shapes.Shapes[0]->Children[0]->UniqueID, first + 1);
    EXPECT_EQ(shapes.Shapes[1]->UniqueID, first + 2);

    Save(shapes);
    EXPECT_EQ(shapes.Shapes[1]->UniqueID, first + 2);
}

TEST_F(PrefabXml, ReadingSkipsWhatItDoesNotKnowAndLinksPortalsLeadingOutside)
{
    folder.Write("old.prefab",
                 "<root><header version=\"0\"/>"
                 "<shape class=\"TerrainShape\"><property name=\"ShapeName\" value=\"hill\"/></shape>"
                 "<shape class=\"DynLightShape\"><property name=\"Intensity\" value=\"250\"/>"
                 "<property name=\"Glow\" value=\"TRUE\"/><property name=\"Visible\" value=\"maybe\"/></shape>"
                 "<shape class=\"PortalShape\"><property name=\"ShapeName\" value=\"Outside_Gate\"/>"
                 "<property name=\"TargetZoneID\" value=\"42\"/></shape>"
                 "<shape class=\"VisibilityZoneShape\"><property name=\"UniqueID\" value=\"42\"/></shape>"
                 "</root>");
    VMWShapeInstance3DCollection read;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(folder.Path("old.prefab"), read, error), 0) << error;
    ASSERT_EQ(read.Shapes.size(), 3u);
    const auto& light = dynamic_cast<const VMWLightInstance&>(*read.Shapes[0]);
    EXPECT_FLOAT_EQ(light.Radius, 250.0f);
    EXPECT_TRUE(light.Visible);
    const auto& portal = dynamic_cast<const VMWPortalInstance&>(*read.Shapes[1]);
    EXPECT_TRUE(portal.LeadsToOutside);
    EXPECT_EQ(portal.TargetZone, read.Shapes[2].get());
    EXPECT_TRUE(dynamic_cast<const VMWVisibilityZoneInstance&>(*read.Shapes[2]).MergeWithOutside);
}

TEST_F(PrefabXml, UnreadableFilesFailWithTheirCodeAndReason)
{
    VMWShapeInstance3DCollection read;
    std::string error;
    EXPECT_EQ(LoadPrefabXML(folder.Path("missing.prefab"), read, error), PrefabUnreadable);
    folder.Write("new.prefab", "<root><header version=\"1\"/></root>");
    EXPECT_EQ(LoadPrefabXML(folder.Path("new.prefab"), read, error), PrefabNewerVersion);
    EXPECT_EQ(error, "the file's version 1 is newer than this exporter reads");
    folder.Write("bad.prefab", "<root><shape></root>");
    EXPECT_EQ(LoadPrefabXML(folder.Path("bad.prefab"), read, error), PrefabNotXml);
    folder.Write("other.prefab", "<scene/>");
    EXPECT_EQ(LoadPrefabXML(folder.Path("other.prefab"), read, error), PrefabNotXml);
    EXPECT_EQ(error, "the file has no \"root\" element");
    EXPECT_EQ(SavePrefabXML(read, folder.Path("no folder\\x.prefab")), PrefabSaveFailed);
}

struct OrientationCase {
    float Forward[3];
    float Down[3];
    float Expected[3];
};

void PrintTo(const OrientationCase& axes, std::ostream* out)
{
    *out << "forward " << axes.Forward[0] << "," << axes.Forward[1] << "," << axes.Forward[2];
}

class ShapeOrientations : public ::testing::TestWithParam<OrientationCase> {};

TEST_P(ShapeOrientations, AxesGiveYawPitchRollThatTurnPlusXOntoTheForwardAxis)
{
    float orientation[3];
    OrientationFromAxes(GetParam().Forward, GetParam().Down, orientation);
    EXPECT_THAT(orientation, Pointwise(FloatNear(1e-3f), GetParam().Expected));
    float forward[3];
    ForwardFromOrientation(orientation, forward);
    EXPECT_THAT(forward, Pointwise(FloatNear(1e-5f), GetParam().Forward));
}

INSTANTIATE_TEST_SUITE_P(Axes, ShapeOrientations,
                         ::testing::Values(OrientationCase {{1, 0, 0}, {0, 0, -1}, {0, 0, 0}},
                                           OrientationCase {{0, 1, 0}, {0, 0, -1}, {90, 0, 0}},
                                           OrientationCase {{0, 0, -1}, {-1, 0, 0}, {0, 90, 0}},
                                           OrientationCase {{1, 0, 0}, {0, 1, 0}, {0, 0, 90}},
                                           OrientationCase {{0.6f, 0, -0.8f}, {-0.8f, 0, -0.6f}, {0, 53.1301f, 0}}));

}
