#include "settings/ExportOptionKeys.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

TEST(ExportOptionKeys, ListsTheFiftyKeysInSavingOrder)
{
    constexpr std::array<std::string_view, 50> kExpected {
        "Version", "ComputeVisibility", "DebugVisInfo", "ColMesh", "TextureBehaviour", "TextureSubdir",
        "TextureUseProjDir", "ProjRelativeFilenames", "SnapAnimName", "SnapAnimFrame", "ExportLights", "DoLighting",
        "LightScale", "RotateYaw", "AdvancedMenu", "ExportStrips", "StripPerformance", "StripObject",
        "StripRestriction", "MaxStripSize", "SetMaxStripLength", "MaxStripLength", "RootBoneName", "DisplayViewer",
        "EmbedSettingsInScene", "CreateDataDir", "ExportMaterialSettings", "ExportBones", "ExportBlended",
        "MaxNumBones", "AutoGenerateBones", "UseUnderscoresInBoneNames", "BlendThreshold", "RemoveBones",
        "MeshFactor", "CenterMethod", "WarnIfMoreThan64kVerts", "OptimizeMesh", "EpsVert", "EpsUV",
        "ExportVertexColors", "ExportTangents", "NewRotDelta", "GotoBindPose", "LightmapUVs", "LightmapUVChannel",
        "BaseUVs", "BaseUVChannel", "LightMapStretchFactor", "DoubleSided"};
    const auto keys = ExportOptionKeys();
    ASSERT_EQ(keys.size(), kExpected.size());
    for (size_t i = 0; i < keys.size(); ++i)
        EXPECT_EQ(keys[i].Name, kExpected[i]) << "entry " << i;
}

TEST(ExportOptionKeys, EachKeyCarriesTheValueTypeOfItsField)
{
    EXPECT_EQ(FindExportOptionKey("Version")->Type(), VOptionType::Version);
    EXPECT_EQ(FindExportOptionKey("ComputeVisibility")->Type(), VOptionType::Int32);
    EXPECT_EQ(FindExportOptionKey("ExportMaterialSettings")->Type(), VOptionType::Int32);
    EXPECT_EQ(FindExportOptionKey("DebugVisInfo")->Type(), VOptionType::Bool);
    EXPECT_EQ(FindExportOptionKey("LightMapStretchFactor")->Type(), VOptionType::Float32);
    EXPECT_EQ(FindExportOptionKey("TextureSubdir")->Type(), VOptionType::String);
    EXPECT_EQ(FindExportOptionKey("RootBoneName")->Type(), VOptionType::String);
}

TEST(ExportOptionKeys, KeysAddressTheirOwnFields)
{
    VExportOptions options;
    const VOptionKey* key = FindExportOptionKey("EpsUV");
    ASSERT_NE(key, nullptr);
    options.*std::get<float VExportOptions::*>(key->Field) = 0.25f;
    EXPECT_EQ(options.EpsUV, 0.25f);
    EXPECT_EQ(options.EpsVert, 0.0f);
}

TEST(ExportOptionKeys, FindsKeysIgnoringCase)
{
    const VOptionKey* key = FindExportOptionKey("maxnumbones");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->Name, "MaxNumBones");
}

TEST(ExportOptionKeys, UnsavedOrUnknownNamesAreNotKeys)
{
    EXPECT_EQ(FindExportOptionKey("MinStripLength"), nullptr);
    EXPECT_EQ(FindExportOptionKey("NumAnimations"), nullptr);
    EXPECT_EQ(FindExportOptionKey(""), nullptr);
}
