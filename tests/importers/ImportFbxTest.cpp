#include "SceneFiles.h"

#include "importers/ImportScene.h"

#include <standin/SceneBuilder.h>

#include <maya/MDistance.h>
#include <maya/MFnMesh.h>
#include <maya/MPoint.h>
#include <maya/MTime.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// A 3ds Max style file: Z up, -Y front, inches, 30 frames per second, with two user properties on its model.
const char* const kZUpInchesFbx = R"(; FBX 7.4.0 project file
FBXHeaderExtension:  {
	FBXHeaderVersion: 1003
	FBXVersion: 7400
	Creator: "handwritten"
}
GlobalSettings:  {
	Version: 1000
	Properties70:  {
		P: "UpAxis", "int", "Integer", "",2
		P: "UpAxisSign", "int", "Integer", "",1
		P: "FrontAxis", "int", "Integer", "",1
		P: "FrontAxisSign", "int", "Integer", "",-1
		P: "CoordAxis", "int", "Integer", "",0
		P: "CoordAxisSign", "int", "Integer", "",1
		P: "UnitScaleFactor", "double", "Number", "",2.54
		P: "TimeMode", "enum", "", "",6
	}
}
Definitions:  {
	Version: 100
	Count: 2
	ObjectType: "Model" {
		Count: 1
	}
	ObjectType: "Geometry" {
		Count: 1
	}
}
Objects:  {
	Geometry: 100, "Geometry::tri", "Mesh" {
		Vertices: *9 {
			a: 1,0,0,0,1,0,0,0,1
		}
		PolygonVertexIndex: *3 {
			a: 0,1,-3
		}
		GeometryVersion: 124
	}
	Model: 200, "Model::tri", "Mesh" {
		Version: 232
		Properties70:  {
			P: "ExportSkip", "int", "Integer", "A+U",1
			P: "visarea", "KString", "", "A+U", "hall"
		}
		Shading: T
		Culling: "CullingOff"
	}
}
Connections:  {
	C: "OO",200,0
	C: "OO",100,200
}
)";

// The unit and frame rate shown are the source's; user properties become dynamic attributes.
TEST(ImportFbx, TheFilesAxesAndUnitBecomeMayasYUpCentimetres)
{
    const ImportResult result = ImportScene(WriteTestFile(MakeTestFolder("fbx_axes"), "zup.fbx", kZUpInchesFbx));
    ASSERT_TRUE(result.Ok) << result.Error;
    MFnMesh mesh(standin::PathTo("triShape"));
    ASSERT_EQ(mesh.numVertices(), 3);
    MPoint side;
    MPoint front;
    MPoint up;
    mesh.getPoint(0, side, MSpace::kWorld);
    mesh.getPoint(1, front, MSpace::kWorld);
    mesh.getPoint(2, up, MSpace::kWorld);
    EXPECT_NEAR(side.x, 2.54, 1e-5);
    EXPECT_NEAR(front.z, -2.54, 1e-5);
    EXPECT_NEAR(up.y, 2.54, 1e-5);
    EXPECT_NEAR(up.z, 0.0, 1e-5);

    EXPECT_EQ(MDistance::uiUnit(), MDistance::kInches);
    EXPECT_EQ(MTime::uiUnit(), MTime::kNTSCFrame);

    EXPECT_EQ(standin::Plug("tri.ExportSkip").asInt(), 1);
    EXPECT_EQ(std::string(standin::Plug("tri.visarea").asString().asChar()), "hall");
    EXPECT_TRUE(standin::Plug("tri.IsNull").isNull());
}

} // namespace
