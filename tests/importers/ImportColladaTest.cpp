#include "SceneFiles.h"

#include "importers/ImportScene.h"

#include <standin/SceneBuilder.h>

#include <maya/MDistance.h>
#include <maya/MFnMesh.h>
#include <maya/MPoint.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// A Z-up file in inches with one triangle whose corners point along +x, +y (the file's depth) and +z (its up).
const char* const kZUpInches = R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
  <asset><unit name="inch" meter="0.0254"/><up_axis>Z_UP</up_axis></asset>
  <library_geometries>
    <geometry id="tri-mesh" name="tri">
      <mesh>
        <source id="tri-positions">
          <float_array id="tri-positions-array" count="9">1 0 0 0 1 0 0 0 1</float_array>
          <technique_common><accessor source="#tri-positions-array" count="3" stride="3">
            <param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/>
          </accessor></technique_common>
        </source>
        <vertices id="tri-vertices"><input semantic="POSITION" source="#tri-positions"/></vertices>
        <polylist count="1"><input semantic="VERTEX" source="#tri-vertices" offset="0"/><vcount>3</vcount><p>0 1 2</p></polylist>
      </mesh>
    </geometry>
  </library_geometries>
  <library_visual_scenes>
    <visual_scene id="Scene" name="Scene">
      <node id="tri" name="tri"><instance_geometry url="#tri-mesh"/></node>
    </visual_scene>
  </library_visual_scenes>
  <scene><instance_visual_scene url="#Scene"/></scene>
</COLLADA>
)";

TEST(ImportCollada, ZUpInchesBecomeYUpCentimetres)
{
    const std::string folder = MakeTestFolder("collada_units");
    const ImportResult result = ImportScene(WriteTestFile(folder, "zup.dae", kZUpInches));
    ASSERT_TRUE(result.Ok) << result.Error;
    MFnMesh mesh(standin::PathTo("triShape"));
    ASSERT_EQ(mesh.numVertices(), 3);
    MPoint x;
    MPoint depth;
    MPoint up;
    mesh.getPoint(0, x, MSpace::kWorld);
    mesh.getPoint(1, depth, MSpace::kWorld);
    mesh.getPoint(2, up, MSpace::kWorld);
    EXPECT_NEAR(x.x, 2.54, 1e-4);
    EXPECT_NEAR(up.y, 2.54, 1e-4);
    EXPECT_NEAR(depth.z, -2.54, 1e-4);
    EXPECT_NEAR(depth.y, 0.0, 1e-4);
}

} // namespace
