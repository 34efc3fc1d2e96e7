// The shared scenes with lights, exported as prefabs by "kestrel export": each light of the file
// comes out as a light shape where the file puts it, shining where the file aims it. The expected
// values are read off the files by hand, turned into the engine's axes (x, -z, y of a Y-up scene;
// a Z-up COLLADA scene keeps its own) and centimetres; each format that holds lights has a scene here.

#include "kestrel/ExportCommand.h"

#include "base/Path.h"
#include "formats/PrefabShapes.h"
#include "formats/PrefabXml.h"
#include "formats/ShapeOrientation.h"
#include "importers/ImportScene.h"
#include "tests/UniqueTempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

using ::testing::FloatNear;
using ::testing::Pointwise;

struct Vector3 {
    float X, Y, Z;
};

struct ExpectedLight {
    const char* Name;
    int32_t Type;
    Vector3 Position;
    // Red, green and blue of the light's colour scaled so that the brightest is 1, and the
    // multiplier that brings them back to the file's colour times its intensity.
    Vector3 Colour;
    float Multiplier;
    std::optional<Vector3> Direction = std::nullopt;
    float Cone = 0.0f;
};

struct SceneLights {
    const char* Scene;
    std::vector<ExpectedLight> Lights;
};

void PrintTo(const SceneLights& lights, std::ostream* out)
{
    *out << lights.Scene;
}

constexpr int32_t Point = VMWLightInstance::PointType;
constexpr int32_t Spot = VMWLightInstance::SpotType;
constexpr int32_t Directional = VMWLightInstance::DirectionalType;
constexpr Vector3 White {1.0f, 1.0f, 1.0f};
constexpr Vector3 Down {0.0f, 0.0f, -1.0f};
// glTF's LightOrientation: every spot turned by the same quaternion (-0.532, 0, 0, 0.8467).
constexpr Vector3 Tilted {0.0f, 0.433895f, -0.900970f};

class SharedSceneLights : public ::testing::TestWithParam<SceneLights> {
protected:
    SharedSceneLights()
    {
        std::filesystem::create_directories(m_folder / "Prefabs");
        std::ofstream(m_folder / "Lights.project");
        setenv("XDG_CONFIG_HOME", (m_folder / "config").c_str(), 1);
    }
    UniqueTempFolder m_scratch{"kestrel_lights"};
    const std::filesystem::path& m_folder = m_scratch.Native();
};

TEST_P(SharedSceneLights, PrefabLightShapesMatchTheFilesLights)
{
    const std::filesystem::path scene = std::filesystem::path(KESTREL_SHARED_SCENES_DIR) / GetParam().Scene;
    if (!std::filesystem::exists(scene))
        GTEST_SKIP() << "the shared scenes are not on this machine";

    ExportRequest request;
    request.Scene = scene.string();
    request.Target = (m_folder / "Prefabs" / "lights.prefab").string();
    const SceneLoader import = [](const std::string& path) { return ImportScene(path); };
    std::FILE* out = std::tmpfile();
    ASSERT_EQ(RunExport(request, import, out, out), 0);
    std::fclose(out);

    VMWShapeInstance3DCollection shapes;
    std::string error;
    ASSERT_EQ(LoadPrefabXML(FromNativePath(request.Target), shapes, error), 0) << error;
    std::vector<const VMWLightInstance*> lights;
    for (const auto& shape : shapes.Shapes)
        if (const auto* light = dynamic_cast<const VMWLightInstance*>(shape.get()))
            lights.push_back(light);
    EXPECT_EQ(lights.size(), GetParam().Lights.size());

    for (const ExpectedLight& expected : GetParam().Lights) {
        SCOPED_TRACE(expected.Name);
        const auto found = std::find_if(lights.begin(), lights.end(),
                                        [&](const VMWLightInstance* light) { return light->Name == expected.Name; });
        ASSERT_NE(found, lights.end());
        const VMWLightInstance& light = **found;
        EXPECT_EQ(light.Type, expected.Type);
        EXPECT_THAT(light.Position, Pointwise(FloatNear(0.01f), {expected.Position.X, expected.Position.Y,
                                                                 expected.Position.Z}));
        const float colour[3] = {light.Red, light.Green, light.Blue};
        EXPECT_THAT(colour, Pointwise(FloatNear(1.0f / 255.0f + 1e-4f),
                                      {expected.Colour.X, expected.Colour.Y, expected.Colour.Z}));
        EXPECT_NEAR(light.Multiplier, expected.Multiplier, 1e-3f * expected.Multiplier);
        if (expected.Direction) {
            float forward[3];
            ForwardFromOrientation(light.Orientation, forward);
            EXPECT_THAT(forward, Pointwise(FloatNear(1e-4f), {expected.Direction->X, expected.Direction->Y,
                                                              expected.Direction->Z}));
        }
        if (expected.Type == Spot) {
            EXPECT_NEAR(light.SpotAngle, expected.Cone, 1e-3f);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    LightScenes, SharedSceneLights,
    ::testing::Values(
        SceneLights {"collada/assimp/lights.dae",
                     {{"Lamp", Point, {0, 100, 100}, White, 1},
                      {"Sun", Directional, {707.6701f, -557.2294f, 514.7222f}, White, 1, Down},
                      {"Spot", Spot, {888.8217f, -501.6863f, 533.6025f}, White, 1, Down, 45.0f},
                      {"Area", Point, {806.3721f, -419.857f, 527.3283f}, White, 1}}},
        SceneLights {"collada/cts/10_instance_of_same_pointlight/10_instance_of_same_pointlight.dae",
                     {{"pointLight1", Point, {6.44786f, -92.6335f, -32.6863f}, White, 1},
                      {"pointLight2", Point, {3.85454f, -10.4715f, 55.2539f}, White, 1},
                      {"pointLight3", Point, {34.6394f, -45.4781f, 49.4989f}, White, 1},
                      {"pointLight4", Point, {-32.1607f, 18.6733f, 59.0002f}, White, 1},
                      {"pointLight5", Point, {-77.879f, -38.9328f, -28.8365f}, White, 1},
                      {"pointLight6", Point, {75.6375f, -71.7009f, 36.8361f}, White, 1},
                      {"pointLight7", Point, {-15.3892f, 16.8083f, 15.4616f}, White, 1},
                      {"pointLight8", Point, {61.669f, -93.3388f, 12.3249f}, White, 1},
                      {"pointLight9", Point, {34.5169f, -102.055f, -19.1116f}, White, 1},
                      {"pointLight10", Point, {-37.3792f, -75.9731f, -34.6977f}, White, 1}}},
        SceneLights {"gltf/LightOrientation/LightOrientation.gltf",
                     {{"spotLight_pi_div_4", Spot, {200, -33.55279f, 47.002244f}, White, 100000, Tilted, 47.0f},
                      {"spotLight_pi_div_8", Spot, {0, -33.55279f, 47.002244f}, White, 100000, Tilted, 24.5f},
                      {"spotLight_pi_div_16", Spot, {-200, -33.55279f, 47.002244f}, White, 100000, Tilted, 13.25f},
                      {"spotLight_pi_div_32", Spot, {-400, -33.55279f, 47.002244f}, White, 100000, Tilted,
                       6.125f}}},
        // Color (0.1481, 0.0950, 0.44) at Intensity 307.23 percent.
        SceneLights {"fbx/ufbx/maya_anim_light_7500_ascii.fbx",
                     {{"pointLight1", Point, {0, 0, 0}, {0.336618f, 0.216f, 1.0f}, 1.351807f}}},
        // At frame 1, where the scene opens: the point light's intensity and the spot's place and colour
        // are keyed; the area light makes no shape. Directions are -z turned by the lights' xyz rotations
        // (-20, -40, 0) and (-45, 90, -5).
        SceneLights {"maya_ascii/maya-usd/UsdExportLightTest.ma",
                     {{"directionalLight1", Directional, {0, 0, 0}, {1, 0.9f, 0.8f}, 2,
                       Vector3 {0.604023f, 0.719846f, -0.342020f}},
                      {"pointLight1", Point, {-10, 0, 10}, {1, 0.5f, 0.1f}, 0.5f},
                      {"spotLight1", Spot, {10, 8, 7}, {0.3f, 1, 0.2f}, 0.8f, Vector3 {-0.766044f, 0, -0.642788f},
                       30}}}),
    [](const ::testing::TestParamInfo<SceneLights>& param) {
        std::string name = std::filesystem::path(param.param.Scene).stem().string();
        std::replace_if(name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); },
                        '_');
        return name;
    });

}
