#include "settings/SettingsBlock.h"

#include "DebugCapture.h"

#include <gtest/gtest.h>

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

TEST(SettingsBlockLoad, EmptyTextLeavesTheDefaults)
{
    EXPECT_EQ(Load("").Options, VExportOptions {});
}

TEST(SettingsBlockLoad, KeysAreFoundIgnoringCaseAndBlanksAroundTheColon)
{
    const Loaded loaded = Load("//maxnumbones:3\r\n//\t  EPSVERT   :\t 0.5  \r\n");
    EXPECT_EQ(loaded.Options.MaxNumBones, 3);
    EXPECT_EQ(loaded.Options.EpsVert, 0.5f);
}

TEST(SettingsBlockLoad, LinesAreSplitAtCarriageReturnsAndLineFeedsAlike)
{
    const Loaded loaded = Load("// ColMesh : 2\r// MaxNumBones : 3\n// OptimizeMesh : 0");
    EXPECT_EQ(loaded.Options.ColMesh, 2);
    EXPECT_EQ(loaded.Options.MaxNumBones, 3);
    EXPECT_EQ(loaded.Options.OptimizeMesh, 0);
}

TEST(SettingsBlockLoad, StringValuesKeepInnerBlanksAndLoseOuterOnes)
{
    const Loaded loaded = Load("// RootBoneName :   Bip01 Pelvis  \r\n// SnapAnimName : a : b\r\n");
    EXPECT_EQ(loaded.Options.RootBoneName, "Bip01 Pelvis");
    EXPECT_EQ(loaded.Options.SnapAnimName, "a : b");
}

TEST(SettingsBlockLoad, EmptyStringValueClearsTheField)
{
    EXPECT_EQ(Load("// TextureSubdir : \r\n").Options.TextureSubdir, "");
}

TEST(SettingsBlockLoad, IntegersAreReadLikeScanfPercentI)
{
    const Loaded loaded =
        Load("// ExportMaterialSettings : 0x13D\r\n// MaxStripLength : 010\r\n// ColMesh : 2 hulls\r\n");
    EXPECT_EQ(loaded.Options.ExportMaterialSettings, 317);
    EXPECT_EQ(loaded.Options.MaxStripLength, 8);
    EXPECT_EQ(loaded.Options.ColMesh, 2);
}

TEST(SettingsBlockLoad, BoolIsOnExactlyWhenItsValueStartsWithTOr1)
{
    EXPECT_TRUE(Load("// ExportBones : True\r\n").Options.ExportBones);
    EXPECT_TRUE(Load("// ExportBones : t\r\n").Options.ExportBones);
    EXPECT_TRUE(Load("// ExportBones : 1\r\n").Options.ExportBones);
    EXPECT_FALSE(Load("// ExportBones : yes\r\n").Options.ExportBones);
    EXPECT_FALSE(Load("// ExportTangents : FALSE\r\n").Options.ExportTangents);
    EXPECT_FALSE(Load("// ExportTangents : 0\r\n").Options.ExportTangents);
}

TEST(SettingsBlockLoad, BoolWithoutValueIsSwitchedOff)
{
    EXPECT_FALSE(Load("// ExportTangents :\r\n").Options.ExportTangents);
}

TEST(SettingsBlockLoad, ValuesThatDoNotParseLeaveTheirFieldsUnchanged)
{
    const Loaded loaded = Load("// MaxNumBones : four\r\n"
                               "// LightScale : bright\r\n"
                               "// MeshFactor : nan\r\n"
                               "// EpsVert : 1e60\r\n"
                               "// ColMesh : 99999999999\r\n"
                               "// Version : 6.5.0\r\n");
    EXPECT_EQ(loaded.Options, VExportOptions {});
}

TEST(SettingsBlockLoad, UnknownKeysAndLinesWithoutColonOrSlashesAreIgnored)
{
    const Loaded loaded = Load("// Exporter: Kestrel\r\n"
                               "// Frobnicate : 12\r\n"
                               "// MaxNumBones 3\r\n"
                               "MaxNumBones : 2\r\n"
                               "/ MaxNumBones : 2\r\n"
                               "# ColMesh : 0\r\n");
    EXPECT_EQ(loaded.Options, VExportOptions {});
}

TEST(SettingsBlockLoad, KeysOutsideTheSavedTableAreNotLoaded)
{
    EXPECT_EQ(Load("// MinStripLength : 5\r\n").Options.MinStripLength, 0);
}

TEST(SettingsBlockLoad, DoubleSidedLineTakesDoubleSidednessFromTheMeshNodes)
{
    EXPECT_EQ(Load("// DoubleSided : 1\r\n").Options.DoubleSided, 1);
    EXPECT_EQ(Load("// ColMesh : 1\r\n").Options.DoubleSided, 2);
}

TEST(SettingsBlockLoad, ReadingStartsBehindTheOptionsMarker)
{
    const Loaded loaded = Load("// MaxNumBones : 2\r\nscene text <OPTIONS>\r\n// ColMesh : 0\r\n");
    EXPECT_EQ(loaded.Options.MaxNumBones, 4);
    EXPECT_EQ(loaded.Options.ColMesh, 0);
}

TEST(SettingsBlockLoad, OptionsMarkerAtTheVeryEndLeavesNothingToRead)
{
    EXPECT_EQ(Load("// ColMesh : 0\r\n<OPTIONS>").Options, VExportOptions {});
    EXPECT_EQ(Load("// ColMesh : 0\r\n<OPTIONS>\r").Options, VExportOptions {});
}

TEST(SettingsBlockLoad, EndMarkerLineStopsTheReading)
{
    const Loaded loaded = Load("// ColMesh : 0\r\n// </OPTIONS>\r\n// MaxNumBones : 2\r\n");
    EXPECT_EQ(loaded.Options.ColMesh, 0);
    EXPECT_EQ(loaded.Options.MaxNumBones, 4);
}

TEST(SettingsBlockLoad, EndMarkerWithTextBehindItDoesNotStopTheReading)
{
    EXPECT_EQ(Load("// </OPTIONS> x\r\n// MaxNumBones : 2\r\n").Options.MaxNumBones, 2);
}

TEST(SettingsBlockLoad, StringValueHoldingTheOptionsMarkerIsRefused)
{
    const Loaded loaded = Load("<OPTIONS>\r\n// SnapAnimName : <OPTIONS>\r\n");
    EXPECT_EQ(loaded.Options.SnapAnimName, "");
}

TEST(SettingsBlockLoad, ValuesOverTheFormatsLengthLimitAreIgnored)
{
    const std::string fitting(1023, 'a');
    const std::string tooLong(1024, 'b');
    EXPECT_EQ(Load("// RootBoneName : " + fitting + "\r\n").Options.RootBoneName, fitting);
    EXPECT_EQ(Load("// RootBoneName : " + tooLong + "\r\n").Options.RootBoneName, "");
}

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

TEST(SettingsBlockMigration, VersionSixRenumbersTheCentreMethodAndTurnsTheModel)
{
    const Loaded loaded = Load("// Version : 6.5.0.0\r\n// CenterMethod : 0\r\n// RotateYaw : 10.0\r\n");
    EXPECT_EQ(loaded.Options.CenterMethod, 1);
    EXPECT_EQ(loaded.Options.RotateYaw, 100.0f);
}

TEST(SettingsBlockMigration, VersionSixCentreMethodsMapOntoTheCurrentNumbers)
{
    const std::vector<std::pair<int, int>> oldToNew {{-1, 0}, {0, 1}, {1, 0}, {2, 3}, {3, 2}, {4, 0}, {17, 0}};
    for (const auto& [oldMethod, newMethod] : oldToNew) {
        const Loaded loaded = Load("// Version : 6.0.0.0\r\n// CenterMethod : " + std::to_string(oldMethod) + "\r\n");
        EXPECT_EQ(loaded.Options.CenterMethod, newMethod) << "old method " << oldMethod;
    }
}

TEST(SettingsBlockMigration, VersionSixRenumbersTheDefaultCentreMethodWhenTheBlockNamesNone)
{
    EXPECT_EQ(Load("// Version : 6.0.0.0\r\n").Options.CenterMethod, 3);
}

TEST(SettingsBlockMigration, VersionsBeforeSevenTwoTurnTheModelAndStopEmbedding)
{
    const Loaded loaded = Load("// Version : 7.1.0.0\r\n// CenterMethod : 0\r\n// EmbedSettingsInScene : 1\r\n");
    EXPECT_EQ(loaded.Options.CenterMethod, 0);
    EXPECT_EQ(loaded.Options.RotateYaw, 90.0f);
    EXPECT_FALSE(loaded.Options.EmbedSettingsInScene);
}

TEST(SettingsBlockMigration, VersionSevenTwoLoadsUnchanged)
{
    const Loaded loaded = Load("// Version : 7.2.0.0\r\n// CenterMethod : 0\r\n// RotateYaw : 10.0\r\n"
                               "// EmbedSettingsInScene : 1\r\n");
    EXPECT_EQ(loaded.Options.CenterMethod, 0);
    EXPECT_EQ(loaded.Options.RotateYaw, 10.0f);
    EXPECT_TRUE(loaded.Options.EmbedSettingsInScene);
}

TEST(SettingsBlockMigration, BlockWithoutVersionIsTakenAsCurrent)
{
    const Loaded loaded = Load("// CenterMethod : 0\r\n// EmbedSettingsInScene : 1\r\n");
    EXPECT_EQ(loaded.Options.CenterMethod, 0);
    EXPECT_EQ(loaded.Options.RotateYaw, 0.0f);
    EXPECT_TRUE(loaded.Options.EmbedSettingsInScene);
}

TEST(SettingsBlockMigration, VersionIsCurrentAfterEveryLoad)
{
    EXPECT_EQ(Load("// Version : 6.5.0.0\r\n").Options.Version, kCurrentSettingsVersion);
    EXPECT_EQ(Load("// Version : 9.0.0.0\r\n").Options.Version, kCurrentSettingsVersion);
}

TEST(SettingsBlockMigration, IncompleteVersionIsNotStoredSoNothingIsMigrated)
{
    const Loaded loaded = Load("// Version : 6.5\r\n// CenterMethod : 0\r\n");
    EXPECT_EQ(loaded.Options.CenterMethod, 0);
    EXPECT_EQ(loaded.Options.RotateYaw, 0.0f);
}

TEST(SettingsBlockMigration, VersionNumbersMayBeWrittenInAnyScanfIntegerForm)
{
    EXPECT_EQ(Load("// Version : 0x6. 5.0.0\r\n// CenterMethod : 0\r\n").Options.CenterMethod, 1);
}
