#include "harvest/ExportPortal.h"

#include "geometry/visibility/VBVisBuilder.h"
#include "harvest/NodeAttributes.h"
#include "model/VMWorld.h"
#include "report/DebugFile.h"

#include <maya/MFnMesh.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPoint.h>

namespace {

VBVector CornerPosition(MItMeshVertex& vertices, int vertex)
{
    int previous = 0;
    vertices.setIndex(vertex, previous);
    const MPoint point = vertices.position(MSpace::kWorld);
    return {point.x, -point.z, point.y};
}

bool AddAntiPortal(const MDagPath& path, const std::vector<VBVector>& corners, VMWorld& world, VBVisBuilder& builder)
{
    std::unique_ptr<VMVisAntiPortal> antiPortal = VMWorld::NewAntiPortal(static_cast<int>(corners.size()));
    if (!antiPortal)
        return false;
    antiPortal->Name = path.partialPathName().asChar();
    VBBox box;
    for (size_t i = 0; i < corners.size(); ++i) {
        float* position = antiPortal->Corners[i]->Position;
        for (int axis = 0; axis < 3; ++axis)
            position[axis] = static_cast<float>(corners[i][axis]);
        box.Grow(corners[i]);
    }
    GetNodeStringAttribute(MString("visarea"), path, antiPortal->VisAreaName);
    VMVisAntiPortal* added = antiPortal.get();
    if (world.AntiPortals.Add(std::move(antiPortal)) != 0)
        return false;
    VBPlacementItem& item = builder.AddItem();
    item.AntiPortal = added;
    item.Box = box;
    item.AreaName = added->VisAreaName;
    return true;
}

} // namespace

int ExportPortal(const MDagPath& path, VMWorld& world, VBVisBuilder* builder)
{
    if (!builder)
        return 0;

    MStatus status;
    const MFnMesh mesh(path, &status);
    if (!status) {
        DebugPrint("Failure in MFnMesh initialization\r\n");
        return -1;
    }
    MItMeshPolygon polygon(path, MObject::kNullObj, &status);
    if (!status) {
        DebugPrint("Failure in MItMeshPolygon initialization\r\n");
        return -1;
    }
    MItMeshVertex vertices(path, MObject::kNullObj, &status);
    if (!status) {
        DebugPrint("Failure in MItMeshVertex initialization\r\n");
        return -1;
    }

    const MString fullName = path.fullPathName();
    if (mesh.numPolygons() != 1) {
        DebugPrint("Portal shape (%s) must have only 1 polygon.\n", fullName.asChar());
        return 0;
    }
    const int cornerCount = static_cast<int>(polygon.polygonVertexCount());
    if (mesh.numVertices() < 3 || cornerCount < 3) {
        DebugPrint("Portal shape (%s) has too few vertices/indices.\n", fullName.asChar());
        return 0;
    }

    std::vector<VBVector> corners;
    corners.reserve(static_cast<size_t>(cornerCount));
    for (int i = 0; i < cornerCount; ++i)
        corners.push_back(CornerPosition(vertices, polygon.vertexIndex(i)));

    int32_t antiPortal = 0;
    GetNodeIntAttribute(MString("antiportal"), path, antiPortal);
    if (antiPortal != 0)
        return AddAntiPortal(path, corners, world, *builder) ? 1 : -1;

    VBPortal& portal = builder->AddPortal(cornerCount);
    portal.Name = path.partialPathName().asChar();
    portal.Corners = std::move(corners);
    GetNodeStringAttribute(MString("portal_key"), path, portal.Key);
    GetNodeStringAttribute(MString("front_name"), path, portal.FrontName);
    GetNodeStringAttribute(MString("back_name"), path, portal.BackName);
    int32_t cut = 1;
    GetNodeIntAttribute(MString("CutGeometry"), path, cut);
    portal.CutGeometry = cut == 1;
    return 1;
}
