#include "formats/SaveModel.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/ChunkByteWriter.h"
#include "formats/MaterialChunk.h"
#include "formats/ModelChunks.h"
#include "formats/SaveSideFiles.h"
#include "formats/SkeletonChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMModel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <string>

namespace {

bool HasBones(const VMModel& model)
{
    return model.Skeleton && model.Skeleton->Bones.Count() > 0;
}

// A vertex's slots, strongest first; equal weights keep their order.
std::array<int, VMSkinVertex::MaxInfluences> StrongestFirst(const VMSkinVertex& vertex)
{
    std::array<int, VMSkinVertex::MaxInfluences> order {0, 1, 2, 3};
    const int count = static_cast<int>(std::min<uint32_t>(vertex.InfluenceCount, VMSkinVertex::MaxInfluences));
    std::stable_sort(order.begin(), order.begin() + count,
                     [&](int a, int b) { return vertex.InfluenceWeights[a] > vertex.InfluenceWeights[b]; });
    return order;
}

void PutBox(ChunkByteWriter& out, const VMBoundingBox& box)
{
    PutFloats(out, box.Min, 3);
    PutFloats(out, box.Max, 3);
}

// The vertex as its bones' posed world transforms place it: the weighted sum of each slot's
// bone-space position posed by its bone; the normal posed by the first bone.
void PoseVertex(const VMSkinVertex& vertex, float position[3], float normal[3])
{
    std::copy_n(vertex.Position, 3, position);
    std::copy_n(vertex.Normal, 3, normal);
    if (vertex.InfluenceCount == 0)
        return;
    std::fill_n(position, 3, 0.0f);
    for (uint32_t slot = 0; slot < vertex.InfluenceCount; ++slot) {
        float posed[3];
        vertex.InfluenceBones[slot]->PosedWorldTransform.TransformPoint(vertex.SlotPositions[slot], posed);
        for (int axis = 0; axis < 3; ++axis)
            position[axis] += vertex.InfluenceWeights[slot] * posed[axis];
    }
    vertex.InfluenceBones[0]->PosedWorldTransform.TransformDirection(vertex.SlotNormal, normal);
}

void PutVertex(ChunkByteWriter& out, const VMModel& model, const VMSkinVertex& vertex, bool posed)
{
    float position[3];
    float normal[3];
    if (posed && HasBones(model)) {
        PoseVertex(vertex, position, normal);
    } else {
        std::copy_n(vertex.Position, 3, position);
        std::copy_n(vertex.Normal, 3, normal);
    }
    PutFloats(out, position, 3);
    PutFloats(out, normal, 3);
    PutFloats(out, vertex.Tangent, 3);
    if (model.HasColours) {
        // The colour's bytes as a 32-bit 0xAARRGGBB holds them: red, green, blue, alpha.
        const uint8_t colour[4] = {vertex.Colour[2], vertex.Colour[1], vertex.Colour[0], vertex.Colour[3]};
        out.PutBytes(colour, 4);
    }
    PutFloats(out, vertex.BaseUV, 2);
    PutFloats(out, vertex.SecondUV, 2);
    if (HasBones(model) && vertex.InfluenceCount > 0) {
        const int strongest = StrongestFirst(vertex)[0];
        out.Put(vertex.InfluenceWeights[strongest]);
        out.Put(static_cast<int32_t>(vertex.InfluenceBones[strongest]->Index));
    } else {
        out.Put(1.0f);
        out.Put(int32_t {-1});
    }
    const bool linked = vertex.IdLink != nullptr && model.Vertices.Get(static_cast<int>(vertex.IdLink->Index)) == vertex.IdLink;
    out.Put(linked ? static_cast<int32_t>(vertex.IdLink->Index) : int32_t {-1});
}

int32_t TriangleCount(const VMModel& model)
{
    int64_t count = 0;
    for (const VMFace* face : model.Faces)
        count += std::max(face->CornerCount() - 2, 0);
    return static_cast<int32_t>(count);
}

bool WriteGeometry(VChunkedFile& file, const VMModel& model, bool posed)
{
    bool ok = file.StartChunk(ChunkGEOM);
    {
        ChunkByteWriter out(file);
        out.Put(uint16_t {0});
        out.Put(static_cast<int32_t>(model.Materials.Count()));
        ok = ok && out.Flush();
    }
    for (const VMMaterial* material : model.Materials)
        ok = ok && WriteMaterialChunk(file, *material);
    if (!ok)
        return false;
    ChunkByteWriter out(file);
    out.Put(static_cast<int32_t>(model.Vertices.Count()));
    out.Put(static_cast<uint16_t>(ModelVertexFlags | (model.HasColours ? ModelVertexColour : 0)));
    for (const VMSkinVertex* vertex : model.Vertices)
        PutVertex(out, model, *vertex, posed);
    out.Put(TriangleCount(model));
    for (const VMFace* face : model.Faces) {
        const uint16_t material =
            face->Material() != nullptr ? static_cast<uint16_t>(face->Material()->Index) : NoModelMaterial;
        // Harvested faces are triangles; anything larger is written as the fan of its corners.
        for (int corner = 2; corner < face->CornerCount(); ++corner) {
            out.Put(static_cast<int32_t>(face->Corner(0)->Index));
            out.Put(static_cast<int32_t>(face->Corner(corner - 1)->Index));
            out.Put(static_cast<int32_t>(face->Corner(corner)->Index));
            out.Put(material);
        }
    }
    return out.Flush() && file.EndChunk();
}

bool WriteWeights(VChunkedFile& file, const VMModel& model)
{
    int64_t total = 0;
    for (const VMSkinVertex* vertex : model.Vertices)
        total += vertex->InfluenceCount;
    if (!file.StartChunk(ChunkWGHT))
        return false;
    ChunkByteWriter out(file);
    out.Put(static_cast<int32_t>(total));
    for (const VMSkinVertex* vertex : model.Vertices) {
        const auto order = StrongestFirst(*vertex);
        for (uint32_t k = 0; k < vertex->InfluenceCount; ++k) {
            const int slot = order[k];
            out.Put(static_cast<int32_t>(vertex->Index));
            out.Put(static_cast<uint16_t>(vertex->InfluenceBones[slot]->Index));
            out.Put(vertex->InfluenceWeights[slot]);
        }
    }
    return out.Flush() && file.EndChunk();
}

bool WriteBoneBoxes(VChunkedFile& file, const VMSkeleton& skeleton)
{
    if (!file.StartChunk(ChunkBBBX))
        return false;
    ChunkByteWriter out(file);
    out.Put(static_cast<uint16_t>(skeleton.Bones.Count()));
    for (const VMBone* bone : skeleton.Bones)
        PutBox(out, bone->Box);
    return out.Flush() && file.EndChunk();
}

bool WriteBoneProperties(VChunkedFile& file, const VMSkeleton& skeleton)
{
    if (!file.StartChunk(ChunkCBPR))
        return false;
    ChunkByteWriter out(file);
    out.Put(static_cast<uint16_t>(skeleton.Bones.Count()));
    // No bone carries a text property today; the engine reads one string per bone.
    for (int i = 0; i < skeleton.Bones.Count(); ++i)
        out.Put(int32_t {0});
    return out.Flush() && file.EndChunk();
}

float Radius(const VMBoundingBox& box)
{
    float squared = 0.0f;
    for (int corner = 0; corner < 8; ++corner) {
        float sum = 0.0f;
        for (int axis = 0; axis < 3; ++axis) {
            const float value = (corner >> axis) & 1 ? box.Max[axis] : box.Min[axis];
            sum += value * value;
        }
        squared = std::max(squared, sum);
    }
    return std::sqrt(squared);
}

bool WriteBounds(VChunkedFile& file, const VMModel& model)
{
    VMBoundingBox box = model.Box;
    if (box.IsEmpty()) {
        for (const VMSkinVertex* vertex : model.Vertices)
            box.Grow(vertex->Position);
    }
    const VMBoundingBox collision = model.CollisionBox.IsEmpty() ? box : model.CollisionBox;
    if (!file.StartChunk(ChunkBNDS))
        return false;
    ChunkByteWriter out(file);
    PutBox(out, box);
    const float sphere[4] = {0.0f, 0.0f, 0.0f, Radius(box)};
    PutFloats(out, sphere, 4);
    PutBox(out, collision);
    return out.Flush() && file.EndChunk();
}

// Empty when the model can be written; else what stops it.
std::string Unwritable(const VMModel& model)
{
    if (model.Skeleton && model.Skeleton->Bones.Count() >= NoParentBone)
        return Format("its skeleton has %d bones; a model file holds at most %d", model.Skeleton->Bones.Count(),
                      NoParentBone - 1);
    if (model.Materials.Count() >= NoModelMaterial)
        return Format("it has %d materials; a model file holds at most %d", model.Materials.Count(),
                      NoModelMaterial - 1);
    const auto listed = [&](const VMSkinVertex* vertex) {
        return vertex != nullptr && model.Vertices.Get(static_cast<int>(vertex->Index)) == vertex;
    };
    for (const VMFace* face : model.Faces) {
        if (!std::all_of(face->Corners().begin(), face->Corners().end(), listed))
            return "a face refers to a vertex outside the vertex list";
    }
    for (const VMSkinVertex* vertex : model.Vertices) {
        for (uint32_t slot = 0; slot < vertex->InfluenceCount; ++slot) {
            const VMBone* bone = vertex->InfluenceBones[slot];
            if (!HasBones(model) || model.Skeleton->Bones.Get(bone->Index) != bone)
                return Format("vertex %u is bound to a bone outside the skeleton", vertex->Index);
        }
    }
    return {};
}

bool WriteModel(VMModel& model, std::string_view path, const VSaveParams& params)
{
    const std::string shownPath = ShownPath(path);
    model.Vertices.Compact();
    model.Enumerate();
    const std::string problem = Unwritable(model);
    if (!problem.empty()) {
        SetLastError(Format("Failed to write file '%s': %s", shownPath.c_str(), problem.c_str()));
        return false;
    }
    VChunkedFile file;
    if (!file.Create(path, params.Streams)) {
        SetLastError(Format("Failed to create file '%s'", shownPath.c_str()));
        return false;
    }
    const bool bones = HasBones(model);
    bool ok = file.StartChunk(ChunkMODL) && file.Write("\0\0", 2) == 2;
    if (bones)
        ok = ok && WriteSkeletonChunk(file, *model.Skeleton) && WriteBoneMaskChunk(file, model.BoneMasks);
    ok = ok && WriteGeometry(file, model, (params.Flags & SaveFlagPosedModel) != 0);
    if (bones)
        ok = ok && WriteWeights(file, model) && WriteBoneBoxes(file, *model.Skeleton) &&
             WriteBoneProperties(file, *model.Skeleton);
    ok = ok && WriteBounds(file, model) && file.EndChunk();
    if (!file.Close() || !ok) {
        SetLastError(Format("Failed to write file '%s'", shownPath.c_str()));
        return false;
    }
    return true;
}

} // namespace

bool SaveModel(VMModel& model, std::string_view path, const VSaveParams& params)
{
    ClearLastError();
    try {
        if (!WriteModel(model, path, params))
            return false;
    } catch (const std::bad_alloc&) {
        SetLastError(Format("Out of memory while writing file '%s'", ShownPath(path).c_str()));
        return false;
    }
    return SaveSideFiles(model, path, params.Flags);
}
