#include "settings/VExportOptions.h"

#include <gtest/gtest.h>

TEST(ExportOptions, ModelDefaultsCentreOnTheRootBoneAndLeaveLightsOut)
{
    VExportOptions options;
    options.CenterMethod = 4;
    options.ExportLights = true;
    SetExportOptionDefaults(options, ExportOptionDefaults {.FormatKind = kFormatKindModel});
    EXPECT_EQ(options.CenterMethod, 2);
    EXPECT_FALSE(options.ExportLights);
}

TEST(ExportOptions, StaticDefaultsKeepTheSceneOriginAndExportLights)
{
    VExportOptions options;
    SetExportOptionDefaults(options, ExportOptionDefaults {.FormatKind = kFormatKindStatic});
    EXPECT_EQ(options.CenterMethod, 0);
    EXPECT_TRUE(options.ExportLights);
}

TEST(ExportOptions, DefaultsTakeTheApplicationSettingsAndTheFormatsProjectUse)
{
    VExportOptions options;
    SetExportOptionDefaults(options, ExportOptionDefaults {.FormatKind = kFormatKindStatic,
                                                           .TextureUseProjDir = false,
                                                           .EmbedSettingsInScene = true,
                                                           .LightmapUVs = 1,
                                                           .MeshFactor = 2.5f,
                                                           .WarnIfMoreThan64kVerts = true});
    EXPECT_FALSE(options.TextureUseProjDir);
    EXPECT_TRUE(options.EmbedSettingsInScene);
    EXPECT_EQ(options.LightmapUVs, 1);
    EXPECT_EQ(options.MeshFactor, 2.5f);
    EXPECT_TRUE(options.WarnIfMoreThan64kVerts);
}

TEST(ExportOptions, DefaultsResetEveryOtherFieldButKeepTheRootBoneName)
{
    VExportOptions options;
    options.RootBoneName = "Bip01";
    options.EpsVert = 0.5f;
    options.TextureSubdir = "maps\\";
    options.Version = {6, 0, 0, 0};
    options.MinStripLength = 7;
    SetExportOptionDefaults(options, ExportOptionDefaults {});

    VExportOptions expected;
    expected.RootBoneName = "Bip01";
    EXPECT_EQ(options, expected);
}

TEST(ExportOptions, FreshRecordHoldsTheDocumentedDefaults)
{
    const VExportOptions options;
    EXPECT_EQ(options.DoubleSided, 2);
    EXPECT_EQ(options.Version, (VSettingsVersion {7, 6, 3, 0}));
    EXPECT_EQ(options.ComputeVisibility, -1);
    EXPECT_TRUE(options.DebugVisInfo);
    EXPECT_EQ(options.ColMesh, 1);
    EXPECT_EQ(options.TextureSubdir, "Textures\\");
    EXPECT_EQ(options.LightScale, 1.0f);
    EXPECT_EQ(options.MaxStripSize, 1024.0f);
    EXPECT_EQ(options.MaxStripLength, 10000);
    EXPECT_EQ(options.MinStripLength, 0);
    EXPECT_EQ(options.StripFlags, 0);
    EXPECT_TRUE(options.DisplayViewer);
    EXPECT_EQ(options.LightmapUVChannel, 3);
    EXPECT_EQ(options.BaseUVs, 2);
    EXPECT_EQ(options.BaseUVChannel, 1);
    EXPECT_EQ(options.LightMapStretchFactor, 0.1f);
    EXPECT_EQ(options.ExportMaterialSettings, 61);
    EXPECT_EQ(options.ExportBlended, 1);
    EXPECT_EQ(options.RemoveBones, 1);
    EXPECT_EQ(options.OptimizeMesh, 1);
    EXPECT_EQ(options.MaxNumBones, 4);
    EXPECT_TRUE(options.ExportVertexColors);
    EXPECT_TRUE(options.ExportTangents);
    EXPECT_TRUE(options.StripRestriction);
    EXPECT_TRUE(options.SetMaxStripLength);
    EXPECT_TRUE(options.NewRotDelta);
    EXPECT_TRUE(options.GotoBindPose);
}
