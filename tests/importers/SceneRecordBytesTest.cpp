#include "importers/SceneRecordBytes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

SceneRecord SmallRecord()
{
    SceneRecord record;
    RecordNode node;
    node.Name = "root";
    node.Mesh = 0;
    node.Attributes.push_back({"note", RecordAttributeKind::String, 0.0, "kept"});
    record.Nodes.push_back(node);
    RecordMesh mesh;
    mesh.Name = "tri";
    mesh.Points = {MPoint(0, 0, 0), MPoint(1, 0, 0), MPoint(0, 1, 0)};
    mesh.Counts = {3};
    mesh.Connects = {0, 1, 2};
    mesh.UVSets.push_back({"map1", {0.0f, 1.0f}, {0.0f, 1.0f}, {0, 1, -1}});
    mesh.Skin.Influences = {0};
    mesh.Skin.BindPreMatrices = {MMatrix()};
    mesh.Skin.Weights = {{1.0}, {1.0}, {0.5}};
    record.Meshes.push_back(mesh);
    record.Materials.emplace_back().ColorTexture.File = "\\maps\\wood.png";
    record.Meshes.back().MorphTargets.push_back({{MVector(0, 1, 0), MVector(), MVector()}, 0.5});
    record.Clips.push_back({"walk", 0.0, 1.5, {{0, {{0.5, {}}}}}, {{0, 0, {{0.5, 0.25}}}}});
    record.TimeUnit = MTime::kNTSCFrame;
    return record;
}

// Packing what was unpacked gives the same bytes, and any cut of them is refused rather than read as a
// smaller scene.
TEST(SceneRecordBytes, RoundTripsWholeAndRefusesEveryCut)
{
    ImportResult result;
    result.Error = "none";
    result.Warn("odd", 4);
    result.Clips.push_back({"walk", 0.0, 36.0});
    const std::string bytes = PackSceneRecord(true, SmallRecord(), result);

    bool read = false;
    SceneRecord record;
    ImportResult unpacked;
    ASSERT_TRUE(UnpackSceneRecord(bytes, read, record, unpacked));
    EXPECT_TRUE(read);
    EXPECT_EQ(record.Meshes.at(0).Skin.Weights.at(2).at(0), 0.5);
    EXPECT_EQ(record.Materials.at(0).ColorTexture.File, "\\maps\\wood.png");
    EXPECT_EQ(record.Meshes.at(0).MorphTargets.at(0).Offsets.at(0).y, 1.0);
    EXPECT_EQ(record.Clips.at(0).WeightChannels.at(0).Keys.at(0).Weight, 0.25);
    EXPECT_EQ(unpacked.Warnings.at(0).Describe(), "line 4: odd");
    EXPECT_EQ(PackSceneRecord(read, record, unpacked), bytes);

    for (size_t length = 0; length < bytes.size(); ++length) {
        SceneRecord cut;
        ImportResult cutResult;
        ASSERT_FALSE(UnpackSceneRecord(std::string_view(bytes).substr(0, length), read, cut, cutResult)) << length;
    }
    EXPECT_FALSE(UnpackSceneRecord(bytes + "x", read, record, unpacked));
}

} // namespace
