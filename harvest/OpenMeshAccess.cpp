#include "harvest/MeshAccess.h"

#include "report/DebugFile.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>

namespace {

// The skin cluster's geomMatrix: the shape's world matrix when it was bound. Identity when unset,
// as Maya reads a matrix attribute that holds no value.
MMatrix GeomMatrix(const MFnDependencyNode& skin)
{
    MStatus status;
    const MPlug plug = skin.findPlug(MString("geomMatrix"), &status);
    MObject data;
    if (!status || plug.isNull() || !plug.getValue(data) || data.isNull())
        return MMatrix();
    MFnMatrixData matrix(data, &status);
    return status ? matrix.matrix() : MMatrix();
}

// The first skin cluster upstream of the shape's "inMesh" whose first input geometry holds a
// mesh: the mesh as it was before skinning, and where the cluster places it.
MObject FindPreSkinMesh(const MFnMesh& mesh, MMatrix& placement)
{
    MStatus status;
    MPlug inMesh = mesh.findPlug(MString("inMesh"), &status);
    if (!status || inMesh.isNull() || !inMesh.isConnected())
        return MObject();
    MItDependencyGraph walk(inMesh, MFn::kSkinClusterFilter, MItDependencyGraph::kUpstream,
                            MItDependencyGraph::kDepthFirst, MItDependencyGraph::kPlugLevel, &status);
    if (!status)
        return MObject();
    walk.disablePruningOnFilter();
    for (; !walk.isDone(); walk.next()) {
        const MObject node = walk.thisNode();
        if (node.apiType() != MFn::kSkinClusterFilter)
            continue;
        MFnDependencyNode skin(node, &status);
        if (!status)
            continue;
        MPlug input = skin.findPlug(MString("input"), &status);
        if (!status || input.isNull())
            continue;
        MPlug geometry = input.elementByLogicalIndex(0, &status);
        if (!status)
            continue;
        geometry = geometry.child(0, &status);
        MObject data;
        if (status && geometry.getValue(data) && !data.isNull()) {
            placement = GeomMatrix(skin);
            return data;
        }
    }
    return MObject();
}

// The skin cluster binds the shape's first instance; a further instance stands where Maya shows it
// beside the first, not on top of it.
MMatrix OffsetFromFirstInstance(const MDagPath& path)
{
    MDagPath first;
    if (path.instanceNumber() == 0 || !MDagPath::getAPathTo(path.node(), first))
        return MMatrix();
    return first.inclusiveMatrixInverse() * path.inclusiveMatrix();
}

}

bool OpenMeshAccess(MeshAccess& access, const MDagPath& path, bool usePreSkin)
{
    access.Path = path;
    if (!access.DagNode.setObject(path)) {
        DebugPrint("Failure in MFnDagNode initialization.\r\n");
        return false;
    }
    if (!access.Mesh.setObject(path)) {
        DebugPrint("Failure in MFnMesh initialization.\r\n");
        return false;
    }

    MStatus polygonStatus;
    MStatus vertexStatus;
    if (usePreSkin)
        access.InputMesh = FindPreSkinMesh(access.Mesh, access.Placement);
    if (!access.InputMesh.isNull() && access.Mesh.setObject(access.InputMesh)) {
        access.Placement = access.Placement * OffsetFromFirstInstance(path);
        access.PlacementInverse = access.Placement.inverse();
        access.Polygons = std::make_unique<MItMeshPolygon>(access.InputMesh, &polygonStatus);
        access.Vertices = std::make_unique<MItMeshVertex>(access.InputMesh, &vertexStatus);
    } else {
        access.InputMesh = MObject();
        access.Placement = path.inclusiveMatrix();
        access.PlacementInverse = path.inclusiveMatrixInverse();
        access.Polygons = std::make_unique<MItMeshPolygon>(path, MObject::kNullObj, &polygonStatus);
        access.Vertices = std::make_unique<MItMeshVertex>(path, MObject::kNullObj, &vertexStatus);
    }

    if (!polygonStatus) {
        DebugPrint("Failure in MItMeshPolygon initialization.\r\n");
        return false;
    }
    if (!vertexStatus) {
        DebugPrint("Failure in MItMeshVertex initialization.\r\n");
        return false;
    }
    if (access.Vertices->count() < 1) {
        DebugPrint("Vertex iterator has no vertices.\r\n");
        return false;
    }
    if (access.Polygons->count() == 0) {
        DebugPrint("Polygon iterator has no polygons.\r\n");
        return false;
    }
    return true;
}
