#include "plugin/ImportMesh.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/CollisionMeshReader.h"
#include "formats/LoadModel.h"
#include "formats/LoadV3DWorld.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "ui/VMessageBox.h"

#include <maya/MFileObject.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>

namespace {

// The files of older engine tools: Maya (x, y, z) is their (y, z, x).
void AddOlderPoint(const float* position, ImportedMesh& mesh)
{
    mesh.Points.insert(mesh.Points.end(), {position[1], position[2], position[0]});
}

bool FromWorld(VMWorld& world, ImportedMesh& mesh)
{
    world.Enumerate();
    for (const VMVertex* vertex : world.Vertices)
        AddOlderPoint(vertex->Position, mesh);
    for (const VMPolygon* polygon : world.Polygons) {
        mesh.Counts.push_back(polygon->CornerCount());
        for (const VMVertex* corner : polygon->Corners)
            mesh.Connects.push_back(static_cast<int>(corner->Index));
    }
    return true;
}

bool FromModel(VMModel& model, ImportedMesh& mesh)
{
    model.Enumerate();
    for (const VMSkinVertex* vertex : model.Vertices)
        AddOlderPoint(vertex->Position, mesh);
    for (const VMFace* face : model.Faces) {
        mesh.Counts.push_back(face->CornerCount());
        for (const VMSkinVertex* corner : face->Corners())
            mesh.Connects.push_back(static_cast<int>(corner->Index));
    }
    return true;
}

// The static export wrote Maya's (x, y, z) as (x, -z, y).
void AddExportedPoint(const float* position, ImportedMesh& mesh)
{
    mesh.Points.insert(mesh.Points.end(), {position[0], position[2], -position[1]});
}

void FromStaticMesh(const VStaticMeshFile& file, ImportedMesh& mesh)
{
    for (const VStaticMeshVertex& vertex : file.Vertices)
        AddExportedPoint(vertex.Position, mesh);
    const size_t triangles = std::min(file.Indices.size() / 3, static_cast<size_t>(std::max(file.TriangleCount, 0)));
    mesh.Counts.assign(triangles, 3);
    mesh.Connects.assign(file.Indices.begin(), file.Indices.begin() + static_cast<std::ptrdiff_t>(3 * triangles));
}

void FromCollisionMesh(const VCollisionMeshFile& file, ImportedMesh& mesh)
{
    for (size_t i = 0; i + 2 < file.Positions.size(); i += 3)
        AddExportedPoint(&file.Positions[i], mesh);
    mesh.Counts.assign(file.Indices.size() / 3, 3);
    mesh.Connects.assign(file.Indices.begin(), file.Indices.end());
}

const char* StatusText(const MStatus& status)
{
    switch (status.statusCode()) {
    case MS::kInvalidParameter: return "Invalid parameter.";
    case MS::kInsufficientMemory: return "Insufficient memory.";
    default: return "Object error.";
    }
}

} // namespace

bool LoadImportedMesh(const std::string& path, ImportedMesh& mesh, std::string& error)
{
    mesh = ImportedMesh {};
    if (EndsWithNoCase(path, "V3D")) {
        VMWorld world;
        return LoadV3DWorld(path, world, error) == 0 && FromWorld(world, mesh);
    }
    if (EqualsNoCase(ExtensionOf(path), ".model")) {
        VMModel model;
        if (!LoadModel(model, path)) {
            error = LastError().Text;
            return false;
        }
        return FromModel(model, mesh);
    }
    if (EqualsNoCase(ExtensionOf(path), ".qmesh")) {
        VStaticMeshFile file;
        if (!ReadStaticMesh(path, file)) {
            error = LastError().Text;
            return false;
        }
        FromStaticMesh(file, mesh);
        return true;
    }
    if (EqualsNoCase(ExtensionOf(path), ".qcolmesh")) {
        VCollisionMeshFile file;
        if (!ReadCollisionMesh(path, file)) {
            error = LastError().Text;
            return false;
        }
        FromCollisionMesh(file, mesh);
        return true;
    }
    error = "only static meshes (.qmesh), collision meshes (.qcolmesh), models (.model) and world text files (.V3D) "
            "are imported";
    return false;
}

MStatus ImportMesh(const MFileObject& file, VMessageBox& messageBox)
{
    const std::string path = FromNativePath(file.fullName().asChar());
    ImportedMesh mesh;
    std::string error;
    if (!LoadImportedMesh(path, mesh, error)) {
        MGlobal::displayError(MString("Cannot import '") + file.fullName() + "': " + error.c_str());
        return MS::kFailure;
    }

    MFloatPointArray points;
    for (size_t i = 0; i + 2 < mesh.Points.size(); i += 3)
        points.append(MFloatPoint(mesh.Points[i], mesh.Points[i + 1], mesh.Points[i + 2]));
    MIntArray counts;
    for (const int count : mesh.Counts)
        counts.append(count);
    MIntArray connects;
    for (const int corner : mesh.Connects)
        connects.append(corner);

    MStatus status;
    MFnMesh fn;
    const MObject created = fn.create(static_cast<int>(points.length()), static_cast<int>(counts.length()), points,
                                      counts, connects, MObject::kNullObj, &status);
    if (!status) {
        VMessageBoxRequest request;
        request.Caption = "Import error";
        request.Text = StatusText(status);
        request.Icon = VMessageBoxIcon::Error;
        messageBox.Show(request);
        return MS::kFailure;
    }
    const MString name = MFnDependencyNode(created).name();
    MGlobal::executeCommand(MString("createAndAssignShader blinn \"") + name + "\"");
    return MS::kSuccess;
}
