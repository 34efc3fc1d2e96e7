#include "settings/VExportOptions.h"

#include <gtest/gtest.h>

// The defaults of every saved key, for the model and the static kinds, are pinned by the saved
// default blocks (SettingsBlockSaveTest).
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
