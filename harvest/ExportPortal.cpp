#include "harvest/ExportPortal.h"

#include "harvest/NodeAttributes.h"
#include "model/VMWorld.h"
#include "report/DebugFile.h"

#include <maya/MFnMesh.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MPoint.h>

namespace {

std::array<double, 3> CornerPosition(MItMeshVertex& vertices, int vertex)
{
    int previous = 0;
    vertices.setIndex(vertex, previous);
    const MPoint point = vertices.position(MSpace::kWorld);
    return {point.x, -point.z, point.y};
}

std::optional<std::string> StringAttribute(const char* name, const MDagPath& path)
{
    std::string value;
    if (!GetNodeStringAttribute(MString(name), path, value))
        return std::nullopt;
    return value;
}

bool AddAntiPortal(const MDagPath& path, const std::vector<std::array<double, 3>>& corners, VMWorld& world,
                   VisBuilderInput& builder)
{
    std::unique_ptr<VMVisAntiPortal> antiPortal = VMWorld::NewAntiPortal(static_cast<int>(corners.size()));
    if (!antiPortal)
        return false;
    antiPortal->Name = path.partialPathName().asChar();
    VMBoundingBox box;
    for (size_t i = 0; i < corners.size(); ++i) {
        float* position = antiPortal->Corners[i]->Position;
        for (int axis = 0; axis < 3; ++axis)
            position[axis] = static_cast<float>(corners[i][static_cast<size_t>(axis)]);
        box.Grow(position);
    }
    std::string visArea;
    GetNodeStringAttribute(MString("visarea"), path, visArea);
    antiPortal->VisAreaName = visArea;
    VMVisAntiPortal& added = *antiPortal;
    if (world.AntiPortals.Add(std::move(antiPortal)) != 0)
        return false;
    builder.AddAntiPortal(added, box, visArea);
    return true;
}

} // namespace

int ExportPortal(const MDagPath& path, VMWorld& world, VisBuilderInput* builder)
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

    std::vector<std::array<double, 3>> corners;
    corners.reserve(static_cast<size_t>(cornerCount));
    for (int i = 0; i < cornerCount; ++i)
        corners.push_back(CornerPosition(vertices, polygon.vertexIndex(i)));

    int32_t antiPortal = 0;
    GetNodeIntAttribute(MString("antiportal"), path, antiPortal);
    if (antiPortal != 0)
        return AddAntiPortal(path, corners, world, *builder) ? 1 : -1;

    HarvestedPortal portal;
    portal.Name = path.partialPathName().asChar();
    portal.Corners = std::move(corners);
    portal.Key = StringAttribute("portal_key", path);
    portal.FrontName = StringAttribute("front_name", path);
    portal.BackName = StringAttribute("back_name", path);
    int32_t cut = 1;
    GetNodeIntAttribute(MString("CutGeometry"), path, cut);
    portal.CutGeometry = cut == 1;
    builder->AddPortal(portal);
    return 1;
}
