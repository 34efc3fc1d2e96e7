#include "harvest/PolygonStep.h"

#include "model/VMModel.h"
#include "model/VMWorld.h"
#include "report/VIssueKind.h"

#include <maya/MItMeshPolygon.h>
#include <maya/MStatus.h>
#include <maya/MVector.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr float kNormalTolerance = 0.0001f;
constexpr float kTangentTolerance = 0.001f;
constexpr float kTangentLengthFloor = 1.1920929e-7f;
// A mirrored tangent frame is told to the engine by the tangent's length, not by a fourth
// component.
constexpr float kMirroredTangentLength = 1.7320508f;
constexpr uint32_t kUnenumerated = 0xFFFFFFFFu;

void ToEngineAxes(const MVector& v, float out[3])
{
    out[0] = static_cast<float>(v.x);
    out[1] = static_cast<float>(-v.z);
    out[2] = static_cast<float>(v.y);
}

bool WithinTolerance(const float a[3], const float b[3], float tolerance)
{
    for (int i = 0; i < 3; ++i)
        if (!(std::fabs(a[i] - b[i]) <= tolerance))
            return false;
    return true;
}

bool ReadUV(MItMeshPolygon& polygon, int corner, const MString* set, const std::vector<float>& table,
            MeshAccess& access, float uv[2])
{
    int uvIndex = -1;
    if (!polygon.getUVIndex(corner, uvIndex, set))
        return false;
    if (uvIndex < 0 || static_cast<size_t>(uvIndex) >= table.size() / 2) {
        access.InvalidUVIndexSeen = 1;
        return false;
    }
    uv[0] = table[static_cast<size_t>(uvIndex) * 2];
    uv[1] = table[static_cast<size_t>(uvIndex) * 2 + 1];
    return true;
}

void ReadTangent(NodePolygonContext& context, int corner, CornerValues& values)
{
    const MVector tangent = MVector(context.TangentScratch[static_cast<unsigned int>(corner)])
                                .transformAsNormal(context.InverseMatrix);
    const MVector binormal = MVector(context.BinormalScratch[static_cast<unsigned int>(corner)])
                                 .transformAsNormal(context.InverseMatrix);
    ToEngineAxes(tangent, values.Tangent);
    float* t = values.Tangent;
    const float length = std::sqrt(t[0] * t[0] + t[1] * t[1] + t[2] * t[2]);
    if (length >= kTangentLengthFloor)
        for (int i = 0; i < 3; ++i)
            t[i] /= length;
    float b[3];
    ToEngineAxes(binormal, b);
    const float* n = values.Normal;
    const float cross[3] = {n[1] * t[2] - n[2] * t[1], n[2] * t[0] - n[0] * t[2], n[0] * t[1] - n[1] * t[0]};
    if (cross[0] * b[0] + cross[1] * b[1] + cross[2] * b[2] < 0.0f)
        for (int i = 0; i < 3; ++i)
            t[i] *= kMirroredTangentLength;
}

void ReadCorner(NodePolygonContext& context, MItMeshPolygon& polygon, int corner, const VMMaterial* material,
                CornerValues& values)
{
    MeshAccess& access = *context.Access;
    if (!ReadUV(polygon, corner, nullptr, access.BaseUVs, access, values.BaseUV))
        values.BaseUV[0] = values.BaseUV[1] = 0.0f;
    if (context.UseLightmapUVs &&
        !ReadUV(polygon, corner, &access.LightmapSetName, access.LightmapUVs, access, values.LightmapUV))
        values.LightmapUV[0] = values.LightmapUV[1] = 0.0f;
    MVector normal;
    if (polygon.getNormal(static_cast<unsigned int>(corner), normal, MSpace::kObject))
        ToEngineAxes(normal.transformAsNormal(context.InverseMatrix).normal(), values.Normal);
    if (context.Tangents)
        ReadTangent(context, corner, values);
    MapMaterialUV(material, values.BaseUV);
}

void StoreCorner(VMVertexData& vertex, const CornerValues& values, const NodePolygonContext& context)
{
    vertex.BaseUV[0] = values.BaseUV[0];
    vertex.BaseUV[1] = values.BaseUV[1];
    if (context.UseLightmapUVs) {
        vertex.SecondUV[0] = values.LightmapUV[0];
        vertex.SecondUV[1] = values.LightmapUV[1];
    }
    for (int i = 0; i < 3; ++i)
        vertex.Normal[i] = values.Normal[i];
    if (context.Tangents)
        for (int i = 0; i < 3; ++i)
            vertex.Tangent[i] = values.Tangent[i];
}

std::unique_ptr<VMVertex> NewVertexOf(VMWorld&) { return VMWorld::NewVertex(); }
std::unique_ptr<VMSkinVertex> NewVertexOf(VMModel&) { return VMModel::NewVertex(); }
void LinkSource(VMVertex& copy, VMVertexData& source) { copy.MergeLink = static_cast<VMVertex*>(&source); }
void LinkSource(VMSkinVertex& copy, VMVertexData& source) { copy.Source = static_cast<VMSkinVertex*>(&source); }

template <class Container>
VMVertexData* SplitCopy(NodePolygonContext& context, Container& container, VMVertexData& first,
                        const CornerValues& values)
{
    auto copy = NewVertexOf(container);
    if (!copy)
        return nullptr;
    for (int i = 0; i < 3; ++i)
        copy->Position[i] = first.Position[i];
    StoreCorner(*copy, values, context);
    LinkSource(*copy, first);
    copy->Index = kUnenumerated;
    VMVertexData* raw = copy.get();
    if (container.Vertices.Add(std::move(copy)) != 0)
        return nullptr;
    ++context.AddedVertices;
    return raw;
}

template <class Container>
bool GatherCorners(NodePolygonContext& context, Container& container, const VMMaterial* material)
{
    MItMeshPolygon& polygon = *context.Access->Polygons;
    const int cornerCount = static_cast<int>(polygon.polygonVertexCount());
    context.CornerScratch.clear();
    if (context.Tangents) {
        const int face = static_cast<int>(polygon.index());
        MFnMesh& mesh = context.Access->Mesh;
        if (!mesh.getFaceVertexTangents(face, context.TangentScratch, MSpace::kObject) ||
            !mesh.getFaceVertexBinormals(face, context.BinormalScratch, MSpace::kObject) ||
            context.TangentScratch.length() < static_cast<unsigned int>(cornerCount) ||
            context.BinormalScratch.length() < static_cast<unsigned int>(cornerCount)) {
            context.Access->InvalidTangentsSeen = 1;
            context.Tangents = false;
        }
    }
    const int vertexCount = static_cast<int>(context.FirstVertices.size());
    for (int k = 0; k < cornerCount; ++k) {
        const int mayaVertex = polygon.vertexIndex(k);
        if (mayaVertex < 0 || mayaVertex >= vertexCount)
            return false;
        CornerValues values;
        ReadCorner(context, polygon, k, material, values);
        VMVertexData* vertex = context.FirstVertices[static_cast<size_t>(mayaVertex)];
        if (vertex->BaseUV[0] == kUnsetVertexValue) {
            StoreCorner(*vertex, values, context);
        } else if (context.SplitEveryReuse ||
                   !CornerFitsVertex(*vertex, values, context.UseLightmapUVs, context.Tangents)) {
            vertex = SplitCopy(context, container, *vertex, values);
            if (!vertex) {
                context.OutOfMemory = true;
                return false;
            }
        }
        context.CornerScratch.push_back(vertex);
    }
    return true;
}

}

void MapMaterialUV(const VMMaterial* material, float uv[2])
{
    if (!material)
        return;
    if (material->AtlasFlag != 0) {
        const uint32_t k0 = material->DiffuseColour[0] & 255u;
        const uint32_t k1 = material->DiffuseColour[1] & 255u;
        const uint32_t k2 = material->DiffuseColour[2] & 255u;
        const uint32_t texel = (k2 >> 3) * 2048u + (k1 >> 2) * 32u + (k0 >> 3);
        uv[0] = (static_cast<float>(texel & 255u) + 0.5f) / 256.0f;
        uv[1] = (static_cast<float>(texel >> 8) + 0.5f) / 256.0f;
        return;
    }
    uv[0] = uv[0] * material->UVTransform[0] + material->UVTransform[2];
    uv[1] = uv[1] * material->UVTransform[1] + material->UVTransform[3];
}

bool CornerFitsVertex(const VMVertexData& vertex, const CornerValues& corner, bool compareLightmap,
                      bool compareTangent)
{
    if (vertex.BaseUV[0] != corner.BaseUV[0] || vertex.BaseUV[1] != corner.BaseUV[1])
        return false;
    if (compareLightmap &&
        (vertex.SecondUV[0] != corner.LightmapUV[0] || vertex.SecondUV[1] != corner.LightmapUV[1]))
        return false;
    if (!WithinTolerance(vertex.Normal, corner.Normal, kNormalTolerance))
        return false;
    return !compareTangent || WithinTolerance(vertex.Tangent, corner.Tangent, kTangentTolerance);
}

void PolygonStep(NodePolygonContext& context, VMWorld& world, VMMaterial* material)
{
    if (!GatherCorners(context, world, material))
        return;
    auto polygon = VMWorld::NewPolygon();
    if (!polygon) {
        context.OutOfMemory = true;
        return;
    }
    polygon->Corners.reserve(context.CornerScratch.size());
    for (VMVertexData* corner : context.CornerScratch)
        polygon->Corners.push_back(static_cast<VMVertex*>(corner));
    if (context.Mirrored)
        std::reverse(polygon->Corners.begin(), polygon->Corners.end());
    polygon->Neighbours.assign(polygon->Corners.size(), nullptr);
    polygon->SetMaterial(material);
    polygon->SourceNode = context.MeshNodeNumber;
    polygon->CastShadows = context.RenderAttributes.CastShadows;
    polygon->Visible = context.RenderAttributes.Visible;
    polygon->CollisionFlags = context.RenderAttributes.CollisionFlags;
    if (world.Polygons.Add(std::move(polygon)) != 0) {
        context.OutOfMemory = true;
        return;
    }
    ++context.Polygons;
}

void PolygonStep(NodePolygonContext& context, VMModel& model, VMMaterial* material)
{
    if (!GatherCorners(context, model, material))
        return;
    auto face = VMModel::NewFace();
    if (!face) {
        context.OutOfMemory = true;
        return;
    }
    for (VMVertexData* corner : context.CornerScratch)
        if (face->AddCorner(static_cast<VMSkinVertex*>(corner)) != 0) {
            context.OutOfMemory = true;
            return;
        }
    if (context.Mirrored)
        face->ReverseCorners();
    face->SetMaterial(material);
    if (model.Faces.Add(std::move(face)) != 0) {
        context.OutOfMemory = true;
        return;
    }
    ++context.Polygons;
}
