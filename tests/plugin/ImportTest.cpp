// Exported assets and older world text files read back through the static translators' reader
// into one Maya mesh.

#include "PluginFixture.h"
#include "TestScenes.h"

#include "formats/LoadModel.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"

#include <maya/MDagPath.h>
#include <maya/MFnMesh.h>
#include <maya/MIntArray.h>
#include <maya/MItDag.h>
#include <maya/MObjectArray.h>
#include <maya/MPointArray.h>
#include <standin/SceneBuilder.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace {

// Corners rounded to hundredths of a centimetre: float tolerance without near-equality pairing.
using Corner = std::array<long, 3>;
using Triangle = std::array<Corner, 3>;

Corner Round(double x, double y, double z)
{
    return {std::lround(x * 100.0), std::lround(y * 100.0), std::lround(z * 100.0)};
}

// The mesh's polygons fanned into triangles, each one its set of corners: an export may renumber,
// reorder and rewind them.
std::multiset<Triangle> Triangles(const MDagPath& path)
{
    const MFnMesh mesh(path);
    MPointArray points;
    mesh.getPoints(points, MSpace::kWorld);
    std::multiset<Triangle> triangles;
    for (int polygon = 0; polygon < mesh.numPolygons(); ++polygon) {
        MIntArray corners;
        mesh.getPolygonVertices(polygon, corners);
        for (unsigned int i = 2; i < corners.length(); ++i) {
            Triangle triangle;
            for (const unsigned int at : {0u, i - 1, i}) {
                const MPoint& p = points[static_cast<unsigned int>(corners[at])];
                triangle[at == 0 ? 0 : at == i ? 2 : 1] = Round(p.x, p.y, p.z);
            }
            std::sort(triangle.begin(), triangle.end());
            triangles.insert(triangle);
        }
    }
    return triangles;
}

// The paths of every mesh but the one named.
std::vector<MDagPath> MeshesOtherThan(const std::string& name)
{
    std::vector<MDagPath> paths;
    for (MItDag it(MItDag::kDepthFirst, MFn::kMesh); !it.isDone(); it.next()) {
        MDagPath path;
        it.getPath(path);
        if (path.partialPathName() != name.c_str())
            paths.push_back(path);
    }
    return paths;
}

// A tetrahedron away from the origin, with no face in a principal plane.
MObject AddTetrahedron()
{
    const MObject transform = standin::CreateNode("transform", "tetra");
    standin::MeshDescription description;
    description.points = {{10, 20, 30}, {110, 25, 35}, {15, 140, 40}, {20, 30, 170}};
    description.counts = {3, 3, 3, 3};
    description.connects = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
    return standin::CreateMesh("tetraShape", transform, description);
}

class MeshImport : public PluginFixture {
protected:
    MStatus Import(const std::string& relative)
    {
        return standin::ImportFile("Zephra_Static_Mesh", MayaName(relative));
    }
    MDagPath Imported()
    {
        const std::vector<MDagPath> paths = MeshesOtherThan("tetraShape");
        EXPECT_EQ(paths.size(), 1u);
        return paths.empty() ? MDagPath() : paths.front();
    }
};

class ExportedMeshImport : public MeshImport, public ::testing::WithParamInterface<const char*> {};

TEST_P(ExportedMeshImport, ComesBackWithTheSameTrianglesAndABlinn)
{
    AssignMaterial(AddTetrahedron(), "stone");
    MDagPath original;
    MItDag(MItDag::kDepthFirst, MFn::kMesh).getPath(original);
    ASSERT_TRUE(ExportAll("rock.qmesh"));

    ASSERT_TRUE(Import(std::string("rock") + GetParam()));

    const MDagPath imported = Imported();
    EXPECT_EQ(Triangles(imported), Triangles(original));
    MObjectArray shaders;
    MIntArray indices;
    MFnMesh(imported).getConnectedShaders(0, shaders, indices);
    EXPECT_EQ(shaders.length(), 1u);
    EXPECT_TRUE(MessageBoxes.Requests.empty());
}

INSTANTIATE_TEST_SUITE_P(StaticAndCollisionMesh, ExportedMeshImport, ::testing::Values(".qmesh", ".qcolmesh"),
                         [](const auto& kind) { return std::string(kind.param + 1); });

TEST_F(MeshImport, ModelCornersTakeMayaXYZFromTheFilesYZX)
{
    AssignMaterial(AddTetrahedron(), "stone");
    ASSERT_TRUE(standin::ExportFile("Zephra_Model_File", MayaName("rock.model"), MPxFileTranslator::kExportAccessMode));
    VMModel model;
    ASSERT_TRUE(LoadModel(model, SystemPath("rock.model"))) << LastError().Text;
    std::multiset<Triangle> expected;
    for (const VMFace* face : model.Faces) {
        Triangle triangle;
        for (int i = 0; i < 3; ++i) {
            const float* p = face->Corners()[static_cast<size_t>(i)]->Position;
            triangle[static_cast<size_t>(i)] = Round(p[1], p[2], p[0]);
        }
        std::sort(triangle.begin(), triangle.end());
        expected.insert(triangle);
    }

    ASSERT_TRUE(Import("rock.model"));

    EXPECT_EQ(expected.size(), 4u);
    EXPECT_EQ(Triangles(Imported()), expected);
}

TEST_F(MeshImport, WorldTextFileCornersTakeMayaXYZFromTheFilesYZX)
{
    Write("old/level.v3d", "VNUM=1.20\r\n"
                           "D, 100, 200, 300, 0, 0, 0, 0, 1\r\n"
                           "D, 0, 0, 0, 0, 0, 0, 0, 1\r\n"
                           "D, 0, 100, 0, 0, 0, 0, 0, 1\r\n"
                           "P, 1, 3, 0, 1, 2\r\n");

    ASSERT_TRUE(Import("old/level.v3d"));

    EXPECT_EQ(Triangles(Imported()),
              (std::multiset<Triangle> {{Round(0, 0, 0), Round(1, 0, 0), Round(2, 3, 1)}}));
}

TEST_F(MeshImport, FilesItCannotTakeFailWithoutAMessageBox)
{
    Write("rock.obj", "v 0 0 0\n");
    Write("old.v3d", "VNUM=1.19\r\n");

    EXPECT_FALSE(Import("rock.obj"));
    EXPECT_FALSE(Import("old.v3d"));
    EXPECT_FALSE(Import("missing.model"));

    EXPECT_TRUE(MeshesOtherThan("").empty());
    EXPECT_TRUE(MessageBoxes.Requests.empty());
}

} // namespace
