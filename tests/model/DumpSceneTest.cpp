#include "model/DumpScene.h"

#include "model/VMModel.h"

#include "WorldBuilder.h"
#include "tests/ScopedLocale.h"

#include <gtest/gtest.h>

#include <string>

namespace {

VMWorld& SmallWorld(VMWorld& world)
{
    VMMaterial* stone = AddMaterial(world, "stone");
    VMVertex* a = AddVertex(world, 0, 0, 0);
    VMVertex* b = AddVertex(world, 1.5f, 0, 0);
    VMVertex* c = AddVertex(world, 0, -2, 0.25f);
    b->MaterialLink = stone;
    c->MergeLink = a;
    VMPolygon* polygon = AddTriangle(world, a, b, c, stone);
    polygon->SourceNode = 4;
    polygon->Name = "wall";
    VMVisArea* area = AddVisArea(world, "hall");
    area->Link(*polygon);
    const float corner[3] = {0, 0, 0};
    const float far[3] = {2, 2, 2};
    area->Box.Grow(corner);
    area->Box.Grow(far);
    VMVisPortal* portal = VMWorld::NewPortal(1).release();
    portal->Name = "door";
    portal->Front = area;
    portal->Corners[0]->Position[0] = 0.5f;
    world.Portals.Add(portal);
    world.Enumerate();
    return world;
}

const char* const SmallWorldDump =
    "world\n"
    "bounds (1e+08 1e+08 1e+08) (-1e+08 -1e+08 -1e+08) corners 3\n"
    "components tangents 0 colours 0 seconduv 0\n"
    "materials 1\n"
    "  material 0 \"stone\" kind 5 transparency 0 flags 0 doublesided 0 model 0 lighting 0 fourth 1 nostrip 0 uses 1\n"
    "    textures diffuse \"\" normal \"\" specular \"\" userdata \"\" shaders 0\n"
    "    specular 0 0 ambient (0 0 0) diffuse (255 255 127) uv (1 1 0 0)\n"
    "vertices 3\n"
    "  vertex 0 pos (0 0 0) normal (0 0 0) uv (0 0) uv2 (0 0) tangent (0 0 0) colour (255 255 255 255) material -1"
    " merge -1\n"
    "  vertex 1 pos (1.5 0 0) normal (0 0 0) uv (0 0) uv2 (0 0) tangent (0 0 0) colour (255 255 255 255) material 0"
    " merge -1\n"
    "  vertex 2 pos (0 -2 0.25) normal (0 0 0) uv (0 0) uv2 (0 0) tangent (0 0 0) colour (255 255 255 255) material -1"
    " merge 0\n"
    "polygons 1\n"
    "  polygon 0 corners [0 1 2] material 0 node 4 areas [0] name \"wall\"\n"
    "trilists 0\n"
    "patches 0\n"
    "heightfields 0\n"
    "lights 0\n"
    "visareas 1\n"
    "  visarea 0 \"hall\" box (0 0 0) (2 2 2) planes [] polygons [0] trilists [] patches 0 heightfields 0\n"
    "visplanes 0\n"
    "portals 1\n"
    "  portal 0 \"door\" front 0 back -1 outside 0 (0.5 0 0)\n"
    "antiportals 0\n"
    "shapes 0\n";

TEST(DumpSceneTest, AWorldDumpsItsRecordsByListPositionWithADecimalPointInAnyLocale)
{
    VMWorld world;
    EXPECT_EQ(DumpScene(SmallWorld(world)), SmallWorldDump);
    const ScopedLocale german("de_DE.UTF-8");
    if (!german.IsActive())
        GTEST_SKIP() << "no German locale installed";
    EXPECT_EQ(DumpScene(world), SmallWorldDump);
}

TEST(DumpSceneTest, AModelDumpsInfluencesFacesAndBones)
{
    VMModel model;
    VMMaterial* skin = VMModel::NewMaterial().release();
    skin->Name = "skin";
    model.Materials.Add(skin);
    model.Skeleton = VMModel::NewSkeleton();
    VMBone* root = VMModel::NewBone().release();
    root->Name = "root";
    model.Skeleton->Bones.Add(root);
    model.Skeleton->Root = root;
    VMSkinVertex* vertex = VMModel::NewVertex().release();
    vertex->InfluenceCount = 1;
    vertex->InfluenceBones[0] = root;
    vertex->InfluenceWeights[0] = 1.0f;
    model.Vertices.Add(vertex);
    root->Vertices.push_back(vertex);
    root->Weights.push_back(1.0f);
    VMFace* face = VMModel::NewFace().release();
    face->AddCorner(vertex);
    face->AddCorner(vertex);
    face->AddCorner(vertex);
    face->SetMaterial(skin);
    model.Faces.Add(face);

    const std::string dump = DumpScene(model);

    EXPECT_NE(dump.find("  vertex 0 pos (0 0 0) normal (0 0 0) uv (0 0) uv2 (0 0) tangent (0 0 0)"
                        " colour (255 255 255 255) material -1 influences 0:1\n"),
              std::string::npos)
        << dump;
    EXPECT_NE(dump.find("  face 0 corners [0 0 0] material 0\n"), std::string::npos) << dump;
    EXPECT_NE(dump.find("skeleton bones 1 root 0\n  bone 0 \"root\" parent -1 anchored 0"), std::string::npos) << dump;
    EXPECT_NE(dump.find(" vertices [0]\n"), std::string::npos) << dump;
}

} // namespace
