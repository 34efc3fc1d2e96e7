#include "settings/SettingsBlock.h"

#include "DebugCapture.h"
#include "tests/ScopedLocale.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

VExportOptions DefaultsFor(int formatKind)
{
    VExportOptions options;
    SetExportOptionDefaults(options, ExportOptionDefaults {.FormatKind = formatKind});
    return options;
}

} // namespace

TEST(SettingsBlockSave, DefaultModelBlockIsTheFiftyKeyLinesAndAnEmptyAnimationList)
{
    const std::string expected =
        "// Exporter: Kestrel\r\n"
        "// Version : 7.6.3.0\r\n"
        "// ComputeVisibility : -1\r\n"
        "// DebugVisInfo : 1\r\n"
        "// ColMesh : 1\r\n"
        "// TextureBehaviour : 0\r\n"
        "// TextureSubdir : Textures\\\r\n"
        "// TextureUseProjDir : 1\r\n"
        "// ProjRelativeFilenames : 0\r\n"
        "// SnapAnimName : \r\n"
        "// SnapAnimFrame : 0\r\n"
        "// ExportLights : 0\r\n"
        "// DoLighting : 0\r\n"
        "// LightScale : 1.000000\r\n"
        "// RotateYaw : 0.000000\r\n"
        "// AdvancedMenu : 0\r\n"
        "// ExportStrips : 0\r\n"
        "// StripPerformance : 0\r\n"
        "// StripObject : 0\r\n"
        "// StripRestriction : 1\r\n"
        "// MaxStripSize : 1024.000000\r\n"
        "// SetMaxStripLength : 1\r\n"
        "// MaxStripLength : 10000\r\n"
        "// RootBoneName : \r\n"
        "// DisplayViewer : 1\r\n"
        "// EmbedSettingsInScene : 0\r\n"
        "// CreateDataDir : 1\r\n"
        "// ExportMaterialSettings : 61\r\n"
        "// ExportBones : 0\r\n"
        "// ExportBlended : 1\r\n"
        "// MaxNumBones : 4\r\n"
        "// AutoGenerateBones : 0\r\n"
        "// UseUnderscoresInBoneNames : 0\r\n"
        "// BlendThreshold : 0.000000\r\n"
        "// RemoveBones : 1\r\n"
        "// MeshFactor : 1.000000\r\n"
        "// CenterMethod : 2\r\n"
        "// WarnIfMoreThan64kVerts : 0\r\n"
        "// OptimizeMesh : 1\r\n"
        "// EpsVert : 0.000000\r\n"
        "// EpsUV : 0.000000\r\n"
        "// ExportVertexColors : 1\r\n"
        "// ExportTangents : 1\r\n"
        "// NewRotDelta : 1\r\n"
        "// GotoBindPose : 1\r\n"
        "// LightmapUVs : 2\r\n"
        "// LightmapUVChannel : 3\r\n"
        "// BaseUVs : 2\r\n"
        "// BaseUVChannel : 1\r\n"
        "// LightMapStretchFactor : 0.100000\r\n"
        "// DoubleSided : 2\r\n"
        "// NumAnimations: 0\r\n";
    EXPECT_EQ(SaveSettingsToString(DefaultsFor(kFormatKindModel), VAnimationTable {}), expected);
}

TEST(SettingsBlockSave, DefaultStaticBlockExportsLightsAndKeepsTheSceneOrigin)
{
    const std::string text = SaveSettingsToString(DefaultsFor(kFormatKindStatic), VAnimationTable {});
    EXPECT_NE(text.find("\r\n// ExportLights : 1\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n// CenterMethod : 0\r\n"), std::string::npos);
}

TEST(SettingsBlockSave, WritesFloatsWithSixDecimalsAndStringsUnchanged)
{
    VExportOptions options;
    options.RotateYaw = -90.5f;
    options.EpsVert = 0.0000004f;
    options.MaxStripSize = 3e9f;
    options.RootBoneName = "Bip01 Pelvis";
    options.Version = {1, -2, 3, 40};
    const std::string text = SaveSettingsToString(options, VAnimationTable {});
    EXPECT_NE(text.find("\r\n// RotateYaw : -90.500000\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n// EpsVert : 0.000000\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n// MaxStripSize : 3000000000.000000\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n// RootBoneName : Bip01 Pelvis\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n// Version : 1.-2.3.40\r\n"), std::string::npos);
}

TEST(SettingsBlockSave, AppendsTheAnimationLinesAfterTheOptions)
{
    VAnimationTable animations;
    VAnimationDescription walk;
    walk.Name = "walk";
    animations.Add(walk);
    const std::string text = SaveSettingsToString(VExportOptions {}, animations);
    const size_t doubleSided = text.find("// DoubleSided : 2\r\n");
    const size_t count = text.find("// NumAnimations: 1\r\n// Animation: walk\r\n");
    ASSERT_NE(doubleSided, std::string::npos);
    ASSERT_NE(count, std::string::npos);
    EXPECT_LT(doubleSided, count);
    EXPECT_TRUE(text.ends_with("// AnimCompressed: 1\r\n"));
}

TEST(SettingsBlockSave, TracesItsStartAndEndAroundTheAnimationText)
{
    DebugCapture debug;
    SaveSettingsToString(VExportOptions {}, VAnimationTable {});
    EXPECT_EQ(debug.Text(), "SaveSettingsToString()\r\n"
                            "SaveAnimationsToString()\r\n"
                            "End of SaveAnimationsToString()\r\n"
                            "End of SaveSettingsToString()\r\n");
}

TEST(SettingsBlockSave, NumbersKeepTheDecimalPointUnderACommaLocale)
{
    ScopedLocale german("de_DE.UTF-8");
    if (!german.IsActive())
        GTEST_SKIP() << "no comma-decimal locale installed";
    char probe[16];
    std::snprintf(probe, sizeof probe, "%.1f", 1.5);
    ASSERT_STREQ(probe, "1,5") << "the locale does not use a decimal comma";

    VExportOptions options;
    options.LightScale = 2.5f;
    VExportOptions loaded;
    VAnimationTable animations;
    const std::string text = SaveSettingsToString(options, animations);
    EXPECT_NE(text.find("\r\n// LightScale : 2.500000\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n// LightMapStretchFactor : 0.100000\r\n"), std::string::npos);

    LoadSettingsFromString("// LightScale : 3.25\r\n// MeshFactor : 0.5\r\n", loaded, animations);
    EXPECT_EQ(loaded.LightScale, 3.25f);
    EXPECT_EQ(loaded.MeshFactor, 0.5f);
}
