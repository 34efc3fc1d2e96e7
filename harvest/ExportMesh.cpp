#include "harvest/ExportMesh.h"

#include "harvest/HarvestState.h"
#include "harvest/MaterialLookup.h"
#include "harvest/NodeAttributes.h"
#include "harvest/PolygonStep.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/DebugFile.h"
#include "report/Progress.h"
#include "report/VIssueKind.h"
#include "report/VReport.h"
#include "base/TextUtil.h"

#include <maya/MFloatArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnSet.h>
#include <maya/MIntArray.h>
#include <maya/MItMeshPolygon.h>
#include <maya/MItMeshVertex.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::unique_ptr<VMVertex> NewVertexOf(VMWorld&) { return VMWorld::NewVertex(); }
std::unique_ptr<VMSkinVertex> NewVertexOf(VMModel&) { return VMModel::NewVertex(); }

NodeRenderAttributes ReadRenderAttributes(const MDagPath& path)
{
    NodeRenderAttributes attributes;
    MStatus status;
    MFnDependencyNode node(path.node(), &status);
    if (status) {
        MPlug castsShadows = node.findPlug(MString("castsShadows"), &status);
        int value = 1;
        if (status && !castsShadows.isNull() && castsShadows.getValue(value))
            attributes.CastShadows = value != 0 ? 1 : 0;
    }
    int32_t visible = 1;
    GetNodeIntAttribute(MString("Visible"), path, visible);
    attributes.Visible = visible != 0 ? 1 : 0;
    GetNodeShortAttribute(MString("CollisionFlags"), path, attributes.CollisionFlags);
    return attributes;
}

void FillUVTable(const MFnMesh& mesh, const MString* set, std::vector<float>& table)
{
    MFloatArray u;
    MFloatArray v;
    table.clear();
    if (!mesh.getUVs(u, v, set))
        return;
    const unsigned int count = std::min(u.length(), v.length());
    table.resize(static_cast<size_t>(count) * 2);
    for (unsigned int i = 0; i < count; ++i) {
        table[static_cast<size_t>(i) * 2] = u[i];
        table[static_cast<size_t>(i) * 2 + 1] = 1.0f - v[i];
    }
}

void ReadUVTables(MeshAccess& access, VMMeshBase& container)
{
    MString current;
    access.Mesh.getCurrentUVSetName(current);
    FillUVTable(access.Mesh, nullptr, access.BaseUVs);
    DebugPrint("Using current UV set as base: %s\r\n", current.asChar());
    DebugPrint("UV Count: %d\r\n", access.BaseUVCount());

    MStringArray setNames;
    access.Mesh.getUVSetNames(setNames);
    bool found = false;
    for (unsigned int i = 0; i < setNames.length() && !found; ++i)
        found = setNames[i] == MString("lightmap");
    if (!found) {
        DebugPrint("No 'lightmap' UV set found\r\n");
        return;
    }
    access.LightmapSetName = MString("lightmap");
    const int count = access.Mesh.numUVs(access.LightmapSetName);
    DebugPrint("'lightmap' UV set found with %i UVs\r\n", count);
    if (count > 0) {
        container.HasSecondUV = 1;
        FillUVTable(access.Mesh, &access.LightmapSetName, access.LightmapUVs);
    }
}

template <class Container>
bool ExportMeshInto(HarvestState& state, const MDagPath& path, Container& container, uint32_t flags)
{
    MStatus status;
    const MString pathName = path.fullPathName(&status);
    const std::string name = status ? pathName.asChar() : std::string();
    DebugPrint("ExportMesh()\r\n");
    DebugPrint("Node:%s\r\n", name.c_str());

    MeshAccess access;
    if (!OpenMeshAccess(access, path, (flags & ExportMeshPreSkin) != 0))
        return false;

    const int mayaVertexCount = access.Vertices->count();
    if (!status)
        state.Report.AddIssue(IssueInvalidDagNode, "ExportMesh");
    state.MeshNodes.Add(name, mayaVertexCount, state.RunningVertexBase);
    PhaseProgress(static_cast<int64_t>(state.MeshNodes.Count()), state.Stats.MeshNodeCount);

    NodeRenderAttributes attributes;
    if (state.IsStaticExport())
        attributes = ReadRenderAttributes(path);

    const int firstVertex = container.Vertices.Count();
    for (MItMeshVertex& vertices = *access.Vertices; !vertices.isDone(); vertices.next()) {
        auto vertex = NewVertexOf(container);
        if (!vertex) {
            state.Report.AddIssue(IssueOutOfMemory, "ExportMesh: vertex");
            return false;
        }
        const MPoint p = access.WorldPosition();
        vertex->Position[0] = static_cast<float>(p.x);
        vertex->Position[1] = static_cast<float>(-p.z);
        vertex->Position[2] = static_cast<float>(p.y);
        for (int i = 0; i < 3; ++i)
            vertex->Normal[i] = kUnsetVertexValue;
        vertex->BaseUV[0] = vertex->BaseUV[1] = kUnsetVertexValue;
        if (container.Vertices.Add(std::move(vertex)) != 0) {
            state.Report.AddIssue(IssueOutOfMemory, "ExportMesh: vertex");
            return false;
        }
    }

    ReadUVTables(access, container);

    int polygonCount = 0;
    int addedVertexCount = 0;
    ExportMesh_GetPolygons(state, access, container, firstVertex, attributes, polygonCount, addedVertexCount);

    for (int i = firstVertex; i < container.Vertices.Count(); ++i) {
        auto* vertex = container.Vertices[i];
        if (vertex->BaseUV[0] != kUnsetVertexValue)
            continue;
        state.Report.AddIssue(IssueVertexWithoutUV, name);
        vertex->BaseUV[0] = vertex->BaseUV[1] = 0.0f;
        vertex->Normal[0] = 1.0f;
        vertex->Normal[1] = vertex->Normal[2] = 0.0f;
    }

    const int total = container.Vertices.Count() - firstVertex;
    DebugPrint("Vertices before addition: %d\r\n", mayaVertexCount);
    DebugPrint("Vertices after addition: %d\r\n", total);
    state.RunningVertexBase += total;
    state.RunningPolygonCount += polygonCount;

    if (access.InvalidUVIndexSeen) {
        DebugPrint("Mesh had invalid UV indices!\r\n");
        state.Report.AddIssue(IssueInvalidTextureUVs, name);
    }
    if (access.InvalidTangentsSeen) {
        DebugPrint("Mesh had invalid tangents!\r\n");
        state.Report.AddIssue(IssueInvalidTangents, name);
    }
    return true;
}

// The shading sets of a shape with their member components; a shape without sets instead has
// the shading engines Maya connects it to, with the engine of each polygon (-1 for none).
struct NodeSets {
    MObjectArray Sets;
    MObjectArray Components;
    MObjectArray Shaders;
    MIntArray ShaderOfPolygon;
};

// False when the node has neither sets nor shaders: it then gets no polygons.
bool FindNodeSets(HarvestState& state, const MDagPath& shapePath, const std::string& name, NodeSets& found)
{
    const unsigned int instance = shapePath.isInstanced() ? shapePath.instanceNumber() : 0;
    // The sets belong to the shape, not to a skin cluster's input mesh that access may read.
    MFnMesh shape(shapePath);
    if (!shape.getConnectedSetsAndMembers(instance, found.Sets, found.Components, true))
        DebugPrint("Error: MFnMesh::getConnectedSetsAndMembers\r\n");
    DebugPrint("Number of sets: %d\r\n", static_cast<int>(found.Sets.length()));
    if (found.Sets.length() > 0)
        return true;
    DebugPrint("No sets, for some reason. Let's try shaders\r\n");
    shape.getConnectedShaders(instance, found.Shaders, found.ShaderOfPolygon);
    if (found.Shaders.length() > 0)
        return true;
    DebugPrint("No shaders at all!\r\n");
    state.Report.AddIssue(IssueNodeWithoutMaterial, name);
    return false;
}

// One material per set (null where the set had no shader) and the set of every polygon.
struct SetAssignment {
    std::vector<VMMaterial*> Materials;
    std::vector<int> SetOfPolygon;
};

// The material of a set that has polygons, null when its shader makes none; false when the set
// has no shader, so that its polygons are passed over. The node's double-sidedness is asked for
// each such set, as the trace of a node without the attribute shows.
bool FindSetMaterial(HarvestState& state, VMMeshBase& container, const MDagPath& shapePath, const MObject& set,
                     VMMaterial*& material)
{
    const MObject shader = FindSetShader(set);
    if (shader.isNull()) {
        DebugPrint("Error: Can't find shader\r\n");
        return false;
    }
    const uint8_t doubleSided =
        state.Parameters.Options.DoubleSided == 1 && MeshDoubleSidedFlag(shapePath) ? 1 : 0;
    material = LookupMaterial(state, container, shader, doubleSided);
    return true;
}

// A shape that Maya gives shading engines but no sets: each engine stands for a set holding
// the polygons Maya assigns to it.
void AssignShaders(HarvestState& state, VMMeshBase& container, const MDagPath& shapePath, const NodeSets& found,
                   SetAssignment& assignment)
{
    const unsigned int shaderCount = found.Shaders.length();
    std::vector<uint8_t> used(shaderCount, 0);
    for (unsigned int p = 0; p < found.ShaderOfPolygon.length() && p < assignment.SetOfPolygon.size(); ++p) {
        const int shader = found.ShaderOfPolygon[p];
        if (shader < 0 || static_cast<unsigned int>(shader) >= shaderCount)
            continue;
        assignment.SetOfPolygon[p] = shader;
        used[static_cast<size_t>(shader)] = 1;
    }
    assignment.Materials.assign(shaderCount, nullptr);
    for (unsigned int i = 0; i < shaderCount; ++i)
        if (used[i])
            FindSetMaterial(state, container, shapePath, found.Shaders[i], assignment.Materials[i]);
}

void AssignSets(HarvestState& state, VMMeshBase& container, const MDagPath& shapePath, const NodeSets& found,
                SetAssignment& assignment)
{
    if (found.Sets.length() == 0) {
        AssignShaders(state, container, shapePath, found, assignment);
        return;
    }
    bool anyAssigned = false;
    assignment.Materials.assign(found.Sets.length(), nullptr);
    for (unsigned int i = 0; i < found.Sets.length(); ++i) {
        MStatus status;
        MFnSet set(found.Sets[i], &status);
        if (!status) {
            DebugPrint("Error: MFnSet::MFnSet\r\n");
            continue;
        }
        DebugPrint("Set %d:%s\r\n", static_cast<int>(i), set.name().asChar());
        MItMeshPolygon members(shapePath, found.Components[i], &status);
        if (!status) {
            DebugPrint("Error: Is not polygonal set\r\n");
            continue;
        }
        if (found.Components[i].isNull() && anyAssigned && found.Sets.length() >= 2) {
            DebugPrint("Skipping null component because we already have components\r\n");
            continue;
        }
        DebugPrint("Polygonal set with %d polygons.\r\n", static_cast<int>(members.count()));
        if (members.count() == 0)
            continue;
        if (!FindSetMaterial(state, container, shapePath, found.Sets[i], assignment.Materials[i]))
            continue;
        for (; !members.isDone(); members.next()) {
            const unsigned int polygon = members.index();
            if (polygon < assignment.SetOfPolygon.size())
                assignment.SetOfPolygon[polygon] = static_cast<int>(i);
        }
        anyAssigned = true;
    }
}

template <class Container>
void GetPolygonsInto(HarvestState& state, MeshAccess& access, Container& container, int firstVertex,
                     const NodeRenderAttributes& attributes, int& polygonCount, int& addedVertexCount)
{
    polygonCount = 0;
    addedVertexCount = 0;
    const MDagPath& path = access.Path;
    const std::string name = path.fullPathName().asChar();
    DebugPrint("ExportMesh_GetPolygons(%s)\r\n", name.c_str());

    NodePolygonContext context;
    context.Access = &access;
    context.InverseMatrix = access.PlacementInverse;
    context.Mirrored = context.InverseMatrix.det3x3() < 0.0;
    context.Tangents = access.BaseUVCount() > 0 && state.Parameters.Options.ExportTangents;
    context.UseLightmapUVs = state.Parameters.Options.LightmapUVs == 2 && access.LightmapUVCount() > 0;
    context.SplitEveryReuse = state.Parameters.MuscleAnimation;
    context.RenderAttributes = attributes;
    context.MeshNodeNumber = static_cast<uint32_t>(state.MeshNodes.Count());
    if (context.Tangents)
        container.HasTangents = 1;

    MDagPath shapePath(path);
    shapePath.extendToShape();

    NodeSets sets;
    if (!FindNodeSets(state, shapePath, name, sets))
        return;

    MStatus vertexStatus;
    MStatus polygonStatus;
    MItMeshVertex finalVertices(path, MObject::kNullObj, &vertexStatus);
    MItMeshPolygon finalPolygons(path, MObject::kNullObj, &polygonStatus);
    if (!vertexStatus || !polygonStatus) {
        DebugPrint("Error: Path is not a polygon set\r\n");
        return;
    }
    const int accessPolygons = static_cast<int>(access.Polygons->count());
    const int preVertices = access.Vertices->count();
    const int postVertices = finalVertices.count();
    const int postPolygons = static_cast<int>(finalPolygons.count());
    DebugPrint("Vertcount  Preskin:%i Postskin:%i\r\n", preVertices, postVertices);
    DebugPrint("Polycount  Preskin:%i Postskin:%i\r\n", accessPolygons, postPolygons);
    if (preVertices != postVertices || accessPolygons != postPolygons) {
        DebugPrint("Error: Pre-skin and post-skin meshes have different polygon or vertex counts!\r\n");
        const std::string detail =
            Format("Node: %s:\r\n  Polycount  Preskin:%i  Postskin:%i\r\n  Vertcount  Preskin:%i  Postskin:%i\r\n\r\n",
                   name.c_str(), accessPolygons, postPolygons, preVertices, postVertices);
        DebugPrint("%s", detail.c_str());
        state.Report.AddIssue(IssueSkinCountMismatch, detail);
        return;
    }
    if (accessPolygons == 0) {
        DebugPrint("Skipping node with 0 polygons\r\n");
        return;
    }

    // Only a node that will get polygons reads its materials, so that a refused node raises no
    // texture issues.
    SetAssignment assignment;
    assignment.SetOfPolygon.assign(static_cast<size_t>(accessPolygons), 0);
    AssignSets(state, container, shapePath, sets, assignment);

    context.FirstVertices.resize(static_cast<size_t>(preVertices));
    for (int i = 0; i < preVertices; ++i)
        context.FirstVertices[static_cast<size_t>(i)] = container.Vertices[firstVertex + i];

    // Polygons leave grouped by set, ascending within a set: bucket them once instead of
    // scanning every polygon for every set.
    const size_t setCount = std::max<size_t>(assignment.Materials.size(), 1);
    std::vector<int> bucketStart(setCount + 1, 0);
    for (int set : assignment.SetOfPolygon)
        ++bucketStart[static_cast<size_t>(set) + 1];
    for (size_t s = 0; s < setCount; ++s)
        bucketStart[s + 1] += bucketStart[s];
    std::vector<int> order(assignment.SetOfPolygon.size());
    std::vector<int> fill(bucketStart.begin(), bucketStart.end() - 1);
    for (size_t p = 0; p < assignment.SetOfPolygon.size(); ++p)
        order[static_cast<size_t>(fill[static_cast<size_t>(assignment.SetOfPolygon[p])]++)] = static_cast<int>(p);

    for (size_t s = 0; s < setCount && !context.OutOfMemory; ++s) {
        VMMaterial* material = s < assignment.Materials.size() ? assignment.Materials[s] : nullptr;
        for (int i = bucketStart[s]; i < bucketStart[s + 1] && !context.OutOfMemory; ++i) {
            int previous = 0;
            if (!access.Polygons->setIndex(order[static_cast<size_t>(i)], previous))
                continue;
            PolygonStep(context, container, material);
        }
    }
    if (context.OutOfMemory)
        state.Report.AddIssue(IssueOutOfMemory, "ExportMesh: polygon");
    polygonCount = context.Polygons;
    addedVertexCount = context.AddedVertices;
}

}

bool ExportMesh(HarvestState& state, const MDagPath& path, VMWorld& world, uint32_t flags)
{
    return ExportMeshInto(state, path, world, flags);
}

bool ExportMesh(HarvestState& state, const MDagPath& path, VMModel& model, uint32_t flags)
{
    return ExportMeshInto(state, path, model, flags);
}

void ExportMesh_GetPolygons(HarvestState& state, MeshAccess& access, VMWorld& world, int firstVertex,
                            const NodeRenderAttributes& attributes, int& polygonCount, int& addedVertexCount)
{
    GetPolygonsInto(state, access, world, firstVertex, attributes, polygonCount, addedVertexCount);
}

void ExportMesh_GetPolygons(HarvestState& state, MeshAccess& access, VMModel& model, int firstVertex,
                            const NodeRenderAttributes& attributes, int& polygonCount, int& addedVertexCount)
{
    GetPolygonsInto(state, access, model, firstVertex, attributes, polygonCount, addedVertexCount);
}
