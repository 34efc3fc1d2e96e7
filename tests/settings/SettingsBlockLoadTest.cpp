#include "settings/SettingsBlock.h"

#include "DebugCapture.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

struct Loaded {
    VExportOptions Options;
    VAnimationTable Animations;
};

Loaded Load(std::string_view text)
{
    Loaded loaded;
    LoadSettingsFromString(text, loaded.Options, loaded.Animations);
    return loaded;
}

} // namespace

TEST(SettingsBlockLoad, SavedBlockLoadsBackIntoTheSameRecord)
{
    VExportOptions options;
    SetExportOptionDefaults(options, ExportOptionDefaults {.FormatKind = kFormatKindStatic});
    options.ComputeVisibility = 3;
    options.TextureSubdir = "maps\\stone\\";
    options.SnapAnimName = "idle";
    options.RotateYaw = 45.25f;
    options.LightMapStretchFactor = 0.333333f;
    options.ExportStrips = true;
    options.DoubleSided = 1;
    options.RootBoneName = "Bip01";
    options.ExportMaterialSettings = 61 | 256;
    VAnimationTable animations;
    VAnimationDescription run;
    run.Name = "run fast";
    run.Type = kAnimTypeBone;
    run.RangeStart = 10;
    run.RangeEnd = 40;
    run.RotationAxis = 3;
    run.Compressed = false;
    animations.Add(run);

    Loaded loaded;
    SetExportOptionDefaults(loaded.Options, ExportOptionDefaults {.FormatKind = kFormatKindStatic});
    LoadSettingsFromString(SaveSettingsToString(options, animations), loaded.Options, loaded.Animations);
    EXPECT_EQ(loaded.Options, options);
    EXPECT_EQ(loaded.Animations, animations);
}

// A block and what it changes in a fresh record; everything else must stay as it was.
struct LoadCase {
    std::string Text;
    std::function<void(VExportOptions&)> Change = [](VExportOptions&) {};
};

class SettingsBlockLines : public ::testing::TestWithParam<LoadCase> {};

TEST_P(SettingsBlockLines, ChangeExactlyTheirFields)
{
    VExportOptions expected;
    GetParam().Change(expected);
    EXPECT_EQ(Load(GetParam().Text).Options, expected);
}

INSTANTIATE_TEST_SUITE_P(SettingsBlockLoad, SettingsBlockLines, ::testing::Values(
    LoadCase {""},
    // Keys ignore case and the blanks around the colon; lines end at CR or LF alike.
    LoadCase {"//maxnumbones:3\r\n//\t  EPSVERT   :\t 0.5  \r// ColMesh : 2\n// OptimizeMesh : 0",
              [](VExportOptions& o) { o.MaxNumBones = 3; o.EpsVert = 0.5f; o.ColMesh = 2; o.OptimizeMesh = 0; }},
    LoadCase {"// RootBoneName :   Bip01 Pelvis  \r\n// SnapAnimName : a : b\r\n// TextureSubdir : \r\n",
              [](VExportOptions& o) { o.RootBoneName = "Bip01 Pelvis"; o.SnapAnimName = "a : b"; o.TextureSubdir = ""; }},
    // Integers as scanf's %i reads them.
    LoadCase {"// ExportMaterialSettings : 0x13D\r\n// MaxStripLength : 010\r\n// ColMesh : 2 hulls\r\n",
              [](VExportOptions& o) { o.ExportMaterialSettings = 317; o.MaxStripLength = 8; o.ColMesh = 2; }},
    // A bool is on exactly when its value starts with T, t or 1.
    LoadCase {"// ExportBones : True\r\n// DoLighting : t\r\n// AdvancedMenu : 1\r\n// CreateDataDir : yes\r\n"
              "// ExportTangents : FALSE\r\n// DisplayViewer : 0\r\n// GotoBindPose :\r\n",
              [](VExportOptions& o) {
                  o.ExportBones = o.DoLighting = o.AdvancedMenu = true;
                  o.CreateDataDir = o.ExportTangents = o.DisplayViewer = o.GotoBindPose = false;
              }},
    LoadCase {"// DoubleSided : 1\r\n", [](VExportOptions& o) { o.DoubleSided = 1; }},
    // Values that do not parse, unknown or unsaved keys and lines that are no option lines.
    LoadCase {"// MaxNumBones : four\r\n// LightScale : bright\r\n// MeshFactor : nan\r\n// EpsVert : 1e60\r\n"
              "// ColMesh : 99999999999\r\n// Version : 6.5.0\r\n// Exporter: Kestrel\r\n// Frobnicate : 12\r\n"
              "// MaxNumBones 3\r\nMaxNumBones : 2\r\n/ MaxNumBones : 2\r\n# ColMesh : 0\r\n// MinStripLength : 5\r\n"},
    // Reading starts behind the options marker and stops at a line that is just the end marker.
    LoadCase {"// MaxNumBones : 2\r\nscene text <OPTIONS>\r\n// ColMesh : 0\r\n// </OPTIONS>\r\n// OptimizeMesh : 0\r\n",
              [](VExportOptions& o) { o.ColMesh = 0; }},
    LoadCase {"// ColMesh : 0\r\n<OPTIONS>"},
    LoadCase {"// ColMesh : 0\r\n<OPTIONS>\r"},
    LoadCase {"// </OPTIONS> x\r\n// MaxNumBones : 2\r\n", [](VExportOptions& o) { o.MaxNumBones = 2; }},
    LoadCase {"<OPTIONS>\r\n// SnapAnimName : <OPTIONS>\r\n"},
    // Values are at most 1,023 characters long.
    LoadCase {"// RootBoneName : " + std::string(1023, 'a') + "\r\n",
              [](VExportOptions& o) { o.RootBoneName = std::string(1023, 'a'); }},
    LoadCase {"// RootBoneName : " + std::string(1024, 'b') + "\r\n"},
    // Blocks of older versions: before 7 the centre methods are renumbered, before 7.2 the model
    // is turned by 90 degrees and embedding stops. The version is current after every load.
    LoadCase {"// Version : 6.5.0.0\r\n// CenterMethod : 0\r\n// RotateYaw : 10.0\r\n",
              [](VExportOptions& o) { o.CenterMethod = 1; o.RotateYaw = 100.0f; }},
    LoadCase {"// Version : 6.0.0.0\r\n", [](VExportOptions& o) { o.CenterMethod = 3; o.RotateYaw = 90.0f; }},
    LoadCase {"// Version : 0x6. 5.0.0\r\n// CenterMethod : 0\r\n",
              [](VExportOptions& o) { o.CenterMethod = 1; o.RotateYaw = 90.0f; }},
    LoadCase {"// Version : 7.1.0.0\r\n// CenterMethod : 0\r\n// EmbedSettingsInScene : 1\r\n",
              [](VExportOptions& o) { o.CenterMethod = 0; o.RotateYaw = 90.0f; }},
    LoadCase {"// Version : 7.2.0.0\r\n// CenterMethod : 0\r\n// EmbedSettingsInScene : 1\r\n",
              [](VExportOptions& o) { o.CenterMethod = 0; o.EmbedSettingsInScene = true; }},
    LoadCase {"// CenterMethod : 0\r\n// EmbedSettingsInScene : 1\r\n",
              [](VExportOptions& o) { o.CenterMethod = 0; o.EmbedSettingsInScene = true; }},
    LoadCase {"// Version : 6.5\r\n// CenterMethod : 0\r\n", [](VExportOptions& o) { o.CenterMethod = 0; }},
    LoadCase {"// Version : 9.0.0.0\r\n"}));

TEST(SettingsBlockLoad, NumAnimationsLineLoadsTheAnimationTextBehindIt)
{
    const Loaded loaded = Load("// MaxNumBones : 3\r\n"
                               "// NumAnimations: 1\r\n"
                               "// Animation: walk\r\n"
                               "// AnimType: 3\r\n"
                               "// ColMesh : 0\r\n");
    ASSERT_EQ(loaded.Animations.Count(), 1);
    EXPECT_EQ(loaded.Animations[0].Name, "walk");
    EXPECT_EQ(loaded.Animations[0].Type, kAnimTypeBone);
    EXPECT_EQ(loaded.Options.MaxNumBones, 3);
    EXPECT_EQ(loaded.Options.ColMesh, 0);
}

TEST(SettingsBlockLoad, LaterNumAnimationsLineReplacesTheEarlierList)
{
    const Loaded loaded = Load("// NumAnimations: 2\r\n// Animation: a\r\n// Animation: b\r\n"
                               "// NumAnimations: 1\r\n// Animation: c\r\n");
    ASSERT_EQ(loaded.Animations.Count(), 1);
    EXPECT_EQ(loaded.Animations[0].Name, "c");
}

TEST(SettingsBlockLoad, TracesTheLoadAndTheFoundMarker)
{
    DebugCapture debug;
    Load("<OPTIONS>\r\n// NumAnimations: 0\r\n");
    EXPECT_EQ(debug.Text(), "LoadSettingsFromString()\r\nSaved options found!\r\nLoadAnimationsFromString()\r\n");
}

TEST(SettingsBlockMigration, VersionSixCentreMethodsMapOntoTheCurrentNumbers)
{
    const std::vector<std::pair<int, int>> oldToNew {{-1, 0}, {0, 1}, {1, 0}, {2, 3}, {3, 2}, {4, 0}, {17, 0}};
    for (const auto& [oldMethod, newMethod] : oldToNew) {
        const Loaded loaded = Load("// Version : 6.0.0.0\r\n// CenterMethod : " + std::to_string(oldMethod) + "\r\n");
        EXPECT_EQ(loaded.Options.CenterMethod, newMethod) << "old method " << oldMethod;
    }
}
